#pragma once

#include <QDateTime>
#include <QString>
#include <QVector>

#include <limits>
#include <span>
#include <string_view>
#include <variant>

namespace REPORTGENERATOR {

class IRGObject;

/// A point in time in µs since 1970-01-01 UTC, or none. QDateTime holds whole milliseconds only, and a
/// million records cannot afford one each. Times outside the years 1 to 9999 have no text form and are none.
struct Timestamp {
    static constexpr qint64 None = std::numeric_limits<qint64>::min();
    static constexpr qint64 First = -62'135'596'800'000'000; ///< 0001-01-01T00:00:00Z
    static constexpr qint64 Last = 253'402'300'799'999'999;  ///< the last microsecond of the year 9999

    qint64 usec = None;

    Timestamp() = default;
    explicit Timestamp(qint64 microseconds)
        : usec(microseconds >= First && microseconds <= Last ? microseconds : None) {}
    explicit Timestamp(const QDateTime& time)
        : Timestamp(time.isValid() && qAbs(time.toMSecsSinceEpoch()) <= Last / 1000
                        ? time.toMSecsSinceEpoch() * 1000
                        : None) {}

    bool IsSet() const { return usec != None; }
    /// In UTC, rounded down to milliseconds; invalid when there is none.
    QDateTime ToDateTime() const {
        const qint64 rest = usec % 1000;
        return IsSet() ? QDateTime::fromMSecsSinceEpoch(usec / 1000 - (rest < 0 ? 1 : 0), Qt::UTC)
                       : QDateTime();
    }
};

/// A number that files spell as one of a few names, the n-th name standing for n. A file's unknown name
/// reads as 0, so that lists of newer versions stay readable.
struct NamedNumber {
    std::span<const std::string_view> names;
    int value = 0;
};

/// A record's list of sub-records as readers and writers see it. They use one object at a time, so a list may
/// keep nothing and pass each object to a callback.
class IObjectList {
public:
    virtual ~IObjectList() = default;
    virtual qsizetype Size() const = 0;
    virtual const IRGObject& At(qsizetype index) const = 0;
    /// An empty object at the end of the list, to be filled by the caller until the next call.
    virtual IRGObject& Append() = 0;
    /// The object that Append() gave last has been filled.
    virtual void Completed() {}
    virtual void Clear() = 0;
};

/// The ordinary list of sub-records: a vector owned by its record.
template <class T>
class ObjectList final : public IObjectList {
public:
    QVector<T> items;

    qsizetype Size() const override { return items.size(); }
    const IRGObject& At(qsizetype index) const override { return items.at(index); }
    IRGObject& Append() override { return items.emplace_back(); }
    void Clear() override { items.clear(); }
};

/// Where a member stands in its record's XML element.
enum class Placement : quint8 { Attribute, Element, Content };

/// Points at one member of a record; the type tells how it is read and written.
using MemberPtr = std::variant<double*, int*, QString*, Timestamp*, NamedNumber*, IRGObject*, IObjectList*>;

/// One member of a record type. A sub-record's name is its element's, a list's the element name of its items.
struct MemberInfo {
    std::string_view name;
    Placement placement;
    MemberPtr (*at)(IRGObject&);
};

/// The description of a record type: its element name and its members, in the order in which they are
/// written. The XML, binary and CSV forms follow from this table alone.
///
/// \code
/// class Band final : public REPORTGENERATOR::IRGObject {
/// public:
///     const REPORTGENERATOR::RecordInfo& GetRecordInfo() const override {
///         using namespace REPORTGENERATOR;
///         static constexpr MemberInfo Members[] = {
///             {"Name", Placement::Attribute, MemberAt<&Band::name>},
///             {"Begin", Placement::Element, MemberAt<&Band::hertz>},
///         };
///         static constexpr RecordInfo Info{"Band", Members, true};
///         return Info;
///     }
///
///     QString name;
///     double hertz = NoNumber;
/// };
/// \endcode
struct RecordInfo {
    std::string_view name;
    std::span<const MemberInfo> members;
    bool isDocument; ///< is a file's root and carries a version

    /// The element or attribute of that name; null when there is none.
    const MemberInfo* Find(std::string_view memberName, Placement placement) const {
        for (const MemberInfo& member : members)
            if (member.placement == placement && member.name == memberName)
                return &member;
        return nullptr;
    }
    /// The member that is the element's own text; null when there is none.
    const MemberInfo* Content() const {
        return members.size() == 1 && members.front().placement == Placement::Content ? &members.front()
                                                                                      : nullptr;
    }
};

namespace detail {
template <class Record, class T>
Record RecordOf(T Record::*);
}

/// Access function of a table row, for example `MemberAt<&Detection::m_startTime>`.
template <auto Pointer>
MemberPtr MemberAt(IRGObject& object) {
    using Record = decltype(detail::RecordOf(Pointer));
    return &(static_cast<Record&>(object).*Pointer);
}

} // namespace REPORTGENERATOR
