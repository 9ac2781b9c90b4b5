#pragma once

#include <QStringList>
#include <QWidget>

#include <vector>

class QLabel;
class QTreeWidget;
class Sharing;

/// How sharing stands, and what the site has: who is there and edits what, and its lists, with those who
/// serve them.
class ShareSitePanel : public QWidget {
    Q_OBJECT

public:
    /// Not owned; outlives the panel's events.
    explicit ShareSitePanel(const Sharing& sharing);

    void Refresh();

private:
    using Rows = std::vector<QStringList>;

    QTreeWidget* addTable(const char* name, const QString& title, const QStringList& columns);
    static void show(QTreeWidget& table, Rows rows, Rows& shown);

    const Sharing& m_sharing;
    QLabel* m_state;
    QTreeWidget* m_seats;
    QTreeWidget* m_lists;
    Rows m_shownSeats;
    Rows m_shownLists;
};
