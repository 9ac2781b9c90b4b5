#include "workstation/foreignimport.h"

#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/files/generallistparser.h"
#include "host/base/problems.h"
#include "host/freqlist/freqstore.h"
#include "host/valuetree/operatoraction.h"
#include "workstation/listimport.h"
#include "workstation/mainwindow.h"
#include "workstation/memoryneed.h"
#include "workstation/messagespanel.h"

#include <QCoreApplication>
#include <QPointer>

#include <algorithm>

namespace ForeignImport {

namespace {

using FreqStoreXml::FrequencyStoreEntry;

constexpr char TraceSource[] = "foreignimport";
/// Of a target whose file says none, as the lists' readers have it.
constexpr char UnsaidPriority[] = "1";

QString tr(const char* text, const char* comment = nullptr, int n = -1) {
    return QCoreApplication::translate("ForeignImport", text, comment, n);
}

std::optional<ImportList> listOf(unsigned id) {
    for (const ImportList& list : ImportLists()) {
        if (list.id == id)
            return list;
    }
    return std::nullopt;
}

/// The entries become the content of the list, which stands in no file then.
bool replace(const ImportList& list, const QString& path, ForeignReading& reading) {
    const OperatorAction action(tr("Import"));
    list.MakeRoom();
    FrequencyStoreEntry whole;
    const auto read = [&](const FreqStoreXml::EntryCallback& take) {
        reading.entries.Drain([&](const FrequencyStoreEntry& entry) {
            whole = entry;
            if (entry.GetProfile_Data().GetPriority().isEmpty())
                whole.GetProfile_Data().SetPriority(QString::fromLatin1(UnsaidPriority));
            take(whole);
        });
    };
    if (!list.parser->TakeEntries(path, read))
        return false;
    if (list.list == FileGate::List::Targets)
        FileGate::WasWritten(list.list, QString());
    return true;
}

bool add(QWidget& window, const ImportList& list, const ForeignSource& source, ForeignReading& reading) {
    QVector<FrequencyStoreEntry> entries;
    entries.reserve(reading.entries.Size());
    reading.entries.Drain([&entries](const FrequencyStoreEntry& entry) { entries.append(entry); });
    return ListImport::Merge(window, list.id, source.ShownName(), entries);
}

QString accountText(const ForeignSource& source, const Interchange::Account& account) {
    QStringList facts{tr("%n entries", nullptr, static_cast<int>(account.entries))};
    if (account.refused > 0)
        facts << tr("%n lines refused", nullptr, static_cast<int>(account.refused));
    if (const QString counts = account.CountsText(); !counts.isEmpty())
        facts << tr("without a place in our lists, or changed: %1").arg(counts);
    return QStringLiteral("%1 (%2): %3")
        .arg(source.ShownName(), source.KindName(), facts.join(QStringLiteral("; ")));
}

bool refuse(const ForeignSource& source, const QString& reason) {
    Problems::Report(TraceSource, {source.Path(), 0, reason});
    return false;
}

bool apply(QWidget& window, const ForeignSource& source, const ForeignPlan& plan, ForeignReading& reading) {
    const std::optional<ImportList> list = listOf(plan.listId);
    const QString reason = list ? list->WhyOff(plan.replaces) : tr("There is no list that takes entries.");
    if (!reason.isEmpty())
        return refuse(source, reason);
    for (const Problem& problem : reading.problems) // traced when they were found
        Problems::Tell(problem);
    const bool isDone =
        plan.replaces ? replace(*list, source.Path(), reading) : add(window, *list, source, reading);
    if (!isDone)
        return false;
    const QString account = accountText(source, reading.account);
    if (auto* const main = qobject_cast<MainWindow*>(&window)) {
        main->ShowList(static_cast<int>(list->id));
        main->GetMessages()->AddTrace(account);
    }
    if (plan.replaces) // else it has been told what became of the entries
        emit FreqStore::Instance().Told(account);
    return true;
}

/// How a table is read that nobody is asked about; nothing, told, when it leaves anything open.
std::optional<Interchange::TableChoice> sureChoice(const ForeignSource& source) {
    try {
        const Interchange::TableLook look = source.LookAtTable();
        const QString open = look.choice.WhyOpen(look.headings);
        if (open.isEmpty())
            return look.choice;
        refuse(source, tr("is a table of another program, and %1").arg(open));
    } catch (const RGException& exception) {
        Problems::Report(TraceSource, Problem::FromText(exception.GetErrorText()));
    }
    return std::nullopt;
}

/// Tells what is wrong with a file that nobody is asked about.
bool isWhole(const ForeignReading& reading) {
    if (reading.failure.isEmpty())
        return true;
    for (const Problem& problem : reading.problems)
        Problems::Tell(problem);
    Problems::Report(TraceSource, Problem::FromText(reading.failure));
    return false;
}

} // namespace

ForeignPlan Propose(unsigned listId, Way way) {
    const std::vector<ImportList> lists = ImportLists();
    if (lists.empty())
        return {};
    const auto shown = std::ranges::find(lists, listId, &ImportList::id);
    const ImportList& list = shown == lists.end() ? lists.front() : *shown;
    // Files of channels are added by the list's own commands, too.
    const bool replaces = way == Way::Open && list.list != FileGate::List::MemoryChannels;
    return {list.id, replaces && list.WhyOff(true).isEmpty()};
}

bool IsForeign(const QString& text, const QStringList& titles) {
    constexpr qsizetype HeadSize = 64 * 1024; // a copy of a long list is longer than one wants to look at
    const ForeignSource source = ForeignSource::OfText(text.left(HeadSize));
    if (!source.IsTable())
        return true;
    try {
        const Interchange::TableLook look = source.LookAtTable();
        const auto& columns = look.proposal.columns;
        const auto frequency =
            std::ranges::find(columns, Interchange::TableField::Frequency, &Interchange::TableColumn::field);
        const bool hasUnits = frequency != columns.end() && look.SureUnit(frequency - columns.begin()) ==
                                                                Interchange::TableColumn::InEachCell;
        const bool isNamed =
            !look.choice.hasHeadings || std::ranges::any_of(look.headings, [&](const QString& heading) {
                return titles.contains(heading, Qt::CaseInsensitive);
            });
        const bool isOfLines = look.headings.size() == 1 || look.choice.separator == '\t';
        return look.MayHoldFrequencies() && !(hasUnits && isNamed && isOfLines);
    } catch (const RGException&) {
        return false; // whoever takes it tells what is wrong
    }
}

bool Ask(QWidget& window, const ForeignSource& source, const ForeignPlan& plan) {
    return WithinMemory(source.Path(), false, [&] {
        const QPointer<ForeignDialog> dialog(new ForeignDialog(source, plan, &window));
        const bool isAccepted = dialog->exec() == QDialog::Accepted;
        if (!dialog) // the window has ended
            return false;
        const ForeignPlan chosen = dialog->GetPlan();
        const std::unique_ptr<ForeignReading> reading = dialog->TakeReading();
        delete dialog;
        return isAccepted && apply(window, source, chosen, *reading);
    });
}

bool Take(QWidget& window, const ForeignSource& source, const ForeignPlan& plan) {
    return WithinMemory(source.Path(), false, [&] {
        std::optional<Interchange::TableChoice> choice;
        if (source.IsTable() && !(choice = sureChoice(source)))
            return false;
        const std::unique_ptr<ForeignReading> reading =
            source.Read({}, choice.value_or(Interchange::TableChoice()));
        if (!isWhole(*reading))
            return false;
        if (const QString tooLarge = WhyTooLarge(reading->account.entries, AvailableMemory());
            !tooLarge.isEmpty())
            return refuse(source, tooLarge);
        return apply(window, source, plan, *reading);
    });
}

} // namespace ForeignImport
