#include "workstation/timepicture.h"

#include "host/base/frequencytext.h"
#include "host/base/problems.h"
#include "host/gui/colorset.h"
#include "host/gui/guibase.h"
#include "workstation/barlabels.h"
#include "workstation/levelcolors.h"

#include <QActionGroup>
#include <QDateTime>
#include <QFileDialog>
#include <QMenu>
#include <QPainter>
#include <QSaveFile>

#include <cmath>
#include <set>

namespace {

constexpr int RefreshMilliseconds = 150;
constexpr int Margin = 8;
constexpr int TickLength = 5;
constexpr int LegendWidth = 10;
constexpr int LeastSize = 2;      ///< pixels of a mark
constexpr double LeastSpan = 1e6; ///< µs
constexpr double MostSpan = 100 * 365 * 86400e6;
/// Levels of the colours reach at least over this.
constexpr double LeastLevels = 10; // dB
constexpr double PixelsPerTime = 45;
/// Steps of the time axis, in seconds.
constexpr double TimeSteps[] = {1,     2,     5,      10,     15,      30,      60,    120,
                                300,   600,   900,    1800,   3600,    7200,    10800, 21600,
                                43200, 86400, 172800, 604800, 2592000, 31536000};

QColor outline() {
    return ColorSet::Instance().GetColorDefinition(IColorBase::BAR_TUNED).GetColor(true);
}

} // namespace

TimePicture::TimePicture(const QString& detectionsPath, QWidget* parent)
    : QWidget(parent), m_marks(detectionsPath) {
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("Time picture"));
    setAccessibleDescription(tr("Detections over frequency and time, newest on top"));
    m_refresh.setSingleShot(true);
    m_refresh.setInterval(RefreshMilliseconds);
    const auto redraw = [this] {
        m_plot = QImage();
        update();
    };
    connect(&m_refresh, &QTimer::timeout, this, redraw);
    m_marks.OnChanged = [this] {
        if (!m_refresh.isActive())
            m_refresh.start();
    };
}

void TimePicture::SetList(const QString& detectionsPath, SourceOf sourceOf) {
    m_sourceOf = std::move(sourceOf);
    m_shownSource.clear();
    m_marks.SetList(detectionsPath);
}

int TimePicture::leftMargin() const {
    return QFontMetrics(font()).horizontalAdvance(QStringLiteral("00:00:00 ")) + Margin;
}

QRect TimePicture::Plot() const {
    const QFontMetrics metrics(font());
    const int levels = LegendWidth + metrics.horizontalAdvance(QStringLiteral("-000 dB")) + 2 * Margin;
    const int below = metrics.height() + TickLength + 2;
    return {leftMargin(), Margin / 2, std::max(width() - leftMargin() - levels, 1),
            std::max(height() - below - Margin / 2, 1)};
}

void TimePicture::setAxes() {
    const QRect plot = Plot();
    m_frequencies.SetWidth(plot.width());
    m_times.height = plot.height();
    m_plot = QImage();
    update();
}

void TimePicture::SetRange(double fromHertz, double toHertz) {
    m_frequencies.SetRange(fromHertz, toHertz);
    setAxes();
}

void TimePicture::takeRange(const FrequencyAxis& axis) {
    SetRange(axis.From(), axis.To());
    emit RangeChanged(axis.From(), axis.To());
}

void TimePicture::SetTimes(double newest, double span) {
    m_times.newest = newest;
    m_times.span = std::clamp(span, LeastSpan, MostSpan);
    setAxes();
}

void TimePicture::SetFollowing(bool following) {
    m_following = following;
    setAxes();
}

void TimePicture::SetShownSource(const QString& source) {
    m_shownSource = source;
    setAxes();
}

void TimePicture::ShowAllTimes() {
    double oldest = std::numeric_limits<double>::infinity();
    double newest = 0;
    for (const DetectionMark& mark : m_marks.Get()) {
        if (!isShown(mark))
            continue;
        oldest = std::min(oldest, mark.start);
        newest = std::max(newest, mark.stop);
    }
    if (m_waterfall) {
        oldest = std::min(oldest, m_waterfall->Begin());
        newest = std::max(newest, m_waterfall->End());
    }
    if (newest > 0)
        SetTimes(newest, newest - oldest);
}

void TimePicture::SetWaterfall(std::shared_ptr<const Waterfall> waterfall) {
    m_waterfall = std::move(waterfall);
    if (!m_waterfall || m_waterfall->IsEmpty()) {
        m_waterfall = nullptr;
        setAxes();
        return;
    }
    m_following = false;
    SetTimes(m_waterfall->End(), m_waterfall->End() - m_waterfall->Begin());
    FrequencyAxis axis = m_frequencies;
    if (axis.SetRange(m_waterfall->From(), m_waterfall->To()))
        takeRange(axis);
}

bool TimePicture::isShown(const DetectionMark& mark) const {
    return m_shownSource.isEmpty() || !m_sourceOf || m_sourceOf(mark.id) == m_shownSource;
}

void TimePicture::followNewest() {
    const std::vector<DetectionMark>& marks = m_marks.Get();
    if (!m_following || marks.empty())
        return;
    double newest = 0;
    for (const DetectionMark& mark : marks)
        newest = std::max(newest, mark.stop);
    m_times.newest = newest;
}

/// In pixels of the plot.
QRect TimePicture::placeOf(const DetectionMark& mark) const {
    const auto pixel = [](double position) { return static_cast<int>(std::clamp(position, -1e4, 1e5)); };
    const int left = pixel(m_frequencies.MapToPixel(std::max(mark.From(), 1.0)));
    const int right = pixel(m_frequencies.MapToPixel(mark.To()));
    const int top = pixel(m_times.MapToPixel(mark.stop));
    const int bottom = pixel(m_times.MapToPixel(mark.start));
    return {left, top, std::max(right - left, LeastSize), std::max(bottom - top, LeastSize)};
}

/// Marks that are seen are coloured by level; over sweeps, whose colours are levels, too, they are framed.
void TimePicture::paintMarks(QPainter& painter) {
    const QRect plot = m_plot.rect();
    std::vector<std::pair<QRect, short>> seen;
    m_lowest = std::numeric_limits<double>::infinity();
    m_highest = -m_lowest;
    for (const DetectionMark& mark : m_marks.Get()) {
        const QRect place = placeOf(mark);
        if (!place.intersects(plot) || !isShown(mark))
            continue;
        seen.emplace_back(place, mark.level);
        m_lowest = std::min(m_lowest, double(mark.level));
        m_highest = std::max(m_highest, double(mark.level));
    }
    m_highest = std::max(m_highest, m_lowest + LeastLevels);
    painter.setPen(outline());
    for (const auto& [place, level] : seen) {
        if (m_waterfall)
            painter.drawRect(place.adjusted(-1, -1, 0, 0));
        else
            painter.fillRect(place, QColor(LevelColors::ColorOf(level, m_lowest, m_highest)));
    }
}

void TimePicture::render() {
    followNewest();
    m_plot = QImage(Plot().size(), QImage::Format_RGB32);
    m_plot.fill(palette().color(QPalette::Base));
    if (m_waterfall)
        m_waterfall->Draw(m_plot, m_frequencies, m_times);
    QPainter painter(&m_plot);
    paintMarks(painter);
}

void TimePicture::paintTimes(QPainter& painter) const {
    const QRect plot = Plot();
    const double rough = m_times.span / 1e6 / std::max(plot.height() / PixelsPerTime, 1.0);
    const auto* found = std::lower_bound(std::begin(TimeSteps), std::end(TimeSteps), rough);
    const double step = (found == std::end(TimeSteps) ? *std::prev(found) : *found) * 1e6;
    const QString format = step < 86400e6 ? QStringLiteral("HH:mm:ss") : QStringLiteral("yyyy-MM-dd");
    const QFontMetrics metrics(font());
    for (double time = std::floor(m_times.newest / step) * step; time >= m_times.MapToTime(m_times.height);
         time -= step) {
        const int y = plot.top() + static_cast<int>(m_times.MapToPixel(time));
        painter.drawLine(plot.left() - TickLength, y, plot.left() - 1, y);
        const QRect text(0, y - metrics.height() / 2, plot.left() - TickLength - 2, metrics.height());
        if (text.top() >= 0 && text.bottom() <= plot.bottom() + metrics.height() / 2)
            painter.drawText(
                text, Qt::AlignRight | Qt::AlignVCenter,
                QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(time / 1000)).toString(format));
    }
}

void TimePicture::paintFrequencies(QPainter& painter) const {
    const QRect plot = Plot();
    const QFontMetrics metrics(font());
    LabelRow row;
    for (const FrequencyAxis::Tick& tick : m_frequencies.Ticks()) {
        const int x = plot.left() + static_cast<int>(m_frequencies.MapToPixel(tick.hertz));
        painter.drawLine(x, plot.bottom() + 1, x,
                         plot.bottom() + (tick.isMajor ? TickLength : TickLength / 2));
        const QString text = Quor::ShortFrequencyText(tick.hertz);
        const int width = metrics.horizontalAdvance(text);
        if (tick.isMajor && row.Take(x - width / 2 - Margin, x + width / 2))
            painter.drawText(x - width / 2, plot.bottom() + TickLength + metrics.ascent(), text);
    }
}

/// Colours from the highest level down to the lowest, with these levels.
void TimePicture::paintLegend(QPainter& painter) const {
    const double lowest = m_waterfall ? m_waterfall->LowestLevel() : m_lowest;
    const double highest = m_waterfall ? m_waterfall->HighestLevel() : m_highest;
    if (!std::isfinite(lowest) || !std::isfinite(highest))
        return;
    const QRect plot = Plot();
    const int left = plot.right() + Margin;
    for (int y = 0; y < plot.height(); ++y)
        painter.fillRect(left, plot.top() + y, LegendWidth, 1,
                         QColor(LevelColors::ColorOf(plot.height() - y, 0, plot.height())));
    const QRect texts(left + LegendWidth + 3, plot.top(), width() - left - LegendWidth - 3, plot.height());
    painter.drawText(texts, Qt::AlignLeft | Qt::AlignTop, tr("%1 dB").arg(std::round(highest)));
    painter.drawText(texts, Qt::AlignLeft | Qt::AlignBottom, tr("%1 dB").arg(std::round(lowest)));
}

void TimePicture::paintEvent(QPaintEvent*) {
    if (m_plot.isNull())
        render();
    QPainter painter(this);
    const QRect plot = Plot();
    painter.drawImage(plot.topLeft(), m_plot);
    painter.setPen(palette().color(QPalette::WindowText));
    paintTimes(painter);
    paintFrequencies(painter);
    paintLegend(painter);
    painter.setPen(palette().color(hasFocus() ? QPalette::Highlight : QPalette::Mid));
    painter.drawRect(plot.adjusted(-1, -1, 0, 0));
}

void TimePicture::resizeEvent(QResizeEvent*) {
    setAxes();
}

void TimePicture::changeEvent(QEvent* event) {
    setAxes();
    QWidget::changeEvent(event);
}

bool TimePicture::SavePicture(const QString& file) {
    QSaveFile device(file);
    const bool isSaved =
        device.open(QIODevice::WriteOnly) && grab().toImage().save(&device, "PNG") && device.commit();
    if (!isSaved)
        Problems::Report("timepicture", {file, 0, device.errorString()});
    return isSaved;
}

void TimePicture::askAndSave() {
    QString file =
        QFileDialog::getSaveFileName(this, tr("Save Picture As"), GuiBase::Instance().GetCurrentDirectory(),
                                     tr("Pictures (*.png)"), nullptr, GuiBase::Instance().UseNativeDialogs());
    if (file.isEmpty())
        return;
    if (!file.endsWith(QLatin1String(".png"), Qt::CaseInsensitive))
        file += QStringLiteral(".png");
    SavePicture(file);
}

void TimePicture::addSourcesTo(QMenu& menu) {
    if (!m_sourceOf)
        return;
    std::set<QString> sources;
    for (const DetectionMark& mark : m_marks.Get())
        sources.insert(m_sourceOf(mark.id));
    sources.insert(QString()); // all of them
    QMenu* choices = menu.addMenu(tr("Detections &shown"));
    auto* group = new QActionGroup(choices);
    for (const QString& source : sources) {
        QAction* action = group->addAction(source.isEmpty() ? tr("All") : tr("Of %1").arg(source));
        action->setCheckable(true);
        action->setChecked(source == m_shownSource);
        connect(action, &QAction::triggered, this, [this, source] { SetShownSource(source); });
    }
    choices->addActions(group->actions());
}

void TimePicture::AddActionsTo(QMenu& menu) {
    QAction* follow = menu.addAction(tr("&Follow the newest"));
    follow->setCheckable(true);
    follow->setChecked(m_following);
    connect(follow, &QAction::toggled, this, &TimePicture::SetFollowing);
    connect(menu.addAction(tr("Show &everything")), &QAction::triggered, this, [this] {
        ShowAllTimes();
        emit EverythingWanted();
    });
    QAction* sweeps = menu.addAction(tr("&Take the sweeps away"));
    sweeps->setEnabled(m_waterfall != nullptr);
    connect(sweeps, &QAction::triggered, this, [this] { SetWaterfall(nullptr); });
    addSourcesTo(menu);
    menu.addSeparator();
    connect(menu.addAction(tr("&Save as PNG...")), &QAction::triggered, this, &TimePicture::askAndSave);
}
