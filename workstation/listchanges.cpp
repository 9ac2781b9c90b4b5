#include "workstation/listchanges.h"

#include "host/base/longwork.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodemediatorctrl.h"
#include "host/freqlist/undohistory.h"
#include "host/freqlist/undopart.h"
#include "host/valuetree/node.h"

#include <QPointer>
#include <QScopedValueRollback>

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
    const Mark& GetMark() const { return m_mark; }
    /// The mark of another time, at which the list held what it holds now. The file of then counts if the
    /// list shows it, as it was.
    void TakeMark(const Mark& mark) {
        const QString file = m_owner.m_fileOf(m_listId);
        const bool isOfSameFile =
            mark.file == file &&
            (file.isEmpty() ? mark.saves == m_mark.saves : mark.fileState == FileStamps::State::Of(file));
        if (isOfSameFile) {
            m_mark.wasEmpty = mark.wasEmpty;
            m_mark.file = mark.file;
            m_mark.fileState = mark.fileState;
        }
        set(mark.isChanged || !isOfSameFile || mark.others != m_mark.others);
    }

    void MarkSaved() {
        if (FrequencyNodeMediatorCtrl* list = controller())
            list->ForceUpdateNow(); // what was read tells of itself now, and not later
        if (!UndoHistory::Instance().IsRecording())
            ++m_mark.saves;
        m_mark.wasEmpty = m_count() == 0;
        m_mark.file = m_owner.m_fileOf(m_listId);
        m_mark.fileState = FileStamps::State::Of(m_mark.file);
        set(false);
    }
    void MarkChanged() { set(true); }
    void SetFollowed(bool followed) {
        m_isFollowed = followed;
        MarkSaved();
    }
    void NoteStep() {
        if (FrequencyNodeMediatorCtrl* list = controller(); list && list->HasNewContents())
            list->ForceUpdateNow(); // what comes later is none of the step's
        if (isMachineAtWork())
            noteChange();
    }
    /// An action begins, or a step is swapped: what waits to be told is none of its.
    void NoteWaiting() {
        if (const FrequencyNodeMediatorCtrl* list = controller(); list && list->HasNewContents())
            ++m_mark.others;
    }
    /// Work on lists begins; it was cancelled, and nothing has changed.
    void NoteBefore() {
        if (!UndoHistory::Instance().IsRecording())
            NoteWaiting();
        m_before = m_mark;
    }
    void TakeBack() {
        if (FrequencyNodeMediatorCtrl* list = controller())
            list->ForceUpdateNow();
        m_mark.others = m_before.others; // none can change a list while work runs
        TakeMark(m_before);
    }
    void Update(Observable*, TChangeCode code) override {
        const bool isNews = code != TChangeCode::Removing && code != TChangeCode::Announcement;
        if (!isNews || isMachineAtWork())
            return;
        UndoHistory& history = UndoHistory::Instance();
        if (!m_owner.m_tellsStep && !history.IsSwapping() && !history.IsRecording())
            ++m_mark.others;
        noteChange();
    }

private:
    FrequencyNodeMediatorCtrl* controller() const {
        return dynamic_cast<FrequencyNodeMediatorCtrl*>(
            FreqStore::Instance().GetFrequencies(static_cast<unsigned>(m_listId)));
    }
    bool isMachineAtWork() const { return m_isMachineAtWork && m_isMachineAtWork(); }
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

/// Knows the marks of all lists at the other end of a step. Those of the lists that the step is about are
/// taken when it tells of them: the entries that came back have marked these as changed.
class ListChanges::MarksPart final : public UndoPart {
public:
    explicit MarksPart(ListChanges& owner) : m_owner(&owner), m_kept(owner.marks()) {}

    void Swap() override {
        if (!m_owner)
            return;
        m_owner->noteWaiting();
        m_owner->m_swapped = std::exchange(m_kept, m_owner->marks());
    }

private:
    QPointer<ListChanges> m_owner;
    Marks m_kept;
};

ListChanges::ListChanges(FileOf fileOf) : m_fileOf(std::move(fileOf)) {
    connect(&UndoHistory::Instance(), &UndoHistory::Begun, this, [this] {
        noteWaiting();
        UndoHistory::Instance().Add(std::make_unique<MarksPart>(*this));
    });
    connect(&UndoHistory::Instance(), &UndoHistory::Changed, this, &ListChanges::noteStep);
    connect(&UndoHistory::Instance(), &UndoHistory::WorkBegins, this, [this] {
        for (const auto& watch : m_watches)
            watch->NoteBefore();
    });
    connect(&UndoHistory::Instance(), &UndoHistory::WorkTakenBack, this, [this] {
        const QScopedValueRollback tellsStep(m_tellsStep, true);
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

ListChanges::Marks ListChanges::marks() const {
    Marks marks;
    for (const auto& watch : m_watches)
        marks.emplace(watch->GetListId(), watch->GetMark());
    return marks;
}

void ListChanges::noteWaiting() {
    for (const auto& watch : m_watches)
        watch->NoteWaiting();
}

void ListChanges::noteStep(int listId) {
    Watch* const watch = find(listId);
    if (!watch)
        return;
    const QScopedValueRollback tellsStep(m_tellsStep, true);
    watch->NoteStep();
    const auto mark = m_swapped.find(listId);
    if (UndoHistory::Instance().IsSwapping() && mark != m_swapped.end())
        watch->TakeMark(mark->second);
}

void ListChanges::SetFollowed(int listId, bool followed) {
    if (Watch* watch = find(listId))
        watch->SetFollowed(followed);
}

/// What a step says of files when it is undone has been said before; see `MarksPart`.
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
    return watch && watch->GetMark().isChanged;
}
