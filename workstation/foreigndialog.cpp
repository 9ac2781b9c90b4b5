#include "workstation/foreigndialog.h"

#include "host/base/frequencytext.h"
#include "host/gui/colorset.h"
#include "workstation/memoryneed.h"
#include "workstation/tablepanel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QTimeZone>
#include <QVBoxLayout>

namespace {

constexpr QSize Roomy(860, 560);
constexpr int ShownProblems = 5; ///< lines high
constexpr const char* EntryColumns[] = {
    QT_TRANSLATE_NOOP("ForeignDialog", "Frequency"), QT_TRANSLATE_NOOP("ForeignDialog", "Bandwidth"),
    QT_TRANSLATE_NOOP("ForeignDialog", "Demodulation"), QT_TRANSLATE_NOOP("ForeignDialog", "Comment")};
/// Widths in digits; the comment takes the rest.
constexpr int EntryWidths[] = {18, 14, 14, 0};

QTableWidget* makeTable(const QString& name) {
    auto* table = new QTableWidget;
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionMode(QAbstractItemView::NoSelection);
    table->setWordWrap(false);
    table->setTabKeyNavigation(false);
    table->setAccessibleName(name);
    table->verticalHeader()->hide();
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + 4);
    table->horizontalHeader()->setHighlightSections(false);
    table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    table->horizontalHeader()->setStretchLastSection(true);
    return table;
}

void setCell(QTableWidget& table, int row, int column, const QString& text) {
    auto* item = new QTableWidgetItem(text);
    item->setToolTip(text);
    table.setItem(row, column, item);
}

QStringList cellsOf(const FreqStoreXml::FrequencyStoreEntry& entry) {
    const FreqStoreXml::FFM_Settings& settings = entry.GetFFM_Settings();
    const double bandwidth = settings.GetIFBandwidth().GetValue();
    return {Quor::FrequencyText(settings.GetFrequency().GetValue()),
            bandwidth > 0 ? Quor::BandwidthText(bandwidth) : QString(),
            FreqStoreXml::FFM_Settings::AnalogDemodToName(settings.GetAnalogDemod()), entry.GetComment()};
}

/// A problem without the file's name, which stands above.
QString shortText(qint64 line, const QString& reason) {
    return line > 0 ? ForeignDialog::tr("Line %1: %2").arg(line).arg(reason) : reason;
}

/// The same of "file:line: reason".
QString shortText(const QString& failure, const QString& file) {
    if (!failure.startsWith(file + QLatin1Char(':')))
        return failure;
    const QString rest = failure.mid(file.size() + 1);
    bool isLine = false;
    const qint64 line = rest.section(QLatin1Char(':'), 0, 0).toLongLong(&isLine);
    return isLine ? shortText(line, rest.section(QLatin1Char(':'), 1).trimmed()) : rest.trimmed();
}

} // namespace

ForeignDialog::ForeignDialog(const ForeignSource& source, const ForeignPlan& plan, QWidget* parent)
    : QDialog(parent),
      m_source(source),
      m_lists(ImportLists()),
      m_account(new QLabel),
      m_tabs(new QTabWidget),
      m_entries(makeTable(tr("First entries"))),
      m_problems(new QListWidget),
      m_keepsExtras(new QCheckBox(tr("&Keep extra fields in the comment"))),
      m_list(new QComboBox),
      m_adds(new QRadioButton),
      m_replaces(new QRadioButton),
      m_whyOff(new QLabel),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel)) {
    setWindowTitle(tr("Import"));
    auto* layout = new QVBoxLayout(this);
    addSummary(*layout);
    addTables(*layout);
    addOptions(*layout);
    addLists(*layout, plan);
    addButtons(*layout);
    resize(Roomy);
    showRows();
    read();
    if (m_table && !m_table->WhyOpen().isEmpty())
        m_table->setFocus();
    else
        m_buttons->button(QDialogButtonBox::Ok)->setFocus();
}

void ForeignDialog::addSummary(QVBoxLayout& layout) {
    auto* what = new QLabel(tr("%1: %2").arg(m_source.ShownName(), m_source.KindName()));
    what->setObjectName(QStringLiteral("What"));
    what->setTextFormat(Qt::PlainText);
    what->setToolTip(m_source.Path());
    layout.addWidget(what);
    if (!m_source.IsTable())
        return;
    m_table = new TablePanel(m_source);
    layout.addWidget(m_table);
    connect(m_table, &TablePanel::Changed, this, [this] {
        showRows();
        read();
    });
}

void ForeignDialog::addTables(QVBoxLayout& layout) {
    m_entries->setColumnCount(static_cast<int>(std::size(EntryColumns)));
    QStringList titles;
    for (const char* const title : EntryColumns)
        titles << tr(title);
    m_entries->setHorizontalHeaderLabels(titles);
    const int digit = fontMetrics().horizontalAdvance(QLatin1Char('0'));
    for (int column = 0; column < m_entries->columnCount(); ++column)
        m_entries->setColumnWidth(column, EntryWidths[column] * digit);
    m_tabs->addTab(m_entries, tr("As &Entries"));
    if (m_table) {
        m_rows = makeTable(tr("First rows of the table"));
        m_tabs->addTab(m_rows, tr("In the &Table"));
    }
    m_tabs->setDocumentMode(true);
    m_tabs->tabBar()->setVisible(m_table);
    layout.addWidget(m_tabs, 1);
    m_account->setObjectName(QStringLiteral("Account"));
    m_account->setTextFormat(Qt::PlainText);
    m_account->setWordWrap(true);
    layout.addWidget(m_account);
    m_problems->setAccessibleName(tr("Refused lines and remarks"));
    m_problems->setSelectionMode(QAbstractItemView::NoSelection);
    layout.addWidget(m_problems);
}

void ForeignDialog::addOptions(QVBoxLayout& layout) {
    auto* row = new QHBoxLayout;
    m_keepsExtras->setObjectName(QStringLiteral("KeepExtras"));
    m_keepsExtras->setToolTip(tr("What our lists have no place for stands behind the comment, in braces"));
    row->addWidget(m_keepsExtras);
    connect(m_keepsExtras, &QCheckBox::clicked, this, &ForeignDialog::read);
    if (m_source.HasSchedule()) {
        m_onAir = new QCheckBox(tr("O&nly what is on air at (UTC)"));
        m_onAir->setObjectName(QStringLiteral("OnAir"));
        m_time = new QDateTimeEdit(QDateTime::currentDateTimeUtc());
        m_time->setTimeSpec(Qt::UTC);
        m_time->setDisplayFormat(QStringLiteral("yyyy-MM-dd HH:mm"));
        m_time->setCalendarPopup(true);
        m_time->setAccessibleName(tr("Time on air, UTC"));
        m_time->setEnabled(false);
        row->addSpacing(fontMetrics().height());
        row->addWidget(m_onAir);
        row->addWidget(m_time);
        connect(m_onAir, &QCheckBox::clicked, m_time, &QWidget::setEnabled);
        connect(m_onAir, &QCheckBox::clicked, this, &ForeignDialog::read);
        connect(m_time, &QDateTimeEdit::editingFinished, this, &ForeignDialog::read);
    }
    row->addStretch();
    layout.addLayout(row);
}

void ForeignDialog::addLists(QVBoxLayout& layout, const ForeignPlan& plan) {
    auto* row = new QHBoxLayout;
    auto* label = new QLabel(tr("Into &list:"));
    label->setBuddy(m_list);
    row->addWidget(label);
    m_list->setObjectName(QStringLiteral("List"));
    for (const ImportList& known : m_lists)
        m_list->addItem(known.name, known.id);
    m_list->setCurrentIndex(std::max(m_list->findData(plan.listId), 0));
    row->addWidget(m_list);
    m_adds->setObjectName(QStringLiteral("Adds"));
    m_replaces->setObjectName(QStringLiteral("Replaces"));
    (plan.replaces ? m_replaces : m_adds)->setChecked(true);
    row->addSpacing(fontMetrics().height());
    row->addWidget(m_adds);
    row->addWidget(m_replaces);
    row->addStretch();
    layout.addLayout(row);
    connect(m_list, &QComboBox::activated, this, &ForeignDialog::showPlan);
    connect(m_adds, &QRadioButton::toggled, this, &ForeignDialog::showPlan);
}

void ForeignDialog::addButtons(QVBoxLayout& layout) {
    auto* row = new QHBoxLayout;
    m_whyOff->setObjectName(QStringLiteral("WhyOff"));
    m_whyOff->setTextFormat(Qt::PlainText);
    m_whyOff->setWordWrap(true);
    QPalette colours = m_whyOff->palette();
    colours.setColor(QPalette::WindowText,
                     ColorSet::Instance().GetColorDefinition(IColorBase::ERROR_TEXT).GetColor());
    m_whyOff->setPalette(colours);
    row->addWidget(m_whyOff, 1);
    row->addWidget(m_buttons);
    layout.addLayout(row);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &ForeignDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &ForeignDialog::reject);
}

void ForeignDialog::read() {
    m_reading.reset(); // its memory first
    if (!m_table || m_table->WhyOpen().isEmpty()) {
        Interchange::ReadOptions options;
        options.keepExtras = m_keepsExtras->isChecked();
        if (m_onAir && m_onAir->isChecked())
            options.onAirAt = m_time->dateTime();
        m_reading = m_source.Read(options, m_table ? m_table->GetChoice() : Interchange::TableChoice());
    }
    showEntries();
    showAccount();
    showProblems();
    showPlan();
}

void ForeignDialog::showEntries() {
    const size_t count = m_reading ? m_reading->first.size() : 0;
    m_entries->setRowCount(static_cast<int>(count));
    for (size_t row = 0; row < count; ++row) {
        const QStringList cells = cellsOf(m_reading->first[row]);
        for (int column = 0; column < cells.size(); ++column)
            setCell(*m_entries, static_cast<int>(row), column, cells[column]);
    }
}

void ForeignDialog::showRows() {
    if (!m_rows)
        return;
    const Interchange::TableLook& look = m_table->GetLook();
    m_rows->clear();
    m_rows->setColumnCount(static_cast<int>(look.headings.size()));
    m_rows->setHorizontalHeaderLabels(look.headings);
    m_rows->setRowCount(static_cast<int>(look.rows.size()));
    for (size_t row = 0; row < look.rows.size(); ++row) {
        for (int column = 0; column < look.rows[row].size(); ++column)
            setCell(*m_rows, static_cast<int>(row), column, look.rows[row][column]);
    }
    // Until the table is understood it is what one looks at.
    m_tabs->setCurrentWidget(m_table->WhyOpen().isEmpty() ? m_entries : m_rows);
}

void ForeignDialog::showAccount() {
    QStringList facts;
    if (m_reading && m_reading->failure.isEmpty()) {
        const Interchange::Account& account = m_reading->account;
        facts << tr("%Ln entries.", nullptr, static_cast<int>(account.entries));
        if (static_cast<size_t>(account.entries) > ForeignReading::MostFirst)
            facts.last() = tr("%Ln entries, the first %1 of which stand above.", nullptr,
                              static_cast<int>(account.entries))
                               .arg(ForeignReading::MostFirst);
        if (account.refused > 0)
            facts << tr("%Ln lines refused.", nullptr, static_cast<int>(account.refused));
        if (const QString counts = account.CountsText(); !counts.isEmpty())
            facts << tr("Without a place in our lists, or changed: %1.").arg(counts);
        if (const QString tooLarge = WhyTooLarge(account.entries, AvailableMemory()); !tooLarge.isEmpty())
            facts << tooLarge + QLatin1Char('.');
    }
    m_account->setText(facts.join(QLatin1Char('\n')));
    m_account->setVisible(!facts.isEmpty());
}

void ForeignDialog::showProblems() {
    m_problems->clear();
    if (m_reading) {
        for (const Problem& problem : m_reading->problems)
            m_problems->addItem(shortText(problem.line, problem.reason));
    }
    const int lines = std::min(m_problems->count(), ShownProblems);
    m_problems->setVisible(lines > 0);
    m_problems->setFixedHeight(lines * m_problems->sizeHintForRow(0) + 2 * m_problems->frameWidth());
}

const ImportList* ForeignDialog::list() const {
    const int index = m_list->currentIndex();
    return index < 0 ? nullptr : &m_lists[static_cast<size_t>(index)];
}

ForeignPlan ForeignDialog::GetPlan() const {
    const ImportList* const into = list();
    if (!into)
        return {};
    const bool takesPlace = into->Count() == 0 && into->WhyOff(true).isEmpty();
    return {into->id, m_replaces->isChecked() || takesPlace};
}

/// Why nothing can be done yet; empty when it can.
QString ForeignDialog::whyOff() const {
    const ImportList* const into = list();
    if (m_table && !m_table->WhyOpen().isEmpty())
        return shortText(m_table->WhyOpen(), m_source.Path());
    if (!m_reading->failure.isEmpty())
        return shortText(m_reading->failure, m_source.Path());
    if (m_reading->account.entries == 0)
        return tr("There is no entry in it.");
    return into ? into->WhyOff(GetPlan().replaces) : tr("There is no list that takes entries.");
}

void ForeignDialog::showPlan() {
    const ImportList* const into = list();
    const auto count = into ? static_cast<int>(into->Count()) : 0;
    m_adds->setText(tr("&Add to the %Ln entries that are there", nullptr, count));
    m_replaces->setText(tr("&Replace the %Ln entries that are there", nullptr, count));
    m_adds->setVisible(count > 0);
    m_replaces->setVisible(count > 0);
    const QString reason = whyOff();
    m_whyOff->setText(reason);
    QPushButton& button = *m_buttons->button(QDialogButtonBox::Ok);
    button.setEnabled(reason.isEmpty());
    button.setText(count == 0                ? tr("Import")
                   : m_replaces->isChecked() ? tr("Replace")
                                             : tr("Compare and Add..."));
}

void ForeignDialog::accept() {
    if (!whyOff().isEmpty())
        return;
    if (m_table)
        m_table->Remember();
    QDialog::accept();
}
