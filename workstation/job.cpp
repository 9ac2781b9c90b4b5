#include "workstation/job.h"

#include "host/base/problems.h"
#include "host/report/xmlscanner.h"
#include "host/valuetree/tree.h"

#include <QFile>
#include <QFileInfo>

namespace {

using REPORTGENERATOR::XmlScanner;

constexpr char JobPath[] = "/JEN/Job";
constexpr char TextName[] = "File";
constexpr char SectionName[] = "MemoryScan";
constexpr char SaveName[] = "Save";
constexpr char SuppressRestartName[] = "SuppressRestart";

QString path(const char* name) {
    return QString::fromLatin1(JobPath) + QLatin1Char('/') + QString::fromLatin1(name);
}

template <typename V>
V* makeValue(Node& node, const char* name) {
    auto* value = new V;
    node.AddValue(QString::fromLatin1(name), value);
    return value;
}

/// What a job is made of, counted while its file is checked.
struct JobParts {
    int subJobs = 0;
    int sections = 0; ///< sub-jobs' places of memory channels
};

/// Throws RGException with file, line and reason when the file is not well formed.
JobParts checkJob(QFile& file) {
    XmlScanner scanner(file, file.fileName());
    JobParts parts;
    std::vector<std::string> open;
    for (auto token = scanner.Next(); token != XmlScanner::Token::End; token = scanner.Next()) {
        if (token == XmlScanner::Token::EndElement)
            open.pop_back();
        if (token != XmlScanner::Token::StartElement)
            continue;
        const size_t depth = open.size();
        open.emplace_back(scanner.Name());
        if (open.back() == "SUBJOB")
            ++parts.subJobs;
        else if (depth >= 2 && open.back() == "MEMORYSCAN" && open[depth - 1] == "TDS" &&
                 open[depth - 2] == "SUBJOB")
            ++parts.sections;
    }
    return parts;
}

QByteArray readAll(const QString& fileName) {
    QFile file(fileName);
    REPORTGENERATOR::OpenForReading(file);
    return file.readAll();
}

/// A job's file ends with a line feed of its own.
QString textOf(const QByteArray& bytes) {
    QString text = QString::fromUtf8(bytes);
    if (text.startsWith(QChar::ByteOrderMark))
        text.remove(0, 1);
    if (text.endsWith(QLatin1Char('\n')))
        text.chop(1);
    return text;
}

QByteArray bytesOf(const QString& text) {
    return text.toUtf8() + '\n';
}

QString newJob(const QString& section) {
    return QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<JOB>\n <SUBJOB>\n  <TDS>\n") +
           section.trimmed() + QStringLiteral("\n  </TDS>\n </SUBJOB>\n</JOB>");
}

void report(unsigned short line, const QString& file, const QString& reason) {
    Problems::Report("job", line, {file, 0, reason});
}

} // namespace

QString Job::TextPath() {
    return path(TextName);
}

QString Job::SectionPath() {
    return path(SectionName);
}

QString Job::SavePath() {
    return path(SaveName);
}

Job::Job() {
    Node* node = Tree::Instance()->MakeNode(QString::fromLatin1(JobPath));
    m_node = node;
    m_text = makeValue<Value<QString>>(*node, TextName);
    m_section = makeValue<Value<QString>>(*node, SectionName);
    m_save = makeValue<Value<bool>>(*node, SaveName);
    m_suppressRestart = makeValue<Value<bool>>(*node, SuppressRestartName);
    m_text->AddObserver(this);
    m_section->AddObserver(this);
    m_suppressRestart->AddObserver(this);
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, [this] {
        if (QFileInfo::exists(m_fileName)) // a file that was replaced is no longer watched
            m_watcher.addPath(m_fileName);
        emit Changed();
    });
}

Job::~Job() {
    m_text->DeleteObserver(this);
    m_section->DeleteObserver(this);
    m_suppressRestart->DeleteObserver(this);
    if (Node* node = m_node.get())
        node->GetParentNode()->DeleteNode(node);
}

void Job::Update(Observable* subject, TChangeCode code) {
    if (code != TChangeCode::ValueChanged)
        return;
    m_touched = m_touched || subject != static_cast<Observable*>(m_text);
    emit Changed();
}

bool Job::Open(const QString& path) {
    const QString fileName = QFileInfo(path).absoluteFilePath();
    QString text;
    JobParts parts;
    try {
        QFile file(fileName);
        REPORTGENERATOR::OpenForReading(file);
        parts = checkJob(file);
        text = textOf(readAll(fileName));
    } catch (const RGException& exception) {
        Problems::Report("job", 60, Problem::FromText(exception.GetErrorText()));
        return false;
    }
    if (parts.subJobs == 0) {
        report(64, fileName, tr("this is no job: it has no SUBJOB"));
        return false;
    }
    if (parts.sections == 0)
        report(68, fileName,
               tr("no SUBJOB has a MEMORYSCAN in a TDS, so the job cannot keep memory channels"));
    setFileName(fileName);
    setText(text);
    emit Changed();
    return true;
}

/// The text as it stands in the file. Its observers read it again even when it is what they had.
void Job::setText(const QString& text) {
    m_savedText = text;
    m_stamp = stampOfFile();
    if (text == m_text->GetValue())
        m_text->HasChanged(TChangeCode::ValueChanged, this);
    else
        m_text->SetValue(text, this);
    m_touched = false;
}

void Job::setFileName(const QString& path) {
    if (!m_watcher.files().isEmpty())
        m_watcher.removePaths(m_watcher.files());
    m_fileName = path;
    if (QFileInfo::exists(path))
        m_watcher.addPath(path);
    emit FileNamed(path);
}

Job::Stamp Job::stampOfFile() const {
    const QFileInfo info(m_fileName);
    return m_fileName.isEmpty() || !info.exists() ? Stamp() : Stamp{info.size(), info.lastModified()};
}

bool Job::writeAndCompare() {
    m_save->HasChanged(TChangeCode::Announcement);
    try {
        if (readAll(m_fileName) != bytesOf(m_text->GetValue())) {
            report(91, m_fileName, tr("the job was not written"));
            return false;
        }
    } catch (const RGException& exception) {
        Problems::Report("job", 95, Problem::FromText(exception.GetErrorText()));
        return false;
    }
    m_savedText = m_text->GetValue();
    m_stamp = stampOfFile();
    m_touched = false;
    return true;
}

bool Job::Save() {
    const bool saved = !m_fileName.isEmpty() && writeAndCompare();
    if (saved)
        setFileName(m_fileName);
    emit Changed();
    return saved;
}

bool Job::SaveAs(const QString& path) {
    emit ChangesWanted();
    const QString old = m_fileName;
    setFileName(QFileInfo(path).absoluteFilePath());
    if (m_text->GetValue().isEmpty())
        m_text->SetValue(newJob(m_section->GetValue()));
    if (Save())
        return true;
    setFileName(old);
    emit Changed();
    return false;
}

void Job::Revert() {
    if (m_touched || m_text->GetValue() != m_savedText)
        setText(m_savedText);
    emit Changed();
}

Job::FileState Job::GetFileState() const {
    if (m_fileName.isEmpty())
        return FileState::None;
    const Stamp stamp = stampOfFile();
    if (stamp == Stamp())
        return FileState::Gone;
    if (stamp != m_stamp)
        return FileState::Changed;
    return m_text->GetValue() == m_savedText ? FileState::Same : FileState::Older;
}

bool Job::IsModified() const {
    if (m_fileName.isEmpty())
        return m_touched && m_section->GetValue().contains(QLatin1String("<MEMORYSCAN_CHANNEL"));
    return m_text->GetValue() != m_savedText;
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
