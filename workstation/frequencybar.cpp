#include "workstation/frequencybar.h"

#include "host/base/frequencytext.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencystorelistview.h"
#include "host/gui/listsettings.h"
#include "host/gui/sortlistview.h"
#include "workstation/barcolors.h"
#include "workstation/frequencybaraccess.h"
#include "workstation/frequencybarsizes.h"

#include <QElapsedTimer>
#include <QEvent>

#include <cmath>

using namespace BarSizes;

namespace {

constexpr int RefreshMilliseconds = 60;
constexpr int IdlePerRefresh = 10; ///< times as long as the refresh took
constexpr double RoomAround = 1.2; ///< of the entries when all are shown
constexpr double LeastAround = 1.0005;
const QString LinesKey = QStringLiteral("Bar/Lines");
const QString ShownOnlyKey = QStringLiteral("Bar/ShownOnly"); ///< one of the prefixes
constexpr QChar HiddenPrefix = u'-';
constexpr QChar ShownPrefix = u'+';

} // namespace

FrequencyBar::FrequencyBar(QWidget* parent) : QWidget(parent), m_labelWidth(LeastLabelWidth) {
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    FrequencyBarAccess::Install(); // before a name is set, which asks for the interface
    setAccessibleName(tr("Frequency bar"));
    m_refresh.setSingleShot(true);
    m_refresh.setInterval(RefreshMilliseconds);
    connect(&m_refresh, &QTimer::timeout, this, &FrequencyBar::computeLines);
    m_selections.setSingleShot(true);
    m_selections.setInterval(RefreshMilliseconds);
    connect(&m_selections, &QTimer::timeout, this, &FrequencyBar::takeSelections);
    m_click.setSingleShot(true);
    connect(&m_click, &QTimer::timeout, this, &FrequencyBar::takeClick);
}

FrequencyBar::~FrequencyBar() = default;

QSize FrequencyBar::sizeHint() const {
    return {600, planHeight() + std::max(shownCount(), 1) * LineHeight + AxisHeight + Margin};
}

/// In a window that is too low for all, lines give way to the axis.
int FrequencyBar::lineHeight() const {
    const int room = height() - planHeight() - AxisHeight - Margin;
    return std::clamp(room / std::max(shownCount(), 1), LeastLineHeight, LineHeight);
}

int FrequencyBar::planHeight() const {
    return m_region > 0 ? QFontMetrics(font()).height() + 2 : 0;
}

int FrequencyBar::lineTop(int row) const {
    return Margin / 2 + planHeight() + row * lineHeight();
}

int FrequencyBar::shownCount() const {
    return static_cast<int>(
        std::count_if(m_lines.begin(), m_lines.end(), [](const Line& line) { return line.isShown; }));
}

const FrequencyBar::Line* FrequencyBar::find(int listId) const {
    const auto found = std::find_if(m_lines.begin(), m_lines.end(),
                                    [listId](const Line& line) { return line.listId == listId; });
    return found == m_lines.end() ? nullptr : &*found;
}

FrequencyBar::Line* FrequencyBar::find(int listId) {
    return const_cast<Line*>(std::as_const(*this).find(listId));
}

FrequencyBar::Line* FrequencyBar::lineAt(int y) {
    int row = 0;
    for (Line& line : m_lines) {
        if (!line.isShown)
            continue;
        const int top = lineTop(row++);
        if (y >= top && y < top + lineHeight())
            return &line;
    }
    return nullptr;
}

void FrequencyBar::AddList(int listId, FrequencyStoreListView* view) {
    IFrequencyListDefinition* definition = FreqStore::Instance().GetDefinition(listId);
    std::unique_ptr<PixStateVector> pixels(definition ? definition->CreatePixStateVector() : nullptr);
    if (!pixels)
        return;
    pixels->SetListId(listId);
    pixels->OnDirty = [this] { m_refresh.start(); };
    m_lines.push_back({.listId = listId, .name = definition->GetName(), .pixels = std::move(pixels)});
    if (view) {
        m_lines.back().view = view;
        m_lines.back().widget = view->GetWidget();
        const auto look = [this, listId] { lookAtView(listId); };
        connect(view->GetListView(), &SortListView::countsChanged, this, look);
        connect(view->GetListView(), &SortListView::filterChanged, this, look);
        look();
    }
    placeRemembered();
    arrange();
}

void FrequencyBar::RemoveList(int listId) {
    std::erase_if(m_lines, [listId](const Line& line) { return line.listId == listId; });
    arrange();
}

/// Lines have come, gone or changed their places.
void FrequencyBar::arrange() {
    int width = LeastLabelWidth;
    for (const Line& line : m_lines)
        width = std::max(width, QFontMetrics(font()).horizontalAdvance(line.name) + 2 * Margin);
    m_labelWidth = std::min(width, MostLabelWidth);
    mapLines();
    updateGeometry();
}

void FrequencyBar::SetLineShown(int listId, bool shown) {
    Line* line = find(listId);
    if (!line)
        return;
    line->isShown = shown;
    arrange();
    keepLines();
}

bool FrequencyBar::IsLineShown(int listId) const {
    const Line* line = find(listId);
    return line && line->isShown;
}

/// Past lines that are hidden, too: what is seen moves by that many places.
void FrequencyBar::MoveLine(int listId, int places) {
    for (; places != 0; places += places < 0 ? 1 : -1) {
        auto at = std::find_if(m_lines.begin(), m_lines.end(),
                               [listId](const Line& line) { return line.listId == listId; });
        bool isPast = false;
        while (!isPast && at != m_lines.end()) {
            if (places < 0 ? at == m_lines.begin() : std::next(at) == m_lines.end())
                break;
            const auto next = places < 0 ? std::prev(at) : std::next(at);
            isPast = next->isShown;
            std::iter_swap(at, next);
            at = next;
        }
    }
    arrange();
    keepLines();
}

std::vector<int> FrequencyBar::ShownLists() const {
    std::vector<int> ids;
    for (const Line& line : m_lines) {
        if (line.isShown)
            ids.push_back(line.listId);
    }
    return ids;
}

QRect FrequencyBar::LineRect(int listId) const {
    const std::vector<int> ids = ShownLists();
    const auto found = std::find(ids.begin(), ids.end(), listId);
    if (found == ids.end())
        return {};
    return {m_labelWidth, lineTop(static_cast<int>(found - ids.begin())), m_axis.Width(), lineHeight() - 4};
}

void FrequencyBar::RememberLines() {
    m_remembers = true;
    m_shownOnly = ListSettings::LoadText(ShownOnlyKey) == ShownPrefix;
    for (const Line& line : m_lines)
        lookAtView(line.listId);
    placeRemembered();
    arrange();
}

/// A line of text per line of the bar, from the top: whether it is shown, and its name.
void FrequencyBar::keepLines() const {
    if (!m_remembers)
        return;
    QStringList names;
    for (const Line& line : m_lines)
        names << (line.isShown ? ShownPrefix : HiddenPrefix) + line.name;
    ListSettings::SaveText(LinesKey, names.join(QLatin1Char('\n')));
    ListSettings::SaveText(ShownOnlyKey, m_shownOnly ? QString(ShownPrefix) : QString(HiddenPrefix));
}

/// Lines that were not there the last time stay behind the others.
void FrequencyBar::placeRemembered() {
    if (!m_remembers)
        return;
    const QStringList names = ListSettings::LoadText(LinesKey).split(QLatin1Char('\n'));
    const auto placeOf = [&names](const Line& line) {
        const qsizetype shown = names.indexOf(ShownPrefix + line.name);
        const qsizetype place = shown >= 0 ? shown : names.indexOf(HiddenPrefix + line.name);
        return place >= 0 ? place : names.size();
    };
    for (Line& line : m_lines)
        line.isShown = !names.contains(HiddenPrefix + line.name);
    std::stable_sort(m_lines.begin(), m_lines.end(),
                     [&](const Line& a, const Line& b) { return placeOf(a) < placeOf(b); });
}

void FrequencyBar::mapLines() {
    m_axis.SetWidth(width() - m_labelWidth - Margin);
    for (Line& line : m_lines)
        line.pixels->SetHMapping(this, m_axis.Width());
    mapBands();
    m_mapped = true;
    update();
}

/// Brings the lines up to date, in a turn of the event loop of its own: painting them is another one, since
/// long lists take a while.
void FrequencyBar::computeLines() {
    QElapsedTimer timer;
    timer.start();
    for (Line& line : m_lines) {
        if (line.isShown)
            line.pixels->Refresh();
    }
    m_mapped = false;
    // Lines of very many entries are computed less often: most of the time is left to the rest.
    m_refresh.setInterval(std::max(RefreshMilliseconds, IdlePerRefresh * static_cast<int>(timer.elapsed())));
    update();
}

/// Soon: selection, rows or filter of a list's view may have changed.
void FrequencyBar::lookAtView(int listId) {
    if (Line* line = find(listId))
        line->viewChanged = true;
    if (!m_selections.isActive())
        m_selections.start();
}

void FrequencyBar::takeSelections() {
    QElapsedTimer timer;
    timer.start();
    for (Line& line : m_lines) {
        if (!std::exchange(line.viewChanged, false) || !line.widget)
            continue;
        line.pixels->SetMarked(line.view->SelectedFrequencies());
        line.pixels->SetShownOnly(m_shownOnly ? line.view->ShownEntries() : std::nullopt);
    }
    m_selections.setInterval(
        std::max(RefreshMilliseconds, IdlePerRefresh * static_cast<int>(timer.elapsed())));
}

void FrequencyBar::SetShownOnly(bool only) {
    m_shownOnly = only;
    for (const Line& line : m_lines)
        lookAtView(line.listId);
    keepLines();
}

void FrequencyBar::SetBands(const NoiBands& bands) {
    m_bands = &bands;
    connect(&bands, &NoiBands::Changed, this, [this] {
        mapBands();
        m_refresh.start();
    });
    mapBands();
}

void FrequencyBar::SetRegion(int region) {
    m_region = std::clamp(region, 0, BandPlan::RegionCount);
    m_plan = m_region > 0 ? BandPlan::OfRegion(m_region) : BandPlan();
    arrange();
}

/// Asks for each pixel whether a band touches it, so that a million bands cost what one does.
void FrequencyBar::mapBands() {
    m_shades.clear();
    if (!m_bands)
        return;
    double left = MapToFrequency(0);
    for (int pixel = 0; pixel < m_axis.Width(); ++pixel) {
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

void FrequencyBar::SetRange(double fromHertz, double toHertz) {
    takeWaitingClick();
    const double from = From();
    const double to = To();
    if (!m_axis.SetRange(fromHertz, toHertz) || (from == From() && to == To()))
        return;
    mapLines();
    emit RangeChanged(From(), To());
}

void FrequencyBar::FitAll() {
    takeWaitingClick();
    const FrequencyAxis before = m_axis;
    m_axis.SetRange(FrequencyAxis::Lowest, FrequencyAxis::Highest);
    mapLines();
    double lowest = 0;
    double highest = 0;
    for (const Line& line : m_lines) {
        if (!line.isShown)
            continue;
        line.pixels->Refresh();
        for (size_t pixel = 0; pixel < line.pixels->size(); ++pixel) {
            if (((*line.pixels)[pixel].flags & PixState::Centre) == 0)
                continue;
            const double hertz = MapToFrequency(static_cast<double>(pixel));
            lowest = lowest > 0 ? std::min(lowest, hertz) : hertz;
            highest = std::max(highest, hertz);
        }
    }
    if (lowest > 0)
        m_axis.SetRange(lowest / RoomAround, highest * RoomAround);
    mapLines();
    if (before.From() != From() || before.To() != To())
        emit RangeChanged(From(), To());
}

bool FrequencyBar::ZoomToSelection() {
    takeSelections();
    double lowest = std::numeric_limits<double>::infinity();
    double highest = 0;
    for (const Line& line : m_lines) {
        for (const double hertz : line.isShown ? line.pixels->Marked() : std::vector<double>()) {
            if (hertz <= 0)
                continue;
            lowest = std::min(lowest, hertz);
            highest = std::max(highest, hertz);
        }
    }
    if (highest <= 0)
        return false;
    const double around = std::max(std::pow(highest / lowest, 0.1), LeastAround);
    SetRange(lowest / around, highest * around);
    return true;
}

void FrequencyBar::SetTuned(double hertz) {
    m_tuned = hertz;
    update();
}

void FrequencyBar::resizeEvent(QResizeEvent*) {
    mapLines();
}

void FrequencyBar::changeEvent(QEvent* event) {
    if (event->type() == QEvent::FontChange)
        arrange();
    QWidget::changeEvent(event);
}

QString FrequencyBar::Summary() const {
    QStringList names;
    for (const Line& line : m_lines) {
        if (line.isShown)
            names << line.name;
    }
    return tr("%1 to %2, tuned to %3. Lines: %4")
        .arg(Quor::FrequencyText(From()), Quor::FrequencyText(To()), Quor::FrequencyText(m_tuned),
             names.join(QStringLiteral(", ")));
}

QString FrequencyBar::LineName(int listId) const {
    const Line* line = find(listId);
    return line ? line->name : QString();
}

QString FrequencyBar::LineSummary(int listId) {
    Line* line = find(listId);
    if (!line)
        return QString();
    line->pixels->Refresh();
    int count = 0;
    double lowest = 0;
    double highest = 0;
    for (size_t pixel = 0; pixel < line->pixels->size(); ++pixel) {
        const PixState& state = (*line->pixels)[pixel];
        if (state.count == 0)
            continue;
        highest = line->pixels->ItemFrequency(state.lastItem);
        lowest = count == 0 ? highest : lowest;
        count += static_cast<int>(state.count);
    }
    return count == 0 ? tr("Nothing in this range")
                      : tr("Entries in this range: %1, from %2 to %3")
                            .arg(count)
                            .arg(Quor::FrequencyText(lowest), Quor::FrequencyText(highest));
}
