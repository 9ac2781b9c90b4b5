#include "host/freqlist/recordbytes.h"

namespace RecordBytes {
namespace {

/// What every detection has.
struct Plain {
    double frequency;
    double bandwidth;
    double startTime;
    double stopTime;
    unsigned id;
    short level;
    bool active;
};

constexpr double ClassifierResult::*Numbers[] = {
    &ClassifierResult::frequency, &ClassifierResult::bandwidth,   &ClassifierResult::baudrate,
    &ClassifierResult::shift,     &ClassifierResult::blocklength, &ClassifierResult::cycletime};
constexpr std::string ClassifierResult::*Texts[] = {
    &ClassifierResult::demodulator, &ClassifierResult::transmissionType, &ClassifierResult::channels,
    &ClassifierResult::decoder,     &ClassifierResult::primMod,          &ClassifierResult::azimuth,
    &ClassifierResult::dfQuality,   &ClassifierResult::dfLongitude,      &ClassifierResult::dfLatitude};

} // namespace

void Put(UndoBytes& bytes, const DetectionConventional& record) {
    bytes.Put(Plain{record.DetectionConventional::GetFrequency(),
                    record.DetectionConventional::GetBandwidth(), record.GetStartTime(), record.GetStopTime(),
                    record.GetID(), record.GetLevel(), record.GetActive()});
}

void Take(UndoBytes::Reader& bytes, DetectionConventional& record) {
    const auto plain = bytes.Get<Plain>();
    record.SetFrequency(plain.frequency);
    record.SetBandwidth(plain.bandwidth);
    record.SetStartTime(plain.startTime);
    record.SetStopTime(plain.stopTime);
    record.SetID(plain.id);
    record.SetLevel(plain.level);
    record.SetActive(plain.active);
}

void Put(UndoBytes& bytes, const ExtendedDetectionConventional& record) {
    Put(bytes, static_cast<const DetectionConventional&>(record));
    const ClassifierResult& result = record.Result();
    bytes.Put(result.confidence);
    for (const auto number : Numbers)
        bytes.Put(result.*number);
    for (const auto text : Texts) {
        bytes.Put(static_cast<quint32>((result.*text).size()));
        bytes.Put((result.*text).data(), (result.*text).size());
    }
}

void Take(UndoBytes::Reader& bytes, ExtendedDetectionConventional& record) {
    Take(bytes, static_cast<DetectionConventional&>(record));
    ClassifierResult& result = record.Result();
    result.confidence = bytes.Get<short>();
    for (const auto number : Numbers)
        result.*number = bytes.Get<double>();
    for (const auto text : Texts) {
        const auto size = bytes.Get<quint32>();
        (result.*text).assign(bytes.Get(size), size);
    }
}

} // namespace RecordBytes
