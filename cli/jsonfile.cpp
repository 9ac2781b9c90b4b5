#include "cli/jsonfile.h"

#include "cli/list.h"
#include "controls/frequencystore/common/keys.h"
#include "host/base/numbers.h"
#include "host/report/byteinput.h"
#include "host/report/outputfile.h"
#include "host/valuetree/node.h"
#include "host/valuetree/value.h"
#include "host/valuetree/valueselection.h"
#include "interchange/formatlist.h"

#include <QFile>

#include <algorithm>
#include <utility>

using Interchange::AppendJsonText;
using Interchange::JsonEntry;
using Interchange::JsonFrame;

namespace {

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
            AppendJsonText(head, key);
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
        AppendJsonText(out, field.text);
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

bool IsOwnJson(const Interchange::Format* format) {
    return format == &Interchange::OwnJson || format == &Interchange::OwnJsonLines;
}

const JsonFrame& JsonFrameOf(const QString& path) {
    return path.endsWith(QLatin1String(".json")) ? Interchange::JsonArray : Interchange::JsonLines;
}

Interchange::Account ReadJson(const QString& path, const Interchange::ReadOptions& options,
                              const std::function<bool(const JsonEntry&)>& take) {
    QFile file(path);
    REPORTGENERATOR::OpenForReading(file);
    return Interchange::ReadJsonEntries(file, path, options, take);
}

void AddToJson(JsonEntry& entry, const EntryField& field) {
    const QByteArray text = field.text.toUtf8();
    entry.Add(field.key.toStdString());
    double number = 0;
    switch (field.type) {
    case FieldType::Text:
        return entry.Set(JsonEntry::Scalar::Text, text.toStdString());
    case FieldType::Flag:
        return entry.Set(text == "true" ? JsonEntry::Scalar::True : JsonEntry::Scalar::False, {});
    case FieldType::Number:
        if (Quor::ParseDouble(field.text, number))
            entry.Set(JsonEntry::Scalar::Number, text.toStdString());
        return;
    case FieldType::Numbers:
        break;
    }
    entry.BeginNumbers();
    for (const QByteArray& one : text.split(';')) {
        if (!one.isEmpty())
            entry.AddNumber(JsonEntry::Scalar::Number, one.toStdString());
    }
}

void FillFromJson(Node& node, const JsonEntry& entry) {
    for (ValueBase* value = node.FirstValue(); value; value = Node::NextValue(value)) {
        if (std::none_of(std::begin(Takers), std::end(Takers),
                         [&](auto taker) { return taker(*value, entry); }))
            entry.Pass(value->GetName());
    }
}

void AppendJsonMembers(std::string& out, const std::vector<EntryField>& fields) {
    const char* before = "";
    for (const EntryField& field : fields) {
        out += std::exchange(before, ",");
        AppendJsonText(out, field.key);
        out += ':';
        appendContent(out, field);
    }
}

void PrintJson(const CliList& list, const JsonFrame& frame, const TakeUtf8& take) {
    TextPieces pieces(take);
    std::string& out = pieces.Text();
    out += frame.begin;
    const char* before = frame.first;
    Heads heads;
    const bool isWhole = list.ForEachEntry([&](const std::vector<EntryField>& row) {
        out += std::exchange(before, frame.next);
        out += '{';
        for (size_t i = 0; i < row.size(); ++i) {
            out += heads.Of(i, row[i].key);
            appendContent(out, row[i]);
        }
        out += '}';
        out += frame.behind;
        return pieces.Proceed();
    });
    if (!isWhole)
        return;
    out += frame.end;
    pieces.HandOn();
}

void WriteJson(const QString& path, const CliList& list, const JsonFrame& frame) {
    REPORTGENERATOR::OutputFile file(path);
    PrintJson(list, frame, [&](std::string_view piece) {
        REPORTGENERATOR::WriteBytes(file.Device(), path, piece);
        return true;
    });
    file.Commit();
}
