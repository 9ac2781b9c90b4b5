#include "workstation/keysettings.h"

#include "host/base/problems.h"
#include "host/startup/cfgcenter.h"

#include <QDir>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>

namespace {

const QString NoKeys = QStringLiteral("none");

QString settingOf(const QAction& action) {
    return QStringLiteral("Keys/") + action.objectName();
}

bool isKey(const QKeySequence& key) {
    return !key.isEmpty() && key[0].key() != Qt::Key_unknown;
}

} // namespace

KeySettings::KeySettings(QMenuBar& menus, QObject* parent) : QObject(parent), m_window(menus.window()) {
    for (const QAction* entry : menus.actions()) {
        if (entry->menu())
            collect(*entry->menu(), entry->text().remove(QLatin1Char('&')));
    }
    for (size_t i = 0; i < m_commands.size(); ++i)
        takeOver(i);
}

void KeySettings::collect(const QMenu& menu, const QString& title) {
    for (QAction* action : menu.actions()) {
        if (!action->objectName().isEmpty() && !action->isSeparator())
            m_commands.push_back({action, title, action->shortcuts()});
    }
}

void KeySettings::takeOver(size_t command) {
    QAction& action = *m_commands[command].action;
    const QString text = CfgCenter::GetAppCfg(ICfg::StartUp).GetString(settingOf(action), QString());
    if (text.isEmpty())
        return;
    const Keys keys = text == NoKeys ? Keys() : QKeySequence::listFromString(text);
    QString fault;
    for (const QKeySequence& key : keys) {
        const QString owner = OwnerOf(key, command, present());
        if (!isKey(key))
            fault = QStringLiteral("is no key");
        else if (!owner.isEmpty())
            fault = QStringLiteral("belongs to %1").arg(owner);
    }
    if (fault.isEmpty())
        return action.setShortcuts(keys);
    Problems::Report(
        "keysettings",
        {QDir(CfgCenter::GetDirectory()).filePath(QStringLiteral("Application.ini")), 0,
         QStringLiteral("%1: \"%2\" %3; the default holds").arg(settingOf(action), text, fault)});
}

std::vector<KeySettings::Keys> KeySettings::present() const {
    std::vector<Keys> keys;
    for (const Command& command : m_commands)
        keys.push_back(command.action->shortcuts());
    return keys;
}

void KeySettings::Set(const Command& command, const Keys& keys) {
    if (keys == command.action->shortcuts())
        return;
    command.action->setShortcuts(keys);
    const QString text = keys == command.defaults ? QString()
                         : keys.isEmpty()         ? NoKeys
                                                  : QKeySequence::listToString(keys);
    CfgCenter::GetAppCfg(ICfg::StartUp).SetString(settingOf(*command.action), text);
}

QString KeySettings::OwnerOf(const QKeySequence& key, size_t otherThan, const std::vector<Keys>& keys) const {
    for (size_t i = 0; i < m_commands.size(); ++i) {
        if (i != otherThan && keys[i].contains(key))
            return TextOf(*m_commands[i].action);
    }
    for (const QShortcut* shortcut : m_window->findChildren<QShortcut*>()) {
        if (shortcut->key() == key)
            return tr("the search for hits");
    }
    return QString();
}

QString KeySettings::TextOf(const QAction& action) {
    QString text = action.text();
    text.remove(QLatin1Char('&'));
    if (text.endsWith(QLatin1String("...")))
        text.chop(3);
    return text;
}
