#include "interchange/account.h"

#include <QCoreApplication>
#include <QStringList>

namespace Interchange {

void Account::Count(std::string_view what, qint64 times) {
    if (times == 0)
        return;
    auto found = m_counts.find(what);
    if (found == m_counts.end())
        found = m_counts.emplace(what, 0).first;
    found->second += times;
}

QString Account::CountsText() const {
    QStringList texts;
    for (const auto& [what, count] : m_counts)
        texts
            << QStringLiteral("%1 (%2)").arg(QCoreApplication::translate("Account", what.c_str())).arg(count);
    return texts.join(QStringLiteral(", "));
}

} // namespace Interchange
