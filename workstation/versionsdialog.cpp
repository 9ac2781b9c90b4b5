#include "workstation/versionsdialog.h"

#include "host/base/datetime.h"
#include "workstation/listfiles.h"
#include "workstation/versions.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

enum Column { Saved, Entries, Size, Since, ColumnCount };
constexpr QSize Roomy(640, 360);

} // namespace

VersionsDialog::VersionsDialog(const ListFile& list, std::vector<FileVersions::Version> versions,
                               QWidget* parent)
    : QDialog(parent),
      m_versions(std::move(versions)),
      m_table(new QTreeWidget),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Close)) {
    setWindowTitle(tr("Versions of %1").arg(list.name));
    resize(Roomy);
    auto* layout = new QVBoxLayout(this);
    auto* file = new QLabel(tr("Saved versions of %1").arg(QDir::toNativeSeparators(list.file())));
    file->setTextFormat(Qt::PlainText);
    file->setWordWrap(true);
    layout->addWidget(file);
    layout->addWidget(m_table, 1);
    auto* note = new QLabel(
        tr("The list takes the content of the version. Its file stays as it is until the list is saved."));
    note->setWordWrap(true);
    layout->addWidget(note);
    layout->addWidget(m_buttons);
    QPushButton* restore = m_buttons->addButton(tr("&Restore"), QDialogButtonBox::AcceptRole);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_table, &QTreeWidget::itemActivated, this, &QDialog::accept);
    connect(m_table, &QTreeWidget::itemSelectionChanged, this,
            [this, restore] { restore->setEnabled(GetChosen()); });
    addTable(list.file());
    restore->setEnabled(false);
    if (m_table->topLevelItemCount() > 0)
        m_table->setCurrentItem(m_table->topLevelItem(0));
    m_table->setFocus();
    readList(list);
    m_reading.setInterval(0);
    connect(&m_reading, &QTimer::timeout, this, &VersionsDialog::readNext);
    m_reading.start();
}

void VersionsDialog::addTable(const QString& file) {
    m_table->setAccessibleName(tr("Versions"));
    m_table->setRootIsDecorated(false);
    m_table->setAllColumnsShowFocus(true);
    m_table->setUniformRowHeights(true);
    m_table->setHeaderLabels({tr("Saved (UTC)"), tr("Entries"), tr("Size"), tr("Changed since then")});
    for (const int column : {Entries, Size})
        m_table->headerItem()->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
    for (const FileVersions::Version& version : m_versions) {
        auto* row = new QTreeWidgetItem(m_table);
        row->setText(Saved, Quor::DateTime(static_cast<quint64>(version.time)).toString(0));
        row->setText(Entries, version.entries < 0 ? QString() : locale().toString(version.entries));
        row->setText(Size, locale().formattedDataSize(version.size));
        row->setText(Since, QStringLiteral("..."));
        for (const int column : {Entries, Size})
            row->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
    }
    const int letter = fontMetrics().averageCharWidth();
    m_table->setColumnWidth(Saved, 24 * letter);
    m_table->setColumnWidth(Entries, 12 * letter);
    m_table->setColumnWidth(Size, 12 * letter);
    m_table->headerItem()->setToolTip(Since, tr("What was done to the list between the version and now"));
    setObjectName(QFileInfo(file).fileName());
}

/// What the list would write is what versions are compared with.
void VersionsDialog::readList(const ListFile& list) {
    const Versions::Pause pause;
    const QTemporaryDir folder;
    const QString copy = folder.filePath(QStringLiteral("now-") + QFileInfo(list.file()).fileName());
    if (folder.isValid() && list.writeCopy(copy))
        m_now = std::make_unique<FileRecords>(copy);
}

void VersionsDialog::readNext() {
    if (m_read == m_versions.size()) {
        m_reading.stop();
        return;
    }
    QTreeWidgetItem* row = m_table->topLevelItem(static_cast<int>(m_read));
    const FileRecords then(m_versions[m_read++].path);
    if (then.IsWhole())
        row->setText(Entries, locale().toString(then.Count()));
    row->setText(Since, sinceText(then));
    row->setToolTip(Since, row->text(Since));
}

QString VersionsDialog::sinceText(const FileRecords& then) const {
    if (!then.IsWhole())
        return tr("cannot be read");
    if (!m_now || !m_now->IsWhole())
        return tr("cannot be compared");
    const FileDifference difference = m_now->Since(then);
    QStringList parts;
    if (difference.added > 0)
        parts << tr("%n added", nullptr, static_cast<int>(difference.added));
    if (difference.removed > 0)
        parts << tr("%n removed", nullptr, static_cast<int>(difference.removed));
    if (difference.changed > 0)
        parts << tr("%n changed", nullptr, static_cast<int>(difference.changed));
    return parts.isEmpty() ? tr("nothing") : parts.join(QStringLiteral(", "));
}

const FileVersions::Version* VersionsDialog::GetChosen() const {
    QTreeWidgetItem* row = m_table->currentItem();
    const int index = row && row->isSelected() ? m_table->indexOfTopLevelItem(row) : -1;
    return index < 0 ? nullptr : &m_versions[static_cast<size_t>(index)];
}
