#include "workstation/unsaveddialog.h"

#include <QDialogButtonBox>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

enum Column { Name, Count, File, ColumnCount };
constexpr QSize Roomy(560, 280);

} // namespace

UnsavedDialog::UnsavedDialog(const std::vector<Row>& rows, const QString& kept, QWidget* parent)
    : QDialog(parent),
      m_rows(new QTreeWidget(this)),
      m_buttons(new QDialogButtonBox(
          QDialogButtonBox::Save | QDialogButtonBox::Discard | QDialogButtonBox::Cancel, this)),
      m_save(m_buttons->button(QDialogButtonBox::Save)) {
    setWindowTitle(tr("Unsaved Lists"));
    auto* layout = new QVBoxLayout(this);
    auto* question = new QLabel(tr("These lists have changes that are in no file. Save them?"), this);
    question->setWordWrap(true);
    layout->addWidget(question);
    layout->addWidget(m_rows, 1);
    if (!kept.isEmpty()) {
        auto* note = new QLabel(kept, this);
        note->setObjectName(QStringLiteral("Kept"));
        note->setTextFormat(Qt::PlainText);
        note->setWordWrap(true);
        layout->addWidget(note);
    }
    layout->addWidget(m_buttons);
    fill(rows);
    m_save->setDefault(true);
    connect(m_save, &QPushButton::clicked, this, [this] { done(Save); });
    connect(m_buttons->button(QDialogButtonBox::Discard), &QPushButton::clicked, this,
            [this] { done(Discard); });
    connect(m_buttons, &QDialogButtonBox::rejected, this, &UnsavedDialog::reject);
    connect(m_rows, &QTreeWidget::itemChanged, this, &UnsavedDialog::nameSave);
    nameSave();
    resize(Roomy);
}

void UnsavedDialog::fill(const std::vector<Row>& rows) {
    m_rows->setAccessibleName(windowTitle());
    m_rows->setRootIsDecorated(false);
    m_rows->setHeaderLabels({tr("List"), tr("Entries"), tr("File")});
    m_rows->headerItem()->setTextAlignment(Count, Qt::AlignRight | Qt::AlignVCenter);
    for (const Row& row : rows) {
        auto* item = new QTreeWidgetItem(m_rows, {row.name, QLocale().toString(row.count)});
        item->setCheckState(Name, Qt::Checked);
        item->setTextAlignment(Count, Qt::AlignRight | Qt::AlignVCenter);
        item->setText(File, row.file.isEmpty() ? tr("never saved") : QFileInfo(row.file).fileName());
        item->setToolTip(File, row.file);
    }
    for (int column = 0; column < ColumnCount; ++column)
        m_rows->resizeColumnToContents(column);
    m_rows->setCurrentItem(m_rows->topLevelItem(0));
}

std::vector<size_t> UnsavedDialog::Checked() const {
    std::vector<size_t> checked;
    for (int row = 0; row < m_rows->topLevelItemCount(); ++row) {
        if (m_rows->topLevelItem(row)->checkState(Name) == Qt::Checked)
            checked.push_back(static_cast<size_t>(row));
    }
    return checked;
}

void UnsavedDialog::nameSave() {
    const auto count = static_cast<int>(Checked().size());
    m_save->setText(count == m_rows->topLevelItemCount() ? tr("&Save All") : tr("&Save Checked"));
    m_save->setEnabled(count > 0);
    m_save->setToolTip(count > 0 ? tr("What is not checked is lost") : tr("No list is checked."));
}
