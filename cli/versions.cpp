#include "cli/arguments.h"
#include "cli/command.h"
#include "cli/output.h"
#include "controls/frequencystore/files/filerecords.h"
#include "host/base/datetime.h"
#include "host/base/problems.h"
#include "host/report/byteinput.h"
#include "host/report/fileversions.h"
#include "host/report/outputfile.h"
#include "host/startup/cfgcenter.h"

#include <QDir>
#include <QFileInfo>
#include <QScopeGuard>
#include <QStandardPaths>

#include <optional>

namespace {

/// Where the workstation keeps things, and how many: its settings tell.
struct Keeping {
    QString folder;
    FileVersions::Limits limits;
};

Keeping keepingOf(const Arguments& args) {
    using Paths = QStandardPaths;
    const QString program = QStringLiteral("/freqstore");
    const auto giveBack = qScopeGuard([] { CfgCenter::SetDirectory(QString()); });
    CfgCenter::SetDirectory(Paths::writableLocation(Paths::GenericConfigLocation) + program);
    const ICfg& settings = CfgCenter::GetAppCfg(ICfg::StartUp);
    const FileVersions::Limits usual;
    QString data = args.IsSet("data") ? args.Value("data")
                                      : settings.GetString(QStringLiteral("DataDirectory"), QString());
    if (data.isEmpty())
        data = Paths::writableLocation(Paths::GenericDataLocation) + program;
    return {QDir(data).filePath(QLatin1String(FileVersions::FolderName)),
            {settings.GetInt(QStringLiteral("Versions"), usual.count),
             FileVersions::BytesPerMegabyte *
                 settings.GetInt(QStringLiteral("VersionsSize"),
                                 static_cast<int>(usual.bytes / FileVersions::BytesPerMegabyte))}};
}

QString textOf(const FileDifference& difference) {
    QStringList parts;
    const auto add = [&](qint64 count, const char* what) {
        if (count > 0)
            parts << QStringLiteral("%1 %2").arg(count).arg(QLatin1String(what));
    };
    add(difference.added, "added");
    add(difference.removed, "removed");
    add(difference.changed, "changed");
    return parts.isEmpty() ? QStringLiteral("equal") : parts.join(QStringLiteral(", "));
}

void printList(const std::vector<FileVersions::Version>& versions, const QString& file) {
    Output out(stdout);
    out.Text(QStringLiteral("number  saved (UTC)            bytes    entries  since then\n"));
    const FileRecords now(file);
    for (size_t i = 0; i < versions.size(); ++i) {
        const FileVersions::Version& version = versions[i];
        const FileRecords then(version.path);
        const QString time = Quor::DateTime(static_cast<quint64>(version.time)).toString(0);
        const QString since = !then.IsWhole()  ? QStringLiteral("cannot be read")
                              : !now.IsWhole() ? QStringLiteral("the file cannot be read")
                                               : textOf(now.Since(then));
        if (!out.Line(QStringLiteral("%1  %2  %3 %4  %5")
                          .arg(i + 1, 6)
                          .arg(time)
                          .arg(version.size, 11)
                          .arg(then.IsWhole() ? then.Count() : version.entries, 10)
                          .arg(since)))
            return;
    }
}

/// The present content is kept as a version before another takes its place. False, told, when that cannot be.
bool restore(const FileVersions::Version& version, FileVersions& versions, const QString& file) {
    try {
        if (!FileVersions::IsWhole(version))
            throw RGException(
                REPORTGENERATOR::ErrorText(version.path, 0, QStringLiteral("is not what was kept")));
        versions.Keep(file);
    } catch (const RGException& exception) {
        Problems::Report("versions", Problem::FromText(exception.GetErrorText()));
        return false;
    }
    return REPORTGENERATOR::WriteCopy(version.path, file);
}

} // namespace

int RunVersions(const QStringList& arguments) {
    Arguments args("versions",
                   "Lists the saved versions of FILE that the workstation has kept, newest first, with what "
                   "was changed between each and the present file; or restores one.",
                   1, false);
    args.Parser().addOption({QStringLiteral("data"),
                             QStringLiteral("The workstation's data directory, if it is not the usual one."),
                             QStringLiteral("DIR")});
    args.Parser().addOption({QStringLiteral("restore"),
                             QStringLiteral("Give FILE the content of this version of it."),
                             QStringLiteral("NUMBER")});
    args.Parser().addOption({QStringLiteral("out"),
                             QStringLiteral("Write the version to OUT instead, and leave FILE as it is."),
                             QStringLiteral("OUT")});
    args.Parser().addPositionalArgument(QStringLiteral("FILE"),
                                        QStringLiteral("File whose versions are meant; it may be gone."));
    int exitCode = ExitDone;
    if (!args.Take(arguments, exitCode))
        return exitCode;
    const ProblemPrinter problems;
    const QString file = args.Files().first();
    const Keeping keeping = keepingOf(args);
    FileVersions versions(keeping.folder);
    versions.SetLimits(keeping.limits);
    const std::vector<FileVersions::Version> kept = versions.Of(file);
    if (kept.empty()) {
        Problems::Report("versions", {file, 0, QStringLiteral("no versions are kept in ") + keeping.folder});
        return ExitFile;
    }
    if (!args.IsSet("restore")) {
        printList(kept, file);
        return ExitDone;
    }
    const qulonglong number = args.Value("restore").toULongLong();
    if (number < 1 || number > kept.size()) {
        args.TellUsage(QStringLiteral("--restore takes a number from 1 to %1, not \"%2\"")
                           .arg(kept.size())
                           .arg(args.Value("restore")));
        return ExitUsage;
    }
    const QString out = args.IsSet("out") ? args.Value("out") : file;
    return restore(kept[number - 1], versions, out) ? ExitDone : ExitFile;
}
