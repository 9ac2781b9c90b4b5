#pragma once

#include "cli/arguments.h"
#include "host/freqlist/entrymerge.h"

#include <QJsonValue>

#include <string>

/// The entries of a list as texts, in a few hundred bytes each: they stay when the list has gone.
class StoredEntries {
public:
    void Append(const std::vector<EntryField>& entry);
    size_t Size() const { return m_begins.size(); }
    std::vector<EntryField> At(size_t place) const;

private:
    struct Begin {
        size_t text;
        size_t shape;
    };

    std::vector<std::vector<EntryField>> m_shapes; ///< keys and types, without texts
    std::vector<Begin> m_begins;
    std::string m_texts; ///< UTF-8, each behind its length
};

/// Two files as lists of one kind, compared. The first one stands in its list; of the second there are the
/// texts, since a kind has one list at a time.
class TwoLists {
public:
    /// Kind of the list that reads both files of the command line; empty, told, when there is none.
    static QString KindOfBoth(const Arguments& args);
    /// Adds the option `--tolerance`, and takes it: false, told, when it is no number of Hz.
    static void AddTolerance(QCommandLineParser& parser);
    static bool TakeTolerance(const Arguments& args, double& hertz);

    /// Reads both files of the command line and compares them; false, told, when one cannot be read.
    /// `readFirst` reads the first one into the list, which else is read as what it is.
    using Reader = std::function<bool(CliList& list, const QString& path)>;
    bool Read(const Arguments& args, const QString& kind, double tolerance, const Reader& readFirst = {});

    CliList& First() { return *m_first; }
    const StoredEntries& Second() const { return m_second; }
    /// For each entry of the second list the place of the one of the first that it belongs to, or
    /// `EntryMerge::None`.
    const std::vector<quint32>& OfSecond() const { return m_ofSecond; }
    /// The same the other way round.
    std::vector<quint32> OfFirst() const;

private:
    std::unique_ptr<CliList> m_first;
    StoredEntries m_second;
    size_t m_sizeOfFirst = 0;
    std::vector<quint32> m_ofSecond;
};

/// An entry's members as they are compared.
std::vector<EntryMerge::Field> ComparedFields(const std::vector<EntryField>& entry);
/// A member as JSON has it; null for a number that there is not.
QJsonValue JsonOf(const EntryField& field);
