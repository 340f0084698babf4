#include "COrmFolderCheck.h"

#include "OrmBackground.h"

#include <QFileInfo>
#include <mutex>
#include <utility>

/// What the threads and the check share; it outlives both.
struct COrmFolderCheck::SShared
{
    std::mutex m_objMutex;
    COrmFolderCheck* m_pReceiver = nullptr; ///< null once the receiver is gone
};

COrmFolderCheck::COrmFolderCheck(FExists fnExists, QObject* pParent)
    : QObject(pParent), m_pShared(std::make_shared<SShared>()), m_fnExists(std::move(fnExists))
{
    if (!m_fnExists)
        m_fnExists = [](const QString& strFolder) { return QFileInfo(strFolder).isDir(); };
    m_pShared->m_pReceiver = this;
}

COrmFolderCheck::~COrmFolderCheck()
{
    const std::lock_guard<std::mutex> objLock(m_pShared->m_objMutex);
    m_pShared->m_pReceiver = nullptr;
}

void COrmFolderCheck::check(const QStringList& lstFolders)
{
    for (const QString& strFolder : lstFolders)
    {
        if (m_setAsked.contains(strFolder))
            continue; // a second thread would wait beside the first
        m_setAsked.insert(strFolder);
        const bool bBegun = OrmBackground::run(
            [pShared = m_pShared, fnExists = m_fnExists, strFolder]
            {
                const bool bThere = fnExists(strFolder);
                const std::lock_guard<std::mutex> objLock(pShared->m_objMutex);
                if (pShared->m_pReceiver != nullptr)
                    QMetaObject::invokeMethod(
                        pShared->m_pReceiver, [p = pShared->m_pReceiver, strFolder, bThere] { p->take(strFolder, bThere); },
                        Qt::QueuedConnection);
            });
        if (!bBegun)
            m_setAsked.remove(strFolder); // asked for again the next time
    }
}

void COrmFolderCheck::take(const QString& strFolder, bool bThere)
{
    m_setAsked.remove(strFolder);
    if (bThere == m_setThere.contains(strFolder))
        return;
    if (bThere)
        m_setThere.insert(strFolder);
    else
        m_setThere.remove(strFolder);
    emit changed();
}
