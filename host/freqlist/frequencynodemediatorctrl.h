#pragma once

#include "host/freqlist/mediator.h"
#include "host/freqlist/multiviewmediator.h"
#include "host/freqstorexml/frequencystorelisthelper.h"
#include "host/freqstorexml/listcontent.h"

#include <QBasicTimer>
#include <QObject>

#include <functional>
#include <vector>

class FrequencyNodeMediator;
class Node;

namespace FreqStoreXml {
class FrequencyStoreEntry;
class FrequencyStoreListWriter;
} // namespace FreqStoreXml

/// Controller of all mediators of one list: it watches the children of a list node, keeps one mediator per
/// child in the order of the children, and gives each attached view one row per mediator. It owns the
/// mediators; the views belong to whoever made them.
///
/// Changes are gathered: they take effect at the next tick of the controller's timer, or at once by
/// `ForceUpdateNow`. A suspended controller follows nothing and touches no view; when it is resumed it is
/// brought up to date at once.
///
/// \code
/// class Bookmarks : public FrequencyNodeMediatorCtrl {
/// public:
///     Bookmarks() : FrequencyNodeMediatorCtrl(42) { Init(QStringLiteral("/Bookmarks")); }
///
/// protected:
///     Mediator* CreateMediator(Observable* entry) override { return new Bookmark(this, entry); }
/// };
/// \endcode
class FrequencyNodeMediatorCtrl : public QObject,
                                  public MediatorCtrl,
                                  public IObserver,
                                  public MultiViewMediatorCtrl,
                                  public IFreqStoreReport {
    Q_OBJECT

public:
    /// `storeType` is the list's store type, which is also handed to the mediators.
    explicit FrequencyNodeMediatorCtrl(int storeType);
    /// Takes itself out of the store and its views.
    ~FrequencyNodeMediatorCtrl() override;

    void Init(const QString& nodePath) override;
    void RemoveMyMediators() override;
    void AddView(FrequencyNodeListView* view) override;
    void RemoveView(FrequencyNodeListView* view) override;
    void UpdateMyViewItems(FrequencyNodeListView* view) override;
    void SetDirty(bool dirty) override;
    void SetEntryDirty(Node* entry) override;

    /// Number of mediators.
    unsigned long size() const { return static_cast<unsigned long>(m_order.size() - m_holes); }
    /// The n-th mediator in the order of the node's children; null outside 0 to size() - 1.
    FrequencyNodeMediator* At(unsigned long index);
    /// The mediator of an entry node; null when it has none (yet).
    FrequencyNodeMediator* Find(const Node* entry);
    /// Calls `visit` for each mediator in order. `visit` must not change the list.
    void ForEach(const std::function<void(FrequencyNodeMediator&)>& visit);
    /// The same, each a step of LongWork: the operator may cancel it.
    void ForEachInWork(const std::function<void(FrequencyNodeMediator&)>& visit);
    /// The node whose children the controller watches; null before `Init` and after the node ended.
    Node* GetNode() const { return m_node; }

    void ForceUpdateNow() override;
    /// Whether contents of entries have changed that the node's observers are told of at the next update.
    bool HasNewContents() const { return m_entriesChanged; }
    /// The periodic update: does what is due and stops the timer.
    void OnTimer();
    void Suspend(bool suspend);
    bool IsSuspended() const { return m_suspended; }

    /// Writes all entries to the file as frequency-store XML; false, told and traced, with the old file in
    /// place, on failure.
    [[nodiscard]] bool SaveFrequencies(const QString& fileName);
    /// Gives each entry as an interchange record, which is good during the call.
    void VisitRecords(const std::function<void(const FreqStoreXml::FrequencyStoreEntry&)>& visit);
    /// What other programs' files get of the list.
    virtual FreqStoreXml::ListContent Content();
    /// Writes all entries, as CSV when `csv` is set; throws RGException with file and reason instead.
    void WriteFrequencies(const QString& fileName, bool csv,
                          FreqStoreXml::FrequencyStoreListHelper::ListType type);
    /// Writes all entries in the export form of the list type: search MC results as one line of text per
    /// entry (those without a text form are left out), all others as CSV. False as above.
    [[nodiscard]] bool ExportFrequencies(const QString& fileName,
                                         FreqStoreXml::FrequencyStoreListHelper::ListType type);

    /// Makes an entry of this list from an interchange entry. The list's owner sets it; without one entries
    /// are plain: frequency, bandwidth, comment, demodulation and type.
    using EntryMaker = std::function<void(const FreqStoreXml::FrequencyStoreEntry& entry)>;
    void SetEntryMaker(EntryMaker maker) { m_entryMaker = std::move(maker); }
    /// Adds entries behind those that are there, in one refresh. Nothing happens without a list node.
    void AppendEntries(const QVector<FreqStoreXml::FrequencyStoreEntry>& entries);

    // For undo: what it has brought back or changed.

    /// Tells whoever follows the list's entries by more than their node.
    void EntriesWereEdited() { emit EntriesEdited(); }
    /// The scroll place of the list's first view.
    int ScrollPlace() const;
    /// Serials of the entries that are selected in the list's first view, ascending.
    std::vector<quint32> SelectedSerials() const;
    /// Selects entries, which are in order, in all views, at that scroll place.
    void SelectEntries(const std::vector<const Node*>& entries, int scrollPlace);

    QString GetFreqStoreReport() override;
    void SetReportXml(const QString& xml, bool replace) override;
    int GetFreqStoreType() override { return m_storeType; }

    void NotifyCreated(Mediator* mediator) override;
    void NotifyDeleted(Mediator* mediator) override;
    QString GetUsageName() const override;

    void Update(Observable* subject, TChangeCode code) override;

signals:
    /// The mediators and rows have been brought up to date after a change.
    void Refreshed();
    /// Entries were changed by undo or redo: what is made of the list follows.
    void EntriesEdited();

protected:
    /// Makes the mediator of an entry node; null for an observable that gets none.
    virtual Mediator* CreateMediator(Observable* entryNode);
    void timerEvent(QTimerEvent* event) override;
    /// Gives each entry with its record, which is good during the call.
    void ForEachRecord(
        const std::function<void(FrequencyNodeMediator&, const FreqStoreXml::FrequencyStoreEntry&)>& visit);

private:
    void followNewChildren();
    void followRestored();
    std::vector<FrequencyNodeMediator*> mediatorsOf(const std::vector<const Node*>& entries) const;
    void closeHoles();
    void scheduleUpdate();
    void forEachEntry(const std::function<void(FrequencyNodeMediator&)>& visit);
    void writeList(FreqStoreXml::FrequencyStoreListWriter& writer);
    void writeLines(const QString& fileName);
    void makePlainEntry(const FreqStoreXml::FrequencyStoreEntry& entry);

    EntryMaker m_entryMaker;
    int m_storeType;
    Node* m_node = nullptr;
    quint32 m_seenSerial = 0;                    ///< children attached up to here have been seen
    quint32 m_seenRestores = 0;                  ///< see `Node::RestoreCount`
    std::vector<FrequencyNodeMediator*> m_order; ///< null where a mediator ended
    size_t m_holes = 0;
    std::vector<FrequencyNodeListView*> m_views;
    bool m_suspended = false;
    bool m_ending = false;
    bool m_entriesChanged = false; ///< entries themselves changed, not only which ones there are
    std::vector<Node*> m_changed;  ///< these entries, when they are known
    QBasicTimer m_timer;
};
