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

void UndoBytes::makeRoom(size_t count) {
    if (m_used >= MostInMemory && !m_cannotSpill)
        Spill();
    if (m_used + count > m_memory.size())
        m_memory.resize(std::max({m_used + count, 2 * m_memory.size(), FirstRoom}));
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
                    m_file->write(m_memory.data(), count) != count || !m_file->flush();
    if (m_cannotSpill)
        return Problems::Report(
            TraceSource, {QDir::tempPath(), 0,
                          QCoreApplication::translate("UndoHistory", "a step of undo stays in memory: ") +
                              m_file->errorString()});
    m_inFile += m_used;
    m_used = 0;
    m_memory = {};
}

void UndoBytes::Load() {
    if (m_inFile == 0)
        return;
    std::vector<char> all(Size());
    Reader bytes(*this);
    for (size_t done = 0; done < all.size();) {
        const size_t part = std::min(all.size() - done, done < m_inFile ? m_inFile - done : m_used);
        std::memcpy(all.data() + done, bytes.Get(part), part);
        done += part;
    }
    Clear();
    m_used = all.size();
    m_memory = std::move(all);
}

void UndoBytes::Trim() {
    if (m_used < m_memory.size())
        m_memory =
            std::vector<char>(m_memory.begin(), m_memory.begin() + static_cast<std::ptrdiff_t>(m_used));
}

void UndoBytes::Clear() {
    *this = UndoBytes();
}

UndoBytes::Reader::Reader(const UndoBytes& bytes)
    : m_bytes(bytes),
      m_next(bytes.m_memory.data()),
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
        m_next = m_bytes.m_memory.data();
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
