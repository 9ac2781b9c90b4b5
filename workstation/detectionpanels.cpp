#include "workstation/detectionpanels.h"

#include "host/freqlist/vectorlistviewbase.h"
#include "workstation/actiontips.h"
#include "workstation/frequencybar.h"
#include "workstation/mainwindow.h"
#include "workstation/simulatedsearch.h"
#include "workstation/sweepimport.h"
#include "workstation/timepicture.h"

#include <QCoreApplication>
#include <QDockWidget>
#include <QMenu>
#include <QScrollBar>

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

} // namespace

void DetectionPanels::AddPicture(MainWindow& window, SimulatedSearch& search, SweepImport& sweeps,
                                 int listId) {
    auto* picture = new TimePicture(QString::fromLatin1(SimulatedSearch::DetectionsPath));
    FrequencyBar* bar = window.GetBar();
    picture->SetRange(bar->From(), bar->To());
    picture->SetSources([&search](unsigned id) { return search.SourceOf(id); });
    QObject::connect(bar, &FrequencyBar::RangeChanged, picture, &TimePicture::SetRange);
    QObject::connect(picture, &TimePicture::RangeChanged, bar, &FrequencyBar::SetRange);
    QObject::connect(picture, &TimePicture::EverythingWanted, bar, &FrequencyBar::FitAll);
    QObject::connect(picture, &TimePicture::RecordClicked, &window,
                     [&window, listId](quint32 place) { window.ShowRecord(listId, place); });
    QObject::connect(&sweeps, &SweepImport::SweepsRead, picture, &TimePicture::SetWaterfall);
    QDockWidget* dock = window.AddPanel(picture, QCoreApplication::translate("TimePicture", "&Time picture"),
                                        Qt::BottomDockWidgetArea);
    dock->hide();
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
    std::vector<VectorListViewBase*> views;
    for (const int id : listIds) {
        if (auto* view = dynamic_cast<VectorListViewBase*>(window.ViewOf(id)))
            views.push_back(view);
    }
    QAction* newest = menu.addAction(QCoreApplication::translate("SimulatedSearch", "&Newest first"));
    SetTips(*newest, QCoreApplication::translate("SimulatedSearch", "Keep the latest detections on top"));
    newest->setCheckable(true);
    QObject::connect(newest, &QAction::toggled, &window, [views](bool on) {
        for (VectorListViewBase* view : views)
            showNewestFirst(*view, on);
    });
    for (VectorListViewBase* view : views) {
        view->SetRecordNote(QCoreApplication::translate("SimulatedSearch", "Source"),
                            [&search](unsigned id) { return search.SourceOf(id); });
        QObject::connect(view->GetListView(), &SortListView::countsChanged, newest,
                         [newest, view, before = 0]() mutable {
                             const bool haveCome = view->RowCount() > std::exchange(before, view->RowCount());
                             if (haveCome && newest->isChecked())
                                 view->GetScrollBar()->setValue(0);
                         });
    }
    QAction* clear = menu.addAction(QCoreApplication::translate("SimulatedSearch", "C&lear detections"));
    SetTips(*clear, QCoreApplication::translate("SimulatedSearch", "Empty both lists of detections"));
    QObject::connect(clear, &QAction::triggered, &window, [&search] { search.Clear(); });
}
