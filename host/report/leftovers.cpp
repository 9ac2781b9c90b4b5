#include "host/report/leftovers.h"

#include <QCoreApplication>
#include <QDir>
#include <QRegularExpression>
#include <QSysInfo>

#include <atomic>
#include <cerrno>
#include <csignal>

namespace REPORTGENERATOR {

namespace {

constexpr char NamePattern[] = ".freqstore-%1-%2-%3.part"; ///< machine, process, number

QString machine() {
    QString name = QSysInfo::machineHostName();
    return name.replace(QLatin1Char('/'), QLatin1Char('_'));
}

bool hasGone(pid_t process) {
    return ::kill(process, 0) != 0 && errno == ESRCH;
}

} // namespace

QString TemporaryName(const QString& folder) {
    static std::atomic<quint64> number = 0; // files are written in several threads
    return QDir(folder).filePath(
        QString::fromLatin1(NamePattern)
            .arg(machine(), QString::number(QCoreApplication::applicationPid()), QString::number(++number)));
}

void RemoveLeftovers(const QString& folder) {
    static const QRegularExpression ours(
        QRegularExpression::anchoredPattern(QString::fromLatin1(NamePattern)
                                                .replace(QLatin1Char('.'), QLatin1String("\\."))
                                                .arg(QRegularExpression::escape(machine()),
                                                     QStringLiteral("([0-9]+)"), QStringLiteral("[0-9]+"))));
    const QDir directory(folder);
    const QStringList names =
        directory.entryList({QStringLiteral(".freqstore-*.part")}, QDir::Files | QDir::Hidden | QDir::System);
    for (const QString& name : names) {
        const QRegularExpressionMatch match = ours.match(name);
        const pid_t process = match.captured(1).toInt();
        if (process > 0 && hasGone(process))
            QFile::remove(directory.filePath(name));
    }
}

} // namespace REPORTGENERATOR
