#pragma once

#include <QString>

#include <functional>
#include <map>
#include <vector>

class PixStateVector;
class QFontMetrics;

/// Room along a row: who comes first gets it.
class LabelRow {
public:
    /// Takes the pixels from `from` up to `to`; false when one of them has been taken before.
    bool Take(int from, int to);

private:
    std::map<int, int> m_taken; ///< ends by begins
};

/// The name of a mark, or of the last one of several that stand close together, to the right of it.
struct BarLabel {
    int left; ///< pixel of the line
    int width;
    QString text; ///< as it fits
};

/// Labels for the marks of a line, as many as there is room for: none covers a mark or another label. Marks
/// that are too close for a label each share one, which tells how many more there are.
std::vector<BarLabel> LabelsOf(const PixStateVector& line, const QFontMetrics& metrics);
