#pragma once

#include "cli/arguments.h"

#include <QString>

/// Files of other programs, and tables that no format knows, for the commands that read lists.
namespace Foreign {

/// Adds the options that tell how such files are read.
void AddOptions(QCommandLineParser& parser);

/// Whether these options are such; false, told, for wrong usage.
bool CheckOptions(const Arguments& args);

/// Reads a file of any kind into the list: one of another program by its content, a table by `--columns`, any
/// other by the list's own reader. Of several files `--columns` is for those that are nothing else. False,
/// told, when it could not be read. `kind`, when given, is what it was, and empty for a file of the list's
/// own.
bool Read(const Arguments& args, CliList& list, const QString& path, QString* kind = nullptr);

/// Whether a file that the list takes is one of another program, or a table that is none of ours.
bool IsOfOthers(const CliList& list, const QString& path);

/// Whether a file is written in the format of another program that is named by `--to`; false, told and with
/// the exit code, when there is no such format or it is only read.
bool CheckTo(const Arguments& args, int& exitCode);
/// Tells what the format of `--to` cannot hold of the list, and writes the file; false, told, when it cannot.
bool Write(const Arguments& args, const CliList& list, const QString& path);

} // namespace Foreign
