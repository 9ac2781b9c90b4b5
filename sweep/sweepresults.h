#pragma once

#include "host/valuetree/detection.h"
#include "sweep/sweepdetector.h"

#include <QString>

#include <memory>

/// Writes the detections of a sweep to a file, one by one: detection results in XML, or the CSV table of a
/// detection list. They are numbered from 1. The old file stands until Commit(); a writer that is destroyed
/// before leaves it untouched. All operations throw RGException "file: reason".
class SweepResultWriter {
public:
    /// Whether the name is that of a file that can be written: one with ".xml" or ".csv" in it.
    static bool KnowsName(const QString& fileName);

    explicit SweepResultWriter(const QString& fileName);
    ~SweepResultWriter();

    void Append(const SweepDetection& detection);
    void Commit();
    qint64 Count() const { return m_count; }

private:
    class Format;
    class Xml;
    class Csv;

    std::unique_ptr<Format> m_format;
    qint64 m_count = 0;
};

/// The record of a detection for a list of the value tree, without a number. It is not active: nobody
/// receives any more what was swept.
DetectionConventional RecordOf(const SweepDetection& detection);
