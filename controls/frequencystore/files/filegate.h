#pragma once

#include <QString>

/// What a program sets before and behind the lists' own file commands, which show their dialogs themselves.
/// Without a guard every file that is chosen goes to its list.
namespace FileGate {

enum class List { Targets, MemoryChannels, Noi, Results };

class Guard {
public:
    virtual ~Guard() = default;
    /// Whether the list may be handed a file that was chosen for it. False leaves list and file names as they
    /// were, and the command ends without a name.
    virtual bool MayRead(List list, const QString& path) = 0;
    /// A list was handed a file; `read` says whether it could read it.
    virtual void WasRead(List list, const QString& path, bool read) = 0;
    /// The list stands in this file now; in none when the path is empty.
    virtual void WasWritten(List list, const QString& path) = 0;
};

/// The guard is not owned; null takes it away. Returns the one before.
Guard* SetGuard(Guard* guard);

/// For the lists' commands: ask and tell the guard, if there is one.
bool MayRead(List list, const QString& path);
void WasRead(List list, const QString& path, bool read);
void WasWritten(List list, const QString& path);

} // namespace FileGate
