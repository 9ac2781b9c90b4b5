#include "host/freqlist/celleditor.h"

#include "host/freqlist/keys.h"
#include "host/valuetree/node.h"
#include "host/valuetree/value.h"
#include "host/valuetree/valueselection.h"

#include <QComboBox>
#include <QToolTip>

namespace {

/// Shows the choices of a value, and writes the chosen one when it is asked to.
class ChoiceField final : public QComboBox, public IEntryField {
public:
    ChoiceField(QWidget* parent, ValueBase& value, const QStringList& choices)
        : QComboBox(parent), m_value(&value) {
        addItems(choices);
        setCurrentText(value.GetStringValue());
    }

    bool Commit() override {
        if (ValueBase* value = m_value.get())
            value->SetStringValue(currentText());
        return true;
    }
    const QString& ErrorText() const override { return m_noError; }
    void ShowError() override {}

private:
    WeakRef<ValueBase> m_value;
    QString m_noError;
};

QStringList choicesOf(ValueBase& value) {
    QStringList choices;
    if (const auto* selection = value_cast<ValueSelection>(&value)) {
        for (long i = 0; i < selection->GetItemCount(); ++i)
            choices << selection->GetItemAt(i)->GetName();
    } else if (value.GetType() == ValueType::Bool) {
        choices << ValueText<bool>::ToText(false) << ValueText<bool>::ToText(true);
    }
    return choices;
}

} // namespace

VCLineEdit::LineEditType CellEditor::LineTypeOf(const ValueBase& value, unsigned columnId) {
    switch (value.GetType()) {
    case ValueType::NumericInt:
    case ValueType::NumericInt64:
    case ValueType::NumericDouble:
        break;
    default:
        return VCLineEdit::Text;
    }
    if (columnId == FreqList::ColumnFrequency)
        return VCLineEdit::Frequency;
    if (columnId == FreqList::ColumnBandwidth)
        return VCLineEdit::Bandwidth;
    return value.GetType() == ValueType::NumericDouble ? VCLineEdit::Real : VCLineEdit::Integer;
}

QWidget* CellEditor::Make(QWidget* parent, ValueBase& value, unsigned columnId) {
    if (const QStringList choices = choicesOf(value); !choices.isEmpty())
        return new ChoiceField(parent, value, choices);
    auto* line = new VCLineEdit(parent, "CellEditor", LineTypeOf(value, columnId));
    line->setFrame(false);
    line->setAutoFillBackground(true);
    line->SetValueBase(&value);
    line->selectAll();
    // What is wrong stands below the cell.
    QObject::connect(line, &VCLineEdit::errorChanged, line, [line](const QString& error) {
        QToolTip::showText(line->mapToGlobal(QPoint(0, line->height() / 2)), error, line);
    });
    return line;
}

void CellEditor::Drop(QWidget& field) {
    if (auto* line = qobject_cast<VCLineEdit*>(&field))
        line->SetValueBase(nullptr); // it would write when it loses the focus
}
