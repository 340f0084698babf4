#include "LongitudinalStudyBrowserWnd.h"

void CLongitudinalStudyBrowserWnd::onClickOpenButton()
{
    // Sequences come from the host alone so far: nothing is opened from disk.
}

QString CLongitudinalStudyBrowserWnd::getSequenceInfoType(QString)
{
    // Without opening from disk no sequence file is looked at: none is of either kind.
    return QString();
}
