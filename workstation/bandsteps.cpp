#include "workstation/bandsteps.h"

#include "host/base/frequencytext.h"
#include "receiver/receiver.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

#include <algorithm>

BandSteps::BandSteps(Receiver& receiver, const NoiBands& bands, QWidget* parent)
    : QWidget(parent), m_receiver(receiver), m_bands(bands), m_place(new QLabel(this)) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    m_place->setWordWrap(true);
    m_place->setObjectName(QStringLiteral("BandPlace"));
    layout->addWidget(m_place, 1);
    const auto add = [&](Qt::ArrowType arrow, const QString& tip, void (BandSteps::*slot)()) {
        auto* button = new QToolButton(this);
        button->setArrowType(arrow);
        button->setToolTip(tip);
        button->setAccessibleName(tip);
        connect(button, &QToolButton::clicked, this, slot);
        layout->addWidget(button);
    };
    add(Qt::LeftArrow, tr("Previous NOI band"), &BandSteps::Previous);
    add(Qt::RightArrow, tr("Next NOI band"), &BandSteps::Next);
    connect(&receiver, &Receiver::Tuned, this, &BandSteps::showPlace);
    connect(&bands, &NoiBands::Changed, this, &BandSteps::showPlace);
    showPlace();
}

void BandSteps::showPlace() {
    const double hertz = m_receiver.GetFrequency();
    const NoiBands::Band* band = NoiBands::FirstWithin(m_bands.GetBands(), hertz, hertz);
    m_place->setText(band ? tr("Within NOI band %1 to %2")
                                .arg(Quor::FrequencyText(band->from), Quor::FrequencyText(band->to))
                          : tr("Outside the NOI bands"));
    setVisible(!m_bands.GetBands().empty());
}

double BandSteps::Neighbour(const std::vector<NoiBands::Band>& joined, double hertz, bool above, double from,
                            double to) {
    const auto count = joined.size();
    const auto first =
        static_cast<size_t>(std::partition_point(joined.begin(), joined.end(),
                                                 [&](const NoiBands::Band& band) {
                                                     return above ? band.from <= hertz : band.to < hertz;
                                                 }) -
                            joined.begin());
    // Upwards `first` is the first candidate, downwards the one before it.
    for (size_t i = 0; i < count; ++i) {
        const NoiBands::Band& band = joined[(above ? first + i : first + 2 * count - 1 - i) % count];
        const double middle = (band.from + band.to) / 2;
        if (middle >= from && middle <= to)
            return middle;
    }
    return 0;
}

void BandSteps::step(bool above) {
    const auto* limits = m_receiver.Find<ValueNumeric<double>>(Keys::KeyFrequency);
    const double middle =
        Neighbour(m_bands.GetBands(), m_receiver.GetFrequency(), above, limits->GetMin(), limits->GetMax());
    if (middle > 0)
        m_receiver.Tune(middle);
}
