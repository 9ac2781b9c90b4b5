#include "host/base/longwork.h"

#include "host/base/tellings.h"

#include <QCoreApplication>
#include <QScopedValueRollback>
#include <QStringList>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <sys/resource.h>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr milliseconds TurnInterval(30);
/// Steps go without a look at the clock for about as long.
constexpr milliseconds LookInterval(2);

/// A piece that another thread has made, with what was told meanwhile.
struct Piece {
    Tellings tellings;
    LongWork::Take take; ///< none for the last one
};

/// The part of the work that another thread does.
struct Part {
    /// Pieces that may wait to be taken; a maker that is ahead of them waits.
    static constexpr size_t MostPieces = 4;

    std::atomic<qint64> done = 0;
    std::atomic<qint64> total = 0;
    std::atomic<bool> isCancelled = false;
    std::exception_ptr failure; ///< behind the last piece

    std::mutex mutex;
    std::condition_variable changed;
    std::deque<Piece> pieces; ///< by the mutex
};

struct Running {
    QStringList titles; ///< the outermost first
    Clock::time_point begin = Clock::now();
    Clock::time_point partBegin = begin;
    Clock::time_point lastTurn = begin;
    Clock::time_point lastLook = begin;
    int stepsToLook = 1;
    int stepsBetween = 1;
    int unbroken = 0;
    bool isTurning = false;
    bool isStanding = false;
};

LongWork::Display* currentDisplay = nullptr;
LongWork::Keeper* currentKeeper = nullptr;
std::atomic<bool> isCancelWanted = false;
int cancelCount = 0;
/// Of the work that ended last: one that follows at once does not put off the window's turn.
Clock::time_point lastEnd;
Clock::time_point lastTurnBefore;
bool isEager = false;
static_assert(std::atomic<bool>::is_always_lock_free);

/// Of the thread that does work; null on all others.
thread_local Running* runningHere = nullptr;
thread_local Part* partHere = nullptr;

std::vector<std::function<void()>>& waiting() {
    static auto* const acts = new std::vector<std::function<void()>>;
    return *acts;
}

void callWaiting() {
    for (const auto& act : std::exchange(waiting(), {}))
        LongWork::WhenDone(act);
}

qint64 millisecondsBetween(Clock::time_point from, Clock::time_point to) {
    return std::chrono::duration_cast<milliseconds>(to - from).count();
}

void turn(Running& work, Clock::time_point now, qint64 done, qint64 total) {
    work.lastTurn = now;
    if (!currentDisplay || work.isStanding)
        return;
    const QScopedValueRollback isTurning(work.isTurning, true);
    currentDisplay->Turn({.title = work.titles.first(),
                          .part = work.titles.last(),
                          .done = done,
                          .total = total,
                          .milliseconds = millisecondsBetween(work.begin, now),
                          .inPart = millisecondsBetween(work.partBegin, now),
                          .canCancel = work.unbroken == 0,
                          .isCancelled = isCancelWanted});
    work.lastTurn = Clock::now();
}

/// A look at the clock costs as much as some steps, so that it waits for a number of them.
void look(Running& work, qint64 done, qint64 total) {
    constexpr int MostSteps = 1024;
    const Clock::time_point now = Clock::now();
    const auto passed = now - std::exchange(work.lastLook, now);
    if (passed < LookInterval / 2)
        work.stepsBetween = std::min(work.stepsBetween * 2, MostSteps);
    else if (passed > LookInterval)
        work.stepsBetween = std::max(1, work.stepsBetween / 4);
    work.stepsToLook = work.stepsBetween;
    if (isEager || now - work.lastTurn >= TurnInterval)
        turn(work, now, done, total);
    if (isCancelWanted && work.unbroken == 0)
        throw WorkCancelled();
}

void put(Part& part, Piece piece) {
    std::unique_lock lock(part.mutex);
    part.changed.wait(lock, [&] { return part.isCancelled || part.pieces.size() < Part::MostPieces; });
    part.pieces.push_back(std::move(piece));
    part.changed.notify_all();
}

/// The other thread.
void make(Part& part, const std::function<LongWork::Take()>& next) {
    partHere = &part;
    for (bool isLast = false; !isLast;) {
        Piece piece;
        try {
            const Tellings::Scope tellings(piece.tellings);
            piece.take = next();
        } catch (...) {
            part.failure = std::current_exception();
        }
        isLast = !piece.take || part.isCancelled;
        put(part, std::move(piece));
    }
    partHere = nullptr;
}

/// The next piece; shows the part's steps until it comes.
Piece waitFor(Part& part) {
    if (isEager)
        look(*runningHere, part.done, part.total);
    runningHere->stepsToLook = 1; // a piece takes longer than the steps that the number was found for
    std::unique_lock lock(part.mutex);
    while (!part.changed.wait_for(lock, LookInterval * 4, [&] { return !part.pieces.empty(); })) {
        lock.unlock();
        look(*runningHere, part.done, part.total);
        lock.lock();
    }
    Piece piece = std::move(part.pieces.front());
    part.pieces.pop_front();
    part.changed.notify_all();
    return piece;
}

/// Takes pieces until there are no more.
void takeAll(Part& part) {
    for (;;) {
        Piece piece = waitFor(part);
        piece.tellings.TellAll();
        if (!piece.take)
            break;
        piece.take();
    }
    if (part.failure)
        std::rethrow_exception(part.failure);
}

/// Ends with the scope, however that is left.
class Maker {
public:
    Maker(Part& part, const std::function<LongWork::Take()>& next)
        : m_part(part), m_thread(make, std::ref(part), std::cref(next)) {}
    Maker(const Maker&) = delete;
    Maker& operator=(const Maker&) = delete;
    ~Maker() {
        {
            const std::lock_guard lock(m_part.mutex);
            m_part.isCancelled = true;
            m_part.changed.notify_all();
        }
        m_thread.join();
    }

private:
    Part& m_part;
    std::thread m_thread;
};

/// A thread takes address space for its stack and its heap, which a process with a limit may not have; where
/// that ends within a thread, so does the process.
bool mayHaveThreads() {
    rlimit limit{};
    return getrlimit(RLIMIT_AS, &limit) == 0 && limit.rlim_cur == RLIM_INFINITY;
}

} // namespace

bool LongWork::Run(const QString& title, const std::function<void()>& work) {
    if (runningHere) {
        Running& outer = *runningHere;
        outer.titles.append(title);
        outer.partBegin = Clock::now();
        struct End {
            Running& work;
            ~End() { work.titles.removeLast(); }
        } const end{outer};
        work();
        return true;
    }
    Running mine;
    mine.titles.append(title);
    if (mine.begin - lastEnd < LookInterval)
        mine.lastTurn = lastTurnBefore;
    isCancelWanted = false;
    struct Begin {
        explicit Begin(Running& work) { runningHere = &work; }
        ~Begin() {
            lastTurnBefore = runningHere->lastTurn;
            lastEnd = Clock::now();
            runningHere = nullptr;
            if (currentDisplay)
                currentDisplay->Hide();
            if (!waiting().empty() && qApp)
                QMetaObject::invokeMethod(qApp, callWaiting, Qt::QueuedConnection);
        }
    } const begin(mine);
    try {
        if (currentKeeper)
            currentKeeper->NoteBefore();
        work();
        return true;
    } catch (const WorkCancelled&) {
        const Unbroken unbroken;
        ++cancelCount;
        if (currentKeeper)
            currentKeeper->Revert();
        return false;
    }
}

void LongWork::Step(qint64 done, qint64 total) {
    if (Running* const work = runningHere) {
        if ((--work->stepsToLook <= 0 || isEager) && !work->isTurning)
            look(*work, done, total);
    } else if (Part* const part = partHere) {
        part->done = done;
        part->total = total;
        if (part->isCancelled)
            throw WorkCancelled();
    }
}

bool LongWork::IsRunning() {
    return runningHere && !runningHere->isStanding;
}

void LongWork::Cancel() noexcept {
    isCancelWanted = true;
}

int LongWork::CancelCount() {
    return cancelCount;
}

void LongWork::WhenDone(std::function<void()> act) {
    if (IsRunning())
        waiting().push_back(std::move(act));
    else
        act();
}

void LongWork::Elsewhere(const std::function<void()>& part) {
    bool isDone = false;
    Ahead([&] {
        if (std::exchange(isDone, true))
            return Take();
        part();
        return Take([] {});
    });
}

void LongWork::Ahead(const std::function<Take()>& next) {
    Part part;
    std::optional<Maker> maker;
    try {
        if (runningHere && mayHaveThreads())
            maker.emplace(part, next);
    } catch (const std::system_error&) { // there are no more threads
    }
    if (maker)
        return takeAll(part);
    while (const Take take = next())
        take();
}

LongWork::Unbroken::Unbroken() {
    if (runningHere)
        ++runningHere->unbroken;
}

LongWork::Unbroken::~Unbroken() {
    if (!runningHere)
        return;
    --runningHere->unbroken;
    runningHere->stepsToLook = 1; // a cancel that came meanwhile counts at the next step
}

LongWork::Standstill::Standstill() {
    if (!runningHere)
        return;
    runningHere->isStanding = true;
    if (currentDisplay)
        currentDisplay->Hide();
}

LongWork::Standstill::~Standstill() {
    if (!runningHere)
        return;
    runningHere->isStanding = false;
    runningHere->begin = runningHere->partBegin = Clock::now();
}

LongWork::Display* LongWork::SetDisplay(Display* display) {
    return std::exchange(currentDisplay, display);
}

void LongWork::SetEager(bool eager) {
    isEager = eager;
}

void LongWork::SetKeeper(Keeper* keeper) {
    currentKeeper = keeper;
}
