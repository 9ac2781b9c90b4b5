#pragma once

#include <QTimer>
#include <QWidget>

class ElidedLabel;
class QFormLayout;
class QLabel;
class Scan;
class ScanActions;
struct ScanValue;

/// The panel of the scan: what it does now, its commands, what it has seen so far, and its settings, which
/// can be changed while it runs. Settings that mean nothing beside the others are hidden.
class ScanPanel : public QWidget {
    Q_OBJECT

public:
    /// Scan and actions are not owned and outlive the panel.
    ScanPanel(Scan& scan, const ScanActions& actions, QWidget* parent = nullptr);

    /// Shows state and counts as they are.
    void Refresh();

protected:
    void showEvent(QShowEvent* event) override;

private:
    QWidget* makeButtons(const ScanActions& actions);
    void addSetting(const ScanValue& setting);
    void showWhatApplies();
    QString currentText() const;
    QString countsText() const;

    Scan& m_scan;
    QLabel* m_state;
    ElidedLabel* m_current;
    QLabel* m_reason;
    QLabel* m_counts;
    QFormLayout* m_form;
    QTimer m_refresh; ///< many changes are shown once
};
