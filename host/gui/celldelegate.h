#pragma once

#include <QCache>
#include <QFont>
#include <QStaticText>
#include <QStyledItemDelegate>

/// Paints the cells of a list as `QStyledItemDelegate` does, but lays each text out once and keeps it, since
/// the texts of a list recur from row to row and from one painting to the next. Only cells of one line of
/// text are painted so; those with icons, check marks, several lines or the focus are left to the base.
class CellDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

private:
    const QStaticText& layoutOf(const QString& text, const QFont& font) const;

    mutable QFont m_font; ///< of the layouts kept
    mutable QCache<QString, QStaticText> m_layouts{4096};
};
