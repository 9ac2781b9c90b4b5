#pragma once

#include "host/valuetree/valueselection.h"
#include "host/widgets/boundwidget.h"

#include <QComboBox>

/// A combo box that shows the items of a selection and chooses among them; it adds none. It observes the
/// selection and does not own it; it is enabled while it has one.
class VCComboBoxClassic : public QComboBox, private BoundWidget<ValueSelection> {
    Q_OBJECT

public:
    VCComboBoxClassic(QWidget* parent, const char* name);
    /// Shows that selection from now on; null lets go of the one before.
    void SetValueSelection(ValueSelection* selection) { bind(selection); }

private:
    void showValue() override;
};
