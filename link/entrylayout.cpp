#include "link/entrylayout.h"

#include <algorithm>

namespace {

constexpr quint64 MostChoices = 4096;
constexpr int MostNameLength = 256;

/// The value that a content is set to: none when the bytes are only looked at.
struct Target {
    ValueBase* value = nullptr;
    IObserver* originator = nullptr;
    const ValueSelection* choices = nullptr; ///< what places are counted in

    template <typename V, typename T>
    void Set(const T& content) const {
        if (V* own = value_cast<V>(value))
            own->SetValue(content, originator);
    }
};

template <typename V>
const V& as(const ValueBase& value) {
    return static_cast<const V&>(value);
}

template <typename V>
std::unique_ptr<ValueBase> make() {
    return std::make_unique<V>();
}

/// How the values of a type travel. The codes are those of the messages: they never change.
struct Kind {
    ValueType type;
    quint8 code;
    void (*put)(Wire::Writer&, const ValueBase&);
    void (*take)(Wire::Reader&, const Target&);
    std::unique_ptr<ValueBase> (*make)();
};

template <typename V>
void putWhole(Wire::Writer& writer, const ValueBase& value) {
    writer.Whole(as<V>(value).GetValue());
}

template <typename V, typename T>
void takeWhole(Wire::Reader& reader, const Target& target) {
    const qint64 number = reader.Whole();
    if (number < std::numeric_limits<T>::min() || number > std::numeric_limits<T>::max())
        return reader.Fail();
    target.Set<V>(static_cast<T>(number));
}

template <typename V>
void putNumber(Wire::Writer& writer, const ValueBase& value) {
    writer.Number(as<V>(value).GetValue());
}

template <typename V>
void takeNumber(Wire::Reader& reader, const Target& target) {
    const double number = reader.Number();
    if (reader.IsGood())
        target.Set<V>(number);
}

void putText(Wire::Writer& writer, const ValueBase& value) {
    writer.Text(as<Value<QString>>(value).GetValue());
}

void takeText(Wire::Reader& reader, const Target& target) {
    const QByteArrayView text = reader.Block();
    if (reader.IsGood() && target.value)
        target.Set<Value<QString>>(QString::fromUtf8(text));
}

void putFlag(Wire::Writer& writer, const ValueBase& value) {
    writer.Byte(as<Value<bool>>(value).GetValue() ? 1 : 0);
}

void takeFlag(Wire::Reader& reader, const Target& target) {
    const quint8 flag = reader.Byte();
    if (flag > 1)
        return reader.Fail();
    if (reader.IsGood())
        target.Set<Value<bool>>(flag == 1);
}

/// The place of the chosen item, counted from 1; 0 for none.
void putChoice(Wire::Writer& writer, const ValueBase& value) {
    writer.Count(static_cast<quint64>(as<ValueSelection>(value).GetCurrentIndex()) + 1);
}

void takeChoice(Wire::Reader& reader, const Target& target) {
    const auto most = target.choices ? static_cast<quint64>(target.choices->GetItemCount()) : 0;
    const auto place = static_cast<long>(reader.CountUpTo(most)) - 1;
    auto* const selection = value_cast<ValueSelection>(target.value);
    if (!selection || place < 0)
        return;
    if (selection->HasItemsOf(*target.choices))
        selection->SelectAt(place, target.originator);
    else
        selection->Select(target.choices->ItemAt(place)->GetName(), target.originator);
}

void putList(Wire::Writer& writer, const ValueBase& value) {
    const auto& list = as<ValueList<double>>(value).Elements();
    writer.Count(list.size());
    for (const double number : list)
        writer.Number(number);
}

void takeList(Wire::Reader& reader, const Target& target) {
    std::vector<double> numbers(reader.CountUpTo(static_cast<quint64>(reader.Left())));
    for (double& number : numbers)
        number = reader.Number();
    auto* const list = value_cast<ValueList<double>>(target.value);
    if (!reader.IsGood() || !list || list->Elements() == numbers)
        return;
    list->GetList() = std::move(numbers);
    list->HasChanged(TChangeCode::ValueChanged, target.originator);
}

template <typename V, typename T>
constexpr Kind wholeKind(quint8 code) {
    return {V::Type, code, putWhole<V>, takeWhole<V, T>, make<V>};
}

template <typename V>
constexpr Kind numberKind(quint8 code) {
    return {V::Type, code, putNumber<V>, takeNumber<V>, make<V>};
}

const Kind Kinds[] = {
    {ValueType::Text, 1, putText, takeText, make<Value<QString>>},
    {ValueType::Bool, 2, putFlag, takeFlag, make<Value<bool>>},
    wholeKind<Value<char>, signed char>(3),
    wholeKind<Value<int>, int>(4),
    wholeKind<Value<qint64>, qint64>(5),
    numberKind<Value<double>>(6),
    wholeKind<ValueNumeric<int>, int>(7),
    wholeKind<ValueNumeric<qint64>, qint64>(8),
    numberKind<ValueNumeric<double>>(9),
    {ValueType::Selection, 10, putChoice, takeChoice, make<ValueSelection>},
    {ValueType::DoubleList, 11, putList, takeList, make<ValueList<double>>},
};

/// Null for a type that does not travel.
const Kind* kindOf(ValueType type) {
    static const auto byType = [] {
        std::array<const Kind*, 16> kinds{};
        for (const Kind& kind : Kinds)
            kinds[static_cast<size_t>(kind.type)] = &kind;
        return kinds;
    }();
    return byType[static_cast<size_t>(type)];
}

const Kind* kindOfCode(quint8 code) {
    const auto* found =
        std::find_if(std::begin(Kinds), std::end(Kinds), [&](const Kind& kind) { return kind.code == code; });
    return found == std::end(Kinds) ? nullptr : found;
}

bool isNumeric(ValueType type) {
    return type == ValueType::NumericInt || type == ValueType::NumericInt64 ||
           type == ValueType::NumericDouble;
}

void putChoices(Wire::Writer& writer, const ValueSelection& choices) {
    writer.Count(static_cast<quint64>(choices.GetItemCount()));
    for (long i = 0; i < choices.GetItemCount(); ++i) {
        const SelectionItem& item = *choices.ItemAt(i);
        writer.Text(item.GetName());
        writer.Number(item.GetValue());
        writer.Whole(item.GetKey());
    }
}

std::unique_ptr<ValueSelection> takeChoices(Wire::Reader& reader) {
    auto choices = std::make_unique<ValueSelection>();
    for (quint64 left = reader.CountUpTo(MostChoices); left > 0 && reader.IsGood(); --left) {
        const QString name = reader.Text();
        const double number = reader.Number();
        choices->AddItem(name, number, static_cast<long>(reader.Whole()));
    }
    return choices;
}

/// A name of the tree: not empty, and no path.
QString takeName(Wire::Reader& reader) {
    QString name = reader.Text();
    if (name.isEmpty() || name.size() > MostNameLength || name.contains(QLatin1Char('/')))
        reader.Fail();
    return name;
}

} // namespace

std::unique_ptr<ValueBase> EntryLayout::Field::MakeValue() const {
    std::unique_ptr<ValueBase> value = kindOf(type)->make();
    Fit(*value);
    return value;
}

void EntryLayout::Field::Take(Wire::Reader& reader, ValueBase* value, IObserver* originator) const {
    kindOf(type)->take(reader, {value, originator, choices.get()});
}

void EntryLayout::Field::Fit(ValueBase& value) const {
    if (IValueNumeric* number = numeric_cast(&value); number && !(number->GetLimits() == limits))
        number->TakeLimits(limits);
    auto* const selection = value_cast<ValueSelection>(&value);
    if (selection && !selection->HasItemsOf(*choices)) {
        selection->DeleteItems();
        selection->AddItemsFrom(*choices);
    }
}

bool EntryLayout::Field::Describes(const ValueBase& value) const {
    if (name != value.NameId() || type != value.GetType())
        return false;
    const IValueNumeric* const number = numeric_cast(const_cast<ValueBase*>(&value));
    return choices ? choices->HasItemsOf(as<ValueSelection>(value))
                   : !number || number->GetLimits() == limits;
}

void EntryLayout::addField(const ValueBase& value) {
    if (!kindOf(value.GetType()))
        return;
    Field& field = m_fields.emplace_back();
    field.name = value.NameId();
    field.type = value.GetType();
    if (const IValueNumeric* number = numeric_cast(const_cast<ValueBase*>(&value)))
        field.limits = number->GetLimits();
    if (const auto* selection = value_cast<ValueSelection>(&value)) {
        field.choices = std::make_unique<ValueSelection>();
        field.choices->AddItemsFrom(*selection);
    }
}

EntryLayout EntryLayout::Of(const Node& entry) {
    EntryLayout layout;
    layout.m_name = Names::Intern(entry.GetName());
    for (const ValueBase* value = entry.FirstValue(); value; value = Node::NextValue(value))
        layout.addField(*value);
    return layout;
}

EntryLayout EntryLayout::Of(Names::Id name, const std::vector<Shape::Field>& fields) {
    EntryLayout layout;
    layout.m_name = name;
    for (const Shape::Field& from : fields) {
        if (!kindOf(from.type))
            continue;
        Field& field = layout.m_fields.emplace_back();
        field.name = from.name;
        field.type = from.type;
        field.limits = NumberLimits::At(from.limits);
        if (from.type == ValueType::Selection)
            field.choices = std::make_unique<ValueSelection>();
    }
    return layout;
}

QByteArray EntryLayout::Encode() const {
    Wire::Writer writer;
    writer.Text(Names::Text(m_name));
    writer.Count(m_fields.size());
    for (const Field& field : m_fields) {
        writer.Byte(kindOf(field.type)->code);
        writer.Text(Names::Text(field.name));
        if (isNumeric(field.type)) {
            for (const qint64 bits :
                 {field.limits.Min<qint64>(), field.limits.Max<qint64>(), field.limits.Step<qint64>()})
                writer.Fixed(static_cast<quint64>(bits));
        }
        if (field.choices)
            putChoices(writer, *field.choices);
    }
    return writer.Take();
}

std::optional<EntryLayout> EntryLayout::Decode(QByteArrayView bytes, NewNames newNames) {
    Wire::Reader reader(bytes);
    EntryLayout layout;
    const QString name = takeName(reader);
    std::vector<QString> names;
    for (quint64 left = reader.CountUpTo(MostFields); left > 0 && reader.IsGood(); --left) {
        const Kind* kind = kindOfCode(reader.Byte());
        names.push_back(takeName(reader));
        if (!kind || std::count(names.begin(), names.end(), names.back()) > 1)
            return std::nullopt;
        Field& field = layout.m_fields.emplace_back();
        field.type = kind->type;
        if (isNumeric(field.type)) {
            const auto min = static_cast<qint64>(reader.Fixed());
            const auto max = static_cast<qint64>(reader.Fixed());
            field.limits = NumberLimits::Of(min, max, static_cast<qint64>(reader.Fixed()));
        }
        if (field.type == ValueType::Selection)
            field.choices = takeChoices(reader);
    }
    if (!reader.IsDone() || layout.m_fields.empty())
        return std::nullopt;
    bool areKnown = true;
    const auto idOf = [&](const QString& text) {
        const Names::Id id = newNames == NewNames::Kept ? Names::Intern(text) : Names::Find(text);
        areKnown = areKnown && id != Names::Unknown;
        return id;
    };
    layout.m_name = idOf(name);
    for (size_t i = 0; i < names.size(); ++i)
        layout.m_fields[i].name = idOf(names[i]);
    return areKnown ? std::optional(std::move(layout)) : std::nullopt;
}

void EntryLayout::Put(Wire::Writer& writer, const Node& entry) const {
    for (const ValueBase* value = entry.FirstValue(); value; value = Node::NextValue(value)) {
        if (const Kind* kind = kindOf(value->GetType()))
            kind->put(writer, *value);
    }
}

bool EntryLayout::AreContents(QByteArrayView contents) const {
    Wire::Reader reader(contents);
    for (const Field& field : m_fields)
        field.Take(reader, nullptr);
    return reader.IsDone();
}

bool EntryLayout::Set(QByteArrayView contents, Node& entry, IObserver* originator) const {
    if (!AreContents(contents))
        return false;
    // Whoever hears of one value may end the entry, or take values out of it.
    const WeakRef<Node> alive(&entry);
    Wire::Reader reader(contents);
    for (const Field& field : m_fields) {
        ValueBase* const value = alive ? entry.FindOwnValue(field.name) : nullptr;
        field.Take(reader, value, originator);
    }
    return true;
}

std::vector<std::pair<QString, QString>> EntryLayout::Texts(QByteArrayView contents) const {
    std::vector<std::pair<QString, QString>> texts;
    Wire::Reader reader(contents);
    for (const Field& field : m_fields) {
        const std::unique_ptr<ValueBase> value = field.MakeValue();
        field.Take(reader, value.get());
        texts.emplace_back(Names::Text(field.name), value->GetStringValue());
    }
    return texts;
}

std::unique_ptr<ValueBase> EntryLayout::ValueOf(QByteArrayView contents, Names::Id name) const {
    Wire::Reader reader(contents);
    for (const Field& field : m_fields) {
        std::unique_ptr<ValueBase> value = field.name == name ? field.MakeValue() : nullptr;
        field.Take(reader, value.get());
        if (value)
            return value;
    }
    return nullptr;
}

bool EntryLayout::fits(const Shape& shape) const {
    return std::equal(m_fields.begin(), m_fields.end(), shape.Fields().begin(), shape.Fields().end(),
                      [](const Field& own, const Shape::Field& its) {
                          return own.name == its.name && own.type == its.type;
                      });
}

std::unique_ptr<Node> EntryLayout::MakeEntry(Node& list, const Shape* shape, QByteArrayView contents) const {
    const bool isShaped = shape && fits(*shape);
    std::unique_ptr<Node> entry(isShaped ? Node::NewEntry(&list, m_name, *shape)
                                         : new Node(&list, Names::Text(m_name)));
    if (isShaped) {
        entry->FillFromShape();
        Fit(*entry);
    }
    for (const Field& field : m_fields) {
        std::unique_ptr<ValueBase> value = isShaped ? nullptr : field.MakeValue();
        if (value && entry->AddValue(field.name, value.get()))
            (void)value.release();
    }
    Set(contents, *entry, nullptr);
    return entry;
}

void EntryLayout::Fit(Node& entry) const {
    for (const Field& field : m_fields) {
        ValueBase* const value = entry.FindOwnValue(field.name);
        if (value && value->GetType() == field.type)
            field.Fit(*value);
    }
}

bool EntryLayout::Describes(const Node& entry) const {
    if (Names::Text(m_name) != entry.GetName())
        return false;
    auto field = m_fields.begin();
    for (const ValueBase* value = entry.FirstValue(); value; value = Node::NextValue(value)) {
        if (!kindOf(value->GetType()))
            continue;
        if (field == m_fields.end() || !field++->Describes(*value))
            return false;
    }
    return field == m_fields.end();
}

bool EntryLayout::HasFieldsOf(const EntryLayout& other) const {
    return std::equal(m_fields.begin(), m_fields.end(), other.m_fields.begin(), other.m_fields.end(),
                      [](const Field& a, const Field& b) { return a.IsAlike(b); });
}
