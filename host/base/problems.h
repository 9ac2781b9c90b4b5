#pragma once

#include "host/base/traceplace.h"

#include <QString>

#include <functional>

/// Something wrong in a file that a reader met and went on from, or gave up at.
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

/// Replaces the receiver of problems and returns the one before; programs set it to tell the operator.
Sink SetSink(Sink sink);

/// Hands a problem to the receiver and traces it under the reader's place.
void Report(TracePlace place, const Problem& problem);

/// The same without the trace, for what its caller traces.
void Tell(const Problem& problem);

} // namespace Problems
