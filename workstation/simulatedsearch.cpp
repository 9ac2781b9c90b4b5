#include "workstation/simulatedsearch.h"

#include "host/freqlist/undorecords.h"
#include "host/valuetree/tree.h"
#include "workstation/actiontips.h"

#include <QAction>
#include <QDateTime>
#include <QMenu>

#include <cmath>

namespace {

constexpr qint64 Second = 1000000; // µs
constexpr qint64 StepTime = Second / 4;
constexpr size_t EmitterCount = 70;
/// How long classifier and direction finder take.
constexpr qint64 ClassifierTime = 2 * Second;
constexpr qint64 DirectionTime = 4 * Second;

/// What is on air in a band: how it is made, and how the classifier calls it.
struct System {
    double bandwidth; ///< Hz
    const char* modulation;
    const char* transmission;
    double baudrate;
    double shift;
    double blocklength; ///< s
    double cycletime;   ///< s; the tone count in VHF/UHF
    const char* channels;
    const char* decoder;
    const char* primMod;
};

constexpr System HFSystems[] = {
    {2700, "USB", "Voice", 0, 0, 0, 0, "1", "", ""},
    {500, "FSK", "Baudot", 50, 450, 0, 0, "1", "Baudot", ""},
    {500, "FSK", "SITOR-A", 100, 170, 0.21, 0.45, "1", "SITOR", ""},
    {2400, "8PSK", "STANAG 4285", 2400, 0, 0.1067, 0, "1", "STANAG 4285", ""},
    {2800, "MFSK", "ALE 2G", 125, 0, 0.392, 0, "8", "ALE", ""},
    {150, "CW", "Morse", 20, 0, 0, 0, "1", "Morse", ""},
    {9000, "AM", "Broadcast", 0, 0, 0, 0, "1", "", ""},
};

constexpr System VUHFSystems[] = {
    {12500, "FM", "Analog Voice", 0, 0, 0, 0, "", "", "F3E"},
    {25000, "AM", "Air Traffic", 0, 0, 0, 0, "", "", "A3E"},
    {25000, "PI/4-DQPSK", "TETRA", 18000, 0, 0, 4, "", "", "PSK"},
    {12500, "4FSK", "DMR", 4800, 1944, 0, 4, "", "", "FSK"},
    {12500, "FFSK", "MPT 1327", 1200, 600, 0, 2, "", "", "FSK"},
    {12500, "FM", "Selcall", 0, 0, 0, 5, "", "", "F2D"},
    {6250, "2FSK", "POCSAG", 1200, 9000, 0, 0, "", "", "FSK"},
};

std::span<const System> systems(ReceiverKind kind) {
    if (kind == ReceiverKind::HF)
        return HFSystems;
    return VUHFSystems;
}

std::string number(double value, int decimals) {
    return QString::number(value, 'f', decimals).toStdString();
}

template <typename Record>
ValueList<Record>& listAt(const char* path) {
    Tree::Instance()->MakeNode(QStringLiteral("/Search"));
    return *GetOrCreateValue<ValueList<Record>>(QString::fromLatin1(path));
}

qint64 now() {
    return QDateTime::currentMSecsSinceEpoch() * 1000;
}

} // namespace

SimulatedSearch::SimulatedSearch(ReceiverKind kind, unsigned seed)
    : m_kind(kind),
      m_random(seed),
      m_detections(listAt<DetectionConventional>(DetectionsPath)),
      m_classified(listAt<ExtendedDetectionConventional>(ClassifiedPath)) {
    GetOrCreateValue<ValueList<double>>(QString::fromLatin1(MarkedPath));
    m_detections.Clear();
    m_classified.Clear();
    m_timer.setInterval(static_cast<int>(StepTime / 1000));
    connect(&m_timer, &QTimer::timeout, this, [this] { Step(now()); });
    makeEmitters();
}

double SimulatedSearch::random(double from, double to) {
    // The distributions of the library differ between its makers; this does not.
    return from + (to - from) * static_cast<double>(m_random()) / 4294967296.0;
}

void SimulatedSearch::makeEmitters() {
    const bool isHF = m_kind == ReceiverKind::HF;
    const double lowest = isHF ? 2e6 : 66e6;
    const double highest = isHF ? 29e6 : 470e6;
    const double raster = isHF ? 500 : 12500;
    const auto known = systems(m_kind);
    for (size_t i = 0; i < EmitterCount; ++i) {
        Emitter emitter;
        emitter.system = static_cast<size_t>(random(0, static_cast<double>(known.size())));
        emitter.frequency = std::round(lowest * std::pow(highest / lowest, random(0, 1)) / raster) * raster;
        emitter.bandwidth = known[emitter.system].bandwidth;
        emitter.azimuth = random(0, 360);
        emitter.longitude = random(-10, 40);
        emitter.latitude = random(36, 68);
        emitter.level = static_cast<short>(random(5, 75));
        m_emitters.push_back(emitter);
    }
}

void SimulatedSearch::SetRunning(bool running) {
    if (running == IsRunning())
        return;
    if (running) {
        m_timer.start();
    } else {
        m_timer.stop();
        for (Active& active : m_active)
            active.end = 0;
        Step(now());
        for (Emitter& emitter : m_emitters)
            emitter.onAir = false;
    }
    emit RunningChanged(running);
}

void SimulatedSearch::AddTo(QMenu& menu) {
    QAction* action = menu.addAction(tr("&Simulated search"));
    SetTips(*action, tr("Start or stop a search without a radio"));
    action->setCheckable(true);
    action->setObjectName(QStringLiteral("simulated-search"));
    action->setShortcut(Qt::Key_F5);
    connect(action, &QAction::triggered, this, &SimulatedSearch::SetRunning);
    connect(this, &SimulatedSearch::RunningChanged, action, &QAction::setChecked);
}

void SimulatedSearch::Simulate(qint64 span, qint64 end) {
    for (qint64 time = end - span; time <= end; time += StepTime)
        Step(time);
}

void SimulatedSearch::Step(qint64 time) {
    m_lastStep = std::max(time, m_lastStep);
    if (m_classified.Size() >= MaxRecords)
        dropOldest();
    std::erase_if(m_active, [this](Active& active) { return !follow(active, m_lastStep); });
    begin(m_lastStep);
    m_detections.HasChanged(TChangeCode::ValueChanged);
    m_classified.HasChanged(TChangeCode::ValueChanged);
}

/// Some of those that are silent come on air.
void SimulatedSearch::begin(qint64 time) {
    std::list<DetectionConventional> records;
    std::list<ExtendedDetectionConventional> classified;
    const size_t activeBefore = m_active.size();
    noteSource(tr("simulated search"));
    for (size_t i = 0; i < m_emitters.size(); ++i) {
        Emitter& emitter = m_emitters[i];
        if (emitter.onAir || random(0, 1) > 0.008)
            continue;
        emitter.onAir = true;
        ExtendedDetectionConventional record;
        record.SetID(++m_lastId);
        record.SetFrequency(emitter.frequency + std::round(random(-0.05, 0.05) * emitter.bandwidth));
        record.SetBandwidth(std::round(emitter.bandwidth * random(0.8, 1.2)));
        record.SetLevel(emitter.level);
        record.SetStartTime(static_cast<double>(time));
        record.SetStopTime(static_cast<double>(time));
        record.SetActive(true);
        record.Result().azimuth = record.Result().dfQuality = "1000";
        record.Result().dfLongitude = record.Result().dfLatitude = "-1000";
        const auto duration = static_cast<qint64>(random(1, 40) * static_cast<double>(Second));
        m_active.push_back({i, m_detections.Size() + records.size(), m_classified.Size() + records.size(),
                            nullptr, nullptr, time, time + duration});
        records.push_back(record);
        classified.push_back(std::move(record));
    }
    const auto count = static_cast<std::ptrdiff_t>(records.size());
    m_detections.Append(std::move(records));
    m_classified.Append(std::move(classified));
    auto record = std::prev(m_detections.Elements().end(), count);
    auto extended = std::prev(m_classified.Elements().end(), count);
    for (size_t i = activeBefore; i < m_active.size(); ++i) {
        m_active[i].record = &*record++;
        m_active[i].classified = &*extended++;
    }
}

template <typename Change>
void SimulatedSearch::edit(const Active& active, Change change) {
    m_detections.Edit(active.place, *active.record, change);
    m_classified.Edit(active.classifiedPlace, *active.classified, change);
}

bool SimulatedSearch::follow(Active& active, qint64 time) {
    Emitter& emitter = m_emitters[active.emitter];
    const auto fading = static_cast<short>(std::round(random(-1.5, 1.5)));
    const bool ends = time >= active.end;
    edit(active, [&](DetectionConventional& record) {
        record.SetLevel(static_cast<short>(emitter.level + fading));
        record.SetStopTime(static_cast<double>(time));
        record.SetActive(!ends);
    });
    if (active.results == 0 && time >= active.start + ClassifierTime) {
        classify(active);
        ++active.results;
    }
    if (active.results == 1 && time >= active.start + DirectionTime) {
        locate(active);
        ++active.results;
    }
    if (!ends)
        return true;
    if (active.results < 2) {
        m_classified.Edit(active.classifiedPlace, *active.classified,
                          [](ExtendedDetectionConventional& record) {
                              record.Result().azimuth = record.Result().dfQuality = "1002";
                          });
    }
    emitter.onAir = false;
    return false;
}

void SimulatedSearch::classify(const Active& active) {
    const Emitter& emitter = m_emitters[active.emitter];
    const System& system = systems(m_kind)[emitter.system];
    const auto confidence = static_cast<short>(random(40, 100));
    m_classified.Edit(active.classifiedPlace, *active.classified, [&](ExtendedDetectionConventional& record) {
        ClassifierResult& result = record.Result();
        result.confidence = confidence;
        result.frequency = emitter.frequency;
        result.bandwidth = emitter.bandwidth;
        result.demodulator = system.modulation;
        result.transmissionType = system.transmission;
        result.baudrate = system.baudrate;
        result.shift = system.shift;
        result.blocklength = system.blocklength;
        result.cycletime = system.cycletime;
        result.channels = system.channels;
        result.decoder = system.decoder;
        result.primMod = system.primMod;
    });
}

void SimulatedSearch::locate(const Active& active) {
    const Emitter& emitter = m_emitters[active.emitter];
    const double luck = random(0, 1);
    const double azimuth = std::fmod(emitter.azimuth + random(-2, 2) + 360, 360);
    const double quality = std::round(random(30, 100));
    m_classified.Edit(active.classifiedPlace, *active.classified, [&](ExtendedDetectionConventional& record) {
        ClassifierResult& result = record.Result();
        if (luck < 0.1) {
            result.azimuth = result.dfQuality = luck < 0.05 ? "1001" : "1002";
            return;
        }
        result.azimuth = number(azimuth, 1);
        result.dfQuality = number(quality, 0);
        if (luck < 0.3)
            return; // a bearing alone gives no position
        result.dfLongitude = number(emitter.longitude, 5);
        result.dfLatitude = number(emitter.latitude, 5);
        if (luck > 0.95) { // two places are possible
            result.dfLongitude += ',' + number(emitter.longitude + 1.5, 5);
            result.dfLatitude += ',' + number(emitter.latitude - 0.7, 5);
        }
    });
}

/// Half of the records go, and with them those that have been active all the while. Of the plain ones go all
/// up to the last of these, whoever made them.
void SimulatedSearch::dropOldest() {
    constexpr quint64 Dropped = MaxRecords / 2;
    std::list<DetectionConventional>& detections = m_detections.GetList();
    std::list<ExtendedDetectionConventional>& classified = m_classified.GetList();
    auto plain = detections.begin();
    quint64 droppedPlain = 0;
    const auto end = std::next(classified.begin(), static_cast<std::ptrdiff_t>(Dropped));
    for (auto record = classified.begin(); record != end; ++record) {
        bool isSame = false;
        for (; !isSame && plain != detections.end(); ++plain, ++droppedPlain)
            isSame = plain->GetID() == record->GetID();
    }
    std::erase_if(m_active, [&](Active& active) {
        if (active.classifiedPlace < Dropped) {
            m_emitters[active.emitter].onAir = false;
            return true;
        }
        active.classifiedPlace -= Dropped;
        active.place -= droppedPlain;
        return false;
    });
    detections.erase(detections.begin(), plain);
    classified.erase(classified.begin(), end);
}

void SimulatedSearch::Add(std::list<DetectionConventional>&& found, const QString& source) {
    noteSource(source);
    for (DetectionConventional& record : found)
        record.SetID(++m_lastId);
    UndoRecords<DetectionConventional>::Append(m_listIds.first, m_detections, std::move(found));
}

/// The older half of the plain records goes, which the classified ones stay without.
void SimulatedSearch::dropOldestPlain() {
    constexpr quint64 Dropped = MaxRecords / 2;
    std::erase_if(m_active, [&](Active& active) {
        if (active.place >= Dropped) {
            active.place -= Dropped;
            return false;
        }
        m_classified.Edit(active.classifiedPlace, *active.classified,
                          [](ExtendedDetectionConventional& record) { record.SetActive(false); });
        m_emitters[active.emitter].onAir = false;
        return true;
    });
    std::list<DetectionConventional>& detections = m_detections.GetList();
    detections.erase(detections.begin(), std::next(detections.begin(), Dropped));
}

unsigned SimulatedSearch::Begin(DetectionConventional record, const QString& source) {
    if (m_detections.Size() >= MaxRecords)
        dropOldestPlain();
    noteSource(source);
    record.SetID(++m_lastId);
    m_detections.PushBack(record);
    return m_lastId;
}

bool SimulatedSearch::Amend(unsigned id, const std::function<void(DetectionConventional&)>& change) {
    const std::list<DetectionConventional>& all = m_detections.Elements();
    quint64 place = all.size();
    for (auto record = all.rbegin(); record != all.rend(); ++record) { // it is among the newest
        --place;
        if (record->GetID() != id)
            continue;
        m_detections.Edit(place, *record, change);
        m_detections.HasChanged(TChangeCode::ValueChanged);
        return true;
    }
    return false;
}

/// The detections that come next are of that source.
void SimulatedSearch::noteSource(const QString& source) {
    if (m_sources.empty() || std::prev(m_sources.end())->second != source)
        m_sources[m_lastId + 1] = source;
}

QString SimulatedSearch::SourceOf(unsigned id) const {
    const auto next = m_sources.upper_bound(id);
    return next == m_sources.begin() || id > m_lastId ? QString() : std::prev(next)->second;
}

void SimulatedSearch::Clear() {
    const OperatorAction action(tr("Clear"));
    m_active.clear();
    for (Emitter& emitter : m_emitters)
        emitter.onAir = false;
    UndoRecords<DetectionConventional>::Clear(m_listIds.first, m_detections);
    UndoRecords<ExtendedDetectionConventional>::Clear(m_listIds.second, m_classified);
}
