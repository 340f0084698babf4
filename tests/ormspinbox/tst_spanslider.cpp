// The slider with two handles, driven as a user and a form drive it.

#include "QSpanSlider.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

#include <climits>
#include <memory>

using SSpan = QPair<int, int>;

namespace
{
SSpan span(const QSpanSlider& objSlider)
{
    return {objSlider.lowerValue(), objSlider.upperValue()};
}

/// A slider as the form makes it, on the range 0 to 100.
std::unique_ptr<QSpanSlider> makeSlider(Qt::Orientation eOrientation = Qt::Horizontal, SSpan objSpan = {20, 80})
{
    auto pSlider = std::make_unique<QSpanSlider>();
    pSlider->setMaximum(100);
    pSlider->setOrientation(eOrientation);
    pSlider->setSpan(objSpan.first, objSpan.second);
    pSlider->resize(eOrientation == Qt::Horizontal ? QSize(300, 24) : QSize(24, 300));
    return pSlider;
}

void wheel(QWidget& objWidget, const QPoint& ptAt, int nDelta, Qt::KeyboardModifiers eModifiers = Qt::NoModifier)
{
    QWheelEvent objEvent(ptAt, objWidget.mapToGlobal(ptAt), QPoint(), QPoint(0, nDelta), Qt::NoButton, eModifiers, Qt::NoScrollPhase,
                         false);
    QCoreApplication::sendEvent(&objWidget, &objEvent);
}

/// Moves with the left button held: QTest's own moves carry no button.
void drag(QWidget& objWidget, const QPoint& ptFrom, const QList<QPoint>& lstTo)
{
    QTest::mousePress(&objWidget, Qt::LeftButton, Qt::NoModifier, ptFrom);
    for (const QPoint& ptTo : lstTo)
    {
        QMouseEvent objMove(QEvent::MouseMove, ptTo, objWidget.mapToGlobal(ptTo), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&objWidget, &objMove);
    }
    QTest::mouseRelease(&objWidget, Qt::LeftButton, Qt::NoModifier, lstTo.isEmpty() ? ptFrom : lstTo.constLast());
}

/// Pixels from one value to another along a slider.
int pixels(const QSpanSlider& objSlider, double fValues)
{
    const bool bHorizontal = objSlider.orientation() == Qt::Horizontal;
    const QRect rcHandle = objSlider.partRect(QSpanSlider::PartLower);
    const int nRoom = bHorizontal ? objSlider.width() - rcHandle.width() : objSlider.height() - rcHandle.height();
    return qRound(fValues * nRoom / (objSlider.maximum() - objSlider.minimum()));
}
} // namespace

class CSpanSliderTest : public QObject
{
    Q_OBJECT

private slots:
    // ---- Values -------------------------------------------------------------------------------------------------

    void standsAtTheWholeRangeAfterTheForm()
    {
        QSpanSlider objSlider(nullptr);
        QCOMPARE(objSlider.lowerValue(), 0);
        QCOMPARE(objSlider.orientation(), Qt::Vertical); // as every slider of the toolkit
        objSlider.setMaximum(100);
        objSlider.setOrientation(Qt::Horizontal);
        objSlider.setUpperValue(100);
        QCOMPARE(span(objSlider), SSpan(0, 100));
        QCOMPARE(objSlider.minimum(), 0);
        QCOMPARE(objSlider.maximum(), 100);
        QVERIFY(objSlider.setProperty("lowerValue", 30));
        QVERIFY(objSlider.setProperty("upperValue", 60));
        QCOMPARE(objSlider.property("lowerValue").toInt(), 30);
        QCOMPARE(objSlider.property("upperValue").toInt(), 60);
    }

    void settersClampPushAndOrder_data()
    {
        QTest::addColumn<QString>("strCall");
        QTest::addColumn<int>("nFirst");
        QTest::addColumn<int>("nSecond");
        QTest::addColumn<SSpan>("objExpected");
        QTest::addColumn<QStringList>("lstSignals");
        const QStringList lstLower{"lower", "span"}, lstUpper{"upper", "span"}, lstBoth{"lower", "upper", "span"}, lstNone;
        QTest::newRow("lower") << "lower" << 30 << 0 << SSpan(30, 80) << lstLower;
        QTest::newRow("lower as it is") << "lower" << 20 << 0 << SSpan(20, 80) << lstNone;
        QTest::newRow("lower below the range") << "lower" << -7 << 0 << SSpan(0, 80) << lstLower;
        QTest::newRow("lower beyond the upper takes it along") << "lower" << 90 << 0 << SSpan(90, 90) << lstBoth;
        QTest::newRow("lower onto the upper") << "lower" << 80 << 0 << SSpan(80, 80) << lstLower;
        QTest::newRow("lower beyond the range") << "lower" << INT_MAX << 0 << SSpan(100, 100) << lstBoth;
        QTest::newRow("upper") << "upper" << 70 << 0 << SSpan(20, 70) << lstUpper;
        QTest::newRow("upper beyond the range") << "upper" << INT_MAX << 0 << SSpan(20, 100) << lstUpper;
        QTest::newRow("upper below the lower takes it along") << "upper" << 10 << 0 << SSpan(10, 10) << lstBoth;
        QTest::newRow("upper far below the range") << "upper" << INT_MIN << 0 << SSpan(0, 0) << lstBoth;
        QTest::newRow("span") << "span" << 30 << 40 << SSpan(30, 40) << lstBoth;
        QTest::newRow("span in the other order") << "span" << 40 << 30 << SSpan(30, 40) << lstBoth;
        QTest::newRow("span as it is") << "span" << 20 << 80 << SSpan(20, 80) << lstNone;
        QTest::newRow("span, only the upper end new") << "span" << 20 << 81 << SSpan(20, 81) << lstUpper;
        QTest::newRow("span beyond both ends") << "span" << INT_MIN << INT_MAX << SSpan(0, 100) << lstBoth;
        QTest::newRow("span above the range") << "span" << 500 << 600 << SSpan(100, 100) << lstBoth;
        QTest::newRow("range made smaller") << "range" << 30 << 60 << SSpan(30, 60) << lstBoth;
        QTest::newRow("range above the span") << "range" << 200 << 300 << SSpan(200, 200) << lstBoth;
        QTest::newRow("range below the span") << "range" << -50 << -10 << SSpan(-10, -10) << lstBoth;
        QTest::newRow("range made larger") << "range" << -100 << 1000 << SSpan(20, 80) << lstNone;
        QTest::newRow("range of one value") << "range" << 5 << 5 << SSpan(5, 5) << lstBoth;
    }
    void settersClampPushAndOrder()
    {
        QFETCH(QString, strCall);
        QFETCH(int, nFirst);
        QFETCH(int, nSecond);
        QFETCH(SSpan, objExpected);
        QFETCH(QStringList, lstSignals);
        const auto pSlider = makeSlider();
        QStringList lstSeen;
        connect(pSlider.get(), &QSpanSlider::lowerValueChanged, this,
                [&](int nLower)
                {
                    lstSeen << "lower";
                    QCOMPARE(nLower, objExpected.first);
                    QCOMPARE(span(*pSlider), objExpected); // both ends are new before the first word goes out
                });
        connect(pSlider.get(), &QSpanSlider::upperValueChanged, this,
                [&](int nUpper)
                {
                    lstSeen << "upper";
                    QCOMPARE(nUpper, objExpected.second);
                });
        connect(pSlider.get(), &QSpanSlider::spanChanged, this,
                [&](int nLower, int nUpper)
                {
                    lstSeen << "span";
                    QCOMPARE(SSpan(nLower, nUpper), objExpected);
                });
        if (strCall == "lower")
            pSlider->setLowerValue(nFirst);
        else if (strCall == "upper")
            pSlider->setUpperValue(nFirst);
        else if (strCall == "span")
            pSlider->setSpan(nFirst, nSecond);
        else
            pSlider->setRange(nFirst, nSecond);
        QCOMPARE(span(*pSlider), objExpected);
        QCOMPARE(lstSeen, lstSignals);
    }

    void blockedSignalsStaySilentAndTheBaseValueStandsStill()
    {
        const auto pSlider = makeSlider();
        pSlider->blockSignals(true);
        pSlider->setUpperValue(50);
        pSlider->setLowerValue(10);
        pSlider->blockSignals(false);
        QCOMPARE(span(*pSlider), SSpan(10, 50));
        const QSignalSpy objValue(pSlider.get(), &QAbstractSlider::valueChanged);
        QTest::keyClick(pSlider.get(), Qt::Key_Right);
        drag(*pSlider, pSlider->partRect(QSpanSlider::PartUpper).center(), {QPoint(290, 12)});
        wheel(*pSlider, QPoint(5, 5), 120);
        QCOMPARE(objValue.count(), 0);
        QCOMPARE(pSlider->value(), 0);
    }

    void connectsInTheFormsWay()
    {
        const auto pSlider = makeSlider();
        QVERIFY(connect(pSlider.get(), SIGNAL(lowerValueChanged(int)), pSlider.get(), SLOT(update())));
        QVERIFY(connect(pSlider.get(), SIGNAL(upperValueChanged(int)), pSlider.get(), SLOT(update())));
        QVERIFY(connect(pSlider.get(), SIGNAL(spanChanged(int, int)), pSlider.get(), SLOT(update())));
    }

    // ---- Pointer ------------------------------------------------------------------------------------------------

    void handlesAndSpanAreDragged_data()
    {
        QTest::addColumn<int>("nOrientation");
        QTest::addColumn<int>("nPart");
        QTest::addColumn<int>("nBy"); // in values
        QTest::addColumn<SSpan>("objExpected");
        for (const Qt::Orientation eOrientation : {Qt::Horizontal, Qt::Vertical})
        {
            const auto row = [eOrientation](const char* pszName)
            { return QByteArray(eOrientation == Qt::Horizontal ? "lying, " : "standing, ") + pszName; };
            QTest::newRow(row("lower up")) << int(eOrientation) << int(QSpanSlider::PartLower) << 20 << SSpan(40, 80);
            QTest::newRow(row("lower stops at the upper")) << int(eOrientation) << int(QSpanSlider::PartLower) << 75 << SSpan(80, 80);
            QTest::newRow(row("lower stops at the end")) << int(eOrientation) << int(QSpanSlider::PartLower) << -60 << SSpan(0, 80);
            QTest::newRow(row("upper down")) << int(eOrientation) << int(QSpanSlider::PartUpper) << -20 << SSpan(20, 60);
            QTest::newRow(row("upper stops at the lower")) << int(eOrientation) << int(QSpanSlider::PartUpper) << -70 << SSpan(20, 20);
            QTest::newRow(row("upper stops at the end")) << int(eOrientation) << int(QSpanSlider::PartUpper) << 90 << SSpan(20, 100);
            QTest::newRow(row("span up")) << int(eOrientation) << int(QSpanSlider::PartSpan) << 10 << SSpan(30, 90);
            QTest::newRow(row("span keeps its width at the end"))
                << int(eOrientation) << int(QSpanSlider::PartSpan) << 55 << SSpan(40, 100);
            QTest::newRow(row("span keeps its width at the start"))
                << int(eOrientation) << int(QSpanSlider::PartSpan) << -55 << SSpan(0, 60);
        }
    }
    void handlesAndSpanAreDragged()
    {
        QFETCH(int, nOrientation);
        QFETCH(int, nPart);
        QFETCH(int, nBy);
        QFETCH(SSpan, objExpected);
        const bool bHorizontal = nOrientation == Qt::Horizontal;
        const auto pSlider = makeSlider(Qt::Orientation(nOrientation));
        const QSignalSpy objSpans(pSlider.get(), &QSpanSlider::spanChanged);
        const QSignalSpy objPressed(pSlider.get(), &QAbstractSlider::sliderPressed);
        const QSignalSpy objReleased(pSlider.get(), &QAbstractSlider::sliderReleased);
        const QPoint ptFrom = pSlider->partRect(QSpanSlider::EPart(nPart)).center();
        const int nPixels = pixels(*pSlider, nBy);
        const QPoint ptTo = ptFrom + (bHorizontal ? QPoint(nPixels, 0) : QPoint(0, -nPixels)); // a standing slider grows upwards
        drag(*pSlider, ptFrom, {ptTo, ptTo});
        QCOMPARE(span(*pSlider), objExpected);
        QCOMPARE(objSpans.count(), 1); // a move to the same place tells nothing
        QCOMPARE(objPressed.count(), 1);
        QCOMPARE(objReleased.count(), 1);
        QVERIFY(!pSlider->isSliderDown());
    }

    void pressBesideTheSpanBringsTheNearerHandle()
    {
        const auto pSlider = makeSlider();
        QTest::mouseClick(pSlider.get(), Qt::LeftButton, Qt::NoModifier,
                          QPoint(pSlider->partRect(QSpanSlider::PartUpper).center().x() + pixels(*pSlider, 10), 12));
        QCOMPARE(span(*pSlider), SSpan(20, 90));
        QTest::mouseClick(pSlider.get(), Qt::LeftButton, Qt::NoModifier,
                          QPoint(pSlider->partRect(QSpanSlider::PartLower).center().x() - pixels(*pSlider, 10), 12));
        QCOMPARE(span(*pSlider), SSpan(10, 90));
        QTest::mouseClick(pSlider.get(), Qt::LeftButton, Qt::NoModifier, QPoint(150, 12)); // on the span: nothing to do
        QCOMPARE(span(*pSlider), SSpan(10, 90));
    }

    void handlesOnOnePlaceGoTheWayThePointerGoes_data()
    {
        QTest::addColumn<int>("nAt");
        QTest::addColumn<int>("nBy");
        QTest::addColumn<SSpan>("objExpected");
        QTest::newRow("in the middle, up") << 50 << 20 << SSpan(50, 70);
        QTest::newRow("in the middle, down") << 50 << -20 << SSpan(30, 50);
        QTest::newRow("at the end") << 100 << -30 << SSpan(70, 100);
        QTest::newRow("at the start") << 0 << 30 << SSpan(0, 30);
    }
    void handlesOnOnePlaceGoTheWayThePointerGoes()
    {
        QFETCH(int, nAt);
        QFETCH(int, nBy);
        QFETCH(SSpan, objExpected);
        for (const QSpanSlider::EPart eActive : {QSpanSlider::PartLower, QSpanSlider::PartUpper})
        {
            const auto pSlider = makeSlider(Qt::Horizontal, {nAt, nAt});
            pSlider->setActiveHandle(eActive);
            const QPoint ptFrom = pSlider->partRect(eActive).center();
            drag(*pSlider, ptFrom, {ptFrom + QPoint(pixels(*pSlider, nBy), 0)});
            QCOMPARE(span(*pSlider), objExpected);
        }
    }

    void withoutTrackingTheEndIsToldOnRelease()
    {
        const auto pSlider = makeSlider();
        pSlider->setTracking(false);
        const QSignalSpy objSpans(pSlider.get(), &QSpanSlider::spanChanged);
        const QPoint ptFrom = pSlider->partRect(QSpanSlider::PartLower).center();
        QTest::mousePress(pSlider.get(), Qt::LeftButton, Qt::NoModifier, ptFrom);
        const QPoint ptTo = ptFrom + QPoint(pixels(*pSlider, 30), 0);
        QMouseEvent objMove(QEvent::MouseMove, ptTo, ptTo, Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(pSlider.get(), &objMove);
        QCOMPARE(objSpans.count(), 0);
        QCOMPARE(span(*pSlider), SSpan(20, 80));
        QVERIFY(qAbs(pSlider->partRect(QSpanSlider::PartLower).center().x() - ptTo.x()) <= 1); // but the handle is where the pointer is
        QTest::mouseRelease(pSlider.get(), Qt::LeftButton, Qt::NoModifier, ptTo);
        QCOMPARE(objSpans.count(), 1);
        QCOMPARE(span(*pSlider), SSpan(50, 80));
    }

    void escapeGivesBackWhatWasThereBeforeTheDrag()
    {
        const auto pSlider = makeSlider();
        const QPoint ptFrom = pSlider->partRect(QSpanSlider::PartUpper).center();
        QTest::mousePress(pSlider.get(), Qt::LeftButton, Qt::NoModifier, ptFrom);
        const QPoint ptTo = ptFrom - QPoint(pixels(*pSlider, 30), 0);
        QMouseEvent objMove(QEvent::MouseMove, ptTo, ptTo, Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(pSlider.get(), &objMove);
        QCOMPARE(span(*pSlider), SSpan(20, 50));
        QTest::keyClick(pSlider.get(), Qt::Key_Escape);
        QCOMPARE(span(*pSlider), SSpan(20, 80));
        QCoreApplication::sendEvent(pSlider.get(), &objMove); // the pointer holds nothing any more
        QTest::mouseRelease(pSlider.get(), Qt::LeftButton, Qt::NoModifier, ptTo);
        QCOMPARE(span(*pSlider), SSpan(20, 80));
    }

    void otherButtonsAndDisabledSlidersDoNothing()
    {
        const auto pSlider = makeSlider();
        QTest::mouseClick(pSlider.get(), Qt::RightButton, Qt::NoModifier, QPoint(5, 12));
        QTest::mouseClick(pSlider.get(), Qt::MiddleButton, Qt::NoModifier, QPoint(5, 12));
        QCOMPARE(span(*pSlider), SSpan(20, 80));
        pSlider->setEnabled(false);
        QTest::mouseClick(pSlider.get(), Qt::LeftButton, Qt::NoModifier, QPoint(5, 12));
        QTest::keyClick(pSlider.get(), Qt::Key_Home);
        QCOMPARE(span(*pSlider), SSpan(20, 80));
    }

    void wheelMovesWhatIsUnderThePointer()
    {
        const auto pSlider = makeSlider();
        wheel(*pSlider, pSlider->partRect(QSpanSlider::PartUpper).center(), 120);
        QCOMPARE(span(*pSlider), SSpan(20, 81));
        wheel(*pSlider, pSlider->partRect(QSpanSlider::PartLower).center(), -240);
        QCOMPARE(span(*pSlider), SSpan(18, 81));
        wheel(*pSlider, QPoint(150, 12), 120); // on the span
        QCOMPARE(span(*pSlider), SSpan(19, 82));
        wheel(*pSlider, pSlider->partRect(QSpanSlider::PartLower).center(), -120, Qt::ControlModifier);
        QCOMPARE(span(*pSlider), SSpan(9, 82));
        for (int i = 0; i < 3; ++i)
            wheel(*pSlider, pSlider->partRect(QSpanSlider::PartLower).center(), 40); // three thirds of a notch
        QCOMPARE(span(*pSlider), SSpan(10, 82));
    }

    // ---- Keyboard -----------------------------------------------------------------------------------------------

    void keysMoveTheActiveHandle_data()
    {
        QTest::addColumn<int>("nHandle");
        QTest::addColumn<int>("nKey");
        QTest::addColumn<int>("nModifier");
        QTest::addColumn<SSpan>("objExpected");
        const int nLower = QSpanSlider::PartLower, nUpper = QSpanSlider::PartUpper;
        QTest::newRow("right") << nLower << int(Qt::Key_Right) << 0 << SSpan(21, 80);
        QTest::newRow("left") << nLower << int(Qt::Key_Left) << 0 << SSpan(19, 80);
        QTest::newRow("up") << nUpper << int(Qt::Key_Up) << 0 << SSpan(20, 81);
        QTest::newRow("down") << nUpper << int(Qt::Key_Down) << 0 << SSpan(20, 79);
        QTest::newRow("page up") << nUpper << int(Qt::Key_PageUp) << 0 << SSpan(20, 90);
        QTest::newRow("page down") << nLower << int(Qt::Key_PageDown) << 0 << SSpan(10, 80);
        QTest::newRow("home, lower") << nLower << int(Qt::Key_Home) << 0 << SSpan(0, 80);
        QTest::newRow("home, upper stops at the lower") << nUpper << int(Qt::Key_Home) << 0 << SSpan(20, 20);
        QTest::newRow("end, upper") << nUpper << int(Qt::Key_End) << 0 << SSpan(20, 100);
        QTest::newRow("end, lower stops at the upper") << nLower << int(Qt::Key_End) << 0 << SSpan(80, 80);
        QTest::newRow("whole span right") << nLower << int(Qt::Key_Right) << int(Qt::ShiftModifier) << SSpan(21, 81);
        QTest::newRow("whole span to the end") << nUpper << int(Qt::Key_End) << int(Qt::ShiftModifier) << SSpan(40, 100);
        QTest::newRow("whole span to the start") << nUpper << int(Qt::Key_Home) << int(Qt::ShiftModifier) << SSpan(0, 60);
        QTest::newRow("another key") << nUpper << int(Qt::Key_A) << 0 << SSpan(20, 80);
    }
    void keysMoveTheActiveHandle()
    {
        QFETCH(int, nHandle);
        QFETCH(int, nKey);
        QFETCH(int, nModifier);
        QFETCH(SSpan, objExpected);
        const auto pSlider = makeSlider();
        pSlider->setActiveHandle(QSpanSlider::EPart(nHandle));
        QTest::keyClick(pSlider.get(), Qt::Key(nKey), Qt::KeyboardModifiers(nModifier));
        QCOMPARE(span(*pSlider), objExpected);
    }

    void directionsFollowTheLayout()
    {
        const auto pSlider = makeSlider();
        pSlider->setLayoutDirection(Qt::RightToLeft);
        QVERIFY(pSlider->partRect(QSpanSlider::PartLower).x() > pSlider->partRect(QSpanSlider::PartUpper).x());
        QTest::keyClick(pSlider.get(), Qt::Key_Left);
        QCOMPARE(span(*pSlider), SSpan(21, 80));
        const QPoint ptFrom = pSlider->partRect(QSpanSlider::PartLower).center();
        drag(*pSlider, ptFrom, {ptFrom - QPoint(pixels(*pSlider, 20), 0)});
        QCOMPARE(span(*pSlider), SSpan(41, 80));
        pSlider->setLayoutDirection(Qt::LeftToRight);
        pSlider->setInvertedAppearance(true);
        QVERIFY(pSlider->partRect(QSpanSlider::PartLower).x() > pSlider->partRect(QSpanSlider::PartUpper).x());
        pSlider->setInvertedControls(true);
        QTest::keyClick(pSlider.get(), Qt::Key_Up);
        QCOMPARE(span(*pSlider), SSpan(40, 80));
    }

    void hugeRangesDoNotOverflow()
    {
        QSpanSlider objSlider(Qt::Horizontal);
        objSlider.resize(300, 24);
        objSlider.setRange(INT_MIN, INT_MAX);
        objSlider.setSpan(INT_MIN, INT_MAX);
        objSlider.setPageStep(INT_MAX);
        QCOMPARE(span(objSlider), SSpan(INT_MIN, INT_MAX));
        QTest::keyClick(&objSlider, Qt::Key_End);
        QCOMPARE(span(objSlider), SSpan(INT_MAX, INT_MAX));
        QTest::keyClick(&objSlider, Qt::Key_Home, Qt::ShiftModifier);
        QCOMPARE(span(objSlider), SSpan(INT_MIN, INT_MIN));
        QTest::keyClick(&objSlider, Qt::Key_PageDown);
        QCOMPARE(span(objSlider), SSpan(INT_MIN, INT_MIN));
        wheel(objSlider, QPoint(150, 12), 120 * 1000, Qt::ControlModifier);
        QVERIFY(objSlider.lowerValue() <= objSlider.upperValue());
    }

    void tabVisitsBothHandles()
    {
        QWidget objWindow;
        auto* pLayout = new QHBoxLayout(&objWindow);
        auto* pBefore = new QLineEdit;
        auto* pSlider = new QSpanSlider(Qt::Horizontal);
        auto* pAfter = new QLineEdit;
        for (QWidget* pWidget : QList<QWidget*>{pBefore, pSlider, pAfter})
            pLayout->addWidget(pWidget);
        pSlider->setFocusPolicy(Qt::StrongFocus);
        objWindow.show();
        QVERIFY(QTest::qWaitForWindowExposed(&objWindow));
        QApplication::setActiveWindow(&objWindow);
        pBefore->setFocus();
        QTRY_VERIFY(pBefore->hasFocus());
        QTest::keyClick(pBefore, Qt::Key_Tab);
        QVERIFY(pSlider->hasFocus());
        QCOMPARE(pSlider->activeHandle(), QSpanSlider::PartLower);
        QTest::keyClick(pSlider, Qt::Key_Tab);
        QVERIFY(pSlider->hasFocus());
        QCOMPARE(pSlider->activeHandle(), QSpanSlider::PartUpper);
        QTest::keyClick(pSlider, Qt::Key_Tab);
        QVERIFY(pAfter->hasFocus());
        QTest::keyClick(pAfter, Qt::Key_Backtab, Qt::ShiftModifier);
        QVERIFY(pSlider->hasFocus());
        QCOMPARE(pSlider->activeHandle(), QSpanSlider::PartUpper);
        QTest::keyClick(pSlider, Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(pSlider->activeHandle(), QSpanSlider::PartLower);
        QTest::keyClick(pSlider, Qt::Key_Backtab, Qt::ShiftModifier);
        QVERIFY(pBefore->hasFocus());
    }

    // ---- Accessibility and look ---------------------------------------------------------------------------------

    void assistiveTechnologyReadsAndSetsBothEnds()
    {
        const auto pSlider = makeSlider();
        pSlider->setAccessibleName("Color range");
        QAccessibleInterface* pInterface = QAccessible::queryAccessibleInterface(pSlider.get());
        QVERIFY(pInterface && pInterface->isValid());
        QCOMPARE(pInterface->role(), QAccessible::Slider);
        QCOMPARE(pInterface->text(QAccessible::Name), QString("Color range"));
        QCOMPARE(pInterface->text(QAccessible::Value), QString("20 to 80"));
        QAccessibleValueInterface* pValue = pInterface->valueInterface();
        QVERIFY(pValue);
        QCOMPARE(pValue->minimumValue().toInt(), 0);
        QCOMPARE(pValue->maximumValue().toInt(), 100);
        QCOMPARE(pValue->minimumStepSize().toInt(), 1);
        QCOMPARE(pValue->currentValue().toInt(), 20);
        pValue->setCurrentValue(25);
        pSlider->setActiveHandle(QSpanSlider::PartUpper);
        QCOMPARE(pValue->currentValue().toInt(), 80);
        pValue->setCurrentValue(75);
        QCOMPARE(span(*pSlider), SSpan(25, 75));
        QCOMPARE(pInterface->text(QAccessible::Value), QString("25 to 75"));
    }

    void spanIsPaintedBetweenTheHandles()
    {
        const auto pSlider = makeSlider();
        pSlider->setPalette(
            []
            {
                QPalette objPalette;
                objPalette.setColor(QPalette::Highlight, QColor(255, 0, 0));
                return objPalette;
            }());
        const auto redPixels = [&](int nFrom, int nTo)
        {
            const QImage imgSlider = pSlider->grab().toImage();
            int nRed = 0;
            for (int x = nFrom; x < nTo; ++x)
            {
                const QColor clr(imgSlider.pixel(x, pSlider->partRect(QSpanSlider::PartSpan).center().y()));
                nRed += clr.red() > 150 && clr.green() < 60 ? 1 : 0;
            }
            return nRed;
        };
        const int nLower = pSlider->partRect(QSpanSlider::PartLower).right() + 1;
        const int nUpper = pSlider->partRect(QSpanSlider::PartUpper).left();
        QCOMPARE(redPixels(nLower, nUpper), nUpper - nLower);
        QCOMPARE(redPixels(0, pSlider->partRect(QSpanSlider::PartLower).left()), 0);
        QCOMPARE(redPixels(pSlider->partRect(QSpanSlider::PartUpper).right() + 1, pSlider->width()), 0);
    }
};

QTEST_MAIN(CSpanSliderTest)
#include "tst_spanslider.moc"
