#include "workstation/mainwindow.h"

#include "host/base/frequencytext.h"
#include "host/base/problems.h"
#include "host/freqlist/buttonbar.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencystorelistview.h"
#include "host/freqlist/multiviewmediator.h"
#include "host/freqlist/undohistory.h"
#include "host/gui/sortlistview.h"
#include "receiver/receiver.h"
#include "workstation/actions.h"
#include "workstation/actiontips.h"
#include "workstation/bandplanchoice.h"
#include "workstation/bandspanel.h"
#include "workstation/detailspanel.h"
#include "workstation/findhits.h"
#include "workstation/frequencybar.h"
#include "workstation/historypanel.h"
#include "workstation/icons.h"
#include "workstation/messagespanel.h"
#include "workstation/noibands.h"
#include "workstation/receiverpanel.h"
#include "workstation/tuningstrip.h"
#include "workstation/windowstatus.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDockWidget>
#include <QFileInfo>
#include <QLineEdit>
#include <QLocale>
#include <QMenu>
#include <QMenuBar>
#include <QRegularExpression>
#include <QScrollArea>
#include <QStatusBar>
#include <QTabBar>
#include <QTabWidget>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

constexpr int TabsMilliseconds = 150;
constexpr int MessagesHeight = 110;
constexpr int LeastMessagesHeight = 50; ///< in the smallest window
constexpr int LeastListHeight = 64;
constexpr int BarWidth = 320; ///< in the smallest window
constexpr int SideWidth = 330;
constexpr int DetailsHeight = 400; ///< against each other
constexpr int SettingsHeight = 300;

/// A panel that may be higher than there is room.
QScrollArea* scrolled(QWidget* panel) {
    auto* area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidget(panel);
    return area;
}

} // namespace

MainWindow::MainWindow(Receiver& receiver, QWidget* parent)
    : QMainWindow(parent),
      m_receiver(receiver),
      m_bands(new NoiBands(this)),
      m_strip(new TuningStrip(receiver, this)),
      m_bar(new FrequencyBar(this)),
      m_tabs(new QTabWidget(this)),
      m_messages(new MessagesPanel(this)),
      m_status(new WindowStatus(*statusBar())),
      m_actions(new WindowActions(this, m_tabs)),
      m_hits(new FindHits(*m_tabs)),
      m_details(new DetailsPanel(m_actions->Get(WindowActions::Tune), this)),
      m_fileMenu(menuBar()->addMenu(tr("&File"))),
      m_recentMenu(new QMenu(tr("Open &Recent"), this)),
      m_tabsChange(new QTimer(this)) {
    resize(1440, 860);
    auto* centre = new QWidget(this);
    auto* layout = new QVBoxLayout(centre);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(m_strip);
    layout->addWidget(m_bar);
    layout->addWidget(m_tabs, 1);
    setCentralWidget(centre);
    m_tabs->setDocumentMode(true);
    m_tabs->setAccessibleName(tr("Lists"));
    m_tabs->tabBar()->setAccessibleName(tr("Lists"));
    m_bar->setAccessibleName(tr("Frequency bar"));
    m_bar->setMinimumWidth(BarWidth);
    m_tabsChange->setSingleShot(true);
    m_tabsChange->setInterval(TabsMilliseconds);
    connect(m_tabsChange, &QTimer::timeout, this, &MainWindow::showTabs);

    makeMenus();
    makePanels(receiver);
    connectReceiver(receiver);
    connectStatus();
    m_bar->SetBands(*m_bands);

    FreqStore& store = FreqStore::Instance();
    for (const int id : store.GetListIds())
        addList(id);
    connect(&store, &FreqStore::ListAdded, this, &MainWindow::addList);
    connect(&store, &FreqStore::ListRemoved, this, &MainWindow::removeList);
    connect(&store, &FreqStore::Told, this, &MainWindow::Tell);
    connect(m_tabs, &QTabWidget::currentChanged, this, &MainWindow::showCurrentList);
    showCurrentList();
}

MainWindow::~MainWindow() {
    m_messages->Flush(); // while its listeners are there
    FreqStore::Instance().SetTuner({});
    m_tabs->disconnect(this);
    m_actions->SetList(nullptr, nullptr, QString(), {});
    m_details->SetView(nullptr);
    // Views detach from their controllers while the store still knows them.
    for (auto& [id, tab] : m_lists)
        delete tab.page;
}

void MainWindow::connectReceiver(Receiver& receiver) {
    FreqStore::Instance().SetTuner([&receiver](IFrequencyStoreItem& item, QWidget*, bool allSettings) {
        receiver.Tune(item, allSettings);
    });
    connect(&receiver, &Receiver::Refused, this, [this](const QString& reason) {
        if (m_tellsTuning)
            Tell(reason);
    });
    connect(&receiver, &Receiver::Tuned, this, [this](double hertz) {
        m_bar->SetTuned(hertz);
        markTuned(hertz);
        m_status->ShowTuned(hertz);
        if (m_tellsTuning)
            Tell(tr("Tuned to %1").arg(Quor::FrequencyText(hertz)));
    });
    const auto showState = [this, &receiver] { m_status->ShowReceiver(receiver); };
    connect(&receiver, &Receiver::StateChanged, this, showState);
    showState();
    m_bar->SetTuned(receiver.GetFrequency());
    m_status->ShowTuned(receiver.GetFrequency());
    connect(m_bar, &FrequencyBar::Clicked, this, [this, &receiver](double hertz, int listId) {
        receiver.Tune(hertz);
        showEntry(hertz, listId);
    });
    connect(m_bar, &FrequencyBar::EntryTuned, this, &MainWindow::showEntry);
}

/// In all lists.
void MainWindow::markTuned(double hertz) {
    for (const auto& [id, tab] : m_lists) {
        if (tab.view)
            tab.view->GetListView()->MarkTuned(hertz);
    }
}

/// Brings up the list and selects its entry at a frequency (Hz).
void MainWindow::showEntry(double hertz, int listId) {
    const auto found = m_lists.find(listId);
    if (found == m_lists.end())
        return;
    m_tabs->setCurrentWidget(found->second.page);
    if (found->second.view)
        found->second.view->SelectFrequency(hertz);
}

int MainWindow::ShownList() const {
    for (const auto& [id, tab] : m_lists) {
        if (tab.page == m_tabs->currentWidget())
            return id;
    }
    return 0;
}

void MainWindow::ShowList(int listId) {
    if (const auto found = m_lists.find(listId); found != m_lists.end())
        m_tabs->setCurrentWidget(found->second.page);
}

void MainWindow::ShowRecord(int listId, quint32 place) {
    const auto found = m_lists.find(listId);
    if (found == m_lists.end())
        return;
    m_tabs->setCurrentWidget(found->second.page);
    if (found->second.view && !found->second.view->SelectRecord(place))
        Tell(tr("The filter of the list hides this detection."));
}

void MainWindow::connectStatus() {
    connect(m_messages, &MessagesPanel::ProblemAdded, this, [this](const QString& text) {
        Tell(text);
        m_status->ShowProblems(m_messages->ProblemCount());
    });
    connect(m_status->GetProblemsButton(), &QToolButton::clicked, this,
            [this] { ShowMessages(m_messagesDock->visibleRegion().isEmpty()); });
    connect(m_actions, &WindowActions::Refused, m_status, &WindowStatus::TellBriefly);
    connect(m_details, &DetailsPanel::Edited, this, &MainWindow::EntryEdited);
    connect(&UndoHistory::Instance(), &UndoHistory::Shown, this, &MainWindow::ShowList);
}

void MainWindow::makePanels(Receiver& receiver) {
    AddPanel(scrolled(m_details), tr("&Details"), Qt::RightDockWidgetArea);
    AddPanel(scrolled(new ReceiverPanel(receiver, *m_bands)), tr("Re&ceiver"), Qt::RightDockWidgetArea);
    AddPanel(new BandsPanel(*m_bands), tr("NOI b&ands"), Qt::RightDockWidgetArea)->hide();
    m_messages->setAccessibleName(tr("Messages"));
    m_messages->setMinimumHeight(LeastMessagesHeight);
    m_messagesDock = AddPanel(m_messages, tr("&Messages"), Qt::BottomDockWidgetArea);
    resizeDocks({m_messagesDock}, {MessagesHeight}, Qt::Vertical);
    sizePanels();
    m_messagesDock->hide();
    AddPanel(new HistoryPanel, tr("&History"), Qt::BottomDockWidgetArea)->hide();
}

/// Details and receiver share what height there is.
void MainWindow::sizePanels() {
    resizeDocks({m_panels[0], m_panels[1]}, {SideWidth, SideWidth}, Qt::Horizontal);
    resizeDocks({m_panels[0], m_panels[1]}, {DetailsHeight, SettingsHeight}, Qt::Vertical);
}

void MainWindow::addList(int listId) {
    IFrequencyListDefinition* definition = FreqStore::Instance().GetDefinition(listId);
    auto* page = new QWidget(m_tabs);
    auto* bar = new FreqStoreListViewButtonBar(page);
    FrequencyStoreListView* view = definition->CreateView(page, static_cast<unsigned>(listId));
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(bar);
    bar->SetCaption(definition->GetName());
    if (view) {
        layout->addWidget(view->GetWidget(), 1);
        view->SetID(static_cast<unsigned>(listId));
        view->InitFreqStoreWidget(bar);
        view->GetListView()->setMinimumHeight(LeastListHeight);
        view->GetListView()->MarkTuned(m_receiver.GetFrequency());
        connect(view->GetListView(), &SortListView::countsChanged, m_tabsChange, [this] {
            if (!m_tabsChange->isActive())
                m_tabsChange->start();
        });
        for (QObject* part : {static_cast<QObject*>(view->GetListView()),
                              static_cast<QObject*>(view->GetListView()->viewport())})
            part->installEventFilter(this);
    }
    const Tab& tab = m_lists[listId] = {definition->GetName(), page, bar, view, QString()};
    nameWidgets(tab);
    m_tabs->addTab(page, Icons::Readable(definition->GetPixmap()), tab.name);
    m_bar->AddList(listId, view);
    showTabs();
}

/// What those hear who do not see the widgets.
void MainWindow::nameWidgets(const Tab& tab) {
    tab.bar->setAccessibleName(tr("Commands of %1").arg(tab.name));
    for (QLineEdit* field : tab.bar->findChildren<QLineEdit*>()) {
        if (field->accessibleName().isEmpty())
            field->setAccessibleName(tr("Filter of %1").arg(tab.name));
    }
    if (!tab.view)
        return;
    tab.view->GetWidget()->setAccessibleName(tab.name);
    tab.view->GetListView()->setAccessibleName(tab.name);
    tab.view->GetListView()->setAccessibleDescription(
        tr("Rows of the list; a double click opens or tunes to one, Ctrl+T tunes"));
}

void MainWindow::removeList(int listId) {
    const auto found = m_lists.find(listId);
    if (found == m_lists.end())
        return;
    m_bar->RemoveList(listId);
    const Tab tab = found->second;
    m_lists.erase(found);
    if (m_tabs->currentWidget() == tab.page) {
        m_actions->SetList(nullptr, nullptr, QString(), {});
        m_details->SetView(nullptr);
    }
    delete tab.page;
}

FrequencyStoreListView* MainWindow::ViewOf(int listId) const {
    const auto found = m_lists.find(listId);
    return found == m_lists.end() ? nullptr : found->second.view;
}

FreqStoreListViewButtonBar* MainWindow::BarOf(int listId) const {
    const auto found = m_lists.find(listId);
    return found == m_lists.end() ? nullptr : found->second.bar;
}

QString MainWindow::TabName(int index) const {
    for (const auto& [id, tab] : m_lists) {
        if (tab.page == m_tabs->widget(index))
            return tab.name;
    }
    return QString();
}

QString MainWindow::TabFileName(int index) const {
    QString name = TabName(index).toLower();
    static const QRegularExpression others(QStringLiteral("[^\\p{L}\\p{N}]+"));
    return name.replace(others, QStringLiteral("-"));
}

const MainWindow::Tab* MainWindow::currentTab() const {
    for (const auto& [id, tab] : m_lists) {
        if (tab.page == m_tabs->currentWidget())
            return &tab;
    }
    return nullptr;
}

void MainWindow::SetFileOf(int listId, const QString& path) {
    const auto found = m_lists.find(listId);
    if (found == m_lists.end())
        return;
    found->second.file = path;
    m_tabs->setTabToolTip(m_tabs->indexOf(found->second.page), path);
    showTitle();
}

QString MainWindow::FileOf(int listId) const {
    const auto found = m_lists.find(listId);
    return found == m_lists.end() ? QString() : found->second.file;
}

void MainWindow::SetUnsaved(int listId, bool unsaved) {
    const auto found = m_lists.find(listId);
    if (found == m_lists.end() || found->second.unsaved == unsaved)
        return;
    found->second.unsaved = unsaved;
    showTabs();
    showTitle();
}

void MainWindow::SetSaver(int listId, std::function<void()> save) {
    const auto found = m_lists.find(listId);
    if (found == m_lists.end())
        return;
    found->second.save = std::move(save);
    showCurrentList();
}

/// The list is what keys go to after each change of the tab.
void MainWindow::showCurrentList() {
    showTitle();
    const Tab* tab = currentTab();
    if (!tab)
        return;
    m_actions->SetList(tab->bar, tab->view, tab->name, tab->save);
    m_details->SetView(tab->view);
    if (tab->view)
        tab->view->GetListView()->setFocus(Qt::OtherFocusReason);
}

void MainWindow::showTabs() {
    const QLocale locale;
    for (const auto& [id, tab] : m_lists) {
        QString text = tab.name;
        if (tab.view)
            text += QLatin1Char(' ') + locale.toString(tab.view->GetListView()->RowCount());
        if (tab.unsaved)
            text += QLatin1Char('*');
        const int index = m_tabs->indexOf(tab.page);
        if (index >= 0 && m_tabs->tabText(index) != text)
            m_tabs->setTabText(index, text);
    }
}

/// The caption of the list's bar tells what was chosen last; the title tells what is shown.
void MainWindow::showTitle() {
    QString title = tr("Frequency Store");
    if (const Tab* tab = currentTab()) {
        title = tab->name;
        if (!tab->file.isEmpty())
            title += QStringLiteral(" - ") + QFileInfo(tab->file).fileName();
        if (tab->unsaved)
            title += QLatin1Char('*');
    }
    setWindowTitle(title);
}

QDockWidget* MainWindow::AddPanel(QWidget* panel, const QString& title, Qt::DockWidgetArea area) {
    const QString name = QString(title).remove(QLatin1Char('&'));
    auto* dock = new QDockWidget(name, this);
    const auto* scrolled = qobject_cast<const QScrollArea*>(panel);
    // The same in every language.
    dock->setObjectName((scrolled ? scrolled->widget() : panel)->metaObject()->className());
    dock->setAccessibleName(name);
    dock->setWidget(panel);
    addDockWidget(area, dock);
    if (area == Qt::BottomDockWidgetArea && m_messagesDock)
        tabifyDockWidget(m_messagesDock, dock); // each has the whole width
    m_panels.push_back(dock);
    dock->toggleViewAction()->setObjectName(QStringLiteral("panel-") + dock->objectName());
    dock->toggleViewAction()->setText(title);
    m_viewMenu->addAction(dock->toggleViewAction());
    SetTips(*dock->toggleViewAction(), tr("Show or hide the panel \"%1\"").arg(name));
    // Among tabs, what is asked for comes to the front.
    connect(dock->toggleViewAction(), &QAction::triggered, dock, [dock](bool shown) {
        if (shown)
            dock->raise();
    });
    return dock;
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) // a list has a meaning of its own for some keys
        return m_actions->TellWhyOff(*static_cast<QKeyEvent*>(event), true);
    if (event->type() != QEvent::ContextMenu)
        return QMainWindow::eventFilter(watched, event);
    QMenu menu;
    m_actions->FillContextMenu(menu);
    menu.exec(static_cast<QContextMenuEvent*>(event)->globalPos());
    return true;
}

/// Keys that nobody has taken.
void MainWindow::keyPressEvent(QKeyEvent* event) {
    if (!m_actions->TellWhyOff(*event, m_tabs->isAncestorOf(QApplication::focusWidget())))
        QMainWindow::keyPressEvent(event);
}

void MainWindow::Tell(const QString& text) {
    m_status->Tell(text);
}

void MainWindow::AddNote(const QString& text, const QString& toolTip) {
    m_status->AddNote(text, toolTip);
}

FailureNote* MainWindow::GetFailureNote() const {
    return m_status->GetFailureNote();
}

void MainWindow::ShowMessages(bool show) {
    m_messagesDock->setVisible(show);
    if (show)
        m_messagesDock->raise();
}
