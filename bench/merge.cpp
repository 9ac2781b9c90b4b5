// How long an operator waits at most in the preview of a merge of 100000 entries into 100000 targets, of
// which each is new, equal or different: processor time of the longest turn of the event loop, or of the
// work that opens it. To match the lists is told beside it.

#include "bench/figures.h"
#include "bench/targets.h"
#include "bench/turnclock.h"
#include "controls/frequencystore/merge/fileentries.h"
#include "workstation/listimport.h"
#include "workstation/mergedialog.h"

#include <QApplication>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QTimer>
#include <QToolButton>

namespace {

constexpr int Rows = 100000;
constexpr int Pages = 50;
constexpr double Goal = 0.05;

double longestTurn(const std::function<void()>& work) {
    double longest = threadSecondsOf(work);
    for (int i = 0; i < 10; ++i)
        longest = std::max(longest, threadSecondsOf([] { QApplication::processEvents(); }));
    return longest;
}

QPushButton& buttonWith(const QDialog& dialog, const char* text) {
    const QList<QPushButton*> buttons = dialog.findChildren<QPushButton*>();
    return **std::ranges::find_if(buttons, [text](const QPushButton* button) {
        return button->text().contains(QLatin1String(text)) && button->isEnabled();
    });
}

QVector<FreqStoreXml::FrequencyStoreEntry> theirs(const QVector<FreqStoreXml::FrequencyStoreEntry>& mine) {
    QVector<FreqStoreXml::FrequencyStoreEntry> entries = mine;
    for (int i = 0; i < entries.size(); i += 3) {
        if (i % 2 == 0)
            entries[i].SetComment(QStringLiteral("theirs"));
        else
            entries[i].GetFFM_Settings().GetFrequency().SetValue(4e9 + i);
    }
    return entries;
}

/// Reads the list's own file for it, and closes the preview as soon as it can be worked with.
void importAndCancel() {
    QWidget window;
    QTimer timer;
    timer.callOnTimeout([] {
        if (auto* dialog = qobject_cast<MergeDialog*>(QApplication::activeModalWidget()))
            dialog->reject();
    });
    timer.start(0);
    ListImport::Import(window, Bench::Get().ListId(), Bench::Get().Ltl(Rows));
}

void MergePreview(benchmark::State& state) {
    HalvoNodeMediatorCtrl& list = *Bench::Get().List(Rows).GetParser()->GetMediatorCtrl();
    QVector<FreqStoreXml::FrequencyStoreEntry> mine;
    list.VisitRecords([&](const FreqStoreXml::FrequencyStoreEntry& entry) { mine.append(entry); });
    for (auto _ : state) {
        {
            ListMerge none(list, {}); // fonts and styles are loaded once
            MergeDialog first(none, QStringLiteral("none"), 0, nullptr);
            first.QDialog::show();
            QApplication::processEvents();
        }
        ListMerge merge(list, theirs(mine));
        merge.Match(0);
        const double matching = threadSecondsOf([&] { merge.Match(0); }); // as the dialog does it
        std::unique_ptr<MergeDialog> dialog;
        state.SetLabel("matching takes " + std::to_string(matching) + " s");
        TurnClock clock;
        state.counters["open_s"] = clock.LongestOf([&] {
            dialog = std::make_unique<MergeDialog>(merge, QStringLiteral("a into b"), 0, nullptr);
            dialog->QDialog::show();
            QApplication::processEvents();
        });
        state.counters["import_s"] = clock.LongestOf(importAndCancel);
        auto* const table = dialog->findChild<QTableView*>();
        double scroll = 0;
        for (int page = 1; page <= Pages; ++page)
            scroll = std::max(scroll, longestTurn([&] {
                                  table->verticalScrollBar()->setValue(table->verticalScrollBar()->maximum() /
                                                                       Pages * page);
                              }));
        state.counters["scroll_s"] = scroll;
        state.counters["select_all_s"] = longestTurn([&] { table->selectAll(); });
        state.counters["choose_s"] = longestTurn([&] { buttonWith(*dialog, "3").click(); });
        double show = 0;
        for (QToolButton* button : dialog->findChildren<QToolButton*>())
            show = std::max(show, longestTurn([&] { button->click(); }));
        state.counters["show_s"] = show;
        state.counters["goal"] = Goal;
    }
    Bench::Get().Forget();
}
BENCHMARK(MergePreview)->Iterations(1)->Unit(benchmark::kSecond);

} // namespace
