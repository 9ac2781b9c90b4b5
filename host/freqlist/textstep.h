#pragma once

#include "host/freqlist/undobytes.h"
#include "host/valuetree/value.h"

#include <optional>

/// A change of a text that follows lists, as the part of the text that differs.
class TextStep {
public:
    /// Begins to note, with the text as it is; `originator` causes the change. The text follows that list.
    TextStep(Value<QString>& text, const Node* list, IObserver* originator);

    bool IsOf(const ValueBase& value) const { return m_text.get() == &value; }
    bool Follows(const Node* list) const { return m_list == list; }
    bool IsOfSame(const TextStep& other) const { return m_text.get() == other.m_text.get(); }
    /// What the text was before, if it still is what the step left behind; else it has none.
    std::optional<QString> Other() const;
    /// False when the text is what it was.
    bool Finish();
    /// A later change of the same text becomes a part of this one.
    void Amend(const TextStep& later);
    /// The present text, which `Put` is to be told.
    QString Present() const { return m_text ? m_text->GetValue() : QString(); }
    /// Gives the text another content; the step keeps what it was.
    void Put(const QString& other, const QString& present);

    void Spill() { m_middle.Spill(); }
    size_t InMemory() const { return m_middle.InMemory(); }

private:
    void keep(const QString& other);
    QString withMiddle(const QString& whole) const;

    WeakRef<Value<QString>> m_text;
    const Node* m_list; ///< only to be compared
    IObserver* m_originator;
    QString m_before; ///< while the action runs
    UndoBytes m_middle;
    qsizetype m_head = 0; ///< characters in front of and behind the part that differs
    qsizetype m_tail = 0;
    size_t m_hash = 0; ///< of the present text
};
