#pragma once

#include "host/valuetree/value.h"
#include "host/valuetree/valueptr.h"

#include <QTimer>
#include <QWidget>

#include <functional>
#include <vector>

class FrequencyField;
class LevelMeter;
class QBoxLayout;
class QComboBox;
class QLabel;
class QToolButton;
class Receiver;

/// Something that runs for longer, such as a search, as the strip shows it.
struct Activity {
    QString name;
    std::function<bool()> isRunning;
    std::function<QString()> found; ///< how many of what so far
    std::function<void()> stop;
};

/// The strip above all lists: what the receiver is tuned to, with steps up and down, its mode, bandwidth and
/// level, what runs, and the time. In a narrow window it takes two rows.
class TuningStrip : public QWidget, private IObserver {
    Q_OBJECT

public:
    /// The receiver is not owned and outlives the strip.
    explicit TuningStrip(Receiver& receiver, QWidget* parent = nullptr);

    /// The field of the frequency.
    FrequencyField* GetField() const { return m_frequency; }
    void AddActivity(Activity activity);
    /// Shows anew what runs, and the time.
    void Refresh();
    /// Tunes that many steps up, or down when negative.
    void Step(int steps);
    /// Hz.
    double GetStep() const;
    void SetStep(double hertz);

    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void Update(Observable* subject, TChangeCode code) override;
    QWidget* makeTuning(Receiver& receiver);
    void connectField();
    QWidget* makeReadings(Receiver& receiver);
    QToolButton* addStep(Qt::ArrowType arrow, const QString& name, int steps);
    void fillSteps();
    void showLevel();
    void stopAll();

    Receiver& m_receiver;
    ValueObservingPtr<ValueNumeric<double>> m_level{this};
    FrequencyField* m_frequency;
    QComboBox* m_step;
    LevelMeter* m_meter = nullptr;
    QLabel* m_number;
    QLabel* m_running;
    QToolButton* m_stop;
    QLabel* m_time;
    QWidget* m_tuning;
    QWidget* m_readings;
    QBoxLayout* m_layout;
    std::vector<Activity> m_activities;
    QTimer m_tick;
};
