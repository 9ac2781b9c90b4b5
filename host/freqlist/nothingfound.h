#pragma once

#include <QWidget>

class QPushButton;
class SortListView;

/// Stands over a list whose filter lets no row through, says so and offers to clear the filter. It belongs to
/// the list and shows and hides itself.
class NothingFound : public QWidget {
    Q_OBJECT

public:
    explicit NothingFound(SortListView& list);

signals:
    /// The operator wants all rows back.
    void clearWanted();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void follow();

    SortListView& m_list;
};
