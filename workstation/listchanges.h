#pragma once

#include "host/base/observer.h"
#include "host/report/filestamps.h"

#include <QObject>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

/// Whether lists have changed since they were read from their files or written there: by entries that came,
/// went or got other values. One that was empty and is so again has not changed. What the operator does while
/// a machine writes to the list is a change. A step that is undone, or done again, leaves the list as changed
/// as it was there, unless its file is another one, or has been written since, or others have changed the
/// list.
class ListChanges : public QObject {
    Q_OBJECT

public:
    /// Who tells which file a list shows; empty when none.
    using FileOf = std::function<QString(int listId)>;

    explicit ListChanges(FileOf fileOf);
    ~ListChanges() override;

    /// Follows the list with that identifier in the store, which has not changed then. What comes while
    /// `isMachineAtWork` are no changes.
    void Follow(int listId, std::function<bool()> isMachineAtWork = {});
    /// Follows a list that nothing but steps of the operator's change, as undo notes them: machines may write
    /// to it at any time. `count` tells how many entries it has.
    void FollowSteps(int listId, std::function<qint64()> count);
    /// A list that is not followed has not changed, whatever becomes of it.
    void SetFollowed(int listId, bool followed);
    /// What the list has now is what its file has, which `FileOf` knows already.
    void MarkSaved(int listId);
    /// What the list has now is in no file, whatever was read or written.
    void MarkChanged(int listId);
    bool IsChanged(int listId) const;

signals:
    void Changed(int listId);

private:
    /// How a list stands to what it was read from or written to.
    struct Mark {
        bool wasEmpty = true; ///< the list, when it was read or written
        bool isChanged = false;
        QString file; ///< that one
        std::optional<FileStamps::State> fileState;
        int saves = 0;  ///< how often a list without a file was written somewhere
        int others = 0; ///< how often it was changed by what is no step
    };
    using Marks = std::map<int, Mark>; ///< by list

    class Watch;
    class MarksPart;

    Watch* find(int listId) const;
    Marks marks() const;
    void noteWaiting();
    void noteStep(int listId);

    const FileOf m_fileOf;
    std::vector<std::unique_ptr<Watch>> m_watches;
    Marks m_swapped;          ///< those of where undo or redo leads
    bool m_tellsStep = false; ///< lists tell of what a step, or cancelled work, has changed
};
