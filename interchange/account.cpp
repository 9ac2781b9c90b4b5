#include "interchange/account.h"

#include <QStringList>

namespace Interchange {

void Account::Count(std::string_view what) {
    if (!m_last.count || m_last.what.data() != what.data() || m_last.what.size() != what.size())
        m_last = {what, &m_counts[QString::fromUtf8(what.data(), static_cast<qsizetype>(what.size()))]};
    ++*m_last.count;
}

QString Account::CountsText() const {
    QStringList texts;
    for (const auto& [what, count] : m_counts)
        texts << QStringLiteral("%1 (%2)").arg(what).arg(count);
    return texts.join(QStringLiteral(", "));
}

} // namespace Interchange
