#pragma once

#include "host/base/observer.h"

#include <QString>

#include <optional>
#include <vector>

class FrequencyNodeListView;
class FrequencyNodeMediatorViewItem;
class Node;
class QWidget;

/// One list item as views, the frequency bar and the receiver read it. A getter returns false, and leaves its
/// output alone, when the item has no such property. The last argument selects a sub-item; it is 0 for items
/// without sub-items. Frequencies and bandwidths are in Hz.
class IFrequencyStoreItem : public Observable {
public:
    virtual bool GetFrequency(double& frequency, int subItem) = 0;
    virtual bool GetBandwidth(double& bandwidth, int subItem) = 0;
    virtual bool GetComment(QString& comment, int subItem) = 0;
    virtual bool GetTip(QString& tip, int subItem) = 0;
    virtual bool GetDemodulation(QString& demodulation, int subItem) = 0;
    virtual bool GetType(char& type, int subItem) = 0;
    /// Whether the squelch and the AFC are on, as a flag's text ("true", "false"); the level that opens the
    /// squelch, in dBµV; the attenuation in dB.
    virtual bool GetSquelchState(QString& state, int subItem) = 0;
    virtual bool GetSquelchValue(int& value, int subItem) = 0;
    virtual bool GetAttenuation(QString& attenuation, int subItem) = 0;
    virtual bool GetAfc(QString& afc, int subItem) = 0;
    /// Tunes the receiver to the item with all its settings; `view` is the widget that the operator used.
    virtual void SetFrequency(QWidget* view) = 0;
    virtual void UpdateMyViewItems(FrequencyNodeListView* view) = 0;
    virtual void UpdateAllViewItems() = 0;
    virtual int GetSubItemId() = 0;
    /// Steps to the next sub-item and returns its id; `atEnd` says that there is none (then 0).
    virtual int IterateSubItems(bool& atEnd) = 0;
};

/// One list item that is shown in several views at once: it has one row per view, which the view makes when
/// it is first seen or asked for. The rows belong to their views; a row whose item ends is taken out by its
/// view.
class MultiViewMediator : public IFrequencyStoreItem {
public:
    MultiViewMediator() = default;
    MultiViewMediator(const MultiViewMediator&) = delete;
    MultiViewMediator& operator=(const MultiViewMediator&) = delete;
    ~MultiViewMediator() override;

    void AddView(FrequencyNodeListView* view, FrequencyNodeMediatorViewItem* row);
    /// Has a row in that view from now on, which the view knows by a number. False when it had one before.
    bool AddView(FrequencyNodeListView* view, quint32 number);
    /// Forgets the row in that view; the row stays where it is.
    void RemoveView(FrequencyNodeListView* view);
    /// Marks the rows in all views as stale: each asks for its texts when it is next seen, sorted or
    /// searched.
    void UpdateAllViewItems() override;
    int GetSubItemId() override { return 0; }
    int IterateSubItems(bool& atEnd) override {
        atEnd = true;
        return 0;
    }
    /// The same for the row in one view.
    void UpdateViewItem(const FrequencyNodeListView* view);
    /// The item's row in that view, or null.
    FrequencyNodeMediatorViewItem* GetItem4View(const FrequencyNodeListView* view) const;
    /// The number that the view knows the row by.
    std::optional<quint32> NumberInView(const FrequencyNodeListView* view) const;

protected:
    /// Small things of derived mediators, which have room here.
    bool m_hasTip : 1 = false; ///< a tip of its own stands in a table, since few items have one
    bool m_isNode : 1 = false; ///< what is observed is a node
    quint16 m_itemKind = 0;    ///< a number of the derived class's

private:
    quint32 placeOf(const FrequencyNodeListView* view) const;

    /// The item's first row, in a table of rows that are chained; 0 for none.
    quint32 m_rows = 0;
};

/// The part of a mediator controller that the store and the views talk to. One that ends takes itself out of
/// the store and says so to its views (`ControllerEnds`); a list that is only taken out of the store goes on.
class MultiViewMediatorCtrl {
public:
    virtual ~MultiViewMediatorCtrl() = default;

    /// Binds the controller to the list node at that path.
    virtual void Init(const QString& nodePath) = 0;
    /// Brings items and rows up to date at once.
    virtual void ForceUpdateNow() = 0;
    virtual void RemoveMyMediators() = 0;
    /// Attach and detach a view; attaching one again gives it the rows that it does not have yet.
    virtual void AddView(FrequencyNodeListView* view) = 0;
    virtual void RemoveView(FrequencyNodeListView* view) = 0;
    /// Marks all rows of one view as stale.
    virtual void UpdateMyViewItems(FrequencyNodeListView* view) = 0;

    /// Marks the list as changed: it is refreshed at the next timer tick.
    virtual void SetDirty(bool dirty) { m_dirty = dirty; }
    /// The same, where it is known that no more than this entry changed.
    virtual void SetEntryDirty(Node*) { SetDirty(true); }
    bool IsDirty() const { return m_dirty; }
    /// Counts one more user of the list and returns the count. A controller without users does not follow its
    /// node.
    int IncrementVisibleCnt(QWidget* view = nullptr);
    int GetVisibleCnt() const { return m_visible; }

private:
    bool m_dirty = false;
    int m_visible = 0;
};

/// Report interface of a controller.
class IFreqStoreReport {
public:
    virtual ~IFreqStoreReport() = default;

    /// The list as frequency-store XML text.
    virtual QString GetFreqStoreReport() = 0;
    /// Takes the entries of a frequency-store XML text into the list, behind those that are there or, with
    /// `replace`, instead of them. A text that is no such list changes nothing and is traced.
    virtual void SetReportXml(const QString& xml, bool replace) = 0;
    /// The list's store type, as given to the controller when it was made.
    virtual int GetFreqStoreType() = 0;
};
