#include "workstation/mainwindow.h"

#include "host/base/frequencytext.h"
#include "host/freqlist/buttonbar.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencystorelistview.h"
#include "host/freqlist/multiviewmediator.h"
#include "host/gui/guicentral.h"
#include "host/gui/listsettings.h"
#include "host/gui/sortlistview.h"
#include "host/startup/cfgcenter.h"
#include "workstation/bandspanel.h"
#include "workstation/failurenote.h"
#include "workstation/frequencybar.h"
#include "workstation/messagespanel.h"
#include "workstation/noibands.h"
#include "workstation/receiver.h"
#include "workstation/receiverpanel.h"

#include <QActionGroup>
#include <QCloseEvent>
#include <QDockWidget>
#include <QFileInfo>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QRegularExpression>
#include <QStatusBar>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {

constexpr int StatusMilliseconds = 8000;
constexpr int MessagesHeight = 110;
const QString PositionFormatKey = QStringLiteral("PositionFormat");
const QString GeometryKey = QStringLiteral("Window/Geometry");
const QString PanelsKey = QStringLiteral("Window/Panels");

} // namespace

MainWindow::MainWindow(Receiver& receiver, QWidget* parent)
    : QMainWindow(parent),
      m_bands(new NoiBands(this)),
      m_bar(new FrequencyBar(this)),
      m_tabs(new QTabWidget(this)),
      m_messages(new MessagesPanel(this)),
      m_failure(new FailureNote(this)),
      m_fileMenu(menuBar()->addMenu(tr("&File"))),
      m_viewMenu(menuBar()->addMenu(tr("&View"))) {
    resize(1440, 860);
    auto* centre = new QWidget(this);
    auto* layout = new QVBoxLayout(centre);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(m_bar);
    layout->addWidget(m_tabs, 1);
    setCentralWidget(centre);
    m_tabs->setDocumentMode(true);

    makeMenus();
    resizeDocks({AddPanel(m_messages, tr("Messages"), Qt::BottomDockWidgetArea)}, {MessagesHeight},
                Qt::Vertical);
    connect(m_messages, &MessagesPanel::ProblemAdded, this, &MainWindow::Tell);
    statusBar()->addPermanentWidget(m_failure);
    AddPanel(new ReceiverPanel(receiver, *m_bands), tr("Receiver"), Qt::RightDockWidgetArea);
    connectReceiver(receiver);
    AddPanel(new BandsPanel(*m_bands), tr("NOI bands"), Qt::RightDockWidgetArea)->hide();
    m_bar->SetBands(*m_bands);

    FreqStore& store = FreqStore::Instance();
    for (const int id : store.GetListIds())
        addList(id);
    connect(&store, &FreqStore::ListAdded, this, &MainWindow::addList);
    connect(&store, &FreqStore::ListRemoved, this, &MainWindow::removeList);
    connect(m_tabs, &QTabWidget::currentChanged, this, &MainWindow::showTitle);
    showTitle();
}

MainWindow::~MainWindow() {
    m_messages->Flush(); // while its listeners are there
    FreqStore::Instance().SetTuner({});
    // Views detach from their controllers while the store still knows them.
    for (auto& [id, tab] : m_lists)
        delete tab.page;
}

void MainWindow::connectReceiver(Receiver& receiver) {
    FreqStore::Instance().SetTuner([&receiver](IFrequencyStoreItem& item, QWidget*, bool allSettings) {
        receiver.Tune(item, allSettings);
    });
    connect(&receiver, &Receiver::Refused, this, &MainWindow::Tell);
    connect(&receiver, &Receiver::Tuned, this, [this](double hertz) {
        m_bar->SetTuned(hertz);
        Tell(tr("Tuned to %1").arg(Quor::FrequencyText(hertz)));
    });
    m_bar->SetTuned(receiver.GetFrequency());
    connect(m_bar, &FrequencyBar::Clicked, this, [this, &receiver](double hertz, int listId) {
        receiver.Tune(hertz);
        const auto found = m_lists.find(listId);
        if (found == m_lists.end())
            return;
        m_tabs->setCurrentWidget(found->second.page);
        if (found->second.view)
            found->second.view->SelectFrequency(hertz);
    });
}

void MainWindow::makeMenus() {
    QAction* quit = m_fileMenu->addAction(tr("&Quit"));
    quit->setShortcut(QKeySequence::Quit);
    connect(quit, &QAction::triggered, this, &QWidget::close);

    connect(m_viewMenu->addAction(tr("Show all &frequencies")), &QAction::triggered, m_bar,
            &FrequencyBar::FitAll);

    addPositionFormats();

    m_helpMenu = menuBar()->addMenu(tr("&Help"));
    connect(m_helpMenu->addAction(tr("&About")), &QAction::triggered, this, [this] {
        QMessageBox::about(
            this, tr("Frequency Store"),
            tr("<b>Frequency Store</b><p>Lists of frequencies for radio monitoring.</p>"
               "<p>Wheel over the bar: zoom. Drag: move. Click: tune. Double click: show all.</p>"));
    });
}

/// How lists write positions, a choice that the settings keep.
void MainWindow::addPositionFormats() {
    ValueSelection& format = *GuiCentral::Instance().GetPositionFormat();
    ICfg& settings = CfgCenter::GetAppCfg(ICfg::StartUp);
    format.Select(static_cast<long>(settings.GetInt(PositionFormatKey, 0)));
    auto* group = new QActionGroup(this);
    for (long i = 0; i < format.GetItemCount(); ++i) {
        QAction* action = group->addAction(format.GetItemAt(i)->GetName());
        const long key = format.GetItemAt(i)->GetKey();
        action->setCheckable(true);
        action->setChecked(key == format.GetCurrentKey());
        connect(action, &QAction::triggered, this, [&format, &settings, key] {
            format.Select(key);
            settings.SetString(PositionFormatKey, QString::number(key));
        });
    }
    m_viewMenu->addMenu(tr("&Positions"))->addActions(group->actions());
}

QMenu* MainWindow::AddMenu(const QString& title) {
    auto* menu = new QMenu(title, this);
    menuBar()->insertMenu(m_helpMenu->menuAction(), menu);
    return menu;
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
    }
    m_lists[listId] = {page, bar, view, QString()};
    m_tabs->addTab(page, definition->GetPixmap(), definition->GetName());
    m_bar->AddList(listId);
}

void MainWindow::removeList(int listId) {
    const auto found = m_lists.find(listId);
    if (found == m_lists.end())
        return;
    m_bar->RemoveList(listId);
    QWidget* page = found->second.page;
    m_lists.erase(found);
    delete page;
}

FrequencyStoreListView* MainWindow::ViewOf(int listId) const {
    const auto found = m_lists.find(listId);
    return found == m_lists.end() ? nullptr : found->second.view;
}

FreqStoreListViewButtonBar* MainWindow::BarOf(int listId) const {
    const auto found = m_lists.find(listId);
    return found == m_lists.end() ? nullptr : found->second.bar;
}

QString MainWindow::TabFileName(int index) const {
    QString name = m_tabs->tabText(index).toLower();
    static const QRegularExpression others(QStringLiteral("[^\\p{L}\\p{N}]+"));
    return name.replace(others, QStringLiteral("-"));
}

void MainWindow::SetFileOf(int listId, const QString& path) {
    const auto found = m_lists.find(listId);
    if (found == m_lists.end())
        return;
    found->second.file = path;
    m_tabs->setTabToolTip(m_tabs->indexOf(found->second.page), path);
    showTitle();
}

/// The caption of the list's bar tells what was chosen last; the title tells what is shown.
void MainWindow::showTitle() {
    QString title = tr("Frequency Store");
    for (const auto& [id, tab] : m_lists) {
        if (tab.page != m_tabs->currentWidget())
            continue;
        title = m_tabs->tabText(m_tabs->currentIndex());
        if (!tab.file.isEmpty())
            title += QStringLiteral(" - ") + QFileInfo(tab.file).fileName();
    }
    setWindowTitle(title);
}

QDockWidget* MainWindow::AddPanel(QWidget* panel, const QString& title, Qt::DockWidgetArea area) {
    auto* dock = new QDockWidget(title, this);
    dock->setObjectName(panel->metaObject()->className()); // the same in every language
    dock->setWidget(panel);
    addDockWidget(area, dock);
    m_viewMenu->addAction(dock->toggleViewAction());
    return dock;
}

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
}

void MainWindow::RememberArrangement() {
    m_remembersArrangement = true;
    restoreGeometry(ListSettings::Load(GeometryKey));
    restoreState(ListSettings::Load(PanelsKey));
}

void MainWindow::Tell(const QString& text) {
    statusBar()->showMessage(text, StatusMilliseconds);
}

void MainWindow::AddNote(const QString& text, const QString& toolTip) {
    auto* note = new QLabel(text, this);
    note->setToolTip(toolTip);
    statusBar()->addPermanentWidget(note);
}
