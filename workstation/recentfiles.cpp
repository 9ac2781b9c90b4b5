#include "workstation/recentfiles.h"

#include "host/gui/listsettings.h"

#include <QDir>
#include <QFileInfo>
#include <QMenu>

namespace {

const QString SettingName = QStringLiteral("Window/RecentFiles");

} // namespace

RecentFiles::RecentFiles(QMenu& menu)
    : QObject(&menu),
      m_files(ListSettings::LoadText(SettingName).split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
    m_files = m_files.mid(0, MaxFiles);
    menu.setToolTipsVisible(true);
    menu.menuAction()->setEnabled(!m_files.isEmpty());
    connect(&menu, &QMenu::aboutToShow, this, [this, &menu] { fill(menu); });
}

void RecentFiles::Add(const QString& path) {
    if (path.isEmpty() || path.contains(QLatin1Char('\n')))
        return;
    const QString file = QFileInfo(path).absoluteFilePath();
    if (m_files.value(0) == file)
        return;
    m_files.removeAll(file);
    m_files.prepend(file);
    m_files = m_files.mid(0, MaxFiles);
    static_cast<QMenu*>(parent())->menuAction()->setEnabled(true);
    ListSettings::SaveText(SettingName, m_files.join(QLatin1Char('\n')));
}

void RecentFiles::fill(QMenu& menu) {
    menu.clear();
    for (qsizetype i = 0; i < m_files.size(); ++i) {
        const QFileInfo file(m_files[i]);
        QString name = file.fileName();
        QAction* action = menu.addAction(QStringLiteral("&%1  %2").arg(
            QString::number((i + 1) % 10), name.replace(QLatin1Char('&'), QLatin1String("&&"))));
        action->setToolTip(QDir::toNativeSeparators(file.filePath()));
        action->setEnabled(file.exists());
        connect(action, &QAction::triggered, this, [this, path = file.filePath()] { emit Chosen(path); });
    }
}
