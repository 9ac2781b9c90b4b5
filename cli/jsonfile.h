#pragma once

#include "cli/output.h"
#include "interchange/jsonentry.h"

class CliList;
struct EntryField;
class Node;
struct EntryField;

// JSON with the values of the lists' entries, each under its name. Members without a value, such as the type
// letter, which follows from the others, are passed over when reading, and so are those that are null.

/// Whether a format is such JSON, as an array or as lines, which the lists read and write themselves.
bool IsOwnJson(const Interchange::Format* format);
/// What a file of that name is written as.
const Interchange::JsonFrame& JsonFrameOf(const QString& path);

/// Reads the entries of a file one by one until `take` answers false.
Interchange::Account ReadJson(const QString& path, const Interchange::ReadOptions& options,
                              const std::function<bool(const Interchange::JsonEntry&)>& take);

/// Adds a field as a member.
void AddToJson(Interchange::JsonEntry& entry, const EntryField& field);
/// Sets the values of an entry's node by the members of the same name.
void FillFromJson(Node& node, const Interchange::JsonEntry& entry);

/// Appends an entry's members, such as "\"frequency\":7055000", separated by commas.
void AppendJsonMembers(std::string& out, const std::vector<EntryField>& fields);
/// Hands on a JSON file piece by piece, until `take` answers false.
void PrintJson(const CliList& list, const Interchange::JsonFrame& frame, const TakeUtf8& take);
/// Writes a JSON file; throws RGException, with the old file in place, when it cannot be written.
void WriteJson(const QString& path, const CliList& list, const Interchange::JsonFrame& frame);
