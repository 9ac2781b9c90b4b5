#pragma once

#include <QString>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Interchange {

// Our records have one text, the comment. What foreign files say in several texts stands in it in a form that
// can be taken apart again: "Tower | Frankfurt, day only {Tone=88.5; Power=50W}".

/// The texts of a comment.
struct CommentParts {
    QString name;
    QString notes;                                   ///< behind " | "
    std::vector<std::pair<QString, QString>> extras; ///< "{key=value; key=value}" at the end

    /// The value of an extra; a null text when there is none.
    QString Extra(QLatin1String key) const;
};

/// Makes comments of texts in UTF-8, one after the other. Line breaks and control characters become blanks.
class CommentMaker {
public:
    /// An extra of the next comment.
    void Extra(std::string_view key, std::string_view value);
    void ForgetExtras() { m_extras.clear(); }
    bool HasExtras() const { return !m_extras.empty(); }
    /// The comment; without a name the notes are the name. Its extras are forgotten.
    QString Take(std::string_view name, std::string_view notes);
    /// The same for a comment that wants the extras behind its own.
    QString Take(const QString& comment);

private:
    std::string m_extras; ///< "key=value; key=value"
    std::string m_text;
};

/// The text with blanks for line breaks and control characters.
QString InOneLine(const QString& text);
/// Puts the texts into one, as `CommentMaker` does.
QString JoinComment(const CommentParts& parts);
/// Takes a comment apart. One that is not made so is all name.
CommentParts SplitComment(const QString& comment);

} // namespace Interchange
