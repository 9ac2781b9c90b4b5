#pragma once

#include "sweep/sweep.h"
#include "workstation/frequencyaxis.h"

#include <QImage>

#include <optional>
#include <vector>

/// Range of time in a picture: what lies on which row of pixels. Newest on top. Microseconds since 1970-01-01
/// UTC.
struct TimeAxis {
    double newest = 0;
    double span = 600e6;
    int height = 1;

    double MapToPixel(double time) const { return (newest - time) / span * height; }
    double MapToTime(double pixel) const { return newest - pixel / height * span; }
};

/// The levels of power sweeps over frequency and time, kept as an image that is also there at each half of
/// its width and of its height, so that any part of it is drawn from about as many cells as there are pixels.
/// Each cell of a smaller image is the highest of those that it stands for: a short or narrow signal stays
/// visible. Levels are kept in steps of less than 1 dB.
class Waterfall {
public:
    /// Cells are kept up to this number; of longer recordings, neighbouring sweeps share a row.
    static constexpr size_t MostCells = 16'000'000;

    /// Adds a sweep that is not older than those before. The first one tells range and width of the bins.
    void Add(const Sweep& sweep);
    /// Makes the smaller images; to be called when the last sweep has been added.
    void Finish();

    bool IsEmpty() const { return m_times.empty(); }
    size_t RowCount() const { return m_times.size(); }
    size_t BinCount() const { return m_bins; }
    double From() const { return m_low; } ///< Hz
    double To() const { return m_low + m_step * static_cast<double>(m_bins); }
    double Begin() const { return m_times.empty() ? 0 : static_cast<double>(m_times.front()); }
    double End() const;
    /// Levels (dB) of the lowest and of the highest colour: nearly all cells lie between them.
    double LowestLevel() const { return m_lowest; }
    double HighestLevel() const { return m_highest; }
    /// The level at a frequency (Hz) and time, as it is kept; nothing where there is none.
    std::optional<double> LevelAt(double hertz, double time) const;

    /// Draws what lies within the axes into a picture of their size, which has the format RGB32. Pixels
    /// without a level stay as they are.
    void Draw(QImage& picture, const FrequencyAxis& frequencies, const TimeAxis& times) const;

private:
    /// Cells by row, from the oldest; 0 stands for no level.
    struct Layer {
        size_t width = 0;
        size_t height = 0;
        std::vector<uchar> cells;
    };
    /// Cells from the first up to the last of a layer that a pixel shows.
    struct Part {
        size_t layer = 0;
        size_t first = 0;
        size_t end = 0; ///< `first` when there are none
    };

    static Part partOf(double from, double to, size_t count, size_t layers);
    static Layer halved(const Layer& layer, bool inWidth);
    std::vector<Part> columnsOf(const FrequencyAxis& axis) const;
    std::vector<Part> rowsOf(const TimeAxis& axis) const;
    double rowAt(double time) const;
    void shareRows();
    void findLevels();

    double m_low = 0;  ///< Hz
    double m_step = 0; ///< Hz
    size_t m_bins = 0;
    size_t m_sweepsPerRow = 1;
    size_t m_sweepsInRow = 0;                 ///< of the last one
    std::vector<qint64> m_times;              ///< of the rows
    qint64 m_lastTime = 0;                    ///< of the last sweep
    std::vector<std::vector<Layer>> m_layers; ///< by halvings of the width, then of the height
    double m_lowest = 0;
    double m_highest = 1;
};
