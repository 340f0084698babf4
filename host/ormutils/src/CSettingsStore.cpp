#include "CSettingsStore.h"

#include "COrmLog.h"
#include "OrmFileWriter.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

#include <cerrno>
#include <chrono>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace
{
constexpr int g_nVersion = 1;
constexpr qint64 g_nMaximumBytes = 1024 * 1024;
constexpr std::chrono::milliseconds g_nLockPatience(500); ///< another process holds the lock only while it writes
constexpr std::chrono::milliseconds g_nLockPause(5);      ///< between two looks at it
constexpr int g_nMaximumCopies = 1000;
const QString g_strVersion = QStringLiteral("version");

/// Keeps other processes from writing into a folder while it exists; the lock goes with the process and leaves no file. Where none can be
/// had the worst is that another's change of this very moment is lost; files stay whole.
class CFolderLock
{
public:
    explicit CFolderLock(const QString& strFolder)
        : m_nFolder(::open(QFile::encodeName(strFolder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
    {
        const auto objEnd = std::chrono::steady_clock::now() + g_nLockPatience;
        while (m_nFolder >= 0 && ::flock(m_nFolder, LOCK_EX | LOCK_NB) != 0)
        {
            const bool bTaken = errno == EWOULDBLOCK || errno == EINTR;
            if (!bTaken || std::chrono::steady_clock::now() >= objEnd)
                break;
            std::this_thread::sleep_for(g_nLockPause);
        }
    }
    ~CFolderLock()
    {
        if (m_nFolder >= 0)
            ::close(m_nFolder);
    }
    CFolderLock(const CFolderLock&) = delete;
    CFolderLock& operator=(const CFolderLock&) = delete;

private:
    int m_nFolder; ///< below 0: it cannot be opened
};

/// Sets, or with null or an undefined value removes, one entry.
void put(QJsonObject& objRoot, const QString& strSection, const QString& strKey, const QJsonValue& objValue)
{
    QJsonObject objSection = objRoot.value(strSection).toObject();
    if (objValue.isUndefined() || objValue.isNull())
        objSection.remove(strKey);
    else
        objSection.insert(strKey, objValue);
    objRoot.insert(strSection, objSection);
}

/// The first bytes of a regular file, one more than a store may have. Nothing is waited for, whatever the name leads to.
QString readStart(const QString& strFile, QByteArray& baContent)
{
    const int nFile = ::open(QFile::encodeName(strFile).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    QFile objFile;
    if (nFile < 0 || !objFile.open(nFile, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
        return qt_error_string(errno);
    baContent = objFile.read(g_nMaximumBytes + 1);
    return objFile.error() == QFileDevice::NoError ? QString() : objFile.errorString();
}
} // namespace

void CSettingsStore::setFile(const QString& strFile)
{
    *this = CSettingsStore(strFile);
}

QJsonValue CSettingsStore::value(const QString& strSection, const QString& strKey)
{
    load();
    const QJsonValue objSection = m_objRoot.value(strSection);
    return objSection.isObject() ? objSection.toObject().value(strKey) : QJsonValue(QJsonValue::Undefined);
}

bool CSettingsStore::setValue(const QString& strSection, const QString& strKey, const QJsonValue& objValue)
{
    if (value(strSection, strKey) == objValue)
        return false;
    put(m_objRoot, strSection, strKey, objValue);
    QJsonObject objTodo = m_objTodo.value(strSection).toObject();
    objTodo.insert(strKey, objValue.isUndefined() ? QJsonValue(QJsonValue::Null) : objValue);
    m_objTodo.insert(strSection, objTodo);
    if (m_nHeld == 0)
        save();
    return true;
}

void CSettingsStore::release()
{
    if (m_nHeld > 0 && --m_nHeld == 0 && !m_objTodo.isEmpty())
        save();
}

QString CSettingsStore::freeName(const QString& strFile, const QString& strEnding)
{
    QString strName = strFile + strEnding;
    for (int nCopy = 2; nCopy <= g_nMaximumCopies; ++nCopy)
    {
        if (!QFileInfo::exists(strName) && !QFileInfo(strName).isSymLink())
            return strName;
        strName = QStringLiteral("%1%2-%3").arg(strFile, strEnding).arg(nCopy);
    }
    return {};
}

CSettingsStore::EState CSettingsStore::read(QJsonObject& objRoot, QString& strReason) const
{
    const QFileInfo objInfo(m_strFile);
    if (!objInfo.exists())
        return EState::eMissing;
    QByteArray baContent;
    if (!objInfo.isFile())
        strReason = QStringLiteral("not a regular file");
    else if (strReason = readStart(m_strFile, baContent); !strReason.isEmpty())
        return EState::eOutOfReach;
    if (strReason.isEmpty() && baContent.size() > g_nMaximumBytes)
        strReason = QStringLiteral("more than %1 bytes").arg(g_nMaximumBytes);
    if (!strReason.isEmpty())
        return EState::eUnreadable;
    QJsonParseError objError;
    const QJsonDocument objDocument = QJsonDocument::fromJson(baContent, &objError);
    if (objDocument.isObject())
    {
        objRoot = objDocument.object();
        return EState::eGood;
    }
    strReason = objError.error == QJsonParseError::NoError
                    ? QStringLiteral("not a JSON object")
                    : QStringLiteral("offset %1: %2").arg(objError.offset).arg(objError.errorString());
    return EState::eUnreadable;
}

void CSettingsStore::load()
{
    if (m_bLoaded)
        return;
    m_bLoaded = true;
    QString strReason;
    const EState eState = m_strFile.isEmpty() ? EState::eMissing : read(m_objRoot, strReason);
    if (eState == EState::eUnreadable || eState == EState::eOutOfReach)
        ORM_LOG(2, QStringLiteral("Settings %1 cannot be read, defaults are used: %2").arg(m_strFile, strReason));
}

bool CSettingsStore::putAside()
{
    const QString strAside = freeName(m_strFile, QStringLiteral(".unreadable"));
    if (strAside.isEmpty() || !QFile::rename(m_strFile, strAside))
        return false;
    ORM_LOG(2, QStringLiteral("Settings %1 could not be understood and were put aside as %2").arg(m_strFile, strAside));
    return true;
}

bool CSettingsStore::keepCopyOfNewer(const QJsonObject& objRoot)
{
    const double dVersion = objRoot.value(g_strVersion).toDouble();
    if (dVersion <= g_nVersion)
        return true;
    // A copy that is there already is of the file as the newer version left it; the file itself may have changes of this version by now.
    const QString strCopy = QStringLiteral("%1.version-%2").arg(m_strFile).arg(dVersion, 0, 'g', 10);
    if (QFileInfo::exists(strCopy))
        return true;
    if (!QFile::copy(m_strFile, strCopy))
        return false;
    ORM_LOG(2, QStringLiteral("Settings %1 are of a newer version, a copy of them is kept as %2").arg(m_strFile, strCopy));
    return true;
}

void CSettingsStore::save()
{
    if (m_strFile.isEmpty())
    {
        m_objTodo = QJsonObject();
        return;
    }
    const QString strReason = write();
    if (strReason.isEmpty())
        m_objTodo = QJsonObject();
    else if (strReason != m_strComplaint) // not once more with every step of a control
        ORM_LOG(2, QStringLiteral("Settings %1 cannot be written, the changes count for this run only: %2").arg(m_strFile, strReason));
    m_strComplaint = strReason;
}

QString CSettingsStore::write()
{
    if (!QDir().mkpath(QFileInfo(m_strFile).absolutePath()))
        return QStringLiteral("their folder cannot be made");
    const CFolderLock objLock(QFileInfo(m_strFile).absolutePath());
    QJsonObject objRoot;
    QString strReason;
    const EState eState = read(objRoot, strReason);
    if (eState == EState::eOutOfReach)
        return strReason; // the disk may give it back the next time
    if (eState == EState::eUnreadable)
    {
        if (QFileInfo(m_strFile).isFile() && !putAside())
            return QStringLiteral("what is there cannot be put aside");
        objRoot = m_objRoot; // what was read before another damaged the file
    }
    if (eState == EState::eGood && !keepCopyOfNewer(objRoot))
        return QStringLiteral("they are of a newer version, and no copy of them can be made");
    for (auto itSection = m_objTodo.constBegin(); itSection != m_objTodo.constEnd(); ++itSection)
    {
        const QJsonObject objKeys = itSection.value().toObject();
        for (auto itKey = objKeys.constBegin(); itKey != objKeys.constEnd(); ++itKey)
            put(objRoot, itSection.key(), itKey.key(), itKey.value());
    }
    if (!objRoot.contains(g_strVersion))
        objRoot.insert(g_strVersion, g_nVersion);
    return OrmFileWriter::replace(m_strFile, QJsonDocument(objRoot).toJson());
}
