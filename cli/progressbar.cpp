#include "cli/progressbar.h"

#include <algorithm>
#include <string>
#include <unistd.h>
#include <utility>

namespace {

constexpr int Width = 40;
constexpr qint64 RefreshMilliseconds = 100;

ProgressBar* current = nullptr;

} // namespace

ProgressBar::ProgressBar(FILE* out)
    : m_out(out), m_before(LongWork::SetDisplay(this)), m_isTerminal(isatty(fileno(out)) == 1) {
    current = this;
}

ProgressBar::~ProgressBar() {
    clear();
    LongWork::SetDisplay(m_before);
    current = nullptr;
}

void ProgressBar::Show(qint64 done, qint64 total) {
    if (!m_isTerminal || total <= 0)
        return;
    const int percent = static_cast<int>(std::clamp(double(done) / double(total), 0., 1.) * 100);
    const bool isRecent = m_sinceShown.isValid() && m_sinceShown.elapsed() < RefreshMilliseconds;
    if (percent == m_shown || (isRecent && percent < 100))
        return;
    m_shown = percent;
    m_sinceShown.start();
    const auto filled = static_cast<std::size_t>(percent * Width / 100);
    const std::string bar = std::string(filled, '#') + std::string(Width - filled, '.');
    std::fprintf(m_out, "\r[%s] %3d %%", bar.c_str(), percent);
    std::fflush(m_out);
}

void ProgressBar::MakeRoom() {
    if (current)
        current->clear();
}

void ProgressBar::clear() {
    if (std::exchange(m_shown, -1) < 0)
        return;
    std::fprintf(m_out, "\r%*s\r", Width + 8, "");
    std::fflush(m_out);
}
