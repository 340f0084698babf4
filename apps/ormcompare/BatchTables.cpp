#include "BatchTables.h"

#include "OrmCsv.h"

namespace
{
/// The lines of a table without their ends. A line end between quotation marks belongs to its field.
QVector<QByteArray> linesOf(const QByteArray& aTable)
{
    QVector<QByteArray> lstLines;
    bool bQuoted = false;
    int nStart = 0;
    for (int nAt = 0; nAt < aTable.size(); ++nAt)
    {
        bQuoted = bQuoted != (aTable.at(nAt) == '"');
        if (!bQuoted && aTable.at(nAt) == '\n')
        {
            const int nEnd = nAt > nStart && aTable.at(nAt - 1) == '\r' ? nAt - 1 : nAt;
            lstLines.append(aTable.mid(nStart, nEnd - nStart));
            nStart = nAt + 1;
        }
    }
    return lstLines;
}
} // namespace

QByteArray BatchTables::joined(const QVector<SStudyTable>& lstTables, QStringList& lstStrange)
{
    QByteArray aAll;
    QByteArray aColumns;
    for (const SStudyTable& table : lstTables)
    {
        const QVector<QByteArray> lstLines = linesOf(table.m_aTable);
        if (lstLines.isEmpty() || (!aColumns.isEmpty() && lstLines.constFirst() != aColumns))
        {
            lstStrange.append(table.m_strStudy);
            continue;
        }
        if (aColumns.isEmpty())
        {
            aColumns = lstLines.constFirst();
            aAll = "study," + aColumns + "\r\n";
        }
        QByteArray aStudy = OrmCsv::line({table.m_strStudy});
        aStudy.chop(2);
        for (int nLine = 1; nLine < lstLines.size(); ++nLine)
        {
            aAll += aStudy + ',' + lstLines.at(nLine) + "\r\n";
        }
    }
    return aAll;
}
