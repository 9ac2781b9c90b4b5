#pragma once

#include "host/base/problems.h"

#include <QString>

#include <optional>

// A job is an XML document. Each element "SUBJOB" in it may have a child "TDS", and that a child
// "MEMORYSCAN", which lists the channels of the memory scan. All else belongs to others and is kept as it is.

/// The job of a file: its text without the byte-order mark and without the line feed at the end that is not
/// part of it. Empty, told, when the file cannot be opened or is not in UTF-8. An encoding that the document
/// declares is made UTF-8, since that is what the job is written in.
std::optional<QString> ReadJobText(const QString& path);

/// Writes a job as UTF-8 with a line feed behind it, and only then replaces the old file. The result is the
/// name under which it stands, as OutputFile gives it; empty, told, when it cannot be written.
QString WriteJobText(const QString& path, const QString& job);

/// Puts a memory-scan section into a job: in each "SUBJOB" whose "TDS" has a section, that is removed, and
/// the new one stands as the last child of "TDS". Nothing else in the text changes. The result is the number
/// of sections; 0 when the job has no place for any. -1, told, when either text is refused. In both cases the
/// job is as it was. `isOurs` says that the section comes from `MemoryScanWriter` and need not be looked at.
int MergeSection(QString& job, const QString& section, bool isOurs, const QString& name);
