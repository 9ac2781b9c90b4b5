#include "workstation/diskwatch.h"

#include "controls/frequencystore/files/filelook.h"
#include "controls/frequencystore/merge/listmerge.h"
#include "host/base/problems.h"
#include "host/freqlist/freqstore.h"

#include <QApplication>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>
#include <QScopeGuard>

namespace {

constexpr int SettleMilliseconds = 300;

QString shortName(const QString& path) {
    return QFileInfo(path).fileName();
}

} // namespace

DiskWatch::DiskWatch(QWidget* window, const ListFiles& lists) : m_window(window), m_lists(lists) {
    m_settle.setSingleShot(true);
    m_settle.setInterval(SettleMilliseconds);
    connect(&m_settle, &QTimer::timeout, this, &DiskWatch::look);
    // A file that is replaced is another one: only its folder tells.
    for (const auto signal : {&QFileSystemWatcher::fileChanged, &QFileSystemWatcher::directoryChanged})
        connect(&m_watcher, signal, &m_settle, qOverload<>(&QTimer::start));
}

void DiskWatch::Follow() {
    QStringList paths;
    for (const ListFile& list : m_lists) {
        const QString path = list.file();
        if (path.isEmpty())
            continue;
        paths << path << QFileInfo(path).path();
        const std::optional<FileStamps::State> state = FileStamps::State::Of(path);
        if (m_seen.try_emplace(path, state).first->second != state)
            m_settle.start(); // it changed while no list had it
    }
    const QStringList before = m_watcher.files() + m_watcher.directories();
    for (const QString& path : before)
        if (!paths.contains(path))
            m_watcher.removePath(path);
    for (const QString& path : paths)
        if (QFileInfo::exists(path))
            m_watcher.addPath(path); // one that is watched already stays so
}

void DiskWatch::look() {
    if (m_isAsking || QApplication::activeModalWidget()) // what a dialog is about stays as it is
        return m_settle.start();
    m_isAsking = true;
    const auto done = qScopeGuard([this] { m_isAsking = false; });
    for (const ListFile& list : m_lists)
        lookAt(list);
    Follow();
}

void DiskWatch::lookAt(const ListFile& list) {
    const QString path = list.file();
    const auto seen = m_seen.find(path);
    const std::optional<FileStamps::State> state = FileStamps::State::Of(path);
    if (path.isEmpty() || seen == m_seen.end() || seen->second == state)
        return;
    seen->second = state;
    if (!state) {
        list.markChanged();
        emit Told(tr("%1 is gone from the disk; %2 is in no file now").arg(shortName(path), list.name));
        return;
    }
    if (!FileStamps::IsChanged(path))
        return;
    if (m_mayAsk && m_mayAsk())
        return ask(list, path);
    Problems::Report("diskwatch", {path, 0, tr("was changed by another program")});
}

void DiskWatch::ask(const ListFile& list, const QString& path) {
    while (!askOnce(list, path)) { // a merge that came to nothing is no answer
    }
}

bool DiskWatch::askOnce(const ListFile& list, const QString& path) {
    const qint64 rows = LookAtFile(path).rows;
    QMessageBox box(QMessageBox::Question, tr("File Changed"),
                    tr("Another program has changed %1.").arg(shortName(path)), QMessageBox::NoButton,
                    m_window);
    QString text = tr("The file holds %n entries now.", nullptr, static_cast<int>(rows));
    text += QLatin1Char(' ') + tr("The list holds %n entries.", nullptr, static_cast<int>(list.count()));
    if (list.isUnsaved())
        text += QLatin1Char(' ') + tr("The list has changes that are in no file; Reload loses them.");
    box.setInformativeText(text);
    const auto add = [&box](QMessageBox::StandardButton id, const QString& name, const QString& tip) {
        QPushButton* button = box.addButton(id);
        button->setText(name);
        button->setToolTip(tip);
        return button;
    };
    QPushButton* const reload =
        add(QMessageBox::Yes, tr("&Reload"), tr("Read the file in place of the list"));
    QPushButton* const keep =
        add(QMessageBox::No, tr("&Keep Mine"), tr("The list stays, and replaces the file when it is saved"));
    const QString whyNoMerge =
        ListMerge::WhyOff(FreqStore::Instance().GetFrequencies(static_cast<unsigned>(list.id)));
    if (m_merge && whyNoMerge.isEmpty())
        add(QMessageBox::Apply, tr("&Merge..."),
            tr("See what the file's entries would do to the list, and choose for each"));
    box.setDefaultButton(list.isUnsaved() ? keep : reload);
    box.setEscapeButton(keep);
    switch (box.exec()) {
    case QMessageBox::Yes:
        list.open(path);
        return true;
    case QMessageBox::Apply:
        if (!m_merge(list, path))
            return false;
        keepMine(list, path);
        return true;
    default:
        if (box.clickedButton() == keep)
            keepMine(list, path);
        return true;
    }
}

/// What stands in the file is known to the operator: the next save replaces it without another question.
void DiskWatch::keepMine(const ListFile& list, const QString& path) {
    FileStamps::NoteRead(path);
    list.markChanged();
}

DiskWatch::Answer DiskWatch::AskBeforeSave(const QString& path) {
    if (!m_mayAsk || !m_mayAsk())
        return Answer::WriteBeside;
    QMessageBox box(QMessageBox::Warning, tr("File Changed"),
                    tr("Another program has changed %1 since it was read.").arg(shortName(path)),
                    QMessageBox::NoButton, m_window);
    box.setInformativeText(tr("Replace what it wrote by the list? It is kept as a version of the file."));
    box.addButton(QMessageBox::Yes)->setText(tr("&Replace It"));
    box.addButton(QMessageBox::No)->setText(tr("Save &Beside It"));
    box.addButton(QMessageBox::Cancel);
    box.setDefaultButton(QMessageBox::No);
    switch (box.exec()) {
    case QMessageBox::Yes:
        return Answer::Replace;
    case QMessageBox::No:
        return Answer::WriteBeside;
    default:
        return Answer::Cancel;
    }
}
