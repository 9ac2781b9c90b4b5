#pragma once

#include <QString>

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace Interchange {

/// What became of the content of a file, or of a list on its way into one: what was taken, and all that was
/// not, counted by what it is.
class Account {
public:
    qint64 entries = 0; ///< taken
    qint64 refused = 0; ///< records that are no entries, each told with its line

    /// Counts a thing that had to be left out or changed: a field by the file's word for it ("Power"), or a
    /// text of the context `Account` ("bandwidths from the mode").
    void Count(std::string_view what, qint64 times = 1);
    const std::map<std::string, qint64, std::less<>>& Counts() const { return m_counts; }
    /// "Power (12), Tone (3)", in the operator's language; empty when nothing was counted.
    QString CountsText() const;

private:
    std::map<std::string, qint64, std::less<>> m_counts;
};

} // namespace Interchange
