#include "workstation/messagespanel.h"

#include "host/base/problems.h"
#include "host/base/trace.h"

#include <QTime>

namespace {

constexpr int MaxMessages = 5000;
const QColor ProblemColor(0xc6, 0x28, 0x28);

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
    add(problem.ToString(), ProblemColor);
    emit ProblemAdded(problem.ToString());
}

void MessagesPanel::AddTrace(const QString& text) {
    add(text, palette().color(QPalette::Text));
}

void MessagesPanel::add(const QString& text, const QColor& color) {
    if (count() >= MaxMessages)
        delete takeItem(0);
    auto* item = new QListWidgetItem(
        QTime::currentTime().toString(QStringLiteral("hh:mm:ss  ")) + text.simplified(), this);
    item->setForeground(color);
    item->setToolTip(text);
    scrollToBottom();
}
