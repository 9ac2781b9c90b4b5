#include "host/base/problemdigest.h"

#include <gtest/gtest.h>

namespace {

class ProblemDigestTest : public testing::Test {
protected:
    void Add(const char* file, qint64 line, const QString& reason, qint64 number = 1) {
        digest.Add({QString::fromLatin1(file), line, reason, number});
    }

    QStringList told;
    qint64 count = 0;
    ProblemDigest digest{[this](const Problem& problem) {
        told << problem.ToString();
        count += problem.count;
    }};
};

TEST_F(ProblemDigestTest, ManyOfOneKindAreToldOnceWithTheirNumber) {
    for (int line = 1; line <= 75; ++line)
        Add("a", line, QStringLiteral("\"x %1 \"y\"\" is no number; %1.5 is taken").arg(line));
    Add("a", 80, QStringLiteral("is another kind"));
    ASSERT_EQ(told.size(), 4);
    EXPECT_EQ(told[2], QStringLiteral("a:3: \"x 3 \"y\"\" is no number; 3.5 is taken"));
    EXPECT_EQ(told[3], QStringLiteral("a:80: is another kind"));
    digest.Flush();
    ASSERT_EQ(told.size(), 5);
    EXPECT_EQ(
        told[4],
        QStringLiteral("a:4: \"x 4 \"y\"\" is no number; 4.5 is taken (and 71 more like it, to line 75)"));
    EXPECT_EQ(count, 76);
    digest.Flush();
    EXPECT_EQ(told.size(), 5);
}

TEST_F(ProblemDigestTest, FilesAndKindsAreApartAndAFourthIsToldAsItIs) {
    for (int line = 1; line <= 4; ++line) {
        Add("a", line, QStringLiteral("is bad"));
        Add("b", 0, QStringLiteral("is bad"), 10);
        digest.Add(Problem::FromText(QStringLiteral("c:%1: is bad").arg(line)));
    }
    EXPECT_EQ(told.size(), 3 + 3 + 4);
    digest.Flush();
    ASSERT_EQ(told.size(), 12);
    EXPECT_EQ(told[10], QStringLiteral("a:4: is bad"));
    EXPECT_EQ(told[11], QStringLiteral("b: is bad (and 9 more like it)"));
    EXPECT_EQ(count, 4 + 40 + 4);
}

} // namespace
