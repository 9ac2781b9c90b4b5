#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <memory>
#include <vector>

class Node;

/// One member of an entry: its key, and its content as text or number.
struct EntryField {
    QString key;
    QString text;
    bool isNumber;
};

using EntryVisitor = std::function<void(const std::vector<EntryField>&)>;

/// A kind of list as the commands see it: reads and writes files through the list's own handler.
class CliList {
public:
    virtual ~CliList() = default;

    /// Replaces the list by the file's content; false when the file could not be read. Problems are told
    /// through the problem sink.
    virtual bool Read(const QString& path) = 0;
    virtual bool Write(const QString& path) = 0;
    /// Number of entries.
    virtual size_t Count() const;
    /// The members of each entry, in list order.
    virtual void ForEachEntry(const EntryVisitor& visit) const;

protected:
    /// The node whose children are the entries; null for a list whose entries are no nodes.
    virtual Node* GetNode() const { return nullptr; }
};

/// The list of a kind ("target"); null for an unknown kind.
std::unique_ptr<CliList> MakeList(const QString& kind);
/// The kind of list that a file is read as when none is named.
QString ListKindOf(const QString& path);
/// A number of things: "no entries", "1 entry", "2 entries".
QString Counted(qint64 count, const char* one, const char* many);
/// Names of all kinds.
QStringList ListKinds();

/// Results of a classifier.
std::unique_ptr<CliList> MakeResults();
/// Lists of detections: plain, of an HF and of a VHF/UHF search with classifier.
std::unique_ptr<CliList> MakeDetections();
std::unique_ptr<CliList> MakeDetectionsHF();
std::unique_ptr<CliList> MakeDetectionsVUHF();

/// Collects the problems that readers and writers tell, and prints them to standard error, while it lives.
class ProblemPrinter {
public:
    ProblemPrinter();
    ~ProblemPrinter();
    int Count() const { return m_count; }

private:
    int m_count = 0;
};
