#include "COrmUtilityFns.h"

#include "COrmProcess.h"

#include <QApplication>
#include <QComboBox>
#include <QtEndian>

namespace
{
int g_nCursorsSet = 0; ///< cursors of setCursor() that restoreCursor() did not take away yet
}

QString COrmUtilityFns::getAppName()
{
    return QStringLiteral("Ormelle");
}

void COrmUtilityFns::setCursor(const QCursor& objCursor)
{
    if (!qobject_cast<QApplication*>(QCoreApplication::instance()))
        return;
    QApplication::setOverrideCursor(objCursor);
    ++g_nCursorsSet;
    emit COrmProcess::notifier()->cursorSet(objCursor.shape());
}

void COrmUtilityFns::restoreCursor()
{
    if (g_nCursorsSet > 0)
    {
        --g_nCursorsSet;
        if (qobject_cast<QApplication*>(QCoreApplication::instance()) && QApplication::overrideCursor())
            QApplication::restoreOverrideCursor();
    }
    // Last: who listens may find no memory, and the cursor must not stay for that.
    emit COrmProcess::notifier()->cursorRestored();
}

QFont getMACDefaultFont()
{
    return QApplication::font();
}

void updateComboWidget(QComboBox* pCombo, QString strText)
{
    if (!pCombo)
        return;
    const int nIndex = pCombo->findText(strText, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (nIndex >= 0)
        pCombo->setCurrentIndex(nIndex);
}

bool IsLittleEndian()
{
    return Q_BYTE_ORDER == Q_LITTLE_ENDIAN;
}
