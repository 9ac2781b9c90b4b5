#pragma once

#include "host/valuetree/valuebase.h"

#include <QStringList>

#include <memory>
#include <span>

/// One row of a selection: name, number and integer key. Owned by its selection.
class SelectionItem {
public:
    SelectionItem() = default;
    SelectionItem(const QString& name, double value, long key) : m_name(name), m_value(value), m_key(key) {}

    const QString& GetName() const { return m_name; }
    double GetValue() const { return m_value; }
    long GetKey() const { return m_key; }
    bool operator==(const SelectionItem&) const = default;

private:
    QString m_name;
    double m_value = 0;
    long m_key = 0;
};

/// A value whose content is one item chosen from a list. The first item that is added becomes the chosen one.
/// Without items nothing is chosen: null item, empty text, index and key -1, number 0.
///
/// Very many selections offer the same few rows, which they then share. Whoever asks for a row that it may
/// change makes the selection keep rows of its own; `ItemAt` does not.
///
/// \code
/// ValueSelection mode;
/// mode.AddItem(QStringLiteral("AM"), 0, 10);
/// mode.AddItem(QStringLiteral("USB"), 0, 20);
/// mode.Select(QStringLiteral("USB"));
/// const long key = mode.GetCurrentKey(); // 20
/// \endcode
class ValueSelection : public ValueBase {
public:
    static constexpr ValueType Type = ValueType::Selection;

    ValueSelection() : ValueBase(Type) {}
    ~ValueSelection() override;

    void AddItem(const QString& name, double value, long key, IObserver* originator = nullptr);
    /// Takes ownership of the item; null is ignored.
    void AddItem(SelectionItem* item, IObserver* originator = nullptr);
    /// Adds rows that have their place in the list as number and key.
    void AddItems(const QStringList& names, IObserver* originator = nullptr);
    void AddItemsFrom(const ValueSelection& other, IObserver* originator = nullptr);
    /// Removes a row; when it was the chosen one, the first row becomes it.
    void DeleteItem(SelectionItem* item, IObserver* originator = nullptr);
    void DeleteItems(IObserver* originator = nullptr);

    /// Choose by name, key or number; false when no row matches, the selection then stays as it was.
    bool Select(const QString& name, IObserver* originator = nullptr);
    bool Select(const wchar_t* name, IObserver* originator = nullptr);
    bool Select(long key, IObserver* originator = nullptr);
    /// With `nearest`, the row whose number is nearest to `value` matches; else only an equal number does.
    bool Select(double value, IObserver* originator, bool nearest);
    /// Chooses the row at `index`; false outside 0 to count - 1.
    bool SelectAt(long index, IObserver* originator = nullptr);

    SelectionItem* GetCurrentItem() const { return GetItemAt(m_current); }
    long GetCurrentKey() const;
    long GetCurrentIndex() const { return m_current; }
    double GetCurrentValue() const;

    /// Find a row by name, key or number; null when absent.
    SelectionItem* GetItem(const QString& name) const;
    SelectionItem* GetItem(long key) const;
    SelectionItem* GetItem(double value) const;
    /// The row at `index`; null outside 0 to count - 1.
    SelectionItem* GetItemAt(long index) const;
    /// The same, to be read only; good until the rows change.
    const SelectionItem* ItemAt(long index) const;
    /// Whether both offer equal rows in the same order.
    bool HasItemsOf(const ValueSelection& other) const;
    /// Index of the row with this key, -1 when absent.
    long GetItemIndex(long key) const;
    long GetItemCount() const { return static_cast<long>(items().size()); }
    /// Key of the row with this name, -1 when absent.
    long GetKeyForItemName(const QString& name) const;
    /// Name of the row with this key, empty when absent.
    QString GetItemNameForKey(long key) const;

    /// Chooses by name; a name that no row has changes nothing.
    void SetStringValue(const QString& text, IObserver* originator = nullptr) override {
        Select(text, originator);
    }
    QString GetStringValue() const override;

    /// Takes the other selection's rows and choice.
    void Assign(const ValueBase& other) override;
    bool Compare(const ValueBase* other) const override;
    QString GetTypeName() const override { return QStringLiteral("selection"); }
    [[nodiscard]] ValueSelection* Clone() const override;

private:
    using Items = std::span<const std::unique_ptr<SelectionItem>>;
    struct Rows;

    Items items() const;
    template <typename Matches>
    long indexWhere(Matches matches) const;
    bool selectIndex(long index, IObserver* originator);
    void append(const SelectionItem& item);
    void takeItems(const ValueSelection& other);
    Rows& ownRows();
    void dropRows();

    qint32 m_current = -1;
    Rows* m_rows = nullptr; ///< null without any; deleted here unless they are shared
};
