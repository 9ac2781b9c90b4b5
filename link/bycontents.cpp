#include "link/bycontents.h"

void ByContents::Add(quint64 contents, quint32 item) {
    Chain& chain = m_chains[contents];
    const auto number = static_cast<quint32>(m_links.size());
    m_links.push_back({item, None});
    if (chain.first == None)
        chain.first = number;
    else
        m_links[chain.last].next = number;
    chain.last = number;
}

std::optional<quint32> ByContents::Take(quint64 contents, quint32 least) {
    const auto chain = m_chains.find(contents);
    if (chain == m_chains.end())
        return std::nullopt;
    quint32 found = chain->first;
    while (found != None && m_links[found].item < least)
        found = m_links[found].next;
    chain->first = found == None ? None : m_links[found].next;
    return found == None ? std::nullopt : std::optional(m_links[found].item);
}
