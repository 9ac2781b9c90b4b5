#include "controls/frequencystore/listviewshandler/targetlistparser.h"

#include "controls/frequencystore/entries/wkflistentry.h"
#include "controls/frequencystore/halvonodemediatorctrl.h"
#include "controls/frequencystore/listviewshandler/linereader.h"
#include "controls/frequencystore/listviewshandler/targetlisthandler.h"
#include "controls/frequencystore/wkfnodemediator.h"
#include "host/base/numbers.h"
#include "host/base/problems.h"
#include "host/base/tokenizer.h"
#include "host/base/trace.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/pixstatevector.h"
#include "host/freqstorexml/filehandling.h"

#include <QCoreApplication>
#include <QSaveFile>
#include <QStringEncoder>

#include <optional>

using FreqStoreXml::FrequencyStoreListHelper;

namespace {

constexpr char TraceSource[] = "listviewshandler";
constexpr int StoreType = 2;
constexpr unsigned char MaxFields = 15;

/// Number of a field in a line, from 0; -1 where the format has no such field.
struct LineLayout {
    int frequency;
    int bandwidth;
    int comment;
    int demodulation;
    int threatClass;
    int priority;
};

constexpr LineLayout SflLayout{0, 2, 1, 3, -1, -1};
constexpr LineLayout LtlLayout{0, 1, 2, 3, 5, 6}; // the fifth field is the type letter, which is derived

bool contains(const QString& path, const char* kind) {
    return path.indexOf(QLatin1String(kind), 0, Qt::CaseSensitive) >= 0;
}

/// Tells why; always false.
bool cannotBeOpened(const Problem& refusal) {
    TraceLazily(TraceSource, 897, [&] { return QStringLiteral("File cannot be opened: ") + refusal.file; });
    Problems::Report(TraceSource, 897, refusal);
    return false;
}

/// Texts that repeat from line to line (demodulations, threat classes) share their characters.
class TextPool {
public:
    QString Text(QStringView view) {
        if (view.isEmpty())
            return QString();
        for (const QString& known : m_texts) {
            if (view == known)
                return known;
        }
        if (m_texts.size() >= MaxTexts)
            m_texts.erase(m_texts.begin());
        m_texts.push_back(view.toString());
        return m_texts.back();
    }

private:
    static constexpr size_t MaxTexts = 16;
    std::vector<QString> m_texts;
};

/// The fields of one line after the other. A short line keeps the previous line's values for what it lacks.
class LineFields {
public:
    LineFields(LineReader& reader, const LineLayout& layout) : m_reader(reader), m_layout(layout) {}

    void Take(QStringView line) {
        m_count = Quor::separateString(line, m_fields, MaxFields);
        number(m_layout.frequency, frequency, "frequency");
        number(m_layout.bandwidth, bandwidth, "bandwidth");
        if (has(m_layout.comment))
            comment = m_fields[m_layout.comment].toString();
        if (has(m_layout.demodulation))
            demodulation = m_demodulations.Text(m_fields[m_layout.demodulation]);
        if (has(m_layout.threatClass))
            threatClass = m_threatClasses.Text(m_fields[m_layout.threatClass]);
        if (has(m_layout.priority) && !Quor::ParseInt(m_fields[m_layout.priority], priority)) {
            priority = 0;
            complain(m_layout.priority, "priority");
        }
    }

    double frequency = 0;
    double bandwidth = 0;
    int priority = 1;
    QString comment;
    QString demodulation;
    QString threatClass = QStringLiteral("not classified");

private:
    bool has(int field) const { return field >= 0 && field < m_count; }
    void number(int field, double& value, const char* what) {
        if (has(field) && !Quor::ParseDouble(m_fields[field], value)) {
            value = 0;
            complain(field, what);
        }
    }
    void complain(int field, const char* what) {
        m_reader.ReportProblem(QStringLiteral("\"%1\" is no %2; 0 is taken")
                                   .arg(m_fields[field].left(40).toString(), QString::fromLatin1(what)));
    }

    LineReader& m_reader;
    const LineLayout& m_layout;
    QStringView m_fields[MaxFields];
    int m_count = 0;
    TextPool m_demodulations;
    TextPool m_threatClasses;
};

// A target: rings around a dot, in the list's greens, with a yellow mark.
constexpr const char* IconXpm[] = {
    "16 16 7 1",        "# c #000000",      "c c #000400",      "d c #008200",      "e c #088608",
    "b c #ffffff",      "a c #ffff00",      ". c none",         ".....######.....", "...##bbbbbb##...",
    "..#bbddddddbb#..", ".#bbdbbbbbbdbb#.", ".#bdbbeeeebbdb#.", "#bdbbebbbbebbdb#", "#bdbebbccbbebdb#",
    "#bdbebcaacbebdb#", "#bdbebcaacbebdb#", "#bdbebbccbbebdb#", "#bdbbebbbbebbdb#", ".#bdbbeeeebbdb#.",
    ".#bbdbbbbbbdbb#.", "..#bbddddddbb#..", "...##bbbbbb##...", ".....######....."};

PixStateVector* createPixStateVector() {
    auto* line = new PixStateVectorOnNode;
    if (const Node* root = TargetListHandler::Instance()->GetItemsRoot())
        line->Init(root->GetPathName());
    line->SetKeyWords(Keys::KeyFrequency.Text(), Keys::KeyBandwidth.Text(), Keys::KeyType.Text(),
                      Keys::KeyComment.Text());
    return line;
}

} // namespace

TargetListParser::TargetListParser(Node* node)
    : m_pNode(node),
      m_pMedCtrl(std::make_unique<HalvoNodeMediatorCtrl>(MediatorType::TargetList, StoreType)) {
    m_pMedCtrl->SetEntryMaker([this](const FreqStoreXml::FrequencyStoreEntry& entry) { fillIn(entry); });
    m_pMedCtrl->Init(node ? node->GetPathName() : QString());
    m_pMedCtrl->IncrementVisibleCnt();
}

TargetListParser::~TargetListParser() = default;

std::unique_ptr<WkfListEntry> TargetListParser::AddValue() {
    Node* const list = m_pNode.get();
    if (!list)
        return nullptr;
    static const QString name = QStringLiteral("Target");
    auto* node = new Node(list, name);
    list->AddItemUnique(node);
    return std::make_unique<WkfListEntry>(node, true, nullptr);
}

void TargetListParser::FillInData(double frequency, double bandwidth, QString comment, QString demodulation,
                                  int priority, QString threatClass, QString profileID, QString profileName,
                                  QString signalClass, QString transmissionSystem) {
    const std::unique_ptr<WkfListEntry> entry = AddValue();
    if (!entry)
        return;
    entry->SetBandwidth(bandwidth);
    entry->SetFrequency(frequency);
    entry->SetComment(comment);
    entry->SetPriority(priority);
    entry->SetThreadClass(threatClass);
    entry->SetDemodulation(demodulation);
    entry->SetProfileID(profileID);
    entry->SetProfileName(profileName);
    entry->SetSignalClass(signalClass);
    entry->SetTransmissionSystem(transmissionSystem);
}

void TargetListParser::Prepare4NewFile() {
    m_pMedCtrl->Suspend(true);
    if (m_pNode)
        m_pNode->DeleteChildren();
}

void TargetListParser::ResetDataAfterNewFile() {
    m_pMedCtrl->Suspend(false);
    m_readIndex = 0;
}

void TargetListParser::ResetDataCollect() {
    m_readIndex = 0;
}

bool TargetListParser::GetNextData(double& frequency, double& bandwidth, int& priority, QString& comment,
                                   QString& threatClass, QString& demodulation) {
    frequency = 0;
    bandwidth = 0;
    priority = 0;
    comment.clear();
    threatClass.clear();
    demodulation.clear();
    if (!m_pMedCtrl || m_readIndex >= m_pMedCtrl->size())
        return false;
    auto* mediator = dynamic_cast<WkfNodeMediator*>(m_pMedCtrl->At(m_readIndex));
    if (!mediator)
        return false;
    ++m_readIndex;
    ++m_readCount;
    mediator->GetFrequency(frequency, 0);
    mediator->GetBandwidth(bandwidth, 0);
    mediator->GetPriority(priority, 0);
    mediator->GetComment(comment, 0);
    mediator->GetThreadClass(threatClass, 0);
    mediator->GetDemodulation(demodulation, 0);
    return true;
}

bool TargetListParser::ParseSFLFile(const QString& path) {
    if (contains(path, ".sfl"))
        return readLines(path, true);
    if (contains(path, ".ltl"))
        return readLines(path, false);
    if (contains(path, ".xml") || contains(path, ".csv")) {
        readEntries(path, contains(path, ".csv"));
        return true;
    }
    QFile file(path);
    if (const QString refusal = RefuseToOpen(file); !refusal.isEmpty())
        return cannotBeOpened({path, 0, refusal});
    Prepare4NewFile();
    // The file ends here, but the emptied list must not stay frozen.
    m_pMedCtrl->Suspend(false);
    TraceLazily(TraceSource, 1069, [] { return QStringLiteral("File cannot be converted"); });
    Problems::Report(TraceSource, 1069, {path, 0, QStringLiteral("is of no known kind of file")});
    return false;
}

bool TargetListParser::readLines(const QString& path, bool isSfl) {
    QFile file(path);
    if (const QString refusal = RefuseToOpen(file); !refusal.isEmpty())
        return cannotBeOpened({path, 0, refusal});
    LineReader reader(file, path);
    if (const std::optional<Problem> refusal = reader.RefuseContent())
        return cannotBeOpened(*refusal);
    Prepare4NewFile();
    LineFields fields(reader, isSfl ? SflLayout : LtlLayout);
    QStringView line;
    while (reader.Next(line)) {
        if (line.size() < 2)
            continue;
        fields.Take(line);
        FillInData(fields.frequency, fields.bandwidth, fields.comment, fields.demodulation, fields.priority,
                   fields.threatClass, QString(), QString(), QString(), QString());
    }
    ResetDataAfterNewFile();
    return true;
}

/// The file is read whole before the list is emptied: one that is bad half-way costs nothing.
void TargetListParser::readEntries(const QString& path, bool csv) {
    FreqStoreXml::FrequencyStoreList list;
    FreqStoreXml::FileHandling().ImportFrequencyStoreList(csv, path, list, FrequencyStoreListHelper::Targets);
    Prepare4NewFile();
    for (const FreqStoreXml::FrequencyStoreEntry& entry : std::as_const(list).GetFrequencyStoreEntry())
        fillIn(entry);
    ResetDataAfterNewFile();
}

void TargetListParser::fillIn(const FreqStoreXml::FrequencyStoreEntry& entry) {
    const auto orUndefined = [](const QString& text) {
        return text.isEmpty() ? QStringLiteral("undefined") : text;
    };
    const FreqStoreXml::FFM_Settings& settings = entry.GetFFM_Settings();
    const FreqStoreXml::Profile_Data& profile = entry.GetProfile_Data();
    FillInData(settings.GetFrequency().GetValue(), settings.GetIFBandwidth().GetValue(), entry.GetComment(),
               FreqStoreXml::FFM_Settings::AnalogDemodToName(settings.GetAnalogDemod()),
               profile.GetPriority().toInt(), profile.GetThreatClass(), orUndefined(profile.GetProfileID()),
               orUndefined(profile.GetProfileName()), orUndefined(profile.GetSignalClass()),
               orUndefined(profile.GetTransmissionSystem()));
}

bool TargetListParser::writeLines(const QString& path) {
    constexpr qsizetype FlushAt = 1 << 16;
    QSaveFile file(path);
    bool good = file.open(QIODevice::WriteOnly);
    QStringEncoder encoder(QStringConverter::Utf16LE, QStringConverter::Flag::WriteBom);
    QString buffer;
    buffer.reserve(2 * FlushAt);
    const auto flush = [&] {
        const QByteArray bytes = encoder.encode(buffer);
        good = good && file.write(bytes) == bytes.size();
        buffer.resize(0);
    };
    m_pMedCtrl->ForEach([&](FrequencyNodeMediator& mediator) {
        buffer += mediator.ToString();
        buffer += QLatin1Char('\n');
        if (buffer.size() >= FlushAt)
            flush();
    });
    flush();
    if (good && file.commit())
        return true;
    Problems::Report(TraceSource, 1101, {path, 0, file.errorString()});
    return false;
}

bool TargetListParser::SaveFile(const QString& path) {
    if (path.isEmpty())
        return false;
    m_pMedCtrl->ForceUpdateNow();
    if (contains(path, ".ltl") || contains(path, ".sfl"))
        return writeLines(path);
    try {
        const bool csv = contains(path, ".csv");
        m_pMedCtrl->WriteFrequencies(
            path, csv, csv ? FrequencyStoreListHelper::Targets : FrequencyStoreListHelper::XmlList);
        return true;
    } catch (const RGException& exception) {
        TraceLazily(TraceSource, 1120, [] { return QStringLiteral("EXCEPTION WHILE SAVING FREQUENCIES:"); });
        Problems::Report(TraceSource, 1121, Problem::FromText(exception.GetErrorText()));
        return false;
    }
}

int TargetListParser::AddToFreqStore() {
    if (!m_pMedCtrl && (ErrorHandler::Instance().GetTraceMask() & TraceMaskAssert) != 0)
        _Q_assert(L"m_pMedCtrl", L"listviewshandler", 1155);
    return FreqStore::Instance().AddFrequencyListDefinition(
        QCoreApplication::translate("TargetListParser", "Local TargetList"), QPixmap(IconXpm),
        createPixStateVector, true, true, m_pMedCtrl.get(), CreateWkfListView, nullptr, 0);
}
