#include "host/report/xmlscanner.h"

#include "host/report/textform.h"

#include <array>
#include <charconv>
#include <utility>

namespace REPORTGENERATOR {

namespace {

constexpr std::size_t DeepestNesting = 64;
constexpr std::size_t MostAttributes = 64;
constexpr std::string_view Blanks = " \t\r\n";
/// Bytes with which UTF-16 and UTF-32 files begin.
constexpr std::string_view NotUtf8("\0\xFE\xFF", 3);
constexpr std::string_view CDataStart = "<![CDATA[";

/// Classes of bytes, so that one look at a table tells what a byte may be.
enum ByteClass : unsigned char { NameStart = 1, NameByte = 2, Special = 4 };

constexpr std::array<unsigned char, 256> MakeByteClasses() {
    std::array<unsigned char, 256> table{};
    for (std::size_t c = 0; c < table.size(); ++c) {
        const bool letter =
            (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' || c == ':' || c >= 0x80;
        const bool digit = (c >= '0' && c <= '9') || c == '-' || c == '.';
        const bool special = c == '&' || c >= 0x80 || (c < 0x20 && c != '\t' && c != '\n');
        table[c] = static_cast<unsigned char>((letter ? NameStart | NameByte : 0) | (digit ? NameByte : 0) |
                                              (special ? Special : 0));
    }
    return table;
}
constexpr std::array<unsigned char, 256> ByteClasses = MakeByteClasses();

bool Is(char c, ByteClass byteClass) {
    return (ByteClasses[static_cast<unsigned char>(c)] & byteClass) != 0;
}

void SkipBlanks(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(Blanks), text.size()));
}

QString Quoted(std::string_view text) {
    constexpr std::size_t Shown = 80;
    const std::string_view start = text.substr(0, Shown);
    return QLatin1Char('"') + QString::fromUtf8(start.data(), static_cast<qsizetype>(start.size())) +
           (text.size() > Shown ? QStringLiteral("...\"") : QStringLiteral("\""));
}

bool IsXmlVersion(std::string_view text) {
    return text.size() > 2 && text.starts_with("1.") &&
           text.find_first_not_of("0123456789", 2) == std::string_view::npos;
}

bool IsUtf8Name(std::string_view encoding) {
    const auto name = QLatin1String(encoding.data(), static_cast<qsizetype>(encoding.size()));
    return name.compare(QLatin1String("utf-8"), Qt::CaseInsensitive) == 0 ||
           name.compare(QLatin1String("us-ascii"), Qt::CaseInsensitive) == 0;
}

} // namespace

XmlScanner::XmlScanner(QIODevice& device, const QString& name, bool heedEncoding)
    : m_input(device, name), m_heedEncoding(heedEncoding) {
    m_attributes.reserve(MostAttributes);
}

XmlScanner::Token XmlScanner::Next() {
    if (std::exchange(m_endPending, false)) {
        Close();
        return Token::EndElement;
    }
    if (!std::exchange(m_started, true)) {
        if (m_input.Ensure(3) && m_input.Rest().starts_with("\xEF\xBB\xBF"))
            m_input.Skip(3);
        if (m_input.Ensure(1) && NotUtf8.find(m_input.Rest().front()) != std::string_view::npos)
            Fail(QStringLiteral("this is not UTF-8 text"));
        if (m_input.Ensure(6) && m_input.Rest().starts_with("<?xml") &&
            Blanks.find(m_input.Rest()[5]) != std::string_view::npos)
            Declaration(Piece("?>", 5));
    }
    while (m_input.Ensure(1)) {
        if (m_input.Rest().front() == '<' ? Markup() : ReadText())
            return m_token;
    }
    return AtEnd();
}

XmlScanner::Token XmlScanner::AtEnd() const {
    if (!m_openFrom.empty())
        Fail(QStringLiteral("the file ends within the element %1")
                 .arg(Quoted(std::string_view(m_openNames).substr(m_openFrom.back()))));
    if (!m_rootSeen)
        Fail(QStringLiteral("there is no XML element in the file"));
    return Token::End;
}

/// Takes everything up to and with the terminator, looked for from an offset on.
std::string_view XmlScanner::Piece(std::string_view terminator, std::size_t from) {
    std::size_t at = m_input.Rest().find(terminator, from);
    while (at == std::string_view::npos) {
        from = std::max(from, m_input.Rest().size() - std::min(terminator.size(), m_input.Rest().size()));
        if (!m_input.More())
            Fail(QStringLiteral("the file ends within markup"));
        at = m_input.Rest().find(terminator, from);
    }
    const std::string_view piece = m_input.Rest().substr(0, at + terminator.size());
    m_input.Skip(piece.size());
    return piece;
}

/// Reads the markup at hand; false when it is of no interest to the caller.
bool XmlScanner::Markup() {
    (void)m_input.Ensure(CDataStart.size()); // shorter markup is complete without
    const std::string_view rest = m_input.Rest();
    if (rest.starts_with("</")) {
        ReadEndTag();
        return true;
    }
    if (rest.starts_with("<?")) {
        CheckInstruction(Piece("?>", 2));
        return false;
    }
    if (rest.starts_with("<!--")) {
        CheckText(Piece("--", 4));
        if (!m_input.Ensure(1) || m_input.Rest().front() != '>')
            Fail(QStringLiteral("a comment contains \"--\""));
        m_input.Skip(1);
        return false;
    }
    if (rest.starts_with(CDataStart)) {
        ReadCData();
        return true;
    }
    if (rest.starts_with("<!"))
        Fail(QStringLiteral("document type declarations are not accepted"));
    ReadStartTag();
    return true;
}

void XmlScanner::CheckInstruction(std::string_view text) const {
    CheckText(text);
    text = text.substr(2, text.size() - 4);
    const std::string_view target = TakeName(text);
    const auto name = QLatin1String(target.data(), static_cast<qsizetype>(target.size()));
    if (name.compare(QLatin1String("xml"), Qt::CaseInsensitive) == 0)
        Fail(QStringLiteral("an XML declaration stands within the document"));
    if (!text.empty() && Blanks.find(text.front()) == std::string_view::npos)
        Fail(QStringLiteral("there is no name at %1").arg(Quoted(text)));
}

void XmlScanner::Declaration(std::string_view text) {
    ReadAttributes(text.substr(5, text.size() - 7));
    const auto is = [&](std::size_t index, std::string_view name) {
        return index < m_attributes.size() && m_attributes[index].name == name;
    };
    const bool hasEncoding = is(1, "encoding");
    const std::size_t known =
        1u + (hasEncoding ? 1u : 0u) + (is(hasEncoding ? 2 : 1, "standalone") ? 1u : 0u);
    if (!is(0, "version") || m_attributes.size() != known || !IsXmlVersion(m_attributes[0].value))
        Fail(QStringLiteral("the XML declaration is malformed"));
    if (hasEncoding && m_heedEncoding && !IsUtf8Name(m_attributes[1].value))
        Fail(QStringLiteral("the encoding %1 is not supported, only UTF-8 is")
                 .arg(Quoted(m_attributes[1].value)));
}

/// The start tag at hand, without its angle brackets. A ">" within quotes does not end it.
std::string_view XmlScanner::StartTag() {
    char quote = 0;
    std::string_view rest = m_input.Rest();
    for (std::size_t at = 1;; ++at) {
        if (at == rest.size()) {
            if (!m_input.More())
                Fail(QStringLiteral("the file ends within markup"));
            rest = m_input.Rest();
        }
        const char c = rest[at];
        if (quote != 0) {
            quote = c == quote ? '\0' : quote;
        } else if (c == '"' || c == '\'') {
            quote = c;
        } else if (c == '>') {
            const std::string_view tag = rest.substr(1, at - 1);
            m_input.Skip(at + 1);
            return tag;
        }
        if (c == '<')
            Fail(QStringLiteral("there is a \"<\" within a tag"));
    }
}

void XmlScanner::ReadStartTag() {
    std::string_view tag = StartTag();
    m_endPending = tag.ends_with('/');
    if (m_endPending)
        tag.remove_suffix(1);
    m_name = TakeName(tag);
    ReadAttributes(tag);
    if (m_openFrom.empty() && m_rootSeen)
        Fail(QStringLiteral("there is a second root element %1").arg(Quoted(m_name)));
    m_rootSeen = true;
    Open(m_name);
    m_token = Token::StartElement;
}

void XmlScanner::Open(std::string_view name) {
    if (m_openFrom.size() == DeepestNesting)
        Fail(QStringLiteral("elements are nested more than %1 deep").arg(DeepestNesting));
    m_openFrom.push_back(m_openNames.size());
    m_openNames += name;
}

void XmlScanner::Close() {
    m_openNames.resize(m_openFrom.back());
    m_openFrom.pop_back();
}

std::string_view XmlScanner::TakeName(std::string_view& text) const {
    std::size_t length = 0;
    while (length < text.size() && Is(text[length], length == 0 ? NameStart : NameByte))
        ++length;
    if (length == 0)
        Fail(QStringLiteral("there is no name at %1").arg(Quoted(text)));
    const std::string_view name = text.substr(0, length);
    text.remove_prefix(length);
    CheckUtf8(name);
    return name;
}

void XmlScanner::ReadAttributes(std::string_view text) {
    m_attributes.clear();
    while (!text.empty()) {
        const std::size_t before = text.size();
        SkipBlanks(text);
        if (text.empty())
            return;
        if (text.size() == before)
            Fail(QStringLiteral("a blank is missing before %1").arg(Quoted(text)));
        const std::string_view name = TakeName(text);
        SkipBlanks(text);
        if (!text.starts_with('='))
            Fail(QStringLiteral("attribute %1 has no value").arg(Quoted(name)));
        text.remove_prefix(1);
        SkipBlanks(text);
        if (text.empty() || (text.front() != '"' && text.front() != '\''))
            Fail(QStringLiteral("the value of attribute %1 is not quoted").arg(Quoted(name)));
        const std::size_t end = text.find(text.front(), 1);
        if (end == std::string_view::npos)
            Fail(QStringLiteral("the value of attribute %1 does not end").arg(Quoted(name)));
        for (const Attribute& other : m_attributes)
            if (other.name == name)
                Fail(QStringLiteral("attribute %1 is given twice").arg(Quoted(name)));
        if (m_attributes.size() == MostAttributes)
            Fail(QStringLiteral("an element has more than %1 attributes").arg(MostAttributes));
        Attribute& attribute = m_attributes.emplace_back();
        attribute.name = name;
        attribute.value = Resolve(text.substr(1, end - 1), attribute.resolved, true);
        text.remove_prefix(end + 1);
    }
}

void XmlScanner::ReadEndTag() {
    std::string_view name = Piece(">", 2);
    name = name.substr(2, name.size() - 3);
    name = name.substr(0, name.find_last_not_of(Blanks) + 1);
    if (m_openFrom.empty() || name != std::string_view(m_openNames).substr(m_openFrom.back()))
        Fail(QStringLiteral("the end tag %1 has no start tag").arg(Quoted(name)));
    Close();
    m_token = Token::EndElement;
}

/// Reads the text up to the next tag; false for the blanks outside the root element.
bool XmlScanner::ReadText() {
    std::size_t end = m_input.Rest().find('<');
    while (end == std::string_view::npos) {
        const std::size_t from = m_input.Rest().size();
        end = m_input.More() ? m_input.Rest().find('<', from) : from;
    }
    const std::string_view raw = m_input.Rest().substr(0, end);
    if (m_openFrom.empty() && raw.find_first_not_of(Blanks) != std::string_view::npos)
        Fail(QStringLiteral("this is not XML: there is text outside the root element"));
    if (raw.find("]]>") != std::string_view::npos)
        Fail(QStringLiteral("there is a \"]]>\" outside a CDATA section"));
    m_text = Resolve(raw, m_resolvedText, false);
    m_input.Skip(end);
    m_token = Token::Text;
    return !m_openFrom.empty();
}

void XmlScanner::ReadCData() {
    if (m_openFrom.empty())
        Fail(QStringLiteral("there is text outside the root element"));
    std::string_view raw = Piece("]]>", CDataStart.size());
    raw = raw.substr(CDataStart.size(), raw.size() - CDataStart.size() - 3);
    CheckText(raw);
    m_resolvedText.clear();
    for (std::size_t i = 0; i < raw.size(); ++i) {
        if (raw[i] != '\r')
            m_resolvedText += raw[i];
        else if (i + 1 == raw.size() || raw[i + 1] != '\n')
            m_resolvedText += '\n';
    }
    m_text = m_resolvedText;
    m_token = Token::Text;
}

/// The text with references resolved and line ends made LF, in `storage` unless nothing had to be changed.
std::string_view XmlScanner::Resolve(std::string_view raw, std::string& storage, bool attribute) const {
    std::size_t plain = 0;
    while (plain < raw.size() && !Is(raw[plain], Special) && !(attribute && raw[plain] < ' '))
        ++plain;
    if (plain == raw.size())
        return raw;
    CheckText(raw);
    storage.assign(raw.substr(0, plain));
    for (std::size_t i = plain; i < raw.size(); ++i) {
        const char c = raw[i];
        if (c == '&') {
            AppendUtf8(storage, Reference(raw, i));
        } else if (c == '\r' && i + 1 < raw.size() && raw[i + 1] == '\n') {
            continue;
        } else if (c == '\r' || c == '\n' || c == '\t') {
            storage += attribute ? ' ' : c == '\t' ? '\t' : '\n';
        } else {
            storage += c;
        }
    }
    return storage;
}

/// The character that the reference at `position` stands for; moves the position to its semicolon.
char32_t XmlScanner::Reference(std::string_view raw, std::size_t& position) const {
    static constexpr std::array<std::pair<std::string_view, char32_t>, 5> Names{
        {{"lt", U'<'}, {"gt", U'>'}, {"amp", U'&'}, {"quot", U'"'}, {"apos", U'\''}}};
    constexpr std::size_t LongestReference = 12;
    const std::size_t end = raw.substr(0, position + LongestReference).find(';', position);
    if (end == std::string_view::npos)
        Fail(QStringLiteral("a reference does not end"));
    const std::string_view text = raw.substr(position + 1, end - position - 1);
    position = end;
    for (const auto& [name, character] : Names)
        if (name == text)
            return character;
    if (!text.starts_with('#'))
        Fail(QStringLiteral("the entity %1 is not known").arg(Quoted(text)));
    const bool hexadecimal = text.starts_with("#x");
    const std::string_view digits = text.substr(hexadecimal ? 2 : 1);
    std::uint32_t number = 0;
    const auto [last, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), number, hexadecimal ? 16 : 10);
    if (digits.empty() || error != std::errc() || last != digits.data() + digits.size() ||
        !IsXmlCharacter(number))
        Fail(QStringLiteral("the reference %1 is no character").arg(Quoted(text)));
    return number;
}

void XmlScanner::CheckText(std::string_view bytes) const {
    CheckUtf8(bytes);
    for (const char c : bytes)
        if (!IsXmlCharacter(static_cast<unsigned char>(c)))
            Fail(QStringLiteral("there is a control character"));
}

void XmlScanner::CheckUtf8(std::string_view bytes) const {
    if (!IsUtf8(bytes))
        Fail(QStringLiteral("this is not UTF-8 text"));
}

} // namespace REPORTGENERATOR
