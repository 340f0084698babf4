#include "LongitudinalStudyBrowserWnd.h"

#include "COrmPalettePixmapView.h"
#include "COrmUtilityFns.h"
#include "ColorRangeMath.h"
#include "LongitudinalStudyBrowserView.h"
#include "OrmColorTables.h"

#include <QSignalBlocker>

namespace
{
/// Digits behind the point of the range's spin boxes, which show values of any magnitude.
constexpr int s_nRangeDecimals = 15;
/// How far above the highest value loaded a maximum can be set.
constexpr float s_fMaximumRoom = 100.0f;

/// A range of values for each kind.
struct SRanges
{
    float m_fSOLAMin = -1.0f;
    float m_fSOLAMax = -1.0f;
    float m_fNOVAMin = -1.0f;
    float m_fNOVAMax = -1.0f;
};

SRanges currentRanges(const CLongitudinalStudyBrowserView& objView)
{
    SRanges sRanges;
    objView.getMinMax(&sRanges.m_fSOLAMin, &sRanges.m_fSOLAMax, &sRanges.m_fNOVAMin, &sRanges.m_fNOVAMax);
    return sRanges;
}

SRanges aggregateRanges(const CLongitudinalStudyBrowserView& objView)
{
    SRanges sRanges;
    objView.getAggregateMinMax(&sRanges.m_fSOLAMin, &sRanges.m_fSOLAMax, &sRanges.m_fNOVAMin, &sRanges.m_fNOVAMax);
    return sRanges;
}

/// The form lets the boxes become narrower than their numbers, but a number that is cut off before its exponent is another number.
void keepRoomForNumbers(QDoubleSpinBoxEx* pBox)
{
    pBox->setScientificNotation(true);
    pBox->setMinimumWidth(qMax(pBox->minimumWidth(), pBox->minimumSizeHint().width()));
}

void setCurrentRanges(CLongitudinalStudyBrowserView& objView, const SRanges& sRanges)
{
    objView.setCurrentMinMax(sRanges.m_fSOLAMin, sRanges.m_fSOLAMax, sRanges.m_fNOVAMin, sRanges.m_fNOVAMax);
}
} // namespace

void CLongitudinalStudyBrowserWnd::UpdateSlider(bool bReset)
{
    const SRanges sAggregate = aggregateRanges(*m_pView);
    const SRanges sCurrent = currentRanges(*m_pView);
    QDoubleSpinBoxEx* pMinimum = m_objForm.m_pColorBarMinSpinbox;
    QDoubleSpinBoxEx* pMaximum = m_objForm.m_pColorBarMaxSpinbox;
    QSpanSlider* pSlider = m_objForm.m_pColorBarMinMaxSlider;
    keepRoomForNumbers(pMinimum);
    keepRoomForNumbers(pMaximum);
    if (m_nResultKind != 0 && m_nResultKind != 1)
    {
        return;
    }

    const bool bSOLA = m_nResultKind == 0;
    float& fStoredMin = bSOLA ? m_fSOLAColorMin : m_fNOVAColorMin;
    float& fStoredMax = bSOLA ? m_fSOLAColorMax : m_fNOVAColorMax;
    const float fLow = bSOLA ? sCurrent.m_fSOLAMin : sCurrent.m_fNOVAMin;
    const float fHigh = bSOLA ? sCurrent.m_fSOLAMax : sCurrent.m_fNOVAMax;
    const float fLowest = bSOLA ? sAggregate.m_fSOLAMin : sAggregate.m_fNOVAMin;
    const float fHighest = bSOLA ? sAggregate.m_fSOLAMax : sAggregate.m_fNOVAMax;
    if (bReset)
    {
        fStoredMin = fLow;
        fStoredMax = fHigh;
    }
    {
        const QSignalBlocker objBlocker(pMinimum);
        pMinimum->setRange(0.0, fHighest);
        pMinimum->setDecimals(s_nRangeDecimals);
        pMinimum->setValue(fStoredMin);
        pMinimum->setSingleStep(ColorRangeMath::minimumStep(m_nResultKind, fLow, fHigh));
    }
    {
        const QSignalBlocker objBlocker(pMaximum);
        pMaximum->setRange(fLowest, fHighest * s_fMaximumRoom);
        pMaximum->setDecimals(s_nRangeDecimals);
        pMaximum->setValue(fStoredMax);
        pMaximum->setSingleStep(ColorRangeMath::maximumStep(m_nResultKind, fLow, fHigh, fHighest));
    }
    {
        const QSignalBlocker objBlocker(pSlider);
        pSlider->setUpperValue(ColorRangeMath::upperPosition(fStoredMax, fLow, fHigh));
        pSlider->setLowerValue(ColorRangeMath::lowerPosition(fStoredMin, fLow, fHigh));
    }
}

void CLongitudinalStudyBrowserWnd::onColorBarSpinBoxMinValueChanged(double value)
{
    SRanges sCurrent = currentRanges(*m_pView);
    QSpanSlider* pSlider = m_objForm.m_pColorBarMinMaxSlider;
    const auto takeMinimum = [&](float& fLow, const float& fHigh, float& fStored)
    {
        if (fLow > value)
        {
            fLow = static_cast<float>(value);
            setCurrentRanges(*m_pView, sCurrent);
        }
        const int nPosition = ColorRangeMath::lowerPositionOfTyped(value, fLow, fHigh);
        fStored = static_cast<float>(value);
        const QSignalBlocker objBlocker(pSlider);
        pSlider->setLowerValue(nPosition);
    };
    if (m_nResultKind == 0)
    {
        takeMinimum(sCurrent.m_fSOLAMin, sCurrent.m_fSOLAMax, m_fSOLAColorMin);
    }
    if (m_nResultKind == 1)
    {
        takeMinimum(sCurrent.m_fNOVAMin, sCurrent.m_fNOVAMax, m_fNOVAColorMin);
    }
    m_pView->setCustomRange(m_fSOLAColorMin, m_fSOLAColorMax, m_fNOVAColorMin, m_fNOVAColorMax);
    m_pView->setColorPaletteModified(true);
    m_pView->update();
    m_pView->update();
}

void CLongitudinalStudyBrowserWnd::onColorBarSpinBoxMaxValueChanged(double value)
{
    SRanges sCurrent = currentRanges(*m_pView);
    QSpanSlider* pSlider = m_objForm.m_pColorBarMinMaxSlider;
    const auto takeMaximum = [&](const float& fLow, float& fHigh, float& fStored)
    {
        if (value > fHigh)
        {
            fHigh = static_cast<float>(value);
            setCurrentRanges(*m_pView, sCurrent);
        }
        const int nPosition = ColorRangeMath::upperPositionOfTyped(value, fLow, fHigh);
        fStored = static_cast<float>(value);
        const QSignalBlocker objBlocker(pSlider);
        pSlider->setUpperValue(nPosition);
    };
    if (m_nResultKind == 0)
    {
        takeMaximum(sCurrent.m_fSOLAMin, sCurrent.m_fSOLAMax, m_fSOLAColorMax);
    }
    if (m_nResultKind == 1)
    {
        takeMaximum(sCurrent.m_fNOVAMin, sCurrent.m_fNOVAMax, m_fNOVAColorMax);
    }
    m_objForm.m_pColorBarMaxSpinbox->setSingleStep(ColorRangeMath::maximumStepOfTyped(value));
    m_pView->setCustomRange(m_fSOLAColorMin, m_fSOLAColorMax, m_fNOVAColorMin, m_fNOVAColorMax);
    m_pView->setColorPaletteModified(true);
    m_pView->update();
    m_pView->update();
}

void CLongitudinalStudyBrowserWnd::onColorBarSliderUpperValueChanged(int value)
{
    const SRanges sCurrent = currentRanges(*m_pView);
    QDoubleSpinBoxEx* pMaximum = m_objForm.m_pColorBarMaxSpinbox;
    if (m_nResultKind == 0)
    {
        const QSignalBlocker objBlocker(pMaximum);
        pMaximum->setValue(ColorRangeMath::valueAt(value, sCurrent.m_fSOLAMin, sCurrent.m_fSOLAMax));
        m_fSOLAColorMax = ColorRangeMath::storedValueAt(value, sCurrent.m_fSOLAMin, sCurrent.m_fSOLAMax);
    }
    if (m_nResultKind == 1)
    {
        const QSignalBlocker objBlocker(pMaximum);
        pMaximum->setValue(ColorRangeMath::valueAt(value, sCurrent.m_fNOVAMin, sCurrent.m_fNOVAMax));
        m_fNOVAColorMax = ColorRangeMath::storedValueAt(value, sCurrent.m_fNOVAMin, sCurrent.m_fNOVAMax);
    }
    m_pView->setCustomRange(m_fSOLAColorMin, m_fSOLAColorMax, m_fNOVAColorMin, m_fNOVAColorMax);
    m_pView->setColorPaletteModified(true);
    m_pView->update();
}

void CLongitudinalStudyBrowserWnd::onColorBarSliderLowerValueChanged(int value)
{
    const SRanges sCurrent = currentRanges(*m_pView);
    QDoubleSpinBoxEx* pMinimum = m_objForm.m_pColorBarMinSpinbox;
    if (m_nResultKind == 0)
    {
        const QSignalBlocker objBlocker(pMinimum);
        pMinimum->setValue(ColorRangeMath::valueAt(value, sCurrent.m_fSOLAMin, sCurrent.m_fSOLAMax));
        m_fSOLAColorMin = ColorRangeMath::storedValueAt(value, sCurrent.m_fSOLAMin, sCurrent.m_fSOLAMax);
    }
    if (m_nResultKind == 1)
    {
        const QSignalBlocker objBlocker(pMinimum);
        pMinimum->setValue(ColorRangeMath::valueAt(value, sCurrent.m_fNOVAMin, sCurrent.m_fNOVAMax));
        m_fNOVAColorMin = ColorRangeMath::storedValueAt(value, sCurrent.m_fNOVAMin, sCurrent.m_fNOVAMax);
    }
    m_pView->setCustomRange(m_fSOLAColorMin, m_fSOLAColorMax, m_fNOVAColorMin, m_fNOVAColorMax);
    m_pView->setColorPaletteModified(true);
    m_pView->update();
}

void CLongitudinalStudyBrowserWnd::onClickResetColorBarMaxMinButton()
{
    const SRanges sAggregate = aggregateRanges(*m_pView);
    const bool bNOVA = m_nResultKind == 1;
    setCurrentRanges(*m_pView, sAggregate);
    // Storing, slider and custom range are the business of the two slots that this sets off.
    m_objForm.m_pColorBarMaxSpinbox->setValue(bNOVA ? sAggregate.m_fNOVAMax : sAggregate.m_fSOLAMax);
    m_objForm.m_pColorBarMinSpinbox->setValue(bNOVA ? sAggregate.m_fNOVAMin : sAggregate.m_fSOLAMin);
    m_pView->setColorPaletteModified(true);
    m_pView->update();
}

void CLongitudinalStudyBrowserWnd::updateColorPaletteForCurrentTab()
{
    Ui_LongitudinalStudyBrowserDlg& ui = m_objForm;
    const COrmPalette* pPalette = nullptr;
    if (m_nResultKind == 0)
    {
        ui.m_pSOLAGB->show();
        ui.m_pNOVAGB->hide();
        ui.m_pDisplayVoxelsGB->setTitle(QStringLiteral("Display Voxels [SOLA]"));
        if (m_pView->containsSOLAResults())
        {
            pPalette = m_pView->getSOLAColorPalette();
        }
    }
    else if (m_nResultKind == 1)
    {
        ui.m_pSOLAGB->hide();
        ui.m_pNOVAGB->show();
        ui.m_pDisplayVoxelsGB->setTitle(QStringLiteral("Display Voxels [NOVA]"));
        if (m_pView->containsNOVAResults())
        {
            pPalette = m_pView->getNOVAColorPalette();
        }
    }
    if (pPalette == nullptr)
    {
        ui.m_pDisplayVoxelsGB->setEnabled(false);
        return;
    }

    const float fRange = static_cast<float>(ui.m_pSourceColorTableSlider->maximum() - ui.m_pSourceColorTableSlider->minimum());
    {
        const QSignalBlocker objComboBlocker(ui.m_pColorTableCB);
        const QSignalBlocker objSliderBlocker(ui.m_pSourceColorTableSlider);
        const QSignalBlocker objReverseBlocker(ui.m_pReverseColorMapCheck);
        const QSignalBlocker objLogBlocker(ui.m_pLogarithmicScaleCheck);
        updateComboWidget(ui.m_pColorTableCB, getCTNameForColorTable(pPalette->colorTableType()));
        ui.m_pSourceColorTableSlider->setSpan(ColorRangeMath::positionOfFraction(pPalette->getColorTableLow(), fRange),
                                              ColorRangeMath::positionOfFraction(pPalette->getColorTableHigh(), fRange));
        updateColorMapLabel(ui.m_pColorTableCB->currentIndex());
        ui.m_pReverseColorMapCheck->setChecked(pPalette->reversed() != 0);
        ui.m_pLogarithmicScaleCheck->setChecked(pPalette->logScale() != 0);
    }
    ui.m_pDisplayVoxelsGB->setEnabled(true);
}

void CLongitudinalStudyBrowserWnd::sourceColorspanSliderChanged(int nLow, int nHigh)
{
    QSpanSlider* pSlider = m_objForm.m_pSourceColorTableSlider;
    float fRange = 0.0f;
    {
        const QSignalBlocker objBlocker(pSlider);
        fRange = static_cast<float>(pSlider->maximum() - pSlider->minimum());
    }
    if (m_pView == nullptr)
    {
        return;
    }
    const int nTable = m_objForm.m_pColorTableCB->currentIndex();
    const float fLow = ColorRangeMath::fractionOfPosition(nLow, fRange);
    const float fHigh = ColorRangeMath::fractionOfPosition(nHigh, fRange);
    QList<sAnalysisBase>& lstAnalyses = m_pView->getAnalysisParams();
    for (sAnalysisBase& sAnalysis : lstAnalyses)
    {
        if (sAnalysis.nAnalysisType == m_nResultKind)
        {
            sAnalysis.objVolume.setColorTable(nTable, fLow, fHigh);
            sAnalysis.objVolume.setColorTable(nTable, fLow, fHigh);
        }
    }
    if (!lstAnalyses.isEmpty())
    {
        m_pView->setColorPaletteModified(true);
    }
    m_pView->update();
}

void CLongitudinalStudyBrowserWnd::onChangeColorTableCB(int nIndex)
{
    updateColorMapLabel(nIndex);
    QList<sAnalysisBase>& lstAnalyses = m_pView->getAnalysisParams();
    if (!lstAnalyses.isEmpty())
    {
        for (sAnalysisBase& sAnalysis : lstAnalyses)
        {
            if (sAnalysis.nAnalysisType == m_nResultKind)
            {
                sAnalysis.objVolume.setColorTable(nIndex, 0.0f, 1.0f);
                sAnalysis.objVolume.setColorTable(nIndex, 0.0f, 1.0f);
            }
        }
        const QSpanSlider* pSlider = m_objForm.m_pSourceColorTableSlider;
        sourceColorspanSliderChanged(pSlider->lowerValue(), pSlider->upperValue());
        m_pView->setColorPaletteModified(true);
    }
    m_pView->update();
}

void CLongitudinalStudyBrowserWnd::updateColorMapLabel(int nIndex)
{
    // The strip shows the whole table, whatever part of it is in use.
    m_pPalettePixmapView->setPaletteCT(OrmColorTables::typeForPosition(nIndex), 0.0f, 1.0f);
    m_pPalettePixmapView->setPaletteCTReverse(m_objForm.m_pReverseColorMapCheck->isChecked());
    m_pPalettePixmapView->update();
}

void CLongitudinalStudyBrowserWnd::onClickReverseCheckBox()
{
    updateColorMapLabel(m_objForm.m_pColorTableCB->currentIndex());
    if (m_pView == nullptr || m_pView->getAnalysisParams().isEmpty())
    {
        return;
    }
    const int nReversed = m_objForm.m_pReverseColorMapCheck->isChecked() ? 1 : 0;
    for (sAnalysisBase& sAnalysis : m_pView->getAnalysisParams())
    {
        sAnalysis.objVolume.setColorMapReversed(nReversed);
    }
    const QSpanSlider* pSlider = m_objForm.m_pSourceColorTableSlider;
    sourceColorspanSliderChanged(pSlider->lowerValue(), pSlider->upperValue());
    m_pView->setColorPaletteModified(true);
    m_pView->update();
}

void CLongitudinalStudyBrowserWnd::onClickLogrithmicScaleCheckBox()
{
    if (m_pView == nullptr || m_pView->getAnalysisParams().isEmpty())
    {
        return;
    }
    const int nLogScale = m_objForm.m_pLogarithmicScaleCheck->isChecked() ? 1 : 0;
    for (sAnalysisBase& sAnalysis : m_pView->getAnalysisParams())
    {
        sAnalysis.objVolume.setLogScale(nLogScale);
    }
    m_pView->setColorPaletteModified(true);
    m_pView->update();
}

void CLongitudinalStudyBrowserWnd::onCheckMIP(int nState)
{
    if (m_pView == nullptr || m_pView->getAnalysisParams().isEmpty())
    {
        return;
    }
    const bool bMIP = nState == Qt::Checked;
    for (sAnalysisBase& sAnalysis : m_pView->getAnalysisParams())
    {
        sAnalysis.objVolume.setMIP(bMIP);
    }
    m_pView->update();
}

void CLongitudinalStudyBrowserWnd::onOpacitySliderChanged(int nOpacity)
{
    m_pView->setMeshOpacity(static_cast<float>(nOpacity / 100.0));
    m_pView->update();
}

void CLongitudinalStudyBrowserWnd::onChangeThumbwheelValue(int nValue)
{
    m_pView->getHighListedResult().clear();
    m_pView->setRotation(0.0, nValue, 0.0);
}

void CLongitudinalStudyBrowserWnd::getCurrentDataMaxMin(float& fMin, float& fMax)
{
    const QList<sAnalysisBase>& lstAnalyses = m_pView->getAnalysisParams();
    if (lstAnalyses.isEmpty())
    {
        return;
    }
    int nFound = 0;
    for (int i = 0; i < lstAnalyses.size(); ++i)
    {
        const sAnalysisBase& sAnalysis = lstAnalyses.at(i);
        if (sAnalysis.strSequenceID == m_strSelectedSequenceID &&
            (sAnalysis.strResultName == m_strSelectedNOVAResult || sAnalysis.strResultName == m_strSelectedSOLAResult))
        {
            nFound = i;
            break;
        }
    }
    fMax = lstAnalyses.at(nFound).objVolume.getAttribMaxValue();
    fMin = lstAnalyses.at(nFound).objVolume.getAttribMinValue();
}
