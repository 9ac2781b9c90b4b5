#include "host/freqlist/textstep.h"

#include <QHash>

TextStep::TextStep(Value<QString>& text, const Node* list, IObserver* originator)
    : m_text(&text), m_list(list), m_originator(originator), m_before(text.GetValue()) {}

bool TextStep::Finish() {
    const Value<QString>* text = m_text.get();
    if (!text || text->GetValue() == m_before)
        return false;
    keep(m_before);
    m_before = QString();
    return true;
}

/// Keeps what another text than the present one has between their common head and tail.
void TextStep::keep(const QString& other) {
    const QString& present = m_text->GetValue();
    const qsizetype most = std::min(present.size(), other.size());
    m_head = std::mismatch(present.begin(), present.begin() + most, other.begin()).first - present.begin();
    m_tail = std::mismatch(present.rbegin(), present.rbegin() + (most - m_head), other.rbegin()).first -
             present.rbegin();
    m_hash = qHash(present);
    m_middle.Clear();
    const qsizetype length = other.size() - m_head - m_tail;
    m_middle.Put(other.utf16() + m_head, static_cast<size_t>(length) * sizeof(QChar));
    m_middle.Trim();
}

/// The kept part within the head and the tail of a whole text.
QString TextStep::withMiddle(const QString& whole) const {
    UndoBytes::Reader bytes(m_middle);
    QString middle(static_cast<qsizetype>(m_middle.Size() / sizeof(QChar)), Qt::Uninitialized);
    if (!middle.isEmpty())
        std::memcpy(middle.data(), bytes.Get(m_middle.Size()), m_middle.Size());
    return whole.left(m_head) + middle + whole.right(m_tail);
}

std::optional<QString> TextStep::Other() const {
    const Value<QString>* text = m_text.get();
    if (!text || qHash(text->GetValue()) != m_hash)
        return std::nullopt;
    return withMiddle(text->GetValue());
}

void TextStep::Amend(const TextStep& later) {
    // What was before the later change is what this one left behind.
    const std::optional<QString> between = later.Other();
    if (between && qHash(*between) == m_hash)
        keep(withMiddle(*between));
}

void TextStep::Put(const QString& other, const QString& present) {
    Value<QString>* text = m_text.get();
    if (!text)
        return;
    text->SetValue(other, m_originator);
    if (m_text)
        keep(present);
}
