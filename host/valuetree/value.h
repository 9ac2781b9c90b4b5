#pragma once

#include "host/base/numbers.h"
#include "host/valuetree/changerecorder.h"
#include "host/valuetree/texts.h"
#include "host/valuetree/valuebase.h"

#include <limits>
#include <list>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

/// Text form of each element type: numbers in the C locale, doubles in the shortest fixed notation that reads
/// back exactly, flags as "true" and "false", a character as its decimal code.
template <typename T>
struct ValueText;

template <>
struct ValueText<QString> {
    static constexpr ValueType Type = ValueType::Text;
    static constexpr const char* Name = "text";
    static QString ToText(const QString& value) { return value; }
    [[nodiscard]] static bool FromText(const QString& text, QString& value) {
        value = text;
        return true;
    }
};

template <>
struct ValueText<bool> {
    static constexpr ValueType Type = ValueType::Bool;
    static constexpr const char* Name = "bool";
    static QString ToText(bool value) { return value ? QStringLiteral("true") : QStringLiteral("false"); }
    /// Takes "true" and "1", "false" and "0".
    [[nodiscard]] static bool FromText(const QString& text, bool& value);
};

template <>
struct ValueText<char> {
    static constexpr ValueType Type = ValueType::Char;
    static constexpr const char* Name = "char";
    static QString ToText(char value) { return QString::number(static_cast<signed char>(value)); }
    [[nodiscard]] static bool FromText(const QString& text, char& value);
};

template <>
struct ValueText<int> {
    static constexpr ValueType Type = ValueType::Int;
    static constexpr ValueType NumericType = ValueType::NumericInt;
    static constexpr const char* Name = "int";
    static QString ToText(int value) { return QString::number(value); }
    [[nodiscard]] static bool FromText(const QString& text, int& value) {
        return Quor::ParseInt(text, value);
    }
};

template <>
struct ValueText<qint64> {
    static constexpr ValueType Type = ValueType::Int64;
    static constexpr ValueType NumericType = ValueType::NumericInt64;
    static constexpr const char* Name = "int64";
    static QString ToText(qint64 value) { return QString::number(value); }
    [[nodiscard]] static bool FromText(const QString& text, qint64& value) {
        return Quor::ParseInt(text, value);
    }
};

template <>
struct ValueText<double> {
    static constexpr ValueType Type = ValueType::Double;
    static constexpr ValueType NumericType = ValueType::NumericDouble;
    static constexpr const char* Name = "double";
    static QString ToText(double value) { return Quor::ToShortest(value); }
    [[nodiscard]] static bool FromText(const QString& text, double& value) {
        return Quor::ParseDouble(text, value);
    }
};

/// The value as type V, or null when it is null or of another type.
template <typename V>
V* value_cast(ValueBase* value) {
    return value && value->GetType() == V::Type ? static_cast<V*>(value) : nullptr;
}

template <typename V>
const V* value_cast(const ValueBase* value) {
    return value && value->GetType() == V::Type ? static_cast<const V*>(value) : nullptr;
}

namespace Detail {

/// Content, text form and comparison that `Value<T>` and `ValueNumeric<T>` share.
template <typename T, typename Base>
class ContentOf : public Base {
public:
    const T& GetValue() const { return m_value; }
    /// Stores the content as given; an equal content notifies nobody.
    void SetValue(const T& value, IObserver* originator = nullptr) {
        if (value == m_value)
            return;
        ChangeRecorder::NoteChange(*this, originator);
        m_value = value;
        this->HasChanged(TChangeCode::ValueChanged, originator);
    }

    QString GetStringValue() const override { return ValueText<T>::ToText(m_value); }
    /// A text that is no such value changes nothing.
    void SetStringValue(const QString& text, IObserver* originator = nullptr) override {
        T parsed{};
        if (ValueText<T>::FromText(text, parsed))
            SetValue(parsed, originator);
    }

protected:
    using Base::Base;
    T m_value{};
};

/// A text stands in a cell, of which the value knows the number.
template <>
class ContentOf<QString, ValueBase> : public ValueBase {
public:
    /// Good until the text is set anew.
    const QString& GetValue() const { return Texts::At(m_text); }
    void SetValue(const QString& value, IObserver* originator = nullptr) {
        if (value == GetValue())
            return;
        ChangeRecorder::NoteChange(*this, originator);
        const Texts::Id old = m_text;
        m_text = IsOfShape() ? Texts::KeepForEntry(NameId(), value) : Texts::Keep(value);
        Texts::Release(old);
        HasChanged(TChangeCode::ValueChanged, originator);
    }

    /// The same from a part of some text, of which only as much is copied as has to be kept.
    void SetText(QStringView text, IObserver* originator = nullptr);

    QString GetStringValue() const override { return GetValue(); }
    void SetStringValue(const QString& text, IObserver* originator = nullptr) override {
        SetValue(text, originator);
    }

protected:
    using ValueBase::ValueBase;
    ~ContentOf() override { Texts::Release(m_text); }

private:
    Texts::Id m_text = 0;
};

} // namespace Detail

/// A value of one element: text, flag, character code or number.
template <typename T>
class Value : public Detail::ContentOf<T, ValueBase> {
public:
    static constexpr ValueType Type = ValueText<T>::Type;

    Value() : Detail::ContentOf<T, ValueBase>(Type) {}
    ~Value() override { this->AnnounceRemoval(); }

    void Assign(const ValueBase& other) override {
        if (const auto* same = value_cast<Value>(&other))
            this->SetValue(same->GetValue());
    }
    bool Compare(const ValueBase* other) const override {
        const auto* same = value_cast<Value>(other);
        return same && same->GetValue() == this->GetValue();
    }
    QString GetTypeName() const override { return QString::fromLatin1(ValueText<T>::Name); }
    [[nodiscard]] Value* Clone() const override {
        auto* copy = new Value;
        copy->SetValue(this->GetValue());
        return copy;
    }
};

/// A number with limits and step, whatever its width. The limits guide editors; they do not clamp.
class IValueNumeric : public ValueBase {
public:
    /// Takes minimum, maximum, step and current value, in this order, from another number. Between numbers of
    /// one type nothing is lost; between different types each number is converted.
    virtual void CopyNumeric(const IValueNumeric& source) = 0;
    /// All limits at once, whatever the type, without telling anybody.
    const NumberLimits& GetLimits() const { return OwnLimits(); }
    void TakeLimits(const NumberLimits& limits) { SetOwnLimits(limits); }

    virtual double MinAsDouble() const = 0;
    virtual double MaxAsDouble() const = 0;
    virtual double StepAsDouble() const = 0;
    virtual double ValueAsDouble() const = 0;
    /// A number outside the type's range is cut to it; a fraction is cut off where the type has none.
    virtual void SetFromDouble(double value, IObserver* originator = nullptr) = 0;

protected:
    using ValueBase::ValueBase;
};

/// The value as a number with limits; null when it is something else.
inline IValueNumeric* numeric_cast(ValueBase* value) {
    const bool numeric =
        value && (value->GetType() == ValueType::NumericInt || value->GetType() == ValueType::NumericInt64 ||
                  value->GetType() == ValueType::NumericDouble);
    return numeric ? static_cast<IValueNumeric*>(value) : nullptr;
}

/// A double as T, cut to the range of T; not-a-number becomes 0.
template <typename T>
T ClampedFromDouble(double value) {
    if constexpr (std::is_floating_point_v<T>) {
        return value;
    } else {
        constexpr double lowest = static_cast<double>(std::numeric_limits<T>::lowest());
        if (value != value)
            return 0;
        if (value <= lowest)
            return std::numeric_limits<T>::lowest();
        return value >= -lowest ? std::numeric_limits<T>::max() : static_cast<T>(value);
    }
}

/// A number of type T with limits and step.
///
/// \code
/// ValueNumeric<double> frequency;
/// frequency.SetMinMax(9e3, 30e6, 1);
/// frequency.SetStringValue(QStringLiteral("7055000"));
/// const double hertz = frequency.GetValue(); // 7055000
/// \endcode
template <typename T>
class ValueNumeric : public Detail::ContentOf<T, IValueNumeric> {
public:
    static constexpr ValueType Type = ValueText<T>::NumericType;

    ValueNumeric() : Detail::ContentOf<T, IValueNumeric>(Type) {}
    ~ValueNumeric() override { this->AnnounceRemoval(); }

    T GetMin() const { return this->OwnLimits().template Min<T>(); }
    T GetMax() const { return this->OwnLimits().template Max<T>(); }
    T GetStep() const { return this->OwnLimits().template Step<T>(); }
    void SetMin(T min, IObserver* originator = nullptr) { SetMinMax(min, GetMax(), GetStep(), originator); }
    void SetMax(T max, IObserver* originator = nullptr) { SetMinMax(GetMin(), max, GetStep(), originator); }
    void SetStep(T step, IObserver* originator = nullptr) { SetMinMax(GetMin(), GetMax(), step, originator); }
    /// Sets limits and step; observers get one "look again" when any of them changed.
    void SetMinMax(T min, T max, T step, IObserver* originator = nullptr) {
        if (min == GetMin() && max == GetMax() && step == GetStep())
            return;
        this->SetOwnLimits(NumberLimits::Of(min, max, step));
        this->HasChanged(TChangeCode::LookAgain, originator);
    }

    ValueTransaction CreateTransaction(std::initializer_list<TChangeCode> codes, IObserver* originator) {
        return ValueTransaction(*this, codes, originator);
    }

    void CopyNumeric(const IValueNumeric& source) override {
        if (const auto* same = value_cast<ValueNumeric>(&source)) {
            SetMinMax(same->GetMin(), same->GetMax(), same->GetStep());
            this->SetValue(same->m_value);
            return;
        }
        SetMinMax(ClampedFromDouble<T>(source.MinAsDouble()), ClampedFromDouble<T>(source.MaxAsDouble()),
                  ClampedFromDouble<T>(source.StepAsDouble()));
        SetFromDouble(source.ValueAsDouble());
    }
    double MinAsDouble() const override { return static_cast<double>(GetMin()); }
    double MaxAsDouble() const override { return static_cast<double>(GetMax()); }
    double StepAsDouble() const override { return static_cast<double>(GetStep()); }
    double ValueAsDouble() const override { return static_cast<double>(this->m_value); }
    void SetFromDouble(double value, IObserver* originator = nullptr) override {
        this->SetValue(ClampedFromDouble<T>(value), originator);
    }

    void Assign(const ValueBase& other) override {
        if (const auto* same = value_cast<ValueNumeric>(&other))
            CopyNumeric(*same);
    }
    bool Compare(const ValueBase* other) const override {
        const auto* same = value_cast<ValueNumeric>(other);
        return same && same->m_value == this->m_value;
    }
    QString GetTypeName() const override {
        return QStringLiteral("numeric ") + QString::fromLatin1(ValueText<T>::Name);
    }
    [[nodiscard]] ValueNumeric* Clone() const override {
        auto* copy = new ValueNumeric;
        copy->CopyNumeric(*this);
        return copy;
    }
};

/// How the elements of a list are stored, tagged and told as text.
template <typename T>
struct ValueListTraits;

template <>
struct ValueListTraits<double> {
    using Container = std::vector<double>;
    static constexpr ValueType Type = ValueType::DoubleList;
    static constexpr const char* Name = "double list";
    /// Elements in shortest form, separated by ";".
    static QString ToText(const Container& list);
    [[nodiscard]] static bool FromText(const QString& text, Container& list);
};

/// An ordered list of numbers or records. It keeps a short memory of what changed, so that a reader that has
/// seen a long list need not look at all of it again when some elements came or changed.
template <typename T>
class ValueList : public ValueBase {
public:
    /// How much of a list a reader has seen; a fresh one has seen nothing.
    struct Seen {
        quint64 rewrites = 0;
        quint64 edits = 0;
        quint64 size = 0;
    };
    /// An element that changed in its place, good until the list is rewritten.
    struct Edited {
        quint64 place;
        const T* element;
    };

    using Traits = ValueListTraits<T>;
    using Container = typename Traits::Container;
    static constexpr ValueType Type = Traits::Type;

    ValueList() : ValueBase(Type) {}
    ~ValueList() override { AnnounceRemoval(); }

    quint64 Size() const { return m_list.size(); }
    /// The element at `index`, which must be below `Size()`; constant time for numbers, linear for records.
    const T& At(long index) const { return *std::next(m_list.begin(), index); }
    void PushBack(const T& element, IObserver* originator = nullptr) {
        ChangeRecorder::NoteChange(*this, originator);
        m_list.push_back(element);
        HasChanged(TChangeCode::ValueChanged, originator);
    }
    /// Appends elements in one change.
    void Append(Container&& elements, IObserver* originator = nullptr) {
        if (elements.empty())
            return;
        ChangeRecorder::NoteChange(*this, originator);
        m_list.insert(m_list.end(), std::make_move_iterator(elements.begin()),
                      std::make_move_iterator(elements.end()));
        HasChanged(TChangeCode::ValueChanged, originator);
    }
    /// Changes the record `element`, which stands at `place`. The caller calls `HasChanged` after the last
    /// change.
    template <typename Change>
    requires std::is_same_v<Container, std::list<T>>
    void Edit(quint64 place, const T& element, Change change) {
        ChangeRecorder::NoteChange(*this, nullptr);
        change(const_cast<T&>(element));
        History& h = history();
        if (h.edits.size() == MaxEdits) { // whoever follows has seen the older half long ago
            h.edits.erase(h.edits.begin(), h.edits.begin() + MaxEdits / 2);
            h.firstEdit += MaxEdits / 2;
        }
        h.edits.push_back({place, &element});
    }
    void Clear(IObserver* originator = nullptr) {
        if (m_list.empty())
            return;
        ChangeRecorder::NoteChange(*this, originator);
        rewrite();
        m_list.clear();
        HasChanged(TChangeCode::ValueChanged, originator);
    }
    /// Direct access to the elements. The caller calls `HasChanged` after a change, and readers then read the
    /// whole list again. Ask for the list anew before each change.
    Container& GetList() {
        ChangeRecorder::NoteChange(*this, nullptr);
        rewrite();
        return m_list;
    }
    const Container& GetList() const { return m_list; }
    const Container& Elements() const { return m_list; }

    Seen SeenNow() const {
        if (!m_history)
            return {0, 0, m_list.size()};
        return {m_history->rewrites, m_history->firstEdit + m_history->edits.size(), m_list.size()};
    }
    /// Whether what has changed since `seen` is known: then `edited` are the elements that changed in place
    /// (some more than once, some maybe new), and those from `seen.size` on are new.
    [[nodiscard]] bool ChangesSince(const Seen& seen, std::vector<Edited>& edited) const {
        if (seen.size == 0 || seen.size > m_list.size())
            return false;
        edited.clear();
        if (!m_history)
            return true;
        const History& h = *m_history;
        if (seen.rewrites != h.rewrites || seen.edits < h.firstEdit)
            return false;
        edited.assign(h.edits.begin() + static_cast<std::ptrdiff_t>(seen.edits - h.firstEdit), h.edits.end());
        return true;
    }

    QString GetStringValue() const override { return Traits::ToText(m_list); }
    void SetStringValue(const QString& text, IObserver* originator = nullptr) override {
        Container parsed;
        if (!Traits::FromText(text, parsed) || parsed == m_list)
            return;
        ChangeRecorder::NoteChange(*this, originator);
        rewrite();
        m_list = std::move(parsed);
        HasChanged(TChangeCode::ValueChanged, originator);
    }
    void Assign(const ValueBase& other) override {
        const auto* same = value_cast<ValueList>(&other);
        if (!same || same->m_list == m_list)
            return;
        ChangeRecorder::NoteChange(*this, nullptr);
        rewrite();
        m_list = same->m_list;
        HasChanged(TChangeCode::ValueChanged);
    }
    bool Compare(const ValueBase* other) const override {
        const auto* same = value_cast<ValueList>(other);
        return same && same->m_list == m_list;
    }
    QString GetTypeName() const override { return QString::fromLatin1(Traits::Name); }
    [[nodiscard]] ValueList* Clone() const override {
        auto* copy = new ValueList;
        copy->m_list = m_list;
        return copy;
    }

private:
    static constexpr size_t MaxEdits = 16384;

    /// What readers need to follow changes, which most lists never see.
    struct History {
        std::vector<Edited> edits; ///< the latest ones
        quint64 firstEdit = 0;     ///< how many edits went before them
        quint64 rewrites = 0;
    };

    History& history() {
        if (!m_history)
            m_history = std::make_unique<History>();
        return *m_history;
    }
    void rewrite() {
        History& h = history();
        ++h.rewrites;
        h.firstEdit += h.edits.size();
        h.edits.clear();
    }

    Container m_list;
    std::unique_ptr<History> m_history;
};
