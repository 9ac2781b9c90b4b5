#pragma once

#include "controls/frequencystore/common/entrylistview.h"

/// List view of the classifier's results. Its actions call the results' handler.
class SearchMCDataListView : public EntryListView {
    Q_OBJECT

public:
    SearchMCDataListView(QWidget* parent, unsigned listId);

    void InitFreqStoreWidget(FreqStoreListViewButtonBar* bar) override;
    QString EmptyText() const override;

public slots:
    /// Nothing: there is no database to send results to.
    void slotToDataBase() {}
    void slotSaveToFile();
    void slotExportToFile();
    /// Puts the selected results on the clipboard as XML, in the order shown.
    void slotCopy();
    /// Adds the entries on the clipboard, of whatever list they are, as results.
    void slotPaste();

protected:
    std::vector<FrequencyNodeMediator*> CopiedMediators() const override { return SelectedInOrder(); }
};
