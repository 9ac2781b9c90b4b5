#pragma once

#include "host/report/filestamps.h"
#include "host/report/writeguard.h"
#include "workstation/listfiles.h"

#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>

#include <functional>
#include <map>
#include <optional>

class QWidget;

/// Watches the files of the lists: one that another program changes is asked about when that is noticed, and
/// at the latest before it would be replaced. When nobody is there to answer it is told, and stays as it is.
class DiskWatch : public QObject {
    Q_OBJECT

public:
    using Answer = REPORTGENERATOR::WriteGuard::Answer;

    /// Boxes belong to `window`, which outlives this.
    DiskWatch(QWidget* window, const ListFiles& lists);

    /// Who tells whether somebody can be asked now.
    void SetMayAsk(std::function<bool()> mayAsk) { m_mayAsk = std::move(mayAsk); }
    /// Who lets the operator bring the entries of a file into a list; false when nothing came of it.
    using Merge = std::function<bool(const ListFile& list, const QString& path)>;
    void SetMerge(Merge merge) { m_merge = std::move(merge); }
    /// The lists have other files now.
    void Follow();
    /// What is to become of a file that another program has changed and a list is about to replace.
    Answer AskBeforeSave(const QString& path);

signals:
    /// A text for the operator.
    void Told(const QString& text);

private:
    void look();
    void lookAt(const ListFile& list);
    void ask(const ListFile& list, const QString& path);
    bool askOnce(const ListFile& list, const QString& path);
    void keepMine(const ListFile& list, const QString& path);

    QWidget* m_window;
    const ListFiles& m_lists;
    std::function<bool()> m_mayAsk;
    Merge m_merge;
    QFileSystemWatcher m_watcher;
    QTimer m_settle; ///< programs write in several steps
    /// Each file that a list has or had, as it was seen last; nothing for one that has gone.
    std::map<QString, std::optional<FileStamps::State>> m_seen;
    bool m_isAsking = false;
};
