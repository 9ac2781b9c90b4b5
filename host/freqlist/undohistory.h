#pragma once

#include "host/base/longwork.h"
#include "host/freqlist/keptentries.h"
#include "host/freqlist/undopart.h"
#include "host/valuetree/node.h"
#include "host/valuetree/operatoraction.h"

#include <QObject>
#include <QTimer>

#include <algorithm>
#include <memory>
#include <vector>

class QUndoStack;

/// Makes a step of each action of the operator (`OperatorAction`) that changes lists of the store, and keeps
/// the last hundred. Lists need do nothing for it: what comes, goes or changes under the nodes of their
/// controllers is noted while an action runs. Never destroyed. GUI thread only.
///
/// A step is undone and done again as it was done: entries come back to their places and paths, and are new
/// nodes to all others. One whose entries have gone meanwhile does nothing, says so and leaves the history.
/// Long work that the operator cancels is taken back in the same way, with all that its action has done, and
/// is no step.
class UndoHistory : public QObject, private OperatorAction::Listener, private LongWork::Keeper {
    Q_OBJECT

public:
    static constexpr int MostSteps = 100;
    /// What all steps may keep in memory, in bytes. When it is more, entries of the oldest become
    /// compact data, and the oldest of this go to temporary files. Entries that were deleted may rest as they
    /// are for a while, since what is undone is mostly undone soon.
    static constexpr size_t MostInMemory = size_t(64) << 20;
    /// What entries that rest may take, in bytes, where there is memory.
    static constexpr size_t MostResting = KeptEntries::MostParked;
    static constexpr int UsualRest = 60000; ///< milliseconds

    static UndoHistory& Instance();

    /// Off, as it is at first, actions are no steps, and what was kept is forgotten.
    void SetOn(bool on);
    QUndoStack& Stack() { return *m_stack; }
    /// A text that follows a list, such as the job of a receiver: it is put back with the step that caused
    /// its change, by whoever wrote it, who is not told. Neither is owned.
    void Follow(Value<QString>& text, Node& list);
    /// Makes something else a part of the running action's step; false, and it is gone, when none runs.
    bool Add(std::unique_ptr<UndoPart> part);
    /// What the running action has done so far, such as saving what a list held, is none of its step.
    void BeginAnew();
    /// Does a part of the running action; what it did to lists is taken back when it answers false.
    bool DoWhole(const std::function<bool()>& act);
    /// Whether an action runs in this event loop, and so makes a step of what changes.
    bool IsRecording() { return runningHere() != nullptr; }
    /// Whether a step is being undone or done again.
    bool IsSwapping() const { return m_swaps; }
    void ForEachPart(const std::function<void(UndoPart&)>& visit);
    /// Bytes that all steps keep in memory.
    size_t InMemory() const;
    /// How long entries may rest, in milliseconds.
    void SetRest(int milliseconds) { m_rest = milliseconds; }
    /// What entries that rest may take, in bytes, `MostResting` at most.
    void SetMostResting(size_t bytes) { m_mostResting = std::min(bytes, MostResting); }

signals:
    /// An action begins, which is no part of another one, or begins anew: parts can be added to its step.
    void Begun();
    /// A step has changed that list, or has been undone or done again.
    void Changed(int listId);
    /// A step of that list has been undone or done again.
    void Shown(int listId);
    /// Long work begins; it was cancelled, and the lists are as they were then.
    void WorkBegins();
    void WorkTakenBack();

private:
    class Recording;
    class Step;
    struct Running;
    struct Followed {
        WeakRef<Value<QString>> text;
        WeakRef<Node> list;
    };

    UndoHistory();
    ~UndoHistory() override;

    int Begin(const QString& name) override;
    void End(int action) override;
    void NoteBefore() override;
    void Revert() override;
    Running* runningHere();
    void stay();
    void push(Recording& recording);
    size_t sumOf(size_t (Step::*bytes)() const) const;
    void shrinkOldest(void (Step::*shrink)(), size_t (Step::*bytes)() const, size_t most);
    void keepWithinMemory();
    void packInTurns();

    QUndoStack* m_stack;
    QTimer m_packing; ///< until entries have rested, and then each turn in which some of them are packed
    int m_rest = UsualRest;
    size_t m_mostResting = MostResting;
    std::vector<Followed> m_texts;
    std::vector<Running> m_running; ///< the innermost last
    int m_lastAction = 0;
    bool m_swaps = false;
    bool m_isTakingBack = false;
    bool m_passesOver = false; ///< a step was cancelled; further ones wait until the stack knows
};
