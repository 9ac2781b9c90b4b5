#pragma once

#include "host/valuetree/valueptr.h"

#include <QObject>

#include <set>
#include <vector>

class MainWindow;
class Node;
class QWidget;
class Sharing;

/// Who edits which entry: tells the site what is edited in this window, and marks the rows that others edit.
class ShareEditing : public QObject {
    Q_OBJECT

public:
    /// Neither is owned; both outlive this.
    ShareEditing(Sharing& sharing, MainWindow& window);

private:
    void follow(const QWidget* focus);
    const Node* editedIn(const QWidget& focus) const;
    void noteLists();
    void mark();
    void setIcon(int listId, const Node& entry, bool isMarked) const;
    QString editorsOf(const Node& entry) const;

    Sharing& m_sharing;
    MainWindow& m_window;
    std::set<int> m_noted; ///< lists whose rows tell who edits them
    std::vector<std::pair<int, WeakRef<Node>>> m_marked;
};
