#pragma once

#include "controls/frequencystore/files/filegate.h"
#include "host/base/traceplace.h"
#include "workstation/filekinds.h"

#include <QObject>

#include <functional>
#include <map>
#include <optional>

struct FileLook;
class QWidget;

/// Stands before the lists' files, those of the command line and those that are chosen in a list's own
/// dialog: it looks at a file before a list is emptied for it, asks about or refuses what would do harm, and
/// says what a list shows afterwards.
class FileOpener : public QObject, private FileGate::Guard {
    Q_OBJECT

public:
    using Read = std::function<bool(const QString& path)>;

    /// `read` has who reads each kind of file. Boxes belong to `window`, which outlives this.
    FileOpener(QWidget* window, std::map<FileKind, Read> read);
    ~FileOpener() override;

    /// When nobody is there to answer, what would be asked is refused and told.
    void SetAttended(bool attended) { m_attended = attended; }
    /// Who tells how many bytes of memory are left; that of the machine unless set.
    void SetMemoryProbe(std::function<qint64()> probe) { m_availableMemory = std::move(probe); }

    /// Who lets the operator save what a list holds before another file takes its place; false when the list
    /// is to stay.
    using MayLeave = std::function<bool(FileGate::List list)>;
    void SetMayLeave(MayLeave mayLeave) { m_mayLeave = std::move(mayLeave); }

    /// Hands a file to whom it belongs. False, told, when it was not read or only in part.
    bool Open(const QString& path);
    /// The same where the operator has decided what becomes of what the list holds.
    bool OpenInPlace(const QString& path);

    /// The file whose content a list shows; empty when that is no file's.
    QString FileOf(FileGate::List list) const;
    /// For lists that were read before this was there.
    void SetFileOf(FileGate::List list, const QString& path);

signals:
    /// What a list shows is another file's now.
    void FileChanged(FileGate::List list);
    /// A text for the operator: what was read, and what is still shown.
    void Told(const QString& text);

private:
    bool MayRead(FileGate::List list, const QString& path) override;
    void WasRead(FileGate::List list, const QString& path, bool read) override;
    void WasWritten(FileGate::List list, const QString& path) override;

    bool ask(const QString& text, const QString& question, const QString& yes) const;
    bool refuse(TracePlace place, FileGate::List list, const QString& path, qint64 line,
                const QString& reason) const;
    bool offerElsewhere(FileGate::List list, const QString& path, FileKind kind);
    bool mayTake(FileGate::List list, const QString& path, const FileLook& look) const;
    bool mayLeave(FileGate::List list) const;

    QWidget* m_window;
    std::map<FileKind, Read> m_read;
    std::map<FileGate::List, QString> m_files;
    std::function<qint64()> m_availableMemory;
    MayLeave m_mayLeave;
    bool m_isDecided = false; ///< what becomes of what lists hold
    FileGate::Guard* m_guardBefore;
    bool m_attended = true;
};
