#pragma once

#include "workstation/foreignsource.h"
#include "workstation/importlists.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QDateTimeEdit;
class QDialogButtonBox;
class QLabel;
class QListWidget;
class QRadioButton;
class QTableWidget;
class QTabWidget;
class QVBoxLayout;
class TablePanel;

/// Where the entries of another program's file go.
struct ForeignPlan {
    unsigned listId = 0;   ///< in the store
    bool replaces = false; ///< what the list has, else they are added
};

/// Shows a file of another program before a list takes it: what it is, its first entries as they will be,
/// what of it is refused or has no place; and asks how it is read and where it goes. No list is changed.
class ForeignDialog : public QDialog {
    Q_OBJECT

public:
    /// The source outlives this; the plan is what is proposed.
    ForeignDialog(const ForeignSource& source, const ForeignPlan& plan, QWidget* parent);

    ForeignPlan GetPlan() const;
    /// What has been read in the way that was chosen; once.
    std::unique_ptr<ForeignReading> TakeReading() { return std::move(m_reading); }

    void accept() override;

private:
    void addSummary(QVBoxLayout& layout);
    void addTables(QVBoxLayout& layout);
    void addOptions(QVBoxLayout& layout);
    void addLists(QVBoxLayout& layout, const ForeignPlan& plan);
    void addButtons(QVBoxLayout& layout);
    void read();
    void showEntries();
    void showRows();
    void showAccount();
    void showProblems();
    void showPlan();
    const ImportList* list() const;
    QString whyOff() const;

    const ForeignSource& m_source;
    std::vector<ImportList> m_lists;
    std::unique_ptr<ForeignReading> m_reading; ///< null while the table's choice is open
    TablePanel* m_table = nullptr;             ///< null for a known format
    QLabel* m_account;
    QTabWidget* m_tabs;
    QTableWidget* m_entries;
    QTableWidget* m_rows = nullptr; ///< of a table, as they stand in it
    QListWidget* m_problems;
    QCheckBox* m_keepsExtras;
    QCheckBox* m_onAir = nullptr; ///< null without a schedule
    QDateTimeEdit* m_time = nullptr;
    QComboBox* m_list;
    QRadioButton* m_adds;
    QRadioButton* m_replaces;
    QLabel* m_whyOff;
    QDialogButtonBox* m_buttons;
};
