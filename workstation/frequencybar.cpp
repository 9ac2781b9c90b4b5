#include "workstation/frequencybar.h"

#include "host/base/frequencytext.h"
#include "host/freqlist/freqstore.h"

#include <QElapsedTimer>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include <cmath>
#include <cstring>

namespace {

constexpr double LowestFrequency = 9e3; // Hz, the lower end of the radio spectrum
constexpr double HighestFrequency = 30e9;
constexpr double NarrowestRatio = 1.0001;
constexpr int LabelWidth = 130;
constexpr int LineHeight = 26;
constexpr int AxisHeight = 24;
constexpr int Margin = 8;
constexpr int BandHeight = 4;  ///< of the strip above the axis
constexpr int BandShade = 70;  ///< opacity behind the lines, of 255
constexpr int CatchPixels = 4; ///< how far from a mark a click still means it
constexpr int RefreshMilliseconds = 60;
constexpr int IdlePerRefresh = 10; ///< times as long as the refresh took

/// From the most urgent target to the least; other types take the accent colour.
constexpr char UrgencyLetters[] = "ponmlkjihg";
constexpr QRgb UrgencyColors[] = {0xffc62828, 0xffd84315, 0xffef6c00, 0xfff9a825, 0xff9e9d24,
                                  0xff558b2f, 0xff2e7d32, 0xff00838f, 0xff1565c0, 0xff607d8b};

const QColor BandColor(0xff, 0xa0, 0x00);

QColor colorOf(char type, const QPalette& palette) {
    const char* place = type ? std::strchr(UrgencyLetters, type) : nullptr;
    return place ? QColor(UrgencyColors[place - UrgencyLetters]) : palette.color(QPalette::Highlight);
}

} // namespace

FrequencyBar::FrequencyBar(QWidget* parent) : QWidget(parent), m_from(100e3), m_to(1e9) {
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    m_refresh.setSingleShot(true);
    m_refresh.setInterval(RefreshMilliseconds);
    connect(&m_refresh, &QTimer::timeout, this, &FrequencyBar::computeLines);
}

FrequencyBar::~FrequencyBar() = default;

QSize FrequencyBar::sizeHint() const {
    const int rows = std::max<int>(static_cast<int>(m_lines.size()), 1);
    return {600, rows * LineHeight + AxisHeight + Margin};
}

int FrequencyBar::barWidth() const {
    return std::max(width() - LabelWidth - Margin, 1);
}

int FrequencyBar::lineTop(int row) const {
    return Margin / 2 + row * LineHeight;
}

double FrequencyBar::MapToPixel(double hertz) const {
    return hertz > 0 ? std::log(hertz / m_from) / std::log(m_to / m_from) * barWidth()
                     : -std::numeric_limits<double>::infinity();
}

double FrequencyBar::MapToFrequency(double pixel) const {
    return m_from * std::pow(m_to / m_from, pixel / barWidth());
}

void FrequencyBar::AddList(int listId) {
    IFrequencyListDefinition* definition = FreqStore::Instance().GetDefinition(listId);
    std::unique_ptr<PixStateVector> pixels(definition ? definition->CreatePixStateVector() : nullptr);
    if (!pixels)
        return;
    pixels->SetListId(listId);
    pixels->OnDirty = [this] { m_refresh.start(); };
    m_lines[listId] = {definition->GetName(), std::move(pixels)};
    mapLines();
    updateGeometry();
}

void FrequencyBar::RemoveList(int listId) {
    m_lines.erase(listId);
    updateGeometry();
    update();
}

void FrequencyBar::mapLines() {
    for (auto& [id, line] : m_lines)
        line.pixels->SetHMapping(this, barWidth());
    mapBands();
    m_mapped = true;
    update();
}

/// Brings the lines up to date, in a turn of the event loop of its own: painting them is another one, since
/// long lists take a while.
void FrequencyBar::computeLines() {
    QElapsedTimer timer;
    timer.start();
    for (auto& [id, line] : m_lines)
        line.pixels->Refresh();
    m_mapped = false;
    // Lines of very many entries are computed less often: most of the time is left to the rest.
    m_refresh.setInterval(std::max(RefreshMilliseconds, IdlePerRefresh * static_cast<int>(timer.elapsed())));
    update();
}

void FrequencyBar::SetBands(const NoiBands& bands) {
    m_bands = &bands;
    connect(&bands, &NoiBands::Changed, this, [this] {
        mapBands();
        m_refresh.start();
    });
    mapBands();
}

/// Asks for each pixel whether a band touches it, so that a million bands cost what one does.
void FrequencyBar::mapBands() {
    m_shades.clear();
    if (!m_bands)
        return;
    double left = MapToFrequency(0);
    for (int pixel = 0; pixel < barWidth(); ++pixel) {
        const double right = MapToFrequency(pixel + 1);
        if (NoiBands::FirstWithin(m_bands->GetBands(), left, right)) {
            if (m_shades.empty() || m_shades.back().last < pixel - 1)
                m_shades.push_back({pixel, pixel});
            else
                m_shades.back().last = pixel;
        }
        left = right;
    }
}

/// A band of one pixel gets one more on either side, so that no other mark covers it.
void FrequencyBar::paintBands(QPainter& painter, int top, int height, const QColor& color) const {
    for (const Shade& shade : m_shades) {
        const int more = shade.first == shade.last ? 1 : 0;
        painter.fillRect(LabelWidth + shade.first - more, top, shade.last - shade.first + 1 + 2 * more,
                         height, color);
    }
}

/// The band under a pixel, for tool tips; empty when there is none.
QString FrequencyBar::bandText(int x) const {
    const NoiBands::Band* band =
        m_bands ? NoiBands::FirstWithin(m_bands->GetBands(), MapToFrequency(x - CatchPixels),
                                        MapToFrequency(x + CatchPixels))
                : nullptr;
    return band ? tr("Band of interest: %1 to %2")
                      .arg(Quor::FrequencyText(band->from), Quor::FrequencyText(band->to))
                : QString();
}

void FrequencyBar::SetRange(double fromHertz, double toHertz) {
    const double from = std::clamp(fromHertz, LowestFrequency, HighestFrequency);
    const double to = std::clamp(toHertz, LowestFrequency, HighestFrequency);
    if (!(to / from >= NarrowestRatio))
        return;
    m_from = from;
    m_to = to;
    mapLines();
}

void FrequencyBar::FitAll() {
    m_from = LowestFrequency;
    m_to = HighestFrequency;
    mapLines();
    double lowest = 0;
    double highest = 0;
    for (auto& [id, line] : m_lines) {
        line.pixels->Refresh();
        for (size_t pixel = 0; pixel < line.pixels->size(); ++pixel) {
            const PixState& state = (*line.pixels)[pixel];
            if ((state.flags & PixState::Centre) == 0)
                continue;
            const double hertz = MapToFrequency(static_cast<double>(pixel));
            lowest = lowest > 0 ? std::min(lowest, hertz) : hertz;
            highest = std::max(highest, hertz);
        }
    }
    if (lowest > 0)
        SetRange(lowest / 1.2, highest * 1.2);
}

void FrequencyBar::SetTuned(double hertz) {
    m_tuned = hertz;
    update();
}

/// Round frequencies across the range: 1-2-5 steps per decade while it is wide, even steps when it is narrow.
std::vector<double> FrequencyBar::ticks() const {
    std::vector<double> result;
    const double ratio = m_to / m_from;
    if (ratio > 8) {
        for (double decade = std::pow(10, std::floor(std::log10(m_from))); decade <= m_to; decade *= 10) {
            for (const double step : {1.0, 2.0, 5.0})
                result.push_back(decade * step);
        }
        return result;
    }
    const double rough = (m_to - m_from) / std::max(barWidth() / 110.0, 1.0);
    const double power = std::pow(10, std::floor(std::log10(rough)));
    const double step = power * (rough / power > 5 ? 10 : rough / power > 2 ? 5 : rough / power > 1 ? 2 : 1);
    for (double tick = std::ceil(m_from / step) * step; tick <= m_to; tick += step)
        result.push_back(tick);
    return result;
}

void FrequencyBar::paintAxis(QPainter& painter) const {
    const int top = lineTop(std::max<int>(static_cast<int>(m_lines.size()), 1));
    const QFontMetrics metrics(font());
    paintBands(painter, top - BandHeight, BandHeight, BandColor);
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawLine(LabelWidth, top, LabelWidth + barWidth(), top);
    int free = LabelWidth;
    for (const double tick : ticks()) {
        const double position = MapToPixel(tick);
        if (position < 0 || position > barWidth())
            continue;
        const int x = LabelWidth + static_cast<int>(position);
        painter.setPen(palette().color(QPalette::Mid));
        painter.drawLine(x, Margin / 2, x, top + 4);
        const QString text = Quor::ShortFrequencyText(tick);
        const int half = metrics.horizontalAdvance(text) / 2;
        if (x - half < free || x + half > width())
            continue;
        painter.setPen(palette().color(QPalette::WindowText));
        painter.drawText(x - half, top + 6 + metrics.ascent(), text);
        free = x + half + metrics.averageCharWidth();
    }
}

void FrequencyBar::paintLine(QPainter& painter, const Line& line, int top) const {
    painter.setPen(palette().color(QPalette::WindowText));
    const QRect label(Margin, top, LabelWidth - 2 * Margin, LineHeight - 2);
    painter.drawText(label, Qt::AlignLeft | Qt::AlignVCenter,
                     QFontMetrics(font()).elidedText(line.name, Qt::ElideRight, label.width()));
    const int height = LineHeight - 4;
    painter.fillRect(LabelWidth, top, barWidth(), height, palette().color(QPalette::Base));
    QColor shade = BandColor;
    shade.setAlpha(BandShade);
    paintBands(painter, top, height, shade);
    for (size_t pixel = 0; pixel < line.pixels->size(); ++pixel) {
        const PixState& state = (*line.pixels)[pixel];
        if (state.IsEmpty())
            continue;
        QColor color = colorOf(state.type, palette());
        const int x = LabelWidth + static_cast<int>(pixel);
        if ((state.flags & PixState::Bandwidth) != 0) {
            QColor tint = color;
            tint.setAlpha(70);
            painter.fillRect(x, top, 1, height, tint);
        }
        if ((state.flags & PixState::Centre) != 0) {
            // The more entries share the pixel, the taller the mark.
            const double share = std::min(1.0, 0.5 + 0.15 * std::log2(1.0 + state.count));
            const int mark = static_cast<int>(height * share);
            painter.fillRect(x, top + height - mark, 2, mark, color);
        }
        if ((state.flags & PixState::Focus) != 0) {
            painter.fillRect(x - 1, top, 4, height, palette().color(QPalette::WindowText));
            painter.fillRect(x, top + 1, 2, height - 2, palette().color(QPalette::Highlight));
        }
    }
}

void FrequencyBar::paintEvent(QPaintEvent*) {
    if (m_mapped)
        computeLines();
    QPainter painter(this);
    int row = 0;
    for (auto& [id, line] : m_lines)
        paintLine(painter, line, lineTop(row++));
    paintAxis(painter);
    const double tuned = MapToPixel(m_tuned);
    if (tuned >= 0 && tuned <= barWidth()) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
        const int x = LabelWidth + static_cast<int>(tuned);
        painter.drawLine(x, 0, x, lineTop(std::max(row, 1)));
    }
}

void FrequencyBar::resizeEvent(QResizeEvent*) {
    mapLines();
}

void FrequencyBar::wheelEvent(QWheelEvent* event) {
    const double factor = std::pow(0.8, event->angleDelta().y() / 120.0);
    const double centre = MapToFrequency(event->position().x() - LabelWidth);
    SetRange(centre * std::pow(m_from / centre, factor), centre * std::pow(m_to / centre, factor));
    event->accept();
}

void FrequencyBar::mousePressEvent(QMouseEvent* event) {
    m_pressed = event->pos();
    m_pressedFrom = m_from;
    m_pressedTo = m_to;
    m_dragging = false;
}

void FrequencyBar::mouseMoveEvent(QMouseEvent* event) {
    if ((event->buttons() & Qt::LeftButton) == 0)
        return;
    const int moved = event->pos().x() - m_pressed.x();
    m_dragging = m_dragging || std::abs(moved) > CatchPixels;
    if (!m_dragging)
        return;
    const double shift = std::pow(m_pressedTo / m_pressedFrom, -static_cast<double>(moved) / barWidth());
    if (m_pressedFrom * shift >= LowestFrequency && m_pressedTo * shift <= HighestFrequency)
        SetRange(m_pressedFrom * shift, m_pressedTo * shift);
}

void FrequencyBar::mouseReleaseEvent(QMouseEvent* event) {
    if (m_dragging || event->button() != Qt::LeftButton || event->pos().x() < LabelWidth)
        return;
    const Hit hit = hitTest(event->pos());
    emit Clicked(hit.listId ? hit.hertz : MapToFrequency(event->pos().x() - LabelWidth), hit.listId);
}

void FrequencyBar::mouseDoubleClickEvent(QMouseEvent*) {
    FitAll();
}

FrequencyBar::Hit FrequencyBar::hitTest(const QPoint& position) const {
    Hit hit;
    int row = 0;
    for (const auto& [id, line] : m_lines) {
        const int top = lineTop(row++);
        if (position.y() < top || position.y() >= top + LineHeight)
            continue;
        const int wanted = position.x() - LabelWidth;
        for (int distance = 0; distance <= CatchPixels; ++distance) {
            for (const int pixel : {wanted - distance, wanted + distance}) {
                if (pixel < 0 || static_cast<size_t>(pixel) >= line.pixels->size())
                    continue;
                const PixState& state = (*line.pixels)[static_cast<size_t>(pixel)];
                if (state.count == 0)
                    continue;
                hit.listId = id;
                hit.hertz = line.pixels->ItemFrequency(state.lastItem);
                hit.text = Quor::FrequencyText(hit.hertz) + QLatin1Char('\n') +
                           line.pixels->ItemText(state.lastItem);
                if (state.count > 1)
                    hit.text += QLatin1Char('\n') + tr("and %1 more here").arg(state.count - 1);
                return hit;
            }
        }
    }
    return hit;
}

bool FrequencyBar::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const int x = help->pos().x() - LabelWidth;
    if (x < 0)
        return true;
    const Hit hit = hitTest(help->pos());
    QStringList lines{hit.listId ? hit.text : Quor::FrequencyText(MapToFrequency(x))};
    if (const QString band = bandText(x); !band.isEmpty())
        lines << band;
    QToolTip::showText(help->globalPos(), lines.join(QLatin1Char('\n')), this);
    return true;
}
