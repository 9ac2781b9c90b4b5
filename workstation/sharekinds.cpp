#include "workstation/sharekinds.h"

#include "controls/frequencystore/memory/hfmemoryentry.h"
#include "controls/frequencystore/memory/memorylistviewfactory.h"
#include "controls/frequencystore/memory/vuhfmemoryentry.h"
#include "controls/frequencystore/noi/noifrequency.h"
#include "controls/frequencystore/noi/noilistviewfactory.h"
#include "controls/frequencystore/targets/wkflistentry.h"
#include "host/freqstorexml/frequencystoreentry.h"
#include "workstation/sharerecordkind.h"

#include <QCoreApplication>

#include <algorithm>

namespace {

template <typename Entry, const auto& EntryName>
void addEntry(Node& list, const FreqStoreXml::FrequencyStoreEntry* from) {
    const NewEntryNode made(list, Names::Intern(QString::fromLatin1(EntryName)), Entry::Shape());
    Entry entry(made.node, true, nullptr, made.use);
    entry.SetComment(from ? from->GetComment() : QString());
    if (!from)
        return;
    const FreqStoreXml::FFM_Settings& settings = from->GetFFM_Settings();
    entry.SetFrequency(settings.GetFrequency().GetValue());
    entry.SetBandwidth(settings.GetIFBandwidth().GetValue());
    const QString demodulation = FreqStoreXml::FFM_Settings::AnalogDemodToName(settings.GetAnalogDemod());
    if (!demodulation.isEmpty())
        entry.SetDemodulation(demodulation);
}

constexpr char NoiEntry[] = "Entry";
constexpr char MemoryEntry[] = "MemItem";
constexpr int StoreTypeOfTargets = 2;
constexpr int StoreTypeOfOthers = 4;

constexpr char DetectionEntry[] = "Detection"; // no node has it
constexpr ShareKind kindOfRecords(const char* name, const char* title, const ShareRecordKind& records) {
    return {name, title, DetectionEntry, nullptr, MediatorType{}, 0, false, nullptr, nullptr, &records};
}

constexpr ShareKind Kinds[] = {
    {"target", QT_TRANSLATE_NOOP("ShareKind", "Targets"), "Target", WkfTarget::Shape,
     MediatorType::TargetList, StoreTypeOfTargets, true, nullptr, nullptr},
    {"noi", QT_TRANSLATE_NOOP("ShareKind", "NOI Frequencies"), NoiEntry, NOIFrequency::Shape,
     MediatorType::NoiFrequencies, StoreTypeOfOthers, false, NoiColumns, addEntry<NOIFrequency, NoiEntry>},
    {"memory-hf", QT_TRANSLATE_NOOP("ShareKind", "Memory Channels HF"), MemoryEntry, HFMemoryEntry::Shape,
     MediatorType::MemoryHF, StoreTypeOfOthers, false, MemoryColumns<false>,
     addEntry<HFMemoryEntry, MemoryEntry>},
    {"memory-vuhf", QT_TRANSLATE_NOOP("ShareKind", "Memory Channels V/UHF"), MemoryEntry,
     VUHFMemoryEntry::Shape, MediatorType::MemoryVUHF, StoreTypeOfOthers, false, MemoryColumns<true>,
     addEntry<VUHFMemoryEntry, MemoryEntry>},
    kindOfRecords("detections", QT_TRANSLATE_NOOP("ShareKind", "Detections"), PlainDetections),
    kindOfRecords("detections-hf", QT_TRANSLATE_NOOP("ShareKind", "Search MC with Classifier HF"),
                  DetectionsOfHF),
    kindOfRecords("detections-vuhf", QT_TRANSLATE_NOOP("ShareKind", "Search MC with Classifier V/UHF"),
                  DetectionsOfVUHF),
};

} // namespace

QString ShareKind::Title() const {
    return QCoreApplication::translate("ShareKind", title);
}

QString ShareKind::TitleOf(const QString& list) {
    const ShareKind* const kind = FindShareKind(list);
    return kind ? kind->Title() : list;
}

SharedList ShareKind::ListOf(Node& node) const {
    return {&node, Name(), QString::fromLatin1(entryName), &shape(), hasFile};
}

std::span<const ShareKind> ShareKinds() {
    return Kinds;
}

const ShareKind* FindShareKind(const QString& name) {
    const auto* found =
        std::ranges::find_if(Kinds, [&](const ShareKind& kind) { return name == QLatin1String(kind.name); });
    return found == std::end(Kinds) ? nullptr : found;
}
