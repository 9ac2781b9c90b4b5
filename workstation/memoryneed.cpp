#include "workstation/memoryneed.h"

#include "host/base/problems.h"

#include <QCoreApplication>
#include <QFile>
#include <QLocale>

#include <algorithm>
#include <limits>
#include <sys/resource.h>
#include <unistd.h>

namespace {

/// What an entry takes in tree, controller and view, as measured by the greatest resident memory of this
/// program with half a million frequencies of interest of a ".noi" file, less that without them: 990. Targets
/// take 720.
constexpr qint64 BytesPerEntry = 1000;

/// A number of a line "Name:  1234 kB", in bytes; -1 without such a line.
qint64 bytesOf(const QByteArray& text, const QByteArray& name) {
    const qsizetype start = text.indexOf(name + ':');
    if (start < 0)
        return -1;
    const qsizetype end = text.indexOf('\n', start);
    const QByteArray line = text.mid(start + name.size() + 1, end < 0 ? -1 : end - start - name.size() - 1);
    bool isNumber = false;
    const qint64 kilobytes = line.simplified().split(' ').value(0).toLongLong(&isNumber);
    return isNumber ? kilobytes * 1024 : -1;
}

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

qint64 AvailableMemory() {
    qint64 available = bytesOf(contentOf(QStringLiteral("/proc/meminfo")), "MemAvailable");
    if (available < 0)
        available = qint64(sysconf(_SC_AVPHYS_PAGES)) * sysconf(_SC_PAGESIZE);
    rlimit limit{};
    if (getrlimit(RLIMIT_AS, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY) {
        const qint64 used = bytesOf(contentOf(QStringLiteral("/proc/self/status")), "VmSize");
        const auto most = static_cast<qint64>(
            std::min<rlim_t>(limit.rlim_cur, static_cast<rlim_t>(std::numeric_limits<qint64>::max())));
        available = std::min(available, most - std::max<qint64>(used, 0));
    }
    return available;
}

QString WhyTooLarge(qint64 entries, qint64 available) {
    if (entries <= available / BytesPerEntry)
        return QString();
    const QLocale locale;
    return QCoreApplication::translate("MemoryNeed", "%1 entries need %2 of memory, and %3 are available")
        .arg(locale.toString(entries), locale.formattedDataSize(entries * BytesPerEntry, 1),
             locale.formattedDataSize(std::max<qint64>(available, 0), 1));
}

void TellOutOfMemory(const QString& what) {
    Problems::Report(
        "memoryneed",
        {what, 0,
         QCoreApplication::translate("MemoryNeed", "there is not enough memory; it was given up half-way")});
}
