#include "workstation/simulatedclassifier.h"

#include "controls/frequencystore/results/searchmcdataresult.h"
#include "host/base/quoros.h"
#include "host/valuetree/node.h"

#include <QMenu>

#include <span>

namespace {

constexpr int StepMilliseconds = 40;
constexpr qint64 ClassifyMicroseconds = 1500000; ///< from the signal to the answer
constexpr int LockedPercent = 70;                ///< of the signals
constexpr int ConfidentPercent = 80;             ///< of the locked ones

/// A signal of the band, where it may be met, and what it is called.
struct Signal {
    double lowest;    ///< Hz
    double highest;   ///< Hz
    double raster;    ///< Hz
    double bandwidth; ///< Hz
    const char* name;
};

constexpr Signal HFSignals[] = {
    {2182e3, 2182e3, 1e3, 2700, "Maritime distress voice"},
    {3500e3, 3570e3, 100, 250, "Morse"},
    {7040e3, 7050e3, 50, 100, "PSK31"},
    {7074e3, 7076e3, 50, 50, "FT8"},
    {5000e3, 9000e3, 1e3, 3000, "STANAG 4285"},
    {4000e3, 18000e3, 1e3, 2700, "ALE 2G"},
    {5450e3, 13300e3, 1e3, 2700, "Aeronautical voice"},
    {9400e3, 9900e3, 5e3, 9000, "Broadcast"},
    {10100e3, 14100e3, 100, 450, "Baudot 50 Bd"},
    {8414500, 8414500, 100, 300, "Maritime DSC"},
};

constexpr Signal VUHFSignals[] = {
    {118e6, 136.95e6, 25e3 / 3, 8000, "Aeronautical voice"},
    {131.525e6, 131.825e6, 25e3, 8000, "ACARS"},
    {136.775e6, 136.975e6, 25e3, 16000, "VDL mode 2"},
    {145.2e6, 145.8e6, 12.5e3, 12000, "FM voice"},
    {156.525e6, 156.525e6, 25e3, 16000, "Maritime DSC"},
    {161.975e6, 162.025e6, 50e3, 16000, "AIS"},
    {390e6, 395e6, 25e3, 25000, "TETRA"},
    {402e6, 405.9e6, 10e3, 15000, "Radiosonde"},
    {439.8e6, 440e6, 12.5e3, 12500, "POCSAG 1200 Bd"},
    {446.006e6, 446.1e6, 12.5e3, 12500, "DMR"},
};

std::span<const Signal> signalsOf(ReceiverKind kind) {
    return kind == ReceiverKind::HF ? std::span<const Signal>(HFSignals)
                                    : std::span<const Signal>(VUHFSignals);
}

} // namespace

SimulatedClassifier::SimulatedClassifier(ReceiverKind kind, Node& results, unsigned seed)
    : m_kind(kind), m_results(results), m_random(seed) {
    m_timer.setInterval(StepMilliseconds);
    connect(&m_timer, &QTimer::timeout, this, [this] { Step(QuorOS::Create().CurrentTime()); });
}

void SimulatedClassifier::AddTo(QMenu& menu) {
    QAction* action = menu.addAction(tr("Simulated &classifier"));
    action->setCheckable(true);
    action->setObjectName(QStringLiteral("simulated-classifier"));
    action->setShortcut(Qt::Key_F9);
    connect(action, &QAction::triggered, this, &SimulatedClassifier::SetRunning);
    connect(this, &SimulatedClassifier::RunningChanged, action, &QAction::setChecked);
}

void SimulatedClassifier::SetRunning(bool running) {
    if (running == IsRunning())
        return;
    m_lastStep = 0;
    if (running)
        m_timer.start();
    else
        m_timer.stop();
    emit RunningChanged(running);
}

int SimulatedClassifier::random(int from, int to) {
    return from + static_cast<int>(m_random() % static_cast<unsigned>(to - from + 1));
}

void SimulatedClassifier::Step(qint64 now) {
    if (m_lastStep == 0)
        m_owed = 1; // the first result comes at once
    else
        m_owed += m_rate * static_cast<double>(now - m_lastStep) / 1e6;
    m_lastStep = now;
    while (!m_pending.empty() && m_pending.front().due <= now) {
        if (Node* entry = m_pending.front().entry.get())
            classify(*entry, now);
        m_pending.pop_front();
    }
    for (; m_owed >= 1 && m_results.ChildCount() < MaxResults; --m_owed)
        add(now);
    if (m_results.ChildCount() >= MaxResults)
        SetRunning(false);
}

void SimulatedClassifier::add(qint64 now) {
    const std::span<const Signal> all = signalsOf(m_kind);
    const Signal& met = all[static_cast<size_t>(random(0, static_cast<int>(all.size()) - 1))];
    const int places = static_cast<int>((met.highest - met.lowest) / met.raster);

    auto* node = new Node(&m_results, QStringLiteral("Entry"));
    m_results.AddItemUnique(node); // values are made only under a node that is in the tree
    SearchMCDataResult result(node, true, nullptr);
    result.SetFrequency(std::round(met.lowest + random(0, places) * met.raster));
    result.SetBandwidth(met.bandwidth);
    result.SetComment(QString::fromLatin1(met.name));
    result.SetLockTime(static_cast<quint64>(now));
    m_pending.push_back({node, now + ClassifyMicroseconds});
}

void SimulatedClassifier::classify(Node& entry, qint64 now) {
    if (random(1, 100) > LockedPercent)
        return;
    SearchMCDataResult result(&entry, false, nullptr);
    result.SetLocked(LockText::Locked());
    result.SetLockTime(static_cast<quint64>(now));
    if (random(1, 100) <= ConfidentPercent)
        result.SetConfidence(random(40, 99));
}
