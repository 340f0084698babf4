#include "OrmNaturalOrder.h"

namespace
{
bool isDigit(QChar ch)
{
    return ch >= QLatin1Char('0') && ch <= QLatin1Char('9');
}

/// Takes the run of digits at @p nPlace out of the text, without its leading zeros.
QStringRef takeNumber(const QString& strText, int& nPlace)
{
    while (nPlace < strText.size() && strText.at(nPlace) == QLatin1Char('0'))
        ++nPlace;
    const int nStart = nPlace;
    while (nPlace < strText.size() && isDigit(strText.at(nPlace)))
        ++nPlace;
    return strText.midRef(nStart, nPlace - nStart);
}
} // namespace

int OrmNaturalOrder::compare(const QString& strLeft, const QString& strRight)
{
    int nLeft = 0;
    int nRight = 0;
    while (nLeft < strLeft.size() && nRight < strRight.size())
    {
        if (isDigit(strLeft.at(nLeft)) && isDigit(strRight.at(nRight)))
        {
            const QStringRef strLeftNumber = takeNumber(strLeft, nLeft);
            const QStringRef strRightNumber = takeNumber(strRight, nRight);
            if (strLeftNumber.size() != strRightNumber.size())
                return strLeftNumber.size() < strRightNumber.size() ? -1 : 1;
            const int nOrder = strLeftNumber.compare(strRightNumber);
            if (nOrder != 0)
                return nOrder;
            continue;
        }
        const QChar chLeft = strLeft.at(nLeft++).toCaseFolded();
        const QChar chRight = strRight.at(nRight++).toCaseFolded();
        if (chLeft != chRight)
            return chLeft < chRight ? -1 : 1;
    }
    const int nRestLeft = strLeft.size() - nLeft;
    const int nRestRight = strRight.size() - nRight;
    if (nRestLeft != nRestRight)
        return nRestLeft < nRestRight ? -1 : 1;
    return strLeft.compare(strRight); // "M01" and "M1" have an order, too
}
