#include "host/gui/recordsort.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace {

/// What a stable sort by comparison gives.
template <typename Keys, typename Less>
std::vector<quint32> compared(const Keys& keys, Less less) {
    std::vector<quint32> order(keys.size());
    for (quint32 i = 0; i < order.size(); ++i)
        order[i] = i;
    std::stable_sort(order.begin(), order.end(),
                     [&](quint32 a, quint32 b) { return less(keys[a], keys[b]); });
    return order;
}

std::vector<quint32> order(const std::vector<double>& numbers) {
    return RecordSort::OrderBy<double>(RecordSort::Key<double>([](const double& number) { return number; }),
                                       numbers);
}

TEST(RecordSort, NumbersGoByValueEqualOnesInOrderNoneLast) {
    std::mt19937_64 random(1);
    std::vector<double> keys = {0,
                                -0.0,
                                1,
                                -1,
                                5e-324,
                                -5e-324,
                                1e308,
                                std::numeric_limits<double>::infinity(),
                                -std::numeric_limits<double>::infinity()};
    for (int i = 0; i < 3000; ++i)
        keys.push_back(static_cast<double>(static_cast<qint64>(random())) * (i % 3 == 0 ? 1e-9 : 1e3));
    for (int i = 0; i < 500; ++i)
        keys.push_back(static_cast<double>(random() % 7));
    EXPECT_EQ(order(keys), compared(keys, std::less<>()));

    const double none = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(order({none, 1, -none, 0}), (std::vector<quint32>{3, 1, 0, 2}));
    EXPECT_TRUE(order({}).empty());
}

TEST(RecordSort, FewValuesGoAsManyDo) {
    std::mt19937_64 random(3);
    for (const unsigned count : {1u, 2u, 127u, 128u, 129u, 200u}) {
        std::vector<double> keys;
        for (int i = 0; i < 5000; ++i)
            keys.push_back(static_cast<double>(random() % count) * 0.7 - 20.3);
        EXPECT_EQ(order(keys), compared(keys, std::less<>())) << count << " values";
    }
}

TEST(RecordSort, TextsGoByWhatFollowsAnEqualBeginning) {
    std::mt19937 random(2);
    std::vector<std::string> texts = {"",         "a",        std::string("a\0", 2), "ab", "\xff", "\x7f",
                                      "12345678", "123456789"};
    for (int i = 0; i < 1000; ++i) {
        std::string text(random() % 12, 'x');
        for (char& c : text)
            c = static_cast<char>("ab\xc3"[random() % 3]);
        texts.push_back(text);
    }
    std::vector<const std::string*> keys;
    std::vector<QString> wide;
    RecordSort::MadeTexts made;
    for (const std::string& text : texts) {
        keys.push_back(&text);
        wide.push_back(QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size())));
        made.push_back(wide.back());
    }
    EXPECT_EQ(RecordSort::Order(keys), compared(texts, std::less<>()));
    EXPECT_EQ(RecordSort::Order(made), compared(wide, std::less<>()));
}

} // namespace
