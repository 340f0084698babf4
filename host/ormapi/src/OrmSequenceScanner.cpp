#include "OrmSequenceScanner.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace
{
class CText
{
    Q_DECLARE_TR_FUNCTIONS(OrmSequenceScanner)
};

/// A folder that is still to be looked at.
struct SPending
{
    QString m_strFolder; ///< without closing separator
    int m_nDepth = 0;    ///< below the path that was given
};

/// What a folder holds that matters here.
struct SFolderContent
{
    QStringList m_lstFolders;       ///< names, sorted
    QStringList m_lstSequenceFiles; ///< names, the usual one first, then sorted
};

using FolderKey = QPair<quint64, quint64>; ///< device and inode

struct SDirCloser
{
    void operator()(DIR* pDir) const { closedir(pDir); }
};

bool isDotName(const char* pName)
{
    return std::strcmp(pName, ".") == 0 || std::strcmp(pName, "..") == 0;
}

class CScan
{
public:
    CScan(const OrmSequenceScanner::FnFound& fnFound, const OrmSequenceScanner::FnProgress& fnProgress)
        : m_fnFound(fnFound), m_fnProgress(fnProgress)
    {
    }

    void addPath(const QString& strGiven);
    SScanOutcome outcome();
    bool stopped() const { return m_bStopped; }

private:
    void walk(const QString& strRoot);
    void lookAt(const SPending& sPending);
    bool readFolder(const QString& strFolder, SFolderContent& sContent);
    void sortEntry(int nFolder, const dirent* pEntry, const QString& strFolder, SFolderContent& sContent);
    bool openSequenceFile(const QString& strFile, QSet<QString>& setOwnFolders);
    void problem(const QString& strText);
    bool goOn(const QString& strFolder);

    const OrmSequenceScanner::FnFound& m_fnFound;
    const OrmSequenceScanner::FnProgress& m_fnProgress;
    SScanOutcome m_sOutcome;
    std::vector<SPending> m_lstPending; ///< a stack: folders may nest deeper than calls may
    QSet<FolderKey> m_setSeen;          ///< a folder that is reached twice is looked at once
    qint64 m_nUntold = 0;               ///< problems beyond the limit
    bool m_bStopped = false;            ///< cancelled, or a limit was reached
};

void CScan::problem(const QString& strText)
{
    if (m_sOutcome.m_lstProblems.size() < OrmSequenceScanner::s_nMaxProblems)
        m_sOutcome.m_lstProblems.append(strText);
    else
        ++m_nUntold;
}

bool CScan::goOn(const QString& strFolder)
{
    if (!m_bStopped && m_fnProgress && !m_fnProgress({m_sOutcome.m_nFolders, m_sOutcome.m_nSequences, strFolder}))
    {
        m_sOutcome.m_bCancelled = true;
        m_bStopped = true;
    }
    return !m_bStopped;
}

void CScan::addPath(const QString& strGiven)
{
    const QFileInfo objInfo(strGiven);
    const QString strPath = QDir::cleanPath(objInfo.absoluteFilePath());
    const qint64 nBefore = m_sOutcome.m_nSequences;
    const int nProblems = m_sOutcome.m_lstProblems.size();
    if (strGiven.isEmpty() || !objInfo.exists())
    {
        problem(strGiven.isEmpty() ? CText::tr("A folder without a name does not exist.") : CText::tr("%1 does not exist.").arg(strGiven));
        return;
    }
    if (objInfo.isDir())
    {
        walk(strPath);
        if (m_sOutcome.m_nSequences == nBefore && m_sOutcome.m_lstProblems.size() == nProblems && !m_bStopped)
            problem(CText::tr("There is no sequence under %1.").arg(strPath));
        return;
    }
    if (!OrmSequenceScanner::isSequenceFileName(objInfo.fileName()))
    {
        problem(CText::tr("%1 is neither a folder nor a sequence file (Sequence*.txt).").arg(strPath));
        return;
    }
    QSet<QString> setOwnFolders;
    if (goOn(strPath))
        openSequenceFile(strPath, setOwnFolders);
}

void CScan::walk(const QString& strRoot)
{
    m_lstPending.push_back({strRoot, 0});
    while (!m_lstPending.empty() && !m_bStopped)
    {
        const SPending sPending = m_lstPending.back();
        m_lstPending.pop_back();
        lookAt(sPending);
    }
    m_lstPending.clear();
}

void CScan::lookAt(const SPending& sPending)
{
    if (!goOn(sPending.m_strFolder))
        return;
    if (m_sOutcome.m_nFolders >= OrmSequenceScanner::s_nMaxFolders)
    {
        problem(CText::tr("The search ended after %n folders: open a folder further down.", nullptr, int(m_sOutcome.m_nFolders)));
        m_bStopped = true;
        return;
    }
    ++m_sOutcome.m_nFolders;

    SFolderContent sContent;
    if (!readFolder(sPending.m_strFolder, sContent))
        return;
    const QString strBase = sPending.m_strFolder == QLatin1String("/") ? sPending.m_strFolder : sPending.m_strFolder + QLatin1Char('/');
    QSet<QString> setOwnFolders; // clicks and results of a sequence found here are no place for further sequences
    for (const QString& strName : qAsConst(sContent.m_lstSequenceFiles))
    {
        if (m_bStopped || openSequenceFile(strBase + strName, setOwnFolders))
            break;
    }
    if (sContent.m_lstFolders.isEmpty() || m_bStopped)
        return;
    if (sPending.m_nDepth >= OrmSequenceScanner::s_nMaxDepth)
    {
        problem(CText::tr("The folders in %1 are nested too deep and were left out.").arg(sPending.m_strFolder));
        return;
    }
    // The stack gives back the last one first.
    for (auto it = sContent.m_lstFolders.crbegin(); it != sContent.m_lstFolders.crend(); ++it)
    {
        if (!setOwnFolders.contains(*it))
            m_lstPending.push_back({strBase + *it, sPending.m_nDepth + 1});
    }
}

bool CScan::readFolder(const QString& strFolder, SFolderContent& sContent)
{
    const int nFolder = ::open(QFile::encodeName(strFolder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK);
    const std::unique_ptr<DIR, SDirCloser> pDir(nFolder >= 0 ? fdopendir(nFolder) : nullptr);
    if (!pDir)
    {
        problem(CText::tr("%1 cannot be looked into: %2.").arg(strFolder, QString::fromLocal8Bit(std::strerror(errno))));
        if (nFolder >= 0)
            ::close(nFolder);
        return false;
    }
    struct stat sStat = {};
    if (fstat(nFolder, &sStat) == 0)
    {
        const FolderKey key(sStat.st_dev, sStat.st_ino);
        if (m_setSeen.contains(key))
            return false;
        m_setSeen.insert(key);
    }

    int nEntries = 0;
    errno = 0;
    while (const dirent* pEntry = readdir(pDir.get()))
    {
        if (!isDotName(pEntry->d_name))
            sortEntry(nFolder, pEntry, strFolder, sContent);
        if (++nEntries % 4096 == 0 && !goOn(strFolder))
            return false;
        errno = 0;
    }
    if (errno != 0)
        problem(CText::tr("%1 could not be read to its end: %2.").arg(strFolder, QString::fromLocal8Bit(std::strerror(errno))));
    sContent.m_lstFolders.sort();
    const QString strUsual = QStringLiteral("SequenceInfo.txt");
    std::sort(sContent.m_lstSequenceFiles.begin(), sContent.m_lstSequenceFiles.end(),
              [&strUsual](const QString& a, const QString& b)
              { return std::make_pair(a != strUsual, a) < std::make_pair(b != strUsual, b); });
    return true;
}

void CScan::sortEntry(int nFolder, const dirent* pEntry, const QString& strFolder, SFolderContent& sContent)
{
    mode_t nType = DTTOIF(pEntry->d_type);
    if (pEntry->d_type == DT_UNKNOWN)
    {
        struct stat sStat = {};
        if (fstatat(nFolder, pEntry->d_name, &sStat, AT_SYMLINK_NOFOLLOW) != 0)
            return; // gone since it was listed
        nType = sStat.st_mode & S_IFMT;
    }
    const QString strName = QFile::decodeName(pEntry->d_name);
    const bool bFolder = nType == S_IFDIR;
    const bool bSequenceFile = !bFolder && OrmSequenceScanner::isSequenceFileName(strName);
    if (!bFolder && !bSequenceFile)
        return;
    if (QFile::encodeName(strName) != pEntry->d_name)
    {
        problem(CText::tr("%1 in %2 has a name that cannot be shown and was left out.").arg(strName, strFolder));
        return;
    }
    if (bFolder)
        sContent.m_lstFolders.append(strName);
    else if (nType == S_IFREG)
        sContent.m_lstSequenceFiles.append(strName);
    else
        problem(CText::tr("%1 in %2 is not a regular file and was left out.").arg(strName, strFolder));
}

bool CScan::openSequenceFile(const QString& strFile, QSet<QString>& setOwnFolders)
{
    SSequenceFacts sFacts;
    const QString strReason = OrmSequenceFacts::read(strFile, sFacts, [this, &strFile] { return goOn(strFile); });
    if (m_bStopped)
        return false;
    for (const QString& strProblem : qAsConst(sFacts.m_lstProblems))
        problem(strProblem);
    if (!strReason.isEmpty())
    {
        problem(strReason);
        return false;
    }
    if (m_sOutcome.m_nSequences >= OrmSequenceScanner::s_nMaxSequences)
    {
        problem(CText::tr("The search ended after %n sequences: open a folder further down.", nullptr, int(m_sOutcome.m_nSequences)));
        m_bStopped = true;
        return false;
    }
    ++m_sOutcome.m_nSequences;
    setOwnFolders.insert(QStringLiteral("XML"));
    for (const SClickFacts& sClick : qAsConst(sFacts.m_lstClicks))
        setOwnFolders.insert(sClick.m_strClickNumber);
    if (m_fnFound)
        m_fnFound(sFacts);
    return true;
}

SScanOutcome CScan::outcome()
{
    if (m_nUntold > 0)
        m_sOutcome.m_lstProblems.append(CText::tr("%n more problems are not listed.", nullptr, int(m_nUntold)));
    m_nUntold = 0;
    return m_sOutcome;
}
} // namespace

bool OrmSequenceScanner::isSequenceFileName(const QString& strFileName)
{
    return strFileName.startsWith(QLatin1String("Sequence")) && strFileName.endsWith(QLatin1String(".txt"));
}

SScanOutcome OrmSequenceScanner::scan(const QStringList& lstPaths, const FnFound& fnFound, const FnProgress& fnProgress)
{
    CScan objScan(fnFound, fnProgress);
    for (const QString& strPath : lstPaths)
    {
        if (objScan.stopped())
            break;
        objScan.addPath(strPath);
    }
    return objScan.outcome();
}
