#pragma once

#include <QString>

#include <functional>

namespace REPORTGENERATOR {

/// Reads or writes a file as long work, under a title with the file's name. The result is that of `work`, and
/// false when the operator cancelled: the lists are then as they were, and nothing need be told.
bool ReadAsWork(const QString& path, const std::function<bool()>& work);
bool WriteAsWork(const QString& path, const std::function<bool()>& work);

} // namespace REPORTGENERATOR
