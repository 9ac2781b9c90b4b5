#include "controls/frequencystore/files/filegate.h"

#include <utility>

namespace FileGate {

namespace {

Guard* currentGuard = nullptr;

} // namespace

Guard* SetGuard(Guard* guard) {
    return std::exchange(currentGuard, guard);
}

bool MayRead(List list, const QString& path) {
    return !currentGuard || currentGuard->MayRead(list, path);
}

void WasRead(List list, const QString& path, bool read) {
    if (currentGuard)
        currentGuard->WasRead(list, path, read);
}

void WasWritten(List list, const QString& path) {
    if (currentGuard)
        currentGuard->WasWritten(list, path);
}

} // namespace FileGate
