#include "workstation/language.h"

#include "host/gui/sortlistview.h"
#include "host/startup/cfgcenter.h"
#include "tests/workstation/stationfixture.h"

#include <QDockWidget>
#include <QFile>
#include <QLibraryInfo>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QTabWidget>

#include <gmock/gmock.h>

namespace {

/// Stands behind all other translators and notes what none of them knows.
class Missed : public QTranslator {
public:
    Missed() { QCoreApplication::installTranslator(this); }
    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* text, const char*, int) const override {
        if (*context != 'Q')
            m_texts << QStringLiteral("%1: %2").arg(context, text);
        return QString();
    }
    QString Texts() const { return m_texts.join('\n'); }

private:
    mutable QStringList m_texts;
};

class Languages : public Workstations {
protected:
    MainWindow& window() const { return station->GetWindow(); }
    /// The titles of the first and of the last menu.
    QStringList menus() const {
        const QList<QAction*> actions = window().menuBar()->actions();
        return {actions.first()->text(), actions.last()->text()};
    }
    void writeSetting(const QByteArray& code) {
        QDir(m_folder.path()).mkpath("config");
        Write("config/Application.ini", "[General]\nLanguage=" + code + "\n");
    }
    const QStringList english{"&File", "&Help"};
    const QStringList german{"&Datei", "&Hilfe"};
};

TEST(Language, OfTheDesktopIsTheFirstThatIsKnown) {
    EXPECT_EQ(Language::Known(), (QStringList{"de", "en"}));
    EXPECT_EQ(Language::FirstKnown({"de-AT", "en"}), "de");
    EXPECT_EQ(Language::FirstKnown({"fr-FR", "fr", "de"}), "de");
    EXPECT_EQ(Language::FirstKnown({"en-US", "de"}), "en");
    EXPECT_EQ(Language::FirstKnown({"C"}), "en");
}

TEST_F(Languages, TheCommandLineOutranksTheSettingAndThatTheDesktop) {
    writeSetting("de");
    start({});
    EXPECT_EQ(menus(), german);
    start({"--language", "en"});
    EXPECT_EQ(menus(), english);
    writeSetting("");
    start({"--language", "de"});
    EXPECT_EQ(menus(), german);
    start({});
    EXPECT_EQ(menus(), english) << "the desktop's";
}

TEST_F(Languages, ASettingThatIsNoneIsTold) {
    writeSetting("xx");
    start({});
    EXPECT_EQ(menus(), english);
    EXPECT_TRUE(messages().contains("Application.ini: Language is one of de, en, not \"xx\""))
        << messages().toStdString();
}

TEST_F(Languages, AGermanWindowIsGermanThroughout) {
    const Missed missed;
    for (const char* receiver : {"hf", "vuhf"}) {
        start({"--language", "de", "--demo", "--receiver", receiver});
        station->LoadFiles();
        EXPECT_EQ(missed.Texts(), QString());
    }
    QStringList panels;
    for (const QDockWidget* dock : window().findChildren<QDockWidget*>())
        panels << dock->windowTitle();
    EXPECT_THAT(panels, testing::IsSupersetOf({"Meldungen", "Empfänger", "NOI-Bänder", "Auftrag"}));
    const auto* targets = window().GetTabs()->widget(0)->findChild<SortListView*>();
    ASSERT_TRUE(targets);
    QStringList titles;
    for (int column = 0; column < targets->columnCount(); ++column)
        titles << targets->headerItem()->text(column);
    EXPECT_EQ(titles.join(' '), "Frequenz Name Bandbreite Demodulation Priorität Bedrohungsklasse "
                                "Signalklasse Übertragungsverfahren");
}

TEST_F(Languages, QtsOwnTextsFollowWhereTheyAreInstalled) {
    if (!QFile::exists(QLibraryInfo::path(QLibraryInfo::TranslationsPath) + "/qtbase_de.qm"))
        GTEST_SKIP() << "there are none";
    start({"--language", "de"});
    EXPECT_EQ(
        QMessageBox(QMessageBox::NoIcon, {}, {}, QMessageBox::Cancel).button(QMessageBox::Cancel)->text(),
        "Abbrechen");
}

TEST_F(Languages, NoTwoEntriesOfAMenuShareAKeyAndEachPanelHasOne) {
    for (const char* language : {"en", "de"}) {
        SCOPED_TRACE(language);
        start({"--language", language});
        const QList<QMenu*> all = window().menuBar()->findChildren<QMenu*>();
        ASSERT_FALSE(all.isEmpty());
        QList<QList<QAction*>> groups{window().menuBar()->actions()};
        for (const QMenu* menu : all)
            groups << menu->actions();
        for (const auto& actions : groups) {
            QStringList keys;
            for (const QAction* action : actions) {
                const QString key = QKeySequence::mnemonic(action->text()).toString();
                EXPECT_FALSE(!key.isEmpty() && keys.contains(key)) << action->text().toStdString();
                keys << key;
            }
        }
        for (const QDockWidget* panel : window().findChildren<QDockWidget*>())
            EXPECT_TRUE(panel->toggleViewAction()->text().contains('&')) << panel->objectName().toStdString();
    }
}

TEST_F(Languages, ReasonsOfReadersAreInTheLanguageOfTheWindow) {
    for (const auto& [language, reason] :
         {std::pair{"en", "\"x\" is no frequency; 0 is taken"},
          std::pair{"de", "\"x\" ist als Frequenz nicht lesbar; 0 wird genommen"}}) {
        start({"--language", language, Write("words.ltl", "7000000\t3000\tgood\nx\t3000\tbad\n")});
        EXPECT_FALSE(station->LoadFiles());
        EXPECT_TRUE(messages().contains(QString::fromUtf8(reason))) << messages().toStdString();
    }
}

TEST_F(Languages, TheArrangementOfPanelsIsThatOfAnyLanguage) {
    QStringList names[2];
    for (const size_t index : {0U, 1U}) {
        start({"--language", index == 0 ? "en" : "de"});
        for (const QDockWidget* dock : window().findChildren<QDockWidget*>())
            names[index] << dock->objectName();
    }
    EXPECT_EQ(names[0], names[1]);
}

} // namespace
