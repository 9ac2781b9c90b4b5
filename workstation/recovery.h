#pragma once

#include "workstation/listfiles.h"
#include "workstation/recoveryfile.h"

#include <QLockFile>
#include <QObject>
#include <QThread>
#include <QTimer>

#include <memory>
#include <optional>
#include <set>
#include <vector>

class ListWalk;
class RecoveryWriter;

/// Keeps what is in no file yet: lists with unsaved changes are written into a recovery file of this process
/// in the data directory, some seconds after they have changed, so that a crash costs no more than these. The
/// lists are walked a few milliseconds at a time, and the disk is left to another thread. At its own end it
/// removes the file; a process that could not has left it to the next one.
class Recovery : public QObject {
    Q_OBJECT

public:
    /// `lists` outlive this.
    Recovery(const QString& dataFolder, const ListFiles& lists);
    ~Recovery() override;

    /// How long a change may wait to be written.
    void SetInterval(int milliseconds);
    /// For a list that came later; it stays among those that this was made with.
    void Follow(const ListFile& list);
    /// Writes at once what is in no file, and waits until it is on the disk. Unless the program goes on, the
    /// file stays for the next start. False, told, when it could not be written.
    bool WriteNow();
    /// Writes soon; these sections are closed when that is done, since what they held is in the lists.
    void Replace(const std::vector<RecoveryDone>& sections);
    /// The list that is being saved (see ListSaving) is about to have the file `aside` as `path`: once it
    /// has, what is kept of the list here is past. `aside` may be that file, which holds the list already.
    /// Returns when that is on the disk.
    void LetGoWith(const QString& path, const QString& aside);
    /// For what a list does not tell by its entries: a job's text, and that it was saved.
    void NoteChange(int listId);
    QString GetFileName() const { return m_path; }

signals:
    void Begun();
    /// All that was in no file when this began is in the recovery file.
    void Written();
    /// Writing failed; it is told once and tried again.
    void Failed(const QString& text);

private:
    class Watch;

    void noteEntry(int listId);
    void noteStep(int listId);
    void schedule(int milliseconds);
    bool lockFile();
    void beginRound();
    void goOn(int milliseconds);
    bool nextList();
    void append(const QByteArray& bytes);
    void finishRound();
    void ended(const QString& failure);
    template <typename... Parameters, typename... Arguments>
    void post(void (RecoveryWriter::*operation)(Parameters...), Arguments... arguments);

    const ListFiles& m_lists;
    const QString m_folder;
    const QString m_path;
    std::unique_ptr<QLockFile> m_lock;
    QThread m_thread;
    RecoveryWriter* m_writer; ///< lives in the thread
    std::vector<std::unique_ptr<Watch>> m_watches;
    QTimer m_due;   ///< until the next round
    QTimer m_turns; ///< of the present round
    int m_interval;

    std::set<int> m_changed; ///< lists that have changed since their section was begun
    std::set<int> m_kept;    ///< lists that have a section in the file in place
    std::set<int> m_writing; ///< lists that will have one when the present round ends
    std::vector<const ListFile*> m_toWalk;
    std::unique_ptr<ListWalk> m_walk;
    std::vector<const ListFile*>::size_type m_next = 0;
    bool m_isRunning = false; ///< a round, to its end on the disk
    bool m_staysAtEnd = false;
    std::vector<RecoveryDone> m_replaced;  ///< what the next round makes useless
    std::vector<RecoveryDone> m_replacing; ///< what the present round makes useless
    QString m_told;
};
