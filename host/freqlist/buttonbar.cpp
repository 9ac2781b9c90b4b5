#include "host/freqlist/buttonbar.h"

#include "host/freqlist/emptylist.h"
#include "host/freqlist/filterfield.h"
#include "host/freqlist/frequencystorelistview.h"
#include "host/freqlist/nothingfound.h"
#include "host/gui/colorset.h"
#include "host/gui/quiettext.h"
#include "host/gui/sortlistview.h"
#include "host/valuetree/operatoraction.h"
#include "host/valuetree/valueselection.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QMenu>
#include <QMetaMethod>
#include <QScopedValueRollback>
#include <QToolBar>
#include <QToolButton>

#include <optional>

namespace {

/// Keys of the update modes.
constexpr long ImmediatelyKey = 0;
constexpr long PausedKey = 1;

/// When an action applies: always, or with one row or more selected.
enum class Needs { Nothing, Selection };

struct ActionInfo {
    const char* text;
    const char* tip;
    QKeySequence::StandardKey standardKey;
    int key;
    Needs needs;
    bool groupBefore; ///< a gap stands before the action
};

// In the order of FreqStoreListViewButtonBar::Action.
constexpr ActionInfo Infos[] = {
    {QT_TRANSLATE_NOOP("FreqStoreListViewButtonBar", "New"),
     QT_TRANSLATE_NOOP("FreqStoreListViewButtonBar", "Add an entry"), QKeySequence::UnknownKey,
     Qt::Key_Insert, Needs::Nothing, false},
    {QT_TRANSLATE_NOOP("FreqStoreListViewButtonBar", "Edit"),
     QT_TRANSLATE_NOOP("FreqStoreListViewButtonBar", "Edit the selected entries"), QKeySequence::UnknownKey,
     0, Needs::Selection, false},
    {QT_TRANSLATE_NOOP("FreqStoreListViewButtonBar", "Copy"),
     QT_TRANSLATE_NOOP("FreqStoreListViewButtonBar", "Copy the selected entries"), QKeySequence::Copy, 0,
     Needs::Selection, true},
    {QT_TRANSLATE_NOOP("FreqStoreListViewButtonBar", "Paste"),
     QT_TRANSLATE_NOOP("FreqStoreListViewButtonBar", "Add the copied entries to this list"),
     QKeySequence::Paste, 0, Needs::Nothing, false},
    {QT_TRANSLATE_NOOP("FreqStoreListViewButtonBar", "Delete"),
     QT_TRANSLATE_NOOP("FreqStoreListViewButtonBar", "Delete the selected entries"), QKeySequence::UnknownKey,
     Qt::Key_Delete, Needs::Selection, false},
    {QT_TRANSLATE_NOOP("FreqStoreListViewButtonBar", "Open…"),
     QT_TRANSLATE_NOOP("FreqStoreListViewButtonBar", "Replace the list by the content of a file"),
     QKeySequence::UnknownKey, 0, Needs::Nothing, true},
    {QT_TRANSLATE_NOOP("FreqStoreListViewButtonBar", "Save…"),
     QT_TRANSLATE_NOOP("FreqStoreListViewButtonBar", "Save the list to a file"), QKeySequence::UnknownKey, 0,
     Needs::Nothing, false},
    {QT_TRANSLATE_NOOP("FreqStoreListViewButtonBar", "Import…"),
     QT_TRANSLATE_NOOP("FreqStoreListViewButtonBar", "Replace the list by the content of a CSV file"),
     QKeySequence::UnknownKey, 0, Needs::Nothing, true},
    {QT_TRANSLATE_NOOP("FreqStoreListViewButtonBar", "Export…"),
     QT_TRANSLATE_NOOP("FreqStoreListViewButtonBar", "Write the list to a CSV file"),
     QKeySequence::UnknownKey, 0, Needs::Nothing, false},
    {QT_TRANSLATE_NOOP("FreqStoreListViewButtonBar", "Save to job"),
     QT_TRANSLATE_NOOP("FreqStoreListViewButtonBar", "Write the channels into the job"),
     QKeySequence::UnknownKey, 0, Needs::Nothing, true},
    {QT_TRANSLATE_NOOP("FreqStoreListViewButtonBar", "To database"),
     QT_TRANSLATE_NOOP("FreqStoreListViewButtonBar", "Send the results to the database"),
     QKeySequence::UnknownKey, 0, Needs::Nothing, true},
    {QT_TRANSLATE_NOOP("FreqStoreListViewButtonBar", "Send to"),
     QT_TRANSLATE_NOOP("FreqStoreListViewButtonBar", "Add the selected entries to another list"),
     QKeySequence::UnknownKey, 0, Needs::Selection, true},
};
static_assert(std::size(Infos) == FreqStoreListViewButtonBar::ActionCount);

bool isKeyOf(const ActionInfo& info, const QKeyEvent& event) {
    if (info.standardKey != QKeySequence::UnknownKey)
        return event.matches(info.standardKey);
    return info.key != 0 && event.key() == info.key && event.modifiers() == Qt::NoModifier;
}

/// What the slots of such an action change in lists is one step for undo, whoever connects them.
class BarAction final : public QAction {
public:
    BarAction(const QString& text, QObject* parent) : QAction(text, parent) {
        connect(this, &QAction::triggered, this, &BarAction::begin);
    }

protected:
    /// The end is the last slot.
    void connectNotify(const QMetaMethod& signal) override {
        if (m_connects || signal != QMetaMethod::fromSignal(&QAction::triggered))
            return;
        const QScopedValueRollback connects(m_connects, true);
        disconnect(m_end);
        m_end = connect(this, &QAction::triggered, this, &BarAction::end);
    }

private:
    /// A dialog of a slot may let the action be triggered again.
    void begin() {
        if (m_depth++ == 0)
            m_step.emplace(text());
    }
    void end() {
        if (--m_depth == 0)
            m_step.reset();
    }

    QMetaObject::Connection m_end;
    bool m_connects = false;
    int m_depth = 0;
    std::optional<OperatorAction> m_step;
};

void setTextColor(QWidget& widget, const QColor& color) {
    QPalette palette = widget.palette();
    palette.setColor(QPalette::WindowText, color);
    widget.setPalette(palette);
}

} // namespace

FreqStoreListViewButtonBar::FreqStoreListViewButtonBar(QWidget* parent)
    : QWidget(parent),
      m_toolBar(new QToolBar(this)),
      m_notice(new QLabel(this)),
      m_open(new QToolButton(this)),
      m_counts(new QLabel(this)),
      m_filter(new FilterField(this)),
      m_understood(new QLabel(this)),
      m_updateMode(std::make_unique<ValueSelection>()) {
    m_updateMode->AddItems({tr("Immediately"), tr("Paused")});
    m_toolBar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    for (int i = 0; i < ActionCount; ++i) {
        const ActionInfo& info = Infos[i];
        if (info.groupBefore)
            m_toolBar->addSeparator();
        auto* action = new BarAction(tr(info.text), m_toolBar);
        m_toolBar->addAction(action);
        connect(action, &QAction::changed, this, &FreqStoreListViewButtonBar::showGaps);
        action->setVisible(false);
        // An action with a menu opens it at once.
        static_cast<QToolButton*>(m_toolBar->widgetForAction(action))
            ->setPopupMode(QToolButton::InstantPopup);
        m_actions[static_cast<size_t>(i)] = action;
        SetTip(static_cast<Action>(i), tr(info.tip));
    }
    m_toolBar->addSeparator();
    m_pause = m_toolBar->addAction(tr("Pause"));
    m_pause->setCheckable(true);
    m_pause->setVisible(false);
    m_pause->setToolTip(tr("Let the rows stand still; what comes meanwhile waits"));
    connect(m_pause, &QAction::changed, this, &FreqStoreListViewButtonBar::showGaps);
    connect(m_pause, &QAction::toggled, this,
            [this](bool on) { m_updateMode->Select(on ? PausedKey : ImmediatelyKey); });
    m_updateMode->AddObserver(this);
    m_filter->setMaximumWidth(220);
    m_understood->setObjectName(QStringLiteral("FilterUnderstood"));
    m_understood->setAlignment(Qt::AlignRight);
    m_understood->setWordWrap(true);
    m_understood->hide();
    m_notice->hide();
    m_notice->setWordWrap(true);
    m_open->hide();
    m_open->setObjectName(QStringLiteral("OpenFromNotice"));
    m_open->setDefaultAction(m_actions[Read]);
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(2, 2, 6, 2);
    layout->setColumnStretch(0, 1);
    layout->addWidget(m_toolBar, 0, 0);
    layout->addWidget(m_counts, 0, 1);
    layout->addWidget(m_filter, 0, 2);
    auto* notice = new QHBoxLayout;
    notice->addWidget(m_open);
    notice->addWidget(m_notice, 1);
    layout->addWidget(m_understood, 1, 0, 1, 3);
    layout->addLayout(notice, 2, 0, 1, 3);
}

FreqStoreListViewButtonBar::~FreqStoreListViewButtonBar() {
    m_updateMode->DeleteObserver(this);
}

void FreqStoreListViewButtonBar::OfferWithoutButton(std::initializer_list<Action> actions) {
    for (const Action action : actions)
        m_withoutButton[action] = true;
}

void FreqStoreListViewButtonBar::OfferPause() {
    m_pause->setVisible(true);
}

void FreqStoreListViewButtonBar::Update(Observable*, TChangeCode) {
    followMode();
}

void FreqStoreListViewButtonBar::followMode() {
    const bool paused = m_updateMode->GetCurrentKey() == PausedKey;
    m_pause->setChecked(paused);
    if (!m_list)
        return;
    m_view->SetPaused(paused);
    showCounts();
}

/// A gap is seen only between two groups that have visible actions.
void FreqStoreListViewButtonBar::showGaps() {
    bool anyBefore = false;
    QAction* pending = nullptr;
    for (QAction* action : m_toolBar->actions()) {
        if (action->isSeparator()) {
            action->setVisible(false);
            pending = anyBefore ? action : nullptr;
        } else if (action->isVisible()) {
            if (pending)
                pending->setVisible(true);
            pending = nullptr;
            anyBefore = true;
        }
    }
}

void FreqStoreListViewButtonBar::SetCaption(const QString& caption) {
    m_caption = caption;
    emit CaptionChanged(caption);
}

void FreqStoreListViewButtonBar::AttachView(FrequencyStoreListView* view) {
    if (m_list)
        disconnect(m_list, nullptr, this, nullptr);
    m_view = view;
    m_list = view ? view->GetListView() : nullptr;
    delete m_nothingFound;
    delete m_emptyList;
    m_filter->SetList(m_list);
    showUnderstood();
    if (!m_list)
        return;
    m_nothingFound = new NothingFound(*m_list);
    m_emptyList = new EmptyList(*view, *this);
    connect(m_nothingFound, &NothingFound::clearWanted, m_filter, &QLineEdit::clear);
    connect(m_list, &SortListView::filterChanged, this, &FreqStoreListViewButtonBar::showUnderstood);
    connect(m_list, &SortListView::countsChanged, this, [this] {
        showCounts();
        EnableActions();
    });
    connect(m_list, &QObject::destroyed, this, [this] { AttachView(nullptr); });
    followMode();
    EnableActions();
}

void FreqStoreListViewButtonBar::DetachView(const FrequencyStoreListView* view) {
    if (m_view == view)
        AttachView(nullptr);
}

void FreqStoreListViewButtonBar::SetTip(Action action, const QString& tip) {
    m_tips[action] = tip;
    m_actions[action]->setToolTip(tip);
}

void FreqStoreListViewButtonBar::showCounts() {
    const QLocale locale;
    QString text = tr("%Ln entries", nullptr, m_list->RowCount());
    if (m_list->ShownCount() != m_list->RowCount())
        text += tr(", %1 shown").arg(locale.toString(m_list->ShownCount()));
    if (m_list->IsFiltering())
        text += QStringLiteral("…");
    if (const int selected = m_list->SelectedCount())
        text += tr(", %1 selected").arg(locale.toString(selected));
    if (m_view->IsPaused())
        text += tr(", paused, %1 waiting").arg(locale.toString(m_view->WaitingCount()));
    m_counts->setText(text);
}

void FreqStoreListViewButtonBar::EnableActions() {
    const bool selected = m_list && m_list->SelectedCount() > 0;
    QStringList reasons = m_note.isEmpty() ? QStringList() : QStringList{m_note};
    for (size_t i = 0; i < m_actions.size(); ++i) {
        const Needs needs = Infos[i].needs;
        const QString reason = whyOff(i);
        QAction& action = *m_actions[i];
        action.setEnabled(reason.isEmpty() && (needs == Needs::Nothing || selected));
        action.setToolTip(reason.isEmpty() ? m_tips[i] : m_tips[i] + QLatin1Char('\n') + reason);
        if (action.isVisible() && !reason.isEmpty() && !reasons.contains(reason))
            reasons << reason;
    }
    showNotice(reasons.join(QLatin1Char(' ')));
    // A list that takes no entries takes a file.
    m_open->setVisible(!whyOff(New).isEmpty() && m_actions[New]->isVisible() &&
                       m_actions[Read]->isVisible() && m_actions[Read]->isEnabled());
    if (m_emptyList)
        m_emptyList->Refresh();
}

QString FreqStoreListViewButtonBar::whyOff(size_t action) const {
    const QString reason = m_view ? m_view->WhyOff(static_cast<int>(action)) : QString();
    return reason.isEmpty() ? m_whyOff[action] : reason;
}

void FreqStoreListViewButtonBar::SetWhyOff(Action action, const QString& reason) {
    if (std::exchange(m_whyOff[action], reason) != reason)
        EnableActions();
}

void FreqStoreListViewButtonBar::SetNote(const QString& note) {
    m_note = note;
    EnableActions();
}

void FreqStoreListViewButtonBar::showNotice(const QString& notice) {
    setTextColor(*m_notice, ColorSet::Instance().GetColorDefinition(IColorBase::WARNING_TEXT).GetColor());
    m_notice->setText(notice);
    m_notice->setVisible(!notice.isEmpty());
}

void FreqStoreListViewButtonBar::showUnderstood() {
    const QString problem = m_filter->ProblemText();
    const QString understood = m_list ? m_list->FilterQuery().Describe() : QString();
    setTextColor(*m_understood,
                 problem.isEmpty()
                     ? QuietText(palette())
                     : ColorSet::Instance().GetColorDefinition(IColorBase::ERROR_TEXT).GetColor());
    m_understood->setText(!problem.isEmpty() || understood.isEmpty() ? problem
                                                                     : tr("Shown: %1").arg(understood));
    m_understood->setVisible(!m_understood->text().isEmpty());
}

void FreqStoreListViewButtonBar::Tell(const QString& text) {
    m_counts->setText(text);
}

ValuePtr<ValueSelection> FreqStoreListViewButtonBar::UpdateModeSelection() {
    return m_updateMode.get();
}

void FreqStoreListViewButtonBar::AddActionsTo(QMenu& menu) const {
    for (size_t i = 0; i < m_actions.size(); ++i) {
        if (!Offers(static_cast<Action>(i)))
            continue;
        if (Infos[i].groupBefore && !menu.isEmpty())
            menu.addSeparator();
        menu.addAction(m_actions[i]);
    }
    if (!m_pause->isVisible())
        return;
    menu.addSeparator();
    menu.addAction(m_pause);
}

bool FreqStoreListViewButtonBar::TriggerByKey(const QKeyEvent& event) {
    for (size_t i = 0; i < m_actions.size(); ++i) {
        if (Offers(static_cast<Action>(i)) && isKeyOf(Infos[i], event)) {
            m_actions[i]->trigger(); // does nothing while it is off; the key is not for others then
            return true;
        }
    }
    return false;
}
