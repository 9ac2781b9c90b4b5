#pragma once

#include "bench/figures.h"
#include "bench/memoryprobe.h"
#include "cli/list.h"
#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/targets/targetlisthandler.h"
#include "controls/frequencystore/targets/targetlistparser.h"
#include "host/base/numbers.h"
#include "host/freqlist/freqstore.h"
#include "host/valuetree/tree.h"

#include <QFile>
#include <QStringEncoder>
#include <QTemporaryDir>

/// Lines of a target list file.
inline QString linesOf(int count) {
    static const QString demodulations[] = {QStringLiteral("USB"), QStringLiteral("AM"),
                                            QStringLiteral("CW")};
    static const QString classes[] = {QStringLiteral("not classified"), QStringLiteral("low"),
                                      QStringLiteral("high")};
    QString text;
    text.reserve(count * 80);
    for (int i = 0; i < count; ++i) {
        const auto place = static_cast<double>(i * 104729LL % count);
        Quor::AppendFixed(text, 100000.0 + place * 137.0, 6);
        text += QStringLiteral("\t2700.000000\tStation %1\t").arg(i * 7919LL % count);
        text += demodulations[i % 3] + QStringLiteral("\tp\t") + classes[i % 3] + QLatin1Char('\t');
        text += QString::number(i % 11 + 1) + QStringLiteral("\t\n");
    }
    return text;
}

/// The files and the list that all figures are taken of.
class Bench {
public:
    static Bench& Get() {
        if (!instance())
            instance() = new Bench;
        return *instance();
    }
    /// Removes list and files: for a benchmark that needs the tree for itself.
    static void End() { delete std::exchange(instance(), nullptr); }

    Bench(const Bench&) = delete;
    Bench& operator=(const Bench&) = delete;

    QString Ltl(int count) {
        const QString path = m_dir.filePath(QStringLiteral("list%1.ltl").arg(count));
        if (!QFile::exists(path)) {
            QFile file(path);
            file.open(QIODevice::WriteOnly);
            QStringEncoder encoder(QStringConverter::Utf16LE, QStringConverter::Flag::WriteBom);
            file.write(encoder.encode(linesOf(count)));
        }
        return path;
    }
    QString File(const char* name) const { return m_dir.filePath(QString::fromLatin1(name)); }
    TargetListHandler& List(int count) {
        TargetListHandler& handler = *TargetListHandler::Instance();
        if (std::exchange(m_loaded, count) != count)
            handler.ReadFile(Ltl(count));
        return handler;
    }
    /// The same list as the command line has it.
    CliList& CommandLine() const { return *m_list; }
    void Forget() { m_loaded = -1; }
    void Empty() {
        Forget();
        TargetListHandler::Instance()->GetItemsRoot()->DeleteChildren();
        TargetListHandler::Instance()->GetParser()->GetMediatorCtrl()->ForceUpdateNow();
    }
    unsigned ListId() const { return m_listId; }

private:
    Bench()
        : m_list(MakeList(QStringLiteral("target"))),
          m_listId(static_cast<unsigned>(TargetListHandler::Instance()->AddToFreqStore())) {}
    ~Bench() { FreqStore::Instance().RemoveFrequencyListDefinition(static_cast<int>(m_listId)); }

    static Bench*& instance() {
        static Bench* bench = nullptr;
        return bench;
    }

    QTemporaryDir m_dir;
    std::unique_ptr<CliList> m_list; ///< owns the handler
    unsigned m_listId;
    int m_loaded = 0;
};

/// Reads a file into the empty list; the processor time.
inline double secondsToRead(const QString& path) {
    Bench::Get().Empty();
    return processorSecondsOf([&] { TargetListHandler::Instance()->ReadFile(path); });
}

/// Reads a list of that length in turn with what it is compared with, and tells what an entry takes in memory
/// the first time: later ones find memory that the first has given back. `read` gives its processor time.
inline void compareReading(benchmark::State& state, const char* with, const QString& path, int count,
                           double goal, double bytesGoal, const Timed& baseline,
                           const std::function<double(const QString&)>& read = secondsToRead) {
    double bytes = 0, peak = 0;
    bool isFirst = true;
    reportInTurn(state, with, goal, baseline, [&] {
        Bench::Get().Empty();
        const double before = residentBytes();
        forgetPeak();
        const double seconds = read(path);
        if (std::exchange(isFirst, false)) {
            peak = (peakBytes() - before) / count;
            bytes = (residentBytes() - before) / count;
        }
        return seconds;
    });
    state.counters["bytes_per_entry"] = bytes;
    state.counters["bytes_while_reading"] = peak;
    state.counters["bytes_goal"] = bytesGoal;
}
