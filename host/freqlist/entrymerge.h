#pragma once

#include <QHash>
#include <QString>

#include <limits>
#include <span>
#include <vector>

/// Tells which entries of two lists are the same, and in what they differ, whatever list they are of. "Mine"
/// is the list that is there, "theirs" what comes to it.
///
/// Two entries can be the same when their frequencies lie within the tolerance and their demodulations are
/// equal, whatever their case, or one of them has none. Each entry belongs to one at most, found in this
/// order, and within it by the order of the lists:
///
/// 1. entries that say all the same;
/// 2. those of the same frequency, comment and demodulation;
/// 3. those of the same frequency, the same demodulation before one that is missing;
/// 4. the nearest frequency of all that are left, with the same demodulation, or both without one;
/// 5. the nearest frequency of all that are left, where one has no demodulation.
///
/// Of two that are equally near the lower frequency comes first. An entry of theirs that belongs to none is
/// new: one frequency that stands twice in theirs and once in mine is new once. With a tolerance of 0 steps 4
/// and 5 find nothing.
namespace EntryMerge {

/// One thing that an entry says: the key of its value, and its text as files have it.
struct Field {
    QString key;
    QString text;
};

/// What a field says. Texts that lists put where nothing is known ("undefined", "NONE", a bandwidth of 0, a
/// comment that is only the frequency `hertz`) say nothing: empty.
QString Said(const Field& field, double hertz);

/// The frequency (Hz) among the fields; not a number when there is none.
double FrequencyOf(std::span<const Field> fields);

/// A field that differs.
struct Difference {
    QString key;
    QString mine;
    QString theirs;
};
/// Whose silence counts: an entry that is added or taken over does not erase what it says nothing about.
enum class Silence { IsEqual, Differs };
/// What differs. Fields that follow from others, such as the type letter, are left out, and with
/// `Silence::IsEqual` those that only one of the lists has, or that theirs say nothing about.
std::vector<Difference> Differences(std::span<const Field> mine, std::span<const Field> theirs,
                                    Silence silence);

/// Both comments, "mine; theirs"; what stands in mine already is not repeated.
QString JoinedComments(const QString& mine, const QString& theirs);

/// What has to be known of an entry to find the one that it belongs to.
struct Key {
    double frequency = std::numeric_limits<double>::quiet_NaN(); ///< Hz
    quint32 demodulation = 0; ///< a number for each demodulation; 0 for none
    size_t name = 0;          ///< of the comment
    size_t content = 0;       ///< of all that the entry says
};

/// Makes the keys of both lists: demodulations have the same number only within one.
class KeyMaker {
public:
    Key Of(std::span<const Field> fields);
    /// The key of an entry of which no more is asked.
    Key Of(double hertz, const QString& demodulation);

private:
    quint32 numberOf(const QString& demodulation);

    QHash<QString, quint32> m_demodulations;
};

inline constexpr quint32 None = std::numeric_limits<quint32>::max();

/// For each of theirs the place of the one of mine that it belongs to, or `None`. `tolerance` in Hz. Takes
/// the time of sorting them.
std::vector<quint32> Match(std::span<const Key> mine, std::span<const Key> theirs, double tolerance);

/// Places of the entries of one list that are the same as an earlier one that is kept: without them no two
/// are the same, and each of them has one that stays.
std::vector<quint32> FindDuplicates(std::span<const Key> entries, double tolerance);

} // namespace EntryMerge
