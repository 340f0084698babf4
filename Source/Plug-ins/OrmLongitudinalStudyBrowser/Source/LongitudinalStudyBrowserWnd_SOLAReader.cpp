#include "LongitudinalStudyBrowserWnd.h"

#include "PaletteWalkHost.h"

#include <exception>

namespace
{

QString selectedUnit(const Ui_LongitudinalStudyBrowserDlg& objForm)
{
    if (objForm.m_pPhotonsPerSecRB->isChecked())
    {
        return QStringLiteral("photons/sec");
    }
    return objForm.m_pSOLACellsRB->isChecked() ? QStringLiteral("cells") : QString();
}

} // namespace

bool CLongitudinalStudyBrowserWnd::loadSOLAAnalysisDataFromXML(QString strPath)
{
    try
    {
        SSOLAAnalysis objAnalysis;
        CPaletteWalkHost objHost(*this, m_strAnalysisName, selectedUnit(m_objForm));
        objHost.keepNames(m_mapSOLAWavelengths, m_strSelectedSequenceID + m_strSelectedSOLAResult);
        const ResultDocument::STarget objTarget = {objAnalysis, objAnalysis.nWavelengthCount, objAnalysis.lstWavelengths};
        return ResultDocument::read(ResultDocument::sola(), objHost, strPath, objTarget) && loadSOLAAnalysis(&objAnalysis);
    }
    catch (const std::exception&)
    {
        CPaletteWalkHost::logNoMemory(); // what was loaded before stays as it is
        return false;
    }
}
