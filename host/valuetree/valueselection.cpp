#include "host/valuetree/valueselection.h"

#include "host/valuetree/value.h"

#include <algorithm>
#include <cmath>
#include <vector>

/// Rows in their order. Shared ones never change and never end: a selection that gets one row more goes on to
/// the rows that are longer by that one, which stand in a table.
struct ValueSelection::Rows {
    /// The shared rows of `from` (null: of none) and one more; null when there are too many of them already.
    static Rows* Longer(Rows* from, const SelectionItem& item);

    /// Shared rows that are longer by one; its key and number are at hand, since most of them differ in
    /// these.
    struct Next {
        long key;
        double value;
        Rows* rows;
    };

    std::vector<std::unique_ptr<SelectionItem>> items;
    std::vector<Next> longer;
    bool areShared = false;

private:
    static constexpr size_t MostShared = 4096;
    static constexpr size_t MostLonger = 64; ///< so few are soon looked through
};

ValueSelection::Rows* ValueSelection::Rows::Longer(Rows* from, const SelectionItem& item) {
    static auto* const none = new Rows;
    static size_t count = 0;
    Rows& shorter = from ? *from : *none;
    for (const Next& known : shorter.longer) {
        if (known.key == item.GetKey() && known.value == item.GetValue() && *known.rows->items.back() == item)
            return known.rows;
    }
    if (shorter.longer.size() >= MostLonger || count >= MostShared)
        return nullptr;
    auto made = std::make_unique<Rows>();
    made->areShared = true;
    for (const auto& known : shorter.items)
        made->items.push_back(std::make_unique<SelectionItem>(*known));
    made->items.push_back(std::make_unique<SelectionItem>(item));
    shorter.longer.push_back({item.GetKey(), item.GetValue(), made.get()});
    ++count;
    return made.release();
}

static_assert(sizeof(ValueSelection) == 24, "there are several in each of very many entries");

ValueSelection::~ValueSelection() {
    AnnounceRemoval();
    dropRows();
}

void ValueSelection::dropRows() {
    if (m_rows && !m_rows->areShared)
        delete m_rows;
    m_rows = nullptr;
}

/// From now on the selection keeps its rows itself.
ValueSelection::Rows& ValueSelection::ownRows() {
    if (m_rows && !m_rows->areShared)
        return *m_rows;
    auto own = std::make_unique<Rows>();
    for (const auto& item : items())
        own->items.push_back(std::make_unique<SelectionItem>(*item));
    m_rows = own.release();
    return *m_rows;
}

ValueSelection::Items ValueSelection::items() const {
    return m_rows ? Items(m_rows->items) : Items();
}

template <typename Matches>
long ValueSelection::indexWhere(Matches matches) const {
    const Items all = items();
    const auto found = std::find_if(all.begin(), all.end(), [&](const auto& item) { return matches(*item); });
    return found == all.end() ? -1 : static_cast<long>(found - all.begin());
}

void ValueSelection::append(const SelectionItem& item) {
    Rows* const longer = m_rows && !m_rows->areShared ? nullptr : Rows::Longer(m_rows, item);
    if (longer)
        m_rows = longer;
    else
        ownRows().items.push_back(std::make_unique<SelectionItem>(item));
    m_current = std::max(m_current, 0);
}

void ValueSelection::AddItem(const QString& name, double value, long key, IObserver* originator) {
    append({name, value, key});
    HasChanged(TChangeCode::LookAgain, originator);
}

void ValueSelection::AddItem(SelectionItem* item, IObserver* originator) {
    if (!item)
        return;
    ownRows().items.emplace_back(item); // its giver may know it by its address
    m_current = std::max(m_current, 0);
    HasChanged(TChangeCode::LookAgain, originator);
}

void ValueSelection::AddItems(const QStringList& names, IObserver* originator) {
    for (const QString& name : names)
        append({name, static_cast<double>(GetItemCount()), GetItemCount()});
    HasChanged(TChangeCode::LookAgain, originator);
}

void ValueSelection::AddItemsFrom(const ValueSelection& other, IObserver* originator) {
    const long count = other.GetItemCount(); // `other` may be this selection
    if (!m_rows && count > 0) {
        takeItems(other);
        m_current = 0;
    } else {
        for (long i = 0; i < count; ++i)
            append(SelectionItem(*other.ItemAt(i)));
    }
    HasChanged(TChangeCode::LookAgain, originator);
}

/// Replaces the rows, not the choice.
void ValueSelection::takeItems(const ValueSelection& other) {
    dropRows();
    if (other.m_rows && other.m_rows->areShared) {
        m_rows = other.m_rows;
        return;
    }
    for (const auto& item : other.items())
        append(*item);
}

void ValueSelection::DeleteItem(SelectionItem* item, IObserver* originator) {
    const long index = indexWhere([item](const SelectionItem& other) { return &other == item; });
    if (index < 0)
        return;
    auto& own = ownRows().items;
    own.erase(own.begin() + index);
    const bool wasCurrent = index == m_current;
    if (index < m_current)
        --m_current;
    else if (wasCurrent)
        m_current = own.empty() ? -1 : 0;
    HasChanged(wasCurrent ? TChangeCode::ValueChanged : TChangeCode::LookAgain, originator);
}

void ValueSelection::DeleteItems(IObserver* originator) {
    if (GetItemCount() == 0)
        return;
    dropRows();
    m_current = -1;
    HasChanged(TChangeCode::ValueChanged, originator);
}

bool ValueSelection::selectIndex(long index, IObserver* originator) {
    if (index < 0)
        return false;
    if (index != m_current) {
        ChangeRecorder::NoteChange(*this, originator);
        m_current = static_cast<qint32>(index);
        HasChanged(TChangeCode::ValueChanged, originator);
    }
    return true;
}

bool ValueSelection::Select(const QString& name, IObserver* originator) {
    return selectIndex(indexWhere([&](const SelectionItem& item) { return item.GetName() == name; }),
                       originator);
}

bool ValueSelection::Select(const wchar_t* name, IObserver* originator) {
    return Select(QString::fromWCharArray(name), originator);
}

bool ValueSelection::Select(long key, IObserver* originator) {
    return selectIndex(GetItemIndex(key), originator);
}

bool ValueSelection::Select(double value, IObserver* originator, bool nearest) {
    long index = indexWhere([value](const SelectionItem& item) { return item.GetValue() == value; });
    const Items all = items();
    if (index < 0 && nearest && !all.empty() && !std::isnan(value)) {
        const auto closer = [value](const auto& a, const auto& b) {
            return std::abs(a->GetValue() - value) < std::abs(b->GetValue() - value);
        };
        index = static_cast<long>(std::min_element(all.begin(), all.end(), closer) - all.begin());
    }
    return selectIndex(index, originator);
}

bool ValueSelection::SelectAt(long index, IObserver* originator) {
    return selectIndex(index < GetItemCount() ? index : -1, originator);
}

const SelectionItem* ValueSelection::ItemAt(long index) const {
    return index >= 0 && index < GetItemCount() ? items()[static_cast<size_t>(index)].get() : nullptr;
}

bool ValueSelection::HasItemsOf(const ValueSelection& other) const {
    return m_rows == other.m_rows ||
           std::ranges::equal(items(), other.items(), [](const auto& a, const auto& b) { return *a == *b; });
}

SelectionItem* ValueSelection::GetItemAt(long index) const {
    if (!ItemAt(index))
        return nullptr;
    return const_cast<ValueSelection*>(this)->ownRows().items[static_cast<size_t>(index)].get();
}

long ValueSelection::GetCurrentKey() const {
    const SelectionItem* item = ItemAt(m_current);
    return item ? item->GetKey() : -1;
}

double ValueSelection::GetCurrentValue() const {
    const SelectionItem* item = ItemAt(m_current);
    return item ? item->GetValue() : 0.0;
}

SelectionItem* ValueSelection::GetItem(const QString& name) const {
    return GetItemAt(indexWhere([&](const SelectionItem& item) { return item.GetName() == name; }));
}

SelectionItem* ValueSelection::GetItem(long key) const {
    return GetItemAt(GetItemIndex(key));
}

SelectionItem* ValueSelection::GetItem(double value) const {
    return GetItemAt(indexWhere([value](const SelectionItem& item) { return item.GetValue() == value; }));
}

long ValueSelection::GetItemIndex(long key) const {
    return indexWhere([key](const SelectionItem& item) { return item.GetKey() == key; });
}

long ValueSelection::GetKeyForItemName(const QString& name) const {
    const SelectionItem* item =
        ItemAt(indexWhere([&](const SelectionItem& other) { return other.GetName() == name; }));
    return item ? item->GetKey() : -1;
}

QString ValueSelection::GetItemNameForKey(long key) const {
    const SelectionItem* item = ItemAt(GetItemIndex(key));
    return item ? item->GetName() : QString();
}

QString ValueSelection::GetStringValue() const {
    const SelectionItem* item = ItemAt(m_current);
    return item ? item->GetName() : QString();
}

void ValueSelection::Assign(const ValueBase& other) {
    const auto* same = value_cast<ValueSelection>(&other);
    if (!same)
        return;
    const auto equal = [](const auto& a, const auto& b) { return *a == *b; };
    const Items mine = items();
    const Items others = same->items();
    if (m_current == same->m_current &&
        (m_rows == same->m_rows || std::equal(mine.begin(), mine.end(), others.begin(), others.end(), equal)))
        return;
    takeItems(*same);
    m_current = same->m_current;
    HasChanged(TChangeCode::ValueChanged);
}

bool ValueSelection::Compare(const ValueBase* other) const {
    const auto* same = value_cast<ValueSelection>(other);
    return same && same->GetStringValue() == GetStringValue() && same->GetCurrentKey() == GetCurrentKey();
}

ValueSelection* ValueSelection::Clone() const {
    auto* copy = new ValueSelection;
    copy->Assign(*this);
    return copy;
}
