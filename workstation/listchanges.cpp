#include "workstation/listchanges.h"

#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodemediatorctrl.h"
#include "host/freqlist/undohistory.h"
#include "host/valuetree/node.h"

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
    bool IsChanged() const { return m_isChanged; }

    void MarkSaved() {
        if (FrequencyNodeMediatorCtrl* list = controller())
            list->ForceUpdateNow(); // what was read tells of itself now, and not later
        m_wasEmpty = m_count() == 0;
        set(false);
    }
    void MarkChanged() { set(true); }
    void SetFollowed(bool followed) {
        m_isFollowed = followed;
        MarkSaved();
    }
    void NoteStep() {
        if (isMachineAtWork())
            noteChange();
    }
    /// Work on lists begins; it was cancelled, and nothing has changed.
    void NoteBefore() { m_before = {m_wasEmpty, m_isChanged}; }
    void TakeBack() {
        if (FrequencyNodeMediatorCtrl* list = controller())
            list->ForceUpdateNow();
        m_wasEmpty = m_before.first;
        set(m_before.second);
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
    void noteChange() { set(!m_wasEmpty || m_count() > 0); }
    void set(bool changed) {
        changed = changed && m_isFollowed;
        if (std::exchange(m_isChanged, changed) != changed)
            emit m_owner.Changed(m_listId);
    }

    ListChanges& m_owner;
    int m_listId;
    WeakRef<Node> m_node;
    std::function<bool()> m_isMachineAtWork;
    std::function<qint64()> m_count;
    bool m_wasEmpty = true; ///< when it was read or written
    bool m_isFollowed = true;
    bool m_isChanged = false;
    std::pair<bool, bool> m_before{}; ///< both, when work began
};

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

void ListChanges::MarkSaved(int listId) {
    if (Watch* watch = find(listId))
        watch->MarkSaved();
}

void ListChanges::MarkChanged(int listId) {
    if (Watch* watch = find(listId))
        watch->MarkChanged();
}

bool ListChanges::IsChanged(int listId) const {
    const Watch* watch = find(listId);
    return watch && watch->IsChanged();
}
