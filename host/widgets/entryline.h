#pragma once

#include "host/widgets/entryfield.h"
#include "host/widgets/understoodnote.h"

#include <QLineEdit>

/// What entry fields of one line have in common: while one types they show at their right end what they have
/// understood so far, and an entry that is wrong stays, in a red frame with the reason in the tool tip.
class EntryLine : public QLineEdit, public IEntryField {
    Q_OBJECT

public:
    using QLineEdit::QLineEdit;

    const QString& ErrorText() const override { return m_error; }
    void ShowError() override;
    /// What the unfinished entry is understood as ("7 055.000 kHz"); empty without one.
    const QString& UnderstoodText() const { return m_understood.Text(); }

signals:
    /// The entry became wrong, wrong in another way, or right again (empty text).
    void errorChanged(const QString& error);

protected:
    void setError(const QString& error);
    /// For what the tip depends on.
    virtual void updateToolTip() = 0;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

    UnderstoodNote m_understood{*this};

private:
    QString m_error;
};
