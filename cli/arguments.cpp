#include "cli/arguments.h"

#include "cli/command.h"

#include <cstdio>

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
        std::fputs(qPrintable(m_parser.helpText()), stdout);
        exitCode = ExitDone;
        return false;
    }
    const qsizetype count = m_parser.positionalArguments().size();
    const bool countFits = m_files < 0 ? count > 0 : count == m_files;
    if (parsed && countFits)
        return true;
    const QString reason = parsed ? QStringLiteral("wrong number of files") : m_parser.errorText();
    std::fprintf(stderr, "freqstore-cli %s: %s\n", qPrintable(m_command), qPrintable(reason));
    exitCode = ExitUsage;
    return false;
}

std::unique_ptr<CliList> Arguments::List(const QString& path) const {
    const QString kind = m_parser.isSet(QStringLiteral("list")) ? Value("list") : ListKindOf(path);
    std::unique_ptr<CliList> list = MakeList(kind);
    if (!list)
        std::fprintf(stderr, "freqstore-cli %s: no kind of list is called \"%s\"\n", qPrintable(m_command),
                     qPrintable(kind));
    return list;
}
