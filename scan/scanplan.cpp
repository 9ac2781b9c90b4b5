#include "scan/scanplan.h"

#include "controls/frequencystore/common/keys.h"
#include "host/freqlist/frequencynodemediator.h"
#include "host/freqlist/frequencynodemediatorctrl.h"

#include <cmath>

namespace {

constexpr double SameFrequency = 0.5; // Hz

/// All frequencies of a channel but its own; null for a channel that stands for one.
const std::vector<double>* furtherOf(const Node& channel) {
    const auto* isRange = channel.FindOwn<Value<bool>>(Keys::Range);
    const auto* further = channel.FindOwn<ValueList<double>>(Keys::RangeFrequencies);
    return isRange && isRange->GetValue() && further ? &further->Elements() : nullptr;
}

/// One of the frequencies (Hz) of a channel, counted from its own, which is 0.
std::optional<double> frequencyOf(FrequencyNodeMediator& channel, size_t further) {
    const Node* node = channel.GetNode();
    double hertz = 0;
    if (!node || !channel.GetFrequency(hertz, 0))
        return std::nullopt;
    if (further == 0)
        return hertz;
    const std::vector<double>* frequencies = furtherOf(*node);
    return frequencies && further <= frequencies->size() ? std::optional((*frequencies)[further - 1])
                                                         : std::nullopt;
}

} // namespace

ChannelPlan::ChannelPlan(FrequencyNodeMediatorCtrl& list) : m_list(&list) {}

void ChannelPlan::Begin() {
    m_next = 0;
    m_further = 0;
    if (m_list)
        m_list->ForceUpdateNow();
}

bool ChannelPlan::fill(FrequencyNodeMediator& entry, unsigned long index, size_t further,
                       ScanStep& step) const {
    const std::optional<double> hertz = frequencyOf(entry, further);
    if (!hertz)
        return false;
    const Node* node = entry.GetNode();
    step = ScanStep{.frequency = *hertz,
                    .item = &entry,
                    .channel = static_cast<long>(index) + 1,
                    .serial = node->GetSerial()};
    entry.GetComment(step.comment, 0);
    if (const auto* threshold = node->FindOwn<ValueNumeric<int>>(Keys::Threshold))
        step.threshold = threshold->GetValue();
    return true;
}

bool ChannelPlan::Next(ScanStep& step) {
    while (m_list && m_next < m_list->size()) {
        FrequencyNodeMediator* entry = m_list->At(m_next);
        const Node* node = entry ? entry->GetNode() : nullptr;
        if (m_further > 0 && node && node->GetSerial() != m_given)
            m_further = 0; // another one has taken its place
        if (entry && fill(*entry, m_next, m_further, step)) {
            ++m_further;
            m_given = step.serial;
            return true;
        }
        ++m_next;
        m_further = 0;
    }
    return false;
}

bool ChannelPlan::Find(double hertz, ScanStep& step) {
    for (unsigned long i = 0; m_list && i < m_list->size(); ++i) {
        FrequencyNodeMediator* entry = m_list->At(i);
        std::optional<double> present;
        for (size_t further = 0; entry && (present = frequencyOf(*entry, further)); ++further) {
            if (std::abs(*present - hertz) < SameFrequency)
                return fill(*entry, i, further, step);
        }
    }
    return false;
}

bool ChannelPlan::Renew(ScanStep& step) {
    if (step.serial == 0) // a frequency that is no channel's
        return true;
    const Node* list = m_list ? m_list->GetNode() : nullptr;
    const Node* node = list ? list->ChildBySerial(step.serial) : nullptr;
    FrequencyNodeMediator* entry = node ? m_list->Find(node) : nullptr;
    step.item = entry;
    return entry;
}

QString ChannelPlan::WhyEmpty() const {
    return tr("There are no channels in the list.");
}

SpanPlan::SpanPlan(std::vector<Span> spans, double step, const QString& whyEmpty)
    : m_spans(std::move(spans)), m_step(step), m_whyEmpty(whyEmpty) {}

void SpanPlan::Begin() {
    m_span = 0;
    m_next = 0;
}

bool SpanPlan::Next(ScanStep& step) {
    for (; m_span < m_spans.size(); ++m_span, m_next = 0) {
        const Span& span = m_spans[m_span];
        const double width = span.to - span.from;
        const double from = width < m_step ? span.from + width / 2 : span.from;
        const double hertz = from + static_cast<double>(m_next) * m_step;
        if (hertz > span.to)
            continue;
        ++m_next;
        step = ScanStep{.frequency = hertz};
        return true;
    }
    return false;
}
