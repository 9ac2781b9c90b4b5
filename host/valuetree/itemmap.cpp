#include "host/valuetree/itemmap.h"

#include "host/base/frequencytext.h"

#include <QStringList>

namespace {

QString oneField(QString text) {
    for (QChar& c : text) {
        if (c == QLatin1Char('\t') || c == QLatin1Char('\n') || c == QLatin1Char('\r'))
            c = QLatin1Char(' ');
    }
    return text;
}

} // namespace

QString FrequencyMapItemFormat::ToText(const FrequencyMapItem& item) {
    return QStringList{Quor::ToShortest(item.GetFrequency()), Quor::ToShortest(item.GetBandwidth()),
                       QString::number(item.GetNumber()),     oneField(item.GetLabel()),
                       QString::number(item.GetType()),       oneField(item.GetText())}
        .join(QLatin1Char('\t'));
}

QString FrequencyMapItemAdapter::GetFrequencyString(const FrequencyMapItem& item) {
    return Quor::FrequencyText(item.GetFrequency());
}

QString FrequencyMapItemAdapter::GetBandwidthString(const FrequencyMapItem& item) {
    return Quor::BandwidthText(item.GetBandwidth());
}
