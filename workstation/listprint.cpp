#include "workstation/listprint.h"

#include "host/freqlist/frequencystorelistview.h"
#include "host/gui/sortlistview.h"

#include <QDateTime>
#include <QHeaderView>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

namespace {

constexpr double PointSize = 8;
constexpr int Resolution = 300; // dots per inch of a PDF document
constexpr int GapWidth = 1;     // characters between columns

struct Column {
    int index;
    int left = 0;
    int width = 0;
};

/// The columns that are seen, in their order, sharing the width as they do on the screen.
std::vector<Column> columnsOf(const SortListView& list, int width) {
    const QHeaderView& header = *list.header();
    std::vector<Column> columns;
    int shown = 0;
    for (int place = 0; place < header.count(); ++place) {
        const int index = header.logicalIndex(place);
        if (header.isSectionHidden(index))
            continue;
        columns.push_back({index});
        shown += header.sectionSize(index);
    }
    int left = 0;
    for (Column& column : columns) {
        column.left = left;
        column.width =
            static_cast<int>(qint64(width) * header.sectionSize(column.index) / std::max(shown, 1));
        left += column.width;
    }
    return columns;
}

class Pages {
public:
    Pages(QPainter& painter, QPagedPaintDevice& device, SortListView& list, const QString& title)
        : m_painter(painter),
          m_device(device),
          m_list(list),
          m_title(title + QStringLiteral("  ") +
                  QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyy-MM-dd hh:mm 'UTC'"))),
          m_columns(columnsOf(list, painter.viewport().width())),
          m_lineHeight(painter.fontMetrics().lineSpacing()),
          m_gap(painter.fontMetrics().averageCharWidth() * GapWidth) {}

    void Add(int row) {
        if (m_page == 0 || m_top + m_lineHeight > m_painter.viewport().height())
            begin();
        line([&](int column) { return m_list.TextAt(row, column); });
    }
    /// A list without rows is a page with its heading.
    void Finish() {
        if (m_page == 0)
            begin();
    }

private:
    void begin() {
        if (m_page++ > 0)
            m_device.newPage();
        const QRect head(0, 0, m_painter.viewport().width(), m_lineHeight);
        m_painter.drawText(head, Qt::AlignLeft, m_title);
        m_painter.drawText(head, Qt::AlignRight, QString::number(m_page));
        m_top = 2 * m_lineHeight;
        QFont font = m_painter.font();
        font.setBold(true);
        m_painter.setFont(font);
        line([&](int column) { return m_list.headerItem()->text(column); });
        font.setBold(false);
        m_painter.setFont(font);
        m_painter.drawLine(0, m_top, head.width(), m_top);
        m_top += m_lineHeight / 4;
    }
    template <typename Text>
    void line(Text text) {
        const QFontMetrics metrics = m_painter.fontMetrics();
        for (const Column& column : m_columns) {
            const QRect cell(column.left, m_top, column.width - m_gap, m_lineHeight);
            m_painter.drawText(cell, static_cast<int>(m_list.ColumnAlignment(column.index)),
                               metrics.elidedText(text(column.index), Qt::ElideRight, cell.width()));
        }
        m_top += m_lineHeight;
    }

    QPainter& m_painter;
    QPagedPaintDevice& m_device;
    SortListView& m_list;
    QString m_title;
    std::vector<Column> m_columns;
    int m_lineHeight;
    int m_gap;
    int m_page = 0;
    int m_top = 0;
};

} // namespace

bool ListPrint::Paint(FrequencyStoreListView& view, const QString& title, QPagedPaintDevice& device) {
    QPainter painter;
    if (!painter.begin(&device))
        return false;
    QFont font = painter.font();
    font.setPointSizeF(PointSize);
    painter.setFont(font);
    Pages pages(painter, device, *view.GetListView(), title);
    for (int row = 0; row < view.GetListView()->ShownCount(); ++row)
        pages.Add(row);
    pages.Finish();
    return painter.end();
}

QString ListPrint::WritePdf(FrequencyStoreListView& view, const QString& title, const QString& path) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return file.errorString();
    QPdfWriter writer(&file);
    writer.setResolution(Resolution);
    writer.setTitle(title);
    const bool painted = Paint(view, title, writer);
    return painted && file.commit() ? QString() : file.errorString();
}
