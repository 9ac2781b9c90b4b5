#include "interchange/table.h"

#include "tests/interchange/formatfixture.h"

namespace Interchange {

namespace {

struct TableRow {
    const char* what;
    const char* text;
    const char* proposal; ///< as options
    const char* open;     ///< why it is not read without a word of the operator; empty when it is
    QStringList entries;  ///< read as proposed
};

TableLook look(QByteArray bytes) {
    QBuffer device(&bytes);
    device.open(QIODevice::ReadOnly);
    return LookAtTable(device, QStringLiteral("file"));
}

QStringList entriesOf(QByteArray bytes, const TableChoice& choice) {
    QStringList entries;
    QBuffer device(&bytes);
    device.open(QIODevice::ReadOnly);
    ReadTable(device, QStringLiteral("file"), choice, {},
              [&](const FreqStoreXml::FrequencyStoreEntry& entry) { entries << lineOf(entry); });
    return entries;
}

class Tables : public testing::TestWithParam<TableRow> {};

TEST_P(Tables, AreProposedAndReadAsProposed) {
    const TableRow& row = GetParam();
    const TableLook found = look(row.text);
    EXPECT_EQ(found.proposal.ToText(found.headings).toStdString(), row.proposal);
    EXPECT_EQ(found.choice.WhyOpen(found.headings).toStdString(), row.open);
    EXPECT_EQ(entriesOf(row.text, found.proposal), row.entries);
    TableChoice told = found.choice;
    if (*row.proposal)
        TakeTableOptions(QString::fromLatin1(row.proposal), found, told);
    EXPECT_EQ(entriesOf(row.text, told), row.entries) << "as the command line is told";
}

const TableRow Rows[] = {
    {"UnitInTheHeading",
     "Name,Freq (MHz),Mode\nTower,118.1,AM\n",
     "name=Name,frequency=Freq (MHz):MHz,mode=Mode",
     "",
     {"118100000|9000|AM|Tower"}},
    {"UnitOpenDecimals",
     "Name;Frequency\nTower;118.1\nGuard;121.5\n",
     "name=Name,frequency=Frequency:MHz",
     "nothing tells the unit of column \"Frequency\"",
     {"118100000|0||Tower", "121500000|0||Guard"}},
    {"NotesBeforeTheName",
     "Freq MHz;Comment;Name\r121.5;north;Guard\r",
     "frequency=Freq MHz:MHz,notes=Comment,name=Name",
     "",
     {"121500000|0||Guard | north"}},
    {"HeadingsThatNoOptionCanName",
     "\"Freq, MHz\",Name,Name\n121.5,Guard,x\n",
     "frequency=1:MHz,name=Name",
     "",
     {"121500000|0||Guard"}},
    {"UnitsOpenOfBandwidths",
     "Freq;Bandwidth\n118.1;8.33\n98.5;180\n",
     "frequency=Freq:MHz,bandwidth=Bandwidth:kHz",
     "nothing tells the unit of column \"Freq\"",
     {"118100000|8330||", "98500000|180000||"}},
    {"UnitOpenKilohertz",
     "freq\tname\n5505\tShannon\n198\tBBC\n",
     "frequency=freq:kHz,name=name",
     "nothing tells the unit of column \"freq\"",
     {"5505000|0||Shannon", "198000|0||BBC"}},
    {"UnitOpenHertz",
     "frequency|description\n7055000|a\n145500000|b\n",
     "frequency=frequency:Hz,name=description",
     "nothing tells the unit of column \"frequency\"",
     {"7055000|0||a", "145500000|0||b"}},
    {"UnitInEachCell",
     "QRG,Info,Bandwidth kHz\n\"121.5 MHz\",Guard,8.33\n5505kHz,Volmet,2.7\n121.5,no,\n",
     "frequency=QRG:MHz,notes=Info,bandwidth=Bandwidth kHz:kHz",
     "nothing tells the unit of column \"QRG\"",
     {"121500000|8330||Guard", "5505000|2700||Volmet", "121500000|0||no"}},
    {"DecimalComma",
     "Name;Frequenz MHz\nT\xC3\xBCrme;118,1\nX;1.296,2\n",
     "name=Name,frequency=Frequenz MHz:MHz",
     "",
     {"118100000|0||T\u00FCrme", "1296200000|0||X"}},
    {"DigitsInGroups",
     "sep=;\nFreq kHz;Name\n1\xE2\x80\xAF"
     "296 200,5;a\n121.500;b\n1 2;c\n1.2;d\n3,5;e\n4,5;f\n",
     "frequency=Freq kHz:kHz,name=Name",
     "",
     {"1296200500|0||a", "121500000|0||b", "1200|0||d", "3500|0||e", "4500|0||f"}},
    {"ThousandsOrDecimals",
     "Freq kHz\tName\n7,055\tNet\n",
     "frequency=Freq kHz:MHz,name=Name",
     "nothing tells the unit of column \"Freq kHz\"",
     {"7055000|0||Net"}},
    {"CommasBetweenThousands",
     "Frequency (Hz),Call\n\"145,500,000\",Calling\n\"198,000\",BBC\n\"121,5\",x\n",
     "frequency=Frequency (Hz):Hz,name=Call",
     "",
     {"145500000|0||Calling", "198000|0||BBC"}},
    {"CommasBetweenThousandsAndDecimals",
     "Freq kHz\tName\n5,505.50\tShannon\n13,264\tVolmet\n198.00\tBBC\n",
     "frequency=Freq kHz:kHz,name=Name",
     "",
     {"5505500|0||Shannon", "13264000|0||Volmet", "198000|0||BBC"}},
    {"PointsBetweenThousands",
     "Freq Hz;Name\n145.500.000;Calling\n198.000;BBC\n",
     "frequency=Freq Hz:Hz,name=Name",
     "",
     {"145500000|0||Calling", "198000|0||BBC"}},
    {"TitlesAboveTheHeadings",
     "My list;;\n;;\nFreq MHz;Mode;Name\n118.1;AM;Tower\n;;\n",
     "frequency=Freq MHz:MHz,mode=Mode,name=Name",
     "",
     {"118100000|9000|AM|Tower"}},
    {"UnitsBelowTheHeadings",
     "Frequency;Bandwidth;Mode;Name\n(MHz);kHz;;\n118,275;8,33;AM;Tower\n",
     "frequency=Frequency (MHz):MHz,bandwidth=Bandwidth kHz:kHz,mode=Mode,name=Name",
     "",
     {"118275000|8330|AM|Tower"}},
    {"HeadingsOfTwoLines",
     "\"Freq\n(MHz)\"\t\"Name\"\n118.275\t\"Tow\ner\"\n",
     "frequency=Freq (MHz):MHz,name=Name",
     "",
     {"118275000|0||Tow er"}},
    {"AQuoteThatNothingCloses",
     "5\" whip;Freq MHz\na;121.5\nb;118.1\n",
     "frequency=Freq MHz:MHz",
     "",
     {"121500000|0||", "118100000|0||"}},
    {"RowsThatAreCounted",
     "1;118.275;Tower\n2;121.5;Guard\n",
     "frequency=2:MHz,name=3",
     "no column is known to hold the frequency",
     {"118275000|0||Tower", "121500000|0||Guard"}},
    {"SeparatorInQuotes",
     "Freq kHz;Name\n7055;\"a;b, c, d\"\n",
     "frequency=Freq kHz:kHz,name=Name",
     "",
     {"7055000|0||a;b, c, d"}},
    {"NoHeadings",
     "118.1,Tower,AM,\n121.5,\"Guard, all\",AM,x\n",
     "frequency=1:MHz,name=2,mode=3",
     "no column is known to hold the frequency",
     {"118100000|9000|AM|Tower", "121500000|9000|AM|Guard, all"}},
    {"CommentsAndShortRows",
     "# exported\nFrequency Hz,Comment\n7055000\n\n7060000,b,c\n",
     "frequency=Frequency Hz:Hz,name=Comment",
     "",
     {"7055000|0||"}},
    {"HeadingsBehindASign",
     "# exported, today\n#,Freq MHz,Name\n1,121.5,Guard\n# spare,,\n2,118.1,Tower\n",
     "frequency=Freq MHz:MHz,name=Name",
     "",
     {"121500000|0||Guard", "118100000|0||Tower"}},
    {"HeadingsBehindAComment",
     "# by me, today\nFreq MHz,Name\n121.5,Guard\n",
     "frequency=Freq MHz:MHz,name=Name",
     "",
     {"121500000|0||Guard"}},
    {"CutWithinACharacter",
     "Freq MHz,Name\n121.5,Guard\n118.1,T\xC3",
     "frequency=Freq MHz:MHz,name=Name",
     "",
     {"121500000|0||Guard"}},
    {"CellsBehindTheHeadings",
     "Freq MHz;Name\n121.5;a;\n121.6;b;c\n",
     "frequency=Freq MHz:MHz,name=Name",
     "",
     {"121500000|0||a", "121600000|0||b"}},
};

INSTANTIATE_TEST_SUITE_P(Others, Tables, testing::ValuesIn(Rows),
                         [](const auto& row) { return std::string(row.param.what); });

TEST(TablesOfOthers, RefuseCellsWithoutAUnitWhereEachHasOne) {
    QByteArray text = "QRG,Name\n";
    for (int i = 0; i < 60; ++i)
        text += "121.5 MHz,a\n";
    text += "121.6,b\n";
    const TableLook found = look(text);
    EXPECT_EQ(found.choice.WhyOpen(found.headings), QString());
    EXPECT_EQ(entriesOf(text, found.choice).size(), 60);
}

TEST(TablesOfOthers, RefuseRowsInWhichACommaMayBeDecimal) {
    const char* const tables[] = {"Freq MHz,Name\n118.1,Ground\n121,5,Tower\n",
                                  "Freq MHz,Name,\n118.1,Ground,\n121,5,Tower,\n",
                                  "Freq MHz,Name,Info\n118.1,Ground\n121,5,Tower,\n"};
    for (const char* text : tables) {
        QStringList problems;
        const Problems::Sink before =
            Problems::SetSink([&](const Problem& problem) { problems << problem.ToString(); });
        EXPECT_EQ(entriesOf(text, look(text).choice), QStringList{QStringLiteral("118100000|0||Ground")});
        Problems::SetSink(before);
        ASSERT_EQ(problems.size(), 1) << text;
        EXPECT_TRUE(problems[0].startsWith(QStringLiteral("file:3: has "))) << problems[0].toStdString();
    }
}

TEST(TablesOfOthers, AreReadAsTheOperatorSays) {
    const QByteArray text = "a,b,c\n1,2,7055\n";
    TableLook found = look(text);
    TakeTableOptions(QStringLiteral("frequency=c:kHz, comment=2"), found, found.choice);
    EXPECT_EQ(entriesOf(text, found.choice), QStringList{QStringLiteral("7055000|0||2")});
    struct Bad {
        const char* options;
        const char* reason;
    };
    const Bad bad[] = {
        {"frequency=d:kHz", "there is no column \"d\", but a, b, c"},
        {"frequency=c:kHzz", "\"kHzz\" is no unit: Hz, kHz, MHz or GHz"},
        {"frequency=c:kHz,name=3", "column \"c\" stands there twice"},
        {"name=a,comment=b", "\"comment\" stands there twice"},
        {"freq=c", "\"freq=c\" is no column: frequency, bandwidth, mode, name or notes, \"=\" and a heading"},
    };
    for (const Bad& row : bad) {
        try {
            TakeTableOptions(QString::fromLatin1(row.options), found, found.choice);
            ADD_FAILURE() << row.options;
        } catch (const RGException& exception) {
            EXPECT_EQ(exception.GetErrorText().toStdString(), row.reason);
        }
    }
}

TEST(TablesOfOthers, AreLookedAtAsTheOperatorSays) {
    // Cyrillic, which nothing tells from Western European.
    QByteArray bytes = "118.1;\xD2\xE0\n121.5;\xC1\n";
    QBuffer device(&bytes);
    device.open(QIODevice::ReadOnly);
    TableLook found = LookAtTable(
        device, QStringLiteral("file"),
        {.separator = ';', .hasHeadings = false, .decimals = DecimalMark::Point, .encoding = "windows-1251"});
    EXPECT_EQ(found.rows[0][1], QStringLiteral("\u0422\u0430"));
    EXPECT_EQ(found.LikelyUnit(0, TableField::Frequency), 1e6);
    EXPECT_EQ(found.SureUnit(0), 0);
    found.choice.columns = {{TableField::Frequency, 1e6}, {TableField::Name, 0}};
    EXPECT_EQ(entriesOf(bytes, found.choice), (QStringList{QStringLiteral("118100000|0||\u0422\u0430"),
                                                           QStringLiteral("121500000|0||\u0411")}));
}

TEST(TablesOfOthers, AreToldFromWhatIsNoTable) {
    EXPECT_TRUE(look("Frequency,Bandwidth\n7055000,2700\n").IsOwn());
    EXPECT_FALSE(look("My list\nFrequency,Bandwidth\n7055000,2700\n").IsOwn());
    EXPECT_TRUE(look("118.1\n121.5\n").MayHoldFrequencies());
    EXPECT_TRUE(look("QRG\n121.5 MHz\n").MayHoldFrequencies());
    EXPECT_TRUE(look("a,b\nc,d\n").MayHoldFrequencies()) << "the operator may know better";
    EXPECT_FALSE(look("remember\nthe milk\n").MayHoldFrequencies());
    EXPECT_FALSE(look("{\"a\":1,\n\"b\":2}\n").MayHoldFrequencies());
    EXPECT_FALSE(look("<a b=\"1,2\">\n").MayHoldFrequencies());
}

} // namespace

} // namespace Interchange
