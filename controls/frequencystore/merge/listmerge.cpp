#include "controls/frequencystore/merge/listmerge.h"

#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/common/simplefrequency.h"
#include "controls/frequencystore/memory/memorysystemhandler.h"
#include "controls/frequencystore/noi/noifrequencyhandler.h"
#include "host/base/fileproblems.h"
#include "host/base/frequencytext.h"
#include "host/base/longwork.h"
#include "host/base/numbers.h"
#include "host/freqlist/frequencynodemediator.h"
#include "host/valuetree/operatoraction.h"

#include <algorithm>
#include <cmath>

using FreqStoreXml::FFM_Settings;
using FreqStoreXml::FrequencyStoreEntry;

/// A list that takes entries: what of them it keeps, and who follows when they change.
struct MergedList {
    MediatorType type;
    std::span<const FreqList::Key* const> keys;
    /// The template of its entries, which has the limits of the receiver; null where they do not matter.
    const GeneralEntry* (*source)();
    /// Brings up to date what is made of the list, after entries changed in themselves.
    void (*follow)();
};

namespace {

using EntryMerge::None;
using EntryMerge::Silence;
using Part = ListMerge::Part;
using Key = FreqList::Key;

/// Of a target whose file says none, as the list's readers have it.
constexpr char UnsaidPriority[] = "1";

QString numberText(double number) {
    return number > 0 ? Quor::ToShortest(number) : QString();
}

QString roundedText(double number) {
    return QString::number(std::llround(number));
}

/// What an interchange entry says under a key, as the value's text; `title` names it to the operator.
struct Carried {
    const Key* key;
    ListMerge::Part part;
    const char* title;
    QString (*text)(const FrequencyStoreEntry& entry);
};

QString bandwidthOf(const FrequencyStoreEntry& entry) {
    return numberText(entry.GetFFM_Settings().GetIFBandwidth().GetValue());
}

const Carried& carriedOf(const Key& key) {
    using E = FrequencyStoreEntry;
    static constexpr Carried table[] = {
        {&Keys::KeyFrequency, Part::Frequency, QT_TRANSLATE_NOOP("ListMerge", "Frequency"),
         [](const E& entry) { return numberText(entry.GetFFM_Settings().GetFrequency().GetValue()); }},
        {&Keys::KeyBandwidth, Part::Bandwidth, QT_TRANSLATE_NOOP("ListMerge", "Bandwidth"), bandwidthOf},
        {&Keys::BandwidthSel, Part::Bandwidth, QT_TRANSLATE_NOOP("ListMerge", "Bandwidth"), bandwidthOf},
        {&Keys::KeyComment, Part::Comment, QT_TRANSLATE_NOOP("ListMerge", "Comment"),
         [](const E& entry) { return entry.GetComment(); }},
        {&Keys::KeyDemodulation, Part::Demodulation, QT_TRANSLATE_NOOP("ListMerge", "Demodulation"),
         [](const E& entry) {
             return QString(FFM_Settings::AnalogDemodToName(entry.GetFFM_Settings().GetAnalogDemod()));
         }},
        {&Keys::Priority, Part::Others, QT_TRANSLATE_NOOP("ListMerge", "Priority"),
         [](const E& entry) { return entry.GetProfile_Data().GetPriority(); }},
        {&Keys::ThreatClass, Part::Others, QT_TRANSLATE_NOOP("ListMerge", "Threat class"),
         [](const E& entry) { return entry.GetProfile_Data().GetThreatClass(); }},
        {&Keys::SignalClass, Part::Others, QT_TRANSLATE_NOOP("ListMerge", "Signal class"),
         [](const E& entry) { return entry.GetProfile_Data().GetSignalClass(); }},
        {&Keys::TransmissionSystem, Part::Others, QT_TRANSLATE_NOOP("ListMerge", "Transmission system"),
         [](const E& entry) { return entry.GetProfile_Data().GetTransmissionSystem(); }},
        {&Keys::ProfileID, Part::Others, QT_TRANSLATE_NOOP("ListMerge", "Profile ID"),
         [](const E& entry) { return entry.GetProfile_Data().GetProfileID(); }},
        {&Keys::ProfileName, Part::Others, QT_TRANSLATE_NOOP("ListMerge", "Profile"),
         [](const E& entry) { return entry.GetProfile_Data().GetProfileName(); }},
        {&Keys::Threshold, Part::Others, QT_TRANSLATE_NOOP("ListMerge", "Threshold"),
         [](const E& entry) {
             const FFM_Settings& settings = entry.GetFFM_Settings();
             return settings.HasLevel() ? roundedText(settings.GetLevel()) : QString();
         }},
        {&Keys::BFOFrequency, Part::Others, QT_TRANSLATE_NOOP("ListMerge", "BFO"),
         [](const E& entry) {
             const FreqStoreXml::FFM_SettingsDetail& detail = entry.GetFFM_Settings().GetDetail();
             return detail.AnyData() ? roundedText(detail.GetBFOFrequency()) : QString();
         }},
    };
    return *std::ranges::find(table, &key, &Carried::key);
}

constexpr const Key* TargetKeys[] = {
    &Keys::KeyFrequency, &Keys::KeyBandwidth, &Keys::KeyComment,  &Keys::KeyDemodulation,
    &Keys::Priority,     &Keys::ThreatClass,  &Keys::SignalClass, &Keys::TransmissionSystem,
    &Keys::ProfileID,    &Keys::ProfileName,
};
constexpr const Key* ChannelKeysHF[] = {&Keys::KeyFrequency,    &Keys::BandwidthSel, &Keys::KeyComment,
                                        &Keys::KeyDemodulation, &Keys::Threshold,    &Keys::BFOFrequency};
constexpr const Key* ChannelKeysVUHF[] = {&Keys::KeyFrequency, &Keys::BandwidthSel, &Keys::KeyComment,
                                          &Keys::KeyDemodulation, &Keys::Threshold};
constexpr const Key* NoiKeys[] = {&Keys::KeyFrequency, &Keys::KeyBandwidth, &Keys::KeyComment};

const GeneralEntry* noSource() {
    return nullptr;
}

const GeneralEntry* sourceOfChannels() {
    return MemorySystemHandler::Instance()->GetGeneralEntry();
}

void followChannels() {
    MemorySystemHandler::Instance()->SuspendMediatorCtrl(false, true);
    MemorySystemHandler::Instance()->UpdateJobFileEntries();
}

constexpr MergedList Lists[] = {
    {MediatorType::TargetList, TargetKeys, noSource, [] {}},
    {MediatorType::MemoryHF, ChannelKeysHF, sourceOfChannels, followChannels},
    {MediatorType::MemoryVUHF, ChannelKeysVUHF, sourceOfChannels, followChannels},
    // Its files, too, may have what this receiver does not reach.
    {MediatorType::NoiFrequencies, NoiKeys, noSource,
     [] { NOIFrequencyHandler::Instance()->UpdateNOIList(); }},
};

const MergedList* kindOf(const HalvoNodeMediatorCtrl* list) {
    const auto* found = std::ranges::find_if(
        Lists, [&](const MergedList& known) { return list && known.type == list->GetMediatorType(); });
    return found == std::end(Lists) ? nullptr : found;
}

/// The text of a value as operators read it.
QString shownText(Part part, const QString& text) {
    double hertz = 0;
    if (part == Part::Frequency && Quor::ParseDouble(text, hertz))
        return Quor::FrequencyText(hertz);
    return part == Part::Bandwidth && Quor::ParseDouble(text, hertz) ? Quor::BandwidthText(hertz) : text;
}

/// Writes through the entry's own setters, so that a choice that lacks the text gets it.
void setValue(Node& node, const QString& key, const QString& text) {
    SimpleFrequency entry(&node, false, nullptr);
    double number = 0;
    if (key == Keys::KeyFrequency.Text() && Quor::ParseDouble(text, number))
        entry.SetFrequency(number);
    else if ((key == Keys::KeyBandwidth.Text() || key == Keys::BandwidthSel.Text()) &&
             Quor::ParseDouble(text, number))
        entry.SetBandwidth(number);
    else if (key == Keys::KeyDemodulation.Text())
        entry.SetDemodulation(text);
    else if (ValueBase* value = node.FindOwnValue(Names::Find(key)))
        value->SetStringValue(text);
}

std::vector<Node*> entriesOf(const HalvoNodeMediatorCtrl* list) {
    quint32 seen = 0;
    const Node* const node = list ? list->GetNode() : nullptr;
    return node ? node->ChildrenSince(seen) : std::vector<Node*>();
}

std::vector<quint32> serialsOf(const std::vector<Node*>& entries) {
    std::vector<quint32> serials;
    serials.reserve(entries.size());
    for (const Node* entry : entries)
        serials.push_back(entry->GetSerial());
    return serials;
}

void step(size_t done, size_t total) {
    LongWork::Step(static_cast<qint64>(done), static_cast<qint64>(total));
}

QString textIn(const std::vector<EntryMerge::Field>& fields, const Key& key) {
    const double hertz = EntryMerge::FrequencyOf(fields);
    for (const EntryMerge::Field& field : fields) {
        if (field.key == Names::Text(key))
            return EntryMerge::Said(field, hertz);
    }
    return QString();
}

} // namespace

QString ListMerge::WhyOff(MultiViewMediatorCtrl* list) {
    const auto* const entries = dynamic_cast<HalvoNodeMediatorCtrl*>(list);
    if (!kindOf(entries))
        return tr("Nothing is imported into this list: its entries are what was found.");
    return entries->IsSuspended() ? tr("The last file could not be read: open another one.") : QString();
}

ListMerge::ListMerge(HalvoNodeMediatorCtrl& list, QVector<FrequencyStoreEntry> theirs)
    : m_list(&list), m_kind(kindOf(&list)), m_theirs(std::move(theirs)) {
    ValueNumeric<double> reached;
    GeneralEntry source;
    if (const GeneralEntry* own = m_kind->source())
        source = *own;
    if (!source.InitValueFrom(SourceFrequency, &reached))
        reached.SetMinMax(0, std::numeric_limits<double>::max(), 1);
    m_lowest = reached.GetMin();
    m_highest = reached.GetMax();
}

ListMerge::Fields ListMerge::fieldsOf(const FrequencyStoreEntry& entry) const {
    Fields fields;
    fields.reserve(m_kind->keys.size());
    for (const Key* key : m_kind->keys)
        fields.push_back({Names::Text(*key), carriedOf(*key).text(entry)});
    return fields;
}

ListMerge::Fields ListMerge::fieldsOf(const Node& entry) const {
    Fields fields;
    fields.reserve(m_kind->keys.size());
    for (const Key* key : m_kind->keys) {
        if (const ValueBase* value = entry.FindOwnValue(*key))
            fields.push_back({Names::Text(*key), value->GetStringValue()});
    }
    return fields;
}

QString ListMerge::whyRefused(const FrequencyStoreEntry& entry) const {
    const double hertz = entry.GetFFM_Settings().GetFrequency().GetValue();
    const double bandwidth = entry.GetFFM_Settings().GetIFBandwidth().GetValue();
    if (!(hertz > 0))
        return tr("has no frequency");
    if (!FileProblems::IsFrequency(hertz))
        return tr("%1 is no frequency").arg(Quor::FrequencyText(hertz));
    if (hertz < m_lowest || hertz > m_highest)
        return tr("the receiver reaches %1 to %2")
            .arg(Quor::ShortFrequencyText(m_lowest), Quor::ShortFrequencyText(m_highest));
    if (bandwidth < 0 || bandwidth > SimpleFrequency::MaxBandwidth)
        return tr("%1 is no bandwidth").arg(Quor::BandwidthText(bandwidth));
    return QString();
}

void ListMerge::Match(double tolerance) {
    const std::vector<Row> before = m_rows;
    const std::vector<quint32> mine = m_mine;
    const auto counts = m_counts;
    m_isCancelled =
        !LongWork::Run(tr("Matching entries"), [&] { match(tolerance, std::exchange(m_rows, {})); });
    if (!m_isCancelled)
        return;
    m_rows = before;
    m_mine = mine;
    m_counts = counts;
}

void ListMerge::match(double tolerance, const std::vector<Row>& before) {
    m_counts = {};
    const std::vector<Node*> entries = entriesOf(m_list);
    m_mine = serialsOf(entries);
    EntryMerge::KeyMaker maker;
    std::vector<EntryMerge::Key> mine;
    std::vector<EntryMerge::Key> theirs;
    mine.reserve(m_mine.size());
    theirs.reserve(static_cast<size_t>(m_theirs.size()));
    for (const Node* entry : entries) {
        step(mine.size(), entries.size());
        mine.push_back(maker.Of(fieldsOf(*entry)));
    }
    for (const FrequencyStoreEntry& entry : std::as_const(m_theirs)) {
        step(theirs.size(), static_cast<size_t>(m_theirs.size()));
        theirs.push_back(whyRefused(entry).isEmpty() ? maker.Of(fieldsOf(entry)) : EntryMerge::Key());
    }
    std::vector<quint32> places;
    LongWork::Elsewhere([&] { places = EntryMerge::Match(mine, theirs, tolerance); });
    m_rows.reserve(theirs.size());
    for (size_t row = 0; row < theirs.size(); ++row) {
        step(row, theirs.size());
        const bool isRefused = std::isnan(theirs[row].frequency);
        const quint32 place = isRefused ? None : places[row];
        m_rows.push_back({State::New, place == None && !isRefused ? Choice::Theirs : Choice::Mine, place});
        if (isRefused)
            m_rows.back().state = State::Refused;
        else if (place != None)
            m_rows.back().state = differencesOf(row).empty() ? State::Equal : State::Different;
        ++m_counts[static_cast<size_t>(m_rows.back().state)];
        if (row < before.size() && before[row].state == m_rows[row].state &&
            before[row].mine == m_rows[row].mine)
            m_rows[row].choice = before[row].choice;
    }
}

/// Mine that the row belongs to; null when there is none, or none any more.
Node* ListMerge::mineOf(size_t row) const {
    const quint32 mine = m_rows[row].mine;
    const Node* const list = m_list ? m_list->GetNode() : nullptr;
    return mine == None || !list ? nullptr : list->ChildBySerial(m_mine[mine]);
}

std::vector<EntryMerge::Difference> ListMerge::differencesOf(size_t row) const {
    const Node* const mine = mineOf(row);
    if (!mine)
        return {};
    return EntryMerge::Differences(fieldsOf(*mine), fieldsOf(m_theirs[static_cast<qsizetype>(row)]),
                                   Silence::IsEqual);
}

std::vector<ListMerge::Choice> ListMerge::ChoicesOf(size_t row) const {
    switch (m_rows[row].state) {
    case State::New:
        return {Choice::Mine, Choice::Theirs};
    case State::Equal:
        return {Choice::Mine, Choice::Both};
    case State::Different:
        return {Choice::Mine, Choice::Theirs, Choice::Both, Choice::Join};
    case State::Refused:
        break;
    }
    return {};
}

bool ListMerge::Choose(size_t row, Choice choice) {
    const std::vector<Choice> choices = ChoicesOf(row);
    const bool isThere = std::ranges::find(choices, choice) != choices.end();
    if (isThere)
        m_rows[row].choice = choice;
    return isThere;
}

ListMerge::Cell ListMerge::CellOf(size_t row, Part part) const {
    Cell cell;
    const auto key =
        std::ranges::find_if(m_kind->keys, [&](const Key* known) { return carriedOf(*known).part == part; });
    if (key == m_kind->keys.end())
        return cell;
    const Fields theirs = fieldsOf(m_theirs[static_cast<qsizetype>(row)]);
    cell.theirs = shownText(part, textIn(theirs, **key));
    const Node* const entry = mineOf(row);
    if (!entry)
        return cell;
    const Fields mine = fieldsOf(*entry);
    cell.mine = shownText(part, textIn(mine, **key));
    if (part == Part::Frequency)
        cell.offset = EntryMerge::FrequencyOf(theirs) - EntryMerge::FrequencyOf(mine);
    const std::vector<EntryMerge::Difference> differences = differencesOf(row);
    cell.differs =
        std::ranges::find(differences, Names::Text(**key), &EntryMerge::Difference::key) != differences.end();
    return cell;
}

QString ListMerge::OtherDifferences(size_t row) const {
    const std::vector<EntryMerge::Difference> differences = differencesOf(row);
    QStringList texts;
    for (const Key* key : m_kind->keys) {
        const Carried& carried = carriedOf(*key);
        const auto found = std::ranges::find(differences, Names::Text(*key), &EntryMerge::Difference::key);
        if (carried.part == Part::Others && found != differences.end())
            texts << QStringLiteral("%1: %2 → %3").arg(tr(carried.title), found->mine, found->theirs);
    }
    return texts.join(QStringLiteral(", "));
}

ListMerge::Plan ListMerge::GetPlan() const {
    Plan plan;
    for (const Row& row : m_rows) {
        const bool isNew = row.state == State::New;
        if (row.state == State::Refused)
            ++plan.refused;
        else if (row.choice == Choice::Mine)
            ++plan.left;
        else if (isNew || row.choice == Choice::Both)
            ++plan.added;
        else
            ++plan.changed;
    }
    return plan;
}

bool ListMerge::isAsMatched() const {
    return m_list && m_list->GetNode() && serialsOf(entriesOf(m_list)) == m_mine;
}

/// Takes over into mine what is chosen.
void ListMerge::change(size_t row) {
    Node& mine = *mineOf(row);
    const bool joins = m_rows[row].choice == Choice::Join;
    for (const EntryMerge::Difference& difference : differencesOf(row)) {
        const bool isComment = difference.key == Names::Text(Keys::KeyComment);
        if (joins && isComment)
            setValue(mine, difference.key, EntryMerge::JoinedComments(difference.mine, difference.theirs));
        else if (!joins)
            setValue(mine, difference.key, difference.theirs);
    }
}

bool ListMerge::Apply() {
    if (!isAsMatched())
        return false;
    const OperatorAction action(tr("Import into List"));
    m_isCancelled = !LongWork::Run(tr("Import into List"), [this] { applyChosen(); });
    return !m_isCancelled;
}

void ListMerge::applyChosen() {
    QVector<FrequencyStoreEntry> added;
    const Plan plan = GetPlan();
    added.reserve(plan.added);
    for (size_t row = 0; row < m_rows.size(); ++row) {
        step(row, m_rows.size());
        const Row& entry = m_rows[row];
        if (entry.choice == Choice::Mine)
            continue;
        if (entry.mine != None && entry.choice != Choice::Both) {
            change(row);
            continue;
        }
        added.append(m_theirs[static_cast<qsizetype>(row)]);
        FreqStoreXml::Profile_Data& profile = added.last().GetProfile_Data();
        if (profile.GetPriority().isEmpty())
            profile.SetPriority(QString::fromLatin1(UnsaidPriority));
    }
    if (!added.isEmpty()) // what follows the list takes the changes with them
        m_list->AppendEntries(added);
    else if (plan.changed > 0)
        m_kind->follow();
    if (m_list)
        m_list->ForceUpdateNow();
}
