#pragma once

#include "workstation/shareprofile.h"

#include <QObject>

#include <functional>

/// Where the passwords of brokers are: in the environment, in a file that only its owner may read, or in the
/// desktop's keyring, and nowhere else.
namespace SharePassword {

/// Hands over the password of a profile, in the event loop where the keyring is asked; an empty one when
/// there is none. Not at all when `context` ends before. Throws RGException when the profile's file is none.
void Find(const ShareProfile& profile, QObject& context, const std::function<void(const QString&)>& then);
/// Puts a password into the keyring. `failed` gets the reason if there is no keyring that takes it.
void Keep(const ShareProfile& profile, const QString& password, QObject& context,
          const std::function<void(const QString& reason)>& failed);

} // namespace SharePassword
