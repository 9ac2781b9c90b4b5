#pragma once

#include <QObject>
#include <QString>

class FailureNote;
class QLabel;
class QStatusBar;
class QToolButton;
class Receiver;

/// What the status bar shows for good: what was done last, what could not be saved, the receiver with
/// its state, the frequency that the
/// receiver is tuned to, and how many problems there are. It is as high with all of it as without.
class WindowStatus : public QObject {
    Q_OBJECT

public:
    /// The bar owns all that is put there.
    explicit WindowStatus(QStatusBar& bar);

    void Tell(const QString& text);
    /// Shows a text for some seconds in place of what was told.
    void TellBriefly(const QString& text);
    void ShowTuned(double hertz);
    /// Which receiver it is and how it stands.
    void ShowReceiver(const Receiver& receiver);
    /// What is shared, with what is known of it beyond; empty for nothing. `isBroken` when it is to be seen
    /// to.
    void ShowSharing(const QString& text, const QString& toolTip, bool isBroken);
    QToolButton* GetSharingButton() const { return m_sharing; }
    void ShowProblems(int count);
    /// A text for good.
    void AddNote(const QString& text, const QString& toolTip);
    FailureNote* GetFailureNote() const { return m_failure; }
    QToolButton* GetProblemsButton() const { return m_problems; }

private:
    void colour(QToolButton& button, bool isError) const;

    QStatusBar& m_bar;
    QString m_last; ///< what was told last
    FailureNote* m_failure;
    QLabel* m_receiver;
    QLabel* m_tuned;
    QToolButton* m_sharing;
    QToolButton* m_problems;
};
