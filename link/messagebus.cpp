#include "link/messagebus.h"

#include "host/base/longwork.h"

#include <QElapsedTimer>
#include <QPointer>

#include <algorithm>

namespace {

/// Nanoseconds of handling messages before the window gets its turn.
constexpr qint64 MostInTurn = 10'000'000;

} // namespace

MessageBus::Subscription::~Subscription() {
    if (m_bus)
        m_bus->unsubscribe(m_id);
}

MessageBus::MessageBus(QObject* parent) : QObject(parent) {
    m_turn.setSingleShot(true);
    connect(&m_turn, &QTimer::timeout, this, &MessageBus::doWaiting);
}

MessageBus::~MessageBus() {
    for (const Entry& entry : m_entries)
        entry.owner->m_bus = nullptr;
}

std::unique_ptr<MessageBus::Subscription> MessageBus::Subscribe(const QByteArray& filter, Handler handler,
                                                                Waits waits, Keep keep) {
    auto subscription = std::make_unique<Subscription>(*this, ++m_lastId);
    m_entries.push_back(
        {m_lastId, filter, std::make_shared<Handler>(std::move(handler)), subscription.get(), waits, keep});
    startReceiving(filter, keep);
    return subscription;
}

void MessageBus::unsubscribe(quint64 id) {
    const auto found =
        std::find_if(m_entries.begin(), m_entries.end(), [id](const Entry& entry) { return entry.id == id; });
    if (found == m_entries.end())
        return;
    const QByteArray filter = found->filter;
    m_entries.erase(found);
    if (!isSubscribed(filter))
        stopReceiving(filter);
}

void MessageBus::startReceivingAll() {
    for (const Entry& entry : m_entries)
        startReceiving(entry.filter, entry.keep);
}

bool MessageBus::isSubscribed(const QByteArray& filter) const {
    return std::any_of(m_entries.begin(), m_entries.end(),
                       [&](const Entry& entry) { return entry.filter == filter; });
}

bool MessageBus::isWanted(QByteArrayView topic) const {
    return std::any_of(m_entries.begin(), m_entries.end(),
                       [&](const Entry& entry) { return Matches(entry.filter, topic); });
}

void MessageBus::setState(State state, const QString& reason) {
    const QString phrase = reason.endsWith(QLatin1Char('.')) ? reason.chopped(1) : reason;
    if (m_state == state && m_reason == phrase)
        return;
    if (state == State::Online && m_state != State::Online)
        ++m_connections;
    m_state = state;
    m_reason = phrase; // goes into sentences
    inOrder([this] { emit StateChanged(); });
}

void MessageBus::inOrder(std::function<void()> act) {
    if (m_waiting.empty() && !LongWork::IsRunning())
        return act();
    wait(std::move(act));
}

void MessageBus::wait(std::function<void()> act) {
    m_waiting.push_back(std::move(act));
    if (!m_turn.isActive())
        m_turn.start();
}

bool MessageBus::mayAct() {
    if (!m_turn.isActive()) {
        m_turn.start();
        m_spent = 0;
    }
    return m_spent < MostInTurn && !LongWork::IsRunning();
}

/// What is done may begin work of its own, and end the bus.
void MessageBus::actInTurn(const std::function<void()>& act) {
    const QPointer alive(this);
    QElapsedTimer timer;
    timer.start();
    act();
    if (alive)
        m_spent += timer.nsecsElapsed();
}

void MessageBus::doWaiting() {
    const QPointer alive(this);
    while (alive && !m_waiting.empty() && mayAct()) {
        const std::function<void()> act = std::move(m_waiting.front());
        m_waiting.pop_front();
        actInTurn(act);
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
        if (waits == Waits::Never || !alive)
            call();
        else if (m_waiting.empty() && mayAct())
            actInTurn(call);
        else
            wait(call);
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
