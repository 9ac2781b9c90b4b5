#pragma once

#include "host/report/privatefile.h"
#include "workstation/recoveryfile.h"

#include <QCryptographicHash>
#include <QObject>

#include <atomic>
#include <map>
#include <memory>
#include <optional>

/// Writes one process's recovery file, in a thread of its own: it is called by queued calls only. A file is
/// begun, gets its sections, and takes the place of the one before when it is on the disk. Whatever fails is
/// told at the end, and leaves the file before as it is.
class RecoveryWriter : public QObject {
    Q_OBJECT

public:
    explicit RecoveryWriter(const QString& path) : m_path(path) {}

    void Begin();
    void BeginSection(const RecoveryHead& head);
    /// `Announce` comes before it, from any thread.
    void Append(const QByteArray& bytes);
    void EndSection(qint64 entries);
    /// Takes the section of a list over from the file before, which has it.
    void KeepSection(const QString& key);
    void Commit();
    /// Says of a list's section that it is past, in the file in place and in the one that is being written,
    /// where they have it. What cannot be said is offered once more, and lost is nothing.
    void AddPast(const RecoveryPast& past);
    /// There is nothing to recover any more.
    void Remove();

    /// Says that so many bytes will come; how many have been announced and not written yet. A list is walked
    /// faster than some disks write.
    qint64 Announce(qint64 bytes) { return m_waiting.fetch_add(bytes) + bytes; }
    qint64 GetWaiting() const { return m_waiting; }

signals:
    /// The file is on the disk, or gone when there was nothing to write.
    void Done();
    /// "file: reason".
    void Failed(const QString& text);

private:
    struct Place {
        qint64 offset = 0;
        qint64 length = 0;
    };

    template <typename Write>
    void attempt(Write write);
    void write(const QByteArray& bytes);

    const QString m_path;
    std::unique_ptr<REPORTGENERATOR::PrivateFile> m_file;
    QString m_failure; ///< the first one of the file that is being written
    QCryptographicHash m_hash{QCryptographicHash::Sha256};
    qint64 m_written = 0;
    std::atomic<qint64> m_waiting = 0;
    QString m_key;                    ///< of the section that is being written
    std::map<QString, Place> m_next;  ///< sections of the file that is being written
    std::map<QString, Place> m_last;  ///< sections of the file that is in place
    std::vector<RecoveryPast> m_past; ///< of the file that is being written
};
