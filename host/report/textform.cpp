#include "host/report/textform.h"

#include "host/base/textdecoder.h"
#include "host/report/irgobject.h"

#include <charconv>
#include <chrono>
#include <cmath>
#include <cstring>

namespace REPORTGENERATOR {

namespace {

constexpr const char* Replacement = "\xEF\xBF\xBD";

std::string_view Trimmed(std::string_view text) {
    if (!text.empty() && text.front() > ' ' && text.back() > ' ') // most are that
        return text;
    constexpr std::string_view Blanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(Blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(Blanks) - first + 1);
}

constexpr EscapeTable WithoutControls() {
    EscapeTable table{};
    for (std::size_t c = 0; c < 32; ++c)
        if (c != '\t' && c != '\n' && c != '\r')
            table[c] = Replacement;
    return table;
}

constexpr EscapeTable MakeXmlTextEscapes() {
    EscapeTable table = WithoutControls();
    table['&'] = "&amp;";
    table['<'] = "&lt;";
    table['>'] = "&gt;";
    table['\r'] = "&#13;";
    return table;
}

constexpr EscapeTable MakeXmlAttributeEscapes() {
    EscapeTable table = MakeXmlTextEscapes();
    table['"'] = "&quot;";
    table['\t'] = "&#9;";
    table['\n'] = "&#10;";
    return table;
}

constexpr EscapeTable MakeCsvEscapes() {
    EscapeTable table = WithoutControls();
    table['"'] = "\"\"";
    return table;
}

void AppendPadded(std::string& out, int value, int width) {
    std::array<char, 8> digits;
    for (int i = width; i-- > 0; value /= 10)
        digits[static_cast<std::size_t>(i)] = static_cast<char>('0' + value % 10);
    out.append(digits.data(), static_cast<std::size_t>(width));
}

/// Takes exactly `width` digits from the front of the text.
bool TakeDigits(std::string_view& text, std::size_t width, int& value) {
    if (text.size() < width)
        return false;
    value = 0;
    for (std::size_t i = 0; i < width; ++i) {
        if (text[i] < '0' || text[i] > '9')
            return false;
        value = value * 10 + (text[i] - '0');
    }
    text.remove_prefix(width);
    return true;
}

bool TakeOneOf(std::string_view& text, std::string_view characters) {
    if (text.empty() || characters.find(text.front()) == std::string_view::npos)
        return false;
    text.remove_prefix(1);
    return true;
}

bool TakeFraction(std::string_view& text, int& microseconds) {
    int digits = 0;
    for (; !text.empty() && text.front() >= '0' && text.front() <= '9'; ++digits, text.remove_prefix(1))
        if (digits < 6)
            microseconds = microseconds * 10 + (text.front() - '0');
    for (int i = digits; i < 6; ++i)
        microseconds *= 10;
    return digits > 0;
}

/// Takes "Z", "+hh:mm", "-hh:mm" or nothing, as minutes east of UTC.
bool TakeZone(std::string_view& text, int& minutesEast) {
    minutesEast = 0;
    if (text.empty() || TakeOneOf(text, "Zz"))
        return true;
    const bool west = text.front() == '-';
    int hours = 0;
    int minutes = 0;
    if (!TakeOneOf(text, "+-") || !TakeDigits(text, 2, hours))
        return false;
    TakeOneOf(text, ":");
    if (!TakeDigits(text, 2, minutes) || hours > 14 || minutes > 59)
        return false;
    minutesEast = (hours * 60 + minutes) * (west ? -1 : 1);
    return true;
}

} // namespace

const EscapeTable XmlTextEscapes = MakeXmlTextEscapes();
const EscapeTable XmlAttributeEscapes = MakeXmlAttributeEscapes();
const EscapeTable CsvEscapes = MakeCsvEscapes();

void AppendNumber(std::string& out, double value) {
    constexpr double ExactIntegers = 9007199254740992.0; // 2^53
    std::array<char, 64> text;
    const double magnitude = std::fabs(value);
    std::to_chars_result end;
    if (magnitude > 0.0 && magnitude < ExactIntegers && std::trunc(value) == value)
        end = std::to_chars(text.data(), text.data() + text.size(), static_cast<qint64>(value));
    else if (magnitude == 0.0 || (magnitude >= 1e-5 && magnitude < 1e17))
        end = std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
    else
        end = std::to_chars(text.data(), text.data() + text.size(), value);
    out.append(text.data(), end.ptr);
}

void AppendTime(std::string& out, Timestamp time) {
    using namespace std::chrono;
    const sys_time<microseconds> point{microseconds(time.usec)};
    const sys_days day = floor<days>(point);
    const year_month_day date(day);
    const hh_mm_ss clock(point - day);
    AppendPadded(out, static_cast<int>(date.year()), 4);
    out += '-';
    AppendPadded(out, static_cast<int>(static_cast<unsigned>(date.month())), 2);
    out += '-';
    AppendPadded(out, static_cast<int>(static_cast<unsigned>(date.day())), 2);
    out += 'T';
    AppendPadded(out, static_cast<int>(clock.hours().count()), 2);
    out += ':';
    AppendPadded(out, static_cast<int>(clock.minutes().count()), 2);
    out += ':';
    AppendPadded(out, static_cast<int>(clock.seconds().count()), 2);
    if (const auto fraction = clock.subseconds().count(); fraction != 0) {
        out += '.';
        AppendPadded(out, static_cast<int>(fraction), 6);
    }
    out += 'Z';
}

std::optional<double> ParseNumber(std::string_view text) {
    text = Trimmed(text);
    if (text.size() > 1 && text.front() == '+' && text[1] != '-')
        text.remove_prefix(1);
    double value = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value))
        return std::nullopt;
    return value;
}

std::optional<int> ParseInteger(std::string_view text) {
    text = Trimmed(text);
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || !IRGObject::IsValid(value))
        return std::nullopt;
    return value;
}

std::optional<Timestamp> ParseTime(std::string_view text) {
    using namespace std::chrono;
    text = Trimmed(text);
    int yearNumber = 0, monthNumber = 0, dayNumber = 0, hour = 0, minute = 0, second = 0;
    int fraction = 0, minutesEast = 0;
    const bool wellFormed =
        TakeDigits(text, 4, yearNumber) && TakeOneOf(text, "-") && TakeDigits(text, 2, monthNumber) &&
        TakeOneOf(text, "-") && TakeDigits(text, 2, dayNumber) && TakeOneOf(text, "Tt ") &&
        TakeDigits(text, 2, hour) && TakeOneOf(text, ":") && TakeDigits(text, 2, minute) &&
        TakeOneOf(text, ":") && TakeDigits(text, 2, second) &&
        (!TakeOneOf(text, ".,") || TakeFraction(text, fraction)) && TakeZone(text, minutesEast) &&
        text.empty();
    const year_month_day date{year(yearNumber), month(static_cast<unsigned>(monthNumber)),
                              day(static_cast<unsigned>(dayNumber))};
    if (!wellFormed || !date.ok() || hour > 23 || minute > 59 || second > 59)
        return std::nullopt;
    const auto point = sys_days(date) + hours(hour) + minutes(minute - minutesEast) + seconds(second) +
                       microseconds(fraction);
    const Timestamp time(qint64{point.time_since_epoch().count()});
    return time.IsSet() ? std::optional(time) : std::nullopt;
}

bool IsUtf8(std::string_view bytes) {
    return Utf8Length(bytes) == bytes.size();
}

void AppendUtf8(std::string& out, char32_t codePoint) {
    const auto tail = [&](int shift) { out += static_cast<char>(0x80 | (codePoint >> shift & 0x3F)); };
    if (codePoint < 0x80) {
        out += static_cast<char>(codePoint);
    } else if (codePoint < 0x800) {
        out += static_cast<char>(0xC0 | codePoint >> 6);
        tail(0);
    } else if (codePoint < 0x10000) {
        out += static_cast<char>(0xE0 | codePoint >> 12);
        tail(6);
        tail(0);
    } else {
        out += static_cast<char>(0xF0 | codePoint >> 18);
        tail(12);
        tail(6);
        tail(0);
    }
}

bool IsXmlCharacter(char32_t codePoint) {
    if (codePoint < 0x20)
        return codePoint == '\t' || codePoint == '\n' || codePoint == '\r';
    return codePoint < 0xD800 ||
           (codePoint >= 0xE000 && codePoint <= 0x10FFFF && codePoint != 0xFFFE && codePoint != 0xFFFF);
}

void AppendText(std::string& out, QStringView text, const EscapeTable& escapes) {
    std::array<char, 256> plain;
    std::size_t plainSize = 0;
    const auto flush = [&] {
        out.append(plain.data(), plainSize);
        plainSize = 0;
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t unit = text[i].unicode();
        if (unit < escapes.size() && !escapes[unit]) {
            if (plainSize == plain.size())
                flush();
            plain[plainSize++] = static_cast<char>(unit);
            continue;
        }
        flush();
        if (unit < escapes.size())
            out += escapes[unit];
        else if (QChar::isHighSurrogate(unit) && i + 1 < text.size() && text[i + 1].isLowSurrogate())
            AppendUtf8(out, QChar::surrogateToUcs4(unit, text[++i].unicode()));
        else
            AppendUtf8(out, IsXmlCharacter(unit) ? unit : U'\uFFFD');
    }
    flush();
}

QString TextCache::Get(std::string_view utf8) {
    if (utf8.empty())
        return {};
    if (utf8.size() > LongestKey)
        return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
    std::size_t hash = utf8.size();
    for (const char c : utf8)
        hash = hash * 31 + static_cast<unsigned char>(c);
    Slot& slot = m_slots[hash % SlotCount];
    if (slot.length != utf8.size() || std::memcmp(slot.key.data(), utf8.data(), utf8.size()) != 0) {
        std::memcpy(slot.key.data(), utf8.data(), utf8.size());
        slot.length = utf8.size();
        slot.text = QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
    }
    return slot.text;
}

namespace {

struct SetTest {
    bool operator()(const double* value) const { return IRGObject::IsValid(*value); }
    bool operator()(const int* value) const { return IRGObject::IsValid(*value); }
    bool operator()(const QString* value) const { return !value->isEmpty(); }
    bool operator()(const Timestamp* value) const { return value->IsSet(); }
    bool operator()(const NamedNumber* value) const { return value->value != 0; }
    bool operator()(const IRGObject* value) const { return value->HasData(); }
    bool operator()(const IObjectList* value) const { return value->Size() > 0; }
};

struct Clearing {
    template <class T>
    void operator()(T* value) const {
        IRGObject::SetInvalid(*value);
    }
    void operator()(NamedNumber* value) const { value->value = 0; }
    void operator()(IRGObject* value) const { value->Reset(); }
    void operator()(IObjectList* value) const { value->Clear(); }
};

struct Appending {
    std::string& out;
    const EscapeTable& escapes;

    void operator()(const double* value) const { AppendNumber(out, *value); }
    void operator()(const int* value) const { AppendNumber(out, *value); }
    void operator()(const QString* value) const { AppendText(out, *value, escapes); }
    void operator()(const Timestamp* value) const { AppendTime(out, *value); }
    void operator()(const NamedNumber* value) const {
        out += value->names[static_cast<std::size_t>(value->value)];
    }
    void operator()(const IRGObject*) const {}
    void operator()(const IObjectList*) const {}
};

struct Assigning {
    std::string_view text;
    TextCache& cache;

    template <class T>
    const char* Store(T* member, const std::optional<T>& value, const char* whatItIsNot) const {
        if (value)
            *member = *value;
        else if (Trimmed(text).empty())
            IRGObject::SetInvalid(*member);
        else
            return whatItIsNot;
        return nullptr;
    }

    const char* operator()(double* member) const { return Store(member, ParseNumber(text), "a number"); }
    const char* operator()(int* member) const { return Store(member, ParseInteger(text), "a whole number"); }
    const char* operator()(Timestamp* member) const {
        return Store(member, ParseTime(text), "a time like 2024-05-31T12:00:00Z");
    }
    const char* operator()(QString* member) const {
        *member = cache.Get(text);
        return nullptr;
    }
    const char* operator()(NamedNumber* member) const {
        const auto name = std::ranges::find(member->names, Trimmed(text));
        member->value = name == member->names.end() ? 0 : static_cast<int>(name - member->names.begin());
        return nullptr;
    }
    const char* operator()(IRGObject*) const { return nullptr; }
    const char* operator()(IObjectList*) const { return nullptr; }
};

} // namespace

bool IsSet(const MemberPtr& member) {
    return std::visit(SetTest(), member);
}

void ClearMember(const MemberPtr& member) {
    std::visit(Clearing(), member);
}

void AppendMember(std::string& out, const MemberPtr& member, const EscapeTable& escapes) {
    std::visit(Appending{out, escapes}, member);
}

const char* AssignMember(const MemberPtr& member, std::string_view text, TextCache& cache) {
    return std::visit(Assigning{text, cache}, member);
}

} // namespace REPORTGENERATOR
