#include "link/messagebus.h"

#include "host/base/longwork.h"

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

std::unique_ptr<MessageBus::Subscription> MessageBus::Subscribe(const QByteArray& filter, Handler handler,
                                                                Waits waits) {
    auto subscription = std::make_unique<Subscription>(*this, ++m_lastId);
    m_entries.push_back(
        {m_lastId, filter, std::make_shared<Handler>(std::move(handler)), subscription.get(), waits});
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
    const QString phrase = reason.endsWith(QLatin1Char('.')) ? reason.chopped(1) : reason;
    if (m_state == state && m_reason == phrase)
        return;
    m_state = state;
    m_reason = phrase; // goes into sentences
    inOrder([this] { emit StateChanged(); });
}

void MessageBus::inOrder(std::function<void()> act) {
    if (m_waiting.empty() && !LongWork::IsRunning())
        return act();
    m_waiting.push_back(std::move(act));
    LongWork::WhenDone([bus = QPointer(this)] {
        if (bus)
            QMetaObject::invokeMethod(bus, &MessageBus::doWaiting, Qt::QueuedConnection);
    });
}

/// What is done may begin work of its own, and end the bus.
void MessageBus::doWaiting() {
    const QPointer alive(this);
    while (alive && !m_waiting.empty() && !LongWork::IsRunning()) {
        const std::function<void()> act = std::move(m_waiting.front());
        m_waiting.pop_front();
        act();
    }
}

/// Handlers may subscribe, end subscriptions or the bus.
void MessageBus::deliver(const QByteArray& topic, const QByteArray& payload) {
    std::vector<std::pair<std::weak_ptr<Handler>, Waits>> handlers;
    for (const Entry& entry : m_entries) {
        if (Matches(entry.filter, topic))
            handlers.emplace_back(entry.handler, entry.waits);
    }
    const QPointer alive(this);
    for (const auto& [weak, waits] : handlers) {
        const auto call = [weak = weak, topic, payload] {
            if (const std::shared_ptr<Handler> handler = weak.lock())
                (*handler)(topic, payload);
        };
        if (waits == Waits::ForWork && alive)
            inOrder(call);
        else
            call();
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
