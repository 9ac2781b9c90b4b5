#include "host/freqlist/emptylist.h"
#include "host/gui/colorset.h"
#include "host/gui/sortlistview.h"
#include "host/widgets/frequencyfield.h"
#include "tests/support/dialogs.h"
#include "tests/workstation/stationfixture.h"
#include "workstation/about.h"
#include "workstation/fileopener.h"
#include "workstation/guidepictures.h"
#include "workstation/helpwindow.h"
#include "workstation/icons.h"
#include "workstation/look.h"
#include "workstation/tuningstrip.h"
#include "workstation/welcome.h"

#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QTabWidget>
#include <QTest>
#include <QTextBrowser>
#include <QToolButton>
#include <QTreeWidget>

#include <gmock/gmock.h>

namespace {

class Greetings : public Workstations {
protected:
    MainWindow& window() { return station->GetWindow(); }
    WelcomePage* page() { return window().findChild<WelcomePage*>(); }
    static void leave(WelcomePage* page, const char* button) {
        page->findChild<QPushButton*>(button)->click();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    SortListView* list(int tab) { return window().GetTabs()->widget(tab)->findChild<SortListView*>(); }
    void drop(const QList<QUrl>& urls) {
        QMimeData data;
        data.setUrls(urls);
        QDragEnterEvent enter(QPoint(20, 20), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
                              Qt::NoModifier);
        QCoreApplication::sendEvent(&window(), &enter); // whom the drop goes to
        EXPECT_TRUE(enter.isAccepted());
        QDropEvent event(QPointF(20, 20), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
                         Qt::NoModifier, QEvent::Drop);
        QCoreApplication::sendEvent(&window(), &event);
        EXPECT_TRUE(event.isAccepted());
        EXPECT_EQ(event.dropAction(), Qt::CopyAction);
        QCoreApplication::processEvents();
    }
};

TEST_F(Greetings, TheWelcomeIsShownOnceAndOpensTheSamples) {
    start({sample("targets.ltl")});
    station->WelcomeAtFirstStart();
    EXPECT_FALSE(page()) << "there is something to show";
    start({});
    station->WelcomeAtFirstStart();
    ASSERT_TRUE(page());
    EXPECT_TRUE(page()->isVisible());
    leave(page(), "open");
    EXPECT_FALSE(page());
    EXPECT_GT(list(0)->RowCount(), 0);
    start({});
    station->WelcomeAtFirstStart();
    EXPECT_FALSE(page());
    window().findChild<QAction*>("welcome")->trigger();
    ASSERT_TRUE(page()) << "it comes back when it is asked for";
    for (auto* box : page()->findChildren<QAbstractButton*>()) {
        if (box->isCheckable())
            box->click();
    }
    leave(page(), "receiver");
    EXPECT_EQ(window().focusWidget(), static_cast<QWidget*>(window().GetStrip()->GetField()));
    start({});
    station->WelcomeAtFirstStart();
    EXPECT_TRUE(page()) << "as it was wanted";
}

TEST_F(Greetings, DroppedFilesAreOpenedAndWhatIsRefusedIsTold) {
    start({});
    drop({QUrl::fromLocalFile(sample("targets.ltl")), QUrl::fromLocalFile(sample("interest.noi")),
          QUrl::fromLocalFile(m_folder.path()), QUrl("https://example.org/list.ltl"),
          QUrl::fromLocalFile(Write("notes.txt", "nothing of ours"))});
    EXPECT_GT(entriesOf("/Lists/LocalTargetList"), 0);
    EXPECT_GT(entriesOf("/Lists/NOIFrequencies"), 0);
    window().GetMessages()->Flush();
    const QString told = messages();
    EXPECT_TRUE(told.contains("is a folder")) << told.toStdString();
    EXPECT_TRUE(told.contains("https://example.org/list.ltl: is no file")) << told.toStdString();
    EXPECT_TRUE(told.contains("notes.txt")) << told.toStdString();
    EXPECT_TRUE(window().GetMessages()->isVisible());
}

TEST_F(Greetings, AnEmptyListSaysWhatFillsItAndOffersThat) {
    start({});
    window().GetTabs()->setCurrentIndex(2);
    auto* empty = list(2)->findChild<EmptyList*>();
    ASSERT_TRUE(empty);
    EXPECT_TRUE(empty->isVisible());
    EXPECT_TRUE(empty->findChild<QLabel*>()->text().startsWith("No frequencies of interest"));
    QStringList offered;
    for (const auto* button : empty->findChildren<QToolButton*>()) {
        if (button->isVisible())
            offered << button->defaultAction()->toolTip();
    }
    EXPECT_GE(offered.size(), 2) << offered.join('|').toStdString();
    station->GetOpener().Open(sample("interest.noi"));
    EXPECT_TRUE(Until([&] { return !empty->isVisible(); }));
    window().GetTabs()->setCurrentIndex(3);
    empty = list(3)->findChild<EmptyList*>();
    ASSERT_TRUE(empty);
    EXPECT_TRUE(empty->isVisible());
    for (const auto* button : empty->findChildren<QToolButton*>())
        EXPECT_FALSE(button->isVisible()) << "nothing but a search fills detections";
}

TEST_F(Greetings, EachHeadingSaysWhatItIs) {
    for (const char* receiver : {"hf", "vuhf"}) {
        start({"--receiver", receiver});
        QString tips;
        for (int tab = 0; tab < window().GetTabs()->count(); ++tab) {
            const QTreeWidgetItem* heading = list(tab)->headerItem();
            for (int column = 0; column < list(tab)->columnCount(); ++column) {
                EXPECT_TRUE(heading->toolTip(column).startsWith(heading->text(column)));
                tips += heading->toolTip(column) + '\n';
            }
        }
        EXPECT_TRUE(tips.contains(qstrcmp(receiver, "hf") == 0 ? "BFOFrequency: Beat frequency oscillator"
                                                               : "AFC: Automatic frequency control"))
            << tips.toStdString();
    }
}

TEST_F(Greetings, HelpOpensAtWhatHasTheFocusAndFindsWords) {
    start({"--language", "en"});
    window().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window(), Patience));
    window().GetStrip()->GetField()->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F1);
    auto* help = window().findChild<HelpWindow*>();
    ASSERT_TRUE(help);
    EXPECT_TRUE(help->isVisible());
    EXPECT_EQ(help->GetTopic(), "find");
    EXPECT_TRUE(help->GetText()->toPlainText().contains("airband tower"));
    help->GetFind()->setText("Recall");
    QTest::keyClick(help->GetFind(), Qt::Key_Return);
    EXPECT_EQ(help->GetText()->textCursor().selectedText(), "Recall");
    help->GetFind()->setText("no such words");
    EXPECT_FALSE(help->FindNext());
    emit help->GetText()->anchorClicked(QUrl("preferences.md"));
    EXPECT_EQ(help->GetTopic(), "preferences");
    for (int tab = 0; tab < window().GetTabs()->count(); ++tab)
        EXPECT_NE(HelpWindow::TopicOf(list(tab)), "start") << tab;
}

TEST_F(Greetings, EachLinkAndPictureOfTheGuideIsThere) {
    start({"--guide", Path("pictures")});
    ASSERT_TRUE(station->LoadFiles());
    ASSERT_TRUE(GuidePictures::Take(*station, Path("pictures")));
    static const QRegularExpression link(QStringLiteral("(!?)\\[[^]]*\\]\\(([^)]*)\\)"));
    QStringList shown;
    for (const char* language : {"en", "de"}) {
        for (const QString& topic : HelpWindow::Topics()) {
            const QString file = QStringLiteral(":/guide/%1/%2.md").arg(language, topic);
            ASSERT_TRUE(QFile::exists(file)) << file.toStdString();
            const QString text = HelpWindow::TextOf(topic, language);
            EXPECT_TRUE(text.startsWith("# ")) << file.toStdString();
            for (auto match = link.globalMatch(text); match.hasNext();) {
                const QRegularExpressionMatch found = match.next();
                const QString target = found.captured(2);
                if (found.captured(1).isEmpty())
                    EXPECT_TRUE(QFile::exists(QStringLiteral(":/guide/%1/%2").arg(language, target)))
                        << file.toStdString() << ": " << target.toStdString();
                else
                    shown << target;
            }
        }
    }
    shown.removeDuplicates();
    EXPECT_THAT(shown, testing::UnorderedElementsAreArray(GuidePictures::Names()));
    for (const QString& name : GuidePictures::Names())
        EXPECT_GT(QImage(Path("pictures/" + name)).width(), 200) << name.toStdString();
}

TEST_F(Greetings, AboutNamesLicenceAndLibraries) {
    AboutDialog about;
    EXPECT_TRUE(about.findChild<QPlainTextEdit*>("Licence")->toPlainText().contains("MIT License"));
    const auto* libraries = about.findChild<QTreeWidget*>("Libraries");
    EXPECT_EQ(libraries->topLevelItem(0)->text(1), qVersion());
    for (int row = 0; row < libraries->topLevelItemCount(); ++row) {
        for (int column = 0; column < libraries->columnCount(); ++column)
            EXPECT_NE(libraries->topLevelItem(row)->text(column), QString());
    }
}

TEST_F(Greetings, AListsIconStandsOnALightGroundInTheDark) {
    Look look;
    QPixmap darkBlue(14, 14);
    darkBlue.fill(Qt::transparent);
    const QIcon icon = Icons::Readable(darkBlue);
    const auto ground = [&] { return icon.pixmap(16, 16).toImage().pixelColor(8, 8); };
    look.SetTheme(Look::Theme::Light);
    EXPECT_EQ(ground().alpha(), 0);
    look.SetTheme(Look::Theme::Dark);
    EXPECT_GT(ground().lightness(), 180);
}

} // namespace
