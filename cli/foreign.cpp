#include "cli/foreign.h"

#include "cli/command.h"
#include "cli/jsonfile.h"
#include "cli/output.h"
#include "controls/frequencystore/files/filekind.h"
#include "host/base/problems.h"
#include "interchange/formatlist.h"
#include "interchange/table.h"

#include <QFileInfo>

#include <algorithm>
#include <optional>

namespace {

constexpr char TraceSource[] = "foreign";

QString idsOf(bool written) {
    QStringList ids;
    for (const Interchange::Format* format : Interchange::Formats()) {
        if (!written || format->makeEncoder)
            ids << QString::fromLatin1(format->id);
    }
    return ids.join(QStringLiteral(", "));
}

/// The time of `--on-air`; an invalid one for what is none.
QDateTime timeOnAir(const QString& text) {
    if (text == QLatin1String("now"))
        return QDateTime::currentDateTimeUtc();
    QDateTime time = QDateTime::fromString(text, Qt::ISODate);
    if (time.timeSpec() == Qt::LocalTime) // no zone is named
        time.setTimeSpec(Qt::UTC);
    return time;
}

void tellAccount(const QString& path, const QString& what, const Interchange::Account& account) {
    QStringList facts{Counted(account.entries, "entry", "entries")};
    if (account.refused > 0)
        facts << Counted(account.refused, "line refused", "lines refused");
    if (const QString counts = account.CountsText(); !counts.isEmpty())
        facts << QStringLiteral("without a place or changed: ") + counts;
    TellError(QStringLiteral("%1: %2: %3").arg(path, what, facts.join(QStringLiteral("; "))));
}

/// Takes `--columns` for a table; false, told, when that has no such columns.
bool takeColumns(const QString& columns, const QString& path, Interchange::TableLook& look) {
    try {
        Interchange::TakeTableOptions(columns, look, look.choice);
        return true;
    } catch (const RGException& exception) {
        Problems::Report(TraceSource, {path, 0, QStringLiteral("--columns: ") + exception.GetErrorText()});
        return false;
    }
}

/// How a table is read: as `--columns` says, or as its headings do; nothing, told, when that leaves anything
/// open.
std::optional<Interchange::TableChoice> choiceFor(const Arguments& args, const QString& path) {
    try {
        Interchange::TableLook look = Interchange::LookAtTable(path);
        if (!look.MayHoldFrequencies() && !args.IsSet("columns")) {
            Problems::Report(TraceSource, {path, 0, QStringLiteral("is of no known kind of file")});
            return std::nullopt;
        }
        if (args.IsSet("columns") && !takeColumns(args.Value("columns"), path, look))
            return std::nullopt;
        const QString open = look.choice.WhyOpen(look.headings);
        if (open.isEmpty())
            return look.choice;
        const QString proposal = look.proposal.ToText(look.headings);
        Problems::Report(
            TraceSource,
            proposal.isEmpty()
                ? Problem{path, 0,
                          QStringLiteral(
                              "is of no known kind of file; if it is a table, --columns tells what "
                              "it holds")}
                : Problem{path, 1,
                          QStringLiteral("is a table of another program, and %1; if it is so, say: "
                                         "--columns \"%2\"")
                              .arg(open, proposal)});
    } catch (const RGException& exception) {
        Problems::Report(TraceSource, Problem::FromText(exception.GetErrorText()));
    }
    return std::nullopt;
}

/// Whether a file is a table that the list does not read as its own.
bool isTableOfOthers(const CliList& list, const QString& path) {
    if (!QFileInfo(path).isFile())
        return false;
    const FileFormat own = list.Names().FormatRead(path);
    if (own != FileFormat::Csv || !list.Parser())
        return own == FileFormat::Unknown;
    try {
        const Interchange::TableLook look = Interchange::LookAtTable(path);
        return look.MayHoldFrequencies() && !look.IsOwn();
    } catch (const RGException&) {
        return false; // the list's reader tells what is wrong
    }
}

} // namespace

void Foreign::AddOptions(QCommandLineParser& parser) {
    parser.addOption(
        {QStringLiteral("columns"),
         QStringLiteral("What the columns of a table hold, as \"frequency=Freq:MHz,name=Call,mode=Mode\"; "
                        "also bandwidth and notes."),
         QStringLiteral("COLUMNS")});
    parser.addOption(
        {QStringLiteral("keep-extras"),
         QStringLiteral("Keep in the comment what other programs' files say and lists have no place for.")});
    parser.addOption(
        {QStringLiteral("on-air"),
         QStringLiteral("Of a file with times on air, take only what is on air at a time, or now."),
         QStringLiteral("TIME|now")});
}

bool Foreign::CheckOptions(const Arguments& args) {
    if (args.IsSet("on-air") && !timeOnAir(args.Value("on-air")).isValid()) {
        args.TellUsage(
            QStringLiteral("--on-air \"%1\" is neither \"now\" nor a time such as 2026-05-01T18:30:00Z")
                .arg(args.Value("on-air")));
        return false;
    }
    try {
        if (args.IsSet("columns"))
            Interchange::ParseTableOptions(args.Value("columns"));
        return true;
    } catch (const RGException& exception) {
        args.TellUsage(QStringLiteral("--columns: ") + exception.GetErrorText());
        return false;
    }
}

bool Foreign::IsOfOthers(const CliList& list, const QString& path) {
    if (!list.Parser())
        return false;
    if (const Interchange::Format* const format = Interchange::FormatOfFile(path))
        return format->read && !IsOwnJson(format);
    const bool isNamedAsOurs = std::ranges::any_of(OwnFiles, [&path](const OwnFileRow& own) {
        return own.kind != OwnFile::Csv && IsNamedAs(own.kind, path);
    });
    return !isNamedAsOurs && isTableOfOthers(list, path);
}

bool Foreign::Read(const Arguments& args, CliList& list, const QString& path, QString* kind) {
    const bool isTold = args.IsSet("columns") && args.Files().size() == 1;
    const Interchange::Format* const format = isTold ? nullptr : Interchange::FormatOfFile(path);
    const bool isTable = isTold || (!format && isTableOfOthers(list, path));
    if (args.IsSet("on-air") && !(format && format->hasSchedule) && QFileInfo(path).isFile()) {
        Problems::Report(TraceSource,
                         {path, 0, QStringLiteral("has no times on air, which --on-air asks for")});
        return false;
    }
    if (!format && !isTable)
        return list.Read(path);
    Interchange::ReadOptions options;
    options.keepExtras = args.IsSet("keep-extras");
    if (args.IsSet("on-air"))
        options.onAirAt = timeOnAir(args.Value("on-air"));
    const QString what = format ? format->Name() : QStringLiteral("table");
    std::optional<Interchange::TableChoice> choice;
    if (isTable && !(choice = choiceFor(args, path)))
        return false;
    Interchange::Account account;
    const bool isOwn = IsOwnJson(format);
    const bool isRead = isOwn ? list.ReadJson(path, options, account)
                              : list.ReadRecords(path, [&](const Interchange::TakeEntry& take) {
                                    account = format ? Interchange::Read(*format, path, options, take)
                                                     : Interchange::ReadTable(path, *choice, options, take);
                                });
    if (isRead && !(isOwn && account.CountsText().isEmpty()))
        tellAccount(path, what, account);
    if (kind)
        *kind = what;
    return isRead;
}

bool Foreign::CheckTo(const Arguments& args, int& exitCode) {
    const Interchange::Format* const format = Interchange::FormatOfId(args.Value("to"));
    if (format && format->makeEncoder)
        return true;
    exitCode = ExitUsage;
    args.TellUsage(format
                       ? QStringLiteral("files of %1 are only read").arg(format->Name())
                       : QStringLiteral("no format is called \"%1\": %2").arg(args.Value("to"), idsOf(true)));
    return false;
}

bool Foreign::Write(const Arguments& args, const CliList& list, const QString& path) {
    const Interchange::Format& format = *Interchange::FormatOfId(args.Value("to"));
    try {
        if (IsOwnJson(&format)) { // whose entries have all their values
            WriteJson(path, list,
                      &format == &Interchange::OwnJson ? Interchange::JsonArray : Interchange::JsonLines);
            return true;
        }
        const std::optional<Interchange::Account> written =
            Interchange::Write(format, path, list.Content(), [&](const Interchange::Account& lost) {
                if (const QString text = lost.CountsText(); !text.isEmpty())
                    TellError(QStringLiteral("%1: %2 cannot hold: %3").arg(path, format.Name(), text));
                return true;
            });
        return written && written->refused == 0;
    } catch (const RGException&) { // told
        return false;
    }
}

int RunFormats(const QStringList& arguments) {
    Arguments args("formats", "Prints the files of other programs that can be read and written.", 0, false);
    int exitCode = ExitDone;
    if (!args.Take(arguments, exitCode))
        return exitCode;
    Output out(stdout);
    const auto line = [&out](const char* id, const char* name, const char* ways, const char* lost) {
        return out.Line(QString::asprintf("%-22s%-30s%-13s%s", id, name, ways, lost));
    };
    bool isPrinted = line("FORMAT", "FILES", "", "WHAT IS LOST");
    for (const Interchange::Format* format : Interchange::Formats())
        isPrinted = isPrinted && line(format->id, format->name, format->Ways(), format->lost);
    return isPrinted ? ExitDone : ExitFile;
}
