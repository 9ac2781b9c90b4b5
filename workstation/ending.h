#pragma once

#include "workstation/endsignals.h"
#include "workstation/noikeeper.h"

#include <QObject>

#include <optional>

class Job;
class JobPanel;

/// How the program ends: closed by the operator, by a signal, or with the desktop's session. In all cases it
/// first keeps what would be lost; while somebody is there, what to do about a failure is asked.
class Ending : public QObject {
    Q_OBJECT

public:
    /// The panel with its job outlives this. Without `noi` the frequencies of interest are nobody's to keep.
    Ending(Job& job, JobPanel& panel, std::unique_ptr<NoiKeeper> noi);

    /// When nobody is there to answer, nothing is asked.
    void SetAttended(bool attended) { m_attended = attended; }
    /// Before the window closes; false when the operator stays.
    bool MayClose();
    /// Keeps all that would be lost, asks nobody and tells what could not be kept. Unsaved changes of the job
    /// go into a file beside the lists' own.
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
    JobPanel& m_panel;
    std::unique_ptr<NoiKeeper> m_noi;
    EndSignals m_signals;
    QString m_jobCopy; ///< file with the job's unsaved changes
    bool m_attended = true;
    bool m_isEnding = false;
    int m_exitCode = 0;
};
