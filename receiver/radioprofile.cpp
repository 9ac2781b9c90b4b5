#include "receiver/radioprofile.h"

#include "host/gui/listsettings.h"
#include "receiver/hamlib.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace {

const QString ProfilesKey = QStringLiteral("Receiver/Profiles");
constexpr int LongestPort = 200;
constexpr int LongestTimeout = 60000;

QString tr(const char* text) {
    return QCoreApplication::translate("RadioProfile", text);
}

RadioModel::Port portOf(const rig_caps& caps) {
    switch (caps.port_type) {
    case RIG_PORT_NONE:
        return RadioModel::Port::None;
    case RIG_PORT_SERIAL:
        return RadioModel::Port::Serial;
    case RIG_PORT_NETWORK:
    case RIG_PORT_UDP_NETWORK:
        return RadioModel::Port::Network;
    default:
        return RadioModel::Port::Other;
    }
}

int addModel(const rig_caps* caps, void* models) {
    static_cast<std::vector<RadioModel>*>(models)->push_back(
        {static_cast<int>(caps->rig_model), QString::fromUtf8(caps->mfg_name),
         QString::fromUtf8(caps->model_name), portOf(*caps),
         caps->port_type == RIG_PORT_SERIAL ? caps->serial_rate_max : 0});
    return 1; // go on
}

bool isHostAndPort(const QString& text) {
    const qsizetype colon = text.lastIndexOf(QLatin1Char(':'));
    bool isNumber = false;
    const int port = text.mid(colon + 1).toInt(&isNumber);
    return colon > 0 && isNumber && port > 0 && port < 65536;
}

} // namespace

const std::vector<RadioModel>& RadioModels() {
    static const std::vector<RadioModel> models = [] {
        LoadHamlib();
        std::vector<RadioModel> found;
        rig_list_foreach(addModel, &found);
        std::ranges::sort(found, {}, [](const RadioModel& model) {
            return std::make_tuple(model.maker.toLower(), model.name.toLower(), model.number);
        });
        return found;
    }();
    return models;
}

const RadioModel* FindRadioModel(int number) {
    const auto found = std::ranges::find(RadioModels(), number, &RadioModel::number);
    return found == RadioModels().end() ? nullptr : &*found;
}

QString RadioProfile::Title() const {
    if (!name.isEmpty())
        return name;
    const RadioModel* known = FindRadioModel(model);
    const QString title = known ? known->FullName() : QString::number(model);
    return port.isEmpty() ? title : tr("%1 at %2").arg(title, port);
}

QString RadioProfile::Problem() const {
    const RadioModel* known = FindRadioModel(model);
    if (!known)
        return tr("there is no model %1").arg(model);
    const bool hasPort = known->port == RadioModel::Port::Serial || known->port == RadioModel::Port::Network;
    if (hasPort && port.isEmpty())
        return known->port == RadioModel::Port::Serial ? tr("%1 needs a device").arg(known->FullName())
                                                       : tr("%1 needs host:port").arg(known->FullName());
    if (port.size() > LongestPort)
        return tr("the name of the port is too long");
    if (known->port == RadioModel::Port::Network && !isHostAndPort(port))
        return tr("\"%1\" is not host:port").arg(port);
    if (timeout < 1 || timeout > LongestTimeout)
        return tr("the time-out must be from 1 to %1 ms").arg(LongestTimeout);
    return speed < 0 ? tr("the speed must not be negative") : QString();
}

std::vector<RadioProfile> RadioProfile::Load() {
    std::vector<RadioProfile> profiles;
    const QJsonDocument kept = QJsonDocument::fromJson(ListSettings::LoadText(ProfilesKey).toUtf8());
    for (const auto& value : kept.array()) {
        const QJsonObject object = value.toObject();
        const RadioProfile profile{
            object[QLatin1String("name")].toString(), object[QLatin1String("model")].toInt(),
            object[QLatin1String("port")].toString(), object[QLatin1String("speed")].toInt(),
            object[QLatin1String("timeout")].toInt(DefaultTimeout)};
        if (!profile.name.isEmpty())
            profiles.push_back(profile);
    }
    return profiles;
}

void RadioProfile::Save(const std::vector<RadioProfile>& profiles) {
    QJsonArray array;
    for (const RadioProfile& profile : profiles)
        array.append(QJsonObject{{QStringLiteral("name"), profile.name},
                                 {QStringLiteral("model"), profile.model},
                                 {QStringLiteral("port"), profile.port},
                                 {QStringLiteral("speed"), profile.speed},
                                 {QStringLiteral("timeout"), profile.timeout}});
    ListSettings::SaveText(ProfilesKey,
                           QString::fromUtf8(QJsonDocument(array).toJson(QJsonDocument::Compact)));
}
