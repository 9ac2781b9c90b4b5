#include "controls/frequencystore/common/sendto.h"
#include "host/freqstorexml/csvoptions.h"
#include "host/gui/celldelegate.h"
#include "host/gui/colorset.h"
#include "host/gui/sortlistview.h"
#include "host/widgets/frequencyfield.h"
#include "receiver/receiver.h"
#include "tests/support/dialogs.h"
#include "tests/workstation/stationfixture.h"
#include "workstation/actions.h"
#include "workstation/frequencybar.h"
#include "workstation/keystable.h"
#include "workstation/look.h"
#include "workstation/preferencesdialog.h"
#include "workstation/tuningstrip.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QKeySequenceEdit>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTest>
#include <QTreeWidget>

#include <cmath>
#include <gmock/gmock.h>

namespace {

using P = Preferences;

class PreferencesTest : public Workstations {
protected:
    MainWindow& window() { return station->GetWindow(); }
    /// Changes something in the dialog and presses OK.
    void prefer(const std::function<void(PreferencesDialog&)>& change) {
        WhenOpen<PreferencesDialog>([change](PreferencesDialog& dialog) {
            change(dialog);
            dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
            if (dialog.isVisible())
                dialog.reject();
        });
        window().findChild<QAction*>("preferences")->trigger();
    }
    static void choose(PreferencesDialog& dialog, P::Id id, const char* value) {
        QComboBox* field = dialog.GetField(id);
        field->setCurrentIndex(field->findData(QString::fromLatin1(value)));
    }
    double typed(const char* text) {
        FrequencyField* field = window().GetStrip()->GetField();
        field->selectAll();
        QTest::keyClicks(field, text);
        QTest::keyClick(field, Qt::Key_Return);
        return station->GetReceiver().GetFrequency();
    }
    QString shownFrequency() {
        auto* list = window().GetTabs()->widget(0)->findChild<SortListView*>();
        struct Painted : CellDelegate { // what the list paints
            using CellDelegate::initStyleOption;
        };
        QStyleOptionViewItem cell;
        list->ScrollToRow(list->RowCount() - 1);
        (list->Cells().*&Painted::initStyleOption)(&cell,
                                                   list->model()->index(list->model()->rowCount() - 1, 0));
        return cell.text;
    }
};

TEST_F(PreferencesTest, HoldAtOnceAndTheNextTime) {
    start({sample("targets.ltl")});
    ASSERT_TRUE(station->LoadFiles());
    const int points = QApplication::font().pointSize();
    ASSERT_EQ(typed("7060"), 7060000) << "in the unit that the field shows";
    prefer([](PreferencesDialog& dialog) {
        choose(dialog, P::UnitHF, "MHz");
        choose(dialog, P::ListUnit, "kHz");
        choose(dialog, P::GroupThousands, "true");
        choose(dialog, P::Theme, "dark");
        choose(dialog, P::FontSize, "14");
        choose(dialog, P::BandPlanRegion, "2");
        choose(dialog, P::SpreadsheetSafe, "false");
        dialog.findChild<QDoubleSpinBox*>("Tolerance")->setValue(1200);
    });
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(typed("7.055"), 7055000);
        EXPECT_TRUE(ColorSet::IsDark());
        EXPECT_EQ(QApplication::font().pointSize(), 14);
        EXPECT_EQ(window().GetBar()->GetRegion(), 2);
        EXPECT_FALSE(FreqStoreXml::CsvOptions::IsSpreadsheetSafe());
        EXPECT_EQ(SendTo::Tolerance(), 1200);
        EXPECT_THAT(shownFrequency().toStdString(), testing::EndsWith(" kHz"));
        EXPECT_TRUE(shownFrequency().contains(QChar::Nbsp)) << shownFrequency().toStdString();
        start({sample("targets.ltl")});
        ASSERT_TRUE(station->LoadFiles());
    }
    prefer([](PreferencesDialog& dialog) { choose(dialog, P::Theme, "light"); });
    EXPECT_FALSE(ColorSet::IsDark());
    station.reset();
    EXPECT_EQ(QApplication::font().pointSize(), points) << "the look ends with the window";
}

/// How much light a colour gives, from 0 to 1, as accessibility reckons it (WCAG 2.1).
double luminanceOf(QRgb color) {
    const auto part = [](int byte) {
        const double value = byte / 255.0;
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(qRed(color)) + 0.7152 * part(qGreen(color)) + 0.0722 * part(qBlue(color));
}

TEST_F(PreferencesTest, EdgesOfEmptyBoxesAreSeenOnDarkGround) {
    Look look;
    look.SetTheme(Look::Theme::Dark);
    QCheckBox check;
    QRadioButton radio;
    for (QAbstractButton* const button :
         {static_cast<QAbstractButton*>(&check), static_cast<QAbstractButton*>(&radio)}) {
        button->resize(button->sizeHint());
        const QImage image = button->grab().toImage();
        double brightest = 0;
        for (int x = 0; x < image.width(); ++x)
            brightest = std::max(brightest, luminanceOf(image.pixel(x, image.height() / 2)));
        const double ground = luminanceOf(button->palette().color(QPalette::Window).rgb());
        EXPECT_GE((brightest + 0.05) / (ground + 0.05), 3);
    }
}

TEST_F(PreferencesTest, WhatIsWrongInTheSettingsIsToldAndTheDefaultHolds) {
    QDir(m_folder.path()).mkpath("config");
    Write("config/Application.ini", "Theme=purple\nUnitHF=furlong\nDataDirectory=/no/such/folder\n"
                                    "[Keys]\nOpen=Nonsense+Q\nCopy=Ctrl+O\n");
    start({});
    const QString told = messages();
    for (const char* text : {"Application.ini: Theme is one of desktop, light, dark, not \"purple\"",
                             "UnitHF is one of kHz, MHz", "Keys/Open: \"Nonsense+Q\" is no key",
                             "Keys/Copy: \"Ctrl+O\" belongs to Open"})
        EXPECT_TRUE(told.contains(text)) << text << " is not in\n" << told.toStdString();
    EXPECT_FALSE(told.contains("/no/such/folder")) << "the command line outranks it";
    EXPECT_EQ(window().GetActions().Get(WindowActions::Open)->shortcut(), QKeySequence("Ctrl+O"));
    EXPECT_EQ(window().GetActions().Get(WindowActions::Copy)->shortcut(), QKeySequence("Ctrl+C"));
}

TEST_F(PreferencesTest, ADataFolderIsTakenAtTheNextStart) {
    start({});
    QDir().mkpath(Path("other"));
    prefer([this](PreferencesDialog& dialog) {
        auto* folder = dialog.findChild<QLineEdit*>("DataFolder");
        auto* ok = dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
        folder->setText(Path("missing"));
        EXPECT_FALSE(ok->isEnabled());
        folder->setText(Path("other"));
        EXPECT_TRUE(ok->isEnabled());
    });
    EXPECT_EQ(QDir::current(), QDir(Path("data")));
    station.reset();
    QString error;
    station = std::make_unique<Workstation>(Options::Parse({"freqstore", "--config", Path("config")}, error));
    EXPECT_EQ(QDir::current(), QDir(Path("other")));
}

/// Picks the row of a command in the table of keys.
void pick(PreferencesDialog& dialog, const char* command) {
    auto* table = dialog.findChild<QTreeWidget*>("Keys");
    const auto rows = table->findItems(QString::fromLatin1(command), Qt::MatchExactly);
    ASSERT_EQ(rows.size(), 1) << command;
    table->setCurrentItem(rows.first());
}

QPushButton* button(PreferencesDialog& dialog, const char* text) {
    for (QPushButton* candidate : dialog.findChildren<QPushButton*>()) {
        if (candidate->text() == QLatin1String(text))
            return candidate;
    }
    return nullptr;
}

TEST_F(PreferencesTest, KeysAreChangedAndConflictsTold) {
    start({});
    QAction* fit = window().findChild<QAction*>("fit");
    prefer([](PreferencesDialog& dialog) {
        pick(dialog, "View > Show all frequencies");
        auto* edit = dialog.findChild<QKeySequenceEdit*>();
        auto* conflict = dialog.findChild<QLabel*>("KeyConflict");
        edit->setKeySequence(QKeySequence("Ctrl+O"));
        EXPECT_EQ(conflict->text(), "Ctrl+O belongs to Open; take it from there first.");
        EXPECT_FALSE(button(dialog, "Se&t")->isEnabled());
        edit->setKeySequence(QKeySequence("F3"));
        EXPECT_FALSE(conflict->text().isEmpty()) << "a key that is in no menu";
        edit->setKeySequence(QKeySequence("F12"));
        button(dialog, "Se&t")->click();
        pick(dialog, "Receiver > Step up");
        button(dialog, "&None")->click();
    });
    for (int round = 0; round < 2; ++round) {
        fit = window().findChild<QAction*>("fit");
        EXPECT_EQ(fit->shortcut(), QKeySequence("F12"));
        EXPECT_TRUE(window().findChild<QAction*>("step-up")->shortcuts().isEmpty());
        start({});
    }
    prefer([](PreferencesDialog& dialog) { button(dialog, "&Reset All")->click(); });
    EXPECT_EQ(window().findChild<QAction*>("fit")->shortcut(), QKeySequence("Ctrl+0"));
    EXPECT_EQ(window().findChild<QAction*>("step-up")->shortcut(), QKeySequence("Alt+Right"));
    start({});
    EXPECT_EQ(window().findChild<QAction*>("fit")->shortcut(), QKeySequence("Ctrl+0"));
}

TEST_F(PreferencesTest, EachCommandOfTheMenusThatHasAKeyIsInTheTable) {
    start({});
    QStringList unnamed;
    for (const QAction* menu : window().menuBar()->actions()) {
        for (const QAction* action : menu->menu()->actions()) {
            if (!action->shortcut().isEmpty() && action->objectName().isEmpty())
                unnamed << action->text();
        }
    }
    EXPECT_EQ(unnamed, QStringList());
}

} // namespace
