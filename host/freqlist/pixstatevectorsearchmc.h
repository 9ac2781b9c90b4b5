#pragma once

#include "host/freqlist/pixstatevector.h"
#include "host/valuetree/detection.h"

/// A line with a mark for each record of a `ValueList<T>`. Made with mode 0 it stays hidden until it is made
/// visible.
template <typename T>
class PixStateVectorSearchMC final : public PixStateVectorOnValue {
public:
    using PixStateVectorOnValue::PixStateVectorOnValue;

    void Init(const QString& valuePath) override {
        m_collected = false;
        PixStateVectorOnValue::Init(valuePath);
    }
    void ClearObservable() override {
        m_collected = false;
        PixStateVectorOnValue::ClearObservable();
    }
    void Update(Observable* subject, TChangeCode code) override {
        m_collected = false;
        PixStateVectorOnValue::Update(subject, code);
    }

    void Refresh() override {
        if (!GetDirty())
            return;
        Clean();
        if (IsVisible()) {
            collect();
            for (size_t i = 0; i < m_items.size(); ++i)
                Mark(static_cast<quint32>(i), m_items[i].frequency, m_items[i].bandwidth,
                     DetectionConventionalAdapter::Type);
        }
        SetDirty(false);
    }
    /// The number of the detection.
    QString ItemText(quint32 item) const override {
        return item < m_items.size() ? QString::number(m_items[item].id) : QString();
    }
    double ItemFrequency(quint32 item) const override { return m_items[item].frequency; }
    double ItemBandwidth(quint32 item) const override { return m_items[item].bandwidth; }

private:
    struct Item {
        double frequency; ///< Hz
        double bandwidth; ///< Hz
        unsigned id;
    };

    void collect() {
        if (std::exchange(m_collected, true))
            return;
        m_items.clear();
        const auto* list = value_cast<ValueList<T>>(GetValue());
        if (!list)
            return;
        m_items.reserve(list->Size());
        for (const T& record : list->GetList())
            m_items.push_back({record.GetFrequency(), record.GetBandwidth(), record.GetID()});
    }

    std::vector<Item> m_items;
    bool m_collected = false;
};
