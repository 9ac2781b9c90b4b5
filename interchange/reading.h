#pragma once

#include "host/base/fileproblems.h"
#include "host/report/textform.h"
#include "interchange/comment.h"
#include "interchange/format.h"
#include "interchange/modes.h"

#include <string_view>

namespace Interchange {

struct Schedule;

/// One frequency as a file tells it. Texts are UTF-8 and the reader's.
struct Station {
    qint64 line = 0;                 ///< where it stands, from 1
    std::string_view frequency = {}; ///< a number in the unit of the file
    double hertzPerUnit = 1;         ///< of frequency and bandwidth
    std::string_view bandwidth = {}; ///< empty or 0 for none
    double hertzPerBandwidth = 1;
    ModeWords words = ModeWords::Chirp;
    std::string_view mode = {}; ///< the format's word; empty for none
    std::string_view name = {};
    std::string_view notes = {};
};

/// Takes what a reader finds: makes entries of stations, and counts and tells what is none or has no place.
class Reading {
public:
    Reading(QString fileName, const ReadOptions& options, const TakeEntry& take);

    const QString& FileName() const { return m_fileName; }
    Account& GetAccount() { return m_account; }
    FileProblems& Problems() { return m_problems; }
    /// Whether what has that schedule is wanted: all, or what is on air at the time that was asked for.
    bool IsWanted(const Schedule& schedule) const;

    /// A field of the next station that our records have no place for; an empty value is none.
    void Extra(std::string_view key, std::string_view value);
    /// A field of the next station that stands in its comment whatever the options say.
    void Keep(std::string_view key, std::string_view value);
    /// The next station; false when it was refused, since its frequency is none.
    bool Take(const Station& station);
    /// The next entry, as our own files have it.
    void Take(FreqStoreXml::FrequencyStoreEntry& entry);
    /// Counts an entry that its list takes from the reader itself.
    void CountEntry() { ++m_account.entries; }
    /// A record that is no station. Its extras are forgotten.
    void Refuse(qint64 line, const QString& reason);
    /// Throws RGException that names file and line.
    [[noreturn]] void Fail(qint64 line, const QString& reason) const;

private:
    void setMode(const Station& station, double bandwidth);

    QString m_fileName;
    const ReadOptions& m_options;
    const TakeEntry& m_take;
    const std::optional<QDateTime> m_onAirAt; ///< UTC
    Account m_account;
    FileProblems m_problems;
    FreqStoreXml::FrequencyStoreEntry m_entry;
    CommentMaker m_comment;
    std::string m_lastWord; ///< and its mode, as most stations of a file have the same few
    ModeWords m_lastWords = ModeWords::Chirp;
    Mode m_lastMode;
    bool m_hasLastMode = false;
};

/// Text of UTF-8 bytes.
inline QString TextOf(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}
/// Without the blanks around it.
std::string_view Trimmed(std::string_view text);

/// A number of such units (1e6 for MHz) in Hz, rounded to a thousandth of a Hz so that decimals stay what
/// they are; nothing for what is no number.
std::optional<double> HertzOf(std::string_view number, double hertzPerUnit);

} // namespace Interchange
