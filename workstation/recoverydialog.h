#pragma once

#include <QDialog>
#include <QStringList>

#include <functional>
#include <vector>

class QDialogButtonBox;
class QTreeWidget;

/// A list that another process has left unsaved, as the operator sees it.
struct RecoveryRow {
    QString list;
    qint64 entries = 0;
    bool isWhole = true;
    qint64 time = 0;           ///< when it was written, in microseconds since 1970-01-01 UTC
    QString file;              ///< the list's own file; empty when it had none
    bool isSavedSince = false; ///< that file was written after this
};

/// Asks what becomes of lists that were left unsaved. Of one list only one state can be checked.
class RecoveryDialog : public QDialog {
    Q_OBJECT

public:
    enum Answer { Later = QDialog::Rejected, Restore = QDialog::Accepted, Discard };

    /// `saveAs` writes a row's content into a file of the operator's choice.
    RecoveryDialog(const std::vector<RecoveryRow>& rows, std::function<void(size_t row)> saveAs,
                   QWidget* parent = nullptr);

    /// The rows that the answer is about.
    std::vector<size_t> GetChecked() const;

private:
    void addRow(const RecoveryRow& row);
    void addButtons(std::function<void(size_t row)> saveAs);
    void showChecks();

    QTreeWidget* m_table;
    QDialogButtonBox* m_buttons;
};
