#include "controls/frequencystore/common/sendto.h"

#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "host/base/frequencytext.h"
#include "host/base/longwork.h"
#include "host/base/numbers.h"
#include "host/freqlist/buttonbar.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodemediator.h"
#include "host/startup/cfgcenter.h"
#include "host/valuetree/operatoraction.h"

#include <QCoreApplication>
#include <QInputDialog>
#include <QMenu>
#include <QPointer>

#include <cmath>
#include <set>

namespace SendTo {
namespace {

using FreqStoreXml::FrequencyStoreEntry;

constexpr double DefaultTolerance = 500; // Hz
constexpr MediatorType Takers[] = {MediatorType::NoiFrequencies, MediatorType::MemoryHF,
                                   MediatorType::MemoryVUHF};

QString tr(const char* text) {
    return QCoreApplication::translate("SendTo", text);
}

QString toleranceKey() {
    return QStringLiteral("SendTolerance");
}

std::unique_ptr<ICfg> settings() {
    return std::unique_ptr<ICfg>(
        CfgCenter::CreateCfg(QStringLiteral("FrequencyStore"), ICfg::PlugIn, QString()));
}

void askForTolerance() {
    bool accepted = false;
    const double hertz = QInputDialog::getDouble(nullptr, tr("Tolerance"),
                                                 tr("An entry is there already when one lies within (Hz)"),
                                                 Tolerance(), 0, MaxTolerance, 0, &accepted);
    if (accepted)
        SetTolerance(hertz);
}

QString told(const Outcome& outcome, const QString& list) {
    QString text = tr("%1 sent to %2").arg(QString::number(outcome.added), list);
    if (outcome.there > 0)
        text += tr(", %1 there already").arg(outcome.there);
    if (outcome.unusable > 0)
        text += tr(", %1 without a frequency").arg(outcome.unusable);
    return text;
}

} // namespace

std::vector<Target> Targets() {
    std::vector<Target> targets;
    FreqStore& store = FreqStore::Instance();
    for (const int id : store.GetListIds()) {
        auto* controller =
            dynamic_cast<HalvoNodeMediatorCtrl*>(store.GetFrequencies(static_cast<unsigned>(id)));
        if (controller && std::find(std::begin(Takers), std::end(Takers), controller->GetMediatorType()) !=
                              std::end(Takers))
            targets.push_back({store.GetDefinition(id)->GetName(), controller});
    }
    return targets;
}

Outcome Send(const QVector<FrequencyStoreEntry>& entries, HalvoNodeMediatorCtrl& target, double tolerance) {
    std::set<double> known;
    target.ForceUpdateNow();
    target.ForEachInWork([&](FrequencyNodeMediator& mediator) {
        double hertz = 0;
        if (mediator.GetFrequency(hertz, 0) && !std::isnan(hertz))
            known.insert(hertz);
    });
    Outcome outcome;
    QVector<FrequencyStoreEntry> added;
    qint64 seen = 0;
    for (const FrequencyStoreEntry& entry : entries) {
        LongWork::Step(seen++, entries.size());
        const double hertz = entry.GetFFM_Settings().GetFrequency().GetValue();
        if (!(hertz > 0) || !std::isfinite(hertz)) {
            ++outcome.unusable;
            continue;
        }
        const auto next = known.lower_bound(hertz - tolerance);
        if (next != known.end() && *next <= hertz + tolerance) {
            ++outcome.there;
            continue;
        }
        known.insert(hertz);
        added.append(entry);
    }
    outcome.added = added.size();
    if (!added.isEmpty())
        target.AppendEntries(added);
    return outcome;
}

double Tolerance() {
    double hertz = 0;
    const bool isSet = Quor::ParseDouble(settings()->GetString(toleranceKey(), QString()), hertz);
    return isSet && hertz >= 0 ? std::min(hertz, MaxTolerance) : DefaultTolerance;
}

void SetTolerance(double hertz) {
    settings()->SetString(toleranceKey(), Quor::ToShortest(hertz));
}

void Offer(FreqStoreListViewButtonBar& bar, const std::function<QVector<FrequencyStoreEntry>()>& entries) {
    QAction* action = bar.GetAction(FreqStoreListViewButtonBar::SendTo);
    auto* menu = new QMenu(&bar);
    action->setMenu(menu);
    action->setVisible(true);
    QObject::connect(menu, &QMenu::aboutToShow, &bar, [menu, &bar, entries] {
        menu->clear();
        for (const Target& target : Targets()) {
            const QPointer<HalvoNodeMediatorCtrl> controller(target.controller);
            menu->addAction(target.name, &bar, [&bar, entries, controller, name = target.name] {
                if (!controller)
                    return;
                const OperatorAction step(tr("Send"));
                QString answer;
                if (!LongWork::Run(tr("Send"),
                                   [&] { answer = told(Send(entries(), *controller, Tolerance()), name); }))
                    return;
                bar.Tell(answer); // until the counts change, which they do all the time while a search runs
                emit FreqStore::Instance().Told(answer);
            });
        }
        menu->addSeparator();
        menu->addAction(tr("Tolerance: %1...").arg(Quor::BandwidthText(Tolerance())), &bar, askForTolerance);
    });
}

} // namespace SendTo
