#include "workstation/detectionpanels.h"

#include "host/freqlist/freqstore.h"
#include "host/freqlist/vectorlistviewbase.h"
#include "workstation/actiontips.h"
#include "workstation/detectionmarks.h"
#include "workstation/frequencybar.h"
#include "workstation/mainwindow.h"
#include "workstation/simulatedsearch.h"
#include "workstation/sweepimport.h"
#include "workstation/timepicture.h"

#include <QCoreApplication>
#include <QDockWidget>
#include <QMenu>
#include <QScrollBar>
#include <QTabWidget>

#include <algorithm>

namespace {

constexpr int RoomyHeight = 800; ///< of a window that the picture's own height leaves a list

/// The view's column of a title that the lists of detections share; -1 when there is none.
int columnOf(const SortListView& list, const char* title) {
    const QString wanted = QCoreApplication::translate("SearchMC", title);
    for (int column = 0; column < list.columnCount(); ++column) {
        if (list.headerItem()->text(column) == wanted)
            return column;
    }
    return -1;
}

/// Sorted by begin, with the page at the top while new rows come; off, the rows stand as they came.
void showNewestFirst(VectorListViewBase& view, bool on) {
    SortListView& list = *view.GetListView();
    const int column = columnOf(list, "From");
    if (column < 0)
        return;
    list.sortByColumn(on ? column : -1, on ? Qt::DescendingOrder : Qt::AscendingOrder);
    view.GetScrollBar()->setValue(0);
}

/// The view of a list of detections; null for any other list.
VectorListViewBase* detectionView(const MainWindow& window, int listId) {
    auto* const view = dynamic_cast<VectorListViewBase*>(window.ViewOf(listId));
    return view && DetectionMarks::IsList(view->ValuePath()) ? view : nullptr;
}

/// Has the list that is looked at shown newest first, also one that another seat's search writes.
void keepNewestFirst(const QAction& newest, VectorListViewBase& view) {
    QObject::connect(&newest, &QAction::toggled, &view, [&view](bool on) { showNewestFirst(view, on); });
    QObject::connect(view.GetListView(), &SortListView::countsChanged, &newest,
                     [&newest, &view, before = 0]() mutable {
                         const bool haveCome = view.RowCount() > std::exchange(before, view.RowCount());
                         if (haveCome && newest.isChecked())
                             view.GetScrollBar()->setValue(0);
                     });
    if (newest.isChecked())
        showNewestFirst(view, true);
}

/// Has the time picture show the list of detections that was looked at last: the program's own plain ones for
/// either of its own lists, since both are of the same search, or the list of another seat.
class ShownDetections : public QObject {
public:
    ShownDetections(MainWindow& window, TimePicture& picture, QDockWidget& dock, SimulatedSearch& search,
                    const std::vector<int>& ownIds)
        : QObject(&picture),
          m_window(window),
          m_picture(picture),
          m_dock(dock),
          m_search(search),
          m_ownIds(ownIds),
          m_title(dock.windowTitle()) {
        showOwn();
        connect(window.GetTabs(), &QTabWidget::currentChanged, this, &ShownDetections::follow);
        connect(&FreqStore::Instance(), &FreqStore::ListRemoved, this, [this](int listId) {
            if (listId == m_listId)
                showOwn();
        });
        connect(&picture, &TimePicture::RecordClicked, this,
                [this](quint32 place) { m_window.ShowRecord(m_listId, place); });
    }

private:
    void showOwn() {
        m_listId = m_ownIds.front();
        m_picture.SetList(QString::fromLatin1(SimulatedSearch::DetectionsPath),
                          [this](unsigned id) { return m_search.SourceOf(id); });
        setTitle(m_title);
    }
    void follow() {
        const int listId = m_window.ShownList();
        const VectorListViewBase* const view = detectionView(m_window, listId);
        const bool isOwn = std::ranges::find(m_ownIds, listId) != m_ownIds.end();
        if (!view || listId == m_listId || (isOwn && m_listId == m_ownIds.front()))
            return;
        if (isOwn)
            return showOwn();
        m_listId = listId;
        m_picture.SetList(view->ValuePath(), nullptr);
        setTitle(
            QStringLiteral("%1: %2").arg(m_title, FreqStore::Instance().GetDefinition(listId)->GetName()));
    }
    /// The menu's entry stays as it is.
    void setTitle(const QString& title) {
        const QString entry = m_dock.toggleViewAction()->text();
        m_dock.setWindowTitle(title);
        m_dock.toggleViewAction()->setText(entry);
    }

    MainWindow& m_window;
    TimePicture& m_picture;
    QDockWidget& m_dock;
    SimulatedSearch& m_search;
    const std::vector<int> m_ownIds;
    const QString m_title;
    int m_listId = 0;
};

} // namespace

void DetectionPanels::AddPicture(MainWindow& window, SimulatedSearch& search, SweepImport& sweeps,
                                 const std::vector<int>& listIds) {
    auto* picture = new TimePicture(QString::fromLatin1(SimulatedSearch::DetectionsPath));
    FrequencyBar* bar = window.GetBar();
    picture->SetRange(bar->From(), bar->To());
    QObject::connect(bar, &FrequencyBar::RangeChanged, picture, &TimePicture::SetRange);
    QObject::connect(picture, &TimePicture::RangeChanged, bar, &FrequencyBar::SetRange);
    QObject::connect(picture, &TimePicture::EverythingWanted, bar, &FrequencyBar::FitAll);
    QObject::connect(&sweeps, &SweepImport::SweepsRead, picture, &TimePicture::SetWaterfall);
    QDockWidget* dock = window.AddPanel(picture, QCoreApplication::translate("TimePicture", "&Time picture"),
                                        Qt::BottomDockWidgetArea);
    dock->hide();
    new ShownDetections(window, *picture, *dock, search, listIds); // the picture owns it
    // The first time it is asked for it is high enough, where the window is.
    QObject::connect(
        dock->toggleViewAction(), &QAction::triggered, &window,
        [&window, dock](bool shown) {
            if (shown && window.height() >= RoomyHeight)
                window.resizeDocks({dock}, {dock->sizeHint().height()}, Qt::Vertical);
        },
        Qt::SingleShotConnection);
}

void DetectionPanels::AddActions(QMenu& menu, MainWindow& window, SimulatedSearch& search,
                                 const std::vector<int>& listIds) {
    QAction* newest = menu.addAction(QCoreApplication::translate("SimulatedSearch", "&Newest first"));
    SetTips(*newest, QCoreApplication::translate("SimulatedSearch", "Keep the latest detections on top"));
    newest->setCheckable(true);
    for (const int id : listIds) {
        VectorListViewBase* const view = detectionView(window, id);
        if (!view)
            continue;
        view->SetRecordNote(QCoreApplication::translate("SimulatedSearch", "Source"),
                            [&search](unsigned record) { return search.SourceOf(record); });
        keepNewestFirst(*newest, *view);
    }
    // The window has made the view by then.
    QObject::connect(&FreqStore::Instance(), &FreqStore::ListAdded, newest, [newest, &window](int listId) {
        if (VectorListViewBase* const view = detectionView(window, listId))
            keepNewestFirst(*newest, *view);
    });
    QAction* clear = menu.addAction(QCoreApplication::translate("SimulatedSearch", "C&lear detections"));
    SetTips(*clear, QCoreApplication::translate("SimulatedSearch", "Empty both lists of detections"));
    QObject::connect(clear, &QAction::triggered, &window, [&search] { search.Clear(); });
}
