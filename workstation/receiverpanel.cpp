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

} // namespace

ReceiverPanel::ReceiverPanel(Receiver& receiver, const NoiBands& bands, QWidget* parent)
    : QWidget(parent), m_receiver(receiver) {
    auto* form = new QFormLayout(this);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    const ReceiverSetting& frequency = receiver.GetSettings().front();
    auto* title =
        new QLabel(tr("%1 receiver, %2 to %3")
                       .arg(ReceiverName(receiver.GetKind()), Quor::ShortFrequencyText(frequency.min),
                            Quor::ShortFrequencyText(frequency.max)),
                   this);
    form->addRow(title);
    for (const ReceiverSetting& setting : receiver.GetSettings())
        addSetting(*form, setting);
    form->addRow(new BandSteps(receiver, bands, this));
}

void ReceiverPanel::addSetting(QFormLayout& form, const ReceiverSetting& setting) {
    if (!setting.title)
        return;
    const QString title = Receiver::tr(setting.title);
    if (setting.type == ReceiverSetting::Type::Choice) {
        auto* box = new VCComboBoxClassic(this, qPrintable(setting.key.Text()));
        box->SetValueSelection(m_receiver.Find<ValueSelection>(setting.key));
        form.addRow(title, box);
    } else if (setting.type == ReceiverSetting::Type::Flag) {
        auto* box = new VCCheckBox(this, qPrintable(setting.key.Text()));
        box->SetBoolean(m_receiver.Find<Value<bool>>(setting.key));
        form.addRow(title, box);
    } else {
        const QString unit = QString::fromUtf8(setting.unit);
        addNumber(form, setting, unit.isEmpty() ? title : tr("%1 (%2)").arg(title, unit));
    }
}

void ReceiverPanel::addNumber(QFormLayout& form, const ReceiverSetting& setting, const QString& label) {
    auto* field = new VCLineEdit(this, qPrintable(setting.key.Text()), fieldType(setting.type));
    field->SetValueBase(m_receiver.GetValue(setting.key));
    form.addRow(label, field);
    auto* complaint = new QLabel(this);
    complaint->setObjectName(setting.key.Text() + QStringLiteral("Complaint"));
    complaint->setWordWrap(true);
    complaint->hide();
    QPalette colors = complaint->palette();
    colors.setColor(QPalette::WindowText,
                    ColorSet::Instance().GetColorDefinition(IColorBase::ERROR_TEXT).GetColor());
    complaint->setPalette(colors);
    form.addRow(complaint);
    connect(field, &VCLineEdit::errorChanged, complaint, [complaint](const QString& error) {
        complaint->setText(error);
        complaint->setVisible(!error.isEmpty());
    });
}
