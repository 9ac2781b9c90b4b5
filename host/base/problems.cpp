#include "host/base/problems.h"

#include "host/base/tellings.h"
#include "host/base/trace.h"

namespace {

Problems::Sink& currentSink() {
    static auto* const sink = new Problems::Sink;
    return *sink;
}

} // namespace

QString Problem::ToString() const {
    if (file.isEmpty())
        return reason;
    return line > 0 ? QStringLiteral("%1:%2: %3").arg(file, QString::number(line), reason)
                    : QStringLiteral("%1: %2").arg(file, reason);
}

Problems::Sink Problems::SetSink(Sink sink) {
    return std::exchange(currentSink(), std::move(sink));
}

void Problems::Report(TracePlace place, const Problem& problem) {
    Tell(problem);
    TraceLazily(place, [&] { return problem.ToString(); });
}

void Problems::Tell(const Problem& problem) {
    if (Tellings* const later = Tellings::OfThisThread())
        later->Add([problem] { Tell(problem); });
    else if (currentSink())
        currentSink()(problem);
}
