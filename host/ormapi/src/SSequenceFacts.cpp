#include "SSequenceFacts.h"

#include "CPLClickInfo.h"
#include "CPLSequenceInfo.h"
#include "CPLSettingsFileWrapper.h"
#include "OrmFileReader.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QSet>
#include <algorithm>
#include <tuple>

namespace
{
class CText
{
    Q_DECLARE_TR_FUNCTIONS(OrmSequenceFacts)
};

const QString s_strSequenceSection = QStringLiteral("Sequence Information");
const QString s_strCTSection = QStringLiteral("CT Acquisition Parameters");

auto tied(const SSequenceFacts& s)
{
    return std::tie(s.m_strSequenceID, s.m_strSequenceFile, s.m_strInfoPath, s.m_strSubject, s.m_strDateTime, s.m_bCT, s.m_bOverview,
                    s.m_nSOLAResults, s.m_nNOVAResults, s.m_lstClicks, s.m_lstProblems);
}

bool anyClick(const SSequenceFacts& sSequence, bool (*fnTest)(const SClickFacts&))
{
    return std::any_of(sSequence.m_lstClicks.cbegin(), sSequence.m_lstClicks.cend(), fnTest);
}

/// The ID stands under its key in whatever section has it first.
QString sequenceID(const CPLSequenceInfo& objInfo)
{
    const QString strKey = QStringLiteral("Sequence");
    const QStringList lstSections = objInfo.sectionNames();
    for (const QString& strSection : lstSections)
    {
        const CPLSection* pSection = objInfo.section(strSection);
        if (pSection != nullptr && pSection->contains(strKey))
            return pSection->value(strKey);
    }
    return {};
}

/// Number of saved results of one kind; 0 where there is no index or none that can be read.
int resultCount(const QString& strInfoPath, const QString& strKind)
{
    const QString strFile = strInfoPath + QStringLiteral("XML/") + strKind + QStringLiteral(".txt");
    if (!QFileInfo::exists(strFile))
        return 0;
    CPLSettingsFileWrapper objIndex;
    objIndex.setAutoMenuNameTag(strKind + QLatin1Char('_'));
    objIndex.setMenuNameTag(QStringLiteral("MenuName"));
    objIndex.setFileNameTag(QStringLiteral("FileName"));
    return objIndex.load(strFile) == 0 ? objIndex.getMenuNames(strKind).size() : 0;
}

/// Reads one click of a sequence. Empty, or why it is left out.
QString readClick(const QString& strInfoPath, const QString& strClick, SClickFacts& sClick)
{
    QString strReason;
    const QString strRelative = strClick + QStringLiteral("/ClickInfo.txt");
    if (strClick.isEmpty() || !OrmFileReader::isBeneath(strInfoPath, strRelative, &strReason))
        return CText::tr("Click %1 of %2 was left out: it does not lie in the folder of its sequence.").arg(strClick, strInfoPath);
    CPLClickInfo objInfo;
    if (objInfo.loadClickInfo(strInfoPath + strRelative, false) != 0)
        return CText::tr("Click %1 of %2 was left out: %3").arg(strClick, strInfoPath, objInfo.lastError());
    sClick = OrmClickFacts::fromClickInfo(objInfo);
    sClick.m_strClickNumber = strClick;
    sClick.m_strFolder = strInfoPath + strClick + QLatin1Char('/');
    return {};
}
} // namespace

bool SSequenceFacts::operator==(const SSequenceFacts& other) const
{
    return tied(*this) == tied(other);
}

bool OrmSequenceFacts::hasStructuredLight(const SSequenceFacts& sSequence)
{
    return anyClick(sSequence, OrmClickFacts::hasStructuredLight);
}

bool OrmSequenceFacts::isFluorescent(const SSequenceFacts& sSequence)
{
    return anyClick(sSequence, OrmClickFacts::isFluorescent);
}

bool OrmSequenceFacts::isLuminescent(const SSequenceFacts& sSequence)
{
    return anyClick(sSequence, OrmClickFacts::isLuminescent);
}

bool OrmSequenceFacts::isTransIllumination(const SSequenceFacts& sSequence)
{
    return anyClick(sSequence, OrmClickFacts::hasSingleSpot);
}

QString OrmSequenceFacts::read(const QString& strSequenceFile, SSequenceFacts& sSequence, const std::function<bool()>& fnGoOn)
{
    sSequence = SSequenceFacts();
    const QFileInfo objFile(QDir::cleanPath(QFileInfo(strSequenceFile).absoluteFilePath()));
    sSequence.m_strSequenceFile = objFile.filePath();
    sSequence.m_strInfoPath = objFile.path() == QLatin1String("/") ? objFile.path() : objFile.path() + QLatin1Char('/');

    CPLSequenceInfo objInfo;
    if (objInfo.loadFile(sSequence.m_strSequenceFile) != 0)
        return objInfo.lastError();
    sSequence.m_strSequenceID = sequenceID(objInfo);
    if (sSequence.m_strSequenceID.isEmpty())
        return CText::tr("%1 names no sequence.").arg(sSequence.m_strSequenceFile);
    sSequence.m_strSubject = objInfo.value(s_strSequenceSection, QStringLiteral("Subject"));
    sSequence.m_strDateTime = objInfo.value(s_strSequenceSection, QStringLiteral("Date Time"));
    sSequence.m_bOverview = objInfo.value(s_strSequenceSection, QStringLiteral("Trans-illumination Overview")) == QLatin1String("1");
    sSequence.m_bCT = objInfo.isSectionPresent(s_strCTSection);

    QSet<QString> setSeen;
    const QStringList lstClicks = objInfo.getClickNumberList();
    for (const QString& strClick : lstClicks)
    {
        if (fnGoOn && !fnGoOn())
            return CText::tr("Reading %1 was cancelled.").arg(sSequence.m_strSequenceFile);
        if (setSeen.contains(strClick))
        {
            sSequence.m_lstProblems.append(
                CText::tr("Click %1 of %2 is listed twice and counts once.").arg(strClick, sSequence.m_strInfoPath));
            continue;
        }
        setSeen.insert(strClick);
        SClickFacts sClick;
        const QString strReason = readClick(sSequence.m_strInfoPath, strClick, sClick);
        if (strReason.isEmpty())
            sSequence.m_lstClicks.append(sClick);
        else
            sSequence.m_lstProblems.append(strReason);
    }
    if (sSequence.m_lstClicks.isEmpty())
        return CText::tr("Sequence %1 in %2 has no click that can be read.").arg(sSequence.m_strSequenceID, sSequence.m_strInfoPath);
    sSequence.m_nSOLAResults = resultCount(sSequence.m_strInfoPath, QStringLiteral("SOLA"));
    sSequence.m_nNOVAResults = resultCount(sSequence.m_strInfoPath, QStringLiteral("NOVA"));
    return {};
}
