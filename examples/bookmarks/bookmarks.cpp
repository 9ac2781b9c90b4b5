// A plug-in with a list of its own: bookmarks, each a frequency and a name. It needs three things: a node of
// the tree that holds the entries, a controller that makes a mediator for each, and a view. Registering them
// with the store is all that makes the list a tab and a line of the frequency bar.

#include "host/freqlist/buttonbar.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodelistview.h"
#include "host/freqlist/frequencynodemediatorctrl.h"
#include "host/freqlist/keys.h"
#include "host/freqlist/pixstatevector.h"
#include "host/valuetree/tree.h"

#include <memory>

namespace {

constexpr char NodePath[] = "/Lists/Bookmarks";

/// One row per bookmark; the columns are told by the identifiers of the values that they show.
class BookmarkView : public FrequencyNodeListView {
public:
    BookmarkView(QWidget* parent, unsigned listId) : FrequencyNodeListView(parent, listId) {
        AddColumn(QStringLiteral("Frequency"), _compNumericWithSuffix, FreqList::ColumnFrequency);
        AddColumn(QStringLiteral("Name"), _compStandardString, FreqList::ColumnComment);
        setColumnAlignment(0, 2);
        FitColumns({15, 40});
    }

    void InitFreqStoreWidget(FreqStoreListViewButtonBar* bar) override {
        FrequencyNodeListView::InitFreqStoreWidget(bar);
        if (!bar)
            return;
        bar->AttachView(this);
        QAction* remove = bar->GetAction(FreqStoreListViewButtonBar::Delete);
        remove->setVisible(true);
        QObject::connect(remove, &QAction::triggered, this, [this] { DeleteSelectedEntries(); });
    }
};

std::unique_ptr<FrequencyNodeMediatorCtrl> controller;
int listId = 0;

void addBookmark(Node& list, double hertz, const char* name) {
    auto* entry = new Node(&list, QStringLiteral("Bookmark"));
    // AddValue refuses a name that the node has already; this one is new.
    auto* frequency = new ValueNumeric<double>;
    frequency->SetValue(hertz);
    (void)entry->AddValue(FreqList::KeyFrequency, frequency);
    auto* comment = new Value<QString>;
    comment->SetValue(QString::fromUtf8(name));
    (void)entry->AddValue(FreqList::KeyComment, comment);
    list.AddItemUnique(entry); // attached last: the mediator finds all values at once
}

} // namespace

extern "C" Q_DECL_EXPORT void FrequencyStorePlugInStart() {
    Node* list = Tree::Instance()->MakeNode(QString::fromLatin1(NodePath));
    addBookmark(*list, 5000000, "Time signal, 5 MHz");
    addBookmark(*list, 7055000, "40 m, digital voice");
    addBookmark(*list, 145500000, "2 m calling");

    controller = std::make_unique<FrequencyNodeMediatorCtrl>(0);
    controller->Init(list->GetPathName());
    controller->IncrementVisibleCnt();
    listId = FreqStore::Instance().RegisterList({
        .name = QStringLiteral("Bookmarks"),
        .pixStateFactory =
            [] {
                auto* line = new PixStateVectorOnNode;
                line->Init(QString::fromLatin1(NodePath));
                line->SetKeyWords(QStringLiteral("frequency"), QString(), QString(),
                                  QStringLiteral("comment"));
                return line;
            },
        .controller = controller.get(),
        .viewFactory = [](QWidget* parent, unsigned id) { return new BookmarkView(parent, id); },
    });
}

extern "C" Q_DECL_EXPORT void FrequencyStorePlugInStop() {
    FreqStore::Instance().RemoveFrequencyListDefinition(listId);
    controller.reset();
}
