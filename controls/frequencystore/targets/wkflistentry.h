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
    static const class Shape& Shape();

    /// What readers know of a target; frequency and bandwidth in Hz. The texts are the caller's.
    struct Content {
        double frequency;
        double bandwidth;
        int priority;
        QStringView comment;
        QStringView demodulation;
        QStringView threatClass;
        QStringView profileID = {};
        QStringView profileName = {};
        QStringView signalClass = {};
        QStringView transmissionSystem = {};
    };

    explicit WkfTarget(Node& node) : m_node(node) {}
    /// Makes the values; false, and nothing is made, when the node is not as `Node::NewEntry` left it.
    bool Fill(const Content& content);

private:
    Node& m_node;
};
