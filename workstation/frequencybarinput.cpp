#include "host/base/frequencytext.h"
#include "workstation/barcolors.h"
#include "workstation/frequencybar.h"
#include "workstation/frequencybarsizes.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QToolTip>

#include <cmath>

using namespace BarSizes;

namespace {

constexpr double ZoomStep = 0.8;
constexpr double PanStep = 0.1; ///< of the range

} // namespace

void FrequencyBar::wheelEvent(QWheelEvent* event) {
    const double factor = std::pow(ZoomStep, event->angleDelta().y() / 120.0);
    FrequencyAxis axis = m_axis;
    if (axis.Zoom(factor, MapToFrequency(event->position().x() - m_labelWidth)))
        SetRange(axis.From(), axis.To());
    event->accept();
}

/// Keys zoom about the tuned frequency where it is seen, else about the middle.
void FrequencyBar::keyPressEvent(QKeyEvent* event) {
    const double tuned = MapToPixel(m_tuned);
    const bool isTunedSeen = tuned >= 0 && tuned <= m_axis.Width();
    const double centre = isTunedSeen ? m_tuned : MapToFrequency(m_axis.Width() / 2.0);
    FrequencyAxis axis = m_axis;
    switch (event->key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal: // the same key without shift
        axis.Zoom(ZoomStep, centre);
        break;
    case Qt::Key_Minus:
        axis.Zoom(1 / ZoomStep, centre);
        break;
    case Qt::Key_Left:
        axis.Shift(From(), To(), -PanStep);
        break;
    case Qt::Key_Right:
        axis.Shift(From(), To(), PanStep);
        break;
    case Qt::Key_Home:
        FitAll();
        return;
    default:
        QWidget::keyPressEvent(event);
        return;
    }
    SetRange(axis.From(), axis.To());
}

void FrequencyBar::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    m_click.stop();
    m_pressed = event->pos();
    m_pressedFrom = From();
    m_pressedTo = To();
    m_dragging = false;
    m_doubleClicked = false;
}

void FrequencyBar::mouseMoveEvent(QMouseEvent* event) {
    if ((event->buttons() & Qt::LeftButton) == 0)
        return;
    const int moved = event->pos().x() - m_pressed.x();
    m_dragging = m_dragging || std::abs(moved) > CatchPixels;
    FrequencyAxis axis = m_axis;
    if (m_dragging && axis.Shift(m_pressedFrom, m_pressedTo, -static_cast<double>(moved) / m_axis.Width()))
        SetRange(axis.From(), axis.To());
}

/// A click takes effect when it can no longer become a double click, which tunes nothing.
void FrequencyBar::mouseReleaseEvent(QMouseEvent* event) {
    if (m_dragging || m_doubleClicked || event->button() != Qt::LeftButton || m_pressed.x() < m_labelWidth)
        return;
    m_click.start(QApplication::doubleClickInterval());
}

void FrequencyBar::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    m_click.stop();
    m_doubleClicked = true;
    FitAll();
}

/// What was clicked is what lay there then, not what comes to lie there.
void FrequencyBar::takeWaitingClick() {
    if (!m_click.isActive())
        return;
    m_click.stop();
    takeClick();
}

void FrequencyBar::takeClick() {
    const Hit hit = hitTest(m_pressed);
    if (!hit.line) {
        const double hertz = MapToFrequency(m_pressed.x() - m_labelWidth);
        emit Clicked(m_step > 0 ? std::round(hertz / m_step) * m_step : hertz, 0);
        return;
    }
    const int listId = hit.line->listId;
    if (hit.line->pixels->Tune(hit.item, this))
        emit EntryTuned(hit.hertz, listId);
    else
        emit Clicked(hit.hertz, listId);
}

FrequencyBar::Hit FrequencyBar::hitTest(const QPoint& position) {
    Line* line = lineAt(position.y());
    if (!line)
        return {};
    const int wanted = position.x() - m_labelWidth;
    for (int distance = 0; distance <= CatchPixels; ++distance) {
        for (const int pixel : {wanted - distance, wanted + distance}) {
            if (pixel < 0 || static_cast<size_t>(pixel) >= line->pixels->size())
                continue;
            const PixState& state = (*line->pixels)[static_cast<size_t>(pixel)];
            if (state.count > 0)
                return {line, state.lastItem, state.count, line->pixels->ItemFrequency(state.lastItem)};
        }
    }
    return {};
}

QString FrequencyBar::textOf(const Hit& hit) const {
    QStringList lines{Quor::FrequencyText(hit.hertz)};
    const QString name = hit.line->pixels->ItemText(hit.item);
    if (!name.isEmpty())
        lines << name;
    if (hit.count > 1)
        lines << tr("and %1 more here").arg(hit.count - 1);
    return lines.join(QLatin1Char('\n'));
}

/// The band under a pixel, for tool tips; empty when there is none.
QString FrequencyBar::bandText(int x) const {
    const double from = MapToFrequency(x - CatchPixels);
    const double to = MapToFrequency(x + CatchPixels);
    QStringList lines;
    if (const NoiBands::Band* band = m_bands ? NoiBands::FirstWithin(m_bands->GetBands(), from, to) : nullptr)
        lines << tr("Band of interest: %1 to %2")
                     .arg(Quor::FrequencyText(band->from), Quor::FrequencyText(band->to));
    const double hertz = MapToFrequency(x);
    for (const BandPlan::Band& band : m_plan.Within(hertz, hertz))
        lines << tr("%1 (%2), %3 to %4")
                     .arg(band.name, band.service, Quor::FrequencyText(band.from),
                          Quor::FrequencyText(band.to));
    return lines.join(QLatin1Char('\n'));
}

QString FrequencyBar::tipAt(const QPoint& position) {
    const int x = position.x() - m_labelWidth;
    if (x < 0) {
        const Line* line = lineAt(position.y());
        return line ? line->name : BarColors::LegendText(palette(), m_region > 0);
    }
    const Hit hit = hitTest(position);
    QStringList lines{hit.line ? textOf(hit) : Quor::FrequencyText(MapToFrequency(x))};
    if (const QString band = bandText(x); !band.isEmpty())
        lines << band;
    return lines.join(QLatin1Char('\n'));
}

bool FrequencyBar::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    QToolTip::showText(help->globalPos(), tipAt(help->pos()), this);
    return true;
}

void FrequencyBar::AddActionsTo(QMenu& menu, int listId) {
    connect(menu.addAction(tr("Show &everything")), &QAction::triggered, this, &FrequencyBar::FitAll);
    connect(menu.addAction(tr("&Zoom to selection")), &QAction::triggered, this,
            &FrequencyBar::ZoomToSelection);
    QAction* shownOnly = menu.addAction(tr("&Only rows shown"));
    shownOnly->setCheckable(true);
    shownOnly->setChecked(m_shownOnly);
    connect(shownOnly, &QAction::toggled, this, &FrequencyBar::SetShownOnly);
    menu.addSeparator();
    for (const Line& line : m_lines) {
        QAction* action = menu.addAction(line.name);
        action->setCheckable(true);
        action->setChecked(line.isShown);
        connect(action, &QAction::toggled, this, [this, id = line.listId](bool on) { SetLineShown(id, on); });
    }
    const Line* line = find(listId);
    if (!line)
        return;
    menu.addSeparator();
    const std::vector<int> shown = ShownLists();
    const auto addMove = [&](const QString& text, int places, bool possible) {
        QAction* action = menu.addAction(text.arg(line->name));
        action->setEnabled(possible);
        connect(action, &QAction::triggered, this, [this, listId, places] { MoveLine(listId, places); });
    };
    addMove(tr("Move %1 &up"), -1, shown.front() != listId);
    addMove(tr("Move %1 &down"), 1, shown.back() != listId);
}

void FrequencyBar::contextMenuEvent(QContextMenuEvent* event) {
    const Line* line = lineAt(event->pos().y());
    QMenu menu;
    AddActionsTo(menu, line ? line->listId : 0);
    menu.exec(event->globalPos());
}
