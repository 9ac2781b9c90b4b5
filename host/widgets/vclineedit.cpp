#include "host/widgets/vclineedit.h"

#include "host/base/frequencyinput.h"
#include "host/base/frequencytext.h"
#include "host/base/numbers.h"
#include "host/gui/guibase.h"
#include "host/valuetree/value.h"
#include "host/widgets/limits.h"

#include <QKeyEvent>
#include <QTextDocument>

#include <cmath>
#include <memory>

/// How one type of field reads and shows numbers. Text fields have no `show`.
struct VCLineEdit::Format {
    QString (*show)(double);
    /// Reads an entry; `shown` is what the field shows for the present value.
    bool (*read)(const QString& entry, const QString& shown, double& number);
    const char* complaint; ///< about an entry that cannot be read
};

namespace {

bool readNumber(const QString& entry, const QString&, double& number) {
    return Quor::ParseDouble(entry, number);
}

bool readInteger(const QString& entry, const QString&, double& number) {
    qint64 parsed = 0;
    if (!Quor::ParseInt(entry, parsed))
        return false;
    number = static_cast<double>(parsed);
    return true;
}

/// Hz of one unit of those that the text ends with ("7055.000 kHz").
double unitOf(const QString& shown) {
    double hertz = 1;
    return Quor::ParseFrequency(QLatin1Char('1') + shown.section(QLatin1Char(' '), -1), hertz) ? hertz : 1;
}

bool readIn(double unit, const QString& entry, double& number) {
    const Quor::FrequencyInput input = Quor::ReadFrequencyInput(entry, unit);
    number = input.hertz;
    return input.IsFrequency();
}

bool readBandwidth(const QString& entry, const QString& shown, double& number) {
    return readIn(unitOf(shown), entry, number);
}

/// Hz that one counts: in the unit that the operator prefers, else in the one shown.
double bareUnit(const QString& shown) {
    const double wanted = GuiBase::Instance().GetBareUnit();
    return wanted > 0 ? wanted : unitOf(shown);
}

bool readFrequency(const QString& entry, const QString& shown, double& number) {
    return readIn(bareUnit(shown), entry, number);
}

} // namespace

const VCLineEdit::Format& VCLineEdit::formatOf(LineEditType type) {
    // In the order of LineEditType.
    static constexpr Format Formats[] = {
        {nullptr, nullptr, nullptr},
        {Quor::ToShortest, readInteger, QT_TR_NOOP("\"%1\" is not a whole number")},
        {Quor::ToShortest, readNumber, QT_TR_NOOP("\"%1\" is not a number")},
        {Quor::FrequencyText, readFrequency, QT_TR_NOOP("\"%1\" is not a frequency")},
        {Quor::BandwidthText, readBandwidth, QT_TR_NOOP("\"%1\" is not a bandwidth")},
    };
    return Formats[type];
}

VCLineEdit::VCLineEdit(QWidget* parent, const char* name, LineEditType type)
    : EntryLine(parent), m_type(type) {
    setObjectName(QString::fromLatin1(name));
    showValue();
    connect(this, &QLineEdit::textEdited, this, &VCLineEdit::follow);
    connect(this, &QLineEdit::editingFinished, this, &VCLineEdit::Commit);
}

void VCLineEdit::SetValueBase(ValueBase* value) {
    endEntry();
    bind(value);
}

void VCLineEdit::follow(const QString& entry) {
    QString stored;
    if (m_value && (m_type == Frequency || m_type == Bandwidth)) {
        const QString present = format().show(Quor::toDoubleEx(m_value->GetStringValue()));
        const Quor::FrequencyInput input =
            Quor::ReadFrequencyInput(entry, m_type == Frequency ? bareUnit(present) : unitOf(present));
        m_understood.Show(input.IsFrequency() ? Quor::GroupThousands(format().show(input.hertz)) : QString(),
                          input.mayMisread);
    }
    setError(problemOf(entry, stored));
    updateToolTip();
}

/// From now on nothing is typed, and nothing is wrong.
void VCLineEdit::endEntry() {
    setModified(false);
    m_understood.Show(QString());
    setError(QString());
}

void VCLineEdit::showValue() {
    setEnabled(bool(m_value));
    if (!m_value) {
        clear();
        endEntry();
    } else if (!isModified()) {
        const QString stored = m_value->GetStringValue();
        double number = 0;
        const bool asNumber = format().show && m_type != Integer && Quor::ParseDouble(stored, number);
        setText(asNumber ? format().show(number) : stored);
        setCursorPosition(0);
    }
    updateToolTip();
}

bool VCLineEdit::Commit() {
    if (!isModified() || !m_value)
        return ErrorText().isEmpty();
    QString stored;
    setError(problemOf(text(), stored));
    if (!ErrorText().isEmpty())
        return false;
    endEntry();
    {
        const OperatorAction action = edits();
        m_value->SetStringValue(stored, this);
    }
    showValue();
    return true;
}

QString VCLineEdit::problemOf(const QString& entry, QString& stored) const {
    return m_value ? ProblemOf(*m_value.get(), m_type, entry, stored) : QString();
}

QString VCLineEdit::ProblemOf(const ValueBase& value, LineEditType type, const QString& entry,
                              QString& stored) {
    const Format& format = formatOf(type);
    stored = entry;
    if (format.read) {
        double number = 0;
        const double present = Quor::toDoubleEx(value.GetStringValue());
        if (!format.read(entry, format.show(present), number))
            return tr(format.complaint).arg(entry);
        const QString outside =
            Limits::Problem(numeric_cast(const_cast<ValueBase*>(&value)), number, format.show);
        if (!outside.isEmpty())
            return outside;
        stored = type == Integer ? entry.trimmed() : Quor::ToShortest(number);
        if (!holds(value, stored)) // whole Hz may be all that the value holds
            stored = Quor::ToShortest(std::round(number));
    }
    return holds(value, stored) ? QString() : tr("\"%1\" cannot be taken here").arg(entry);
}

/// The value itself takes silently what it can and leaves the rest, so a copy is asked.
bool VCLineEdit::holds(const ValueBase& value, const QString& stored) {
    const std::unique_ptr<ValueBase> probe(value.Clone());
    probe->SetStringValue(stored);
    const QString kept = probe->GetStringValue();
    double keptNumber = 0;
    double number = 0;
    return kept == stored ||
           (Quor::ParseDouble(kept, keptNumber) && Quor::ParseDouble(stored, number) && keptNumber == number);
}

QString VCLineEdit::LimitsText() const {
    return Limits::Text(numeric_cast(m_value.get()), format().show);
}

void VCLineEdit::updateToolTip() {
    setToolTip(ErrorText().isEmpty() ? m_understood.AboveTip(LimitsText())
                                     : Qt::convertFromPlainText(ErrorText(), Qt::WhiteSpaceNormal));
}

void VCLineEdit::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Escape || !isModified()) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    endEntry();
    showValue();
    event->accept();
}
