#pragma once

#include <QTreeWidget>

class Sharing;

/// Who is at the site, and who edits what.
class ShareSeatsPanel : public QTreeWidget {
    Q_OBJECT

public:
    /// Not owned; outlives the panel's events.
    explicit ShareSeatsPanel(const Sharing& sharing);

    void Refresh();

private:
    const Sharing& m_sharing;
};
