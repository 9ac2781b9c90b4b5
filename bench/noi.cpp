// Figures of the list of frequencies of interest. "ratio" is the time per entry of the large list against
// that of the small one, or ours against the baseline; "goal" is what it must not exceed.

#include "bench/figures.h"
#include "bench/leanwriter.h"
#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/noi/noifrequencyhandler.h"
#include "controls/frequencystore/noi/searchmcnoilistview.h"
#include "host/base/numbers.h"
#include "host/freqlist/buttonbar.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodemediator.h"
#include "host/valuetree/tree.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

constexpr int Small = 10000;
constexpr int Large = 100000;
constexpr int Rounds = 10; ///< of the small list, so that it takes as long as the large one

/// Counts how often the band list is written.
struct Counter : IObserver {
    void Update(Observable*, TChangeCode code) override { changes += code == TChangeCode::ValueChanged; }
    int changes = 0;
};

/// The list with a view open on it, and the value of its band list.
class NoiBench {
public:
    NoiBench() {
        m_list = Tree::Instance()->MakeNode(QStringLiteral("/Lists/NOI"));
        m_definition = GetOrCreateValue<Value<QString>>(QStringLiteral("/Lists/NoiDefinition"));
        m_definition->AddObserver(&m_counter);
        Handler().SetRemembersFile(false);
        Handler().Init(m_list);
        Handler().SetNOIDefinition_ValuePath(m_definition->GetPathName());
        m_id = Handler().AddToFreqStore();
        m_view = std::make_unique<SearchMCNOIListView>(nullptr, static_cast<unsigned>(m_id));
        m_view->InitFreqStoreWidget(&m_bar);
        m_view->resize(1000, 700);
        m_view->show();
        m_view->sortByColumn(0, Qt::AscendingOrder);
    }
    ~NoiBench() {
        m_view.reset();
        FreqStore::Instance().RemoveFrequencyListDefinition(m_id);
        NOIFrequencyHandler::DeleteInstance();
        Tree::Instance()->GetNode(QStringLiteral("/Lists"))->DeleteNode(m_list);
        Tree::Instance()->GetNode(QStringLiteral("/Lists"))->DeleteValue(QStringLiteral("NoiDefinition"));
    }

    static NOIFrequencyHandler& Handler() { return *NOIFrequencyHandler::Instance(); }
    SearchMCNOIListView& View() { return *m_view; }
    FreqStoreListViewButtonBar& ButtonBar() { return m_bar; }
    const QString& Bands() const { return m_definition->GetValue(); }
    int Changes() { return std::exchange(m_counter.changes, 0); }
    void Clear() {
        m_list->DeleteChildren();
        Handler().UpdateNOIList();
        QApplication::processEvents();
        Changes();
    }
    QString File(int count) {
        const QString path = m_folder.filePath(QStringLiteral("%1.noi").arg(count));
        if (QFile file(path); !file.exists() && file.open(QIODevice::WriteOnly)) {
            for (int i = 0; i < count; ++i)
                file.write(QByteArray::number(100000 + 137LL * (i * 104729LL % count)) + "\tStation " +
                           QByteArray::number(i) + "\t2700\n");
        }
        return path;
    }
    void Load(int count) {
        Handler().ReadFile(File(count));
        QApplication::processEvents();
        Changes();
    }

private:
    QTemporaryDir m_folder;
    Node* m_list;
    Value<QString>* m_definition;
    Counter m_counter;
    FreqStoreListViewButtonBar m_bar;
    int m_id;
    std::unique_ptr<SearchMCNOIListView> m_view;
};

/// Time per entry of the large list against that of the small one.
void growth(benchmark::State& state, NoiBench& bench, const std::function<void(int)>& prepare,
            const std::function<void()>& work) {
    for (auto _ : state) {
        double small = 0;
        int changes = 0;
        const auto run = [&](int count) {
            prepare(count);
            bench.Changes();
            const double seconds = processorSecondsOf([&] {
                work();
                QApplication::processEvents();
            });
            changes = std::max(changes, bench.Changes());
            return seconds;
        };
        run(Small); // warms up
        for (int i = 0; i < Rounds; ++i)
            small += run(Small) / Rounds;
        const double large = run(Large);
        report(state, small / Small, large / Large, 1.5);
        state.SetLabel("the same at 10,000, per entry");
        state.counters["band_lists_written"] = changes;
    }
}

void NoiLoad(benchmark::State& state) {
    NoiBench bench;
    int count = 0;
    growth(
        state, bench,
        [&](int n) {
            count = n;
            bench.File(n);
            bench.Clear();
        },
        [&] { bench.Handler().ReadFile(bench.File(count)); });
}

void NoiPaste(benchmark::State& state) {
    NoiBench bench;
    growth(
        state, bench,
        [&](int n) {
            bench.Load(n);
            bench.View().selectAll();
            bench.View().slotCopy();
            bench.Clear();
        },
        [&] { bench.View().slotPaste(); });
}

/// Every second entry, picked one by one.
void NoiDelete(benchmark::State& state) {
    NoiBench bench;
    growth(
        state, bench,
        [&](int n) {
            bench.Load(n);
            const QSignalBlocker quiet(bench.View());
            bench.View().clearSelection();
            for (int row = 0; row < n; row += 2)
                bench.View().ClickRow(row, Qt::ControlModifier);
        },
        [&] { bench.ButtonBar().GetAction(FreqStoreListViewButtonBar::Delete)->trigger(); });
}

void NoiBandList(benchmark::State& state) {
    constexpr int Million = 1000000;
    NoiBench bench;
    bench.Load(Million);
    std::vector<std::pair<qint64, qint64>> edges;
    NoiBench::Handler().GetMediatorCtrl()->ForEach([&](FrequencyNodeMediator& mediator) {
        double frequency = 0;
        double bandwidth = 0;
        mediator.GetFrequency(frequency, 0);
        mediator.GetBandwidth(bandwidth, 0);
        edges.emplace_back(qRound64(frequency - bandwidth / 2), qRound64(frequency + bandwidth / 2));
    });
    QString lean;
    for (auto _ : state) {
        reportInTurn(state, "one buffer by std::to_chars", 2, timed([&] {
                         LeanWriter<char16_t> out;
                         for (const auto& [from, to] : edges) {
                             out.Whole(from) << u',';
                             out.Whole(to) << u';';
                         }
                         lean = QStringView(out.GetText()).toString();
                     }),
                     timed([] { NoiBench::Handler().UpdateNOIList(); }));
    }
    if (bench.Bands() != lean)
        state.SkipWithError("the band list is wrong");
}

} // namespace

BENCHMARK(NoiLoad)->UseManualTime()->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK(NoiPaste)->UseManualTime()->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK(NoiDelete)->UseManualTime()->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK(NoiBandList)->UseManualTime()->Iterations(1)->Unit(benchmark::kSecond);
