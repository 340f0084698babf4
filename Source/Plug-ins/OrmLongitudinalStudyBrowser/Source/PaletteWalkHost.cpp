#include "PaletteWalkHost.h"

#include "AnalysisResultXMLWrapper.h"
#include "COrmLog.h"
#include "COrmProcess.h"

#include <QThread>

#include <new>

namespace
{

constexpr int g_nProcessSteps = 15;
/// All permits of the prompt that asks for saving results: who has them knows that nobody is asking.
constexpr int g_nSavePromptPermits = 5;

inline void logEntry(const QString& strMessage, long nLevel)
{
    getLogObject()->log(strMessage, QString(), 0, QStringLiteral(__TIME__), nLevel, false);
}

} // namespace

CPaletteWalkHost::CPaletteWalkHost(COrmBasePalette& objPalette, const QString& strAnalysisName, const QString& strSelectedUnit)
    : m_objPalette(objPalette), m_strAnalysisName(strAnalysisName), m_strSelectedUnit(strSelectedUnit)
{
}

void CPaletteWalkHost::keepNames(QMap<QString, QStringList>& mapNames, const QString& strKey)
{
    m_pNames = &mapNames;
    m_strKey = strKey;
}

void CPaletteWalkHost::logNoMemory()
{
    try
    {
        logEntry(QStringLiteral("There is not enough memory to load the selected results."), 3);
    }
    catch (const std::bad_alloc&)
    {
    }
}

void CPaletteWalkHost::log(const QString& strMessage, long nLevel)
{
    logEntry(strMessage, nLevel);
}

void CPaletteWalkHost::hint(const QString& strMessage)
{
    m_objPalette.setStatusHint(strMessage);
}

void CPaletteWalkHost::progress(const QString& strMessage, int nStep)
{
    COrmProcess::setProcessMessage(strMessage, nStep, g_nProcessSteps, nullptr);
}

void CPaletteWalkHost::namesRead(const QStringList& lstNames)
{
    if (m_pNames != nullptr)
    {
        m_pNames->insert(m_strKey, lstNames);
    }
}

void CPaletteWalkHost::readQuantification(AnalysisResultXMLWrapper& objXML, SAnalysisBase& objRecord)
{
    m_objPalette.readWellPlateQuantification(objXML, &objRecord);
}

void CPaletteWalkHost::readSoftwareVersion(AnalysisResultXMLWrapper& objXML, QString& strVersion)
{
    m_objPalette.readVersionInformation(objXML, strVersion);
}

bool CPaletteWalkHost::readMesh(AnalysisResultXMLWrapper& objXML, SAnalysisBase& objRecord)
{
    return m_objPalette.readMesh(objXML, &objRecord);
}

bool CPaletteWalkHost::readVolume(AnalysisResultXMLWrapper& objXML, SAnalysisBase& objRecord, QString& strKind)
{
    return m_objPalette.readVolumeData(objXML, &objRecord, strKind);
}

void CPaletteWalkHost::readMask(AnalysisResultXMLWrapper& objXML, SAnalysisBase& objRecord)
{
    m_objPalette.readMask(objXML, &objRecord);
}

void CPaletteWalkHost::waitForSavePrompt()
{
    QThread::sleep(0);
    COrmBasePalette::lockAskSavingResults(g_nSavePromptPermits);
    COrmBasePalette::unlockAskSavingResults(g_nSavePromptPermits);
}
