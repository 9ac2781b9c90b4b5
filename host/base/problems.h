#pragma once

#include "host/base/traceplace.h"

#include <QString>

#include <functional>

/// A fault that a reader finds in a file. The reader goes on behind it, or gives up there.
struct Problem {
    QString file;
    qint64 line = 0; ///< 1 for the first line; 0 when the problem is no line's
    QString reason;
    qint64 count = 1; ///< how many problems it stands for

    /// "file:line: reason", without the line where there is none.
    QString ToString() const;
    /// A problem whose text already names its file, as those of exceptions do.
    static Problem FromText(const QString& text) { return {QString(), 0, text}; }
};

namespace Problems {

using Sink = std::function<void(const Problem&)>;

/// Sets the function that receives problems and returns the one before. A program sets it to tell the
/// operator.
Sink SetSink(Sink sink);

/// Passes a problem to the receiver and traces it under the reader's place.
///
/// \code
/// Problems::SetSink([&](const Problem& problem) { told << problem.ToString(); });
/// Problems::Report("bookmarks", {file, 12, QStringLiteral("has no frequency")});
/// \endcode
void Report(TracePlace place, const Problem& problem);

/// Passes a problem to the receiver without a trace, for callers that trace it themselves.
void Tell(const Problem& problem);

} // namespace Problems
