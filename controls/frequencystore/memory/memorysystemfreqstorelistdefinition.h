#pragma once

#include "host/freqlist/listdefinition.h"

/// Definition of the memory list: knows the path of the node under which the channels are.
class MemorySystemFreqStoreListDefinition : public FrequencyListDefinition {
public:
    /// The arguments of the base, then the path.
    MemorySystemFreqStoreListDefinition(const QString& name, const QPixmap& pixmap,
                                        PixStateFactory pixStateFactory, bool available4WideView,
                                        bool available4SimpleView, MultiViewMediatorCtrl* controller,
                                        ViewFactory viewFactory, RecycleFunction recycle, int capabilityId,
                                        const QString& rootPath)
        : FrequencyListDefinition(name, pixmap, pixStateFactory, available4WideView, available4SimpleView,
                                  controller, viewFactory, recycle, capabilityId),
          m_rootPath(rootPath) {}

    QString GetValuePath() const override { return m_rootPath; }
    /// The widget gets the path as its property "valuePath".
    bool PassValuePath(QWidget* widget) const override;

private:
    QString m_rootPath;
};
