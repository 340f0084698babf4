#include "COrmLog.h"

#include <QHash>
#include <QLoggingCategory>
#include <QMutex>

#include <algorithm>
#include <atomic>
#include <mutex>
#include <vector>

namespace
{
/// A receiver. Its own lock lets removeSink() wait for a call that is under way without holding up the log as a whole.
struct SSink
{
    int nNumber = 0;
    COrmLog::FnSink fnSink;
    std::recursive_mutex objMutex;
    bool bLive = true;
    bool bCalling = false;
};

const QLatin1String g_strOwnCategories("orm.");

/// "orm.parser" of ".../host/ormparser/src/CPLSection.cpp"; "orm.tool" without a file, "orm.host" for files in other places.
QString categoryOf(const QString& strFile)
{
    if (strFile.isEmpty())
        return g_strOwnCategories + QStringLiteral("tool");
    const QStringList lstParts = strFile.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    const int nHost = lstParts.lastIndexOf(QStringLiteral("host"));
    if (nHost < 0 || nHost + 2 >= lstParts.size())
        return g_strOwnCategories + QStringLiteral("host");
    const QString& strLibrary = lstParts.at(nHost + 1);
    const QLatin1String strPrefix("orm");
    return g_strOwnCategories + (strLibrary.startsWith(strPrefix) ? strLibrary.mid(strPrefix.size()) : strLibrary);
}
} // namespace

struct COrmLog::SPrivate
{
    /// A category must outlive every message, and its name too; there is one for each library.
    struct SCategory
    {
        explicit SCategory(const QString& strCategory) : baName(strCategory.toUtf8()), objCategory(baName.constData(), QtInfoMsg) {}
        QByteArray baName;
        QLoggingCategory objCategory;
    };

    QLoggingCategory& category(const QString& strCategory)
    {
        const std::lock_guard<std::mutex> objLock(objMutex);
        auto& pCategory = mapCategories[strCategory];
        if (!pCategory)
            pCategory = std::make_shared<SCategory>(strCategory);
        return pCategory->objCategory;
    }

    std::mutex objMutex; ///< guards all below
    std::vector<std::shared_ptr<SSink>> vecSinks;
    QHash<QString, std::shared_ptr<SCategory>> mapCategories;
    int nLastNumber = 0;
};

COrmLog::COrmLog() : m_pPrivate(std::make_unique<SPrivate>()) {}

COrmLog::~COrmLog() = default;

void COrmLog::log(QString strMessage, QString strFile, int nLine, QString strBuildTime, long nLevel, bool bFlag)
{
    write({std::move(strMessage), std::move(strFile), nLine, std::move(strBuildTime), nLevel, bFlag, QDateTime(), QString()});
}

void COrmLog::write(SLogEntry objEntry)
{
    try
    {
        if (!objEntry.dtWritten.isValid())
            objEntry.dtWritten = QDateTime::currentDateTime();
        if (objEntry.strCategory.isEmpty())
            objEntry.strCategory = categoryOf(objEntry.strFile);
        std::vector<std::shared_ptr<SSink>> vecSinks;
        {
            const std::lock_guard<std::mutex> objLock(m_pPrivate->objMutex);
            vecSinks = m_pPrivate->vecSinks;
        }
        for (const auto& pSink : vecSinks)
        {
            const std::lock_guard<std::recursive_mutex> objLock(pSink->objMutex);
            if (!pSink->bLive || pSink->bCalling)
                continue;
            pSink->bCalling = true;
            try
            {
                pSink->fnSink(objEntry);
            }
            catch (...) // a broken receiver must stop neither the others nor the one who logs
            {
            }
            pSink->bCalling = false;
        }
        if (!objEntry.strCategory.startsWith(g_strOwnCategories))
            return;
        const QLoggingCategory& objCategory = m_pPrivate->category(objEntry.strCategory);
        if (objCategory.isDebugEnabled())
            QMessageLogger(objEntry.strFile.isEmpty() ? nullptr : qPrintable(objEntry.strFile), objEntry.nLine, nullptr,
                           objCategory.categoryName())
                .debug("%ld: %s", objEntry.nLevel, qPrintable(objEntry.strMessage));
    }
    catch (...) // out of memory: the log never fails
    {
    }
}

int COrmLog::addSink(FnSink fnSink)
{
    auto pSink = std::make_shared<SSink>();
    pSink->fnSink = fnSink ? std::move(fnSink) : [](const SLogEntry&) {};
    const std::lock_guard<std::mutex> objLock(m_pPrivate->objMutex);
    pSink->nNumber = ++m_pPrivate->nLastNumber;
    m_pPrivate->vecSinks.push_back(pSink);
    return pSink->nNumber;
}

void COrmLog::removeSink(int nSink)
{
    std::shared_ptr<SSink> pSink;
    {
        const std::lock_guard<std::mutex> objLock(m_pPrivate->objMutex);
        auto& vecSinks = m_pPrivate->vecSinks;
        const auto it = std::find_if(vecSinks.begin(), vecSinks.end(), [nSink](const auto& p) { return p->nNumber == nSink; });
        if (it == vecSinks.end())
            return;
        pSink = *it;
        vecSinks.erase(it);
    }
    const std::lock_guard<std::recursive_mutex> objLock(pSink->objMutex);
    pSink->bLive = false;
}

COrmLog* getLogObject()
{
    static COrmLog s_objLog;
    return &s_objLog;
}
