#include "host/base/query.h"

#include <gtest/gtest.h>
#include <random>

namespace {

using Row = QStringList;

const QStringList Titles{"Frequency", "Name",         "Bandwidth", "Demodulation",
                         "Priority",  "Signal Class", "Level"};
const Row Rows[] = {
    {"5505.000 kHz", "Shannon VOLMET", "2.700 kHz", "USB", "3", "Voice", "-90 dBµV"},
    {"648.000 kHz", "BBC London, new York too", "9.000 kHz", "AM", "1", "Broadcast", "12.5 dBµV"},
    {"121.500000 MHz", "Guard 5505", "8.330 kHz", "AM", "13", "", "20 dBµV"},
    {"137.912500 MHz", "BBC relay", "34.000 kHz", "FM", "", "12:30 only", ""},
};

/// The rows that match, by their places: "02".
std::string found(const Query& query) {
    std::string places;
    for (size_t row = 0; row < std::size(Rows); ++row) {
        if (query.Matches([&](int column) { return Rows[row][column]; }))
            places += static_cast<char>('0' + row);
    }
    return places;
}

struct Asked {
    const char* text;
    const char* rows;
    const char* description = nullptr;
};

TEST(Query, FindsRowsAndSaysWhatItUnderstood) {
    const Asked all[] = {
        {"", "0123", ""},
        {"  ", "0123", ""},
        {"bbc", "13", "\"bbc\""},
        {"BBC AM", "1", "\"BBC\" and \"AM\""},
        {"5505", "02", "\"5505\""},
        {"5505 kHz", "0", "frequency 5.505 MHz ± 0.5 kHz"},
        {"5505.4 kHz", ""},
        {"5.505MHz", "0"},
        {"5,51 mhz", "0"},
        {"5.50 MHz", ""}, // 5505 kHz is at the end that is not in
        {"648k", "1"},
        {"137.9 MHz", "3"},
        {"118-137 MHz", "2", "frequency 118 MHz to 137 MHz"},
        {"118 MHz .. 138 MHz", "23"},
        {"500 kHz - 6 MHz", "01"},
        {"137-118 MHz", "2"},
        {">7 MHz", "23", "frequency above 7 MHz"},
        {"<= 648 kHz", "1", "frequency at most 648 kHz"},
        {"< 648 kHz", ""},
        {">=648kHz AM", "12"},
        {"demod:am", "12", "Demodulation with \"am\""},
        {"DEMODULATION:am", "12"},
        {"class:voice", "0", "Signal Class with \"voice\""},
        {"\"signal class\":voice", "0"},
        {"comment:\"new york\"", "1", "Name with \"new york\""},
        {"\"new york\"", "1"},
        {"\"york new\"", ""},
        {"name:5505", "2"},
        {"name:am", ""},
        {"priority:<=3", "01", "Priority at most 3"},
        {"prio:3", "0"},
        {"prio:1-3", "01"},
        {"bw:>9 kHz", "3", "Bandwidth above 9 kHz"},
        {"bw:>=9", "13"},
        {"bandwidth:2.7kHz", "0", "Bandwidth 2.7 kHz ± 0.05 kHz"},
        {"level:>-90", "12"},
        {"level:-90", "0"},
        {"level:12.5dBµV", "1"},
        {"level:-95..15", "01"},
        {"not bbc", "02", "not \"bbc\""},
        {"-bbc am", "2"},
        {"-demod:am", "03"},
        {"-\"new york\" bbc", "3"},
        {"not 118-137 MHz", "013"},
        {"-90", "0"},
        {"usb or fm", "03", "\"usb\", or \"fm\""},
        {"bbc am or prio:3", "01"},
        {"12:30", "3"},
        {"relay or \"or\"", "13"},
    };
    for (const Asked& asked : all) {
        SCOPED_TRACE(asked.text);
        const Query query = Query::Parse(QString::fromUtf8(asked.text), Titles);
        EXPECT_FALSE(query.Problem()) << query.Problem()->reason.toStdString();
        EXPECT_EQ(found(query), asked.rows);
        if (asked.description) {
            EXPECT_EQ(query.Describe(), QString::fromUtf8(asked.description));
        }
    }
}

TEST(Query, SaysWhereItIsNotUnderstoodAndSearchesTheWords) {
    struct Wrong {
        const char* text;
        int position;
        const char* rows;
    };
    const Wrong all[] = {
        {"bbc lamp:2", 4, ""},  {"bbc demod:", 4 + 6, ""}, {"\"new york", 0, ""}, {"bbc \"\"", 4, ""},
        {"or bbc", 0, "1"},     {"relay or", 8, ""},       {"bbc not", 4, ""},    {">7", 0, ""},
        {"12:30 only:", 6, ""}, {"prio:>1-3", 5, ""},      {"1.2.34 MHz", 0, ""}, {"level:", 6, ""}};
    for (const Wrong& wrong : all) {
        SCOPED_TRACE(wrong.text);
        const Query query = Query::Parse(wrong.text, Titles);
        ASSERT_TRUE(query.Problem());
        EXPECT_EQ(query.Problem()->position, wrong.position);
        EXPECT_FALSE(query.Problem()->reason.isEmpty());
        EXPECT_EQ(found(query), wrong.rows);
    }
    EXPECT_EQ(found(Query::Parse("5505 \"", {"Frequency", "Name"})), "");
    const Query words = Query::Parse("york too:", Titles);
    EXPECT_TRUE(words.Problem());
    EXPECT_EQ(words.Describe(), "\"york\" and \"too:\"");
}

TEST(Query, FrequenciesWithoutAUnitInTheCellsAreInHz) {
    const QStringList keys{"frequency", "bandwidthsel", "comment"};
    const Query::Cells cells = [](int column) { return Row{"7055000", "2700", "x"}[column]; };
    for (const char* text : {"7.055 MHz", ">7 MHz", "bw:2.7kHz", "bw:2700", "name:x", "freq:7055000"})
        EXPECT_TRUE(Query::Parse(text, keys).Matches(cells)) << text;
    for (const char* text : {"<=500 kHz", "2.7 kHz", "bw:>3 kHz"})
        EXPECT_FALSE(Query::Parse(text, keys).Matches(cells)) << text;
}

TEST(Query, PlainWordsFindWhatASearchByHandFinds) {
    std::mt19937 random(7);
    const auto word = [&](int most) {
        QString text;
        for (int left = 1 + static_cast<int>(random() % static_cast<unsigned>(most)); left > 0; --left)
            text += QLatin1Char("abA1."[random() % 5]);
        return text;
    };
    Query before;
    int matches = 0;
    for (int round = 0; round < 3000; ++round) {
        const Row row{word(6), word(6), word(6)};
        QStringList words;
        for (unsigned left = random() % 4; left > 0; --left)
            words << word(2);
        const QStringList titles{"A", "B", "C"};
        const auto cells = [&](int column) { return row[column]; };
        const Query query = Query::Parse(words.join(' '), titles);
        bool naive = true;
        for (const QString& each : words)
            naive = naive && std::any_of(row.begin(), row.end(), [&](const QString& cell) {
                        return cell.toLower().contains(each.toLower());
                    });
        EXPECT_EQ(query.Matches(cells), naive) << words.join(' ').toStdString();
        EXPECT_TRUE(!naive || !query.Narrows(before) || before.Matches(cells));
        before = query;
        matches += naive;
    }
    EXPECT_GT(matches, 300);
}

TEST(Query, NarrowsOnlyByMoreOfTheSame) {
    struct Step {
        const char* before;
        const char* now;
        bool narrows;
    };
    for (const Step& step :
         {Step{"b", "bb", true}, Step{"bb", "b", false}, Step{"b", "bc d", true}, Step{"b d", "bc", false},
          Step{"b", "-bc", false}, Step{"-b", "-bc", false}, Step{"b", "b or c", false},
          Step{"prio:1", "prio:12", false}, Step{"", "b", false}})
        EXPECT_EQ(Query::Parse(step.now, Titles).Narrows(Query::Parse(step.before, Titles)), step.narrows)
            << step.before << " to " << step.now;
}

TEST(Query, MarksWhatItFound) {
    const Query query = Query::Parse("a demod:b 7 MHz -c", Titles);
    const auto marks = [&](const char* cell, int column) {
        std::string text;
        for (const Query::Hit& hit : query.HitsIn(cell, column))
            text += std::to_string(hit.from) + "+" + std::to_string(hit.length) + " ";
        return text;
    };
    EXPECT_EQ(marks("banAna", 1), "1+1 3+1 5+1 ");
    EXPECT_EQ(marks("bab c", 3), "1+1 0+1 2+1 ");
    EXPECT_EQ(marks("7055.000 kHz", 0), "0+12 ");
    EXPECT_EQ(marks("7055.000 kHz", 2), "");
}

} // namespace
