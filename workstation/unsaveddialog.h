#pragma once

#include <QDialog>

#include <vector>

class QDialogButtonBox;
class QPushButton;
class QTreeWidget;

/// Asks what becomes of lists that hold what is in no file. `exec` gives the answer; a dialog that is closed,
/// or ended with the program, means to stay.
class UnsavedDialog : public QDialog {
    Q_OBJECT

public:
    enum Answer { Stay = QDialog::Rejected, Save, Discard };

    struct Row {
        QString name;
        qint64 count; ///< entries of the list
        QString file; ///< its path; empty when it was never saved
    };

    /// `kept` says what is kept unasked, empty when nothing is.
    UnsavedDialog(const std::vector<Row>& rows, const QString& kept, QWidget* parent);

    /// The places of the rows that are to be saved.
    std::vector<size_t> Checked() const;

private:
    void fill(const std::vector<Row>& rows);
    void nameSave();

    QTreeWidget* m_rows;
    QDialogButtonBox* m_buttons;
    QPushButton* m_save;
};
