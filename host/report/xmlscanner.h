#pragma once

#include "host/report/byteinput.h"

#include <QString>

#include <string>
#include <string_view>
#include <vector>

namespace REPORTGENERATOR {

/// Pull parser for the UTF-8 documents of this system, several times as fast as a general one because it
/// makes no strings. It accepts any bytes: documents must be well formed, may nest 64 elements deep, and are
/// refused when they bring a document type declaration, so there are no entities to expand. All views are
/// valid until the next call of Next().
class XmlScanner {
public:
    enum class Token { StartElement, EndElement, Text, End };
    /// An attribute with its value, references resolved.
    struct Attribute {
        std::string_view name;
        std::string_view value;
        std::string resolved; ///< owns the value where it is not the document's own bytes
    };

    /// Reads from the caller's device; `name` stands for it in error texts. A document that came as a string
    /// is UTF-8 by now whatever its declaration says, so that need not be heeded.
    XmlScanner(QIODevice& device, const QString& name, bool heedEncoding = true);

    /// Throws RGException at the first place that is not well formed. An empty element gives a start and an
    /// end; one text may come in several pieces.
    Token Next();
    /// Name of the element that starts.
    std::string_view Name() const { return m_name; }
    const std::vector<Attribute>& Attributes() const { return m_attributes; }
    std::string_view Text() const { return m_text; }

    qint64 Line() const { return m_input.Line(); }
    [[noreturn]] void Fail(const QString& reason) const { m_input.Fail(reason); }

private:
    std::string_view Piece(std::string_view terminator, std::size_t from);
    std::string_view StartTag();
    bool Markup();
    void Declaration(std::string_view text);
    void ReadStartTag();
    void ReadAttributes(std::string_view text);
    void ReadEndTag();
    bool ReadText();
    void ReadCData();
    std::string_view Resolve(std::string_view raw, std::string& storage, bool attribute) const;
    char32_t Reference(std::string_view raw, std::size_t& position) const;
    void CheckInstruction(std::string_view text) const;
    void CheckText(std::string_view bytes) const;
    void CheckUtf8(std::string_view bytes) const;
    std::string_view TakeName(std::string_view& text) const;
    void Open(std::string_view name);
    void Close();
    Token AtEnd() const;

    ByteInput m_input;
    const bool m_heedEncoding;
    Token m_token = Token::End;
    std::string_view m_name;
    std::string_view m_text;
    std::string m_resolvedText;
    std::vector<Attribute> m_attributes;
    std::string m_openNames;             ///< names of the open elements, one behind the other
    std::vector<std::size_t> m_openFrom; ///< where each of them begins
    bool m_started = false;
    bool m_rootSeen = false;
    bool m_endPending = false;
};

} // namespace REPORTGENERATOR
