#pragma once

#include "host/report/rgexception.h"

#include <QByteArrayView>
#include <QString>

namespace REPORTGENERATOR {

/// Writes a file of the program's own, which only this user may read: aside, then to the disk, then under its
/// name in one step. Works in any thread and tells nobody; all operations throw RGException "file: reason".
/// An object that ends without Commit() leaves nothing.
class PrivateFile {
public:
    /// Begins a file in an existing folder.
    explicit PrivateFile(const QString& folder);
    ~PrivateFile();
    PrivateFile(const PrivateFile&) = delete;
    PrivateFile& operator=(const PrivateFile&) = delete;

    void Write(QByteArrayView bytes);
    /// Puts the file in place under a path in its folder, instead of one that is there.
    void Commit(const QString& path);

    /// Makes a folder that only this user may enter, and those above it.
    static void MakeFolder(const QString& folder);

private:
    [[noreturn]] void fail() const;

    QString m_folder;
    QString m_name;
    int m_handle = -1;
};

} // namespace REPORTGENERATOR
