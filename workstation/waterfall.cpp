#include "workstation/waterfall.h"

#include "workstation/levelcolors.h"

#include <array>
#include <cmath>

namespace {

/// Levels are kept as bytes from 1.
constexpr double LowestKept = -180; // dB
constexpr double StepKept = 0.9;    // dB
/// Shares of the cells that lie below the lowest and above the highest colour.
constexpr double ShareBelow = 0.05;
constexpr double ShareAbove = 0.0005;
constexpr double LeastRange = 10; // dB

uchar keptOf(float level) {
    if (!std::isfinite(level))
        return 0;
    return static_cast<uchar>(std::clamp(std::lround((level - LowestKept) / StepKept) + 1, 1L, 255L));
}

double levelOf(int kept) {
    return LowestKept + (kept - 1) * StepKept;
}

} // namespace

void Waterfall::Add(const Sweep& sweep) {
    if (sweep.hops.empty())
        return;
    if (m_layers.empty()) {
        m_low = sweep.hops.front().low;
        m_step = sweep.hops.front().step;
        m_bins = static_cast<size_t>(std::max(std::lround((sweep.hops.back().End() - m_low) / m_step), 1L));
        m_layers.push_back({Layer{m_bins, 0, {}}});
    }
    m_layers.resize(1); // smaller images are out of date
    m_layers[0].resize(1);
    Layer& layer = m_layers[0][0];
    if (layer.cells.size() + m_bins > MostCells && m_times.size() > 1 && m_sweepsInRow == m_sweepsPerRow)
        shareRows();
    if (m_times.empty() || m_sweepsInRow == m_sweepsPerRow) {
        layer.cells.resize(layer.cells.size() + m_bins);
        ++layer.height;
        m_times.push_back(sweep.time);
        m_sweepsInRow = 0;
    }
    ++m_sweepsInRow;
    m_lastTime = sweep.time;
    uchar* row = layer.cells.data() + (layer.height - 1) * m_bins;
    for (const SweepHop& hop : sweep.hops) {
        for (size_t bin = 0; bin < hop.count; ++bin) {
            const double place = (hop.BinStart(bin) + hop.step / 2 - m_low) / m_step;
            if (place < 0 || place >= static_cast<double>(m_bins))
                continue;
            uchar& cell = row[static_cast<size_t>(place)];
            cell = std::max(cell, keptOf(sweep.levels[hop.first + bin]));
        }
    }
}

/// Two rows each become one.
void Waterfall::shareRows() {
    Layer& layer = m_layers[0][0];
    layer = halved(layer, false);
    for (size_t row = 0; row < layer.height; ++row)
        m_times[row] = m_times[2 * row];
    m_sweepsInRow = m_times.size() % 2 == 0 ? 2 * m_sweepsPerRow : m_sweepsPerRow;
    m_times.resize(layer.height);
    m_sweepsPerRow *= 2;
}

Waterfall::Layer Waterfall::halved(const Layer& layer, bool inWidth) {
    Layer half;
    half.width = inWidth ? (layer.width + 1) / 2 : layer.width;
    half.height = inWidth ? layer.height : (layer.height + 1) / 2;
    half.cells.resize(half.width * half.height);
    for (size_t y = 0; y < layer.height; ++y) {
        const uchar* from = layer.cells.data() + y * layer.width;
        uchar* to = half.cells.data() + (inWidth ? y : y / 2) * half.width;
        for (size_t x = 0; x < layer.width; ++x) {
            uchar& cell = to[inWidth ? x / 2 : x];
            cell = std::max(cell, from[x]);
        }
    }
    return half;
}

void Waterfall::Finish() {
    if (IsEmpty())
        return;
    findLevels();
    m_layers.resize(1);
    while (m_layers.back()[0].width > 1)
        m_layers.push_back({halved(m_layers.back()[0], true)});
    for (std::vector<Layer>& layers : m_layers) {
        layers.resize(1);
        while (layers.back().height > 1)
            layers.push_back(halved(layers.back(), false));
    }
}

void Waterfall::findLevels() {
    std::array<size_t, 256> counts{};
    for (const uchar cell : m_layers[0][0].cells)
        ++counts[cell];
    size_t all = 0;
    for (size_t kept = 1; kept < counts.size(); ++kept)
        all += counts[kept];
    const auto levelAbove = [&](double share) {
        auto left = static_cast<size_t>(static_cast<double>(all) * share);
        int kept = 1;
        while (kept < 255 && counts[static_cast<size_t>(kept)] <= left)
            left -= counts[static_cast<size_t>(kept++)];
        return levelOf(kept);
    };
    m_lowest = levelAbove(ShareBelow);
    m_highest = std::max(levelAbove(1 - ShareAbove), m_lowest + LeastRange);
}

double Waterfall::End() const {
    if (m_times.empty())
        return 0;
    const auto last = static_cast<double>(m_lastTime);
    // The last sweep lasts as long as the others did.
    const size_t others = m_times.size() - 1;
    return others == 0 ? last + 1e6 : last + (last - Begin()) / static_cast<double>(others);
}

/// Rows from the oldest, with the part of the row that has passed.
double Waterfall::rowAt(double time) const {
    const auto next = std::upper_bound(m_times.begin(), m_times.end(), time, [](double wanted, qint64 begin) {
        return wanted < static_cast<double>(begin);
    });
    if (next == m_times.begin())
        return -1;
    const auto row = next - m_times.begin() - 1;
    const auto begin = static_cast<double>(*std::prev(next));
    const double end = next == m_times.end() ? End() : static_cast<double>(*next);
    return static_cast<double>(row) + (end > begin ? (time - begin) / (end - begin) : 0.0);
}

std::optional<double> Waterfall::LevelAt(double hertz, double time) const {
    const double bin = (hertz - m_low) / m_step;
    const double row = rowAt(time);
    if (IsEmpty() || bin < 0 || bin >= static_cast<double>(m_bins) || row < 0 || time >= End())
        return std::nullopt;
    const uchar cell = m_layers[0][0].cells[static_cast<size_t>(row) * m_bins + static_cast<size_t>(bin)];
    return cell ? std::optional(levelOf(cell)) : std::nullopt;
}

/// The layer in which a stretch of `count` cells is one or two cells long.
Waterfall::Part Waterfall::partOf(double from, double to, size_t count, size_t layers) {
    Part part;
    const double first = std::max(std::floor(from), 0.0);
    const double end = std::min(std::max(std::ceil(to), first + 1), static_cast<double>(count));
    if (to <= 0 || !(first < end))
        return part;
    size_t length = static_cast<size_t>(end - first);
    while (length > 2 && part.layer + 1 < layers) {
        length /= 2;
        ++part.layer;
    }
    part.first = static_cast<size_t>(first) >> part.layer;
    part.end = ((static_cast<size_t>(end) - 1) >> part.layer) + 1;
    return part;
}

std::vector<Waterfall::Part> Waterfall::columnsOf(const FrequencyAxis& axis) const {
    std::vector<Part> parts;
    parts.reserve(static_cast<size_t>(axis.Width()));
    double from = (axis.MapToFrequency(0) - m_low) / m_step;
    for (int x = 0; x < axis.Width(); ++x) {
        const double to = (axis.MapToFrequency(x + 1) - m_low) / m_step;
        parts.push_back(partOf(from, to, m_bins, m_layers.size()));
        from = to;
    }
    return parts;
}

std::vector<Waterfall::Part> Waterfall::rowsOf(const TimeAxis& axis) const {
    std::vector<Part> parts;
    for (int y = 0; y < axis.height; ++y) {
        const double newest = axis.MapToTime(y);
        const double oldest = axis.MapToTime(y + 1);
        const bool isWithin = newest > Begin() && oldest < End();
        parts.push_back(isWithin ? partOf(rowAt(std::max(oldest, Begin())), rowAt(std::min(newest, End())),
                                          m_times.size(), m_layers[0].size())
                                 : Part());
    }
    return parts;
}

void Waterfall::Draw(QImage& picture, const FrequencyAxis& frequencies, const TimeAxis& times) const {
    if (IsEmpty())
        return;
    std::array<QRgb, 256> colors{};
    for (int kept = 1; kept < 256; ++kept)
        colors[static_cast<size_t>(kept)] = LevelColors::ColorOf(levelOf(kept), m_lowest, m_highest);
    const std::vector<Part> columns = columnsOf(frequencies);
    const std::vector<Part> rows = rowsOf(times);
    const int width = std::min(picture.width(), frequencies.Width());
    for (int y = 0; y < std::min(picture.height(), times.height); ++y) {
        const Part& rowPart = rows[static_cast<size_t>(y)];
        auto* line = reinterpret_cast<QRgb*>(picture.scanLine(y));
        for (int x = 0; x < width; ++x) {
            const Part& column = columns[static_cast<size_t>(x)];
            const Layer& layer = m_layers[column.layer][rowPart.layer];
            uchar level = 0;
            for (size_t row = rowPart.first; row < rowPart.end; ++row) {
                for (size_t bin = column.first; bin < column.end; ++bin)
                    level = std::max(level, layer.cells[row * layer.width + bin]);
            }
            if (level)
                line[x] = colors[level];
        }
    }
}
