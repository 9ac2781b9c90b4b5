#pragma once

#include "interchange/table.h"
#include "workstation/foreignsource.h"

#include <QWidget>

#include <vector>

class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;

/// How a table is read: what separates its cells, and what its columns hold. It proposes what the headings
/// and the first rows tell, but a unit of frequencies only where one of them names it.
class TablePanel : public QWidget {
    Q_OBJECT

public:
    /// The source outlives this.
    explicit TablePanel(const ForeignSource& source, QWidget* parent = nullptr);

    const Interchange::TableChoice& GetChoice() const { return m_choice; }
    /// The columns and first rows as they are separated now.
    const Interchange::TableLook& GetLook() const { return m_look; }
    /// Why the table cannot be read so, a sentence for the operator; empty when it can.
    QString WhyOpen() const;
    /// Remembers the choice for tables with these headings.
    void Remember() const;

signals:
    void Changed();

private:
    struct Field {
        Interchange::TableField field;
        QComboBox* column;
        QComboBox* unit; ///< null for a field without
    };

    void addForm();
    void addField(QGridLayout& grid, int row, int side, Interchange::TableField field, const QString& label);
    void lookFirst();
    void lookAgain();
    void look(const Interchange::TableHints& hints);
    Interchange::TableHints hints() const;
    void showForm();
    void showColumns(const Field& field) const;
    void showUnits(const Field& field) const;
    void take(const Field& field);
    qsizetype columnOf(Interchange::TableField field) const;

    const ForeignSource& m_source;
    Interchange::TableLook m_atFirst;
    Interchange::TableLook m_look;
    Interchange::TableChoice m_choice;
    QString m_failure; ///< of the last look
    QComboBox* m_separator;
    QComboBox* m_decimal;
    QComboBox* m_encoding;
    QCheckBox* m_headings;
    QLabel* m_note;
    std::vector<Field> m_fields;
};
