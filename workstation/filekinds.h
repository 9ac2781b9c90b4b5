#pragma once

#include <QString>

/// Which part of the workstation reads a file. What nobody else claims goes to the target list, which tells
/// what is wrong with it.
enum class FileKind { Job, Noi, Results, Sweep, Targets };

/// Tells the kind by the name; of an XML file, by the usage that its root element names; of power sweeps, by
/// their rows.
FileKind FileKindOf(const QString& path);
