#include "host/freqlist/undobytes.h"

#include "host/base/problems.h"
#include "host/report/rgexception.h"

#include <QCoreApplication>
#include <QDir>

namespace {

constexpr char TraceSource[] = "undobytes";
constexpr size_t FirstRoom = 256;
constexpr size_t ReadAtOnce = size_t(1) << 20;

} // namespace

UndoBytes& UndoBytes::operator=(UndoBytes&& other) noexcept {
    m_memory = std::move(other.m_memory);
    m_file = std::move(other.m_file);
    m_room = std::exchange(other.m_room, 0);
    m_used = std::exchange(other.m_used, 0);
    m_inFile = std::exchange(other.m_inFile, 0);
    m_cannotSpill = std::exchange(other.m_cannotSpill, false);
    return *this;
}

void UndoBytes::resize(size_t room) {
    auto* const memory = static_cast<char*>(std::realloc(m_memory.get(), room));
    if (!memory)
        throw std::bad_alloc();
    (void)m_memory.release();
    m_memory.reset(memory);
    m_room = room;
}

void UndoBytes::makeRoom(size_t count) {
    if (m_used >= MostInMemory && !m_cannotSpill)
        Spill();
    if (m_used + count > m_room)
        resize(std::max({m_used + count, 2 * m_room, FirstRoom}));
}

void UndoBytes::Spill() {
    if (m_used == 0)
        return;
    if (!m_file) {
        m_file = std::make_unique<QTemporaryFile>();
        m_cannotSpill = !m_file->open();
    }
    const auto count = static_cast<qint64>(m_used);
    m_cannotSpill = m_cannotSpill || !m_file->seek(static_cast<qint64>(m_inFile)) ||
                    m_file->write(m_memory.get(), count) != count || !m_file->flush();
    if (m_cannotSpill)
        return Problems::Report(
            TraceSource, {QDir::tempPath(), 0,
                          QCoreApplication::translate("UndoHistory", "a step of undo stays in memory: ") +
                              m_file->errorString()});
    m_inFile += m_used;
    m_used = 0;
    m_room = 0;
    m_memory.reset();
}

void UndoBytes::Load() {
    if (m_inFile == 0)
        return;
    UndoBytes all;
    Reader bytes(*this);
    for (size_t done = 0; done < Size();) {
        const size_t part = std::min(Size() - done, done < m_inFile ? m_inFile - done : m_used);
        all.m_cannotSpill = true;
        all.Put(bytes.Get(part), part);
        done += part;
    }
    all.m_cannotSpill = false;
    *this = std::move(all);
}

void UndoBytes::Trim() {
    if (m_used > 0)
        resize(m_used);
}

void UndoBytes::Clear() {
    *this = UndoBytes();
}

UndoBytes::Reader::Reader(const UndoBytes& bytes)
    : m_bytes(bytes),
      m_next(bytes.m_memory.get()),
      m_ready(bytes.m_inFile == 0 ? bytes.m_used : 0),
      m_inFile(bytes.m_inFile),
      m_left(bytes.Size()),
      m_isFromFile(bytes.m_inFile > 0) {
    if (bytes.m_file)
        bytes.m_file->seek(0);
}

const char* UndoBytes::Reader::Get(size_t count) {
    if (count > m_ready)
        fill(count);
    const char* const place = m_next;
    m_next += count;
    m_ready -= count;
    m_left -= count;
    return place;
}

/// What one `Put` wrote never lies half in the file and half in memory.
void UndoBytes::Reader::fill(size_t count) {
    if (m_isFromFile && m_inFile == 0 && m_ready == 0) {
        m_isFromFile = false;
        m_next = m_bytes.m_memory.get();
        m_ready = m_bytes.m_used;
        m_buffer = {};
    }
    if (m_isFromFile) {
        std::vector<char> part(m_ready + std::min(m_inFile, std::max(count, ReadAtOnce)));
        std::copy_n(m_next, m_ready, part.begin());
        const auto wanted = static_cast<qint64>(part.size() - m_ready);
        if (m_bytes.m_file->read(part.data() + m_ready, wanted) != wanted)
            throw RGException(QDir::tempPath() + QStringLiteral(": ") + m_bytes.m_file->errorString());
        m_inFile -= static_cast<size_t>(wanted);
        m_ready = part.size();
        m_buffer = std::move(part);
        m_next = m_buffer.data();
    }
    if (count > m_ready)
        throw RGException(QDir::tempPath() + QStringLiteral(": ") +
                          QCoreApplication::translate("UndoHistory", "what a step of undo keeps is cut off"));
}
