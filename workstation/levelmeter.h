#pragma once

#include "host/valuetree/value.h"
#include "host/valuetree/valueptr.h"

#include <QWidget>

/// A bar that shows a level (dBµV) and, as a line across it, the threshold; screen readers read both as
/// numbers. It observes both values and owns neither.
class LevelMeter : public QWidget, private IObserver {
    Q_OBJECT

public:
    LevelMeter(ValueNumeric<double>* level, ValueNumeric<int>* threshold, QWidget* parent);

    /// dBµV; 0 when the value has gone.
    double GetLevel() const;
    double GetLowest() const;
    double GetHighest() const;
    /// Level and threshold in words.
    QString Reading() const;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {sizeHint().width() / 2, sizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void Update(Observable* subject, TChangeCode code) override;
    int pixelOf(double dbMicrovolt) const;

    ValueObservingPtr<ValueNumeric<double>> m_level{this};
    ValueObservingPtr<ValueNumeric<int>> m_threshold{this};
};
