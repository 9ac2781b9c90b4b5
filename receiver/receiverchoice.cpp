#include "receiver/receiverchoice.h"

#include "receiver/hamlibreceiver.h"
#include "receiver/simulatedreceiver.h"

#include <QCoreApplication>

namespace {

const QString Simulated = QStringLiteral("simulated");
const QString Prefix = QStringLiteral("hamlib:");

QString tr(const char* text) {
    return QCoreApplication::translate("ReceiverChoice", text);
}

RadioProfile parseRadio(const QString& text, QString& error) {
    const qsizetype at = text.indexOf(QLatin1Char('@'));
    RadioProfile profile;
    bool isNumber = false;
    const QString model = text.left(at);
    profile.model = model.toInt(&isNumber);
    profile.port = at < 0 ? QString() : text.mid(at + 1);
    error = isNumber
                ? profile.Problem()
                : QCoreApplication::translate("ReceiverChoice", "\"%1\" is no number of a model").arg(model);
    return profile;
}

} // namespace

ReceiverChoice ReceiverChoice::Parse(const QString& text, QString& error) {
    error.clear();
    if (text == Simulated)
        return {};
    if (text.startsWith(Prefix))
        return {parseRadio(text.mid(Prefix.size()), error)};
    for (const RadioProfile& profile : RadioProfile::Load()) {
        if (profile.name == text) {
            error = profile.Problem();
            return {profile};
        }
    }
    error =
        tr("no receiver is called \"%1\"; known are simulated, hamlib:MODEL@PORT and the profiles").arg(text);
    return {};
}

std::unique_ptr<ReceiverLink> ReceiverChoice::MakeLink(const Receiver& receiver) const {
    if (radio)
        return std::make_unique<HamlibReceiver>(*radio);
    return std::make_unique<SimulatedReceiver>(receiver);
}
