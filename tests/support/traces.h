#pragma once

#include "host/base/problems.h"
#include "host/base/trace.h"

#include <QStringList>

/// Switches traces and assertions on and collects them, and the problems of readers, while it lives.
class Traces {
public:
    explicit Traces(unsigned mask = TraceMaskTrace | TraceMaskAssert)
        : m_mask(ErrorHandler::Instance().GetTraceMask()) {
        ErrorHandler::Instance().SetTraceMask(mask);
        m_sink = ErrorHandler::Instance().SetSink(
            [this](const QString& text, const QString& source, unsigned short line) {
                texts << text;
                places << QStringLiteral("%1:%2").arg(source, QString::number(line));
            });
        m_problems = Problems::SetSink([this](const Problem& problem) { problems << problem.ToString(); });
    }
    ~Traces() {
        ErrorHandler::Instance().SetTraceMask(m_mask);
        ErrorHandler::Instance().SetSink(m_sink);
        Problems::SetSink(m_problems);
    }

    QStringList texts;
    QStringList places;
    QStringList problems;

private:
    unsigned m_mask;
    ErrorHandler::Sink m_sink;
    Problems::Sink m_problems;
};
