#pragma once

#include "controls/frequencystore/common/entrylistview.h"

#include <QBasicTimer>

#include <memory>

class CanCloseTabDialog;
class HalvoViewEditor;
class MemorySystemHandler;

namespace FreqStoreXml {
class FrequencyStoreEntry;
}

/// List view of the memory channels of a receiver, with the columns of its kind. Its actions call the
/// memory-system handler; whatever changes the channels brings the receiver's job up to date.
///
/// While the receiver is in scan surveillance, actions that touch files are off; while the list waits for a
/// file, those that add to it are.
class MemorySystemListView : public EntryListView {
    Q_OBJECT

public:
    MemorySystemListView(QWidget* parent, unsigned listId);
    ~MemorySystemListView() override;

    void InitFreqStoreWidget(FreqStoreListViewButtonBar* bar) override;
    QString EmptyText() const override;
    QString WhyOff(int action) const override;

public slots:
    /// Adds a channel with the receiver's present settings, and makes it the current row.
    void slotNew();
    /// Edits all selected channels when the row is one of them, else that of the row alone.
    void slotEdit();
    void slotEdit(SortListViewItem* item);
    /// Puts the selected channels on the clipboard as XML, the current one first, and into the store's copy
    /// buffer.
    void slotCopy();
    /// Adds the entries on the clipboard, whatever list they come from, as channels; when it holds none,
    /// those of the store's copy buffer. The first of them becomes the current row.
    void slotPaste();
    void slotDelete();
    void slotLoadFile();
    void slotSavetoJob();
    /// Takes what the editor's dialog holds.
    void slotAcceptChanges();

protected:
    bool HasEditor() const override { return true; }
    void EntriesWereEdited() override { bringJobUpToDate(); }
    std::vector<FrequencyNodeMediator*> CopiedMediators() const override { return SelectedInOrder(); }
    /// A range is as near as the nearest of its frequencies.
    double DistanceTo(FrequencyNodeMediator& mediator, double hertz) const override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    void connectBar(FreqStoreListViewButtonBar& bar);
    void DoDelete();
    void SetFileName2Caption(const QString& text);
    QVector<FreqStoreXml::FrequencyStoreEntry> copyBufferEntries() const;
    void bringJobUpToDate();
    void lookAtHandler();
    static MemorySystemHandler& handler();

    std::unique_ptr<CanCloseTabDialog> m_dialog; ///< while one is open
    HalvoViewEditor* m_editor = nullptr;         ///< in the dialog
    QBasicTimer m_handlerTick;
    bool m_inSurveillance = false; ///< as last seen
    bool m_isWaiting = false;      ///< for a file, since the last one could not be read; as last seen
};
