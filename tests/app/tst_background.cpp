#include "COrmElidedLabel.h"
#include "COrmFolderCheck.h"
#include "COrmPictureWidget.h"
#include "COrmSequenceModel.h"
#include "MainWindowTest.h"
#include "OrmBackground.h"
#include "OrmTestMain.h"

#include <QSemaphore>
#include <QSignalSpy>

#include <atomic>
#include <cerrno>
#include <dlfcn.h>
#include <memory>
#include <pthread.h>

namespace
{
std::atomic<bool> s_bNoThreads{false};

/// The system gives no thread as long as it lives.
class CNoThreads
{
public:
    CNoThreads() { s_bNoThreads = true; }
    ~CNoThreads() { s_bNoThreads = false; }
    CNoThreads(const CNoThreads&) = delete;
    CNoThreads& operator=(const CNoThreads&) = delete;
};
} // namespace

// Stands before that of the system.
extern "C" int pthread_create(pthread_t* pThread, const pthread_attr_t* pAttributes, void* (*fnRun)(void*), void* pArgument) noexcept
{
    if (s_bNoThreads)
        return EAGAIN;
    using FnCreate = int (*)(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*);
    static const auto s_fnSystem = reinterpret_cast<FnCreate>(dlsym(RTLD_NEXT, "pthread_create"));
    return s_fnSystem(pThread, pAttributes, fnRun, pArgument);
}

/// What is done off the window's thread, where the system has no thread left.
class TestBackground : public CMainWindowTest
{
    Q_OBJECT

private slots:
    void init() { makeWindow(); }
    void cleanup() { removeWindow(); }
    void workIsDoneOrNotBegun();
    void searchThatCannotBeginIsTold();
    void previewThatCannotBeReadIsTold();
    void foldersAreLookedAtTheNextTime();
};

void TestBackground::workIsDoneOrNotBegun()
{
    // What the thread shares with the test may be looked at after its end.
    const auto pDone = std::make_shared<QSemaphore>();
    const auto fnWork = [pDone] { pDone->release(); };
    {
        const CNoThreads objNone;
        QVERIFY(!OrmBackground::run(fnWork));
    }
    QVERIFY(OrmBackground::run(fnWork));
    QVERIFY(pDone->tryAcquire(1, 60000));
    QCOMPARE(pDone->available(), 0);
}

void TestBackground::searchThatCannotBeginIsTold()
{
    m_pStudy->addSequence(QStringLiteral("A"));
    {
        const CNoThreads objNone;
        m_pWindow->openPaths({m_pStudy->folder()}, true);
        QTRY_COMPARE(m_pHost->boxes().size(), 1);
    }
    const QString strTold = QStringLiteral("The search for sequences could not begin: close other programs and try again.");
    const QString strBox = m_pHost->boxes().first().strText;
    QVERIFY2(strBox.contains(strTold), qPrintable(strBox));
    QCOMPARE(shownColumn(COrmSequenceModel::eID), QStringList());
    openStudy({"A"}); // later it can
    QCOMPARE(shownColumn(COrmSequenceModel::eID), QStringList{"A"});
}

void TestBackground::previewThatCannotBeReadIsTold()
{
    openStudy({"A", "B"});
    const auto* pPicture = TestWidgets::get<COrmPictureWidget>(m_pWindow.get(), "previewPicture");
    {
        const CNoThreads objNone;
        select({"B"});
        QTRY_COMPARE(TestWidgets::get<COrmElidedLabel>(m_pWindow.get(), "previewTitle")->text(), QStringLiteral("B"));
        QTRY_COMPARE(pPicture->text(), QStringLiteral("There is too little memory for a preview."));
    }
    select({"A"});
    QTRY_VERIFY(pPicture->text() != QStringLiteral("There is too little memory for a preview."));
}

void TestBackground::foldersAreLookedAtTheNextTime()
{
    COrmFolderCheck objCheck;
    QSignalSpy objChanged(&objCheck, &COrmFolderCheck::changed);
    const QString strFolder = m_pStudy->folder();
    {
        const CNoThreads objNone;
        objCheck.check({strFolder});
    }
    QVERIFY(!objCheck.isThere(strFolder));
    objCheck.check({strFolder});
    QTRY_VERIFY(objCheck.isThere(strFolder));
    QCOMPARE(objChanged.size(), 1);
}

ORM_TEST_MAIN(TestBackground)
#include "tst_background.moc"
