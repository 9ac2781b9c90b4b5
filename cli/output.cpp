#include "cli/output.h"

#include "cli/command.h"
#include "cli/progressbar.h"
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

bool Output::Lines(std::string_view utf8) {
    if (!m_isTerminal)
        return put(utf8);
    for (size_t end = 0; !utf8.empty(); utf8.remove_prefix(end)) {
        end = std::min(utf8.find('\n'), utf8.size() - 1) + 1;
        const std::string_view line = utf8.substr(0, end);
        const bool isWhole = line.ends_with('\n');
        const QByteArray bytes = VisibleText(QString::fromUtf8(line.substr(0, end - isWhole))).toUtf8();
        if (!put(bytes) || (isWhole && !put("\n")))
            return false;
    }
    return true;
}

bool Output::put(QByteArrayView bytes) {
    if (m_isTerminal)
        ProgressBar::MakeRoom();
    const auto size = static_cast<size_t>(bytes.size());
    const bool isWhole = std::fwrite(bytes.data(), 1, size, m_stream) == size;
    if (!isWhole && m_stream == stdout && outputError == 0)
        outputError = errno;
    return isWhole;
}

bool TextPieces::HandOn() {
    const bool isTaken = m_text.empty() || m_take(m_text);
    m_text.clear();
    return isTaken;
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
