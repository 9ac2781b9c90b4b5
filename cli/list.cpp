#include "cli/list.h"

#include "cli/jsonfile.h"
#include "cli/memorylist.h"
#include "cli/output.h"
#include "cli/shapedentry.h"
#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/common/paths.h"
#include "controls/frequencystore/memory/memoryscansection.h"
#include "controls/frequencystore/noi/noifrequency.h"
#include "controls/frequencystore/noi/noifrequencyhandler.h"
#include "controls/frequencystore/targets/targetlisthandler.h"
#include "controls/frequencystore/targets/targetlistparser.h"
#include "controls/frequencystore/targets/wkflistentry.h"
#include "host/base/numbers.h"
#include "host/base/problems.h"
#include "host/base/trace.h"
#include "host/freqstorexml/filehandling.h"
#include "host/report/xmlscanner.h"
#include "host/valuetree/tree.h"

#include <QFile>

#include <algorithm>

namespace {

/// What the commands need to know of a list that a handler owns.
template <typename Handler>
struct HandlerUse {
    QLatin1String listPath;
    Node& (*addEntry)(Node& list); ///< one with the values of a new entry and no comment
    const char* entryName;
    const Shape& (*shape)();
    void (*start)(Handler&, Node*);
    GeneralListParser& (*parser)(Handler&); ///< which brackets the entries of a file
    HalvoNodeMediatorCtrl& (*controller)(Handler&);
    FileNames names;
};

/// A list that a handler owns, in a node of its own that is emptied at the end.
template <typename Handler>
class HandlerList : public CliList {
public:
    explicit HandlerList(const HandlerUse<Handler>& use)
        : m_use(use), m_node(Tree::Instance()->MakeNode(use.listPath)) {
        use.start(handler(), m_node);
    }
    ~HandlerList() override {
        LeaveToNextList([node = m_node] {
            Handler::DeleteInstance();
            node->DeleteChildren();
        });
    }

    const FileNames& Names() const override { return m_use.names; }

protected:
    bool ReadFile(const QString& path) override { return handler().ReadFile(path); }
    bool WriteFile(const QString& path) override { return handler().SaveFile(path); }
    void BeginEntries() override { m_use.parser(handler()).Prepare4NewFile(); }
    void EndEntries(bool isWhole) override {
        if (!isWhole)
            m_node->DeleteChildren();
        m_use.parser(handler()).ResetDataAfterNewFile();
    }
    void AddEntry(const Interchange::JsonEntry& from) override {
        FillFromJson(m_use.addEntry(*m_node), from);
    }
    Node* GetNode() const override { return m_node; }
    EntryNodes GetEntryNodes() const override { return {m_use.entryName, &m_use.shape()}; }
    GeneralListParser* Parser() const override { return &m_use.parser(handler()); }
    HalvoNodeMediatorCtrl* Controller() const override { return &m_use.controller(handler()); }

private:
    static Handler& handler() { return *Handler::Instance(); }

    const HandlerUse<Handler>& m_use;
    Node* m_node;
};

constexpr FileMark TargetsRead[] = {{".sfl", FileFormat::SflLines},
                                    {".ltl", FileFormat::LtlLines},
                                    {".csv", FileFormat::Csv},
                                    {".xml", FileFormat::StoreXml}};
constexpr FileMark TargetsWritten[] = {{".ltl", FileFormat::LtlLines},
                                       {".sfl", FileFormat::LtlLines},
                                       {".csv", FileFormat::Csv},
                                       {".xml", FileFormat::StoreXml}};
constexpr FileMark NoiRead[] = {
    {".xml", FileFormat::StoreXml}, {".csv", FileFormat::Csv}, {".noi", FileFormat::NoiLines}};
constexpr FileMark NoiWritten[] = {
    {".noi", FileFormat::NoiLines}, {".csv", FileFormat::Csv}, {".xml", FileFormat::StoreXml}};

Node& addTarget(Node& list) {
    static const Names::Id name = Names::Intern(QStringLiteral("Target"));
    constexpr QStringView undefined = u"undefined";
    Node* const node = Node::NewEntry(&list, name, WkfTarget::Shape());
    list.AddItemUnique(node);
    if (!WkfTarget(*node).Fill({.frequency = 0,
                                .bandwidth = 0,
                                .priority = 1,
                                .comment = {},
                                .demodulation = u"NONE",
                                .threatClass = {},
                                .profileID = undefined,
                                .profileName = undefined,
                                .signalClass = undefined,
                                .transmissionSystem = undefined}))
        WkfListEntry(node, true, nullptr).SetComment(QString());
    return *node;
}

std::unique_ptr<CliList> makeTargets() {
    static const HandlerUse<TargetListHandler> use = {
        Paths::Targets,
        addTarget,
        "Target",
        WkfTarget::Shape,
        [](TargetListHandler& handler, Node* node) { handler.Init(node, false); },
        [](TargetListHandler& handler) -> GeneralListParser& { return *handler.GetParser(); },
        [](TargetListHandler& handler) -> HalvoNodeMediatorCtrl& {
            return *handler.GetParser()->GetMediatorCtrl();
        },
        FileNames{.read = TargetsRead, .written = TargetsWritten, .readsProfiles = true}};
    return std::make_unique<HandlerList<TargetListHandler>>(use);
}

std::unique_ptr<CliList> makeNoi() {
    static const HandlerUse<NOIFrequencyHandler> use = {
        Paths::Noi,
        [](Node& list) -> Node& { return AddShapedEntry<NOIFrequency>(list, "Entry", nullptr); },
        "Entry",
        NOIFrequency::Shape,
        [](NOIFrequencyHandler& handler, Node* node) {
            handler.SetRemembersFile(false);
            handler.Init(node);
        },
        [](NOIFrequencyHandler& handler) -> GeneralListParser& { return handler; },
        [](NOIFrequencyHandler& handler) -> HalvoNodeMediatorCtrl& { return *handler.GetMediatorCtrl(); },
        FileNames{.read = NoiRead, .written = NoiWritten, .readsProfiles = true}};
    return std::make_unique<HandlerList<NOIFrequencyHandler>>(use);
}

template <bool IsVUHF>
std::unique_ptr<CliList> makeMemory() {
    return std::make_unique<MemoryList>(IsVUHF);
}

struct Kind {
    const char* name;
    std::unique_ptr<CliList> (*make)();
};

constexpr Kind Kinds[] = {
    {"target", makeTargets},
    {"memory-hf", makeMemory<false>},
    {"memory-vuhf", makeMemory<true>},
    {"noi", makeNoi},
    {"results", MakeResults},
    {"detections", MakeDetections},
    {"detections-hf", MakeDetectionsHF},
    {"detections-vuhf", MakeDetectionsVUHF},
};

/// A member of JSON entries by which their list is known, in the order in which they are looked for.
struct TellingMember {
    const char* key;
    const char* kind;
};
constexpr TellingMember TellingMembers[] = {
    {"decoder", "detections-vuhf"}, {"starttime", "detections"}, {"locked", "results"},
    {"antennaid", "memory-vuhf"},   {"afc", "memory-vuhf"},      {"bfofrequency", "memory-hf"},
    {"outputifpath", "memory-hf"},  {"threadclass", "target"},   {"demodulation", "target"},
    {"bandwidth", "noi"},
};

/// The kind of list that the first entry of a JSON file tells; empty when it tells none, or cannot be read,
/// which whoever reads it tells.
QString kindOfJson(const QString& path) {
    QString kind;
    try {
        Interchange::ReadOptions options;
        options.isFirstLook = true;
        ReadJson(path, options, [&](const Interchange::JsonEntry& entry) {
            const auto* telling = std::find_if(
                std::begin(TellingMembers), std::end(TellingMembers),
                [&](const TellingMember& member) { return entry.Has(QLatin1String(member.key)); });
            if (telling != std::end(TellingMembers))
                kind = QString::fromLatin1(telling->kind);
            return false;
        });
    } catch (const RGException&) {
    }
    return kind;
}

std::vector<std::function<void()>>& leftLists() {
    static auto* const ends = new std::vector<std::function<void()>>;
    return *ends;
}

FieldType typeOf(const ValueBase& value) {
    switch (value.GetType()) {
    case ValueType::Text:
    case ValueType::Selection:
    case ValueType::Char:
        return FieldType::Text;
    case ValueType::Bool:
        return FieldType::Flag;
    case ValueType::DoubleList:
        return FieldType::Numbers;
    default:
        return FieldType::Number;
    }
}

/// Puts a value into a field that may have held the same value of another entry, whose memory is used again.
/// A character is shown as the letter that it stands for.
void fill(EntryField& field, const ValueBase& value) {
    if (const QString& name = value.GetName(); field.key.constData() != name.constData())
        field.key = name;
    field.type = typeOf(value);
    if (const auto* number = value_cast<ValueNumeric<double>>(&value)) {
        field.text.resize(0);
        Quor::AppendShortest(field.text, number->GetValue());
    } else if (const auto* letter = value_cast<Value<char>>(&value)) {
        field.text = letter->GetValue() ? QString(QLatin1Char(letter->GetValue())) : QString();
    } else {
        field.text = value.GetStringValue();
    }
}

} // namespace

std::unique_ptr<CliList> MakeList(const QString& kind) {
    for (const Kind& known : Kinds) {
        if (kind == QLatin1String(known.name))
            return known.make();
    }
    return nullptr;
}

void LeaveToNextList(std::function<void()> end) {
    leftLists().push_back(std::move(end));
}

void EndLeftLists() {
    for (const auto& end : std::exchange(leftLists(), {}))
        end();
}

std::optional<bool> IsJobOfVUHF(const QString& path) {
    using Token = REPORTGENERATOR::XmlScanner::Token;
    try {
        QFile file(path);
        REPORTGENERATOR::OpenForReading(file);
        // The declared encoding is that of a job before it became text: all are UTF-8 now.
        REPORTGENERATOR::XmlScanner scanner(file, path, false);
        for (Token token = scanner.Next(); token != Token::End; token = scanner.Next()) {
            if (token != Token::StartElement)
                continue;
            if (const std::optional<bool> isVUHF = IsElementOfVUHF(scanner.Name()))
                return isVUHF;
        }
    } catch (const RGException&) {
        // Whoever reads the job tells what is wrong with it.
    }
    return std::nullopt;
}

QString ListKindToldBy(const QString& path) {
    if (IsJsonName(path) || IsOwnJson(Interchange::FormatOfFile(path)))
        return kindOfJson(path);
    if (path.endsWith(QLatin1String(".pij"))) {
        const std::optional<bool> isVUHF = IsJobOfVUHF(path);
        return !isVUHF ? QString() : *isVUHF ? QStringLiteral("memory-vuhf") : QStringLiteral("memory-hf");
    }
    if (path.contains(QLatin1String(".xml")) && FreqStoreXml::FileHandling().IsDetectionResults(path))
        return QStringLiteral("detections-vuhf"); // whose files have all that there is
    return path.endsWith(QLatin1String(".noi")) ? QStringLiteral("noi") : QString();
}

QString ListKindOf(const QString& path) {
    if (const QString told = ListKindToldBy(path); !told.isEmpty())
        return told;
    return path.endsWith(QLatin1String(".pij")) ? QStringLiteral("memory-hf")
                                                : QString::fromLatin1(Kinds[0].name);
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

namespace {

/// The same fields are filled for one entry after the other.
void fillFields(const Node& entry, std::vector<EntryField>& fields) {
    size_t count = 0;
    for (const ValueBase* value = entry.FirstValue(); value; value = Node::NextValue(value)) {
        fields.resize(std::max(fields.size(), ++count));
        fill(fields[count - 1], *value);
    }
    fields.resize(count);
}

} // namespace

std::vector<EntryField> FieldsOf(const Node& entry) {
    std::vector<EntryField> fields;
    fillFields(entry, fields);
    return fields;
}

CliList::CliList() {
    EndLeftLists();
}

bool CliList::Read(const QString& path) {
    Interchange::Account account;
    return Names().FormatRead(path) == FileFormat::Json ? ReadJson(path, {}, account) : ReadFile(path);
}

bool CliList::ReadRecords(
    const QString& path,
    const std::function<void(const std::function<void(const FreqStoreXml::FrequencyStoreEntry&)>&)>& read) {
    if (GeneralListParser* const parser = Parser())
        return parser->TakeEntries(path, read);
    Problems::Report(
        "clilist", {path, 0, QStringLiteral("is a file of another program, which this list does not take")});
    return false;
}

bool CliList::ReadJson(const QString& path, const Interchange::ReadOptions& options,
                       Interchange::Account& account) {
    BeginEntries();
    try {
        account = ::ReadJson(path, options, [this](const Interchange::JsonEntry& entry) {
            AddEntry(entry);
            return true;
        });
    } catch (const RGException& exception) {
        Problems::Report("jsonfile", Problem::FromText(exception.GetErrorText()));
        EndEntries(false);
        return false;
    }
    EndEntries(true);
    return true;
}

Interchange::Content CliList::Content() const {
    HalvoNodeMediatorCtrl* const controller = Controller();
    return controller ? controller->Content() : Interchange::Content();
}

bool CliList::Write(const QString& path) {
    if (!IsJsonName(path))
        return WriteFile(path);
    try {
        WriteJson(path, *this, JsonFrameOf(path));
        return true;
    } catch (const RGException& exception) {
        TraceLazily("jsonfile", [&] { return exception.GetErrorText(); }); // it has been told
        return false;
    }
}

size_t CliList::Count() const {
    return GetNode()->ChildCount();
}

bool CliList::ForEachEntry(const EntryVisitor& visit) const {
    if (m_query.IsEmpty())
        return VisitEntries(visit);
    return VisitEntries([&](const std::vector<EntryField>& row) {
        const auto text = [&](int column) {
            const auto place = static_cast<size_t>(column);
            return place < row.size() ? row[place].text : QString();
        };
        return !m_query.Matches(text) || visit(row);
    });
}

QStringList CliList::Keys() const {
    QStringList keys;
    VisitEntries([&](const std::vector<EntryField>& row) {
        for (const EntryField& field : row)
            keys << field.key;
        return false;
    });
    return keys;
}

bool CliList::VisitEntries(const EntryVisitor& visit) const {
    std::vector<EntryField> fields;
    for (const Node* entry : GetNode()->Children()) {
        fillFields(*entry, fields);
        if (!visit(fields))
            return false;
    }
    return true;
}

ProblemPrinter::ProblemPrinter() : m_digest([](const Problem& problem) { TellError(problem.ToString()); }) {
    Problems::SetSink([this](const Problem& problem) {
        m_count += problem.count;
        m_digest.Add(problem);
    });
}

ProblemPrinter::~ProblemPrinter() {
    Problems::SetSink({});
}
