#pragma once

#include "host/base/traceplace.h"
#include "host/report/rgexception.h"

#include <functional>
#include <new>

namespace REPORTGENERATOR {

/// The state of a list after its file did not fit into memory.
struct DroppedEntries {
    qint64 count = 0;         ///< had been read and are gone
    bool listIsEmpty = false; ///< else the list is as it was
};

/// Says that a file does not fit into memory.
class NotEnoughMemory : public RGException {
public:
    NotEnoughMemory(const QString& file, const DroppedEntries& dropped);

    qint64 GetCount() const { return m_count; }

private:
    qint64 m_count;
};

/// Fills a container with the entries of a file. When memory runs out they are freed, and NotEnoughMemory is
/// thrown.
template <class Container, class Read>
void ReadInto(Container& entries, const QString& file, Read read) {
    qint64 count = 0;
    try {
        read();
        return;
    } catch (const std::bad_alloc&) {
        count = static_cast<qint64>(entries.size());
    }
    entries = {};
    throw NotEnoughMemory(file, {count});
}

/// Reads a file for the operator. Returns the result of `read`; false, told under the reader's place, when it
/// throws RGException or memory runs out. In the latter case `drop` takes the entries read out of the list
/// again; some memory is kept free for it. It does so before WorkCancelled passes through, too.
[[nodiscard]] bool ReadSafely(TracePlace place, const QString& file, const std::function<bool()>& read,
                              const std::function<DroppedEntries()>& drop);

} // namespace REPORTGENERATOR
