#include "host/freqstorexml/stagedentries.h"

#include "host/base/longwork.h"
#include "host/report/readsafely.h"

#include <cstring>

namespace FreqStoreXml {

using REPORTGENERATOR::IRGObject;
using REPORTGENERATOR::MemberInfo;
using REPORTGENERATOR::NamedNumber;
using REPORTGENERATOR::Timestamp;

namespace {

constexpr std::size_t ChunkSize = 256 * 1024;
constexpr std::size_t WordSize = 8;
static_assert(sizeof(double) == WordSize && sizeof(Timestamp) == WordSize);

/// One bit for each member that differs from the entry before.
using Mask = quint32;

/// Calls `take` with the pointer to each number, text and time of the record and its sub-records.
template <class Take>
void ForEachScalar(IRGObject& record, const Take& take) {
    for (const MemberInfo& member : record.GetRecordInfo().members) {
        std::visit(
            [&](auto* value) {
                using Value = std::remove_pointer_t<decltype(value)>;
                if constexpr (std::is_same_v<Value, IRGObject>)
                    ForEachScalar(*value, take);
                else if constexpr (!std::is_same_v<Value, REPORTGENERATOR::IObjectList>)
                    take(value);
            },
            member.at(record));
    }
}

template <class T>
void Put(std::string& bytes, const T& value) {
    bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
}

template <class T>
T Take(std::string_view& bytes) {
    T value;
    std::memcpy(&value, bytes.data(), sizeof value);
    bytes.remove_prefix(sizeof value);
    return value;
}

/// Into the memory that the text has, if nobody shares it.
void TakeText(std::string_view& bytes, QString& text) {
    const auto size = Take<quint32>(bytes);
    text.resize(size);
    std::memcpy(text.data(), bytes.data(), size * sizeof(QChar));
    bytes.remove_prefix(size * sizeof(QChar));
}

bool IsSame(const QString& one, const QString& other) {
    return one.constData() == other.constData() ? one.size() == other.size() : one == other;
}

} // namespace

StagedEntries::Members::Members(FrequencyStoreEntry& of) : entry(&of) {
    ForEachScalar(of, [this](auto* value) {
        using Value = std::remove_pointer_t<decltype(value)>;
        if constexpr (std::is_same_v<Value, QString>)
            texts.push_back(value);
        else if constexpr (std::is_same_v<Value, NamedNumber>)
            integers.push_back(&value->value);
        else if constexpr (std::is_same_v<Value, int>)
            integers.push_back(value);
        else
            words.push_back(value);
    });
    Q_ASSERT(words.size() + integers.size() + texts.size() <= 8 * sizeof(Mask));
}

StagedEntries::StagedEntries() : m_lastMembers(m_last), m_source(m_last) {}

void StagedEntries::Read(const QString& fileName, bool csv, FrequencyStoreListHelper::ListType type) {
    Read(fileName, [&](const EntryCallback& append) {
        if (csv)
            ReadCsv(fileName, type, append);
        else
            ReadXml(fileName, append);
    });
}

void StagedEntries::Read(const QString& fileName, const std::function<void(const EntryCallback&)>& read) {
    try {
        LongWork::Elsewhere([&] { read([this](const FrequencyStoreEntry& entry) { Append(entry); }); });
    } catch (const RGException&) {
        clear();
        throw;
    } catch (const std::bad_alloc&) {
        const qint64 count = m_size;
        clear();
        throw REPORTGENERATOR::NotEnoughMemory(fileName, {count});
    }
}

void StagedEntries::clear() {
    m_chunks = {};
    m_last = FrequencyStoreEntry();
    m_size = 0;
}

void StagedEntries::Append(const FrequencyStoreEntry& entry) {
    if (m_source.entry != &entry)
        m_source = Members(const_cast<FrequencyStoreEntry&>(entry)); // which is only read
    if (m_chunks.empty() || m_chunks.back().size() >= ChunkSize)
        m_chunks.emplace_back().reserve(ChunkSize + ChunkSize / 16);
    std::string& bytes = m_chunks.back();
    const std::size_t begin = bytes.size();
    Mask changed = 0;
    Mask bit = 1;
    Put(bytes, changed);
    for (std::size_t i = 0; i < m_source.words.size(); ++i, bit <<= 1) {
        if (std::memcmp(m_source.words[i], m_lastMembers.words[i], WordSize) == 0)
            continue;
        changed |= bit;
        std::memcpy(m_lastMembers.words[i], m_source.words[i], WordSize);
        bytes.append(static_cast<const char*>(m_source.words[i]), WordSize);
    }
    for (std::size_t i = 0; i < m_source.integers.size(); ++i, bit <<= 1) {
        const int value = *m_source.integers[i];
        if (value == std::exchange(*m_lastMembers.integers[i], value))
            continue;
        changed |= bit;
        Put(bytes, value);
    }
    for (std::size_t i = 0; i < m_source.texts.size(); ++i, bit <<= 1) {
        const QString& text = *m_source.texts[i];
        if (IsSame(text, *m_lastMembers.texts[i]))
            continue;
        changed |= bit;
        *m_lastMembers.texts[i] = text;
        Put(bytes, static_cast<quint32>(text.size()));
        bytes.append(reinterpret_cast<const char*>(text.constData()),
                     static_cast<std::size_t>(text.size()) * sizeof(QChar));
    }
    std::memcpy(bytes.data() + begin, &changed, sizeof changed);
    ++m_size;
}

void StagedEntries::Drain(const EntryCallback& take) {
    m_last = FrequencyStoreEntry();
    qint64 taken = 0;
    const EntryCallback takeNext = [&](const FrequencyStoreEntry& entry) {
        LongWork::Step(taken++, m_size);
        take(entry);
    };
    while (!m_chunks.empty()) {
        const std::string chunk = std::move(m_chunks.front());
        m_chunks.pop_front();
        takeChunk(chunk, takeNext);
    }
    clear();
}

void StagedEntries::takeChunk(std::string_view chunk, const EntryCallback& take) {
    while (!chunk.empty()) {
        const auto changed = FreqStoreXml::Take<Mask>(chunk);
        Mask bit = 1;
        for (void* const word : m_lastMembers.words) {
            if (changed & bit) {
                std::memcpy(word, chunk.data(), WordSize);
                chunk.remove_prefix(WordSize);
            }
            bit <<= 1;
        }
        for (int* const integer : m_lastMembers.integers) {
            if (changed & bit)
                *integer = FreqStoreXml::Take<int>(chunk);
            bit <<= 1;
        }
        for (QString* const text : m_lastMembers.texts) {
            if (changed & bit)
                TakeText(chunk, *text);
            bit <<= 1;
        }
        take(m_last);
    }
}

} // namespace FreqStoreXml
