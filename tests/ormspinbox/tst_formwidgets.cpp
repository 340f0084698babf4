// The spin box for values of any magnitude, and the thumb wheel.

#include "QDoubleSpinBoxEx.h"
#include "QSpanSlider.h"
#include "QtThumbWheel.h"

#include <QAccessible>
#include <QApplication>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

#include <cfloat>
#include <climits>
#include <cmath>
#include <memory>

namespace
{
/// A spin box as the colour scale panel sets it up.
std::unique_ptr<QDoubleSpinBoxEx> makeBox(double fMinimum, double fMaximum, double fValue)
{
    auto pBox = std::make_unique<QDoubleSpinBoxEx>(nullptr);
    pBox->setScientificNotation(true);
    pBox->setRange(fMinimum, fMaximum);
    pBox->setDecimals(15);
    pBox->setValue(fValue);
    return pBox;
}

QLineEdit* editOf(QWidget& objBox)
{
    return objBox.findChild<QLineEdit*>();
}

void typeText(QDoubleSpinBoxEx& objBox, const QString& strText)
{
    editOf(objBox)->selectAll();
    QTest::keyClick(&objBox, Qt::Key_Delete);
    QTest::keyClicks(&objBox, strText);
}

/// A wheel as the tool's window sets it up.
std::unique_ptr<QtThumbWheel> makeWheel()
{
    auto pWheel = std::make_unique<QtThumbWheel>(nullptr);
    pWheel->setMinimumSize(200, 20);
    pWheel->setOrientation(Qt::Horizontal);
    pWheel->setRange(0, 360);
    pWheel->setValue(0);
    pWheel->setWrapsAround(true);
    pWheel->resize(200, 20);
    return pWheel;
}

void wheel(QWidget& objWidget, int nDelta, Qt::KeyboardModifiers eModifiers = Qt::NoModifier)
{
    QWheelEvent objEvent(QPointF(10, 10), QPointF(10, 10), QPoint(), QPoint(0, nDelta), Qt::NoButton, eModifiers, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&objWidget, &objEvent);
}

void moveHeld(QWidget& objWidget, const QPoint& ptTo)
{
    QMouseEvent objMove(QEvent::MouseMove, ptTo, objWidget.mapToGlobal(ptTo), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&objWidget, &objMove);
}
} // namespace

class CFormWidgetsTest : public QObject
{
    Q_OBJECT

private slots:
    // ---- Spin box -----------------------------------------------------------------------------------------------

    void withoutTheFlagItIsAPlainSpinBox()
    {
        QDoubleSpinBoxEx objBox(nullptr);
        QDoubleSpinBox objPlain;
        QVERIFY(!objBox.scientificNotation());
        for (QDoubleSpinBox* pBox : {static_cast<QDoubleSpinBox*>(&objBox), &objPlain})
        {
            pBox->setRange(-5, 12345);
            pBox->setDecimals(3);
            pBox->setValue(1234.5678);
        }
        QCOMPARE(objBox.text(), objPlain.text());
        QCOMPARE(objBox.sizeHint(), objPlain.sizeHint());
        QString strText = "1e3";
        int nPosition = 3;
        QCOMPARE(objBox.validate(strText, nPosition), objPlain.validate(strText, nPosition));
        objBox.setScientificNotation(true);
        QCOMPARE(objBox.value(), objPlain.value());
        QCOMPARE(objBox.text(), QString("1234.6"));
        objBox.setScientificNotation(false);
        QCOMPARE(objBox.text(), objPlain.text());
    }

    void everyMagnitudeIsReadable_data()
    {
        QTest::addColumn<double>("fValue");
        QTest::addColumn<QString>("strText");
        QTest::newRow("zero") << 0.0 << "0";
        QTest::newRow("minus zero") << -0.0 << "0";
        QTest::newRow("one") << 1.0 << "1";
        QTest::newRow("fraction") << 0.25 << "0.25";
        QTest::newRow("rounded") << 1234.5678 << "1234.6";
        QTest::newRow("photons") << 12345678.9 << "1.2346e7";
        QTest::newRow("round photons") << 1.2e7 << "1.2e7";
        QTest::newRow("tiny") << 2.5e-7 << "2.5e-7";
        QTest::newRow("tinier, at the last decimals") << 1.25e-13 << "1.25e-13";
        QTest::newRow("large") << 9.9999e15 << "9.9999e15";
        QTest::newRow("float of a file") << double(0.1F) << "0.1";
        QTest::newRow("negative") << -3.25e-5 << "-3.25e-5";
        QTest::newRow("rounds up to the next exponent") << 99999.96 << "1e5";
    }
    void everyMagnitudeIsReadable()
    {
        QFETCH(double, fValue);
        QFETCH(QString, strText);
        const auto pBox = makeBox(-1e18, 1e18, fValue);
        QCOMPARE(pBox->text(), strText);
        QVERIFY(std::abs(pBox->value() - fValue) <= 5e-16 + std::abs(fValue) * 1e-15); // fifteen decimals, as asked for
    }

    void typingRoundTrips_data()
    {
        QTest::addColumn<QString>("strTyped");
        QTest::addColumn<double>("fExpected");
        QTest::addColumn<QString>("strShown");
        QTest::newRow("exponent") << "1.5e7" << 1.5e7 << "1.5e7";
        QTest::newRow("capital exponent with plus") << "1.5E+7" << 1.5e7 << "1.5e7";
        QTest::newRow("negative exponent") << "2.5e-7" << 2.5e-7 << "2.5e-7";
        QTest::newRow("plain") << "12500000" << 1.25e7 << "1.25e7";
        QTest::newRow("decimals") << "0.00001234" << 1.234e-5 << "1.234e-5";
        QTest::newRow("no leading digit") << ".5" << 0.5 << "0.5";
        QTest::newRow("no decimals after the point") << "7." << 7.0 << "7";
        QTest::newRow("more digits than are shown") << "1.23456789e7" << 1.23456789e7 << "1.2346e7";
        QTest::newRow("letters are not taken") << "1a2b" << 12.0 << "12";
        QTest::newRow("a comma is not taken") << "1,5" << 15.0 << "15";
        QTest::newRow("no sign where nothing is negative") << "-3" << 3.0 << "3";
        QTest::newRow("unfinished exponent: back to what was") << "5e" << 5.0 << "5";
        QTest::newRow("above the range: the last value inside it") << "123456789" << 12345678.0 << "1.2346e7";
        QTest::newRow("empty: as before") << "" << 42.0 << "42";
    }
    void typingRoundTrips()
    {
        QFETCH(QString, strTyped);
        QFETCH(double, fExpected);
        QFETCH(QString, strShown);
        const auto pBox = makeBox(0, 2e7, 42);
        typeText(*pBox, strTyped);
        QTest::keyClick(pBox.get(), Qt::Key_Return);
        QCOMPARE(pBox->value(), fExpected);
        QCOMPARE(pBox->text(), strShown);
    }

    void localeDoesNotMatter()
    {
        for (const char* pszLocale : {"de_DE", "fa_IR", "fr_FR"})
        {
            const auto pBox = makeBox(0, 1e9, 0.25);
            pBox->setLocale(QLocale(QLatin1String(pszLocale)));
            pBox->setValue(1234.5);
            QCOMPARE(pBox->text(), QString("1234.5"));
            typeText(*pBox, "2.75e3");
            QTest::keyClick(pBox.get(), Qt::Key_Return);
            QCOMPARE(pBox->value(), 2750.0);
        }
    }

    /// The text holds five digits, the value up to seventeen: looking at it must not round it.
    void valueKeepsItsDigitsUntilTheTextIsEdited_data()
    {
        QTest::addColumn<double>("fValue");
        QTest::newRow("photons") << 12345678.901;
        QTest::newRow("tiny") << 1.23456789e-6;
        QTest::newRow("above what its text says") << 1.00004999e6;
        QTest::newRow("the maximum, whose text rounds up beyond it") << 1.99999e7;
    }
    void valueKeepsItsDigitsUntilTheTextIsEdited()
    {
        QFETCH(double, fValue);
        const auto pBox = makeBox(0, 1.99999e7, fValue);
        const double fBefore = pBox->value();
        const QSignalSpy objSpy(pBox.get(), QOverload<double>::of(&QDoubleSpinBox::valueChanged));
        pBox->show();
        QVERIFY(QTest::qWaitForWindowExposed(pBox.get()));
        QFocusEvent objIn(QEvent::FocusIn, Qt::TabFocusReason);
        QFocusEvent objOut(QEvent::FocusOut, Qt::TabFocusReason);
        QCoreApplication::sendEvent(pBox.get(), &objIn);
        QCoreApplication::sendEvent(pBox.get(), &objOut);
        QCOMPARE(pBox->value(), fBefore);
        pBox->interpretText();
        QCOMPARE(pBox->value(), fBefore);
        QTest::keyClick(pBox.get(), Qt::Key_End);
        QTest::keyClicks(pBox.get(), "9"); // typed and taken back
        QTest::keyClick(pBox.get(), Qt::Key_Backspace);
        QTest::keyClick(pBox.get(), Qt::Key_Return);
        QVERIFY(std::abs(pBox->value() / fBefore - 1) < 5e-5);
        const auto pFresh = makeBox(0, 1.99999e7, fValue);
        QTest::keyClick(pFresh.get(), Qt::Key_Return); // Return alone
        QCOMPARE(pFresh->value(), fBefore);
        QCOMPARE(pFresh->text(), pFresh->textFromValue(fBefore));
    }

    void stepsStartFromTheWholeValue()
    {
        const auto pBox = makeBox(0, 2e7, 12345678.25);
        pBox->setSingleStep(0.5);
        pBox->stepUp();
        QCOMPARE(pBox->value(), 12345678.75);
        QTest::keyClick(pBox.get(), Qt::Key_Down);
        QCOMPARE(pBox->value(), 12345678.25);
        QTest::keyClick(pBox.get(), Qt::Key_PageUp);
        QCOMPARE(pBox->value(), 12345683.25);
        pBox->setValue(2e7);
        pBox->stepUp();
        QCOMPARE(pBox->value(), 2e7);
        const auto pTiny = makeBox(0, 1e-6, 2.5e-7);
        pTiny->setSingleStep(1e-9);
        pTiny->stepUp();
        QVERIFY(std::abs(pTiny->value() - 2.51e-7) < 1e-15);
        QCOMPARE(pTiny->text(), QString("2.51e-7"));
    }

    void changesAreToldAsByEverySpinBox()
    {
        const auto pBox = makeBox(0, 2e7, 5);
        QVERIFY(connect(pBox.get(), SIGNAL(valueChanged(double)), pBox.get(), SLOT(update())));
        const QSignalSpy objSpy(pBox.get(), QOverload<double>::of(&QDoubleSpinBox::valueChanged));
        pBox->setValue(5);
        pBox->setScientificNotation(true);
        QCOMPARE(objSpy.count(), 0);
        pBox->setValue(6);
        QCOMPARE(objSpy.count(), 1);
        pBox->setScientificNotation(false);
        pBox->setScientificNotation(true);
        QCOMPARE(objSpy.count(), 1);
    }

    void validationByText_data()
    {
        QTest::addColumn<QString>("strText");
        QTest::addColumn<double>("fMinimum");
        QTest::addColumn<int>("nState");
        QTest::newRow("number") << "12" << 0.0 << int(QValidator::Acceptable);
        QTest::newRow("exponent") << "1.5e3" << 0.0 << int(QValidator::Acceptable);
        QTest::newRow("begun") << "1.5e" << 0.0 << int(QValidator::Intermediate);
        QTest::newRow("begun with sign") << "1.5e-" << 0.0 << int(QValidator::Intermediate);
        QTest::newRow("empty") << "" << 0.0 << int(QValidator::Intermediate);
        QTest::newRow("point") << "." << 0.0 << int(QValidator::Intermediate);
        QTest::newRow("too high so far") << "99999999" << 0.0 << int(QValidator::Intermediate);
        QTest::newRow("too low so far") << "1" << 50.0 << int(QValidator::Intermediate);
        QTest::newRow("beyond all numbers") << "1e999" << 0.0 << int(QValidator::Intermediate);
        QTest::newRow("minus where allowed") << "-1" << -5.0 << int(QValidator::Acceptable);
        QTest::newRow("minus where not") << "-1" << 0.0 << int(QValidator::Invalid);
        QTest::newRow("two points") << "1.2.3" << 0.0 << int(QValidator::Invalid);
        QTest::newRow("exponent without a number") << "e5" << 0.0 << int(QValidator::Invalid);
        QTest::newRow("exponent without end") << "1e12345" << 0.0 << int(QValidator::Invalid);
        QTest::newRow("fraction in the exponent") << "1e2.5" << 0.0 << int(QValidator::Invalid);
        QTest::newRow("hexadecimal") << "0x10" << 0.0 << int(QValidator::Invalid);
        QTest::newRow("inf") << "inf" << 0.0 << int(QValidator::Invalid);
        QTest::newRow("nan") << "nan" << 0.0 << int(QValidator::Invalid);
        QTest::newRow("other digits") << QString::fromUtf8("١٢") << 0.0 << int(QValidator::Invalid);
    }
    void validationByText()
    {
        QFETCH(QString, strText);
        QFETCH(double, fMinimum);
        QFETCH(int, nState);
        const auto pBox = makeBox(fMinimum, 1e7, 60);
        int nPosition = strText.size();
        QCOMPARE(int(pBox->validate(strText, nPosition)), nState);
    }

    void prefixSuffixAndSpecialTextAreKept()
    {
        const auto pBox = makeBox(0, 1e9, 2.5e6);
        pBox->setPrefix("~ ");
        pBox->setSuffix(" ph/s");
        QCOMPARE(pBox->text(), QString("~ 2.5e6 ph/s"));
        QCOMPARE(pBox->valueFromText("~ 3e4 ph/s"), 3e4);
        pBox->setSpecialValueText("none");
        pBox->setValue(0);
        QCOMPARE(pBox->text(), QString("none"));
        QTest::keyClick(pBox.get(), Qt::Key_Return);
        QCOMPARE(pBox->value(), 0.0);
    }

    void widthDoesNotDependOnTheValue()
    {
        const auto pBox = makeBox(0, 2e7, 0);
        const QSize szHint = pBox->sizeHint();
        for (const double fValue : {1.2346e7, 2.3456e-10, 0.00012346})
        {
            pBox->setValue(fValue);
            QCOMPARE(pBox->sizeHint(), szHint);
        }
        QVERIFY(szHint.width() < 140); // two of them stand side by side in a panel
        pBox->resize(szHint);
        pBox->setValue(2.3456e-10);
        pBox->show();
        QVERIFY(QTest::qWaitForWindowExposed(pBox.get()));
        QVERIFY(editOf(*pBox)->width() >= pBox->fontMetrics().horizontalAdvance(pBox->text()));
    }

    void numbersThatAreNoneDoNoHarm()
    {
        const auto pBox = makeBox(0, 1e7, 5);
        pBox->setRange(0, std::nan(""));
        pBox->setRange(0, HUGE_VAL);
        pBox->setRange(0, DBL_MAX);
        pBox->setSingleStep(0);
        pBox->stepUp();
        pBox->setRange(0, 1e7);
        pBox->setValue(3);
        QCOMPARE(pBox->value(), 3.0);
        QCOMPARE(pBox->text(), QString("3"));
    }

    // ---- Thumb wheel --------------------------------------------------------------------------------------------

    void wheelWrapsAtBothEnds_data()
    {
        QTest::addColumn<bool>("bWraps");
        QTest::addColumn<int>("nStart");
        QTest::addColumn<int>("nKey");
        QTest::addColumn<int>("nExpected");
        QTest::newRow("step inside") << true << 100 << int(Qt::Key_Right) << 101;
        QTest::newRow("step past the end") << true << 360 << int(Qt::Key_Right) << 0;
        QTest::newRow("step before the start") << true << 0 << int(Qt::Key_Left) << 360;
        QTest::newRow("up") << true << 360 << int(Qt::Key_Up) << 0;
        QTest::newRow("page past the end") << true << 355 << int(Qt::Key_PageUp) << 4;
        QTest::newRow("page before the start") << true << 5 << int(Qt::Key_PageDown) << 356;
        QTest::newRow("home") << true << 90 << int(Qt::Key_Home) << 0;
        QTest::newRow("end") << true << 90 << int(Qt::Key_End) << 360;
        QTest::newRow("no wrapping: stops at the end") << false << 360 << int(Qt::Key_Right) << 360;
        QTest::newRow("no wrapping: stops at the start") << false << 3 << int(Qt::Key_PageDown) << 0;
    }
    void wheelWrapsAtBothEnds()
    {
        QFETCH(bool, bWraps);
        QFETCH(int, nStart);
        QFETCH(int, nKey);
        QFETCH(int, nExpected);
        const auto pWheel = makeWheel();
        pWheel->setWrapsAround(bWraps);
        QCOMPARE(pWheel->wrapsAround(), bWraps);
        pWheel->setValue(nStart);
        QTest::keyClick(pWheel.get(), Qt::Key(nKey));
        QCOMPARE(pWheel->value(), nExpected);
    }

    void settersAreTheBases()
    {
        const auto pWheel = makeWheel();
        QVERIFY(connect(pWheel.get(), SIGNAL(valueChanged(int)), pWheel.get(), SLOT(update())));
        const QSignalSpy objSpy(pWheel.get(), &QAbstractSlider::valueChanged);
        pWheel->setValue(400);
        QCOMPARE(pWheel->value(), 360); // set values are bounded, only turning wraps
        pWheel->setValue(360);
        QCOMPARE(objSpy.count(), 1);
        pWheel->setValue(0);
        QCOMPARE(objSpy.count(), 2);
    }

    void draggingTurnsTheSurfaceWithThePointer()
    {
        const auto pWheel = makeWheel();
        const QSignalSpy objSpy(pWheel.get(), &QAbstractSlider::valueChanged);
        QTest::mousePress(pWheel.get(), Qt::LeftButton, Qt::NoModifier, QPoint(100, 10));
        QVERIFY(pWheel->isSliderDown());
        moveHeld(*pWheel, QPoint(150, 10));
        const int nForward = pWheel->value();
        QVERIFY2(qAbs(nForward - 29) <= 1, qPrintable(QString::number(nForward))); // 50 pixels on a drum of radius 100: half a radian
        moveHeld(*pWheel, QPoint(100, 10));
        QCOMPARE(pWheel->value(), 0);
        moveHeld(*pWheel, QPoint(50, 10));
        QCOMPARE(pWheel->value(), 361 - nForward);
        moveHeld(*pWheel, QPoint(100 + 2 * 629, 10)); // two whole turns
        QVERIFY(pWheel->value() <= 2 || pWheel->value() >= 359);
        QTest::mouseRelease(pWheel.get(), Qt::LeftButton, Qt::NoModifier, QPoint(100, 10));
        QVERIFY(!pWheel->isSliderDown());
        const int nCount = objSpy.count();
        moveHeld(*pWheel, QPoint(10, 10));
        QCOMPARE(objSpy.count(), nCount);
    }

    void dragStopsWithoutWrapping()
    {
        const auto pWheel = makeWheel();
        pWheel->setWrapsAround(false);
        QTest::mousePress(pWheel.get(), Qt::LeftButton, Qt::NoModifier, QPoint(100, 10));
        moveHeld(*pWheel, QPoint(-500, 10));
        QCOMPARE(pWheel->value(), 0);
        moveHeld(*pWheel, QPoint(5000, 10));
        QCOMPARE(pWheel->value(), 360);
        QTest::mouseRelease(pWheel.get(), Qt::LeftButton);
    }

    void standingWheelGrowsUpwards()
    {
        QtThumbWheel objWheel(nullptr);
        QCOMPARE(objWheel.sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
        objWheel.setOrientation(Qt::Vertical);
        QCOMPARE(objWheel.sizePolicy().verticalPolicy(), QSizePolicy::Expanding); // as sliders do
        objWheel.setRange(0, 360);
        objWheel.resize(20, 200);
        QTest::mousePress(&objWheel, Qt::LeftButton, Qt::NoModifier, QPoint(10, 100));
        moveHeld(objWheel, QPoint(10, 50));
        QVERIFY(objWheel.value() > 20);
        QTest::mouseRelease(&objWheel, Qt::LeftButton);
    }

    void cursorTellsThatTheWheelCanBeTaken()
    {
        QtThumbWheel objWheel(nullptr);
        QCOMPARE(objWheel.cursor().shape(), Qt::OpenHandCursor);
        QTest::mousePress(&objWheel, Qt::LeftButton);
        QCOMPARE(objWheel.cursor().shape(), Qt::ClosedHandCursor);
        QTest::mouseRelease(&objWheel, Qt::LeftButton);
        QCOMPARE(objWheel.cursor().shape(), Qt::OpenHandCursor);
        objWheel.setEnabled(false);
        QCOMPARE(objWheel.cursor().shape(), Qt::ArrowCursor);
        QTest::mousePress(&objWheel, Qt::LeftButton, Qt::NoModifier, QPoint(10, 10));
        QVERIFY(!objWheel.isSliderDown());
    }

    void mouseWheelTurnsAndWraps()
    {
        const auto pWheel = makeWheel();
        wheel(*pWheel, 120);
        QCOMPARE(pWheel->value(), 3);
        wheel(*pWheel, -240);
        QCOMPARE(pWheel->value(), 358);
        wheel(*pWheel, 120, Qt::ControlModifier);
        QCOMPARE(pWheel->value(), 7);
        wheel(*pWheel, 60);
        QCOMPARE(pWheel->value(), 7);
        wheel(*pWheel, 60);
        QCOMPARE(pWheel->value(), 10);
        wheel(*pWheel, 0);
        QCOMPARE(pWheel->value(), 10);
    }

    void hugeRangeDoesNotOverflow()
    {
        const auto pWheel = makeWheel();
        pWheel->setRange(INT_MIN, INT_MAX);
        pWheel->setValue(INT_MAX);
        QTest::keyClick(pWheel.get(), Qt::Key_Right);
        QCOMPARE(pWheel->value(), INT_MIN);
        QTest::keyClick(pWheel.get(), Qt::Key_Left);
        QCOMPARE(pWheel->value(), INT_MAX);
        pWheel->setRange(5, 5);
        QTest::keyClick(pWheel.get(), Qt::Key_Right);
        QTest::mouseClick(pWheel.get(), Qt::LeftButton);
        QCOMPARE(pWheel->value(), 5);
        QVERIFY(!pWheel->grab().isNull());
    }

    void assistiveTechnologySeesASlider()
    {
        const auto pWheel = makeWheel();
        QAccessibleInterface* pInterface = QAccessible::queryAccessibleInterface(pWheel.get());
        QVERIFY(pInterface);
        QCOMPARE(pInterface->role(), QAccessible::Slider);
        QAccessibleValueInterface* pValue = pInterface->valueInterface();
        QVERIFY(pValue);
        QCOMPARE(pValue->maximumValue().toInt(), 360);
        pValue->setCurrentValue(90);
        QCOMPARE(pWheel->value(), 90);
    }

    void ridgesMoveWithTheValue()
    {
        const auto pWheel = makeWheel();
        const QImage imgBefore = pWheel->grab().toImage();
        pWheel->setValue(3);
        QVERIFY(pWheel->grab().toImage() != imgBefore);
        // Ridges: along the middle line the brightness goes up and down many times.
        int nTurns = 0;
        int nDirection = 0;
        for (int x = 10; x < 190; ++x)
        {
            const int nStep = qGray(imgBefore.pixel(x, 10)) - qGray(imgBefore.pixel(x - 1, 10));
            if (qAbs(nStep) > 12 && (nStep > 0 ? 1 : -1) != nDirection)
            {
                nDirection = nStep > 0 ? 1 : -1;
                ++nTurns;
            }
        }
        QVERIFY2(nTurns > 20, qPrintable(QString::number(nTurns)));
        for (const QSize& szSmall : {QSize(1, 1), QSize(3, 20), QSize(200, 2)})
        {
            pWheel->setMinimumSize(0, 0);
            pWheel->resize(szSmall);
            QCOMPARE(pWheel->grab().size(), szSmall);
        }
    }

    void allThreeTogether()
    {
        QWidget objWindow;
        auto* pLayout = new QGridLayout(&objWindow);
        const auto add = [&](const QString& strLabel, QWidget* pWidget)
        {
            const int nRow = pLayout->rowCount();
            pLayout->addWidget(new QLabel(strLabel), nRow, 0);
            pLayout->addWidget(pWidget, nRow, 1);
        };
        QtThumbWheel* pFocused = nullptr;
        for (const QString& strState : {QString("plain"), QString("focus"), QString("disabled")})
        {
            auto* pSlider = new QSpanSlider(Qt::Horizontal);
            pSlider->setMaximum(100);
            pSlider->setSpan(25, 70);
            add("Span slider, " + strState, pSlider);
            auto* pWheel = new QtThumbWheel(nullptr);
            pWheel->setOrientation(Qt::Horizontal);
            pWheel->setRange(0, 360);
            pWheel->setMinimumSize(200, 20);
            add("Thumb wheel, " + strState, pWheel);
            QDoubleSpinBoxEx* pBox = makeBox(0, 2e7, 12345678).release();
            add("Spin box, " + strState, pBox);
            for (QWidget* pWidget : QList<QWidget*>{pSlider, pWheel, pBox})
                pWidget->setEnabled(strState != "disabled");
            if (strState == "focus")
                pFocused = pWheel;
        }
        auto* pSlider = new QSpanSlider(Qt::Horizontal);
        pSlider->setMaximum(100);
        pSlider->setSpan(40, 60);
        add("Span slider with the focus", pSlider);
        if (pFocused == nullptr)
            QFAIL("There is no wheel to give the focus to");
        objWindow.show();
        QVERIFY(QTest::qWaitForWindowExposed(&objWindow));
        QApplication::setActiveWindow(&objWindow);
        pFocused->setFocus();
        QTRY_VERIFY(pFocused->hasFocus());
        const QImage imgWheel = objWindow.grab().toImage();
        pSlider->setFocus();
        QTRY_VERIFY(pSlider->hasFocus());
        const QImage imgSlider = objWindow.grab().toImage();
        QVERIFY(imgWheel.copy(pFocused->geometry()) != imgSlider.copy(pFocused->geometry())); // the focus is seen
        QVERIFY(imgWheel.copy(pSlider->geometry()) != imgSlider.copy(pSlider->geometry()));
        const QString strKeep = QString::fromLocal8Bit(qgetenv("ORM_KEEP_PICTURES"));
        if (!strKeep.isEmpty())
        {
            imgWheel.save(strKeep + "/widgets-wheel.png");
            imgSlider.save(strKeep + "/widgets-slider.png");
        }
    }
};

QTEST_MAIN(CFormWidgetsTest)
#include "tst_formwidgets.moc"
