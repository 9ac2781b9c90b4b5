#include "workstation/barlabels.h"

#include "host/base/frequencytext.h"
#include "host/freqlist/pixstatevector.h"

#include <QCoreApplication>
#include <QFontMetrics>

namespace {

constexpr int LeastWidth = 44; ///< pixels; a label with less room says nothing
constexpr int MostWidth = 180;
constexpr int MarkWidth = 2;
constexpr int Gap = 3;

QString nameOf(const PixStateVector& line, quint32 item) {
    const QString text = line.ItemText(item).simplified();
    bool isNumber = false; // which says nothing by itself
    text.toUInt(&isNumber);
    return text.isEmpty() || isNumber ? Quor::ShortFrequencyText(line.ItemFrequency(item)) : text;
}

/// The name gives way to the number of the others.
QString textOf(const QString& name, quint32 others, const QFontMetrics& metrics, int room) {
    if (others == 0)
        return metrics.elidedText(name, Qt::ElideRight, room);
    const QString more = QCoreApplication::translate("FrequencyBar", "+%1 more").arg(others);
    const int left = room - metrics.horizontalAdvance(QLatin1Char(' ') + more);
    if (left >= LeastWidth)
        return metrics.elidedText(name, Qt::ElideRight, left) + QLatin1Char(' ') + more;
    return metrics.horizontalAdvance(more) <= room ? more : QString();
}

} // namespace

bool LabelRow::Take(int from, int to) {
    const auto next = m_taken.lower_bound(from);
    if (next != m_taken.end() && next->first < to)
        return false;
    if (next != m_taken.begin() && std::prev(next)->second > from)
        return false;
    m_taken[from] = to;
    return true;
}

std::vector<BarLabel> LabelsOf(const PixStateVector& line, const QFontMetrics& metrics) {
    std::vector<BarLabel> labels;
    const int width = static_cast<int>(line.size());
    int last = -1; // mark that gives the name, since the label stands beside it
    quint32 count = 0;
    const auto close = [&](int end) {
        const int left = last + MarkWidth + Gap;
        const int room = std::min(end - Gap - left, MostWidth);
        if (last < 0 || room < LeastWidth)
            return;
        const QString name = nameOf(line, line[static_cast<size_t>(last)].lastItem);
        const QString text = textOf(name, count - 1, metrics, room);
        if (!text.isEmpty())
            labels.push_back({left, std::min(metrics.horizontalAdvance(text), room), text});
    };
    for (int pixel = 0; pixel < width; ++pixel) {
        const PixState& state = line[static_cast<size_t>(pixel)];
        if (state.count == 0)
            continue;
        if (last >= 0 && pixel - last > LeastWidth + MarkWidth + 2 * Gap) {
            close(pixel);
            count = 0;
        }
        last = pixel;
        count += state.count;
    }
    close(width);
    return labels;
}
