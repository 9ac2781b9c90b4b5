#pragma once

#include "link/brokeraddress.h"

#include <QStringList>

#include <vector>

/// How this seat takes part in a site. The password is kept elsewhere.
struct ShareProfile {
    enum class Role { Client, Server };

    QString name = {}; ///< as the operator calls it; empty for one that is not kept
    QString url = {};  ///< mqtts://USER@HOST:PORT/SITE
    Role role = Role::Client;
    QString passwordFile = {};    ///< empty: it is in the keyring, in the environment, or asked for
    QString caFile = {};          ///< as the next two, see `BrokerAddress`
    QString certificateFile = {}; ///< of this seat
    QString keyFile = {};
    QStringList kinds = {}; ///< lists that a server serves besides its targets, see `ShareKind`

    /// What is connected to, without a password. Throws RGException when the profile is none.
    BrokerAddress Address() const;
    /// Whether the broker asks for a password: a certificate may stand for one. Throws as `Address`.
    bool NeedsPassword() const;
    /// What is wrong with it; empty when nothing is.
    QString Problem() const;
    static QString RoleName(Role role);
    /// False for a word that is no role.
    static bool TakeRole(const QString& word, Role& role);

    /// The profiles that the settings keep, by name.
    static std::vector<ShareProfile> Load();
    static void Save(const std::vector<ShareProfile>& profiles);
    /// The one that is connected at the start; its url is empty when there is none.
    static ShareProfile AtStart();
    static void SetAtStart(const ShareProfile& profile);
};
