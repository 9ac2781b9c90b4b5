#pragma once

#include <QString>

#include <vector>

/// What became of the entries of one file in another.
struct FileDifference {
    qint64 added = 0;
    qint64 removed = 0;
    qint64 changed = 0; ///< have the same frequency and something else that differs

    bool operator==(const FileDifference&) const = default;
};

/// The entries of a list file, in as little memory as comparing them takes. No list is touched, and nothing
/// told.
class FileRecords {
public:
    /// Reads target lists, frequencies of interest, memory channels and jobs, by the mark in the name. Of a
    /// file that is bad half-way it has the entries before.
    explicit FileRecords(const QString& path);

    /// False when the file could not be read, or not to its end.
    bool IsWhole() const { return m_isWhole; }
    qint64 Count() const { return static_cast<qint64>(m_records.size()); }
    /// What was done to `older` to come to these.
    FileDifference Since(const FileRecords& older) const;

private:
    class Collector;

    struct Record {
        double frequency; ///< Hz
        size_t content;   ///< hash of all else

        auto operator<=>(const Record&) const = default;
    };

    bool read(const QString& path);
    bool readJob(const QString& path);

    std::vector<Record> m_records; ///< in order
    bool m_isWhole = false;
};
