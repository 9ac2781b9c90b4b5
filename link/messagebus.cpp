#include "link/messagebus.h"

#include <QPointer>

#include <algorithm>

MessageBus::Subscription::~Subscription() {
    if (m_bus)
        m_bus->unsubscribe(m_id);
}

MessageBus::~MessageBus() {
    for (const Entry& entry : m_entries)
        entry.owner->m_bus = nullptr;
}

std::unique_ptr<MessageBus::Subscription> MessageBus::Subscribe(const QByteArray& filter, Handler handler) {
    auto subscription = std::make_unique<Subscription>(*this, ++m_lastId);
    m_entries.push_back(
        {m_lastId, filter, std::make_shared<Handler>(std::move(handler)), subscription.get()});
    startReceiving(filter);
    return subscription;
}

void MessageBus::unsubscribe(quint64 id) {
    const auto found =
        std::find_if(m_entries.begin(), m_entries.end(), [id](const Entry& entry) { return entry.id == id; });
    if (found == m_entries.end())
        return;
    const QByteArray filter = found->filter;
    m_entries.erase(found);
    const auto isSame = [&](const Entry& entry) { return entry.filter == filter; };
    if (std::none_of(m_entries.begin(), m_entries.end(), isSame))
        stopReceiving(filter);
}

std::vector<QByteArray> MessageBus::filters() const {
    std::vector<QByteArray> all;
    for (const Entry& entry : m_entries)
        all.push_back(entry.filter);
    return all;
}

bool MessageBus::isWanted(QByteArrayView topic) const {
    return std::any_of(m_entries.begin(), m_entries.end(),
                       [&](const Entry& entry) { return Matches(entry.filter, topic); });
}

void MessageBus::setState(State state, const QString& reason) {
    if (m_state == state && m_reason == reason)
        return;
    m_state = state;
    m_reason = reason;
    emit StateChanged();
}

/// Handlers may subscribe, end subscriptions or the bus.
void MessageBus::deliver(const QByteArray& topic, const QByteArray& payload) {
    std::vector<std::weak_ptr<Handler>> handlers;
    for (const Entry& entry : m_entries) {
        if (Matches(entry.filter, topic))
            handlers.push_back(entry.handler);
    }
    for (const auto& weak : handlers) {
        if (const std::shared_ptr<Handler> handler = weak.lock())
            (*handler)(topic, payload);
    }
}

bool MessageBus::Matches(QByteArrayView filter, QByteArrayView topic) {
    while (true) {
        if (filter == "#")
            return true;
        const qsizetype filterEnd = filter.indexOf('/');
        const qsizetype topicEnd = topic.indexOf('/');
        const QByteArrayView part = filterEnd < 0 ? filter : filter.first(filterEnd);
        if (part != "+" && part != (topicEnd < 0 ? topic : topic.first(topicEnd)))
            return false;
        if (filterEnd < 0 || topicEnd < 0)
            return filterEnd < 0 && topicEnd < 0;
        filter = filter.sliced(filterEnd + 1);
        topic = topic.sliced(topicEnd + 1);
    }
}
