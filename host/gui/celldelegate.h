#pragma once

#include "host/base/query.h"

#include <QCache>
#include <QFont>
#include <QStaticText>
#include <QStyledItemDelegate>

class SortListView;
class SortListViewItem;

/// Paints the cells of a list as `QStyledItemDelegate` does, but lays each text out once and keeps it, since
/// the texts of a list recur from row to row and from one painting to the next. Only cells of one line of
/// text are painted so; those with icons, check marks, several lines or the focus are left to the base. What
/// a query finds is marked.
///
/// The list makes and ends the fields in which cells are edited. While one is open all keys are its own:
/// Return ends it, Tab and Shift+Tab go on to the next cell, Escape takes back what was entered.
class CellDelegate : public QStyledItemDelegate {
public:
    /// Edits the cells of its parent, if that is such a list.
    explicit CellDelegate(QObject* parent = nullptr);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    /// Fields show and write values, not texts of cells.
    void setEditorData(QWidget*, const QModelIndex&) const override {}
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;

    /// What is marked in the cells; an empty query marks nothing.
    void SetQuery(const Query& query) { m_query = query; }
    const Query& GetQuery() const { return m_query; }
    /// How frequencies are painted, whatever the texts of their cells, which are those for copies and files:
    /// with blanks between thousands, and all in one unit (1e3 or 1e6 Hz; 0: as the cells have them). The
    /// list must be painted anew.
    void SetFrequencyStyle(bool groupsThousands, double unit);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

private:
    SortListViewItem* rowOf(const QModelIndex& index) const;
    void showFrequencyStyle(QStyleOptionViewItem& option, const QModelIndex& index) const;
    void paintCell(QPainter* painter, const QStyleOptionViewItem& cell) const;
    void markHits(QPainter* painter, const QStyleOptionViewItem& cell, const QModelIndex& index) const;
    const QStaticText& layoutOf(const QString& text, const QFont& font) const;

    SortListView* const m_list; ///< null for another kind of list
    Query m_query;
    bool m_groupsThousands = false;
    double m_frequencyUnit = 0;
    mutable QFont m_font; ///< of the layouts kept
    mutable QCache<QString, QStaticText> m_layouts{4096};
};
