#include "host/valuetree/valueselection.h"

#include "host/valuetree/value.h"

#include <algorithm>
#include <cmath>

template <typename Matches>
long ValueSelection::indexWhere(Matches matches) const {
    const auto found =
        std::find_if(m_items.begin(), m_items.end(), [&](const auto& item) { return matches(*item); });
    return found == m_items.end() ? -1 : static_cast<long>(found - m_items.begin());
}

void ValueSelection::append(std::unique_ptr<SelectionItem> item) {
    m_items.push_back(std::move(item));
    if (m_current < 0)
        m_current = 0;
}

void ValueSelection::AddItem(const QString& name, double value, long key, IObserver* originator) {
    AddItem(new SelectionItem(name, value, key), originator);
}

void ValueSelection::AddItem(SelectionItem* item, IObserver* originator) {
    if (!item)
        return;
    append(std::unique_ptr<SelectionItem>(item));
    HasChanged(TChangeCode::LookAgain, originator);
}

void ValueSelection::AddItems(const QStringList& names, IObserver* originator) {
    for (const QString& name : names)
        append(std::make_unique<SelectionItem>(name, static_cast<double>(m_items.size()), GetItemCount()));
    HasChanged(TChangeCode::LookAgain, originator);
}

void ValueSelection::AddItemsFrom(const ValueSelection& other, IObserver* originator) {
    const size_t count = other.m_items.size(); // `other` may be this selection
    for (size_t i = 0; i < count; ++i)
        append(std::make_unique<SelectionItem>(*other.m_items[i]));
    HasChanged(TChangeCode::LookAgain, originator);
}

void ValueSelection::DeleteItem(SelectionItem* item, IObserver* originator) {
    const long index = indexWhere([item](const SelectionItem& other) { return &other == item; });
    if (index < 0)
        return;
    m_items.erase(m_items.begin() + index);
    const bool wasCurrent = index == m_current;
    if (index < m_current)
        --m_current;
    else if (wasCurrent)
        m_current = m_items.empty() ? -1 : 0;
    HasChanged(wasCurrent ? TChangeCode::ValueChanged : TChangeCode::LookAgain, originator);
}

void ValueSelection::DeleteItems(IObserver* originator) {
    if (m_items.empty())
        return;
    m_items.clear();
    m_current = -1;
    HasChanged(TChangeCode::ValueChanged, originator);
}

bool ValueSelection::selectIndex(long index, IObserver* originator) {
    if (index < 0)
        return false;
    if (index != m_current) {
        ChangeRecorder::NoteChange(*this, originator);
        m_current = index;
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
    if (index < 0 && nearest && !m_items.empty() && !std::isnan(value)) {
        const auto closer = [value](const auto& a, const auto& b) {
            return std::abs(a->GetValue() - value) < std::abs(b->GetValue() - value);
        };
        index = static_cast<long>(std::min_element(m_items.begin(), m_items.end(), closer) - m_items.begin());
    }
    return selectIndex(index, originator);
}

bool ValueSelection::SelectAt(long index, IObserver* originator) {
    return selectIndex(index < GetItemCount() ? index : -1, originator);
}

SelectionItem* ValueSelection::GetItemAt(long index) const {
    return index >= 0 && index < GetItemCount() ? m_items[static_cast<size_t>(index)].get() : nullptr;
}

SelectionItem* ValueSelection::GetCurrentItem() const {
    return GetItemAt(m_current);
}

long ValueSelection::GetCurrentKey() const {
    const SelectionItem* item = GetCurrentItem();
    return item ? item->GetKey() : -1;
}

double ValueSelection::GetCurrentValue() const {
    const SelectionItem* item = GetCurrentItem();
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
    const SelectionItem* item = GetItem(name);
    return item ? item->GetKey() : -1;
}

QString ValueSelection::GetItemNameForKey(long key) const {
    const SelectionItem* item = GetItem(key);
    return item ? item->GetName() : QString();
}

QString ValueSelection::GetStringValue() const {
    const SelectionItem* item = GetCurrentItem();
    return item ? item->GetName() : QString();
}

void ValueSelection::Assign(const ValueBase& other) {
    const auto* same = value_cast<ValueSelection>(&other);
    const auto equal = [](const auto& a, const auto& b) { return *a == *b; };
    if (!same ||
        (m_current == same->m_current &&
         std::equal(m_items.begin(), m_items.end(), same->m_items.begin(), same->m_items.end(), equal)))
        return;
    m_items.clear();
    for (const auto& item : same->m_items)
        m_items.push_back(std::make_unique<SelectionItem>(*item));
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
