#pragma once

#include <QHash>

#include <optional>

/// Finds items again by their contents, equal ones in the order in which they were added.
class ByContents {
public:
    /// Contents are given as their `Wire::Hash`.
    void Add(quint64 contents, quint32 item);
    /// Takes the first item of these contents that is not less than `least`; those before it are gone, too.
    std::optional<quint32> Take(quint64 contents, quint32 least = 0);

private:
    static constexpr quint32 None = ~quint32(0);
    /// Items of one content: numbers of links.
    struct Chain {
        quint32 first = None, last = None;
    };
    struct Link {
        quint32 item, next;
    };

    QHash<quint64, Chain> m_chains;
    std::vector<Link> m_links;
};
