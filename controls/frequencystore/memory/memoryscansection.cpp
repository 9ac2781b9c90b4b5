#include "controls/frequencystore/memory/memoryscansection.h"

#include "controls/frequencystore/files/carefulxmlreader.h"
#include "host/base/fileproblems.h"
#include "host/base/longwork.h"
#include "host/base/numbers.h"

#include <QCoreApplication>
#include <QHash>
#include <QStringList>

#include <algorithm>
#include <charconv>
#include <span>
#include <variant>

namespace {

const QString SubJobElement = QStringLiteral("SUBJOB");
const QString SectionElement = QStringLiteral("MEMORYSCAN");
const QString ChannelElement = QStringLiteral("MEMORYSCAN_CHANNEL");
const QString ValueAttribute = QStringLiteral("Value");

using Member =
    std::variant<double ScanChannel::*, long ScanChannel::*, QString ScanChannel::*, bool ScanChannel::*>;

/// One child element of a channel, and the member that it holds.
struct Parameter {
    const char* element;
    Member member;
    const char* whenTrue = "true"; ///< any other text of a flag is false
    const char* whenFalse = "false";
};

constexpr Parameter HFParameters[] = {
    {"MEMORYSCAN_SEQ_CHANNELNUMBER", &ScanChannel::number},
    {"MEMORYSCAN_SEQ_FREQUENCY", &ScanChannel::frequency},
    {"MEMORYSCAN_SEQ_THRESHOLD", &ScanChannel::threshold},
    {"MEMORYSCAN_SEQ_ANALOGDEMOD_METHOD", &ScanChannel::demodulation},
    {"MEMORYSCAN_SEQ_IFBANDWIDTH", &ScanChannel::bandwidth},
    {"MEMORYSCAN_SEQ_OUTPUTIFPATH", &ScanChannel::outputIFPath},
    {"MEMORYSCAN_SEQ_SHIFT", &ScanChannel::shift},
    {"MEMORYSCAN_SEQ_BFOFREQUENCY", &ScanChannel::bfoFrequency},
};

constexpr Parameter VUHFParameters[] = {
    {"MEMORYSCAN_SEQ_CHANNELNUMBER", &ScanChannel::number},
    {"MEMORYSCAN_SEQ_FREQUENCY", &ScanChannel::frequency},
    {"MEMORYSCAN_SEQ_THRESHOLD", &ScanChannel::threshold},
    {"MEMORYSCAN_SEQ_ANALOGDEMOD_METHOD", &ScanChannel::demodulation},
    {"MEMORYSCAN_SEQ_IFBANDWIDTH", &ScanChannel::bandwidth},
    {"MEMORYSCAN_SEQ_AFC", &ScanChannel::afc},
    {"MEMORYSCAN_SEQ_USEQUELCH", &ScanChannel::useSquelch},
    {"MEMORYSCAN_SEQ_ATTENUATION_MODE", &ScanChannel::useAttenuation, "Manual", "Automatic"},
    {"MEMORYSCAN_SEQ_ATTENUATION", &ScanChannel::attenuation},
    {"MEMORYSCAN_SEQ_ANTENNAID", &ScanChannel::antennaID},
};

/// The running number is only written: what counts when reading is the order.
constexpr size_t FirstRead = 1;

std::span<const Parameter> parametersOf(bool vuhf) {
    return vuhf ? std::span<const Parameter>(VUHFParameters) : std::span<const Parameter>(HFParameters);
}

bool hasElement(bool vuhf, std::string_view name) {
    const std::span<const Parameter> parameters = parametersOf(vuhf);
    return std::any_of(parameters.begin(), parameters.end(),
                       [name](const Parameter& parameter) { return parameter.element == name; });
}

bool parseInteger(QStringView text, long& number) {
    int parsed = 0;
    const bool isNumber = Quor::ParseInt(text, parsed);
    number = parsed;
    return isNumber;
}

/// Sets the member from its text; false, with the member 0, when the text is not such a number.
bool setFromText(ScanChannel& channel, const Parameter& parameter, QStringView text) {
    struct Visitor {
        ScanChannel& channel;
        const Parameter& parameter;
        QStringView text;
        bool operator()(double ScanChannel::*member) const {
            return Quor::ParseDouble(text, channel.*member);
        }
        bool operator()(long ScanChannel::*member) const { return parseInteger(text, channel.*member); }
        bool operator()(QString ScanChannel::*member) const {
            channel.*member = text.toString();
            return true;
        }
        bool operator()(bool ScanChannel::*member) const {
            channel.*member = text == QLatin1String(parameter.whenTrue);
            return true;
        }
    };
    return std::visit(Visitor{channel, parameter, text}, parameter.member);
}

const char* escapeOf(QChar c) {
    switch (c.unicode()) {
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '&':
        return "&amp;";
    case '"':
        return "&quot;";
    case '\t':
        return "&#9;";
    case '\n':
        return "&#10;";
    case '\r':
        return "&#13;";
    default:
        return nullptr;
    }
}

/// Appends a text as it stands in an attribute. What no document can hold becomes U+FFFD.
void appendEscaped(QString& out, QStringView text) {
    qsizetype copied = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            ++i;
            continue;
        }
        const char* const escape = escapeOf(c);
        const bool isIllegal = !escape && (c.unicode() < 0x20 || c.isSurrogate() || c.unicode() >= 0xfffe);
        if (!escape && !isIllegal)
            continue;
        out += text.mid(copied, i - copied);
        copied = i + 1;
        if (escape)
            out += QLatin1String(escape);
        else
            out += QChar(QChar::ReplacementCharacter);
    }
    out += text.mid(copied);
}

void appendNumber(QString& out, long number) {
    char digits[24];
    const char* const end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    out += QLatin1String(digits, end - digits);
}

void appendMember(QString& out, const ScanChannel& channel, const Parameter& parameter) {
    struct Visitor {
        QString& out;
        const ScanChannel& channel;
        const Parameter& parameter;
        void operator()(double ScanChannel::*member) const { Quor::AppendFixed(out, channel.*member, 6); }
        void operator()(long ScanChannel::*member) const { appendNumber(out, channel.*member); }
        void operator()(QString ScanChannel::*member) const { appendEscaped(out, channel.*member); }
        void operator()(bool ScanChannel::*member) const {
            out += QLatin1String(channel.*member ? parameter.whenTrue : parameter.whenFalse);
        }
    };
    std::visit(Visitor{out, channel, parameter}, parameter.member);
}

/// Reads one job; see `ReadScanChannels`.
class ScanReader {
public:
    ScanReader(const QString& job, bool vuhf, FileProblems& problems)
        : m_reader(job), m_parameters(parametersOf(vuhf)), m_problems(problems) {}

    bool Read(JobChannels& result);

private:
    /// The channels of a section.
    struct Section {
        size_t begin;
        size_t end;
    };

    bool tooMany();
    void readChannel();
    void readParameter(ReadChannel& channel, unsigned& seen);
    void reportMissing(const ReadChannel& channel, unsigned seen);
    void endSection();
    /// Whether the channels of the section that ends are those of an earlier one.
    bool isRepeated();
    void reportSharedNumbers();

    CarefulXmlReader m_reader;
    std::span<const Parameter> m_parameters;
    FileProblems& m_problems;
    std::vector<ReadChannel> m_channels;
    QMultiHash<size_t, Section> m_sections; ///< by a hash of their channels
    QHash<long, qint64> m_lineOfRange;      ///< range numbers of earlier sections, and the lines of these
    qint64 m_sectionLine = 0;
    size_t m_sectionBegin = 0;
    int m_sectionDepth = 0; ///< 0 outside of a section
};

bool ScanReader::Read(JobChannels& result) {
    bool hasSubJob = false;
    while (m_reader.Next()) {
        LongWork::Step(m_reader.Position(), 0);
        hasSubJob = hasSubJob || (m_reader.IsStart() && m_reader.Name() == SubJobElement);
        if (m_reader.IsStart() && m_reader.Name() == SectionElement && m_sectionDepth == 0) {
            m_sectionDepth = m_reader.Depth();
            m_sectionLine = m_reader.Line();
            m_sectionBegin = m_channels.size();
        } else if (m_reader.IsStart() && m_reader.Name() == ChannelElement) {
            if (tooMany())
                return false;
            readChannel();
        } else if (m_reader.IsEnd() && m_reader.Depth() == m_sectionDepth) {
            endSection();
        }
    }
    if (!m_reader.Refusal().isEmpty()) {
        m_problems.ReportAlways(m_reader.Line(), m_reader.Refusal());
        return false;
    }
    result = {std::move(m_channels), hasSubJob};
    return true;
}

bool ScanReader::tooMany() {
    if (m_channels.size() < MaxScanChannels)
        return false;
    m_problems.ReportAlways(m_reader.Line(),
                            QCoreApplication::translate("Readers", "a job cannot hold more than %1 channels")
                                .arg(MaxScanChannels));
    return true;
}

void ScanReader::readChannel() {
    ReadChannel channel;
    channel.line = m_reader.Line();
    const QXmlStreamAttributes attributes = m_reader.Attributes();
    channel.name = attributes.value(QLatin1String("Name")).toString();
    const QStringView range = attributes.value(QLatin1String("Range"));
    if (!parseInteger(range, channel.range))
        m_problems.Report(
            channel.line,
            QCoreApplication::translate("Readers", "Range \"%1\" is no number; 0 is taken").arg(range));
    unsigned seen = 0;
    const int depth = m_reader.Depth();
    while (m_reader.Next() && !(m_reader.IsEnd() && m_reader.Depth() == depth)) {
        if (m_reader.IsStart() && m_reader.Depth() == depth + 1)
            readParameter(channel, seen);
    }
    reportMissing(channel, seen);
    m_channels.push_back(std::move(channel));
}

/// Takes the present element if it is a parameter; the first of several counts.
void ScanReader::readParameter(ReadChannel& channel, unsigned& seen) {
    for (size_t i = 0; i < m_parameters.size(); ++i) {
        const Parameter& parameter = m_parameters[i];
        if (m_reader.Name() != QLatin1String(parameter.element))
            continue;
        if ((seen & (1u << i)) != 0)
            return;
        seen |= 1u << i;
        const QXmlStreamAttributes attributes = m_reader.Attributes();
        const QStringView text = attributes.value(ValueAttribute);
        if (!setFromText(channel, parameter, text) && i >= FirstRead)
            m_problems.Report(m_reader.Line(),
                              QCoreApplication::translate("Readers", "%1 \"%2\" is no number; 0 is taken")
                                  .arg(QLatin1String(parameter.element), text.left(40)));
        return;
    }
}

void ScanReader::reportMissing(const ReadChannel& channel, unsigned seen) {
    QStringList missing;
    for (size_t i = FirstRead; i < m_parameters.size(); ++i) {
        if ((seen & (1u << i)) == 0)
            missing << QString::fromLatin1(m_parameters[i].element);
    }
    if (!missing.isEmpty() && m_reader.Refusal().isEmpty())
        m_problems.Report(channel.line, QCoreApplication::translate("Readers", "channel \"%1\" lacks %2")
                                            .arg(channel.name.left(40), missing.join(QLatin1String(", "))));
}

void ScanReader::endSection() {
    m_sectionDepth = 0;
    if (isRepeated()) {
        m_channels.resize(m_sectionBegin);
        return;
    }
    reportSharedNumbers();
    for (size_t i = m_sectionBegin; i < m_channels.size(); ++i)
        m_lineOfRange.insert(m_channels[i].range, m_sectionLine);
}

bool ScanReader::isRepeated() {
    const auto begin = m_channels.cbegin() + static_cast<std::ptrdiff_t>(m_sectionBegin);
    size_t hash = 0;
    for (auto channel = begin; channel != m_channels.cend(); ++channel)
        hash = qHashMulti(hash, channel->range, channel->name, channel->frequency);
    const auto isSame = [&](const Section& earlier) {
        return std::equal(m_channels.cbegin() + static_cast<std::ptrdiff_t>(earlier.begin),
                          m_channels.cbegin() + static_cast<std::ptrdiff_t>(earlier.end), begin,
                          m_channels.cend(), std::equal_to<ScanChannel>());
    };
    const auto [first, last] = m_sections.equal_range(hash);
    if (std::any_of(first, last, isSame))
        return true;
    m_sections.insert(hash, {m_sectionBegin, m_channels.size()});
    return false;
}

/// Channels of one number are one range, also when they come from sub-jobs with different lists: what they
/// say beyond their frequency is then lost, which the operator should know.
void ScanReader::reportSharedNumbers() {
    for (size_t i = m_sectionBegin; i < m_channels.size(); ++i) {
        const auto earlier = m_lineOfRange.constFind(m_channels[i].range);
        if (earlier == m_lineOfRange.constEnd())
            continue;
        m_problems.Report(m_sectionLine,
                          QCoreApplication::translate(
                              "Readers", "this section differs from that of line %1, which uses the same "
                                         "numbers; channels join the ranges there")
                              .arg(*earlier));
        return;
    }
}

} // namespace

std::optional<bool> IsElementOfVUHF(std::string_view name) {
    const bool isVUHF = hasElement(true, name);
    return isVUHF == hasElement(false, name) ? std::nullopt : std::optional<bool>(isVUHF);
}

void MemoryScanWriter::Append(const ScanChannel& channel) {
    if (m_text.isEmpty()) {
        m_text += QLatin1String("<MEMORYSCAN>");
        for (const Parameter& parameter : parametersOf(m_vuhf))
            m_heads.push_back(QStringLiteral("\n  <%1 Value=\"").arg(QLatin1String(parameter.element)));
    }
    m_text += QStringView(u"\n <MEMORYSCAN_CHANNEL Range=\"");
    appendNumber(m_text, channel.number);
    m_text += QStringView(u"\" Name=\"");
    appendEscaped(m_text, channel.name);
    m_text += QStringView(u"\" Value=\"");
    appendNumber(m_text, channel.number);
    m_text += QStringView(u"\" Enabled=\"true\">");
    auto head = m_heads.cbegin();
    for (const Parameter& parameter : parametersOf(m_vuhf)) {
        m_text += *head++;
        appendMember(m_text, channel, parameter);
        m_text += QStringView(u"\"/>");
    }
    m_text += QStringView(u"\n </MEMORYSCAN_CHANNEL>");
}

QString MemoryScanWriter::Finish() {
    m_text += QLatin1String(m_text.isEmpty() ? "<MEMORYSCAN/>\n" : "\n</MEMORYSCAN>\n");
    return std::move(m_text);
}

bool ReadScanChannels(const QString& job, bool vuhf, FileProblems& problems, JobChannels& result) {
    bool isRead = false;
    LongWork::Elsewhere([&] { isRead = ScanReader(job, vuhf, problems).Read(result); });
    return isRead;
}
