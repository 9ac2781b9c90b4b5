#include "interchange/reading.h"

#include "host/report/byteinput.h"
#include "interchange/schedule.h"
#include "interchange/tablecell.h"

#include <QCoreApplication>

#include <cmath>

namespace Interchange {

namespace {

constexpr char TraceSource[] = "interchange";

QString shortText(std::string_view text) {
    constexpr std::size_t Longest = 60;
    return TextOf(text.substr(0, Longest));
}

/// Why a station has no frequency. Of a number that is too large the unit may be wrong.
QString whyNone(const Station& station, std::optional<double> hertz) {
    if (station.frequency.empty())
        return QCoreApplication::translate("Readers", "has no frequency");
    const QString text = shortText(station.frequency);
    return hertz && *hertz > 0 ? QCoreApplication::translate("Readers", "\"%1\" %2 is above 1 THz")
                                     .arg(text, NameOfUnit(station.hertzPerUnit))
                               : QCoreApplication::translate("Readers", "\"%1\" is no frequency").arg(text);
}

} // namespace

std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view Blanks = " \t\r\n";
    const std::size_t begin = text.find_first_not_of(Blanks);
    if (begin == std::string_view::npos)
        return {};
    return text.substr(begin, text.find_last_not_of(Blanks) + 1 - begin);
}

std::optional<double> HertzOf(std::string_view number, double hertzPerUnit) {
    constexpr double Parts = 1000;
    const std::optional<double> value = REPORTGENERATOR::ParseNumber(number);
    if (!value)
        return std::nullopt;
    return std::round(*value * hertzPerUnit * Parts) / Parts;
}

Reading::Reading(QString fileName, const ReadOptions& options, const TakeEntry& take)
    : m_fileName(std::move(fileName)),
      m_options(options),
      m_take(take),
      m_onAirAt(options.onAirAt ? std::optional(options.onAirAt->toUTC()) : std::nullopt),
      m_problems(options.isFirstLook ? FileProblems(m_fileName) : FileProblems(m_fileName, TraceSource)) {}

bool Reading::IsWanted(const Schedule& schedule) const {
    return !m_onAirAt || schedule.IsOnAir(m_onAirAt->date(), m_onAirAt->time());
}

void Reading::Extra(std::string_view key, std::string_view value) {
    if (value.empty())
        return;
    m_account.Count(key);
    if (m_options.keepExtras)
        m_comment.Extra(key, value);
}

void Reading::Keep(std::string_view key, std::string_view value) {
    if (!value.empty())
        m_comment.Extra(key, value);
}

bool Reading::Take(const Station& station) {
    const std::optional<double> hertz = HertzOf(station.frequency, station.hertzPerUnit);
    if (!hertz || *hertz <= 0 || !FileProblems::IsFrequency(*hertz)) {
        Refuse(station.line, whyNone(station, hertz));
        return false;
    }
    m_entry.Reset();
    m_entry.GetFFM_Settings().GetFrequency().SetValue(*hertz);
    std::optional<double> bandwidth = HertzOf(station.bandwidth, station.hertzPerBandwidth);
    if (bandwidth && !FileProblems::IsFrequency(*bandwidth))
        bandwidth.reset();
    if (!bandwidth && !station.bandwidth.empty())
        m_account.Count(QT_TRANSLATE_NOOP("Account", "bandwidths that are none"));
    setMode(station, bandwidth.value_or(0));
    m_entry.SetComment(m_comment.Take(station.name, station.notes));
    CountEntry();
    m_take(m_entry);
    return true;
}

void Reading::Take(FreqStoreXml::FrequencyStoreEntry& entry) {
    if (m_comment.HasExtras())
        entry.SetComment(m_comment.Take(entry.GetComment()));
    CountEntry();
    m_take(entry);
}

void Reading::setMode(const Station& station, double bandwidth) {
    if (!m_hasLastMode || m_lastWord != station.mode || m_lastWords != station.words) {
        m_lastMode = ModeOf(station.words, station.mode);
        m_lastWord = station.mode;
        m_lastWords = station.words;
        m_hasLastMode = true;
    }
    FreqStoreXml::FFM_Settings& settings = m_entry.GetFFM_Settings();
    settings.SetAnalogDemod(FreqStoreXml::FFM_Settings::NameToAnalogDemod(m_lastMode.name));
    if (!m_lastMode.isKnown)
        m_account.Count(QT_TRANSLATE_NOOP("Account", "unknown modes"));
    if (!m_lastMode.isExact)
        Extra("Mode", station.mode);
    if (bandwidth <= 0 && m_lastMode.bandwidth > 0) {
        bandwidth = m_lastMode.bandwidth;
        m_account.Count(QT_TRANSLATE_NOOP("Account", "bandwidths from the mode"));
    }
    if (bandwidth > 0)
        settings.GetIFBandwidth().SetValue(bandwidth);
    // The word that a writer would choose by the bandwidth may be another one.
    if (m_options.keepExtras && m_lastMode.isKnown && m_lastMode.isExact &&
        WordOf(station.words, m_lastMode.name, bandwidth) != station.mode)
        Keep("Mode", station.mode);
}

void Reading::Refuse(qint64 line, const QString& reason) {
    ++m_account.refused;
    m_comment.ForgetExtras();
    m_problems.Report(line, reason);
}

void Reading::Fail(qint64 line, const QString& reason) const {
    throw RGException(REPORTGENERATOR::ErrorText(m_fileName, line, reason));
}

} // namespace Interchange
