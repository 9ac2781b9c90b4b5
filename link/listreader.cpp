#include "link/listreader.h"

#include "link/topics.h"

namespace {

/// Without progress for so long, what is missing is asked for again.
constexpr int StallMilliseconds = 3000;
/// More missing chunks than these are asked for all at once.
constexpr size_t SingleChunks = 32;

} // namespace

ListReader::ListReader(Seat& seat, const QString& list, QObject* parent)
    : QObject(parent), m_seat(seat), m_topic(Topics::List(seat.SiteTopic(), list)) {
    m_stall.setInterval(StallMilliseconds);
    connect(&m_stall, &QTimer::timeout, this, &ListReader::askAgain);
    connect(&seat.Bus(), &MessageBus::StateChanged, this, [this] {
        m_isRefused = false;
        update();
    });
    connect(&seat.Bus(), &MessageBus::SubscriptionRefused, this, [this](const QByteArray& filter) {
        m_isRefused = m_isRefused || filter.startsWith(m_topic);
        update();
    });
    connect(&seat, &Seat::PresenceChanged, this, &ListReader::update);
    subscribe("/manifest", &ListReader::takeManifest);
    subscribe("/layout/+", &ListReader::takeLayout);
    subscribe("/log/+", &ListReader::takeDelta);
    subscribe("/file", &ListReader::takeFile);
    update();
}

void ListReader::subscribe(const char* below, Handler handler) {
    m_subscriptions.push_back(
        m_seat.Bus().Subscribe(m_topic + below, [this, handler](const auto& topic, const auto& payload) {
            (this->*handler)(topic, payload);
        }));
}

void ListReader::takeManifest(const QByteArray& topic, const QByteArray& payload) {
    m_isOtherVersion = Messages::IsOtherVersion(payload);
    took(topic, payload, m_isOtherVersion ? ListCopy::Taken::Nothing : m_copy.TakeManifest(payload));
}

void ListReader::takeLayout(const QByteArray& topic, const QByteArray& payload) {
    quint64 number = 0;
    if (Topics::NumberOf(topic, number))
        took(topic, payload,
             m_copy.TakeLayout(static_cast<quint32>(std::min<quint64>(number, ~0u)), payload));
}

void ListReader::takeChunk(const QByteArray& topic, const QByteArray& payload) {
    quint64 number = 0;
    if (Topics::NumberOf(topic, number))
        took(topic, payload, m_copy.TakeChunk(static_cast<quint32>(std::min<quint64>(number, ~0u)), payload));
}

void ListReader::takeDelta(const QByteArray& topic, const QByteArray& payload) {
    took(topic, payload, m_copy.TakeDelta(payload));
}

void ListReader::takeFile(const QByteArray& topic, const QByteArray& payload) {
    const auto file = Messages::FileState::Decode(payload);
    if (!file)
        return took(topic, payload, ListCopy::Taken::Garbage);
    m_file = file;
    emit FileChanged();
}

void ListReader::took(const QByteArray& topic, const QByteArray& payload, ListCopy::Taken taken) {
    using Taken = ListCopy::Taken;
    // Nobody has to be told of what was removed, and of versions the state tells.
    if (taken == Taken::Garbage && !payload.isEmpty() && !Messages::IsOtherVersion(payload))
        m_seat.TellOnce(topic, tr("is no message of a list"));
    if (taken == Taken::Progress || taken == Taken::Changed)
        m_stall.start();
    if (taken == Taken::Changed)
        emit RowsChanged(m_copy.TakeChanges());
    update();
}

ListReader::State ListReader::stateNow() const {
    if (!m_seat.Bus().IsOnline())
        return State::Offline;
    if (m_isRefused || m_seat.IsRefused())
        return State::Refused;
    if (m_isOtherVersion)
        return State::OtherVersion;
    if (!m_copy.Newest())
        return State::Waiting;
    if (!m_copy.IsWhole())
        return State::Loading;
    if (m_seat.IsPresent(m_copy.Newest()->server.toUtf8()))
        return State::Whole;
    return m_seat.KnowsAll() ? State::ServerGone : State::Loading;
}

QString ListReader::StateText() const {
    const auto withOld = [this](const QString& text) {
        return m_copy.Revision() == 0 ? text : tr("%1; what is shown is old").arg(text);
    };
    switch (m_state) {
    case State::Offline:
        return withOld(m_seat.Bus().Reason().isEmpty() ? tr("not connected")
                                                       : tr("not connected: %1").arg(m_seat.Bus().Reason()));
    case State::Waiting:
        return waitingText();
    case State::Loading:
        if (m_copy.IsWhole())
            return tr("all is here; waits for the server to say that it is, too");
        return withOld(m_copy.WantsChunks() && m_copy.Newest()->chunks > 0
                           ? tr("loads, %1 %").arg(100 * m_copy.HeldChunks() / m_copy.Newest()->chunks)
                           : tr("loads"));
    case State::Whole:
        return tr("up to date");
    case State::ServerGone:
        return withOld(tr("the server has gone"));
    case State::OtherVersion:
        return withOld(tr("the server is of another version, which this program does not understand"));
    case State::Refused:
        return withOld(tr("the broker does not let this user read the list"));
    }
    return {};
}

/// Brokers mostly do not tell whoever has no right, but send nothing.
QString ListReader::waitingText() const {
    if (m_seat.IsDeaf())
        return tr("waits for a server; the broker passes nothing of this site on to this user");
    return m_seat.KnowsAll()
               ? tr("waits for a server: nobody has served the list, or this user may not read it")
               : tr("waits for a server");
}

void ListReader::update() {
    if (!m_seat.Bus().IsOnline() || !m_copy.WantsChunks())
        m_chunks.reset();
    else if (!m_chunks)
        m_chunks =
            m_seat.Bus().Subscribe(m_topic + "/chunk/+", [this](const auto& topic, const auto& payload) {
                takeChunk(topic, payload);
            });
    m_state = stateNow();
    if (m_state != State::Loading && m_state != State::Waiting)
        m_stall.stop();
    else if (!m_stall.isActive())
        m_stall.start();
    if (QString text = StateText(); text != m_text) {
        m_text = std::move(text);
        emit StateChanged();
    }
}

void ListReader::askAgain() {
    MessageBus& bus = m_seat.Bus();
    if (m_state == State::Waiting)
        return bus.FetchAgain(m_topic + "/manifest");
    if (m_copy.IsInconsistent())
        m_copy.DropAssembly();
    bus.FetchAgain(m_topic + "/manifest");
    bus.FetchAgain(m_topic + "/layout/+");
    bus.FetchAgain(m_topic + "/log/+");
    const std::vector<quint32> missing = m_copy.MissingChunks(SingleChunks + 1);
    if (missing.size() > SingleChunks) {
        bus.FetchAgain(m_topic + "/chunk/+");
        return;
    }
    for (const quint32 chunk : missing)
        bus.FetchAgain(Topics::Numbered(m_topic + "/chunk", chunk));
}
