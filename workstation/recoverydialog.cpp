#include "workstation/recoverydialog.h"

#include "controls/frequencystore/files/filelook.h"
#include "host/base/datetime.h"
#include "host/report/filestamps.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QMessageBox>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

enum Column { List, Entries, Written, File, FileEntries, FileTime };
constexpr QSize Roomy(820, 320);
constexpr qint64 NanosecondsPerMicrosecond = 1000;

QString timeText(qint64 microseconds) {
    return Quor::DateTime(static_cast<quint64>(microseconds)).toString(0);
}

} // namespace

RecoveryDialog::RecoveryDialog(const std::vector<RecoveryRow>& rows, std::function<void(size_t row)> saveAs,
                               QWidget* parent)
    : QDialog(parent), m_table(new QTreeWidget), m_buttons(new QDialogButtonBox) {
    setWindowTitle(tr("Unsaved Work"));
    resize(Roomy);
    auto* layout = new QVBoxLayout(this);
    auto* text =
        new QLabel(tr("The program has ended without saving these lists. Restore puts the checked ones in "
                      "place of the lists that are shown; their files stay as they are until you save."));
    text->setWordWrap(true);
    layout->addWidget(text);
    m_table->setAccessibleName(windowTitle());
    m_table->setRootIsDecorated(false);
    m_table->setAllColumnsShowFocus(true);
    // The frame of an empty box is drawn in shades of the window's colour: on a dark one it would be none.
    QPalette colors = m_table->palette();
    colors.setColor(QPalette::Window, colors.color(QPalette::Text));
    m_table->setPalette(colors);
    m_table->header()->setPalette(palette());
    m_table->setHeaderLabels({tr("List"), tr("Entries"), tr("Written (UTC)"), tr("Saved file"),
                              tr("Entries in it"), tr("Saved (UTC)")});
    for (const int column : {Entries, FileEntries})
        m_table->headerItem()->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
    for (const RecoveryRow& row : rows)
        addRow(row);
    for (int column = List; column < FileTime; ++column)
        m_table->resizeColumnToContents(column);
    layout->addWidget(m_table, 1);
    auto* note = new QLabel(tr("What is neither restored nor discarded is offered again at the next start."));
    note->setWordWrap(true);
    layout->addWidget(note);
    layout->addWidget(m_buttons);
    addButtons(std::move(saveAs));
    m_table->setCurrentItem(m_table->topLevelItem(0));
    showChecks();
}

/// The newest state of each list comes first, and is the one that is meant, unless the file has a newer one.
void RecoveryDialog::addRow(const RecoveryRow& row) {
    const bool isFirst = m_table->findItems(row.list, Qt::MatchExactly, List).isEmpty();
    auto* item = new QTreeWidgetItem(m_table);
    item->setText(List, row.list);
    item->setCheckState(List, isFirst && !row.isSavedSince ? Qt::Checked : Qt::Unchecked);
    item->setText(Entries, row.isWhole ? locale().toString(row.entries)
                                       : tr("%1, damaged").arg(locale().toString(row.entries)));
    item->setToolTip(Entries, row.isWhole ? QString() : tr("What is whole of the list can be restored"));
    item->setText(Written, timeText(row.time));
    item->setText(File, row.file.isEmpty() ? tr("none") : QFileInfo(row.file).fileName());
    item->setToolTip(File, QDir::toNativeSeparators(row.file));
    for (const int column : {Entries, FileEntries})
        item->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
    if (row.file.isEmpty())
        return;
    const std::optional<FileStamps::State> state = FileStamps::State::Of(row.file);
    if (!state) {
        item->setText(FileEntries, tr("is gone"));
        return;
    }
    item->setText(FileEntries, locale().toString(LookAtFile(row.file).rows));
    const QString saved = timeText(state->modified / NanosecondsPerMicrosecond);
    item->setText(FileTime, row.isSavedSince ? tr("%1, later").arg(saved) : saved);
}

void RecoveryDialog::addButtons(std::function<void(size_t row)> saveAs) {
    const auto add = [this](const QString& text, const QString& tip, QDialogButtonBox::ButtonRole role) {
        QPushButton* button = m_buttons->addButton(text, role);
        button->setToolTip(tip);
        return button;
    };
    QPushButton* restore = add(tr("&Restore"), tr("Put the checked lists in place of those that are shown"),
                               QDialogButtonBox::AcceptRole);
    restore->setObjectName(QStringLiteral("restore"));
    restore->setDefault(true);
    QPushButton* save = add(tr("Save &As..."), tr("Write the current row's list into a file of its own"),
                            QDialogButtonBox::ActionRole);
    save->setObjectName(QStringLiteral("save-as"));
    QPushButton* discard =
        add(tr("&Discard..."), tr("Give up the checked lists for good"), QDialogButtonBox::DestructiveRole);
    discard->setObjectName(QStringLiteral("discard"));
    add(tr("&Later"), tr("Ask again at the next start"), QDialogButtonBox::RejectRole);
    connect(restore, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(save, &QPushButton::clicked, this, [this, saveAs = std::move(saveAs)] {
        if (const int row = m_table->indexOfTopLevelItem(m_table->currentItem()); row >= 0)
            saveAs(static_cast<size_t>(row));
    });
    connect(discard, &QPushButton::clicked, this, [this] {
        QMessageBox box(
            QMessageBox::Warning, windowTitle(),
            tr("Give up what was not saved in %n lists?", nullptr, static_cast<int>(GetChecked().size())),
            QMessageBox::Discard | QMessageBox::Cancel, this);
        box.setDefaultButton(QMessageBox::Cancel);
        if (box.exec() == QMessageBox::Discard)
            done(Discard);
    });
    connect(m_table, &QTreeWidget::itemChanged, this, [this](QTreeWidgetItem* item) {
        for (QTreeWidgetItem* other : m_table->findItems(item->text(List), Qt::MatchExactly, List))
            if (other != item && item->checkState(List) == Qt::Checked)
                other->setCheckState(List, Qt::Unchecked);
        showChecks();
    });
}

void RecoveryDialog::showChecks() {
    const bool isAny = !GetChecked().empty();
    for (const char* name : {"restore", "discard"})
        findChild<QPushButton*>(QLatin1String(name))->setEnabled(isAny);
}

std::vector<size_t> RecoveryDialog::GetChecked() const {
    std::vector<size_t> rows;
    for (int row = 0; row < m_table->topLevelItemCount(); ++row)
        if (m_table->topLevelItem(row)->checkState(List) == Qt::Checked)
            rows.push_back(static_cast<size_t>(row));
    return rows;
}
