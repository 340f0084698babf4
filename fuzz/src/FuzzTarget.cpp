#include "FuzzTarget.h"

#include "MemoryMeter.h"

#include <cstdio>
#include <cstdlib>
#include <sys/mman.h>
#include <unistd.h>

namespace
{
long g_nTaken = 0;
long g_nRefused = 0;

/// A file in memory, reached through the process's own descriptor: no disk has to keep up.
class CScratchFile
{
public:
    CScratchFile() : m_nDescriptor(memfd_create("ormfuzz", MFD_CLOEXEC))
    {
        FuzzTarget::demand(m_nDescriptor >= 0, "no file for documents can be made");
    }
    ~CScratchFile() { ::close(m_nDescriptor); }
    CScratchFile(const CScratchFile&) = delete;
    CScratchFile& operator=(const CScratchFile&) = delete;

    QString path() const { return QStringLiteral("/proc/self/fd/%1").arg(m_nDescriptor); }
    void fill(const QByteArray& baContent) const
    {
        const bool bWritten = ftruncate(m_nDescriptor, 0) == 0 && pwrite(m_nDescriptor, baContent.constData(),
                                                                         static_cast<std::size_t>(baContent.size()), 0) == baContent.size();
        FuzzTarget::demand(bWritten, "the file for documents cannot be written");
    }

private:
    int m_nDescriptor;
};
} // namespace

namespace FuzzTarget
{
void demand(bool bMet, const std::string& strMessage)
{
    if (bMet)
        return;
    std::fprintf(stderr, "Wrong: %s\n", strMessage.c_str());
    std::abort();
}

void tookInput(bool bTaken)
{
    ++(bTaken ? g_nTaken : g_nRefused);
}

long takenInputs()
{
    return g_nTaken;
}

long refusedInputs()
{
    return g_nRefused;
}

QString fileWith(const QByteArray& baContent)
{
    static const CScratchFile s_objFile;
    s_objFile.fill(baContent);
    return s_objFile.path();
}

std::string text(const QString& strText)
{
    return strText.toStdString();
}
} // namespace FuzzTarget

CMemoryBound::CMemoryBound(long long nBytes) : m_nBound(MemoryMeter::restart() + nBytes) {}

CMemoryBound::~CMemoryBound()
{
    FuzzTarget::demand(MemoryMeter::peak() <= m_nBound,
                       std::to_string(MemoryMeter::peak() - m_nBound) + " bytes more were allocated than the input may cost");
}
