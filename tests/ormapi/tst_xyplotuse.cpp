#include "CShownPlot.h"

#include <QToolButton>

using PlotTest::blobsLike;
using PlotTest::CShownPlot;
using PlotTest::g_strLine;

/// The plot under the hands of a user: pointing, magnifying and moving.
class TestXYPlotUse : public QObject
{
    Q_OBJECT

private slots:
    // ---- The point under the pointer ----------------------------------------------------------------------------------

    void thePointUnderThePointerTellsItsNumbers()
    {
        CShownPlot objShown;
        const QVector<QPoint> vecPoints = objShown.points();
        QCOMPARE(vecPoints.size(), 6);
        const QStringList lstNumbers = {QStringLiteral("1e+06"), QStringLiteral("2e+06"), QStringLiteral("3e+06"),
                                        QStringLiteral("4e+06"), QStringLiteral("5e+06"), QStringLiteral("6000000.5")};
        for (int i = 0; i < 6; ++i)
        {
            objShown.pointAt(vecPoints.at(i) + QPoint(3, -2));
            QCOMPARE(objShown.told(), g_strLine + QStringLiteral("\nResults: %1\nQuantification photon/sec: ").arg(i) + lstNumbers.at(i));
        }
        objShown.pointAt((vecPoints.at(2) + vecPoints.at(3)) / 2);
        QCOMPARE(objShown.told(), QString());
        objShown.pointAt(vecPoints.at(2));
        QVERIFY(!objShown.told().isEmpty());
        QEvent objLeave(QEvent::Leave);
        QApplication::sendEvent(objShown.canvas(), &objLeave);
        QCOMPARE(objShown.told(), QString());
    }

    void whatIsToldIsSeenButNotInThePicture()
    {
        CShownPlot objShown;
        const QImage imgBefore = objShown.plot().getPrintImage();
        objShown.pointAt(objShown.points().at(1));
        QVERIFY(!objShown.told().isEmpty());
        const QColor clrPaper(255, 255, 240);
        const auto fnPaper = [&clrPaper](const QImage& imgSeen)
        {
            int nPixels = 0;
            for (int y = 0; y < imgSeen.height(); ++y)
            {
                for (int x = 0; x < imgSeen.width(); ++x)
                    nPixels += imgSeen.pixel(x, y) == clrPaper.rgb() ? 1 : 0;
            }
            return nPixels;
        };
        QVERIFY(fnPaper(objShown.plot().grab().toImage()) > 1000);
        QCOMPARE(fnPaper(imgBefore), 0);
        QVERIFY(objShown.plot().getPrintImage() == imgBefore);
    }

    void pointsOnOneSpotAreAllTold()
    {
        CShownPlot objShown;
        objShown.addLine(QStringLiteral("<b>Other</b>"), {3e6f, 2e6f}, COrmXYPlot::PointsMode);
        objShown.pointAt(objShown.points().at(2)); // two at 0, then the common one
        QCOMPARE(objShown.told(), g_strLine + QStringLiteral("\nResults: 1\nQuantification photon/sec: 2e+06\n"
                                                             "<b>Other</b>\nResults: 1\nQuantification photon/sec: 2e+06"));
    }

    void aBarTellsItsNumbersAnywhereInIt()
    {
        CShownPlot objShown(COrmXYPlot::BarsMode);
        const QVector<QRect> vecBars = blobsLike(objShown.plot().getPrintImage(), Qt::blue);
        QCOMPARE(vecBars.size(), 6);
        const QRect rectBar = vecBars.at(4);
        for (const QPoint& ptPlace : {rectBar.center(), rectBar.topLeft() + QPoint(3, 3), rectBar.bottomRight() - QPoint(3, 3)})
        {
            objShown.pointAt(objShown.canvas()->mapFrom(&objShown.plot(), ptPlace));
            QVERIFY2(objShown.told().endsWith(QStringLiteral(": 5e+06")), qPrintable(objShown.told()));
        }
    }

    void keysGoFromPointToPoint()
    {
        CShownPlot objShown;
        for (const char* pNumber : {"Results: 0", "Results: 1", "Results: 2"})
        {
            QTest::keyClick(&objShown.plot(), Qt::Key_Right);
            QVERIFY2(objShown.told().contains(QLatin1String(pNumber)), qPrintable(objShown.told()));
        }
        QTest::keyClick(&objShown.plot(), Qt::Key_Left);
        QVERIFY(objShown.told().contains(QLatin1String("Results: 1")));
        QTest::keyClick(&objShown.plot(), Qt::Key_Escape);
        QCOMPARE(objShown.told(), QString());
        QTest::keyClick(&objShown.plot(), Qt::Key_Left);
        QVERIFY(objShown.told().contains(QLatin1String("Results: 5")));
        objShown.plot().clear();
        QCOMPARE(objShown.told(), QString());
        QTest::keyClick(&objShown.plot(), Qt::Key_Right);
        QCOMPARE(objShown.told(), QString());
    }

    // ---- Zooming and moving -------------------------------------------------------------------------------------------

    void theLeftButtonPullsUpAPart()
    {
        CShownPlot objShown;
        const QVector<QPoint> vecPoints = objShown.points();
        QVERIFY(!objShown.plot().isZoomed());
        // Around the points 2 and 3.
        objShown.drag(vecPoints.at(3) + QPoint(20, -20), vecPoints.at(2) + QPoint(-20, 20), Qt::LeftButton);
        QVERIFY(objShown.plot().isZoomed());
        const QVector<QPoint> vecSeen = objShown.points();
        QCOMPARE(vecSeen.size(), 2);
        QVERIFY(vecSeen.at(1).x() - vecSeen.at(0).x() > objShown.canvas()->width() / 2);
        objShown.pointAt(vecSeen.at(1));
        QVERIFY(objShown.told().endsWith(QStringLiteral(": 4e+06")));
    }

    void aFlatBandMagnifiesItsAxisOnly()
    {
        CShownPlot objShown;
        const QVector<QPoint> vecPoints = objShown.points();
        objShown.drag(QPoint((vecPoints.at(0).x() + vecPoints.at(1).x()) / 2, 50),
                      QPoint((vecPoints.at(2).x() + vecPoints.at(3).x()) / 2, 53), Qt::LeftButton);
        QVERIFY(objShown.plot().isZoomed());
        const QVector<QPoint> vecSeen = objShown.points();
        QCOMPARE(vecSeen.size(), 2);
        QVERIFY(std::abs(vecSeen.at(0).y() - vecPoints.at(1).y()) <= 1);
        QVERIFY(std::abs(vecSeen.at(1).y() - vecPoints.at(2).y()) <= 1);
    }

    void aClickMagnifiesNothing()
    {
        CShownPlot objShown;
        objShown.drag(QPoint(100, 100), QPoint(103, 102), Qt::LeftButton);
        objShown.drag(QPoint(100, 100), QPoint(200, 200), Qt::RightButton);
        QVERIFY(!objShown.plot().isZoomed());
    }

    void theWheelMagnifiesAroundThePointer()
    {
        CShownPlot objShown;
        const QVector<QPoint> vecBefore = objShown.points();
        for (int i = 0; i < 3; ++i)
            objShown.turnWheel(vecBefore.at(3), 1);
        QVERIFY(objShown.plot().isZoomed());
        QVector<QPoint> vecSeen = objShown.points();
        QVERIFY(vecSeen.size() < 6);
        const auto itSame =
            std::find_if(vecSeen.begin(), vecSeen.end(), [&](const QPoint& pt) { return (pt - vecBefore.at(3)).manhattanLength() <= 3; });
        QVERIFY(itSame != vecSeen.end()); // what is under the pointer stays there
        for (int i = 0; i < 4; ++i)
            objShown.turnWheel(QPoint(20, 20), -1);
        QVERIFY(!objShown.plot().isZoomed());
        QCOMPARE(objShown.points(), vecBefore);
    }

    void whatIsMagnifiedCanBeMoved_data()
    {
        QTest::addColumn<int>("nButton");
        QTest::addColumn<int>("nKeys");
        QTest::newRow("middle button") << int(Qt::MiddleButton) << int(Qt::NoModifier);
        QTest::newRow("left button with Shift") << int(Qt::LeftButton) << int(Qt::ShiftModifier);
    }

    void whatIsMagnifiedCanBeMoved()
    {
        QFETCH(int, nButton);
        QFETCH(int, nKeys);
        CShownPlot objShown;
        const QVector<QPoint> vecAll = objShown.points();
        objShown.drag(QPoint(100, 100), QPoint(150, 150), static_cast<Qt::MouseButton>(nButton), Qt::KeyboardModifiers(nKeys));
        QVERIFY(!objShown.plot().isZoomed()); // there is nothing beyond everything
        QCOMPARE(objShown.points(), vecAll);
        objShown.drag(vecAll.at(3) + QPoint(40, -30), vecAll.at(2) + QPoint(-40, 30), Qt::LeftButton);
        const QVector<QPoint> vecBefore = objShown.points();
        QCOMPARE(vecBefore.size(), 2);
        objShown.drag(QPoint(200, 200), QPoint(230, 210), static_cast<Qt::MouseButton>(nButton), Qt::KeyboardModifiers(nKeys));
        const QVector<QPoint> vecAfter = objShown.points();
        QCOMPARE(vecAfter.size(), 2);
        for (int i = 0; i < 2; ++i)
            QVERIFY2((vecAfter.at(i) - vecBefore.at(i) - QPoint(30, 10)).manhattanLength() <= 3, qPrintable(QStringLiteral("%1 %2 to %3 %4")
                                                                                                                .arg(vecBefore.at(i).x())
                                                                                                                .arg(vecBefore.at(i).y())
                                                                                                                .arg(vecAfter.at(i).x())
                                                                                                                .arg(vecAfter.at(i).y())));
    }

    void thereAreWaysBack_data()
    {
        QTest::addColumn<QString>("strWay");
        for (const char* pWay : {"double click", "menu", "button", "Home", "Escape"})
            QTest::newRow(pWay) << QString::fromLatin1(pWay);
    }

    void thereAreWaysBack()
    {
        QFETCH(QString, strWay);
        CShownPlot objShown;
        const QVector<QPoint> vecBefore = objShown.points();
        auto* pButton = objShown.plot().findChild<QToolButton*>(QStringLiteral("showEverything"));
        QVERIFY(!pButton->isVisible());
        objShown.drag(vecBefore.at(3) + QPoint(20, -20), vecBefore.at(2) + QPoint(-20, 20), Qt::LeftButton);
        QVERIFY(objShown.plot().isZoomed());
        QVERIFY(pButton->isVisible());
        QVERIFY(objShown.plot().rect().contains(pButton->geometry()));
        if (strWay == QLatin1String("double click"))
            objShown.send(QEvent::MouseButtonDblClick, QPoint(100, 100), Qt::LeftButton, Qt::LeftButton);
        else if (strWay == QLatin1String("menu"))
            objShown.choose(QStringLiteral("Show Everything"));
        else if (strWay == QLatin1String("button"))
            QTest::mouseClick(pButton, Qt::LeftButton);
        else
            QTest::keyClick(&objShown.plot(), strWay == QLatin1String("Home") ? Qt::Key_Home : Qt::Key_Escape);
        QVERIFY(!objShown.plot().isZoomed());
        QVERIFY(!pButton->isVisible());
        QCOMPARE(objShown.points(), vecBefore);
    }

    void keysMagnifyAndMove()
    {
        CShownPlot objShown;
        QTest::keyClick(&objShown.plot(), Qt::Key_Plus);
        QTest::keyClick(&objShown.plot(), Qt::Key_Plus);
        QVERIFY(objShown.plot().isZoomed());
        const QVector<QPoint> vecBefore = objShown.points();
        QTest::keyClick(&objShown.plot(), Qt::Key_Up);
        // The same points, lower; the first one may have gone below the axis.
        const QPoint ptBefore = vecBefore.at(1);
        const QVector<QPoint> vecAfter = objShown.points();
        const auto itSame =
            std::find_if(vecAfter.begin(), vecAfter.end(), [&](const QPoint& pt) { return std::abs(pt.x() - ptBefore.x()) <= 1; });
        QVERIFY(itSame != vecAfter.end());
        QVERIFY(std::abs(itSame->y() - ptBefore.y() - objShown.canvas()->height() / 10) <= 3);
        QTest::keyClick(&objShown.plot(), Qt::Key_Down);
        QTest::keyClick(&objShown.plot(), Qt::Key_Minus);
        QTest::keyClick(&objShown.plot(), Qt::Key_Minus);
        QTest::keyClick(&objShown.plot(), Qt::Key_Minus);
        QVERIFY(!objShown.plot().isZoomed());
    }

    void thePictureShowsTheMagnifiedPart()
    {
        CShownPlot objShown;
        const QVector<QPoint> vecPoints = objShown.points();
        objShown.drag(vecPoints.at(3) + QPoint(20, -20), vecPoints.at(2) + QPoint(-20, 20), Qt::LeftButton);
        QCOMPARE(blobsLike(objShown.plot().getPrintImage(), Qt::red).size(), 2);
    }

    void aMagnifiedPartOutlivesTheSameDataOnly()
    {
        CShownPlot objShown;
        const QVector<QPoint> vecPoints = objShown.points();
        objShown.drag(vecPoints.at(3) + QPoint(20, -20), vecPoints.at(2) + QPoint(-20, 20), Qt::LeftButton);
        objShown.plot().clear();
        QVERIFY(!objShown.plot().isZoomed());
        objShown.addLine(g_strLine, {1e6f, 2e6f, 3e6f, 4e6f, 5e6f, 6.0000005e6f}, COrmXYPlot::PointsMode);
        QVERIFY(objShown.plot().isZoomed());
        QCOMPARE(objShown.points().size(), 2);
        objShown.plot().clear();
        objShown.addLine(g_strLine, {1e6f, 2e6f, 3e6f, 4e6f, 5e6f, 7e6f}, COrmXYPlot::PointsMode);
        QVERIFY(!objShown.plot().isZoomed());
        QCOMPARE(objShown.points().size(), 6);
    }

    void magnifyingWorksOnALogarithmicAxis()
    {
        CShownPlot objShown;
        objShown.plot().setLogarithmic(true);
        const QVector<QPoint> vecPoints = objShown.points();
        QCOMPARE(vecPoints.size(), 6);
        objShown.drag(vecPoints.at(3) + QPoint(20, -10), vecPoints.at(2) + QPoint(-20, 10), Qt::LeftButton);
        const QVector<QPoint> vecSeen = objShown.points();
        QCOMPARE(vecSeen.size(), 2);
        // The band's edges are the picture's: the points keep their places between them.
        const double fPart = 10.0 / (vecPoints.at(2).y() - vecPoints.at(3).y() + 20);
        QVERIFY(std::fabs(vecSeen.at(1).y() - fPart * objShown.canvas()->height()) <= 12.0);
        objShown.turnWheel(vecSeen.at(0), -30);
        QVERIFY(!objShown.plot().isZoomed());
    }

    void anEmptyPlotCanNotBeMagnified()
    {
        CShownPlot objShown;
        objShown.plot().clear();
        objShown.drag(QPoint(100, 100), QPoint(200, 200), Qt::LeftButton);
        objShown.turnWheel(QPoint(100, 100), 3);
        QTest::keyClick(&objShown.plot(), Qt::Key_Plus);
        QVERIFY(!objShown.plot().isZoomed());
    }
};

QTEST_MAIN(TestXYPlotUse)
#include "tst_xyplotuse.moc"
