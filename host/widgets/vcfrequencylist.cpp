#include "host/widgets/vcfrequencylist.h"

#include "host/base/frequencyinput.h"
#include "host/base/frequencytext.h"
#include "host/widgets/limits.h"

#include <QKeyEvent>
#include <QTextBlock>

namespace {

constexpr int LinesShown = 4;

} // namespace

VCFrequencyList::VCFrequencyList(QWidget* parent, const char* name) : QPlainTextEdit(parent) {
    setObjectName(QString::fromLatin1(name));
    setTabChangesFocus(true);
    setLineWrapMode(NoWrap);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    showValue();
    connect(this, &QPlainTextEdit::textChanged, this, [this] {
        std::vector<double> frequencies;
        if (document()->isModified() && m_value)
            setError(problemOf(toPlainText(), frequencies));
    });
}

void VCFrequencyList::SetValueList(ValueList<double>* list, ValueNumeric<double>* reference) {
    m_reference = reference;
    document()->setModified(false);
    setError(QString());
    bind(list);
}

void VCFrequencyList::showValue() {
    setEnabled(bool(m_value));
    if (document()->isModified() && m_value)
        return;
    QStringList lines;
    if (m_value) {
        for (const double hertz : m_value->Elements())
            lines << Quor::FrequencyText(hertz);
    }
    const QSignalBlocker quiet(this);
    setPlainText(lines.join(QLatin1Char('\n')));
    document()->setModified(false);
}

bool VCFrequencyList::Commit() {
    if (!document()->isModified() || !m_value)
        return m_error.isEmpty();
    std::vector<double> frequencies;
    setError(problemOf(toPlainText(), frequencies));
    if (!m_error.isEmpty())
        return false;
    document()->setModified(false);
    if (frequencies != m_value->Elements()) {
        const OperatorAction action = edits();
        m_value->GetList() = std::move(frequencies);
        m_value->HasChanged(TChangeCode::ValueChanged, this);
    }
    showValue();
    return true;
}

/// What is wrong with the entries, empty when nothing is; then `frequencies` are what they say.
QString VCFrequencyList::problemOf(const QString& entries, std::vector<double>& frequencies) {
    double unit = 1;
    const double present = m_reference ? m_reference->GetValue() : 0;
    Quor::ParseFrequency(QLatin1Char('1') + Quor::FrequencyText(present).section(QLatin1Char(' '), -1), unit);
    QHash<QString, double> shown; // lines show no fractions of 1 Hz; what is left as shown stays exact
    for (const double hertz : m_value->Elements())
        shown.insert(Quor::FrequencyText(hertz), hertz);
    m_wrongLine = 0;
    for (const QString& line : entries.split(QLatin1Char('\n'))) {
        for (const QString& part : line.split(QLatin1Char(';'))) {
            const QString entry = part.trimmed();
            if (entry.isEmpty())
                continue;
            const Quor::FrequencyInput input = Quor::ReadFrequencyInput(entry, unit);
            const double hertz = input.hertz;
            const QString problem = input.IsFrequency()
                                        ? Limits::Problem(m_reference.get(), hertz, Quor::FrequencyText)
                                        : input.problem;
            if (!problem.isEmpty())
                return tr("Line %1: %2").arg(QString::number(m_wrongLine + 1), problem);
            frequencies.push_back(shown.value(entry, hertz));
        }
        ++m_wrongLine;
    }
    return QString();
}

void VCFrequencyList::ShowError() {
    setFocus();
    QTextCursor cursor(document()->findBlockByNumber(m_wrongLine));
    cursor.select(QTextCursor::LineUnderCursor);
    setTextCursor(cursor);
}

QSize VCFrequencyList::sizeHint() const {
    const int frame = 2 * (frameWidth() + static_cast<int>(document()->documentMargin()));
    return {QPlainTextEdit::sizeHint().width(), LinesShown * fontMetrics().lineSpacing() + frame};
}

void VCFrequencyList::setError(const QString& error) {
    if (error == m_error)
        return;
    m_error = error;
    viewport()->update();
    emit errorChanged(m_error);
}

void VCFrequencyList::focusOutEvent(QFocusEvent* event) {
    QPlainTextEdit::focusOutEvent(event);
    (void)Commit(); // a wrong entry stays, and the field says so
}

void VCFrequencyList::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Escape || !document()->isModified()) {
        QPlainTextEdit::keyPressEvent(event);
        return;
    }
    document()->setModified(false);
    setError(QString());
    showValue();
    event->accept();
}

void VCFrequencyList::paintEvent(QPaintEvent* event) {
    QPlainTextEdit::paintEvent(event);
    if (!m_error.isEmpty())
        PaintErrorFrame(*viewport());
}
