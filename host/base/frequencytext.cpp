#include "host/base/frequencytext.h"

#include "host/base/numbers.h"

#include <cmath>

namespace Quor {
namespace {

constexpr double KHz = 1e3;
constexpr double MHz = 1e6;
/// Operators speak of kHz on short wave and of MHz above.
constexpr double ShortWaveEnd = 30 * MHz;

struct Unit {
    QLatin1String name;
    double factor;
};

// "Hz" ends all the others, so it comes last.
constexpr Unit Units[] = {{QLatin1String("kHz"), KHz}, {QLatin1String("MHz"), MHz},
                          {QLatin1String("GHz"), 1e9}, {QLatin1String("Hz"), 1},
                          {QLatin1String("k"), KHz},   {QLatin1String("M"), MHz},
                          {QLatin1String("G"), 1e9}};

QString withUnit(double value, int decimals, QLatin1String unit) {
    QString text;
    text.reserve(20);
    AppendFixed(text, value, decimals);
    return text += unit;
}

} // namespace

QString FrequencyText(double hertz) {
    return FrequencyTextIn(hertz < ShortWaveEnd ? KHz : MHz, hertz);
}

QString FrequencyTextIn(double unit, double hertz) {
    return unit < MHz ? withUnit(hertz / KHz, 3, QLatin1String(" kHz"))
                      : withUnit(hertz / MHz, 6, QLatin1String(" MHz"));
}

QString ShortFrequencyText(double hertz) {
    const double value = hertz >= 1e9 ? hertz / 1e9 : hertz >= 1e6 ? hertz / 1e6 : hertz / 1e3;
    const char* unit = hertz >= 1e9 ? " GHz" : hertz >= 1e6 ? " MHz" : " kHz";
    return QString::number(value, 'g', 7) + QLatin1String(unit);
}

QString BandwidthText(double hertz) {
    return withUnit(hertz / KHz, 3, QLatin1String(" kHz"));
}

QLatin1String UnitName(double hertz) {
    for (const Unit& unit : Units) {
        if (unit.factor == hertz)
            return unit.name;
    }
    return {};
}

double TakeUnit(QStringView& text, double otherwise) {
    for (const Unit& unit : Units) {
        if (text.endsWith(unit.name, Qt::CaseInsensitive)) {
            text.chop(unit.name.size());
            return unit.factor;
        }
    }
    return otherwise;
}

bool ParseFrequency(QStringView text, double& hertz, double unitFactor) {
    text = text.trimmed();
    const double factor = TakeUnit(text, unitFactor);
    double number = 0;
    if (!ParseDouble(text, number) || !std::isfinite(number * factor))
        return false;
    hertz = number * factor;
    return true;
}

} // namespace Quor
