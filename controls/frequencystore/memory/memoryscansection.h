#pragma once

#include <QString>

#include <optional>
#include <string_view>
#include <vector>

class FileProblems;

/// One channel of a memory-scan section, of a receiver of either kind. Frequency, bandwidth, shift and BFO in
/// Hz, threshold in dBµV, attenuation in dB.
struct ScanChannel {
    QString name;
    long range = 0;  ///< number of the range that the channel belongs to
    long number = 0; ///< running number, from 1
    double frequency = 0;
    long threshold = 0;
    QString demodulation;
    double bandwidth = 0;

    QString outputIFPath;
    long shift = 0;
    long bfoFrequency = 0;

    bool afc = false;
    bool useSquelch = false;
    bool useAttenuation = false;
    long attenuation = 0;
    long antennaID = 0;

    bool operator==(const ScanChannel&) const = default;
};

/// Whether an element of a channel is one that only VHF/UHF receivers have (true), or only HF receivers
/// (false); empty for all others.
std::optional<bool> IsElementOfVUHF(std::string_view name);

/// Writes a section, channel by channel.
class MemoryScanWriter {
public:
    explicit MemoryScanWriter(bool vuhf) : m_vuhf(vuhf) {}

    /// The channel's number is also its range number.
    void Append(const ScanChannel& channel);
    /// Ends the section and returns its text, with an indent of 1.
    QString Finish();

private:
    bool m_vuhf;
    QString m_text;
    std::vector<QString> m_heads; ///< what stands in front of each parameter
};

/// A channel and the line at which it begins in its job.
struct ReadChannel : ScanChannel {
    qint64 line = 0;
};

/// Largest number of channels of one job.
inline constexpr size_t MaxScanChannels = 200000;

/// What a job says about memory channels.
struct JobChannels {
    std::vector<ReadChannel> channels; ///< in the order of the document
    bool hasSubJob = false;            ///< without one the document is no job
};

/// Reads the channels of a job. Sub-jobs usually hold the same section: one that is equal to an earlier one
/// is passed over. What a channel lacks, or is no number, is 0 or empty, and told. False, told, with the
/// result as it was, for a text that is not well-formed or has too many.
bool ReadScanChannels(const QString& job, bool vuhf, FileProblems& problems, JobChannels& result);
