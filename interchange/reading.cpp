#include "interchange/reading.h"

#include "host/report/byteinput.h"

#include <QIODevice>

#include <cmath>

namespace Interchange {

namespace {

constexpr char TraceSource[] = "interchange";
constexpr qint64 EntriesPerProgress = 4096;

QString shortText(std::string_view text) {
    constexpr std::size_t Longest = 60;
    return TextOf(text.substr(0, Longest));
}

} // namespace

std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view Blanks = " \t\r";
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
      m_problems(options.isFirstLook ? FileProblems(m_fileName) : FileProblems(m_fileName, TraceSource)) {}

void Reading::Extra(std::string_view key, std::string_view value) {
    if (value.empty())
        return;
    m_account.Count(key);
    if (m_options.keepExtras)
        m_comment.extras.emplace_back(TextOf(key), TextOf(value));
}

void Reading::Keep(std::string_view key, std::string_view value) {
    if (!value.empty())
        m_comment.extras.emplace_back(TextOf(key), TextOf(value));
}

bool Reading::Take(const Station& station) {
    const std::optional<double> hertz = HertzOf(station.frequency, station.hertzPerUnit);
    if (!hertz || *hertz <= 0 || !FileProblems::IsFrequency(*hertz)) {
        Refuse(station.line,
               station.frequency.empty()
                   ? QStringLiteral("has no frequency")
                   : QStringLiteral("\"%1\" is no frequency").arg(shortText(station.frequency)));
        return false;
    }
    m_entry.Reset();
    m_entry.GetFFM_Settings().GetFrequency().SetValue(*hertz);
    const std::optional<double> bandwidth = HertzOf(station.bandwidth, station.hertzPerBandwidth);
    if (!station.bandwidth.empty() && (!bandwidth || *bandwidth < 0))
        m_account.Count("bandwidths that are none");
    setMode(station, bandwidth.value_or(0));
    m_comment.name = TextOf(station.name);
    m_comment.notes = TextOf(station.notes);
    m_entry.SetComment(JoinComment(m_comment));
    m_comment.extras.clear();
    CountEntry();
    m_take(m_entry);
    return true;
}

void Reading::Take(FreqStoreXml::FrequencyStoreEntry& entry) {
    if (!m_comment.extras.empty()) {
        CommentParts parts = SplitComment(entry.GetComment());
        parts.extras.insert(parts.extras.end(), m_comment.extras.begin(), m_comment.extras.end());
        entry.SetComment(JoinComment(parts));
        m_comment.extras.clear();
    }
    CountEntry();
    m_take(entry);
}

void Reading::CountEntry() {
    ++m_account.entries;
    showProgress();
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
        m_account.Count("unknown modes");
    if (!m_lastMode.isExact)
        Extra("Mode", station.mode);
    if (bandwidth <= 0 && m_lastMode.bandwidth > 0) {
        bandwidth = m_lastMode.bandwidth;
        m_account.Count("bandwidths from the mode");
    }
    if (bandwidth > 0)
        settings.GetIFBandwidth().SetValue(bandwidth);
}

void Reading::showProgress() {
    if (!m_options.progress || !m_device || m_account.entries % EntriesPerProgress != 0)
        return;
    if (!m_options.progress(m_device->pos(), m_device->size()))
        throw Cancelled(REPORTGENERATOR::ErrorText(m_fileName, 0, QStringLiteral("reading was cancelled")));
}

void Reading::Refuse(qint64 line, const QString& reason) {
    ++m_account.refused;
    m_comment.extras.clear();
    m_problems.Report(line, reason);
}

void Reading::Fail(qint64 line, const QString& reason) const {
    throw RGException(REPORTGENERATOR::ErrorText(m_fileName, line, reason));
}

} // namespace Interchange
