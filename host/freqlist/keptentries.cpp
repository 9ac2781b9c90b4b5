#include "host/freqlist/keptentries.h"

#include "host/base/longwork.h"
#include "host/freqlist/undocontent.h"
#include "host/valuetree/value.h"
#include "host/valuetree/valueselection.h"

namespace {

template <typename V>
std::unique_ptr<ValueBase> makeValue() {
    return std::make_unique<V>();
}

struct Maker {
    ValueType type;
    std::unique_ptr<ValueBase> (*make)();
};
constexpr Maker Makers[] = {
    {ValueType::Text, makeValue<Value<QString>>},
    {ValueType::Bool, makeValue<Value<bool>>},
    {ValueType::Char, makeValue<Value<char>>},
    {ValueType::Int, makeValue<Value<int>>},
    {ValueType::Int64, makeValue<Value<qint64>>},
    {ValueType::Double, makeValue<Value<double>>},
    {ValueType::NumericInt, makeValue<ValueNumeric<int>>},
    {ValueType::NumericInt64, makeValue<ValueNumeric<qint64>>},
    {ValueType::NumericDouble, makeValue<ValueNumeric<double>>},
    {ValueType::Selection, makeValue<ValueSelection>},
    {ValueType::DoubleList, makeValue<ValueList<double>>},
};

const NumberLimits* limitsOf(const ValueBase& value) {
    const IValueNumeric* number = numeric_cast(const_cast<ValueBase*>(&value));
    return number ? &number->GetLimits() : nullptr;
}

/// What an entry of a shape takes in memory, as if it shared no text with others.
size_t bytesOf(const Node& entry) {
    const Shape& shape = *entry.WholeShape();
    size_t bytes = shape.Bytes();
    for (const Shape::Field& field : shape.Fields()) {
        const ValueBase* const value = entry.ValueAtPlace(field.place);
        if (const auto* text = value_cast<Value<QString>>(value))
            bytes += sizeof(QString) + static_cast<size_t>(text->GetValue().size()) * sizeof(QChar);
        else if (const auto* list = value_cast<ValueList<double>>(value))
            bytes += list->Elements().capacity() * sizeof(double);
    }
    return bytes;
}

} // namespace

/// What entries share: their shape with the items of its choices, or what is to be known of each of their
/// values.
struct KeptEntries::Layout {
    struct Field {
        Names::Id name;
        ValueType type;
        NumberLimits limits;
        std::vector<SelectionItem> items;

        explicit Field(const ValueBase& value) : name(value.NameId()), type(value.GetType()) {
            if (const NumberLimits* own = limitsOf(value))
                limits = *own;
            const auto* selection = value_cast<ValueSelection>(&value);
            for (long i = 0; selection && i < selection->GetItemCount(); ++i)
                items.push_back(*selection->ItemAt(i));
        }
        bool Describes(const ValueBase& value) const {
            if (name != value.NameId() || type != value.GetType())
                return false;
            const NumberLimits* own = limitsOf(value);
            if (own && !(*own == limits))
                return false;
            const auto* selection = value_cast<ValueSelection>(&value);
            if (selection && static_cast<size_t>(selection->GetItemCount()) != items.size())
                return false;
            for (size_t i = 0; i < items.size(); ++i) {
                if (!(*selection->ItemAt(static_cast<long>(i)) == items[i]))
                    return false;
            }
            return true;
        }
        /// Null for a type that has no form as bytes.
        std::unique_ptr<ValueBase> MakeValue() const {
            if (!UndoContent::IsKnown(type))
                return nullptr;
            const auto* maker = std::find_if(std::begin(Makers), std::end(Makers),
                                             [this](const Maker& m) { return m.type == type; });
            std::unique_ptr<ValueBase> value = maker->make();
            if (IValueNumeric* number = numeric_cast(value.get()))
                number->TakeLimits(limits);
            if (auto* selection = value_cast<ValueSelection>(value.get())) {
                for (const SelectionItem& item : items)
                    selection->AddItem(new SelectionItem(item));
            }
            return value;
        }
    };

    explicit Layout(const Node& node) : name(Names::Intern(node.GetName())), shape(node.WholeShape()) {
        for (const ValueBase* value = node.FirstValue(); value; value = Node::NextValue(value)) {
            const auto* chosen = value_cast<ValueSelection>(value);
            if (!shape)
                fields.emplace_back(*value);
            else if (chosen)
                choices.emplace_back(std::make_unique<ValueSelection>())->AddItemsFrom(*chosen);
        }
    }
    bool Describes(const Node& node) const {
        if (Names::Text(name) != node.GetName() || shape != node.WholeShape())
            return false;
        if (shape)
            return hasChoicesOf(node);
        size_t i = 0;
        for (const ValueBase* value = node.FirstValue(); value; value = Node::NextValue(value), ++i) {
            if (i == fields.size() || !fields[i].Describes(*value))
                return false;
        }
        return i == fields.size();
    }

    /// Gives the choices of a node of the shape their items.
    void AddItems(Node& node) const {
        auto next = choices.begin();
        for (const Shape::Field& field : shape->Fields()) {
            if (field.type == ValueType::Selection)
                static_cast<ValueSelection&>(*node.ValueAtPlace(field.place)).AddItemsFrom(**next++);
        }
    }

    Names::Id name;
    const Shape* shape;
    std::vector<Field> fields; ///< of a node that has no shape
    /// Of the shape, in the order of its fields; they share the items of the nodes.
    std::vector<std::unique_ptr<ValueSelection>> choices;

private:
    bool hasChoicesOf(const Node& node) const {
        auto next = choices.begin();
        for (const Shape::Field& field : shape->Fields()) {
            if (field.type == ValueType::Selection &&
                !(*next++)->HasItemsOf(static_cast<const ValueSelection&>(*node.ValueAtPlace(field.place))))
                return false;
        }
        return true;
    }
};

KeptEntries::KeptEntries() = default;
KeptEntries::KeptEntries(KeptEntries&&) noexcept = default;
KeptEntries& KeptEntries::operator=(KeptEntries&&) noexcept = default;
KeptEntries::~KeptEntries() = default;

void KeptEntries::Take(const Node& entry) {
    if (!m_taken.empty() && m_taken.back() == entry.GetSerial())
        return; // removed once more by who was told of its removal
    ++m_count;
    m_taken.push_back(entry.GetSerial());
    m_bytes.Put(Place{entry.GetSerial(), entry.GetOrdinal()});
    put(entry);
}

void KeptEntries::Reserve(size_t entries) {
    m_taken.reserve(entries);
    m_parked.reserve(entries);
}

/// Who was told of its removal may have changed the entry, so that it can be parked no longer, or have
/// deleted it before all were told.
void KeptEntries::Keep(Node* entry) {
    const Place place{entry->GetSerial(), entry->GetOrdinal()};
    if (m_parkedBytes >= MostParked || !entry->Park()) {
        Take(*entry);
        delete entry;
        return;
    }
    m_parkedBytes += sizeof(ParkedEntry) + bytesOf(*entry);
    m_parked.push_back({std::unique_ptr<Node>(entry), place});
    m_taken.push_back(place.serial);
    ++m_count;
}

bool KeptEntries::PackSome() {
    constexpr int Some = 2000; // a few milliseconds
    for (int i = 0; i < Some && !m_parked.empty(); ++i) {
        const ParkedEntry& parked = m_parked.back();
        m_parkedBytes -= sizeof(ParkedEntry) + bytesOf(*parked.entry);
        m_bytes.Put(parked.place);
        put(*parked.entry);
        m_parked.pop_back();
    }
    if (!m_parked.empty())
        return true;
    m_parked.shrink_to_fit();
    m_bytes.Trim();
    return false;
}

void KeptEntries::Finish() {
    std::vector<quint32> serials = std::exchange(m_taken, {});
    std::sort(serials.begin(), serials.end());
    m_serials = SerialRanges(serials);
    m_bytes.Trim();
}

/// Neighbours are mostly alike.
quint32 KeptEntries::layoutOf(const Node& node) {
    if (m_lastLayout < m_layouts.size() && m_layouts[m_lastLayout].Describes(node))
        return m_lastLayout;
    const auto found = std::find_if(m_layouts.begin(), m_layouts.end(),
                                    [&](const Layout& layout) { return layout.Describes(node); });
    m_lastLayout = static_cast<quint32>(found - m_layouts.begin());
    if (found == m_layouts.end())
        m_layouts.emplace_back(node);
    return m_lastLayout;
}

void KeptEntries::put(const Node& node) {
    m_bytes.Put(layoutOf(node));
    if (const Shape* shape = m_layouts[m_lastLayout].shape) {
        for (const Shape::Field& field : shape->Fields())
            UndoContent::Put(m_bytes, *node.ValueAtPlace(field.place));
        return; // such a node has no sub-nodes
    }
    putValues(node);
    const std::vector<Node*> children = node.Children();
    m_bytes.Put(static_cast<quint32>(children.size()));
    for (const Node* child : children)
        put(*child);
}

void KeptEntries::putValues(const Node& node) {
    for (const ValueBase* value = node.FirstValue(); value; value = Node::NextValue(value)) {
        if (UndoContent::IsKnown(value->GetType()))
            UndoContent::Put(m_bytes, *value);
        else
            m_others.emplace_back(value->Clone());
    }
}

void KeptEntries::fill(UndoBytes::Reader& bytes, Node& node, const Layout& layout) {
    if (layout.shape) {
        node.FillFromShape();
        layout.AddItems(node);
        for (const Shape::Field& field : layout.shape->Fields())
            UndoContent::Take(bytes, *node.ValueAtPlace(field.place));
        return;
    }
    for (const Layout::Field& field : layout.fields) {
        std::unique_ptr<ValueBase> value = field.MakeValue();
        if (value) {
            UndoContent::Take(bytes, *value);
        } else {
            value = std::move(m_others.front());
            m_others.pop_front();
        }
        if (node.AddValue(field.name, value.get()))
            (void)value.release();
    }
}

std::unique_ptr<Node> KeptEntries::make(UndoBytes::Reader& bytes, Node* parent) {
    const Layout& layout = m_layouts[bytes.Get<quint32>()];
    std::unique_ptr<Node> node(layout.shape ? Node::NewEntry(parent, layout.name, *layout.shape)
                                            : new Node(parent, Names::Text(layout.name)));
    fill(bytes, *node, layout);
    const quint32 children = layout.shape ? 0 : bytes.Get<quint32>();
    for (quint32 i = 0; i < children; ++i)
        node->AddItemUnique(make(bytes, node.get()).release());
    return node;
}

std::vector<Node::Returning> KeptEntries::Make(Node& list) {
    std::vector<std::unique_ptr<Node>> entries;
    entries.reserve(m_count - m_parked.size());
    std::vector<Node::Returning> returning;
    returning.reserve(m_count);
    UndoBytes::Reader bytes(m_bytes);
    while (!bytes.AtEnd()) {
        LongWork::Step(static_cast<qint64>(entries.size()), static_cast<qint64>(m_count));
        const auto place = bytes.Get<Place>();
        entries.push_back(make(bytes, &list));
        returning.push_back({entries.back().get(), place.serial, place.ordinal});
    }
    for (const ParkedEntry& parked : m_parked)
        returning.push_back({parked.entry.get(), parked.place.serial, parked.place.ordinal});
    std::sort(returning.begin(), returning.end(),
              [](const Node::Returning& a, const Node::Returning& b) { return a.serial < b.serial; });
    for (std::unique_ptr<Node>& entry : entries)
        (void)entry.release();
    for (ParkedEntry& parked : m_parked)
        (void)parked.entry.release();
    *this = KeptEntries();
    return returning;
}

size_t KeptEntries::InMemory() const {
    return m_parkedBytes + m_bytes.InMemory() + m_serials.InMemory();
}
