#pragma once

#include "host/startup/endsignals.h"
#include "workstation/noikeeper.h"

#include <QObject>

#include <functional>
#include <memory>

class Job;
class UnsavedWork;

/// How the program ends: closed by the operator, by a signal, or with the desktop's session. In all cases it
/// first keeps what would be lost; while somebody is there, what to do about a failure is asked.
class Ending : public QObject {
    Q_OBJECT

public:
    /// Job and work outlive this. Without `noi` the frequencies of interest are nobody's to keep.
    Ending(Job& job, const UnsavedWork& work, std::unique_ptr<NoiKeeper> noi);

    /// When nobody is there to answer, nothing is asked.
    void SetAttended(bool attended) { m_attended = attended; }
    /// Who writes the lists' unsaved changes where the next start finds them, when nobody can be asked.
    void SetRecovery(std::function<void()> writeNow) { m_writeRecovery = std::move(writeNow); }
    /// Before the window closes; false when the operator stays.
    bool MayClose();
    /// Keeps all that would be lost, asks nobody and tells what could not be kept: the frequencies of
    /// interest in their file, changes of the job in one beside the lists' own, and those of all lists for
    /// recovery.
    void Keep();
    /// Whether the event loop has been told to end: a dialog's, before the program's own runs, forgets it.
    bool IsEnding() const { return m_isEnding; }
    /// 0, or 2 when something could not be kept.
    int ExitCode() const { return m_exitCode; }
    /// For after the end of the lists' handlers.
    void Finish() const;

signals:
    /// The program ends without its window being closed.
    void Begins();

private:
    void end();
    bool keepJob();

    Job& m_job;
    const UnsavedWork& m_work;
    std::unique_ptr<NoiKeeper> m_noi;
    EndSignals m_signals;
    std::function<void()> m_writeRecovery;
    QString m_jobCopy; ///< file with the job's unsaved changes
    bool m_attended = true;
    bool m_isEnding = false;
    int m_exitCode = 0;
};
