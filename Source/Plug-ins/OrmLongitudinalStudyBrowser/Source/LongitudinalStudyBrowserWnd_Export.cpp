#include "LongitudinalStudyBrowserWnd.h"

#include "LongitudinalStudyBrowserView.h"

#include <QClipboard>
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
    // No file is written yet: the picture can be copied.
}

bool CLongitudinalStudyBrowserWnd::isKnownExtension(QString)
{
    // Without export no extension names a format.
    return false;
}

QString CLongitudinalStudyBrowserWnd::getSelectedFilter(QString)
{
    // Without export no filter names a format.
    return QString();
}
