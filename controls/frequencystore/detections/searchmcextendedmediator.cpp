#include "controls/frequencystore/detections/searchmcextendedmediator.h"

#include "host/base/coord.h"
#include "host/base/frequencytext.h"
#include "host/base/numbers.h"
#include "host/freqlist/buttonbar.h"
#include "host/gui/guicentral.h"

#include <QCoreApplication>

#include <charconv>

namespace {

using Record = ExtendedDetectionConventional;
using Adapter = ExtendedDetectionConventionalAdapter;
using SearchMC::Variant;

constexpr char Context[] = "SearchMC";

QString text(const std::string& utf8) {
    return QString::fromStdString(utf8);
}

struct CodeText {
    const char* code;
    const char* text;
};

constexpr CodeText CodeTexts[] = {
    {SearchMC::DFSearching, QT_TRANSLATE_NOOP("SearchMC", "Searching...")},
    {SearchMC::DFInvalid, QT_TRANSLATE_NOOP("SearchMC", "Invalid DF result")},
    {SearchMC::DFTimeout, QT_TRANSLATE_NOOP("SearchMC", "Locate timeout")},
};

/// What a result code means; null for a text that is none of the three.
const CodeText* findCode(const std::string& code) {
    for (const CodeText& known : CodeTexts) {
        if (code == known.code)
            return &known;
    }
    return nullptr;
}

QString dfText(const std::string& value) {
    if (const CodeText* known = findCode(value))
        return QCoreApplication::translate(Context, known->text);
    return value == SearchMC::DFNoValue ? QString() : text(value);
}

/// Fixed with decimals, or in the general format with six digits; empty unless greater than 0.
QString fixedText(double value, int decimals, const char* unit) {
    QString text;
    if (value > 0) {
        Quor::AppendFixed(text, value, decimals);
        text += QLatin1String(unit);
    }
    return text;
}

QString generalText(double value, const char* unit) {
    if (!(value > 0))
        return QString();
    char number[32];
    const auto end = std::to_chars(number, std::end(number), value, std::chars_format::general, 6).ptr;
    return QLatin1String(number, end - number) + QLatin1String(unit);
}

QString wholeText(double value) {
    const auto whole = ClampedFromDouble<qint64>(value);
    return whole > 0 ? QString::number(whole) : QString();
}

QString confidenceText(const Record& record) {
    return record.GetClassifierConfidence() >= 1
               ? QString::number(record.GetClassifierConfidence()) + QLatin1String(" %")
               : QString();
}

QString positionText(double longitude, double latitude) {
    constexpr double None = std::numeric_limits<double>::max();
    if (longitude == None || latitude == None)
        return QStringLiteral("---");
    return Coord(longitude, latitude).GetString(GuiCentral::Instance().CurrentPositionFormat());
}

/// A field of every detection.
template <QString (*Text)(const DetectionConventional&)>
QString plain(const Record& record) {
    return Text(record);
}

struct Field {
    QLatin1String name;
    Adapter::Text text;
};

constexpr Field Fields[] = {
    {QLatin1String("Frequency"), plain<DetectionConventionalAdapter::GetFrequencyString>},
    {QLatin1String("Name"), plain<DetectionConventionalAdapter::GetName>},
    {QLatin1String("Bandwidth"), plain<DetectionConventionalAdapter::GetBandwidthString>},
    {QLatin1String("Level"), plain<DetectionConventionalAdapter::GetLevelString>},
    {QLatin1String("Type"), [](const Record&) { return QString(QLatin1Char(Adapter::Type)); }},
    {QLatin1String("From"), plain<DetectionConventionalAdapter::GetStartTimeString>},
    {QLatin1String("Until"), plain<DetectionConventionalAdapter::GetStopTimeString>},
    {QLatin1String("Class. Frequency"),
     [](const Record& r) { return fixedText(r.GetClassifierFrequency() / 1e3, 3, " kHz"); }},
    {QLatin1String("Class. Frequency MHz"),
     [](const Record& r) { return fixedText(r.GetClassifierFrequency() / 1e6, 6, " MHz"); }},
    {QLatin1String("Class. Bandwidth"),
     [](const Record& r) { return fixedText(r.GetClassifierBandwidth() / 1e3, 3, " kHz"); }},
    {QLatin1String("Class. Confidence"), confidenceText},
    {QLatin1String("Class. Modulation"), [](const Record& r) { return text(r.GetClassifierDemodulator()); }},
    {QLatin1String("Class. Trans."), [](const Record& r) { return text(r.GetClassifierTransmissionType()); }},
    {QLatin1String("Class. Trans"), [](const Record& r) { return text(r.GetClassifierTransmissionType()); }},
    {QLatin1String("Class. Baudrate"),
     [](const Record& r) { return generalText(r.GetClassifierBaudrate(), " Bd"); }},
    {QLatin1String("Class. Shift"),
     [](const Record& r) { return generalText(r.GetClassifierShift(), " Hz"); }},
    {QLatin1String("Class. Block Length"),
     [](const Record& r) { return generalText(r.GetClassifierBlocklength(), " s"); }},
    {QLatin1String("Class. Primary Mod."), [](const Record& r) { return text(r.GetClassifierPrimMod()); }},
    {QLatin1String("Class. Cycle Time"),
     [](const Record& r) { return generalText(r.GetClassifierCycletime(), " s"); }},
    {QLatin1String("Class. Tone Count"),
     [](const Record& r) { return wholeText(r.GetClassifierCycletime()); }},
    {QLatin1String("Class. Channels"), [](const Record& r) { return text(r.GetClassifierChannels()); }},
    {QLatin1String("Class. Decoder"), [](const Record& r) { return text(r.GetClassifierDecoder()); }},
    {QLatin1String("Azimuth"), Adapter::GetAzimuthString},
    {QLatin1String("DF Quality"), Adapter::GetDFQualityString},
    {QLatin1String("Location"), Adapter::GetLocationString},
};

} // namespace

Adapter::Text Adapter::FindField(const QString& field) {
    const auto* found = std::find_if(std::begin(Fields), std::end(Fields),
                                     [&](const Field& known) { return field == known.name; });
    return found == std::end(Fields) ? nullptr : found->text;
}

QString Adapter::FieldText(const Record& record, const QString& field) {
    const Text text = FindField(field);
    return text ? text(record) : QString();
}

QString Adapter::GetAzimuthString(const Record& record) {
    return dfText(record.GetAzimuth());
}

QString Adapter::GetDFQualityString(const Record& record) {
    return dfText(record.GetDFQuality());
}

QString Adapter::GetLocationString(const Record& record) {
    if (findCode(record.GetAzimuth()))
        return dfText(record.GetAzimuth());
    if (record.GetDFLongitude() == SearchMC::DFNoValue || record.GetDFLatitude() == SearchMC::DFNoValue)
        return QString();
    if (record.GetDFLongitude().find(',') == std::string::npos)
        return positionText(SearchMC::DFNumber(record.GetDFLongitude()),
                            SearchMC::DFNumber(record.GetDFLatitude()));
    const QStringList longitudes = text(record.GetDFLongitude()).split(QLatin1Char(','));
    const QStringList latitudes = text(record.GetDFLatitude()).split(QLatin1Char(','));
    QStringList positions;
    if (longitudes.size() == latitudes.size()) {
        for (qsizetype i = 0; i < longitudes.size(); ++i)
            positions << positionText(longitudes[i].toDouble(), latitudes[i].toDouble());
    }
    return positions.join(QLatin1Char(','));
}

namespace SearchMC {
namespace {

struct ClassifierColumn {
    DetectionColumn column;
    bool ofHF;
    bool ofVUHF;
};

/// The columns behind those of plain detections.
constexpr ClassifierColumn ClassifierColumns[] = {
    {{QT_TRANSLATE_NOOP("SearchMC", "Class. Frequency"), 6, "Class. Frequency", _compNumericWithSuffix, 14},
     true,
     false},
    {{QT_TRANSLATE_NOOP("SearchMC", "Class. Frequency"), 6, "Class. Frequency MHz", _compNumericWithSuffix,
      14},
     false,
     true},
    {{QT_TRANSLATE_NOOP("SearchMC", "Class. Bandwidth"), 7, "Class. Bandwidth", _compNumericWithSuffix, 11},
     true,
     true},
    {{QT_TRANSLATE_NOOP("SearchMC", "Class. Confidence"), 8, "Class. Confidence", _compNumericWithSuffix, 6},
     true,
     true},
    {{QT_TRANSLATE_NOOP("SearchMC", "Class. Modulation"), 9, "Class. Modulation", _compStandardString, 10},
     true,
     true},
    {{QT_TRANSLATE_NOOP("SearchMC", "Class. Trans."), 10, "Class. Trans.", _compStandardString, 14},
     true,
     false},
    {{QT_TRANSLATE_NOOP("SearchMC", "Class. Trans."), 10, "Class. Trans", _compStandardString, 14},
     false,
     true},
    {{QT_TRANSLATE_NOOP("SearchMC", "Class. Baudrate"), 11, "Class. Baudrate", _compNumericWithSuffix, 9},
     true,
     true},
    {{QT_TRANSLATE_NOOP("SearchMC", "Class. Shift"), 12, "Class. Shift", _compNumericWithSuffix, 8},
     true,
     true},
    {{QT_TRANSLATE_NOOP("SearchMC", "Class. Block Length"), 13, "Class. Block Length", _compNumericWithSuffix,
      8},
     true,
     false},
    {{QT_TRANSLATE_NOOP("SearchMC", "Class. Primary Mod."), 13, "Class. Primary Mod.", _compStandardString,
      10},
     false,
     true},
    {{QT_TRANSLATE_NOOP("SearchMC", "Class. Cycle Time"), 14, "Class. Cycle Time", _compNumericWithSuffix, 8},
     true,
     false},
    {{QT_TRANSLATE_NOOP("SearchMC", "Class. Tone Count"), 14, "Class. Tone Count", _compStandardNumeric, 6},
     false,
     true},
    {{QT_TRANSLATE_NOOP("SearchMC", "Class. Channels"), 15, "Class. Channels", _compStandardString, 8},
     true,
     false},
    {{QT_TRANSLATE_NOOP("SearchMC", "Class. Decoder"), 16, "Class. Decoder", _compStandardString, 12},
     true,
     false},
    {{QT_TRANSLATE_NOOP("SearchMC", "Azimuth"), 17, "Azimuth", _compStandardNumeric, 12}, true, true},
    {{QT_TRANSLATE_NOOP("SearchMC", "DF Quality"), 18, "DF Quality", _compStandardNumeric, 9}, true, true},
    {{QT_TRANSLATE_NOOP("SearchMC", "Location"), 19, "Location", _compStandardString, 24}, true, true},
};

std::vector<DetectionColumn> makeColumns(bool ClassifierColumn::*isOfVariant) {
    std::vector<DetectionColumn> columns(Columns().begin(), Columns().end());
    for (const ClassifierColumn& candidate : ClassifierColumns) {
        if (candidate.*isOfVariant)
            columns.push_back(candidate.column);
    }
    return columns;
}

/// By column identifier, behind those of every detection. In the VHF/UHF columns 13 and 14 other texts stand
/// than those that they sort by.
const RecordSort::Key<Record> ClassifierKeys[] = {
    [](const Record& r) { return r.GetClassifierFrequency(); },
    [](const Record& r) { return r.GetClassifierBandwidth(); },
    [](const Record& r) { return static_cast<double>(r.GetClassifierConfidence()); },
    [](const Record& r) -> const std::string& { return r.GetClassifierDemodulator(); },
    [](const Record& r) -> const std::string& { return r.GetClassifierTransmissionType(); },
    [](const Record& r) { return r.GetClassifierBaudrate(); },
    [](const Record& r) { return r.GetClassifierShift(); },
    [](const Record& r) { return r.GetClassifierBlocklength(); },
    [](const Record& r) { return r.GetClassifierCycletime(); },
    [](const Record& r) -> const std::string& { return r.GetClassifierChannels(); },
    [](const Record& r) -> const std::string& { return r.GetClassifierDecoder(); },
    [](const Record& r) -> const std::string& { return r.GetAzimuth(); },
    [](const Record& r) -> const std::string& { return r.GetDFQuality(); },
    Adapter::GetLocationString,
};

} // namespace

std::span<const DetectionColumn> ExtendedColumns(Variant variant) {
    static const std::vector<DetectionColumn> hf = makeColumns(&ClassifierColumn::ofHF);
    static const std::vector<DetectionColumn> vuhf = makeColumns(&ClassifierColumn::ofVUHF);
    return variant == Variant::HF ? hf : vuhf;
}

template <>
const RecordSort::Key<Record>* KeyOf<Record>(int columnId) {
    constexpr int FirstOfClassifier = std::size(PlainKeys<Record>);
    if (columnId < 0 || columnId >= FirstOfClassifier + static_cast<int>(std::size(ClassifierKeys)))
        return nullptr;
    return columnId < FirstOfClassifier ? &PlainKeys<Record>[columnId]
                                        : &ClassifierKeys[columnId - FirstOfClassifier];
}

FreqStoreXml::FrequencyStoreEntry EntryOf(const ExtendedDetectionConventional& record) {
    FreqStoreXml::FrequencyStoreEntry entry = EntryOf(static_cast<const DetectionConventional&>(record));
    if (record.GetClassifierFrequency() > 0)
        entry.GetFFM_Settings().GetFrequency().SetValue(record.GetClassifierFrequency());
    if (record.GetClassifierBandwidth() > 0)
        entry.GetFFM_Settings().GetIFBandwidth().SetValue(record.GetClassifierBandwidth());
    if (!record.GetClassifierTransmissionType().empty())
        entry.SetComment(entry.GetComment() + QStringLiteral(", ") +
                         text(record.GetClassifierTransmissionType()));
    return entry;
}

void FillCopyRow(FrequencyListCopyStruct& row, const ExtendedDetectionConventional& record,
                 const CopyIds& ids) {
    FillCopyRow(row, static_cast<const DetectionConventional&>(record), ids);
    row.SetValue(ids.demodulation, text(record.GetClassifierDemodulator()));
}

} // namespace SearchMC

bool CompareExtDetConv::operator()(const Record& a, const Record& b) const {
    return m_key && RecordSort::Before(*m_key, m_ascending ? a : b, m_ascending ? b : a);
}

ExtendedDetectionConventionalListView::ExtendedDetectionConventionalListView(QWidget* parent, unsigned listId,
                                                                             const char* name,
                                                                             Variant variant)
    : SearchMCMediatorView(parent, listId, name, SearchMC::ExtendedColumns(variant)) {
    connect(this, &VectorListViewBase::clicked, this,
            &ExtendedDetectionConventionalListView::slotItemClicked);
}

void ExtendedDetectionConventionalListView::ConnectBar(FreqStoreListViewButtonBar& bar) {
    connect(bar.GetAction(FreqStoreListViewButtonBar::Copy), &QAction::triggered, this,
            &ExtendedDetectionConventionalListView::slotCopy);
}
