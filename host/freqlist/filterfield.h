#pragma once

#include <QLineEdit>
#include <QPointer>

class QAction;
class QMenu;
class SortListView;

/// The field that filters a list by a `Query`, applied as one types. A query that is not understood puts a
/// red frame around the field. Escape clears it, and Escape, Return and Down go to the list, the latter two
/// to its first row where none is selected. A menu in the field keeps searches under names, for all lists.
class FilterField : public QLineEdit {
    Q_OBJECT

public:
    explicit FilterField(QWidget* parent = nullptr);

    /// Filters that list from now on by what stands in the field; null lets go of the one before.
    void SetList(SortListView* list);
    SortListView* List() const { return m_list; }
    /// What is wrong with the query, and what is done instead; empty when it was understood.
    QString ProblemText() const;

    /// The searches kept, in the order of their names, as pairs of name and query.
    static QList<std::pair<QString, QString>> SavedSearches();
    /// Keeps a search under a name, instead of the one of that name; an empty query removes it.
    static void SaveSearch(const QString& name, const QString& query);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void apply();
    void goToList();
    void fillMenu();
    void showHelp();

    QPointer<SortListView> m_list;
    QMenu* m_menu;
    QAction* m_open = nullptr; ///< opens it
};
