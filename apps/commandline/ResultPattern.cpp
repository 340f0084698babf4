#include "ResultPattern.h"

QRegularExpression ResultPattern::expression(const QString& strPattern)
{
    QString strExpression;
    for (int nAt = 0; nAt < strPattern.size(); ++nAt)
    {
        const QChar character = strPattern.at(nAt);
        // A bracket right behind the opening one belongs to the set.
        const int nClosing = strPattern.indexOf(QLatin1Char(']'), nAt + 2);
        if (character == QLatin1Char('*'))
        {
            strExpression += QStringLiteral(".*");
        }
        else if (character == QLatin1Char('?'))
        {
            strExpression += QLatin1Char('.');
        }
        else if (character == QLatin1Char('[') && nClosing > 0)
        {
            QString strSet = strPattern.mid(nAt + 1, nClosing - nAt - 1);
            const bool bExcept = strSet.startsWith(QLatin1Char('!')) && strSet.size() > 1;
            strSet.remove(0, bExcept ? 1 : 0);
            strSet.replace(QLatin1Char('\\'), QStringLiteral("\\\\"))
                .replace(QLatin1Char('['), QStringLiteral("\\["))
                .replace(QLatin1Char(']'), QStringLiteral("\\]"))
                .replace(QLatin1Char('^'), QStringLiteral("\\^"));
            strExpression += (bExcept ? QStringLiteral("[^") : QStringLiteral("[")) + strSet + QLatin1Char(']');
            nAt = nClosing;
        }
        else
        {
            strExpression += QRegularExpression::escape(QString(character));
        }
    }
    return QRegularExpression(QRegularExpression::anchoredPattern(strExpression), QRegularExpression::DotMatchesEverythingOption);
}
