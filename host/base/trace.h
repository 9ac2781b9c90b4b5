#pragma once

#include "host/base/traceplace.h"

#include <QString>

#include <functional>
#include <utility>

/// Bits of the error handler's trace mask that this system tests.
inline constexpr unsigned TraceMaskAssert = 2;
inline constexpr unsigned TraceMaskTrace = 32;

/// The process-wide error and trace handler. It decides which traces are written (the mask) and where they
/// go (the sink; standard error when none is set). Created on first use and never destroyed, so that traces
/// written while the process ends are safe.
class ErrorHandler {
public:
    /// Receives each trace: message, source file, line number.
    using Sink = std::function<void(const QString& text, const QString& sourceFile, unsigned short line)>;

    static ErrorHandler& Instance();

    /// Mask of the enabled trace classes; traces need bit value 32, assertions bit value 2. Starts as 0.
    virtual unsigned GetTraceMask() const { return m_mask; }
    void SetTraceMask(unsigned mask) { m_mask = mask; }

    /// Replaces the sink and returns the one before; an empty sink means standard error.
    Sink SetSink(Sink sink);
    void Write(const QString& text, const QString& sourceFile, unsigned short line) const;

protected:
    ErrorHandler() = default;
    virtual ~ErrorHandler() = default;

private:
    unsigned m_mask = 0;
    Sink m_sink;
};

/// Writes one trace line; the caller has tested the mask.
void _Q_Trace(const QString& text, const QString& sourceFile, unsigned short line);

/// Reports a failed assertion; the caller has tested the mask and the condition.
void _Q_assert(const wchar_t* expression, const wchar_t* sourceFile, unsigned short line);

/// Reports the expression as failed unless it holds; with the assertion bit clear nothing is reported.
void AssertHolds(TracePlace place, bool holds, const char* expression);

inline bool TraceEnabled() {
    return (ErrorHandler::Instance().GetTraceMask() & TraceMaskTrace) != 0;
}

/// Traces the text that `makeText()` returns. It is not called while the trace bit is clear.
///
/// \code
/// ErrorHandler::Instance().SetTraceMask(TraceMaskTrace);
/// TraceLazily("bookmarks", [&] { return QStringLiteral("cannot open %1").arg(file); });
/// \endcode
template <typename MakeText>
void TraceLazily(TracePlace place, MakeText&& makeText) {
    if (TraceEnabled())
        _Q_Trace(std::forward<MakeText>(makeText)(), QString::fromLatin1(place.source), place.line);
}
