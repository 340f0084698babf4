#include "LongitudinalStudyBrowserWnd.h"

#include "PaletteWalkHost.h"
#include "ResultUnits.h"

#include <exception>

namespace
{

QString selectedUnit(const Ui_LongitudinalStudyBrowserDlg& objForm)
{
    if (objForm.m_pPmolMcmRB->isChecked())
    {
        return ResultUnits::comparedPmolPerMolarCm();
    }
    if (objForm.m_pPmolRB->isChecked())
    {
        return QStringLiteral("pmol");
    }
    return objForm.m_pNOVACellsRB->isChecked() ? QStringLiteral("cells") : QString();
}

} // namespace

bool CLongitudinalStudyBrowserWnd::loadNOVAAnalysisDataFromXML(QString strPath)
{
    try
    {
        SNOVAAnalysis objAnalysis;
        CPaletteWalkHost objHost(*this, m_strAnalysisName, selectedUnit(m_objForm));
        objHost.keepNames(m_mapNOVAImageSources, m_strSelectedSequenceID + m_strSelectedNOVAResult);
        const ResultDocument::STarget objTarget = {objAnalysis, objAnalysis.nImageSourceCount, objAnalysis.lstImageSources};
        return ResultDocument::read(ResultDocument::nova(), objHost, strPath, objTarget) && loadNOVAAnalysis(&objAnalysis);
    }
    catch (const std::exception&)
    {
        CPaletteWalkHost::logNoMemory(); // what was loaded before stays as it is
        return false;
    }
}
