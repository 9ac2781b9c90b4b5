#include "workstation/setcolumndialog.h"

#include "host/freqlist/buttonbar.h"
#include "host/freqlist/celleditor.h"
#include "host/freqlist/frequencynodemediator.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QPointer>

SetColumnDialog::SetColumnDialog(FrequencyNodeListView& view)
    : QDialog(&view), m_view(view), m_column(new QComboBox(this)), m_place(new QVBoxLayout) {
    setWindowTitle(tr("Set Column"));
    auto* form = new QFormLayout(this);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    for (const int column : view.EditableColumns())
        m_column->addItem(view.headerItem()->text(column), column);
    m_column->setCurrentIndex(std::max(m_column->findData(view.EditedColumn()), 0));
    m_column->setAccessibleName(tr("Column"));
    form->addRow(tr("Column"), m_column);
    form->addRow(tr("Value"), m_place);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &SetColumnDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &SetColumnDialog::reject);
    form->addRow(buttons);
    connect(m_column, &QComboBox::currentIndexChanged, this, &SetColumnDialog::showColumn);
    showColumn();
}

void SetColumnDialog::showColumn() {
    delete std::exchange(m_field, nullptr);
    const int column = m_column->currentData().toInt();
    const std::vector<FrequencyNodeMediator*> mediators = m_view.SelectedInOrder();
    const ValueBase* first = mediators.empty() ? nullptr : m_view.EditedValue(*mediators.front(), column);
    m_value.reset(first ? first->Clone() : nullptr);
    if (!m_value)
        return;
    m_field = CellEditor::Make(this, *m_value, m_view.GetColumnDescription()[static_cast<size_t>(column)]);
    m_field->setAccessibleName(tr("Value"));
    m_place->addWidget(m_field);
    m_field->setFocus();
}

void SetColumnDialog::accept() {
    auto* entry = dynamic_cast<IEntryField*>(m_field);
    if (!entry)
        return reject();
    if (!entry->Commit())
        return entry->ShowError();
    m_filled = m_view.FillColumn(m_column->currentData().toInt(), m_value->GetStringValue());
    QDialog::accept();
}

void SetColumnDialog::Ask(FrequencyNodeListView& view, FreqStoreListViewButtonBar& bar) {
    const QPointer<SetColumnDialog> dialog(new SetColumnDialog(view)); // the view may end meanwhile
    const bool accepted = dialog->exec() == Accepted;
    if (accepted && dialog)
        Tell(bar, dialog->GetFilled());
    delete dialog;
}

void SetColumnDialog::Tell(FreqStoreListViewButtonBar& bar, const FrequencyNodeListView::Filled& filled) {
    const QString refused =
        filled.refused == 0 ? QString() : tr(", %Ln rows cannot take it", nullptr, filled.refused);
    bar.Tell(tr("%Ln rows set", nullptr, filled.written) + refused);
}
