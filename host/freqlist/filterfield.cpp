#include "host/freqlist/filterfield.h"

#include "host/gui/listsettings.h"
#include "host/gui/sortlistview.h"
#include "host/widgets/entryfield.h"

#include <QAction>
#include <QInputDialog>
#include <QKeyEvent>
#include <QMap>
#include <QMenu>
#include <QPainter>

namespace {

/// Under which the searches are remembered: a line each, name and query separated by a tabulator.
const QString SettingName = QStringLiteral("SavedSearches");

QString help() {
    return FilterField::tr("Words in any column:  bbc am   \"new york\"\n"
                           "Frequencies:  5505 kHz   118-137 MHz   >7 MHz\n"
                           "One column:  demod:am   priority:<=3   comment:\"new york\"\n"
                           "Without, or either:  not am   -am   am or fm");
}

/// Points down to a menu, in the colour of texts.
QIcon arrow(const QPalette& palette) {
    constexpr int Size = 16;
    QPixmap pixmap(Size, Size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette.color(QPalette::Text));
    painter.drawPolygon(QPolygonF({{4, 6}, {12, 6}, {8, 11}}));
    painter.end();
    return pixmap;
}

} // namespace

FilterField::FilterField(QWidget* parent)
    : QLineEdit(parent), m_menu(new QMenu(this)), m_open(addAction(arrow(palette()), LeadingPosition)) {
    setPlaceholderText(tr("Filter"));
    setClearButtonEnabled(true);
    m_open->setToolTip(tr("Searches kept under names"));
    connect(m_open, &QAction::triggered, this, [this] {
        fillMenu();
        m_menu->popup(mapToGlobal(rect().bottomLeft()));
    });
    connect(this, &QLineEdit::textChanged, this, &FilterField::apply);
    showHelp();
}

void FilterField::SetList(SortListView* list) {
    m_list = list;
    apply();
}

void FilterField::apply() {
    if (m_list)
        m_list->SetFilterText(text());
    showHelp();
    update();
}

QString FilterField::ProblemText() const {
    if (!m_list || !m_list->FilterQuery().Problem())
        return QString();
    return tr("%1. Searched as text.").arg(m_list->FilterQuery().Problem()->reason);
}

void FilterField::showHelp() {
    const QString problem = ProblemText();
    const QString understood = m_list ? m_list->FilterQuery().Describe() : QString();
    const QString& state = problem.isEmpty() ? understood : problem;
    setToolTip(state.isEmpty() ? help() : state + QStringLiteral("\n\n") + help());
}

QList<std::pair<QString, QString>> FilterField::SavedSearches() {
    QMap<QString, QString> searches;
    for (const QString& line : ListSettings::LoadText(SettingName).split(QLatin1Char('\n'))) {
        const qsizetype gap = line.indexOf(QLatin1Char('\t'));
        if (gap > 0)
            searches.insert(line.left(gap), line.mid(gap + 1));
    }
    QList<std::pair<QString, QString>> list;
    for (auto search = searches.cbegin(); search != searches.cend(); ++search)
        list.append({search.key(), search.value()});
    return list;
}

void FilterField::SaveSearch(const QString& name, const QString& query) {
    const QString key = name.simplified(); // one line, without a tabulator
    if (key.isEmpty())
        return;
    QStringList lines;
    for (const auto& [known, text] : SavedSearches()) {
        if (known != key)
            lines << known + QLatin1Char('\t') + text;
    }
    if (!query.trimmed().isEmpty())
        lines << key + QLatin1Char('\t') + query.simplified();
    ListSettings::SaveText(SettingName, lines.join(QLatin1Char('\n')));
}

void FilterField::fillMenu() {
    m_menu->clear();
    const auto searches = SavedSearches();
    for (const auto& search : searches) {
        const QString query = search.second;
        QAction* action = m_menu->addAction(search.first);
        action->setToolTip(query);
        connect(action, &QAction::triggered, this, [this, query] { setText(query); });
    }
    m_menu->setToolTipsVisible(true);
    m_menu->addSeparator();
    QAction* keep = m_menu->addAction(tr("Keep this search…"));
    keep->setEnabled(!text().trimmed().isEmpty());
    connect(keep, &QAction::triggered, this, [this] {
        SaveSearch(QInputDialog::getText(this, tr("Keep a search"), tr("Name of this search:")), text());
    });
    QMenu* forget = m_menu->addMenu(tr("Forget"));
    forget->setEnabled(!searches.isEmpty());
    for (const auto& search : searches) {
        const QString name = search.first;
        connect(forget->addAction(name), &QAction::triggered, this, [name] { SaveSearch(name, QString()); });
    }
}

void FilterField::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Escape:
        clear();
        goToList();
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Down:
        goToList();
        if (m_list && m_list->SelectedCount() == 0 && m_list->ShownCount() > 0)
            m_list->SelectPlace(0);
        break;
    default:
        return QLineEdit::keyPressEvent(event);
    }
    event->accept();
}

void FilterField::goToList() {
    if (m_list)
        m_list->setFocus();
}

void FilterField::changeEvent(QEvent* event) {
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && m_open)
        m_open->setIcon(arrow(palette()));
}

void FilterField::paintEvent(QPaintEvent* event) {
    QLineEdit::paintEvent(event);
    if (!ProblemText().isEmpty())
        PaintErrorFrame(*this);
}
