#include "COrmPreviewLoader.h"

#include "OrmBackground.h"

#include <exception>
#include <mutex>
#include <utility>

/// What the thread and the loader share; it outlives both.
struct COrmPreviewLoader::SShared
{
    std::mutex m_objMutex;
    COrmPreviewLoader* m_pReceiver = nullptr; ///< null once the receiver is gone

    void hand(const SSequencePreview& sPreview)
    {
        const std::lock_guard<std::mutex> objLock(m_objMutex);
        if (m_pReceiver != nullptr)
            QMetaObject::invokeMethod(
                m_pReceiver, [p = m_pReceiver, sPreview] { p->take(sPreview); }, Qt::QueuedConnection);
    }
};

COrmPreviewLoader::COrmPreviewLoader(QObject* pParent) : QObject(pParent), m_pShared(std::make_shared<SShared>())
{
    m_pShared->m_pReceiver = this;
}

COrmPreviewLoader::~COrmPreviewLoader()
{
    const std::lock_guard<std::mutex> objLock(m_pShared->m_objMutex);
    m_pShared->m_pReceiver = nullptr;
}

void COrmPreviewLoader::request(const SSequenceFacts& sFacts)
{
    m_bWanted = true;
    if (m_bReading)
        m_sNext = sFacts;
    else
        start(sFacts);
}

void COrmPreviewLoader::forget()
{
    m_bWanted = false;
    m_sNext.reset();
}

void COrmPreviewLoader::start(const SSequenceFacts& sFacts)
{
    m_bReading = true;
    const auto fnWithout = []
    {
        SSequencePreview sPreview;
        sPreview.m_strPictureText = tr("There is too little memory for a preview.");
        return sPreview;
    };
    const bool bBegun = OrmBackground::run(
        [fnWithout, pShared = m_pShared, sFacts]
        {
            SSequencePreview sPreview;
            try
            {
                sPreview = OrmPreviewReader::read(sFacts);
            }
            catch (const std::exception&)
            {
                sPreview = fnWithout();
            }
            pShared->hand(sPreview);
        });
    if (!bBegun)
        m_pShared->hand(fnWithout());
}

void COrmPreviewLoader::take(const SSequencePreview& sPreview)
{
    m_bReading = false;
    if (m_sNext)
    {
        start(*std::exchange(m_sNext, std::nullopt));
        return;
    }
    if (std::exchange(m_bWanted, false))
        emit loaded(sPreview);
}
