#include "COrmPluginManager.h"

#include "COrmLog.h"
#include "COrmTool.h"
#include "COrmToolNotifier.h"
#include "COrmToolPluginBase.h"
#include "OrmGuard.h"
#include "OrmPluginCheck.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QPluginLoader>
#include <algorithm>

COrmPluginManager::COrmPluginManager(QObject* pParent) : QObject(pParent), m_pNotifier(new COrmToolNotifier(this)) {}

COrmPluginManager::~COrmPluginManager()
{
    delete m_pNotifier; // a tool that is being destroyed is told nothing any more
    while (!m_lstTools.empty())
        m_lstTools.pop_back();
}

QString COrmPluginManager::defaultFolder()
{
    const QString strPrograms = QCoreApplication::applicationDirPath();
    const QString strBeside = strPrograms + QStringLiteral("/Plugins");
    const QString strInstalled = QDir::cleanPath(strPrograms + QStringLiteral("/" ORM_PLUGINS_FROM_PROGRAMS));
    return !QFileInfo::exists(strBeside) && QFileInfo(strInstalled).isDir() ? strInstalled : strBeside;
}

void COrmPluginManager::refuse(const QString& strFile, const QString& strReason)
{
    const QString strText = tr("%1 was not loaded: %2").arg(QFileInfo(strFile).fileName(), strReason);
    m_lstRefusals.append(strText);
    ORM_LOG(2, strText);
}

void COrmPluginManager::loadFolder(const QString& strFolder)
{
    const QString strPath = QDir::cleanPath(QFileInfo(strFolder).absoluteFilePath());
    if (!QFileInfo(strPath).isSymLink() && !QFileInfo::exists(strPath))
    {
        ORM_LOG(1, QStringLiteral("There is no folder %1, so no tools are loaded.").arg(strPath));
        return;
    }
    const QString strReason = OrmPluginCheck::folderRefusal(strPath);
    if (!strReason.isEmpty())
    {
        refuse(strPath, strReason);
        return;
    }
    QStringList lstFiles = QDir(strPath).entryList(QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Unsorted);
    lstFiles.erase(
        std::remove_if(lstFiles.begin(), lstFiles.end(), [](const QString& strName) { return !OrmPluginCheck::isLibraryName(strName); }),
        lstFiles.end());
    lstFiles.sort();
    for (int nFile = 0; nFile < lstFiles.size(); ++nFile)
    {
        if (nFile == s_nMaxFiles)
        {
            refuse(strPath,
                   tr("the folder holds %n libraries, and no more than %1 are looked at.", nullptr, lstFiles.size()).arg(s_nMaxFiles));
            break;
        }
        loadFile(strPath + QLatin1Char('/') + lstFiles.at(nFile));
    }
}

void COrmPluginManager::loadFile(const QString& strFile)
{
    QString strReason = OrmPluginCheck::fileRefusal(strFile);
    if (!strReason.isEmpty())
    {
        refuse(strFile, strReason);
        return;
    }
    auto pLoader = std::make_unique<QPluginLoader>(strFile);
    // The code stays mapped after the tool is gone: something of it may still be called when the process ends.
    pLoader->setLoadHints(QLibrary::PreventUnloadHint | QLibrary::ResolveAllSymbolsHint);
    const QJsonObject objMetaData = pLoader->metaData();
    strReason = OrmPluginCheck::metaDataRefusal(objMetaData, pLoader->errorString());
    const QString strIdentifier = OrmPluginCheck::identifier(objMetaData);
    if (strReason.isEmpty())
    {
        const auto it = std::find_if(m_lstTools.cbegin(), m_lstTools.cend(),
                                     [&strIdentifier](const auto& pTool) { return pTool->identifier() == strIdentifier; });
        if (it != m_lstTools.cend())
            strReason = tr("the same tool is loaded from %1 already.").arg(QFileInfo((*it)->file()).fileName());
    }
    if (!strReason.isEmpty())
    {
        refuse(strFile, strReason);
        return;
    }

    QObject* pInstance = nullptr;
    const bool bReturned = OrmGuard::run(
        tr("Loading %1").arg(QFileInfo(strFile).fileName()), [&] { pInstance = pLoader->instance(); }, &strReason);
    if (!bReturned || pInstance == nullptr)
    {
        refuse(strFile, bReturned ? tr("it cannot be loaded (%1).").arg(pLoader->errorString()) : strReason);
        return;
    }
    auto* pTool = qobject_cast<COrmToolPluginBase*>(pInstance);
    if (pTool == nullptr)
    {
        pLoader->unload();
        refuse(strFile, tr("it does not offer what this host asks of a tool."));
        return;
    }
    strReason = takeOn(std::make_unique<COrmTool>(pTool, strFile, strIdentifier, std::move(pLoader)));
    if (!strReason.isEmpty())
        refuse(strFile, strReason);
}

QString COrmPluginManager::takeOn(std::unique_ptr<COrmTool> pTool)
{
    QString strReason = pTool->setUp();
    if (strReason.isEmpty() && tool(pTool->name()) != nullptr)
        strReason = tr("there is a tool named %1 already.").arg(pTool->name());
    if (!strReason.isEmpty())
        return strReason;
    m_pNotifier->addTool(pTool->plugin());
    ORM_LOG(1, pTool->file().isEmpty() ? QStringLiteral("Added the tool %1.").arg(pTool->name())
                                       : QStringLiteral("Loaded the tool %1 from %2.").arg(pTool->name(), pTool->file()));
    m_lstTools.push_back(std::move(pTool));
    return {};
}

QString COrmPluginManager::addTool(COrmToolPluginBase* pTool, const QString& strIdentifier)
{
    if (pTool == nullptr)
        return tr("There is no tool.");
    return takeOn(std::make_unique<COrmTool>(pTool, QString(), strIdentifier, nullptr));
}

COrmTool* COrmPluginManager::tool(const QString& strName) const
{
    const auto it = std::find_if(m_lstTools.cbegin(), m_lstTools.cend(),
                                 [&strName](const auto& pTool) { return pTool->name().compare(strName, Qt::CaseInsensitive) == 0; });
    return it != m_lstTools.cend() ? it->get() : nullptr;
}
