#include "controls/frequencystore/common/csvallowed.h"

#include "host/startup/cfgcenter.h"

#include <QAction>

namespace {

constexpr char HasCsvProperty[] = "hasCsv";

} // namespace

bool CsvIsAllowed(const QString& part) {
    const std::unique_ptr<ICfg> cfg(
        CfgCenter::CreateCfg(QStringLiteral("FrequencyStore"), ICfg::PlugIn, part));
    return cfg->GetBool(QStringLiteral("AllowExportToCsv"), false);
}

void OfferCsv(std::initializer_list<QAction*> actions, bool allowed) {
    for (QAction* action : actions) {
        action->setProperty(HasCsvProperty, true);
        action->setVisible(allowed);
    }
}

bool HasCsv(const QAction& action) {
    return action.property(HasCsvProperty).toBool();
}
