#pragma once

#include "scan/scanvalues.h"

#include <QObject>

#include <array>

/// A scan as values of the tree: whoever writes its settings and commands under "/Scan" scans, and what it
/// does stands there, too. The receiver, the clock and the plans come from the program.
class Scan final : public QObject, private IObserver, private ScanWatcher {
    Q_OBJECT

public:
    /// Makes what is scanned, when a scan begins; null, with the reason, when that cannot be.
    using MakePlan = std::function<std::unique_ptr<ScanPlan>(QString& reason)>;

    /// Both are not owned and outlive the scan.
    Scan(ScanReceiver& receiver, ScanClock& clock);
    ~Scan() override;

    /// How a source is scanned; the range is the scan's own.
    void SetPlan(ScanSource source, MakePlan make);
    /// A plan of spans in the steps that the settings say; null, with the reason, when that is none.
    std::unique_ptr<ScanPlan> MakeSpans(std::vector<SpanPlan::Span> spans, const QString& whyEmpty,
                                        QString& reason) const;
    /// Begins a scan of what the settings say. False, told by `Ended`, when that is nothing.
    bool Start();
    void Stop() { m_scanner.Stop(); }

    const Scanner& GetScanner() const { return m_scanner; }
    const ScanValues& GetValues() const { return m_values; }
    bool IsRunning() const { return m_isRunning; }
    /// What is being scanned, or was last.
    ScanSource GetSource() const { return m_source; }
    /// Whether memory channels are being scanned: their list then opens and writes no file.
    bool IsScanningChannels() const { return m_isRunning && m_source == ScanSource::MemoryChannels; }

signals:
    /// State, channel or counts are others.
    void Changed();
    /// A scan is about to begin, or has ended.
    void RunningChanged(bool isRunning);
    /// A stop began, went on or, no longer active, ended.
    void StopChanged(const ScanStop& stop);
    /// A step cannot be reached, in words.
    void StepLeftOut(const QString& reason);
    /// The scan has ended for a reason that was not the operator's wish.
    void Ended(const QString& reason);

private:
    void Update(Observable* subject, TChangeCode code) override;
    void ScanChanged() override;
    void LeftOut(const QString& reason) override { emit StepLeftOut(reason); }
    void StopTold(const ScanStop& stop) override;
    void ScanEnded(const QString& reason) override;
    void obey(Names::Id command);
    std::unique_ptr<ScanPlan> makeRange(QString& reason) const;
    void tell();

    ScanValues m_values;
    Scanner m_scanner;
    std::array<MakePlan, 3> m_plans;
    ScanSource m_source = ScanSource::MemoryChannels;
    bool m_isRunning = false;
};
