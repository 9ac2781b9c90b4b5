#include "host/freqlist/filterfield.h"

#include "host/freqlist/buttonbar.h"
#include "host/freqlist/frequencystorelistview.h"
#include "host/freqlist/nothingfound.h"
#include "host/gui/listsettings.h"
#include "host/gui/sortlistview.h"
#include "tests/support/testfolder.h"
#include "tests/support/waiting.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace {

class ThreeRows : public SortListView, public FrequencyStoreListView {
public:
    ThreeRows() {
        addColumn("Frequency");
        addColumn("Name");
        new SortListViewItem(this, {"7055.000 kHz", "BBC AM"}, false);
        new SortListViewItem(this, {"121.500000 MHz", "Guard AM"}, false);
        new SortListViewItem(this, {"648.000 kHz", "BBC"}, false);
    }
    QWidget* GetWidget() override { return this; }
    SortListView* GetListView() override { return this; }
    void SelectFrequency(double) override {}
    void InitFreqStoreWidget(FreqStoreListViewButtonBar*) override {}
};

class Filters : public testing::Test, protected TestFolder {
protected:
    Filters() {
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(&bar);
        layout->addWidget(&list);
        bar.AttachView(&list);
        window.resize(600, 300);
        window.show();
        window.activateWindow();
    }
    ~Filters() override {
        bar.AttachView(nullptr);
        bar.setParent(nullptr);
        list.setParent(nullptr);
    }
    void type(const char* text) {
        bar.Filter().setFocus();
        bar.Filter().clear();
        QTest::keyClicks(&bar.Filter(), QString::fromUtf8(text));
    }
    QString understood() const {
        const auto* label = bar.findChild<QLabel*>("FilterUnderstood");
        return label->isVisible() ? label->text() : QString();
    }

    QWidget window;
    FreqStoreListViewButtonBar bar;
    ThreeRows list;
};

TEST_F(Filters, SayWhatTheyUnderstoodOfWhatIsTyped) {
    struct Row {
        const char* typed;
        int shown;
        const char* understood;
    };
    const Row rows[] = {
        {"bbc am", 1, "Shown: \"bbc\" and \"am\""},
        {">7 MHz", 2, "Shown: frequency above 7 MHz"},
        {"name:guard", 1, "Shown: Name with \"guard\""},
        {"station:x", 0, "No column is called \"station\". Searched as text."},
        {"", 3, ""},
    };
    for (const Row& row : rows) {
        type(row.typed);
        EXPECT_EQ(list.ShownCount(), row.shown) << row.typed;
        EXPECT_EQ(understood(), row.understood);
        EXPECT_TRUE(bar.Filter().toolTip().contains("demod:am"));
        EXPECT_EQ(bar.Filter().ProblemText().isEmpty(), !QString(row.understood).startsWith("No"));
    }
}

TEST_F(Filters, EscapeClearsAndGoesToTheList) {
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window, Patience));
    type("guard");
    EXPECT_EQ(list.ShownCount(), 1);
    QTest::keyClick(&bar.Filter(), Qt::Key_Escape);
    EXPECT_EQ(bar.Filter().text(), "");
    EXPECT_EQ(list.ShownCount(), 3);
    EXPECT_TRUE(list.hasFocus());
    type("guard");
    QTest::keyClick(&bar.Filter(), Qt::Key_Return);
    EXPECT_EQ(list.ShownCount(), 1);
    EXPECT_TRUE(list.hasFocus());
}

TEST_F(Filters, OfferToBeClearedWhereNothingMatches) {
    auto* note = list.findChild<NothingFound*>();
    ASSERT_TRUE(note);
    EXPECT_FALSE(note->isVisible());
    type("guards");
    EXPECT_TRUE(note->isVisible());
    EXPECT_TRUE(list.viewport()->rect().contains(note->geometry()));
    note->findChild<QPushButton*>()->click();
    EXPECT_FALSE(note->isVisible());
    EXPECT_EQ(list.ShownCount(), 3);
    EXPECT_EQ(bar.Filter().text(), "");
}

TEST_F(Filters, KeepSearchesUnderNames) {
    ListSettings::SetDirectory(m_folder.path());
    FilterField::SaveSearch("Night\tair", "118-137 MHz");
    FilterField::SaveSearch("Broadcast", "bbc or rfi");
    FilterField::SaveSearch("Broadcast", "bbc");
    FilterField::SaveSearch(" ", "nameless");
    using Searches = QList<std::pair<QString, QString>>;
    EXPECT_EQ(FilterField::SavedSearches(), (Searches{{"Broadcast", "bbc"}, {"Night air", "118-137 MHz"}}));
    FilterField::SaveSearch("Broadcast", "");
    EXPECT_EQ(FilterField::SavedSearches(), (Searches{{"Night air", "118-137 MHz"}}));
}

} // namespace
