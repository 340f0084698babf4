#include "CompareRun.h"

#include <QListWidget>
#include <QPushButton>
#include <QSet>

bool CCompareRun::isLoaded(const QString& strKey) const
{
    return m_pView->getLoadedResult().contains(strKey);
}

void CCompareRun::listSequence(int nRow)
{
    auto* pSequences = widget<QListWidget>("m_pSequenceNameLW");
    pSequences->setCurrentRow(nRow);
    QMetaObject::invokeMethod(pSequences, "itemClicked", Q_ARG(QListWidgetItem*, pSequences->item(nRow)));
}

QVector<CCompareRun::SWantedResult> CCompareRun::wantedResults()
{
    QVector<QPair<QString, QRegularExpression>> lstPatterns;
    for (const QString& strPattern : qAsConst(m_options.m_lstPatterns))
    {
        lstPatterns.append({strPattern, CompareOptions::pattern(strPattern)});
    }
    QSet<QString> lstMatched;
    QVector<SWantedResult> lstWanted;
    const auto* pSequences = widget<QListWidget>("m_pSequenceNameLW");
    const auto* pResults = widget<QListWidget>("m_pResultWidget");
    for (int nSequence = 0; nSequence < pSequences->count(); ++nSequence)
    {
        listSequence(nSequence);
        for (int nResult = 0; nResult < pResults->count(); ++nResult)
        {
            const QString strText = pSequences->item(nSequence)->text() + QLatin1Char('/') + pResults->item(nResult)->text();
            bool bWanted = lstPatterns.isEmpty();
            for (const auto& [strPattern, expression] : qAsConst(lstPatterns))
            {
                if (expression.match(strText).hasMatch())
                {
                    lstMatched.insert(strPattern);
                    bWanted = true;
                }
            }
            if (bWanted)
            {
                lstWanted.append({nSequence, nResult});
            }
        }
    }
    for (const QString& strPattern : qAsConst(m_options.m_lstPatterns))
    {
        if (!lstMatched.contains(strPattern))
        {
            fail(QStringLiteral("No saved result matches \"%1\".").arg(strPattern));
        }
    }
    return lstWanted;
}

void CCompareRun::loadResults()
{
    // Listing a sequence takes results of its other kind out of the view. So all are listed before the first is loaded, and then only
    // those with something to load.
    const auto* pSequences = widget<QListWidget>("m_pSequenceNameLW");
    const auto* pResults = widget<QListWidget>("m_pResultWidget");
    int nListed = -1;
    for (const SWantedResult& wanted : wantedResults())
    {
        if (wanted.m_nSequence != nListed)
        {
            listSequence(wanted.m_nSequence);
            nListed = wanted.m_nSequence;
        }
        const QString strSequence = pSequences->item(wanted.m_nSequence)->text();
        if (QListWidgetItem* pResult = pResults->item(wanted.m_nResult))
        {
            loadResult(pResult, strSequence.section(QLatin1Char(' '), 0, 0), strSequence.section(QLatin1Char(' '), 1));
        }
    }
}

void CCompareRun::loadResult(QListWidgetItem* pResult, const QString& strKind, const QString& strSequence)
{
    const QString strName = pResult->text();
    const QString strKey = strSequence + strName;
    auto* pResults = widget<QListWidget>("m_pResultWidget");
    pResults->setCurrentItem(pResult, QItemSelectionModel::ClearAndSelect);
    QMetaObject::invokeMethod(pResults, "itemClicked", Q_ARG(QListWidgetItem*, pResult));

    const int nBefore = m_pView->getLoadedResult().size();
    m_objTrace = SLoadTrace();
    m_objClock.start();
    widget<QPushButton>("m_pLoadButton")->click();
    const double fPress = milliseconds(m_objClock);
    paint();

    if (m_pView->getLoadedResult().size() > nBefore && isLoaded(strKey))
    {
        m_mapTimes.insert(strKey, {m_objTrace.m_fReadTo - m_objTrace.m_fReadFrom, fPress});
        say(QStringLiteral("%1 %2/%3: loaded in %4 ms").arg(strKind, strSequence, strName).arg(fPress, 0, 'f', 0));
        return;
    }
    const QString strReason = failureReason();
    if (m_options.m_lstPatterns.isEmpty() && strReason.contains(QLatin1String("is not compatible with the Selected Unit")))
    {
        say(QStringLiteral("%1 %2/%3: left out, it has another unit").arg(strKind, strSequence, strName));
        return;
    }
    m_objReport.m_lstFailed.append({strKind, strSequence, strName, strReason});
    fail(QStringLiteral("%1 %2/%3: %4").arg(strKind, strSequence, strName, strReason));
}

QString CCompareRun::failureReason() const
{
    if (!m_objTrace.m_lstRefusals.isEmpty())
    {
        return m_objTrace.m_lstRefusals.constLast();
    }
    for (int nAt = m_objTrace.m_lstTexts.size() - 1; nAt >= 0; --nAt)
    {
        const QString& strText = m_objTrace.m_lstTexts.at(nAt);
        if (strText.startsWith(QLatin1String("Unable")) || strText.startsWith(QLatin1String("Data mismatch")))
        {
            return strText;
        }
    }
    return m_objTrace.m_strBox;
}
