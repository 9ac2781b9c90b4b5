#include "workstation/noibands.h"

#include "controls/frequencystore/common/paths.h"
#include "host/freqlist/freqstore.h"
#include "host/startup/cfgcenter.h"
#include "receiver/receiver.h"
#include "tests/support/text.h"
#include "tests/workstation/stationfixture.h"
#include "workstation/bandspanel.h"
#include "workstation/frequencybar.h"

#include <QDockWidget>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QSignalSpy>

#include <random>

using Band = NoiBands::Band;

static std::ostream& operator<<(std::ostream& out, const Band& band) {
    return out << band.from << "-" << band.to;
}

namespace {

TEST(NoiBandTexts, AreParsedAndJoined) {
    struct {
        const char* text;
        std::vector<Band> parsed;
        std::vector<Band> joined;
    } const rows[] = {
        {"", {}, {}},
        {"5,6;", {{5, 6}}, {{5, 6}}},
        {"9,10;-4,6;", {{9, 10}, {-4, 6}}, {{-4, 6}, {9, 10}}},
        {"5,6;6,7;6,6;20,30;22,23;1,100", {{5, 6}, {6, 7}, {6, 6}, {20, 30}, {22, 23}, {1, 100}}, {{1, 100}}},
        {"7,7;;,;x,1;2,y;3;9,8;inf,nan; 8 , 9 ", {{7, 7}, {8, 9}}, {{7, 7}, {8, 9}}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(NoiBands::Parse(Q(row.text)), row.parsed) << row.text;
        EXPECT_EQ(NoiBands::Join(row.parsed), row.joined) << row.text;
    }
}

TEST(NoiBandSearch, FindsTheLowestBandThatIsTouched) {
    std::mt19937 random(7);
    std::uniform_int_distribution<int> place(0, 200);
    for (int round = 0; round < 200; ++round) {
        std::vector<Band> bands;
        for (int i = place(random) / 20; i > 0; --i) {
            const double from = place(random);
            bands.push_back({from, from + place(random) / 20});
        }
        const std::vector<Band> joined = NoiBands::Join(bands);
        for (int i = 0; i < 50; ++i) {
            const double from = place(random);
            const double to = from + place(random) / 50;
            const auto inAny = [&](double hertz) {
                return std::any_of(bands.begin(), bands.end(),
                                   [=](const Band& band) { return band.from <= hertz && hertz <= band.to; });
            };
            bool touched = false;
            for (double hertz = from; hertz <= to; ++hertz)
                touched = touched || inAny(hertz);
            const Band* found = NoiBands::FirstWithin(joined, from, to);
            ASSERT_EQ(found != nullptr, touched) << from << " to " << to;
            EXPECT_TRUE(!found || (found->from <= to && found->to >= from));
            EXPECT_TRUE(!found || found == joined.data() || (found - 1)->to < from) << "none lies before it";
        }
    }
}

class NoiWindow : public testing::Test {
protected:
    void SetUp() override {
        m_window = std::make_unique<MainWindow>(m_receiver);
        m_window->resize(1200, 700);
        m_value = Tree::Instance()->Find<Value<QString>>(Paths::NoiDefinition);
        ASSERT_NE(m_value, nullptr);
    }
    void TearDown() override {
        m_window.reset();
        m_value->SetValue(QString());
    }
    /// Columns of the bar in which the strip above the axis has the colour of bands.
    std::vector<int> Shaded() {
        FrequencyBar* bar = m_window->GetBar();
        const QImage image = bar->grab().toImage();
        std::vector<int> columns;
        for (int x = 0; x < image.width(); ++x) {
            bool shaded = false;
            for (int y = 0; y < image.height(); ++y)
                shaded = shaded || image.pixelColor(x, y) == QColor(0xff, 0xa0, 0x00);
            if (shaded)
                columns.push_back(x);
        }
        return columns;
    }

    Receiver m_receiver{ReceiverKind::HF};
    std::unique_ptr<MainWindow> m_window;
    Value<QString>* m_value = nullptr;
};

TEST_F(NoiWindow, TheBarShadesTheBandsWhereTheyAre) {
    FrequencyBar* bar = m_window->GetBar();
    EXPECT_TRUE(Shaded().empty());
    bar->SetRange(1e6, 10e6);
    m_value->SetValue(Q("2000000,3000000;3000000,4000000;20000000,30000000;"));
    std::vector<int> shaded = Shaded();
    ASSERT_FALSE(shaded.empty());
    EXPECT_EQ(shaded.back() - shaded.front() + 1, static_cast<int>(shaded.size()))
        << "bands that touch are one";
    const double left = bar->MapToPixel(2e6);
    const double right = bar->MapToPixel(4e6);
    EXPECT_NEAR(static_cast<double>(shaded.size()), right - left, 2);
    // The same shift from the bar's left edge for both ends.
    EXPECT_NEAR(shaded.back() - shaded.front(), right - left, 2);
    bar->SetRange(5e6, 10e6);
    EXPECT_TRUE(Shaded().empty()) << "out of sight";
    m_value->SetValue(Q("7000000,7000000;"));
    EXPECT_GE(Shaded().size(), 1u) << "a band without width is still seen";
    EXPECT_LE(Shaded().size(), 3u);
    m_value->SetValue(QString());
    EXPECT_TRUE(Shaded().empty());
}

TEST_F(NoiWindow, ThePanelShowsTheBandsAndCopiesTheirText) {
    auto* dock = m_window->findChild<QDockWidget*>(Q("BandsPanel"));
    ASSERT_NE(dock, nullptr);
    EXPECT_TRUE(dock->isHidden());
    const QList<QAction*> menus = m_window->menuBar()->actions();
    EXPECT_TRUE(std::any_of(menus.begin(), menus.end(), [&](const QAction* menu) {
        return menu->text() == Q("&View") && menu->menu()->actions().contains(dock->toggleViewAction());
    }));
    auto* panel = dynamic_cast<BandsPanel*>(dock->widget());
    ASSERT_NE(panel, nullptr);
    const QString definition = Q("7053500,7056500;156800000,156825000;7056000,7060000;");
    m_value->SetValue(definition);
    EXPECT_TRUE(panel->GetText()->toPlainText().isEmpty()) << "nothing is made for nobody";
    m_window->show();
    dock->show();
    const QStringList lines = panel->GetText()->toPlainText().split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(lines[0].simplified(), Q("7053.500 kHz – 7060.000 kHz"));
    EXPECT_EQ(lines[1].simplified(), Q("156.800000 MHz – 156.825000 MHz"));
    panel->Copy();
    EXPECT_EQ(FreqStore::Instance().GetClipboardText(), definition);
    m_value->SetValue(QString());
    EXPECT_TRUE(panel->GetText()->toPlainText().isEmpty());
    QString many;
    for (int i = 0; i < 6000; ++i)
        many += QStringLiteral("%1,%2;").arg(10 * i).arg(10 * i + 1);
    m_value->SetValue(many);
    EXPECT_TRUE(panel->GetText()->toPlainText().endsWith(Q("and 1,000 more")) ||
                panel->GetText()->toPlainText().endsWith(Q("and 1000 more")));
    EXPECT_EQ(m_window->GetBands().GetCount(), 6000u);
}

using NoiWorkstation = Workstations;

TEST_F(NoiWorkstation, TheListIsATabWithBandsAndIsThereTheNextTime) {
    const auto shown = [this] { return station->GetWindow().GetBands().GetCount(); };
    start({});
    NOIFrequencyHandler::Instance()->InsertNewValue(-1, 0, QString());
    NOIFrequencyHandler::Instance()->InsertNewValue(7055000, 3000, Q("c"));
    EXPECT_EQ(Tree::Instance()->Find<Value<QString>>(Paths::NoiDefinition)->GetValue(),
              Q("6057000,6063000;7053500,7056500;"))
        << "new entries are the receiver's";
    EXPECT_EQ(shown(), 2u);
    station.reset();
    EXPECT_TRUE(Read("data/NoiFrequencies.xml").contains("7055000"));
    const QByteArray kept = Read("data/NoiFrequencies.xml");
    start({"--demo"}); // the samples come and go without a trace
    EXPECT_TRUE(station->LoadFiles());
    EXPECT_EQ(shown(), 30u);
    station.reset();
    EXPECT_EQ(Read("data/NoiFrequencies.xml"), kept);
    start({});
    EXPECT_EQ(shown(), 2u);
    QFile::remove(Path("data/NoiFrequencies.xml"));
    NOIFrequencyHandler::Instance()->GetItemsRoot()->DeleteChildren();
    NOIFrequencyHandler::Instance()->UpdateNOIList();
    station.reset();
    CfgCenter::GetAppCfg(ICfg::StartUp).SetString(Q("NOIFrequencies"), Q("gone.xml"));
    start({});
    EXPECT_FALSE(NOIFrequencyHandler::Instance()->IsWaitingForFile());
    EXPECT_TRUE(NOIFrequencyHandler::Instance()->InsertNewValue(1, 0, QString()));
    EXPECT_EQ(shown(), 1u);
}

} // namespace
