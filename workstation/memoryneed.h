#pragma once

#include <QString>

#include <new>

/// How many bytes the process can still take: what the machine has available, or less where the process has
/// a limit of its own.
qint64 AvailableMemory();

/// What so many entries would need, as a sentence for the operator; empty when `available` bytes do for them.
QString WhyTooLarge(qint64 entries, qint64 available);

/// Tells that the memory does not do for something.
void TellOutOfMemory(const QString& what);

/// Does something that may take much memory. When there is not enough, that is told, and `failed` is the
/// answer: the program goes on.
template <typename Result, typename Act>
Result WithinMemory(const QString& what, const Result& failed, Act&& act) {
    try {
        return act();
    } catch (const std::bad_alloc&) {
        TellOutOfMemory(what);
        return failed;
    }
}
