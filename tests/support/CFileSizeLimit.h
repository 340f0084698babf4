#pragma once

#include <QtGlobal>

#include <csignal>
#include <sys/resource.h>

/// As long as it lives, no file of this process may grow beyond so many bytes: writing fails as on a full disk.
class CFileSizeLimit
{
public:
    explicit CFileSizeLimit(qint64 nBytes)
    {
        m_fnSignal = std::signal(SIGXFSZ, SIG_IGN);
        if (getrlimit(RLIMIT_FSIZE, &m_objBefore) != 0)
        {
            qFatal("Cannot tell the limit on the size of files");
        }
        rlimit objLimit = m_objBefore;
        objLimit.rlim_cur = rlim_t(nBytes);
        setTo(objLimit);
    }
    ~CFileSizeLimit()
    {
        setTo(m_objBefore);
        std::signal(SIGXFSZ, m_fnSignal);
    }
    CFileSizeLimit(const CFileSizeLimit&) = delete;
    CFileSizeLimit& operator=(const CFileSizeLimit&) = delete;

private:
    static void setTo(const rlimit& objLimit)
    {
        if (setrlimit(RLIMIT_FSIZE, &objLimit) != 0)
        {
            qFatal("Cannot set the limit on the size of files");
        }
    }

    rlimit m_objBefore{};
    void (*m_fnSignal)(int) = nullptr;
};
