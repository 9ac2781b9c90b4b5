#include "host/base/longwork.h"
#include "host/base/problems.h"
#include "host/base/trace.h"
#include "host/freqlist/frequencynodemediator.h"
#include "host/freqlist/frequencynodemediatorctrl.h"
#include "host/freqstorexml/liststreams.h"
#include "host/report/outputfile.h"
#include "host/valuetree/tree.h"

using FreqStoreXml::FrequencyStoreEntry;
using FreqStoreXml::FrequencyStoreList;
using FreqStoreXml::FrequencyStoreListHelper;
using FreqStoreXml::FrequencyStoreListWriter;

namespace {

constexpr char TraceSource[] = "frequencynodemediatorctrl";

/// Writes a file; false, traced, when that fails, which its writer has told.
bool attempt(TracePlace place, const std::function<void()>& write) {
    try {
        write();
        return true;
    } catch (const RGException& exception) {
        TraceLazily(place, [&] { return exception.GetErrorText(); });
        return false;
    }
}

template <typename V, typename Content>
void addOwn(Node& node, Names::Id key, const Content& content) {
    auto* value = new V;
    value->SetValue(content);
    if (!node.AddValue(key, value))
        delete value; // the entry has one
}

} // namespace

/// Calls `visit` for every entry that there is, those too that have no mediator yet: a suspended controller
/// makes none before it goes on.
void FrequencyNodeMediatorCtrl::forEachEntry(const std::function<void(FrequencyNodeMediator&)>& visit) {
    if (IsDirty())
        ForceUpdateNow();
    ForEachInWork(visit);
    if (!m_node)
        return;
    quint32 seen = m_seenSerial;
    for (Node* child : m_node->ChildrenSince(seen)) {
        const std::unique_ptr<Mediator> passing(CreateMediator(child));
        if (auto* mediator = dynamic_cast<FrequencyNodeMediator*>(passing.get()))
            visit(*mediator);
    }
}

/// Each mediator describes itself into a list of one, so that a million entries never stand in memory.
void FrequencyNodeMediatorCtrl::ForEachRecord(
    const std::function<void(FrequencyNodeMediator&, const FrequencyStoreEntry&)>& visit) {
    FrequencyStoreList one;
    forEachEntry([&](FrequencyNodeMediator& mediator) {
        mediator.AddToXml(one);
        for (const FrequencyStoreEntry& entry : std::as_const(one).GetFrequencyStoreEntry())
            visit(mediator, entry);
        one.GetFrequencyStoreEntry().resize(0);
    });
}

void FrequencyNodeMediatorCtrl::VisitRecords(const std::function<void(const FrequencyStoreEntry&)>& visit) {
    ForEachRecord([&](FrequencyNodeMediator&, const FrequencyStoreEntry& entry) { visit(entry); });
}

FreqStoreXml::ListContent FrequencyNodeMediatorCtrl::Content() {
    return {.entries = [this](const auto& visit) { VisitRecords(visit); }};
}

void FrequencyNodeMediatorCtrl::writeList(FrequencyStoreListWriter& writer) {
    bool begun = false;
    ForEachRecord([&](FrequencyNodeMediator& mediator, const FrequencyStoreEntry& entry) {
        if (!begun)
            writer.Begin(FrequencyStoreList::NameToUsage(mediator.GetUsage()));
        begun = true;
        writer.Append(entry);
    });
    if (!begun)
        writer.Begin(FrequencyStoreList::NameToUsage(GetUsageName()));
    writer.Commit();
}

void FrequencyNodeMediatorCtrl::writeLines(const QString& fileName) {
    constexpr size_t FlushAt = 1 << 16;
    REPORTGENERATOR::OutputFile file(fileName);
    std::string lines;
    const auto flush = [&] {
        REPORTGENERATOR::WriteBytes(file.Device(), fileName, lines);
        lines.clear();
    };
    forEachEntry([&](FrequencyNodeMediator& mediator) {
        const QString line = mediator.ToString();
        if (line.isEmpty())
            return;
        lines += line.toStdString();
        lines += '\n';
        if (lines.size() >= FlushAt)
            flush();
    });
    flush();
    file.Commit();
}

void FrequencyNodeMediatorCtrl::WriteFrequencies(const QString& fileName, bool csv,
                                                 FrequencyStoreListHelper::ListType type) {
    FrequencyStoreListWriter writer(fileName, csv, type);
    writeList(writer);
}

bool FrequencyNodeMediatorCtrl::SaveFrequencies(const QString& fileName) {
    return attempt(TraceSource,
                   [&] { WriteFrequencies(fileName, false, FrequencyStoreListHelper::XmlList); });
}

bool FrequencyNodeMediatorCtrl::ExportFrequencies(const QString& fileName,
                                                  FrequencyStoreListHelper::ListType type) {
    return attempt(TraceSource, [&] {
        if (type == FrequencyStoreListHelper::SearchResults)
            writeLines(fileName);
        else
            WriteFrequencies(fileName, true, type);
    });
}

QString FrequencyNodeMediatorCtrl::GetFreqStoreReport() {
    FrequencyStoreList list;
    list.SetUsage(FrequencyStoreList::NameToUsage(GetUsageName()));
    forEachEntry([&](FrequencyNodeMediator& mediator) { mediator.AddToXml(list); });
    return list.GetXmlString();
}

void FrequencyNodeMediatorCtrl::SetReportXml(const QString& xml, bool replace) {
    FrequencyStoreList list;
    if (!m_node || !list.SetXmlString(xml, true)) {
        TraceLazily(TraceSource, [] { return QStringLiteral("Report is no frequency-store list"); });
        return;
    }
    if (replace)
        m_node->DeleteChildren();
    AppendEntries(list.GetFrequencyStoreEntry());
}

void FrequencyNodeMediatorCtrl::AppendEntries(const QVector<FrequencyStoreEntry>& entries) {
    if (!m_node)
        return;
    qint64 made = 0;
    for (const FrequencyStoreEntry& entry : entries) {
        if (entries.size() > 1) // a single one is a step of whoever appends it
            LongWork::Step(made++, entries.size());
        if (m_entryMaker)
            m_entryMaker(entry);
        else
            makePlainEntry(entry);
    }
    ForceUpdateNow();
}

/// Makes a plain entry: a node with the values that every list has.
void FrequencyNodeMediatorCtrl::makePlainEntry(const FrequencyStoreEntry& entry) {
    auto* node = new Node(m_node, QStringLiteral("Entry"));
    const auto& settings = entry.GetFFM_Settings();
    addOwn<ValueNumeric<double>>(*node, FreqList::KeyFrequency, settings.GetFrequency().GetValue());
    addOwn<ValueNumeric<double>>(*node, FreqList::KeyBandwidth, settings.GetIFBandwidth().GetValue());
    addOwn<Value<QString>>(*node, FreqList::KeyComment, entry.GetComment());
    addOwn<Value<QString>>(*node, FreqList::KeyDemodulation,
                           FreqStoreXml::FFM_Settings::AnalogDemodToName(settings.GetAnalogDemod()));
    addOwn<Value<char>>(*node, FreqList::KeyType,
                        entry.GetType().isEmpty() ? 'a' : entry.GetType()[0].toLatin1());
    m_node->AddItemUnique(node);
}
