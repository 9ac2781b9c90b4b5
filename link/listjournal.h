#pragma once

#include "link/layouttable.h"
#include "link/rowtable.h"
#include "link/sharedlist.h"

#include <QCoreApplication>
#include <QFile>
#include <QLockFile>

/// What a server keeps beside its list's file: which entry has which identity, and the changes made since the
/// file was written, so that neither an end of the program nor of its power loses one that was accepted.
/// Entries are known again by their contents. All operations throw RGException "file: reason".
class ListJournal {
    Q_DECLARE_TR_FUNCTIONS(ListJournal)
public:
    /// Refuses a file that another process uses.
    explicit ListJournal(const QString& path);

    /// Gives entries of the list, as they were read from its file, the identities that they had, and makes
    /// the kept changes to it again. `rows` gets a row of `revision` for each entry. Bytes behind a record
    /// that is not whole are dropped: their change was not accepted yet. Makes the file where there is none.
    void Restore(const SharedList& list, Messages::Revision revision, RowTable& rows, LayoutTable& layouts);
    /// Starts anew with the rows as they are: the list's file holds them.
    void Begin(const RowTable& rows, const LayoutTable& layouts);
    /// Keeps a published change; it is on the disk when this returns. One that could not be written, such as
    /// to a full disk, is written before the next one.
    void Append(QByteArrayView delta, const LayoutTable& layouts);
    /// Bytes of changes since `Begin`, of those that could not be written, too.
    qint64 ChangeBytes() const { return m_changeBytes; }

private:
    struct Kept;

    Kept read();
    /// Opens the file for what comes behind its whole records.
    void openBehind(qint64 bytes);
    void write();
    [[noreturn]] void fail(const QString& reason) const;

    QString m_path;
    QLockFile m_lock;
    QFile m_file;
    quint32 m_layoutsKept = 0;
    qint64 m_changeBytes = 0;
    qint64 m_size = 0;      ///< of the whole records in the file
    QByteArray m_unwritten; ///< records
};
