#include "workstation/fileopener.h"

#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/files/filekind.h"
#include "controls/frequencystore/files/filelook.h"
#include "controls/frequencystore/memory/memorysystemhandler.h"
#include "controls/frequencystore/noi/noifrequencyhandler.h"
#include "controls/frequencystore/targets/targetlisthandler.h"
#include "host/base/longwork.h"
#include "host/base/problems.h"
#include "host/freqlist/undohistory.h"
#include "host/report/filework.h"
#include "interchange/format.h"
#include "workstation/memoryneed.h"

#include <QFileInfo>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QScopedValueRollback>

#include <vector>

namespace {

constexpr char TraceSource[] = "fileopener";

using FileGate::List;

/// A list as its tab calls it, with its node and the kinds of files that it reads.
struct ListRow {
    List list;
    const char* name;
    Node* (*node)();
    std::vector<OwnFile> kinds;
    bool marksEndName; ///< else their marks may stand anywhere in the path
};
const ListRow Lists[] = {
    {List::Targets,
     QT_TRANSLATE_NOOP("FileOpener", "Local TargetList"),
     [] { return TargetListHandler::Instance()->GetItemsRoot(); },
     {OwnFile::Xml, OwnFile::SflLines, OwnFile::LtlLines, OwnFile::Csv},
     false},
    {List::MemoryChannels,
     QT_TRANSLATE_NOOP("FileOpener", "Memory Channels"),
     [] { return MemorySystemHandler::Instance()->GetItemsRoot(); },
     {OwnFile::Xml, OwnFile::SflLines, OwnFile::Job},
     true},
    {List::Noi,
     QT_TRANSLATE_NOOP("FileOpener", "NOI Frequencies"),
     [] { return NOIFrequencyHandler::Instance()->GetItemsRoot(); },
     {OwnFile::Xml, OwnFile::NoiLines, OwnFile::Csv},
     false},
};

const ListRow& rowOf(List list) {
    return *std::find_if(std::begin(Lists), std::end(Lists),
                         [list](const ListRow& row) { return row.list == list; });
}

QString nameOf(List list) {
    return FileOpener::tr(rowOf(list).name);
}

size_t sizeOf(List list) {
    const Node* node = rowOf(list).node();
    return node ? node->ChildCount() : 0;
}

bool readsByName(List list, const QString& path) {
    const ListRow& row = rowOf(list);
    return std::any_of(row.kinds.begin(), row.kinds.end(), [&](OwnFile kind) {
        const char* const mark = RowOf(kind).mark;
        return row.marksEndName ? path.endsWith(QLatin1String(mark)) : PathContains(path, mark);
    });
}

/// What a kind of file is called, and the list that is emptied for it, if any.
struct KindRow {
    FileKind kind;
    const char* name; ///< null for that of the file's format
    std::optional<List> list;
};
constexpr KindRow Kinds[] = {
    {FileKind::Foreign, nullptr, std::nullopt},
    {FileKind::Job, QT_TRANSLATE_NOOP("FileOpener", "a job"), std::nullopt},
    {FileKind::Noi, QT_TRANSLATE_NOOP("FileOpener", "a list of frequencies of interest"), List::Noi},
    {FileKind::Results, QT_TRANSLATE_NOOP("FileOpener", "a list of results"), std::nullopt},
    {FileKind::Sweep, QT_TRANSLATE_NOOP("FileOpener", "a file of power sweeps"), std::nullopt},
    {FileKind::Table, QT_TRANSLATE_NOOP("FileOpener", "a table of another program"), std::nullopt},
    {FileKind::Targets, QT_TRANSLATE_NOOP("FileOpener", "a target list"), List::Targets},
};

const KindRow& rowOf(FileKind kind) {
    return *std::find_if(std::begin(Kinds), std::end(Kinds),
                         [kind](const KindRow& row) { return row.kind == kind; });
}

/// What a file of that kind is, in the operator's words.
QString whatIs(FileKind kind, const QString& path) {
    const char* const name = rowOf(kind).name;
    const Interchange::Format* const format = name ? nullptr : Interchange::FormatOfFile(path);
    return format ? format->Name() : FileOpener::tr(name ? name : "");
}

QString shortName(const QString& path) {
    return QFileInfo(path).fileName();
}

} // namespace

FileOpener::FileOpener(QWidget* window, std::map<FileKind, Read> read)
    : m_window(window),
      m_read(std::move(read)),
      m_availableMemory(AvailableMemory),
      m_guardBefore(FileGate::SetGuard(this)) {}

FileOpener::~FileOpener() {
    FileGate::SetGuard(m_guardBefore);
}

QString FileOpener::FileOf(List list) const {
    const auto found = m_files.find(list);
    return found == m_files.end() ? QString() : found->second;
}

void FileOpener::SetFileOf(List list, const QString& path) {
    UndoHistory::Instance().Add(
        std::make_unique<UndoState>([this, list, kept = FileOf(list), alive = QPointer(this)]() mutable {
            if (!alive)
                return;
            std::swap(m_files[list], kept);
            emit FileChanged(list);
        }));
    m_files[list] = path;
    emit FileChanged(list);
}

bool FileOpener::Open(const QString& path) {
    const OperatorAction action(tr("Open"));
    return WithinMemory(path, false, [&] {
        const KindRow& kind = rowOf(FileKindOf(path));
        if (!kind.list)
            return m_read.at(kind.kind)(path);
        return REPORTGENERATOR::ReadAsWork(
            path, [&] { return MayRead(*kind.list, path) && m_read.at(kind.kind)(path); });
    });
}

bool FileOpener::OpenInPlace(const QString& path) {
    const QScopedValueRollback isDecided(m_isDecided, true);
    return Open(path);
}

bool FileOpener::MayRead(List list, const QString& path) {
    const FileKind kind = FileKindOf(path);
    const bool isReadable = readsByName(list, path) && kind != FileKind::Sweep && kind != FileKind::Foreign;
    if (!isReadable && (kind != FileKind::Targets || readsByName(List::Targets, path)))
        return offerElsewhere(list, path, kind);
    FileLook look;
    const bool hasLooked = REPORTGENERATOR::ReadAsWork(path, [&] {
        LongWork::Elsewhere([&] { look = LookAtFile(path); });
        return true;
    });
    if (!hasLooked)
        return false;
    if (kind == FileKind::Table && !look.refusal.isEmpty())
        return offerElsewhere(list, path, kind);
    const bool namesLine = look.refusal.startsWith(QLatin1String("line "));
    if (!look.refusal.isEmpty() || !isReadable)
        return refuse(TraceSource, list, path, namesLine ? 0 : look.firstProblemLine,
                      look.refusal.isEmpty() ? tr("is of no known kind of file") : look.refusal);
    return mayTake(list, path, look) && mayLeave(list);
}

/// Asks about what can be read and is hardly meant.
bool FileOpener::mayTake(List list, const QString& path, const FileLook& look) const {
    const QString tooLarge = WhyTooLarge(look.rows, m_availableMemory());
    const bool isEmpty = look.rows == 0 && sizeOf(list) == 0;
    QString doubt = tooLarge;
    if (look.frequencies == 0 && !isEmpty && list != List::MemoryChannels)
        doubt = look.rows == 0 ? tr("holds no entries")
                               : tr("%n lines, not one has a frequency", "", static_cast<int>(look.rows));
    if (doubt.isEmpty())
        return true;
    if (!m_attended)
        return refuse(TraceSource, list, path, 0, doubt);
    const QString question = sizeOf(list) == 0 || list == List::MemoryChannels
                                 ? tr("Read it all the same?")
                                 : tr("Read it all the same, in place of the %n entries that are there?", "",
                                      static_cast<int>(sizeOf(list)));
    return ask(QStringLiteral("%1: %2.").arg(shortName(path), doubt), question, tr("Read It"));
}

/// A file of channels is added to what is there.
bool FileOpener::mayLeave(List list) const {
    if (!m_attended || m_isDecided || !m_mayLeave || list == List::MemoryChannels)
        return true;
    const LongWork::Standstill standstill;
    const bool mayLeave = m_mayLeave(list);
    UndoHistory::Instance().BeginAnew(); // a list that was saved stays so when the opening is undone
    return mayLeave;
}

bool FileOpener::offerElsewhere(List list, const QString& path, FileKind kind) {
    const QString name = whatIs(kind, path);
    const QString what = tr("is %1, which %2 does not read").arg(name, nameOf(list));
    if (!m_attended)
        return refuse(TraceSource, list, path, 0, what);
    // The command of the list that asks has to end first.
    if (ask(QStringLiteral("%1 %2.").arg(shortName(path), what), tr("Open it as %1?").arg(name),
            tr("Open It")))
        QMetaObject::invokeMethod(
            this, [this, path] { Open(path); }, Qt::QueuedConnection);
    return false;
}

bool FileOpener::ask(const QString& text, const QString& question, const QString& yes) const {
    const LongWork::Standstill standstill;
    QMessageBox box(QMessageBox::Question, tr("Open File"), text, QMessageBox::Yes | QMessageBox::Cancel,
                    m_window);
    box.setInformativeText(question);
    box.button(QMessageBox::Yes)->setText(yes);
    box.setDefaultButton(QMessageBox::Cancel);
    return box.exec() == QMessageBox::Yes;
}

bool FileOpener::refuse(TracePlace place, List list, const QString& path, qint64 line,
                        const QString& reason) const {
    Problems::Report(place, {path, line, tr("%1; %2 stays as it is").arg(reason, nameOf(list))});
    return false;
}

void FileOpener::WasRead(List list, const QString& path, bool read) {
    const QString count = tr("%n entries", "", static_cast<int>(sizeOf(list)));
    // A file of channels is added to what is there.
    const bool replaces = list != List::MemoryChannels;
    if (read) {
        if (replaces)
            SetFileOf(list, path);
        emit Told(replaces ? tr("%1: %2").arg(shortName(path), count)
                           : tr("%1 was added: %2").arg(shortName(path), count));
        return;
    }
    if (sizeOf(list) == 0 && replaces)
        SetFileOf(list, QString());
    const QString shown = shortName(FileOf(list));
    emit Told(
        sizeOf(list) == 0 ? tr("%1 was not read: %2 is empty").arg(shortName(path), nameOf(list))
        : shown.isEmpty()
            ? tr("%1 was not read: %2 still shows %3").arg(shortName(path), nameOf(list), count)
            : tr("%1 was not read: %2 still shows %3, %4").arg(shortName(path), nameOf(list), shown, count));
}

void FileOpener::WasWritten(List list, const QString& path) {
    SetFileOf(list, path);
}
