#include "link/seat.h"

#include "host/base/problems.h"
#include "link/topics.h"

#include <QRandomGenerator>

namespace {

constexpr char TraceSource[] = "sharelink";
constexpr qsizetype LongestName = 200;
constexpr size_t MostTold = 100;
/// What anybody may publish as presence is bounded.
constexpr size_t MostSeats = 10000;
constexpr qsizetype LargestPresence = 4096;
/// Calls within this time get one answer, besides the first one, which gets its own at once.
constexpr int AnswerMilliseconds = 100;

} // namespace

Seat::Seat(MessageBus& bus, const QString& site, const QString& name, QObject* parent)
    : QObject(parent),
      m_bus(bus),
      m_site(Topics::Site(site)),
      m_nonce(QRandomGenerator::system()->generate64()) {
    m_path = Topics::Escaped(bus.UserName()) + '/' + QByteArray::number(m_nonce, 36);
    m_topic = m_site + "/seats/" + m_path;
    m_own.name = name.left(LongestName);
    m_own.nonce = m_nonce;
    bus.SetWill(m_topic, {});
    const auto hear = [&](const QByteArray& filter, MessageBus::Handler handler,
                          MessageBus::Waits waits = MessageBus::Waits::ForWork) {
        m_subscriptions.push_back(bus.Subscribe(filter, std::move(handler), waits, MessageBus::Keep::No));
    };
    hear(m_site + "/seats/+/+",
         [this](const auto& topic, const auto& payload) { takePresence(topic, payload); });
    hear(m_topic + "/echo", [this](const auto&, const auto& payload) { takeEcho(payload); });
    // Others take a seat that does not answer for gone.
    hear(
        m_site + "/call", [this](const auto&, const auto&) { answerCall(); }, MessageBus::Waits::Never);
    m_answer.setSingleShot(true);
    m_answer.setInterval(AnswerMilliseconds);
    m_patience.setSingleShot(true);
    m_patience.setInterval(PatienceMilliseconds);
    connect(&m_patience, &QTimer::timeout, this, &Seat::PresenceChanged);
    connect(&m_answer, &QTimer::timeout, this, [this] {
        if (m_isCalledAgain)
            answerCall();
    });
    connect(&bus, &MessageBus::StateChanged, this, &Seat::stateChanged);
    connect(&bus, &MessageBus::SubscriptionRefused, this, [this](const QByteArray& filter) {
        if (!filter.startsWith(m_site + "/seats/"))
            return;
        m_isRefused = true;
        emit PresenceChanged();
    });
    if (bus.IsOnline())
        comeIn();
    bus.Connect();
}

Seat::~Seat() {
    m_bus.Publish(m_topic, {});
}

/// The others are called: they answer within the time that is started here.
void Seat::comeIn() {
    m_connection = m_bus.Connections();
    m_patience.start();
    publishPresence();
    CallAll();
}

void Seat::stateChanged() {
    m_isRefused = false;
    // A break may be told when the next connection stands already.
    if (!m_bus.IsOnline() || m_connection != m_bus.Connections()) {
        m_echoes.clear();
        m_present.clear();
        emit PresenceChanged();
    }
    if (m_bus.IsOnline())
        comeIn();
}

void Seat::answerCall() {
    m_isCalledAgain = m_answer.isActive();
    if (m_isCalledAgain)
        return;
    publishPresence();
    m_answer.start();
}

void Seat::publishPresence() {
    m_bus.Publish(m_topic, m_own.Encode());
}

void Seat::SetEditing(const QString& list, Messages::EntryId id) {
    if (m_own.id == id && m_own.list == list)
        return;
    m_own.list = list;
    m_own.id = id;
    publishPresence();
}

void Seat::CallAll() {
    m_bus.Publish(m_site + "/call", "?");
}

QString Seat::NameOf(const QByteArray& seat) const {
    const auto found = m_present.find(seat);
    return found != m_present.end() ? found->second.name : Topics::Unescaped(seat.left(seat.indexOf('/')));
}

void Seat::takePresence(const QByteArray& topic, const QByteArray& payload) {
    const QByteArray seat = Topics::SeatOf(topic);
    if (seat.isEmpty())
        return;
    if (payload.isEmpty()) {
        m_present.erase(seat);
    } else if (auto presence =
                   payload.size() <= LargestPresence ? Messages::Presence::Decode(payload) : std::nullopt) {
        if (m_present.size() >= MostSeats && !IsPresent(seat))
            return;
        presence->name.truncate(LongestName);
        m_present[seat] = *presence;
        emit Appeared(seat);
    } else {
        return TellOnce(topic, tr("is no presence of a seat"));
    }
    // An end of this seat that was told late, or by a stranger, is none.
    if (payload.isEmpty() && seat == m_path)
        publishPresence();
    emit PresenceChanged();
}

void Seat::AfterWhatIsUnderWay(std::function<void()> then) {
    if (!m_bus.IsOnline())
        return;
    m_echoes[++m_lastEcho] = std::move(then);
    m_bus.Publish(m_topic + "/echo", QByteArray::number(m_lastEcho));
}

void Seat::takeEcho(const QByteArray& payload) {
    const auto found = m_echoes.find(payload.toULongLong());
    if (found == m_echoes.end())
        return;
    const std::function<void()> then = std::move(found->second);
    m_echoes.erase(found);
    then();
}

void Seat::TellOnce(const QByteArray& topic, const QString& reason) {
    // Numbers of chunks are no kinds.
    quint64 number = 0;
    const QByteArray kind = Topics::NumberOf(topic, number) ? topic.left(topic.lastIndexOf('/')) : topic;
    if (m_told.size() >= MostTold || !m_told.insert(kind).second)
        return;
    Problems::Report(TraceSource, {QString::fromUtf8(topic.left(LongestName)), 0, reason});
}
