#pragma once

#include <QFile>

#include <malloc.h>

/// What the process holds, when free memory has been given back.
inline double residentBytes() {
    malloc_trim(0);
    QFile file(QStringLiteral("/proc/self/statm"));
    file.open(QIODevice::ReadOnly);
    return file.readAll().split(' ')[1].toDouble() * 4096;
}

/// The most memory that the process has held since `forgetPeak`, in bytes.
inline double peakBytes() {
    QFile file(QStringLiteral("/proc/self/status"));
    file.open(QIODevice::ReadOnly);
    for (const QByteArray& line : file.readAll().split('\n')) {
        if (line.startsWith("VmHWM:"))
            return line.mid(6).simplified().split(' ')[0].toDouble() * 1024;
    }
    return 0;
}

inline void forgetPeak() {
    QFile file(QStringLiteral("/proc/self/clear_refs"));
    if (file.open(QIODevice::WriteOnly))
        file.write("5");
}
