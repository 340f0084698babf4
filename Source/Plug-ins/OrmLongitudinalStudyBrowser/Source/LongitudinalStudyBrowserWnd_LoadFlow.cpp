#include "LongitudinalStudyBrowserWnd.h"

#include "CAutoProgressUpdate.h"
#include "COrmLog.h"
#include "COrmMessageBox.h"
#include "COrmProcess.h"
#include "COrmSequenceDataset.h"
#include "COrmUtilityFns.h"
#include "CPLSettingsFileWrapper.h"
#include "LongitudinalStudyBrowserView.h"
#include "PaletteWalkHost.h"
#include "QSpanSlider.h"
#include "QtThumbWheel.h"

#include <QCoreApplication>
#include <QListWidget>
#include <QSet>

#include <new>

namespace
{

/// Steps of the long process that one result is.
constexpr int g_nProcessSteps = 15;

const QString g_strUnableToLoad = QStringLiteral("Unable to load analysis data");
const QString g_strMenuNameTag = QStringLiteral("MenuName");
const QString g_strFileNameTag = QStringLiteral("FileName");

void logEntry(const QString& strMessage, long nLevel)
{
    getLogObject()->log(strMessage, QString(), 0, QStringLiteral(__TIME__), nLevel, false);
}

/// A file in the folder of saved results. The info path ends in its separator; where it is empty the path is relative.
QString savedResultPath(const QString& strInfoPath, const QString& strFileName)
{
    return strInfoPath + QStringLiteral("XML") + QLatin1Char('/') + strFileName;
}

/// Does one of the steps that must all be taken, whether or not there is memory for each.
template <typename Fn>
void attempt(Fn fnStep)
{
    try
    {
        fnStep();
    }
    catch (const std::bad_alloc&)
    {
        // The steps after it matter more: they free the interface.
    }
}

bool containsIgnoringCase(const QStringList& lstNames, const QString& strName)
{
    const QString strLower = strName.toLower();
    for (const QString& strCandidate : lstNames)
    {
        if (strCandidate.toLower() == strLower)
        {
            return true;
        }
    }
    return false;
}

} // namespace

void CLongitudinalStudyBrowserWnd::updateSavedResult(QString strSequenceID, QString strKind)
{
    QString strPath;
    if (const COrmSequenceDataset* pSequence = COrmSequenceDataset::getSequenceDataset(strSequenceID))
    {
        strPath = pSequence->getSequenceInfoPath();
        if (!m_mapSequenceInfoPaths.contains(strSequenceID))
        {
            m_mapSequenceInfoPaths.insert(strSequenceID, strPath);
        }
    }
    else
    {
        strPath = m_mapSequenceInfoPaths.value(strSequenceID);
    }

    QString strIndexName;
    QString strPrefix;
    if (strKind.toLower() == QLatin1String("sola"))
    {
        strIndexName = QStringLiteral("SOLA.txt");
        strPrefix = QStringLiteral("SOLA_");
    }
    else if (strKind.toLower() == QLatin1String("nova"))
    {
        strIndexName = QStringLiteral("NOVA.txt");
        strPrefix = QStringLiteral("NOVA_");
    }

    CPLSettingsFileWrapper objIndex;
    objIndex.setAutoMenuNameTag(strPrefix);
    objIndex.setMenuNameTag(g_strMenuNameTag);
    objIndex.setFileNameTag(g_strFileNameTag);
    objIndex.setSettingsFileName(savedResultPath(strPath, strIndexName));
    m_lstSavedResultNames.clear();
    if (objIndex.load() == 0)
    {
        m_lstSavedResultNames = objIndex.getMenuNames(strKind);
    }
    m_objForm.m_pResultWidget->clear();
    m_objForm.m_pResultWidget->addItems(m_lstSavedResultNames);

    removeVanishedResults(strSequenceID);
}

/// Takes out of the view what the sequence's list of saved results doesn't hold any more. The list is that of one kind, so
/// results of the other kind go too: the view then shows what can be loaded from the list beside it.
void CLongitudinalStudyBrowserWnd::removeVanishedResults(const QString& strSequenceID)
{
    QSet<QString> setSaved;
    for (const QString& strName : qAsConst(m_lstSavedResultNames))
    {
        setSaved.insert(strName + strSequenceID);
    }
    QList<sAnalysisBase>& lstRecords = m_pView->getAnalysisParams();
    if (lstRecords.isEmpty())
    {
        return;
    }
    int i = 0;
    while (i < lstRecords.size())
    {
        const sAnalysisBase& objRecord = lstRecords.at(i);
        if (setSaved.contains(objRecord.strResultName + objRecord.strSequenceID) || objRecord.strSequenceID != strSequenceID)
        {
            ++i;
            continue;
        }
        m_pView->getLoadedResult().removeOne(objRecord.strSequenceID + objRecord.strResultName);
        lstRecords.removeAt(i);
    }
    m_pView->update();
}

void CLongitudinalStudyBrowserWnd::onClickLoadButton()
{
    if (m_bLoadInProgress)
    {
        return; // a press that came through while a message of this load is shown
    }
    try
    {
        loadByKind();
    }
    catch (const std::bad_alloc&)
    {
        CPaletteWalkHost::logNoMemory();
        reportLoadFailure(g_strUnableToLoad);
    }
    finishLoading();
}

void CLongitudinalStudyBrowserWnd::loadByKind()
{
    if (m_pView->getAnalysisParams().isEmpty())
    {
        m_objForm.m_pThumWheel->setValue(0);
    }
    m_bLoadInProgress = true;
    COrmProcess::disableUserInteraction(true);
    if (m_nResultKind == 0)
    {
        loadSelectedResults(m_strSelectedSOLAResult);
        if (!m_mapSOLAWavelengths.isEmpty())
        {
            m_objForm.m_pSOLAGB->setEnabled(false);
        }
    }
    else if (m_nResultKind == 1)
    {
        loadSelectedResults(m_strSelectedNOVAResult);
        if (!m_mapNOVAImageSources.isEmpty())
        {
            m_objForm.m_pNOVAGB->setEnabled(false);
        }
    }
}

/// Loads every selected result, one after the other; the name of the one at work goes to the given member.
void CLongitudinalStudyBrowserWnd::loadSelectedResults(QString& strSelectedResult)
{
    QStringList lstNames; // loading may change the list
    for (const QListWidgetItem* pItem : m_objForm.m_pResultWidget->selectedItems())
    {
        lstNames.append(pItem->text());
    }
    for (const QString& strName : qAsConst(lstNames))
    {
        strSelectedResult = strName;
        loadAnalysisResult();
    }
}

void CLongitudinalStudyBrowserWnd::finishLoading()
{
    attempt([this] { updateColorPaletteForCurrentTab(); });
    attempt([] { COrmProcess::endLongProcess(eLongProcessGeneral); });
    attempt([] { COrmProcess::disableUserInteraction(false); });
    m_bLoadInProgress = false;
    attempt([this] { m_objForm.m_p3DBrowserTabWidget->setCurrentIndex(0); });
    attempt([this] { UpdateSlider(true); });
    attempt([this] { lookAfterLoading(); });
}

void CLongitudinalStudyBrowserWnd::lookAfterLoading()
{
    QList<sAnalysisBase>& lstRecords = m_pView->getAnalysisParams();
    if (lstRecords.isEmpty())
    {
        m_pView->update();
        return;
    }
    for (sAnalysisBase& objRecord : lstRecords)
    {
        if (objRecord.nAnalysisType == m_nResultKind)
        {
            objRecord.objVolume.setAllDefaultThreshold(true);
        }
    }
    sourceColorspanSliderChanged(m_objForm.m_pSourceColorTableSlider->lowerValue(), m_objForm.m_pSourceColorTableSlider->upperValue());
    m_pView->setColorPaletteModified(true);
    m_pView->update();
}

/// The interface is free just long enough for the user to answer; the next result of the selection finds it locked again.
void CLongitudinalStudyBrowserWnd::reportLoadFailure(const QString& strText)
{
    attempt([] { COrmUtilityFns::restoreCursor(); });
    attempt([] { COrmProcess::disableUserInteraction(false); });
    attempt([&] { COrmMessageBox::information(this, QString(), strText, QString(), QString(), QString(), 0, -1); });
    attempt([] { COrmProcess::disableUserInteraction(true); });
}

bool CLongitudinalStudyBrowserWnd::loadAnalysisResult()
{
    const SLoadedBefore objBefore = {m_pView->getAnalysisParams().size(), m_lstLoadedResults.size(), m_pView->getLoadedResult().size(),
                                     m_pView->getSelectedList()};
    try
    {
        if (loadNamedResult())
        {
            return true;
        }
        takeBackResult(objBefore); // memory may have run short when the tile was there already
    }
    catch (const std::bad_alloc&)
    {
        takeBackResult(objBefore);
        CPaletteWalkHost::logNoMemory();
        reportLoadFailure(g_strUnableToLoad);
        attempt([] { COrmProcess::endLongProcess(eLongProcessGeneral); });
        attempt([] { COrmUtilityFns::restoreCursor(); });
    }
    return false;
}

/// Takes out what a load that failed half-way left of its result, and selects what was selected before. Needs no memory for it.
void CLongitudinalStudyBrowserWnd::takeBackResult(const SLoadedBefore& objBefore)
{
    QList<sAnalysisBase>& lstRecords = m_pView->getAnalysisParams();
    QStringList& lstKeys = m_pView->getLoadedResult();
    if (lstRecords.size() <= objBefore.nTiles && m_lstLoadedResults.size() <= objBefore.nLoaded && lstKeys.size() <= objBefore.nKeys)
    {
        return;
    }
    const QString& strResult = m_nResultKind == 1 ? m_strSelectedNOVAResult : m_strSelectedSOLAResult;
    for (int i = lstRecords.size() - 1; i >= 0 && lstRecords.size() > objBefore.nTiles; --i) // the last one of that name is the new one
    {
        if (lstRecords.at(i).strResultName == strResult && lstRecords.at(i).nAnalysisType == m_nResultKind)
        {
            lstRecords.removeAt(i);
        }
    }
    while (m_lstLoadedResults.size() > objBefore.nLoaded)
    {
        m_lstLoadedResults.removeLast();
    }
    while (lstKeys.size() > objBefore.nKeys)
    {
        lstKeys.removeLast();
    }
    m_pView->getSelectedList() = objBefore.lstSelected;
    attempt([this] { updateUIControls(); });
    m_pView->update();
}

/// Looks the selected result up in its index, reads it and shows it.
bool CLongitudinalStudyBrowserWnd::loadNamedResult()
{
    const bool bNOVA = m_nResultKind == 1;
    const QString strKind = bNOVA ? QStringLiteral("NOVA") : QStringLiteral("SOLA");
    const QString strIndexName = bNOVA ? QStringLiteral("NOVA.txt") : QStringLiteral("SOLA.txt");
    const QString strResult = bNOVA ? m_strSelectedNOVAResult : m_strSelectedSOLAResult;
    if (COrmProcess::isProcessInProgress(eLongProcessAcquisition))
    {
        logEntry(QStringLiteral("Unable to proceed with loading Analysis results - acquisition in progress. Try again later."), 2);
        return false;
    }
    const COrmSequenceDataset* pSequence = COrmSequenceDataset::getSequenceDataset(m_strSelectedSequenceID);
    COrmUtilityFns::setCursor(QCursor(Qt::WaitCursor));
    const QString strInfoPath = pSequence ? pSequence->getSequenceInfoPath() : m_mapSequenceInfoPaths.value(m_strSelectedSequenceID);

    CPLSettingsFileWrapper objIndex;
    const QString strIndexPath = savedResultPath(strInfoPath, strIndexName);
    if (objIndex.load(strIndexPath) != 0)
    {
        logEntry(QStringLiteral("Unable to load ") + strIndexPath + QStringLiteral("file"), 1);
        reportLoadFailure(g_strUnableToLoad);
        return false;
    }
    objIndex.setMenuNameTag(g_strMenuNameTag);
    objIndex.setFileNameTag(g_strFileNameTag);
    if (!containsIgnoringCase(objIndex.getMenuNames(strKind), strResult))
    {
        logEntry(QStringLiteral("No results exist with this name."), 3);
        reportLoadFailure(g_strUnableToLoad);
        return false;
    }
    const QString strKey = m_strSelectedSequenceID + strResult;
    if (m_pView->getLoadedResult().contains(strKey))
    {
        const QString strText = strResult + QStringLiteral("  is already loaded");
        logEntry(strText, 2);
        reportLoadFailure(strText);
        return false;
    }
    const QString strFileName = objIndex.getFileNameForMenuName(strResult, QStringLiteral("-"));
    if (strFileName.isEmpty())
    {
        logEntry(QStringLiteral("No result file exist for this result: ") + QString::fromLatin1(strResult.toLatin1()), 3);
        reportLoadFailure(g_strUnableToLoad);
        return false;
    }
    const QString strPath = savedResultPath(strInfoPath, strFileName);

    // The heading is the same for every load of either kind.
    CAutoProgressUpdate objProgress(QStringLiteral("Performing SOLA reconstruction..."));
    COrmProcess::startLongProcess(g_nProcessSteps, eLongProcessAnalysis, false, QStringLiteral("Aborting..."));
    QCoreApplication::processEvents();
    objProgress.start(QThread::InheritPriority);
    const bool bLoaded = bNOVA ? loadNOVAAnalysisDataFromXML(strPath) : loadSOLAAnalysisDataFromXML(strPath);
    if (!bLoaded)
    {
        reportLoadFailure(g_strUnableToLoad);
        objProgress.stop();
        COrmProcess::endLongProcess(eLongProcessGeneral);
        COrmUtilityFns::restoreCursor();
        return false;
    }
    objProgress.stop();
    takeOverLoadedResult(strKey, strResult);
    COrmUtilityFns::restoreCursor();
    return true;
}

void CLongitudinalStudyBrowserWnd::takeOverLoadedResult(const QString& strKey, const QString& strResult)
{
    m_pView->getSelectedList().clear();
    m_lstLoadedResults.append(strKey);
    m_pView->getLoadedResult().append(strKey);
    m_pView->getSelectedList().append(strKey);
    onSignalUpdateWavelengthCB(m_strSelectedSequenceID, strResult);
    updateUIControls();
    if (m_lstLoadedResults.size() > 1)
    {
        m_objForm.m_pPlotSelectCB->setCurrentIndex(0);
        onActivatePlotSelectCB(0);
    }
    onClickReverseCheckBox();
    onClickLogrithmicScaleCheckBox();
    m_pView->update();
}
