#pragma once

#include "controls/frequencystore/common/entrylistview.h"

class NOIFrequencyHandler;

/// List view of the frequencies of interest. Its actions call the list's handler.
class SearchMCNOIListView : public EntryListView {
    Q_OBJECT

public:
    SearchMCNOIListView(QWidget* parent, unsigned listId);

    void InitFreqStoreWidget(FreqStoreListViewButtonBar* bar) override;
    QString EmptyText() const override;
    QString WhyOff(int action) const override;

public slots:
    void slotLoadFile();
    void slotSaveToFile();
    /// Puts the selected entries on the clipboard as XML, the current one first, and into the store's copy
    /// buffer.
    void slotCopy();
    /// Adds what lies on the clipboard, whatever list it is of.
    void slotPaste();
    /// Adds an entry with the receiver's settings and makes it the current row.
    void slotNew();
    /// Edits the current entry.
    void slotEdit();
    /// Edits the entry of a row; without one a new entry is added first, and the current row is edited.
    void slotEdit(SortListViewItem* item);
    /// The entries have gone already: the band list follows.
    void slotDelete();
    void slotExportToFile();
    void slotImportFromFile();

public:
    /// What the last file command answered: the name of its file, or nothing.
    const QString& GetFileName() const { return m_fileName; }

protected:
    bool HasEditor() const override { return true; }
    void EntriesWereEdited() override { slotDelete(); }
    /// The bandwidth goes there as a plain number of hertz.
    void FillCopyRow(FrequencyNodeMediator& mediator, FrequencyListCopyStruct& row) const override;

private:
    void connectBar(FreqStoreListViewButtonBar& bar);
    bool isWaiting() const;
    bool showWaiting();
    void runFileCommand(QString (NOIFrequencyHandler::*command)());
    void addNew();
    void goToNewest();

    QString m_fileName;
};
