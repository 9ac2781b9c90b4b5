#pragma once

#include "host/widgets/entryline.h"

/// A line edit for a frequency in the operator's own notation (see `ReadFrequencyInput`). While one types it
/// shows at its right end what it has understood so far. Return, or leaving the field, takes the entry; an
/// entry that is no frequency stays, with a red frame and the reason in the tool tip. Escape brings the
/// frequency back.
class FrequencyField : public EntryLine {
    Q_OBJECT

public:
    explicit FrequencyField(QWidget* parent = nullptr);

    /// Hz that a bare number counts: 1e3 (the default) or 1e6, say.
    void SetDefaultUnit(double hertz);
    /// Shows a frequency in Hz, unless an entry is unfinished: then Escape brings it. 0 shows none.
    void SetFrequency(double hertz);
    /// The frequency shown last or entered since, in Hz; 0 for none.
    double GetFrequency() const { return m_hertz; }

    bool Commit() override;
    /// As wide whether there is an entry or not.
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    /// The operator entered a frequency, in Hz: by Return always, by leaving the field when it was edited.
    void Entered(double hertz);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void follow(const QString& entry);
    void showFrequency();
    void updateToolTip() override;
    double unit() const;

    double m_unit = 1e3;
    double m_hertz = 0;
};
