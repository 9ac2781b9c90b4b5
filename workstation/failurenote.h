#pragma once

#include <QWidget>

class QLabel;

/// A note in the status bar that says what could not be saved, until that is resolved or the operator has
/// dismissed it. A long text is cut in the middle, and whole in the tool tip.
class FailureNote : public QWidget {
    Q_OBJECT

public:
    explicit FailureNote(QWidget* parent = nullptr);

    /// Shows a text; an empty one hides the note.
    void Show(const QString& text);
    const QString& GetText() const { return m_text; }

signals:
    void Dismissed();

private:
    QLabel* m_label;
    QString m_text;
};
