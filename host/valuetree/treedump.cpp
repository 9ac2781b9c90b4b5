#include "host/base/trace.h"
#include "host/valuetree/detection.h"
#include "host/valuetree/itemmap.h"
#include "host/valuetree/node.h"
#include "host/valuetree/valueselection.h"

#include <QVector>

#include <string_view>

// The dump has one line per value and node, indented by one blank per level:
//
//   frequency:numeric double=7055000
//   Target#2/
//    comment:text=first\nsecond
//
// Line breaks and backslashes of a text are escaped.

namespace {

struct Factory {
    const char* typeName;
    ValueBase* (*make)();
};

template <typename V>
ValueBase* make() {
    return new V;
}

constexpr Factory Factories[] = {
    {"text", make<Value<QString>>},
    {"bool", make<Value<bool>>},
    {"char", make<Value<char>>},
    {"int", make<Value<int>>},
    {"int64", make<Value<qint64>>},
    {"double", make<Value<double>>},
    {"numeric int", make<ValueNumeric<int>>},
    {"numeric int64", make<ValueNumeric<qint64>>},
    {"numeric double", make<ValueNumeric<double>>},
    {"selection", make<ValueSelection>},
    {"double list", make<ValueList<double>>},
};

ValueBase* makeValue(const QString& typeName) {
    for (const Factory& factory : Factories) {
        if (typeName == QLatin1String(factory.typeName))
            return factory.make();
    }
    return nullptr;
}

void appendEscaped(std::string& out, const QString& text) {
    for (const char c : text.toStdString()) {
        switch (c) {
        case '\n':
            out += "\\n";
            break;
        case '\r':
            out += "\\r";
            break;
        case '\\':
            out += "\\\\";
            break;
        default:
            out += c;
        }
    }
}

QString unescaped(std::string_view text) {
    std::string out;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\' || i + 1 == text.size()) {
            out += text[i];
            continue;
        }
        const char c = text[++i];
        out += c == 'n' ? '\n' : c == 'r' ? '\r' : c;
    }
    return QString::fromStdString(out);
}

void appendValue(std::string& out, const ValueBase& value, int depth) {
    out.append(static_cast<size_t>(depth), ' ');
    appendEscaped(out, value.GetName());
    out += ':' + value.GetTypeName().toStdString() + '=';
    appendEscaped(out, value.GetStringValue());
    out += '\n';
}

/// Sets the value that a line names, or makes it; false when the line is malformed or of an unknown type.
bool applyValueLine(Node& node, std::string_view line, IObserver* originator) {
    const size_t equals = line.find('=');
    const size_t colon = line.rfind(':', equals);
    if (equals == line.npos || colon == line.npos)
        return false;
    const QString name = unescaped(line.substr(0, colon));
    ValueBase* value = node.FindOwnValue(Names::Find(name));
    if (!value) {
        const std::string_view type = line.substr(colon + 1, equals - colon - 1);
        value = makeValue(QString::fromUtf8(type.data(), static_cast<qsizetype>(type.size())));
        if (!value || !node.AddValue(name, value)) {
            delete value;
            return false;
        }
    }
    const QString text = unescaped(line.substr(equals + 1));
    if (auto* selection = value_cast<ValueSelection>(value);
        selection && !text.isEmpty() && !selection->GetItem(text))
        selection->AddItem(text, 0, selection->GetItemCount(), originator);
    value->SetStringValue(text, originator);
    return true;
}

Node* childOf(Node& node, const QString& segment) {
    if (Node* child = node.GetNode(segment))
        return child;
    const qsizetype mark = segment.lastIndexOf(QLatin1Char('#'));
    node.AddItemUnique(new Node(&node, mark < 0 ? segment : segment.left(mark)));
    return node.Children().back();
}

class DumpReader {
public:
    DumpReader(Node& root, bool valuesOnly, IObserver* originator)
        : m_nodes{&root}, m_valuesOnly(valuesOnly), m_originator(originator) {}

    void Line(std::string_view line) {
        const size_t depth = std::min(line.find_first_not_of(' '), line.size());
        line.remove_prefix(depth);
        if (line.empty() || (m_valuesOnly && depth > 0))
            return;
        if (depth >= static_cast<size_t>(m_nodes.size()) || !apply(line, depth)) {
            TraceLazily("treedump", [line] {
                return QStringLiteral("Malformed line in node text: ") +
                       QString::fromUtf8(line.data(), static_cast<qsizetype>(line.size()));
            });
        }
    }

private:
    bool apply(std::string_view line, size_t depth) {
        m_nodes.resize(static_cast<qsizetype>(depth) + 1);
        Node& node = *m_nodes.back();
        if (line.find('=') != line.npos || line.back() != '/')
            return applyValueLine(node, line, m_originator);
        if (!m_valuesOnly)
            m_nodes.push_back(childOf(node, unescaped(line.substr(0, line.size() - 1))));
        return true;
    }

    QVector<Node*>
        m_nodes; ///< the path from the node that is filled to the one that the next line belongs to
    bool m_valuesOnly;
    IObserver* m_originator;
};

void readDump(Node& node, std::string_view text, bool valuesOnly, IObserver* originator) {
    DumpReader reader(node, valuesOnly, originator);
    while (!text.empty()) {
        const size_t end = std::min(text.find('\n'), text.size());
        reader.Line(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

} // namespace

void Node::AddTreeString(std::string& out, int depth, int maxDepth) const {
    for (const ValueBase* value = FirstValue(); value; value = NextValue(value))
        appendValue(out, *value, depth);
    if (maxDepth == 0)
        return;
    for (const Node* child : Children()) {
        out.append(static_cast<size_t>(depth), ' ');
        appendEscaped(out, child->segment());
        out += "/\n";
        child->AddTreeString(out, depth + 1, maxDepth - 1);
    }
}

std::string Node::GetAsStdString() const {
    std::string out;
    AddTreeString(out, 0, -1);
    return out;
}

std::string Node::GetValueAsStdString() const {
    std::string out;
    AddTreeString(out, 0, 0);
    return out;
}

void Node::SetAsStdString(const char* text, IObserver* originator) {
    if (text)
        readDump(*this, text, false, originator);
}

void Node::SetValueAsStdString(const char* text, IObserver* originator) {
    if (text)
        readDump(*this, text, true, originator);
}
