#include "cli/arguments.h"

#include "cli/command.h"
#include "cli/output.h"

Arguments::Arguments(const char* command, const char* usage, int files, bool takesList)
    : m_command(QString::fromLatin1(command)), m_files(files) {
    m_parser.setApplicationDescription(QString::fromLatin1(usage));
    m_parser.addHelpOption();
    if (takesList)
        m_parser.addOption({QStringLiteral("list"),
                            QStringLiteral("Kind of list: %1.").arg(ListKinds().join(QStringLiteral(", "))),
                            QStringLiteral("KIND"), QStringLiteral("target")});
}

bool Arguments::Take(const QStringList& arguments, int& exitCode) {
    const bool parsed = m_parser.parse(QStringList{QStringLiteral("freqstore-cli ") + m_command} + arguments);
    if (parsed && m_parser.isSet(QStringLiteral("help"))) {
        Output(stdout).Text(m_parser.helpText());
        exitCode = ExitDone;
        return false;
    }
    const qsizetype count = m_parser.positionalArguments().size();
    const bool countFits = m_files == AnyNumber || (m_files < 0 ? count > 0 : count == m_files);
    if (parsed && countFits)
        return true;
    TellUsage(parsed ? QStringLiteral("wrong number of files") : m_parser.errorText());
    exitCode = ExitUsage;
    return false;
}

std::unique_ptr<CliList> Arguments::List(const QString& path) const {
    const QString kind = IsSet("list") ? Value("list") : ListKindOf(path);
    std::unique_ptr<CliList> list = MakeList(kind);
    if (!list)
        TellUsage(QStringLiteral("no kind of list is called \"%1\"").arg(kind));
    return list;
}

void Arguments::TellUsage(const QString& reason) const {
    TellError(QStringLiteral("freqstore-cli %1: %2").arg(m_command, reason));
}
