#include "workstation/jobpanel.h"

#include "host/freqlist/undohistory.h"
#include "host/gui/colorset.h"
#include "host/gui/guibase.h"
#include "host/report/filestamps.h"
#include "workstation/elidedlabel.h"
#include "workstation/job.h"

#include <QDialog>
#include <QFileInfo>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

constexpr int RefreshMilliseconds = 100;
/// Nobody reads more of a section here.
constexpr int ShownLines = 500;

QString filter() {
    return JobPanel::tr("Jobs (*.pij)");
}

/// How many blanks a line begins with.
qsizetype indent(QStringView line) {
    return std::find_if(line.begin(), line.end(), [](QChar c) { return c != QLatin1Char(' '); }) -
           line.begin();
}

/// The first lines of a section without the indent that it has in the job, which that of its last line tells,
/// and how many more there are.
QString firstLines(QStringView section) {
    const qsizetype outer = indent(section.mid(section.lastIndexOf(QLatin1Char('\n')) + 1));
    QString shown;
    int count = 0;
    while (!section.isEmpty() && count < ShownLines) {
        const qsizetype end = section.indexOf(QLatin1Char('\n'));
        const QStringView line = end < 0 ? section : section.left(end + 1);
        shown += line.mid(std::min(outer, indent(line)));
        section = section.mid(line.size());
        ++count;
    }
    if (!section.isEmpty())
        shown += JobPanel::tr("... and %1 more lines").arg(section.count(QLatin1Char('\n')) + 1);
    return shown;
}

} // namespace

JobPanel::JobPanel(Job& job, QWidget* parent)
    : QWidget(parent),
      m_job(job),
      m_file(new ElidedLabel(this)),
      m_state(new ElidedLabel(this)),
      m_save(new QToolButton(this)),
      m_sectionWindow(new QDialog(this)),
      m_section(new QPlainTextEdit(m_sectionWindow)) {
    auto* show = new QToolButton(this);
    show->setText(tr("Show section..."));
    show->setToolTip(tr("Show the memory-scan section that the channels make"));
    m_save->setText(tr("Save"));
    for (QToolButton* button : {m_save, show})
        button->setFocusPolicy(Qt::TabFocus);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(6, 2, 6, 2);
    layout->addWidget(m_file);
    layout->addWidget(m_state, 1);
    layout->addWidget(m_save);
    layout->addWidget(show);
    m_file->setTextFormat(Qt::PlainText);
    m_state->setObjectName(QStringLiteral("JobState"));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    makeSectionWindow();
    connect(m_save, &QToolButton::clicked, this, &JobPanel::Save);
    connect(show, &QToolButton::clicked, this, &JobPanel::ShowSection);
    m_refresh.setSingleShot(true);
    m_refresh.setInterval(RefreshMilliseconds);
    connect(&m_refresh, &QTimer::timeout, this, &JobPanel::showJob);
    connect(&job, &Job::Changed, &m_refresh, qOverload<>(&QTimer::start));
    showJob();
}

void JobPanel::makeSectionWindow() {
    m_sectionWindow->setWindowTitle(tr("Memory-Scan Section of the Job"));
    m_sectionWindow->resize(640, 480);
    m_section->setObjectName(QStringLiteral("JobSection"));
    m_section->setAccessibleName(m_sectionWindow->windowTitle());
    m_section->setReadOnly(true);
    m_section->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_section->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    auto* layout = new QVBoxLayout(m_sectionWindow);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_section);
}

void JobPanel::ShowSection() {
    m_sectionWindow->show();
    m_sectionWindow->raise();
    fillSection();
}

void JobPanel::showEvent(QShowEvent* event) {
    showJob();
    QWidget::showEvent(event);
}

QString JobPanel::stateText() const {
    switch (m_job.GetFileState()) {
    case Job::FileState::None:
        return m_job.IsModified() ? tr("The channels are in no job yet") : QString();
    case Job::FileState::Same:
        return tr("is up to date");
    case Job::FileState::Older:
        return tr("has unsaved changes");
    case Job::FileState::Changed:
        return tr("was changed by another program");
    case Job::FileState::Gone:
        return tr("is gone");
    }
    return QString();
}

void JobPanel::showJob() {
    const QString& fileName = m_job.GetFileName();
    m_file->setText(fileName.isEmpty() ? tr("No job is open") : QFileInfo(fileName).fileName());
    m_file->setToolTip(fileName);
    m_state->setText(stateText());
    const bool good = m_job.GetFileState() == Job::FileState::Same;
    QPalette colors = palette();
    colors.setColor(QPalette::WindowText,
                    ColorSet::Instance()
                        .GetColorDefinition(good ? IColorBase::GOOD_TEXT : IColorBase::WARNING_TEXT)
                        .GetColor());
    m_state->setPalette(colors);
    m_state->setVisible(!m_state->text().isEmpty());
    m_state->setToolTip(m_state->text());
    m_save->setEnabled(m_whyOff.isEmpty() && (!fileName.isEmpty() || m_job.IsModified()));
    m_save->setToolTip(m_whyOff.isEmpty() ? tr("Save the job") : m_whyOff);
    fillSection();
}

void JobPanel::SetWhyOff(const QString& reason) {
    m_whyOff = reason;
    showJob();
}

void JobPanel::fillSection() {
    if (!m_sectionWindow->isVisible())
        return;
    const QString section = firstLines(m_job.GetSection());
    if (section != m_section->toPlainText())
        m_section->setPlainText(section);
}

void JobPanel::AskAndOpen() {
    const QString start =
        m_job.GetFileName().isEmpty() ? GuiBase::Instance().GetCurrentDirectory() : m_job.GetFileName();
    const QString path = QFileDialog::getOpenFileName(this, tr("Open Job"), start, filter(), nullptr,
                                                      GuiBase::Instance().UseNativeDialogs());
    if (!path.isEmpty())
        Open(path);
}

bool JobPanel::Open(const QString& path) {
    if (!MayLeave())
        return false;
    UndoHistory::Instance().BeginAnew(); // a job that was saved stays so when the opening is undone
    return m_job.Open(path);
}

bool JobPanel::Save() {
    if (m_job.GetFileName().isEmpty())
        return SaveAs();
    if (m_job.GetFileState() == Job::FileState::Changed && FileStamps::IsChanged(m_job.GetFileName())) {
        if (QMessageBox::question(this, tr("Save Job"),
                                  tr("Another program changed the file. Replace what it wrote?")) !=
            QMessageBox::Yes)
            return false;
        FileStamps::NoteRead(m_job.GetFileName()); // the operator knows of what stands there
    }
    return m_job.Save();
}

bool JobPanel::SaveAs() {
    const QString path = QFileDialog::getSaveFileName(this, tr("Save Job As"), m_job.GetFileName(), filter(),
                                                      nullptr, GuiBase::Instance().UseNativeDialogs());
    return !path.isEmpty() && m_job.SaveAs(path);
}

QString JobPanel::question() const {
    const QString& fileName = m_job.GetFileName();
    return fileName.isEmpty()
               ? tr("The memory channels are in no job. Save them in one?")
               : tr("The job %1 has unsaved changes. Save them?").arg(QFileInfo(fileName).fileName());
}

bool JobPanel::MayLeave() {
    if (!m_job.HasUnsavedChanges())
        return true;
    const auto answer = QMessageBox::question(this, tr("Unsaved Job"), question(),
                                              QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel,
                                              QMessageBox::Save);
    return answer == QMessageBox::Discard || (answer == QMessageBox::Save && Save());
}
