#pragma once

#include <QObject>
#include <QStringList>

class QMenu;

/// The files that were opened or saved last, the newest first, as a menu and in the settings.
class RecentFiles : public QObject {
    Q_OBJECT

public:
    static constexpr int MaxFiles = 10;

    /// The menu is filled each time it is about to be seen; it is not owned.
    explicit RecentFiles(QMenu& menu);

    void Add(const QString& path);
    const QStringList& GetFiles() const { return m_files; }

signals:
    void Chosen(const QString& path);

private:
    void fill(QMenu& menu);

    QStringList m_files;
};
