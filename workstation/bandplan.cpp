#include "workstation/bandplan.h"

#include "host/base/frequencytext.h"
#include "host/base/problems.h"
#include "host/gui/colorset.h"

#include <QCoreApplication>
#include <QFile>
#include <QStringList>

#include <algorithm>

// The resource of a static library is linked only when it is asked for, outside any namespace.
static void takeResource() {
    Q_INIT_RESOURCE(bandplan);
}

namespace {

struct Service {
    const char* name;
    IColorBase::ECOLOR color;
};
constexpr Service ServiceTable[] = {
    {"amateur", IColorBase::MARK_TARGET},      {"broadcast", IColorBase::MARK_MEMORY},
    {"aeronautical", IColorBase::MARK_RESULT}, {"maritime", IColorBase::MARK_NOI},
    {"mobile", IColorBase::GOOD_TEXT},         {"satellite", IColorBase::BAR_TUNED},
    {"other", IColorBase::MARK_DETECTION},
};

/// Why a line is no band; empty when it is one.
QString parse(const QString& line, double lowest, BandPlan::Band& band) {
    const QStringList fields = line.split(QLatin1Char(';'));
    if (fields.size() != 4)
        return QStringLiteral("has %1 fields instead of 4").arg(fields.size());
    if (!Quor::ParseFrequency(fields[0], band.from) || !Quor::ParseFrequency(fields[1], band.to))
        return QStringLiteral("has a limit that is no frequency");
    if (!(band.from > 0 && band.from < band.to))
        return QStringLiteral("does not reach from a lower to a higher frequency");
    if (band.from < lowest)
        return QStringLiteral("begins below the end of the band before");
    band.name = fields[2].trimmed();
    band.service = fields[3].trimmed();
    if (band.name.isEmpty())
        return QStringLiteral("has no name");
    return BandPlan::Services().contains(band.service)
               ? QString()
               : QStringLiteral("names an unknown service: %1").arg(band.service);
}

} // namespace

BandPlan BandPlan::OfRegion(int region) {
    takeResource();
    QFile file(QStringLiteral(":/bandplan/region%1.csv").arg(region));
    if (!file.open(QIODevice::ReadOnly)) {
        Problems::Report("bandplan", {file.fileName(), 0, file.errorString()});
        return {};
    }
    return Read(QString::fromUtf8(file.readAll()), file.fileName());
}

BandPlan BandPlan::Read(const QString& text, const QString& file) {
    BandPlan plan;
    qint64 number = 0;
    for (const QString& line : text.split(QLatin1Char('\n'))) {
        ++number;
        if (line.trimmed().isEmpty() || line.startsWith(QLatin1Char('#')))
            continue;
        Band band;
        const QString wrong = parse(line, plan.m_bands.empty() ? 0 : plan.m_bands.back().to, band);
        if (wrong.isEmpty())
            plan.m_bands.push_back(band);
        else
            Problems::Report("bandplan", {file, number, wrong});
    }
    return plan;
}

QStringList BandPlan::Services() {
    QStringList names;
    for (const Service& service : ServiceTable)
        names << QString::fromLatin1(service.name);
    return names;
}

QColor BandPlan::ColorOf(const QString& service) {
    for (const Service& known : ServiceTable) {
        if (service == QLatin1String(known.name))
            return ColorSet::Instance().GetColorDefinition(known.color).GetColor();
    }
    return ColorSet::Instance().GetColorDefinition(IColorBase::MUTED_TEXT).GetColor();
}

QString BandPlan::RegionName(int region) {
    constexpr const char* Names[] = {
        QT_TRANSLATE_NOOP("BandPlan", "Region 1 (Europe, Africa)"),
        QT_TRANSLATE_NOOP("BandPlan", "Region 2 (Americas)"),
        QT_TRANSLATE_NOOP("BandPlan", "Region 3 (Asia, Pacific)"),
    };
    return QCoreApplication::translate("BandPlan", Names[std::clamp(region, 1, RegionCount) - 1]);
}

std::vector<BandPlan::Band> BandPlan::Within(double from, double to) const {
    const auto first = std::upper_bound(m_bands.begin(), m_bands.end(), from,
                                        [](double hertz, const Band& band) { return hertz < band.to; });
    const auto last = std::upper_bound(first, m_bands.end(), to,
                                       [](double hertz, const Band& band) { return hertz < band.from; });
    return {first, last};
}
