#pragma once

#include "host/valuetree/valueptr.h"

#include <QObject>

#include <vector>

/// The bands of the frequencies of interest as the list's owner publishes them: a text value of the tree,
/// "lower,upper;" for each entry. It makes that value, follows it, and keeps its bands ready for whoever
/// draws or honours them.
class NoiBands : public QObject, private IObserver {
    Q_OBJECT

public:
    struct Band {
        double from; ///< Hz
        double to;   ///< Hz, not below `from`
        bool operator==(const Band&) const = default;
    };

    explicit NoiBands(QObject* parent = nullptr);

    /// The text as it was published.
    QString GetDefinition() const;
    /// Number of bands in the text.
    size_t GetCount() const { return m_count; }
    /// The bands from low to high; those that touch or overlap are one.
    const std::vector<Band>& GetBands() const { return m_bands; }

    /// The bands of a text, in its order. What is no band is left out.
    static std::vector<Band> Parse(QStringView definition);
    /// The bands from low to high, those that touch or overlap joined.
    static std::vector<Band> Join(std::vector<Band> bands);
    /// The lowest of joined bands that has a frequency from `from` to `to` (Hz) in it; null when there is
    /// none.
    static const Band* FirstWithin(const std::vector<Band>& joined, double from, double to);

signals:
    /// The bands are others now.
    void Changed();

private:
    void Update(Observable* subject, TChangeCode code) override;
    void read();

    ValueObservingPtr<ValueBase> m_value;
    std::vector<Band> m_bands;
    size_t m_count = 0;
};
