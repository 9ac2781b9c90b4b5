#include "controls/frequencystore/common/csvallowed.h"

#include "host/startup/cfgcenter.h"

bool CsvIsAllowed(const QString& part) {
    const std::unique_ptr<ICfg> cfg(
        CfgCenter::CreateCfg(QStringLiteral("FrequencyStore"), ICfg::PlugIn, part));
    return cfg->GetBool(QStringLiteral("AllowExportToCsv"), false);
}
