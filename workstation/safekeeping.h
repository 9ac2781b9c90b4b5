#pragma once

#include "workstation/diskwatch.h"
#include "workstation/listfiles.h"
#include "workstation/recovery.h"
#include "workstation/versions.h"

#include <QObject>

class MainWindow;
class QAction;

/// What keeps the operator's work: versions of the files that are saved, an eye on files that others change,
/// and what is in no file yet. Makes these parts and joins them to lists and window, which outlive this.
class Safekeeping : public QObject {
    Q_OBJECT

public:
    Safekeeping(MainWindow& window, const ListOwners& owners);

    /// Keeps a list of entries that the program does not know. Null for one that is kept already, and for
    /// what is no such list.
    const ListFile* Add(int listId);
    /// Null for a list that is not kept.
    const ListFile* Find(int listId) const { return FindListFile(m_lists, listId); }

    /// Who tells whether somebody can be asked now.
    void SetMayAsk(const std::function<bool()>& mayAsk);
    /// Takes what the operator prefers.
    void Configure();
    /// The lists have other files now, or another list is shown.
    void Follow();
    /// Asks what becomes of what other processes have left unsaved, or says what there is. True when it
    /// asked.
    bool OfferRecovery();
    Recovery& GetRecovery() { return m_recovery; }

private:
    void addAction();
    const ListFile* shownList() const;
    void showVersions();
    void restore(const ListFile& list, const FileVersions::Version& version);

    MainWindow& m_window;
    const QString m_dataFolder;
    std::function<bool()> m_mayAsk;
    const ListOwners m_owners;
    ListFiles m_lists;
    Versions m_versions;
    DiskWatch m_watch;
    Recovery m_recovery;
    QAction* m_action; ///< the window's
};
