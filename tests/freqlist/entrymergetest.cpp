#include "host/freqlist/entrymerge.h"

#include "tests/support/text.h"

#include <QStringList>

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace {

using EntryMerge::Field;
using EntryMerge::Key;
using Fields = std::vector<Field>;

/// An entry as "7055000 USB comment"; "-" stands for no demodulation.
Fields EntryOf(const QString& line) {
    const QString demodulation = line.section(' ', 1, 1);
    return {{Q("frequency"), line.section(' ', 0, 0)},
            {Q("demodulation"), demodulation == Q("-") ? QString() : demodulation},
            {Q("comment"), line.section(' ', 2)}};
}

std::vector<Key> KeysOf(EntryMerge::KeyMaker& maker, const std::vector<Fields>& entries) {
    std::vector<Key> keys;
    for (const Fields& fields : entries)
        keys.push_back(maker.Of(fields));
    return keys;
}

std::vector<Fields> EntriesOf(const char* lines) {
    std::vector<Fields> entries;
    for (const QString& line : Q(lines).split(Q(", "), Qt::SkipEmptyParts))
        entries.push_back(EntryOf(line));
    return entries;
}

/// The places that were found, such as "0 2 new".
std::string Told(const std::vector<quint32>& places) {
    QStringList texts;
    for (const quint32 place : places)
        texts << (place == EntryMerge::None ? Q("new") : QString::number(place));
    return texts.join(' ').toStdString();
}

TEST(EntryMergeTest, EachEntryOfTheirsBelongsToOneOfMineAtMost) {
    const struct {
        const char* mine;
        const char* theirs;
        double tolerance;
        const char* found;
    } rows[] = {
        {"1000 AM a, 2000 AM b", "2000 AM b, 3000 AM c", 0, "1 new"},
        {"", "1000 AM a", 500, "new"},
        {"1000 AM a", "", 500, ""},
        // the tolerance takes its edge in
        {"1000 AM a", "1500 AM b", 500, "0"},
        {"1000 AM a", "1501 AM b", 500, "new"},
        {"1000 AM a", "1000.5 AM a", 0, "new"},
        // another demodulation is another entry, none fits all, and one that fits goes first
        {"1000 AM a", "1000 USB a", 500, "new"},
        {"1000 am a", "1000 AM b", 0, "0"},
        {"1000 - a", "1000 USB b", 0, "0"},
        {"1000 USB a", "1000 - b", 0, "0"},
        {"1000 - a, 1000 USB b", "1000 USB c", 0, "1"},
        {"1000 NONE a", "1000 USB b", 0, "0"},
        // equal ones go first, whoever comes before them
        {"1000 AM a, 1000 AM b", "1000 AM x, 1000 AM a", 0, "1 0"},
        {"1000 AM a", "1001 AM a, 1000 AM a", 500, "new 0"},
        // the nearest of all wins, not that of the first; the lower one of two equally near
        {"1000 AM a", "1300 AM b, 1100 AM c", 500, "new 0"},
        {"900 AM a, 1100 AM b", "1000 AM c", 500, "0"},
        {"1000 AM a, 1400 AM b", "1300 AM c, 1350 AM d", 500, "0 1"},
        {"1000 - a, 1100 AM b", "1000 AM c", 500, "0"},
        // one frequency several times: the n-th belongs to the n-th, and what is over is new
        {"1000 AM a, 1000 AM b", "1000 AM x, 1000 AM y, 1000 AM z", 0, "0 1 new"},
        {"1000 AM a, 1000 AM b", "1200 AM x, 1200 AM y", 500, "0 1"},
        // no frequency belongs to none but to what is the same
        {"x AM a, 0 AM b", "x AM b, 0 AM c, x AM a", 500, "new 1 0"},
    };
    for (const auto& row : rows) {
        EntryMerge::KeyMaker maker;
        const std::vector<Key> mine = KeysOf(maker, EntriesOf(row.mine));
        const std::vector<Key> theirs = KeysOf(maker, EntriesOf(row.theirs));
        EXPECT_EQ(Told(EntryMerge::Match(mine, theirs, row.tolerance)), row.found)
            << row.mine << " against " << row.theirs;
    }
}

TEST(EntryMergeTest, DuplicatesLeaveOneOfEachThatStandsForThem) {
    const struct {
        const char* entries;
        double tolerance;
        const char* found;
    } rows[] = {
        {"1000 AM a, 2000 AM b, 1000 AM c", 0, "2"},
        {"1400 AM a, 1000 AM b, 1800 AM c", 500, "1 2"},
        {"1000 AM a, 1400 AM b, 1800 AM c", 500, "1"}, // the third would have none that stays
        {"1000 AM a, 1000 USB b, 1000 - c", 0, "2"},
        {"1000 - a, 1000 USB b, 1000 AM c", 0, "1 2"},
        {"x AM a, x AM a", 500, ""},
    };
    for (const auto& row : rows) {
        EntryMerge::KeyMaker maker;
        EXPECT_EQ(Told(EntryMerge::FindDuplicates(KeysOf(maker, EntriesOf(row.entries)), row.tolerance)),
                  row.found)
            << row.entries;
    }
}

TEST(EntryMergeTest, WhatAListWritesWhereItKnowsNothingIsNoDifference) {
    using EntryMerge::Silence;
    const Fields full = {{Q("frequency"), Q("7055000")}, {Q("bandwidth"), Q("3000")},
                         {Q("comment"), Q("calling")},   {Q("demodulation"), Q("USB")},
                         {Q("signalclass"), Q("voice")}, {Q("type"), Q("g")}};
    const Fields bare = {
        {Q("frequency"), Q("7055000")}, {Q("bandwidth"), Q("0")},           {Q("comment"), Q("7055.000 kHz")},
        {Q("demodulation"), Q("NONE")}, {Q("signalclass"), Q("undefined")}, {Q("type"), Q("h")},
        {Q("level"), Q("20")}};
    const auto keys = [](const std::vector<EntryMerge::Difference>& differences) {
        QStringList texts;
        for (const EntryMerge::Difference& difference : differences)
            texts << difference.key + Q(":") + difference.mine + Q(">") + difference.theirs;
        return texts.join(' ').toStdString();
    };
    EXPECT_EQ(keys(Differences(full, bare, Silence::IsEqual)), "");
    EXPECT_EQ(keys(Differences(bare, full, Silence::IsEqual)),
              "bandwidth:>3000 comment:>calling demodulation:>USB signalclass:>voice");
    EXPECT_EQ(keys(Differences(full, bare, Silence::Differs)),
              "bandwidth:3000> comment:calling> demodulation:USB> signalclass:voice> level:>20");
    EXPECT_EQ(keys(Differences(full, full, Silence::Differs)), "");
}

TEST(EntryMergeTest, JoinedCommentsHaveEachOnce) {
    const struct {
        const char* mine;
        const char* theirs;
        const char* joined;
    } rows[] = {
        {"a", "b", "a; b"},    {"a", "", "a"},        {"", "b", "b"},         {"a", "a", "a"},
        {"a; b", "b", "a; b"}, {"a", "b; a", "a; b"}, {"a;b", "b", "a;b; b"}, {"", "", ""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(EntryMerge::JoinedComments(Q(row.mine), Q(row.theirs)), Q(row.joined));
}

/// Random lists with few frequencies, demodulations and comments, so that many meet.
class RandomListsTest : public testing::TestWithParam<unsigned> {
protected:
    std::vector<Fields> List() {
        static constexpr const char* Demodulations[] = {"AM", "USB", "-"};
        std::vector<Fields> entries;
        for (auto i = m_random() % 40; i > 0; --i)
            entries.push_back(
                EntryOf(QStringLiteral("%1 %2 %3")
                            .arg(1000 + m_random() % 60)
                            .arg(Q(Demodulations[m_random() % 3]), QString::number(m_random() % 3))));
        return entries;
    }
    static bool AreOne(const Key& a, const Key& b, double tolerance) {
        return std::abs(a.frequency - b.frequency) <= tolerance &&
               (a.demodulation == b.demodulation || a.demodulation == 0 || b.demodulation == 0);
    }

    std::mt19937 m_random{GetParam()};
};

TEST_P(RandomListsTest, AMergeHasAllOfBothAndAddsNothingASecondTime) {
    SCOPED_TRACE(testing::Message() << "seed " << GetParam());
    EntryMerge::KeyMaker maker;
    const auto tolerance = static_cast<double>(m_random() % 8);
    std::vector<Key> mine = KeysOf(maker, List());
    const std::vector<Key> theirs = KeysOf(maker, List());

    const std::vector<quint32> first = EntryMerge::Match(mine, theirs, tolerance);
    std::vector<int> uses(mine.size());
    for (size_t i = 0; i < theirs.size(); ++i) {
        if (first[i] == EntryMerge::None)
            continue;
        EXPECT_TRUE(AreOne(mine[first[i]], theirs[i], tolerance)) << i;
        EXPECT_EQ(++uses[first[i]], 1) << first[i];
    }
    for (size_t i = 0; i < theirs.size(); ++i) {
        for (size_t own = 0; first[i] == EntryMerge::None && own < uses.size(); ++own)
            EXPECT_FALSE(uses[own] == 0 && AreOne(mine[own], theirs[i], tolerance))
                << i << " is new beside " << own << ", which nobody has";
    }
    for (size_t i = 0; i < theirs.size(); ++i) {
        if (first[i] == EntryMerge::None)
            mine.push_back(theirs[i]);
    }
    const std::vector<quint32> second = EntryMerge::Match(mine, theirs, tolerance);
    EXPECT_EQ(std::count(second.begin(), second.end(), EntryMerge::None), 0);
    EXPECT_EQ(Told(EntryMerge::Match(theirs, theirs, 0)).find("new"), std::string::npos);
}

TEST_P(RandomListsTest, WithoutDuplicatesNoTwoAreTheSame) {
    SCOPED_TRACE(testing::Message() << "seed " << GetParam());
    EntryMerge::KeyMaker maker;
    const auto tolerance = static_cast<double>(m_random() % 8);
    const std::vector<Key> entries = KeysOf(maker, List());
    const std::vector<quint32> found = EntryMerge::FindDuplicates(entries, tolerance);
    const auto stays = [&](quint32 place) { return !std::binary_search(found.begin(), found.end(), place); };
    for (quint32 i = 0; i < entries.size(); ++i) {
        bool hasOneBefore = false;
        for (quint32 k = 0; k < i; ++k)
            hasOneBefore = hasOneBefore || (stays(k) && AreOne(entries[k], entries[i], tolerance));
        EXPECT_NE(stays(i), hasOneBefore) << i;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomListsTest, testing::Range(0u, 60u));

} // namespace
