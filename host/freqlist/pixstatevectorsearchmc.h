#pragma once

#include "host/freqlist/pixstatevector.h"
#include "host/freqlist/valuelistmediator.h"
#include "host/valuetree/detection.h"
#include "host/valuetree/tree.h"

/// A line with a mark for each record of a `ValueList<T>`, and with emphasis where emissions are marked. Made
/// with mode 0 it stays hidden until it is made visible. Records that are appended cost no look at the
/// others.
template <typename T>
class PixStateVectorSearchMC final : public PixStateVectorOnValue {
public:
    using PixStateVectorOnValue::PixStateVectorOnValue;
    ~PixStateVectorSearchMC() override { forgetMarked(); }

    void Init(const QString& valuePath) override {
        m_seen = {};
        PixStateVectorOnValue::Init(valuePath);
    }
    void ClearObservable() override {
        m_seen = {};
        PixStateVectorOnValue::ClearObservable();
    }
    /// The list of marked emissions: frequencies in Hz, which need not be there.
    void SetMarkedPath(const QString& path) {
        forgetMarked();
        m_marked = value_cast<ValueList<double>>(Tree::Instance()->GetValue(path));
        if (m_marked)
            m_marked->AddObserver(this);
        SetDirty(true);
    }
    void Update(Observable* subject, TChangeCode code) override {
        if (m_marked && subject == static_cast<Observable*>(m_marked.get())) {
            if (code == TChangeCode::Removing)
                m_marked = nullptr;
            SetDirty(true);
        } else {
            if (code == TChangeCode::Removing)
                m_seen = {};
            PixStateVectorOnValue::Update(subject, code);
        }
    }

    void Refresh() override {
        if (!GetDirty())
            return;
        if (IsVisible()) {
            if (!collectChanges())
                ForgetMarks();
            else if (MarkCount() == 0)
                Clean();
            for (size_t i = MarkCount(); i < m_items.size(); ++i)
                MarkIfShown(static_cast<quint32>(i), static_cast<quint32>(i), m_items[i].frequency,
                            m_items[i].bandwidth, DetectionConventionalAdapter::Type);
            ShowMarked();
        } else {
            Clean();
        }
        SetDirty(false);
    }
    bool Tune(quint32 item, QWidget* view) override {
        Refresh();
        const auto* list = value_cast<ValueList<T>>(GetValue());
        if (!list || item >= m_items.size() || m_items.size() != list->Size())
            return false;
        const T& record = list->At(static_cast<long>(item));
        ValueListMediator<T, DetectionConventionalAdapter>(record).SetFrequency(view);
        return true;
    }
    /// What is marked stands in the list of marked emissions.
    void SetMarked(std::vector<double>) override {}
    std::vector<double> Marked() const override {
        return m_marked ? m_marked->Elements() : std::vector<double>();
    }
    /// The number of the detection.
    QString ItemText(quint32 item) const override {
        return item < m_items.size() ? QString::number(m_items[item].id) : QString();
    }
    double ItemFrequency(quint32 item) const override {
        return item < m_items.size() ? m_items[item].frequency : 0;
    }
    double ItemBandwidth(quint32 item) const override {
        return item < m_items.size() ? m_items[item].bandwidth : 0;
    }

private:
    struct Item {
        double frequency; ///< Hz
        double bandwidth; ///< Hz
        unsigned id;

        bool operator==(const Item&) const = default;
    };

    static Item itemOf(const T& record) {
        return {record.GetFrequency(), record.GetBandwidth(), record.GetID()};
    }

    /// Takes up what changed; false when marks that are there may be wrong.
    bool collectChanges() {
        const auto* list = value_cast<ValueList<T>>(GetValue());
        std::vector<typename ValueList<T>::Edited> edits;
        bool known = list && list->ChangesSince(m_seen, edits);
        for (const auto& edit : edits)
            known = known && (edit.place >= m_items.size() || m_items[edit.place] == itemOf(*edit.element));
        if (!known)
            m_items.clear();
        m_seen = list ? list->SeenNow() : typename ValueList<T>::Seen();
        if (list) {
            const auto added = static_cast<std::ptrdiff_t>(list->Size() - m_items.size());
            for (auto at = std::prev(list->Elements().end(), added); at != list->Elements().end(); ++at)
                m_items.push_back(itemOf(*at));
        }
        return known;
    }
    void forgetMarked() {
        if (m_marked)
            m_marked->DeleteObserver(this);
        m_marked = nullptr;
    }

    WeakRef<ValueList<double>> m_marked;
    std::vector<Item> m_items;
    typename ValueList<T>::Seen m_seen; ///< how much of the list the items are
};
