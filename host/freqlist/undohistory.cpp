#include "host/freqlist/undohistory.h"

#include "host/base/problems.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodemediatorctrl.h"
#include "host/freqlist/textstep.h"
#include "host/freqlist/undostep.h"
#include "host/report/rgexception.h"
#include "host/valuetree/recorders.h"

#include <QScopedValueRollback>
#include <QThread>
#include <QUndoStack>

#include <algorithm>
#include <set>

namespace {

constexpr char TraceSource[] = "undohistory";

QString withoutMarks(QString name) {
    return name.remove(QLatin1Char('&')).remove(QChar(0x2026)).remove(QStringLiteral("..."));
}

/// Changes come by the hundred thousand, and the GUI thread stays the same.
int loopLevel() {
    static const QThread* const thread = QThread::currentThread();
    return thread->loopLevel();
}

} // namespace

/// Notes what an action does to the lists of the store.
class UndoHistory::Recording final : public ChangeRecorder {
public:
    Recording(const QString& name, const std::vector<Followed>& followed)
        : m_name(withoutMarks(name)), m_followed(followed), m_level(loopLevel()) {
        FreqStore& store = FreqStore::Instance();
        for (const int id : store.GetListIds()) {
            const auto* list =
                dynamic_cast<FrequencyNodeMediatorCtrl*>(store.GetFrequencies(static_cast<unsigned>(id)));
            if (list && list->GetNode())
                m_lists.emplace_back(id, *list->GetNode());
        }
    }

    void Attached(Node& child) override {
        if (ListStep* list = find(child.GetParentNode()))
            list->NoteAttached(child);
    }
    NodeKeeper* Detaching(Node& child) override {
        ListStep* const list = find(child.GetParentNode());
        return list ? list->NoteDetaching(child) : nullptr;
    }
    void Changing(ValueBase& value, IObserver* originator) override {
        const Node* entry = value.GetParentNode();
        if (!entry)
            return;
        if (ListStep* list = find(entry->GetParentNode()))
            return list->NoteChanging(*entry, value.NameId(), value);
        if (!noteText(value, originator))
            noteDeeper(value);
    }

    void Finish() {
        for (ListStep& list : m_lists)
            list.Finish();
        std::erase_if(m_lists, [](const ListStep& list) { return list.IsEmpty(); });
        std::erase_if(m_texts, [](TextStep& text) { return !text.Finish(); });
    }
    int Level() const { return m_level; }
    const QString& Name() const { return m_name; }
    std::vector<ListStep>& Lists() { return m_lists; }
    std::vector<TextStep>& Texts() { return m_texts; }
    std::vector<std::unique_ptr<UndoPart>>& Parts() { return m_parts; }
    /// The list that the step is named after, and how many of its entries it is about.
    std::pair<int, size_t> Subject() const {
        if (!m_lists.empty())
            return {m_lists.front().GetListId(), m_lists.front().EntryCount()};
        for (const auto& part : m_parts) {
            if (part->GetListId() != 0 && part->CanSwap())
                return {part->GetListId(), part->EntryCount()};
        }
        return {};
    }

private:
    /// The list of that node; null when it is none, or when what happens is no part of the action.
    ListStep* find(const Node* node) {
        if (!node || loopLevel() != m_level)
            return nullptr;
        if (m_last < m_lists.size() && m_lists[m_last].IsOf(*node))
            return &m_lists[m_last];
        const auto found =
            std::ranges::find_if(m_lists, [node](const ListStep& list) { return list.IsOf(*node); });
        if (found == m_lists.end())
            return nullptr;
        m_last = static_cast<size_t>(found - m_lists.begin());
        return &*found;
    }
    bool noteText(ValueBase& value, IObserver* originator) {
        const auto followed = std::find_if(m_followed.begin(), m_followed.end(),
                                           [&](const Followed& one) { return one.text.get() == &value; });
        if (followed == m_followed.end())
            return false;
        const auto isNoted = [&](const TextStep& text) { return text.IsOf(value); };
        if (loopLevel() == m_level && std::none_of(m_texts.begin(), m_texts.end(), isNoted))
            m_texts.emplace_back(*followed->text.get(), followed->list.get(), originator);
        return true;
    }
    /// A value of a sub-node of an entry.
    void noteDeeper(const ValueBase& value) {
        QString path = value.GetName();
        for (const Node* node = value.GetParentNode(); node; node = node->GetParentNode()) {
            if (ListStep* list = find(node->GetParentNode()))
                return list->NoteChanging(*node, Names::Intern(path), value);
            path.prepend(node->GetName() + QLatin1Char('/'));
        }
    }

    QString m_name;
    const std::vector<Followed>& m_followed;
    int m_level;
    std::vector<ListStep> m_lists;
    size_t m_last = 0;
    std::vector<TextStep> m_texts;
    std::vector<std::unique_ptr<UndoPart>> m_parts;
};

namespace {

/// The rows that the operator had selected in a list.
struct Selection {
    int listId;
    std::vector<quint32> serials;
    int scrollPlace;
};

std::vector<Selection> selectionsOf(const std::vector<ListStep>& lists) {
    std::vector<Selection> selections;
    for (const ListStep& list : lists) {
        if (const FrequencyNodeMediatorCtrl* controller = list.Controller())
            selections.push_back(
                {list.GetListId(), controller->SelectedSerials(), controller->ScrollPlace()});
    }
    return selections;
}

void select(const std::vector<ListStep>& lists, const std::vector<Selection>& selections) {
    for (const ListStep& list : lists) {
        const auto found = std::ranges::find(selections, list.GetListId(), &Selection::listId);
        if (found != selections.end())
            list.Select(found->serials, found->scrollPlace);
    }
}

} // namespace

struct UndoHistory::Running {
    int action;
    int joined = 0; ///< actions within this one that are still running
    std::unique_ptr<Recording> recording;
    std::vector<Selection> selections; ///< before the long work that runs
};

/// A step as the stack has it.
class UndoHistory::Step final : public QUndoCommand {
public:
    Step(UndoHistory& history, const QString& text, Recording& recording)
        : QUndoCommand(text),
          m_history(history),
          m_lists(std::move(recording.Lists())),
          m_texts(std::move(recording.Texts())),
          m_parts(std::move(recording.Parts())) {}

    void undo() override { swapAsWork(ListStep::Direction::Undo); }
    /// The stack does a new step once; that has happened.
    void redo() override {
        if (std::exchange(m_isDone, true))
            swapAsWork(ListStep::Direction::Redo);
    }
    /// Undoes what was never pushed; answers with the lists that it changed.
    std::set<int> TakeBack() {
        std::set<int> lists;
        for (const ListStep& list : m_lists)
            lists.insert(list.GetListId());
        swap(ListStep::Direction::Undo);
        return lists;
    }
    /// Texts that followed the lists after the action's end.
    void Amend(std::vector<TextStep>& texts) {
        for (TextStep& later : texts) {
            const auto own = std::find_if(m_texts.begin(), m_texts.end(),
                                          [&](const TextStep& text) { return text.IsOfSame(later); });
            if (own != m_texts.end())
                own->Amend(later);
            else if (std::any_of(m_lists.begin(), m_lists.end(),
                                 [&](const ListStep& list) { return later.Follows(list.GetNode()); }))
                m_texts.push_back(std::move(later));
        }
    }
    void TellChanged() const {
        for (const ListStep& list : m_lists)
            emit m_history.Changed(list.GetListId());
        for (const auto& part : m_parts) {
            if (part->GetListId() != 0)
                emit m_history.Changed(part->GetListId());
        }
    }
    bool PackSome() {
        return std::ranges::any_of(m_lists, [](ListStep& list) { return list.PackSome(); });
    }
    void Pack() {
        while (PackSome())
            ;
    }
    /// Bytes of entries that are kept as they are.
    size_t Resting() const {
        size_t bytes = 0;
        for (const ListStep& list : m_lists)
            bytes += list.Parked();
        return bytes;
    }
    /// Bytes of all else.
    size_t Packed() const { return InMemory() - Resting(); }
    void Spill() {
        for (ListStep& list : m_lists)
            list.Spill();
        for (TextStep& text : m_texts)
            text.Spill();
        for (const auto& part : m_parts)
            part->Spill();
    }
    size_t InMemory() const {
        size_t bytes = 0;
        for (const ListStep& list : m_lists)
            bytes += list.InMemory();
        for (const TextStep& text : m_texts)
            bytes += text.InMemory();
        for (const auto& part : m_parts)
            bytes += part->InMemory();
        return bytes;
    }

private:
    bool canSwap() const {
        return std::all_of(m_lists.begin(), m_lists.end(),
                           [](const ListStep& list) { return list.CanSwap(); }) &&
               std::all_of(m_parts.begin(), m_parts.end(), [](const auto& part) { return part->CanSwap(); });
    }
    /// A step is swapped as a whole; one that the operator cancels is swapped back.
    void swapAsWork(ListStep::Direction direction) {
        using enum ListStep::Direction;
        if (m_history.m_passesOver)
            return;
        const std::vector<Selection> selections = selectionsOf(m_lists);
        const bool isWhole = LongWork::Run(text(), [&] {
            try {
                {
                    const LongWork::Unbroken whole;
                    swap(direction);
                }
                LongWork::Step(1, 1);
            } catch (const WorkCancelled&) {
                const LongWork::Unbroken whole;
                swap(direction == Undo ? Redo : Undo);
                select(m_lists, selections);
                throw;
            }
        });
        if (!isWhole)
            m_history.stay();
    }
    void swap(ListStep::Direction direction) {
        const QScopedValueRollback swaps(m_history.m_swaps, true);
        QString reason;
        if (!canSwap())
            reason = tr("the list or entries of it have gone meanwhile");
        try {
            if (reason.isEmpty())
                swapAll(direction);
        } catch (const RGException& exception) {
            reason = exception.GetErrorText();
        } catch (const std::bad_alloc&) {
            reason = tr("there is not enough memory");
        }
        if (reason.isEmpty())
            return;
        setObsolete(true);
        const QString told = (direction == ListStep::Direction::Undo ? tr("%1 cannot be undone: %2")
                                                                     : tr("%1 cannot be done again: %2"))
                                 .arg(text(), reason);
        emit FreqStore::Instance().Told(told);
    }
    void swapAll(ListStep::Direction direction) {
        std::vector<std::optional<QString>> others;
        std::vector<QString> presents;
        for (const TextStep& text : m_texts) {
            others.push_back(text.Other());
            presents.push_back(text.Present());
        }
        const std::vector<UndoPart*> parts = partsInOrder(direction);
        for (UndoPart* part : parts)
            part->Swap(); // the lists' own notifications come after those of their files
        for (ListStep& list : m_lists)
            list.Swap(direction);
        for (const ListStep& list : m_lists) {
            if (FrequencyNodeMediatorCtrl* controller = list.Controller())
                controller->EntriesWereEdited();
        }
        for (size_t i = 0; i < m_texts.size(); ++i) {
            if (others[i])
                m_texts[i].Put(*others[i], presents[i]);
        }
        for (UndoPart* part : parts)
            part->Settle();
        if (!m_history.m_isTakingBack)
            show(direction);
    }
    std::vector<UndoPart*> partsInOrder(ListStep::Direction direction) const {
        std::vector<UndoPart*> parts;
        for (const auto& part : m_parts)
            parts.push_back(part.get());
        if (direction == ListStep::Direction::Undo)
            std::ranges::reverse(parts);
        return parts;
    }
    void show(ListStep::Direction direction) {
        for (const auto& part : m_parts) {
            if (part->GetListId() != 0)
                emit m_history.Shown(part->GetListId());
        }
        for (const ListStep& list : m_lists) {
            emit m_history.Shown(list.GetListId());
            list.Show(direction);
        }
        TellChanged();
        m_history.keepWithinMemory();
    }

    UndoHistory& m_history;
    std::vector<ListStep> m_lists;
    std::vector<TextStep> m_texts;
    std::vector<std::unique_ptr<UndoPart>> m_parts;
    bool m_isDone = false;
};

UndoHistory& UndoHistory::Instance() {
    static auto* const history = new UndoHistory;
    return *history;
}

UndoHistory::UndoHistory() : m_stack(new QUndoStack(this)) {
    m_stack->setUndoLimit(MostSteps);
    m_packing.setSingleShot(true);
    connect(&m_packing, &QTimer::timeout, this, &UndoHistory::packInTurns);
}

void UndoHistory::SetOn(bool on) {
    OperatorAction::SetListener(on ? this : nullptr);
    LongWork::SetKeeper(on ? this : nullptr);
    if (on)
        return;
    Recorders::SetForAction(nullptr);
    m_running.clear();
    m_stack->clear();
    m_packing.stop();
}

UndoHistory::~UndoHistory() = default;

void UndoHistory::Follow(Value<QString>& text, Node& list) {
    std::erase_if(m_texts, [&](const Followed& known) { return !known.text || known.text.get() == &text; });
    m_texts.push_back({&text, &list});
}

bool UndoHistory::Add(std::unique_ptr<UndoPart> part) {
    Running* const running = runningHere();
    if (running)
        running->recording->Parts().push_back(std::move(part));
    return running != nullptr;
}

/// The action that runs in this event loop; null when none does.
UndoHistory::Running* UndoHistory::runningHere() {
    const bool isHere = !m_running.empty() && m_running.back().recording->Level() == loopLevel();
    return isHere ? &m_running.back() : nullptr;
}

void UndoHistory::ForEachPart(const std::function<void(UndoPart&)>& visit) {
    for (const Running& running : m_running) {
        for (const auto& part : running.recording->Parts())
            visit(*part);
    }
}

int UndoHistory::Begin(const QString& name) {
    if (m_swaps)
        return 0; // what follows undo and redo is a part of them
    if (Running* const running = runningHere()) {
        ++running->joined;
        return running->action;
    }
    m_running.push_back({++m_lastAction, 0, std::make_unique<Recording>(name, m_texts), {}});
    Recorders::SetForAction(m_running.back().recording.get());
    emit Begun();
    return m_lastAction;
}

void UndoHistory::BeginAnew() {
    Running* const running = runningHere();
    if (!running)
        return;
    auto recording = std::make_unique<Recording>(running->recording->Name(), m_texts);
    Recorders::SetForAction(recording.get());
    running->recording = std::move(recording);
    emit Begun();
    NoteBefore();
}

/// An action may end after one around it when what holds it ends.
void UndoHistory::End(int action) {
    const auto ends = std::find_if(m_running.begin(), m_running.end(),
                                   [action](const Running& running) { return running.action == action; });
    if (ends == m_running.end() || ends->joined-- > 0)
        return;
    const std::unique_ptr<Recording> recording = std::move(ends->recording);
    m_running.erase(ends);
    Recorders::SetForAction(m_running.empty() ? nullptr : m_running.back().recording.get());
    try {
        push(*recording);
    } catch (const std::bad_alloc&) {
        Problems::Report(TraceSource, {recording->Name(), 0, tr("cannot be undone: not enough memory")});
    }
}

void UndoHistory::NoteBefore() {
    emit WorkBegins();
    if (Running* const running = runningHere())
        running->selections = selectionsOf(running->recording->Lists());
}

/// The stack comes back to where it was when it has done what it thinks is a step.
void UndoHistory::stay() {
    m_passesOver = true;
    QMetaObject::invokeMethod(
        this,
        [this, index = m_stack->index()] {
            m_stack->setIndex(index);
            m_passesOver = false;
        },
        Qt::QueuedConnection);
}

/// What the action goes on with is recorded anew.
void UndoHistory::Revert() {
    if (Running* const running = runningHere()) {
        const QScopedValueRollback isTakingBack(m_isTakingBack, true);
        Recorders::SetForAction(nullptr);
        const std::unique_ptr<Recording> done = std::move(running->recording);
        done->Finish();
        Step step(*this, done->Name(), *done);
        const std::set<int> changed = step.TakeBack();
        running->recording = std::make_unique<Recording>(done->Name(), m_texts);
        Recorders::SetForAction(running->recording.get());
        std::erase_if(running->selections,
                      [&](const Selection& selection) { return !changed.contains(selection.listId); });
        select(running->recording->Lists(), running->selections);
    }
    emit WorkTakenBack();
    if (runningHere())
        emit Begun(); // its parts have gone with what was done
}

bool UndoHistory::DoWhole(const std::function<bool()>& act) {
    NoteBefore();
    const bool isDone = act();
    if (!isDone && runningHere())
        Revert();
    return isDone;
}

void UndoHistory::push(Recording& recording) {
    recording.Finish();
    const auto [listId, count] = recording.Subject();
    if (listId == 0) {
        // What followed a step just done; commands of the stack are all steps.
        if (!recording.Texts().empty() && m_stack->index() > 0)
            const_cast<Step*>(static_cast<const Step*>(m_stack->command(m_stack->index() - 1)))
                ->Amend(recording.Texts());
        return;
    }
    const IFrequencyListDefinition* list = FreqStore::Instance().GetDefinition(listId);
    const QString what = tr("%1 %n entries", "", static_cast<int>(count)).arg(recording.Name());
    auto* const step =
        new Step(*this, list ? what + QStringLiteral(" - ") + list->GetName() : what, recording);
    m_stack->push(step);
    keepWithinMemory();
    step->TellChanged();
}

size_t UndoHistory::sumOf(size_t (Step::*bytes)() const) const {
    size_t sum = 0;
    for (int i = 0; i < m_stack->count(); ++i)
        sum += (static_cast<const Step*>(m_stack->command(i))->*bytes)();
    return sum;
}

size_t UndoHistory::InMemory() const {
    return sumOf(&Step::InMemory);
}

/// The oldest steps are wanted last.
void UndoHistory::shrinkOldest(void (Step::*shrink)(), size_t (Step::*bytes)() const, size_t most) {
    size_t sum = sumOf(bytes);
    for (int i = 0; i < m_stack->count() && sum > most; ++i) {
        auto* step = const_cast<Step*>(static_cast<const Step*>(m_stack->command(i)));
        sum -= (step->*bytes)();
        (step->*shrink)();
        sum += (step->*bytes)();
    }
}

void UndoHistory::keepWithinMemory() {
    shrinkOldest(&Step::Pack, &Step::Resting, m_mostResting);
    shrinkOldest(&Step::Spill, &Step::Packed, MostInMemory);
    if (InMemory() > MostInMemory && !m_packing.isActive())
        m_packing.start(m_rest);
}

/// Packs the oldest entries that rest, a few milliseconds at a time.
void UndoHistory::packInTurns() {
    for (int i = 0; i < m_stack->count() && InMemory() > MostInMemory; ++i) {
        auto* step = const_cast<Step*>(static_cast<const Step*>(m_stack->command(i)));
        if (step->Resting() == 0)
            continue;
        step->PackSome();
        shrinkOldest(&Step::Spill, &Step::Packed, MostInMemory);
        m_packing.start(0);
        return;
    }
}
