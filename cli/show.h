#pragma once

#include <QString>

class CliList;
class QCommandLineParser;

/// Writes the entries of a list to standard output in one format.
using EntryPrinter = void (*)(const CliList& list);

/// Adds the option `--format`.
void AddFormatOption(QCommandLineParser& parser);
/// What `--format` names; null, told under the command's name, when there is no such format.
EntryPrinter PrinterOf(const QString& format, const char* command);
