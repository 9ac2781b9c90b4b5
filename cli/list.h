#pragma once

#include "cli/listfiles.h"
#include "host/base/problemdigest.h"
#include "host/base/query.h"
#include "interchange/format.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

class GeneralListParser;
class HalvoNodeMediatorCtrl;
class Node;
class Shape;
class ValueBase;

namespace Interchange {
class JsonEntry;
}

enum class FieldType { Text, Number, Flag, Numbers };

/// One member of an entry: its key, and its content as text. Of a number that there is not the text is empty;
/// several numbers are separated by ";".
struct EntryField {
    QString key;
    QString text;
    FieldType type;
};

/// Answers whether it wants the next entry, too. The fields are those of one entry until it answers: their
/// memory is used for the next one.
using EntryVisitor = std::function<bool(const std::vector<EntryField>&)>;

/// A kind of list as the commands see it: reads and writes files through the list's own handler, and JSON
/// files of each kind.
class CliList {
public:
    CliList();
    virtual ~CliList() = default;

    /// Replaces the list by the file's content; false when the file could not be read. Problems are told
    /// through the problem sink.
    bool Read(const QString& path);
    bool Write(const QString& path);
    /// Replaces the list by the entries that `read` hands on, as those of a file of that name; false, told,
    /// when that fails or the list takes none.
    bool ReadRecords(
        const QString& path,
        const std::function<void(const std::function<void(const FreqStoreXml::FrequencyStoreEntry&)>&)>&
            read);
    /// The same by the file's JSON, which has the values of the entries. What has no place in the list is
    /// counted in `account`.
    bool ReadJson(const QString& path, const Interchange::ReadOptions& options,
                  Interchange::Account& account);
    /// What a file of another program gets of the list.
    virtual Interchange::Content Content() const;
    /// How the list tells formats by names.
    virtual const FileNames& Names() const = 0;
    /// Number of entries.
    virtual size_t Count() const;
    /// The members of each entry, in list order; false when the visitor stopped it. Entries that do not match
    /// the query are passed over; its columns are the keys.
    bool ForEachEntry(const EntryVisitor& visit) const;
    /// Keys of the first entry; none of an empty list.
    QStringList Keys() const;
    void SetQuery(Query query) { m_query = std::move(query); }

    /// Who takes the entries of other programs' files; null for a list that takes none.
    virtual GeneralListParser* Parser() const { return nullptr; }
    /// The node whose children are the entries; null for a list whose entries are no nodes.
    virtual Node* GetNode() const { return nullptr; }
    /// Who has the entries that are nodes; null for others.
    virtual HalvoNodeMediatorCtrl* Controller() const { return nullptr; }
    /// Name and shape of the entries' nodes; null for a list whose entries are no nodes.
    struct EntryNodes {
        const char* name = nullptr;
        const Shape* shape = nullptr;
    };
    virtual EntryNodes GetEntryNodes() const { return {}; }
    /// The value whose records are the entries; null for a list whose entries are no records.
    virtual ValueBase* Records() { return nullptr; }
    /// Adds an entry behind those that are there.
    virtual void AddEntry(const Interchange::JsonEntry& entry) = 0;
    /// Entries have been added or changed from outside.
    virtual void EntriesChanged() {}

protected:
    /// The same for the files of the list's own formats.
    virtual bool ReadFile(const QString& path) = 0;
    virtual bool WriteFile(const QString& path) = 0;
    /// The members of each entry, as `ForEachEntry` gives them without a query.
    virtual bool VisitEntries(const EntryVisitor& visit) const;

    /// Bracket the entries of a JSON file, as the handler does those of a file of its own; `isWhole` says
    /// whether the file was good. If it was not, the list is left empty.
    virtual void BeginEntries() = 0;
    virtual void EndEntries(bool isWhole) = 0;

private:
    Query m_query;
};

/// The members of an entry that is a node.
std::vector<EntryField> FieldsOf(const Node& entry);

/// The list of a kind ("target"); null for an unknown kind.
std::unique_ptr<CliList> MakeList(const QString& kind);
/// What the end of a list leaves to be done before the next one is made. A program that ends does not do it:
/// a million entries need not be taken apart for that.
void LeaveToNextList(std::function<void()> end);
/// Does it now; for those who go on without a list.
void EndLeftLists();
/// The kind of list that a file is read as when none is named.
QString ListKindOf(const QString& path);
/// The kind that a file tells by its name or content; empty when the lists of several kinds read such files.
QString ListKindToldBy(const QString& path);
/// Whether a job's channels are those of a VHF/UHF receiver; empty when it has none that tell.
std::optional<bool> IsJobOfVUHF(const QString& path);
/// A number of things: "no entries", "1 entry", "2 entries".
QString Counted(qint64 count, const char* one, const char* many);
/// Names of all kinds.
QStringList ListKinds();

/// Results of a classifier.
std::unique_ptr<CliList> MakeResults();
/// The members of a detection that travels between seats, as those of a list of detections; none when the
/// layout is that of something else.
class EntryLayout;
std::vector<EntryField> FieldsOfDetection(const EntryLayout& layout, QByteArrayView contents);
/// Lists of detections: plain, of an HF and of a VHF/UHF search with classifier.
std::unique_ptr<CliList> MakeDetections();
std::unique_ptr<CliList> MakeDetectionsHF();
std::unique_ptr<CliList> MakeDetectionsVUHF();

/// Counts the problems that readers and writers tell, and prints them to standard error, while it lives. Of
/// many of one kind it prints the first ones and a summary.
class ProblemPrinter {
public:
    ProblemPrinter();
    ~ProblemPrinter();
    qint64 Count() const { return m_count; }
    /// Prints what was held back of the file that has been read.
    void Flush() { m_digest.Flush(); }

private:
    ProblemDigest m_digest;
    qint64 m_count = 0;
};
