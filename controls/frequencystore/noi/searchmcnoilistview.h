#pragma once

#include "host/freqlist/frequencynodelistview.h"

class NOIFrequencyHandler;

/// List view of the frequencies of interest. Its actions call the list's handler.
class SearchMCNOIListView : public FrequencyNodeListView {
    Q_OBJECT

public:
    SearchMCNOIListView(QWidget* parent, unsigned listId);

    void InitFreqStoreWidget(FreqStoreListViewButtonBar* bar) override;
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

private:
    void connectBar(FreqStoreListViewButtonBar& bar);
    void copy2FreqStore(FrequencyNodeMediator& mediator);
    bool isWaiting() const;
    bool showWaiting();
    void runFileCommand(QString (NOIFrequencyHandler::*command)());
    void addNew();
    void goToNewest();

    bool m_connected = false;
    unsigned m_copyFrequency;
    unsigned m_copyComment;
    unsigned m_copyBandwidth;
    QString m_fileName;
};
