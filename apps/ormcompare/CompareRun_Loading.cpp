#include "CompareRun.h"

#include "ResultPattern.h"

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

bool CCompareRun::isWanted(const SResultKey& key, QSet<QString>& setMatched) const
{
    const QString strText = key.text();
    if (!m_options.m_lstKeys.isEmpty())
    {
        setMatched.insert(strText);
        return m_setKeys.contains(strText);
    }
    bool bWanted = m_options.m_lstPatterns.isEmpty();
    for (const auto& [strPattern, expression] : m_lstExpressions)
    {
        if (expression.match(strText).hasMatch())
        {
            setMatched.insert(strPattern);
            bWanted = true;
        }
    }
    return bWanted;
}

void CCompareRun::tellMissing(const QSet<QString>& setMatched)
{
    for (const SResultKey& key : qAsConst(m_options.m_lstKeys))
    {
        if (!setMatched.contains(key.text()))
        {
            fail(QStringLiteral("The picture shows %1, which is not under the folders.").arg(key.text()));
        }
    }
    for (const auto& [strPattern, expression] : qAsConst(m_lstExpressions))
    {
        if (!setMatched.contains(strPattern))
        {
            fail(QStringLiteral("No saved result matches \"%1\".").arg(strPattern));
        }
    }
}

QVector<CCompareRun::SWantedResult> CCompareRun::wantedResults()
{
    for (const QString& strPattern : qAsConst(m_options.m_lstPatterns))
    {
        m_lstExpressions.append({strPattern, ResultPattern::expression(strPattern)});
    }
    for (const SResultKey& key : m_options.m_lstKeys + m_options.m_lstTried)
    {
        m_setKeys.insert(key.text());
    }
    QSet<QString> setMatched;
    QVector<SWantedResult> lstWanted;
    const auto* pSequences = widget<QListWidget>("m_pSequenceNameLW");
    const auto* pResults = widget<QListWidget>("m_pResultWidget");
    for (int nSequence = 0; nSequence < pSequences->count(); ++nSequence)
    {
        listSequence(nSequence);
        const QString strListed = pSequences->item(nSequence)->text();
        const QString strKind = strListed.section(QLatin1Char(' '), 0, 0);
        const QString strSequence = strListed.section(QLatin1Char(' '), 1);
        bool bAsked = m_lstExpressions.isEmpty() && m_options.m_lstKeys.isEmpty();
        for (int nResult = 0; nResult < pResults->count(); ++nResult)
        {
            if (isWanted({strKind, strSequence, pResults->item(nResult)->text()}, setMatched))
            {
                lstWanted.append({nSequence, nResult});
                bAsked = true;
            }
        }
        if (bAsked)
        {
            m_lstAsked.append({strKind, strSequence});
        }
    }
    tellMissing(setMatched);
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
    m_lstRefused.append({strKind, strSequence, strName});
    const QString strReason = failureReason();
    if (m_options.m_lstPatterns.isEmpty() && strReason.contains(QLatin1String("is not compatible with the Selected Unit")))
    {
        say(QStringLiteral("%1 %2/%3: left out, it has another unit").arg(strKind, strSequence, strName));
        return;
    }
    m_objReport.m_lstFailed.append({strKind, strSequence, strName, strReason, {}});
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
