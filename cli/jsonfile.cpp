#include "cli/jsonfile.h"

#include "cli/list.h"
#include "controls/frequencystore/common/keys.h"
#include "host/base/numbers.h"
#include "host/report/byteinput.h"
#include "host/report/outputfile.h"
#include "host/valuetree/node.h"
#include "host/valuetree/value.h"
#include "host/valuetree/valueselection.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>

namespace {

/// Walks through the array of a file and hands each object on to Qt's parser by itself, so that a file of any
/// size takes the memory of one entry, and what is wrong has a line.
class ArrayReader {
public:
    ArrayReader(QIODevice& device, const QString& path) : m_input(device, path), m_path(path) {}

    void Read(const std::function<bool(const JsonEntry&)>& take);

private:
    [[noreturn]] void fail(const QString& reason, qint64 line) const {
        throw RGException(REPORTGENERATOR::ErrorText(m_path, line, reason));
    }
    [[noreturn]] void fail(const char* reason) const { fail(QString::fromLatin1(reason), m_line); }
    void skip(size_t count);
    char next();
    void open();
    std::string_view object();
    JsonEntry parse(std::string_view bytes);

    REPORTGENERATOR::ByteInput m_input;
    QString m_path;
    qint64 m_line = 1;
    qint64 m_entries = 0;
};

void ArrayReader::skip(size_t count) {
    const std::string_view passed = m_input.Rest().substr(0, count);
    m_line += std::count(passed.begin(), passed.end(), '\n');
    m_input.Skip(count);
}

/// The next character that is no blank, which stays; NUL at the end of the file.
char ArrayReader::next() {
    while (true) {
        const size_t blanks = m_input.Rest().find_first_not_of(" \t\r\n");
        if (blanks != std::string_view::npos) {
            skip(blanks);
            return m_input.Rest().front();
        }
        skip(m_input.Rest().size());
        if (!m_input.More())
            return '\0';
    }
}

void ArrayReader::open() {
    constexpr std::string_view ByteOrderMark = "\xef\xbb\xbf";
    if (m_input.Ensure(ByteOrderMark.size()) && m_input.Rest().starts_with(ByteOrderMark))
        m_input.Skip(ByteOrderMark.size());
    if (next() != '[')
        fail("is no JSON array of entries");
    skip(1);
}

/// The bytes of the object that begins here, up to its closing brace.
std::string_view ArrayReader::object() {
    if (next() != '{')
        fail("an entry is no JSON object");
    int depth = 0;
    bool isText = false;
    for (size_t i = 0;; ++i) {
        while (i >= m_input.Rest().size()) {
            if (!m_input.More())
                fail("the file ends within an entry");
        }
        const char c = m_input.Rest()[i];
        if (isText && c == '\\') // what it escapes ends no text
            ++i;
        else if (c == '"')
            isText = !isText;
        else if (!isText && c == '{')
            ++depth;
        else if (!isText && c == '}' && --depth == 0)
            return m_input.Rest().substr(0, i + 1);
    }
}

JsonEntry ArrayReader::parse(std::string_view bytes) {
    QJsonParseError error{};
    const auto json = QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()));
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    ++m_entries;
    if (error.error != QJsonParseError::NoError) {
        const auto good = bytes.substr(0, static_cast<size_t>(std::max(error.offset, 0)));
        fail(QStringLiteral("entry %1 is no JSON: %2").arg(m_entries).arg(error.errorString()),
             m_line + std::count(good.begin(), good.end(), '\n'));
    }
    return {document.object(),
            REPORTGENERATOR::ErrorText(m_path, m_line, QStringLiteral("entry %1: ").arg(m_entries))};
}

void ArrayReader::Read(const std::function<bool(const JsonEntry&)>& take) {
    open();
    if (next() == ']') {
        skip(1);
    } else {
        for (char behind = ','; behind == ',';) {
            const std::string_view bytes = object();
            const JsonEntry entry = parse(bytes);
            if (!entry.Has(Keys::KeyFrequency.Text()))
                entry.Fail(Keys::KeyFrequency.Text(), "is missing");
            if (!take(entry))
                return;
            skip(bytes.size());
            behind = next();
            if (behind != ',' && behind != ']')
                fail(behind ? "a comma is missing between entries" : "the file ends within the array");
            skip(1);
        }
    }
    if (next())
        fail("something stands behind the array");
}

void choose(ValueSelection& selection, const QString& text) {
    if (selection.Select(text) || text.isEmpty())
        return;
    long key = selection.GetItemCount();
    while (selection.GetItem(key))
        ++key;
    double number = 0;
    (void)Quor::ParseDouble(text, number); // a text that is no number has the number 0
    selection.AddItem(text, number, key);
    selection.Select(key);
}

template <typename V, typename Content = std::decay_t<decltype(std::declval<V>().GetValue())>>
bool take(ValueBase& value, const JsonEntry& entry) {
    auto* const typed = value_cast<V>(&value);
    if (!typed)
        return false;
    Content content = typed->GetValue();
    if constexpr (std::is_integral_v<Content> && !std::is_same_v<Content, bool>) {
        qint64 whole = content;
        entry.Take(value.GetName(), whole, std::numeric_limits<Content>::min(),
                   std::numeric_limits<Content>::max());
        content = static_cast<Content>(whole);
    } else {
        entry.Take(value.GetName(), content);
    }
    typed->SetValue(content);
    return true;
}

bool takeChoice(ValueBase& value, const JsonEntry& entry) {
    auto* const selection = value_cast<ValueSelection>(&value);
    if (!selection)
        return false;
    QString text = selection->GetStringValue();
    entry.TakeTextOrNumber(value.GetName(), text);
    choose(*selection, text);
    return true;
}

bool takeNumbers(ValueBase& value, const JsonEntry& entry) {
    auto* const list = value_cast<ValueList<double>>(&value);
    if (!list)
        return false;
    std::vector<double> numbers;
    entry.Take(value.GetName(), numbers);
    list->Append({numbers.begin(), numbers.end()});
    return true;
}

/// What takes a member into a value, by the value's type.
constexpr bool (*Takers[])(ValueBase& value, const JsonEntry& entry) = {
    take<ValueNumeric<double>>, take<Value<QString>>,       takeChoice, take<ValueNumeric<int>>,
    take<Value<bool>>,          take<ValueNumeric<qint64>>, takeNumbers};

void appendQuoted(std::string& out, QStringView text) {
    out += '"';
    AppendUtf8(
        out, text, [](char16_t c) { return c >= 0x20 && c != '"' && c != '\\'; },
        [&](char16_t c) {
            char code[8];
            if (c < 0x20)
                out.append(code,
                           static_cast<size_t>(std::snprintf(code, sizeof code, "\\u%04x", unsigned(c))));
            else
                (out += '\\') += static_cast<char>(c);
        });
    out += '"';
}

/// Texts of numbers and flags are ASCII.
void appendAscii(std::string& out, QStringView text) {
    const size_t size = out.size();
    out.resize(size + static_cast<size_t>(text.size()));
    std::transform(text.begin(), text.end(), out.data() + size, [](QChar c) { return c.toLatin1(); });
}

/// What stands in front of the contents of an entry's fields. Nearly all entries of a list have the same
/// keys.
class Heads {
public:
    const std::string& Of(size_t place, const QString& key) {
        m_heads.resize(std::max(m_heads.size(), place + 1));
        auto& [known, head] = m_heads[place];
        if (head.empty() || known.constData() != key.constData()) {
            known = key;
            head.clear();
            if (place > 0)
                head += ',';
            appendQuoted(head, key);
            head += ':';
        }
        return head;
    }

private:
    std::vector<std::pair<QString, std::string>> m_heads;
};

/// The content as JSON has it. Numbers of the C locale are those of JSON; one that there is not is null.
void appendContent(std::string& out, const EntryField& field) {
    if (field.type == FieldType::Text) {
        appendQuoted(out, field.text);
    } else if (field.type == FieldType::Numbers) {
        const size_t begin = out.size();
        out += '[';
        appendAscii(out, field.text);
        std::replace(out.begin() + static_cast<std::ptrdiff_t>(begin), out.end(), ';', ',');
        out += ']';
    } else if (field.text.isEmpty()) {
        out += "null";
    } else {
        appendAscii(out, field.text);
    }
}

} // namespace

void JsonEntry::Fail(const QString& key, const char* reason) const {
    throw RGException(QStringLiteral("%1\"%2\" %3").arg(m_place, key, QLatin1String(reason)));
}

void JsonEntry::Take(const QString& key, QString& content) const {
    if (!Has(key))
        return;
    if (!m_members.value(key).isString())
        Fail(key, "is no text");
    content = m_members.value(key).toString();
}

void JsonEntry::Take(const QString& key, bool& content) const {
    if (!Has(key))
        return;
    if (!m_members.value(key).isBool())
        Fail(key, "is neither true nor false");
    content = m_members.value(key).toBool();
}

void JsonEntry::Take(const QString& key, double& content) const {
    if (!Has(key))
        return;
    if (!m_members.value(key).isDouble())
        Fail(key, "is no number");
    content = m_members.value(key).toDouble();
}

void JsonEntry::Take(const QString& key, std::vector<double>& content) const {
    if (!Has(key))
        return;
    const QJsonArray array = m_members.value(key).toArray();
    const bool areNumbers =
        std::all_of(array.begin(), array.end(), [](const QJsonValue& number) { return number.isDouble(); });
    if (!m_members.value(key).isArray() || !areNumbers)
        Fail(key, "is no array of numbers");
    content.clear();
    for (const auto& number : array)
        content.push_back(number.toDouble());
}

void JsonEntry::Take(const QString& key, qint64& content, qint64 least, qint64 greatest) const {
    if (!Has(key))
        return;
    double number = 0;
    Take(key, number);
    constexpr double Limit = 0x1p63; // the first double beyond the type
    const bool isWhole = std::floor(number) == number && number >= -Limit && number < Limit;
    const qint64 whole = isWhole ? m_members.value(key).toInteger() : 0;
    if (!isWhole || whole < least || whole > greatest)
        Fail(key, isWhole ? "is out of range" : "is no whole number");
    content = whole;
}

void JsonEntry::TakeTextOrNumber(const QString& key, QString& content) const {
    if (m_members.value(key).isDouble())
        content = Quor::ToShortest(m_members.value(key).toDouble());
    else if (Has(key) && !m_members.value(key).isString())
        Fail(key, "is neither text nor number");
    else
        Take(key, content);
}

void ReadJson(const QString& path, const std::function<bool(const JsonEntry&)>& take) {
    QFile file(path);
    REPORTGENERATOR::OpenForReading(file);
    ArrayReader(file, path).Read(take);
}

void FillFromJson(Node& node, const JsonEntry& entry) {
    for (ValueBase* value = node.FirstValue(); value; value = Node::NextValue(value))
        std::any_of(std::begin(Takers), std::end(Takers), [&](auto taker) { return taker(*value, entry); });
}

void AppendJsonMembers(std::string& out, const std::vector<EntryField>& fields) {
    const char* before = "";
    for (const EntryField& field : fields) {
        out += std::exchange(before, ",");
        appendQuoted(out, field.key);
        out += ':';
        appendContent(out, field);
    }
}

void PrintJson(const CliList& list, const TakeUtf8& take) {
    TextPieces pieces(take);
    std::string& out = pieces.Text();
    out += '[';
    const char* before = "\n{";
    Heads heads;
    const bool isWhole = list.ForEachEntry([&](const std::vector<EntryField>& row) {
        out += std::exchange(before, ",\n{");
        for (size_t i = 0; i < row.size(); ++i) {
            out += heads.Of(i, row[i].key);
            appendContent(out, row[i]);
        }
        out += '}';
        return pieces.Proceed();
    });
    if (!isWhole)
        return;
    out += "\n]\n";
    pieces.HandOn();
}

void WriteJson(const QString& path, const CliList& list) {
    REPORTGENERATOR::OutputFile file(path);
    PrintJson(list, [&](std::string_view piece) {
        REPORTGENERATOR::WriteBytes(file.Device(), path, piece);
        return true;
    });
    file.Commit();
}
