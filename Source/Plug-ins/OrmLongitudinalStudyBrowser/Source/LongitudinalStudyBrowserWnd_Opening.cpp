#include "LongitudinalStudyBrowserWnd.h"

#include "COrmErrorHandler.h"
#include "COrmLog.h"
#include "COrmMessageBox.h"
#include "COrmPreference.h"
#include "COrmSettings.h"
#include "CPLClickInfo.h"
#include "OrmGlobalConstants.h"
#include "SequenceKind.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QListWidget>

void CLongitudinalStudyBrowserWnd::onClickOpenButton()
{
    // Asked for once. From then on the folder is that of the last file that could be read, and only as long as the process lives.
    static QString strFolderPath = COrmPreference::getSettings()->getBrowsePath();

    const QString strFile = QFileDialog::getOpenFileName(QApplication::activeWindow(), QStringLiteral("Choose a file to open"),
                                                         strFolderPath, QStringLiteral("Ormelle Files(Sequence*.txt)"));
    if (strFile.isEmpty())
    {
        return;
    }
    const QFileInfo objFile(strFile);
    if (!objFile.isReadable())
    {
        COrmErrorHandler::errorMessage(this, eStatusFileNotReadable, QString());
        return;
    }
    strFolderPath = objFile.absolutePath();

    QString strSequenceID;
    CPLClickInfo::obtainValueFromClickInfoFile(strFile, PLConstants::SEQUENCEINFO_KEY, &strSequenceID);
    const QString strKind = getSequenceInfoType(strFile);
    if (strSequenceID.isEmpty())
    {
        return;
    }

    // An index of results decides whatever the clicks say, and SOLA comes first.
    const QDir objResults(strFolderPath + QLatin1Char('/') + QStringLiteral("XML") + QLatin1Char('/'));
    const bool bHasSOLA = objResults.exists(QStringLiteral("SOLA.txt"));
    const bool bHasNOVA = objResults.exists(QStringLiteral("NOVA.txt"));
    if (strKind.compare(QLatin1String("SOLA"), Qt::CaseInsensitive) == 0 || bHasSOLA)
    {
        listSequenceFromDisk(m_lstSOLASequences, QStringLiteral("SOLA"), bHasSOLA, strSequenceID, strFolderPath);
    }
    else if (strKind.compare(QLatin1String("NOVA"), Qt::CaseInsensitive) == 0 || bHasNOVA)
    {
        listSequenceFromDisk(m_lstNOVASequences, QStringLiteral("NOVA"), bHasNOVA, strSequenceID, strFolderPath);
    }
    else
    {
        COrmMessageBox::information(this, QString(), QStringLiteral("The Selected Sequence is not a SOLA/NOVA Sequence"), QString(),
                                    QString(), QString(), 0, -1);
    }
}

/// Lists a sequence of that kind unless it is listed, and makes the last entry of the list the chosen one. It stands in the current list
/// alone: what the host does not have does not come back once it is taken off.
void CLongitudinalStudyBrowserWnd::listSequenceFromDisk(QList<QString>& lstSequences, const QString& strKind, bool bHasResults,
                                                        const QString& strSequenceID, const QString& strFolder)
{
    if (!bHasResults)
    {
        getLogObject()->log(QStringLiteral("The sequence does not contain any analysis results to load"), QString(), 0,
                            QStringLiteral(__TIME__), 2, false);
    }
    if (!m_mapSequenceInfoPaths.contains(strSequenceID))
    {
        m_mapSequenceInfoPaths.insert(strSequenceID, strFolder + QLatin1Char('/'));
    }
    if (lstSequences.contains(strSequenceID))
    {
        return;
    }
    lstSequences.append(strSequenceID);
    updateSequenceNameList(strKind);
    QListWidget* pList = m_objForm.m_pSequenceNameLW;
    if (QListWidgetItem* pItem = pList->item(pList->count() - 1))
    {
        pItem->setSelected(true);
        pList->scrollToItem(pItem);
        onClickSequenceNameWidgetItem(pItem);
    }
}

QString CLongitudinalStudyBrowserWnd::getSequenceInfoType(QString strFilePath)
{
    return SequenceKind::ofFile(strFilePath);
}
