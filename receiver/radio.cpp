#include "receiver/radio.h"

#include "host/base/frequencytext.h"
#include "receiver/hamlib.h"
#include "receiver/radioabilities.h"
#include "receiver/s9.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <clocale>
#include <cmath>
#include <mutex>
#include <thread>
#include <unistd.h>

using namespace std::chrono_literals;

namespace {

constexpr int MostSilences = 3;
constexpr int MaxSquelch = 100;
constexpr qsizetype LongestInfo = 100;
constexpr double HighestFrequency = 1e11; // Hz; what is said beyond these limits is nonsense
constexpr long WidestPassband = 20'000'000;
constexpr size_t OtherCount = 6;       ///< settings that are read in turn
constexpr double UsualRounding = 100;  // Hz, and of some radios more
constexpr double WidestRounding = 500; // Hz
constexpr auto SecondLook = 100ms;     // after a radio seems to stay where it was
constexpr char SquelchInDecibels[] =
    QT_TRANSLATE_NOOP("Radio", "it gives its squelch in dB, not in percent of a knob");

QString tr(const char* text) {
    return QCoreApplication::translate("Radio", text);
}

struct CodeText {
    int code;
    const char* text;
};
constexpr CodeText CodeTexts[] = {
    {RIG_ECONF, QT_TRANSLATE_NOOP("Radio", "its settings are wrong")},
    {RIG_EINVAL, QT_TRANSLATE_NOOP("Radio", "it does not take this")},
    {RIG_ETIMEOUT, QT_TRANSLATE_NOOP("Radio", "it does not answer in time")},
    {RIG_EIO, QT_TRANSLATE_NOOP("Radio", "the connection is broken")},
    {RIG_EPROTO, QT_TRANSLATE_NOOP("Radio", "its answer makes no sense")},
    {RIG_ERJCTED, QT_TRANSLATE_NOOP("Radio", "it rejects this")},
    {RIG_ENAVAIL, QT_TRANSLATE_NOOP("Radio", "it has no such function")},
    {RIG_ENIMPL, QT_TRANSLATE_NOOP("Radio", "it has no such function")},
};

bool isFrequency(double hertz) {
    return hertz > 0 && hertz <= HighestFrequency;
}

QString textOf(int code) {
    for (const CodeText& known : CodeTexts) {
        if (known.code == std::abs(code))
            return tr(known.text);
    }
    return QString::fromUtf8(rigerror2(code)).section(QLatin1Char('\n'), 0, 0);
}

bool isSilence(int code) {
    return code == -RIG_ETIMEOUT || code == -RIG_EPROTO;
}

bool isBroken(int code) {
    return code == -RIG_EIO || code == -RIG_EINTERNAL;
}

/// A serial device is looked at before the library tries, which knows one error for all reasons.
void checkDevice(const RadioProfile& profile) {
    const RadioModel* model = FindRadioModel(profile.model);
    if (!model || model->port != RadioModel::Port::Serial)
        return;
    const QByteArray path = profile.port.toLocal8Bit();
    if (access(path.constData(), F_OK) != 0)
        throw RadioError{false, QCoreApplication::translate("Radio", "%1 is not there").arg(profile.port)};
    if (access(path.constData(), R_OK | W_OK) != 0)
        throw RadioError{
            true, QCoreApplication::translate(
                      "Radio", "%1 may not be used; whoever uses it must be in its group, often \"dialout\"")
                      .arg(profile.port)};
    if (QFileInfo(profile.port).isFile() || QFileInfo(profile.port).isDir())
        throw RadioError{true, QCoreApplication::translate("Radio", "%1 is no device").arg(profile.port)};
}

void add(ReceiverReading& reading, Names::Id key, const QString& text) {
    reading.values.push_back({key, text});
}

QString flagText(bool isOn) {
    return isOn ? QStringLiteral("true") : QStringLiteral("false");
}

} // namespace

void LoadHamlib() {
    static std::once_flag loaded;
    std::call_once(loaded, [] {
        // The library takes the locale of numbers away and gives it back by a name that is no more, unless
        // that is the one which is always there. Nothing of ours depends on it.
        std::setlocale(LC_NUMERIC, "C");
        rig_set_debug(RIG_DEBUG_NONE);
        rig_load_all_backends();
    });
}

void RadioWishes::Take(const std::vector<ReceiverWord>& words) {
    for (const ReceiverWord& word : words) {
        const int whole = word.text.toInt();
        const bool isOn = word.text == QLatin1String("true");
        if (word.key == Keys::KeyFrequency)
            frequency = word.text.toDouble();
        else if (word.key == Keys::KeyDemodulation)
            mode = word.text;
        else if (word.key == Keys::KeyBandwidth)
            bandwidth = word.text.toDouble();
        else if (word.key == Keys::UseAttenuation)
            attenuates = isOn;
        else if (word.key == Keys::AFC)
            afc = isOn;
        for (const auto& [key, wish] : {std::pair{Names::Id(Keys::Attenuation), &attenuation},
                                        {Names::Id(Keys::AntennaID), &antenna},
                                        {Names::Id(KeyOffset), &offset},
                                        {Names::Id(Keys::BFOFrequency), &bfo},
                                        {Names::Id(KeySquelchLevel), &squelch}}) {
            if (word.key == key)
                *wish = whole;
        }
    }
}

void Radio::Closer::operator()(RIG* rig) const {
    rig_close(rig); // of one that is not open nothing is done
    rig_cleanup(rig);
}

Radio::Radio(const RadioProfile& profile) {
    checkDevice(profile);
    m_rig.reset(rig_init(static_cast<rig_model_t>(profile.model)));
    if (!m_rig)
        throw RadioError{true, tr("there is no model %1").arg(profile.model)};
    configure(profile);
    const int code = rig_open(m_rig.get());
    if (code != RIG_OK)
        throw RadioError{!isSilence(code) && !isBroken(code), textOf(code), isBroken(code)};
    // What stands in the library's memory may have been changed at the radio.
    rig_set_cache_timeout_ms(m_rig.get(), HAMLIB_CACHE_ALL, 0);
}

Radio::~Radio() = default;

void Radio::configure(const RadioProfile& profile) {
    if (!profile.port.isEmpty())
        configure("rig_pathname", profile.port.toLocal8Bit());
    if (profile.speed > 0)
        configure("serial_speed", QByteArray::number(profile.speed));
    configure("timeout", QByteArray::number(profile.timeout));
    configure("retry", "1");
    configure("ptt_type", "None"); // it is never keyed
    configure("auto_power_on", "0");
}

/// A model without such a setting does not need it.
void Radio::configure(const char* name, const QByteArray& value) {
    if (const token_t token = rig_token_lookup(m_rig.get(), name); token != RIG_CONF_END)
        rig_set_conf(m_rig.get(), token, value.constData());
}

/// Whether the radio has done it. One that is gone, or silent for long, is an error.
bool Radio::check(int code, const QString& what, QStringList* refusals) {
    if (isBroken(code) || (isSilence(code) && ++m_silences >= MostSilences))
        throw RadioError{false, textOf(code), isBroken(code)};
    if (code != RIG_OK && refusals)
        *refusals << tr("%1: %2").arg(what, textOf(code));
    return code == RIG_OK;
}

QString Radio::GetInfo() const {
    const char* info = rig_get_info(m_rig.get());
    return info ? QString::fromUtf8(info).simplified().remove(QLatin1Char('<')).left(LongestInfo) : QString();
}

std::optional<std::vector<ReceiverAbility>> Radio::TakeNewAbilities() {
    if (std::exchange(m_abilitiesAreKnown, true))
        return std::nullopt;
    std::vector<ReceiverAbility> abilities = RadioAbilities::Of(*m_rig);
    for (ReceiverAbility& ability : abilities) {
        if (ability.key == KeySquelchLevel && m_squelchIsInDecibels)
            ability.whyNot = tr(SquelchInDecibels);
    }
    return abilities;
}

void Radio::Set(const RadioWishes& wishes, QStringList& refusals) {
    if (wishes.antenna) {
        value_t none{};
        check(rig_set_ant(m_rig.get(), RIG_VFO_CURR, RIG_ANT_N(*wishes.antenna - 1), none), tr("Antenna"),
              &refusals);
    }
    if (wishes.attenuation || wishes.attenuates) {
        m_attenuation = wishes.attenuation.value_or(m_attenuation);
        m_attenuates = wishes.attenuates.value_or(m_attenuates);
        setAttenuation(refusals);
    }
    if (wishes.frequency)
        setFrequency(*wishes.frequency, refusals);
    if (wishes.mode || wishes.bandwidth)
        setMode(wishes, refusals);
    setOthers(wishes, refusals);
}

void Radio::setFrequency(double hertz, QStringList& refusals) {
    if (!RadioAbilities::Receives(*m_rig, hertz)) {
        refusals << tr("%1 is in none of its ranges").arg(Quor::FrequencyText(hertz));
        m_isElsewhere = true;
        return;
    }
    m_isElsewhere = !check(rig_set_freq(m_rig.get(), RIG_VFO_CURR, hertz), tr("Frequency"), &refusals);
    if (m_isElsewhere || hasGoneTo(hertz))
        return;
    m_isElsewhere = true;
    refusals << tr("the radio stays at %1").arg(Quor::FrequencyText(m_frequency));
}

/// Some radios take their time, and many round to steps that they do not tell. One that does not move at all
/// has not rounded.
bool Radio::hasGoneTo(double hertz) {
    const double before = m_frequency;
    const double step = RadioAbilities::SmallestStep(*m_rig);
    for (const auto pause : {0ms, SecondLook}) {
        std::this_thread::sleep_for(pause);
        m_frequency = hertz;
        freq_t read = 0;
        if (!check(rig_get_freq(m_rig.get(), RIG_VFO_CURR, &read), QString(), nullptr) || !isFrequency(read))
            return true; // nobody knows better
        m_frequency = std::round(read);
        const double off = std::abs(read - hertz);
        if (off < step || off <= (m_frequency == before ? UsualRounding : WidestRounding))
            return true;
    }
    return false;
}

void Radio::setMode(const RadioWishes& wishes, QStringList& refusals) {
    const auto width = static_cast<long>(wishes.bandwidth.value_or(0));
    const rmode_t mode = wishes.mode ? RadioAbilities::ModeOf(*m_rig, *wishes.mode, width) : m_mode;
    if (mode == RIG_MODE_NONE) {
        refusals << tr("%1: %2").arg(tr("Demodulation"), textOf(RIG_EINVAL));
        return;
    }
    const pbwidth_t passband = RadioAbilities::PassbandOf(*m_rig, mode, width);
    if (check(rig_set_mode(m_rig.get(), RIG_VFO_CURR, mode, passband), tr("Demodulation"), &refusals))
        m_mode = mode;
}

void Radio::setAttenuation(QStringList& refusals) {
    value_t value{};
    value.i = m_attenuates ? m_attenuation : 0;
    check(rig_set_level(m_rig.get(), RIG_VFO_CURR, RIG_LEVEL_ATT, value), tr("Attenuation"), &refusals);
}

void Radio::setOthers(const RadioWishes& wishes, QStringList& refusals) {
    if (wishes.offset)
        check(rig_set_rit(m_rig.get(), RIG_VFO_CURR, *wishes.offset), tr("RIT"), &refusals);
    if (wishes.bfo) {
        value_t value{};
        value.i = *wishes.bfo;
        check(rig_set_level(m_rig.get(), RIG_VFO_CURR, RIG_LEVEL_CWPITCH, value), tr("BFO"), &refusals);
    }
    if (wishes.squelch)
        setSquelch(*wishes.squelch, refusals);
    if (wishes.afc)
        check(rig_set_func(m_rig.get(), RIG_VFO_CURR, RIG_FUNC_AFC, *wishes.afc), tr("AFC"), &refusals);
}

void Radio::setSquelch(int percent, QStringList& refusals) {
    value_t value{};
    value.f = static_cast<float>(percent) / MaxSquelch;
    if (m_squelchIsInDecibels)
        refusals << tr("%1: %2").arg(tr("Squelch knob"), tr(SquelchInDecibels));
    else if (check(rig_set_level(m_rig.get(), RIG_VFO_CURR, RIG_LEVEL_SQL, value), tr("Squelch knob"),
                   &refusals))
        m_squelch = percent;
}

void Radio::readTuning(ReceiverReading& reading) {
    freq_t hertz = 0;
    const int code = rig_get_freq(m_rig.get(), RIG_VFO_CURR, &hertz);
    // A level says less: nonsense is read as one, too.
    if (!isSilence(code))
        m_silences = 0;
    if (check(code, QString(), nullptr) && isFrequency(hertz)) {
        m_frequency = std::round(hertz);
        add(reading, Keys::KeyFrequency, QString::number(m_frequency, 'f', 0));
    }
    rmode_t mode = RIG_MODE_NONE;
    pbwidth_t width = 0;
    if (!check(rig_get_mode(m_rig.get(), RIG_VFO_CURR, &mode, &width), QString(), nullptr))
        return;
    m_mode = mode;
    if (const QString name = RadioAbilities::ModeName(mode); !name.isEmpty())
        add(reading, Keys::KeyDemodulation, name);
    if (width > 0 && width <= WidestPassband)
        add(reading, Keys::KeyBandwidth, QString::number(width));
}

/// What changes seldom.
void Radio::readOther(size_t which, ReceiverReading& reading) {
    RIG* rig = m_rig.get();
    value_t value{};
    const auto gets = [&](setting_t level) {
        return rig_has_get_level(rig, level) &&
               check(rig_get_level(rig, RIG_VFO_CURR, level, &value), QString(), nullptr);
    };
    if (which == 0 && gets(RIG_LEVEL_ATT)) {
        m_attenuates = value.i > 0;
        add(reading, Keys::UseAttenuation, flagText(m_attenuates));
        if (m_attenuates)
            add(reading, Keys::Attenuation, QString::number(m_attenuation = value.i));
    } else if (which == 1 && gets(RIG_LEVEL_SQL) && std::isfinite(value.f)) {
        takeSquelch(value.f, reading);
    } else if (which == 2 && gets(RIG_LEVEL_CWPITCH)) {
        add(reading, Keys::BFOFrequency, QString::number(value.i));
    } else if (which == 3 && RadioAbilities::HasOffset(*rig)) {
        shortfreq_t hertz = 0;
        if (check(rig_get_rit(rig, RIG_VFO_CURR, &hertz), QString(), nullptr))
            add(reading, KeyOffset, QString::number(hertz));
    } else if (which == 4 && rig_has_get_func(rig, RIG_FUNC_AFC)) {
        int isOn = 0;
        if (check(rig_get_func(rig, RIG_VFO_CURR, RIG_FUNC_AFC, &isOn), QString(), nullptr))
            add(reading, Keys::AFC, flagText(isOn != 0));
    } else if (which == 5) {
        if (const int antenna = RadioAbilities::ReadAntenna(*rig); antenna > 0)
            add(reading, Keys::AntennaID, QString::number(antenna));
    }
}

/// A knob is said from 0 to 1. Some programs say a level in dB, which may look like that until it is moved.
void Radio::takeSquelch(float said, ReceiverReading& reading) {
    if (!m_squelchIsInDecibels && (said < 0 || said > 1)) {
        m_squelchIsInDecibels = true;
        m_abilitiesAreKnown = false;
    }
    if (m_squelchIsInDecibels)
        return;
    m_squelch = static_cast<int>(std::lround(said * MaxSquelch));
    add(reading, KeySquelchLevel, QString::number(m_squelch));
}

/// Where it is says what its level means.
ReceiverReading Radio::readTuned() {
    ReceiverReading reading;
    readTuning(reading);
    measure(reading);
    return reading;
}

ReceiverReading Radio::ReadAll() {
    ReceiverReading reading = readTuned();
    for (size_t which = 0; which < OtherCount; ++which)
        readOther(which, reading);
    return reading;
}

ReceiverReading Radio::Poll() {
    ReceiverReading reading = readTuned();
    readOther(m_nextOther, reading);
    m_nextOther = (m_nextOther + 1) % OtherCount;
    return reading;
}

ReceiverReading Radio::Measure() {
    ReceiverReading reading;
    measure(reading);
    return reading;
}

void Radio::measure(ReceiverReading& reading) {
    reading.isElsewhere = m_isElsewhere;
    value_t value{};
    if (rig_has_get_level(m_rig.get(), RIG_LEVEL_STRENGTH) &&
        check(rig_get_level(m_rig.get(), RIG_VFO_CURR, RIG_LEVEL_STRENGTH, &value), QString(), nullptr))
        reading.level = value.i + S9At(m_frequency);
    dcd_t dcd = RIG_DCD_OFF;
    // A squelch that lets all through says nothing of the signal.
    if (m_squelch > 0 && m_rig->caps->get_dcd &&
        check(rig_get_dcd(m_rig.get(), RIG_VFO_CURR, &dcd), QString(), nullptr))
        reading.isSquelchOpen = dcd == RIG_DCD_ON;
}
