#include "LongitudinalStudyBrowserWnd.h"

#include "COrmSequenceDataset.h"
#include "LongitudinalStudyBrowserView.h"
#include "SequenceEntries.h"

#include <QIcon>
#include <QListWidget>

void CLongitudinalStudyBrowserWnd::updateSequenceNameList(QList<QString>& lstSequences)
{
    if (lstSequences.isEmpty())
    {
        return;
    }
    if (lstSequences.first() == QLatin1String("SOLA"))
    {
        m_lstSOLASequences = lstSequences;
        m_lstAllSOLASequences = m_lstSOLASequences;
        updateSequenceNameList(QStringLiteral("SOLA"));
    }
    else if (lstSequences.first() == QLatin1String("NOVA"))
    {
        m_lstNOVASequences = lstSequences;
        m_lstAllNOVASequences = m_lstNOVASequences;
        updateSequenceNameList(QStringLiteral("NOVA"));
    }
}

void CLongitudinalStudyBrowserWnd::updateSequenceNameList(QString)
{
    m_objForm.m_pSequenceNameLW->clear();
    // There and back again makes the layout follow the change of the list.
    resize(width() + 1, height());
    resize(width() - 1, height());

    addSequenceItems(m_lstSOLASequences, SequenceEntries::prefixOf(0), QStringLiteral(":/Resource/luminescent_icon.xpm"));
    addSequenceItems(m_lstNOVASequences, SequenceEntries::prefixOf(1), QStringLiteral(":/Resource/fluorescent_icon.xpm"));

    if (m_lstSOLASequences.size() < 2 && m_lstNOVASequences.size() < 2)
    {
        m_pView->clear3DView();
        m_pPlot->clear();
        m_objForm.m_pDisplayVoxelsGB->setEnabled(false);
        m_objForm.m_pDisplaySurfaceGB->setEnabled(false);
        m_objForm.m_pSelectVoxelButton->setChecked(false);
        m_objForm.m_pSelectVoxelButton->setEnabled(false);
        hide();
    }
    else
    {
        // The voxels' box follows when a palette is shown.
        m_objForm.m_pDisplaySurfaceGB->setEnabled(true);
    }
}

void CLongitudinalStudyBrowserWnd::addSequenceItems(const QList<QString>& lstSequences, const QString& strPrefix, const QString& strIcon)
{
    if (lstSequences.size() < 2)
    {
        return;
    }
    QListWidget* pList = m_objForm.m_pSequenceNameLW;
    const QIcon objIcon(strIcon);
    for (int i = 1; i < lstSequences.size(); ++i)
    {
        auto* pItem = new QListWidgetItem(objIcon, strPrefix + lstSequences.at(i), pList);
        if (pList->count() == 1)
        {
            onClickSequenceNameWidgetItem(pItem);
            m_objForm.m_pResultWidget->clear();
        }
    }
}

void CLongitudinalStudyBrowserWnd::onSequenceAdded(COrmSequenceDataset* pSequence)
{
    const QString strSequenceID = pSequence->getSequenceID();
    const SequenceEntries::SFlags sFlags = SequenceEntries::flagsOf(*pSequence);
    m_lstClosedSequences.removeOne(strSequenceID);

    if (SequenceEntries::isSOLA(sFlags) && !m_lstSOLASequences.contains(strSequenceID))
    {
        m_lstSOLASequences.append(strSequenceID);
        updateSequenceNameList(QStringLiteral("SOLA"));
        SequenceEntries::appendMissing(m_lstAllSOLASequences, m_lstSOLASequences);
        if (!m_mapSequenceInfoPaths.contains(strSequenceID))
        {
            m_mapSequenceInfoPaths.insert(strSequenceID, pSequence->getSequenceInfoPath());
        }
    }
    if (SequenceEntries::isNOVA(sFlags) && !m_lstNOVASequences.contains(strSequenceID))
    {
        m_lstNOVASequences.append(strSequenceID);
        updateSequenceNameList(QStringLiteral("NOVA"));
        SequenceEntries::appendMissing(m_lstAllNOVASequences, m_lstNOVASequences);
        if (!m_mapSequenceInfoPaths.contains(strSequenceID))
        {
            m_mapSequenceInfoPaths.insert(strSequenceID, pSequence->getSequenceInfoPath());
        }
    }
}

void CLongitudinalStudyBrowserWnd::onSequenceRemoved(COrmSequenceDataset* pSequence)
{
    const QString strSequenceID = pSequence->getSequenceID();
    if (m_lstClosedSequences.contains(strSequenceID))
    {
        return;
    }
    // It stays listed and readable until the window is closed.
    if (m_lstSOLASequences.contains(strSequenceID))
    {
        m_lstClosedSequences.append(strSequenceID);
    }
    m_lstAllSOLASequences.removeOne(strSequenceID);
    if (m_lstNOVASequences.contains(strSequenceID))
    {
        m_lstClosedSequences.append(strSequenceID);
    }
    m_lstAllNOVASequences.removeOne(strSequenceID);
}

void CLongitudinalStudyBrowserWnd::onClickSequenceNameWidgetItem(QListWidgetItem* pItem)
{
    const SequenceEntries::SSelection sSelection = SequenceEntries::selectionOf(pItem->text());
    if (sSelection.m_nKind >= 0)
    {
        m_nResultKind = sSelection.m_nKind;
        m_strSelectedSequenceID = sSelection.m_strSequenceID;
    }
    if (!m_strSelectedSequenceID.isNull())
    {
        updateSavedResult(m_strSelectedSequenceID, sSelection.m_strKind);
    }
    updateUIControls();
}

void CLongitudinalStudyBrowserWnd::onClickSOLASeqListWidgetItem(QListWidgetItem* item)
{
    m_strSelectedSequenceID = item->text();
    if (!m_strSelectedSequenceID.isNull())
    {
        updateSavedResult(m_strSelectedSequenceID, QStringLiteral("SOLA"));
    }
    updateUIControls();
}

void CLongitudinalStudyBrowserWnd::onClickNOVASeqListWidgetItem(QListWidgetItem* item)
{
    m_strSelectedSequenceID = item->text();
    if (!m_strSelectedSequenceID.isNull())
    {
        updateSavedResult(m_strSelectedSequenceID, QStringLiteral("NOVA"));
    }
    updateUIControls();
}
