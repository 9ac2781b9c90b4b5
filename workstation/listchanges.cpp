#include "workstation/listchanges.h"

#include "host/base/longwork.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodemediatorctrl.h"
#include "host/freqlist/undohistory.h"
#include "host/freqlist/undopart.h"
#include "host/valuetree/node.h"

#include <QPointer>

namespace {

/// How a list stands to what it was read from or written to.
struct Mark {
    bool wasEmpty = true; ///< the list, when it was read or written
    bool isChanged = false;
    int saves = 0; ///< how often it was written
};

} // namespace

/// One list, as its node tells of its children and of what changed in them, or as steps of undo do.
class ListChanges::Watch : public IObserver {
public:
    Watch(ListChanges& owner, int listId, std::function<bool()> isMachineAtWork)
        : m_owner(owner), m_listId(listId), m_isMachineAtWork(std::move(isMachineAtWork)) {
        if (FrequencyNodeMediatorCtrl* list = controller()) {
            m_node = list->GetNode();
            if (Node* node = m_node.get())
                node->AddObserver(this);
        }
        m_count = [this] { return m_node ? static_cast<qint64>(m_node->ChildCount()) : 0; };
    }
    Watch(ListChanges& owner, int listId, std::function<qint64()> count)
        : m_owner(owner),
          m_listId(listId),
          m_isMachineAtWork([] { return true; }),
          m_count(std::move(count)) {}
    ~Watch() override {
        if (Node* node = m_node.get())
            node->DeleteObserver(this);
    }

    int GetListId() const { return m_listId; }
    bool IsChanged() const { return m_mark.isChanged; }
    const Mark& GetMark() const { return m_mark; }
    /// The mark of before a file was read. What has been written since may be the file of before.
    void TakeMark(const Mark& mark) {
        m_mark.wasEmpty = mark.wasEmpty;
        set(mark.isChanged || mark.saves != m_mark.saves);
    }

    void MarkSaved() {
        if (FrequencyNodeMediatorCtrl* list = controller())
            list->ForceUpdateNow(); // what was read tells of itself now, and not later
        if (!keepForUndo())
            ++m_mark.saves;
        m_mark.wasEmpty = m_count() == 0;
        set(false);
    }
    void MarkChanged() {
        keepForUndo();
        set(true);
    }
    void SetFollowed(bool followed) {
        m_isFollowed = followed;
        MarkSaved();
    }
    void NoteStep() {
        if (isMachineAtWork())
            noteChange();
    }
    /// Work on lists begins; it was cancelled, and nothing has changed.
    void NoteBefore() { m_before = m_mark; }
    void TakeBack() {
        if (FrequencyNodeMediatorCtrl* list = controller())
            list->ForceUpdateNow();
        TakeMark(m_before);
    }
    void Update(Observable*, TChangeCode code) override {
        const bool isNews = code != TChangeCode::Removing && code != TChangeCode::Announcement;
        if (isNews && !isMachineAtWork())
            noteChange();
    }

private:
    FrequencyNodeMediatorCtrl* controller() const {
        return dynamic_cast<FrequencyNodeMediatorCtrl*>(
            FreqStore::Instance().GetFrequencies(static_cast<unsigned>(m_listId)));
    }
    bool isMachineAtWork() const { return m_isMachineAtWork && m_isMachineAtWork(); }
    bool keepForUndo() const;
    void noteChange() { set(!m_mark.wasEmpty || m_count() > 0); }
    void set(bool changed) {
        changed = changed && m_isFollowed;
        if (std::exchange(m_mark.isChanged, changed) != changed)
            emit m_owner.Changed(m_listId);
    }

    ListChanges& m_owner;
    int m_listId;
    WeakRef<Node> m_node;
    std::function<bool()> m_isMachineAtWork;
    std::function<qint64()> m_count;
    bool m_isFollowed = true;
    Mark m_mark;
    Mark m_before; ///< when work began
};

/// Takes the mark of a list back, and there again, with the file that was read.
class ListChanges::MarkPart final : public UndoPart {
public:
    MarkPart(ListChanges& owner, int listId, const Mark& mark)
        : m_owner(&owner), m_listId(listId), m_kept(mark) {}

    void Swap() override {
        m_next = m_kept;
        if (const Watch* watch = m_owner ? m_owner->find(m_listId) : nullptr)
            m_kept = watch->GetMark();
    }
    /// The entries that came back have marked the list as changed.
    void Settle() override {
        if (Watch* watch = m_owner ? m_owner->find(m_listId) : nullptr)
            watch->TakeMark(m_next);
    }

private:
    QPointer<ListChanges> m_owner;
    int m_listId;
    Mark m_kept;
    Mark m_next;
};

/// False when no action of the operator runs. Entries that were read have marked the list already.
bool ListChanges::Watch::keepForUndo() const {
    const Mark& before = LongWork::IsRunning() ? m_before : m_mark;
    return UndoHistory::Instance().Add(std::make_unique<MarkPart>(m_owner, m_listId, before));
}

ListChanges::ListChanges() {
    connect(&UndoHistory::Instance(), &UndoHistory::Changed, this, &ListChanges::noteStep);
    connect(&UndoHistory::Instance(), &UndoHistory::WorkBegins, this, [this] {
        for (const auto& watch : m_watches)
            watch->NoteBefore();
    });
    connect(&UndoHistory::Instance(), &UndoHistory::WorkTakenBack, this, [this] {
        for (const auto& watch : m_watches)
            watch->TakeBack();
    });
}
ListChanges::~ListChanges() = default;

void ListChanges::Follow(int listId, std::function<bool()> isMachineAtWork) {
    m_watches.push_back(std::make_unique<Watch>(*this, listId, std::move(isMachineAtWork)));
    MarkSaved(listId);
}

void ListChanges::FollowSteps(int listId, std::function<qint64()> count) {
    m_watches.push_back(std::make_unique<Watch>(*this, listId, std::move(count)));
    MarkSaved(listId);
}

ListChanges::Watch* ListChanges::find(int listId) const {
    const auto found = std::find_if(m_watches.begin(), m_watches.end(),
                                    [listId](const auto& watch) { return watch->GetListId() == listId; });
    return found == m_watches.end() ? nullptr : found->get();
}

void ListChanges::noteStep(int listId) {
    if (Watch* watch = find(listId))
        watch->NoteStep();
}

void ListChanges::SetFollowed(int listId, bool followed) {
    if (Watch* watch = find(listId))
        watch->SetFollowed(followed);
}

/// What a step says of files when it is undone has been said before; see `MarkPart`.
void ListChanges::MarkSaved(int listId) {
    Watch* const watch = find(listId);
    if (watch && !UndoHistory::Instance().IsSwapping())
        watch->MarkSaved();
}

void ListChanges::MarkChanged(int listId) {
    Watch* const watch = find(listId);
    if (watch && !UndoHistory::Instance().IsSwapping())
        watch->MarkChanged();
}

bool ListChanges::IsChanged(int listId) const {
    const Watch* watch = find(listId);
    return watch && watch->IsChanged();
}
