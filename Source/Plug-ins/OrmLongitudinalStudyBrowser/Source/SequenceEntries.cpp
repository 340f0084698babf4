#include "SequenceEntries.h"

#include "COrmSequenceDataset.h"

#include <QSet>

namespace SequenceEntries
{
SFlags flagsOf(const COrmSequenceDataset& objSequence)
{
    SFlags sFlags;
    sFlags.m_bTomographic = objSequence.isSLASequence() || objSequence.isCTSequence(false);
    sFlags.m_bLuminescent = objSequence.isLuminescentSequence();
    sFlags.m_bFluorescent = objSequence.isFluorescentSequence();
    sFlags.m_bTransIllumination = objSequence.isTransIlluminationSequence();
    sFlags.m_bOverview = objSequence.isTransIllumOverviewResultSequence();
    return sFlags;
}

bool isSOLA(const SFlags& sFlags)
{
    return sFlags.m_bTomographic && sFlags.m_bLuminescent;
}

bool isNOVA(const SFlags& sFlags)
{
    return sFlags.m_bTomographic && sFlags.m_bFluorescent && sFlags.m_bTransIllumination && !sFlags.m_bOverview;
}

QString prefixOf(int nKind)
{
    return nKind == 1 ? QStringLiteral("NOVA ") : QStringLiteral("SOLA ");
}

SSelection selectionOf(const QString& strEntryText)
{
    const QString strSOLA = prefixOf(0);
    const QString strNOVA = prefixOf(1);
    SSelection sSelection;
    QString strText = strEntryText;
    if (strText.contains(strSOLA))
    {
        sSelection.m_nKind = 0;
        sSelection.m_strKind = QStringLiteral("SOLA");
        strText.remove(strSOLA);
        sSelection.m_strSequenceID = strText.trimmed();
    }
    // Looked for in what is left, so that an ID that names the other kind decides.
    if (strText.contains(strNOVA))
    {
        sSelection.m_nKind = 1;
        sSelection.m_strKind = QStringLiteral("NOVA");
        strText.remove(strNOVA);
        sSelection.m_strSequenceID = strText.trimmed();
    }
    return sSelection;
}

void appendMissing(QList<QString>& lstTarget, const QList<QString>& lstSource)
{
    QSet<QString> setKnown(lstTarget.cbegin(), lstTarget.cend());
    for (const QString& strEntry : lstSource)
    {
        if (!setKnown.contains(strEntry))
        {
            setKnown.insert(strEntry);
            lstTarget.append(strEntry);
        }
    }
}
} // namespace SequenceEntries
