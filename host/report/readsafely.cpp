#include "host/report/readsafely.h"

#include "host/base/problems.h"
#include "host/report/byteinput.h"

namespace REPORTGENERATOR {

namespace {
/// Taking entries out of a list needs a pointer for each of them.
constexpr qsizetype KeptBytes = 16 * 1024 * 1024;
} // namespace

RGException NotEnoughMemory(const QString& file, const DroppedEntries& dropped) {
    return RGException(ErrorText(
        file, 0,
        QStringLiteral("not enough memory to read it (%1 %2 read)%3")
            .arg(QString::number(dropped.count),
                 dropped.count == 1 ? QLatin1String("entry was") : QLatin1String("entries were"),
                 dropped.listIsEmpty ? QLatin1String("; the list is empty now") : QLatin1String())));
}

bool ReadSafely(const char* source, unsigned short line, const QString& file,
                const std::function<bool()>& read, const std::function<DroppedEntries()>& drop) {
    QByteArray kept;
    QString reason;
    try {
        kept = QByteArray(KeptBytes, Qt::Uninitialized); // takes no memory while nobody writes to it
        return read();
    } catch (const RGException& exception) {
        reason = exception.GetErrorText();
    } catch (const std::bad_alloc&) {
        kept = QByteArray();
    }
    if (reason.isEmpty())
        reason = NotEnoughMemory(file, drop()).GetErrorText();
    Problems::Report(source, line, Problem::FromText(reason));
    return false;
}

} // namespace REPORTGENERATOR
