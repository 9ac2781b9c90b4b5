#include "controls/frequencystore/targets/targetlisthandler.h"

#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/files/filegate.h"
#include "controls/frequencystore/targets/targetdialogs.h"
#include "controls/frequencystore/targets/targetlistparser.h"
#include "controls/frequencystore/targets/wkflistentry.h"
#include "host/base/problems.h"
#include "host/base/trace.h"
#include "host/freqlist/listsaving.h"
#include "host/freqlist/undohistory.h"
#include "host/freqstorexml/filehandling.h"
#include "host/report/filework.h"
#include "host/startup/cfgcenter.h"
#include "host/valuetree/operatoraction.h"
#include "host/valuetree/tree.h"

#include <QPointer>
#include <QTimerEvent>

namespace {

constexpr char TraceSource[] = "listviewshandler";
/// Lets the controller finish its refresh before views react.
constexpr int AnnounceMilliseconds = 100;
constexpr int LowestPriority = 10;
constexpr char DefaultFile[] = "Targets.xml";

} // namespace

TargetListHandler* TargetListHandler::m_pInstance = nullptr;

TargetListHandler* TargetListHandler::Instance() {
    if (!m_pInstance)
        m_pInstance = new TargetListHandler;
    return m_pInstance;
}

void TargetListHandler::DeleteInstance() {
    delete std::exchange(m_pInstance, nullptr);
}

TargetListHandler::TargetListHandler() : m_fileLoaded(this), m_fileName(this) {}

TargetListHandler::~TargetListHandler() = default;

void TargetListHandler::Init(Node* node, bool loadDefault) {
    m_pNode = node;
    m_loadDefault = loadDefault;
    m_pParser = std::make_unique<TargetListParser>(node);
    if (!node) // nothing could take what a file holds
        return;
    // The two values stand beside the list node, not under it: they outlast the emptying of the list.
    const QString path = node->GetPathName();
    m_fileLoaded.Reset(GetOrCreateValue<Value<bool>>(path + QStringLiteral("_FileLoaded")));
    m_fileName.Reset(GetOrCreateValue<Value<QString>>(path + QStringLiteral("_FileName")));
    if (!m_loadDefault)
        return;
    m_currentFile = CfgCenter::GetAppCfg(ICfg::StartUp)
                        .GetFilePath(QStringLiteral("LocalTargetList"), QString::fromLatin1(DefaultFile));
    if (!m_fileLoaded->GetValue() && !m_client) {
        parse(TraceSource, m_currentFile);
        startAnnouncing();
    }
    publishFileName();
}

bool TargetListHandler::isForeignXml(const QString& path) const {
    return path.contains(QLatin1String(".xml")) && !FreqStoreXml::FileHandling().IsValidFormat(path);
}

bool TargetListHandler::parse(TracePlace place, const QString& path, bool isProfileTable) {
    return REPORTGENERATOR::ReadSafely(
        place, path,
        [&] { return isProfileTable ? m_pParser->ParseProfileTable(path) : m_pParser->ParseSFLFile(path); },
        [this] { return m_pParser->DropUnfinishedFile(); });
}

bool TargetListHandler::ReadFile(const QString& path) {
    if (!m_pParser || m_client)
        return false;
    return REPORTGENERATOR::ReadAsWork(path, [&] {
        const bool read = parse(TraceSource, path, isForeignXml(path));
        startAnnouncing();
        FileGate::WasRead(FileGate::List::Targets, path, read);
        return read;
    });
}

bool TargetListHandler::SaveFile(const QString& path) {
    return m_pParser && REPORTGENERATOR::WriteAsWork(path, [&] { return m_pParser->SaveFile(path); });
}

void TargetListHandler::startAnnouncing() {
    if (m_announceTimer != -1)
        killTimer(m_announceTimer);
    m_announceTimer = startTimer(AnnounceMilliseconds);
}

void TargetListHandler::timerEvent(QTimerEvent* event) {
    if (event->timerId() != m_announceTimer)
        return;
    killTimer(m_announceTimer);
    m_announceTimer = -1;
    // A receiver of the signal may end this handler.
    const QPointer<TargetListHandler> alive(this);
    emit signalNewFileLoaded();
    if (!alive || !m_fileLoaded)
        return;
    m_fileLoaded->SetValue(true, this);
    if (alive && m_fileLoaded)
        m_fileLoaded->NotifyObservers(TChangeCode::Announcement, this);
}

void TargetListHandler::publishFileName() {
    if (m_fileName)
        m_fileName->SetValue(m_currentFile, this);
}

void TargetListHandler::NoteFile(const QString& path) {
    if (std::exchange(m_currentFile, path) != path)
        publishFileName();
}

void TargetListHandler::setCurrentFile(const QString& path) {
    UndoHistory::Instance().Add(
        std::make_unique<UndoState>([this, kept = m_currentFile, alive = QPointer(this)]() mutable {
            if (!alive)
                return;
            std::swap(m_currentFile, kept);
            publishFileName();
        }));
    m_currentFile = path;
    publishFileName();
}

/// Whether the program keeps a chosen file from the list.
bool TargetListHandler::isKeptOut(const QString& path) const {
    return !path.isEmpty() && !m_client && !FileGate::MayRead(FileGate::List::Targets, path);
}

// Whoever ends the application while a dialog is open ends this, too: then nothing was done.

QString TargetListHandler::ReadTargetList() {
    const QPointer<TargetListHandler> alive(this);
    const QString path = TargetDialogs::FileToRead(m_directory);
    if (!alive || isKeptOut(path) || !alive)
        return QString();
    const auto take = [&] {
        if (!path.isEmpty())
            ReadFile(path);
        setCurrentFile(path);
        return true;
    };
    return REPORTGENERATOR::ReadAsWork(path, take) ? path : QString();
}

QString TargetListHandler::ImportTargetList() {
    const QPointer<TargetListHandler> alive(this);
    const QString path = TargetDialogs::FileToImport(m_directory);
    if (path.isEmpty() || !alive || isKeptOut(path) || !alive)
        return QString();
    const auto take = [&] {
        if (!m_client && m_pParser) {
            const bool read = parse(TraceSource, path);
            startAnnouncing();
            FileGate::WasRead(FileGate::List::Targets, path, read);
        }
        setCurrentFile(path);
        return true;
    };
    return REPORTGENERATOR::ReadAsWork(path, take) ? path : QString();
}

QString TargetListHandler::Save2File(bool toCurrentFile) {
    if (toCurrentFile && isForeignXml(m_currentFile))
        m_currentFile = QString::fromLatin1(DefaultFile);
    const QPointer<TargetListHandler> alive(this);
    const QString path = toCurrentFile ? m_currentFile : TargetDialogs::FileToSave(m_directory);
    return !path.isEmpty() && alive && SaveAsOwn(path) ? path : QString();
}

bool TargetListHandler::SaveAsOwn(const QString& path) {
    const bool isSaved =
        m_pParser && ListSaving::Do(m_pParser->GetMediatorCtrl(), [&] { return SaveFile(path); });
    if (isSaved)
        FileGate::WasWritten(FileGate::List::Targets, path);
    return isSaved;
}

QString TargetListHandler::Export2File() {
    const QPointer<TargetListHandler> alive(this);
    const QString path = TargetDialogs::FileToExport(m_directory);
    return !path.isEmpty() && alive && SaveFile(path) ? path : QString();
}

bool TargetListHandler::AddNew() {
    const std::unique_ptr<WkfListEntry> target = m_pParser ? m_pParser->AddValue() : nullptr;
    if (!target)
        return false;
    const auto find = [](const QString& path) {
        return path.isEmpty() ? nullptr : Tree::Instance()->GetValue(path);
    };
    target->SetPriority(LowestPriority);
    target->SetComment(QString());
    if (const auto* frequency = value_cast<ValueNumeric<double>>(find(m_template.frequency)))
        target->SetFrequency(frequency->GetValue());
    if (const auto* bandwidth = value_cast<ValueNumeric<double>>(find(m_template.bandwidth)))
        target->SetBandwidth(bandwidth->GetValue());
    if (const ValueBase* demodulation = find(m_template.demodulation))
        target->SetDemodulation(demodulation->GetStringValue());
    m_pParser->GetMediatorCtrl()->ForceUpdateNow();
    return true;
}

int TargetListHandler::AddToFreqStore() {
    return m_pParser ? m_pParser->AddToFreqStore() : 0;
}

bool TargetListHandler::GetNextData(double& frequency, double& bandwidth, int& priority, QString& comment,
                                    QString& threatClass, QString& demodulation) {
    return m_pParser &&
           m_pParser->GetNextData(frequency, bandwidth, priority, comment, threatClass, demodulation);
}

void TargetListHandler::ResetDataCollect() {
    if (m_pParser)
        m_pParser->ResetDataCollect();
}

void TargetListHandler::Update(Observable* subject, TChangeCode code) {
    if (code == TChangeCode::Removing) {
        m_fileLoaded.ForgetIfRemoved(subject, code) || m_fileName.ForgetIfRemoved(subject, code);
    } else if (code == TChangeCode::ValueChanged && m_fileName && subject == m_fileName.get()) {
        m_currentFile = m_fileName->GetValue();
        if (m_pParser && !m_client) {
            const OperatorAction action(tr("Open")); // by another hand; what was there can be had back
            ReadFile(m_currentFile);
        }
    } else if (code == TChangeCode::Announcement) {
        emit signalNewFileLoaded();
    }
}
