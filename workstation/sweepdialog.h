#pragma once

#include "sweep/sweepdetector.h"

#include <QDialog>
#include <QTimeZone>

class QComboBox;
class QDialogButtonBox;
class QDoubleSpinBox;

/// Asks what counts as a signal in power sweeps, and for the zone of their times.
class SweepDialog : public QDialog {
    Q_OBJECT

public:
    SweepDialog(const SweepSettings& settings, const QTimeZone& zone, QWidget* parent);

    SweepSettings GetSettings() const;
    /// The zone that was chosen; invalid while its name is unknown, and then the dialog cannot be accepted.
    QTimeZone GetZone() const;

private:
    void showWhetherZoneIsKnown();

    QDoubleSpinBox* m_threshold;
    QDoubleSpinBox* m_minWidth;
    QDoubleSpinBox* m_hold;
    QComboBox* m_zone;
    QDialogButtonBox* m_buttons;
};
