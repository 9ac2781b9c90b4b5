#pragma once

#include <QString>

/// Whether a path has the mark of a file kind (".xml", ".noi") anywhere in it, in lower case. The name alone
/// tells the kind of a file, so that a mark behind another one ("list.ltl.xml") counts, too.
inline bool PathContains(const QString& path, const char* mark) {
    return path.contains(QLatin1String(mark), Qt::CaseSensitive);
}

/// The kinds of our own files. Of XML the content tells more.
enum class OwnFile { Xml, SflLines, LtlLines, Csv, NoiLines, Job };

struct OwnFileRow {
    OwnFile kind;
    const char* mark; ///< in the name; that of a job is at its end
    const char* name; ///< in the operator's words
};
inline constexpr OwnFileRow OwnFiles[] = {
    {OwnFile::Xml, ".xml", "XML"},
    {OwnFile::SflLines, ".sfl", "SFL lines"},
    {OwnFile::LtlLines, ".ltl", "LTL lines"},
    {OwnFile::Csv, ".csv", "CSV"},
    {OwnFile::NoiLines, ".noi", "NOI lines"},
    {OwnFile::Job, ".pij", "job"},
};

const OwnFileRow& RowOf(OwnFile kind);
/// Whether the name may be that of such a file. A name may have marks of several kinds: who reads it knows
/// which of them counts.
bool IsNamedAs(OwnFile kind, const QString& path);
