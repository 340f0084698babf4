#pragma once

// What the tests of the colour scale share: a window with results of known values, and its panel at hand.

#include "../view/ViewTestTools.h"
#include "WindowTestTools.h"

#include "COrmPalettePixmapView.h"
#include "QDoubleSpinBoxEx.h"
#include "QSpanSlider.h"

#include <QCheckBox>
#include <QLineEdit>

namespace ColorScaleTest
{
/// The window with results of known values: SOLA from fSOLAMin to fSOLAMax, NOVA from 2 to 12; the panel shows SOLA.
class CPanel
{
public:
    explicit CPanel(bool bSOLA = true, bool bNOVA = true, float fSOLAMin = 0.0f, float fSOLAMax = 200.0f)
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

    CToolWindow& tool() { return m_objTool; }
    CLongitudinalStudyBrowserView& view() { return m_objTool.view(); }
    C3DVolume& volume(int nTile) { return view().getAnalysisParams()[nTile].objVolume; }
    QDoubleSpinBoxEx* minimum() { return m_objTool.get<QDoubleSpinBoxEx>("m_pColorBarMinSpinbox"); }
    QDoubleSpinBoxEx* maximum() { return m_objTool.get<QDoubleSpinBoxEx>("m_pColorBarMaxSpinbox"); }
    QSpanSlider* slider() { return m_objTool.get<QSpanSlider>("m_pColorBarMinMaxSlider"); }
    QSpanSlider* tableSlider() { return m_objTool.get<QSpanSlider>("m_pSourceColorTableSlider"); }
    QComboBox* table() { return m_objTool.get<QComboBox>("m_pColorTableCB"); }
    QCheckBox* check(const char* pName) { return m_objTool.get<QCheckBox>(pName); }
    COrmPalettePixmapView* strip() { return m_objTool.window().findChild<COrmPalettePixmapView*>(); }
    QList<int> handles() { return {slider()->lowerValue(), slider()->upperValue()}; }
    QList<float> currentRange()
    {
        float f[4];
        view().getMinMax(&f[0], &f[1], &f[2], &f[3]);
        return {f[0], f[1], f[2], f[3]};
    }

private:
    WindowTest::CStudy m_objStudy;
    CToolWindow m_objTool;
};

/// Puts a number in as a whole, as pasting does.
inline void type(QDoubleSpinBox* pBox, const QString& strNumber)
{
    auto* pEdit = pBox->findChild<QLineEdit*>();
    pEdit->selectAll();
    pEdit->insert(strNumber);
    QTest::keyClick(pBox, Qt::Key_Return);
}
} // namespace ColorScaleTest
