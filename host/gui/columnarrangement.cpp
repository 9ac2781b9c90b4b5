#include "host/gui/columnarrangement.h"

#include <QHeaderView>
#include <QSignalBlocker>

#include <algorithm>
#include <optional>
#include <vector>

namespace {

constexpr int WidestColumn = 10000; // pixels
constexpr int AutoWidth = 0;
const QString Auto = QStringLiteral("auto");
const QString Hidden = QStringLiteral("hidden");

struct Column {
    int index;
    int width;
    bool hidden;
};

/// The last column has a width of its own again while this lives.
class Unstretched {
public:
    explicit Unstretched(QHeaderView& header) : m_header(header), m_stretches(header.stretchLastSection()) {
        m_header.setStretchLastSection(false);
    }
    ~Unstretched() { m_header.setStretchLastSection(m_stretches); }

private:
    QHeaderView& m_header;
    bool m_stretches;
};

int widthOf(QHeaderView& header, int column) {
    if (header.sectionResizeMode(column) != QHeaderView::Interactive)
        return AutoWidth;
    if (!header.isSectionHidden(column))
        return header.sectionSize(column);
    const QSignalBlocker quiet(header);
    header.showSection(column); // tells how wide it was
    const int width = header.sectionSize(column);
    header.hideSection(column);
    return width;
}

std::optional<Column> parse(const QHeaderView& header, const QString& text) {
    const QStringList parts = text.split(QLatin1Char(':'));
    if (parts.size() < 2 || parts.size() > 3 || (parts.size() == 3 && parts[2] != Hidden))
        return std::nullopt;
    bool isIndex = false;
    bool isWidth = false;
    Column column{parts[0].toInt(&isIndex), parts[1].toInt(&isWidth), parts.size() == 3};
    if (parts[1] == Auto)
        column.width = AutoWidth;
    else if (!isWidth || column.width < header.minimumSectionSize() || column.width > WidestColumn)
        return std::nullopt;
    return isIndex ? std::optional(column) : std::nullopt;
}

/// Of all columns, or nothing.
std::vector<Column> parseAll(const QHeaderView& header, const QString& text) {
    const QStringList texts = text.split(QLatin1Char(' '));
    if (texts.size() != header.count())
        return {};
    std::vector<Column> columns;
    std::vector<bool> seen(static_cast<size_t>(header.count()));
    for (const QString& one : texts) {
        const std::optional<Column> column = parse(header, one);
        if (!column || column->index < 0 || column->index >= header.count() ||
            seen[static_cast<size_t>(column->index)])
            return {};
        seen[static_cast<size_t>(column->index)] = true;
        columns.push_back(*column);
    }
    const auto isHidden = [](const Column& column) { return column.hidden; };
    return std::all_of(columns.begin(), columns.end(), isHidden) ? std::vector<Column>() : columns;
}

} // namespace

QString ColumnArrangement::Of(QHeaderView& header) {
    const Unstretched unstretched(header);
    QStringList columns;
    for (int visual = 0; visual < header.count(); ++visual) {
        const int column = header.logicalIndex(visual);
        const int width = widthOf(header, column);
        QString text = QString::number(column) + QLatin1Char(':');
        text += width == AutoWidth ? Auto : QString::number(width);
        if (header.isSectionHidden(column))
            text += QLatin1Char(':') + Hidden;
        columns << text;
    }
    return columns.join(QLatin1Char(' '));
}

bool ColumnArrangement::Apply(QHeaderView& header, const QString& text) {
    const std::vector<Column> columns = parseAll(header, text);
    const Unstretched unstretched(header);
    int visual = 0;
    for (const Column& column : columns) {
        header.moveSection(header.visualIndex(column.index), visual++);
        header.showSection(column.index);
        if (column.width != AutoWidth && header.sectionResizeMode(column.index) == QHeaderView::Interactive)
            header.resizeSection(column.index, column.width);
        header.setSectionHidden(column.index, column.hidden);
    }
    return !columns.empty();
}
