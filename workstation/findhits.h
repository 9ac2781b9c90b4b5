#pragma once

#include <QObject>
#include <QString>

class FilterField;
class QTabWidget;

/// The next and the last hit of what the filter of the shown tab looks for, through all tabs whose lists can
/// be filtered and round again. A tab with hits takes the filter over; one without keeps its
/// own. Without a filter the last one used counts, and without any the filter field takes the focus. The
/// object belongs to the tabs.
class FindHits : public QObject {
    Q_OBJECT

public:
    explicit FindHits(QTabWidget& tabs);

    /// Goes one hit forwards (1) or backwards (-1); false when there is none.
    bool Step(int direction);
    /// What is looked for, or was last.
    const QString& GetQuery() const { return m_query; }

private:
    FilterField* fieldOf(int tab) const;
    bool goTo(int tab, int direction, bool fromCurrent);

    QTabWidget& m_tabs;
    QString m_query; ///< used last
};
