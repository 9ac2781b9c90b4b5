#include "host/report/filework.h"

#include "host/base/longwork.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace REPORTGENERATOR {

namespace {

bool doAsWork(const QString& title, const QString& path, const std::function<bool()>& work) {
    bool isDone = false;
    const bool isWhole = LongWork::Run(title.arg(QFileInfo(path).fileName()), [&] { isDone = work(); });
    return isWhole && isDone;
}

} // namespace

bool ReadAsWork(const QString& path, const std::function<bool()>& work) {
    return doAsWork(QCoreApplication::translate("Readers", "Reading %1"), path, work);
}

bool WriteAsWork(const QString& path, const std::function<bool()>& work) {
    return doAsWork(QCoreApplication::translate("Readers", "Saving %1"), path, work);
}

} // namespace REPORTGENERATOR
