#pragma once

#include "host/widgets/boundwidget.h"
#include "host/widgets/entryline.h"

/// A line edit that shows and edits a value of any type. It observes the value and does not own it; it is
/// enabled while it has one. An entry is written when the field is left or Return is pressed. While an entry
/// is unfinished the field does not follow the value, and Escape brings the value back. An entry that is no
/// such value, or outside the limits of the value, is not written: the field says so by a red frame, its tool
/// tip and `errorChanged`.
class VCLineEdit : public EntryLine, private BoundWidget<ValueBase> {
    Q_OBJECT

public:
    /// Frequencies and bandwidths are in Hz and shown in kHz or MHz. An entry may name its unit ("7.055
    /// MHz"); one without a unit counts in the unit that the field shows. While one types, the field shows
    /// at its right end what it has understood so far.
    enum LineEditType { Text, Integer, Real, Frequency, Bandwidth };

    VCLineEdit(QWidget* parent, const char* name, LineEditType type);

    /// Shows that value from now on; null lets go of the one before. An unfinished entry is dropped.
    void SetValueBase(ValueBase* value);
    [[nodiscard]] bool Commit() override;
    /// The limits of the value as the field shows numbers; empty when there are none.
    QString LimitsText() const;

    /// What is wrong with an entry for a value, empty when nothing is; then `stored` is the text to give to
    /// the value.
    static QString ProblemOf(const ValueBase& value, LineEditType type, const QString& entry,
                             QString& stored);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    struct Format;

    void showValue() override;
    void follow(const QString& entry);
    void endEntry();
    static const Format& formatOf(LineEditType type);
    const Format& format() const { return formatOf(m_type); }
    void updateToolTip() override;
    QString problemOf(const QString& entry, QString& stored) const;
    static bool holds(const ValueBase& value, const QString& stored);

    LineEditType m_type;
};
