// Seats whose clock is wrong, and is set again and again.

#include "tests/link/linkfixture.h"
#include "tests/link/realbroker.h"

#include <QDateTime>

#include <sys/syscall.h>
#include <sys/time.h>

namespace {

/// By how many seconds the time of day of this process is wrong.
std::atomic<time_t> wrongBy = 0;

} // namespace

// These stand before the ones of the C library, for all libraries of this program. Time that only goes on is
// not touched.
extern "C" {

int clock_gettime(clockid_t clock, timespec* time) noexcept {
    const long result = syscall(SYS_clock_gettime, clock, time);
    if (result == 0 && (clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE))
        time->tv_sec += wrongBy;
    return static_cast<int>(result);
}

int gettimeofday(timeval* time, void*) noexcept {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    *time = {now.tv_sec, now.tv_nsec / 1000};
    return 0;
}

time_t time(time_t* seconds) noexcept {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    if (seconds)
        *seconds = now.tv_sec;
    return now.tv_sec;
}

} // extern "C"

namespace {

/// Sets the clock hours forth and back, some hundred times a second; it is right again with the end.
class JumpingClock {
public:
    JumpingClock() {
        QObject::connect(&m_timer, &QTimer::timeout, [this] {
            constexpr time_t Hours[] = {5, -7, 0, 90, -30};
            wrongBy = 3600 * Hours[++m_jumps % std::size(Hours)];
        });
        m_timer.start(3);
    }
    ~JumpingClock() { wrongBy = 0; }
    JumpingClock(const JumpingClock&) = delete;
    JumpingClock& operator=(const JumpingClock&) = delete;
    size_t Jumps() const { return m_jumps; }

private:
    QTimer m_timer;
    size_t m_jumps = 0;
};

TEST(Clock, isNothingThatSeatsGoBy) {
    const RealBroker broker({"server", "anna", "reader"});
    const auto bus = [&](const char* user) {
        return std::make_unique<MqttBus>(broker.AddressOf(QString::fromLatin1(user)));
    };
    TestServer server(bus("server"), Q("server"));
    server.list.Fill(300);
    server.Serve();
    TestClient anna(bus("anna"), Q("anna")), ben(bus("reader"), Q("ben"));
    // Certificates have a time of day: whoever connects has to know it.
    TestServer second(bus("server"), Q("second"));
    const auto areSame = [&] {
        const QStringList all = server.list.Text();
        return anna.IsReady() && anna.list.Text() == all && ben.list.Text() == all &&
               ben.reader.GetState() == ListReader::State::Whole;
    };
    ASSERT_TRUE(Until([&] { return areSame() && second.bus->IsOnline(); }));

    const JumpingClock clock;
    QStringList states;
    QObject::connect(&ben.reader, &ListReader::StateChanged, [&] { states << ben.reader.StateText(); });
    for (const MessageBus* const one : {server.bus.get(), anna.bus.get(), ben.bus.get()})
        QObject::connect(one, &MessageBus::StateChanged, [&] { states << Q("a connection broke"); });
    std::set<qint64> hours;
    for (size_t i = 0; i < 40 || clock.Jumps() < 200; ++i) {
        hours.insert(QDateTime::currentSecsSinceEpoch() / 3600);
        anna.client.SetEditing(anna.list.At(i % 300));
        TestList::Comment(*anna.list.At(i % 300)).SetValue(QString::number(i));
        ASSERT_TRUE(Until(areSame)) << i;
    }
    EXPECT_GT(hours.size(), 3u);
    second.Serve(); // which takes as long as the first one may need to answer
    ASSERT_TRUE(Until([&] { return second.server->GetState() != ListServer::State::Claiming; }));
    EXPECT_EQ(second.server->GetState(), ListServer::State::Refused);
    EXPECT_TRUE(server.IsServing());
    EXPECT_EQ(ben.seat.Present().size(), 4u);
    EXPECT_EQ(states, QStringList());
    EXPECT_EQ(anna.refusals, 0);
}

} // namespace
