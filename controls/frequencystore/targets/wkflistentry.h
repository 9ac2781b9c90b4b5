#pragma once

#include "controls/frequencystore/common/simplefrequency.h"

/// One target of the local target list: frequency, bandwidth and demodulation, and how the target is
/// classified. Priority 1 is the highest, 10 the lowest; 11 is that of a target without a valid one.
class WkfListEntry : public SimpleFrequency {
public:
    WkfListEntry(Node* node, bool create, const GeneralEntry* source);

    /// Each does nothing when its value is missing.
    void SetPriority(int priority) { Set(m_priority, priority); }
    void SetThreadClass(const QString& threatClass) { Set(m_threatClass, threatClass); }
    void SetProfileID(const QString& id) { Set(m_profileID, id); }
    void SetProfileName(const QString& name) { Set(m_profileName, name); }
    void SetSignalClass(const QString& signalClass) { Set(m_signalClass, signalClass); }
    void SetTransmissionSystem(const QString& system) { Set(m_transmissionSystem, system); }

private:
    void create();
    void attach();

    ValueNumeric<double>* m_bandwidth = nullptr;
    Value<QString>* m_demodulation = nullptr;
    Value<char>* m_type = nullptr;
    Value<QString>* m_threatClass = nullptr;
    ValueNumeric<int>* m_priority = nullptr;
    Value<QString>* m_profileID = nullptr;
    Value<QString>* m_signalClass = nullptr;
    Value<QString>* m_transmissionSystem = nullptr;
    Value<QString>* m_profileName = nullptr;
};

/// A target that is made with all its values at once, as readers do. It comes out as one that `WkfListEntry`
/// makes value by value; values that are not set stay empty.
class WkfTarget {
public:
    /// The values, in order.
    enum Field : size_t {
        Frequency,
        Comment,
        Bandwidth,
        Demodulation,
        Type,
        ThreadClass,
        Priority,
        ProfileID,
        SignalClass,
        TransmissionSystem,
        ProfileName,
    };
    static const class Shape& Shape();

    explicit WkfTarget(Node& node) : m_node(node) {}
    /// Makes the values; false, and nothing is made, when the node is not as `Node::NewEntry` left it.
    bool Fill() { return m_node.IsInTree() && m_node.FillFromShape(); }

    template <Field F, typename Content>
    void Set(const Content& content) {
        using V = std::conditional_t<std::is_same_v<Content, QString>, Value<QString>, ValueNumeric<Content>>;
        m_node.ShapedValue<V>(F).SetValue(content);
    }

private:
    Node& m_node;
};
