#include "OrmBeneath.h"

#include <QCoreApplication>
#include <QList>

#include <cerrno>
#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <vector>

namespace
{
class CText
{
    Q_DECLARE_TR_FUNCTIONS(OrmBeneath)
};

constexpr int nMaxLinks = 40; ///< followed for one name, as the kernel counts them
constexpr int nMaxRaces = 16; ///< attempts while somebody renames folders underneath

/// Descriptors that are closed with the object.
class COpenFolders
{
public:
    COpenFolders() = default;
    COpenFolders(const COpenFolders&) = delete;
    COpenFolders& operator=(const COpenFolders&) = delete;
    ~COpenFolders()
    {
        while (!m_vecFolders.empty())
            leave();
    }
    void enter(int nFolder) { m_vecFolders.push_back(nFolder); }
    void leave()
    {
        const int nError = errno; // the caller's error is not that of closing
        close(m_vecFolders.back());
        m_vecFolders.pop_back();
        errno = nError;
    }
    bool isEmpty() const { return m_vecFolders.empty(); }
    int last(int nNone) const { return m_vecFolders.empty() ? nNone : m_vecFolders.back(); }

private:
    std::vector<int> m_vecFolders; ///< from the first one below the starting folder to where the walk stands
};

int failWith(int nError)
{
    errno = nError;
    return -1;
}

/// Puts the target of a link in place of its name. False, with errno, for a target that leads out at once.
bool followLink(int nFolder, const QByteArray& baPart, QList<QByteArray>& lstParts)
{
    char acTarget[4096];
    const ssize_t nLength = readlinkat(nFolder, baPart.constData(), acTarget, sizeof(acTarget));
    if (nLength < 0)
        return false;
    if (nLength == static_cast<ssize_t>(sizeof(acTarget)))
        return failWith(ENAMETOOLONG) >= 0;
    if (nLength > 0 && acTarget[0] == '/')
        return failWith(EXDEV) >= 0;
    lstParts = QByteArray(acTarget, static_cast<int>(nLength)).split('/') + lstParts;
    return true;
}

/// The walk for kernels without openat2: one component after the other, each opened without following a link; links are read and
/// followed by the walk itself, so that it always knows how deep it stands.
int walkBeneath(int nFolder, const QByteArray& baName, int nFlags)
{
    QList<QByteArray> lstParts = baName.split('/');
    COpenFolders objPath;
    int nLinks = 0;
    while (!lstParts.isEmpty())
    {
        const QByteArray baPart = lstParts.takeFirst();
        while (!lstParts.isEmpty() && (lstParts.first().isEmpty() || lstParts.first() == "."))
            lstParts.removeFirst();
        if (baPart.isEmpty() || baPart == ".")
            continue;
        if (baPart == "..")
        {
            if (objPath.isEmpty())
                return failWith(EXDEV);
            objPath.leave();
            continue;
        }
        const int nHere = objPath.last(nFolder);
        struct stat objStat = {};
        if (fstatat(nHere, baPart.constData(), &objStat, AT_SYMLINK_NOFOLLOW) != 0)
            return -1;
        if (S_ISLNK(objStat.st_mode))
        {
            if (++nLinks > nMaxLinks)
                return failWith(ELOOP);
            if (!followLink(nHere, baPart, lstParts))
                return -1;
            continue;
        }
        if (lstParts.isEmpty())
            return openat(nHere, baPart.constData(), nFlags | O_NOFOLLOW | O_CLOEXEC);
        const int nNext = openat(nHere, baPart.constData(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
        if (nNext < 0)
            return -1;
        objPath.enter(nNext);
    }
    return failWith(EISDIR); // the name ends in a folder
}
} // namespace

namespace OrmBeneath
{
QString problemOfName(const QString& strName)
{
    const QString strOutside = CText::tr("leads outside the study folder");
    if (strName.isEmpty())
        return CText::tr("names no file");
    if (strName.contains(QChar(0)))
        return CText::tr("holds a NUL character");
    const bool bDrive = strName.size() > 1 && strName.at(1) == QLatin1Char(':') && strName.at(0).isLetter();
    if (strName.startsWith(QLatin1Char('/')) || strName.startsWith(QLatin1String("~/")) || bDrive || strName.contains(QLatin1Char('\\')) ||
        strName.contains(QLatin1String("://")))
        return strOutside;
    int nDepth = 0;
    const QStringList lstParts = strName.split(QLatin1Char('/'));
    for (const QString& strPart : lstParts)
    {
        if (strPart == QLatin1String(".."))
            --nDepth;
        else if (!strPart.isEmpty() && strPart != QLatin1String("."))
            ++nDepth;
        if (nDepth < 0)
            return strOutside;
    }
    const QString& strLast = lstParts.last();
    if (nDepth == 0 || strLast.isEmpty() || strLast == QLatin1String(".") || strLast == QLatin1String(".."))
        return CText::tr("names a folder");
    return QString();
}

int openBeneath(int nFolder, const QByteArray& baName, int nFlags)
{
    open_how objHow = {};
    objHow.flags = static_cast<quint64>(nFlags | O_CLOEXEC);
    objHow.resolve = RESOLVE_BENEATH | RESOLVE_NO_MAGICLINKS;
    for (int nAttempt = 0; nAttempt < nMaxRaces; ++nAttempt)
    {
        const long nResult = syscall(SYS_openat2, nFolder, baName.constData(), &objHow, sizeof(objHow));
        if (nResult >= 0)
            return static_cast<int>(nResult);
        if (errno == EAGAIN || errno == EINTR)
            continue;
        // Sandboxes that do not know the call yet answer EPERM instead of ENOSYS.
        if (errno == ENOSYS || errno == EPERM)
            return walkBeneath(nFolder, baName, nFlags);
        return -1;
    }
    return failWith(EAGAIN);
}
} // namespace OrmBeneath
