#pragma once

#include "cli/output.h"

#include <QJsonObject>
#include <QString>

#include <functional>
#include <vector>

class CliList;
struct EntryField;
class Node;

// A JSON file is an array with an object per entry, whose members have the names of the entry's values.
// Members without a value, such as the type letter, which follows from the others, are passed over when
// reading, and so are those that are null.

/// One entry as it is read. The operations leave `content` as it is where the member is missing or null, and
/// throw RGException when it is of another type.
class JsonEntry {
public:
    /// "file:line: entry n" stands before the reasons.
    JsonEntry(QJsonObject members, QString place)
        : m_members(std::move(members)), m_place(std::move(place)) {}

    bool Has(const QString& key) const { return !m_members.value(key).isNull() && m_members.contains(key); }
    void Take(const QString& key, QString& content) const;
    void Take(const QString& key, bool& content) const;
    void Take(const QString& key, double& content) const;
    void Take(const QString& key, std::vector<double>& content) const;
    /// A whole number of that range.
    void Take(const QString& key, qint64& content, qint64 least, qint64 greatest) const;
    /// A text, or a number in its shortest form.
    void TakeTextOrNumber(const QString& key, QString& content) const;

    [[noreturn]] void Fail(const QString& key, const char* reason) const;

private:
    QJsonObject m_members;
    QString m_place;
};

/// Reads the entries one by one until `take` answers false. Each must have a frequency. Throws RGException
/// "file:line: reason" at the first thing that is wrong.
void ReadJson(const QString& path, const std::function<bool(const JsonEntry&)>& take);

/// Sets the values of an entry's node by the members of the same name.
void FillFromJson(Node& node, const JsonEntry& entry);

/// Appends an entry's members, such as "\"frequency\":7055000", separated by commas.
void AppendJsonMembers(std::string& out, const std::vector<EntryField>& fields);
/// Hands on a JSON file piece by piece, until `take` answers false.
void PrintJson(const CliList& list, const TakeUtf8& take);
/// Writes a JSON file; throws RGException, with the old file in place, when it cannot be written.
void WriteJson(const QString& path, const CliList& list);
