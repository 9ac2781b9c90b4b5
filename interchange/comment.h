#pragma once

#include <QString>

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

/// Puts the texts into one; line breaks and control characters become blanks. Without a name the notes are
/// the name.
QString JoinComment(const CommentParts& parts);
/// Takes a comment apart. One that is not made so is all name.
CommentParts SplitComment(const QString& comment);

} // namespace Interchange
