#pragma once

#include <QCoreApplication>
#include <QPointer>
#include <QString>

#include <optional>
#include <vector>

class FrequencyNodeMediator;
class FrequencyNodeMediatorCtrl;
class IFrequencyStoreItem;

/// One place at which a scan looks.
struct ScanStep {
    double frequency = 0;                ///< Hz
    IFrequencyStoreItem* item = nullptr; ///< the channel with its settings; null for a frequency alone
    long channel = 0;                    ///< the number of the channel, from 1; 0 for none
    QString comment{};
    std::optional<double> threshold{}; ///< dBµV; the channel's own
    quint32 serial = 0;                ///< of the channel's node
};

/// What a scan looks at, in order. A plan keeps no copy of the channels: those that come, go or change while
/// the scan runs are seen when their turn comes. The items of its steps are good until the event loop runs.
class ScanPlan {
public:
    virtual ~ScanPlan() = default;

    /// From the first step on, for another pass.
    virtual void Begin() = 0;
    /// Gives the next step; false at the end of the pass.
    [[nodiscard]] virtual bool Next(ScanStep& step) = 0;
    /// Finds the step of a frequency (Hz), whether its turn is near or not; false when there is none.
    [[nodiscard]] virtual bool Find(double hertz, ScanStep& step) = 0;
    /// Brings a step that was given before up to date; false when there is no such place any more.
    [[nodiscard]] virtual bool Renew(ScanStep& step) = 0;
    /// Why there is nothing to be looked at, for a plan without a step.
    virtual QString WhyEmpty() const = 0;
};

/// The entries of a list, in the list's order, each with its own settings. A channel that stands for several
/// frequencies gives a step for each of them.
class ChannelPlan final : public ScanPlan {
    Q_DECLARE_TR_FUNCTIONS(ChannelPlan)

public:
    /// The list is not owned; when it ends, so does the plan.
    explicit ChannelPlan(FrequencyNodeMediatorCtrl& list);

    void Begin() override;
    bool Next(ScanStep& step) override;
    bool Find(double hertz, ScanStep& step) override;
    bool Renew(ScanStep& step) override;
    QString WhyEmpty() const override;

private:
    bool fill(FrequencyNodeMediator& entry, unsigned long index, size_t further, ScanStep& step) const;

    QPointer<FrequencyNodeMediatorCtrl> m_list;
    unsigned long m_next = 0;
    size_t m_further = 0; ///< how many frequencies of the next channel have been given
    quint32 m_given = 0;  ///< serial of that channel's node
};

/// Spans of frequencies in steps; a span that is narrower than a step is looked at in its middle.
class SpanPlan final : public ScanPlan {
public:
    struct Span {
        double from; ///< Hz
        double to;   ///< Hz, not below `from`
    };
    /// `step` in Hz, above 0. `whyEmpty` is told when there are no spans.
    SpanPlan(std::vector<Span> spans, double step, const QString& whyEmpty);

    void Begin() override;
    bool Next(ScanStep& step) override;
    bool Find(double, ScanStep&) override { return false; }
    bool Renew(ScanStep&) override { return true; }
    QString WhyEmpty() const override { return m_whyEmpty; }

private:
    std::vector<Span> m_spans;
    double m_step;
    QString m_whyEmpty;
    size_t m_span = 0;
    quint64 m_next = 0; ///< in the span
};
