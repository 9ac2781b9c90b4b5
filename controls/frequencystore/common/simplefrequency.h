#pragma once

#include "controls/frequencystore/common/generalentry.h"
#include "host/valuetree/tree.h"

/// Common base of all entries: typed access to the values under an entry's own node. The values belong to the
/// tree; an entry may be deleted while they stay, and finds nothing where they have gone.
///
/// A new entry's comment is its own frequency as text.
class SimpleFrequency : public GeneralEntry {
public:
    /// Largest numeric bandwidth where the receiver says nothing, Hz.
    static constexpr double MaxBandwidth = 3e9;

    /// `node` is the entry's node; without one the entry has no values. With `create` the values are made
    /// now, with limits and settings from `source` (may be null); else those that exist are looked up.
    /// A `Passing` entry ends before anything else can happen to its node.
    enum class Use { Kept, Passing };
    SimpleFrequency(Node* node, bool create, const GeneralEntry* source, Use use = Use::Kept);

    /// The limits of new values where the receiver says nothing, for shapes.
    static Shape::Field FrequencyField();
    static Shape::Field BandwidthField(Names::Id key);

    /// Null when the entry has none, or it has ended.
    Node* GetNode() const { return m_passed ? m_passed : m_kept.get(); }

    /// Setters write through the values' own setters, so that everyone sees the change. A missing value makes
    /// them do nothing.
    void SetFrequency(double hertz);
    void SetComment(const QString& comment);
    /// Writes "bandwidth", or "bandwidthsel" where the entry has that instead. A selection that lacks the
    /// number gets it as a new item.
    void SetBandwidth(double hertz);
    /// Selects the bandwidth with that key where the entry has a selection, else writes the number.
    void SetBandwidth(long keyOrHertz);
    /// A selection that lacks the text gets it as a new item: nothing that a file says is lost.
    void SetDemodulation(const QString& demodulation);

protected:
    /// The value that a member points at, or null when it has ended meanwhile.
    template <typename V>
    V* Alive(V* held) const {
        return held && stillThere(held) ? held : nullptr;
    }
    /// Makes the value of a key, or takes the one that is there.
    template <typename V>
    V* Make(Names::Id key);
    /// Makes the numeric "bandwidth": as the receiver's, or from 0 to 3 GHz where it offers a selection,
    /// which does not fit a number, or nothing.
    ValueNumeric<double>* MakeBandwidth();
    /// The value of a key, of that type, or null.
    template <typename V>
    V* Find(Names::Id key) const;
    template <typename V, typename Content>
    void Set(V* held, const Content& content) {
        if (V* value = Alive(held))
            value->SetValue(content);
    }
    /// Selects an item by text, appending it when it is missing. An empty text says nothing: where no item
    /// has it the selection stays.
    static void SelectOrAppend(ValueSelection& selection, const QString& text);

private:
    bool stillThere(const ValueBase* value) const;
    ValueBase* ownValue(Names::Id key) const;

    WeakRef<Node> m_kept;
    Node* m_passed = nullptr;          ///< of a passing entry
    quint32 m_removedValues = 0;       ///< the node's count when the values were bound
    std::vector<ValueBase*> m_outside; ///< values that the tree refused; they never end
    bool m_inTree = false;
    ValueNumeric<double>* m_frequency = nullptr;
    Value<QString>* m_comment = nullptr;
};

/// A new node at the end of a list, for an entry of that shape. It has all values already when the entry may
/// be a passing one; when somebody who observes the list had a hand in it, the entry makes what is missing.
struct NewEntryNode {
    NewEntryNode(Node& list, Names::Id name, const Shape& shape);

    Node* node;
    SimpleFrequency::Use use;
};

template <typename V>
V* SimpleFrequency::Make(Names::Id key) {
    V* value = GetOrCreateValue<V>(*GetNode(), m_inTree, key);
    if (!value->GetParentNode())
        m_outside.push_back(value);
    return value;
}

template <typename V>
V* SimpleFrequency::Find(Names::Id key) const {
    return m_inTree ? GetNode()->template FindOwn<V>(key) : nullptr;
}
