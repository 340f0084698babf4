// One colour scale per kind: the ranges over all results, and the bars that show them.
#include "LongitudinalStudyBrowserView.h"

#include "COrmImageView.h"
#include "COrmPreference.h"

#include <QApplication>
#include <QFont>
#include <QFontMetrics>

#include <GL/gl.h>

namespace
{
constexpr int KindSOLA = 0;
constexpr int KindNOVA = 1;

/// The strip of a bar: it starts inside the widget and reaches beyond its right edge.
constexpr int StripFromRight = 90;
constexpr int StripWidth = 110;

/// The bar in its strip.
constexpr float BarLeft = 5.0f;
constexpr float BarBottom = 30.0f;
constexpr float BarWidth = 30.0f;
constexpr int TextLeft = 5;
constexpr int TitleBottom = 8;

constexpr int FontListBase = 2000;

/// Widens a range by the values of one volume; the first volume makes the range.
void widen(const C3DVolume& objVolume, bool& bFirst, float* pfMin, float* pfMax)
{
    const float fMin = objVolume.getAttribMinValue();
    const float fMax = objVolume.getAttribMaxValue();
    if (bFirst || fMin < *pfMin)
    {
        *pfMin = fMin;
    }
    if (bFirst || fMax > *pfMax)
    {
        *pfMax = fMax;
    }
    bFirst = false;
}
} // namespace

void CLongitudinalStudyBrowserView::getAggregateMinMax(float* pfSOLAMin, float* pfSOLAMax, float* pfNOVAMin, float* pfNOVAMax) const
{
    *pfSOLAMin = *pfSOLAMax = *pfNOVAMin = *pfNOVAMax = -1.0f;
    bool bFirstSOLA = true;
    bool bFirstNOVA = true;
    for (const sAnalysisBase& objResult : m_lstAnalysisParams)
    {
        if (objResult.nAnalysisType == KindSOLA)
        {
            widen(objResult.objVolume, bFirstSOLA, pfSOLAMin, pfSOLAMax);
        }
        else
        {
            widen(objResult.objVolume, bFirstNOVA, pfNOVAMin, pfNOVAMax);
        }
    }
}

void CLongitudinalStudyBrowserView::updateAggregateMinMax()
{
    for (sAnalysisBase& objResult : m_lstAnalysisParams)
    {
        COrmPalette* pPalette = objResult.objVolume.getColorPalette();
        if (objResult.nAnalysisType == KindSOLA)
        {
            pPalette->SetImageMinMax(m_bUseCustomRange ? m_fCustomSOLAMin : m_fSOLAMin, m_bUseCustomRange ? m_fCustomSOLAMax : m_fSOLAMax);
        }
        else if (objResult.nAnalysisType == KindNOVA)
        {
            pPalette->SetImageMinMax(m_bUseCustomRange ? m_fCustomNOVAMin : m_fNOVAMin, m_bUseCustomRange ? m_fCustomNOVAMax : m_fNOVAMax);
        }
    }
}

void CLongitudinalStudyBrowserView::getMinMax(float* pfSOLAMin, float* pfSOLAMax, float* pfNOVAMin, float* pfNOVAMax) const
{
    *pfSOLAMin = m_fSOLAMin;
    *pfSOLAMax = m_fSOLAMax;
    *pfNOVAMin = m_fNOVAMin;
    *pfNOVAMax = m_fNOVAMax;
}

void CLongitudinalStudyBrowserView::setCurrentMinMax(float fSOLAMin, float fSOLAMax, float fNOVAMin, float fNOVAMax)
{
    m_fSOLAMin = fSOLAMin;
    m_fSOLAMax = fSOLAMax;
    m_fNOVAMin = fNOVAMin;
    m_fNOVAMax = fNOVAMax;
    m_bUseCustomRange = false;
}

void CLongitudinalStudyBrowserView::setCustomRange(float fSOLAMin, float fSOLAMax, float fNOVAMin, float fNOVAMax)
{
    m_fCustomSOLAMin = fSOLAMin;
    m_fCustomSOLAMax = fSOLAMax;
    m_fCustomNOVAMin = fNOVAMin;
    m_fCustomNOVAMax = fNOVAMax;
    m_bUseCustomRange = true;
}

void CLongitudinalStudyBrowserView::renderColorBar()
{
    glPushAttrib(GL_TEXTURE_BIT | GL_ENABLE_BIT | GL_LIGHTING_BIT | GL_POLYGON_BIT);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);
    glDisable(GL_TEXTURE_2D);
    S3DViewSettings objSettings;
    COrmPreference::get3DViewPreferences(objSettings);
    SBarLook objLook;
    objLook.fontTitle = QApplication::font();
    objLook.fontTitle.setPointSize(objSettings.nFontSize - 1);
    objLook.fontUnit = QApplication::font();
    objLook.fontUnit.setPointSize(objSettings.nFontSize - 1);
    objLook.nTitleHeight = QFontMetrics(objLook.fontTitle).height();
    objLook.clrText = objSettings.clrText;
    if (m_bResultsChanged)
    {
        getAggregateMinMax(&m_fSOLAMin, &m_fSOLAMax, &m_fNOVAMin, &m_fNOVAMax);
        updateAggregateMinMax();
    }
    if (m_bUseCustomRange)
    {
        updateAggregateMinMax();
    }
    if (m_bColorPaletteModified || m_bResultsChanged)
    {
        updateBarPalettes();
    }
    const int nWidth = m_nGLWidth;
    const int nHeight = m_nGLHeight;
    const SBar objSOLA = {&m_SOLAPalette, m_strSOLAUnit, QStringLiteral("SOLA Results")};
    const SBar objNOVA = {&m_NOVAPalette, m_strNOVAUnit, QStringLiteral("NOVA Results")};
    if (m_bContainsSOLA && m_bContainsNOVA)
    {
        // The box is higher than the viewport it is drawn in, so both bars are a little squeezed.
        const QRect rectNOVA(nWidth - StripFromRight, 0, StripWidth, (nHeight - 10) / 2);
        const QRect rectSOLA(nWidth - StripFromRight, nHeight / 2, StripWidth, (nHeight - 10) / 2);
        renderBar(objNOVA, objLook, rectNOVA, nHeight / 2, nHeight / 2 - 40);
        renderBar(objSOLA, objLook, rectSOLA, nHeight / 2, nHeight / 2 - 40);
    }
    else if (m_bContainsSOLA || m_bContainsNOVA)
    {
        const QRect rect(nWidth - StripFromRight, 0, StripWidth, nHeight);
        renderBar(m_bContainsSOLA ? objSOLA : objNOVA, objLook, rect, nHeight, nHeight - 45);
    }
    glPopAttrib();
}

void CLongitudinalStudyBrowserView::updateBarPalettes()
{
    // A kind that is not there counts as found from the start.
    bool bFoundSOLA = !m_bContainsSOLA;
    bool bFoundNOVA = !m_bContainsNOVA;
    int nFirstSOLA = -1;
    int nFirstNOVA = -1;
    for (int i = 0; i < m_lstAnalysisParams.size() && !(bFoundSOLA && bFoundNOVA); ++i)
    {
        const int nKind = m_lstAnalysisParams.at(i).nAnalysisType;
        if (nKind == KindSOLA && !bFoundSOLA)
        {
            nFirstSOLA = i;
            bFoundSOLA = true;
        }
        else if (nKind == KindNOVA && !bFoundNOVA)
        {
            nFirstNOVA = i;
            bFoundNOVA = true;
        }
    }
    m_bColorPaletteModified = false;
    if (m_bContainsSOLA && nFirstSOLA != -1)
    {
        m_SOLAPalette = *m_lstAnalysisParams[nFirstSOLA].objVolume.getColorPalette();
    }
    if (m_bContainsNOVA && nFirstNOVA != -1)
    {
        m_NOVAPalette = *m_lstAnalysisParams[nFirstNOVA].objVolume.getColorPalette();
    }
}

void CLongitudinalStudyBrowserView::renderBar(const SBar& objBar, const SBarLook& objLook, const QRect& rectViewport, int nBoxHeight,
                                              int nBarHeight)
{
    createGlViewport(rectViewport.x(), rectViewport.y(), rectViewport.width(), rectViewport.height());
    createGlOrtho(0.0f, static_cast<float>(StripWidth), 0.0f, static_cast<float>(nBoxHeight), -1.0f, 1.0f);
    COrmImageView::renderColorBar(objBar.pPalette, this, BarLeft, BarBottom, BarWidth, static_cast<float>(nBarHeight), true);
    glColor3f(static_cast<float>(objLook.clrText.red() / 255.0), static_cast<float>(objLook.clrText.green() / 255.0),
              static_cast<float>(objLook.clrText.blue() / 255.0));
    renderText(TextLeft, objLook.nTitleHeight + 8, 0.0, objBar.strUnit, objLook.fontUnit, FontListBase);
    renderText(TextLeft, TitleBottom, 0.0, objBar.strTitle, objLook.fontTitle, FontListBase);
}
