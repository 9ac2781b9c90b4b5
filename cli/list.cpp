#include "cli/list.h"

#include "cli/memorylist.h"
#include "cli/progressbar.h"
#include "controls/frequencystore/listviewshandler/noifrequencyhandler.h"
#include "controls/frequencystore/listviewshandler/targetlisthandler.h"
#include "host/base/problems.h"
#include "host/freqstorexml/filehandling.h"
#include "host/valuetree/tree.h"

#include <QFile>
#include <QFileInfo>

#include <cstdio>

namespace {

/// A list that a handler owns, in a node of its own that is emptied at the end.
template <typename Handler>
class HandlerList : public CliList {
public:
    HandlerList(const char* path, void (*start)(Handler&, Node*))
        : m_node(Tree::Instance()->MakeNode(QString::fromLatin1(path))) {
        start(*Handler::Instance(), m_node);
    }
    ~HandlerList() override {
        Handler::DeleteInstance();
        m_node->DeleteChildren();
    }

    bool Read(const QString& path) override { return Handler::Instance()->ReadFile(path); }
    bool Write(const QString& path) override { return Handler::Instance()->SaveFile(path); }

protected:
    Node* GetNode() const override { return m_node; }

private:
    Node* m_node;
};

std::unique_ptr<CliList> makeTargets() {
    return std::make_unique<HandlerList<TargetListHandler>>(
        "/Lists/LocalTargetList", [](TargetListHandler& handler, Node* node) { handler.Init(node, false); });
}

std::unique_ptr<CliList> makeNoi() {
    return std::make_unique<HandlerList<NOIFrequencyHandler>>("/Lists/NOIFrequencies",
                                                              [](NOIFrequencyHandler& handler, Node* node) {
                                                                  handler.SetRemembersFile(false);
                                                                  handler.Init(node);
                                                              });
}

template <bool IsVUHF>
std::unique_ptr<CliList> makeMemory() {
    return std::make_unique<MemoryList>(IsVUHF);
}

struct Kind {
    const char* name;
    std::unique_ptr<CliList> (*make)();
    const char* ending; ///< of files that no other list reads; null when there are none
};

constexpr Kind Kinds[] = {
    {"target", makeTargets, nullptr},
    {"memory-hf", makeMemory<false>, ".pij"},
    {"memory-vuhf", makeMemory<true>, nullptr},
    {"noi", makeNoi, ".noi"},
    {"results", MakeResults, nullptr},
    {"detections", MakeDetections, nullptr},
    {"detections-hf", MakeDetectionsHF, nullptr},
    {"detections-vuhf", MakeDetectionsVUHF, nullptr},
};

/// Channels of a VHF/UHF receiver name their antenna, those of an HF receiver do not.
bool isJobOfVUHF(const QString& path) {
    constexpr qint64 SearchedBytes = 1 << 20;
    QFile file(path);
    return QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly) &&
           file.read(SearchedBytes).contains("<MEMORYSCAN_SEQ_ANTENNAID");
}

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

QString ListKindOf(const QString& path) {
    if (path.endsWith(QLatin1String(".pij")) && isJobOfVUHF(path))
        return QStringLiteral("memory-vuhf");
    if (path.contains(QLatin1String(".xml")) && FreqStoreXml::FileHandling().IsDetectionResults(path))
        return QStringLiteral("detections-vuhf"); // whose files have all that there is
    for (const Kind& kind : Kinds) {
        if (kind.ending && path.endsWith(QLatin1String(kind.ending)))
            return QString::fromLatin1(kind.name);
    }
    return QString::fromLatin1(Kinds[0].name);
}

QStringList ListKinds() {
    QStringList names;
    for (const Kind& kind : Kinds)
        names << QString::fromLatin1(kind.name);
    return names;
}

QString Counted(qint64 count, const char* one, const char* many) {
    return (count == 0 ? QStringLiteral("no") : QString::number(count)) + QLatin1Char(' ') +
           QLatin1String(count == 1 ? one : many);
}

size_t CliList::Count() const {
    return GetNode()->ChildCount();
}

void CliList::ForEachEntry(const EntryVisitor& visit) const {
    for (const Node* entry : GetNode()->Children()) {
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
