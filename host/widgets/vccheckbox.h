#pragma once

#include "host/valuetree/value.h"
#include "host/widgets/boundwidget.h"

#include <QCheckBox>

/// A check box that shows and edits a flag. It observes the flag and does not own it; it is enabled while it
/// has one.
class VCCheckBox : public QCheckBox, private BoundWidget<Value<bool>> {
    Q_OBJECT

public:
    VCCheckBox(QWidget* parent, const char* name);
    /// Shows that flag from now on; null lets go of the one before.
    void SetBoolean(Value<bool>* value) { bind(value); }

private:
    void showValue() override;
};
