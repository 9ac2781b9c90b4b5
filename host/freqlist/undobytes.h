#pragma once

#include <QTemporaryFile>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>
#include <vector>

/// What a step keeps for undo, as bytes: in memory while they are few, else in a temporary file that has no
/// name and goes with the object. They are appended, and read from the front.
class UndoBytes {
public:
    /// More bytes than these go to the file at once.
    static constexpr size_t MostInMemory = size_t(16) << 20;

    UndoBytes() = default;
    UndoBytes(UndoBytes&& other) noexcept { *this = std::move(other); }
    UndoBytes& operator=(UndoBytes&& other) noexcept;

    template <typename T>
    void Put(const T& value) {
        static_assert(std::is_trivially_copyable_v<T>);
        std::memcpy(Grow(sizeof value), &value, sizeof value);
    }
    void Put(const void* bytes, size_t count) {
        if (count > 0)
            std::memcpy(Grow(count), bytes, count);
    }
    /// Room for that many bytes, which the caller writes.
    char* Grow(size_t count) {
        if (m_used + count > m_room)
            makeRoom(count);
        char* const place = m_memory.get() + m_used;
        m_used += count;
        return place;
    }

    /// Moves what is in memory into the file. What cannot be written stays in memory.
    void Spill();
    /// Takes what is in the file back into memory. Throws RGException, with nothing changed, when it cannot
    /// be read.
    void Load();
    /// Gives back memory that is not used.
    void Trim();
    size_t InMemory() const { return m_room; }
    size_t Size() const { return m_inFile + m_used; }
    void Clear();

    /// Reads bytes in the order in which they were put. They must stay as they are meanwhile. Throws
    /// RGException when the file cannot be read.
    class Reader {
    public:
        explicit Reader(const UndoBytes& bytes);
        template <typename T>
        T Get() {
            T value;
            std::memcpy(&value, Get(sizeof value), sizeof value);
            return value;
        }
        /// Good until the next call.
        const char* Get(size_t count);
        bool AtEnd() const { return m_left == 0; }

    private:
        void fill(size_t count);

        const UndoBytes& m_bytes;
        std::vector<char> m_buffer; ///< a part of the file
        const char* m_next;
        size_t m_ready;    ///< bytes behind `m_next`
        size_t m_inFile;   ///< bytes of the file that are still to be read
        size_t m_left;     ///< all that are still to be read
        bool m_isFromFile; ///< `m_next` is in `m_buffer`
    };

private:
    struct Free {
        void operator()(char* memory) const { std::free(memory); }
    };

    void makeRoom(size_t count);
    void resize(size_t room);

    std::unique_ptr<char, Free> m_memory; ///< behind what is in the file; grows without being copied
    size_t m_room = 0;
    size_t m_used = 0;
    std::unique_ptr<QTemporaryFile> m_file;
    size_t m_inFile = 0;
    bool m_cannotSpill = false;
};
