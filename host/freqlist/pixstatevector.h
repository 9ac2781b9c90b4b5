#pragma once

#include "host/base/observer.h"
#include "host/valuetree/valuebase.h"

#include <QString>

#include <functional>
#include <optional>
#include <vector>

class Node;
class QWidget;

/// Maps frequencies to the pixels of a bar; the bar implements it.
class IHasHMap {
public:
    virtual ~IHasHMap() = default;
    /// Position of a frequency (Hz) in pixels from the left edge; outside the bar it lies outside 0 to width.
    virtual double MapToPixel(double hertz) const = 0;
    /// The frequency (Hz) at a position.
    virtual double MapToFrequency(double pixel) const = 0;
};

/// What stands on one pixel of a line.
struct PixState {
    char type = 0;        ///< type letter of the entry that was put there last
    quint8 flags = 0;     ///< see below
    quint32 count = 0;    ///< entries whose centre falls on the pixel
    quint32 lastItem = 0; ///< number of one of these entries, see `PixStateVector::ItemText`

    static constexpr quint8 Centre = 1;    ///< a frequency lies here
    static constexpr quint8 Bandwidth = 2; ///< a bandwidth covers the pixel
    static constexpr quint8 Focus = 4;     ///< an emphasised entry lies here

    bool IsEmpty() const { return flags == 0; }
};

/// The per-pixel occupancy line that a list contributes to the frequency bar. The bar owns the line, tells it
/// the mapping, and reads the pixels after `Refresh`.
class PixStateVector {
public:
    PixStateVector() = default;
    PixStateVector(const PixStateVector&) = delete;
    PixStateVector& operator=(const PixStateVector&) = delete;
    virtual ~PixStateVector() = default;

    /// Names of the values that the line reads in each entry.
    virtual void SetKeyWords(const QString& frequency, const QString& bandwidth, const QString& type,
                             const QString& comment);
    /// Number of the symbol with which the bar draws the line's marks.
    virtual void SetSymbol(int symbol) { m_symbol = symbol; }
    /// Binds the line to what lies at that path.
    virtual void Init(const QString& path) = 0;
    virtual void SetVisible(bool visible);
    /// Sets whether the line follows changes. A line that follows again takes up what it missed.
    virtual void SetObserve(bool observe);
    /// Does the same, and returns whether the line followed before.
    virtual bool Observe(bool observe);
    virtual void SetListId(int listId) { m_listId = listId; }
    virtual int GetListId() const { return m_listId; }
    virtual bool GetDirty() const { return m_dirty; }
    virtual void SetDirty(bool dirty);
    /// Computes the pixels anew when something changed.
    virtual void Refresh() = 0;

    /// Comment of an item, for tool tips; empty when it has none.
    virtual QString ItemText(quint32 item) const = 0;
    /// Frequency (Hz) and bandwidth (Hz) of an item.
    virtual double ItemFrequency(quint32 item) const = 0;
    virtual double ItemBandwidth(quint32 item) const = 0;

    /// Tunes the receiver to an item with all its settings; false when the line cannot, or has no such item
    /// any more. `view` is the widget that the operator used.
    virtual bool Tune(quint32 /*item*/, QWidget* /*view*/) { return false; }
    /// Emphasises what lies at these frequencies (Hz), as a view's selection; lines that know what is marked
    /// by themselves take no notice.
    virtual void SetMarked(std::vector<double> frequencies);
    /// The frequencies (Hz) that are emphasised.
    virtual std::vector<double> Marked() const { return m_selected; }

    /// Marks only items whose number of `FrequencyStoreListView::ShownEntries` is set; nothing marks all.
    void SetShownOnly(std::optional<std::vector<bool>> entries);

    /// The mapping, which its owner keeps alive, and the width in pixels.
    void SetHMapping(IHasHMap* map, int width);
    int GetSymbol() const { return m_symbol; }
    bool IsVisible() const { return m_visible; }
    /// Entries of the line are drawn with emphasis.
    void SetFocusFlag(bool focus);
    virtual bool HasObservable() const = 0;
    virtual void ClearObservable() = 0;

    /// The pixel of a frequency, -1 outside the bar.
    int ValueToPixel(double hertz) const;
    /// The free pixel nearest to a frequency, -1 when there is none.
    int ValueToEmptyPixel(double hertz) const;
    /// Whether no entry touches the pixel.
    bool GetClearLine(int pixel) const;
    /// Marks the pixels that `hertz` of bandwidth around a pixel's frequency cover.
    void SetBandwidth(int pixel, double hertz, unsigned type, int flags);
    /// Empties all pixels.
    void Clean();
    /// Adds the marks of another line of the same width.
    PixStateVector& operator|=(const PixStateVector& other);

    size_t size() const { return m_pixels.size(); }
    const PixState& operator[](size_t pixel) const { return m_pixels[pixel]; }

    /// Set when the line became dirty; the bar asks for a repaint then.
    std::function<void()> OnDirty;

protected:
    /// Puts one item on the line; what is marked again without having been forgotten stays where it was.
    void Mark(quint32 item, double hertz, double bandwidth, char type);
    /// Marks an item unless it is one that is not shown. `entry` is its number of `SetShownOnly`.
    void MarkIfShown(quint32 entry, quint32 item, double hertz, double bandwidth, char type);
    /// Emphasises what lies at a frequency / takes the emphasis off all pixels.
    void MarkFocus(double hertz);
    void ClearFocus();
    /// Emphasises what is marked now, and nothing else.
    void ShowMarked();
    /// Entries that have been put on the line since its pixels were last emptied.
    size_t MarkCount() const { return m_marks; }
    /// An item is no longer where it was marked; the line is emptied, and all are to be marked again.
    void ForgetMark(size_t item);
    /// Does the same for all items.
    void ForgetMarks();

    Names::Id m_frequencyKey = Names::Unknown;
    Names::Id m_bandwidthKey = Names::Unknown;
    Names::Id m_typeKey = Names::Unknown;
    Names::Id m_commentKey = Names::Unknown;
    bool m_observe = true;

private:
    /// Where a mark is on the bar, in pixels.
    struct Place {
        float centre;
        float halfWidth;
    };

    Place placeOf(double hertz, double bandwidth) const;

    std::optional<std::vector<bool>> m_shownOnly;
    std::vector<PixState> m_pixels;
    std::vector<Place> m_places; ///< of items by number: mapping them is most of the work
    std::vector<double> m_selected;
    size_t m_marks = 0;
    IHasHMap* m_map = nullptr;
    int m_symbol = 0;
    int m_listId = 0;
    bool m_visible = true;
    bool m_dirty = true;
    bool m_focus = false;
};

/// A line of all entries under a node. Entries that come cost no look at the others.
class PixStateVectorOnNode : public PixStateVector, public IObserver {
public:
    ~PixStateVectorOnNode() override;

    void Init(const QString& nodePath) override;
    /// All entries count as of this type, whatever they say; 0 ends that.
    void SetFixedType(char type);
    void Refresh() override;
    QString ItemText(quint32 item) const override;
    double ItemFrequency(quint32 item) const override {
        return item < m_items.size() ? m_items[item].frequency : 0;
    }
    double ItemBandwidth(quint32 item) const override {
        return item < m_items.size() ? m_items[item].bandwidth : 0;
    }
    bool Tune(quint32 item, QWidget* view) override;
    bool HasObservable() const override { return m_node != nullptr; }
    void ClearObservable() override;

    /// Reads the values of one entry (its node) again.
    void UpdateItems(Observable* entry);
    /// Takes the entry of that node off the line.
    void RemoveValue(Observable* entry);
    void RemoveAllValues();
    /// Number of the item of an entry's node; -1 when the line has none.
    int Find(Observable* entry) const;
    size_t ItemCount() const { return m_items.size(); }

    void Update(Observable* subject, TChangeCode code) override;

private:
    struct Item {
        const Node* node;
        double frequency;
        double bandwidth;
        quint32 serial; ///< of the node
        char type;

        bool operator==(const Item&) const = default;
    };

    /// What the items say of the entries.
    enum class Known {
        Nothing,
        Values, ///< all of those that are still there, but some may have come or gone
        All,
    };

    Item read(const Node& entry) const;
    void collect();
    bool takeNew();
    void takeChanged(const Node& entry);

    Node* m_node = nullptr;
    std::vector<Item> m_items;
    Known m_known = Known::Nothing;
    quint32 m_seenSerial = 0; ///< of the entries that have items
    char m_fixedType = 0;
};

/// A line that is computed from one value, such as a list of records. A subclass says how.
class PixStateVectorOnValue : public PixStateVector, public IObserver {
public:
    /// `mode` 0 shows the line only when its mode is set to something else.
    explicit PixStateVectorOnValue(int mode) { SetMode(mode); }

    void Init(const QString& valuePath) override;
    /// The line's mode is its visibility.
    void SetMode(int mode) { SetVisible(mode != 0); }
    bool HasObservable() const override { return m_value.get() != nullptr; }
    void ClearObservable() override;
    void Update(Observable* subject, TChangeCode code) override;

protected:
    ValueBase* GetValue() const { return m_value.get(); }

private:
    WeakRef<ValueBase> m_value;
};
