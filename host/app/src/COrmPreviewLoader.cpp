#include "COrmPreviewLoader.h"

#include <exception>
#include <mutex>
#include <thread>
#include <utility>

/// What the thread and the loader share; it outlives both.
struct COrmPreviewLoader::SShared
{
    std::mutex m_objMutex;
    COrmPreviewLoader* m_pReceiver = nullptr; ///< null once the receiver is gone
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
    std::thread(
        [pShared = m_pShared, sFacts]
        {
            SSequencePreview sPreview;
            try
            {
                sPreview = OrmPreviewReader::read(sFacts);
            }
            catch (const std::exception&)
            {
                sPreview.m_strPictureText = tr("There is too little memory for a preview.");
            }
            const std::lock_guard<std::mutex> objLock(pShared->m_objMutex);
            if (pShared->m_pReceiver != nullptr)
                QMetaObject::invokeMethod(
                    pShared->m_pReceiver, [p = pShared->m_pReceiver, sPreview] { p->take(sPreview); }, Qt::QueuedConnection);
        })
        .detach();
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
