// Figures of memory channels and jobs. Times per channel at different sizes are taken in one run; "goal" is
// the ratio that must not be exceeded.

#include "bench/figures.h"
#include "bench/targets.h"
#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/memory/memorysystemhandler.h"
#include "controls/frequencystore/targets/targetlisthandler.h"
#include "host/freqstorexml/liststreams.h"
#include "host/valuetree/tree.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

/// The shortest of several runs, which other work on the machine disturbed least.
double bestOf(int runs, const std::function<double()>& run) {
    double best = run();
    for (int i = 1; i < runs; ++i)
        best = std::min(best, run());
    return best;
}

/// Counts what a value is written.
struct Writes : IObserver {
    void Update(Observable*, TChangeCode code) override { count += code == TChangeCode::ValueChanged; }
    int count = 0;
};

/// A memory list with its job in the tree; it ends with its scope.
class Memory {
public:
    Memory() {
        MemorySystemHandler& handler = Handler();
        m_list = Tree::Instance()->MakeNode(QStringLiteral("/Lists/Memory"));
        Tree::Instance()->MakeNode(QStringLiteral("/JEN/Job"));
        handler.Init(m_list);
        m_job = GetOrCreateValue<Value<QString>>(QStringLiteral("/JEN/Job/File"));
        m_data = GetOrCreateValue<Value<QString>>(QStringLiteral("/JEN/Job/Data"));
        m_job->SetValue(
            QStringLiteral("<JOB>\n <SUBJOB>\n  <TDS>\n   <MEMORYSCAN/>\n  </TDS>\n </SUBJOB>\n <SUBJOB>\n  "
                           "<TDS>\n   <MEMORYSCAN/>\n  </TDS>\n </SUBJOB>\n</JOB>"));
        handler.SetJobfile_ValuePath(QStringLiteral("/JEN/Job/File"));
        handler.SetData4Jobfile_ValuePath(QStringLiteral("/JEN/Job/Data"));
    }
    ~Memory() {
        // A job that was changed is not saved, and nobody is there to be asked about it.
        m_job->SetValue(QString(), &Handler());
        m_job->HasChanged(TChangeCode::ValueChanged);
        MemorySystemHandler::DeleteInstance();
        Tree::Instance()->GetNode(QStringLiteral("/Lists"))->DeleteNode(m_list);
        Tree::Instance()->GetNode(QStringLiteral("/JEN/Job"))->DeleteChildren();
    }
    Memory(const Memory&) = delete;
    Memory& operator=(const Memory&) = delete;

    static MemorySystemHandler& Handler() { return *MemorySystemHandler::Instance(); }
    void Fill(int count) {
        Handler().Prepare4NewFile();
        for (int i = 0; i < count; ++i)
            Handler().SetNewEntryHF(1e5 + 137.0 * i, 2700, QStringLiteral("Station %1").arg(i),
                                    QStringLiteral("USB"), false, QString(), 0, 0, 0);
        Handler().ResetDataAfterNewFile();
    }
    /// Changes one channel and brings the job up to date.
    void ChangeOne(int run) {
        Node* channel = m_list->Children()[m_list->ChildCount() / 2];
        channel->FindOwn<Value<QString>>(Keys::KeyComment)->SetValue(QString::number(run));
        Handler().SuspendMediatorCtrl(false, true);
        Handler().UpdateJobFileEntries();
    }
    void DeleteHalf() {
        std::vector<Node*> half = m_list->Children();
        half.resize(half.size() / 2);
        m_list->DeleteNodes(half);
        Handler().SuspendMediatorCtrl(false, true);
        Handler().UpdateJobFileEntries();
    }
    Node* List() const { return m_list; }
    Value<QString>* Job() const { return m_job; }
    Value<QString>* Data() const { return m_data; }

private:
    Node* m_list;
    Value<QString>* m_job;
    Value<QString>* m_data;
};

/// Time per channel until one changed channel of `count` stands in the job.
double perChannel(int count, benchmark::State& state) {
    Memory memory;
    memory.Fill(count);
    Writes job, data;
    memory.Job()->AddObserver(&job);
    memory.Data()->AddObserver(&data);
    constexpr int Runs = 7;
    int run = 0;
    const double best = bestOf(Runs, [&] { return processorSecondsOf([&] { memory.ChangeOne(++run); }); });
    state.counters["job_writes"] = static_cast<double>(job.count) / Runs;
    state.counters["sections_made"] = static_cast<double>(data.count) / Runs;
    return best / count;
}

void OneChangeReachesTheJob(benchmark::State& state) {
    for (auto _ : state) {
        const double small = perChannel(100, state);
        report(state, small, perChannel(10000, state), 1.5);
        state.SetLabel("the same at 100, per channel");
    }
}
BENCHMARK(OneChangeReachesTheJob)->UseManualTime()->Iterations(1)->Unit(benchmark::kMicrosecond);

void DeletingHalfOf10000(benchmark::State& state) {
    for (auto _ : state) {
        const auto perDeleted = [&](int count) {
            Memory memory;
            memory.Fill(count);
            Writes data;
            memory.Data()->AddObserver(&data);
            const double seconds = processorSecondsOf([&] { memory.DeleteHalf(); });
            state.counters["sections_made"] = data.count;
            return seconds / count;
        };
        const double small = bestOf(7, [&] { return perDeleted(100); });
        report(state, small, bestOf(3, [&] { return perDeleted(10000); }), 1.5);
        state.SetLabel("the same at 100, per channel");
    }
}
BENCHMARK(DeletingHalfOf10000)->UseManualTime()->Iterations(1)->Unit(benchmark::kMicrosecond);

QString writeXml(const QTemporaryDir& folder, int count) {
    const QString path = folder.filePath(QStringLiteral("list.xml"));
    FreqStoreXml::FrequencyStoreListWriter writer(path, false);
    writer.Begin(FreqStoreXml::FrequencyStoreList::MemoryChannels);
    FreqStoreXml::FrequencyStoreEntry entry;
    for (int i = 0; i < count; ++i) {
        entry.SetComment(QStringLiteral("Station %1").arg(i));
        entry.GetFFM_Settings().GetFrequency().SetValue(1e5 + 137.0 * i);
        entry.GetFFM_Settings().GetIFBandwidth().SetValue(2700);
        entry.GetFFM_Settings().SetAnalogDemod(FreqStoreXml::FFM_Settings::NameToAnalogDemod(
            i % 2 ? QStringLiteral("USB") : QStringLiteral("CW")));
        writer.Append(entry);
    }
    writer.Commit();
    return path;
}

/// 100,000 channels of an XML file, mediators and the making of their section included, against as many
/// targets of the same file. There is no job to put the section into.
void ReadXmlAsTargetsDo(benchmark::State& state) {
    constexpr int Count = 100000;
    const QTemporaryDir folder;
    const QString path = writeXml(folder, Count);
    for (auto _ : state) {
        const double targets = bestOf(3, [&] {
            Bench::Get().Empty();
            return processorSecondsOf([&] { TargetListHandler::Instance()->ReadFile(path); });
        });
        const double channels = bestOf(3, [&] {
            Memory memory;
            memory.Job()->SetValue(QString());
            return processorSecondsOf([&] { memory.Handler().ReadFile(path); });
        });
        report(state, targets, channels, 2);
        state.SetLabel("as many targets of the same file");
        Bench::Get().Empty();
    }
}
BENCHMARK(ReadXmlAsTargetsDo)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace
