#pragma once

#include "workstation/noibands.h"

#include <QObject>

#include <functional>

class QWidget;

/// Sees to it that the frequencies of interest, which the program itself reads again and saves, are in their
/// file before it ends. The list's handler saves them once more when it ends itself, when nobody can be asked
/// any more.
class NoiKeeper : public QObject {
    Q_OBJECT

public:
    /// `window` and `bands` outlive this. The list is set up.
    NoiKeeper(QWidget* window, const NoiBands& bands);

    /// Who tells whether the list has anything to save; without it, it always has.
    void SetNeed(std::function<bool()> isNeeded) { m_isNeeded = std::move(isNeeded); }
    /// Name of the setting with the list's file.
    static QString SettingName();

    /// Says where the list will be, for a question about others; empty while it holds nothing.
    QString WhatIsKept() const;
    /// Saves the list. Where that fails, or the file would not have what the list has, it asks what to do;
    /// false when the operator stays.
    bool MayLeave();
    /// Saves the list and asks nobody. A list that has lost its file goes into a new one. False, told, when
    /// the next start would not find what the list has now.
    bool Keep();
    /// Remembers the list's file where its handler forgets it: when the list is empty, and when a signal has
    /// cancelled the dialog that was open. For after the handler's end.
    void RememberFile() const;

private:
    enum class State {
        Kept,
        Failed,  ///< the file could not be written
        NoFile,  ///< a cancelled dialog has made the list forget its file
        Emptied, ///< the list is empty, and its file is not
    };

    State save();
    QString saveAndListen();
    QString whatIsWrong(State state) const;

    QWidget* m_window;
    bool m_hadEntries; ///< since the start
    qint64 m_entriesInFile = 0;
    QString m_reason; ///< why the last save failed
    QString m_fileToRemember;
    std::function<bool()> m_isNeeded;
};
