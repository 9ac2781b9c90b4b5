#include "workstation/job.h"

#include "controls/frequencystore/common/paths.h"
#include "controls/frequencystore/memory/jobfile.h"
#include "controls/frequencystore/memory/memorysystemhandler.h"
#include "host/base/longwork.h"
#include "host/freqlist/undohistory.h"
#include "host/valuetree/tree.h"

#include <QFile>
#include <QFileInfo>
#include <QPointer>

namespace {

QString newJob(const QString& section) {
    return QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<JOB>\n <SUBJOB>\n  <TDS>\n") +
           section.trimmed() + QStringLiteral("\n  </TDS>\n </SUBJOB>\n</JOB>");
}

MemorySystemHandler& channels() {
    return *MemorySystemHandler::Instance();
}

} // namespace

Job::Job() {
    m_node = Tree::Instance()->MakeNode(Paths::Job);
    m_text = GetOrCreateValue<Value<QString>>(Paths::JobText);
    m_section = GetOrCreateValue<Value<QString>>(Paths::JobSection);
    for (const QLatin1String flag : {Paths::JobSave, Paths::SuppressRestart})
        GetOrCreateValue<Value<bool>>(flag);
    m_text->AddObserver(this);
    m_section->AddObserver(this);
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, [this] {
        LongWork::WhenDone([job = QPointer<Job>(this)] {
            if (!job)
                return;
            job->watch();
            emit job->Changed();
        });
    });
}

Job::~Job() {
    if (Node* node = m_node.get())
        node->GetParentNode()->DeleteNode(node);
}

void Job::Update(Observable*, TChangeCode code) {
    if (code == TChangeCode::ValueChanged)
        emit Changed();
}

/// A file that was replaced is no longer watched until it is watched anew.
void Job::watch() {
    if (const QStringList files = m_watcher.files(); !files.isEmpty())
        m_watcher.removePaths(files);
    if (QFileInfo::exists(m_fileName))
        m_watcher.addPath(m_fileName);
}

void Job::noteSaved(const QString& fileName) {
    m_fileName = fileName;
    m_savedText = m_text->GetValue();
    m_saved = stampOfFile();
    m_isMarked = false;
    watch();
    emit Changed();
}

/// Undo of opening a job takes back which file it stands in, too; the channels know a file of their own.
void Job::keepFileForUndo(const QString& channelsFile) {
    UndoHistory::Instance().Add(std::make_unique<UndoState>(
        [this, file = m_fileName, text = m_savedText, saved = m_saved, foreign = m_foreign,
         isMarked = m_isMarked, ofChannels = channelsFile, alive = QPointer(this)]() mutable {
            if (!alive)
                return;
            std::swap(m_fileName, file);
            std::swap(m_savedText, text);
            std::swap(m_saved, saved);
            std::swap(m_foreign, foreign);
            std::swap(m_isMarked, isMarked);
            const QString present = channels().GetJobfileName();
            channels().SetJobfileName(std::exchange(ofChannels, present));
            watch();
            emit Changed();
        }));
}

bool Job::Open(const QString& path) {
    const OperatorAction action(tr("Open Job"));
    const QString fileName = QFileInfo(path).absoluteFilePath();
    const QString before = channels().GetJobfileName();
    if (!channels().OpenJobFile(fileName))
        return false;
    keepFileForUndo(before);
    noteSaved(fileName);
    return true;
}

bool Job::Save() {
    return !m_fileName.isEmpty() && SaveAs(m_fileName);
}

bool Job::SaveAs(const QString& path) {
    channels().UpdateJobFileEntries();
    if (m_text->GetValue().isEmpty())
        m_text->SetValue(newJob(channels().GetData4JobFile()));
    const QString fileName = QFileInfo(path).absoluteFilePath();
    const bool saved = channels().SaveJobFile(fileName);
    if (saved)
        noteSaved(channels().GetJobfileName());
    return saved;
}

bool Job::SaveCopy(const QString& path) {
    channels().UpdateJobFileEntries();
    const QString& text = m_text->GetValue();
    return !WriteJobText(path, text.isEmpty() ? newJob(channels().GetData4JobFile()) : text).isEmpty();
}

bool Job::TakeContent(const QString& path) {
    if (!channels().OpenJobFile(path))
        return false;
    channels().SetJobfileName(m_fileName);
    emit Changed();
    return true;
}

void Job::LeaveFile() {
    keepFileForUndo(channels().GetJobfileName());
    channels().SetJobfileName(QString());
    m_fileName.clear();
    m_savedText.clear();
    m_saved = Stamp();
    watch();
    emit Changed();
}

QString Job::TextToSave() const {
    if (!m_text->GetValue().isEmpty() || !IsModified())
        return m_text->GetValue();
    return newJob(m_section->GetValue());
}

bool Job::HasUnsavedChanges() {
    channels().UpdateJobFileEntries();
    GetFileState(); // sees what the lists have saved
    return IsModified();
}

void Job::Revert() {
    if (!channels().IsChangedSinceJobSave() && m_text->GetValue() == m_savedText)
        return;
    // Whoever observes the text reads it again, also when it is what it was.
    if (m_text->GetValue() == m_savedText)
        m_text->HasChanged(TChangeCode::ValueChanged);
    else
        m_text->SetValue(m_savedText);
}

Job::Stamp Job::stampOfFile() const {
    const QFileInfo info(m_fileName);
    return m_fileName.isEmpty() || !info.exists() ? Stamp() : Stamp{info.size(), info.lastModified()};
}

bool Job::fileHoldsText() const {
    QFile file(m_fileName);
    return file.open(QIODevice::ReadOnly) && file.readAll() == m_text->GetValue().toUtf8() + '\n';
}

Job::FileState Job::GetFileState() {
    if (m_fileName.isEmpty())
        return FileState::None;
    const Stamp stamp = stampOfFile();
    if (stamp == Stamp())
        return FileState::Gone;
    if (stamp != m_saved && stamp != m_foreign) {
        // The lists save the job, too.
        if (fileHoldsText()) {
            m_savedText = m_text->GetValue();
            m_saved = stamp;
            m_isMarked = false;
        } else {
            m_foreign = stamp;
        }
    }
    if (stamp != m_saved)
        return FileState::Changed;
    return m_text->GetValue() == m_savedText ? FileState::Same : FileState::Older;
}

bool Job::IsModified() const {
    if (m_text->GetValue().isEmpty())
        return m_section->GetValue().contains(QLatin1String("<MEMORYSCAN_CHANNEL"));
    return m_isMarked || m_text->GetValue() != m_savedText;
}

void Job::MarkChanged() {
    m_isMarked = true;
    emit Changed();
}

QStringView Job::GetSection() const {
    const QStringView text(m_text->GetValue());
    if (text.isEmpty())
        return m_section->GetValue();
    static constexpr QLatin1String End("</MEMORYSCAN>");
    qsizetype start = 0;
    do {
        start = text.indexOf(QLatin1String("<MEMORYSCAN"), start + 1);
    } while (start >= 0 && start + 11 < text.size() && text[start + 11] == QLatin1Char('_'));
    const qsizetype end = start < 0 ? -1 : text.indexOf(End, start);
    return end < 0 ? QStringView() : text.mid(start, end + End.size() - start);
}
