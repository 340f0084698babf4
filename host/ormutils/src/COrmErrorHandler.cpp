#include "COrmErrorHandler.h"

#include "COrmMessageBox.h"
#include "COrmUtilityFns.h"

#include <QCoreApplication>

namespace
{
COrmErrorHandler::FnResponder& responder()
{
    static COrmErrorHandler::FnResponder s_fnResponder;
    return s_fnResponder;
}
} // namespace

void COrmErrorHandler::errorMessage(QWidget* pParent, tag_estatus eStatus, QString strExtra)
{
    QString strText = statusText(eStatus);
    if (!strExtra.isEmpty())
        strText += QLatin1Char('\n') + strExtra;
    const FnResponder fnResponder = responder(); // a copy: it may replace itself
    if (fnResponder)
        fnResponder(SErrorRequest{pParent, eStatus, strExtra, strText});
    else
        COrmMessageBox::critical(pParent, COrmUtilityFns::getAppName(), strText, int(QMessageBox::Ok) | int(QMessageBox::Default));
}

QString COrmErrorHandler::statusText(tag_estatus eStatus)
{
    switch (int(eStatus))
    {
    case eStatusFileNotWritable:
        return QCoreApplication::translate("COrmErrorHandler", "The file cannot be written.");
    case eStatusFileNotReadable:
        return QCoreApplication::translate("COrmErrorHandler", "The file cannot be read.");
    default:
        return QCoreApplication::translate("COrmErrorHandler", "The operation failed (status %1).").arg(int(eStatus));
    }
}

void COrmErrorHandler::setResponder(FnResponder fnResponder)
{
    responder() = std::move(fnResponder);
}
