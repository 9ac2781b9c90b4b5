#pragma once

#include "host/base/longwork.h"

/// Does work on so many rows that may not be cut in two; of a long list while the window paints and shows how
/// far it is. Messages of a bus wait meanwhile.
inline void InTurns(const QString& title, size_t rows, const std::function<void()>& work) {
    constexpr size_t LongList = 2000;
    const auto unbroken = [&work] {
        const LongWork::Unbroken whole;
        work();
    };
    if (rows < LongList)
        unbroken();
    else
        LongWork::Run(title, unbroken);
}

/// A row of the work has been done.
inline void StepOf(size_t done, size_t total) {
    LongWork::Step(static_cast<qint64>(done), static_cast<qint64>(total));
}
