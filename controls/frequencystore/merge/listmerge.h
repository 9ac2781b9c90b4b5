#pragma once

#include "controls/frequencystore/common/keys.h"
#include "host/freqlist/entrymerge.h"
#include "host/freqstorexml/frequencystoreentry.h"

#include <QCoreApplication>
#include <QPointer>
#include <QVector>

#include <array>

class HalvoNodeMediatorCtrl;
class MultiViewMediatorCtrl;
class Node;
class ValueBase;
struct MergedList;

/// What entries that come to a list would do to it: a row for each of them, and what the operator has chosen
/// for it. Nothing is changed before `Apply`. The list is not owned; its entries are "mine", those that come
/// are "theirs".
class ListMerge {
    Q_DECLARE_TR_FUNCTIONS(ListMerge)

public:
    enum class State { New, Different, Equal, Refused };
    static constexpr size_t StateCount = 4;
    /// Of an entry that is new, all but `Mine` add it. `Join` keeps mine, with both comments.
    enum class Choice { Mine, Theirs, Both, Join };

    struct Row {
        State state;
        Choice choice;
        quint32 mine; ///< place in the list, `EntryMerge::None` for an entry that belongs to none
    };
    /// How many entries are added, changed and left.
    struct Plan {
        qsizetype added = 0;
        qsizetype changed = 0;
        qsizetype left = 0;
        qsizetype refused = 0;
    };

    /// Why a list takes no entries in this way, a sentence for the operator; empty when it does.
    static QString WhyOff(MultiViewMediatorCtrl* list);

    /// `list` is one that takes entries. Nothing is matched yet.
    ListMerge(HalvoNodeMediatorCtrl& list, QVector<FreqStoreXml::FrequencyStoreEntry> theirs);

    /// Looks where each entry belongs. New ones are added, others left as they are, until something else is
    /// chosen; what was chosen before stays for entries of which nothing else is found. `tolerance` in Hz.
    void Match(double tolerance);

    const std::vector<Row>& Rows() const { return m_rows; }
    qsizetype CountOf(State state) const { return m_counts[static_cast<size_t>(state)]; }
    /// What can be chosen for a row; empty for one that is refused.
    std::vector<Choice> ChoicesOf(size_t row) const;
    /// False, with the row as it is, for a choice that it does not have.
    bool Choose(size_t row, Choice choice);

    /// What both say about one thing, as operators read it; `mine` is empty for an entry that is new.
    struct Cell {
        QString mine;
        QString theirs;
        bool differs = false;
        double offset = 0; ///< Hz by which their frequency lies above mine
    };
    /// Each of these is one value of an entry, but `Others`.
    enum class Part { Frequency, Bandwidth, Demodulation, Comment, Others };
    Cell CellOf(size_t row, Part part) const;
    /// The differences in all others: "Priority: 3 → 1".
    QString OtherDifferences(size_t row) const;
    /// Why a row is refused.
    QString ReasonOf(size_t row) const { return whyRefused(m_theirs[static_cast<qsizetype>(row)]); }

    Plan GetPlan() const;
    /// Does what is chosen, as one change of the list. False, with nothing done, when the list is no longer
    /// as it was when it was matched, and when the operator cancels.
    bool Apply();
    /// Whether the operator cancelled the last Match(), which then left the rows as they were, or Apply().
    bool WasCancelled() const { return m_isCancelled; }

private:
    using Fields = std::vector<EntryMerge::Field>;

    Fields fieldsOf(const FreqStoreXml::FrequencyStoreEntry& entry) const;
    Fields fieldsOf(const Node& entry) const;
    QString whyRefused(const FreqStoreXml::FrequencyStoreEntry& entry) const;
    Node* mineOf(size_t row) const;
    std::vector<EntryMerge::Difference> differencesOf(size_t row) const;
    void match(double tolerance, const std::vector<Row>& before);
    bool isAsMatched() const;
    void change(size_t row);
    void applyChosen();

    QPointer<HalvoNodeMediatorCtrl> m_list;
    const MergedList* m_kind;
    QVector<FreqStoreXml::FrequencyStoreEntry> m_theirs;
    double m_lowest; ///< Hz that the receiver of the list reaches
    double m_highest;
    std::vector<quint32> m_mine; ///< serials of the entries that were matched: some may have gone since
    std::vector<Row> m_rows;
    std::array<qsizetype, StateCount> m_counts{};
    bool m_isCancelled = false;
};
