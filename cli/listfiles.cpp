#include "cli/listfiles.h"

#include "controls/frequencystore/files/filekind.h"
#include "host/freqstorexml/filehandling.h"

#include <QStringList>

#include <algorithm>

namespace {

constexpr const char* JsonEndings[] = {".json", ".jsonl", ".ndjson"};

struct NamedFormat {
    FileFormat format;
    const char* name;
};
constexpr NamedFormat Formats[] = {
    {FileFormat::Unknown, "unknown"},
    {FileFormat::SflLines, "SFL lines"},
    {FileFormat::LtlLines, "LTL lines"},
    {FileFormat::NoiLines, "NOI lines"},
    {FileFormat::Csv, "CSV"},
    {FileFormat::StoreXml, "frequency-store XML"},
    {FileFormat::DetectionXml, "detection results XML"},
    {FileFormat::ProfileTable, "profile table"},
    {FileFormat::Job, "job"},
    {FileFormat::Json, "JSON"},
};

} // namespace

QString FormatName(FileFormat format) {
    const auto* found = std::find_if(std::begin(Formats), std::end(Formats),
                                     [format](const NamedFormat& known) { return known.format == format; });
    return QString::fromLatin1(found->name);
}

bool IsJsonName(const QString& path) {
    return std::any_of(std::begin(JsonEndings), std::end(JsonEndings),
                       [&](const char* ending) { return path.endsWith(QLatin1String(ending)); });
}

const FileMark* FileNames::find(std::span<const FileMark> marks, const QString& path) const {
    const auto found = std::find_if(marks.begin(), marks.end(), [&](const FileMark& known) {
        return isAtTheEnd ? path.endsWith(QLatin1String(known.mark)) : PathContains(path, known.mark);
    });
    return found == marks.end() ? nullptr : &*found;
}

FileFormat FileNames::FormatRead(const QString& path) const {
    if (IsJsonName(path))
        return FileFormat::Json;
    if (readsProfiles && PathContains(path, ".xml") && !FreqStoreXml::FileHandling().IsValidFormat(path))
        return FileFormat::ProfileTable;
    const FileMark* const mark = find(read, path);
    return mark ? mark->format : withoutMark;
}

/// The mark that decides how a file is read back.
const FileMark* FileNames::markRead(const QString& path) const {
    static constexpr FileMark xml{".xml", FileFormat::ProfileTable};
    return readsProfiles && PathContains(path, xml.mark) ? &xml : find(read, path);
}

QString FileNames::RefuseToWrite(const QString& path) const {
    if (IsJsonName(path))
        return QString();
    QStringList endings;
    bool hasEnding = false;
    for (const FileMark& known : written) {
        endings << QString::fromLatin1(known.mark);
        hasEnding = hasEnding || path.endsWith(endings.last());
    }
    for (const char* ending : JsonEndings)
        endings << QString::fromLatin1(ending);
    if (!hasEnding)
        return QStringLiteral("\"%1\" is no name that this list is written under: %2")
            .arg(path, endings.join(QStringLiteral(", ")));
    for (const FileMark* mark : {find(written, path), markRead(path)}) {
        if (mark && !path.endsWith(QLatin1String(mark->mark)))
            return QStringLiteral("\"%1\" would be taken for another format, since \"%2\" stands in its path")
                .arg(path, QLatin1String(mark->mark));
    }
    return QString();
}
