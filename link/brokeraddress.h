#pragma once

#include <QString>

/// Where a broker is, who connects, and how it is known to be the right one.
struct BrokerAddress {
    QString host;
    int port = 0;
    bool isEncrypted = false;
    QString site;
    QString user; ///< empty for none
    QString password;
    QString caFile;          ///< certificates of authorities; empty for those of the system
    QString certificateFile; ///< of the client; empty for none
    QString keyFile;

    /// "mqtts://USER@HOST:PORT/SITE". Ports are 8883, or 1883 for "mqtt://", which is taken for this machine
    /// only: nothing goes over a network unencrypted. A password is not taken here, where others could read
    /// it. Throws RGException.
    static BrokerAddress FromUrl(const QString& url);
    /// Takes the first line of a file that nobody but its owner may read or write. Throws RGException.
    void TakePasswordFile(const QString& path);
    /// Takes the password of the environment, FREQSTORE_SHARE_PASSWORD, if there is one.
    void TakePasswordOfEnvironment();
    /// Without a password, for people.
    QString ToString() const;
};
