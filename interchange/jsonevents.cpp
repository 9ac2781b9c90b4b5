#include "interchange/jsonevents.h"

#include "host/report/byteinput.h"
#include "host/report/textform.h"
#include "host/report/textinput.h"
#include "interchange/reading.h"

#include <QCoreApplication>

#include <algorithm>
#include <exception>
#include <rapidjson/error/en.h>
#include <rapidjson/reader.h>

namespace Interchange {

namespace {

constexpr int DeepestNesting = 64;
constexpr std::size_t LargestPiece = 16 * 1024 * 1024; // bytes

/// The bytes of a device as the parser wants them.
class ByteStream {
public:
    using Ch = char;

    explicit ByteStream(REPORTGENERATOR::ByteInput& input) : m_input(input) { fill(); }

    Ch Peek() const { return m_at < m_rest.size() ? m_rest[m_at] : '\0'; }
    Ch Take() {
        const Ch c = Peek();
        if (m_at < m_rest.size() && ++m_at == m_rest.size())
            fill();
        return c;
    }
    size_t Tell() const { return m_taken + m_at; }
    bool IsAtEnd() const { return m_rest.empty(); }
    /// Another piece, a text or a number, begins behind this place. The stream ends within one that is too
    /// large.
    void BeginPiece() { m_pieceBegin = Tell(); }
    bool IsPieceTooLarge() const { return m_isPieceTooLarge; }
    /// The line at which the parser is.
    qint64 Line() {
        skip();
        return m_input.Line();
    }

    // Parsing in place is not for streams.
    Ch* PutBegin() { return nullptr; }
    void Put(Ch) {}
    void Flush() {}
    size_t PutEnd(Ch*) { return 0; }

private:
    void skip() {
        m_input.Skip(m_at);
        m_taken += m_at;
        m_rest.remove_prefix(m_at);
        m_at = 0;
    }
    void fill() {
        skip();
        if (m_taken - m_pieceBegin > LargestPiece)
            m_isPieceTooLarge = true;
        if (m_isPieceTooLarge || !m_input.Ensure(1))
            m_rest = {};
        else
            m_rest = m_input.Rest();
    }

    REPORTGENERATOR::ByteInput& m_input;
    std::string_view m_rest;
    size_t m_at = 0;
    size_t m_taken = 0;
    size_t m_pieceBegin = 0;
    bool m_isPieceTooLarge = false;
};

/// Hands the parser's events on. The parser must not be thrown through: what is thrown waits.
class Handler {
public:
    Handler(JsonEvents& events, ByteStream& stream) : m_events(events), m_stream(stream) {}

    bool Null() { return take(JsonEvents::Scalar::Null, {}); }
    bool Bool(bool value) { return take(value ? JsonEvents::Scalar::True : JsonEvents::Scalar::False, {}); }
    bool RawNumber(const char* text, rapidjson::SizeType size, bool) {
        return take(JsonEvents::Scalar::Number, {text, size});
    }
    bool String(const char* text, rapidjson::SizeType size, bool) {
        return take(JsonEvents::Scalar::Text, {text, size});
    }
    bool Key(const char* text, rapidjson::SizeType size, bool) {
        return safely([&] { m_events.Key({text, size}); });
    }
    bool StartObject() { return begin(true); }
    bool EndObject(rapidjson::SizeType) { return end(true); }
    bool StartArray() { return begin(false); }
    bool EndArray(rapidjson::SizeType) { return end(false); }

    // Numbers come as texts.
    bool Int(int) { return false; }
    bool Uint(unsigned) { return false; }
    bool Int64(int64_t) { return false; }
    bool Uint64(uint64_t) { return false; }
    bool Double(double) { return false; }

    bool IsTooDeep() const { return m_depth > DeepestNesting; }
    std::exception_ptr Thrown() const { return m_thrown; }

private:
    template <typename Event>
    bool safely(Event event) {
        m_stream.BeginPiece();
        try {
            event();
            return true;
        } catch (...) {
            m_thrown = std::current_exception();
            return false;
        }
    }
    bool take(JsonEvents::Scalar kind, std::string_view text) {
        return safely([&] { m_events.Take(kind, text); });
    }
    bool begin(bool isObject) {
        ++m_depth;
        return !IsTooDeep() && safely([&] { m_events.Begin(isObject); });
    }
    bool end(bool isObject) {
        --m_depth;
        return safely([&] { m_events.End(isObject); });
    }

    JsonEvents& m_events;
    ByteStream& m_stream;
    std::exception_ptr m_thrown;
    int m_depth = 0;
};

QString reasonOf(rapidjson::ParseErrorCode code, bool isAtEnd) {
    if (code == rapidjson::kParseErrorDocumentEmpty)
        return QCoreApplication::translate("Readers", "there is no JSON text");
    return isAtEnd ? QCoreApplication::translate("Readers", "the JSON text is cut")
                   : QCoreApplication::translate("Readers", "is no JSON: %1")
                         .arg(QLatin1String(rapidjson::GetParseError_En(code)));
}

} // namespace

const REPORTGENERATOR::EscapeTable JsonEscapes = []() constexpr {
    REPORTGENERATOR::EscapeTable table{};
    constexpr const char* Controls[] = {
        "\\u0000", "\\u0001", "\\u0002", "\\u0003", "\\u0004", "\\u0005", "\\u0006", "\\u0007",
        "\\u0008", "\\u0009", "\\u000a", "\\u000b", "\\u000c", "\\u000d", "\\u000e", "\\u000f",
        "\\u0010", "\\u0011", "\\u0012", "\\u0013", "\\u0014", "\\u0015", "\\u0016", "\\u0017",
        "\\u0018", "\\u0019", "\\u001a", "\\u001b", "\\u001c", "\\u001d", "\\u001e", "\\u001f"};
    std::copy(std::begin(Controls), std::end(Controls), table.begin());
    table['"'] = "\\\"";
    table['\\'] = "\\\\";
    return table;
}
();

void ReadJsonEvents(QIODevice& device, Reading& reading, JsonEvents& events) {
    REPORTGENERATOR::TextInput text(device, reading.FileName());
    text.Tell(reading.Problems());
    REPORTGENERATOR::ByteInput input(text.Device(), reading.FileName());
    ByteStream stream(input);
    events.SetLine([&stream] { return stream.Line(); });
    Handler handler(events, stream);
    rapidjson::Reader parser;
    constexpr unsigned Flags = rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag |
                               rapidjson::kParseStopWhenDoneFlag;
    do {
        const rapidjson::ParseResult result = parser.Parse<Flags>(stream, handler);
        if (handler.Thrown())
            std::rethrow_exception(handler.Thrown());
        if (handler.IsTooDeep())
            reading.Fail(
                stream.Line(),
                QCoreApplication::translate("Readers", "is nested deeper than %1").arg(DeepestNesting));
        if (stream.IsPieceTooLarge())
            reading.Fail(stream.Line(),
                         QCoreApplication::translate("Readers", "one piece of text is larger than 16 MiB"));
        if (result.IsError())
            reading.Fail(stream.Line(), reasonOf(result.Code(), stream.IsAtEnd()));
        rapidjson::SkipWhitespace(stream);
        if (!stream.IsAtEnd() && !events.TakesMoreTexts())
            reading.Fail(stream.Line(),
                         QCoreApplication::translate("Readers", "something stands behind the JSON text"));
    } while (!stream.IsAtEnd());
}

void AppendJsonText(std::string& out, QStringView text) {
    out += '"';
    REPORTGENERATOR::AppendText(out, text, JsonEscapes);
    out += '"';
}

} // namespace Interchange
