#pragma once

#include "host/report/recordinfo.h"

#include <QString>

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace REPORTGENERATOR {

// The text forms of members as they stand in files: UTF-8, C locale, exact when read back.

/// The shortest text that reads back exactly; fixed notation except for very large and very small numbers.
void AppendNumber(std::string& out, double value);
/// ISO 8601 in UTC, with six decimals of a second where the time has a fraction.
void AppendTime(std::string& out, Timestamp time);

/// Blanks around a number or time are accepted; what is not finite or out of range is no number.
[[nodiscard]] std::optional<double> ParseNumber(std::string_view text);
[[nodiscard]] std::optional<int> ParseInteger(std::string_view text);
/// ISO 8601 date and time; a time without a zone is in UTC. Digits beyond a microsecond are dropped.
[[nodiscard]] std::optional<Timestamp> ParseTime(std::string_view text);

/// Whether the bytes are well-formed UTF-8.
bool IsUtf8(std::string_view bytes);
void AppendUtf8(std::string& out, char32_t codePoint);
/// Whether a document may contain the character: no control characters but TAB, LF and CR, no surrogates.
bool IsXmlCharacter(char32_t codePoint);

/// How the ASCII characters of a text are written: null stands for the character itself.
using EscapeTable = std::array<const char*, 128>;
extern const EscapeTable XmlTextEscapes;
extern const EscapeTable XmlAttributeEscapes;
extern const EscapeTable CsvEscapes; ///< doubles quotes; the caller writes the enclosing ones
/// What no table and no file can hold (control characters, halves of surrogate pairs) becomes U+FFFD.
void AppendText(std::string& out, QStringView text, const EscapeTable& escapes);

/// Gives equal short texts as one shared string, since most texts of a list are the same few.
class TextCache {
public:
    QString Get(std::string_view utf8);

private:
    static constexpr std::size_t SlotCount = 256;
    static constexpr std::size_t LongestKey = 32;
    struct Slot {
        std::array<char, LongestKey> key;
        std::size_t length = 0;
        QString text;
    };
    std::array<Slot, SlotCount> m_slots;
};

/// Whether a scalar member, sub-record or list has anything to write.
bool IsSet(const MemberPtr& member);
void ClearMember(const MemberPtr& member);
/// Appends a scalar member as text.
void AppendMember(std::string& out, const MemberPtr& member, const EscapeTable& escapes);
/// Sets a scalar member from well-formed UTF-8; an empty text leaves a number or time empty. Returns what
/// the text is not, for example "a number", or null when all is well.
[[nodiscard]] const char* AssignMember(const MemberPtr& member, std::string_view text, TextCache& cache);

} // namespace REPORTGENERATOR
