#include "workstation/receiverpanel.h"

#include "host/base/frequencytext.h"
#include "host/gui/colorset.h"
#include "host/widgets/vccheckbox.h"
#include "host/widgets/vccomboboxclassic.h"
#include "host/widgets/vclineedit.h"
#include "receiver/receiver.h"
#include "workstation/bandsteps.h"

#include <QFormLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace {

VCLineEdit::LineEditType fieldType(ReceiverSetting::Type type) {
    switch (type) {
    case ReceiverSetting::Type::Frequency:
        return VCLineEdit::Frequency;
    case ReceiverSetting::Type::Bandwidth:
        return VCLineEdit::Bandwidth;
    default:
        return VCLineEdit::Integer;
    }
}

QLabel* wrapped(QLabel* label) {
    label->setWordWrap(true);
    return label;
}

void colour(QLabel& label, IColorBase::ECOLOR color) {
    QPalette colors = label.palette();
    colors.setColor(QPalette::WindowText, ColorSet::Instance().GetColorDefinition(color).GetColor());
    label.setPalette(colors);
}

} // namespace

ReceiverPanel::ReceiverPanel(Receiver& receiver, const NoiBands& bands, QWidget* parent)
    : QWidget(parent),
      m_receiver(receiver),
      m_state(wrapped(new QLabel(this))),
      m_form(new QFormLayout(this)) {
    m_form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    m_state->setObjectName(QStringLiteral("ReceiverState"));
    m_state->setTextFormat(Qt::PlainText);
    m_form->addRow(m_state);
    for (const ReceiverSetting& setting : receiver.GetSettings()) {
        if (setting.title)
            addSetting(setting);
    }
    m_form->addRow(new BandSteps(receiver, bands, this));
    connect(&receiver, &Receiver::StateChanged, this, &ReceiverPanel::showState);
    showState();
}

void ReceiverPanel::addSetting(const ReceiverSetting& setting) {
    const QString title = Receiver::tr(setting.title);
    const QString unit = QString::fromUtf8(setting.unit);
    auto* label = new QLabel(unit.isEmpty() ? title : tr("%1 (%2)").arg(title, unit), this);
    auto* holder = new QWidget(this);
    auto* column = new QVBoxLayout(holder);
    column->setContentsMargins(0, 0, 0, 0);
    QWidget* editor = makeEditor(setting, holder);
    column->addWidget(editor);
    label->setBuddy(editor);
    editor->setAccessibleName(label->text());
    if (auto* field = qobject_cast<VCLineEdit*>(editor))
        addComplaint(*field, *column);
    m_form->addRow(label, holder);
    m_rows.push_back({setting, label, holder});
}

QWidget* ReceiverPanel::makeEditor(const ReceiverSetting& setting, QWidget* holder) {
    const QByteArray name = setting.key.Text().toLatin1();
    if (setting.type == ReceiverSetting::Type::Choice) {
        auto* box = new VCComboBoxClassic(holder, name);
        box->SetValueSelection(m_receiver.Find<ValueSelection>(setting.key));
        return box;
    }
    if (setting.type == ReceiverSetting::Type::Flag) {
        auto* box = new VCCheckBox(holder, name);
        box->SetBoolean(m_receiver.Find<Value<bool>>(setting.key));
        return box;
    }
    auto* field = new VCLineEdit(holder, name, fieldType(setting.type));
    field->SetValueBase(m_receiver.GetValue(setting.key));
    return field;
}

void ReceiverPanel::addComplaint(VCLineEdit& field, QVBoxLayout& below) {
    QLabel* complaint = wrapped(new QLabel(field.parentWidget()));
    complaint->setObjectName(field.objectName() + QStringLiteral("Complaint"));
    complaint->hide();
    colour(*complaint, IColorBase::ERROR_TEXT);
    below.addWidget(complaint);
    connect(&field, &VCLineEdit::errorChanged, complaint, [complaint](const QString& error) {
        complaint->setText(error);
        complaint->setVisible(!error.isEmpty());
    });
}

void ReceiverPanel::showState() {
    const auto* limits = m_receiver.Find<ValueNumeric<double>>(Keys::KeyFrequency);
    const bool isWell = m_receiver.GetState() == ReceiverState::Connected;
    m_state->setText(isWell ? tr("%1, %2 to %3")
                                  .arg(m_receiver.GetStateText(), Quor::ShortFrequencyText(limits->GetMin()),
                                       Quor::ShortFrequencyText(limits->GetMax()))
                            : m_receiver.GetStateText());
    m_state->setPalette(QPalette());
    if (!isWell)
        colour(*m_state, m_receiver.GetState() == ReceiverState::Connecting ? IColorBase::MUTED_TEXT
                                                                            : IColorBase::ERROR_TEXT);
    for (const Row& row : m_rows) {
        const bool isShown = !row.setting.isOfRadios || m_receiver.CanSet(row.setting);
        const QString whyNot = m_receiver.WhyNot(row.setting);
        row.label->setVisible(isShown);
        row.holder->setVisible(isShown);
        row.label->setEnabled(whyNot.isEmpty());
        row.holder->setEnabled(whyNot.isEmpty());
        row.label->setToolTip(whyNot);
        row.holder->setToolTip(whyNot);
    }
}
