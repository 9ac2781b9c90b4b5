#include "cli/jsonfile.h"
#include "cli/list.h"
#include "controls/frequencystore/detections/searchmcrecords.h"
#include "host/base/datetime.h"
#include "host/base/numbers.h"
#include "host/base/problems.h"
#include "host/report/rgexception.h"
#include "link/recordform.h"

namespace {

using Interchange::JsonEntry;
using Extended = ExtendedDetectionConventional;
using SearchMC::Variant;
using Fields = std::vector<EntryField>;
using Plain = DetectionConventional;

/// One member of a record: its key, how it is shown, and how it is taken from a JSON entry.
template <typename Record>
struct Member {
    const char* key;
    FieldType type;
    QString (*show)(const Record& record);
    void (*take)(Record& record, const JsonEntry& entry, const QString& key);
};

double numberOf(const JsonEntry& entry, const QString& key) {
    double number = 0;
    entry.Take(key, number);
    return number;
}

template <typename Whole>
Whole wholeOf(const JsonEntry& entry, const QString& key) {
    qint64 number = 0;
    entry.Take(key, number, std::numeric_limits<Whole>::min(), std::numeric_limits<Whole>::max());
    return static_cast<Whole>(number);
}

QString timeText(double microseconds) {
    return Quor::FromMicroseconds(static_cast<qint64>(microseconds)).toString(Qt::ISODate);
}

/// Microseconds; 0 for a time that there is not.
double timeOf(const JsonEntry& entry, const QString& key) {
    QString text;
    entry.Take(key, text);
    const QDateTime time = QDateTime::fromString(text, Qt::ISODateWithMs);
    if (!text.isEmpty() && !time.isValid())
        entry.Fail(key, "is no time");
    return text.isEmpty() ? 0 : static_cast<double>(time.toMSecsSinceEpoch()) * 1000;
}

constexpr Member<Plain> PlainMembers[] = {
    {"frequency", FieldType::Number, [](const Plain& r) { return Quor::ToShortest(r.GetFrequency()); },
     [](Plain& r, const JsonEntry& entry, const QString& key) { r.SetFrequency(numberOf(entry, key)); }},
    {"bandwidth", FieldType::Number, [](const Plain& r) { return Quor::ToShortest(r.GetBandwidth()); },
     [](Plain& r, const JsonEntry& entry, const QString& key) { r.SetBandwidth(numberOf(entry, key)); }},
    {"id", FieldType::Number, [](const Plain& r) { return QString::number(r.GetID()); },
     [](Plain& r, const JsonEntry& entry, const QString& key) { r.SetID(wholeOf<unsigned>(entry, key)); }},
    {"level", FieldType::Number, [](const Plain& r) { return QString::number(r.GetLevel()); },
     [](Plain& r, const JsonEntry& entry, const QString& key) { r.SetLevel(wholeOf<short>(entry, key)); }},
    {"starttime", FieldType::Text, [](const Plain& r) { return timeText(r.GetStartTime()); },
     [](Plain& r, const JsonEntry& entry, const QString& key) { r.SetStartTime(timeOf(entry, key)); }},
    {"stoptime", FieldType::Text,
     [](const Plain& r) { return r.GetActive() ? QString() : timeText(r.GetStopTime()); },
     [](Plain& r, const JsonEntry& entry, const QString& key) {
         r.SetStopTime(timeOf(entry, key));
         QString text;
         entry.Take(key, text);
         r.SetActive(text.isEmpty());
     }},
};

/// A member of the classifier's result that is a number.
template <double ClassifierResult::*Number>
constexpr Member<Extended> resultNumber(const char* key) {
    return {key, FieldType::Number, [](const Extended& r) { return Quor::ToShortest(r.Result().*Number); },
            [](Extended& r, const JsonEntry& entry, const QString& name) {
                r.Result().*Number = numberOf(entry, name);
            }};
}

template <std::string ClassifierResult::*Text>
constexpr Member<Extended> resultText(const char* key) {
    return {key, FieldType::Text, [](const Extended& r) { return QString::fromStdString(r.Result().*Text); },
            [](Extended& r, const JsonEntry& entry, const QString& name) {
                QString text;
                entry.Take(name, text);
                r.Result().*Text = text.toStdString();
            }};
}

/// A number that the record keeps as a text, with one for "none".
template <std::string ClassifierResult::*Text>
constexpr Member<Extended> bearing(const char* key) {
    return {key, FieldType::Number,
            [](const Extended& r) {
                const std::string& text = r.Result().*Text;
                return text == SearchMC::DFNoValue ? QString() : QString::fromStdString(text);
            },
            [](Extended& r, const JsonEntry& entry, const QString& name) {
                const QString text = Quor::ToShortest(numberOf(entry, name));
                r.Result().*Text = entry.Has(name) ? text.toStdString() : SearchMC::DFNoValue;
            }};
}

constexpr Member<Extended> ExtendedMembers[] = {
    {"confidence", FieldType::Number,
     [](const Extended& r) { return QString::number(r.Result().confidence); },
     [](Extended& r, const JsonEntry& entry, const QString& key) {
         r.Result().confidence = wholeOf<short>(entry, key);
     }},
    resultText<&ClassifierResult::demodulator>("modulation"),
    resultText<&ClassifierResult::transmissionType>("transmissionsystem"),
    resultNumber<&ClassifierResult::baudrate>("baudrate"),
    resultNumber<&ClassifierResult::shift>("shift"),
    resultText<&ClassifierResult::decoder>("decoder"),
    bearing<&ClassifierResult::azimuth>("azimuth"),
    bearing<&ClassifierResult::dfQuality>("dfquality"),
    bearing<&ClassifierResult::dfLongitude>("longitude"),
    bearing<&ClassifierResult::dfLatitude>("latitude"),
};

/// Adds the fields that the members have in each entry, still without contents.
template <typename Record, size_t Count>
void addFields(Fields& fields, const Member<Record> (&members)[Count]) {
    for (const Member<Record>& member : members)
        fields.push_back({QString::fromLatin1(member.key), QString(), member.type});
}

/// Fills the fields of these members; the result is the one behind them.
template <typename Record, size_t Count>
EntryField* fill(EntryField* field, const Record& record, const Member<Record> (&members)[Count]) {
    for (const Member<Record>& member : members)
        field++->text = member.show(record);
    return field;
}

/// The fields of a kind of records, of whose contents `fillAll` takes care.
template <typename Record>
Fields fieldsOfKind() {
    Fields fields;
    addFields(fields, PlainMembers);
    if constexpr (std::is_same_v<Record, Extended>)
        addFields(fields, ExtendedMembers);
    return fields;
}

template <typename Record>
void fillAll(Fields& fields, const Record& record) {
    [[maybe_unused]] EntryField* behind = fill<Plain>(fields.data(), record, PlainMembers);
    if constexpr (std::is_same_v<Record, Extended>)
        fill(behind, record, ExtendedMembers);
}

template <typename Record>
Fields fieldsOfRecord(const Record& record) {
    Fields fields = fieldsOfKind<Record>();
    fillAll(fields, record);
    return fields;
}

template <typename Record, size_t Count>
void takeMembers(Record& record, const JsonEntry& entry, const Member<Record> (&members)[Count]) {
    for (const Member<Record>& member : members)
        member.take(record, entry, QString::fromLatin1(member.key));
}

constexpr FileMark CsvMark[] = {{".csv", FileFormat::Csv}};
constexpr FileMark MarksWritten[] = {{".csv", FileFormat::Csv}, {".xml", FileFormat::StoreXml}};
constexpr FileMark ResultMarksWritten[] = {{".csv", FileFormat::Csv}, {".xml", FileFormat::DetectionXml}};

/// Detections of one kind; `Variants` tells, for extended ones, whose classifier made them.
template <typename Record, Variant... Variants>
class DetectionList final : public CliList {
public:
    ~DetectionList() override {
        LeaveToNextList([records = std::move(m_records.GetList())] {});
    }
    const FileNames& Names() const override {
        static constexpr FileNames names{.read = CsvMark,
                                         .written = isExtended ? std::span<const FileMark>(ResultMarksWritten)
                                                               : std::span<const FileMark>(MarksWritten),
                                         .withoutMark =
                                             isExtended ? FileFormat::DetectionXml : FileFormat::StoreXml};
        return names;
    }
    size_t Count() const override { return m_records.Size(); }
    ValueBase* Records() override { return &m_records; }
    Interchange::Content Content() const override {
        if constexpr (isExtended)
            return {.results = [this](const auto& visit) {
                for (const Record& record : m_records.Elements())
                    visit(SearchMC::ToResult(record, Variants...));
            }};
        else
            return {.entries = [this](const auto& visit) {
                for (const Record& record : m_records.Elements())
                    visit(SearchMC::ToEntry(record));
            }};
    }
    bool VisitEntries(const EntryVisitor& visit) const override {
        Fields fields = fieldsOfKind<Record>();
        for (const Record& record : m_records.Elements()) {
            fillAll(fields, record);
            if (!visit(fields))
                return false;
        }
        return true;
    }

protected:
    bool ReadFile(const QString& path) override {
        try {
            SearchMC::ReadFile(path, m_records.GetList());
            return true;
        } catch (const RGException& exception) {
            Problems::Report("detectionlist", Problem::FromText(exception.GetErrorText()));
            return false;
        }
    }
    bool WriteFile(const QString& path) override {
        std::vector<const Record*> records;
        for (const Record& record : m_records.Elements())
            records.push_back(&record);
        const bool csv = path.contains(QLatin1String(".csv"));
        try {
            SearchMC::WriteFile(path, csv, records, Variants...);
            return true;
        } catch (const RGException&) { // told
            return false;
        }
    }
    void BeginEntries() override { m_records.Clear(); }
    void EndEntries(bool isWhole) override {
        if (!isWhole)
            m_records.Clear();
    }
    void AddEntry(const JsonEntry& entry) override {
        Record& record = m_records.GetList().emplace_back();
        takeMembers<Plain>(record, entry, PlainMembers);
        if constexpr (isExtended)
            takeMembers(record, entry, ExtendedMembers);
    }

private:
    static constexpr bool isExtended = std::is_same_v<Record, Extended>;

    ValueList<Record> m_records;
};

} // namespace

Fields FieldsOfDetection(const EntryLayout& layout, QByteArrayView contents) {
    if (RecordForm<Plain>::IsLayoutOf(layout))
        return fieldsOfRecord(RecordForm<Plain>::Take(contents));
    if (RecordForm<Extended>::IsLayoutOf(layout))
        return fieldsOfRecord(RecordForm<Extended>::Take(contents));
    return {};
}

std::unique_ptr<CliList> MakeDetections() {
    return std::make_unique<DetectionList<DetectionConventional>>();
}

std::unique_ptr<CliList> MakeDetectionsHF() {
    return std::make_unique<DetectionList<Extended, Variant::HF>>();
}

std::unique_ptr<CliList> MakeDetectionsVUHF() {
    return std::make_unique<DetectionList<Extended, Variant::VUHF>>();
}
