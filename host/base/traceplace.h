#pragma once

/// Where a trace, an assertion or a problem comes from: a source name and a line, 1 for the first. The source
/// is the name of the class family, which stays whatever its files are called. A source name alone becomes
/// the line of the call that it is given to.
struct TracePlace {
    /// `sourceName` must stay, as literals do.
    constexpr TracePlace(const char* sourceName, int lineNumber = __builtin_LINE())
        : source(sourceName), line(static_cast<unsigned short>(lineNumber)) {}

    const char* source;
    unsigned short line;
};
