#pragma once

#include "host/freqlist/frequencynodelistview.h"

/// List view of the classifier's results. Its actions call the results' handler.
class SearchMCDataListView : public FrequencyNodeListView {
    Q_OBJECT

public:
    SearchMCDataListView(QWidget* parent, unsigned listId);

    void InitFreqStoreWidget(FreqStoreListViewButtonBar* bar) override;

public slots:
    /// Nothing: there is no database to send results to.
    void slotToDataBase() {}
    void slotSaveToFile();
    void slotExportToFile();
    /// Puts the selected results on the clipboard as XML, the current one first.
    void slotCopy();
    /// Adds the entries on the clipboard, of whatever list they are, as results.
    void slotPaste();

private:
    bool m_connected = false;
};
