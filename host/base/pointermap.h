#pragma once

#include <QtGlobal>

#include <vector>

/// A small map from addresses to words, for data that few of very many objects have. A look-up mostly costs
/// one probe, and a place sixteen bytes. A word is never 0. GUI thread only.
class PointerMap {
public:
    /// The word of an address; 0 when it has none.
    quint64 Find(const void* key) const {
        for (size_t i = home(key);; i = next(i)) {
            if (m_places[i].key == key)
                return m_places[i].word;
            if (!m_places[i].key)
                return 0;
        }
    }
    void Set(const void* key, quint64 word) {
        if ((m_count + 1) * 4 > m_places.size() * 3)
            grow();
        size_t i = home(key);
        while (m_places[i].key && m_places[i].key != key)
            i = next(i);
        m_count += m_places[i].key ? 0 : 1;
        m_places[i] = {key, word};
    }
    void Erase(const void* key) {
        size_t hole = home(key);
        while (m_places[hole].key != key) {
            if (!m_places[hole].key)
                return;
            hole = next(hole);
        }
        // What stands behind and could stand in the hole moves there.
        for (size_t i = next(hole); m_places[i].key; i = next(i)) {
            const size_t mask = m_places.size() - 1;
            if (((i - home(m_places[i].key)) & mask) >= ((i - hole) & mask)) {
                m_places[hole] = m_places[i];
                hole = i;
            }
        }
        m_places[hole] = {};
        --m_count;
    }

private:
    struct Place {
        const void* key = nullptr;
        quint64 word = 0;
    };

    size_t home(const void* key) const {
        return (reinterpret_cast<quint64>(key) >> 3) * 0x9E3779B97F4A7C15ull >> 20 & (m_places.size() - 1);
    }
    size_t next(size_t i) const { return (i + 1) & (m_places.size() - 1); }
    void grow() {
        std::vector<Place> old(m_places.size() * 2);
        old.swap(m_places);
        m_count = 0;
        for (const Place& place : old) {
            if (place.key)
                Set(place.key, place.word);
        }
    }

    std::vector<Place> m_places = std::vector<Place>(64); ///< a power of two
    size_t m_count = 0;
};
