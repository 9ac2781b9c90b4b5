#pragma once

#include <QString>

#include <span>

/// What a file holds.
enum class FileFormat {
    Unknown,
    SflLines,
    LtlLines,
    NoiLines,
    Csv,
    StoreXml,
    DetectionXml,
    ProfileTable,
    Job,
    Json,
};

/// What the operator calls a format.
QString FormatName(FileFormat format);
/// Whether a name is that of a JSON file: the program's own, which it reads and writes for every list.
bool IsJsonName(const QString& path);

/// A mark in a name and the format that it stands for, such as ".ltl".
struct FileMark {
    const char* mark;
    FileFormat format;
};

/// How the handler of a list tells formats by names. Of several marks in one path the first of these tables
/// counts, wherever it stands.
struct FileNames {
    std::span<const FileMark> read;
    std::span<const FileMark> written;
    bool isAtTheEnd = false;                      ///< marks count at the end of a name only
    bool readsProfiles = false;                   ///< XML that is no list is a profile table
    FileFormat withoutMark = FileFormat::Unknown; ///< what other names are read as

    /// What a file is read as.
    FileFormat FormatRead(const QString& path) const;
    /// Why no file of that name can be written: its ending is none of the list, or another mark in the path
    /// counts when the file is written or read back. Empty when it can.
    QString RefuseToWrite(const QString& path) const;

private:
    const FileMark* find(std::span<const FileMark> marks, const QString& path) const;
    const FileMark* markRead(const QString& path) const;
};
