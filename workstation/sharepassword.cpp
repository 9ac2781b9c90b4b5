#include "workstation/sharepassword.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <qt6keychain/keychain.h>

namespace {

const QString Service = QStringLiteral("freqstore");

/// One user of one broker, whatever the site.
QString accountOf(const BrokerAddress& address) {
    return QStringLiteral("%1@%2:%3").arg(address.user, address.host).arg(address.port);
}

/// Without that of the keyring.
BrokerAddress addressOf(const ShareProfile& profile) {
    BrokerAddress address = profile.Address();
    address.TakePasswordOfEnvironment();
    if (!profile.passwordFile.isEmpty())
        address.TakePasswordFile(profile.passwordFile);
    return address;
}

/// Answers whether the keyring keeps a password behind a lock: of a locked one jobs say that it keeps none.
/// The service is that of all desktops; a keyring that does not have it has no such lock.
void whetherLocked(const QString& account, QObject& context, const std::function<void(bool)>& then) {
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.secrets"), QStringLiteral("/org/freedesktop/secrets"),
        QStringLiteral("org.freedesktop.Secret.Service"), QStringLiteral("SearchItems"));
    call.setAutoStartService(false);
    call << QVariant::fromValue(
        QMap<QString, QString>{{QStringLiteral("server"), Service}, {QStringLiteral("user"), account}});
    qDBusRegisterMetaType<QMap<QString, QString>>();
    auto* watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), &context);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, &context, [watcher, then] {
        const QDBusPendingReply<QList<QDBusObjectPath>, QList<QDBusObjectPath>> reply = *watcher;
        watcher->deleteLater();
        then(!reply.isError() && !reply.argumentAt<1>().isEmpty());
    });
}

QString lockedText() {
    return QCoreApplication::translate("SharePassword", "the keyring is locked");
}

} // namespace

bool SharePassword::IsInKeyring(const ShareProfile& profile) {
    BrokerAddress address = profile.Address();
    address.TakePasswordOfEnvironment();
    return profile.passwordFile.isEmpty() && address.password.isEmpty() && !address.user.isEmpty();
}

bool SharePassword::IsShared(const ShareProfile& one, const ShareProfile& other) {
    return one.passwordFile.isEmpty() && other.passwordFile.isEmpty() &&
           accountOf(one.Address()) == accountOf(other.Address());
}

void SharePassword::Find(const ShareProfile& profile, QObject& context, const Taker& then) {
    const BrokerAddress address = addressOf(profile);
    if (!address.password.isEmpty() || address.user.isEmpty())
        return then(address.password, QString());
    auto* job = new QKeychain::ReadPasswordJob(Service); // ends by itself
    job->setKey(accountOf(address));
    QObject::connect(job, &QKeychain::Job::finished, &context, [job, &context, then] {
        if (job->error() == QKeychain::NoError)
            return then(job->textData(), QString());
        if (job->error() != QKeychain::EntryNotFound)
            return then(QString(), job->errorString());
        whetherLocked(job->key(), context, [then](bool isLocked) {
            then(QString(),
                 isLocked ? lockedText()
                          : QCoreApplication::translate("SharePassword", "there is none in the keyring"));
        });
    });
    job->start();
}

void SharePassword::Keep(const ShareProfile& profile, const QString& password, QObject& context,
                         const Done& then) {
    auto* job = new QKeychain::WritePasswordJob(Service);
    job->setKey(accountOf(profile.Address()));
    job->setTextData(password);
    QObject::connect(job, &QKeychain::Job::finished, &context, [job, then] {
        then(job->error() == QKeychain::NoError ? QString() : job->errorString());
    });
    job->start();
}

void SharePassword::Forget(const ShareProfile& profile, QObject& context, const Done& then) {
    auto* job = new QKeychain::DeletePasswordJob(Service);
    job->setKey(accountOf(profile.Address()));
    QObject::connect(job, &QKeychain::Job::finished, &context, [job, &context, then] {
        if (job->error() != QKeychain::NoError && job->error() != QKeychain::EntryNotFound)
            return then(job->errorString());
        whetherLocked(job->key(), context,
                      [then](bool isLocked) { then(isLocked ? lockedText() : QString()); });
    });
    job->start();
}
