#pragma once

#include <QWidget>

class NoiBands;
class QLabel;
class QPlainTextEdit;
class QPushButton;

/// The panel of the bands of interest: one line per band, and a button that copies the list as other parts of
/// the system are given it. Texts are made only while the panel is seen.
class BandsPanel : public QWidget {
    Q_OBJECT

public:
    /// The bands outlive the panel.
    explicit BandsPanel(const NoiBands& bands, QWidget* parent = nullptr);

    QPlainTextEdit* GetText() const { return m_text; }

public slots:
    void Copy();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void fill();

    const NoiBands& m_bands;
    QLabel* m_heading;
    QPlainTextEdit* m_text;
    QPushButton* m_copy;
    bool m_stale = true;
};
