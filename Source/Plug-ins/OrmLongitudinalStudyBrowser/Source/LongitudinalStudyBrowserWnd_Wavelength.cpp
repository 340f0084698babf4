#include "LongitudinalStudyBrowserWnd.h"

#include "LongitudinalStudyBrowserView.h"
#include "SequenceEntries.h"

#include <QSignalBlocker>

void CLongitudinalStudyBrowserWnd::onSignalUpdateWavelengthCB(QString strSequenceID, QString strResult)
{
    const QString strKey = strSequenceID + strResult;
    if (m_mapSOLAWavelengths.contains(strKey))
    {
        showResultOfView(strSequenceID, strResult, SequenceEntries::prefixOf(0), m_mapSOLAWavelengths.value(strKey),
                         m_strSelectedSOLAResult);
        m_objForm.label_3->setText(QStringLiteral("Wavelength:"));
    }
    else if (m_mapNOVAImageSources.contains(strKey))
    {
        showResultOfView(strSequenceID, strResult, SequenceEntries::prefixOf(1), m_mapNOVAImageSources.value(strKey),
                         m_strSelectedNOVAResult);
        m_objForm.label_3->setText(QStringLiteral("Image:"));
    }
    else
    {
        m_objForm.m_pWaveLengthCB->setEnabled(false);
    }
}

void CLongitudinalStudyBrowserWnd::showResultOfView(const QString& strSequenceID, const QString& strResult, const QString& strPrefix,
                                                    const QStringList& lstNames, QString& strSelectedResult)
{
    Ui_LongitudinalStudyBrowserDlg& ui = m_objForm;
    updateColorPaletteForCurrentTab();
    ui.m_pWaveLengthCB->setEnabled(true);
    fillWavelengths(lstNames);
    const QList<QListWidgetItem*> lstSequenceItems = ui.m_pSequenceNameLW->findItems(strPrefix + strSequenceID, Qt::MatchFixedString);
    if (!lstSequenceItems.isEmpty())
    {
        ui.m_pSequenceNameLW->setCurrentItem(lstSequenceItems.first());
        onClickSequenceNameWidgetItem(lstSequenceItems.first());
    }
    m_strSelectedSequenceID = strSequenceID;
    strSelectedResult = strResult;
    const QList<QListWidgetItem*> lstResultItems = ui.m_pResultWidget->findItems(strResult, Qt::MatchFixedString);
    if (!lstResultItems.isEmpty())
    {
        ui.m_pResultWidget->setCurrentItem(lstResultItems.first());
    }
}

void CLongitudinalStudyBrowserWnd::fillWavelengths(const QStringList& lstNames)
{
    // Refilling changes no density map: only a choice of the user does.
    const QSignalBlocker objBlocker(m_objForm.m_pWaveLengthCB);
    m_objForm.m_pWaveLengthCB->clear();
    m_objForm.m_pWaveLengthCB->addItems(lstNames);
}

void CLongitudinalStudyBrowserWnd::onSignalUpdateAnlaysisParameters(QString strSequenceID, QString strResult)
{
    Ui_LongitudinalStudyBrowserDlg& ui = m_objForm;
    if (strSequenceID.isEmpty() && strResult.isEmpty())
    {
        m_mapSOLAWavelengths.clear();
        m_mapNOVAImageSources.clear();
        ui.m_pSOLAGB->setEnabled(true);
        ui.m_pNOVAGB->setEnabled(true);
        return;
    }

    const QString strKey = strSequenceID + strResult;
    m_mapSOLAWavelengths.remove(strKey);
    m_mapNOVAImageSources.remove(strKey);
    m_lstLoadedResults.removeOne(strKey);
    onSignalUpdateWavelengthCB(strSequenceID, strResult);
    updateColorPaletteForCurrentTab();

    if (m_pView->getLoadedResult().size() > 1)
    {
        ui.m_pPlotSelectCB->setCurrentIndex(0);
        onActivatePlotSelectCB(0);
    }
    else
    {
        m_pPlot->clear();
        ui.m_pPlotSelectCB->setEnabled(false);
        if (m_pView->getLoadedResult().isEmpty())
        {
            updateUIControls();
        }
    }
    // The unit of a kind is free again when no result of it is left.
    if (m_mapSOLAWavelengths.isEmpty())
    {
        ui.m_pSOLAGB->setEnabled(true);
    }
    if (m_mapNOVAImageSources.isEmpty())
    {
        ui.m_pNOVAGB->setEnabled(true);
    }
}

void CLongitudinalStudyBrowserWnd::onChangeWavelengthCB(QString strText)
{
    if (m_nResultKind == 0)
    {
        m_pView->applyPhotonDensityMap(m_strSelectedSequenceID, m_strSelectedSOLAResult, strText);
    }
    else if (m_nResultKind == 1)
    {
        m_pView->applyPhotonDensityMap(m_strSelectedSequenceID, m_strSelectedNOVAResult, strText);
    }
}

void CLongitudinalStudyBrowserWnd::onClickResultWidgetItem(QListWidgetItem* pItem)
{
    if (m_nResultKind == 0 || m_nResultKind == 1)
    {
        const bool bSOLA = m_nResultKind == 0;
        QString& strSelectedResult = bSOLA ? m_strSelectedSOLAResult : m_strSelectedNOVAResult;
        const QMap<QString, QStringList>& mapNames = bSOLA ? m_mapSOLAWavelengths : m_mapNOVAImageSources;
        strSelectedResult = pItem->text();
        const QString strKey = m_strSelectedSequenceID + strSelectedResult;
        const auto itNames = mapNames.constFind(strKey);
        if (itNames != mapNames.constEnd())
        {
            m_objForm.m_pWaveLengthCB->setEnabled(true);
            fillWavelengths(itNames.value());
            m_pCurrentResultItem = pItem;
            m_pView->getSelectedList().clear();
            m_pView->getSelectedList().append(strKey);
        }
        else
        {
            m_pView->getSelectedList().clear();
            m_objForm.m_pWaveLengthCB->setEnabled(false);
            m_pCurrentResultItem = pItem;
        }
    }
    m_pView->update();
    updateUIControls();
}

void CLongitudinalStudyBrowserWnd::onItemSelectionWidgetItem()
{
    updateUIControls();
}

void CLongitudinalStudyBrowserWnd::onClickSelectVoxelBtn(bool bChecked)
{
    m_pView->onSelectVoxelS(bChecked);
    m_bSelectVoxelMode = bChecked;
}

void CLongitudinalStudyBrowserWnd::onSlectionChange()
{
    if (!m_objForm.m_pLoadButton->isEnabled())
    {
        m_objForm.m_pLoadButton->setEnabled(true);
    }
}
