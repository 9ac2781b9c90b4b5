#include "cli/output.h"

#include "cli/command.h"
#include "host/base/terminaltext.h"

#include <cerrno>
#include <cstring>
#include <unistd.h>
#include <utility>

namespace {

/// The first error of standard output; 0 while there is none.
int outputError = 0;

} // namespace

Output::Output(FILE* stream) : m_stream(stream), m_isTerminal(isatty(fileno(stream)) == 1) {}

bool Output::Line(const QString& text) {
    QByteArray bytes = m_isTerminal ? VisibleText(text).toUtf8() : text.toUtf8();
    return put(bytes.append('\n'));
}

bool Output::put(const QByteArray& bytes) {
    const auto size = static_cast<size_t>(bytes.size());
    const bool isWhole = std::fwrite(bytes.constData(), 1, size, m_stream) == size;
    if (!isWhole && m_stream == stdout && outputError == 0)
        outputError = errno;
    return isWhole;
}

void TellError(const QString& text) {
    Output(stderr).Line(text);
}

int FinishOutput(int exitCode) {
    if (std::fflush(stdout) != 0 && outputError == 0)
        outputError = errno;
    std::clearerr(stdout);
    const int error = std::exchange(outputError, 0);
    if (error == 0)
        return exitCode;
    if (error != EPIPE)
        TellError(QStringLiteral("standard output: cannot be written: ") +
                  QString::fromLocal8Bit(std::strerror(error)));
    return exitCode == ExitDone ? ExitFile : exitCode;
}
