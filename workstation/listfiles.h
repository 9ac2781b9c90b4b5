#pragma once

#include <QString>

#include <functional>
#include <vector>

class Job;
class ListChanges;
class MainWindow;

/// A list that has a file of its own, and what can be done with both without asking anybody. What fails is
/// told.
struct ListFile {
    int id = 0;     ///< in the store
    QString key;    ///< tells the list, the same at every start
    QString name;   ///< as its tab calls it
    QString suffix; ///< of a file that has all that the list holds, such as ".xml"
    /// Absolute path of the file that the list shows; empty when there is none.
    std::function<QString()> file;
    std::function<qint64()> count; ///< entries of the list
    std::function<bool()> isUnsaved;
    /// Writes what the list holds into another file, in the form that its name tells.
    std::function<bool(const QString& path)> writeCopy;
    /// Gives the list the content of another file. It keeps its own and has unsaved changes then.
    std::function<bool(const QString& path)> takeContent;
    /// The list's content, where that is a text that somebody else keeps; null for a list of entries.
    std::function<QString()> text{};
};

using ListFiles = std::vector<ListFile>;

/// Who knows of the lists' files; all outlive the result.
struct ListOwners {
    const MainWindow& window;
    const ListChanges& changes;
    Job& job;
    int targetsId;
    int noiId;
    int memoryId;
};
ListFiles ListFilesOf(const ListOwners& owners);
/// The list with an identifier; null when it has no file of its own.
const ListFile* FindListFile(const ListFiles& lists, int id);
