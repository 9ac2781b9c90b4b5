#include "interchange/jsonentry.h"

#include "host/base/numbers.h"
#include "host/report/byteinput.h"
#include "interchange/reading.h"

#include <QCoreApplication>

#include <algorithm>
#include <charconv>
#include <cmath>

namespace Interchange {

namespace {

constexpr std::size_t MostMembers = 1000;
constexpr std::size_t LargestEntry = 16 * 1024 * 1024; // bytes

/// Members that entries of other programs have, and none of ours.
constexpr std::string_view ForeignMembers[] = {"name",  "mode",        "label",    "title",
                                               "notes", "description", "callsign", "station"};

/// What lists call by different names.
constexpr std::pair<QLatin1String, QLatin1String> SameMembers[] = {
    {QLatin1String("bandwidth"), QLatin1String("bandwidthsel")},
    {QLatin1String("level"), QLatin1String("threshold")},
};

QLatin1String otherNameOf(const QString& key) {
    for (const auto& [one, other] : SameMembers) {
        if (key == one || key == other)
            return key == one ? other : one;
    }
    return QLatin1String();
}

} // namespace

void JsonEntry::Begin(qint64 line) {
    m_line = line;
    ++m_number;
    m_isLikeLast = true;
    m_count = 0;
    m_bytes = 0;
    m_next = 0;
}

void JsonEntry::countBytes(std::size_t bytes) {
    m_bytes += bytes;
    if (m_bytes > LargestEntry)
        Fail(QCoreApplication::translate("Readers", "is larger than 16 MiB"));
}

void JsonEntry::Add(std::string_view key) {
    countBytes(key.size() + 1);
    if (m_count == MostMembers)
        Fail(QCoreApplication::translate("Readers", "has more than %1 members").arg(MostMembers));
    if (m_count == m_members.size())
        m_members.emplace_back();
    Member& member = m_members[m_count];
    if (!m_isLikeLast || member.key != key) {
        m_isLikeLast = false;
        const auto added = m_members.begin() + static_cast<std::ptrdiff_t>(m_count);
        member.name = TextOf(key);
        if (std::any_of(m_members.begin(), added, [key](const Member& other) { return other.key == key; }))
            Fail(member.name, QT_TRANSLATE_NOOP("Readers", "is there twice"));
        member.key = key;
    }
    member.kind = Kind::Null;
    member.numbers.clear();
    member.isAskedFor = false;
    ++m_count;
}

void JsonEntry::Set(Scalar kind, std::string_view text) {
    countBytes(text.size() + 1);
    last().kind = static_cast<Kind>(kind);
    last().text = text;
}

void JsonEntry::AddNumber(Scalar kind, std::string_view text) {
    countBytes(sizeof(double));
    const std::optional<double> number = REPORTGENERATOR::ParseNumber(text);
    if (kind == Scalar::Number && number)
        last().numbers.push_back(*number);
    else
        last().kind = Kind::Unknown;
}

const JsonEntry::Member* JsonEntry::exactly(const QString& key) const {
    for (std::size_t i = 0; i < m_count; ++i, ++m_next) {
        if (m_next >= m_count)
            m_next = 0;
        if (const Member& member = m_members[m_next]; member.name == key) {
            ++m_next; // where the next one that is asked for stands
            member.isAskedFor = true;
            return member.kind == Kind::Null ? nullptr : &member;
        }
    }
    return nullptr;
}

const JsonEntry::Member* JsonEntry::find(const QString& key) const {
    if (const Member* const member = exactly(key))
        return member;
    const QLatin1String other = otherNameOf(key);
    return other.isEmpty() ? nullptr : exactly(other);
}

bool JsonEntry::Has(const QString& key) const {
    return std::any_of(m_members.begin(), m_members.begin() + static_cast<std::ptrdiff_t>(m_count),
                       [&](const Member& member) { return member.name == key && member.kind != Kind::Null; });
}

void JsonEntry::Fail(const QString& reason) const {
    throw RGException(REPORTGENERATOR::ErrorText(
        m_fileName, m_line, QCoreApplication::translate("Readers", "entry %1 %2").arg(m_number).arg(reason)));
}

void JsonEntry::Fail(const QString& key, const char* reason) const {
    throw RGException(
        REPORTGENERATOR::ErrorText(m_fileName, m_line,
                                   QCoreApplication::translate("Readers", "entry %1: \"%2\" %3")
                                       .arg(m_number)
                                       .arg(key, QCoreApplication::translate("Readers", reason))));
}

void JsonEntry::Take(const QString& key, QString& content) const {
    const Member* const member = find(key);
    if (!member)
        return;
    if (member->kind != Kind::Text)
        Fail(key, QT_TRANSLATE_NOOP("Readers", "is no text"));
    content = m_texts.Get(member->text);
}

void JsonEntry::Take(const QString& key, bool& content) const {
    const Member* const member = find(key);
    if (!member)
        return;
    if (member->kind != Kind::True && member->kind != Kind::False)
        Fail(key, QT_TRANSLATE_NOOP("Readers", "is neither true nor false"));
    content = member->kind == Kind::True;
}

double JsonEntry::numberOf(const Member& member) const {
    // What is a number here may be a choice, which is a text, where it has its other name.
    const bool isNumber =
        member.kind == Kind::Number || (member.kind == Kind::Text && !otherNameOf(member.name).isEmpty());
    const std::optional<double> number = isNumber ? REPORTGENERATOR::ParseNumber(member.text) : std::nullopt;
    if (!number)
        Fail(member.name, QT_TRANSLATE_NOOP("Readers", "is no number"));
    return *number;
}

void JsonEntry::Take(const QString& key, double& content) const {
    if (const Member* const member = find(key))
        content = numberOf(*member);
}

void JsonEntry::Take(const QString& key, std::vector<double>& content) const {
    const Member* const member = find(key);
    if (!member)
        return;
    if (member->kind != Kind::Numbers)
        Fail(key, QT_TRANSLATE_NOOP("Readers", "is no array of numbers"));
    content = member->numbers;
}

void JsonEntry::Take(const QString& key, qint64& content, qint64 least, qint64 greatest) const {
    const Member* const member = find(key);
    if (!member)
        return;
    qint64 whole = 0;
    const char* const end = member->text.data() + member->text.size();
    const auto read = std::from_chars(member->text.data(), end, whole);
    if (member->kind != Kind::Number || read.ec != std::errc() || read.ptr != end) {
        const double number = numberOf(*member);
        constexpr double Limit = 0x1p63; // the first double beyond the type
        if (std::floor(number) != number || number < -Limit || number >= Limit)
            Fail(key, QT_TRANSLATE_NOOP("Readers", "is no whole number"));
        whole = static_cast<qint64>(number);
    }
    if (whole < least || whole > greatest)
        Fail(key, QT_TRANSLATE_NOOP("Readers", "is out of range"));
    content = whole;
}

void JsonEntry::TakeTextOrNumber(const QString& key, QString& content) const {
    const Member* const member = find(key);
    if (!member)
        return;
    if (member->kind == Kind::Number)
        content = Quor::ToShortest(numberOf(*member));
    else if (member->kind == Kind::Text)
        content = m_texts.Get(member->text);
    else
        Fail(key, QT_TRANSLATE_NOOP("Readers", "is neither text nor number"));
}

void JsonEntry::VisitRest(const std::function<void(std::string_view, std::string_view)>& take) const {
    constexpr const char* Contents[] = {nullptr, nullptr,           "true",          "",
                                        "",      "several numbers", "several things"};
    for (std::size_t i = 0; i < m_count; ++i) {
        const Member& member = m_members[i];
        if (member.isAskedFor)
            continue;
        const char* const content = Contents[static_cast<std::size_t>(member.kind)];
        const std::string_view text = content ? std::string_view(content) : std::string_view(member.text);
        const bool saysNothing =
            text.empty() || text == "0" || (member.kind == Kind::Numbers && member.numbers.empty());
        if (!saysNothing)
            take(member.key, text);
    }
}

namespace {

/// What `take` ends the reading with.
struct Enough {};

/// Makes entries of what stands in a JSON text.
class EntryEvents : public JsonEvents {
public:
    EntryEvents(Reading& reading, const std::function<bool(const JsonEntry&)>& take)
        : m_reading(reading), m_entry(reading.FileName()), m_take(take) {}

    void Begin(bool isObject) override {
        if (m_depth == 0 && !m_hasBegun)
            m_entryDepth = isObject ? 1 : 2;
        m_hasBegun = true;
        ++m_depth;
        if (m_depth < m_entryDepth)
            return;
        if (m_depth == m_entryDepth && !isObject)
            failAsNone();
        if (m_depth == m_entryDepth)
            m_entry.Begin(Line());
        else if (m_depth == m_entryDepth + 1 && !isObject)
            m_entry.BeginNumbers();
        else
            m_entry.SetUnknown();
    }
    void End(bool) override {
        if (m_depth-- == m_entryDepth)
            handOn();
    }
    void Key(std::string_view key) override {
        if (m_depth == m_entryDepth)
            m_entry.Add(key);
    }
    void Take(Scalar kind, std::string_view text) override {
        if (m_depth < m_entryDepth)
            failAsNone();
        if (m_depth == m_entryDepth)
            m_entry.Set(kind, text);
        else if (m_depth == m_entryDepth + 1)
            m_entry.AddNumber(kind, text);
    }
    bool TakesMoreTexts() const override { return m_entryDepth == 1; }

    /// Throws when the frequencies of the file can be no hertz.
    void CheckFrequencies() const {
        if (m_brokenLine > 0 && !m_anyLarge)
            m_reading.Fail(m_brokenLine,
                           QCoreApplication::translate(
                               "Readers", "the frequencies are no hertz: all are below 30000, some have "
                                          "decimals, and the member \"%1\" is of another program")
                               .arg(m_foreign));
    }

private:
    [[noreturn]] void failAsNone() const {
        m_reading.Fail(Line(), m_depth == 0
                                   ? QCoreApplication::translate("Readers", "is no JSON array of entries")
                                   : QCoreApplication::translate("Readers", "an entry is no JSON object"));
    }
    void handOn() {
        static const QString frequency = QStringLiteral("frequency");
        if (!m_entry.Has(frequency))
            m_entry.Fail(frequency, QT_TRANSLATE_NOOP("Readers", "is missing"));
        double hertz = 0;
        m_entry.Take(frequency, hertz);
        m_reading.Problems().CheckFrequency(m_entry.Line(), hertz);
        note(hertz);
        if (!m_take(m_entry))
            throw Enough();
    }

    void note(double hertz) {
        m_anyLarge = m_anyLarge || std::abs(hertz) >= LeastLarge;
        if (m_anyLarge || m_brokenLine > 0 || hertz == std::trunc(hertz))
            return;
        for (const std::string_view name : ForeignMembers) {
            m_foreign = TextOf(name);
            if (m_entry.Has(m_foreign)) {
                m_brokenLine = m_entry.Line();
                return;
            }
        }
    }

    static constexpr double LeastLarge = 30'000; // Hz; below it nobody listens, and in MHz it is all there is

    Reading& m_reading;
    JsonEntry m_entry;
    const std::function<bool(const JsonEntry&)>& m_take;
    int m_depth = 0;
    int m_entryDepth = 1; ///< of the entries' objects: 1 for lines, 2 for an array
    bool m_hasBegun = false;
    bool m_anyLarge = false; ///< of the frequencies
    qint64 m_brokenLine = 0; ///< of the first one with decimals in an entry with a member of other programs
    QString m_foreign;       ///< that member
};

} // namespace

void ReadJsonEntries(QIODevice& device, Reading& reading, const std::function<bool(const JsonEntry&)>& take) {
    EntryEvents events(reading, take);
    try {
        ReadJsonEvents(device, reading, events);
        events.CheckFrequencies();
    } catch (const Enough&) {
    }
}

Account ReadJsonEntries(QIODevice& device, const QString& name, const ReadOptions& options,
                        const std::function<bool(const JsonEntry&)>& take) {
    const TakeEntry none;
    Reading reading(name, options, none);
    ReadJsonEntries(device, reading, [&](const JsonEntry& entry) {
        const bool goesOn = take(entry);
        entry.VisitRest([&](std::string_view key, std::string_view) { reading.GetAccount().Count(key); });
        reading.CountEntry();
        return goesOn;
    });
    return reading.GetAccount();
}

} // namespace Interchange
