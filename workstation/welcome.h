#pragma once

#include <QFrame>

class QCheckBox;

/// Ways to begin, over the lists of a window until one is taken or the page is closed. Unless the operator
/// wants it again it is shown at the first start only; `Application.ini` has that as `Welcome`.
class WelcomePage : public QFrame {
    Q_OBJECT

public:
    /// Whether the program shows it at its start.
    static bool IsWanted();

    /// Shows itself over `place`, whose it is then, as large as that.
    explicit WelcomePage(QWidget& place);

    /// Something was begun.
    void End();
    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void SamplesWanted();
    void ReceiverWanted();
    void FileWanted();
    void GuideWanted();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    QCheckBox* m_again;
};
