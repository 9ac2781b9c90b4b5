#include "workstation/recovery.h"

#include "host/base/longwork.h"
#include "host/base/problems.h"
#include "host/base/quoros.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/frequencynodemediatorctrl.h"
#include "host/freqlist/listsaving.h"
#include "host/freqlist/undohistory.h"
#include "host/report/filestamps.h"
#include "host/report/leftovers.h"
#include "host/report/privatefile.h"
#include "host/valuetree/node.h"
#include "workstation/directorylock.h"
#include "workstation/listwalk.h"
#include "workstation/recoverywriter.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QSysInfo>

namespace {

constexpr int UsualInterval = 30000;
/// A list that was saved is taken out of the file soon, but not at each of many changes.
constexpr int SoonMilliseconds = 500;
constexpr int TurnMilliseconds = 10;
/// With more bytes on their way to the disk a walk waits for it.
constexpr qint64 MostWaiting = 32 << 20;
constexpr int WaitMilliseconds = 50;

FrequencyNodeMediatorCtrl* controllerOf(const ListFile& list) {
    return dynamic_cast<FrequencyNodeMediatorCtrl*>(
        FreqStore::Instance().GetFrequencies(static_cast<unsigned>(list.id)));
}

/// A list shows, and tells of, what is edited at its next tick, or now.
void bringUpToDate(const ListFile& list) {
    FrequencyNodeMediatorCtrl* const controller = controllerOf(list);
    if (controller && controller->IsDirty())
        controller->ForceUpdateNow();
}

QString pathIn(const QString& folder) {
    QString machine = QSysInfo::machineHostName();
    machine.replace(QLatin1Char('/'), QLatin1Char('_'));
    return QDir(folder).filePath(QStringLiteral("%1-%2-%3%4")
                                     .arg(machine)
                                     .arg(QCoreApplication::applicationPid())
                                     .arg(QuorOS::Create().CurrentTime(), 0, 36)
                                     .arg(QLatin1String(RecoveryForm::Suffix)));
}

} // namespace

/// Notes each change of a list's entries.
class Recovery::Watch : public IObserver {
public:
    Watch(Recovery& owner, int listId, Node& node) : m_owner(owner), m_listId(listId), m_node(&node) {
        node.AddObserver(this);
    }
    ~Watch() override {
        if (Node* node = m_node.get())
            node->DeleteObserver(this);
    }
    void Update(Observable*, TChangeCode code) override {
        if (code != TChangeCode::Removing)
            m_owner.noteEntry(m_listId);
    }

private:
    Recovery& m_owner;
    int m_listId;
    WeakRef<Node> m_node;
};

Recovery::Recovery(const QString& dataFolder, const ListFiles& lists)
    : m_lists(lists),
      m_folder(QDir(dataFolder).absoluteFilePath(QLatin1String(RecoveryForm::FolderName))),
      m_path(pathIn(m_folder)),
      m_writer(new RecoveryWriter(m_path)),
      m_interval(UsualInterval) {
    m_writer->moveToThread(&m_thread);
    connect(&m_thread, &QThread::finished, m_writer, &QObject::deleteLater);
    connect(m_writer, &RecoveryWriter::Done, this, [this] { ended(QString()); });
    connect(m_writer, &RecoveryWriter::Failed, this, &Recovery::ended);
    m_thread.start(QThread::LowPriority);
    m_due.setSingleShot(true);
    connect(&m_due, &QTimer::timeout, this, &Recovery::beginRound);
    m_turns.setInterval(0); // waits when the disk is slower
    connect(&m_turns, &QTimer::timeout, this, [this] { goOn(TurnMilliseconds); });
    connect(&UndoHistory::Instance(), &UndoHistory::Changed, this, &Recovery::noteStep);
    for (const ListFile& list : m_lists)
        Follow(list);
}

void Recovery::Follow(const ListFile& list) {
    const FrequencyNodeMediatorCtrl* controller = controllerOf(list);
    if (controller && controller->GetNode() && !list.text)
        m_watches.push_back(std::make_unique<Watch>(*this, list.id, *controller->GetNode()));
}

/// A list of records has no entries that tell, and what a search adds to them is none of the operator's.
void Recovery::noteStep(int listId) {
    const ListFile* list = FindListFile(m_lists, listId);
    if (list && !controllerOf(*list))
        NoteChange(listId);
}

Recovery::~Recovery() {
    m_watches.clear();
    if (!m_staysAtEnd)
        post(&RecoveryWriter::Remove);
    m_thread.quit();
    m_thread.wait();
}

template <typename... Parameters, typename... Arguments>
void Recovery::post(void (RecoveryWriter::*operation)(Parameters...), Arguments... arguments) {
    QMetaObject::invokeMethod(
        m_writer, [writer = m_writer, operation, arguments...] { (writer->*operation)(arguments...); },
        Qt::QueuedConnection);
}

void Recovery::SetInterval(int milliseconds) {
    m_interval = milliseconds;
    if (m_due.isActive())
        m_due.start(std::min(milliseconds, m_due.remainingTime()));
}

/// A file that is read notes a million of them.
void Recovery::noteEntry(int listId) {
    if (!m_changed.contains(listId) || !(m_isRunning || m_due.isActive()))
        NoteChange(listId);
}

void Recovery::NoteChange(int listId) {
    m_changed.insert(listId);
    m_staysAtEnd = false;
    const ListFile* list = FindListFile(m_lists, listId);
    schedule(list && !list->isUnsaved() ? SoonMilliseconds : m_interval);
}

/// A round that runs looks again at its end.
void Recovery::schedule(int milliseconds) {
    if (!m_isRunning && (!m_due.isActive() || m_due.remainingTime() > milliseconds))
        m_due.start(milliseconds);
}

/// The folder may have been taken away, and the mark of this process with it.
bool Recovery::lockFile() {
    const QString name = m_path + QStringLiteral(".lock");
    if (m_lock && QFileInfo::exists(name))
        return true;
    try {
        REPORTGENERATOR::PrivateFile::MakeFolder(m_folder);
        REPORTGENERATOR::RemoveLeftovers(m_folder);
    } catch (const RGException& exception) {
        ended(exception.GetErrorText());
        return false;
    }
    m_lock.reset();
    m_lock = TakeLockOfEnded(name);
    return true;
}

void Recovery::beginRound() {
    if (m_isRunning)
        return;
    m_isRunning = true;
    for (const ListFile& list : m_lists)
        bringUpToDate(list);
    emit Begun();
    m_replacing.insert(m_replacing.end(), m_replaced.begin(), m_replaced.end());
    m_replaced.clear();
    m_writing.clear();
    m_toWalk.clear();
    m_next = 0;
    for (const ListFile& list : m_lists)
        if (list.isUnsaved())
            m_writing.insert(list.id);
    if (m_writing.empty()) {
        m_changed.clear();
        return finishRound();
    }
    if (!lockFile())
        return;
    post(&RecoveryWriter::Begin);
    for (const ListFile& list : m_lists) {
        if (!m_writing.contains(list.id))
            m_changed.erase(list.id);
        else if (m_kept.contains(list.id) && !m_changed.contains(list.id))
            post(&RecoveryWriter::KeepSection, list.key);
        else
            m_toWalk.push_back(&list);
    }
    m_turns.start();
}

/// Begins the section of the next list that is to be walked; false when there is none. One may have been
/// saved or taken back since the round began; a list that is just being read has nothing of its own yet.
bool Recovery::nextList() {
    while (m_next < m_toWalk.size()) {
        const ListFile& list = *m_toWalk[m_next++];
        bringUpToDate(list);
        m_changed.erase(list.id);
        if (!list.isUnsaved()) {
            m_writing.erase(list.id);
            continue;
        }
        std::unique_ptr<EntrySource> entries = list.entries ? list.entries() : nullptr;
        if (!list.text && !entries) {
            m_changed.insert(list.id);
            m_writing.erase(list.id);
            continue;
        }
        const std::optional<FileStamps::State> file = FileStamps::State::Of(list.file());
        post(&RecoveryWriter::BeginSection,
             RecoveryHead{list.key, list.suffix, QuorOS::Create().CurrentTime(), list.file(),
                          file ? file->modified : 0});
        if (entries) {
            m_walk = std::make_unique<ListWalk>(std::move(entries));
            return true;
        }
        append(list.text().toUtf8());
        post(&RecoveryWriter::EndSection, list.count());
    }
    return false;
}

void Recovery::append(const QByteArray& bytes) {
    const bool isFull = m_writer->Announce(bytes.size()) > MostWaiting;
    m_turns.setInterval(isFull ? WaitMilliseconds : 0);
    post(&RecoveryWriter::Append, bytes);
}

void Recovery::goOn(int milliseconds) {
    if (milliseconds > 0 && m_writer->GetWaiting() > MostWaiting)
        return;
    if (!m_walk && !nextList())
        return finishRound();
    const bool isDone = m_walk->GoOn(milliseconds);
    append(m_walk->TakeBytes());
    if (!isDone)
        return;
    post(&RecoveryWriter::EndSection, m_walk->EntryCount());
    m_walk.reset();
}

void Recovery::finishRound() {
    m_turns.stop();
    if (m_writing.empty())
        post(&RecoveryWriter::Remove);
    else
        post(&RecoveryWriter::Commit);
}

/// The round is on the disk, or has failed; what was there before is there still.
void Recovery::ended(const QString& failure) {
    m_isRunning = false;
    if (failure.isEmpty()) {
        m_kept = m_writing;
        m_told.clear();
        for (const RecoveryDone& section : std::exchange(m_replacing, {}))
            section.Close();
        emit Written();
    } else {
        m_changed.insert(m_writing.begin(), m_writing.end()); // the file before may be the one that failed
        if (std::exchange(m_told, failure) != failure)
            Problems::Report("recovery", Problem::FromText(failure));
        emit Failed(failure);
    }
    if (!m_replaced.empty())
        schedule(0);
    else if (!m_changed.empty() || !m_replacing.empty())
        schedule(m_interval);
}

bool Recovery::WriteNow() {
    for (int round = 0; round < 2; ++round) { // one that runs may have passed by what is new
        m_due.stop();
        beginRound();
        while (m_turns.isActive())
            goOn(0);
        QMetaObject::invokeMethod(
            m_writer, [] {}, Qt::BlockingQueuedConnection);
        QCoreApplication::sendPostedEvents(this, QEvent::MetaCall);
        if (m_changed.empty())
            break;
    }
    m_staysAtEnd = true;
    return m_told.isEmpty() && m_changed.empty();
}

void Recovery::Replace(const std::vector<RecoveryDone>& sections) {
    m_replaced.insert(m_replaced.end(), sections.begin(), sections.end());
    schedule(0);
}

/// The program may be killed at any moment from here on. What is said holds by the time of the new file, and
/// so begins to hold in the very step that puts it in place.
void Recovery::LetGoWith(const QString& path, const QString& aside) {
    const ListFile* const list = FindListFile(m_lists, ListSaving::Current());
    const std::optional<FileStamps::State> file = FileStamps::State::Of(aside);
    if (!list || !file)
        return;
    const RecoveryPast past{list->key, QFileInfo(path).absoluteFilePath(), file->modified};
    for (const std::vector<RecoveryDone>& sections : {m_replaced, m_replacing})
        for (const RecoveryDone& section : sections)
            if (section.key == list->key)
                RecoveryForm::AddPast(section.path, past);
    if (m_isRunning || m_kept.contains(list->id))
        LongWork::Elsewhere([&] {
            QMetaObject::invokeMethod(
                m_writer, [&] { m_writer->AddPast(past); }, Qt::BlockingQueuedConnection);
        });
}
