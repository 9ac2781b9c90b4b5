#pragma once

#include <QString>

/// The folder of the sample lists of a program that lies in `programDirectory`: the one that was installed
/// with it, or a folder "samples" in the program's folder or one above it. Empty when there is none.
QString FindSamples(const QString& programDirectory);
