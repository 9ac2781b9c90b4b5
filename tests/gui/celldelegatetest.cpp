#include "host/gui/celldelegate.h"

#include "host/gui/sortlistview.h"

#include <QPixmap>

#include <gtest/gtest.h>

namespace {

/// A list with texts of all kinds, as it is seen.
class Cells : public testing::Test {
protected:
    Cells() {
        list.resize(420, 220);
        for (const int alignment : {0, 2, 3}) {
            const int column = list.addColumn(QStringLiteral("Column"));
            list.setColumnAlignment(static_cast<unsigned>(column), alignment);
            list.setColumnWidth(column, 130);
        }
        for (const char* text :
             {"7055.000 kHz", "", "a text far too long for the room that its column has", "Łódź – Ω 11 °",
              "Пример, μετά", "fi ffl AV To", "two\nlines", "7055.000 kHz"}) {
            const QString cell = QString::fromUtf8(text);
            new SortListViewItem(&list, {cell, cell, cell}, false);
        }
        list.show();
    }
    /// As painted by the cells' own painter (true), and by Qt's alone.
    QImage image(bool own) {
        if (own)
            list.setItemDelegate(&cells);
        else
            list.setItemDelegate(&plain);
        list.grab(); // a second painting takes what the first kept
        return list.grab().toImage();
    }

    SortListView list{nullptr};
    CellDelegate cells;
    QStyledItemDelegate plain;
};

TEST_F(Cells, LookAsWithoutKeptLayouts) {
    const std::pair<const char*, std::function<void()>> states[] = {
        {"as opened", [] {}},
        {"selected", [this] { list.selectAll(); }},
        {"one focused", [this] { list.setCurrentItem(list.topLevelItem(4)); }},
        {"larger font",
         [this] {
             QFont font = list.font();
             font.setPointSize(font.pointSize() + 5);
             list.setFont(font);
         }},
        {"narrow", [this] { list.setColumnWidth(0, 12); }},
        {"disabled", [this] { list.setEnabled(false); }},
    };
    QImage before;
    for (const auto& [name, change] : states) {
        change();
        const QImage own = image(true);
        EXPECT_TRUE(own == image(false)) << name;
        EXPECT_FALSE(own == before) << name << " changes nothing";
        before = own;
    }
}

} // namespace
