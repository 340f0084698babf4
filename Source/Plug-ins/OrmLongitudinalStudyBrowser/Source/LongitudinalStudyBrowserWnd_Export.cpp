#include "LongitudinalStudyBrowserWnd.h"

#include "COrmErrorHandler.h"
#include "COrmImageExporter.h"
#include "COrmMessageBox.h"
#include "COrmPreference.h"
#include "COrmUtilityFns.h"
#include "ExportFileName.h"
#include "LongitudinalStudyBrowserView.h"
#include "ShownState.h"

#include <QClipboard>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>

QImage CLongitudinalStudyBrowserWnd::getPrintImage()
{
    switch (m_objForm.m_p3DBrowserTabWidget->currentIndex())
    {
    case 0:
        return m_pView->getPrintImage();
    case 1:
        return m_pPlot->getPrintImage();
    default:
        return QImage();
    }
}

void CLongitudinalStudyBrowserWnd::onClickCopyGraphics()
{
    QGuiApplication::clipboard()->setImage(getPrintImage(), QClipboard::Clipboard);
}

void CLongitudinalStudyBrowserWnd::onClickCopyToClipboard()
{
    if (isVisible())
    {
        onClickCopyGraphics();
    }
}

void CLongitudinalStudyBrowserWnd::onClickExportButton()
{
    const QString strStartFolder = COrmPreference::getSettings()->getRecentFilePath();
    QString strFilters = ExportFileName::offeredFilters();
    COrmPreference::modifySaveFilterByPreference(strFilters);
    QString strSelectedFilter;
    QString strPath = QFileDialog::getSaveFileName(this, QStringLiteral("Export Active View As"), strStartFolder, strFilters,
                                                   &strSelectedFilter, QFileDialog::DontConfirmOverwrite);
    if (strPath.isEmpty())
    {
        return;
    }
    COrmPreference::getSettings()->setRecentFilePath(ExportFileName::folder(strPath));
    COrmPreference::setUsersPreferredFormat(ExportFileName::formatToRemember(strPath));

    // A known extension wins over the filter; an unknown one stays, with the filter's behind it.
    const QString strSuffix = ExportFileName::suffix(strPath);
    strPath = ExportFileName::withoutClosingDot(strPath);
    if (!isKnownExtension(strSuffix))
    {
        strSelectedFilter = getSelectedFilter(strSelectedFilter);
        strPath = ExportFileName::withExtension(strPath, strSuffix, strSelectedFilter);
    }
    const QFileInfo objFile(strPath);
    const QString strFileName = objFile.fileName();
    if (ExportFileName::isTooLong(strFileName))
    {
        const int nAnswer = COrmMessageBox::information(this, COrmUtilityFns::getAppName(), ExportFileName::tooLongText(strFileName),
                                                        int(QMessageBox::Ok) | int(QMessageBox::Default), 0, 0);
        // Any other answer insists on the name.
        if (nAnswer == QMessageBox::Ok)
        {
            onClickExportButton();
            return;
        }
    }
    if (objFile.exists())
    {
        if (!objFile.isWritable())
        {
            COrmErrorHandler::errorMessage(this, eStatusFileNotWritable, QString());
            return;
        }
        const int nAnswer = COrmMessageBox::information(this, COrmUtilityFns::getAppName(), ExportFileName::overwriteText(strFileName),
                                                        QMessageBox::Yes, int(QMessageBox::No) | int(QMessageBox::Default),
                                                        int(QMessageBox::Cancel) | int(QMessageBox::Escape));
        if (nAnswer == QMessageBox::No)
        {
            onClickExportButton();
        }
        if (nAnswer != QMessageBox::Yes)
        {
            return;
        }
    }
    // The exporter itself tells the user of a failure.
    QImage imgPrint = getPrintImage();
    if (ExportFileName::suffix(strPath) == QLatin1String("png"))
    {
        ShownState::sign(*this, imgPrint);
    }
    COrmImageExporter objExporter;
    objExporter.saveImage(imgPrint, strPath);
}

bool CLongitudinalStudyBrowserWnd::isKnownExtension(QString strExtension)
{
    return ExportFileName::isKnownExtension(strExtension);
}

QString CLongitudinalStudyBrowserWnd::getSelectedFilter(QString strFilter)
{
    return ExportFileName::extensionOfFilter(strFilter);
}
