#include "host/base/frequencytext.h"
#include "workstation/timepicture.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QToolTip>

#include <cmath>

namespace {

constexpr double ZoomStep = 0.8;
constexpr double PanStep = 0.1; ///< of what is shown
constexpr int CatchPixels = 3;

} // namespace

/// The mark under a point of the widget: the newest of several.
std::optional<quint32> TimePicture::markAt(const QPoint& position) {
    const QPoint point = position - Plot().topLeft();
    const std::vector<DetectionMark>& marks = m_marks.Get();
    for (const int more : {0, CatchPixels}) {
        for (size_t place = marks.size(); place-- > 0;) {
            if (placeOf(marks[place]).adjusted(-more, -more, more, more).contains(point) &&
                isShown(marks[place]))
                return static_cast<quint32>(place);
        }
    }
    return std::nullopt;
}

QString TimePicture::tipAt(const QPoint& position) {
    const QPoint point = position - Plot().topLeft();
    const double hertz = m_frequencies.MapToFrequency(point.x());
    const double time = m_times.MapToTime(point.y());
    if (const std::optional<quint32> place = markAt(position)) {
        const DetectionConventional* record = m_marks.Record(*place);
        if (!record)
            return QString();
        using Adapter = DetectionConventionalAdapter;
        QStringList lines{tr("Detection %1").arg(Adapter::GetName(*record)),
                          Adapter::GetFrequencyString(*record) + QStringLiteral(", ") +
                              Quor::BandwidthText(record->GetBandwidth()),
                          tr("%1 dB").arg(record->GetLevel()),
                          tr("%1 to %2")
                              .arg(Adapter::GetStartTimeString(*record),
                                   record->GetActive() ? tr("now") : Adapter::GetStopTimeString(*record))};
        if (m_sourceOf)
            lines << tr("From: %1").arg(m_sourceOf(record->GetID()));
        return lines.join(QLatin1Char('\n'));
    }
    QStringList lines{Quor::FrequencyText(hertz)};
    if (const std::optional<double> level = m_waterfall ? m_waterfall->LevelAt(hertz, time) : std::nullopt)
        lines << tr("%1 dB").arg(std::round(*level));
    return lines.join(QLatin1Char('\n'));
}

bool TimePicture::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    QToolTip::showText(help->globalPos(), Plot().contains(help->pos()) ? tipAt(help->pos()) : QString(),
                       this);
    return true;
}

/// The wheel zooms frequencies, with Ctrl the time.
void TimePicture::wheelEvent(QWheelEvent* event) {
    const QPointF point = event->position() - QPointF(Plot().topLeft());
    const double factor = std::pow(ZoomStep, event->angleDelta().y() / 120.0);
    event->accept();
    if (event->modifiers().testFlag(Qt::ControlModifier)) {
        const double time = m_times.MapToTime(point.y());
        SetTimes(m_following ? m_times.newest : time + (m_times.newest - time) * factor,
                 m_times.span * factor);
        return;
    }
    FrequencyAxis axis = m_frequencies;
    if (axis.Zoom(factor, axis.MapToFrequency(point.x())))
        takeRange(axis);
}

void TimePicture::keyPressEvent(QKeyEvent* event) {
    FrequencyAxis axis = m_frequencies;
    const double middle = axis.MapToFrequency(axis.Width() / 2.0);
    const auto panTime = [this](double share) {
        m_following = false;
        SetTimes(m_times.newest + share * m_times.span, m_times.span);
    };
    switch (event->key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal: // the same key without shift
        axis.Zoom(ZoomStep, middle);
        break;
    case Qt::Key_Minus:
        axis.Zoom(1 / ZoomStep, middle);
        break;
    case Qt::Key_Left:
        axis.Shift(axis.From(), axis.To(), -PanStep);
        break;
    case Qt::Key_Right:
        axis.Shift(axis.From(), axis.To(), PanStep);
        break;
    case Qt::Key_Up:
        panTime(PanStep);
        return;
    case Qt::Key_Down:
        panTime(-PanStep);
        return;
    case Qt::Key_PageUp:
        SetTimes(m_times.newest, m_times.span * ZoomStep);
        return;
    case Qt::Key_PageDown:
        SetTimes(m_times.newest, m_times.span / ZoomStep);
        return;
    case Qt::Key_Home:
        ShowAllTimes();
        emit EverythingWanted();
        return;
    default:
        QWidget::keyPressEvent(event);
        return;
    }
    takeRange(axis);
}

void TimePicture::mousePressEvent(QMouseEvent* event) {
    m_pressed = event->pos();
    m_pressedFrequencies = m_frequencies;
    m_pressedTimes = m_times;
    m_dragging = false;
}

/// Drags the picture; one that is moved in time no longer follows.
void TimePicture::mouseMoveEvent(QMouseEvent* event) {
    if ((event->buttons() & Qt::LeftButton) == 0)
        return;
    const QPoint moved = event->pos() - m_pressed;
    m_dragging = m_dragging || moved.manhattanLength() > CatchPixels;
    if (!m_dragging)
        return;
    if (std::abs(moved.y()) > CatchPixels) {
        m_following = false;
        SetTimes(m_pressedTimes.MapToTime(-moved.y()), m_times.span);
    }
    FrequencyAxis axis = m_pressedFrequencies;
    if (axis.Shift(axis.From(), axis.To(), -static_cast<double>(moved.x()) / axis.Width()))
        takeRange(axis);
}

void TimePicture::mouseReleaseEvent(QMouseEvent* event) {
    if (m_dragging || event->button() != Qt::LeftButton)
        return;
    if (const std::optional<quint32> place = markAt(event->pos()))
        emit RecordClicked(*place);
}

void TimePicture::mouseDoubleClickEvent(QMouseEvent*) {
    ShowAllTimes();
    emit EverythingWanted();
}

void TimePicture::contextMenuEvent(QContextMenuEvent* event) {
    QMenu menu;
    AddActionsTo(menu);
    menu.exec(event->globalPos());
}
