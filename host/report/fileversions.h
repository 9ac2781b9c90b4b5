#pragma once

#include "host/report/rgexception.h"

#include <QByteArray>
#include <QString>

#include <vector>

/// The last contents of files that were saved, as copies in a folder of the program's own. What is known of a
/// copy stands in its name, so that a copy is there with all that is known of it or not at all; several
/// processes may share the folder. Equal contents of a file are kept once, at the place of the latest.
class FileVersions {
public:
    /// Of the folder within a data directory.
    static constexpr char FolderName[] = "versions";
    static constexpr qint64 BytesPerMegabyte = 1000000;

    struct Limits {
        int count = 10;                         ///< of each file; 0 keeps nothing
        qint64 bytes = 1000 * BytesPerMegabyte; ///< of all files together
    };
    struct Version {
        qint64 time = 0;     ///< when the file was written, in microseconds since 1970-01-01 UTC
        qint64 size = 0;     ///< in bytes
        qint64 entries = -1; ///< -1 when they were not counted
        QByteArray hash;     ///< SHA-256, in hexadecimal digits
        QString path;        ///< of the copy, whose name ends as the file's does
    };

    /// The folder need not exist.
    explicit FileVersions(const QString& folder) : m_folder(folder) {}

    void SetLimits(const Limits& limits) { m_limits = limits; }
    /// Keeps what the file holds now and drops what is too much. Nothing happens without such a file, or when
    /// its content is the newest version already. Throws RGException when no copy can be made.
    void Keep(const QString& file, qint64 entries = -1);
    /// The versions of a file, which need not be there any more; newest first, whatever the clock said.
    std::vector<Version> Of(const QString& file) const;
    /// Whether the copy still has the content that was kept.
    static bool IsWhole(const Version& version);

private:
    QString folderOf(const QString& file) const;
    void drop(const QString& folder) const;

    QString m_folder;
    Limits m_limits;
};
