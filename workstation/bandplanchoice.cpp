#include "workstation/bandplanchoice.h"

#include "host/startup/cfgcenter.h"
#include "workstation/frequencybar.h"

#include <QActionGroup>
#include <QCoreApplication>
#include <QMenu>

namespace {

const QString RegionKey = QStringLiteral("BandPlanRegion");

QString tr(const char* text) {
    return QCoreApplication::translate("BandPlanChoice", text);
}

} // namespace

void BandPlanChoice::AddTo(QMenu& menu, FrequencyBar& bar) {
    ICfg& settings = CfgCenter::GetAppCfg(ICfg::StartUp);
    bar.SetRegion(static_cast<int>(settings.GetInt(RegionKey, 1)));
    QMenu* regions = menu.addMenu(tr("&Band plan"));
    auto* group = new QActionGroup(regions);
    for (int region = 0; region <= BandPlan::RegionCount; ++region) {
        QAction* action = group->addAction(region == 0 ? tr("None") : BandPlan::RegionName(region));
        action->setCheckable(true);
        action->setChecked(region == bar.GetRegion());
        QObject::connect(action, &QAction::triggered, &bar, [&bar, &settings, region] {
            bar.SetRegion(region);
            settings.SetString(RegionKey, QString::number(region));
        });
    }
    regions->addActions(group->actions());
    QObject::connect(regions, &QMenu::aboutToShow, group, [group, &bar] {
        group->actions().at(bar.GetRegion())->setChecked(true); // it may be chosen elsewhere, too
    });
}
