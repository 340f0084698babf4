#include "ResultsTable.h"

namespace ResultsTable
{

double number(const QStringList& lstKeys, const QStringList& lstValues, const QStringList& lstWanted)
{
    for (const QString& strWanted : lstWanted)
    {
        const int nRow = lstKeys.indexOf(strWanted);
        if (nRow >= 0)
        {
            return lstValues.value(nRow).toDouble();
        }
    }
    return 0.0;
}

} // namespace ResultsTable
