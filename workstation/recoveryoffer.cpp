#include "workstation/recoveryoffer.h"

#include "host/base/datetime.h"
#include "host/base/problems.h"
#include "host/freqlist/freqstore.h"
#include "host/freqlist/undohistory.h"
#include "host/gui/guibase.h"
#include "host/report/filestamps.h"
#include "host/report/outputfile.h"
#include "host/valuetree/operatoraction.h"
#include "workstation/directorylock.h"
#include "workstation/recovery.h"

#include <QDir>
#include <QFileDialog>
#include <QLockFile>
#include <QTemporaryDir>

#include <algorithm>

namespace {

constexpr char TraceSource[] = "recoveryoffer";

/// Passes on what is thrown while an operator's action runs as a problem; false then.
template <typename Act>
bool attempt(Act act) {
    try {
        return act();
    } catch (const RGException& exception) {
        Problems::Report(TraceSource, Problem::FromText(exception.GetErrorText()));
        return false;
    }
}

/// What says nothing is not asked about at each start.
void putAside(const QString& path) {
    const QString aside = path + QStringLiteral(".bad");
    QFile::remove(aside);
    if (QFile::rename(path, aside))
        Problems::Report(TraceSource, {aside, 0, RecoveryOffer::tr("holds nothing that could be restored")});
}

} // namespace

RecoveryOffer::RecoveryOffer(const QString& dataFolder, const ListFiles& lists, Recovery& recovery)
    : m_recovery(recovery) {
    const QDir folder(QDir(dataFolder).filePath(QLatin1String(RecoveryForm::FolderName)));
    const QStringList names =
        folder.entryList({QLatin1Char('*') + QLatin1String(RecoveryForm::Suffix)}, QDir::Files);
    for (const QString& name : names) {
        const QString path = folder.absoluteFilePath(name);
        if (path == recovery.GetFileName())
            continue;
        std::unique_ptr<QLockFile> lock = TakeLockOfEnded(path + QStringLiteral(".lock"));
        if (!lock)
            continue;
        m_files.push_back(std::make_unique<File>(File{RecoveryReader(path), std::move(lock), 0}));
        takeRows(lists, *m_files.back());
    }
    std::ranges::stable_sort(m_rows, std::greater(), [](const Row& row) { return row.section->head.time; });
}

RecoveryOffer::~RecoveryOffer() = default;

void RecoveryOffer::takeRows(const ListFiles& lists, File& file) {
    const QString& path = file.reader.GetPath();
    std::vector<RecoveryDone> saved;
    bool isAnyPast = false;
    for (const RecoverySection& section : file.reader.GetSections()) {
        const auto list = std::ranges::find(lists, section.head.key, &ListFile::key);
        if (section.isPast) {
            isAnyPast = true;
            if (section.savedIn.isEmpty())
                continue;
            saved.push_back({path, section.head.key, false});
            if (list != lists.end())
                m_saved.emplace_back(&*list, section.savedIn);
            continue;
        }
        if (!section.isWhole && section.entries == 0)
            continue;
        ++file.left;
        if (list != lists.end()) {
            m_rows.push_back({&file, &section, &*list});
            continue;
        }
        // a plug-in's that is not there this time
        Problems::Report(TraceSource,
                         {path, 0, tr("holds unsaved work of %1, which is not there").arg(section.head.key)});
    }
    if (file.left == 0 && !isAnyPast)
        putAside(path);
    else if (file.left == 0)
        QFile::remove(path);
    else
        for (const RecoveryDone& section : saved) // whatever becomes of the files that they were saved in
            section.Close();
}

void RecoveryOffer::OpenSaved() const {
    for (const auto& [list, path] : m_saved)
        if (list->writeCopy && list->file().isEmpty() && list->count() == 0)
            list->open(path);
}

std::vector<RecoveryRow> RecoveryOffer::describe() const {
    std::vector<RecoveryRow> rows;
    for (const Row& row : m_rows) {
        const RecoveryHead& head = row.section->head;
        const std::optional<FileStamps::State> file = FileStamps::State::Of(head.file);
        rows.push_back({row.list->name, row.section->entries, row.section->isWhole, head.time, head.file,
                        file && file->modified != head.fileTime});
    }
    return rows;
}

QString RecoveryOffer::GetText() const {
    QStringList parts;
    for (const RecoveryRow& row : describe())
        parts << tr("%1: %n entries, written %2 UTC", nullptr, static_cast<int>(row.entries))
                     .arg(row.list, Quor::DateTime(static_cast<quint64>(row.time)).toString(0));
    return parts.join(QStringLiteral("; "));
}

void RecoveryOffer::Ask(QWidget* window) {
    RecoveryDialog dialog(
        describe(), [&](size_t row) { saveAs(window, m_rows[row]); }, window);
    const int answer = dialog.exec();
    const std::vector<size_t> rows = dialog.GetChecked();
    if (answer == RecoveryDialog::Restore)
        return restore(rows);
    if (answer != RecoveryDialog::Discard)
        return;
    for (const size_t row : rows)
        doneWith(m_rows[row]).Close();
}

RecoveryDone RecoveryOffer::doneWith(const Row& row) {
    return {row.file->reader.GetPath(), row.section->head.key, --row.file->left == 0};
}

/// What was restored goes when it is in the recovery file of this process.
void RecoveryOffer::restore(const std::vector<size_t>& rows) {
    std::vector<RecoveryDone> done;
    for (const size_t row : rows)
        if (restore(m_rows[row]))
            done.push_back(doneWith(m_rows[row]));
    m_recovery.Replace(done);
}

bool RecoveryOffer::restore(const Row& row) {
    return attempt([&] {
        const OperatorAction action(tr("Restore"));
        const QString& file = row.section->head.file;
        if (!file.isEmpty() && file != row.list->file() && QFileInfo(file).isFile())
            row.list->open(file);
        const QTemporaryDir folder;
        const QString copy = folder.filePath(QStringLiteral("recovered") + row.section->head.suffix);
        row.file->reader.Extract(*row.section, copy);
        if (!UndoHistory::Instance().DoWhole([&] { return row.list->takeContent(copy); }))
            return false;
        if (row.list->leaveFile && file != row.list->file())
            row.list->leaveFile(); // it is another list's
        emit FreqStore::Instance().Told(
            tr("%1: %n entries restored", "", static_cast<int>(row.list->count())).arg(row.list->name));
        return true;
    });
}

void RecoveryOffer::saveAs(QWidget* window, const Row& row) {
    const QString suffix = row.section->head.suffix;
    QFileDialog dialog(window, tr("Save Unsaved List As"), GuiBase::Instance().GetCurrentDirectory(),
                       QStringLiteral("%1 (*%2)").arg(row.list->name, suffix));
    dialog.setOptions(GuiBase::Instance().UseNativeDialogs());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(suffix.mid(1));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return;
    const QTemporaryDir folder;
    const QString copy = folder.filePath(QStringLiteral("recovered") + suffix);
    const QString path = dialog.selectedFiles().constFirst();
    const bool isExtracted = attempt([&] {
        row.file->reader.Extract(*row.section, copy);
        return true;
    });
    if (isExtracted)
        (void)REPORTGENERATOR::WriteCopy(copy, path); // which tells its failures
}
