#pragma once

#include "interchange/comment.h"
#include "interchange/format.h"
#include "interchange/modes.h"

#include <string>
#include <vector>

namespace Interchange {

/// The comment of an entry on its way into a file.
class OutgoingComment {
public:
    explicit OutgoingComment(const QString& comment);

    const CommentParts parts; ///< of one line

    /// The comment without what was kept in it.
    QString Comment() const { return JoinComment({parts.name, parts.notes, {}}); }
    /// What was kept under a key, or else what stands for nothing.
    QString Kept(const char* key, const char* usual) const;
    /// Counts what was kept and nobody has asked for since: the format has no place for it.
    void CountRest(Account& lost) const;

protected:
    void SetAskedFor(const char* key) const;

private:
    mutable std::vector<bool> m_isAskedFor; ///< of the comment's extras
};

/// The demodulation of an entry; empty where its list knows none, which lists and their files say as "NONE"
/// and "Unknown".
QString DemodulationOf(const FreqStoreXml::FrequencyStoreEntry& entry);

/// An entry on its way into a file: what all writers need of it.
class Outgoing : public OutgoingComment {
public:
    /// Counts the entry, and as lost a mode for which this one has no word. `hasNone`
    /// says whether it has one for no mode.
    Outgoing(const FreqStoreXml::FrequencyStoreEntry& entry, ModeWords words, bool hasNone, Account& lost);

    const double hertz;
    const double bandwidth; ///< Hz; 0 for none
    const QString demodulation;
    const std::string_view word; ///< of the mode; empty when there is none

    /// The word of the mode: the one that was kept when it was read, if it still means the demodulation, else
    /// the format's; `none` without any.
    std::string Word(const char* none) const;
    /// The bandwidth in Hz for a program that sets its filter to it and knows no "none": without any it is
    /// the usual one of the word that is written, which is counted; 0 for a mode that has none.
    double FilterBandwidth(const char* none, Account& lost) const;
    /// Counts a bandwidth that the format does not write and that the mode does not tell.
    void CountBandwidth(Account& lost) const;

private:
    const ModeWords m_words;
};

} // namespace Interchange
