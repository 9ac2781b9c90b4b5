#include "workstation/messagespanel.h"

#include "host/base/problems.h"
#include "host/base/trace.h"

#include <QTime>

namespace {

constexpr int MaxMessages = 5000;
const QColor ProblemColor(0xc6, 0x28, 0x28);

} // namespace

MessagesPanel::MessagesPanel(QWidget* parent) : QListWidget(parent) {
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
}

void MessagesPanel::AddProblem(const Problem& problem) {
    ++m_problems;
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
