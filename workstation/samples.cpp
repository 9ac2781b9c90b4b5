#include "workstation/samples.h"

#include <QDir>
#include <QFileInfo>

namespace {

/// What tells the folder from others of its name.
constexpr char SomeSample[] = "targets.xml";

} // namespace

QString FindSamples(const QString& programDirectory) {
    QStringList candidates{QStringLiteral("../share/frequencystore/samples")};
    const QString upwards = QStringLiteral("samples");
    for (QDir folder(programDirectory);;) {
        candidates << folder.absoluteFilePath(upwards);
        if (folder.isRoot() || !folder.cdUp())
            break;
    }
    for (const QString& candidate : candidates) {
        const QDir samples(QDir(programDirectory).absoluteFilePath(candidate));
        if (QFileInfo(samples.filePath(QString::fromLatin1(SomeSample))).isFile())
            return QDir::cleanPath(samples.path());
    }
    return QString();
}
