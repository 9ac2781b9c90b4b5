#include "controls/frequencystore/memory/memorysystemlistview.h"

#include "controls/frequencystore/common/halvovieweditor.h"
#include "controls/frequencystore/memory/memorylistviewfactory.h"
#include "controls/frequencystore/memory/memorymediatorhf.h"
#include "controls/frequencystore/memory/memorysystemhandler.h"
#include "host/base/frequencytext.h"
#include "host/base/problems.h"
#include "host/base/trace.h"
#include "host/freqlist/buttonbar.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodemediatorctrl.h"
#include "host/freqstorexml/frequencystorelist.h"
#include "host/gui/resortpopupmenu.h"
#include "host/widgets/canclosetabdialog.h"

#include <QPointer>
#include <QTimerEvent>

#include <cmath>

namespace {

using Bar = FreqStoreListViewButtonBar;
using FreqStoreXml::FrequencyStoreEntry;

constexpr char TraceSource[] = "memorysystemlistview";
/// The handler does not announce scan surveillance, nor that it waits for a file, so a view that is seen
/// looks that often.
constexpr int HandlerMilliseconds = 250;

constexpr EntryColumn ColumnsVUHF[] = {
    {QT_TRANSLATE_NOOP("MemorySystemListView", "Frequency"), _compNumericWithSuffix, SourceFrequency, 14,
     "Frequency"},
    {QT_TRANSLATE_NOOP("MemorySystemListView", "Bandwidth"), _compNumericWithSuffix, SourceBandwidth, 10,
     "Bandwidth"},
    {QT_TRANSLATE_NOOP("MemorySystemListView", "Comment"), _compStandardString, SourceText, 24, "Comment",
     true},
    {QT_TRANSLATE_NOOP("MemorySystemListView", "Demodulation"), _compStandardString, SourceDemodulation, 6,
     "Demodulation"},
    {QT_TRANSLATE_NOOP("MemorySystemListView", "Use Threshold"), _compStandardString, SourceUseSquelch, 6},
    {QT_TRANSLATE_NOOP("MemorySystemListView", "Threshold"), _compStandardNumeric, SourceThresholdToo, 6},
    {QT_TRANSLATE_NOOP("MemorySystemListView", "Man. Attenuation"), _compStandardString, SourceUseAttenuation,
     6},
    {QT_TRANSLATE_NOOP("MemorySystemListView", "Attenuation"), _compStandardNumeric, SourceAttenuation, 6},
    {QT_TRANSLATE_NOOP("MemorySystemListView", "AFC"), _compStandardString, SourceAFC, 6},
};

constexpr EntryColumn ColumnsHF[] = {
    {QT_TRANSLATE_NOOP("MemorySystemListView", "Frequency"), _compNumericWithSuffix, SourceFrequency, 14,
     "Frequency"},
    {QT_TRANSLATE_NOOP("MemorySystemListView", "Bandwidth"), _compNumericWithSuffix, SourceBandwidth, 10,
     "Bandwidth"},
    {QT_TRANSLATE_NOOP("MemorySystemListView", "Comment"), _compStandardString, SourceText, 24, "Comment",
     true},
    {QT_TRANSLATE_NOOP("MemorySystemListView", "Demodulation"), _compStandardString, SourceDemodulation, 6,
     "Demodulation"},
    {QT_TRANSLATE_NOOP("MemorySystemListView", "Threshold"), _compStandardNumeric, SourceThreshold, 6},
    {QT_TRANSLATE_NOOP("MemorySystemListView", "BFOFrequency"), _compStandardNumeric, SourceBFOFrequency, 6},
    {QT_TRANSLATE_NOOP("MemorySystemListView", "OutputIFPath"), _compStandardString, SourceOutputIF, 9},
    {QT_TRANSLATE_NOOP("MemorySystemListView", "Shift"), _compStandardNumeric, SourceShift, 6},
};

/// The bar's actions that the list has, with its slots.
struct ActionSlot {
    Bar::Action action;
    void (MemorySystemListView::*slot)();
    bool touchesFiles;
};

constexpr ActionSlot ActionSlots[] = {
    {Bar::New, &MemorySystemListView::slotNew, false},
    {Bar::Edit, &MemorySystemListView::slotEdit, false},
    {Bar::Copy, &MemorySystemListView::slotCopy, false},
    {Bar::Paste, &MemorySystemListView::slotPaste, false},
    {Bar::Delete, &MemorySystemListView::slotDelete, false},
    {Bar::Read, &MemorySystemListView::slotLoadFile, true},
    {Bar::SaveToJob, &MemorySystemListView::slotSavetoJob, true},
};

FrequencyNodeMediator* mediatorOf(const SortListViewItem* item) {
    return item ? static_cast<const FrequencyNodeMediatorViewItem*>(item)->GetMediator() : nullptr;
}

} // namespace

FrequencyStoreListView* CreateMemorySystemListView(QWidget* parent, unsigned listId) {
    return new MemorySystemListView(parent, listId);
}

template <>
const EntryColumns& MemoryColumns<false>() {
    static constexpr EntryColumns columns{ColumnsHF, "MemorySystemListView"};
    return columns;
}

template <>
const EntryColumns& MemoryColumns<true>() {
    static constexpr EntryColumns columns{ColumnsVUHF, "MemorySystemListView"};
    return columns;
}

MemorySystemListView::MemorySystemListView(QWidget* parent, unsigned listId)
    : EntryListView(parent, listId, "MemorySystemListView") {
    setFocusPolicy(Qt::StrongFocus);
    setFocus();
    setEnabled(true);
    // The columns of the two kinds are remembered apart.
    if (handler().IsVUHF())
        AddColumns(MemoryColumns<true>(), QStringLiteral("VUHF"));
    else
        AddColumns(MemoryColumns<false>(), QStringLiteral("HF"));
    connect(this, &SortListView::doubleClicked, this,
            qOverload<SortListViewItem*>(&MemorySystemListView::slotEdit));
    connect(this, &SortListView::returnPressed, this,
            qOverload<SortListViewItem*>(&MemorySystemListView::slotEdit));
}

MemorySystemListView::~MemorySystemListView() {
    TraceLazily(TraceSource, [] { return QStringLiteral("Delete listview memory"); });
    m_dialog.reset();
}

MemorySystemHandler& MemorySystemListView::handler() {
    return *MemorySystemHandler::Instance();
}

QString MemorySystemListView::EmptyText() const {
    return tr("No memory channels yet. Add what the receiver is tuned to, open a list or a job, or paste "
              "entries of another list.");
}

void MemorySystemListView::InitFreqStoreWidget(FreqStoreListViewButtonBar* bar) {
    if (!bar)
        return;
    FrequencyNodeListView::InitFreqStoreWidget(bar);
    bar->SetCaption(tr("Frequency Store - Memory channels"));
    bar->SetTip(Bar::New, tr("Add a channel with the receiver's present settings"));
    bar->SetTip(Bar::Read, tr("Add the channels of a file"));
    for (const ActionSlot& entry : ActionSlots)
        bar->GetAction(entry.action)->setVisible(true);
    if (AttachToBar(*bar))
        connectBar(*bar);
    lookAtHandler();
    bar->EnableActions();
}

void MemorySystemListView::connectBar(FreqStoreListViewButtonBar& bar) {
    auto* menu = new ResortPopupMenu(this, "ViewMenu");
    for (const ActionSlot& entry : ActionSlots) {
        QAction* action = bar.GetAction(entry.action);
        connect(action, &QAction::triggered, this, entry.slot);
        if (entry.action == Bar::Copy || entry.action == Bar::Read)
            menu->addSeparator();
        menu->addAction(action);
    }
    SetHeaderMenu(menu);
}

QString MemorySystemListView::WhyOff(int action) const {
    const auto* entry = std::find_if(std::begin(ActionSlots), std::end(ActionSlots),
                                     [action](const ActionSlot& slot) { return slot.action == action; });
    if (entry == std::end(ActionSlots))
        return QString();
    if (m_inSurveillance && entry->touchesFiles)
        return tr("The receiver is in scan surveillance: no file is opened or written.");
    const bool adds = action == Bar::New || action == Bar::Paste || action == Bar::Edit;
    return m_isWaiting && adds ? tr("The last file could not be read: open another one.") : QString();
}

void MemorySystemListView::lookAtHandler() {
    // Once the controller has ended the handler is gone, and asking for it would make a new one.
    const FrequencyNodeMediatorCtrl* const list = List();
    if (!list)
        return;
    const bool wasInSurveillance = std::exchange(m_inSurveillance, handler().GetInScanSurveillance());
    const bool wasWaiting = std::exchange(m_isWaiting, list->IsSuspended());
    if (GetButtonBar() && (wasInSurveillance != m_inSurveillance || wasWaiting != m_isWaiting))
        GetButtonBar()->EnableActions();
}

void MemorySystemListView::showEvent(QShowEvent* event) {
    FrequencyNodeListView::showEvent(event);
    lookAtHandler();
    m_handlerTick.start(HandlerMilliseconds, this);
}

void MemorySystemListView::hideEvent(QHideEvent* event) {
    m_handlerTick.stop();
    FrequencyNodeListView::hideEvent(event);
}

void MemorySystemListView::timerEvent(QTimerEvent* event) {
    if (event->timerId() == m_handlerTick.timerId())
        lookAtHandler();
    else
        FrequencyNodeListView::timerEvent(event);
}

void MemorySystemListView::SetFileName2Caption(const QString& text) {
    if (GetButtonBar())
        GetButtonBar()->SetCaption(tr("Frequency Store - Memory Items - %1").arg(text));
}

double MemorySystemListView::DistanceTo(FrequencyNodeMediator& mediator, double hertz) const {
    double distance = FrequencyNodeListView::DistanceTo(mediator, hertz);
    const auto* channel = dynamic_cast<const MemoryMediator*>(&mediator);
    bool inRange = false;
    double further = 0;
    if (!channel || !channel->GetInRange(inRange) || !inRange)
        return distance;
    for (long i = 0; channel->GetFrequencyInRange(i, further); ++i)
        distance = std::min(distance, std::abs(further - hertz));
    return distance;
}

void MemorySystemListView::slotNew() {
    const QString none;
    if (handler().IsVUHF())
        handler().SetNewEntryVUHF(0, 0, none, none, false, 0, 0, 0, false, false, false);
    else
        handler().SetNewEntryHF(0, 0, none, none, false, none, 0, 0, 0);
    bringJobUpToDate();
    if (List() && List()->size() > 0)
        MakeCurrent(List()->size() - 1);
}

void MemorySystemListView::slotEdit() {
    slotEdit(currentItem());
}

void MemorySystemListView::slotEdit(SortListViewItem* item) {
    std::vector<FrequencyNodeMediator*> channels{mediatorOf(item)};
    if (item && item->isSelected())
        channels = SelectedInOrder();
    std::erase_if(channels, [](auto* mediator) { return !dynamic_cast<MemoryMediator*>(mediator); });
    if (channels.empty() || m_dialog)
        return;
    m_dialog = std::make_unique<CanCloseTabDialog>(this, nullptr, true,
                                                   Qt::Dialog | Qt::MSWindowsFixedSizeDialogHint);
    m_dialog->setWindowTitle(tr("Memory Items Editor"));
    m_editor = new HalvoViewEditor(m_dialog.get(), QStringLiteral("Memory Items Editor"),
                                   static_cast<MemoryMediator*>(channels.front())->GetMediatorType());
    m_dialog->addTab(m_editor, tr("Edit"));
    m_editor->DoWorkOn(channels);
    connect(m_dialog.get(), &TabDialog::applyButtonPressed, this, &MemorySystemListView::slotAcceptChanges);
    connect(m_editor, &HalvoViewEditor::entriesChanged, this, &MemorySystemListView::bringJobUpToDate);
    // The view may end while the dialog is open, and ends the dialog then.
    const QPointer<MemorySystemListView> self(this);
    m_dialog->exec();
    if (!self)
        return;
    m_editor = nullptr;
    m_dialog.reset();
}

void MemorySystemListView::slotAcceptChanges() {
    if (m_editor)
        m_editor->slotAcceptChanges();
}

/// The channels have changed: makes the job's section anew.
void MemorySystemListView::bringJobUpToDate() {
    handler().SuspendMediatorCtrl(false, true);
    if (Controller())
        Controller()->ForceUpdateNow();
    handler().UpdateJobFileEntries();
}

void MemorySystemListView::slotDelete() {
    DoDelete();
    handler().UpdateJobFileEntries();
}

void MemorySystemListView::DoDelete() {
    if (SelectedMediators().empty())
        return;
    DeleteSelectedEntries();
    handler().SuspendMediatorCtrl(false, true);
}

void MemorySystemListView::slotLoadFile() {
    const QPointer<MemorySystemListView> alive(this); // the view may end while a dialog is open
    const QString name = handler().FileOpen();
    if (!alive)
        return;
    SetFileName2Caption(name);
    lookAtHandler();
}

void MemorySystemListView::slotSavetoJob() {
    SetFileName2Caption(handler().Save2Job() ? tr("To Job successful") : tr("To Job not successful"));
}

void MemorySystemListView::slotCopy() {
    CopyEntries(TraceSource);
}

void MemorySystemListView::slotPaste() {
    FrequencyNodeMediatorCtrl* const list = List();
    if (!list)
        return;
    const unsigned long before = list->size();
    const bool isXml =
        FreqStore::Instance().GetClipboardText().contains(QLatin1String("<FrequencyStoreList"));
    const QVector<FrequencyStoreEntry> rows = isXml ? QVector<FrequencyStoreEntry>() : copyBufferEntries();
    if (rows.isEmpty())
        PasteClipboard(TraceSource);
    else
        list->AppendEntries(rows);
    if (list->size() > before) // the handler has brought the job up to date
        MakeCurrent(before);
}

/// The rows of the store's copy buffer as entries; a row without a frequency is told and left out.
QVector<FrequencyStoreEntry> MemorySystemListView::copyBufferEntries() const {
    QVector<FrequencyStoreEntry> entries;
    bool more = false;
    while (const FrequencyListCopyStruct* row = FreqStore::Instance().GetFrequencyListCopyStruct(more)) {
        QString frequency;
        QString bandwidth;
        QString text;
        double hertz = 0;
        if (!row->GetValue(CopyId(SourceFrequency), frequency) || !Quor::ParseFrequency(frequency, hertz)) {
            Problems::Report(TraceSource,
                             Problem{tr("Copied row"), 0, tr("\"%1\" is not a frequency").arg(frequency)});
            continue;
        }
        FrequencyStoreEntry entry;
        FreqStoreXml::FFM_Settings& settings = entry.GetFFM_Settings();
        settings.GetFrequency().SetValue(hertz);
        if (row->GetValue(CopyId(SourceBandwidth), bandwidth) && Quor::ParseFrequency(bandwidth, hertz))
            settings.GetIFBandwidth().SetValue(hertz);
        if (row->GetValue(CopyId(SourceText), text))
            entry.SetComment(text);
        if (row->GetValue(CopyId(SourceDemodulation), text))
            settings.SetAnalogDemod(FreqStoreXml::FFM_Settings::NameToAnalogDemod(text));
        entries.append(entry);
    }
    return entries;
}
