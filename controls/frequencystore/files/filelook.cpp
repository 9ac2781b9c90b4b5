#include "controls/frequencystore/files/filelook.h"

#include "controls/frequencystore/files/filekind.h"
#include "controls/frequencystore/files/linefields.h"
#include "host/freqstorexml/csvreader.h"
#include "host/freqstorexml/filehandling.h"
#include "host/report/textform.h"
#include "host/report/xmlscanner.h"

#include <QCoreApplication>
#include <QRegularExpression>

using REPORTGENERATOR::XmlScanner;

namespace {

/// A row of an XML file, and the element within it that has its frequency.
struct XmlRow {
    std::string_view element;
    std::string_view frequency; ///< as the element's text, or as its attribute "Value"
};

constexpr XmlRow XmlRows[] = {
    {"FrequencyStoreEntry", "Frequency"},
    {"DetectionResult", "Frequency"},
    {"PROFILEPARAMETERSETTBL", "NOMINALFREQUENCY"},
    {"MEMORYSCAN_CHANNEL", "MEMORYSCAN_SEQ_FREQUENCY"},
};

/// Counts the rows of a document and their frequencies, whatever kind it is of.
class XmlCounter {
public:
    XmlCounter(XmlScanner& scanner, FileLook& look) : m_scanner(scanner), m_look(look) {}

    /// Throws RGException where the document is not well formed.
    void Run() {
        for (;;) {
            switch (m_scanner.Next()) {
            case XmlScanner::Token::StartElement:
                start();
                break;
            case XmlScanner::Token::Text:
                if (m_isFrequency)
                    m_number += m_scanner.Text();
                break;
            case XmlScanner::Token::EndElement:
                if (std::exchange(m_isFrequency, false))
                    countFrequency();
                break;
            case XmlScanner::Token::End:
                return;
            }
        }
    }
    const std::string& Root() const { return m_root; }
    bool HasProfiles() const { return m_hasProfiles; }

private:
    void start() {
        const std::string_view name = m_scanner.Name();
        if (m_root.empty())
            m_root = name;
        m_hasProfiles = m_hasProfiles || name == "PROFILETBL";
        if (const auto* const row = std::ranges::find(XmlRows, name, &XmlRow::element);
            row != std::end(XmlRows)) {
            ++m_look.rows;
            m_frequency = row->frequency;
        }
        m_isFrequency = name == m_frequency;
        if (!m_isFrequency)
            return;
        m_number.clear();
        for (const XmlScanner::Attribute& attribute : m_scanner.Attributes())
            if (attribute.name == "Value")
                m_number = attribute.value;
    }
    void countFrequency() {
        if (REPORTGENERATOR::ParseNumber(m_number).value_or(0) > 0)
            ++m_look.frequencies;
    }

    XmlScanner& m_scanner;
    FileLook& m_look;
    std::string m_root;
    std::string_view m_frequency; ///< element with the frequency of the present row
    std::string m_number;
    bool m_isFrequency = false;
    bool m_hasProfiles = false;
};

/// Takes the reason of an exception over; `line` stands before it when it is known.
void refuse(FileLook& look, const RGException& exception, const QString& path) {
    QString reason = exception.GetErrorText();
    if (reason.startsWith(path))
        reason.remove(0, path.size() + 1);
    bool isLine = false;
    const qint64 line = reason.section(QLatin1Char(':'), 0, 0).toLongLong(&isLine);
    if (isLine) {
        look.firstProblemLine = line;
        reason = QStringLiteral("line %1").arg(reason);
    }
    look.refusal = reason.trimmed();
}

void lookAtLines(QFile& file, const LineLayout& layout, FileLook& look) {
    LineReader reader(file, file.fileName(), LineReader::Telling::Nothing);
    if (const std::optional<Problem> refusal = reader.RefuseContent()) {
        look.refusal = refusal->reason;
        look.firstProblemLine = refusal->line;
        return;
    }
    LineFields fields(reader, layout);
    QStringView line;
    while (reader.Next(line)) {
        if (line.size() < 2)
            continue;
        fields.Take();
        reader.CheckFrequency(fields.frequency);
        ++look.rows;
        look.frequencies += fields.frequency > 0 ? 1 : 0;
    }
    look.firstProblemLine = reader.FirstProblemLine();
}

template <const LineLayout& Layout>
void lookAtLinesOf(QFile& file, FileLook& look) {
    lookAtLines(file, Layout, look);
}

/// Exported lines of results have TABs, the heading of a table has none.
bool holdsResultLines(const QString& head) {
    static const QRegularExpression inFirstLine(QStringLiteral("\\A[^\\r\\n]*\\t"));
    return inFirstLine.match(head).hasMatch();
}

void lookAtCsv(QFile& file, FileLook& look) {
    const bool areLines = holdsResultLines(LookAtText(file).head);
    file.seek(0);
    if (areLines) {
        look.kind = QStringLiteral("result lines");
        return lookAtLines(file, LineLayout{0, -1, -1, -1, -1, -1}, look);
    }
    const FreqStoreXml::CsvLook found = FreqStoreXml::LookAtCsv(
        file, file.fileName(), FreqStoreXml::CsvLayout::Of(FreqStoreXml::FrequencyStoreListHelper::XmlList));
    look.rows = found.rows;
    look.frequencies = found.frequencies;
    look.firstProblemLine = found.cutLine;
}

/// Documents of others may have what our scanner refuses; whether they can be read is not known then.
void lookAtXml(QFile& file, FileLook& look) {
    const bool isList = FreqStoreXml::FileHandling().IsValidFormat(file.fileName()) ||
                        FreqStoreXml::FileHandling().IsDetectionResults(file.fileName());
    const TextForm form = LookAtText(file);
    if (!form.refusal.isEmpty()) {
        look.refusal = form.refusal;
        look.firstProblemLine = form.refusalLine;
        return;
    }
    Utf8Device converted(file, form.encoding);
    const bool asItIs = isList || form.encoding == TextEncoding::Utf8;
    XmlScanner scanner(asItIs ? static_cast<QIODevice&>(file) : converted, file.fileName(), isList);
    XmlCounter counter(scanner, look);
    const bool isJob = look.kind == QLatin1String("job");
    if (!isList && form.head.contains(QLatin1String("<!DOCTYPE"))) {
        look.rows = look.frequencies = -1;
        return;
    }
    counter.Run();
    const QString root = QString::fromStdString(counter.Root()).left(40);
    if (isJob)
        return;
    if (isList)
        look.kind = root == QLatin1String("FrequencyStoreList") ? QStringLiteral("frequency-store XML")
                                                                : QStringLiteral("detection results XML");
    else if (counter.HasProfiles())
        look.kind = QStringLiteral("profile table");
    else
        look.refusal = QCoreApplication::translate(
                           "Readers", "is no list that can be read and holds no profiles (root \"%1\")")
                           .arg(root);
}

/// The kinds of files by the marks in their names; the first that a name has counts.
struct Kind {
    OwnFile kind;
    void (*look)(QFile& file, FileLook& look);
};

constexpr Kind Kinds[] = {
    {OwnFile::Job, lookAtXml},
    {OwnFile::SflLines, lookAtLinesOf<SflLayout>},
    {OwnFile::LtlLines, lookAtLinesOf<LtlLayout>},
    {OwnFile::Xml, lookAtXml},
    {OwnFile::Csv, lookAtCsv},
    {OwnFile::NoiLines, lookAtLinesOf<NoiLayout>},
};

const Kind* kindOf(const QString& path) {
    const auto* const kind =
        std::ranges::find_if(Kinds, [&](const Kind& known) { return IsNamedAs(known.kind, path); });
    return kind == std::end(Kinds) ? nullptr : kind;
}

} // namespace

FileLook LookAtFile(const QString& path) {
    FileLook look;
    QFile file(path);
    look.refusal = RefuseToOpen(file);
    const Kind* const kind = kindOf(path);
    if (look.refusal.isEmpty() && !kind)
        look.refusal = QCoreApplication::translate("Readers", "is of no known kind of file");
    if (kind)
        look.kind = QString::fromLatin1(RowOf(kind->kind).name);
    if (!look.refusal.isEmpty())
        return look;
    try {
        kind->look(file, look);
    } catch (const RGException& exception) {
        refuse(look, exception, path);
    }
    return look;
}
