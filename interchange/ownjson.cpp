#include "host/base/numbers.h"
#include "interchange/formatlist.h"
#include "interchange/jsonentry.h"
#include "interchange/reading.h"
#include "interchange/recordmembers.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>

#include <optional>

namespace Interchange {

namespace {

// JSON of our own, as records: what a list's values say beyond that is counted. The command line reads and
// writes the values themselves.

bool knowsArray(const QString& head) {
    const QString text = head.left(4096).trimmed();
    if (!text.startsWith(u'['))
        return false;
    const QString first = text.mid(1).trimmed();
    return first.startsWith(u'{') || first.startsWith(u']');
}

/// A line is an object that has a frequency.
bool knowsLines(const QString& head) {
    const QString text = head.trimmed();
    if (!text.startsWith(u'{'))
        return false;
    const QJsonDocument line = QJsonDocument::fromJson(text.section(u'\n', 0, 0).toUtf8());
    return line.object().contains(QLatin1String("frequency"));
}

/// Sets a member of a record from that of the same name.
void takeMember(const RecordMember& member, const JsonEntry& entry) {
    using namespace REPORTGENERATOR;
    if (auto* const number = std::get_if<double*>(&member.at)) {
        entry.Take(member.name, **number);
    } else if (auto* const integer = std::get_if<int*>(&member.at)) {
        qint64 whole = **integer;
        entry.Take(member.name, whole, std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
        **integer = static_cast<int>(whole);
    } else if (auto* const text = std::get_if<QString*>(&member.at)) {
        if (member.form == RecordMember::Form::NumberOfText)
            entry.TakeTextOrNumber(member.name, **text);
        else
            entry.Take(member.name, **text);
    } else if (auto* const time = std::get_if<Timestamp*>(&member.at)) {
        if (member.form == RecordMember::Form::MicrosecondsOfTime) {
            entry.Take(member.name, (*time)->usec, std::numeric_limits<qint64>::min(),
                       std::numeric_limits<qint64>::max());
            **time = Timestamp((*time)->usec);
            return;
        }
        QString written;
        entry.Take(member.name, written);
        const std::optional<Timestamp> read = ParseTime(written.toStdString());
        if (!read && !written.isEmpty())
            entry.Fail(member.name, QT_TRANSLATE_NOOP("Readers", "is no time"));
        **time = read.value_or(Timestamp());
    }
}

void read(QIODevice& device, Reading& reading) {
    FreqStoreXml::FrequencyStoreEntry record;
    const RecordMembers members(record);
    ReadJsonEntries(device, reading, [&](const JsonEntry& entry) {
        record.Reset();
        for (const RecordMember& member : members.All())
            takeMember(member, entry);
        entry.VisitRest([&](std::string_view key, std::string_view content) { reading.Extra(key, content); });
        reading.Take(record);
        return true;
    });
}

class RecordEncoder : public Encoder {
public:
    explicit RecordEncoder(const JsonFrame& frame) : m_frame(frame) {}

    void Begin(std::string& out) override { out += m_frame.begin; }
    void Append(std::string& out, const FreqStoreXml::FrequencyStoreEntry& entry, Account& lost) override {
        append(out, entry, lost);
    }
    void Append(std::string& out, const FreqStoreXml::DetectionResult& result, Account& lost) override {
        append(out, result, lost);
    }
    void End(std::string& out) override { out += m_frame.end; }
    bool HoldsRecords() const override { return true; }

private:
    template <typename Record>
    void append(std::string& out, const Record& record, Account& lost) {
        if (!m_members || m_members->Record() != &record)
            m_members.emplace(const_cast<Record&>(record)); // which is only read
        out += lost.entries++ == 0 ? m_frame.first : m_frame.next;
        out += '{';
        m_members->AppendJson(out);
        out += '}';
        out += m_frame.behind;
    }

    const JsonFrame& m_frame;
    std::optional<RecordMembers> m_members;
};

template <const JsonFrame& Of>
std::unique_ptr<Encoder> makeEncoder() {
    return std::make_unique<RecordEncoder>(Of);
}

} // namespace

const Format OwnJson{"json",
                     "JSON",
                     ".json",
                     "nothing that the list's own XML has; the command line writes all",
                     knowsArray,
                     read,
                     makeEncoder<JsonArray>};

const Format OwnJsonLines{"jsonl",
                          QT_TRANSLATE_NOOP("Format", "JSON lines"),
                          ".jsonl .ndjson",
                          "nothing that the list's own XML has; the command line writes all",
                          knowsLines,
                          read,
                          makeEncoder<JsonLines>};

} // namespace Interchange
