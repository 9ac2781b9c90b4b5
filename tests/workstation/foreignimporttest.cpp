#include "workstation/foreignimport.h"

#include "controls/frequencystore/memory/memorysystemhandler.h"
#include "host/freqlist/undohistory.h"
#include "host/gui/listsettings.h"
#include "tests/support/dialogs.h"
#include "tests/workstation/windowfixture.h"
#include "workstation/filedrop.h"
#include "workstation/fileopener.h"
#include "workstation/mergedialog.h"

#include <QClipboard>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QToolButton>
#include <QUndoStack>

namespace {

constexpr char Targets[] = "/Lists/LocalTargetList";
constexpr char Memory[] = "/Lists/MemoryChannels";
constexpr char Noi[] = "/Lists/NOIFrequencies";

constexpr char Chirp[] = "Location,Name,Frequency,Duplex,rToneFreq,Mode\n"
                         "0,Guard,121.500000,,88.5,AM\n1,Tower,118.100000,,88.5,AM\n";
constexpr char Unsure[] = "Call\tFreq\tRemarks\nTower\t118,100\tday only\nGuard\t121,500\t\n";

/// What an operator sees of the dialog, and does there.
class Shown {
public:
    explicit Shown(ForeignDialog& dialog) : m_dialog(dialog) {}

    QString Text(const char* name) const { return m_dialog.findChild<QLabel*>(name)->text(); }
    QPushButton& Ok() const { return *m_dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok); }
    QStringList Problems() const {
        const auto* list = m_dialog.findChild<QListWidget*>();
        QStringList texts;
        for (int row = 0; row < list->count(); ++row)
            texts << list->item(row)->text();
        return texts;
    }
    /// A row of the entries as they will be, its cells joined by "|".
    QString Entry(int row) const {
        const auto* table = qobject_cast<QTableWidget*>(m_dialog.findChild<QTabWidget*>()->widget(0));
        QStringList cells;
        for (int column = 0; row < table->rowCount() && column < table->columnCount(); ++column)
            cells << table->item(row, column)->text();
        return cells.join('|');
    }
    void Choose(const char* box, const QString& text) const {
        auto* combo = m_dialog.findChild<QComboBox*>(box);
        const int index = combo->findText(text);
        ASSERT_GE(index, 0) << text.toStdString();
        combo->setCurrentIndex(index);
        emit combo->activated(index);
    }
    void Check(const char* button) const { m_dialog.findChild<QAbstractButton*>(button)->click(); }

private:
    ForeignDialog& m_dialog;
};

class ForeignImports : public Windows {
protected:
    void SetUp() override {
        open({});
        ASSERT_TRUE(station->LoadFiles());
        station->SetAttended(true);
    }
    /// Does something that brings up the dialog, and works there; what `act` leaves open is cancelled.
    int imported(const std::function<void()>& cause, const std::function<void(const Shown&)>& act) {
        int shown = 0;
        WhenOpen<ForeignDialog>([&](ForeignDialog& dialog) {
            ++shown;
            act(Shown(dialog));
            if (dialog.isVisible())
                dialog.reject();
        });
        cause();
        EXPECT_EQ(shown, 1);
        return shown;
    }
    void openFile(const QString& path, const std::function<void(const Shown&)>& act) {
        imported([&] { station->GetOpener().Open(path); }, act);
    }
    void paste(const QString& text, const std::function<void(const Shown&)>& act) {
        QGuiApplication::clipboard()->setText(text);
        ASSERT_TRUE(Until([&] { return action(A::PasteText)->isEnabled(); }));
        imported([&] { action(A::PasteText)->trigger(); }, act);
    }
    static void accept(const Shown& shown) {
        ASSERT_TRUE(shown.Ok().isEnabled()) << shown.Text("WhyOff").toStdString();
        shown.Ok().click();
    }
    static void undo() { UndoHistory::Instance().Stack().undo(); }
};

struct SampleRow {
    const char* file;
    int entries;
    const char* first;
    const char* account; ///< a part of it
};

void PrintTo(const SampleRow& row, std::ostream* out) {
    *out << row.file;
}

class ForeignSamples : public ForeignImports, public testing::WithParamInterface<SampleRow> {
protected:
    static void acceptSample(const Shown& shown) {
        if (!shown.Ok().isEnabled())
            shown.Choose("Unit-frequency", "MHz");
        EXPECT_EQ(shown.Entry(0), QString::fromUtf8(GetParam().first));
        EXPECT_TRUE(shown.Text("Account").contains(QString::fromUtf8(GetParam().account)))
            << shown.Text("Account").toStdString();
        accept(shown);
    }
};

TEST_P(ForeignSamples, AreOpenedAndPasted) {
    const QString path = sample("interchange/") + GetParam().file;
    openFile(path, acceptSample);
    EXPECT_EQ(entriesOf(Targets), GetParam().entries);
    undo();
    EXPECT_EQ(entriesOf(Targets), 0) << "one step takes it back";
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    paste(QString::fromUtf8(file.readAll()), acceptSample);
    EXPECT_EQ(entriesOf(Targets), GetParam().entries);
}

#define SAQ "|SAQ Grimeton, Alexanderson-maskinen, alternatordagen"
constexpr char Saq[] = "17.200 kHz|0.200 kHz|CW" SAQ;
INSTANTIATE_TEST_SUITE_P(
    Files, ForeignSamples,
    testing::Values(
        SampleRow{"chirp.csv", 527, "17.200 kHz|0.250 kHz|CW" SAQ, "bandwidths from the mode"},
        SampleRow{"chirp-awkward.csv", 2, "145.600000 MHz|16.000 kHz|FM|DB0XY, \"hill\" | north",
                  "1 line refused"},
        SampleRow{"fldigi-frequencies2.txt", 527, "17.200 kHz|0.500 kHz|CW" SAQ, "bandwidths from the mode"},
        SampleRow{"gqrx-bandplan.csv", 2, "1905.000 kHz|190.000 kHz|LSB|160 m", "Color (2)"},
        SampleRow{"gqrx-bookmarks.csv", 527, Saq, "527 entries"},
        SampleRow{"kiwi.csv", 527, Saq, "PB high (527)"},
        SampleRow{"kiwi-dx.json", 527, Saq, "PB high (527)"},
        SampleRow{"sdrangel-scanner.csv", 527, "17.200 kHz|0.200 kHz|" SAQ, "527 entries"},
        SampleRow{"sdrangel-annotations.csv", 1, "97.750000 MHz|20500.000 kHz||Broadcast, FM", "colours (1)"},
        SampleRow{"sdrpp-frequency_manager_config.json", 527, Saq, "527 entries"},
        SampleRow{"sdrpp-old.json", 2, "121.500000 MHz|10.000 kHz|AM|Guard", "unknown modes (1)"},
        SampleRow{"sdrsharp-frequencies.xml", 527, Saq, "527 entries"},
        SampleRow{"scanner-table.tsv", 2, "118.100000 MHz|||Tower | day only", "2 entries"}));

TEST_F(ForeignImports, AScheduleIsCutToWhatIsOnAir) {
    openFile(sample("interchange/eibi-sked.csv"), [](const Shown& shown) {
        EXPECT_TRUE(shown.Text("What") == "eibi-sked.csv: EiBi schedule");
        const QString all = shown.Text("Account");
        shown.Check("OnAir");
        EXPECT_NE(shown.Text("Account"), all) << "no time of the day has all three of them on air";
        shown.Check("OnAir");
        EXPECT_EQ(shown.Text("Account"), all);
    });
}

TEST_F(ForeignImports, MegahertzOfAnotherProgramAreMegahertzInEveryList) {
    const QString path = Write("radio.csv", Chirp);
    for (const char* name : {"Local TargetList", "Memory Channels", "NOI Frequencies"}) {
        SCOPED_TRACE(name);
        SortListView* list = show(name);
        ASSERT_TRUE(list);
        openFile(path, [&](const Shown& shown) {
            EXPECT_EQ(shown.Entry(0), "121.500000 MHz|9.000 kHz|AM|Guard");
            accept(shown);
        });
        ASSERT_TRUE(Until([&] { return list->ShownCount() == 2; }));
        bool isShown = false;
        for (int column = 0; column < list->columnCount(); ++column)
            isShown = isShown || list->topLevelItem(0)->text(column) == "121.500000 MHz";
        EXPECT_TRUE(isShown);
    }
}

TEST_F(ForeignImports, AUnitIsNeverGuessedButRememberedOnceItWasChosen) {
    const QString path = Write("list.tsv", Unsure);
    openFile(path, [](const Shown& shown) {
        EXPECT_FALSE(shown.Ok().isEnabled());
        EXPECT_EQ(shown.Text("WhyOff"), "Choose the unit of the frequencies.");
        EXPECT_EQ(shown.Entry(0), "") << "nothing is shown in a unit that nobody named";
        shown.Choose("Unit-frequency", "kHz");
        EXPECT_EQ(shown.Entry(0), "118.100 kHz|||Tower | day only");
        shown.Choose("Unit-frequency", "MHz");
        EXPECT_EQ(shown.Entry(0), "118.100000 MHz|||Tower | day only");
        shown.Choose("Column-notes", "None");
        EXPECT_EQ(shown.Entry(0), "118.100000 MHz|||Tower");
        accept(shown);
    });
    EXPECT_EQ(entriesOf(Targets), 2);
    openFile(path, [](const Shown& shown) {
        EXPECT_EQ(shown.Text("TableNote"), "As a table with these headings was read the last time.");
        EXPECT_EQ(shown.Entry(1), "121.500000 MHz|||Guard");
        EXPECT_TRUE(shown.Ok().isEnabled());
    });
    // Other headings are another table.
    openFile(Write("other.tsv", QByteArray(Unsure).replace("Call", "Name")),
             [](const Shown& shown) { EXPECT_FALSE(shown.Ok().isEnabled()); });
}

TEST_F(ForeignImports, CommasBetweenThousandsAreSaidOnce) {
    const QString path = Write("list.tsv", "Freq kHz\tName\n7,055\tNet\n14,100\tDX\n");
    openFile(path, [](const Shown& shown) {
        EXPECT_EQ(shown.Text("WhyOff"), "Choose the unit of the frequencies.");
        shown.Choose("Decimal", "Point, commas in thousands (7,055.5)");
        EXPECT_EQ(shown.Entry(0), "7055.000 kHz|||Net") << "the heading tells the unit then";
        accept(shown);
    });
    openFile(path, [](const Shown& shown) { EXPECT_EQ(shown.Entry(1), "14100.000 kHz|||DX"); });
}

TEST_F(ForeignImports, ATableIsReadAsTheOperatorCorrectsIt) {
    openFile(Write("list.csv", "Frequency,Name\n118.1;\xD2\xE0\n7055;b\n"), [](const Shown& shown) {
        EXPECT_FALSE(shown.Ok().isEnabled());
        shown.Choose("Separator", "Semicolon");
        shown.Check("Headings");
        shown.Choose("Column-frequency", "Column 1");
        shown.Choose("Unit-frequency", "MHz");
        shown.Choose("Column-name", "Column 2");
        shown.Choose("Encoding", "Windows-1251");
        EXPECT_EQ(shown.Entry(0), QString::fromUtf8("118.100000 MHz|||\u0422\u0430"));
        EXPECT_EQ(shown.Problems(), QStringList("Line 1: \"Frequency,Name\" is no frequency"));
    });
}

TEST_F(ForeignImports, ATableOfOursIsReadInHertzAndNoOtherIs) {
    EXPECT_EQ(FileKindOf(Write("own.csv", "Frequency,Bandwidth,Comment\n7055000,2700,a\n")),
              FileKind::Targets);
    EXPECT_EQ(FileKindOf(Write("small.csv", "Frequency,Comment\n121.5,a\n")), FileKind::Table);
    EXPECT_EQ(FileKindOf(Write("kilo.csv", "Frequency,Call\n118100,a\n")), FileKind::Table);
    EXPECT_EQ(FileKindOf(Write("kilo.ltl", "118100\t9000\ta\tAM\tg\tred\t3\n")), FileKind::Targets);
    EXPECT_EQ(FileKindOf(Write("prose.txt", "remember\nthe milk\n")), FileKind::Targets);
    EXPECT_EQ(FileKindOf(Write("other.json", "{\"a\":1,\n\"b\":2}\n")), FileKind::Targets);
}

struct BadRow {
    const char* name;
    std::string bytes;
    const char* reason;
};

TEST_F(ForeignImports, BadFilesAreToldAndTheListsStay) {
    ASSERT_TRUE(station->GetOpener().Open(sample("targets.ltl")));
    const std::string mixed = std::string("{\"bookmarks\":{\"A\":{\"frequency\":7e6}}}\n") + Chirp;
    const BadRow rows[] = {
        {"half.json", "{\"bookmarks\":{\"A\":{\"frequency\":7e6}", "Line 1: the JSON text is cut"},
        {"deep.json", "{\"bookmarks\":\n" + std::string(10000, '['), "Line 2: is nested deeper than 64"},
        {"half.xml", "<ArrayOfMemoryEntry>\n<MemoryEntry><Name>A", "Line 2: "},
        {"half.csv", "Location,Name,Frequency,Duplex\n1,\"a", "Line 2: a quoted cell does not end"},
        {"mixed.json", mixed, "Line 2: "},
        {"none.csv", "Location,Name,Frequency,Duplex,rToneFreq\n1,a,zero,,\n", "There is no entry in it."},
    };
    for (const BadRow& row : rows) {
        SCOPED_TRACE(row.name);
        openFile(Write(row.name, QByteArray::fromStdString(row.bytes)), [&row](const Shown& shown) {
            EXPECT_TRUE(shown.Text("WhyOff").contains(row.reason)) << shown.Text("WhyOff").toStdString();
            EXPECT_FALSE(shown.Ok().isEnabled());
        });
        EXPECT_EQ(entriesOf(Targets), 527);
    }
}

TEST_F(ForeignImports, WhatIsInAFileIsReplacedAndTheListIsUnsavedThen) {
    ASSERT_TRUE(station->GetOpener().Open(sample("targets.ltl")));
    openFile(Write("radio.csv", Chirp), [](const Shown& shown) {
        EXPECT_EQ(shown.Ok().text(), "Replace");
        accept(shown);
    });
    EXPECT_EQ(entriesOf(Targets), 2);
    EXPECT_EQ(title(), "Local TargetList*") << "no file of the list's own has them";
    undo();
    EXPECT_EQ(entriesOf(Targets), 527);
    EXPECT_TRUE(title().startsWith("Local TargetList - targets.ltl")) << title().toStdString();
}

TEST_F(ForeignImports, WhatIsInNoFileIsKeptAndComparedWith) {
    const QString path = Write("radio.csv", Chirp);
    openFile(path, accept);
    openFile(path, [](const Shown& shown) {
        EXPECT_EQ(shown.Ok().text(), "Compare and Add...");
        WhenOpen<MergeDialog>([](MergeDialog& dialog) {
            EXPECT_TRUE(dialog.findChild<QDialogButtonBox*>()
                            ->button(QDialogButtonBox::Ok)
                            ->text()
                            .startsWith("Add 0, Change 0, Leave 2"));
            dialog.reject();
        });
        accept(shown);
    });
    EXPECT_EQ(entriesOf(Targets), 2);
}

TEST_F(ForeignImports, ExtraFieldsAreCountedAndKeptWhenAskedFor) {
    openFile(Write("radio.csv", QByteArray(Chirp).replace("Guard,121.500000,,88.5", "Guard,121.5,-,100.0")),
             [](const Shown& shown) {
                 EXPECT_TRUE(shown.Text("Account").contains("Duplex (1)"))
                     << shown.Text("Account").toStdString();
                 shown.Check("KeepExtras");
                 EXPECT_TRUE(shown.Entry(0).contains("Guard {Duplex=-")) << shown.Entry(0).toStdString();
             });
}

TEST_F(ForeignImports, NothingGoesIntoChannelsThatAreScanned) {
    show("Memory Channels");
    MemorySystemHandler::Instance()->SetInScanSurveillance(true);
    openFile(Write("radio.csv", Chirp), [](const Shown& shown) {
        EXPECT_EQ(shown.Text("WhyOff"), "No file is used while a scan surveillance runs.");
        EXPECT_FALSE(shown.Ok().isEnabled());
        shown.Choose("List", "NOI Frequencies");
        accept(shown);
    });
    MemorySystemHandler::Instance()->SetInScanSurveillance(false);
    EXPECT_EQ(entriesOf(Memory), 0);
    EXPECT_EQ(entriesOf(Noi), 2);
    EXPECT_TRUE(tabText().startsWith("NOI Frequencies")) << "the list that has them is shown";
}

TEST_F(ForeignImports, AListsOwnDialogOffersToImportThem) {
    const QString path = Write("radio.csv", Chirp);
    QString asked;
    imported(
        [&] {
            AnswerDialog(path);
            AnswerQuestion(QMessageBox::Yes, asked);
            window().BarOf(window().ShownList())->GetAction(Bar::Read)->trigger();
            EXPECT_TRUE(Until([&] { return entriesOf(Targets) == 2; }));
        },
        accept);
    EXPECT_TRUE(asked.contains("radio.csv is CHIRP CSV, which Local TargetList does not read"))
        << asked.toStdString();
}

TEST_F(ForeignImports, DroppingRecentFilesImportIntoListAndPasteTakeThemToo) {
    const QString path = Write("radio.csv", Chirp);
    imported([&] { emit window().findChild<FileDrop*>()->Dropped({path}); }, accept);
    EXPECT_EQ(entriesOf(Targets), 2);
    emit window().GetRecentMenu()->aboutToShow();
    ASSERT_FALSE(window().GetRecentMenu()->isEmpty());
    QAction* recent = window().GetRecentMenu()->actions().front();
    EXPECT_TRUE(recent->text().endsWith("radio.csv"));
    imported([&] { recent->trigger(); }, [](const Shown&) {});
    show("NOI Frequencies");
    ASSERT_TRUE(Until([&] { return action(A::Merge)->isEnabled(); }));
    imported(
        [&] {
            AnswerDialog(path);
            action(A::Merge)->trigger();
        },
        accept);
    EXPECT_EQ(entriesOf(Noi), 2);
    QGuiApplication::clipboard()->setText(QString::fromLatin1(Chirp).replace("121.5", "7.05"));
    ASSERT_TRUE(Until([&] { return action(A::Paste)->isEnabled(); }));
    QToolButton* button = nullptr;
    for (QToolButton* each : window().BarOf(window().ShownList())->findChildren<QToolButton*>())
        button = each->defaultAction() == action(A::Paste) ? each : button;
    ASSERT_TRUE(button && button->isVisible());
    imported([&] { QTest::mouseClick(button, Qt::LeftButton); },
             [](const Shown& shown) {
                 EXPECT_EQ(shown.Ok().text(), "Compare and Add...");
                 WhenOpen<MergeDialog>([](MergeDialog& dialog) { dialog.accept(); });
                 accept(shown);
             });
    EXPECT_EQ(entriesOf(Noi), 3) << "the other one is there";
}

TEST_F(ForeignImports, ADamagedProfileIsNone) {
    const QString path = Write("list.tsv", Unsure);
    openFile(path, [](const Shown& shown) {
        shown.Choose("Unit-frequency", "MHz");
        accept(shown);
    });
    const QString good = ListSettings::LoadText("Import/Tables");
    for (const char* columns : {"x", "99:1,1:1,2:1", "1:1e6", ""}) {
        ListSettings::SaveText("Import/Tables", good.section('|', 0, 4) + '|' + QString::fromLatin1(columns));
        openFile(path, [](const Shown& shown) { EXPECT_FALSE(shown.Ok().isEnabled()); });
    }
}

TEST_F(ForeignImports, OwnRowsArePastedWithoutAQuestion) {
    QGuiApplication::clipboard()->setText("Frequency\tComment\n7055.000 kHz\ta\n121.500000 MHz\tb\n");
    ASSERT_TRUE(Until([&] { return action(A::PasteText)->isEnabled(); }));
    action(A::PasteText)->trigger();
    EXPECT_EQ(entriesOf(Targets), 2);
    paste("Call\tQRG\nTower\t118,1\n",
          [](const Shown& shown) { EXPECT_EQ(shown.Text("WhyOff"), "Choose the unit of the frequencies."); });
}

TEST_F(ForeignImports, WithNobodyThereWhatIsSureIsReadAndTheRestRefused) {
    open({Write("radio.csv", QByteArray(Chirp) + "2,x,\"121,5\",,,AM\n"), Write("list.tsv", Unsure)});
    EXPECT_FALSE(station->LoadFiles());
    EXPECT_EQ(entriesOf(Targets), 2);
    EXPECT_TRUE(messages().contains("radio.csv:4: \"121,5\" is no frequency")) << messages().toStdString();
    EXPECT_TRUE(messages().contains("radio.csv (CHIRP CSV): 2 entries; 1 line refused"))
        << messages().toStdString();
    EXPECT_TRUE(messages().contains("list.tsv: is a table of another program, and nothing tells the unit"))
        << messages().toStdString();
}

} // namespace
