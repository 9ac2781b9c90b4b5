#include "workstation/freename.h"

#include "host/report/outputfile.h"

#include <QFileInfo>

QString FreeName(const QString& path) {
    return QFileInfo::exists(path) ? REPORTGENERATOR::FreeNameBeside(path) : path;
}
