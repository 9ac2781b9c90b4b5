#include "workstation/sharepassword.h"

#include <qt6keychain/keychain.h>

namespace {

const QString Service = QStringLiteral("freqstore");

/// One user of one broker, whatever the site.
QString accountOf(const BrokerAddress& address) {
    return QStringLiteral("%1@%2:%3").arg(address.user, address.host).arg(address.port);
}

} // namespace

void SharePassword::Find(const ShareProfile& profile, QObject& context,
                         const std::function<void(const QString&)>& then) {
    BrokerAddress address = profile.Address();
    address.TakePasswordOfEnvironment();
    if (!profile.passwordFile.isEmpty())
        address.TakePasswordFile(profile.passwordFile);
    if (!address.password.isEmpty() || address.user.isEmpty())
        return then(address.password);
    auto* job = new QKeychain::ReadPasswordJob(Service); // ends by itself
    job->setKey(accountOf(address));
    QObject::connect(job, &QKeychain::Job::finished, &context,
                     [job, then] { then(job->error() == QKeychain::NoError ? job->textData() : QString()); });
    job->start();
}

void SharePassword::Keep(const ShareProfile& profile, const QString& password, QObject& context,
                         const std::function<void(const QString& reason)>& failed) {
    auto* job = new QKeychain::WritePasswordJob(Service);
    job->setKey(accountOf(profile.Address()));
    job->setTextData(password);
    QObject::connect(job, &QKeychain::Job::finished, &context, [job, failed] {
        if (job->error() != QKeychain::NoError)
            failed(job->errorString());
    });
    job->start();
}
