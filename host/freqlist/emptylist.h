#pragma once

#include <QWidget>

class FreqStoreListViewButtonBar;
class FrequencyStoreListView;
class QToolButton;
class QLabel;
class SortListView;

/// Stands over a list that has no entries and says what may fill it (see the view's `EmptyText`), with a
/// button for each action of the bar that does. It belongs to the list and shows and hides itself.
class EmptyList : public QWidget {
    Q_OBJECT

public:
    /// Neither is owned; the bar has the list's actions.
    EmptyList(FrequencyStoreListView& view, const FreqStoreListViewButtonBar& bar);

    /// Looks again at what the bar offers.
    void Refresh();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void follow();

    FrequencyStoreListView& m_view;
    SortListView& m_list;
    QLabel* m_text;
    std::vector<QToolButton*> m_buttons;
};
