#include "workstation/filekinds.h"

#include "host/report/xmlscanner.h"
#include "sweep/sweepreader.h"

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

} // namespace

FileKind FileKindOf(const QString& path) {
    const QString suffix = QFileInfo(path).suffix();
    for (const KindRow& row : Kinds) {
        if (suffix == QLatin1String(row.suffix) && (!row.usage || usageOf(path) == QLatin1String(row.usage)))
            return row.kind;
    }
    return IsSweepFile(path) ? FileKind::Sweep : FileKind::Targets;
}
