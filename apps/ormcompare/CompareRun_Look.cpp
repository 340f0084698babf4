#include "CompareRun.h"

#include <QAbstractSlider>
#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QListWidget>
#include <QSet>

#include <algorithm>
#include <cmath>

void CCompareRun::applyLook()
{
    if (m_options.m_nRotate)
    {
        widget<QAbstractSlider>("m_pThumWheel")->setValue(*m_options.m_nRotate);
    }
    if (!m_options.m_strWavelength.isEmpty())
    {
        applyWavelength();
    }
    if (!m_options.m_strColors.isEmpty() || m_options.m_objRange || m_options.m_bLog)
    {
        applyColors();
    }
}

bool CCompareRun::listResult(const sAnalysisBase& result)
{
    const auto* pSequences = widget<QListWidget>("m_pSequenceNameLW");
    const QString strSequence = kindName(result.nAnalysisType) + QLatin1Char(' ') + result.strSequenceID;
    const QList<QListWidgetItem*> lstSequences = pSequences->findItems(strSequence, Qt::MatchFixedString);
    if (lstSequences.isEmpty())
    {
        return false;
    }
    listSequence(pSequences->row(lstSequences.constFirst()));
    return true;
}

void CCompareRun::applyColors()
{
    // Each kind that is shown gets the look; the panel shows the kind of the sequence that was clicked last.
    for (const int nKind : {0, 1})
    {
        const QList<sAnalysisBase> lstResults = m_pView->getAnalysisParams();
        const auto first = std::find_if(lstResults.cbegin(), lstResults.cend(),
                                        [nKind](const sAnalysisBase& result) { return result.nAnalysisType == nKind; });
        if (first == lstResults.cend() || !listResult(*first))
        {
            continue;
        }
        paint();
        if (!m_options.m_strColors.isEmpty())
        {
            auto* pTables = widget<QComboBox>("m_pColorTableCB");
            const int nTable = pTables->findText(m_options.m_strColors);
            if (nTable < 0)
            {
                fail(QStringLiteral("There is no colour table \"%1\".").arg(m_options.m_strColors));
                m_options.m_strColors.clear();
            }
            else
            {
                pTables->setCurrentIndex(nTable);
            }
        }
        if (m_options.m_objRange)
        {
            applyColorRange();
        }
        auto* pLog = widget<QCheckBox>("m_pLogarithmicScaleCheck");
        if (m_options.m_bLog && !pLog->isChecked())
        {
            pLog->click();
        }
        paint();
    }
}

void CCompareRun::applyColorRange()
{
    auto* pMax = widget<QDoubleSpinBox>("m_pColorBarMaxSpinbox");
    auto* pMin = widget<QDoubleSpinBox>("m_pColorBarMinSpinbox");
    pMax->setValue(m_options.m_objRange->m_fMax);
    pMin->setValue(m_options.m_objRange->m_fMin);
    const auto differs = [](double fShown, double fAsked) { return std::abs(fShown - fAsked) > 1.0e-6 * std::abs(fAsked); };
    if (differs(pMax->value(), m_options.m_objRange->m_fMax) || differs(pMin->value(), m_options.m_objRange->m_fMin))
    {
        fail(QStringLiteral("The colour range %1 to %2 lies outside what the window takes; it is %3 to %4.")
                 .arg(m_options.m_objRange->m_fMin)
                 .arg(m_options.m_objRange->m_fMax)
                 .arg(pMin->value())
                 .arg(pMax->value()));
    }
}

void CCompareRun::applyWavelength()
{
    // A name belongs to one kind as a rule: results of a kind that knows it nowhere keep their maps.
    const QList<sAnalysisBase> lstResults = m_pView->getAnalysisParams();
    QSet<int> lstKinds;
    for (const sAnalysisBase& result : lstResults)
    {
        if (result.mapPhotonDensity.contains(m_options.m_strWavelength))
        {
            lstKinds.insert(result.nAnalysisType);
        }
    }
    if (lstKinds.isEmpty())
    {
        fail(QStringLiteral("No result has a density map \"%1\".").arg(m_options.m_strWavelength));
    }
    auto* pNames = widget<QComboBox>("m_pWaveLengthCB");
    auto* pResults = widget<QListWidget>("m_pResultWidget");
    for (const sAnalysisBase& result : lstResults)
    {
        if (!lstKinds.contains(result.nAnalysisType))
        {
            continue;
        }
        const QList<QListWidgetItem*> lstItems =
            listResult(result) ? pResults->findItems(result.strResultName, Qt::MatchFixedString | Qt::MatchCaseSensitive)
                               : QList<QListWidgetItem*>();
        if (!lstItems.isEmpty())
        {
            QMetaObject::invokeMethod(pResults, "itemClicked", Q_ARG(QListWidgetItem*, lstItems.constFirst()));
        }
        const int nName = pNames->isEnabled() && !lstItems.isEmpty() ? pNames->findText(m_options.m_strWavelength) : -1;
        if (nName < 0)
        {
            fail(QStringLiteral("%1 %2/%3 has no density map \"%4\".")
                     .arg(kindName(result.nAnalysisType), result.strSequenceID, result.strResultName, m_options.m_strWavelength));
            continue;
        }
        pNames->setCurrentIndex(nName);
    }
    paint();
}
