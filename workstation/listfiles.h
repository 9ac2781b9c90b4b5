#pragma once

#include <QString>

#include <functional>
#include <list>
#include <memory>
#include <optional>

class EntrySource;
class Job;
class ListChanges;
class MainWindow;
class SimulatedSearch;

/// A list whose content is kept, in a file of its own or for recovery, and what can be done with both without
/// asking anybody. What fails is told.
struct ListFile {
    int id = 0;     ///< in the store
    QString key;    ///< tells the list, the same at every start
    QString name;   ///< as its tab calls it
    QString suffix; ///< of a file that has all that the list holds, such as ".xml"
    /// Absolute path of the file that the list shows; empty when there is none.
    std::function<QString()> file;
    std::function<qint64()> count; ///< entries of the list
    std::function<bool()> isUnsaved;
    /// Says that what the list holds is in no file, whatever was read or saved.
    std::function<void()> markChanged;
    /// Reads a file into the list, which is its own from then on.
    std::function<bool(const QString& path)> open;
    /// Gives the list the content of another file. It keeps its own and has unsaved changes then. False,
    /// told, when that cannot be read; what the list held may be gone then.
    std::function<bool(const QString& path)> takeContent;
    /// The list stands in no file from then on. Null where a list that has none gets one by itself.
    std::function<void()> leaveFile{};
    /// Writes what the list holds into another file, in the form that its name tells. Null for a list that
    /// never has a file.
    std::function<bool(const QString& path)> writeCopy{};
    /// The list's entries to be walked through; null while it waits for a file.
    std::function<std::unique_ptr<EntrySource>()> entries{};
    /// The list's content, where that is a text that somebody else keeps; then there are no `entries`.
    std::function<QString()> text{};
};

/// Lists stay where they are when others are added.
using ListFiles = std::list<ListFile>;

/// Who knows of the lists' files; all outlive the result.
struct ListOwners {
    MainWindow& window;
    ListChanges& changes;
    Job& job;
    SimulatedSearch& search;
    int targetsId;
    int noiId;
    int memoryId;
    int resultsId;
    int detectionsId;
    /// Reads a file into the list that its content belongs to.
    std::function<bool(const QString& path)> open;
};
/// The program's own lists.
ListFiles ListFilesOf(const ListOwners& owners);
/// The same for a list of entries that the program knows nothing of, such as a plug-in's: its entries are
/// kept as they describe themselves. Nothing for a list of records.
std::optional<ListFile> OtherListFile(const ListOwners& owners, int id);
/// The list with an identifier; null when it is none of these.
const ListFile* FindListFile(const ListFiles& lists, int id);
