#pragma once

#include "host/base/query.h"

#include <QCache>
#include <QFont>
#include <QStaticText>
#include <QStyledItemDelegate>

/// Paints the cells of a list as `QStyledItemDelegate` does, but lays each text out once and keeps it, since
/// the texts of a list recur from row to row and from one painting to the next. Only cells of one line of
/// text are painted so; those with icons, check marks, several lines or the focus are left to the base. What
/// a query finds is marked.
class CellDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

    /// What is marked in the cells; an empty query marks nothing.
    void SetQuery(const Query& query) { m_query = query; }
    const Query& GetQuery() const { return m_query; }
    /// How frequencies are painted, whatever the texts of their cells, which are those for copies and files:
    /// with blanks between thousands, and all in one unit (1e3 or 1e6 Hz; 0: as the cells have them). The
    /// list must be painted anew.
    void SetFrequencyStyle(bool groupsThousands, double unit);

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

private:
    void paintCell(QPainter* painter, const QStyleOptionViewItem& cell) const;
    void markHits(QPainter* painter, const QStyleOptionViewItem& cell, const QModelIndex& index) const;
    const QStaticText& layoutOf(const QString& text, const QFont& font) const;

    Query m_query;
    bool m_groupsThousands = false;
    double m_frequencyUnit = 0;
    mutable QFont m_font; ///< of the layouts kept
    mutable QCache<QString, QStaticText> m_layouts{4096};
};
