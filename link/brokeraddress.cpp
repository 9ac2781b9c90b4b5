#include "link/brokeraddress.h"

#include "host/report/rgexception.h"

#include <QCoreApplication>
#include <QFile>
#include <QRegularExpression>
#include <QUrl>

namespace {

constexpr int PlainPort = 1883;
constexpr int EncryptedPort = 8883;

QString tr(const char* text) {
    return QCoreApplication::translate("BrokerAddress", text);
}

[[noreturn]] void refuse(const QString& what, const QString& reason) {
    throw RGException(what + QStringLiteral(": ") + reason);
}

bool isThisMachine(const QString& host) {
    static const QRegularExpression loopback(QStringLiteral("^(localhost|127(\\.[0-9]+){3}|::1)$"));
    return loopback.match(host).hasMatch();
}

} // namespace

BrokerAddress BrokerAddress::FromUrl(const QString& text) {
    const QUrl url(text, QUrl::StrictMode);
    BrokerAddress address;
    address.isEncrypted = url.scheme() == QLatin1String("mqtts");
    if (!url.isValid() || (!address.isEncrypted && url.scheme() != QLatin1String("mqtt")) ||
        url.host().isEmpty())
        refuse(QUrl(text).toDisplayString(), tr("is no address such as mqtts://user@broker/site"));
    if (!url.password().isEmpty())
        refuse(url.toDisplayString(), tr("has a password, which belongs into a file or the environment"));
    address.host = url.host();
    address.user = url.userName();
    address.port = url.port(address.isEncrypted ? EncryptedPort : PlainPort);
    address.site = url.path().mid(1);
    if (address.site.isEmpty() || address.site.contains(QLatin1Char('/')))
        refuse(text, tr("does not name a site, as in mqtts://broker/site"));
    if (!address.isEncrypted && !isThisMachine(address.host))
        refuse(text, tr("is another machine, to which only mqtts:// connects"));
    return address;
}

void BrokerAddress::TakePasswordFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        refuse(path, file.errorString());
    constexpr QFile::Permissions Others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                                          QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    if (file.permissions() & Others)
        refuse(path, tr("may be read by others; its mode must be 600"));
    password = QString::fromUtf8(file.readLine()).remove(QLatin1Char('\n')).remove(QLatin1Char('\r'));
    if (password.isEmpty())
        refuse(path, tr("holds no password in its first line"));
}

void BrokerAddress::TakePasswordOfEnvironment() {
    if (const QString given = qEnvironmentVariable("FREQSTORE_SHARE_PASSWORD"); !given.isEmpty())
        password = given;
}

QString BrokerAddress::ToString() const {
    QUrl url;
    url.setScheme(isEncrypted ? QStringLiteral("mqtts") : QStringLiteral("mqtt"));
    url.setUserName(user);
    url.setHost(host);
    url.setPort(port);
    url.setPath(QLatin1Char('/') + site);
    return url.toString();
}
