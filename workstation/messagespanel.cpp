#include "workstation/messagespanel.h"

#include "host/base/problems.h"
#include "host/base/trace.h"
#include "host/gui/colorset.h"

#include <QEvent>
#include <QTime>

namespace {

constexpr int MaxMessages = 5000;
constexpr int IsProblem = Qt::UserRole; ///< of a line

QColor problemColor() {
    return ColorSet::Instance().GetColorDefinition(IColorBase::ERROR_TEXT).GetColor();
}

} // namespace

MessagesPanel::MessagesPanel(QWidget* parent)
    : QListWidget(parent), m_digest([this](const Problem& problem) { showProblem(problem); }) {
    m_flush.setSingleShot(true);
    connect(&m_flush, &QTimer::timeout, this, &MessagesPanel::Flush);
    setUniformItemSizes(true);
    setSelectionMode(ExtendedSelection);
    Problems::SetSink([this](const Problem& problem) { AddProblem(problem); });
    ErrorHandler::Instance().SetSink([this](const QString& text, const QString& source, unsigned short line) {
        AddTrace(QStringLiteral("%1:%2: %3").arg(source, QString::number(line), text));
    });
}

MessagesPanel::~MessagesPanel() {
    Problems::SetSink({});
    ErrorHandler::Instance().SetSink({});
    blockSignals(true); // whoever listens may have gone
    m_digest.Flush();
}

void MessagesPanel::AddProblem(const Problem& problem) {
    ++m_problems;
    m_flush.start(); // what reads meanwhile does not get there
    m_digest.Add(problem);
}

void MessagesPanel::showProblem(const Problem& problem) {
    QListWidgetItem* line = add(problem.ToString());
    line->setData(IsProblem, true);
    line->setForeground(problemColor());
    emit ProblemAdded(problem.ToString());
}

void MessagesPanel::AddTrace(const QString& text) {
    add(text);
}

/// Those lines that have a colour of their own follow from light to dark.
void MessagesPanel::changeEvent(QEvent* event) {
    QListWidget::changeEvent(event);
    if (event->type() != QEvent::PaletteChange)
        return;
    for (int row = 0; row < count(); ++row) {
        if (item(row)->data(IsProblem).toBool())
            item(row)->setForeground(problemColor());
    }
}

QListWidgetItem* MessagesPanel::add(const QString& text) {
    if (count() >= MaxMessages)
        delete takeItem(0);
    auto* item = new QListWidgetItem(
        QTime::currentTime().toString(QStringLiteral("hh:mm:ss  ")) + text.simplified(), this);
    item->setToolTip(text);
    scrollToBottom();
    return item;
}
