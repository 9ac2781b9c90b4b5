#pragma once

#include <QString>

#include <exception>
#include <functional>

/// Thrown by LongWork::Step when the operator has cancelled. It is no error: nobody but LongWork::Run catches
/// it for good, and whoever catches it to tidy up throws it on.
class WorkCancelled final : public std::exception {
public:
    const char* what() const noexcept override { return "cancelled"; }
};

/// Work that may take long: reading, writing, pasting, sorting. While it runs the program shows how far it is
/// and lets the operator cancel it. GUI thread only, but for Step().
///
/// The window paints meanwhile, but nothing else happens: input goes to the display, no timer runs, and
/// whoever is called all the same (by a file watcher, a signal or another thread) and would touch a list asks
/// WhenDone(). So nobody meets a half-filled list.
///
/// \code
/// const bool done = LongWork::Run(tr("Saving %1").arg(name), [&] {
///     for (size_t i = 0; i < entries.size(); ++i) {
///         LongWork::Step(qint64(i), qint64(entries.size()));
///         writer.Append(entries[i]);
///     }
///     writer.Commit();
/// });
/// \endcode
class LongWork {
public:
    /// Does `work`. False when the operator cancelled it: what the running OperatorAction has done to lists
    /// is then taken back, all else is tidied up by the destructors on the way. Within other work it is a
    /// part of that one, and a cancel goes on to the outermost. Other exceptions pass through.
    static bool Run(const QString& title, const std::function<void()>& work);

    /// Says how far the work is, in any unit; cheap enough for each entry of a list. Throws WorkCancelled
    /// when the operator has cancelled. Does nothing on a thread that does no long work.
    static void Step(qint64 done, qint64 total);

    /// Whether work runs, as those see it who are called from within its display.
    static bool IsRunning();
    /// The running work ends at its next step; does nothing when none runs. Safe in a signal handler.
    static void Cancel() noexcept;
    /// How many works have been cancelled so far, for those who cannot be told.
    static int CancelCount();
    /// Calls `act` at once or, while work runs, from the event loop when it is done.
    static void WhenDone(std::function<void()> act);

    /// Does a part of the work on another thread, whose steps count as those of the work, while this one
    /// shows them. Its exceptions are thrown on; its problems and traces are told when it ends. Without
    /// running work it is done here. No trees, lists or widgets in there.
    static void Elsewhere(const std::function<void()>& part);

    /// Makes pieces there, such as the blocks of a file, which are taken here in their order while the next
    /// ones are made. `next` makes a piece and answers with who takes it here; with nothing at the end.
    using Take = std::function<void()>;
    static void Ahead(const std::function<Take()>& next);

    /// While it lives Step() shows how far the work is and never throws: for what may not be cut in two.
    class Unbroken {
    public:
        Unbroken();
        Unbroken(const Unbroken&) = delete;
        Unbroken& operator=(const Unbroken&) = delete;
        ~Unbroken();
    };

    /// While it lives the display is away: for a dialog that work has to show.
    class Standstill {
    public:
        Standstill();
        Standstill(const Standstill&) = delete;
        Standstill& operator=(const Standstill&) = delete;
        ~Standstill();
    };

    struct Progress {
        QString title;           ///< of the outermost work
        QString part;            ///< title of the innermost work; the same when there is one only
        qint64 done = 0;         ///< of the part
        qint64 total = 0;        ///< of the part; 0 when it is not known
        qint64 milliseconds = 0; ///< since the work began, without standstills
        qint64 inPart = 0;       ///< milliseconds since the part began
        bool canCancel = true;
        bool isCancelled = false;
    };

    /// Shows the work of a program.
    class Display {
    public:
        virtual ~Display() = default;
        /// Called some 30 times a second from the middle of the work, with whatever lists look like then.
        virtual void Turn(const Progress& progress) = 0;
        /// The work has ended or stands still.
        virtual void Hide() = 0;
    };
    /// The display is not owned; null for none. Returns the one before.
    static Display* SetDisplay(Display* display);
    /// Each step is shown, however little time has passed since the last one; for tests.
    static void SetEager(bool eager);

    /// Knows how lists were before work began.
    class Keeper {
    public:
        virtual ~Keeper() = default;
        virtual void NoteBefore() = 0;
        /// Puts back what the work has done to lists. Never throws.
        virtual void Revert() = 0;
    };
    /// The keeper is not owned; null for none.
    static void SetKeeper(Keeper* keeper);
};
