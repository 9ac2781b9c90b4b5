// The examples of the host's headers as they stand there, so that they compile and do what they say. The last
// test compares the texts.

#include "host/base/longwork.h"
#include "host/base/problems.h"
#include "host/base/trace.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodelistview.h"
#include "host/freqlist/frequencynodemediator.h"
#include "host/freqlist/frequencynodemediatorctrl.h"
#include "host/freqlist/listsaving.h"
#include "host/freqlist/undohistory.h"
#include "host/freqlist/vectorlistview.h"
#include "host/freqstorexml/filehandling.h"
#include "host/freqstorexml/liststreams.h"
#include "host/report/outputfile.h"
#include "host/startup/cfgcenter.h"
#include "host/valuetree/detection.h"
#include "host/valuetree/tree.h"
#include "host/valuetree/valueptr.h"
#include "host/valuetree/valueselection.h"
#include "host/widgets/boundwidget.h"
#include "tests/support/testfolder.h"
#include "tests/support/traces.h"

#include <QDirIterator>
#include <QLabel>
#include <QRegularExpression>
#include <QUndoStack>

#include <gtest/gtest.h>

namespace {

// observer.h
class ChangeCounter : public IObserver {
public:
    void Update(Observable*, TChangeCode code) override {
        changes += code == TChangeCode::ValueChanged ? 1 : 0;
    }
    int changes = 0;
};

// valueptr.h
class LevelMeter : public IObserver {
public:
    explicit LevelMeter(Value<int>* level) { m_level.Reset(level); }
    void Update(Observable* subject, TChangeCode code) override { m_level.ForgetIfRemoved(subject, code); }
    int Level() const { return m_level ? m_level->GetValue() : 0; }

private:
    ValueObservingPtr<Value<int>> m_level{this};
};

// boundwidget.h
class LevelLabel : public QLabel, private BoundWidget<Value<int>> {
public:
    void SetLevel(Value<int>* level) { bind(level); }

private:
    void showValue() override { setText(m_value ? m_value->GetStringValue() : QString()); }
};

// recordinfo.h
class Band final : public REPORTGENERATOR::IRGObject {
public:
    const REPORTGENERATOR::RecordInfo& GetRecordInfo() const override {
        using namespace REPORTGENERATOR;
        static constexpr MemberInfo Members[] = {
            {"Name", Placement::Attribute, MemberAt<&Band::name>},
            {"Begin", Placement::Element, MemberAt<&Band::hertz>},
        };
        static constexpr RecordInfo Info{"Band", Members, true};
        return Info;
    }

    QString name;
    double hertz = NoNumber;
};

// frequencynodemediator.h
class Bookmark : public FrequencyNodeMediator {
public:
    Bookmark(MediatorCtrl* controller, Observable* entry) : FrequencyNodeMediator(controller, entry, 0) {
        UpdateDependentValues();
    }
    QString ToString() override { return GetFrequencyString(0) + QLatin1Char('\t') + GetCommentString(0); }
};

// frequencynodemediatorctrl.h
class Bookmarks : public FrequencyNodeMediatorCtrl {
public:
    Bookmarks() : FrequencyNodeMediatorCtrl(42) { Init(QStringLiteral("/Bookmarks")); }

protected:
    Mediator* CreateMediator(Observable* entry) override { return new Bookmark(this, entry); }
};

// frequencynodelistview.h
class BookmarkView : public FrequencyNodeListView {
public:
    BookmarkView(QWidget* parent, unsigned listId) : FrequencyNodeListView(parent, listId) {
        AddColumn(QStringLiteral("Frequency"), _compNumericWithSuffix, FreqList::ColumnFrequency);
        AddColumn(QStringLiteral("Comment"), _compStandardString, FreqList::ColumnComment);
    }
};

// vectorlistview.h
class DetectionView : public VectorListView<DetectionConventional, DetectionConventionalAdapter> {
public:
    DetectionView(QWidget* parent, const QString& path) : VectorListView(parent, "DetectionView") {
        AddColumn(QStringLiteral("Frequency"), QStringLiteral("Frequency"), _compNumericWithSuffix);
        Set_ValuePath(path);
    }
};

/// The tree is empty after each of them.
class Examples : public testing::Test, protected TestFolder {
protected:
    ~Examples() override { Tree::Instance()->GetRoot()->DeleteChildren(); }
};

TEST_F(Examples, AnObserverIsToldOfChanges) {
    // observer.h
    Value<int> level;
    ChangeCounter counter;
    level.AddObserver(&counter);
    level.SetValue(3);
    level.SetValue(3); // no change: the counter stays 1
    // end
    EXPECT_EQ(counter.changes, 1);
}

TEST_F(Examples, ATraceAndAProblemReachTheirReceivers) {
    const Traces traces;
    const QString file = QStringLiteral("a.csv");
    QStringList told;
    // trace.h
    ErrorHandler::Instance().SetTraceMask(TraceMaskTrace);
    TraceLazily("bookmarks", [&] { return QStringLiteral("cannot open %1").arg(file); });
    // end
    ASSERT_EQ(traces.texts, QStringList("cannot open a.csv"));
    EXPECT_TRUE(traces.places[0].startsWith("bookmarks:"));
    // problems.h
    Problems::SetSink([&](const Problem& problem) { told << problem.ToString(); });
    Problems::Report("bookmarks", {file, 12, QStringLiteral("has no frequency")});
    // end
    EXPECT_EQ(told, QStringList("a.csv:12: has no frequency"));
}

TEST_F(Examples, AListThatIsSavedIsKnownMeanwhile) {
    constexpr int listId = 7;
    const QString path = QStringLiteral("a.csv");
    std::vector<std::pair<int, QString>> written;
    const auto writeEntries = [&](const QString& file) {
        written.emplace_back(ListSaving::Current(), file);
        return true;
    };
    const auto save = [&] {
        // listsaving.h
        return ListSaving::Do(listId, [&] { return writeEntries(path); });
        // end
    };
    EXPECT_TRUE(save());
    EXPECT_EQ(written, (std::vector<std::pair<int, QString>>{{listId, path}}));
    EXPECT_EQ(ListSaving::Current(), 0);
}

TEST_F(Examples, ANodeOwnsItsValues) {
    Node* list = Tree::Instance()->MakeNode(QStringLiteral("/Bookmarks"));
    // node.h
    auto* entry = new Node(list, QStringLiteral("Bookmark"));
    list->AddItemUnique(entry); // the list owns the entry now
    entry->CreateValue(QStringLiteral("comment"), Value<QString>());
    auto* comment = entry->FindOwn<Value<QString>>(Names::Intern(QStringLiteral("comment")));
    comment->SetValue(QStringLiteral("calling"));
    // end
    EXPECT_EQ(list->LastChild(), entry);
    EXPECT_EQ(Tree::Instance()->GetValue("/Bookmarks/Bookmark/comment")->GetStringValue(), "calling");
}

TEST_F(Examples, WhatTheOperatorDoesIsAStepOfUndo) {
    UndoHistory::Instance().SetOn(true);
    Node* list = Tree::Instance()->MakeNode(QStringLiteral("/Bookmarks"));
    list->AddItemUnique(new Node(list, QStringLiteral("Bookmark")));
    Bookmarks controller;
    const int listId = FreqStore::Instance().RegisterList({.controller = &controller});
    // operatoraction.h
    {
        const OperatorAction action(QStringLiteral("Delete")); // as the Edit menu names it
        list->DeleteNode(list->LastChild());
    }
    // end
    EXPECT_EQ(list->ChildCount(), 0u);
    UndoHistory::Instance().Stack().undo();
    EXPECT_EQ(list->ChildCount(), 1u);
    UndoHistory::Instance().SetOn(false);
    FreqStore::Instance().RemoveFrequencyListDefinition(listId);
}

TEST_F(Examples, ANumberHasATextFormAndLimits) {
    // value.h
    ValueNumeric<double> frequency;
    frequency.SetMinMax(9e3, 30e6, 1);
    frequency.SetStringValue(QStringLiteral("7055000"));
    const double hertz = frequency.GetValue(); // 7055000
    // end
    EXPECT_EQ(hertz, 7055000);
    EXPECT_EQ(frequency.GetMax(), 30e6);
}

TEST_F(Examples, ASelectionChoosesAmongItsItems) {
    // valueselection.h
    ValueSelection mode;
    mode.AddItem(QStringLiteral("AM"), 0, 10);
    mode.AddItem(QStringLiteral("USB"), 0, 20);
    mode.Select(QStringLiteral("USB"));
    const long key = mode.GetCurrentKey(); // 20
    // end
    EXPECT_EQ(key, 20);
}

TEST_F(Examples, TheTreeFindsByPath) {
    // tree.h
    Tree::Instance()->MakeNode(QStringLiteral("/Bookmarks"));
    auto* count = GetOrCreateValue<Value<int>>(QStringLiteral("/Bookmarks/count"));
    count->SetValue(3);
    const auto* found = Tree::Instance()->Find<Value<int>>(QStringLiteral("/Bookmarks/count")); // count
    // end
    EXPECT_EQ(found, count);
}

TEST_F(Examples, AnObservingPointerAndABoundWidgetLetGoOfTheirValue) {
    auto level = std::make_unique<Value<int>>();
    LevelMeter meter(level.get());
    LevelLabel label;
    label.SetLevel(level.get());
    level->SetValue(3);
    EXPECT_EQ(meter.Level(), 3);
    EXPECT_EQ(label.text(), "3");
    level.reset();
    EXPECT_EQ(meter.Level(), 0);
    EXPECT_EQ(label.text(), "");
}

TEST_F(Examples, ARecordGoesThroughXml) {
    // irgobject.h
    Band written;
    written.name = QStringLiteral("40 m");
    written.hertz = 7e6;
    Band read;
    const bool isRead = read.SetXmlString(written.GetXmlString()); // true
    // end
    EXPECT_TRUE(isRead);
    EXPECT_EQ(read.name, "40 m");
    EXPECT_EQ(read.hertz, 7e6);
}

TEST_F(Examples, AListOfEntriesGoesThroughAFile) {
    const QString path = Path("list.xml");
    // frequencystoreentry.h
    FreqStoreXml::FrequencyStoreEntry entry;
    entry.SetComment(QStringLiteral("calling"));
    entry.GetFFM_Settings().GetFrequency().SetValue(7055000); // Hz
    // frequencystorelist.h
    FreqStoreXml::FrequencyStoreList list;
    list.SetUsage(FreqStoreXml::FrequencyStoreList::TargetList);
    list.AppendFrequencyStoreEntry(entry);
    // filehandling.h
    FreqStoreXml::FileHandling files;
    files.ExportFrequencyStoreList(false, path, list);
    FreqStoreXml::FrequencyStoreList read;
    files.ImportFrequencyStoreList(false, path, read);
    // end
    ASSERT_EQ(read.GetFrequencyStoreEntry().size(), 1);
    EXPECT_EQ(read.GetFrequencyStoreEntry()[0].GetComment(), "calling");
    EXPECT_EQ(read.GetFrequencyStoreEntry()[0].GetFFM_Settings().GetFrequency().GetValue(), 7055000);
    EXPECT_EQ(read.GetUsage(), FreqStoreXml::FrequencyStoreList::TargetList);
}

TEST_F(Examples, AnOutputFileReplacesTheOldOneAtTheEnd) {
    const QString path = Write("list.txt", "old");
    {
        // outputfile.h
        REPORTGENERATOR::OutputFile file(path);
        REPORTGENERATOR::WriteBytes(file.Device(), path, "7055000\n");
        file.Commit(); // the old file stands until here
        // end
    }
    EXPECT_EQ(Read("list.txt"), "7055000\n");
}

TEST_F(Examples, LongWorkWritesAFile) {
    const QString name = Path("list.xml");
    const std::vector<FreqStoreXml::FrequencyStoreEntry> entries(2);
    FreqStoreXml::FrequencyStoreListWriter writer(name, false);
    const auto tr = [](const char* text) { return QString::fromLatin1(text); };
    // longwork.h
    const bool done = LongWork::Run(tr("Saving %1").arg(name), [&] {
        for (size_t i = 0; i < entries.size(); ++i) {
            LongWork::Step(qint64(i), qint64(entries.size()));
            writer.Append(entries[i]);
        }
        writer.Commit();
    });
    // end
    EXPECT_TRUE(done);
    EXPECT_EQ(Read("list.xml").count("<FrequencyStoreEntry"), 2);
}

TEST_F(Examples, AConfigurationKeepsASetting) {
    const QString before = CfgCenter::GetDirectory();
    CfgCenter::SetDirectory(m_folder.path());
    // cfgcenter.h
    const QString section = QStringLiteral("Bookmarks");
    const std::unique_ptr<ICfg> settings(CfgCenter::CreateCfg(section, ICfg::PlugIn, QString()));
    settings->SetBool(QStringLiteral("AskBeforeDelete"), true);
    const bool asks = settings->GetBool(QStringLiteral("AskBeforeDelete"), false); // true
    // end
    CfgCenter::SetDirectory(before);
    EXPECT_TRUE(asks);
}

TEST_F(Examples, AListIsRegisteredWithItsControllerAndView) {
    Tree::Instance()->MakeNode(QStringLiteral("/Bookmarks"));
    Bookmarks controller;
    controller.IncrementVisibleCnt();
    FreqStoreXml::FrequencyStoreEntry entry;
    entry.SetComment(QStringLiteral("calling"));
    entry.GetFFM_Settings().GetFrequency().SetValue(7055000);
    controller.AppendEntries({entry});
    controller.ForceUpdateNow();
    ASSERT_EQ(controller.size(), 1u);
    EXPECT_TRUE(controller.At(0)->ToString().endsWith("\tcalling"));
    // listdefinition.h
    ListRegistration registration;
    registration.name = QStringLiteral("Bookmarks");
    registration.controller = &controller; // a FrequencyNodeMediatorCtrl of the plug-in
    registration.viewFactory = [](QWidget* parent, unsigned id) { return new BookmarkView(parent, id); };
    // freqstore.h
    FreqStore& store = FreqStore::Instance();
    const int listId = store.RegisterList(registration);
    const bool isThere = store.GetDefinition(listId) != nullptr; // true
    // end
    EXPECT_TRUE(isThere);
    const QString path = Path("bookmarks.xml");
    // listsaving.h
    const bool isSaved = ListSaving::Do(listId, [&] { return controller.SaveFrequencies(path); });
    // end
    EXPECT_TRUE(isSaved);
    EXPECT_EQ(ListSaving::Do(&controller, [] { return ListSaving::Current(); }), listId);
    EXPECT_EQ(ListSaving::Current(), 0);
    const std::unique_ptr<FrequencyStoreListView> view(
        store.GetDefinition(listId)->CreateView(nullptr, static_cast<unsigned>(listId)));
    ASSERT_EQ(view->GetListView()->topLevelItemCount(), 1);
    EXPECT_EQ(view->GetListView()->topLevelItem(0)->text(1), "calling");
    store.RemoveFrequencyListDefinition(listId);
}

TEST_F(Examples, ARecordViewShowsItsList) {
    Tree::Instance()->MakeNode(QStringLiteral("/Search"));
    const QString path = QStringLiteral("/Search/Detections");
    GetOrCreateValue<ValueList<DetectionConventional>>(path)->PushBack(DetectionConventional());
    const DetectionView view(nullptr, path);
    EXPECT_EQ(view.RowCount(), 1);
}

QString withoutBlanks(QString text) {
    return text.remove(QRegularExpression(QStringLiteral("\\s+")));
}

TEST_F(Examples, OfTheHeadersStandHereWordByWord) {
    const auto textOf = [](const QString& path) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        return QString::fromUtf8(file.readAll());
    };
    const QString root = QStringLiteral(SAMPLES_DIR "/../");
    const QString here = withoutBlanks(textOf(root + QLatin1String("tests/freqlist/examplestest.cpp")));
    const QRegularExpression example(QStringLiteral("/// \\\\code\\n(.*?)/// \\\\endcode"),
                                     QRegularExpression::DotMatchesEverythingOption);
    int count = 0;
    for (QDirIterator it(root + QLatin1String("host"), {"*.h"}, QDir::Files, QDirIterator::Subdirectories);
         it.hasNext();) {
        const QString path = it.next();
        for (auto found = example.globalMatch(textOf(path)); found.hasNext(); ++count) {
            QString lines = found.next().captured(1);
            lines.remove(QRegularExpression(QStringLiteral("^ *///"), QRegularExpression::MultilineOption));
            for (const QString& part : lines.split(QStringLiteral("\n\n"))) // a class, and its use
                EXPECT_TRUE(here.contains(withoutBlanks(part))) << path.toStdString() << part.toStdString();
        }
    }
    EXPECT_EQ(count, 25);
}

} // namespace
