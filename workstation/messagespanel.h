#pragma once

#include "host/base/problemdigest.h"

#include <QListWidget>
#include <QTimer>

/// The panel of messages: problems that readers met, and traces. The newest is at the bottom; old ones go
/// when there are very many. Of many problems of one kind the first few are shown, and the others as one when
/// the event loop goes on.
class MessagesPanel : public QListWidget {
    Q_OBJECT

public:
    explicit MessagesPanel(QWidget* parent = nullptr);
    /// Gives the sinks back that it has taken.
    ~MessagesPanel() override;

    void AddProblem(const Problem& problem);
    void AddTrace(const QString& text);
    /// Shows what is held back.
    void Flush() { m_digest.Flush(); }
    /// All problems that came, also those that are shown as one.
    int ProblemCount() const { return m_problems; }

signals:
    void ProblemAdded(const QString& text);

protected:
    void changeEvent(QEvent* event) override;

private:
    QListWidgetItem* add(const QString& text);
    void showProblem(const Problem& problem);

    ProblemDigest m_digest;
    QTimer m_flush;
    int m_problems = 0;
};
