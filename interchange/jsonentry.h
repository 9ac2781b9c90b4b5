#pragma once

#include "host/report/textform.h"
#include "interchange/format.h"
#include "interchange/jsonevents.h"

#include <string>
#include <vector>

namespace Interchange {

// JSON of our own: an array with an object per entry, or lines of one object each. Members have the names of
// an entry's values; those that are null or missing have the value of a new entry.

/// What stands around the entries of a file.
struct JsonFrame {
    const char* begin;
    const char* first; ///< in front of the first entry
    const char* next;  ///< in front of each other
    const char* behind;
    const char* end;
};
inline constexpr JsonFrame JsonArray{"[", "\n", ",\n", "", "\n]\n"};
inline constexpr JsonFrame JsonLines{"", "", "", "\n", ""};

/// The members of one entry as it is read; the object is used again for the next. The operations leave
/// `content` as it is where the member is missing or null, and throw RGException when it is of another type.
class JsonEntry {
public:
    using Scalar = JsonEvents::Scalar;

    /// For the entries of that file behind the n-th; "file:line: entry n" stands before the reasons.
    explicit JsonEntry(QString fileName, qint64 number = 0)
        : m_fileName(std::move(fileName)), m_number(number) {}

    /// Forgets the members for those of the next entry; a line of 0 is none.
    void Begin(qint64 line);
    /// Adds a member without content. Throws for one that is there twice.
    void Add(std::string_view key);
    /// Sets the content of the member that was added last.
    void Set(Scalar kind, std::string_view text);
    /// The member that was added last is an array of numbers, to which one is added; something else is none.
    void BeginNumbers() { last().kind = Kind::Numbers; }
    void AddNumber(Scalar kind, std::string_view text);
    /// The member that was added last is nothing that an entry has.
    void SetUnknown() { last().kind = Kind::Unknown; }

    bool Has(const QString& key) const;
    void Take(const QString& key, QString& content) const;
    void Take(const QString& key, bool& content) const;
    void Take(const QString& key, double& content) const;
    void Take(const QString& key, std::vector<double>& content) const;
    /// A whole number of that range.
    void Take(const QString& key, qint64& content, qint64 least, qint64 greatest) const;
    /// A text, or a number in its shortest form.
    void TakeTextOrNumber(const QString& key, QString& content) const;
    /// Takes no content: the member has its place, but follows from others.
    void Pass(const QString& key) const { (void)find(key); }
    /// Calls `take` with each member that says anything and that nobody asked for; its content is a text.
    void VisitRest(const std::function<void(std::string_view key, std::string_view content)>& take) const;

    qint64 Line() const { return m_line; }
    [[noreturn]] void Fail(const QString& reason) const;
    [[noreturn]] void Fail(const QString& key, const char* reason) const;

private:
    enum class Kind { Text, Number, True, False, Null, Numbers, Unknown };
    struct Member {
        std::string key;
        QString name; ///< the key
        Kind kind = Kind::Null;
        std::string text;
        std::vector<double> numbers;
        mutable bool isAskedFor = false;
    };

    Member& last() { return m_members[m_count - 1]; }
    void countBytes(std::size_t bytes);
    const Member* exactly(const QString& key) const;
    /// Null when there is none or it is null. A list that lacks the member may have it under another name.
    const Member* find(const QString& key) const;
    double numberOf(const Member& member) const;

    QString m_fileName;
    qint64 m_line = 0;
    qint64 m_number;
    std::vector<Member> m_members; ///< more than `m_count` where earlier entries had more
    std::size_t m_count = 0;
    std::size_t m_bytes = 0;
    bool m_isLikeLast = false; ///< so far, the keys are those of the entry before
    mutable std::size_t m_next = 0;
    mutable REPORTGENERATOR::TextCache m_texts;
};

/// Reads the entries one by one until `take` answers false. Each must have a frequency; one that can be none
/// is told. Throws RGException "file:line: reason" at the first thing that is wrong.
void ReadJsonEntries(QIODevice& device, Reading& reading, const std::function<bool(const JsonEntry&)>& take);
/// The same for a list that takes the members itself: those that it did not ask for are counted.
Account ReadJsonEntries(QIODevice& device, const QString& name, const ReadOptions& options,
                        const std::function<bool(const JsonEntry&)>& take);

} // namespace Interchange
