#pragma once

#include <QtGlobal>

#include <sys/types.h>
#include <unistd.h>

/// As long as it lives, the process counts as a user who owns nothing: tests that run as root would be allowed everything.
class CPlainUser
{
public:
    enum ERights
    {
        Acts, ///< files are opened and made with that user's rights
        Asks  ///< only the question whether a file may be written is answered for that user
    };

    explicit CPlainUser(ERights eRights)
    {
        if (m_nUser == 0 && setresuid(s_nNobody, eRights == Acts ? s_nNobody : 0, 0) != 0)
        {
            qFatal("Cannot give up the rights of root");
        }
    }
    ~CPlainUser()
    {
        if (m_nUser == 0 && setresuid(0, 0, 0) != 0)
        {
            qFatal("Cannot take back the rights of root");
        }
    }
    CPlainUser(const CPlainUser&) = delete;
    CPlainUser& operator=(const CPlainUser&) = delete;

private:
    static constexpr uid_t s_nNobody = 65534;
    uid_t m_nUser = getuid();
};
