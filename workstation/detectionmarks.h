#pragma once

#include "host/valuetree/detection.h"

#include <functional>
#include <memory>
#include <vector>

/// A detection as a picture shows it.
struct DetectionMark {
    double frequency; ///< Hz
    double bandwidth; ///< Hz
    double start;     ///< µs since 1970-01-01 UTC
    double stop;      ///< the same; of an active one, when it was last seen
    unsigned id;
    short level; ///< dB

    double From() const { return frequency - bandwidth / 2; }
    double To() const { return frequency + bandwidth / 2; }
    bool operator==(const DetectionMark&) const = default;
};

/// Follows a list of detections of the value tree, plain ones or ones with results, and looks only at those
/// that came or changed.
class DetectionMarks {
public:
    /// The list at that path, which need not be there.
    explicit DetectionMarks(const QString& path);
    ~DetectionMarks();
    DetectionMarks(const DetectionMarks&) = delete;
    DetectionMarks& operator=(const DetectionMarks&) = delete;

    /// Whether a list of detections is there.
    static bool IsList(const QString& path);
    /// Follows another list from now on.
    void SetList(const QString& path);

    /// By place in the list, as they are now.
    const std::vector<DetectionMark>& Get();
    /// The record at a place; null when there is none.
    const DetectionConventional* Record(size_t place) const;
    /// Called when the list has changed.
    std::function<void()> OnChanged;

private:
    class List;
    template <typename T>
    class ListOf;

    std::unique_ptr<List> m_list; ///< null when none is there
    std::vector<DetectionMark> m_marks;
};
