#include "scan/scan.h"

namespace {

constexpr double LeastStep = 1; // Hz

/// In the order of ScanState.
constexpr const char* States[] = {
    QT_TRANSLATE_NOOP("Scan", "Not scanning"), QT_TRANSLATE_NOOP("Scan", "Scanning"),
    QT_TRANSLATE_NOOP("Scan", "Signal"),       QT_TRANSLATE_NOOP("Scan", "Held"),
    QT_TRANSLATE_NOOP("Scan", "Waiting"),
};

} // namespace

Scan::Scan(ScanReceiver& receiver, ScanClock& clock) : m_values(*this), m_scanner(receiver, clock, *this) {
    SetPlan(ScanSource::Range, [this](QString& reason) { return makeRange(reason); });
    tell();
}

Scan::~Scan() {
    m_scanner.Stop();
}

void Scan::SetPlan(ScanSource source, MakePlan make) {
    m_plans[static_cast<size_t>(source)] = std::move(make);
}

std::unique_ptr<ScanPlan> Scan::makeRange(QString& reason) const {
    const double from = m_values.GetNumber(ScanKeys::From);
    const double to = m_values.GetNumber(ScanKeys::To);
    if (from > to) {
        reason = tr("The range ends below its beginning.");
        return nullptr;
    }
    return MakeSpans({{from, to}}, QString(), reason);
}

std::unique_ptr<ScanPlan> Scan::MakeSpans(std::vector<SpanPlan::Span> spans, const QString& whyEmpty,
                                          QString& reason) const {
    const double step = m_values.GetNumber(ScanKeys::Step);
    if (step >= LeastStep)
        return std::make_unique<SpanPlan>(std::move(spans), step, whyEmpty);
    reason = tr("The step is too small.");
    return nullptr;
}

bool Scan::Start() {
    m_scanner.Stop();
    const ScanSource source = m_values.GetSource();
    const MakePlan& make = m_plans[static_cast<size_t>(source)];
    QString reason = tr("There is no such list here.");
    std::unique_ptr<ScanPlan> plan = make ? make(reason) : nullptr;
    if (!plan) {
        ScanEnded(reason);
        return false;
    }
    m_source = source;
    m_isRunning = true;
    m_values.Get<Value<QString>>(ScanKeys::Reason).SetValue(QString());
    m_scanner.SetLockedOut(m_values.Get<ValueList<double>>(ScanKeys::LockedOut).Elements());
    m_values.Get<Value<bool>>(ScanKeys::Running).SetValue(true, this);
    emit RunningChanged(true);
    m_scanner.Start(std::move(plan), m_values.GetSettings());
    return m_isRunning;
}

void Scan::Update(Observable* subject, TChangeCode code) {
    if (code != TChangeCode::ValueChanged)
        return;
    for (const auto* command : {&ScanKeys::Running, &ScanKeys::Hold, &ScanKeys::Skip, &ScanKeys::LockOut}) {
        if (static_cast<Observable*>(m_values.Find(*command)) == subject)
            return obey(*command);
    }
    auto& lockedOut = m_values.Get<ValueList<double>>(ScanKeys::LockedOut);
    if (static_cast<Observable*>(&lockedOut) == subject)
        m_scanner.SetLockedOut(lockedOut.Elements());
    else
        m_scanner.SetSettings(m_values.GetSettings());
}

void Scan::obey(Names::Id command) {
    auto& flag = m_values.Get<Value<bool>>(command);
    const bool isOn = flag.GetValue();
    if (command == Names::Id(ScanKeys::Running))
        return isOn ? void(Start()) : Stop();
    if (command == Names::Id(ScanKeys::Hold)) {
        m_scanner.Hold(isOn);
        flag.SetValue(m_scanner.IsHeld(), this); // without a scan nothing is
        return;
    }
    if (!isOn)
        return;
    flag.SetValue(false, this);
    if (command == Names::Id(ScanKeys::Skip))
        return m_scanner.Skip();
    m_scanner.LockOut();
    auto& lockedOut = m_values.Get<ValueList<double>>(ScanKeys::LockedOut);
    lockedOut.GetList() = m_scanner.GetLockedOut();
    lockedOut.HasChanged(TChangeCode::ValueChanged, this);
}

void Scan::tell() {
    const ScanStep& step = m_scanner.GetStep();
    const ScanCounts& counts = m_scanner.GetCounts();
    m_values.Get<Value<QString>>(ScanKeys::State)
        .SetValue(tr(States[static_cast<size_t>(m_scanner.GetState())]));
    m_values.Get<Value<double>>(ScanKeys::Frequency).SetValue(step.frequency);
    m_values.Get<Value<QString>>(ScanKeys::Comment).SetValue(step.comment);
    const std::pair<Names::Id, quint64> numbers[] = {{ScanKeys::Channel, static_cast<quint64>(step.channel)},
                                                     {ScanKeys::Steps, counts.steps},
                                                     {ScanKeys::Stops, counts.stops},
                                                     {ScanKeys::Passes, counts.passes},
                                                     {ScanKeys::Unreachable, counts.unreachable}};
    for (const auto& [key, number] : numbers)
        m_values.Get<Value<qint64>>(key).SetValue(static_cast<qint64>(number));
    emit Changed();
}

void Scan::ScanChanged() {
    m_values.Get<Value<QString>>(ScanKeys::Reason).SetValue(m_scanner.GetReason());
    m_values.Get<Value<bool>>(ScanKeys::Hold).SetValue(m_scanner.IsHeld(), this);
    tell();
}

void Scan::StopTold(const ScanStop& stop) {
    emit StopChanged(stop);
}

void Scan::ScanEnded(const QString& reason) {
    m_isRunning = false;
    m_values.Get<Value<bool>>(ScanKeys::Running).SetValue(false, this);
    m_values.Get<Value<bool>>(ScanKeys::Hold).SetValue(false, this);
    m_values.Get<Value<QString>>(ScanKeys::Reason).SetValue(reason);
    tell();
    emit RunningChanged(false);
    if (!reason.isEmpty())
        emit Ended(reason);
}
