#pragma once

#include "host/base/longwork.h"

#include <QElapsedTimer>

#include <cstdio>

/// A bar on the last line of a terminal while long work goes on; nothing where the output is no terminal. It
/// is gone when it is destroyed. There is one at a time.
class ProgressBar : private LongWork::Display {
public:
    /// `out` is the caller's.
    explicit ProgressBar(FILE* out = stderr);
    ~ProgressBar() override;
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    /// Shows how much is done, as often as it is worth while.
    void Show(qint64 done, qint64 total);

    /// Takes the bar that there is, if any, off the terminal, so that a message can be printed; it comes back
    /// with the next Show().
    static void MakeRoom();

private:
    void Turn(const LongWork::Progress& progress) override { Show(progress.done, progress.total); }
    void Hide() override { clear(); }
    void clear();

    FILE* m_out;
    LongWork::Display* m_before;
    bool m_isTerminal;
    int m_shown = -1; ///< percent on the terminal; negative when there is none
    QElapsedTimer m_sinceShown;
};
