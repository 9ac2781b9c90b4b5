#include "workstation/noibands.h"

#include "controls/frequencystore/common/paths.h"
#include "host/base/numbers.h"
#include "host/valuetree/tree.h"

#include <algorithm>

NoiBands::NoiBands(QObject* parent) : QObject(parent), m_value(this) {
    Tree::Instance()->MakeNode(Paths::NoiNode);
    m_value.Reset(GetOrCreateValue<Value<QString>>(Paths::NoiDefinition));
    read();
}

QString NoiBands::GetDefinition() const {
    return m_value ? m_value->GetStringValue() : QString();
}

void NoiBands::Update(Observable* subject, TChangeCode code) {
    if (code == TChangeCode::Removing && m_value && subject == m_value.get())
        m_value.Reset();
    read();
}

void NoiBands::read() {
    std::vector<Band> bands = Parse(GetDefinition());
    m_count = bands.size();
    m_bands = Join(std::move(bands));
    emit Changed();
}

std::vector<NoiBands::Band> NoiBands::Parse(QStringView definition) {
    std::vector<Band> bands;
    for (const QStringView text : definition.tokenize(QLatin1Char(';'))) {
        const qsizetype comma = text.indexOf(QLatin1Char(','));
        Band band{};
        if (comma > 0 && Quor::ParseDouble(text.left(comma), band.from) &&
            Quor::ParseDouble(text.mid(comma + 1), band.to) && band.from <= band.to)
            bands.push_back(band);
    }
    return bands;
}

std::vector<NoiBands::Band> NoiBands::Join(std::vector<Band> bands) {
    std::sort(bands.begin(), bands.end(), [](const Band& a, const Band& b) { return a.from < b.from; });
    std::vector<Band> joined;
    for (const Band& band : bands) {
        if (joined.empty() || joined.back().to < band.from)
            joined.push_back(band);
        else
            joined.back().to = std::max(joined.back().to, band.to);
    }
    return joined;
}

const NoiBands::Band* NoiBands::FirstWithin(const std::vector<Band>& joined, double from, double to) {
    const auto found = std::lower_bound(joined.begin(), joined.end(), from,
                                        [](const Band& band, double hertz) { return band.to < hertz; });
    return found != joined.end() && found->from <= to ? &*found : nullptr;
}
