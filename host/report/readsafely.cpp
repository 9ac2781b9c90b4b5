#include "host/report/readsafely.h"

#include "host/base/longwork.h"
#include "host/base/problems.h"
#include "host/report/byteinput.h"

#include <algorithm>

namespace REPORTGENERATOR {

namespace {
/// Taking entries out of a list needs a pointer for each of them.
constexpr qsizetype KeptBytes = 16 * 1024 * 1024;
} // namespace

NotEnoughMemory::NotEnoughMemory(const QString& file, const DroppedEntries& dropped)
    : RGException(
          ErrorText(file, 0,
                    QStringLiteral("not enough memory to read it (%1 %2 read)%3")
                        .arg(QString::number(dropped.count),
                             dropped.count == 1 ? QLatin1String("entry was") : QLatin1String("entries were"),
                             QLatin1String(dropped.listIsEmpty ? "; the list is empty now" : "")))),
      m_count(dropped.count) {}

bool ReadSafely(TracePlace place, const QString& file, const std::function<bool()>& read,
                const std::function<DroppedEntries()>& drop) {
    QByteArray kept;
    qint64 staged = 0;
    try {
        kept = QByteArray(KeptBytes, Qt::Uninitialized); // takes no memory while nobody writes to it
        return read();
    } catch (const WorkCancelled&) {
        const LongWork::Unbroken unbroken;
        drop();
        throw;
    } catch (const NotEnoughMemory& exception) {
        staged = exception.GetCount();
    } catch (const RGException& exception) {
        Problems::Report(place, Problem::FromText(exception.GetErrorText()));
        return false;
    } catch (const std::bad_alloc&) {
    }
    kept = QByteArray();
    DroppedEntries dropped = drop();
    dropped.count = std::max(dropped.count, staged);
    Problems::Report(place, Problem::FromText(NotEnoughMemory(file, dropped).GetErrorText()));
    return false;
}

} // namespace REPORTGENERATOR
