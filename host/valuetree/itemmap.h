#pragma once

#include "host/valuetree/value.h"

#include <map>

/// One item of a keyed frequency map: frequency and bandwidth in Hz, a small number, a label, the type letter
/// (or type number), a further text, and whether the item is shown.
class FrequencyMapItem {
public:
    FrequencyMapItem() = default;
    FrequencyMapItem(double frequency, double bandwidth, char number, const QString& label, char type,
                     const QString& text, bool visible = true)
        : m_frequency(frequency),
          m_bandwidth(bandwidth),
          m_label(label),
          m_text(text),
          m_number(number),
          m_type(type),
          m_visible(visible) {}

    double GetFrequency() const { return m_frequency; }
    double GetBandwidth() const { return m_bandwidth; }
    char GetNumber() const { return m_number; }
    const QString& GetLabel() const { return m_label; }
    char GetType() const { return m_type; }
    const QString& GetText() const { return m_text; }
    bool IsVisible() const { return m_visible; }
    bool operator==(const FrequencyMapItem&) const = default;

private:
    double m_frequency = 0;
    double m_bandwidth = 0;
    QString m_label;
    QString m_text;
    char m_number = 0;
    char m_type = 0;
    bool m_visible = true;
};

/// A frequency map item that only shows: readers of a map get it by value and cannot write back.
class FrequencyMapReadOnlyItem {
public:
    explicit FrequencyMapReadOnlyItem(const FrequencyMapItem& item) : m_item(item) {}
    const FrequencyMapItem* operator->() const { return &m_item; }

private:
    const FrequencyMapItem m_item;
};

/// Text form of one item: all but its visibility, separated by TAB; a text is one field (`Quor::OneField`).
struct FrequencyMapItemFormat {
    static QString ToText(const FrequencyMapItem& item);
};

/// Access to an item's members by name, for views over a map.
struct FrequencyMapItemAdapter {
    static QString GetFrequencyString(const FrequencyMapItem& item);
    static QString GetBandwidthString(const FrequencyMapItem& item);
    static QString GetName(const FrequencyMapItem& item) { return item.GetLabel(); }
};

/// A value that maps unsigned integer keys to items. Keys are given by the map and not given twice.
template <typename Item, typename Format, typename Adapter>
class ValueItemMapBase : public ValueBase {
public:
    using Map = std::map<unsigned, Item>;
    static constexpr ValueType Type = ValueType::FrequencyItemMap;

    ValueItemMapBase() : ValueBase(Type) {}
    ValueItemMapBase(const QString& name, TValueState state) : ValueItemMapBase() {
        SetName(name);
        SetState(state);
    }
    ~ValueItemMapBase() override { AnnounceRemoval(); }

    /// Adds an item under a new key, which is returned.
    unsigned Add(const Item& item, IObserver* originator = nullptr) {
        const unsigned key = CreateNewUniqueKey();
        m_items.emplace(key, item);
        HasChanged(TChangeCode::ValueChanged, originator);
        return key;
    }
    /// Puts an item under a key of the caller's and returns the key.
    unsigned SetAt(unsigned key, const Item& item, IObserver* originator = nullptr) {
        const auto [place, isNew] = m_items.try_emplace(key, item);
        if (!isNew && place->second == item)
            return key;
        place->second = item;
        m_lastKey = std::max(m_lastKey, key);
        HasChanged(TChangeCode::ValueChanged, originator);
        return key;
    }
    /// Removes the item of a key; an unknown key is no error.
    void EraseAt(unsigned key, IObserver* originator = nullptr) {
        if (m_items.erase(key) != 0)
            HasChanged(TChangeCode::ValueChanged, originator);
    }
    void Clear(IObserver* originator = nullptr) {
        if (m_items.empty())
            return;
        m_items.clear();
        HasChanged(TChangeCode::ValueChanged, originator);
    }
    const Map& GetItems() const { return m_items; }

    /// One line per item: the key, a TAB and the item's text form.
    QString GetStringValue() const override {
        QString text;
        for (const auto& [key, item] : m_items)
            text += QString::number(key) + QLatin1Char('\t') + Format::ToText(item) + QLatin1Char('\n');
        return text;
    }
    /// A map is changed by its items only: a text sets nothing.
    void SetStringValue(const QString&, IObserver*) override {}

    void Assign(const ValueBase& other) override {
        const auto* same = value_cast<ValueItemMapBase>(&other);
        if (!same || same->m_items == m_items)
            return;
        m_items = same->m_items;
        m_lastKey = std::max(m_lastKey, same->m_lastKey);
        HasChanged(TChangeCode::ValueChanged);
    }
    bool Compare(const ValueBase* other) const override {
        const auto* same = value_cast<ValueItemMapBase>(other);
        return same && same->m_items == m_items;
    }
    QString GetTypeName() const override { return QStringLiteral("frequency item map"); }
    [[nodiscard]] ValueBase* Clone() const override {
        auto* copy = new ValueItemMapBase;
        copy->m_items = m_items;
        copy->m_lastKey = m_lastKey;
        return copy;
    }

protected:
    /// Behind the largest key of the caller's the count starts anew.
    unsigned CreateNewUniqueKey() {
        do
            ++m_lastKey;
        while (m_items.contains(m_lastKey));
        return m_lastKey;
    }

private:
    Map m_items;
    unsigned m_lastKey = 0;
};

template <typename Item, typename Format, typename Adapter>
using ValueFrequencyItemMap = ValueItemMapBase<Item, Format, Adapter>;

/// The map of frequency items that the frequency bar reads.
using FrequencyItemMap =
    ValueFrequencyItemMap<FrequencyMapItem, FrequencyMapItemFormat, FrequencyMapItemAdapter>;
