#include "COrmXYPlotTable.h"

#include "OrmCsv.h"

#include <QStringList>

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

namespace COrmXYPlotTable
{
QByteArray csv(const QString& strXName, const QString& strYName, const QVector<SColumn>& vecColumns)
{
    // By the x value, and among equal ones by how many of the line came before.
    std::map<std::pair<double, int>, QStringList> mapRows;
    QStringList lstHead = {strXName};
    for (int nColumn = 0; nColumn < vecColumns.size(); ++nColumn)
    {
        const SColumn& sColumn = vecColumns.at(nColumn);
        lstHead.append(strYName.isEmpty() ? sColumn.m_strName : sColumn.m_strName + QStringLiteral(" (") + strYName + QLatin1Char(')'));
        std::map<double, int> mapSeen;
        for (int i = 0; i < std::min(sColumn.m_vecX.size(), sColumn.m_vecY.size()); ++i)
        {
            const double fX = sColumn.m_vecX.at(i);
            if (!std::isfinite(fX))
                continue;
            QStringList& lstFields = mapRows[{fX, mapSeen[fX]++}];
            while (lstFields.size() < nColumn)
                lstFields.append(QString());
            lstFields.append(OrmCsv::number(sColumn.m_vecY.at(i)));
        }
    }
    QByteArray byTable = OrmCsv::line(lstHead);
    for (auto& [pairPlace, lstFields] : mapRows)
    {
        while (lstFields.size() < vecColumns.size())
            lstFields.append(QString());
        lstFields.prepend(OrmCsv::number(pairPlace.first));
        byTable += OrmCsv::line(lstFields);
    }
    return byTable;
}
} // namespace COrmXYPlotTable
