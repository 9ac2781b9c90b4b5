#pragma once

#include <QTimer>
#include <QWidget>

class Job;
class QLabel;
class QPlainTextEdit;
class QPushButton;

/// The panel of the job: its file, how the file stands to the job in memory, the memory-scan section as text,
/// and what can be done with them. The job is not owned and outlives the panel.
class JobPanel : public QWidget {
    Q_OBJECT

public:
    explicit JobPanel(Job& job, QWidget* parent = nullptr);

    /// Asks for a file and opens it. Unsaved changes of the job before are asked about.
    void AskAndOpen();
    /// Opens a file in place of the present job; unsaved changes of that one are asked about.
    bool Open(const QString& path);
    bool Save();
    bool SaveAs();
    /// Asks whether unsaved changes are to be saved, and does it; false when the operator wants to stay.
    bool MayLeave();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void showJob();
    QString stateText() const;
    QString question() const;

    Job& m_job;
    QLabel* m_file;
    QLabel* m_state;
    QPlainTextEdit* m_section;
    QPushButton* m_save;
    QPushButton* m_saveAs;
    QTimer m_refresh; ///< many changes are shown once
};
