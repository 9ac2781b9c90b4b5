#include "host/valuetree/itemmap.h"

#include "host/base/frequencytext.h"
#include "host/base/tokenizer.h"

#include <QStringList>

QString FrequencyMapItemFormat::ToText(const FrequencyMapItem& item) {
    return QStringList{Quor::ToShortest(item.GetFrequency()), Quor::ToShortest(item.GetBandwidth()),
                       QString::number(item.GetNumber()),     Quor::OneField(item.GetLabel()),
                       QString::number(item.GetType()),       Quor::OneField(item.GetText())}
        .join(QLatin1Char('\t'));
}

QString FrequencyMapItemAdapter::GetFrequencyString(const FrequencyMapItem& item) {
    return Quor::FrequencyText(item.GetFrequency());
}

QString FrequencyMapItemAdapter::GetBandwidthString(const FrequencyMapItem& item) {
    return Quor::BandwidthText(item.GetBandwidth());
}
