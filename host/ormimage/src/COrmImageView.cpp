// The headers of the system's OpenGL come first, so that Qt's own subset does not get in their way.
#include <GL/gl.h>
#include <GL/glext.h>

#include "COrmImageView.h"

#include "COrmPalette.h"
#include "COrmPreference.h"
#include "OrmColorBarTicks.h"
#include "OrmColorTables.h"
#include "RenderTextWidget.h"
#include "S3DViewSettings.h"

#include <QApplication>
#include <QFont>
#include <QFontMetricsF>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace
{
constexpr double fTickLength = 4.0;   ///< pixels
constexpr double fMarkLength = 2.0;   ///< pixels, of a tick without a label
constexpr double fLabelGap = 1.0;     ///< pixels between tick and label
constexpr double fLabelRoom = 50.0;   ///< pixels for a label
constexpr int nListBase = 2000;       ///< display lists that glyphs may use
constexpr double fSmallestFont = 4.0; ///< points

/// The current transformation, taken apart: an orthographic box that is not turned.
struct SPixels
{
    double m_fScaleX = 0.0; ///< pixels per unit
    double m_fScaleY = 0.0;
    double m_fOriginX = 0.0; ///< pixel at which the unit 0 stands
    double m_fOriginY = 0.0;
    double m_fRight = 0.0; ///< right edge of the viewport

    double pixelX(double fX) const { return m_fOriginX + fX * m_fScaleX; }
    double pixelY(double fY) const { return m_fOriginY + fY * m_fScaleY; }
    double unitX(double fPixel) const { return (fPixel - m_fOriginX) / m_fScaleX; }
    double unitY(double fPixel) const { return (fPixel - m_fOriginY) / m_fScaleY; }
};

SPixels currentPixels()
{
    std::array<double, 16> arrModel{};
    std::array<double, 16> arrProjection{};
    std::array<GLint, 4> arrViewport{};
    glGetDoublev(GL_MODELVIEW_MATRIX, arrModel.data());
    glGetDoublev(GL_PROJECTION_MATRIX, arrProjection.data());
    glGetIntegerv(GL_VIEWPORT, arrViewport.data());
    SPixels sPixels;
    sPixels.m_fScaleX = arrProjection[0] * arrModel[0] * arrViewport[2] / 2.0;
    sPixels.m_fScaleY = arrProjection[5] * arrModel[5] * arrViewport[3] / 2.0;
    sPixels.m_fOriginX = arrViewport[0] + (arrProjection[0] * arrModel[12] + arrProjection[12] + 1.0) * arrViewport[2] / 2.0;
    sPixels.m_fOriginY = arrViewport[1] + (arrProjection[5] * arrModel[13] + arrProjection[13] + 1.0) * arrViewport[3] / 2.0;
    sPixels.m_fRight = arrViewport[0] + arrViewport[2];
    return sPixels;
}

/// Rectangles of one colour each, drawn in one call.
class CRectangles
{
public:
    explicit CRectangles(const SPixels& sPixels) : m_sPixels(sPixels) {}

    /// Edges in pixels.
    void add(double fLeft, double fBottom, double fRight, double fTop, QRgb nColor)
    {
        const auto fX1 = static_cast<float>(m_sPixels.unitX(fLeft));
        const auto fY1 = static_cast<float>(m_sPixels.unitY(fBottom));
        const auto fX2 = static_cast<float>(m_sPixels.unitX(fRight));
        const auto fY2 = static_cast<float>(m_sPixels.unitY(fTop));
        m_vecVertices.insert(m_vecVertices.end(), {fX1, fY1, fX2, fY1, fX2, fY2, fX1, fY2});
        for (int i = 0; i < 4; ++i)
        {
            for (const int nChannel : {qRed(nColor), qGreen(nColor), qBlue(nColor), 255})
                m_vecColors.push_back(static_cast<GLubyte>(nChannel));
        }
    }

    void draw() const
    {
        glBindBuffer(GL_ARRAY_BUFFER, 0);
        for (const GLenum eArray : {GL_NORMAL_ARRAY, GL_INDEX_ARRAY, GL_EDGE_FLAG_ARRAY, GL_SECONDARY_COLOR_ARRAY, GL_FOG_COORD_ARRAY})
            glDisableClientState(eArray);
        glEnableClientState(GL_VERTEX_ARRAY);
        glEnableClientState(GL_COLOR_ARRAY);
        glVertexPointer(2, GL_FLOAT, 0, m_vecVertices.data());
        glColorPointer(4, GL_UNSIGNED_BYTE, 0, m_vecColors.data());
        glDrawArrays(GL_QUADS, 0, static_cast<GLsizei>(m_vecVertices.size() / 2));
        glDisableClientState(GL_COLOR_ARRAY);
        glDisableClientState(GL_VERTEX_ARRAY);
    }

private:
    const SPixels& m_sPixels;
    std::vector<float> m_vecVertices;
    std::vector<GLubyte> m_vecColors;
};

/// Saves all OpenGL state on top of the stacks and sets what plain flat rectangles need; gives everything back at the end.
class CFlatState
{
public:
    CFlatState()
    {
        glPushAttrib(GL_ALL_ATTRIB_BITS);
        glPushClientAttrib(GL_CLIENT_ALL_ATTRIB_BITS);
        glGetIntegerv(GL_CURRENT_PROGRAM, &m_nProgram);
        if (m_nProgram != 0)
            glUseProgram(0);
        disableTextures();
        for (const GLenum eState : {GL_LIGHTING, GL_DEPTH_TEST, GL_BLEND, GL_CULL_FACE, GL_ALPHA_TEST, GL_FOG, GL_STENCIL_TEST,
                                    GL_SCISSOR_TEST, GL_COLOR_LOGIC_OP, GL_POLYGON_STIPPLE, GL_DITHER, GL_COLOR_SUM})
            glDisable(eState);
        for (GLenum ePlane = GL_CLIP_PLANE0; ePlane <= GL_CLIP_PLANE5; ++ePlane)
            glDisable(ePlane);
        glDepthMask(GL_FALSE);
        glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
        glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
        glShadeModel(GL_FLAT);
    }
    ~CFlatState()
    {
        if (m_nProgram != 0)
            glUseProgram(static_cast<GLuint>(m_nProgram));
        glPopClientAttrib();
        glPopAttrib();
    }
    CFlatState(const CFlatState&) = delete;
    CFlatState& operator=(const CFlatState&) = delete;

private:
    static void disableTextures()
    {
        GLint nUnits = 1;
        glGetIntegerv(GL_MAX_TEXTURE_UNITS, &nUnits);
        for (GLint i = nUnits - 1; i >= 0; --i)
        {
            glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(i));
            for (const GLenum eTarget : {GL_TEXTURE_1D, GL_TEXTURE_2D, GL_TEXTURE_3D, GL_TEXTURE_CUBE_MAP})
                glDisable(eTarget);
        }
    }

    GLint m_nProgram = 0;
};

/// The bar in whole pixels: rows and columns whose centres lie inside it.
struct SBarPixels
{
    double m_fLeft;
    double m_fRight;
    double m_fBottom; ///< lower edge of its first row
    double m_fTop;    ///< upper edge of its last row
};

/// The first pixel whose centre lies at or beyond an edge; rounding errors of the single precision matrices do not count.
double firstPixel(double fEdge)
{
    return std::ceil(fEdge - 0.5 - 1e-3);
}

/// The colours of the scale between its ends at fBottom and fTop: entry i reaches half an entry to both sides of its place, so a row has
/// the colour of the value at its centre. The outermost entries reach to the edges of the outermost rows.
void addColors(CRectangles& objRectangles, const COrmPalette& objPalette, const SBarPixels& sBar, double fBottom, double fTop)
{
    constexpr int nLast = OrmColorTables::nTableSize - 1;
    const QRgb* pLut = objPalette.lut();
    for (int i = 0; i <= nLast; ++i)
    {
        const double fFrom = i == 0 ? sBar.m_fBottom : std::max(sBar.m_fBottom, fBottom + (fTop - fBottom) * (i - 0.5) / nLast);
        const double fTo = i == nLast ? sBar.m_fTop : std::min(sBar.m_fTop, fBottom + (fTop - fBottom) * (i + 0.5) / nLast);
        if (fTo > fFrom)
            objRectangles.add(sBar.m_fLeft, fFrom, sBar.m_fRight, fTo, pLut[i]);
    }
}

void addFrame(CRectangles& objRectangles, const SBarPixels& sBar, QRgb nColor)
{
    objRectangles.add(sBar.m_fLeft - 1.0, sBar.m_fBottom - 1.0, sBar.m_fRight + 1.0, sBar.m_fBottom, nColor);
    objRectangles.add(sBar.m_fLeft - 1.0, sBar.m_fTop, sBar.m_fRight + 1.0, sBar.m_fTop + 1.0, nColor);
    objRectangles.add(sBar.m_fLeft - 1.0, sBar.m_fBottom, sBar.m_fLeft, sBar.m_fTop, nColor);
    objRectangles.add(sBar.m_fRight, sBar.m_fBottom, sBar.m_fRight + 1.0, sBar.m_fTop, nColor);
}

void addTicks(CRectangles& objRectangles, const SBarPixels& sBar, const OrmColorBarTicks::SLayout& sLayout, QRgb nColor)
{
    for (const OrmColorBarTicks::STick& sTick : sLayout.m_vecTicks)
    {
        const double fRow = std::clamp(std::floor(sBar.m_fBottom + sTick.m_fPosition * (sBar.m_fTop - sBar.m_fBottom)), sBar.m_fBottom,
                                       std::max(sBar.m_fBottom, sBar.m_fTop - 1.0));
        const double fLength = sTick.m_strLabel.isEmpty() ? fMarkLength : fTickLength;
        objRectangles.add(sBar.m_fRight, fRow, sBar.m_fRight + fLength, fRow + 1.0, nColor);
    }
}

QFont labelFont(double fPointSize)
{
    QFont objFont = QApplication::font();
    objFont.setPointSizeF(std::max(fSmallestFont, fPointSize));
    return objFont;
}

OrmColorBarTicks::SFont measuredFont(double fPointSize)
{
    const QFontMetricsF objMetrics(labelFont(fPointSize));
    OrmColorBarTicks::SFont sFont;
    sFont.m_fPointSize = fPointSize;
    sFont.m_fAscent = objMetrics.ascent();
    sFont.m_fDigitHeight = -objMetrics.tightBoundingRect(QStringLiteral("0")).top();
    sFont.m_fnWidth = [objMetrics](const QString& strText) { return objMetrics.horizontalAdvance(strText); };
    return sFont;
}
} // namespace

void COrmImageView::renderColorBar(COrmPalette* pPalette, RenderTextWidget* pTextWidget, float fLeft, float fBottom, float fWidth,
                                   float fHeight, bool bLabels)
{
    if (pPalette == nullptr || !(fHeight >= 1.0f) || !(fWidth > 0.0f))
        return;
    const SPixels sPixels = currentPixels();
    if (!(sPixels.m_fScaleX > 0.0) || !(sPixels.m_fScaleY > 0.0))
        return;

    S3DViewSettings sSettings;
    COrmPreference::get3DViewPreferences(sSettings);
    const QRgb nTextColor = sSettings.clrText.isValid() ? sSettings.clrText.rgb() : qRgb(255, 255, 255);

    const double fPixelBottom = sPixels.pixelY(fBottom);
    const double fPixelTop = sPixels.pixelY(fBottom + fHeight);
    const SBarPixels sBar = {firstPixel(sPixels.pixelX(fLeft)), firstPixel(sPixels.pixelX(fLeft + fWidth)), firstPixel(fPixelBottom),
                             firstPixel(fPixelTop)};

    OrmColorBarTicks::SLayout sLayout;
    const double fLabelX = sBar.m_fRight + fTickLength + fLabelGap;
    if (bLabels)
    {
        const double fRoom = std::min(fLabelRoom, sPixels.m_fRight - fLabelX);
        sLayout = OrmColorBarTicks::layout(pPalette->range(), fPixelTop - fPixelBottom, fRoom, sSettings.nFontSize - 1.0, measuredFont);
    }

    const CFlatState objState;
    CRectangles objRectangles(sPixels);
    addFrame(objRectangles, sBar, nTextColor);
    addColors(objRectangles, *pPalette, sBar, fPixelBottom, fPixelTop);
    addTicks(objRectangles, sBar, sLayout, nTextColor);
    objRectangles.draw();

    if (pTextWidget == nullptr)
        return;
    glColor3f(qRed(nTextColor) / 255.0f, qGreen(nTextColor) / 255.0f, qBlue(nTextColor) / 255.0f);
    const QFont objFont = labelFont(sLayout.m_fPointSize);
    for (const OrmColorBarTicks::STick& sTick : sLayout.m_vecTicks)
    {
        if (sTick.m_strLabel.isEmpty())
            continue;
        const double fBaseline = std::max(sBar.m_fBottom, std::round(fPixelBottom + sTick.m_fBaseline));
        pTextWidget->renderText(sPixels.unitX(fLabelX), sPixels.unitY(fBaseline), 0.0, sTick.m_strLabel, objFont, nListBase);
    }
}
