#pragma once

#include "host/valuetree/node.h"
#include "host/valuetree/valueselection.h"
#include "link/wire.h"

#include <memory>
#include <optional>
#include <vector>

/// What entries that are alike share: the name of their nodes, and names, types, limits and choices of their
/// values, in order. An entry then travels as its contents alone. Values of types that have no form as bytes
/// (lists of records, maps) and sub-nodes do not travel.
class EntryLayout {
public:
    static constexpr size_t MostFields = 64;

    /// The layout of an entry as it is.
    static EntryLayout Of(const Node& entry);
    /// An entry of these fields as it is made new.
    static EntryLayout Of(Names::Id name, const std::vector<Shape::Field>& fields);

    QByteArray Encode() const;
    /// Names stay until the process ends: those of a stranger's layout are only looked up.
    enum class NewNames { Kept, Refused };
    /// None for bytes that are no layout.
    static std::optional<EntryLayout> Decode(QByteArrayView bytes, NewNames newNames = NewNames::Kept);

    /// The contents of an entry of this layout.
    void Put(Wire::Writer& writer, const Node& entry) const;
    /// Sets the entry's values; those that it does not have are passed over. `originator` is not told. False,
    /// with nothing set, when the bytes are no contents of this layout.
    bool Set(QByteArrayView contents, Node& entry, IObserver* originator) const;
    bool AreContents(QByteArrayView contents) const;
    /// Each value's name and content as text.
    std::vector<std::pair<QString, QString>> Texts(QByteArrayView contents) const;
    /// A value by its name, set to its content; null when the layout has none such.
    std::unique_ptr<ValueBase> ValueOf(QByteArrayView contents, Names::Id name) const;

    /// A new entry with these contents, not yet attached: of `shape` where that has the same values, else of
    /// loose values. `contents` have been looked at by `AreContents`.
    std::unique_ptr<Node> MakeEntry(Node& list, const Shape* shape, QByteArrayView contents) const;
    /// Gives the entry's values the limits and choices of this layout, where they are others.
    void Fit(Node& entry) const;
    /// Whether this is what `Of` would answer.
    bool Describes(const Node& entry) const;
    /// Whether both have values of the same names and types in the same order.
    bool HasFieldsOf(const EntryLayout& other) const;

private:
    struct Field {
        Names::Id name;
        ValueType type;
        NumberLimits limits;
        std::unique_ptr<ValueSelection> choices; ///< of a selection

        std::unique_ptr<ValueBase> MakeValue() const;
        void Fit(ValueBase& value) const;
        /// Reads a content, and sets the value to it if there is one.
        void Take(Wire::Reader& reader, ValueBase* value, IObserver* originator = nullptr) const;
        bool Describes(const ValueBase& value) const;
        bool IsAlike(const Field& other) const { return name == other.name && type == other.type; }
    };

    void addField(const ValueBase& value);
    bool fits(const Shape& shape) const;

    Names::Id m_name = 0;
    std::vector<Field> m_fields;
};
