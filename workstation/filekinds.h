#pragma once

#include <QString>

/// Which part of the workstation reads a file. `Foreign` is a file of another program whose format is known,
/// `Table` a table that may be of any. What nobody else claims goes to the target list, which tells what is
/// wrong with it.
enum class FileKind { Foreign, Job, Noi, Results, Sweep, Table, Targets };

/// Tells the kind by the content, where that is another program's; else by the name; of an XML file, by the
/// usage that its root element names; of power sweeps, by their rows. A table is our own when all its
/// headings are, and when its frequencies can be in Hz.
FileKind FileKindOf(const QString& path);

/// Of file dialogs: all files that somebody reads.
QString KnownFilesFilter();
