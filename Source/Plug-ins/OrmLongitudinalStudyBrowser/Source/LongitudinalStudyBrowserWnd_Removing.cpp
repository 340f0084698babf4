#include "LongitudinalStudyBrowserWnd.h"

#include "COrmMessageBox.h"
#include "COrmUtilityFns.h"
#include "LongitudinalStudyBrowserView.h"

#include <QAction>
#include <QCursor>
#include <QGroupBox>
#include <QListWidget>
#include <QMenu>

#include <algorithm>

namespace
{
/// Where the window goes when nothing is loaded any more.
constexpr int s_nHomeX = 0;
constexpr int s_nHomeY = 70;

const QLatin1String s_strSelectedResult("Selected Result");
const QLatin1String s_strAllResults("All Results");

bool isEntry(const QAction* pAction, QLatin1String strText)
{
    return pAction->text().compare(strText, Qt::CaseInsensitive) == 0;
}
} // namespace

void CLongitudinalStudyBrowserWnd::onMouseClicked(const QPoint&)
{
    const QListWidgetItem* pItem = m_objForm.m_pSequenceNameLW->currentItem();
    if (pItem != nullptr && pItem->isSelected())
    {
        m_pSequenceContextMenu->popup(QCursor::pos());
    }
}

void CLongitudinalStudyBrowserWnd::onClickRemoveAction()
{
    const QListWidgetItem* pItem = m_objForm.m_pSequenceNameLW->currentItem();
    if (pItem == nullptr)
    {
        return;
    }
    const QString strQuestion =
        QStringLiteral("Are you sure you want to remove the sequence ") + pItem->text() + QStringLiteral(" from the list?");
    if (COrmMessageBox::warning(nullptr, COrmUtilityFns::getAppName(), strQuestion, QMessageBox::Yes,
                                QMessageBox::No | QMessageBox::Default, 0) != QMessageBox::Yes)
    {
        return;
    }
    // The sequence last chosen goes, whatever entry is the current one by now.
    if (m_nResultKind == 0 && m_lstSOLASequences.contains(m_strSelectedSequenceID))
    {
        removeSelectedSequence(m_lstSOLASequences, QStringLiteral("SOLA"), m_mapSOLAWavelengths, m_objForm.m_pSOLAGB);
    }
    else if (m_nResultKind == 1 && m_lstNOVASequences.contains(m_strSelectedSequenceID))
    {
        removeSelectedSequence(m_lstNOVASequences, QStringLiteral("NOVA"), m_mapNOVAImageSources, m_objForm.m_pNOVAGB);
    }
    finishRemoving();
}

/// Takes the chosen sequence off the list of its kind and its results out of the view. The host's own list keeps it, so that a sequence
/// which is still open there comes back with the next show.
void CLongitudinalStudyBrowserWnd::removeSelectedSequence(QList<QString>& lstSequences, const QString& strKind,
                                                          QMap<QString, QStringList>& mapNames, QGroupBox* pUnitBox)
{
    const QString strSequenceID = m_strSelectedSequenceID; // building the list anew selects another one
    const bool bSOLA = m_nResultKind == 0;
    lstSequences.removeOne(strSequenceID);
    if (!m_pView->getAnalysisParams().isEmpty())
    {
        for (const QString& strName : qAsConst(m_lstSavedResultNames))
        {
            const QString strKey = strSequenceID + strName;
            const bool bLoaded = m_pView->getLoadedResult().contains(strKey);
            if (bLoaded)
            {
                m_lstLoadedResults.removeAll(strKey);
                m_pView->getLoadedResult().removeAll(strKey);
            }
            // The wavelengths of a result that was read but never shown go too; the image sources of such a result stay.
            if (bSOLA || bLoaded)
            {
                mapNames.remove(strKey);
            }
        }
        removeTilesOf(strSequenceID);
    }
    updateSequenceNameList(strKind);
    m_objForm.m_pResultWidget->clear();
    if (mapNames.isEmpty())
    {
        pUnitBox->setEnabled(true);
    }
}

/// Takes out every result, of either kind, of each sequence whose ID holds this one.
void CLongitudinalStudyBrowserWnd::removeTilesOf(const QString& strSequenceID)
{
    QList<sAnalysisBase>& lstRecords = m_pView->getAnalysisParams();
    lstRecords.erase(std::remove_if(lstRecords.begin(), lstRecords.end(),
                                    [&strSequenceID](const sAnalysisBase& objRecord)
                                    { return objRecord.strSequenceID.contains(strSequenceID); }),
                     lstRecords.end());
}

void CLongitudinalStudyBrowserWnd::finishRemoving()
{
    Ui_LongitudinalStudyBrowserDlg& ui = m_objForm;
    if (m_lstLoadedResults.isEmpty())
    {
        ui.m_pDisplayVoxelsGB->setEnabled(false);
        m_pView->setSelectVoxel(false);
        ui.m_pWaveLengthCB->setEnabled(false);
        ui.m_pClear3DViewButton->setEnabled(false);
        ui.m_pPlotSelectCB->setEnabled(false);
        m_pPlot->clear();
        // Where the last sequence has gone the window has hidden itself: it comes back, empty.
        showNormal();
        move(s_nHomeX, s_nHomeY);
    }
    // There and back again makes the view lay out its tiles.
    resize(width() + 1, height());
    resize(width() - 1, height());
    onSignalUpdatePlotTab();
    UpdateSlider(true);
}

void CLongitudinalStudyBrowserWnd::aboutToShowClearMenu()
{
    const QList<QAction*> lstActions = m_pClearMenu->actions();
    for (QAction* pAction : lstActions)
    {
        if (isEntry(pAction, s_strSelectedResult))
        {
            pAction->setEnabled(!m_pView->getSelectedList().isEmpty());
        }
        else if (isEntry(pAction, s_strAllResults))
        {
            pAction->setEnabled(m_lstSOLASequences.size() >= 2 || m_lstNOVASequences.size() >= 2);
        }
    }
}

void CLongitudinalStudyBrowserWnd::onClickClearButton(QAction* pAction)
{
    if (isEntry(pAction, s_strAllResults))
    {
        m_pView->clear3DView();
        m_pPlot->clear();
        updateUIControls();
        onClickReverseCheckBox();
    }
    else if (isEntry(pAction, s_strSelectedResult))
    {
        m_pView->onClickRemoveSelectedAction();
    }
    UpdateSlider(true);
}
