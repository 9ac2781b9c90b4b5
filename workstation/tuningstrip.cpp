#include "workstation/tuningstrip.h"

#include "host/base/frequencyinput.h"
#include "host/base/frequencytext.h"
#include "host/gui/listsettings.h"
#include "host/widgets/frequencyfield.h"
#include "host/widgets/vccomboboxclassic.h"
#include "host/widgets/vclineedit.h"
#include "receiver/receiver.h"
#include "workstation/elidedlabel.h"
#include "workstation/levelmeter.h"

#include <QComboBox>
#include <QDateTime>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QToolButton>
#include <QWheelEvent>

namespace {

constexpr int TickMilliseconds = 1000;
constexpr int RunningWidth = 150;      ///< that what runs has at least where all is in one row
constexpr double FrequencyScale = 1.6; ///< size of the frequency against that of other texts
constexpr double Steps[] = {10,   100,    500,  1e3,  2.5e3, 5e3,   6.25e3, 8.33e3, 9e3,
                            10e3, 12.5e3, 25e3, 50e3, 100e3, 200e3, 1e6,    10e6}; // Hz
constexpr double DefaultStepHF = 1e3;
constexpr double DefaultStepVUHF = 25e3;
const QString StepSetting = QStringLiteral("Window/Step");

/// A box or field with its name for those who do not see it.
template <typename W>
W* named(W* widget, const QString& name, const QString& description) {
    widget->setAccessibleName(name);
    widget->setAccessibleDescription(description);
    widget->setToolTip(description);
    return widget;
}

QHBoxLayout* rowOf(QWidget* group) {
    auto* row = new QHBoxLayout(group);
    row->setContentsMargins(0, 0, 0, 0);
    return row;
}

} // namespace

TuningStrip::TuningStrip(Receiver& receiver, QWidget* parent)
    : QWidget(parent),
      m_receiver(receiver),
      m_frequency(new FrequencyField(this)),
      m_step(new QComboBox(this)),
      m_number(new QLabel(this)),
      m_running(new ElidedLabel(this)),
      m_stop(new QToolButton(this)),
      m_time(new QLabel(this)),
      m_tuning(makeTuning(receiver)),
      m_readings(makeReadings(receiver)),
      m_layout(new QHBoxLayout(this)) {
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSizeConstraint(QLayout::SetNoConstraint);
    m_layout->addWidget(m_tuning);
    m_layout->addWidget(m_readings, 1);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    m_level.Reset(receiver.GetLevel());
    showLevel();
    Refresh();
    connect(&m_tick, &QTimer::timeout, this, &TuningStrip::Refresh);
    m_tick.start(TickMilliseconds);
}

QWidget* TuningStrip::makeTuning(Receiver& receiver) {
    auto* group = new QWidget(this);
    QHBoxLayout* row = rowOf(group);
    const auto* limits = receiver.Find<ValueNumeric<double>>(Keys::KeyFrequency);
    QFont font = m_frequency->font();
    font.setPointSizeF(font.pointSizeF() * FrequencyScale);
    font.setBold(true);
    m_frequency->setFont(font);
    m_frequency->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_frequency->setMinimumWidth(m_frequency->fontMetrics().horizontalAdvance(
        QLatin1Char(' ') + Quor::GroupedFrequencyText(limits->GetMax()) + QLatin1Char(' ')));
    m_frequency->setMaximumWidth(2 * m_frequency->minimumWidth());
    m_frequency->setAccessibleName(tr("Tuned frequency")); // the field has a tip of its own
    m_frequency->setAccessibleDescription(tr("The receiver's frequency; may name its unit, as in 7.055 MHz"));
    connectField();
    fillSteps();
    row->addWidget(addStep(Qt::LeftArrow, tr("Step down"), -1));
    row->addWidget(m_frequency);
    row->addWidget(addStep(Qt::RightArrow, tr("Step up"), 1));
    row->addWidget(m_step);
    auto* mode = new VCComboBoxClassic(group, "Mode");
    mode->SetValueSelection(receiver.Find<ValueSelection>(Keys::KeyDemodulation));
    row->addWidget(named(mode, tr("Demodulation"), tr("Demodulation")));
    auto* bandwidth = new VCLineEdit(group, "TunedBandwidth", VCLineEdit::Bandwidth);
    bandwidth->SetValueBase(receiver.GetValue(Keys::KeyBandwidth));
    bandwidth->setMaximumWidth(bandwidth->fontMetrics().horizontalAdvance(QStringLiteral("  150.000 kHz  ")));
    bandwidth->setMinimumWidth(bandwidth->maximumWidth() * 3 / 4);
    row->addWidget(named(bandwidth, tr("Bandwidth"), tr("Bandwidth of the demodulator")));
    return group;
}

/// The receiver refuses what it does not reach and says so; then its frequency stands in the field again.
void TuningStrip::connectField() {
    m_frequency->SetDefaultUnit(m_receiver.GetKind() == ReceiverKind::HF ? 1e3 : 1e6);
    m_frequency->SetFrequency(m_receiver.GetFrequency());
    connect(&m_receiver, &Receiver::Tuned, m_frequency, &FrequencyField::SetFrequency);
    connect(m_frequency, &FrequencyField::Entered, this, [this](double hertz) {
        if (!m_receiver.Tune(hertz))
            m_frequency->SetFrequency(m_receiver.GetFrequency());
    });
}

QWidget* TuningStrip::makeReadings(Receiver& receiver) {
    auto* group = new QWidget(this);
    QHBoxLayout* row = rowOf(group);
    m_meter = new LevelMeter(receiver.GetLevel(), receiver.Find<ValueNumeric<int>>(Keys::Threshold), group);
    m_meter->setMaximumWidth(2 * m_meter->sizeHint().width());
    row->addWidget(m_meter, 1);
    m_number->setMinimumWidth(m_number->fontMetrics().horizontalAdvance(QStringLiteral("-40.0 dBµV ")));
    m_number->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_number->setAccessibleDescription(tr("Level at the input of the demodulator"));
    row->addWidget(m_number);
    m_running->setObjectName(QStringLiteral("Running"));
    row->addWidget(m_running, 2);
    m_stop->setText(tr("Stop"));
    named(m_stop, tr("Stop"), tr("Stop all that runs"));
    connect(m_stop, &QToolButton::clicked, this, &TuningStrip::stopAll);
    row->addWidget(m_stop);
    m_time->setObjectName(QStringLiteral("Time"));
    row->addWidget(m_time);
    return group;
}

QToolButton* TuningStrip::addStep(Qt::ArrowType arrow, const QString& name, int steps) {
    auto* button = new QToolButton(this);
    button->setArrowType(arrow);
    button->setAutoRepeat(true);
    button->setFocusPolicy(Qt::TabFocus);
    connect(button, &QToolButton::clicked, this, [this, steps] { Step(steps); });
    return named(button, name, tr("Tune by one step"));
}

void TuningStrip::fillSteps() {
    for (const double hertz : Steps)
        m_step->addItem(Quor::BandwidthText(hertz), hertz);
    named(m_step, tr("Step"), tr("How far one step tunes"));
    bool isSet = false;
    const double kept = ListSettings::LoadText(StepSetting).toDouble(&isSet);
    const double usual = m_receiver.GetKind() == ReceiverKind::HF ? DefaultStepHF : DefaultStepVUHF;
    SetStep(isSet ? kept : usual);
    connect(m_step, &QComboBox::activated, this,
            [this] { ListSettings::SaveText(StepSetting, QString::number(GetStep())); });
}

double TuningStrip::GetStep() const {
    return m_step->currentData().toDouble();
}

void TuningStrip::SetStep(double hertz) {
    if (const int index = m_step->findData(hertz); index >= 0)
        m_step->setCurrentIndex(index);
}

void TuningStrip::Step(int steps) {
    m_receiver.Tune(m_receiver.GetFrequency() + steps * GetStep());
}

void TuningStrip::wheelEvent(QWheelEvent* event) {
    if (m_frequency->geometry().contains(m_tuning->mapFrom(this, event->position().toPoint())))
        Step(event->angleDelta().y() > 0 ? 1 : -1);
}

void TuningStrip::Update(Observable* subject, TChangeCode code) {
    m_level.ForgetIfRemoved(subject, code);
    showLevel();
}

void TuningStrip::showLevel() {
    m_number->setText(m_level ? tr("%1 dBµV").arg(m_level->GetValue(), 0, 'f', 1) : QString());
}

void TuningStrip::AddActivity(Activity activity) {
    m_activities.push_back(std::move(activity));
    Refresh();
}

void TuningStrip::Refresh() {
    QStringList running;
    for (const Activity& activity : m_activities) {
        if (activity.isRunning())
            running << tr("%1 running, %2").arg(activity.name, activity.found());
    }
    m_running->setText(running.join(QStringLiteral("; ")));
    m_running->setToolTip(running.join(QLatin1Char('\n')));
    m_stop->setVisible(!running.isEmpty());
    const QDateTime now = QDateTime::currentDateTimeUtc();
    m_time->setText(now.toString(QStringLiteral("hh:mm:ss")) + QStringLiteral(" UTC"));
    m_time->setToolTip(now.date().toString(Qt::ISODate));
}

void TuningStrip::stopAll() {
    for (const Activity& activity : m_activities) {
        if (activity.isRunning())
            activity.stop();
    }
    Refresh();
}

QSize TuningStrip::minimumSizeHint() const {
    const QSize tuning = m_tuning->minimumSizeHint();
    const QSize readings = m_readings->minimumSizeHint();
    const bool inOneRow = m_layout->direction() == QBoxLayout::LeftToRight;
    return {std::max(tuning.width(), m_readings->minimumSizeHint().width()),
            inOneRow ? std::max(tuning.height(), readings.height())
                     : tuning.height() + m_layout->spacing() + readings.height()};
}

void TuningStrip::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    const int needed =
        m_tuning->minimumSizeHint().width() + m_readings->minimumSizeHint().width() + RunningWidth;
    m_layout->setDirection(width() >= needed ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    updateGeometry();
}
