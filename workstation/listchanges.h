#pragma once

#include "host/base/observer.h"

#include <QObject>

#include <functional>
#include <memory>
#include <vector>

/// Whether lists have changed since they were read from their files or written there: by entries that came,
/// went or got other values. One that was empty and is so again has not changed. What the operator does while
/// a machine writes to the list is a change. When reading a file is undone the list is as changed as it was
/// before.
class ListChanges : public QObject {
    Q_OBJECT

public:
    ListChanges();
    ~ListChanges() override;

    /// Follows the list with that identifier in the store, which has not changed then. What comes while
    /// `isMachineAtWork` are no changes.
    void Follow(int listId, std::function<bool()> isMachineAtWork = {});
    /// Follows a list that nothing but steps of the operator's change, as undo notes them: machines may write
    /// to it at any time. `count` tells how many entries it has.
    void FollowSteps(int listId, std::function<qint64()> count);
    /// A list that is not followed has not changed, whatever becomes of it.
    void SetFollowed(int listId, bool followed);
    /// What the list has now is what its file has.
    void MarkSaved(int listId);
    /// What the list has now is in no file, whatever was read or written.
    void MarkChanged(int listId);
    bool IsChanged(int listId) const;

signals:
    void Changed(int listId);

private:
    class Watch;
    class MarkPart;

    Watch* find(int listId) const;
    void noteStep(int listId);

    std::vector<std::unique_ptr<Watch>> m_watches;
};
