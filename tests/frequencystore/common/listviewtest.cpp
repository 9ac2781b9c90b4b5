#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/detections/searchmcextendedvectorlistview.h"
#include "controls/frequencystore/detections/searchmcvectorlistview.h"
#include "controls/frequencystore/memory/memorysystemhandler.h"
#include "controls/frequencystore/noi/noifrequencyhandler.h"
#include "controls/frequencystore/results/searchmcdatahandler.h"
#include "controls/frequencystore/targets/targetlisthandler.h"
#include "host/freqlist/buttonbar.h"
#include "host/freqlist/freqstore.h"
#include "host/gui/guibase.h"
#include "host/valuetree/tree.h"
#include "tests/support/dialogs.h"
#include "tests/support/testfolder.h"
#include "tests/support/text.h"

#include <QPointer>

#include <malloc.h>

namespace {

/// A list with what begins and ends its handler, and the slots of its view that ask for a file.
struct List {
    const char* name;
    int (*begin)(Node* node);
    void (*end)();
    std::vector<const char*> asking;
};

const List Lists[] = {
    {"targets",
     [](Node* node) {
         TargetListHandler::Instance()->Init(node, false);
         return TargetListHandler::Instance()->AddToFreqStore();
     },
     TargetListHandler::DeleteInstance,
     {"slotReadTargetList", "slotImportTargetList", "slotSave2File", "slotExport2File"}},
    {"memory",
     [](Node* node) {
         MemorySystemHandler::Instance()->SetListType(MediatorType::MemoryHF);
         MemorySystemHandler::Instance()->Init(node);
         return MemorySystemHandler::Instance()->AddToFreqStore();
     },
     MemorySystemHandler::DeleteInstance,
     {"slotLoadFile"}},
    {"noi",
     [](Node* node) {
         NOIFrequencyHandler::Instance()->SetRemembersFile(false);
         NOIFrequencyHandler::Instance()->Init(node);
         return NOIFrequencyHandler::Instance()->AddToFreqStore();
     },
     NOIFrequencyHandler::DeleteInstance,
     {"slotLoadFile", "slotImportFromFile", "slotSaveToFile", "slotExportToFile"}},
    {"results",
     [](Node* node) {
         SearchMCDataHandler::Instance()->Init(node);
         return SearchMCDataHandler::Instance()->AddToFreqStore();
     },
     SearchMCDataHandler::DeleteInstance,
     {"slotSaveToFile", "slotExportToFile"}},
};

/// Does `then` while the next file dialog is open, which is answered afterwards.
void WhileAsked(const std::function<void()>& then, const QString& path) {
    QTimer::singleShot(0, qApp, [=] {
        if (!qobject_cast<QFileDialog*>(QApplication::activeModalWidget()))
            return WhileAsked(then, path);
        then();
        AnswerDialog(path);
    });
}

/// Lists with one entry each. Memory that is given back is overwritten, so that whoever goes on using it is
/// found.
class ListViews : public testing::Test, protected TestFolder {
protected:
    void SetUp() override {
        mallopt(M_PERTURB, 0xa5);
        GuiBase::Instance().SetUseNativeDialogs(false);
    }
    void TearDown() override {
        Tree::Instance()->GetRoot()->DeleteChildren();
        FreqStore::Instance().ClearFrequencyListCopyStruct();
        mallopt(M_PERTURB, 0);
    }
    /// Registers the list, adds its entry, and opens a view of it in the bar.
    std::unique_ptr<QWidget> Open(const List& list, FreqStoreListViewButtonBar& bar) {
        m_id = list.begin(Tree::Instance()->MakeNode(Q("/Lists/") + Q(list.name)));
        const auto id = static_cast<unsigned>(m_id);
        FreqStoreXml::FrequencyStoreEntry entry;
        entry.SetComment(Q("c"));
        entry.GetFFM_Settings().GetFrequency().SetValue(7055000);
        entry.GetFFM_Settings().GetIFBandwidth().SetValue(3000);
        entry.GetFFM_Settings().SetAnalogDemod(FreqStoreXml::FFM_Settings::NameToAnalogDemod(Q("USB")));
        dynamic_cast<FrequencyNodeMediatorCtrl&>(*FreqStore::Instance().GetFrequencies(id))
            .AppendEntries({entry});
        FrequencyStoreListView* view = FreqStore::Instance().GetDefinition(m_id)->CreateView(nullptr, id);
        view->InitFreqStoreWidget(&bar);
        return std::unique_ptr<QWidget>(view->GetWidget());
    }
    void Close(const List& list) {
        FreqStore::Instance().RemoveFrequencyListDefinition(m_id);
        QTimer closer; // of the question whether channels are to be saved
        QObject::connect(&closer, &QTimer::timeout, [] {
            if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
                dialog->reject();
        });
        closer.start(0);
        list.end();
        Tree::Instance()->GetRoot()->DeleteChildren();
    }

    int m_id = 0;
};

TEST_F(ListViews, MayEndWithOrWithoutTheirHandlerWhileAFileIsChosen) {
    for (const List& list : Lists) {
        for (const char* slot : list.asking) {
            for (const bool viewEnds : {true, false}) {
                for (const bool handlerEnds : {true, false}) {
                    SCOPED_TRACE(testing::Message()
                                 << list.name << ' ' << slot << ' ' << viewEnds << handlerEnds);
                    FreqStoreListViewButtonBar bar;
                    QPointer<QWidget> view(Open(list, bar).release());
                    const auto end = [&] {
                        if (viewEnds)
                            delete view.data();
                        if (handlerEnds)
                            Close(list);
                    };
                    const QStringList before = FileNames();
                    WhileAsked(end, Path(Q("chosen")));
                    ASSERT_TRUE(QMetaObject::invokeMethod(view.data(), slot));
                    EXPECT_EQ(view.isNull(), viewEnds);
                    if (viewEnds || handlerEnds) {
                        EXPECT_FALSE(bar.GetCaption().contains(Q("chosen"))) << qPrintable(bar.GetCaption());
                    }
                    if (handlerEnds) {
                        EXPECT_EQ(FileNames(), before);
                    }
                    delete view.data();
                    Close(list);
                }
            }
        }
    }
}

TEST_F(ListViews, OfDetectionsMayEndWhileAFileIsChosen) {
    const struct {
        QWidget* view;
        const char* slot;
    } rows[] = {
        {new SearchMCVectorListView(nullptr), "slotSaveToFile"},
        {new SearchMCVectorListView(nullptr), "slotExportToFile"},
        {new SearchMCExtendedVectorListViewHF(nullptr, "v"), "slotSaveFileAs"},
        {new SearchMCExtendedVectorListViewVUHF(nullptr, "v"), "slotExportFileAs"},
    };
    for (const auto& row : rows) {
        WhileAsked([&] { delete row.view; }, Path(Q("chosen")));
        ASSERT_TRUE(QMetaObject::invokeMethod(row.view, row.slot)) << row.slot;
        EXPECT_TRUE(FileNames().isEmpty()) << row.slot;
    }
}

TEST_F(ListViews, CopyTheTextsOfTheirColumns) {
    const char* copied[] = {"7055.000 kHz|c|3.000 kHz|USB|g", "7055.000 kHz|c|3.000 kHz|USB|-",
                            "7055.000 kHz|c|3000.000000|-|-", "-|-|-|-|-"};
    FreqStore& store = FreqStore::Instance();
    for (size_t i = 0; i < std::size(Lists); ++i) {
        FreqStoreListViewButtonBar bar;
        const std::unique_ptr<QWidget> view = Open(Lists[i], bar);
        dynamic_cast<FrequencyStoreListView&>(*view).SelectFrequency(7055000);
        ASSERT_TRUE(QMetaObject::invokeMethod(view.get(), "slotCopy"));
        bool more = false;
        const FrequencyListCopyStruct* row = store.GetFrequencyListCopyStruct(more);
        QStringList texts;
        for (const char* name : {"Frequency", "Comment", "Bandwidth", "Demodulation", "Type"}) {
            QString text;
            texts << (row && row->GetValue(store.GetCopyStructId(Q(name)), text) ? text : Q("-"));
        }
        EXPECT_EQ(texts.join(QLatin1Char('|')), Q(copied[i])) << Lists[i].name;
        store.ClearFrequencyListCopyStruct();
        Close(Lists[i]);
    }
}

} // namespace
