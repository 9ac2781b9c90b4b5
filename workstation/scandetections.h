#pragma once

#include "scan/scanner.h"

#include <QCoreApplication>

#include <map>

class SimulatedSearch;

/// The stops of scans as plain detections, each with a number of its own, and beside the list what it has no
/// place for: which channel it was, and the channel's comment.
class ScanDetections {
    Q_DECLARE_TR_FUNCTIONS(ScanDetections)

public:
    /// The search has the list and gives the numbers; it outlives this.
    explicit ScanDetections(SimulatedSearch& search) : m_search(search) {}

    /// Writes a stop that began, went on or ended.
    void Write(const ScanStop& stop);
    /// A detection's channel and comment in words, by its number; empty for one that is no stop on a channel.
    QString NoteOf(unsigned id) const;
    /// The comment of the channel alone.
    QString CommentOf(unsigned id) const;

private:
    struct Note {
        long channel;
        QString comment;
    };

    SimulatedSearch& m_search;
    std::map<unsigned, Note> m_notes;
    unsigned m_id = 0;     ///< of the present stop
    quint64 m_number = 0;  ///< of that stop
    bool m_isOpen = false; ///< its detection is still in the list
};
