#include "host/freqlist/undocontent.h"

#include "host/valuetree/value.h"
#include "host/valuetree/valueselection.h"

namespace UndoContent {
namespace {

/// A text begins with the number of its characters, doubled, and 1 more when they take two bytes each.
constexpr quint8 LongText = 255;

void putLength(UndoBytes& bytes, quint32 length) {
    if (length < LongText)
        return bytes.Put(static_cast<quint8>(length));
    bytes.Put(LongText);
    bytes.Put(length);
}

quint32 takeLength(UndoBytes::Reader& bytes) {
    const auto length = bytes.Get<quint8>();
    return length < LongText ? length : bytes.Get<quint32>();
}

void putText(UndoBytes& bytes, const QString& text) {
    const auto size = static_cast<size_t>(text.size());
    const auto* const units = reinterpret_cast<const char16_t*>(text.utf16());
    char16_t all = 0;
    for (size_t i = 0; i < size; ++i)
        all = static_cast<char16_t>(all | units[i]);
    const bool isWide = all > 0xff;
    putLength(bytes, static_cast<quint32>(size * 2 + (isWide ? 1 : 0)));
    if (isWide)
        return bytes.Put(units, size * 2);
    char* const narrow = bytes.Grow(size);
    for (size_t i = 0; i < size; ++i)
        narrow[i] = static_cast<char>(units[i]);
}

QString takeText(UndoBytes::Reader& bytes) {
    const quint32 length = takeLength(bytes);
    const auto size = static_cast<qsizetype>(length / 2);
    if (length % 2 == 0)
        return QString::fromLatin1(bytes.Get(static_cast<size_t>(size)), size);
    QString text(size, Qt::Uninitialized);
    std::memcpy(text.data(), bytes.Get(static_cast<size_t>(size) * 2), static_cast<size_t>(size) * 2);
    return text;
}

void putList(UndoBytes& bytes, const std::vector<double>& list) {
    putLength(bytes, static_cast<quint32>(list.size()));
    for (const double number : list)
        bytes.Put(number);
}

void copyBytes(UndoBytes::Reader& from, size_t count, UndoBytes* to) {
    constexpr size_t AtOnce = size_t(1) << 16;
    for (; count > AtOnce; count -= AtOnce)
        copyBytes(from, AtOnce, to);
    const char* const bytes = from.Get(count);
    if (to)
        to->Put(bytes, count);
}

void copyText(UndoBytes::Reader& from, UndoBytes* to) {
    const quint32 length = takeLength(from);
    if (to)
        putLength(*to, length);
    copyBytes(from, length % 2 == 1 ? length - 1 : length / 2, to);
}

void copyList(UndoBytes::Reader& from, UndoBytes* to) {
    const quint32 length = takeLength(from);
    if (to)
        putLength(*to, length);
    copyBytes(from, length * sizeof(double), to);
}

std::vector<double> takeList(UndoBytes::Reader& bytes) {
    std::vector<double> list(takeLength(bytes));
    for (double& number : list)
        number = bytes.Get<double>();
    return list;
}

/// How one type of value goes into bytes and out of them.
struct Codec {
    ValueType type;
    void (*put)(UndoBytes& bytes, const ValueBase& value);
    void (*take)(UndoBytes::Reader& bytes, ValueBase& value, IObserver* originator);
    /// To null: passes over it.
    void (*copy)(UndoBytes::Reader& from, UndoBytes* to);
};

template <typename V>
constexpr Codec plain() {
    using T = std::remove_cvref_t<decltype(std::declval<V>().GetValue())>;
    return {
        V::Type,
        [](UndoBytes& bytes, const ValueBase& value) { bytes.Put(static_cast<const V&>(value).GetValue()); },
        [](UndoBytes::Reader& bytes, ValueBase& value, IObserver* originator) {
            static_cast<V&>(value).SetValue(bytes.Get<T>(), originator);
        },
        [](UndoBytes::Reader& from, UndoBytes* to) { copyBytes(from, sizeof(T), to); }};
}

constexpr Codec Codecs[] = {
    {ValueType::Text,
     [](UndoBytes& bytes, const ValueBase& value) {
         putText(bytes, static_cast<const Value<QString>&>(value).GetValue());
     },
     [](UndoBytes::Reader& bytes, ValueBase& value, IObserver* originator) {
         static_cast<Value<QString>&>(value).SetValue(takeText(bytes), originator);
     },
     copyText},
    plain<ValueNumeric<double>>(),
    plain<ValueNumeric<int>>(),
    plain<ValueNumeric<qint64>>(),
    plain<Value<double>>(),
    plain<Value<int>>(),
    plain<Value<qint64>>(),
    plain<Value<bool>>(),
    plain<Value<char>>(),
    {ValueType::Selection,
     [](UndoBytes& bytes, const ValueBase& value) {
         bytes.Put(static_cast<qint32>(static_cast<const ValueSelection&>(value).GetCurrentIndex()));
     },
     [](UndoBytes::Reader& bytes, ValueBase& value, IObserver* originator) {
         static_cast<ValueSelection&>(value).SelectAt(bytes.Get<qint32>(), originator);
     },
     [](UndoBytes::Reader& from, UndoBytes* to) { copyBytes(from, sizeof(qint32), to); }},
    {ValueType::DoubleList,
     [](UndoBytes& bytes, const ValueBase& value) {
         putList(bytes, static_cast<const ValueList<double>&>(value).Elements());
     },
     [](UndoBytes::Reader& bytes, ValueBase& value, IObserver* originator) {
         auto& list = static_cast<ValueList<double>&>(value);
         list.GetList() = takeList(bytes);
         list.HasChanged(TChangeCode::ValueChanged, originator);
     },
     copyList},
};

constexpr size_t TypeCount = 16;

/// By type; null for those that are not known.
constexpr auto ByType = [] {
    std::array<const Codec*, TypeCount> all{};
    for (const Codec& codec : Codecs)
        all[static_cast<size_t>(codec.type)] = &codec;
    return all;
}();

const Codec* codecOf(ValueType type) {
    return ByType[static_cast<size_t>(type)];
}

} // namespace

bool IsKnown(ValueType type) {
    return codecOf(type) != nullptr;
}

void Put(UndoBytes& bytes, const ValueBase& value) {
    codecOf(value.GetType())->put(bytes, value);
}

void Take(UndoBytes::Reader& bytes, ValueBase& value, IObserver* originator) {
    codecOf(value.GetType())->take(bytes, value, originator);
}

void Skip(UndoBytes::Reader& bytes, ValueType type) {
    codecOf(type)->copy(bytes, nullptr);
}

void Copy(UndoBytes::Reader& from, ValueType type, UndoBytes& to) {
    codecOf(type)->copy(from, &to);
}

} // namespace UndoContent
