#pragma once

#include "workstation/shareprofile.h"

#include <QObject>

#include <functional>

/// Where the passwords of brokers are: in the environment, in a file that only its owner may read, or in the
/// desktop's keyring, and nowhere else. The keyring may take its time: it may ask the operator to unlock it.
/// What is asked of it is answered in the event loop, and not at all when `context` ends before.
namespace SharePassword {

/// Gets a password, or why there is none: then the first is empty, as it is without a reason for a profile
/// without a user.
using Taker = std::function<void(const QString& password, const QString& whyNone)>;

/// Hands over the password of a profile; at once where the keyring is not asked. Throws RGException when the
/// profile's file is none.
void Find(const ShareProfile& profile, QObject& context, const Taker& then);
/// Whether both have one password in the keyring: that of a user at a broker, for all sites.
bool IsShared(const ShareProfile& one, const ShareProfile& other);
/// Whether `Find` asks the keyring. Does not look into files.
bool IsInKeyring(const ShareProfile& profile);

/// Gets the reason why it was not done; an empty one when it was.
using Done = std::function<void(const QString& reason)>;

/// Puts a password into the keyring.
void Keep(const ShareProfile& profile, const QString& password, QObject& context, const Done& then);
/// Removes the password of the profile's user at the profile's broker from the keyring, for all sites.
void Forget(const ShareProfile& profile, QObject& context, const Done& then);

} // namespace SharePassword
