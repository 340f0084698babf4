#pragma once

// What the tests of the colour scale share: a window with results of known values, and its panel at hand.

#include "../view/ViewTestTools.h"
#include "WindowTestTools.h"

#include "CColorControls.h"
#include "COrmPalettePixmapView.h"

namespace ColorScaleTest
{
/// The window with results of known values: SOLA from fSOLAMin to fSOLAMax, NOVA from 2 to 12; the panel shows SOLA.
class CPanel : public CColorControls
{
public:
    explicit CPanel(bool bSOLA = true, bool bNOVA = true, float fSOLAMin = 0.0f, float fSOLAMax = 200.0f) : CColorControls(m_objTool)
    {
        m_objTool.open(m_objStudy.folder());
        m_objTool.chooseSequence(QStringLiteral("SOLA S1"));
        if (bSOLA)
        {
            load(0, QStringLiteral("first"), fSOLAMin, fSOLAMax);
        }
        if (bNOVA)
        {
            load(1, QStringLiteral("second"), 2.0f, 12.0f);
        }
        settle(true);
    }

    void load(int nKind, const QString& strName, float fMin, float fMax)
    {
        ViewTest::SResultRecipe sRecipe;
        sRecipe.nKind = nKind;
        sRecipe.strSequence = QStringLiteral("OTHER");
        sRecipe.fMin = fMin;
        sRecipe.fMax = fMax;
        sAnalysisBase sResult = ViewTest::result(strName, sRecipe);
        m_objTool.view().setAnalysisParms(sResult);
        m_objTool.view().getLoadedResult().append(sResult.strSequenceID + sResult.strResultName);
    }
    /// Shows everything, and brings the panel into line: with true the user's range is that of the results.
    void settle(bool bReset)
    {
        WindowTest::paint(m_objTool);
        if (bReset)
        {
            // The end of a load does this; with nothing selected it does nothing else.
            WindowTest::call(m_objTool, "onClickLoadButton");
        }
        m_objTool.window().updateUIControls();
        WindowTest::paint(m_objTool);
        m_objTool.window().updateUIControls();
    }
    void chooseKind(int nKind)
    {
        m_objTool.chooseSequence(nKind == 0 ? QStringLiteral("SOLA S1") : QStringLiteral("NOVA N1"));
        WindowTest::paint(m_objTool);
    }

    C3DVolume& volume(int nTile) { return view().getAnalysisParams()[nTile].objVolume; }
    COrmPalettePixmapView* strip() { return m_objTool.window().findChild<COrmPalettePixmapView*>(); }
    QList<int> handles() { return {slider()->lowerValue(), slider()->upperValue()}; }

private:
    WindowTest::CStudy m_objStudy;
    CToolWindow m_objTool;
};
} // namespace ColorScaleTest
