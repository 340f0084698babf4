// The headers of the system's OpenGL come first, so that Qt's own subset does not get in their way.
#include <GL/gl.h>
#include <GL/glext.h>

#include "COrmImageView.h"
#include "COrmPalette.h"
#include "COrmPreference.h"
#include "OrmColorTables.h"
#include "RenderTextWidget.h"

#include <QApplication>
#include <QDir>
#include <QFontMetrics>
#include <QImage>
#include <QOpenGLWidget>
#include <QPainter>
#include <QSurfaceFormat>
#include <QTest>

#include <array>
#include <cmath>
#include <functional>

namespace
{
constexpr int nWidth = 200; ///< of the window
constexpr int nStrip = 90;  ///< pixels of the strip that are visible
constexpr float fBottom = 30.0f;

/// One call of renderText().
struct SWritten
{
    QString m_strText;
    QRect m_objRect; ///< ink in window pixels, origin bottom left; bottom() is the lowest row
    QColor m_clrText;
    int m_nListBase;
};

/// A view that draws what it is told and writes text by itself.
class CBarWindow : public QOpenGLWidget, public RenderTextWidget
{
public:
    std::function<void(CBarWindow&)> m_fnPaint;
    QList<SWritten> m_lstWritten;

    void setViewport(int nX, int nY, int nPixelWidth, int nPixelHeight, double fBoxWidth, double fBoxHeight)
    {
        glViewport(nX, nY, nPixelWidth, nPixelHeight);
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        glOrtho(0.0, fBoxWidth, 0.0, fBoxHeight, -1.0, 1.0);
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        m_arrViewport = {nX, nY, nPixelWidth, nPixelHeight};
        m_fBoxWidth = fBoxWidth;
        m_fBoxHeight = fBoxHeight;
    }

    /// Draws the pixels of the text at whole window pixels.
    void renderText(double fX, double fY, double /*fZ*/, const QString& strText, const QFont& objFont, int nListBase) override
    {
        const int nLeft = qRound(m_arrViewport[0] + fX * m_arrViewport[2] / m_fBoxWidth);
        const int nBaseline = qRound(m_arrViewport[1] + fY * m_arrViewport[3] / m_fBoxHeight);
        const QFontMetrics objMetrics(objFont);
        std::array<float, 4> arrColor{};
        glGetFloatv(GL_CURRENT_COLOR, arrColor.data());
        const QColor clrText = QColor::fromRgbF(arrColor[0], arrColor[1], arrColor[2]);
        QImage imgText(objMetrics.horizontalAdvance(strText) + 2, objMetrics.height(), QImage::Format_RGBA8888);
        imgText.fill(Qt::transparent);
        {
            QPainter objPainter(&imgText);
            objPainter.setFont(objFont);
            objPainter.setPen(clrText);
            objPainter.drawText(0, objMetrics.ascent(), strText);
        }
        const QImage imgFlipped = imgText.mirrored();
        QRect objInk;
        for (int y = 0; y < imgFlipped.height(); ++y)
        {
            for (int x = 0; x < imgFlipped.width(); ++x)
            {
                if (qAlpha(imgFlipped.pixel(x, y)) > 64)
                    objInk |= QRect(x, y, 1, 1);
            }
        }
        const int nLowest = nBaseline - (imgFlipped.height() - objMetrics.ascent());
        m_lstWritten.append({strText, objInk.translated(nLeft, nLowest), clrText, nListBase});
        glPushAttrib(GL_ALL_ATTRIB_BITS);
        glPushClientAttrib(GL_CLIENT_ALL_ATTRIB_BITS);
        glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
        glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
        glViewport(0, 0, width(), height());
        glEnable(GL_BLEND);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        glWindowPos2i(nLeft, std::max(0, nLowest));
        glDrawPixels(imgFlipped.width(), imgFlipped.height(), GL_RGBA, GL_UNSIGNED_BYTE, imgFlipped.constBits());
        glPopClientAttrib();
        glPopAttrib();
    }

protected:
    void paintGL() override
    {
        glClearColor(0.0f, 0.0f, 0.0f, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        m_lstWritten.clear();
        m_fnPaint(*this);
    }

private:
    std::array<int, 4> m_arrViewport{};
    double m_fBoxWidth = 1.0;
    double m_fBoxHeight = 1.0;
};

/// A bar as it stands in the strip.
struct SBar
{
    double m_fFirst;  ///< window pixel of its lower end
    double m_fLength; ///< in pixels
};

/// The picture of a window in this height, after painting as told. Kept in the folder ORM_TEST_PICTURES names, if it does.
QImage paint(CBarWindow& objWindow, int nHeight, const std::function<void(CBarWindow&)>& fnPaint)
{
    objWindow.m_fnPaint = fnPaint;
    objWindow.setAttribute(Qt::WA_DontShowOnScreen);
    objWindow.resize(nWidth, nHeight);
    objWindow.show();
    const QImage imgSeen = objWindow.grabFramebuffer();
    const QString strFolder = qEnvironmentVariable("ORM_TEST_PICTURES");
    if (!strFolder.isEmpty())
    {
        QString strName = QLatin1String(QTest::currentTestFunction()) + QLatin1Char('-') + QLatin1String(QTest::currentDataTag());
        strName.replace(QLatin1Char(' '), QLatin1Char('_')).remove(QLatin1Char(','));
        imgSeen.save(QDir(strFolder).filePath(strName + QStringLiteral(".png")));
    }
    return imgSeen;
}

void paintOneBar(CBarWindow& objWindow, COrmPalette& objPalette, int nHeight)
{
    objWindow.setViewport(nWidth - nStrip, 0, 110, nHeight, 110.0, nHeight);
    COrmImageView::renderColorBar(&objPalette, &objWindow, 5.0f, fBottom, 30.0f, static_cast<float>(nHeight - 45), true);
}

/// Two bars: the box is higher than the viewport, so that the bars are squeezed.
void paintTwoBars(CBarWindow& objWindow, COrmPalette& objPalette, int nHeight)
{
    const int nHalf = nHeight / 2;
    const int nBarHeight = nHalf - 40;
    for (const int nFrom : {0, nHalf})
    {
        objWindow.setViewport(nWidth - nStrip, nFrom, 110, (nHeight - 10) / 2, 110.0, nHalf);
        COrmImageView::renderColorBar(&objPalette, &objWindow, 5.0f, fBottom, 30.0f, static_cast<float>(nBarHeight), true);
    }
}

QList<SBar> oneBar(int nHeight)
{
    return {{30.0, nHeight - 45.0}};
}

QList<SBar> twoBars(int nHeight)
{
    const int nHalf = nHeight / 2;
    const int nViewport = (nHeight - 10) / 2;
    const int nBarHeight = nHalf - 40;
    const double fSqueeze = static_cast<double>(nViewport) / nHalf;
    QList<SBar> lstBars;
    for (const int nFrom : {0, nHalf})
        lstBars.append({nFrom + 30.0 * fSqueeze, nBarHeight * fSqueeze});
    return lstBars;
}

/// The palette's colour for the value at a place of its scale. A scale of one value shows its whole table.
QRgb colorAt(const COrmPalette& objPalette, double fPosition)
{
    if (OrmColorScale::isPoint(objPalette.range()))
        return objPalette.lut()[OrmColorScale::toIndex(fPosition * 255.0, 256)];
    return objPalette.colorForValue(OrmColorScale::valueAt(objPalette.range(), fPosition));
}

/// The first row of a bar whose colour is not the palette's at the row's value; empty if there is none.
QString wrongRow(const QImage& imgSeen, const SBar& sBar, const COrmPalette& objPalette)
{
    const int nFirst = static_cast<int>(std::ceil(sBar.m_fFirst - 0.5 + 1e-3));
    const int nLast = static_cast<int>(std::floor(sBar.m_fFirst + sBar.m_fLength - 0.5 - 1e-3));
    for (int nRow = nFirst; nRow <= nLast; ++nRow)
    {
        // Halfway between two entries either of them is right.
        const double fPosition = (nRow + 0.5 - sBar.m_fFirst) / sBar.m_fLength;
        const QRgb nBelow = colorAt(objPalette, fPosition - 1e-4);
        const QRgb nAbove = colorAt(objPalette, fPosition + 1e-4);
        for (const int nColumn : {5, 20, 34})
        {
            const QRgb nSeen = imgSeen.pixel(nWidth - nStrip + nColumn, imgSeen.height() - 1 - nRow) | 0xff000000;
            if (nSeen != nBelow && nSeen != nAbove)
                return QStringLiteral("row %1, column %2: %3 instead of %4").arg(nRow).arg(nColumn).arg(nSeen, 8, 16).arg(nBelow, 8, 16);
        }
    }
    return QString();
}

/// What is wrong with the labels beside the bars; empty if nothing is.
QString wrongLabel(const QList<SWritten>& lstWritten, const QList<SBar>& lstBars, const COrmPalette& objPalette)
{
    int nLabels = 0;
    for (const SBar& sBar : lstBars)
    {
        int nTop = -1;
        for (const SWritten& sWritten : lstWritten)
        {
            const QRect& objRect = sWritten.m_objRect;
            if (objRect.center().y() < sBar.m_fFirst - 4.0 || objRect.center().y() > sBar.m_fFirst + sBar.m_fLength + 4.0)
                continue;
            ++nLabels;
            if (objRect.left() < nWidth - nStrip + 39 || objRect.right() >= nWidth)
                return sWritten.m_strText + QStringLiteral(" leaves its room");
            if (objRect.top() < std::ceil(sBar.m_fFirst - 0.5 - 1e-3)) // top() is the lowest row here
                return sWritten.m_strText + QStringLiteral(" sinks under the bar");
            if (objRect.top() <= nTop)
                return sWritten.m_strText + QStringLiteral(" touches its neighbour");
            nTop = objRect.bottom();
            if (sWritten.m_nListBase != 2000)
                return QStringLiteral("wrong list base");
            const OrmColorScale::SRange sRange = OrmColorScale::drawnRange(objPalette.range());
            if (sRange.m_fMin == sRange.m_fMax)
                continue;
            const double fPlace = (objRect.center().y() + 0.5 - sBar.m_fFirst) / sBar.m_fLength;
            const double fMeant = OrmColorScale::position(sRange, sWritten.m_strText.toDouble());
            if (std::fabs(fPlace - fMeant) * sBar.m_fLength > 6.0)
                return QStringLiteral("%1 stands %2 pixels off").arg(sWritten.m_strText).arg((fPlace - fMeant) * sBar.m_fLength);
        }
    }
    return nLabels == lstWritten.size() ? QString() : QStringLiteral("a label belongs to no bar");
}

/// Values of a part of the state that a bar could disturb.
QList<QVector<float>> stateNow()
{
    QList<QVector<float>> lstState;
    const auto fnGet = [&lstState](GLenum eName, int nValues)
    {
        QVector<float> vecValues(16, 0.0f);
        glGetFloatv(eName, vecValues.data());
        vecValues.resize(nValues);
        lstState.append(vecValues);
    };
    for (const GLenum eName : {GL_DEPTH_WRITEMASK, GL_DEPTH_FUNC, GL_SHADE_MODEL, GL_MATRIX_MODE, GL_ACTIVE_TEXTURE, GL_BLEND_SRC,
                               GL_BLEND_DST, GL_LINE_WIDTH, GL_POINT_SIZE, GL_CURRENT_PROGRAM, GL_ATTRIB_STACK_DEPTH,
                               GL_CLIENT_ATTRIB_STACK_DEPTH, GL_MODELVIEW_STACK_DEPTH, GL_PROJECTION_STACK_DEPTH, GL_UNPACK_ALIGNMENT,
                               GL_UNPACK_ROW_LENGTH, GL_ARRAY_BUFFER_BINDING, GL_TEXTURE_BINDING_2D, GL_LIST_BASE})
        fnGet(eName, 1);
    fnGet(GL_POLYGON_MODE, 2);
    for (const GLenum eName : {GL_CURRENT_COLOR, GL_COLOR_WRITEMASK, GL_VIEWPORT, GL_SCISSOR_BOX, GL_CURRENT_RASTER_POSITION})
        fnGet(eName, 4);
    for (const GLenum eName : {GL_MODELVIEW_MATRIX, GL_PROJECTION_MATRIX, GL_TEXTURE_MATRIX})
        fnGet(eName, 16);
    QVector<float> vecEnabled;
    for (const GLenum eName :
         {GL_LIGHTING,        GL_DEPTH_TEST,     GL_BLEND,           GL_CULL_FACE,        GL_ALPHA_TEST,   GL_FOG,         GL_STENCIL_TEST,
          GL_SCISSOR_TEST,    GL_COLOR_LOGIC_OP, GL_POLYGON_STIPPLE, GL_DITHER,           GL_COLOR_SUM,    GL_CLIP_PLANE0, GL_CLIP_PLANE5,
          GL_TEXTURE_1D,      GL_TEXTURE_2D,     GL_TEXTURE_3D,      GL_TEXTURE_CUBE_MAP, GL_VERTEX_ARRAY, GL_COLOR_ARRAY, GL_NORMAL_ARRAY,
          GL_EDGE_FLAG_ARRAY, GL_INDEX_ARRAY,    GL_NORMALIZE,       GL_COLOR_MATERIAL})
        vecEnabled.append(glIsEnabled(eName) == GL_TRUE ? 1.0f : 0.0f);
    lstState.append(vecEnabled);
    return lstState;
}

/// State that would spoil a bar that does not set its own.
void setHostileState()
{
    for (const GLenum eName : {GL_LIGHTING, GL_DEPTH_TEST, GL_CULL_FACE, GL_ALPHA_TEST, GL_STENCIL_TEST, GL_SCISSOR_TEST, GL_COLOR_LOGIC_OP,
                               GL_POLYGON_STIPPLE, GL_FOG, GL_TEXTURE_2D, GL_CLIP_PLANE0})
        glEnable(eName);
    glDepthFunc(GL_NEVER);
    glCullFace(GL_FRONT_AND_BACK);
    glAlphaFunc(GL_NEVER, 0.0f);
    glStencilFunc(GL_NEVER, 0, 0xff);
    glScissor(0, 0, 1, 1);
    glLogicOp(GL_INVERT);
    glColorMask(GL_FALSE, GL_TRUE, GL_FALSE, GL_TRUE);
    glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 8);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 333);
    glEnableClientState(GL_NORMAL_ARRAY);
    glMatrixMode(GL_TEXTURE);
    glActiveTexture(GL_TEXTURE1);
    glEnable(GL_TEXTURE_2D);
}
} // namespace

class TestColorBar : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { COrmPreference::setStore(QString()); }

    void rowsHaveTheColorsOfTheirValues_data()
    {
        QTest::addColumn<int>("nHeight");
        QTest::addColumn<double>("fMin");
        QTest::addColumn<double>("fMax");
        QTest::addColumn<bool>("bLog");
        QTest::addColumn<bool>("bReversed");
        QTest::addColumn<float>("fLow");
        QTest::addColumn<float>("fHigh");
        QTest::addColumn<bool>("bTwo");
        for (const int nHeight : {60, 91, 120, 200, 400, 700, 800, 1600})
        {
            for (const bool bTwo : {false, true})
            {
                const QByteArray strPlace = QByteArray::number(nHeight) + (bTwo ? " px, two bars" : " px, one bar");
                QTest::newRow(strPlace + ", linear") << nHeight << 21.0 << 2.5e5 << false << false << 0.0f << 1.0f << bTwo;
                QTest::newRow(strPlace + ", log") << nHeight << 21.0 << 2.5e5 << true << false << 0.0f << 1.0f << bTwo;
                QTest::newRow(strPlace + ", reversed") << nHeight << 0.0 << 3.7 << false << true << 0.0f << 1.0f << bTwo;
                QTest::newRow(strPlace + ", spanned") << nHeight << 1.2e7 << 1.25e7 << false << false << 0.2f << 0.7f << bTwo;
                QTest::newRow(strPlace + ", log from 0, reversed, spanned")
                    << nHeight << 0.0 << 8e8 << true << true << 0.3f << 0.9f << bTwo;
                QTest::newRow(strPlace + ", 18 decades") << nHeight << 1e-9 << 1e9 << true << false << 0.0f << 1.0f << bTwo;
                QTest::newRow(strPlace + ", one value") << nHeight << -1.0 << -1.0 << false << false << 0.0f << 1.0f << bTwo;
                QTest::newRow(strPlace + ", downwards") << nHeight << 50.0 << -20.0 << false << false << 0.0f << 1.0f << bTwo;
            }
        }
    }

    void rowsHaveTheColorsOfTheirValues()
    {
        QFETCH(int, nHeight);
        QFETCH(double, fMin);
        QFETCH(double, fMax);
        QFETCH(bool, bLog);
        QFETCH(bool, bReversed);
        QFETCH(float, fLow);
        QFETCH(float, fHigh);
        QFETCH(bool, bTwo);
        COrmPalette objPalette;
        objPalette.setColorTableType(ORM_CT_EOSB, fLow, fHigh);
        objPalette.SetImageMinMax(fMin, fMax);
        objPalette.setLogScale(bLog ? 1 : 0);
        objPalette.setReversed(bReversed ? 1 : 0);
        CBarWindow objWindow;
        const QImage imgSeen = paint(objWindow, nHeight,
                                     [&](CBarWindow& objPainted)
                                     {
                                         if (bTwo)
                                             paintTwoBars(objPainted, objPalette, nHeight);
                                         else
                                             paintOneBar(objPainted, objPalette, nHeight);
                                     });
        QCOMPARE(imgSeen.size(), QSize(nWidth, nHeight));
        QList<SBar> lstBars = bTwo ? twoBars(nHeight) : oneBar(nHeight);
        if (bTwo && nHeight / 2 - 40 < 1) // no room: nothing is drawn
        {
            lstBars.clear();
            QImage imgBlack(imgSeen.size(), imgSeen.format());
            imgBlack.fill(Qt::black);
            QVERIFY(imgSeen == imgBlack);
        }
        else
        {
            QVERIFY(!objWindow.m_lstWritten.isEmpty());
        }
        for (const SBar& sBar : lstBars)
            QCOMPARE(wrongRow(imgSeen, sBar, objPalette), QString());
        QCOMPARE(wrongLabel(objWindow.m_lstWritten, lstBars, objPalette), QString());
    }

    void everyTableIsDrawnAsItIs_data()
    {
        QTest::addColumn<int>("nType");
        for (int i = 0; i < OrmColorTables::nVolumeTables; ++i)
        {
            const ORM_COLORTABLE_TYPES eType = OrmColorTables::typeForPosition(i);
            QTest::newRow(qPrintable(getCTNameForColorTable(eType))) << static_cast<int>(eType);
        }
    }

    void everyTableIsDrawnAsItIs()
    {
        QFETCH(int, nType);
        COrmPalette objPalette;
        objPalette.setColorTableType(static_cast<ORM_COLORTABLE_TYPES>(nType), 0.0f, 1.0f);
        objPalette.SetImageMinMax(0.0, 1.0);
        CBarWindow objWindow;
        const QImage imgSeen = paint(objWindow, 600, [&](CBarWindow& objPainted) { paintOneBar(objPainted, objPalette, 600); });
        QCOMPARE(wrongRow(imgSeen, oneBar(600).first(), objPalette), QString());
    }

    void labelsAreWrittenInThePreferredTextColor()
    {
        S3DViewSettings sBefore;
        COrmPreference::get3DViewPreferences(sBefore);
        S3DViewSettings sSettings = sBefore;
        sSettings.clrText = QColor(255, 200, 0);
        COrmPreference::set3DViewPreferences(sSettings);
        COrmPalette objPalette;
        CBarWindow objWindow;
        const QImage imgSeen = paint(objWindow, 200, [&](CBarWindow& objPainted) { paintOneBar(objPainted, objPalette, 200); });
        COrmPreference::set3DViewPreferences(sBefore);
        QVERIFY(!objWindow.m_lstWritten.isEmpty());
        for (const SWritten& sWritten : objWindow.m_lstWritten)
            QCOMPARE(sWritten.m_clrText.name(), QStringLiteral("#ffc800"));
        QCOMPARE(QColor(imgSeen.pixel(nWidth - nStrip + 4, 100)).name(), QStringLiteral("#ffc800")); // the frame
    }

    void aBarWithoutLabelsIsJustTheBar()
    {
        COrmPalette objPalette;
        objPalette.setColorTableType(ORM_CT_JET, 0.0f, 1.0f);
        CBarWindow objWindow;
        const auto fnPaint = [&](RenderTextWidget* pText, bool bLabels)
        {
            return paint(objWindow, 200,
                         [&objPalette, pText, bLabels](CBarWindow& objPainted)
                         {
                             objPainted.setViewport(nWidth - nStrip, 0, 110, 200, 110.0, 200.0);
                             COrmImageView::renderColorBar(&objPalette, pText, 5.0f, fBottom, 30.0f, 155.0f, bLabels);
                         });
        };
        const QImage imgPlain = fnPaint(&objWindow, false);
        QVERIFY(objWindow.m_lstWritten.isEmpty());
        QCOMPARE(wrongRow(imgPlain, oneBar(200).first(), objPalette), QString());
        for (int y = 0; y < 200; ++y)
            QCOMPARE(imgPlain.pixel(nWidth - nStrip + 37, y) & 0xffffff, QRgb(0));
        const QImage imgMute = fnPaint(nullptr, true);
        QCOMPARE(wrongRow(imgMute, oneBar(200).first(), objPalette), QString());
    }

    void nothingIsDrawnWhereThereIsNoBar_data()
    {
        QTest::addColumn<float>("fBarWidth");
        QTest::addColumn<float>("fBarHeight");
        QTest::addColumn<bool>("bPalette");
        QTest::newRow("less than a unit high") << 30.0f << 0.99f << true;
        QTest::newRow("negative height") << 30.0f << -5.0f << true;
        QTest::newRow("height not a number") << 30.0f << std::nanf("") << true;
        QTest::newRow("no width") << 0.0f << 50.0f << true;
        QTest::newRow("no palette") << 30.0f << 50.0f << false;
    }

    void nothingIsDrawnWhereThereIsNoBar()
    {
        QFETCH(float, fBarWidth);
        QFETCH(float, fBarHeight);
        QFETCH(bool, bPalette);
        COrmPalette objPalette;
        CBarWindow objWindow;
        const QImage imgSeen = paint(objWindow, 100,
                                     [&](CBarWindow& objPainted)
                                     {
                                         objPainted.setViewport(0, 0, nWidth, 100, nWidth, 100.0);
                                         COrmImageView::renderColorBar(bPalette ? &objPalette : nullptr, &objPainted, 5.0f, fBottom,
                                                                       fBarWidth, fBarHeight, true);
                                     });
        QVERIFY(objWindow.m_lstWritten.isEmpty());
        QImage imgBlack(imgSeen.size(), imgSeen.format());
        imgBlack.fill(Qt::black);
        QVERIFY(imgSeen == imgBlack);
    }

    void aFrameClosesTheBar_data()
    {
        QTest::addColumn<int>("nHeight");
        for (const int nHeight : {100, 101, 107, 120, 200, 333, 700})
            QTest::addRow("%d px", nHeight) << nHeight;
    }

    /// On all four sides, without a gap to the colours, wherever the squeeze puts the ends between two rows.
    void aFrameClosesTheBar()
    {
        QFETCH(int, nHeight);
        COrmPalette objPalette;
        objPalette.setColorTableType(ORM_CT_JET, 0.0f, 1.0f);
        CBarWindow objWindow;
        const QImage imgSeen = paint(objWindow, nHeight, [&](CBarWindow& objPainted) { paintTwoBars(objPainted, objPalette, nHeight); });
        const QRgb nWhite = qRgb(255, 255, 255);
        for (const SBar& sBar : twoBars(nHeight))
        {
            const auto fnColorOf = [&imgSeen](int nColumn, int nRow)
            { return imgSeen.pixel(nWidth - nStrip + nColumn, imgSeen.height() - 1 - nRow) | 0xff000000; };
            const int nFirst = static_cast<int>(std::ceil(sBar.m_fFirst - 0.5 - 1e-3));
            const int nBehind = static_cast<int>(std::ceil(sBar.m_fFirst + sBar.m_fLength - 0.5 - 1e-3));
            for (int nColumn = 4; nColumn <= 35; ++nColumn)
            {
                QCOMPARE(fnColorOf(nColumn, nFirst - 1), nWhite);
                QCOMPARE(fnColorOf(nColumn, nBehind), nWhite);
            }
            for (int nRow = nFirst; nRow < nBehind; ++nRow)
            {
                QCOMPARE(fnColorOf(4, nRow), nWhite);
                QCOMPARE(fnColorOf(35, nRow), nWhite);
                QVERIFY(fnColorOf(5, nRow) != nWhite);
                QVERIFY(fnColorOf(34, nRow) != qRgb(0, 0, 0));
            }
        }
    }

    void aBarOfOneUnitIsDrawn()
    {
        COrmPalette objPalette;
        CBarWindow objWindow;
        const QImage imgSeen = paint(objWindow, 46, [&](CBarWindow& objPainted) { paintOneBar(objPainted, objPalette, 46); });
        QCOMPARE(wrongRow(imgSeen, oneBar(46).first(), objPalette), QString());
        QCOMPARE(objWindow.m_lstWritten.size(), 1);
        QVERIFY(objWindow.m_lstWritten.first().m_objRect.top() >= 30);
    }

    /// Whatever the caller left on or off, the bar is the same and the state afterwards is the caller's.
    void stateIsNeitherNeededNorChanged()
    {
        COrmPalette objPalette;
        objPalette.setColorTableType(ORM_CT_JET, 0.0f, 1.0f);
        CBarWindow objWindow;
        QList<QVector<float>> lstBefore;
        QList<QVector<float>> lstAfter;
        GLenum eError = GL_NO_ERROR;
        const QImage imgSeen = paint(objWindow, 300,
                                     [&](CBarWindow& objPainted)
                                     {
                                         glPushAttrib(GL_ALL_ATTRIB_BITS);
                                         glPushClientAttrib(GL_CLIENT_ALL_ATTRIB_BITS);
                                         objPainted.setViewport(nWidth - nStrip, 0, 110, 300, 110.0, 300.0);
                                         glColor4f(0.1f, 0.2f, 0.3f, 0.4f);
                                         setHostileState();
                                         lstBefore = stateNow();
                                         COrmImageView::renderColorBar(&objPalette, &objPainted, 5.0f, fBottom, 30.0f, 255.0f, true);
                                         lstAfter = stateNow();
                                         eError = glGetError();
                                         glPopClientAttrib();
                                         glPopAttrib();
                                     });
        QCOMPARE(lstAfter, lstBefore);
        QCOMPARE(eError, GLenum(GL_NO_ERROR));
        QCOMPARE(wrongRow(imgSeen, oneBar(300).first(), objPalette), QString());
    }
};

int main(int nArguments, char** ppArguments)
{
    QSurfaceFormat objFormat = QSurfaceFormat::defaultFormat();
    objFormat.setProfile(QSurfaceFormat::CompatibilityProfile);
    objFormat.setDepthBufferSize(24);
    QSurfaceFormat::setDefaultFormat(objFormat);
    QApplication objApplication(nArguments, ppArguments);
    TestColorBar objTest;
    return QTest::qExec(&objTest, nArguments, ppArguments);
}
#include "tst_colorbar.moc"
