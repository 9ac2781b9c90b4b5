#pragma once

#include <QWidget>

class QLabel;

/// A line in the status bar that says what could not be saved, until that is resolved or the operator has
/// dismissed it. A text that is too long for its place is cut in the middle, and whole in the tool tip.
class FailureNote : public QWidget {
    Q_OBJECT

public:
    explicit FailureNote(QWidget* parent = nullptr);

    /// Shows a text; an empty one hides the note.
    void Show(const QString& text);
    const QString& GetText() const { return m_text; }

signals:
    void Dismissed();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void fit();

    QLabel* m_label;
    QString m_text;
};
