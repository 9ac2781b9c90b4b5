#include "workstation/tablepanel.h"

#include "workstation/tableprofiles.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QSignalBlocker>

using Interchange::DecimalMark;
using Interchange::TableChoice;
using Interchange::TableColumn;
using Interchange::TableField;
using Interchange::TableHints;

namespace {

struct Separator {
    char sign;
    const char* name;
};
constexpr Separator Separators[] = {{',', QT_TRANSLATE_NOOP("TablePanel", "Comma")},
                                    {';', QT_TRANSLATE_NOOP("TablePanel", "Semicolon")},
                                    {'\t', QT_TRANSLATE_NOOP("TablePanel", "Tab")},
                                    {'|', QT_TRANSLATE_NOOP("TablePanel", "Vertical bar")}};

/// Those that files of operators come in when it is none that the content tells.
constexpr const char* Encodings[] = {"UTF-8",   "Windows-1252", "Windows-1250", "ISO-8859-2", "Windows-1251",
                                     "KOI8-R",  "Windows-1253", "Windows-1254", "Shift_JIS",  "EUC-KR",
                                     "GB18030", "Big5",         "UTF-16LE",     "UTF-16BE"};

struct Unit {
    double hertz;
    const char* name;
};
constexpr Unit Units[] = {{1, "Hz"}, {1e3, "kHz"}, {1e6, "MHz"}, {1e9, "GHz"}};

bool hasUnit(TableField field) {
    return field == TableField::Frequency || field == TableField::Bandwidth;
}

QString nameOfUnit(double hertz) {
    for (const Unit& unit : Units) {
        if (unit.hertz == hertz)
            return QString::fromLatin1(unit.name);
    }
    return QString();
}

QComboBox* makeBox(const char* name) {
    auto* box = new QComboBox;
    box->setObjectName(QLatin1String(name));
    return box;
}

QLabel* makeLabel(const QString& text, QWidget* buddy) {
    auto* label = new QLabel(text);
    label->setBuddy(buddy);
    return label;
}

} // namespace

TablePanel::TablePanel(const ForeignSource& source, QWidget* parent)
    : QWidget(parent),
      m_source(source),
      m_separator(makeBox("Separator")),
      m_decimal(makeBox("Decimal")),
      m_encoding(makeBox("Encoding")),
      m_headings(new QCheckBox(tr("First row has &headings"))),
      m_note(new QLabel) {
    m_headings->setObjectName(QStringLiteral("Headings"));
    addForm();
    lookFirst();
    // What the operator has to say comes first.
    const auto open = std::find_if(m_fields.begin(), m_fields.end(), [](const Field& field) {
        return field.unit && field.unit->isEnabled() && field.unit->currentData().toDouble() == 0;
    });
    setFocusProxy(open == m_fields.end() ? m_fields.front().column : open->unit);
    for (QComboBox* box : {m_separator, m_decimal, m_encoding})
        connect(box, &QComboBox::activated, this, &TablePanel::lookAgain);
    connect(m_headings, &QCheckBox::clicked, this, &TablePanel::lookAgain);
}

void TablePanel::addForm() {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    for (const Separator& separator : Separators)
        m_separator->addItem(tr(separator.name), int(separator.sign));
    m_decimal->addItem(tr("Point (121.5)"), static_cast<int>(DecimalMark::Point));
    m_decimal->addItem(tr("Comma (121,5)"), static_cast<int>(DecimalMark::Comma));
    m_decimal->addItem(tr("Point, commas in thousands (7,055.5)"),
                       static_cast<int>(DecimalMark::PointAndGroups));
    m_encoding->addItem(QString(), QByteArray());
    for (const char* const encoding : Encodings)
        m_encoding->addItem(QString::fromLatin1(encoding), QByteArray(encoding));
    grid->addWidget(makeLabel(tr("&Separator:"), m_separator), 0, 0);
    grid->addWidget(m_separator, 0, 1, 1, 2);
    grid->addWidget(makeLabel(tr("&Decimal mark:"), m_decimal), 0, 3);
    grid->addWidget(m_decimal, 0, 4);
    grid->addWidget(makeLabel(tr("&Text:"), m_encoding), 1, 0);
    grid->addWidget(m_encoding, 1, 1, 1, 2);
    grid->addWidget(m_headings, 1, 3, 1, 2);
    addField(*grid, 2, 0, TableField::Frequency, tr("&Frequency:"));
    addField(*grid, 3, 0, TableField::Bandwidth, tr("&Bandwidth:"));
    addField(*grid, 2, 3, TableField::Name, tr("&Name:"));
    addField(*grid, 3, 3, TableField::Notes, tr("N&otes:"));
    addField(*grid, 4, 3, TableField::Mode, tr("De&modulation:"));
    m_note->setObjectName(QStringLiteral("TableNote"));
    m_note->setWordWrap(true);
    grid->addWidget(m_note, 4, 0, 1, 3);
    grid->setColumnStretch(1, 2);
    grid->setColumnStretch(2, 1);
    grid->setColumnStretch(4, 3);
}

void TablePanel::addField(QGridLayout& grid, int row, int side, TableField field, const QString& label) {
    auto* column = makeBox((QStringLiteral("Column-") + Interchange::TableFieldWord(field)).toLatin1());
    column->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    QComboBox* unit = nullptr;
    grid.addWidget(makeLabel(label, column), row, side);
    grid.addWidget(column, row, side + 1);
    if (hasUnit(field)) {
        unit = makeBox((QStringLiteral("Unit-") + Interchange::TableFieldWord(field)).toLatin1());
        unit->setAccessibleName(field == TableField::Frequency ? tr("Unit of the frequencies")
                                                               : tr("Unit of the bandwidths"));
        grid.addWidget(unit, row, side + 2);
    }
    m_fields.push_back({field, column, unit});
    const size_t place = m_fields.size() - 1;
    for (QComboBox* box : {column, unit}) {
        if (box)
            connect(box, &QComboBox::activated, this, [this, place] { take(m_fields[place]); });
    }
}

/// As the table was read before, or else as it shows itself.
void TablePanel::lookFirst() {
    look({});
    m_atFirst = m_look;
    if (const std::optional<TableChoice> before = TableProfiles::Find(m_atFirst)) {
        look({before->separator, before->hasHeadings, before->decimals, before->encoding});
        if (before->columns.size() == m_choice.columns.size()) {
            m_choice.columns = before->columns;
            m_note->setText(tr("As a table with these headings was read the last time."));
        }
    }
    showForm();
}

void TablePanel::Remember() const {
    TableProfiles::Remember(m_atFirst, m_choice);
}

TableHints TablePanel::hints() const {
    return {static_cast<char>(m_separator->currentData().toInt()), m_headings->isChecked(),
            static_cast<DecimalMark>(m_decimal->currentData().toInt()),
            m_encoding->currentData().toByteArray()};
}

void TablePanel::lookAgain() {
    m_note->clear();
    const bool isSameCut = m_choice.separator == m_separator->currentData().toInt() &&
                           m_choice.hasHeadings == m_headings->isChecked();
    std::vector<TableColumn> columns = m_choice.columns;
    look(hints());
    // What the operator has said of the columns stays as long as they are the same.
    if (isSameCut && columns.size() == m_choice.columns.size()) {
        for (size_t i = 0; i < columns.size(); ++i) {
            if (hasUnit(columns[i].field) && columns[i].hertzPerUnit == 0)
                columns[i].hertzPerUnit = m_look.SureUnit(static_cast<qsizetype>(i));
        }
        m_choice.columns = columns;
    }
    showForm();
    emit Changed();
}

void TablePanel::look(const TableHints& hints) {
    m_failure.clear();
    try {
        m_look = m_source.LookAtTable(hints);
    } catch (const RGException& exception) {
        m_failure = exception.GetErrorText();
        m_look = {};
        m_look.choice.separator = hints.separator ? hints.separator : ',';
        m_look.choice.encoding = hints.encoding;
    }
    m_choice = m_look.choice;
    for (size_t i = 0; i < m_choice.columns.size(); ++i) { // columns are proposed, units are not
        const TableField field = m_look.proposal.columns[i].field;
        m_choice.columns[i] = {field, hasUnit(field) ? m_look.SureUnit(static_cast<qsizetype>(i)) : 0};
    }
}

void TablePanel::showForm() {
    m_separator->setCurrentIndex(m_separator->findData(int(m_choice.separator)));
    m_decimal->setCurrentIndex(m_decimal->findData(static_cast<int>(m_choice.decimals)));
    if (m_choice.encoding.isEmpty())
        m_encoding->setItemText(0, tr("%1 (found)").arg(m_look.encoding));
    m_encoding->setCurrentIndex(std::max(m_encoding->findData(m_choice.encoding), 0));
    m_headings->setChecked(m_choice.hasHeadings);
    for (const Field& field : m_fields) {
        showColumns(field);
        showUnits(field);
    }
}

void TablePanel::showColumns(const Field& field) const {
    field.column->clear();
    field.column->addItem(tr("None"));
    for (qsizetype i = 0; i < m_look.headings.size(); ++i)
        field.column->addItem(m_choice.hasHeadings ? m_look.headings[i] : tr("Column %1").arg(i + 1));
    field.column->setCurrentIndex(static_cast<int>(columnOf(field.field)) + 1);
}

void TablePanel::showUnits(const Field& field) const {
    if (!field.unit)
        return;
    const qsizetype column = columnOf(field.field);
    field.unit->clear();
    field.unit->setEnabled(column >= 0);
    if (column < 0)
        return;
    const double unit = m_choice.columns[static_cast<size_t>(column)].hertzPerUnit;
    const QString likely = nameOfUnit(m_look.LikelyUnit(column, field.field));
    if (unit == 0)
        field.unit->addItem(likely.isEmpty() ? tr("Unit?") : tr("Unit? %1 is likely").arg(likely), 0.0);
    for (const Unit& known : Units)
        field.unit->addItem(QString::fromLatin1(known.name), known.hertz);
    field.unit->addItem(tr("In each cell"), TableColumn::InEachCell);
    field.unit->setCurrentIndex(std::max(field.unit->findData(unit), 0));
}

/// The field is in that column, which holds nothing else.
void TablePanel::take(const Field& field) {
    const qsizetype before = columnOf(field.field);
    const qsizetype column = field.column->currentIndex() - 1;
    if (before != column) {
        if (before >= 0)
            m_choice.columns[static_cast<size_t>(before)] = {};
        if (column >= 0)
            m_choice.columns[static_cast<size_t>(column)] = {
                field.field, hasUnit(field.field) ? m_look.SureUnit(column) : 0};
    } else if (column >= 0 && field.unit) {
        m_choice.columns[static_cast<size_t>(column)].hertzPerUnit = field.unit->currentData().toDouble();
    }
    m_note->clear();
    for (const Field& shown : m_fields) {
        showColumns(shown);
        showUnits(shown);
    }
    emit Changed();
}

qsizetype TablePanel::columnOf(TableField field) const {
    for (size_t i = 0; i < m_choice.columns.size(); ++i) {
        if (m_choice.columns[i].field == field)
            return static_cast<qsizetype>(i);
    }
    return -1;
}

QString TablePanel::WhyOpen() const {
    if (!m_failure.isEmpty())
        return m_failure;
    const auto isOpen = [this](TableField field) {
        const qsizetype column = columnOf(field);
        return column >= 0 && m_choice.columns[static_cast<size_t>(column)].hertzPerUnit == 0;
    };
    if (columnOf(TableField::Frequency) < 0)
        return tr("Choose the column of the frequencies.");
    if (isOpen(TableField::Frequency))
        return tr("Choose the unit of the frequencies.");
    return isOpen(TableField::Bandwidth) ? tr("Choose the unit of the bandwidths.") : QString();
}
