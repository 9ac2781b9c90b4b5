#pragma once

#include "host/valuetree/valueptr.h"

#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <vector>

class FrequencyStoreListView;
class Node;
class QAction;
class QFormLayout;
class QLabel;
class SortListView;

/// All that the selected row of a list has, by name: the values of an entry, which can be edited in place, or
/// the cells of a record. Above them a button tunes to the row.
class DetailsPanel : public QWidget {
    Q_OBJECT

public:
    /// The action that tunes is not owned.
    explicit DetailsPanel(QAction* tune, QWidget* parent = nullptr);

    /// A value of an entry, by its name in the tree, as operators call it and read it.
    static QString TitleOf(const QString& name);
    static QString TextOf(const QString& name, const QString& content);

    /// Shows the rows of that view from now on, until it ends or another one is set; null for none.
    void SetView(FrequencyStoreListView* view);
    /// Shows the present row.
    void Refresh();

signals:
    /// A value of an entry of that list was edited.
    void Edited(int listId);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    /// A value that is only read, with what tells it at present.
    struct Reading {
        QLabel* label;
        std::function<QString()> text;
    };

    void showEntry(Node& entry);
    void showCells();
    QFormLayout* makeForm();
    void addReading(const QString& title, std::function<QString()> text);
    QWidget* editorOf(ValueBase& value, int fieldType);

    QLabel* m_heading;
    QWidget* m_values = nullptr; ///< rebuilt for each row
    QFormLayout* m_form = nullptr;
    std::vector<Reading> m_readings;
    FrequencyStoreListView* m_view = nullptr;
    QPointer<SortListView> m_list;    ///< as long as it lives, so does the view
    WeakRef<Node> m_entry;            ///< what the editors are bound to
    QPointer<SortListView> m_cellsOf; ///< whose cells are shown
    bool m_rebuilds = false;
    QTimer m_tick;
};
