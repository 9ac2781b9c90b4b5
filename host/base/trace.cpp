#include "host/base/trace.h"

#include "host/base/tellings.h"

#include <cstdio>

ErrorHandler& ErrorHandler::Instance() {
    static ErrorHandler* const handler = new ErrorHandler;
    return *handler;
}

ErrorHandler::Sink ErrorHandler::SetSink(Sink sink) {
    return std::exchange(m_sink, std::move(sink));
}

void ErrorHandler::Write(const QString& text, const QString& sourceFile, unsigned short line) const {
    if (Tellings* const later = Tellings::OfThisThread())
        return later->Add([=, this] { Write(text, sourceFile, line); });
    if (m_sink) {
        m_sink(text, sourceFile, line);
        return;
    }
    const QByteArray out =
        QStringLiteral("%1:%2: %3\n").arg(sourceFile, QString::number(line), text).toUtf8();
    std::fwrite(out.constData(), 1, static_cast<size_t>(out.size()), stderr);
}

void _Q_Trace(const QString& text, const QString& sourceFile, unsigned short line) {
    ErrorHandler::Instance().Write(text, sourceFile, line);
}

void _Q_assert(const wchar_t* expression, const wchar_t* sourceFile, unsigned short line) {
    ErrorHandler::Instance().Write(QStringLiteral("assertion failed: ") + QString::fromWCharArray(expression),
                                   QString::fromWCharArray(sourceFile), line);
}

void AssertHolds(TracePlace place, bool holds, const char* expression) {
    if (!holds && (ErrorHandler::Instance().GetTraceMask() & TraceMaskAssert) != 0)
        _Q_assert(QString::fromLatin1(expression).toStdWString().c_str(),
                  QString::fromLatin1(place.source).toStdWString().c_str(), place.line);
}
