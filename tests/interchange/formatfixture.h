#pragma once

#include "host/base/problems.h"
#include "interchange/format.h"

#include <QBuffer>
#include <QStringList>

#include <gtest/gtest.h>
#include <vector>

namespace Interchange {

/// What reading a text gives: entries as lines "Hz|bandwidth|demodulation|comment", what was counted, and the
/// problems that were told.
struct ReadText {
    QStringList entries;
    QString counts;
    qint64 refused = 0;
    QStringList problems;
    QString failure; ///< of the whole file; empty when it was read to its end
    std::vector<FreqStoreXml::FrequencyStoreEntry> records;
};

inline QString lineOf(const FreqStoreXml::FrequencyStoreEntry& entry) {
    const FreqStoreXml::FFM_Settings& settings = entry.GetFFM_Settings();
    return QStringLiteral("%1|%2|%3|%4")
        .arg(settings.GetFrequency().GetValue(), 0, 'g', 15)
        .arg(settings.GetIFBandwidth().GetValue(), 0, 'g', 15)
        .arg(settings.AnalogDemodToName(settings.GetAnalogDemod()), entry.GetComment());
}

inline ReadText readText(const Format& format, QByteArray bytes, const ReadOptions& options = {}) {
    ReadText result;
    const Problems::Sink before =
        Problems::SetSink([&](const Problem& problem) { result.problems << problem.ToString(); });
    QBuffer device(&bytes);
    device.open(QIODevice::ReadOnly);
    try {
        const Account account = Read(format, device, QStringLiteral("file"), options,
                                     [&](const FreqStoreXml::FrequencyStoreEntry& entry) {
                                         result.entries << lineOf(entry);
                                         result.records.push_back(entry);
                                     });
        result.counts = account.CountsText();
        result.refused = account.refused;
    } catch (const RGException& exception) {
        result.failure = exception.GetErrorText();
    }
    Problems::SetSink(before);
    return result;
}

inline Content contentOf(const std::vector<FreqStoreXml::FrequencyStoreEntry>& entries) {
    return {.entries = [&entries](const auto& visit) {
        for (const FreqStoreXml::FrequencyStoreEntry& entry : entries)
            visit(entry);
    }};
}

} // namespace Interchange
