#include "workstation/actions.h"

#include "controls/frequencystore/common/csvallowed.h"
#include "controls/frequencystore/merge/listmerge.h"
#include "host/base/longwork.h"
#include "host/freqlist/buttonbar.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodelistview.h"
#include "host/freqlist/undohistory.h"
#include "host/gui/sortlistview.h"
#include "workstation/foreignexport.h"
#include "workstation/foreignimport.h"
#include "workstation/icons.h"
#include "workstation/listimport.h"
#include "workstation/setcolumndialog.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMetaEnum>
#include <QTimer>
#include <QToolButton>
#include <QUndoStack>

namespace {

using Bar = FreqStoreListViewButtonBar;

constexpr int None = -1; ///< no action of the bar

struct Info {
    const char* text;
    const char* tip;
    const char* icon;
    QList<QKeySequence> keys;
    int barAction;    ///< the action of the button bar that the command stands for
    bool inListsOnly; ///< its keys mean something else in other fields
};

/// In the order of WindowActions::Command.
const Info& infoOf(size_t command) {
    static const Info infos[] = {
        {QT_TRANSLATE_NOOP("WindowActions", "&Open..."),
         QT_TRANSLATE_NOOP("WindowActions", "Open any file; it goes to whom it belongs"),
         "open",
         {QKeySequence::Open},
         None,
         false},
        {QT_TRANSLATE_NOOP("WindowActions", "Open &into This List..."), "", "open", {}, Bar::Read, false},
        {QT_TRANSLATE_NOOP("WindowActions", "I&mport into List..."),
         QT_TRANSLATE_NOOP(
             "WindowActions",
             "Show what the entries of a file would add to the list and change in it, and choose"),
         "import",
         {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_I)},
         None,
         false},
        {QT_TRANSLATE_NOOP("WindowActions", "&Save"),
         QT_TRANSLATE_NOOP("WindowActions", "Save the list into its file"),
         "save",
         {QKeySequence::Save},
         None,
         false},
        {QT_TRANSLATE_NOOP("WindowActions", "Save &As..."),
         QT_TRANSLATE_NOOP("WindowActions", "Save the list under another name"),
         "save-as",
         {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S)},
         Bar::Save,
         false},
        {QT_TRANSLATE_NOOP("WindowActions", "&Import CSV..."),
         "",
         "import",
         {QKeySequence(Qt::CTRL | Qt::Key_I)},
         Bar::Import,
         false},
        {QT_TRANSLATE_NOOP("WindowActions", "&Export CSV..."),
         "",
         "export",
         {QKeySequence(Qt::CTRL | Qt::Key_E)},
         Bar::Export,
         false},
        {QT_TRANSLATE_NOOP("WindowActions", "E&xport for Other Programs..."),
         QT_TRANSLATE_NOOP("WindowActions",
                           "Write the list as a file of another program, after a look at what would be lost"),
         "export",
         {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_X)},
         None,
         false},
        {QT_TRANSLATE_NOOP("WindowActions", "&Print List..."),
         QT_TRANSLATE_NOOP("WindowActions", "Print the rows that are shown"),
         "print",
         {QKeySequence::Print},
         None,
         false},
        {QT_TRANSLATE_NOOP("WindowActions", "Save List as P&DF..."),
         QT_TRANSLATE_NOOP("WindowActions", "Write the rows that are shown as a PDF document"),
         "print",
         {},
         None,
         false},
        {QT_TRANSLATE_NOOP("WindowActions", "&Quit"),
         QT_TRANSLATE_NOOP("WindowActions", "End the program"),
         "quit",
         {QKeySequence(Qt::CTRL | Qt::Key_Q)},
         None,
         false},
        {QT_TRANSLATE_NOOP("WindowActions", "&Undo"),
         QT_TRANSLATE_NOOP("WindowActions", "Take back the last change of a list"),
         "undo",
         {QKeySequence(Qt::CTRL | Qt::Key_Z)},
         None,
         false},
        {QT_TRANSLATE_NOOP("WindowActions", "Red&o"),
         QT_TRANSLATE_NOOP("WindowActions", "Do again what was taken back"),
         "redo",
         {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), QKeySequence(Qt::CTRL | Qt::Key_Y)},
         None,
         false},
        {QT_TRANSLATE_NOOP("WindowActions", "Cu&t"),
         QT_TRANSLATE_NOOP("WindowActions", "Copy the selected entries and delete them"),
         "cut",
         {QKeySequence::Cut},
         None,
         true},
        {QT_TRANSLATE_NOOP("WindowActions", "&Copy"), "", "copy", {QKeySequence::Copy}, Bar::Copy, true},
        {QT_TRANSLATE_NOOP("WindowActions", "&Paste"), "", "paste", {QKeySequence::Paste}, Bar::Paste, true},
        {QT_TRANSLATE_NOOP("WindowActions", "&Delete"),
         "",
         "delete",
         {QKeySequence(Qt::Key_Delete)},
         Bar::Delete,
         true},
        {QT_TRANSLATE_NOOP("WindowActions", "Copy as Te&xt"),
         QT_TRANSLATE_NOOP("WindowActions", "Copy the selected rows as text for a spreadsheet"),
         "copy",
         {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_C)},
         None,
         true},
        {QT_TRANSLATE_NOOP("WindowActions", "Paste T&ext"),
         QT_TRANSLATE_NOOP("WindowActions", "Add an entry for each row that a spreadsheet has copied"),
         "paste",
         {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_V)},
         None,
         true},
        {QT_TRANSLATE_NOOP("WindowActions", "Select &All"),
         QT_TRANSLATE_NOOP("WindowActions", "Select all rows that are shown"),
         "select-all",
         {QKeySequence::SelectAll},
         None,
         true},
        {QT_TRANSLATE_NOOP("WindowActions", "Find Dup&licates"),
         QT_TRANSLATE_NOOP(
             "WindowActions",
             "Select entries of the same frequency, within the tolerance of the preferences, and "
             "demodulation as an earlier one; the first one of each stays, also when the others "
             "are deleted"),
         "",
         {},
         None,
         false},
        {QT_TRANSLATE_NOOP("WindowActions", "&Find"),
         QT_TRANSLATE_NOOP("WindowActions", "Narrow the rows to those that contain a text"),
         "find",
         {QKeySequence::Find},
         None,
         false},
        {QT_TRANSLATE_NOOP("WindowActions", "Find &Next"),
         QT_TRANSLATE_NOOP("WindowActions", "Go to the next row with what was looked for, through all lists"),
         "next",
         {QKeySequence(Qt::Key_F3)},
         None,
         false},
        {QT_TRANSLATE_NOOP("WindowActions", "Find Pre&vious"),
         QT_TRANSLATE_NOOP("WindowActions",
                           "Go to the row before with what was looked for, through all lists"),
         "previous",
         {QKeySequence(Qt::SHIFT | Qt::Key_F3)},
         None,
         false},
        {QT_TRANSLATE_NOOP("WindowActions", "&Tune"),
         QT_TRANSLATE_NOOP("WindowActions", "Tune the receiver to the selected entry, with all its settings"),
         "tune",
         {QKeySequence(Qt::CTRL | Qt::Key_T), QKeySequence(Qt::CTRL | Qt::Key_Return),
          QKeySequence(Qt::CTRL | Qt::Key_Enter)},
         None,
         false},
        {QT_TRANSLATE_NOOP("WindowActions", "Pre&vious Entry"),
         QT_TRANSLATE_NOOP("WindowActions", "Go to the row above and tune to it"),
         "previous",
         {QKeySequence(Qt::ALT | Qt::Key_Up)},
         None,
         false},
        {QT_TRANSLATE_NOOP("WindowActions", "Ne&xt Entry"),
         QT_TRANSLATE_NOOP("WindowActions", "Go to the row below and tune to it"),
         "next",
         {QKeySequence(Qt::ALT | Qt::Key_Down)},
         None,
         false},
        {QT_TRANSLATE_NOOP("WindowActions", "&New..."),
         "",
         "new",
         {QKeySequence::New, QKeySequence(Qt::Key_Insert)},
         Bar::New,
         true},
        {QT_TRANSLATE_NOOP("WindowActions", "&Edit..."),
         "",
         "edit",
         {QKeySequence(Qt::ALT | Qt::Key_Return), QKeySequence(Qt::ALT | Qt::Key_Enter)},
         Bar::Edit,
         true},
        {QT_TRANSLATE_NOOP("WindowActions", "Edit &Cell"),
         QT_TRANSLATE_NOOP("WindowActions", "Edit the cell clicked last; Tab goes on to the next one"),
         "edit",
         {QKeySequence(Qt::Key_F2)},
         None,
         true},
        {QT_TRANSLATE_NOOP("WindowActions", "&Fill Down"),
         QT_TRANSLATE_NOOP("WindowActions",
                           "Give the first selected row's value, in the column clicked last, to the others"),
         "",
         {QKeySequence(Qt::CTRL | Qt::Key_D)},
         None,
         true},
        {QT_TRANSLATE_NOOP("WindowActions", "Set C&olumn..."),
         QT_TRANSLATE_NOOP("WindowActions", "Give all selected rows one value"),
         "",
         {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_E)},
         None,
         false},
        {QT_TRANSLATE_NOOP("WindowActions", "&Duplicate"),
         QT_TRANSLATE_NOOP("WindowActions", "Add a copy of each selected entry"),
         "duplicate",
         {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_D)},
         None,
         true},
        {QT_TRANSLATE_NOOP("WindowActions", "&Send to"), "", "send-to", {}, Bar::SendTo, false},
    };
    static_assert(std::size(infos) == WindowActions::CommandCount);
    return infos[command];
}

QUndoStack& steps() {
    return UndoHistory::Instance().Stack();
}

/// A name of a list as it stands in a menu.
QString quoted(QString text) {
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
}

} // namespace

WindowActions::WindowActions(QWidget* window, QWidget* lists) : QObject(window) {
    for (size_t i = 0; i < m_actions.size(); ++i) {
        const Info& info = infoOf(i);
        auto* action = new QAction(Icons::Get(QLatin1String(info.icon)), tr(info.text), this);
        action->setObjectName(QLatin1String(QMetaEnum::fromType<Command>().valueToKey(static_cast<int>(i))));
        action->setShortcuts(info.keys);
        if (info.inListsOnly) {
            action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
            lists->addAction(action);
        }
        connect(action, &QAction::triggered, this, [this, i] { act(static_cast<Command>(i)); });
        m_actions[i] = action;
    }
    connect(&steps(), &QUndoStack::indexChanged, this, &WindowActions::Refresh);
    Refresh();
}

void WindowActions::AddTo(QMenu& menu, std::initializer_list<Command> commands) const {
    menu.setToolTipsVisible(true);
    for (const Command command : commands) {
        if (command == CommandCount)
            menu.addSeparator();
        else
            menu.addAction(Get(command));
    }
}

void WindowActions::SetList(FreqStoreListViewButtonBar* bar, FrequencyStoreListView* view,
                            const QString& name, std::function<void()> save) {
    if (const SortListView* before = list())
        disconnect(before, nullptr, this, nullptr);
    if (m_bar)
        disconnect(m_bar, nullptr, this, nullptr);
    for (int i = 0; m_bar && i < Bar::ActionCount; ++i)
        disconnect(m_bar->GetAction(static_cast<Bar::Action>(i)), nullptr, this, nullptr);
    m_bar = bar;
    m_view = view;
    m_name = name;
    m_save = std::move(save);
    const auto later = [this] {
        if (!std::exchange(m_refreshes, true))
            QTimer::singleShot(0, this, &WindowActions::Refresh);
    };
    if (bar) {
        connect(bar, &QObject::destroyed, this, [this] {
            SetList(nullptr, nullptr, QString(), {}); // the view goes with it
        });
        for (int i = 0; i < Bar::ActionCount; ++i)
            connect(bar->GetAction(static_cast<Bar::Action>(i)), &QAction::changed, this, later);
        // The bar's button takes what other programs have copied, too.
        for (QToolButton* const button : bar->findChildren<QToolButton*>()) {
            if (button->defaultAction() != bar->GetAction(Bar::Paste))
                continue;
            button->setDefaultAction(Get(Paste));
            button->removeAction(bar->GetAction(Bar::Paste)); // two would be a menu
        }
    }
    if (const SortListView* shown = list())
        connect(shown, &SortListView::countsChanged, this, later);
    Get(SendTo)->setMenu(bar ? bar->GetAction(Bar::SendTo)->menu() : nullptr);
    Refresh();
}

SortListView* WindowActions::list() const {
    return m_bar && m_view ? m_view->GetListView() : nullptr;
}

/// Null for a list of records.
FrequencyNodeListView* WindowActions::entries() const {
    return qobject_cast<FrequencyNodeListView*>(list());
}

bool WindowActions::offers(int barAction) const {
    const QAction* action = m_bar ? m_bar->GetAction(static_cast<Bar::Action>(barAction)) : nullptr;
    return action && (m_bar->Offers(static_cast<Bar::Action>(barAction)) || HasCsv(*action));
}

QString WindowActions::whyBarOff(int barAction) const {
    if (!offers(barAction))
        return tr("%1 does not have this.").arg(m_name);
    if (const QString reason = m_view ? m_view->WhyOff(barAction) : QString(); !reason.isEmpty())
        return reason;
    const QAction& action = *m_bar->GetAction(static_cast<Bar::Action>(barAction));
    if (!action.isVisible()) { // nothing but the view and the selection turn a hidden one off
        const bool needsRow = barAction == Bar::Edit || barAction == Bar::Delete;
        return needsRow && list()->SelectedCount() == 0 ? tr("No entry is selected.") : QString();
    }
    if (action.isEnabled())
        return QString();
    const qsizetype reason = action.toolTip().indexOf(QLatin1Char('\n'));
    return reason < 0 ? tr("No entry is selected.") : action.toolTip().mid(reason + 1);
}

QString WindowActions::whyOff(Command command) const {
    if (command == Open || command == Quit)
        return QString();
    if (command == Undo)
        return steps().canUndo() ? QString() : tr("Nothing has been changed yet.");
    if (command == Redo)
        return steps().canRedo() ? QString() : tr("Nothing has been taken back.");
    if (!list())
        return tr("No list is shown.");
    if (const int barAction = infoOf(command).barAction; barAction != None)
        return whyBarOff(barAction);
    switch (command) {
    case Save:
        return m_save ? m_view->WhyOff(Bar::SaveToJob)
                      : tr("%1 has no file of its own: use Save As.").arg(m_name);
    case Cut: {
        const QString reason = whyBarOff(Bar::Copy);
        return reason.isEmpty() ? whyBarOff(Bar::Delete) : reason;
    }
    case Tune:
        return list()->SelectedCount() > 0 ? QString() : tr("No entry is selected.");
    case EditCell:
    case FillDown:
    case SetColumn:
        return whyCellsOff();
    case PasteText:
        return entries() && entries()->CanDuplicate() ? m_view->WhyOff(Bar::Paste)
                                                      : tr("%1 takes no entries.").arg(m_name);
    case CopyText:
        return list()->SelectedCount() > 0 ? QString() : tr("No entry is selected.");
    case Duplicate:
        if (!m_view->CanDuplicate())
            return tr("%1 takes no copies of its entries.").arg(m_name);
        if (const QString reason = m_view->WhyOff(Bar::Paste); !reason.isEmpty())
            return reason;
        return list()->SelectedCount() > 0 ? QString() : tr("No entry is selected.");
    case Merge:
        if (const QString reason = m_view->WhyOff(Bar::Paste); !reason.isEmpty())
            return reason;
        return ListMerge::WhyOff(FreqStore::Instance().GetFrequencies(m_view->GetID()));
    case ExportForeign:
        return list()->RowCount() > 0 ? QString() : tr("%1 has no entries.").arg(m_name);
    case FindDuplicates:
        return entries() ? QString() : tr("%1 is a list of what was heard, one entry each time.").arg(m_name);
    case Print:
    case Pdf:
    case SelectAll:
    case Previous:
    case Next:
        return list()->ShownCount() > 0 ? QString() : tr("%1 shows no rows.").arg(m_name);
    default:
        return QString();
    }
}

QString WindowActions::whyCellsOff() const {
    if (!entries())
        return tr("The rows of %1 cannot be edited.").arg(m_name);
    if (const QString reason = m_view->WhyOff(Bar::Edit); !reason.isEmpty())
        return reason;
    return list()->SelectedCount() > 0 ? QString() : tr("No entry is selected.");
}

QString WindowActions::tipOf(Command command) const {
    const Info& info = infoOf(command);
    if (info.barAction == None || *info.tip)
        return tr(info.tip);
    return m_bar ? m_bar->GetAction(static_cast<Bar::Action>(info.barAction))->toolTip().section('\n', 0, 0)
                 : QString();
}

void WindowActions::Refresh() {
    m_refreshes = false;
    for (size_t i = 0; i < m_actions.size(); ++i) {
        const auto command = static_cast<Command>(i);
        const QString reason = whyOff(command);
        const QString tip = tipOf(command);
        QAction& action = *m_actions[i];
        action.setEnabled(reason.isEmpty());
        action.setToolTip(reason.isEmpty() ? tip : tip.isEmpty() ? reason : tip + QLatin1Char('\n') + reason);
        action.setStatusTip(reason.isEmpty() ? tip : reason);
    }
    Get(Undo)->setText(steps().canUndo() ? tr("&Undo %1").arg(quoted(steps().undoText())) : tr("&Undo"));
    Get(Redo)->setText(steps().canRedo() ? tr("Red&o %1").arg(quoted(steps().redoText())) : tr("Red&o"));
    // Some lists take a file in place of what they have, others add it: the entry says which.
    const QString what = tipOf(OpenIntoList);
    Get(OpenIntoList)
        ->setText(offers(Bar::Read) ? tr("%1: %2...").arg(m_name, what) : tr(infoOf(OpenIntoList).text));
}

bool WindowActions::TellWhyOff(const QKeyEvent& pressed, bool inLists) {
    const QKeySequence key(pressed.keyCombination());
    for (size_t i = 0; i < m_actions.size(); ++i) {
        const QAction& action = *m_actions[i];
        if (action.isEnabled() || !action.shortcuts().contains(key) || (infoOf(i).inListsOnly && !inLists))
            continue;
        const QString reason = whyOff(static_cast<Command>(i)); // none when it is about to come on
        if (!reason.isEmpty())
            emit Refused(tr("%1: %2").arg(action.text().remove(QLatin1Char('&')), reason));
        return !reason.isEmpty();
    }
    return false;
}

void WindowActions::act(Command command) {
    const int barAction = infoOf(command).barAction;
    if (command == Paste && pastesForeign())
        return;
    if (barAction != None && barAction != Bar::SendTo)
        return m_bar->GetAction(static_cast<Bar::Action>(barAction))->trigger();
    switch (command) {
    case Undo:
        return steps().undo();
    case Redo:
        return steps().redo();
    case Save:
        return m_save();
    case Cut:
        return cut();
    case SelectAll:
        return list()->selectAll();
    case Merge:
        return ListImport::AskAndImport(*list()->window(), m_view->GetID());
    case ExportForeign:
        return ForeignExport::AskAndWrite(*list()->window(), *m_view, m_name);
    case FindDuplicates:
        emit FreqStore::Instance().Told(ListImport::SelectDuplicates(*entries()));
        return;
    case Find:
        if (auto* filter = m_bar->findChild<QLineEdit*>()) {
            filter->setFocus(Qt::ShortcutFocusReason);
            filter->selectAll();
        }
        return;
    case Tune:
        m_view->TuneToCurrent();
        return;
    case CopyText:
        return copyText();
    case PasteText:
        return pasteText();
    case EditCell:
        list()->setFocus();
        list()->EditCell();
        return;
    case FillDown:
        return fillDown();
    case SetColumn:
        return SetColumnDialog::Ask(*entries(), *m_bar);
    case Previous:
        return step(Qt::Key_Up);
    case Next:
        return step(Qt::Key_Down);
    case Duplicate:
        return m_view->Duplicate();
    default:
        emit Chosen(command);
    }
}

void WindowActions::cut() {
    const OperatorAction action(tr("Cut"));
    const int cancelled = LongWork::CancelCount();
    m_bar->GetAction(Bar::Copy)->trigger();
    if (LongWork::CancelCount() == cancelled) // nothing goes that was not copied
        m_bar->GetAction(Bar::Delete)->trigger();
}

void WindowActions::copyText() {
    QGuiApplication::clipboard()->setText(m_view->SelectedText());
}

/// Whether the clipboard had what another program wrote, which has been dealt with then.
bool WindowActions::pastesForeign() {
    const QString text = QGuiApplication::clipboard()->text();
    QStringList titles;
    for (int column = 0; entries() && column < entries()->columnCount(); ++column)
        titles << entries()->headerItem()->text(column);
    if (text.trimmed().isEmpty() || !ForeignImport::IsForeign(text, titles))
        return false;
    ForeignImport::Ask(*list()->window(), ForeignSource::OfText(text),
                       ForeignImport::Propose(m_view->GetID(), ForeignImport::Way::Add));
    return true;
}

void WindowActions::pasteText() {
    if (pastesForeign())
        return;
    const int added = entries()->PasteText(QGuiApplication::clipboard()->text());
    m_bar->Tell(tr("%Ln entries added", nullptr, added));
}

void WindowActions::fillDown() {
    SetColumnDialog::Tell(*m_bar, entries()->FillDown());
}

/// As the key in the list does, whose rows may be a page of many.
void WindowActions::step(int key) {
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(list(), &press);
    m_view->TuneToCurrent();
}

void WindowActions::FillContextMenu(QMenu& menu) const {
    if (!m_bar)
        return;
    m_bar->EnableActions();
    AddTo(menu, {Tune, EditCell, FillDown, SetColumn, Duplicate, CommandCount});
    QMenu ofBar;
    m_bar->AddActionsTo(ofBar);
    for (QAction* action : ofBar.actions()) {
        QAction* shown = action; // what the bar alone has, such as Pause
        for (size_t i = 0; i < m_actions.size(); ++i) {
            const int barAction = infoOf(i).barAction;
            if (barAction != None && action == m_bar->GetAction(static_cast<Bar::Action>(barAction)))
                shown = m_actions[i];
        }
        if (action->isSeparator())
            menu.addSeparator();
        else
            menu.addAction(shown);
    }
}
