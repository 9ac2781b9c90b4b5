#include "receiver/hamlibreceiver.h"

#include "receiver/hamlib.h"
#include "receiver/radio.h"

#include <condition_variable>
#include <csignal>
#include <mutex>
#include <thread>

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

namespace {

constexpr auto PollInterval = 150ms;
constexpr auto FirstPause = 500ms; // before it is tried again
constexpr auto LongestPause = 30000ms;
constexpr int HeldUpFactor = 3;      // time-outs after which the thread counts as held up,
constexpr int ShortestHeldUp = 1000; // ms, but it may rest between two polls

/// The threads that have a radio, let go or not.
struct Threads {
    std::mutex mutex;
    std::condition_variable ended;
    int count = 0;

    /// Never destroyed, as a thread may outlive what is static.
    static Threads& Instance() {
        static auto* threads = new Threads;
        return *threads;
    }
    void Add(int by) {
        const std::lock_guard lock(mutex);
        count += by;
        ended.notify_all();
    }
};

} // namespace

/// What the thread has to say: what is newer takes the place of what has not been heard.
struct News {
    struct State {
        ReceiverState state;
        QString words;
    };
    std::optional<State> state;
    std::optional<std::vector<ReceiverAbility>> abilities;
    std::optional<ReceiverReading> reading;
    QStringList refusals;

    void Add(const ReceiverReading& newer) {
        std::vector<ReceiverWord> values;
        if (reading && reading->serial == newer.serial) // else a wish may have changed them since
            values = std::move(reading->values);
        values.insert(values.end(), newer.values.begin(), newer.values.end()); // the later one holds
        reading = newer;
        reading->values = std::move(values);
    }
};

/// Between the two threads.
struct HamlibReceiver::Shared {
    std::mutex mutex;
    std::condition_variable changed;
    HamlibReceiver* owner = nullptr; ///< null when it has let go
    std::optional<RadioWishes> wishes;
    quint64 serial = 0; ///< of the newest wish
    News news;
    bool isAwaited = false; ///< the owner is to hear
};

/// Owns the radio.
class RadioThread {
public:
    using Lost = HamlibReceiver::Lost;

    RadioThread(std::shared_ptr<HamlibReceiver::Shared> shared, RadioProfile profile, Lost lost)
        : m_shared(std::move(shared)), m_profile(std::move(profile)), m_lost(lost) {}

    void Run() {
        blockPipeSignal();
        auto pause = std::chrono::milliseconds(FirstPause);
        while (!isLetGo()) {
            try {
                const std::unique_ptr<Radio> radio = open();
                pause = FirstPause;
                while (!isLetGo())
                    serve(*radio);
            } catch (const RadioError& error) {
                forgetWishes();
                const auto state = error.isRefusal ? ReceiverState::Refused : ReceiverState::NoAnswer;
                if (m_lost == Lost::GivenUp)
                    return tell({state, error.words});
                tell({state, HamlibReceiver::tr("%1; tries again after %2 s")
                                 .arg(error.words)
                                 .arg(std::chrono::duration<double>(pause).count())});
            }
            waitFor(pause, false);
            pause = std::min(pause * 2, std::chrono::milliseconds(LongestPause));
        }
    }

private:
    /// Who writes to a peer that has gone gets an error, and the program goes on.
    static void blockPipeSignal() {
        sigset_t pipe;
        sigemptyset(&pipe);
        sigaddset(&pipe, SIGPIPE);
        pthread_sigmask(SIG_BLOCK, &pipe, nullptr);
    }

    /// A server may hang up on who comes at the moment when another client leaves: then it is tried once more
    /// before that counts.
    std::unique_ptr<Radio> open() {
        try {
            return begin();
        } catch (const RadioError& error) {
            if (!error.isHangUp || isLetGo())
                throw;
        }
        return begin();
    }

    std::unique_ptr<Radio> begin() {
        auto opened = std::make_unique<Radio>(m_profile);
        Radio& radio = *opened;
        const QString info = radio.GetInfo();
        ReceiverReading reading = radio.ReadAll();
        std::unique_lock lock(m_shared->mutex);
        m_shared->wishes.reset(); // of who did not know yet that it was gone
        reading.serial = m_shared->serial;
        m_shared->news.abilities = radio.TakeNewAbilities();
        m_shared->news.state = {ReceiverState::Connected, info};
        m_shared->news.Add(reading);
        call();
        m_nextPoll = Clock::now() + PollInterval;
        return opened;
    }

    void serve(Radio& radio) {
        std::optional<RadioWishes> wishes;
        {
            const std::lock_guard lock(m_shared->mutex);
            wishes = std::exchange(m_shared->wishes, std::nullopt);
            m_serial = m_shared->serial;
        }
        QStringList refusals;
        if (wishes)
            radio.Set(*wishes, refusals);
        const bool isPoll = Clock::now() >= m_nextPoll || !refusals.isEmpty();
        if (isPoll || wishes) {
            ReceiverReading reading =
                refusals.isEmpty() ? isPoll ? radio.Poll() : radio.Measure() : radio.ReadAll();
            reading.serial = m_serial;
            const std::lock_guard lock(m_shared->mutex);
            m_shared->news.Add(reading);
            m_shared->news.refusals << refusals;
            if (auto abilities = radio.TakeNewAbilities())
                m_shared->news.abilities = std::move(abilities);
            call();
        }
        if (isPoll)
            m_nextPoll = Clock::now() + PollInterval;
        waitFor(m_nextPoll - Clock::now(), true);
    }

    void forgetWishes() {
        const std::lock_guard lock(m_shared->mutex);
        m_shared->wishes.reset();
    }

    /// Tells that there is no radio, of which nothing is known any more.
    void tell(News::State state) {
        const std::lock_guard lock(m_shared->mutex);
        m_shared->news = {};
        m_shared->news.state = std::move(state);
        call();
    }

    /// Has the owner hear; with the lock.
    void call() {
        if (!m_shared->owner || std::exchange(m_shared->isAwaited, true))
            return;
        QMetaObject::invokeMethod(
            m_shared->owner, [owner = m_shared->owner] { owner->hear(); }, Qt::QueuedConnection);
    }

    bool isLetGo() {
        const std::lock_guard lock(m_shared->mutex);
        return !m_shared->owner;
    }

    void waitFor(Clock::duration time, bool wakesForWishes) {
        std::unique_lock lock(m_shared->mutex);
        m_shared->changed.wait_for(lock, time,
                                   [&] { return !m_shared->owner || (wakesForWishes && m_shared->wishes); });
    }

    std::shared_ptr<HamlibReceiver::Shared> m_shared;
    RadioProfile m_profile;
    Lost m_lost;
    quint64 m_serial = 0; ///< of the newest wish that was carried out
    Clock::time_point m_nextPoll;
};

HamlibReceiver::HamlibReceiver(const RadioProfile& profile, Lost lost)
    : m_profile(profile), m_lost(lost), m_shared(std::make_shared<Shared>()) {
    LoadHamlib();
    m_silence.setSingleShot(true);
    m_silence.setInterval(std::max(HeldUpFactor * profile.timeout, ShortestHeldUp));
    connect(&m_silence, &QTimer::timeout, this, &HamlibReceiver::noteSilence);
}

HamlibReceiver::~HamlibReceiver() {
    const std::lock_guard lock(m_shared->mutex);
    m_shared->owner = nullptr;
    m_shared->changed.notify_all();
}

void HamlibReceiver::Begin() {
    m_shared->owner = this;
    emit StateChanged(ReceiverState::Connecting, QString());
    m_silence.start();
    Threads::Instance().Add(1);
    std::thread([shared = m_shared, profile = m_profile, lost = m_lost] {
        RadioThread(shared, profile, lost).Run();
        Threads::Instance().Add(-1);
    }).detach();
}

void HamlibReceiver::Set(const std::vector<ReceiverWord>& wishes, quint64 serial) {
    const std::lock_guard lock(m_shared->mutex);
    if (!m_shared->wishes)
        m_shared->wishes.emplace();
    m_shared->wishes->Take(wishes);
    m_shared->serial = serial;
    m_shared->changed.notify_all();
}

void HamlibReceiver::hear() {
    News news;
    {
        const std::lock_guard lock(m_shared->mutex);
        news = std::exchange(m_shared->news, {});
        m_shared->isAwaited = false;
    }
    // Who is told that it is there finds it as it is.
    if (news.abilities)
        emit AbilitiesKnown(*news.abilities);
    for (const QString& reason : news.refusals)
        emit Failed(reason);
    if (news.reading)
        emit Read(*news.reading);
    if (news.state) {
        m_isConnected = news.state->state == ReceiverState::Connected;
        emit StateChanged(news.state->state, news.state->words);
    } else if (!m_isConnected && news.reading) { // was held up
        m_isConnected = true;
        emit StateChanged(ReceiverState::Connected, QString());
    }
    if (m_isConnected)
        m_silence.start();
    else
        m_silence.stop();
}

void HamlibReceiver::noteSilence() {
    m_isConnected = false;
    emit StateChanged(ReceiverState::NoAnswer,
                      tr("nothing was heard for %1 s").arg(m_silence.interval() / 1000.0));
}

bool HamlibReceiver::WaitForAll(std::chrono::milliseconds longest) {
    Threads& threads = Threads::Instance();
    std::unique_lock lock(threads.mutex);
    return threads.ended.wait_for(lock, longest, [&] { return threads.count == 0; });
}
