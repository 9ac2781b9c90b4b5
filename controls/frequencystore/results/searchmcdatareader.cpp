#include "controls/frequencystore/results/searchmcdatareader.h"

#include "controls/frequencystore/files/filekind.h"
#include "controls/frequencystore/files/linereader.h"
#include "controls/frequencystore/results/searchmcdataresult.h"
#include "host/base/longwork.h"
#include "host/base/numbers.h"
#include "host/freqlist/frequencynodemediatorctrl.h"
#include "host/freqstorexml/stagedentries.h"
#include "host/report/filestamps.h"
#include "host/report/filework.h"
#include "host/valuetree/node.h"

#include <QCoreApplication>

using FreqStoreXml::FrequencyStoreListHelper;

namespace {

constexpr char TraceSource[] = "listviewshandler";

SearchMCDataResult addResult(Node& list) {
    static const Names::Id name = Names::Intern(QStringLiteral("Entry"));
    const NewEntryNode made(list, name, SearchMCDataResult::Shape());
    return {made.node, true, nullptr, made.use};
}

/// The fields of an exported line, in its order, of which empty ones are passed over.
enum Field : size_t { Frequency, Bandwidth, TypeLetter, LockState, LockTime, Confidence, FieldCount };
constexpr const char* FieldNames[] = {
    QT_TRANSLATE_NOOP("Readers", "frequency"),   QT_TRANSLATE_NOOP("Readers", "bandwidth"),
    QT_TRANSLATE_NOOP("Readers", "type letter"), QT_TRANSLATE_NOOP("Readers", "lock state"),
    QT_TRANSLATE_NOOP("Readers", "lock time"),   QT_TRANSLATE_NOOP("Readers", "confidence")};

/// What a line says of a result; what it lacks is as in a new one.
struct Line {
    double frequency; ///< Hz
    std::optional<double> bandwidth;
    std::optional<QString> lockState;
    std::optional<quint64> lockTime;
    std::optional<int> confidence;

    /// The type letter follows from the rest. Lines have no comment: that of a new entry.
    void FillIn(SearchMCDataResult& result) const {
        result.SetFrequency(frequency);
        if (bandwidth)
            result.SetBandwidth(*bandwidth);
        if (lockState)
            result.SetLocked(*lockState);
        if (lockTime)
            result.SetLockTime(*lockTime);
        if (confidence)
            result.SetConfidence(*confidence);
        result.SetComment(Quor::ToShortest(frequency));
    }
};

/// A line taken apart, as long as the reader stays at it. A number that is none is 0.
class LineParts {
public:
    explicit LineParts(const LineReader& reader) {
        QStringView parts[MaxParts];
        const unsigned char partCount = reader.Fields(parts, MaxParts);
        for (unsigned char i = 0; i < partCount && m_count < FieldCount; ++i) {
            if (!parts[i].isEmpty())
                m_fields[m_count++] = parts[i];
        }
        for (size_t i = 0; i < m_count; ++i)
            m_isSound[i] = isText(i) || Quor::ParseDouble(m_fields[i], m_numbers[i]);
    }

    /// Why this is no exported line; empty when it is.
    QString Refusal() const {
        for (size_t i = 0; i < FieldCount; ++i) {
            if (i == m_count)
                return QCoreApplication::translate("Readers", "has no %1").arg(nameOf(i));
            if (!m_isSound[i])
                return QCoreApplication::translate("Readers", "\"%1\" is no %2; 0 is taken")
                    .arg(m_fields[i].left(40).toString(), nameOf(i));
        }
        return QString();
    }
    Line Contents() const {
        Line line{m_numbers[Frequency], {}, {}, {}, {}};
        if (m_count > Bandwidth)
            line.bandwidth = m_numbers[Bandwidth];
        if (m_count > LockState)
            line.lockState = m_fields[LockState].toString();
        if (m_count > LockTime)
            line.lockTime = lockTime();
        if (m_count > Confidence)
            line.confidence = m_fields[Confidence].toInt();
        return line;
    }

private:
    quint64 lockTime() const {
        qint64 time = 0;
        return Quor::ParseInt(m_fields[LockTime], time) && time >= 0 ? static_cast<quint64>(time)
                                                                     : m_fields[LockTime].toULongLong();
    }
    static QString nameOf(size_t field) { return QCoreApplication::translate("Readers", FieldNames[field]); }
    static constexpr unsigned char MaxParts = 64; ///< empty ones, too
    static bool isText(size_t field) { return field == TypeLetter || field == LockState; }

    QStringView m_fields[FieldCount];
    double m_numbers[FieldCount]{};
    bool m_isSound[FieldCount]{};
    size_t m_count = 0;
};

/// Some lines, and what is wrong with them is told; none at the end of the file.
std::vector<Line> nextLines(LineReader& reader) {
    constexpr size_t MostLines = 2048;
    std::vector<Line> lines;
    QStringView view;
    while (lines.size() < MostLines && reader.Next(view)) {
        if (view.trimmed().isEmpty())
            continue;
        const LineParts parts(reader);
        if (const QString refusal = parts.Refusal(); !refusal.isEmpty())
            reader.ReportProblem(refusal);
        lines.push_back(parts.Contents());
        reader.CheckFrequency(lines.back().frequency);
    }
    return lines;
}

/// Whether the file holds exported lines: these have TABs, a heading row has none.
bool holdsLines(const QString& path) {
    bool hasTab = false;
    LongWork::Elsewhere([&] {
        QFile file(path);
        if (!RefuseToOpen(file).isEmpty())
            return;
        LineReader reader(file, path, LineReader::Telling::Nothing);
        QStringView line;
        hasTab = !reader.RefuseContent() && reader.Next(line) && line.contains(QLatin1Char('\t'));
    });
    return hasTab;
}

} // namespace

bool SearchMCDataReader::ReadFile(const QString& path) {
    const auto read = [&] {
        const bool csv = PathContains(path, ".csv");
        if (PathContains(path, ".xml"))
            readEntries(path, false);
        else if (!csv)
            throw RGException(path + QStringLiteral(": ") +
                              QCoreApplication::translate("Readers", "is of no known kind of file"));
        else if (holdsLines(path))
            readLines(path);
        else
            readEntries(path, true);
        return true;
    };
    m_isEmptied = false;
    return REPORTGENERATOR::ReadAsWork(path, [&] {
        return REPORTGENERATOR::ReadSafely(TraceSource, path, read, [this] { return dropEntries(); });
    });
}

/// Empties a list that is no longer the old one and not yet the new one.
REPORTGENERATOR::DroppedEntries SearchMCDataReader::dropEntries() {
    Node* const node = m_list.GetNode();
    if (!m_isEmptied || !node)
        return {};
    const auto count = static_cast<qint64>(node->ChildCount());
    node->DeleteChildren();
    m_list.Suspend(false);
    m_list.ForceUpdateNow();
    return {count, true};
}

void SearchMCDataReader::readEntries(const QString& path, bool csv) {
    FreqStoreXml::StagedEntries entries;
    entries.Read(path, csv, FrequencyStoreListHelper::SearchResults);
    m_isEmptied = true;
    if (Node* node = m_list.GetNode())
        node->DeleteChildren();
    m_list.Suspend(true);
    QVector<FreqStoreXml::FrequencyStoreEntry> one(1);
    entries.Drain([&](const FreqStoreXml::FrequencyStoreEntry& entry) {
        one[0] = entry;
        m_list.AppendEntries(one);
    });
    m_list.Suspend(false);
}

void SearchMCDataReader::readLines(const QString& path) {
    FileStamps::Reading reading(path);
    QFile file(path);
    if (const QString refusal = RefuseToOpen(file); !refusal.isEmpty())
        throw RGException(path + QStringLiteral(": ") + refusal);
    std::optional<LineReader> reader;
    LongWork::Elsewhere([&] { reader.emplace(file, path); });
    if (const std::optional<Problem> refusal = reader->RefuseContent())
        throw RGException(refusal->ToString());
    Node* node = m_list.GetNode();
    if (!node)
        return;
    m_list.Suspend(true);
    m_isEmptied = true;
    node->DeleteChildren();
    LongWork::Ahead([&]() -> LongWork::Take {
        std::vector<Line> lines = nextLines(*reader);
        if (lines.empty())
            return {};
        return [node, lines = std::move(lines), done = file.pos(), size = file.size()] {
            for (const Line& line : lines) {
                SearchMCDataResult result = addResult(*node);
                line.FillIn(result);
            }
            LongWork::Step(done, size);
        };
    });
    reading.Finish();
    m_list.Suspend(false);
}

void SearchMCDataReader::AddEntry(Node& list, const FreqStoreXml::FrequencyStoreEntry& entry) {
    const FreqStoreXml::FFM_Settings& settings = entry.GetFFM_Settings();
    const FreqStoreXml::ResultList& result = entry.GetResultList();
    SearchMCDataResult added = addResult(list);
    added.SetFrequency(settings.GetFrequency().GetValue());
    added.SetBandwidth(settings.GetIFBandwidth().GetValue());
    added.SetComment(entry.GetComment());
    if (!result.GetReason().isEmpty())
        added.SetLocked(result.GetReason());
    added.SetLockTime(static_cast<quint64>(result.GetResultTimeUsec()));
    added.SetConfidence(result.GetConfidence());
}
