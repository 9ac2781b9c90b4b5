#include "host/base/textdecoder.h"

#include <gtest/gtest.h>

namespace {

TEST(Controls, AreFoundWhereverTheyStand) {
    QString text;
    std::vector<quint32> expected;
    for (int i = 0; i < 2000; ++i) {
        const bool isControl = i * 7919 % 11 == 0;
        if (isControl)
            expected.push_back(static_cast<quint32>(i));
        text += QChar(isControl ? (i % 3 == 0 ? 0x7F : i % 0x20)
                                : (i % 5 == 0 ? 0x2009 + 0x100 * (i % 40) : 0x20 + i % 0x5F));
    }
    for (const qsizetype from : {0, 1, 15, 16, 17, 1999}) {
        for (const qsizetype size : {2000, 1999, 33, 3}) {
            std::vector<quint32> found{4711};
            AppendControls(QStringView(text).left(size), from, found);
            std::vector<quint32> inside{4711};
            std::copy_if(expected.begin(), expected.end(), std::back_inserter(inside),
                         [&](quint32 place) { return place >= from && place < size; });
            EXPECT_EQ(found, inside) << from << ' ' << size;
        }
    }
}

} // namespace
