#include "host/gui/listsettings.h"
#include "receiver/receiver.h"
#include "workstation/frequencybar.h"
#include "workstation/mainwindow.h"

#include <QCloseEvent>
#include <QDockWidget>
#include <QTabWidget>

namespace {

const QString GeometryKey = QStringLiteral("Window/Geometry");
const QString PanelsKey = QStringLiteral("Window/Panels");
const QString ListKey = QStringLiteral("Window/List");
/// A window below this size has its side panels as tabs.
constexpr QSize RoomyWindow(1200, 700);
constexpr int NarrowSideWidth = 270;

/// What each kind of receiver was tuned to last.
QString frequencyKey(const Receiver& receiver) {
    return receiver.GetKind() == ReceiverKind::HF ? QStringLiteral("Receiver/FrequencyHF")
                                                  : QStringLiteral("Receiver/FrequencyVUHF");
}

} // namespace

void MainWindow::closeEvent(QCloseEvent* event) {
    event->setAccepted(!m_mayClose || m_mayClose());
    if (event->isAccepted())
        KeepArrangement();
}

void MainWindow::KeepArrangement() const {
    if (!m_remembersArrangement)
        return;
    ListSettings::Save(GeometryKey, saveGeometry());
    ListSettings::Save(PanelsKey, saveState());
    ListSettings::SaveText(ListKey, TabName(m_tabs->currentIndex()));
    ListSettings::SaveText(frequencyKey(m_receiver), QString::number(m_receiver.GetFrequency(), 'f', 0));
}

void MainWindow::RememberArrangement() {
    m_remembersArrangement = true;
    m_bar->RememberLines();
    restoreGeometry(ListSettings::Load(GeometryKey));
    restoreState(ListSettings::Load(PanelsKey));
    m_isNarrow = std::any_of(m_panels.begin(), m_panels.end(), [this](QDockWidget* panel) {
        return dockWidgetArea(panel) == Qt::RightDockWidgetArea && !tabifiedDockWidgets(panel).isEmpty();
    });
    const QString list = ListSettings::LoadText(ListKey);
    for (int index = 0; index < m_tabs->count(); ++index) {
        if (TabName(index) == list)
            m_tabs->setCurrentIndex(index);
    }
    const auto* limits = m_receiver.Find<ValueNumeric<double>>(Keys::KeyFrequency);
    const double hertz = ListSettings::LoadText(frequencyKey(m_receiver)).toDouble();
    if (hertz >= limits->GetMin() && hertz <= limits->GetMax())
        m_receiver.Tune(hertz);
}

void MainWindow::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    arrangePanels();
}

void MainWindow::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    arrangePanels();
    showCurrentList();
}

/// Side panels stand below each other where there is room, else as tabs. What the operator has arranged stays
/// until the window passes from one size to the other.
void MainWindow::arrangePanels() {
    const bool isNarrow = width() < RoomyWindow.width() || height() < RoomyWindow.height();
    if (!isVisible() || std::exchange(m_isNarrow, isNarrow) == isNarrow)
        return;
    std::vector<QDockWidget*> side;
    for (QDockWidget* dock : m_panels) {
        if (dockWidgetArea(dock) == Qt::RightDockWidgetArea && !dock->isFloating())
            side.push_back(dock);
    }
    for (size_t i = 1; i < side.size(); ++i) {
        const bool wasHidden = side[i]->isHidden();
        if (isNarrow) {
            tabifyDockWidget(side[0], side[i]);
        } else {
            removeDockWidget(side[i]);
            addDockWidget(Qt::RightDockWidgetArea, side[i]);
        }
        side[i]->setHidden(wasHidden);
    }
    if (!isNarrow)
        sizePanels();
    else if (!side.empty()) {
        side[0]->raise();
        resizeDocks({side[0]}, {NarrowSideWidth}, Qt::Horizontal);
    }
}
