#pragma once

#include "host/freqlist/listdefinition.h"

/// Definition of the memory list: knows the path of the node under which the channels are.
class MemorySystemFreqStoreListDefinition : public FrequencyListDefinition {
public:
    MemorySystemFreqStoreListDefinition(ListRegistration registration, const QString& rootPath)
        : FrequencyListDefinition(std::move(registration)), m_rootPath(rootPath) {}

    QString GetValuePath() const override { return m_rootPath; }
    /// The widget gets the path as its property "valuePath".
    bool PassValuePath(QWidget* widget) const override;

private:
    QString m_rootPath;
};
