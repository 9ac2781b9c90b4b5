#include "workstation/detailspanel.h"

#include "controls/frequencystore/common/keys.h"
#include "host/base/frequencytext.h"
#include "host/freqlist/buttonbar.h"
#include "host/freqlist/frequencynodelistview.h"
#include "host/freqlist/frequencynodemediator.h"
#include "host/gui/sortlistview.h"
#include "host/valuetree/operatoraction.h"
#include "host/widgets/vccheckbox.h"
#include "host/widgets/vccomboboxclassic.h"
#include "host/widgets/vclineedit.h"
#include "receiver/receiversettings.h"
#include "workstation/elidedlabel.h"

#include <QAction>
#include <QDateTime>
#include <QFormLayout>
#include <QLabel>
#include <QToolButton>

namespace {

constexpr int TickMilliseconds = 500;

using Field = VCLineEdit::LineEditType;
/// What a field of a frequency has room for.
const QString LongFrequency = QStringLiteral("  145 500.000 000 MHz  ");
constexpr int ReadOnly = -1; ///< what the list makes of other values, or a machine has found out

/// A value of an entry, as operators call it, with the field in which it is edited.
struct Known {
    const FreqList::Key& key;
    const char* title;
    int field;
};
const Known Values[] = {
    {Keys::KeyFrequency, QT_TRANSLATE_NOOP("DetailsPanel", "Frequency"), Field::Frequency},
    {Keys::KeyBandwidth, QT_TRANSLATE_NOOP("DetailsPanel", "Bandwidth"), Field::Bandwidth},
    {Keys::BandwidthSel, QT_TRANSLATE_NOOP("DetailsPanel", "Bandwidth"), Field::Bandwidth},
    {Keys::KeyDemodulation, QT_TRANSLATE_NOOP("DetailsPanel", "Demodulation"), Field::Text},
    {Keys::KeyComment, QT_TRANSLATE_NOOP("DetailsPanel", "Comment"), Field::Text},
    {Keys::Priority, QT_TRANSLATE_NOOP("DetailsPanel", "Priority"), Field::Integer},
    {Keys::ThreatClass, QT_TRANSLATE_NOOP("DetailsPanel", "Threat class"), Field::Text},
    {Keys::SignalClass, QT_TRANSLATE_NOOP("DetailsPanel", "Signal class"), Field::Text},
    {Keys::TransmissionSystem, QT_TRANSLATE_NOOP("DetailsPanel", "System"), Field::Text},
    {Keys::ProfileName, QT_TRANSLATE_NOOP("DetailsPanel", "Profile"), Field::Text},
    {Keys::ProfileID, QT_TRANSLATE_NOOP("DetailsPanel", "Profile ID"), Field::Text},
    {Keys::Threshold, QT_TRANSLATE_NOOP("DetailsPanel", "Threshold (dBµV)"), Field::Integer},
    {Keys::BFOFrequency, QT_TRANSLATE_NOOP("DetailsPanel", "BFO (Hz)"), Field::Integer},
    {Keys::OutputIFPath, QT_TRANSLATE_NOOP("DetailsPanel", "Output IF path"), Field::Text},
    {Keys::Shift, QT_TRANSLATE_NOOP("DetailsPanel", "Shift (Hz)"), Field::Integer},
    {Keys::UseSquelch, QT_TRANSLATE_NOOP("DetailsPanel", "Squelch"), Field::Text},
    {Keys::AFC, QT_TRANSLATE_NOOP("DetailsPanel", "AFC"), Field::Text},
    {Keys::UseAttenuation, QT_TRANSLATE_NOOP("DetailsPanel", "Manual attenuation"), Field::Text},
    {Keys::Attenuation, QT_TRANSLATE_NOOP("DetailsPanel", "Attenuation (dB)"), Field::Integer},
    {Keys::AntennaID, QT_TRANSLATE_NOOP("DetailsPanel", "Antenna"), Field::Integer},
    {Keys::Locked, QT_TRANSLATE_NOOP("DetailsPanel", "Lock state"), ReadOnly},
    {Keys::LockTime, QT_TRANSLATE_NOOP("DetailsPanel", "Signal time"), ReadOnly},
    {Keys::Confidence, QT_TRANSLATE_NOOP("DetailsPanel", "Confidence (%)"), ReadOnly},
    {Keys::Range, QT_TRANSLATE_NOOP("DetailsPanel", "Range"), ReadOnly},
    {Keys::RangeCounter, QT_TRANSLATE_NOOP("DetailsPanel", "Range number"), ReadOnly},
    {Keys::RangeFrequencies, QT_TRANSLATE_NOOP("DetailsPanel", "Further frequencies (Hz)"), ReadOnly},
    {Keys::KeyType, QT_TRANSLATE_NOOP("DetailsPanel", "Type"), ReadOnly},
};

QString readingOf(const ValueBase& value) {
    const QString text = value.GetStringValue();
    if (value.GetName() == Keys::KeyType.Text())
        return QString(QChar(text.toUShort()));
    if (value.GetName() != Keys::LockTime.Text() || text.toLongLong() == 0)
        return text;
    return QDateTime::fromMSecsSinceEpoch(text.toLongLong() / 1000, Qt::UTC)
        .toString(QStringLiteral("yyyy-MM-dd hh:mm:ss 'UTC'"));
}

} // namespace

QString DetailsPanel::TitleOf(const QString& name) {
    for (const Known& known : Values) {
        if (known.key.Text() == name)
            return tr(known.title);
    }
    return name;
}

QString DetailsPanel::TextOf(const QString& name, const QString& content) {
    bool isNumber = false;
    const double hertz = content.toDouble(&isNumber);
    if (isNumber && name == Keys::KeyFrequency.Text())
        return Quor::FrequencyText(hertz);
    if (isNumber && name == Keys::KeyBandwidth.Text())
        return Quor::BandwidthText(hertz);
    return content;
}

DetailsPanel::DetailsPanel(QAction* tune, QWidget* parent)
    : QWidget(parent), m_heading(new ElidedLabel(this)) {
    auto* layout = new QVBoxLayout(this);
    auto* head = new QHBoxLayout;
    auto* button = new QToolButton(this);
    button->setDefaultAction(tune);
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->setFocusPolicy(Qt::TabFocus);
    head->addWidget(m_heading, 1);
    head->addWidget(button);
    layout->addLayout(head);
    layout->addStretch(1);
    m_heading->setObjectName(QStringLiteral("DetailsHeading"));
    connect(&m_tick, &QTimer::timeout, this, &DetailsPanel::Refresh);
    m_tick.setInterval(TickMilliseconds);
    Refresh();
}

void DetailsPanel::SetView(FrequencyStoreListView* view) {
    if (m_list)
        disconnect(m_list, nullptr, this, nullptr);
    m_view = view;
    m_list = view ? view->GetListView() : nullptr;
    if (m_list) // the counts are told with each change of the selection
        connect(m_list, &SortListView::countsChanged, this, &DetailsPanel::Refresh);
    Refresh();
}

void DetailsPanel::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    m_tick.start();
    Refresh();
}

void DetailsPanel::hideEvent(QHideEvent* event) {
    m_tick.stop();
    QWidget::hideEvent(event);
}

void DetailsPanel::Refresh() {
    if (!isVisible())
        return;
    const SortListViewItem* row = m_list ? m_list->currentItem() : nullptr;
    const auto* entryRow = dynamic_cast<const FrequencyNodeMediatorViewItem*>(row);
    Node* entry = entryRow && entryRow->GetMediator() ? entryRow->GetMediator()->GetNode() : nullptr;
    const bool isSame = entry ? entry == m_entry.get() : m_values && row && m_cellsOf == m_list;
    if (!isSame && !m_rebuilds) {
        m_rebuilds = true; // an editor that goes may write what was typed
        m_readings.clear();
        delete std::exchange(m_values, nullptr);
        m_entry = entry;
        m_cellsOf = entry || !row ? nullptr : m_list.data();
        if (entry)
            showEntry(*entry);
        else if (row)
            showCells();
        m_rebuilds = false;
    }
    const QString whyOff = m_view && entry ? m_view->WhyOff(FreqStoreListViewButtonBar::Edit) : QString();
    if (m_values) {
        m_values->setEnabled(whyOff.isEmpty());
        m_values->setToolTip(whyOff);
    }
    const int selected = m_list ? m_list->SelectedCount() : 0;
    m_heading->setText(!row           ? tr("No entry is selected")
                       : selected > 1 ? tr("One of %n selected", "", selected)
                                      : row->CellText(0));
    m_heading->setToolTip(m_heading->text());
    for (const Reading& reading : m_readings)
        reading.label->setText(reading.text());
}

QFormLayout* DetailsPanel::makeForm() {
    m_values = new QWidget(this);
    m_form = new QFormLayout(m_values);
    m_form->setContentsMargins(0, 0, 0, 0);
    m_form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    m_form->setRowWrapPolicy(QFormLayout::WrapLongRows);
    static_cast<QVBoxLayout*>(layout())->insertWidget(1, m_values);
    return m_form;
}

void DetailsPanel::addReading(const QString& title, std::function<QString()> text) {
    auto* label = new QLabel(m_values);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_form->addRow(title, label);
    m_readings.push_back({label, std::move(text)});
}

/// Null for a value that is no text, number, flag or choice.
QWidget* DetailsPanel::editorOf(ValueBase& value, int fieldType) {
    const QByteArray name = value.GetName().toLatin1();
    const auto edited = [this] {
        const OperatorAction action(tr("Edit")); // what follows the list is a part of the field's step
        emit Edited(static_cast<int>(m_view->GetID()));
    };
    if (auto* choice = value_cast<ValueSelection>(&value)) {
        auto* box = new VCComboBoxClassic(m_values, name.constData());
        box->SetValueSelection(choice);
        connect(box, &QComboBox::activated, this, edited);
        return box;
    }
    if (auto* flag = value_cast<Value<bool>>(&value)) {
        auto* box = new VCCheckBox(m_values, name.constData());
        box->SetBoolean(flag);
        connect(box, &QCheckBox::clicked, this, edited);
        return box;
    }
    auto* field = new VCLineEdit(m_values, name.constData(), static_cast<Field>(fieldType));
    field->SetValueBase(&value);
    if (fieldType == Field::Frequency)
        field->setMinimumWidth(field->fontMetrics().horizontalAdvance(LongFrequency));
    connect(field, &QLineEdit::editingFinished, this, edited);
    return field;
}

void DetailsPanel::showEntry(Node& entry) {
    makeForm();
    for (const Known& known : Values) {
        ValueBase* value = entry.FindOwnValue(known.key);
        if (!value)
            continue;
        if (known.field == ReadOnly)
            addReading(tr(known.title), [held = WeakRef<ValueBase>(value)] {
                return held.get() ? readingOf(*held.get()) : QString();
            });
        else
            m_form->addRow(tr(known.title), editorOf(*value, known.field));
    }
}

void DetailsPanel::showCells() {
    makeForm();
    for (int column = 0; column < m_list->columnCount(); ++column)
        addReading(m_list->headerItem()->text(column), [this, column] {
            const SortListViewItem* row = m_list ? m_list->currentItem() : nullptr;
            return row ? row->CellText(column) : QString();
        });
    if (const QString title = m_list->GetRowNote().title; !title.isEmpty())
        addReading(title, [this] {
            const SortListViewItem* row = m_list ? m_list->currentItem() : nullptr;
            return row ? m_list->NoteOf(*row) : QString();
        });
}
