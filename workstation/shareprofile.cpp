#include "workstation/shareprofile.h"

#include "host/gui/listsettings.h"
#include "host/report/rgexception.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace {

const QString ProfilesKey = QStringLiteral("Share/Profiles");
const QString AtStartKey = QStringLiteral("Share/AtStart");

struct TextMember {
    QLatin1String key;
    QString ShareProfile::*text;
};
constexpr TextMember TextMembers[] = {
    {QLatin1String("name"), &ShareProfile::name},
    {QLatin1String("url"), &ShareProfile::url},
    {QLatin1String("passwordFile"), &ShareProfile::passwordFile},
    {QLatin1String("caFile"), &ShareProfile::caFile},
    {QLatin1String("certificateFile"), &ShareProfile::certificateFile},
    {QLatin1String("keyFile"), &ShareProfile::keyFile},
};
constexpr QLatin1String RoleMember("role");
constexpr QLatin1String KindsMember("kinds");

struct NamedRole {
    const char* name;
    ShareProfile::Role role;
};
constexpr NamedRole Roles[] = {{"client", ShareProfile::Role::Client},
                               {"server", ShareProfile::Role::Server}};

QJsonObject toJson(const ShareProfile& profile) {
    QJsonObject object;
    for (const TextMember& member : TextMembers)
        object[member.key] = profile.*member.text;
    object[RoleMember] = ShareProfile::RoleName(profile.role);
    object[KindsMember] = QJsonArray::fromStringList(profile.kinds);
    return object;
}

ShareProfile fromJson(const QJsonObject& object) {
    ShareProfile profile;
    for (const TextMember& member : TextMembers)
        profile.*member.text = object[member.key].toString();
    ShareProfile::TakeRole(object[RoleMember].toString(), profile.role);
    for (const auto& kind : object[KindsMember].toArray())
        profile.kinds << kind.toString();
    return profile;
}

QJsonDocument kept(const QString& key) {
    return QJsonDocument::fromJson(ListSettings::LoadText(key).toUtf8());
}

void keep(const QString& key, const QJsonDocument& document) {
    ListSettings::SaveText(key, QString::fromUtf8(document.toJson(QJsonDocument::Compact)));
}

} // namespace

BrokerAddress ShareProfile::Address() const {
    BrokerAddress address = BrokerAddress::FromUrl(url);
    address.caFile = caFile;
    address.certificateFile = certificateFile;
    address.keyFile = keyFile;
    return address;
}

bool ShareProfile::NeedsPassword() const {
    return certificateFile.isEmpty() && !Address().user.isEmpty();
}

QString ShareProfile::Problem() const {
    try {
        Address();
    } catch (const RGException& exception) {
        return exception.GetErrorText();
    }
    return QString();
}

QString ShareProfile::RoleName(Role role) {
    const auto* found = std::ranges::find(Roles, role, &NamedRole::role);
    return QString::fromLatin1(found->name);
}

bool ShareProfile::TakeRole(const QString& word, Role& role) {
    const auto* found = std::ranges::find_if(
        Roles, [&](const NamedRole& known) { return word == QLatin1String(known.name); });
    if (found == std::end(Roles))
        return false;
    role = found->role;
    return true;
}

std::vector<ShareProfile> ShareProfile::Load() {
    std::vector<ShareProfile> profiles;
    for (const auto& value : kept(ProfilesKey).array()) {
        const ShareProfile profile = fromJson(value.toObject());
        if (!profile.name.isEmpty() && profile.Problem().isEmpty())
            profiles.push_back(profile);
    }
    return profiles;
}

void ShareProfile::Save(const std::vector<ShareProfile>& profiles) {
    QJsonArray array;
    for (const ShareProfile& profile : profiles)
        array.append(toJson(profile));
    keep(ProfilesKey, QJsonDocument(array));
}

ShareProfile ShareProfile::AtStart() {
    const ShareProfile profile = fromJson(kept(AtStartKey).object());
    return profile.Problem().isEmpty() ? profile : ShareProfile();
}

void ShareProfile::SetAtStart(const ShareProfile& profile) {
    if (profile.url.isEmpty())
        ListSettings::SaveText(AtStartKey, QString());
    else
        keep(AtStartKey, QJsonDocument(toJson(profile)));
}
