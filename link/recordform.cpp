#include "link/recordform.h"

#include <algorithm>

namespace {

using Plain = DetectionConventional;
using Extended = ExtendedDetectionConventional;

struct PlainMember {
    const char* name;
    double (*get)(const Plain&);
    void (*set)(Plain&, double);
};

/// A number of another type, which whoever sent it may have made too large.
template <typename Number>
Number narrowed(double number) {
    using Limits = std::numeric_limits<Number>;
    return static_cast<Number>(std::clamp<double>(number, Limits::min(), Limits::max()));
}

const PlainMember PlainMembers[] = {
    {"frequency", [](const Plain& r) { return r.GetFrequency(); },
     [](Plain& r, double n) { r.SetFrequency(n); }},
    {"bandwidth", [](const Plain& r) { return r.GetBandwidth(); },
     [](Plain& r, double n) { r.SetBandwidth(n); }},
    {"id", [](const Plain& r) { return double(r.GetID()); },
     [](Plain& r, double n) { r.SetID(narrowed<unsigned>(n)); }},
    {"level", [](const Plain& r) { return double(r.GetLevel()); },
     [](Plain& r, double n) { r.SetLevel(narrowed<short>(n)); }},
    {"starttime", [](const Plain& r) { return r.GetStartTime(); },
     [](Plain& r, double n) { r.SetStartTime(n); }},
    {"stoptime", [](const Plain& r) { return r.GetStopTime(); },
     [](Plain& r, double n) { r.SetStopTime(n); }},
    {"active", [](const Plain& r) { return r.GetActive() ? 1.0 : 0.0; },
     [](Plain& r, double n) { r.SetActive(n != 0); }},
};

struct ResultNumber {
    const char* name;
    double ClassifierResult::*number;
};
constexpr ResultNumber ResultNumbers[] = {
    {"classifierfrequency", &ClassifierResult::frequency},
    {"classifierbandwidth", &ClassifierResult::bandwidth},
    {"baudrate", &ClassifierResult::baudrate},
    {"shift", &ClassifierResult::shift},
    {"blocklength", &ClassifierResult::blocklength},
    {"cycletime", &ClassifierResult::cycletime},
};
constexpr char Confidence[] = "confidence";

struct ResultText {
    const char* name;
    std::string ClassifierResult::*text;
};
constexpr ResultText ResultTexts[] = {
    {"demodulator", &ClassifierResult::demodulator},
    {"transmissiontype", &ClassifierResult::transmissionType},
    {"channels", &ClassifierResult::channels},
    {"decoder", &ClassifierResult::decoder},
    {"primmod", &ClassifierResult::primMod},
    {"azimuth", &ClassifierResult::azimuth},
    {"dfquality", &ClassifierResult::dfQuality},
    {"dflongitude", &ClassifierResult::dfLongitude},
    {"dflatitude", &ClassifierResult::dfLatitude},
};

Shape::Field number(const char* name) {
    return Shape::Number<double>(Names::Intern(QString::fromLatin1(name)), 0.0, 0.0, 0.0);
}

template <typename Record>
constexpr bool IsExtended = std::is_same_v<Record, Extended>;

} // namespace

template <typename Record>
EntryLayout RecordForm<Record>::Layout() {
    std::vector<Shape::Field> fields;
    for (const PlainMember& member : PlainMembers)
        fields.push_back(number(member.name));
    if constexpr (IsExtended<Record>) {
        for (const ResultNumber& member : ResultNumbers)
            fields.push_back(number(member.name));
        fields.push_back(number(Confidence));
        for (const ResultText& member : ResultTexts)
            fields.push_back(Shape::Text(Names::Intern(QString::fromLatin1(member.name))));
    }
    return EntryLayout::Of(Names::Intern(QStringLiteral("Detection")), fields);
}

template <typename Record>
bool RecordForm<Record>::IsLayoutOf(const EntryLayout& layout) {
    static const EntryLayout own = Layout();
    return layout.HasFieldsOf(own);
}

template <typename Record>
void RecordForm<Record>::Put(Wire::Writer& writer, const Record& record) {
    for (const PlainMember& member : PlainMembers)
        writer.Number(member.get(record));
    if constexpr (IsExtended<Record>) {
        const ClassifierResult& result = record.Result();
        for (const ResultNumber& member : ResultNumbers)
            writer.Number(result.*member.number);
        writer.Number(result.confidence);
        for (const ResultText& member : ResultTexts)
            writer.Block(QByteArrayView(result.*member.text));
    }
}

template <typename Record>
Record RecordForm<Record>::Take(QByteArrayView contents) {
    Wire::Reader reader(contents);
    Record record;
    for (const PlainMember& member : PlainMembers)
        member.set(record, reader.Number());
    if constexpr (IsExtended<Record>) {
        ClassifierResult& result = record.Result();
        for (const ResultNumber& member : ResultNumbers)
            result.*member.number = reader.Number();
        result.confidence = narrowed<short>(reader.Number());
        for (const ResultText& member : ResultTexts) {
            const QByteArrayView text = reader.Block();
            (result.*member.text).assign(text.data(), static_cast<size_t>(text.size()));
        }
    }
    return record;
}

template struct RecordForm<DetectionConventional>;
template struct RecordForm<ExtendedDetectionConventional>;
