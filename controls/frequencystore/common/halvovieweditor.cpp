#include "controls/frequencystore/common/halvovieweditor.h"

#include "host/freqlist/frequencynodemediator.h"
#include "host/gui/colorset.h"
#include "host/valuetree/operatoraction.h"
#include "host/valuetree/tree.h"
#include "host/widgets/canclosetabdialog.h"
#include "host/widgets/vccheckbox.h"
#include "host/widgets/vccomboboxclassic.h"
#include "host/widgets/vcfrequencylist.h"
#include "host/widgets/vclineedit.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLocale>
#include <QVBoxLayout>

namespace {

constexpr char CopiesPath[] = "/TempEditMscanList";
constexpr int WidgetCharacters = 36;
constexpr int NoteCharacters = 34;

enum Column { ColumnApply, ColumnTitle, ColumnWidget, ColumnNote };

constexpr unsigned HF = 1;
constexpr unsigned VUHF = 2;
constexpr unsigned Noi = 4;
constexpr unsigned Target = 8;
constexpr unsigned Memory = HF | VUHF;

constexpr std::pair<MediatorType, unsigned> Bits[] = {{MediatorType::MemoryHF, HF},
                                                      {MediatorType::MemoryVUHF, VUHF},
                                                      {MediatorType::NoiFrequencies, Noi},
                                                      {MediatorType::TargetList, Target}};

unsigned bitOf(MediatorType type) {
    const auto* found =
        std::find_if(std::begin(Bits), std::end(Bits), [type](const auto& bit) { return bit.first == type; });
    return found == std::end(Bits) ? 0 : found->second;
}

/// A list offers what its first entries have.
constexpr int EntriesLookedAt = 5000;
constexpr qsizetype MostChoices = 100;

void setTextColor(QWidget& widget, IColorBase::ECOLOR color) {
    QPalette palette = widget.palette();
    palette.setColor(QPalette::WindowText, ColorSet::Instance().GetColorDefinition(color).GetColor());
    widget.setPalette(palette);
}

} // namespace

/// One field of the editor, as far as the kind of list decides.
struct HalvoViewEditor::FieldInfo {
    const FreqList::Key& key;
    const char* title;
    VCLineEdit::LineEditType lineType; ///< of values that are edited as a line
    const char* note;                  ///< unit of the number, or a hint
    unsigned kinds;                    ///< of lists that have the field
    const char* choices = nullptr;     ///< beside those that the list has; for texts that may be any
};

const HalvoViewEditor::FieldInfo HalvoViewEditor::FieldInfos[] = {
    {Keys::KeyFrequency, QT_TR_NOOP("Frequency"), VCLineEdit::Frequency, "", Memory | Noi | Target},
    {Keys::RangeFrequencies, QT_TR_NOOP("Further frequencies"), VCLineEdit::Text,
     QT_TR_NOOP("One per line. With any, the channel is a range: the scan goes through all of them."),
     Memory},
    {Keys::BandwidthSel, QT_TR_NOOP("Bandwidth"), VCLineEdit::Bandwidth, "", Memory | Noi},
    {Keys::KeyBandwidth, QT_TR_NOOP("Bandwidth"), VCLineEdit::Bandwidth, "", Noi | Target},
    {Keys::KeyComment, QT_TR_NOOP("Name"), VCLineEdit::Text, "", Target},
    {Keys::KeyDemodulation, QT_TR_NOOP("Demodulation"), VCLineEdit::Text, "", Target,
     "NONE AM FM USB LSB CW ISB"},
    {Keys::Priority, QT_TR_NOOP("Priority"), VCLineEdit::Integer,
     QT_TR_NOOP("(1 is the highest, 11 is none)"), Target, "1 2 3 4 5 6 7 8 9 10 11"},
    {Keys::ThreatClass, QT_TR_NOOP("Threat class"), VCLineEdit::Text, "", Target, ""},
    {Keys::SignalClass, QT_TR_NOOP("Signal class"), VCLineEdit::Text, "", Target, ""},
    {Keys::TransmissionSystem, QT_TR_NOOP("Transmission system"), VCLineEdit::Text, "", Target, ""},
    {Keys::ProfileName, QT_TR_NOOP("Profile"), VCLineEdit::Text, "", Target},
    {Keys::ProfileID, QT_TR_NOOP("Profile ID"), VCLineEdit::Text, "", Target},
    {Keys::KeyComment, QT_TR_NOOP("Comment"), VCLineEdit::Text, "", Memory | Noi},
    {Keys::KeyDemodulation, QT_TR_NOOP("Demodulation"), VCLineEdit::Text, "", Memory},
    {Keys::Threshold, QT_TR_NOOP("Threshold"), VCLineEdit::Integer, "dBµV", Memory},
    {Keys::BFOFrequency, QT_TR_NOOP("BFO frequency"), VCLineEdit::Integer, "Hz", HF},
    {Keys::OutputIFPath, QT_TR_NOOP("Output IF path"), VCLineEdit::Text, "", HF},
    {Keys::Shift, QT_TR_NOOP("Shift"), VCLineEdit::Integer, "Hz", HF},
    {Keys::UseSquelch, QT_TR_NOOP("Squelch"), VCLineEdit::Text, QT_TR_NOOP("opens at the threshold"), VUHF},
    {Keys::UseAttenuation, QT_TR_NOOP("Manual attenuation"), VCLineEdit::Text,
     QT_TR_NOOP("else the receiver chooses it"), VUHF},
    {Keys::Attenuation, QT_TR_NOOP("Attenuation"), VCLineEdit::Integer, "dB", VUHF},
    {Keys::AFC, QT_TR_NOOP("AFC"), VCLineEdit::Text, "", VUHF},
    {Keys::AntennaID, QT_TR_NOOP("Antenna"), VCLineEdit::Integer, "", VUHF},
};

/// A field at work: its widgets, which belong to the form, and what it was like before.
struct HalvoViewEditor::Field {
    const FieldInfo& info;
    WeakRef<ValueBase> value; ///< of the copy
    QString before;
    bool differs = false; ///< among the entries
    QWidget* widget = nullptr;
    QLabel* note = nullptr;
    QCheckBox* apply = nullptr; ///< null for a single entry

    bool IsChanged() const {
        return value && (apply ? apply->isChecked() : value->GetStringValue() != before);
    }
};

HalvoViewEditor::HalvoViewEditor(QWidget* parent, const QString& name, MediatorType type)
    : QWidget(parent), m_type(type), m_heading(new QLabel(this)), m_form(new QWidget(this)) {
    setObjectName(name);
    m_heading->setWordWrap(true);
    m_heading->hide();
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_heading);
    layout->addWidget(m_form);
    layout->addStretch();
}

HalvoViewEditor::~HalvoViewEditor() {
    delete m_form; // a field that loses the focus on the way out still writes into the copy
    removeCopy();
}

void HalvoViewEditor::removeCopy() {
    if (Node* copy = m_copy.get())
        copy->GetParentNode()->DeleteNode(copy);
}

void HalvoViewEditor::DoWorkOn(FrequencyNodeMediator* mediator) {
    DoWorkOn(std::vector<FrequencyNodeMediator*>{mediator});
}

void HalvoViewEditor::DoWorkOn(const std::vector<FrequencyNodeMediator*>& mediators) {
    delete m_form;
    m_fields.clear();
    removeCopy();
    m_form = new QWidget(this);
    static_cast<QVBoxLayout*>(layout())->insertWidget(1, m_form);
    auto* grid = new QGridLayout(m_form);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setColumnMinimumWidth(ColumnNote, NoteCharacters * fontMetrics().averageCharWidth());
    grid->setColumnMinimumWidth(ColumnWidget, WidgetCharacters * fontMetrics().averageCharWidth());

    m_entries.clear();
    for (const FrequencyNodeMediator* mediator : mediators) {
        if (mediator && mediator->GetNode())
            m_entries.emplace_back(mediator->GetNode());
    }
    if (m_entries.empty())
        return;
    copyEntry(*m_entries.front().get());
    for (const FieldInfo& info : FieldInfos) {
        if (info.kinds & bitOf(m_type))
            addField(info);
    }
    compareEntries();
    showHeading(m_entries.size() == 1
                    ? QString()
                    : tr("%1 entries are edited. What is ticked is written to all of them.")
                          .arg(QLocale().toString(static_cast<qulonglong>(m_entries.size()))),
                false);
    if (!m_fields.empty())
        m_fields.front()->widget->setFocus(Qt::TabFocusReason);
}

void HalvoViewEditor::copyEntry(const Node& entry) {
    Node* parent = Tree::Instance()->MakeNode(QString::fromLatin1(CopiesPath));
    auto* copy = new Node(parent, entry.GetName());
    parent->AddItemUnique(copy);
    m_copy = copy;
    for (const ValueBase* value = entry.FirstValue(); value; value = Node::NextValue(value))
        copy->CreateValue(value->GetName(), *value);
    // A channel that is no range has one frequency, whatever else its list holds.
    const auto* range = copy->FindOwn<Value<bool>>(Keys::Range);
    auto* further = copy->FindOwn<ValueList<double>>(Keys::RangeFrequencies);
    if (further && range && !range->GetValue())
        further->Clear();
}

void HalvoViewEditor::showHeading(const QString& text, bool isError) {
    m_heading->setText(text);
    m_heading->setVisible(!text.isEmpty());
    setTextColor(*m_heading, isError ? IColorBase::ERROR_TEXT : IColorBase::MUTED_TEXT);
}

/// Adds a field for the entry's value, if it has that one. Several entries have no range in common.
void HalvoViewEditor::addField(const FieldInfo& info) {
    ValueBase* value = m_copy->FindOwnValue(info.key);
    const bool several = m_entries.size() > 1;
    if (!value || (several && value->GetType() == ValueType::DoubleList))
        return;
    m_fields.push_back(std::make_unique<Field>(Field{info, value, value->GetStringValue()}));
    Field& field = *m_fields.back();
    auto* grid = static_cast<QGridLayout*>(m_form->layout());
    const int row = grid->rowCount();
    if (several) {
        field.apply = new QCheckBox(m_form);
        field.apply->setObjectName(QStringLiteral("apply-") + info.key.Text());
        field.apply->setToolTip(tr("Write this field to all selected entries"));
        connect(field.apply, &QCheckBox::toggled, this, [&field] { showNote(field); });
        grid->addWidget(field.apply, row, ColumnApply);
    }
    field.widget = makeWidget(field);
    auto* line = info.choices ? qobject_cast<VCLineEdit*>(field.widget) : nullptr;
    auto* title = new QLabel(tr(info.title), m_form);
    title->setBuddy(field.widget);
    grid->addWidget(title, row, ColumnTitle);
    grid->addWidget(line ? withChoices(*line, choicesOf(info)) : field.widget, row, ColumnWidget);
    field.note = new QLabel(m_form);
    field.note->setObjectName(QStringLiteral("note-") + info.key.Text());
    field.note->setWordWrap(true);
    field.note->setTextFormat(Qt::PlainText);
    grid->addWidget(field.note, row, ColumnNote);
}

/// Ticks the field when the operator touches the widget, as its signal `touched` tells.
template <typename Widget, typename Touched>
Widget* HalvoViewEditor::watched(Field& field, Widget* widget, Touched touched) {
    connect(widget, touched, this, [&field] {
        if (field.apply)
            field.apply->setChecked(true);
    });
    return widget;
}

/// The widget that suits the value's type.
QWidget* HalvoViewEditor::makeWidget(Field& field) {
    ValueBase* value = field.value.get();
    const QByteArray name = field.info.key.Text().toLatin1();
    if (auto* selection = value_cast<ValueSelection>(value)) {
        auto* box = new VCComboBoxClassic(m_form, name.constData());
        box->SetValueSelection(selection);
        return watched(field, box, &QComboBox::activated);
    }
    if (auto* flag = value_cast<Value<bool>>(value)) {
        auto* box = new VCCheckBox(m_form, name.constData());
        box->SetBoolean(flag);
        return watched(field, box, &QCheckBox::clicked);
    }
    if (auto* list = value_cast<ValueList<double>>(value)) {
        auto* lines = new VCFrequencyList(m_form, name.constData());
        lines->SetValueList(list, m_copy->FindOwn<ValueNumeric<double>>(Keys::KeyFrequency));
        connect(lines, &VCFrequencyList::errorChanged, this, [&field] { showNote(field); });
        return lines;
    }
    return makeLine(field);
}

VCLineEdit* HalvoViewEditor::makeLine(Field& field) {
    auto* line = new VCLineEdit(m_form, field.info.key.Text().toLatin1().constData(), field.info.lineType);
    line->SetValueBase(field.value.get());
    connect(line, &VCLineEdit::errorChanged, this, [&field] { showNote(field); });
    return watched(field, line, &QLineEdit::textEdited);
}

/// The line in a box that offers choices beside what is typed.
QWidget* HalvoViewEditor::withChoices(VCLineEdit& line, const QStringList& choices) {
    auto* box = new QComboBox(m_form);
    box->addItems(choices);
    box->setCurrentIndex(-1);
    box->setEditable(true);
    box->setInsertPolicy(QComboBox::NoInsert);
    const QString shown = line.text();
    box->setLineEdit(&line);
    box->setCompleter(nullptr);
    line.setText(shown);
    line.setCursorPosition(0);
    connect(box, &QComboBox::textActivated, &line, [&line](const QString& choice) {
        line.setText(choice);
        line.setModified(true);
        emit line.textEdited(choice); // as if it had been typed
    });
    return box;
}

/// What the editor offers for a text or number, and what the entries of the list have; numbers first.
QStringList HalvoViewEditor::choicesOf(const FieldInfo& info) const {
    QStringList choices = QString::fromLatin1(info.choices).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    QStringList found;
    const Node* list = m_entries.front() ? m_entries.front()->GetParentNode() : nullptr;
    int looked = 0;
    for (const Node* entry : list ? list->Children() : std::vector<Node*>()) {
        const ValueBase* value = entry->FindOwnValue(info.key);
        const QString text = value ? value->GetStringValue() : QString();
        if (!text.isEmpty() && !choices.contains(text) && !found.contains(text))
            found << text;
        if (++looked == EntriesLookedAt || found.size() == MostChoices)
            break;
    }
    found.sort(Qt::CaseInsensitive);
    return choices + found;
}

/// Finds out in which fields the entries differ, and offers of choices only those that all entries have.
void HalvoViewEditor::compareEntries() {
    const std::vector<Node*> entries = livingEntries();
    for (const auto& field : m_fields) {
        auto* choices = value_cast<ValueSelection>(field->value.get());
        for (auto entry = entries.begin() + 1; entry != entries.end(); ++entry) {
            const ValueBase* other = (*entry)->FindOwnValue(field->info.key);
            field->differs = field->differs || !other || other->GetStringValue() != field->before;
            const auto* offered = value_cast<ValueSelection>(other);
            for (long i = choices && offered ? choices->GetItemCount() - 1 : -1; i >= 0; --i) {
                if (!offered->GetItem(choices->GetItemAt(i)->GetName()))
                    choices->DeleteItem(choices->GetItemAt(i));
            }
        }
        showNote(*field);
    }
}

/// What stands beside a field: what is wrong with it, else what there is to know of it.
void HalvoViewEditor::showNote(const Field& field) {
    const auto* entry = dynamic_cast<const IEntryField*>(field.widget);
    if (entry && !entry->ErrorText().isEmpty()) {
        field.note->setText(entry->ErrorText());
        setTextColor(*field.note, IColorBase::ERROR_TEXT);
        return;
    }
    if (field.differs && !field.apply->isChecked()) {
        field.note->setText(tr("differs; this is the first entry's"));
        setTextColor(*field.note, IColorBase::WARNING_TEXT);
        return;
    }
    const auto* line = qobject_cast<const VCLineEdit*>(field.widget);
    const QString limits = line ? line->LimitsText() : QString();
    field.note->setText(QStringList{limits, tr(field.info.note)}.join(QLatin1Char(' ')).trimmed());
    // Lists keep what a file says, also what the receiver cannot be set to.
    const IValueNumeric* number = numeric_cast(field.value.get());
    const bool isOutside =
        number && number->MinAsDouble() < number->MaxAsDouble() &&
        (number->ValueAsDouble() < number->MinAsDouble() || number->ValueAsDouble() > number->MaxAsDouble());
    setTextColor(*field.note, isOutside ? IColorBase::WARNING_TEXT : IColorBase::MUTED_TEXT);
}

std::vector<Node*> HalvoViewEditor::livingEntries() const {
    std::vector<Node*> entries;
    for (const WeakRef<Node>& entry : m_entries) {
        if (Node* node = entry.get())
            entries.push_back(node);
    }
    return entries;
}

bool HalvoViewEditor::slotAcceptChanges() {
    const bool accepted = accept();
    if (auto* dialog = qobject_cast<CanCloseTabDialog*>(window()))
        dialog->SetCanClose(accepted);
    return accepted;
}

bool HalvoViewEditor::accept() {
    for (const auto& field : m_fields) {
        auto* entry = dynamic_cast<IEntryField*>(field->widget);
        if (entry && !entry->Commit()) {
            entry->ShowError();
            return false;
        }
    }
    const std::vector<Node*> entries = livingEntries();
    if (entries.empty()) {
        showHeading(tr("What is edited here was removed from the list meanwhile: nothing can be written."),
                    true);
        return false;
    }
    const OperatorAction action(tr("Edit"));
    bool anyChange = false;
    for (const auto& field : m_fields) {
        if (!field->IsChanged())
            continue;
        anyChange = true;
        const QString text = field->value->GetStringValue();
        for (Node* entry : entries) {
            if (ValueBase* value = entry->FindOwnValue(field->info.key))
                value->SetStringValue(text);
            auto* range = entry->FindOwn<Value<bool>>(Keys::Range);
            if (range && field->value->GetType() == ValueType::DoubleList)
                range->SetValue(!text.isEmpty());
        }
        field->before = text;
        field->differs = false;
        if (field->apply)
            field->apply->setChecked(false);
        showNote(*field);
    }
    if (anyChange)
        emit entriesChanged();
    return true;
}
