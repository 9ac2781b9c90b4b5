#include "cli/list.h"

#include "cli/memorylist.h"
#include "cli/progressbar.h"
#include "controls/frequencystore/listviewshandler/targetlisthandler.h"
#include "host/base/problems.h"
#include "host/valuetree/tree.h"

#include <cstdio>

namespace {

class TargetList : public CliList {
public:
    TargetList() {
        m_node = Tree::Instance()->MakeNode(QStringLiteral("/Lists/LocalTargetList"));
        TargetListHandler::Instance()->Init(m_node, false);
    }
    ~TargetList() override {
        TargetListHandler::DeleteInstance();
        m_node->DeleteChildren();
    }

    bool Read(const QString& path) override { return TargetListHandler::Instance()->ReadFile(path); }
    bool Write(const QString& path) override { return TargetListHandler::Instance()->SaveFile(path); }
    Node* GetNode() const override { return m_node; }

private:
    Node* m_node;
};

struct Kind {
    const char* name;
    std::unique_ptr<CliList> (*make)();
};

constexpr Kind Kinds[] = {
    {"target", [] { return std::unique_ptr<CliList>(new TargetList); }},
    {"memory-hf", [] { return std::unique_ptr<CliList>(new MemoryList(false)); }},
    {"memory-vuhf", [] { return std::unique_ptr<CliList>(new MemoryList(true)); }},
};

bool isNumeric(const ValueBase& value) {
    return value.GetType() != ValueType::Text && value.GetType() != ValueType::Selection &&
           value.GetType() != ValueType::Bool && value.GetType() != ValueType::DoubleList &&
           value.GetType() != ValueType::Char;
}

/// A character is shown as the letter that it stands for.
QString textOf(const ValueBase& value) {
    const auto* letter = value_cast<Value<char>>(&value);
    if (!letter)
        return value.GetStringValue();
    return letter->GetValue() ? QString(QLatin1Char(letter->GetValue())) : QString();
}

} // namespace

std::unique_ptr<CliList> MakeList(const QString& kind) {
    for (const Kind& known : Kinds) {
        if (kind == QLatin1String(known.name))
            return known.make();
    }
    return nullptr;
}

QStringList ListKinds() {
    QStringList names;
    for (const Kind& kind : Kinds)
        names << QString::fromLatin1(kind.name);
    return names;
}

void ForEachEntry(const CliList& list, const std::function<void(const std::vector<EntryField>&)>& visit) {
    for (const Node* entry : list.GetNode()->Children()) {
        std::vector<EntryField> fields;
        for (const ValueBase* value = entry->FirstValue(); value; value = Node::NextValue(value))
            fields.push_back({value->GetName(), textOf(*value), isNumeric(*value)});
        visit(fields);
    }
}

ProblemPrinter::ProblemPrinter() {
    Problems::SetSink([this](const Problem& problem) {
        ++m_count;
        ProgressBar::MakeRoom();
        std::fprintf(stderr, "%s\n", qPrintable(problem.ToString()));
    });
}

ProblemPrinter::~ProblemPrinter() {
    Problems::SetSink({});
}
