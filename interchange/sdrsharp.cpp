#include "host/report/xmlscanner.h"
#include "interchange/formatlist.h"
#include "interchange/outgoing.h"
#include "interchange/rows.h"

#include <algorithm>
#include <span>

namespace Interchange {

namespace {

using REPORTGENERATOR::XmlScanner;

// The frequency manager of a receiver's program: an XML array of entries whose members are elements, with
// whole Hz.

constexpr char Root[] = "ArrayOfMemoryEntry";
constexpr char NoMode[] = "NFM"; ///< what an entry without one of its modes gets

/// A member that our records have no place for, and what stands for nothing in it.
struct Member {
    const char* name;
    const char* usual;
    bool isAlwaysThere; ///< newer programs write more
};
constexpr Member Others[] = {{"IsFavourite", "false", true},
                             {"GroupName", "Misc", true},
                             {"Shift", "0", true},
                             {"IsScanned", "false", false},
                             {"CenterFrequency", "0", false}};

constexpr std::string_view Taken[] = {"Name", "Frequency", "DetectorType", "FilterBandwidth"};

bool isKnown(std::string_view name) {
    return std::ranges::find(Taken, name) != std::end(Taken) ||
           std::ranges::any_of(Others, [name](const Member& other) { return name == other.name; });
}

bool knows(const QString& head) {
    return head.trimmed().startsWith(QLatin1Char('<')) &&
           head.contains(QLatin1Char('<') + QLatin1String(Root));
}

class Entries {
public:
    Entries(QIODevice& device, Reading& reading)
        : m_input(device, reading.FileName()),
          m_scanner(m_input.Device(), reading.FileName(), false),
          m_reading(reading) {
        m_input.Tell(reading.Problems());
    }

    void Read() {
        int depth = 0;
        for (XmlScanner::Token token = m_scanner.Next(); token != XmlScanner::Token::End;
             token = m_scanner.Next()) {
            switch (token) {
            case XmlScanner::Token::StartElement:
                start(++depth);
                break;
            case XmlScanner::Token::Text:
                if (depth == MemberDepth)
                    m_members[m_count - 1].content += m_scanner.Text();
                break;
            case XmlScanner::Token::EndElement:
                if (depth-- == EntryDepth)
                    take();
                break;
            case XmlScanner::Token::End:
                break;
            }
        }
    }

private:
    static constexpr int EntryDepth = 2;
    static constexpr int MemberDepth = 3;

    void start(int depth) {
        if (depth == EntryDepth) {
            m_line = m_scanner.Line();
            m_count = 0;
        } else if (depth == MemberDepth) {
            m_members.resize(std::max(m_members.size(), ++m_count));
            m_members[m_count - 1].name = m_scanner.Name();
            m_members[m_count - 1].content.clear();
        }
    }
    std::string_view member(std::string_view name) const {
        for (std::size_t i = 0; i < m_count; ++i) {
            if (m_members[i].name == name)
                return Trimmed(m_members[i].content);
        }
        return {};
    }
    void take() {
        for (const Member& other : Others) {
            if (const std::string_view content = member(other.name); content != other.usual)
                m_reading.Extra(other.name, content);
        }
        for (const Content& other : std::span(m_members).first(m_count)) {
            if (!isKnown(other.name))
                m_reading.Extra(other.name, Trimmed(other.content));
        }
        m_reading.Take({.line = m_line,
                        .frequency = member("Frequency"),
                        .bandwidth = member("FilterBandwidth"),
                        .words = ModeWords::SdrSharp,
                        .mode = member("DetectorType"),
                        .name = member("Name")});
    }

    REPORTGENERATOR::TextInput m_input;
    XmlScanner m_scanner;
    Reading& m_reading;
    qint64 m_line = 0;
    struct Content {
        std::string name;
        std::string content;
    };
    std::vector<Content> m_members; ///< whose memory serves the next entry
    std::size_t m_count = 0;        ///< of this entry's
};

void read(QIODevice& device, Reading& reading) {
    Entries(device, reading).Read();
}

class EntryEncoder : public Encoder {
public:
    void Begin(std::string& out) override {
        out += "<?xml version=\"1.0\"?>\n<ArrayOfMemoryEntry "
               "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
               "xmlns:xsd=\"http://www.w3.org/2001/XMLSchema\">\n";
    }

    void Append(std::string& out, const FreqStoreXml::FrequencyStoreEntry& entry, Account& lost) override {
        const Outgoing of(entry, ModeWords::SdrSharp, false, lost);
        out += "  <MemoryEntry>\n";
        appendOther(out, Others[0], of);
        appendText(out, "Name", of.Comment());
        appendOther(out, Others[1], of);
        appendHertz(out, "Frequency", of.hertz, lost);
        appendText(out, "DetectorType", QString::fromStdString(of.Word(NoMode)));
        appendOther(out, Others[2], of);
        appendHertz(out, "FilterBandwidth", of.FilterBandwidth(NoMode, lost), lost);
        for (const Member& other : std::span(Others).subspan(3))
            appendOther(out, other, of);
        of.CountRest(lost);
        out += "  </MemoryEntry>\n";
    }

    void End(std::string& out) override { out += "</ArrayOfMemoryEntry>\n"; }

private:
    static void appendText(std::string& out, const char* name, const QString& text) {
        out.append("    <").append(name).append(">");
        REPORTGENERATOR::AppendText(out, text, REPORTGENERATOR::XmlTextEscapes);
        out.append("</").append(name).append(">\n");
    }
    static void appendHertz(std::string& out, const char* name, double hertz, Account& lost) {
        out.append("    <").append(name).append(">");
        AppendWholeHertz(out, hertz, lost);
        out.append("</").append(name).append(">\n");
    }
    static void appendOther(std::string& out, const Member& member, const Outgoing& of) {
        if (member.isAlwaysThere || !of.parts.Extra(QLatin1String(member.name)).isNull())
            appendText(out, member.name, of.Kept(member.name, member.usual));
    }
};

} // namespace

const Format SdrSharpXml{
    "sdrsharp",
    QT_TRANSLATE_NOOP("Format", "SDR# frequencies"),
    ".xml",
    "groups, favourites and shifts have no place in our lists; modes beyond its eight have none in "
    "the file",
    knows,
    read,
    []() -> std::unique_ptr<Encoder> { return std::make_unique<EntryEncoder>(); }};

} // namespace Interchange
