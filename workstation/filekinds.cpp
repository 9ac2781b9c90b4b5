#include "workstation/filekinds.h"

#include "controls/frequencystore/files/filekind.h"
#include "host/report/xmlscanner.h"
#include "interchange/format.h"
#include "interchange/table.h"
#include "sweep/sweepreader.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

namespace {

using REPORTGENERATOR::XmlScanner;

struct KindRow {
    const char* suffix;
    const char* usage; ///< of the root element; null when the name tells enough
    FileKind kind;
};
constexpr KindRow Kinds[] = {
    {"pij", nullptr, FileKind::Job},
    {"noi", nullptr, FileKind::Noi},
    {"xml", "NOI", FileKind::Noi},
    {"xml", "SearchResults", FileKind::Results},
};

/// The usage that the root element of an XML file names; empty when it names none or is no XML.
QString usageOf(const QString& path) {
    try {
        QFile file(path);
        REPORTGENERATOR::OpenForReading(file);
        XmlScanner scanner(file, path);
        while (scanner.Next() != XmlScanner::Token::StartElement) {
        }
        for (const XmlScanner::Attribute& attribute : scanner.Attributes()) {
            if (attribute.name == "Usage")
                return QString::fromUtf8(attribute.value.data(),
                                         static_cast<qsizetype>(attribute.value.size()));
        }
    } catch (const RGException&) {
        // Whoever reads the file tells what is wrong with it.
    }
    return QString();
}

constexpr char OwnJson[] = "json"; ///< of the command line's programs

/// Whether a file is a table that no list reads as its own.
bool isTable(const QString& path) {
    const QString name = QFileInfo(path).fileName();
    const bool isCsv = PathContains(name, ".csv");
    const bool isOurs =
        std::ranges::any_of(OwnFiles, [&](const OwnFileRow& own) { return PathContains(path, own.mark); });
    if ((isOurs && !isCsv) || QFileInfo(path).suffix() == QLatin1String(OwnJson))
        return false;
    try {
        const Interchange::TableLook look = Interchange::LookAtTable(path);
        return look.MayHoldFrequencies() && !(isCsv && look.IsOwn());
    } catch (const RGException&) {
        return false; // whoever reads the file tells what is wrong with it
    }
}

} // namespace

QString KnownFilesFilter() {
    QStringList patterns;
    for (const OwnFileRow& own : OwnFiles)
        patterns << QLatin1Char('*') + QLatin1String(own.mark);
    for (const Interchange::Format* const format : Interchange::Formats()) {
        for (const QString& ending : QString::fromLatin1(format->endings).split(QLatin1Char(' ')))
            patterns << QLatin1Char('*') + ending;
    }
    patterns << QStringLiteral("*.tsv") << QStringLiteral("*.txt");
    patterns.removeDuplicates();
    return QCoreApplication::translate("FileOpener", "All Known Files (%1);;All Files (*)")
        .arg(patterns.join(QLatin1Char(' ')));
}

FileKind FileKindOf(const QString& path) {
    if (Interchange::FormatOfFile(path))
        return FileKind::Foreign;
    const QString suffix = QFileInfo(path).suffix();
    for (const KindRow& row : Kinds) {
        if (suffix == QLatin1String(row.suffix) && (!row.usage || usageOf(path) == QLatin1String(row.usage)))
            return row.kind;
    }
    if (IsSweepFile(path))
        return FileKind::Sweep;
    return isTable(path) ? FileKind::Table : FileKind::Targets;
}
