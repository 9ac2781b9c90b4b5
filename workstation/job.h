#pragma once

#include "host/valuetree/value.h"
#include "host/valuetree/valueptr.h"

#include <QDateTime>
#include <QFileSystemWatcher>
#include <QObject>

/// The job that the receiver runs: an XML document in a value of the tree, and the file that it came from.
/// The handler of the memory channels is bound to the job's values by their paths: it reads and writes the
/// file and keeps the memory-scan sections. The job says which file it is, and how file and document stand to
/// each other. It owns the node of its values.
class Job : public QObject, private IObserver {
    Q_OBJECT

public:
    enum class FileState {
        None,    ///< no file is open
        Same,    ///< the file holds what the job holds
        Older,   ///< the job has changes that are not in the file
        Changed, ///< somebody else changed the file since it was read or written
        Gone,    ///< the file is no longer there
    };

    Job();
    ~Job() override;

    /// Reads a job. A file that is no well-formed job is refused: false, a `Problem` tells file, line and
    /// reason, and the old job stays.
    bool Open(const QString& path);
    /// Brings the channels into the job and writes it; false, and a `Problem`, when it did not get into the
    /// file. Without a file it does nothing.
    bool Save();
    /// The same into another file, which is the job's from then on. Where no job is open, a new one is made
    /// around the present channels. When it fails the job keeps its old file.
    bool SaveAs(const QString& path);
    /// Writes the job with its present channels into another file and stays with its own; false, told, when
    /// it cannot be written.
    bool SaveCopy(const QString& path);
    /// Takes the job of another file as a change: the job stays with its own. False, told, when that is no
    /// job.
    bool TakeContent(const QString& path);
    /// The job stands in no file from then on, and has changes.
    void LeaveFile();
    /// The document as it would be written now: without a job, a new one around the present channels; empty
    /// when there are none.
    QString TextToSave() const;
    /// Says that the file does not hold what the job holds, whatever was read or saved.
    void MarkChanged();
    /// Drops what has changed since the job was read or written, so that nobody asks for it any more.
    void Revert();

    /// Absolute path of the job's file; empty when none is open.
    const QString& GetFileName() const { return m_fileName; }
    /// Looks at the file.
    FileState GetFileState();
    /// Whether something would be lost if the job ended now.
    bool IsModified() const;
    /// The same, once the present channels and what the lists have saved are taken into account.
    bool HasUnsavedChanges();
    const QString& GetText() const { return m_text->GetValue(); }
    /// The memory-scan section as it stands in the job; without a job the newest one.
    QStringView GetSection() const;

signals:
    /// Text, file or the relation of the two changed.
    void Changed();

private:
    struct Stamp {
        qint64 size = -1;
        QDateTime modified;
        bool operator==(const Stamp&) const = default;
    };

    void Update(Observable* subject, TChangeCode code) override;
    void watch();
    void noteSaved(const QString& fileName);
    void keepFileForUndo(const QString& channelsFile);
    Stamp stampOfFile() const;
    bool fileHoldsText() const;

    WeakRef<Node> m_node;
    Value<QString>* m_text;
    Value<QString>* m_section;
    QString m_fileName;
    QString m_savedText;
    Stamp m_saved;           ///< the file as it was read or written
    Stamp m_foreign;         ///< the file as somebody else left it
    bool m_isMarked = false; ///< as changed, until it is read or saved
    QFileSystemWatcher m_watcher;
};
