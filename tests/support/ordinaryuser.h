#pragma once

#include <QFile>
#include <QString>

#include <cstdlib>
#include <unistd.h>

/// While it lives the process has no more rights to files than any user, who owns `folder`: nothing stops
/// root. Does nothing for a user who is none.
class OrdinaryUser {
public:
    explicit OrdinaryUser(const QString& folder) : m_wasRoot(::geteuid() == 0) {
        m_isOne = !m_wasRoot || (::chown(QFile::encodeName(folder).constData(), Nobody, Nobody) == 0 &&
                                 ::seteuid(Nobody) == 0);
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;
    ~OrdinaryUser() {
        if (m_wasRoot && ::seteuid(0) != 0)
            std::abort();
    }
    bool IsOne() const { return m_isOne; }

private:
    static constexpr uid_t Nobody = 65534;

    bool m_wasRoot;
    bool m_isOne;
};
