#pragma once

#include "workstation/noibands.h"

#include <QWidget>

class QLabel;
class Receiver;

/// Tells in which band of interest the receiver is, and steps it to the next or previous one. Hidden while
/// there are no bands. Receiver and bands outlive it.
class BandSteps : public QWidget {
    Q_OBJECT

public:
    BandSteps(Receiver& receiver, const NoiBands& bands, QWidget* parent = nullptr);

    /// The middle (Hz) of the nearest band above the frequency, or below it, that lies from `from` to `to`;
    /// behind the last band comes the first again. 0 when there is none. A band that has the frequency in it
    /// is taken only when it is the only one.
    static double Neighbour(const std::vector<NoiBands::Band>& joined, double hertz, bool above, double from,
                            double to);

public slots:
    void Next() { step(true); }
    void Previous() { step(false); }

private:
    void step(bool above);
    void showPlace();

    Receiver& m_receiver;
    const NoiBands& m_bands;
    QLabel* m_place;
};
