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

/// "ormparser" of ".../host/ormparser/src/CPLSection.cpp"; "tool" without a file, "host" for files in other places.
QByteArray libraryOf(const QString& strFile)
{
    if (strFile.isEmpty())
        return QByteArrayLiteral("tool");
    const QStringList lstParts = strFile.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    const int nHost = lstParts.lastIndexOf(QStringLiteral("host"));
    if (nHost < 0 || nHost + 2 >= lstParts.size())
        return QByteArrayLiteral("host");
    return lstParts.at(nHost + 1).toUtf8();
}
} // namespace

struct COrmLog::SPrivate
{
    /// A category must outlive every message, and its name too; there is one for each library.
    struct SCategory
    {
        explicit SCategory(const QByteArray& strLibrary) : strName("ormelle." + strLibrary), objCategory(strName.constData(), QtInfoMsg) {}
        QByteArray strName;
        QLoggingCategory objCategory;
    };

    QLoggingCategory& category(const QString& strFile)
    {
        const QByteArray strLibrary = libraryOf(strFile);
        const std::lock_guard<std::mutex> objLock(objMutex);
        auto& pCategory = mapCategories[strLibrary];
        if (!pCategory)
            pCategory = std::make_shared<SCategory>(strLibrary);
        return pCategory->objCategory;
    }

    std::mutex objMutex; ///< guards all below
    std::vector<std::shared_ptr<SSink>> vecSinks;
    QHash<QByteArray, std::shared_ptr<SCategory>> mapCategories;
    int nLastNumber = 0;
};

COrmLog::COrmLog() : m_pPrivate(std::make_unique<SPrivate>()) {}

COrmLog::~COrmLog() = default;

void COrmLog::log(QString strMessage, QString strFile, int nLine, QString strBuildTime, long nLevel, bool bFlag)
{
    try
    {
        const SLogEntry objEntry{std::move(strMessage),       std::move(strFile), nLine, std::move(strBuildTime), nLevel, bFlag,
                                 QDateTime::currentDateTime()};
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
        const QLoggingCategory& objCategory = m_pPrivate->category(objEntry.strFile);
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
