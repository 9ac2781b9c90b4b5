#include "workstation/sweepdialog.h"

#include "host/gui/colorset.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>

namespace {

constexpr double HighestThreshold = 200; // dB
constexpr double LargestWidth = 1e9;     // Hz
constexpr double LongestHold = 86400;    // s

QDoubleSpinBox* addNumber(QFormLayout* form, const QString& label, const QString& unit, int decimals,
                          double maximum, double value) {
    auto* box = new QDoubleSpinBox;
    box->setDecimals(decimals);
    box->setRange(0, maximum);
    box->setSuffix(QLatin1Char(' ') + unit);
    box->setValue(value);
    form->addRow(label, box);
    return box;
}

} // namespace

SweepDialog::SweepDialog(const SweepSettings& settings, const QTimeZone& zone, QWidget* parent)
    : QDialog(parent), m_zone(new QComboBox) {
    setWindowTitle(tr("Open Sweep"));
    auto* form = new QFormLayout(this);
    m_threshold = addNumber(form, tr("&Threshold above the noise floor:"), QStringLiteral("dB"), 1,
                            HighestThreshold, settings.threshold);
    m_minWidth =
        addNumber(form, tr("&Minimum width:"), QStringLiteral("Hz"), 0, LargestWidth, settings.minWidth);
    m_hold = addNumber(form, tr("&Hold time:"), QStringLiteral("s"), 1, LongestHold, settings.hold);
    m_threshold->setObjectName(QStringLiteral("Threshold"));
    m_minWidth->setObjectName(QStringLiteral("MinWidth"));
    m_hold->setObjectName(QStringLiteral("Hold"));
    m_hold->setToolTip(tr("A signal that was away no longer than this is the same detection."));
    m_zone->setObjectName(QStringLiteral("Zone"));
    m_zone->setEditable(true);
    m_zone->setInsertPolicy(QComboBox::NoInsert);
    for (const QByteArray& id : QTimeZone::availableTimeZoneIds())
        m_zone->addItem(QString::fromUtf8(id));
    m_zone->setCurrentText(QString::fromUtf8(zone.id()));
    form->addRow(tr("Time &zone of the sweeps:"), m_zone);
    m_buttons = new QDialogButtonBox(QDialogButtonBox::Open | QDialogButtonBox::Cancel);
    form->addRow(m_buttons);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_zone, &QComboBox::editTextChanged, this, &SweepDialog::showWhetherZoneIsKnown);
    showWhetherZoneIsKnown();
}

SweepSettings SweepDialog::GetSettings() const {
    return {m_threshold->value(), m_minWidth->value(), m_hold->value()};
}

QTimeZone SweepDialog::GetZone() const {
    return QTimeZone(m_zone->currentText().toUtf8());
}

void SweepDialog::showWhetherZoneIsKnown() {
    const bool isKnown = GetZone().isValid();
    m_buttons->button(QDialogButtonBox::Open)->setEnabled(isKnown);
    m_zone->setToolTip(isKnown ? QString() : tr("No time zone is called \"%1\".").arg(m_zone->currentText()));
    QPalette colours = palette();
    if (!isKnown)
        colours.setColor(QPalette::Text,
                         ColorSet::Instance().GetColorDefinition(IColorBase::ERROR_TEXT).GetColor());
    m_zone->setPalette(colours);
}
