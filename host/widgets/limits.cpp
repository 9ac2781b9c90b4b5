#include "host/widgets/limits.h"

#include <QCoreApplication>

namespace Limits {
namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("Limits", text);
}

bool hasMin(const IValueNumeric& number) {
    return number.MinAsDouble() > std::numeric_limits<double>::lowest();
}

bool hasMax(const IValueNumeric& number) {
    return number.MaxAsDouble() < std::numeric_limits<double>::max();
}

} // namespace

QString Text(const IValueNumeric* number, NumberText show) {
    if (!number || !show || !(number->MinAsDouble() < number->MaxAsDouble()))
        return QString();
    const QString min = hasMin(*number) ? show(number->MinAsDouble()) : QString();
    const QString max = hasMax(*number) ? show(number->MaxAsDouble()) : QString();
    if (max.isEmpty())
        return min.isEmpty() ? QString() : tr("from %1").arg(min);
    return min.isEmpty() ? tr("up to %1").arg(max) : tr("%1 to %2").arg(min, max);
}

QString Problem(const IValueNumeric* number, double entry, NumberText show) {
    if (!number || !(number->MinAsDouble() < number->MaxAsDouble()))
        return QString();
    const bool below = entry < number->MinAsDouble();
    if (!below && entry <= number->MaxAsDouble())
        return QString();
    if (hasMin(*number) && hasMax(*number))
        return tr("%1 is outside %2 to %3")
            .arg(show(entry), show(number->MinAsDouble()), show(number->MaxAsDouble()));
    return below ? tr("%1 is below %2").arg(show(entry), show(number->MinAsDouble()))
                 : tr("%1 is above %2").arg(show(entry), show(number->MaxAsDouble()));
}

} // namespace Limits
