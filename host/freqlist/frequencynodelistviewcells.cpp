#include "host/base/frequencyinput.h"
#include "host/base/longwork.h"
#include "host/base/problems.h"
#include "host/freqlist/buttonbar.h"
#include "host/freqlist/celleditor.h"
#include "host/freqlist/frequencynodelistview.h"
#include "host/freqlist/frequencynodemediator.h"
#include "host/freqlist/frequencynodemediatorctrl.h"
#include "host/freqlist/rowtext.h"
#include "host/freqstorexml/frequencystorelist.h"
#include "host/valuetree/operatoraction.h"

#include <QRegularExpression>

#include <map>

namespace {

constexpr char TraceSource[] = "frequencynodelistview";
constexpr double BareNumber = 1e3; ///< Hz of a frequency without a unit

FrequencyNodeMediator* mediatorOf(const QTreeWidgetItem* row) {
    return row ? static_cast<const FrequencyNodeMediatorViewItem*>(row)->GetMediator() : nullptr;
}

bool give(ValueBase* value, const QString& text) {
    if (!value)
        return false;
    value->SetStringValue(text);
    return value->GetStringValue() == text;
}

} // namespace

ValueBase* FrequencyNodeListView::EditedValue(FrequencyNodeMediator& mediator, int column) const {
    const bool known = column >= 0 && static_cast<size_t>(column) < m_columnIds.size();
    return known && WhyOff(FreqStoreListViewButtonBar::Edit).isEmpty()
               ? mediator.EditedValue(m_columnIds[static_cast<size_t>(column)])
               : nullptr;
}

bool FrequencyNodeListView::CanEdit(const SortListViewItem& row, int column) const {
    FrequencyNodeMediator* mediator = mediatorOf(&row);
    return mediator && EditedValue(*mediator, column);
}

QWidget* FrequencyNodeListView::CreateCellEditor(QWidget* parent, const SortListViewItem& row, int column) {
    FrequencyNodeMediator* mediator = mediatorOf(&row);
    ValueBase* value = mediator ? EditedValue(*mediator, column) : nullptr;
    if (!value)
        return nullptr;
    QWidget* field = CellEditor::Make(parent, *value, m_columnIds[static_cast<size_t>(column)]);
    if (auto* line = qobject_cast<QLineEdit*>(field))
        line->setAlignment(ColumnAlignment(column));
    return field;
}

bool FrequencyNodeListView::EndCellEditor(QWidget& field, bool keep) {
    if (!keep) {
        CellEditor::Drop(field);
        return true;
    }
    const OperatorAction action(tr("Edit"));
    auto* entry = dynamic_cast<IEntryField*>(&field);
    if (!entry || !entry->Commit()) {
        if (entry)
            entry->ShowError();
        return false;
    }
    EntriesWereEdited();
    return true;
}

double FrequencyNodeListView::FrequencyOfRow(int row) const {
    FrequencyNodeMediator* mediator = mediatorOfRow(row);
    double hertz = 0;
    return mediator && mediator->GetFrequency(hertz, 0) ? hertz : SortListView::FrequencyOfRow(row);
}

std::vector<int> FrequencyNodeListView::EditableColumns() const {
    std::vector<int> columns = ShownColumns();
    const SortListViewItem* row = currentItem();
    std::erase_if(columns, [&](int column) { return !row || !CanEdit(*row, column); });
    return columns;
}

FrequencyNodeListView::Filled FrequencyNodeListView::FillColumn(int column, const QString& text) {
    const OperatorAction action(tr("Fill"));
    Filled filled;
    const std::vector<FrequencyNodeMediator*> mediators = SelectedInOrder();
    const bool isWhole = LongWork::Run(tr("Fill"), [&] {
        qint64 done = 0;
        for (FrequencyNodeMediator* mediator : mediators) {
            LongWork::Step(done++, static_cast<qint64>(mediators.size()));
            ++(give(EditedValue(*mediator, column), text) ? filled.written : filled.refused);
        }
    });
    if (!isWhole)
        return Filled();
    if (filled.written > 0)
        EntriesWereEdited();
    return filled;
}

FrequencyNodeListView::Filled FrequencyNodeListView::FillDown() {
    const std::vector<FrequencyNodeMediator*> mediators = SelectedInOrder();
    const int column = EditedColumn();
    const ValueBase* first = mediators.empty() ? nullptr : EditedValue(*mediators.front(), column);
    return first ? FillColumn(column, first->GetStringValue()) : Filled();
}

QString FrequencyNodeListView::SelectedText() {
    RowText text(*this);
    for (const quint32 record : SelectedRecords())
        text.Add([&](int column) { return RecordText(record, column); });
    return text.Get();
}

/// Lines of text with tabs as entries of the view's list.
class FrequencyNodeListView::TextLines {
public:
    TextLines(const FrequencyNodeListView& view, const QString& text) : m_view(view) {
        qint64 number = 0;
        for (const QString& line : text.split(QLatin1Char('\n'))) {
            ++number;
            const QStringList cells = line.trimmed().isEmpty() ? QStringList() : RowText::CellsOf(line);
            if (m_columns.empty() && !cells.isEmpty() && takeHeading(cells))
                continue;
            if (!cells.isEmpty())
                take(number, cells);
        }
    }
    const QVector<FreqStoreXml::FrequencyStoreEntry>& Entries() const { return m_entries; }
    /// Writes the cells of the n-th line into its entry; false, told, when one cannot be taken.
    bool Write(size_t n, FrequencyNodeMediator& mediator) const {
        const Line& line = m_lines[n];
        for (qsizetype i = 0; i < line.cells.size() && static_cast<size_t>(i) < m_columns.size(); ++i) {
            const int column = m_columns[static_cast<size_t>(i)];
            const QString cell = line.cells[i].trimmed();
            ValueBase* value = column < 0 || cell.isEmpty() ? nullptr : m_view.EditedValue(mediator, column);
            if (!value)
                continue;
            const unsigned id = m_view.m_columnIds[static_cast<size_t>(column)];
            QString stored;
            const QString problem =
                VCLineEdit::ProblemOf(*value, CellEditor::LineTypeOf(*value, id), cell, stored);
            if (!problem.isEmpty()) {
                tell(line.number, m_view.headerItem()->text(column) + QStringLiteral(": ") + problem);
                return false;
            }
            value->SetStringValue(stored);
        }
        return true;
    }

private:
    struct Line {
        qint64 number;
        QStringList cells;
    };

    /// Takes the columns from a line that names some; false, with those that are shown taken, when it names
    /// none.
    bool takeHeading(const QStringList& cells) {
        const QStringList titles = m_view.ColumnTitles();
        bool any = false;
        for (const QString& cell : cells) {
            m_columns.push_back(static_cast<int>(titles.indexOf(QRegularExpression(
                QRegularExpression::anchoredPattern(QRegularExpression::escape(cell.trimmed())),
                QRegularExpression::CaseInsensitiveOption))));
            any = any || m_columns.back() >= 0;
        }
        if (any)
            return true;
        m_columns = m_view.ShownColumns();
        return false;
    }
    void take(qint64 number, const QStringList& cells) {
        QString text;
        for (qsizetype i = 0; i < cells.size() && static_cast<size_t>(i) < m_columns.size(); ++i) {
            const int column = m_columns[static_cast<size_t>(i)];
            if (column >= 0 && m_view.m_columnIds[static_cast<size_t>(column)] == FreqList::ColumnFrequency)
                text = cells[i].trimmed();
        }
        const Quor::FrequencyInput input = Quor::ReadFrequencyInput(text, BareNumber);
        if (!input.IsFrequency() || input.hertz <= 0)
            return tell(number, FrequencyNodeListView::tr("\"%1\" is not a frequency").arg(text));
        FreqStoreXml::FrequencyStoreEntry entry;
        entry.GetFFM_Settings().GetFrequency().SetValue(input.hertz);
        m_entries.append(entry);
        m_lines.push_back({number, cells});
    }
    static void tell(qint64 number, const QString& reason) {
        Problems::Report(TraceSource, {FrequencyNodeListView::tr("Pasted text"), number, reason});
    }

    const FrequencyNodeListView& m_view;
    std::vector<int> m_columns; ///< of each cell; negative for one that names none
    std::vector<Line> m_lines;
    QVector<FreqStoreXml::FrequencyStoreEntry> m_entries;
};

int FrequencyNodeListView::PasteText(const QString& text) {
    const TextLines lines(*this, text);
    if (!CanDuplicate() || lines.Entries().isEmpty())
        return 0;
    const OperatorAction action(tr("Paste Text"));
    int pasted = 0;
    return LongWork::Run(tr("Paste Text"), [&] { pasted = append(lines); }) ? pasted : 0;
}

int FrequencyNodeListView::append(const TextLines& lines) {
    std::vector<FrequencyNodeMediator*> added = appendEntries(lines.Entries());
    std::vector<FrequencyNodeMediator*> good;
    std::map<Node*, std::vector<Node*>> bad;
    for (size_t i = 0; i < added.size(); ++i) {
        LongWork::Step(static_cast<qint64>(i), static_cast<qint64>(added.size()));
        if (lines.Write(i, *added[i]))
            good.push_back(added[i]);
        else
            bad[added[i]->GetNode()->GetParentNode()].push_back(added[i]->GetNode());
    }
    for (const auto& [parent, nodes] : bad)
        parent->DeleteNodes(nodes);
    m_controller->ForceUpdateNow();
    EntriesWereEdited();
    SelectRowsOf(good);
    return static_cast<int>(good.size());
}
