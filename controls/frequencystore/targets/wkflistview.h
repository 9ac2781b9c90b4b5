#pragma once

#include "host/freqlist/copystruct.h"
#include "host/freqlist/frequencynodelistview.h"

class WkfNodeMediator;

/// List view of the local target list. Its actions call the target list handler.
class WkfListView : public FrequencyNodeListView {
    Q_OBJECT

public:
    WkfListView(QWidget* parent, unsigned listId);

    void InitFreqStoreWidget(FreqStoreListViewButtonBar* bar) override;

public slots:
    void slotReadTargetList();
    void slotSave2File();
    void slotImportTargetList();
    void slotExport2File();
    /// Puts the selected targets on the clipboard as XML, the current one first, and into the store's copy
    /// buffer.
    void slotCopy();
    /// Adds the entries on the clipboard, of whatever list they are, as targets.
    void slotPaste();
    void slotItemClicked(SortListViewItem* item) override;

protected:
    void SetFilename2Caption(const QString& fileName);

private:
    void connectBar(FreqStoreListViewButtonBar& bar, bool withCsv);
    void copy2FreqStore(WkfNodeMediator& mediator);

    bool m_connected = false;
    unsigned m_copyFrequency;
    unsigned m_copyComment;
    unsigned m_copyBandwidth;
    unsigned m_copyDemodulation;
    unsigned m_copyType;
};
