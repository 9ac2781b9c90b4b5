#pragma once

#include <QString>

class QLineEdit;

/// What a line edit has understood of an unfinished entry, painted at its right end where the entry leaves
/// room. The field owns the note and tells it of changes.
class UnderstoodNote {
public:
    explicit UnderstoodNote(QLineEdit& field) : m_field(field) {}

    /// Shows a text; an empty one is no note. `mayMisread` puts a question mark behind it.
    void Show(const QString& understood, bool mayMisread = false);
    const QString& Text() const { return m_text; }
    /// The note as the first line of a tool tip.
    QString AboveTip(const QString& tip) const;

    /// Keeps the end of the field free for the note, if the entry leaves so much: for resize events.
    void MakeRoom();
    /// For paint events, behind the field's own.
    void Paint() const;

private:
    QLineEdit& m_field;
    QString m_text;
    bool m_hasRoom = false;
};
