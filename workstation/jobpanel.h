#pragma once

#include <QTimer>
#include <QWidget>

class Job;
class QDialog;
class QLabel;
class QPlainTextEdit;
class QToolButton;

/// The line of the job: its file, how the file stands to the job in memory, and Save; the memory-scan section
/// is shown as text in a window of its own. The job is not owned and outlives the panel.
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
    /// Why the job can be neither opened nor saved now; empty when it can.
    void SetWhyOff(const QString& reason);
    /// Shows the memory-scan section.
    void ShowSection();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void makeSectionWindow();
    void showJob();
    void fillSection();
    QString stateText() const;
    QString question() const;

    Job& m_job;
    QLabel* m_file;
    QLabel* m_state;
    QToolButton* m_save;
    QDialog* m_sectionWindow;
    QPlainTextEdit* m_section;
    QString m_whyOff;
    QTimer m_refresh; ///< many changes are shown once
};
