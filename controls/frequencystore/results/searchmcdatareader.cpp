#include "controls/frequencystore/results/searchmcdatareader.h"

#include "controls/frequencystore/files/filekind.h"
#include "controls/frequencystore/files/linereader.h"
#include "controls/frequencystore/results/searchmcdatamediator.h"
#include "controls/frequencystore/results/searchmcdataresult.h"
#include "host/base/numbers.h"
#include "host/base/tokenizer.h"
#include "host/freqlist/frequencynodemediatorctrl.h"
#include "host/freqstorexml/stagedentries.h"
#include "host/report/filestamps.h"
#include "host/valuetree/node.h"

using FreqStoreXml::FrequencyStoreListHelper;

namespace {

constexpr char TraceSource[] = "listviewshandler";

Node& addNode(Node& list) {
    auto* node = new Node(&list, QStringLiteral("Entry"));
    list.AddItemUnique(node);
    return *node;
}

/// The fields of an exported line, as it names them.
constexpr const char* LineFields[] = {"frequency",  "bandwidth", "type letter",
                                      "lock state", "lock time", "confidence"};

/// Why a line is no exported one; empty when it is.
QString refuseLine(const QString& line) {
    const QString tab(QLatin1Char('\t'));
    Quor::Tokenizer tokens(line);
    double number = 0;
    for (size_t i = 0; i < std::size(LineFields); ++i) {
        const QString token = tokens(tab);
        if (token.isEmpty())
            return QStringLiteral("has no %1").arg(QLatin1String(LineFields[i]));
        const bool isText = i == 2 || i == 3;
        if (!isText && !Quor::ParseDouble(token, number))
            return QStringLiteral("\"%1\" is no %2; 0 is taken")
                .arg(token.left(40), QLatin1String(LineFields[i]));
    }
    return QString();
}

/// Whether the file holds exported lines: these have TABs, a heading row has none.
bool holdsLines(const QString& path) {
    QFile file(path);
    if (!RefuseToOpen(file).isEmpty())
        return false;
    LineReader reader(file, path, LineReader::Telling::Nothing);
    QStringView line;
    return !reader.RefuseContent() && reader.Next(line) && line.contains(QLatin1Char('\t'));
}

} // namespace

bool SearchMCDataReader::ReadFile(const QString& path) {
    const auto read = [&] {
        const bool csv = PathContains(path, ".csv");
        if (PathContains(path, ".xml"))
            readEntries(path, false);
        else if (!csv)
            throw RGException(path + QStringLiteral(": is of no known kind of file"));
        else if (holdsLines(path))
            readLines(path);
        else
            readEntries(path, true);
        return true;
    };
    m_isEmptied = false;
    return REPORTGENERATOR::ReadSafely(TraceSource, path, read, [this] { return dropEntries(); });
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
    LineReader reader(file, path);
    if (const std::optional<Problem> refusal = reader.RefuseContent())
        throw RGException(refusal->ToString());
    Node* node = m_list.GetNode();
    if (!node)
        return;
    m_list.Suspend(true);
    m_isEmptied = true;
    node->DeleteChildren();
    QStringView view;
    while (reader.Next(view)) {
        if (view.trimmed().isEmpty())
            continue;
        QString line = view.toString();
        if (const QString refusal = refuseLine(line); !refusal.isEmpty())
            reader.ReportProblem(refusal);
        Node& entryNode = addNode(*node);
        const SearchMCDataResult entry(&entryNode, true, nullptr);
        SearchMCDataMediator mediator(nullptr, &entryNode, 0);
        mediator.FromString(line);
        double hertz = 0;
        mediator.GetFrequency(hertz, 0);
        reader.CheckFrequency(hertz);
        mediator.SetComment(Quor::ToShortest(hertz)); // lines have no comment: that of a new entry
    }
    reading.Finish();
    m_list.Suspend(false);
}

void SearchMCDataReader::AddEntry(Node& list, const FreqStoreXml::FrequencyStoreEntry& entry) {
    const FreqStoreXml::FFM_Settings& settings = entry.GetFFM_Settings();
    const FreqStoreXml::ResultList& result = entry.GetResultList();
    SearchMCDataResult added(&addNode(list), true, nullptr);
    added.SetFrequency(settings.GetFrequency().GetValue());
    added.SetBandwidth(settings.GetIFBandwidth().GetValue());
    added.SetComment(entry.GetComment());
    if (!result.GetReason().isEmpty())
        added.SetLocked(result.GetReason());
    added.SetLockTime(static_cast<quint64>(result.GetResultTimeUsec()));
    added.SetConfidence(result.GetConfidence());
}
