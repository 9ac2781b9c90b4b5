#pragma once

#include <QColor>
#include <QString>

#include <vector>

/// Who uses which part of the spectrum in one of the three regions of the radio regulations: a table that
/// comes with the program.
class BandPlan {
public:
    static constexpr int RegionCount = 3;

    struct Band {
        double from; ///< Hz
        double to;   ///< Hz, above `from`
        QString name;
        QString service; ///< one of `Services()`
    };

    /// The plan of a region (1 to 3). What is wrong in its table is told as a problem and left out.
    static BandPlan OfRegion(int region);
    /// Reads lines "from;to;name;service", frequencies in Hz, from low to high without overlap; `file` stands
    /// for the text in problems. Empty lines and those that begin with # are passed over.
    static BandPlan Read(const QString& text, const QString& file);

    /// Names of the services, in the order of a legend, and the colour of one, for the present palette.
    static QStringList Services();
    static QColor ColorOf(const QString& service);
    static QString RegionName(int region);

    const std::vector<Band>& Bands() const { return m_bands; }
    /// The bands that have a frequency from `from` to `to` (Hz) in them.
    std::vector<Band> Within(double from, double to) const;

private:
    std::vector<Band> m_bands; ///< from low to high
};
