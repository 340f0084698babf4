#include "SequenceKind.h"

#include "CPLClickInfo.h"
#include "CPLSection.h"
#include "CPLSequenceInfo.h"
#include "OrmGlobalConstants.h"

#include <QFileInfo>
#include <QSet>
#include <QStringList>

namespace
{
/// Fewer images than these make no sequence for the tool.
constexpr int s_nFewestClicks = 2;

const QString& s_strPhotographic = OrmGlobalConstants::g_strImageSections[0];
const QString& s_strLuminescent = OrmGlobalConstants::g_strImageSections[1];
const QString& s_strReference = OrmGlobalConstants::g_strImageSections[6];
const QString& s_strStructure = OrmGlobalConstants::g_strImageSections[7];
const QString& s_strImageSubtype = PLConstants::strClickInfoKeys[27];
} // namespace

QString SequenceKind::kindOf(const SFlags& sFlags)
{
    if (!sFlags.m_bStructure && !sFlags.m_bCT)
    {
        return QString();
    }
    const bool bLuminescentOnly = sFlags.m_bLuminescent && !sFlags.m_bFluorescent;
    const bool bFluorescentOnly = sFlags.m_bFluorescent && !sFlags.m_bLuminescent;
    if (bLuminescentOnly && !sFlags.m_bMultiSpot && !sFlags.m_bSpot)
    {
        return QStringLiteral("SOLA");
    }
    if (bFluorescentOnly && !sFlags.m_bMultiSpot && sFlags.m_bSpot)
    {
        return QStringLiteral("NOVA");
    }
    return QString();
}

void SequenceKind::addClick(SFlags& sFlags, const CPLClickInfo& objClick)
{
    if (objClick.isSectionPresent(s_strStructure) && objClick.isSectionPresent(s_strReference) &&
        objClick.isSectionPresent(s_strPhotographic))
    {
        sFlags.m_bStructure = true;
    }
    if (!objClick.isSectionPresent(s_strLuminescent))
    {
        return;
    }
    QString strSubtype;
    const bool bSubtype = objClick.getValue(s_strLuminescent, s_strImageSubtype, &strSubtype) == 0;
    if (bSubtype && strSubtype.compare(PLConstants::FLUORESCENT_LUMINESCENT_TAG, Qt::CaseInsensitive) == 0)
    {
        sFlags.m_bFluorescent = true;
    }
    else
    {
        sFlags.m_bLuminescent = true;
    }
    QString strX;
    QString strY;
    if (objClick.getValue(s_strLuminescent, QStringLiteral("FL x-spot"), &strX) == 0 &&
        objClick.getValue(s_strLuminescent, QStringLiteral("FL y-spot"), &strY) == 0)
    {
        addSpot(sFlags, strX, strY);
    }
}

void SequenceKind::addSpot(SFlags& sFlags, const QString& strX, const QString& strY)
{
    const QLatin1Char chSeparator(';');
    QString strFirstX = strX;
    QString strFirstY = strY;
    if (strX.contains(chSeparator))
    {
        sFlags.m_bMultiSpot = true;
        strFirstX = strX.section(chSeparator, 0, 0);
        strFirstY = strY.section(chSeparator, 0, 0);
    }
    if (strFirstX.toFloat() > 0.0F && strFirstY.toFloat() > 0.0F)
    {
        sFlags.m_bSpot = true;
    }
}

bool SequenceKind::hasCTSection(CPLSequenceInfo& objSequence)
{
    if (!objSequence.isSectionPresent(PLConstants::CT_ACQUISITION_SECTION_KEY))
    {
        return false;
    }
    const CPLSection* pSection = objSequence[PLConstants::CT_ACQUISITION_SECTION_KEY];
    QString strName;
    return pSection != nullptr && pSection->getSectionName(&strName, false) == 0 && !strName.isNull();
}

QString SequenceKind::ofFile(const QString& strSequenceFile)
{
    CPLSequenceInfo objSequence;
    if (objSequence.loadFile(strSequenceFile) != 0)
    {
        return QString();
    }
    const QStringList lstClicks = objSequence.getClickNumberList();
    if (lstClicks.size() < s_nFewestClicks)
    {
        return QString();
    }
    SFlags sFlags;
    sFlags.m_bCT = hasCTSection(objSequence);
    const QString strFolder = QFileInfo(strSequenceFile).absolutePath() + QLatin1Char('/');
    QSet<QString> setSeen; // a click that is listed a hundred thousand times says nothing new after the first
    for (const QString& strClick : lstClicks)
    {
        if (setSeen.contains(strClick))
        {
            continue;
        }
        setSeen.insert(strClick);
        CPLClickInfo objClick;
        objClick.loadClickInfo(strFolder + strClick + QStringLiteral("/ClickInfo.txt"), false);
        addClick(sFlags, objClick);
    }
    return kindOf(sFlags);
}
