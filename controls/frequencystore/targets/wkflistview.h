#pragma once

#include "controls/frequencystore/common/entrylistview.h"

/// List view of the local target list. Its actions call the target list handler. New, Edit and Delete have
/// keys and no buttons.
class WkfListView : public EntryListView {
    Q_OBJECT

public:
    WkfListView(QWidget* parent, unsigned listId);

    void InitFreqStoreWidget(FreqStoreListViewButtonBar* bar) override;
    QString EmptyText() const override;
    QString WhyOff(int action) const override;

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
    /// Adds a target with the receiver's settings and makes it the current one.
    void slotNew();
    /// Opens the editor of the selected targets.
    void slotEdit();

protected:
    void SetFilename2Caption(const QString& fileName);
    /// The type goes there, too, which no column shows.
    void FillCopyRow(FrequencyNodeMediator& mediator, FrequencyListCopyStruct& row) const override;

private:
    void connectBar(FreqStoreListViewButtonBar& bar, bool withCsv);

    unsigned m_copyType;
};
