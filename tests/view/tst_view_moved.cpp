#include "CStudyWriter.h"
#include "CToolWindow.h"
#include "OrmTestMain.h"

#include <QDockWidget>
#include <QMainWindow>
#include <QTabWidget>
#include <QVBoxLayout>

#include <functional>
#include <memory>

namespace
{
using Deed = std::function<void(CToolWindow&)>;

/// The view's picture once nothing moves any more.
QImage picture(CToolWindow& objTool)
{
    objTool.view().settle();
    return objTool.view().grabFramebuffer();
}

void show(QWidget& wnd)
{
    wnd.show();
    if (!QTest::qWaitForWindowExposed(&wnd))
    {
        TestWidgets::fail(QStringLiteral("The window doesn't show"));
    }
}

int coloursOf(const QImage& img)
{
    QSet<QRgb> setColours;
    for (int nY = 0; nY < img.height(); ++nY)
    {
        for (int nX = 0; nX < img.width(); ++nX)
        {
            setColours.insert(img.pixel(nX, nY));
        }
    }
    return setColours.size();
}
/// Loads the result of either kind, and turns it.
void loadBoth(CToolWindow& objTool)
{
    objTool.chooseSequence(QStringLiteral("SOLA SEQ1"));
    objTool.load({QStringLiteral("light")});
    objTool.chooseSequence(QStringLiteral("NOVA SEQ2"));
    objTool.load({QStringLiteral("dye")});
    QCOMPARE(objTool.tiles(), (QStringList{QStringLiteral("SEQ1light"), QStringLiteral("SEQ2dye")}));
    objTool.view().setRotation(20, 30, 0);
}
} // namespace

Q_DECLARE_METATYPE(Deed)

/// What is loaded stays on the picture, pixel for pixel, wherever the view goes: another window has another OpenGL context, and what was
/// made in the old one is lost.
class tst_view_moved : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void pictureComesBack_data();
    void pictureComesBack();
    void pictureIsTheSameElsewhere_data();
    void pictureIsTheSameElsewhere();
    void changesElsewhereAreDrawn();
    void secondWindowLeavesTheFirst();

private:
    std::unique_ptr<CStudyWriter> m_pStudy;
    std::unique_ptr<CToolWindow> m_pTool;
};

void tst_view_moved::init()
{
    m_pStudy = std::make_unique<CStudyWriter>();
    m_pStudy->addSequence(QStringLiteral("SEQ1"));
    m_pStudy->addSequence(QStringLiteral("SEQ2"), SSequenceLook::fluorescent());
    SResultDocument objSOLA(SResultDocument::SOLA);
    objSOLA.setSphere(2);
    m_pStudy->addResult(QStringLiteral("SEQ1"), QStringLiteral("light"), objSOLA);
    SResultDocument objNOVA(SResultDocument::NOVA);
    objNOVA.strSequenceID = QStringLiteral("SEQ2");
    m_pStudy->addResult(QStringLiteral("SEQ2"), QStringLiteral("dye"), objNOVA);

    m_pTool = std::make_unique<CToolWindow>();
    m_pTool->open(m_pStudy->folder());
    // Of one size wherever it goes.
    m_pTool->view().setFixedSize(480, 360);
    loadBoth(*m_pTool);
}

void tst_view_moved::cleanup()
{
    m_pTool.reset();
    m_pStudy.reset();
}

void tst_view_moved::pictureComesBack_data()
{
    QTest::addColumn<Deed>("deed");
    QTest::newRow("the window is hidden and shown") << Deed(
        [](CToolWindow& objTool)
        {
            objTool.window().hide();
            show(objTool.window());
        });
    QTest::newRow("the window is closed, opened and filled again") << Deed(
        [](CToolWindow& objTool)
        {
            objTool.window().close();
            QVERIFY(!objTool.window().isVisible());
            QCOMPARE(objTool.tiles(), QStringList()); // closing empties the view
            show(objTool.window());
            loadBoth(objTool);
        });
    QTest::newRow("the window is minimized and restored") << Deed(
        [](CToolWindow& objTool)
        {
            objTool.window().showMinimized();
            objTool.window().showNormal();
            show(objTool.window());
        });
    QTest::newRow("the view is hidden and shown") << Deed(
        [](CToolWindow& objTool)
        {
            objTool.view().hide();
            objTool.view().show();
        });
    QTest::newRow("the plot is looked at") << Deed(
        [](CToolWindow& objTool)
        {
            auto* pTabs = objTool.get<QTabWidget>("m_p3DBrowserTabWidget");
            pTabs->setCurrentIndex(1);
            QVERIFY(!objTool.view().isVisible());
            pTabs->setCurrentIndex(0);
        });
    QTest::newRow("without any size for a while") << Deed(
        [](CToolWindow& objTool)
        {
            objTool.view().setFixedSize(0, 0);
            objTool.view().settle();
            objTool.view().setFixedSize(1, 300);
            objTool.view().settle();
            objTool.view().setFixedSize(480, 360);
        });
    QTest::newRow("far larger for a while") << Deed(
        [](CToolWindow& objTool)
        {
            objTool.view().setFixedSize(2000, 1500);
            objTool.view().settle();
            objTool.view().setFixedSize(480, 360);
        });
    QTest::newRow("in another window and back") << Deed(
        [](CToolWindow& objTool)
        {
            QWidget* pHome = objTool.view().parentWidget();
            QWidget wndOther;
            wndOther.resize(700, 500);
            objTool.view().setParent(&wndOther);
            objTool.view().show();
            show(wndOther);
            objTool.view().settle();
            objTool.view().setParent(pHome);
            objTool.view().show();
        });
    QTest::newRow("in a window of its own and back, never painted there") << Deed(
        [](CToolWindow& objTool)
        {
            QWidget* pHome = objTool.view().parentWidget();
            objTool.view().setParent(nullptr);
            objTool.view().setParent(pHome);
            objTool.view().show();
        });
    QTest::newRow("docked, undocked, docked, released") << Deed(
        [](CToolWindow& objTool)
        {
            QMainWindow wndMain;
            wndMain.resize(1300, 900);
            auto* pDock = new QDockWidget(&wndMain);
            wndMain.addDockWidget(Qt::LeftDockWidgetArea, pDock);
            pDock->setWidget(&objTool.window());
            show(wndMain);
            objTool.window().show();
            for (const bool bFloating : {true, false})
            {
                pDock->setFloating(bFloating);
                QVERIFY(QTest::qWaitForWindowExposed(objTool.window().window()));
                objTool.view().settle();
            }
            objTool.window().setParent(nullptr);
            show(objTool.window());
        });
}

void tst_view_moved::pictureComesBack()
{
    QFETCH(Deed, deed);
    const QImage imgBefore = picture(*m_pTool);
    QCOMPARE(imgBefore.size(), QSize(480, 360));
    QVERIFY(coloursOf(imgBefore) > 100);
    deed(*m_pTool);
    QTRY_VERIFY(m_pTool->view().isVisible());
    QCOMPARE(picture(*m_pTool), imgBefore);
    QCOMPARE(m_pTool->host().calls().filter(QStringLiteral("box")), QStringList());
}

void tst_view_moved::pictureIsTheSameElsewhere_data()
{
    QTest::addColumn<bool>("painted"); // whether the first context was ever drawn with
    QTest::newRow("painted before") << true;
    QTest::newRow("not painted before") << false;
}

void tst_view_moved::pictureIsTheSameElsewhere()
{
    QFETCH(bool, painted);
    QImage imgBefore;
    if (painted)
    {
        imgBefore = picture(*m_pTool);
    }
    QWidget* pHome = m_pTool->view().parentWidget();
    QWidget wndOther;
    wndOther.resize(480, 360);
    m_pTool->view().setParent(&wndOther);
    m_pTool->view().show();
    show(wndOther);
    const QImage imgElsewhere = picture(*m_pTool);
    QVERIFY(coloursOf(imgElsewhere) > 100);
    m_pTool->view().setParent(pHome);
    m_pTool->view().show();
    QCOMPARE(picture(*m_pTool), imgElsewhere);
    if (painted)
    {
        QCOMPARE(imgElsewhere, imgBefore);
    }
}

void tst_view_moved::changesElsewhereAreDrawn()
{
    // What changes in the other window is drawn there, and comes back with the view.
    const QImage imgBefore = picture(*m_pTool);
    QWidget* pHome = m_pTool->view().parentWidget();
    QWidget wndOther;
    wndOther.resize(480, 360);
    m_pTool->view().setParent(&wndOther);
    m_pTool->view().show();
    show(wndOther);
    m_pTool->view().setRotation(-40, 10, 5);
    const QImage imgTurned = picture(*m_pTool);
    QVERIFY(imgTurned != imgBefore);
    m_pTool->view().setParent(pHome);
    m_pTool->view().show();
    QCOMPARE(picture(*m_pTool), imgTurned);
    m_pTool->view().setRotation(20, 30, 0);
    QCOMPARE(picture(*m_pTool), imgBefore);
}

void tst_view_moved::secondWindowLeavesTheFirst()
{
    const QImage imgBefore = picture(*m_pTool);
    {
        QMainWindow wndMain;
        auto* pOther = new CLongitudinalStudyBrowserWnd(nullptr);
        wndMain.setCentralWidget(pOther);
        show(wndMain);
        auto* pView = pOther->findChild<CLongitudinalStudyBrowserView*>();
        QVERIFY(pView);
        pView->settle();
        QCOMPARE(coloursOf(pView->grabFramebuffer()), 1); // nothing is loaded there
        QCOMPARE(picture(*m_pTool), imgBefore);
    }
    QCOMPARE(picture(*m_pTool), imgBefore);
}

ORM_TEST_MAIN(tst_view_moved)
#include "tst_view_moved.moc"
