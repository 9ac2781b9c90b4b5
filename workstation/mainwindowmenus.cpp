#include "host/base/problems.h"
#include "host/freqlist/frequencystorelistview.h"
#include "host/gui/guibase.h"
#include "host/gui/guicentral.h"
#include "host/startup/cfgcenter.h"
#include "host/widgets/frequencyfield.h"
#include "workstation/about.h"
#include "workstation/actions.h"
#include "workstation/actiontips.h"
#include "workstation/bandplanchoice.h"
#include "workstation/findhits.h"
#include "workstation/frequencybar.h"
#include "workstation/helpwindow.h"
#include "workstation/icons.h"
#include "workstation/listprint.h"
#include "workstation/mainwindow.h"
#include "workstation/tuningstrip.h"

#include <QActionGroup>
#include <QApplication>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QMenu>
#include <QMenuBar>
#include <QPrintDialog>
#include <QPrinter>
#include <QTabWidget>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace {

constexpr QSize KeysSize(460, 480); ///< of the dialog
const QString PositionFormatKey = QStringLiteral("PositionFormat");

/// An action of the window's own, with its tip; it has the icon of its name, if there is one.
template <typename Slot>
QAction* add(QMenu& menu, const char* name, const QString& text, const QString& tip, const QKeySequence& key,
             Slot slot) {
    QAction* action = menu.addAction(Icons::Get(QLatin1String(name)), text);
    action->setObjectName(QLatin1String(name));
    action->setShortcut(key);
    SetTips(*action, tip);
    QObject::connect(action, &QAction::triggered, menu.parent(), slot);
    return action;
}

} // namespace

void MainWindow::makeMenus() {
    makeListMenus();
    makeViewMenu();
    makeReceiverMenu();
    makeHelpMenu();
}

void MainWindow::makeListMenus() {
    using A = WindowActions;
    constexpr auto Gap = A::CommandCount;
    m_actions->AddTo(*m_fileMenu, {A::Open});
    m_fileMenu->addMenu(m_recentMenu);
    m_actions->AddTo(*m_fileMenu, {A::OpenIntoList, A::Merge, Gap, A::Save, A::SaveAs, Gap, A::Import,
                                   A::Export, A::ExportForeign, Gap, A::Print, A::Pdf, Gap, A::Quit});
    m_editMenu = menuBar()->addMenu(tr("&Edit"));
    m_actions->AddTo(*m_editMenu, {A::Undo, A::Redo, Gap, A::Cut, A::Copy, A::Paste, A::Delete, Gap,
                                   A::CopyText, A::PasteText, Gap, A::SelectAll, A::FindDuplicates, Gap,
                                   A::Find, A::FindNext, A::FindPrevious});
    m_actions->AddTo(*menuBar()->addMenu(tr("E&ntry")),
                     {A::Tune, A::Previous, A::Next, Gap, A::New, A::Edit, A::EditCell, A::FillDown,
                      A::SetColumn, A::Duplicate, Gap, A::SendTo});
    connect(m_actions, &A::Chosen, this, &MainWindow::choose);
}

void MainWindow::choose(WindowActions::Command command) {
    using A = WindowActions;
    static const std::map<A::Command, void (*)(MainWindow&)> slotOf = {
        {A::Open, [](MainWindow& window) { emit window.OpenWanted(); }},
        {A::FindNext, [](MainWindow& window) { window.findHit(1); }},
        {A::FindPrevious, [](MainWindow& window) { window.findHit(-1); }},
        {A::Print, [](MainWindow& window) { window.print(); }},
        {A::Pdf, [](MainWindow& window) { window.savePdf(); }},
        {A::Quit, [](MainWindow& window) { window.close(); }}};
    slotOf.at(command)(*this);
}

void MainWindow::findHit(int direction) {
    if (!m_hits->Step(direction))
        Tell(m_hits->GetQuery().isEmpty() ? tr("Type what is looked for into the filter")
                                          : tr("No list has a row with \"%1\"").arg(m_hits->GetQuery()));
}

void MainWindow::makeViewMenu() {
    m_viewMenu = menuBar()->addMenu(tr("&View"));
    m_viewMenu->setToolTipsVisible(true);
    add(*m_viewMenu, "fit", tr("Show all &frequencies"), tr("Fit the bar to the entries of all lists"),
        QKeySequence(Qt::CTRL | Qt::Key_0), [this] { m_bar->FitAll(); });
    add(*m_viewMenu, "zoom-in", tr("&Zoom to selection"), tr("Fit the bar to the selected rows"),
        QKeySequence(), [this] { m_bar->ZoomToSelection(); });
    add(*m_viewMenu, "next-list", tr("&Next list"), tr("Show the next list"),
        QKeySequence(Qt::CTRL | Qt::Key_PageDown), [this] { stepTab(1); });
    add(*m_viewMenu, "previous-list", tr("P&revious list"), tr("Show the list before"),
        QKeySequence(Qt::CTRL | Qt::Key_PageUp), [this] { stepTab(-1); });
    addPositionFormats();
    BandPlanChoice::AddTo(*m_viewMenu, *m_bar);
    m_viewMenu->addSeparator();
}

void MainWindow::makeReceiverMenu() {
    m_receiverMenu = menuBar()->addMenu(tr("&Receiver"));
    m_receiverMenu->setToolTipsVisible(true);
    add(*m_receiverMenu, "receiver", tr("&Go to frequency"), tr("Type the frequency to tune to"),
        QKeySequence(Qt::CTRL | Qt::Key_G), [this] {
            m_strip->GetField()->setFocus(Qt::ShortcutFocusReason);
            m_strip->GetField()->selectAll();
        });
    add(*m_receiverMenu, "step-up", tr("Step &up"), tr("Tune one step up"),
        QKeySequence(Qt::ALT | Qt::Key_Right), [this] { m_strip->Step(1); });
    add(*m_receiverMenu, "step-down", tr("Step &down"), tr("Tune one step down"),
        QKeySequence(Qt::ALT | Qt::Key_Left), [this] { m_strip->Step(-1); });
}

void MainWindow::makeHelpMenu() {
    m_helpMenu = menuBar()->addMenu(tr("&Help"));
    add(*m_helpMenu, "help", tr("&Guide"), tr("How to do what, beginning with what has the focus"),
        QKeySequence::HelpContents, [this] { HelpWindow::ShowFor(*this, QApplication::focusWidget()); });
    add(*m_helpMenu, "keys", tr("&Keys"), tr("What the keys do"), QKeySequence(), [this] { showKeys(); });
    add(*m_helpMenu, "welcome", tr("&Welcome"), tr("Ways to begin"), QKeySequence(),
        [this] { emit WelcomeWanted(); });
    m_helpMenu->addSeparator();
    add(*m_helpMenu, "about", tr("&About"), tr("About this program"), QKeySequence(),
        [this] { AboutDialog(this).exec(); });
}

void MainWindow::SetPreferences(std::function<void()> edit) {
    m_editMenu->addSeparator();
    add(*m_editMenu, "preferences", tr("P&references..."), tr("Units, colours, language, keys and the like"),
        QKeySequence(Qt::CTRL | Qt::Key_Comma), [edit = std::move(edit)] { edit(); });
}

void MainWindow::showKeys() {
    QString rows;
    for (const QAction* menu : menuBar()->actions()) {
        for (const QAction* action : menu->menu()->actions()) {
            if (action->shortcut().isEmpty())
                continue;
            QStringList keys;
            for (const QKeySequence& key : action->shortcuts())
                keys << key.toString(QKeySequence::NativeText);
            rows += QStringLiteral("<tr><td>%1&nbsp;&nbsp;</td><td>%2</td></tr>")
                        .arg(keys.join(tr(" or ")).toHtmlEscaped(),
                             action->text().remove(QLatin1Char('&')).toHtmlEscaped());
        }
    }
    QDialog dialog(this);
    dialog.setWindowTitle(tr("Keys"));
    auto* text = new QTextBrowser(&dialog);
    text->setHtml(QStringLiteral("<table>%1</table>").arg(rows));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, &dialog);
    connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    auto* layout = new QVBoxLayout(&dialog);
    layout->addWidget(text);
    layout->addWidget(buttons);
    dialog.resize(KeysSize);
    dialog.exec();
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
        SetTips(*action, tr("Write positions in lists like this"));
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
    menu->setToolTipsVisible(true);
    menuBar()->insertMenu(m_helpMenu->menuAction(), menu);
    return menu;
}

void MainWindow::stepTab(int by) {
    if (const int count = m_tabs->count(); count > 0)
        m_tabs->setCurrentIndex((m_tabs->currentIndex() + by + count) % count);
}

void MainWindow::print() {
    const Tab* tab = currentTab();
    if (!tab || !tab->view)
        return;
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(tab->name);
    QPrintDialog dialog(&printer, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    Tell(ListPrint::Paint(*tab->view, tab->name, printer) ? tr("%1 was printed").arg(tab->name)
                                                          : tr("%1 could not be printed").arg(tab->name));
}

void MainWindow::savePdf() {
    const Tab* tab = currentTab();
    if (!tab || !tab->view)
        return;
    QFileDialog dialog(this, tr("Save List as PDF"), GuiBase::Instance().GetCurrentDirectory(),
                       tr("PDF Documents (*.pdf)"));
    dialog.setOptions(GuiBase::Instance().UseNativeDialogs());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("pdf"));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return;
    const QString path = dialog.selectedFiles().constFirst();
    GuiBase::Instance().SetCurrentDirectory(QFileInfo(path).absolutePath());
    const QString reason = ListPrint::WritePdf(*tab->view, tab->name, path);
    if (!reason.isEmpty())
        return Problems::Report("mainwindow", {path, 0, reason});
    Tell(tr("%1 was written to %2").arg(tab->name, QFileInfo(path).fileName()));
}
