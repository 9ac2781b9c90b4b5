#include "cli/list.h"
#include "controls/frequencystore/searchmcrecords.h"
#include "host/base/datetime.h"
#include "host/base/numbers.h"
#include "host/base/problems.h"
#include "host/report/rgexception.h"

namespace {

using Extended = ExtendedDetectionConventional;
using SearchMC::Variant;
using Fields = std::vector<EntryField>;

void addNumber(Fields& fields, const char* key, double number) {
    fields.push_back({QString::fromLatin1(key), Quor::ToShortest(number), true});
}

/// What the file does not hold is an empty text.
void addText(Fields& fields, const char* key, const std::string& text) {
    const bool isNone = text == SearchMC::DFNoValue;
    fields.push_back({QString::fromLatin1(key), isNone ? QString() : QString::fromStdString(text), false});
}

void addTime(Fields& fields, const char* key, double microseconds) {
    addText(fields, key,
            Quor::FromMicroseconds(static_cast<qint64>(microseconds)).toString(Qt::ISODate).toStdString());
}

void addMembers(Fields& fields, const DetectionConventional& record) {
    addNumber(fields, "frequency", record.GetFrequency());
    addNumber(fields, "bandwidth", record.GetBandwidth());
    addNumber(fields, "id", record.GetID());
    addNumber(fields, "level", record.GetLevel());
    addTime(fields, "starttime", record.GetStartTime());
    if (record.GetActive())
        addText(fields, "stoptime", {});
    else
        addTime(fields, "stoptime", record.GetStopTime());
}

void addMembers(Fields& fields, const Extended& record) {
    addMembers(fields, static_cast<const DetectionConventional&>(record));
    addNumber(fields, "confidence", record.GetClassifierConfidence());
    addText(fields, "modulation", record.GetClassifierDemodulator());
    addText(fields, "transmissionsystem", record.GetClassifierTransmissionType());
    addNumber(fields, "baudrate", record.GetClassifierBaudrate());
    addNumber(fields, "shift", record.GetClassifierShift());
    addText(fields, "decoder", record.GetClassifierDecoder());
    addText(fields, "azimuth", record.GetAzimuth());
    addText(fields, "dfquality", record.GetDFQuality());
    addText(fields, "longitude", record.GetDFLongitude());
    addText(fields, "latitude", record.GetDFLatitude());
}

/// Detections of one kind; `Variants` tells, for extended ones, whose classifier made them.
template <typename Record, Variant... Variants>
class DetectionList final : public CliList {
public:
    bool Read(const QString& path) override {
        try {
            SearchMC::ReadFile(path, m_records);
            return true;
        } catch (const RGException& exception) {
            Problems::Report("detectionlist", 82, Problem::FromText(exception.GetErrorText()));
            return false;
        }
    }
    bool Write(const QString& path) override {
        std::vector<const Record*> records;
        for (const Record& record : m_records)
            records.push_back(&record);
        const bool csv = path.contains(QLatin1String(".csv"));
        try {
            SearchMC::WriteFile(path, csv, records, Variants...);
            return true;
        } catch (const RGException&) { // told
            return false;
        }
    }
    size_t Count() const override { return m_records.size(); }
    void ForEachEntry(const EntryVisitor& visit) const override {
        for (const Record& record : m_records) {
            Fields fields;
            addMembers(fields, record);
            visit(fields);
        }
    }

private:
    std::list<Record> m_records;
};

} // namespace

std::unique_ptr<CliList> MakeDetections() {
    return std::make_unique<DetectionList<DetectionConventional>>();
}

std::unique_ptr<CliList> MakeDetectionsHF() {
    return std::make_unique<DetectionList<Extended, Variant::HF>>();
}

std::unique_ptr<CliList> MakeDetectionsVUHF() {
    return std::make_unique<DetectionList<Extended, Variant::VUHF>>();
}
