#include "host/valuetree/texts.h"

#include <array>
#include <memory>
#include <new>
#include <utility>
#include <vector>

namespace Texts {
namespace {

/// Cells never move, so that references to their texts stay good.
class Cells {
public:
    static Cells& Instance() {
        static auto* const cells = new Cells;
        return *cells;
    }
    const QString& Text(Id id) const { return m_chunks[id / PerChunk]->texts[id % PerChunk]; }
    Id Add(QString&& text) {
        const Id id = m_firstFree != 0 ? std::exchange(m_firstFree, count(m_firstFree)) : next();
        m_chunks[id / PerChunk]->texts[id % PerChunk] = std::move(text);
        count(id) = 1;
        return id;
    }
    void Share(Id id) { ++count(id); }
    void Release(Id id) {
        if (--count(id) != 0)
            return;
        m_chunks[id / PerChunk]->texts[id % PerChunk] = QString();
        count(id) = std::exchange(m_firstFree, id);
    }

private:
    static constexpr Id PerChunk = 4096;
    struct Chunk {
        std::array<QString, PerChunk> texts;
        std::array<Id, PerChunk>
            counts; ///< of the values that share the cell; the next free cell of a free one
    };

    Id& count(Id id) { return m_chunks[id / PerChunk]->counts[id % PerChunk]; }
    Id next() {
        if (m_next % PerChunk == 0 || m_chunks.empty())
            m_chunks.push_back(std::make_unique<Chunk>());
        return m_next++;
    }

    std::vector<std::unique_ptr<Chunk>> m_chunks;
    Id m_next = 1;
    Id m_firstFree = 0;
};

/// Texts whose characters share an array, which lives as long as any of them. A text that is changed by who
/// took it gets an array of its own then, as any shared string does.
class Characters {
public:
    ~Characters() { letGo(); }
    QString Copy(QStringView text) {
        if (text.size() > LongText)
            return text.toString();
        if (text.size() >= m_end - m_at) {
            const auto [array, begin] = Array::allocate(ChunkSize);
            if (!array)
                throw std::bad_alloc(); // which that function leaves to us
            letGo();
            m_array = array;
            m_at = begin;
            m_end = begin + ChunkSize;
        }
        char16_t* const start = std::exchange(m_at, m_at + text.size() + 1);
        std::copy_n(text.utf16(), text.size(), start);
        start[text.size()] = 0;
        m_array->ref();
        return QString(QStringPrivate(m_array, start, text.size()));
    }

private:
    using Array = QTypedArrayData<char16_t>;
    static constexpr qsizetype ChunkSize = 8000; ///< characters
    static constexpr qsizetype LongText = 500;

    void letGo() {
        if (m_array && !m_array->deref())
            Array::deallocate(m_array);
    }

    Array* m_array = nullptr;
    char16_t* m_at = nullptr;
    char16_t* m_end = nullptr;
};

/// The words that repeat under one name. Where they do not repeat it soon stops looking for them, and only
/// now and then tries again.
class Words {
public:
    /// The word's cell, shared with one more value; 0 when the text is to get a cell of its own.
    Id Find(QStringView text) {
        if (m_misses > MostMisses && ++m_skipped % TryAgain != 0)
            return 0;
        Id& known = m_known[hashOf(text) % m_known.size()];
        Cells& cells = Cells::Instance();
        if (known != 0 && cells.Text(known) == text) {
            m_misses -= m_misses > 0 ? 1 : 0;
        } else {
            ++m_misses;
            const Id before = std::exchange(known, cells.Add(text.toString()));
            if (before != 0)
                cells.Release(before);
        }
        cells.Share(known);
        return known;
    }

private:
    static constexpr unsigned MostMisses = 256;
    static constexpr unsigned TryAgain = 64;

    static size_t hashOf(QStringView text) {
        const auto at = [text](qsizetype i) { return static_cast<size_t>(text[i].unicode()); };
        const qsizetype last = text.size() - 1;
        return static_cast<size_t>(text.size()) * 31 + at(0) * 7 + at(last) * 13 + at(last / 2) * 29;
    }

    std::array<Id, 64> m_known{};
    unsigned m_misses = 0;
    unsigned m_skipped = 0;
};

/// Keys of entries are among the first names of a process.
constexpr Names::Id MostNames = 4096;

} // namespace

Id Keep(const QString& text) {
    return text.isNull() ? 0 : Cells::Instance().Add(QString(text));
}

Id KeepForEntry(Names::Id name, QStringView text) {
    static auto* const words = new std::vector<Words>;
    static auto* const characters = new Characters;
    if (text.isNull())
        return 0;
    if (text.isEmpty())
        return Cells::Instance().Add(QString(QLatin1String("")));
    if (name < MostNames) {
        if (name >= words->size())
            words->resize(name + 1);
        if (const Id word = (*words)[name].Find(text))
            return word;
    }
    return Cells::Instance().Add(characters->Copy(text));
}

void Release(Id id) {
    if (id != 0)
        Cells::Instance().Release(id);
}

const QString& At(Id id) {
    static const QString none;
    return id == 0 ? none : Cells::Instance().Text(id);
}

} // namespace Texts
