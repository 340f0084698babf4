#include "SOLAViewTestTools.h"

#include <QFontMetrics>

using namespace SOLAViewTest;

/// Texts in the OpenGL views: their place, their look and what they leave behind.
class tst_solaview_text : public QObject
{
    Q_OBJECT

private slots:
    void textStandsWhereTheRecordSays_data();
    void textStandsWhereTheRecordSays();
    void textIsLiftedOffTheLowerEdge();
    void wideTextIsElidedInItsViewport();
    void wholeTextIsDrawn_data();
    void wholeTextIsDrawn();
    void textWithoutRoomIsNotDrawn();
    void controlCharactersAreMadeVisible();
    void textHasTheCurrentColor();
    void textMindsNoStateAndLeavesIt_data();
    void textMindsNoStateAndLeavesIt();
    void manyTextsAndANewContext();
};

void tst_solaview_text::textStandsWhereTheRecordSays_data()
{
    QTest::addColumn<QRect>("rectViewport");
    QTest::addColumn<QVector<double>>("vecBox"); // left, right, bottom, top
    QTest::addColumn<QPointF>("ptText");
    QTest::addColumn<QPoint>("ptWindow");
    const QRect rect(50, 100, 200, 80);
    QTest::newRow("pixels for pixels") << rect << QVector<double>{0, 200, 0, 80} << QPointF(30, 20) << QPoint(80, 120);
    QTest::newRow("scaled") << rect << QVector<double>{-10, 10, -4, 4} << QPointF(0, 0) << QPoint(150, 140);
    QTest::newRow("squeezed") << rect << QVector<double>{0, 200, 0, 160} << QPointF(30, 80) << QPoint(80, 140);
    QTest::newRow("on its head") << rect << QVector<double>{0, 200, 250, 40} << QPointF(30, 180) << QPoint(80, 127);
    QTest::newRow("on its head, at the beginning") << rect << QVector<double>{0, 200, 250, 40} << QPointF(30, 250) << QPoint(80, 100);
    QTest::newRow("no height") << rect << QVector<double>{0, 200, 40, 40} << QPointF(30, 40) << QPoint(80, 100);
    QTest::newRow("no width") << rect << QVector<double>{0, 0, 0, 80} << QPointF(30, 20) << QPoint(50, 120);
    QTest::newRow("no extent") << rect << QVector<double>{0, 0, 0, 0} << QPointF(30, 20) << QPoint(50, 100);
    QTest::newRow("backwards") << rect << QVector<double>{200, 0, 0, 80} << QPointF(160, 20) << QPoint(90, 120);
}

void tst_solaview_text::textStandsWhereTheRecordSays()
{
    QFETCH(QRect, rectViewport);
    QFETCH(QVector<double>, vecBox);
    QFETCH(QPointF, ptText);
    QFETCH(QPoint, ptWindow);
    CView view;
    showView(view);
    const QString strText = QStringLiteral("HE"); // straight feet on the baseline
    const QImage img = view.paint(
        [&]()
        {
            view.place(rectViewport, vecBox[0], vecBox[1], vecBox[2], vecBox[3]);
            glColor3f(1, 1, 1);
            view.renderText(ptText.x(), ptText.y(), 0, strText, QFont(), 2000);
        });
    const QRect rectDrawn = drawn(img);
    const QFontMetrics objMetrics{QFont()};
    const QRect rectTight = objMetrics.tightBoundingRect(strText);
    const int nBaseline = qMax(ptWindow.y(), rectViewport.y() + objMetrics.descent());
    QVERIFY2(qAbs(rectDrawn.left() - (ptWindow.x() + rectTight.left())) <= 1, qPrintable(QString::number(rectDrawn.left())));
    QVERIFY2(qAbs(rectDrawn.top() - nBaseline) <= 1, qPrintable(QString::number(rectDrawn.top())));
    QVERIFY(qAbs(rectDrawn.width() - rectTight.width()) <= 2);
    QVERIFY(qAbs(rectDrawn.height() - rectTight.height()) <= 2);
}

void tst_solaview_text::textIsLiftedOffTheLowerEdge()
{
    CView view;
    showView(view);
    const QImage img = view.paint(
        [&]()
        {
            view.place(QRect(50, 100, 200, 19), 0, 200, 100, 19);
            glColor3f(1, 1, 1);
            view.renderText(20, 100, 0, QStringLiteral("gjpq_"), QFont(), 2000);
        });
    // In a rectangle counted upwards, top is the lower edge. Fonts round their descent, which may cost a pixel; a tile's frame begins two
    // below.
    QVERIFY(drawn(img).top() >= 99);
}

void tst_solaview_text::wideTextIsElidedInItsViewport()
{
    CView view;
    showView(view);
    const QString strLong = QStringLiteral("A name that is far too long for the tile that it belongs to");
    const int nWidth = QFontMetrics(QFont()).horizontalAdvance(strLong);
    const auto fnPaint = [&](const QString& strText)
    {
        return view.paint(
            [&]()
            {
                view.place(QRect(100, 100, 150, 19), 0, 150, 100, 19);
                glColor3f(1, 1, 1);
                view.renderText((150 - nWidth) / 2.0, 100, 0, strText, QFont(), 2000);
            });
    };
    // Inside its viewport, apart from what stands beside it, and in the middle.
    const QRect rectDrawn = drawn(fnPaint(strLong));
    QVERIFY(rectDrawn.left() >= 102);
    QVERIFY(rectDrawn.right() <= 248);
    QVERIFY(rectDrawn.width() > 120);
    QVERIFY(qAbs(rectDrawn.center().x() - 175) <= 2);
    // Both ends are there: names of time points may differ at either.
    QVERIFY(fnPaint(QStringLiteral("B") + strLong.mid(1)) != fnPaint(strLong));
    QVERIFY(fnPaint(strLong.chopped(1) + QStringLiteral("X")) != fnPaint(strLong));
    // A name of any length costs no more than what can be seen of it.
    QVERIFY(!drawn(fnPaint(QString(60000, QLatin1Char('W')))).isNull());
}

void tst_solaview_text::wholeTextIsDrawn_data()
{
    QTest::addColumn<QString>("strText");
    QTest::addColumn<int>("nPointSize");
    for (const QString& strText : {QStringLiteral("photons/sec"), QStringLiteral("SOLA Results"), QStringLiteral("1.25e7"),
                                   QStringLiteral("jfq_Wy"), QStringLiteral("cells")})
    {
        for (const int nPointSize : {6, 7, 8, 9, 11})
        {
            QTest::newRow(qPrintable(strText + QString::number(nPointSize))) << strText << nPointSize;
        }
    }
}

/// The last letter is as wide alone as at the end of the text: nothing is cut off with the texture.
void tst_solaview_text::wholeTextIsDrawn()
{
    QFETCH(QString, strText);
    QFETCH(int, nPointSize);
    CView view;
    showView(view);
    QFont font;
    font.setPointSize(nPointSize);
    const auto fnPaint = [&](const QString& str)
    {
        return drawn(view.paint(
            [&]()
            {
                view.place(QRect(0, 0, 400, 300), 0, 400, 0, 300);
                glColor3f(1, 1, 1);
                view.renderText(20, 100, 0, str, font, 2000);
            }));
    };
    // With a letter more behind it the text's own end stays where it is.
    const QImage imgLonger = view.paint(
        [&]()
        {
            view.place(QRect(0, 0, 400, 300), 0, 400, 0, 300);
            glColor3f(1, 1, 1);
            view.renderText(20, 100, 0, strText + QStringLiteral("     l"), font, 2000);
        });
    const QRect rectText = fnPaint(strText);
    const int nGap = QFontMetrics(font).horizontalAdvance(QStringLiteral("     "));
    const int nEnd = rectText.left() + QFontMetrics(font).horizontalAdvance(strText);
    QRect rectOwn;
    for (int nY = 0; nY < 300; ++nY)
    {
        for (int nX = 0; nX < nEnd + nGap / 2; ++nX)
        {
            if (imgLonger.pixel(nX, nY) != qRgb(0, 0, 0))
            {
                rectOwn = rectOwn.united(QRect(nX, 299 - nY, 1, 1));
            }
        }
    }
    QCOMPARE(rectText, rectOwn);
}

void tst_solaview_text::textWithoutRoomIsNotDrawn()
{
    CView view;
    showView(view);
    for (const int nWidth : {0, -30})
    {
        const QImage img = view.paint(
            [&]()
            {
                view.place(QRect(100, 100, nWidth, 19), 0, nWidth, 100, 19);
                glColor3f(1, 1, 1);
                view.renderText(0, 100, 0, QStringLiteral("Name"), QFont(), 2000);
            });
        QVERIFY(drawn(img).isNull());
    }
    const QImage img = view.paint(
        [&]()
        {
            view.place(QRect(100, 100, 100, 19), 0, 100, 100, 19);
            view.renderText(0, 100, 0, QString(), QFont(), 2000);
        });
    QVERIFY(drawn(img).isNull());
}

void tst_solaview_text::controlCharactersAreMadeVisible()
{
    CView view;
    showView(view);
    const auto fnPaint = [&](const QString& strText)
    {
        return view.paint(
            [&]()
            {
                view.place(QRect(50, 100, 300, 19), 0, 300, 100, 19);
                glColor3f(1, 1, 1);
                view.renderText(20, 100, 0, strText, QFont(), 2000);
            });
    };
    QCOMPARE(fnPaint(QStringLiteral("a\nb")), fnPaint(QStringLiteral("a\\nb")));
    QCOMPARE(fnPaint(QStringLiteral("a\u202Eb")), fnPaint(QStringLiteral("a\\u202Eb")));
}

void tst_solaview_text::textHasTheCurrentColor()
{
    CView view;
    showView(view);
    const QImage img = view.paint(
        [&]()
        {
            view.place(QRect(0, 0, 400, 300), 0, 400, 0, 300);
            glColor3f(1, 0, 0);
            view.renderText(20, 100, 0, QStringLiteral("same"), QFont(), 2000);
            glColor3f(0, 1, 0);
            view.renderText(20, 200, 0, QStringLiteral("same"), QFont(), 2000);
            glColor4f(1, 1, 1, 0.5f);
            QFont fontBig; // thick enough for pixels that are covered wholly
            fontBig.setPointSize(30);
            view.renderText(200, 100, 0, QStringLiteral("HHH"), fontBig, 2000);
        });
    int nRed = 0;
    int nGreen = 0;
    int nBrightest = 0;
    for (int nY = 0; nY < 300; ++nY)
    {
        for (int nX = 0; nX < 400; ++nX)
        {
            const QRgb rgb = img.pixel(nX, nY);
            if (nX < 200)
            {
                nRed += qRed(rgb) > 200 ? 1 : 0;
                nGreen += qGreen(rgb) > 200 ? 1 : 0;
                QCOMPARE(qBlue(rgb), 0);
            }
            else
            {
                nBrightest = qMax(nBrightest, qRed(rgb));
            }
        }
    }
    QVERIFY(nRed > 10);
    QCOMPARE(nGreen, nRed);
    QVERIFY(qAbs(nBrightest - 127) <= 3);
}

void tst_solaview_text::textMindsNoStateAndLeavesIt_data()
{
    QTest::addColumn<bool>("bHostile");
    QTest::addColumn<bool>("bKnownText");
    QTest::newRow("friendly state, first time") << false << false;
    QTest::newRow("friendly state, again") << false << true;
    QTest::newRow("hostile state, first time") << true << false;
    QTest::newRow("hostile state, again") << true << true;
}

void tst_solaview_text::textMindsNoStateAndLeavesIt()
{
    QFETCH(bool, bHostile);
    QFETCH(bool, bKnownText);
    CView view;
    showView(view);
    const auto fnText = [&]()
    {
        view.place(QRect(50, 100, 300, 80), 0, 300, 0, 80);
        view.renderText(20, 30, 0, QStringLiteral("Day 0, weak source"), QFont(), 2000);
    };
    const QImage imgExpected = view.paint(
        [&]()
        {
            glColor3f(1, 1, 0);
            fnText();
        });
    QVERIFY(drawn(imgExpected).width() > 50);

    CView viewOther;
    showView(viewOther);
    if (bKnownText)
    {
        viewOther.paint(
            [&]()
            {
                viewOther.place(QRect(50, 100, 300, 80), 0, 300, 0, 80);
                viewOther.renderText(20, 30, 0, QStringLiteral("Day 0, weak source"), QFont(), 2000);
            });
    }
    std::vector<double> vecBefore;
    std::vector<double> vecAfter;
    GLenum eError = GL_NO_ERROR;
    const QImage img = viewOther.paint(
        [&]()
        {
            GLuint nTexture = 0;
            glGenTextures(1, &nTexture);
            glPushAttrib(GL_ALL_ATTRIB_BITS);
            glPushClientAttrib(GL_CLIENT_ALL_ATTRIB_BITS);
            if (bHostile)
            {
                setHostileState(nTexture);
            }
            glColor3f(1, 1, 0);
            glGetError();
            vecBefore = glState();
            viewOther.place(QRect(50, 100, 300, 80), 0, 300, 0, 80);
            viewOther.renderText(20, 30, 0, QStringLiteral("Day 0, weak source"), QFont(), 2000);
            vecAfter = glState();
            eError = glGetError();
            glPopClientAttrib();
            glPopAttrib();
            for (const GLenum eMatrix : {GL_TEXTURE, GL_PROJECTION, GL_MODELVIEW})
            {
                glMatrixMode(eMatrix);
                glLoadIdentity();
            }
            glDeleteTextures(1, &nTexture);
        });
    QVERIFY(vecBefore.size() > 1500);
    QCOMPARE(vecAfter, vecBefore);
    QCOMPARE(int(eError), int(GL_NO_ERROR));
    QCOMPARE(img, imgExpected);
}

void tst_solaview_text::manyTextsAndANewContext()
{
    QWidget wndFirst;
    QWidget wndSecond;
    auto* pView = new CView(&wndFirst);
    pView->resize(400, 300);
    wndFirst.resize(400, 300);
    wndSecond.resize(400, 300);
    wndFirst.show();
    QVERIFY(QTest::qWaitForWindowExposed(&wndFirst));
    const auto fnTexts = [&](int nFrom, int nTo)
    {
        return pView->paint(
            [&]()
            {
                pView->place(QRect(0, 0, 400, 300), 0, 400, 0, 300);
                glColor3f(1, 1, 1);
                for (int i = nFrom; i < nTo; ++i)
                {
                    pView->renderText(10 + i % 10 * 38, 10 + i / 10 % 28 * 10, 0, QString::number(i), QFont(), 2000);
                }
            });
    };
    const QImage imgFew = fnTexts(0, 280);
    QVERIFY(drawn(imgFew).width() > 300);
    fnTexts(280, 1200); // far more than are kept
    QCOMPARE(fnTexts(0, 280), imgFew);
    // A view that moves to another window gets a new context: the textures are made anew.
    pView->setParent(&wndSecond);
    pView->show();
    wndSecond.show();
    QVERIFY(QTest::qWaitForWindowExposed(&wndSecond));
    QCOMPARE(fnTexts(0, 280), imgFew);
}

ORM_TEST_MAIN(tst_solaview_text)
#include "tst_solaview_text.moc"
