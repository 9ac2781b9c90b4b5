#pragma once

#include "controls/frequencystore/common/keys.h"
#include "host/valuetree/node.h"

#include <QWidget>

#include <memory>
#include <vector>

class FrequencyNodeMediator;
class QLabel;
class VCLineEdit;

/// Editor of one list entry, or of several at once. Its fields follow the kind of list: those of an HF or a
/// VHF/UHF memory channel, of a frequency of interest, or of a target. It works on a copy of the entry under
/// "/TempEditMscanList", which it owns; the entries themselves change only when the operator accepts, and
/// then only in what was changed. A field whose entry is wrong says so beside it.
///
/// Several entries are edited as a copy of the first. Each field then has a box: what is ticked, which
/// touching the field does, is written to all of them.
class HalvoViewEditor : public QWidget {
    Q_OBJECT

public:
    HalvoViewEditor(QWidget* parent, const QString& objectName, MediatorType type);
    ~HalvoViewEditor() override;

    /// Loads the entry, or the entries, of mediators into the fields. Mediators and entries may end while
    /// they are edited.
    void DoWorkOn(FrequencyNodeMediator* mediator);
    void DoWorkOn(const std::vector<FrequencyNodeMediator*>& mediators);

public slots:
    /// Writes what was changed back to the entries. False, with the dialog around it kept open, when a field
    /// is wrong or all entries have ended; nothing is written then.
    bool slotAcceptChanges();

signals:
    /// Something was written back.
    void entriesChanged();

private:
    struct Field;
    struct FieldInfo;
    static const FieldInfo FieldInfos[];

    std::vector<Node*> livingEntries() const;
    void copyEntry(const Node& entry);
    void removeCopy();
    void showHeading(const QString& text, bool isError);
    void addField(const FieldInfo& info);
    QWidget* makeWidget(Field& field);
    VCLineEdit* makeLine(Field& field);
    QWidget* withChoices(VCLineEdit& line, const QStringList& choices);
    QStringList choicesOf(const FieldInfo& info) const;
    template <typename Widget, typename Touched>
    Widget* watched(Field& field, Widget* widget, Touched touched);
    void compareEntries();
    static void showNote(const Field& field);
    bool accept();

    MediatorType m_type;
    std::vector<WeakRef<Node>> m_entries;
    WeakRef<Node> m_copy;
    std::vector<std::unique_ptr<Field>> m_fields;
    QLabel* m_heading;
    QWidget* m_form; ///< holds the widgets of the fields
};
