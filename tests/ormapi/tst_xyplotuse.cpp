#include "PlotTestTools.h"

#include "COrmErrorHandler.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QLocale>
#include <QMenu>
#include <QMouseEvent>
#include <QTemporaryDir>
#include <QTimer>
#include <QToolButton>
#include <QWheelEvent>

#include <csignal>
#include <sys/resource.h>

using PlotTest::add;
using PlotTest::blobsLike;
using PlotTest::fNan;
using PlotTest::lookOfFirstLine;
using PlotTest::pixelsLike;

namespace
{
const QString strLine = QStringLiteral("Quantification Profile");

/// A plot on the screen: six points of 1e6, 2e6 ... 6e6, without a line between them.
class CShownPlot
{
public:
    explicit CShownPlot(int nMode = COrmXYPlot::PointsMode)
    {
        m_objPlot.resize(640, 440);
        m_objPlot.setXAxisLabel(QStringLiteral("Results"));
        m_objPlot.setYAxisLabel(QStringLiteral("Quantification photon/sec"));
        addLine(strLine, {1e6f, 2e6f, 3e6f, 4e6f, 5e6f, 6.0000005e6f}, nMode);
        m_objPlot.show();
        if (!QTest::qWaitForWindowExposed(&m_objPlot))
            qFatal("The plot does not show");
        m_pCanvas = PlotTest::canvas(m_objPlot);
    }

    void addLine(const QString& strName, const std::vector<float>& vecY, int nMode)
    {
        add<float>(m_objPlot, strName, vecY);
        DISPLAY_SETTINGS sLook = lookOfFirstLine();
        sLook.nDisplayMode = nMode;
        m_objPlot.setDisplaySettings(strName, sLook);
    }

    COrmXYPlot& plot() { return m_objPlot; }
    QWidget* canvas() { return m_pCanvas; }
    /// The points that are seen, from left to right, in pixels of the canvas.
    QVector<QPoint> points()
    {
        QVector<QPoint> vecPoints;
        for (const QRect& rectBlob : blobsLike(m_objPlot.getPrintImage(), Qt::red))
            vecPoints.append(m_pCanvas->mapFrom(&m_objPlot, rectBlob.center()));
        return vecPoints;
    }
    void send(QEvent::Type eType, const QPoint& ptPlace, Qt::MouseButton eButton, Qt::MouseButtons eHeld,
              Qt::KeyboardModifiers eKeys = Qt::NoModifier)
    {
        QMouseEvent objEvent(eType, ptPlace, m_pCanvas->mapToGlobal(ptPlace), eButton, eHeld, eKeys);
        QApplication::sendEvent(m_pCanvas, &objEvent);
    }
    void pointAt(const QPoint& ptPlace) { send(QEvent::MouseMove, ptPlace, Qt::NoButton, Qt::NoButton); }
    void drag(const QPoint& ptFrom, const QPoint& ptTo, Qt::MouseButton eButton, Qt::KeyboardModifiers eKeys = Qt::NoModifier)
    {
        send(QEvent::MouseButtonPress, ptFrom, eButton, eButton, eKeys);
        send(QEvent::MouseMove, (ptFrom + ptTo) / 2, Qt::NoButton, eButton, eKeys);
        send(QEvent::MouseMove, ptTo, Qt::NoButton, eButton, eKeys);
        send(QEvent::MouseButtonRelease, ptTo, eButton, Qt::NoButton, eKeys);
    }
    void turnWheel(const QPoint& ptPlace, int nNotches)
    {
        QWheelEvent objEvent(ptPlace, m_pCanvas->mapToGlobal(ptPlace), QPoint(), QPoint(0, 120 * nNotches), Qt::NoButton, Qt::NoModifier,
                             Qt::NoScrollPhase, false);
        QApplication::sendEvent(m_pCanvas, &objEvent);
    }
    /// What is told about the point under the pointer.
    QString told() const { return m_objPlot.accessibleDescription(); }
    /// Opens the context menu.
    QMenu* menu()
    {
        const QPoint ptPlace(100, 100);
        QContextMenuEvent objEvent(QContextMenuEvent::Mouse, ptPlace, m_objPlot.mapToGlobal(ptPlace));
        QApplication::sendEvent(&m_objPlot, &objEvent);
        return qobject_cast<QMenu*>(QApplication::activePopupWidget());
    }
    static QAction* entry(const QMenu* pMenu, const QString& strText)
    {
        for (QAction* pAction : pMenu->actions())
        {
            if (pAction->text() == strText)
                return pAction;
        }
        qFatal("The menu has no such entry");
    }
    /// Chooses an entry of the context menu as a click does.
    void choose(const QString& strText)
    {
        QMenu* pMenu = menu();
        if (pMenu == nullptr)
            qFatal("No menu opens");
        QTest::mouseClick(pMenu, Qt::LeftButton, Qt::NoModifier, pMenu->actionGeometry(entry(pMenu, strText)).center());
    }

private:
    COrmXYPlot m_objPlot;
    QWidget* m_pCanvas = nullptr;
};
} // namespace

/// The plot under the hands of a user.
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
            QCOMPARE(objShown.told(), strLine + QStringLiteral("\nResults: %1\nQuantification photon/sec: ").arg(i) + lstNumbers.at(i));
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
        QCOMPARE(objShown.told(), strLine + QStringLiteral("\nResults: 1\nQuantification photon/sec: 2e+06\n"
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
        objShown.addLine(strLine, {1e6f, 2e6f, 3e6f, 4e6f, 5e6f, 6.0000005e6f}, COrmXYPlot::PointsMode);
        QVERIFY(objShown.plot().isZoomed());
        QCOMPARE(objShown.points().size(), 2);
        objShown.plot().clear();
        objShown.addLine(strLine, {1e6f, 2e6f, 3e6f, 4e6f, 5e6f, 7e6f}, COrmXYPlot::PointsMode);
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

    // ---- The context menu ---------------------------------------------------------------------------------------------

    void theMenuHasTheModes_data()
    {
        QTest::addColumn<QString>("strEntry");
        QTest::addColumn<int>("nMode");
        QTest::newRow("line") << QStringLiteral("Line") << 1;
        QTest::newRow("line and points") << QStringLiteral("Line and Points") << 2;
        QTest::newRow("points") << QStringLiteral("Points") << 3;
        QTest::newRow("bars") << QStringLiteral("Bars") << 4;
    }

    void theMenuHasTheModes()
    {
        QFETCH(QString, strEntry);
        QFETCH(int, nMode);
        CShownPlot objShown(nMode == 1 ? 2 : 1);
        objShown.choose(strEntry);
        QCOMPARE(objShown.plot().getCurrentDisplayMode(), nMode);
        DISPLAY_SETTINGS sLook;
        QVERIFY(objShown.plot().getDisplaySettings(strLine, sLook));
        QCOMPARE(sLook.nDisplayMode, nMode);
        const QMenu* pMenu = objShown.menu();
        QVERIFY(pMenu != nullptr);
        for (const QString& strOther :
             {QStringLiteral("Line"), QStringLiteral("Line and Points"), QStringLiteral("Points"), QStringLiteral("Bars")})
            QCOMPARE(CShownPlot::entry(pMenu, strOther)->isChecked(), strOther == strEntry);
        QApplication::activePopupWidget()->close();
    }

    void theMenuTurnsTheAxisLogarithmic()
    {
        CShownPlot objShown;
        objShown.choose(QStringLiteral("Logarithmic Axis"));
        QVERIFY(objShown.plot().isLogarithmic());
        QVERIFY(CShownPlot::entry(objShown.menu(), QStringLiteral("Logarithmic Axis"))->isChecked());
        QApplication::activePopupWidget()->close();
        objShown.choose(QStringLiteral("Logarithmic Axis"));
        QVERIFY(!objShown.plot().isLogarithmic());
    }

    void theMenuOffersWhatThereIs()
    {
        CShownPlot objShown;
        objShown.plot().clear();
        const QMenu* pMenu = objShown.menu();
        QVERIFY(pMenu != nullptr);
        for (const char* pText : {"Line", "Bars", "Show Everything", "Copy Numbers", "Save Numbers..."})
            QVERIFY2(!CShownPlot::entry(pMenu, QLatin1String(pText))->isEnabled(), pText);
        QVERIFY(CShownPlot::entry(pMenu, QStringLiteral("Copy Picture"))->isEnabled());
        QApplication::activePopupWidget()->close();
    }

    // ---- Taking picture and numbers away ------------------------------------------------------------------------------

    void thePictureCanBeCopied()
    {
        CShownPlot objShown;
        objShown.choose(QStringLiteral("Copy Picture"));
        const QImage imgCopied = QApplication::clipboard()->image();
        QCOMPARE(imgCopied.convertToFormat(QImage::Format_RGB32), objShown.plot().getPrintImage().convertToFormat(QImage::Format_RGB32));
    }

    void theNumbersCanBeCopied()
    {
        CShownPlot objShown;
        objShown.choose(QStringLiteral("Copy Numbers"));
        QCOMPARE(QApplication::clipboard()->text().toUtf8(), objShown.plot().numbers());
    }

    void numbersReadBackAsTheyAre()
    {
        const QLocale objBefore;
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        COrmXYPlot objPlot;
        const std::vector<double> vecValues = {0.1, 1.0 / 3.0, 6.02214076e23, -0.0, fNan, 5e-324, std::numeric_limits<double>::max()};
        add<double>(objPlot, QStringLiteral("Final Voxel Size"), vecValues);
        add<float>(objPlot, QStringLiteral("Quantification, \u00B5"), {1.1f, 2.2f});
        objPlot.setXAxisLabel(QStringLiteral("Results"));
        objPlot.setYAxisLabel(QStringLiteral("pmol M-\u00B9 cm-\u00B9"));
        QTemporaryDir objFolder;
        const QString strPath = objFolder.filePath(QStringLiteral("numbers.csv"));
        QString strReason;
        QVERIFY(objPlot.saveNumbers(strPath, strReason));
        QLocale::setDefault(objBefore);
        QFile objFile(strPath);
        QVERIFY(objFile.open(QIODevice::ReadOnly));
        const QList<QByteArray> lstRows = objFile.readAll().split('\n');
        QCOMPARE(lstRows.size(), 9); // head, seven rows, and nothing behind the last line's end
        QCOMPARE(QString::fromUtf8(lstRows.at(0)), QStringLiteral("Results,Final Voxel Size (pmol M-\u00B9 cm-\u00B9),"
                                                                  "\"Quantification, \u00B5 (pmol M-\u00B9 cm-\u00B9)\"\r"));
        for (int i = 0; i < 7; ++i)
        {
            const QList<QByteArray> lstFields = lstRows.at(i + 1).trimmed().split(',');
            QCOMPARE(lstFields.size(), 3);
            QCOMPARE(lstFields.at(0), QByteArray::number(i));
            const double fValue = vecValues.at(static_cast<std::size_t>(i));
            bool bNumber = false;
            const double fRead = lstFields.at(1).toDouble(&bNumber);
            QCOMPARE(bNumber, !std::isnan(fValue));
            if (bNumber)
                QVERIFY(fRead == fValue);
            else
                QCOMPARE(lstFields.at(1), QByteArray());
            QCOMPARE(lstFields.at(2).isEmpty(), i > 1);
        }
        QVERIFY(lstRows.at(1).trimmed().split(',').at(2).toDouble() == static_cast<double>(1.1f));
    }

    void theMenuSavesTheNumbers()
    {
        CShownPlot objShown;
        QTemporaryDir objFolder;
        bool bAnswered = false;
        QTimer objAnswer;
        connect(&objAnswer, &QTimer::timeout, this,
                [&]
                {
                    auto* pDialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
                    if (pDialog == nullptr || bAnswered)
                        return;
                    bAnswered = true;
                    pDialog->setDirectory(objFolder.path());
                    pDialog->findChild<QLineEdit*>()->setText(QStringLiteral("totals"));
                    QTest::keyClick(pDialog->findChild<QLineEdit*>(), Qt::Key_Return);
                });
        objAnswer.start(20);
        objShown.choose(QStringLiteral("Save Numbers..."));
        QFile objFile(objFolder.filePath(QStringLiteral("totals.csv")));
        QTRY_VERIFY(objFile.exists());
        QVERIFY(bAnswered);
        QVERIFY(objFile.open(QIODevice::ReadOnly));
        QCOMPARE(objFile.readAll(), objShown.plot().numbers());
    }

    void aCancelledSaveWritesNothing()
    {
        CShownPlot objShown;
        bool bAnswered = false;
        QTimer objAnswer;
        connect(&objAnswer, &QTimer::timeout, this,
                [&]
                {
                    if (auto* pDialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget()))
                    {
                        bAnswered = true;
                        pDialog->reject();
                    }
                });
        objAnswer.start(20);
        bool bError = false;
        COrmErrorHandler::setResponder([&bError](const SErrorRequest&) { bError = true; });
        objShown.plot().askAndSaveNumbers();
        COrmErrorHandler::setResponder(COrmErrorHandler::FnResponder());
        QVERIFY(bAnswered);
        QVERIFY(!bError);
    }

    void aFailedSaveSaysWhy_data()
    {
        QTest::addColumn<QString>("strPath");
        QTest::newRow("a folder of that name") << QStringLiteral("folder");
        QTest::newRow("a folder that is not there") << QStringLiteral("missing/numbers.csv");
        QTest::newRow("a device") << QStringLiteral("/dev/null");
    }

    void aFailedSaveSaysWhy()
    {
        QFETCH(QString, strPath);
        COrmXYPlot objPlot;
        add<double>(objPlot, strLine, {1.0});
        const QTemporaryDir objFolder;
        QVERIFY(QDir(objFolder.path()).mkdir(QStringLiteral("folder")));
        QString strReason;
        QVERIFY(!objPlot.saveNumbers(QDir(objFolder.path()).filePath(strPath), strReason));
        QVERIFY(!strReason.isEmpty());
        QCOMPARE(QDir(objFolder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList({QStringLiteral("folder")}));
        QVERIFY(!QFileInfo(QStringLiteral("/dev/null")).isFile());
    }

    void withoutRoomTheOldFileStays()
    {
        COrmXYPlot objPlot;
        add<double>(objPlot, strLine, std::vector<double>(500, 1.0 / 3.0));
        const QTemporaryDir objFolder;
        const QString strPath = objFolder.filePath(QStringLiteral("numbers.csv"));
        QFile objOld(strPath);
        QVERIFY(objOld.open(QIODevice::WriteOnly) && objOld.write("old") == 3);
        objOld.close();
        // Files may not grow beyond this while the numbers are written.
        rlimit sBefore{};
        QCOMPARE(getrlimit(RLIMIT_FSIZE, &sBefore), 0);
        const rlimit sSmall{1000, sBefore.rlim_max};
        signal(SIGXFSZ, SIG_IGN);
        QCOMPARE(setrlimit(RLIMIT_FSIZE, &sSmall), 0);
        QString strReason;
        const bool bSaved = objPlot.saveNumbers(strPath, strReason);
        QCOMPARE(setrlimit(RLIMIT_FSIZE, &sBefore), 0);
        signal(SIGXFSZ, SIG_DFL);
        QVERIFY(!bSaved);
        QVERIFY(!strReason.isEmpty());
        QVERIFY(objOld.open(QIODevice::ReadOnly));
        QCOMPARE(objOld.readAll(), QByteArray("old"));
        QCOMPARE(QDir(objFolder.path()).entryList(QDir::Files), QStringList({QStringLiteral("numbers.csv")}));
    }
};

QTEST_MAIN(TestXYPlotUse)
#include "tst_xyplotuse.moc"
