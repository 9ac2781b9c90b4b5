#include "workstation/foreignexport.h"

#include "host/freqlist/frequencystorelistview.h"
#include "interchange/format.h"
#include "tests/support/dialogs.h"
#include "tests/workstation/windowfixture.h"
#include "workstation/simulatedclassifier.h"
#include "workstation/simulatedsearch.h"

#include <QTimer>

namespace {

class ForeignExports : public Windows {};

TEST_F(ForeignExports, EveryListLeavesInEveryFormatAndComesBack) {
    open({"--demo", "--receiver", "vuhf"}); // which has locations
    ASSERT_TRUE(station->LoadFiles());
    qint64 allPlaces = 0;
    station->GetSearch().SetRunning(false);
    station->GetClassifier().SetRunning(false);
    QTimer answers; // as some formats hold all of a list, and others ask
    QObject::connect(&answers, &QTimer::timeout, [] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()))
            box->button(QMessageBox::Yes)->click();
    });
    answers.start(0);
    for (int tab = 0; tab < window().GetTabs()->count(); ++tab) {
        window().GetTabs()->setCurrentIndex(tab);
        FrequencyStoreListView* view = window().ViewOf(window().ShownList());
        std::vector<double> frequencies;
        qint64 places = 0;
        const Interchange::Content content = view->Content();
        if (content.entries)
            content.entries([&](const FreqStoreXml::FrequencyStoreEntry& entry) {
                frequencies.push_back(entry.GetFFM_Settings().GetFrequency().GetValue());
            });
        else
            content.results([&](const FreqStoreXml::DetectionResult& result) {
                frequencies.push_back(result.GetFrequency().GetValue());
                places += result.HasLongitude() && result.GetLongitude() != 0 ? 1 : 0;
            });
        EXPECT_EQ(content.lost.empty(), window().TabName(tab) != "Memory Channels");
        ASSERT_FALSE(frequencies.empty()) << window().TabName(tab).toStdString();
        for (const Interchange::Format* format : Interchange::Formats()) {
            if (!format->makeEncoder)
                continue;
            SCOPED_TRACE(window().TabName(tab).toStdString() + " as " + format->id);
            const QString path = Path(QString::fromLatin1(format->id));
            ASSERT_TRUE(ForeignExport::Write(window(), *view, *format, path));
            if (!format->read) {
                const QByteArray name = QByteArray(format->id) == "kml" ? "<Placemark" : "\"Point\"";
                EXPECT_EQ(Read(QString::fromLatin1(format->id)).count(name), places);
                allPlaces += places;
                continue;
            }
            EXPECT_EQ(Interchange::FormatOfFile(path), format);
            Interchange::Account lost;
            Interchange::ToBytes(*format, view->Content(), &lost);
            const Interchange::Account back =
                Interchange::Read(*format, path, {}, [](const FreqStoreXml::FrequencyStoreEntry&) {});
            EXPECT_EQ(back.refused, 0);
            EXPECT_EQ(static_cast<size_t>(back.entries + lost.refused), frequencies.size());
        }
    }
    EXPECT_GT(allPlaces, 0);
}

TEST_F(ForeignExports, WhatIsLostIsShownBeforeAnythingIsWritten) {
    open({Write("mine.ltl", "121500000\t8330\tGuard\tAM\tg\tred\t3\n7055000.5\t2700\tb\tUSB\tg\tred\t3\n")});
    ASSERT_TRUE(station->LoadFiles());
    show("Local TargetList");
    ASSERT_TRUE(Until([&] { return action(A::ExportForeign)->isEnabled(); }));
    const auto exported = [&](QMessageBox::StandardButton answer) {
        AnswerDialog(Path("radio.csv"));
        QString told;
        WhenOpen<QMessageBox>([&, answer](QMessageBox& box) {
            told = box.informativeText();
            EXPECT_FALSE(QFileInfo::exists(Path("radio.csv")));
            box.button(answer)->click();
        });
        action(A::ExportForeign)->trigger();
        return told;
    };
    EXPECT_EQ(exported(QMessageBox::Cancel).toStdString(),
              "Lost or changed: bandwidths (1), fractions of a Hz (1), priorities (2), threat classes (2).");
    EXPECT_FALSE(QFileInfo::exists(Path("radio.csv")));
    exported(QMessageBox::Yes);
    EXPECT_TRUE(Read("radio.csv").contains("Guard,121.500000,")) << Read("radio.csv").toStdString();
    EXPECT_EQ(status(), "radio.csv (CHIRP CSV): 2 entries written");
}

TEST_F(ForeignExports, AnEmptyListSaysThatThereIsNothingToWrite) {
    open({});
    show("Local TargetList");
    ASSERT_TRUE(Until([&] { return !action(A::ExportForeign)->isEnabled(); }));
    EXPECT_TRUE(action(A::ExportForeign)->toolTip().contains("Local TargetList has no entries."));
}

} // namespace
