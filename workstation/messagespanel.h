#pragma once

#include <QListWidget>

struct Problem;

/// The panel of messages: problems that readers met, and traces. The newest is at the bottom; old ones go
/// when there are very many.
class MessagesPanel : public QListWidget {
    Q_OBJECT

public:
    explicit MessagesPanel(QWidget* parent = nullptr);
    /// Gives the sinks back that it has taken.
    ~MessagesPanel() override;

    void AddProblem(const Problem& problem);
    void AddTrace(const QString& text);
    int ProblemCount() const { return m_problems; }

signals:
    void ProblemAdded(const QString& text);

private:
    void add(const QString& text, const QColor& color);

    int m_problems = 0;
};
