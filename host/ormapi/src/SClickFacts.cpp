#include "SClickFacts.h"

#include "CPLClickInfo.h"
#include "OrmNumberText.h"

#include <QDir>
#include <QFileInfo>
#include <tuple>

namespace
{
const QString s_strPhotographic = QStringLiteral("photographic image");
const QString s_strLuminescent = QStringLiteral("luminescent image");
const QString s_strStructure = QStringLiteral("structure image");
const QString s_strReference = QStringLiteral("reference image");

/// The value of a key, null when the section or the key is not there.
QString valueOf(const CPLClickInfo& objInfo, const QString& strSection, const QString& strKey)
{
    QString strValue;
    if (objInfo.getValue(strSection, strKey, &strValue) != 0)
        return {};
    // A key that is there without a value differs from one that is not there.
    return strValue.isNull() ? QStringLiteral("") : strValue;
}

/// A decimal number above 0 that fills the whole text; otherwise 0.
double positiveNumber(const QString& strText)
{
    double fValue = 0.0;
    return OrmNumberText::toDouble(strText, fValue) && fValue > 0.0 ? fValue : 0.0;
}

QString insideFolder(const SClickFacts& sClick, const QString& strFile)
{
    if (strFile.isEmpty() || sClick.m_strFolder.isEmpty())
        return {};
    // Both paths are compared with their links resolved, so that neither ".." nor a link leads out of the click's folder.
    const QString strFolder = QFileInfo(sClick.m_strFolder).canonicalFilePath();
    const QString strPath = QFileInfo(QDir(strFolder), strFile).canonicalFilePath();
    if (strFolder.isEmpty() || !strPath.startsWith(strFolder + QLatin1Char('/')) || !QFileInfo(strPath).isFile())
        return {};
    return strPath;
}

auto tied(const SClickFacts& s)
{
    return std::tie(s.m_strClickNumber, s.m_strFolder, s.m_bPhotographic, s.m_bStructure, s.m_bReference, s.m_bLuminescent,
                    s.m_strImageSubtype, s.m_strSpotX, s.m_strSpotY, s.m_strLuminescentFOV, s.m_strPhotographicFOV,
                    s.m_strPhotographicImageFile, s.m_strLuminescentImageFile, s.m_strEmissionFilter, s.m_strExcitationFilter,
                    s.m_strExposureTime);
}
} // namespace

bool SClickFacts::operator==(const SClickFacts& other) const
{
    return tied(*this) == tied(other);
}

SClickFacts OrmClickFacts::fromClickInfo(const CPLClickInfo& objInfo)
{
    const QString strFOV = QStringLiteral("Field of View");
    const QString strImageFile = QStringLiteral("Image File");
    SClickFacts sClick;
    sClick.m_bPhotographic = objInfo.isSectionPresent(s_strPhotographic);
    sClick.m_bStructure = objInfo.isSectionPresent(s_strStructure);
    sClick.m_bReference = objInfo.isSectionPresent(s_strReference);
    sClick.m_bLuminescent = objInfo.isSectionPresent(s_strLuminescent);
    sClick.m_strImageSubtype = valueOf(objInfo, s_strLuminescent, QStringLiteral("Image Subtype"));
    sClick.m_strSpotX = valueOf(objInfo, s_strLuminescent, QStringLiteral("FL x-spot"));
    sClick.m_strSpotY = valueOf(objInfo, s_strLuminescent, QStringLiteral("FL y-spot"));
    sClick.m_strLuminescentFOV = valueOf(objInfo, s_strLuminescent, strFOV);
    sClick.m_strPhotographicFOV = valueOf(objInfo, s_strPhotographic, strFOV);
    sClick.m_strPhotographicImageFile = valueOf(objInfo, s_strPhotographic, strImageFile);
    sClick.m_strLuminescentImageFile = valueOf(objInfo, s_strLuminescent, strImageFile);
    sClick.m_strEmissionFilter = valueOf(objInfo, s_strLuminescent, QStringLiteral("Emission Filter"));
    sClick.m_strExcitationFilter = valueOf(objInfo, s_strLuminescent, QStringLiteral("Excitation Filter"));
    sClick.m_strExposureTime = valueOf(objInfo, s_strLuminescent, QStringLiteral("Exposure Time"));
    return sClick;
}

bool OrmClickFacts::hasStructuredLight(const SClickFacts& sClick)
{
    return sClick.m_bStructure && sClick.m_bReference && sClick.m_bPhotographic;
}

bool OrmClickFacts::isFluorescent(const SClickFacts& sClick)
{
    return sClick.m_bLuminescent && sClick.m_strImageSubtype.compare(QLatin1String("fluorescent"), Qt::CaseInsensitive) == 0;
}

bool OrmClickFacts::isLuminescent(const SClickFacts& sClick)
{
    return sClick.m_bLuminescent && !isFluorescent(sClick);
}

bool OrmClickFacts::hasSingleSpot(const SClickFacts& sClick)
{
    // A list of spots does not read as one number, so several spots count as none.
    return sClick.m_bLuminescent && positiveNumber(sClick.m_strSpotX) > 0.0 && positiveNumber(sClick.m_strSpotY) > 0.0;
}

double OrmClickFacts::fieldOfView(const SClickFacts& sClick)
{
    const double fLuminescent = positiveNumber(sClick.m_strLuminescentFOV);
    return fLuminescent > 0.0 ? fLuminescent : positiveNumber(sClick.m_strPhotographicFOV);
}

QString OrmClickFacts::photographFile(const SClickFacts& sClick)
{
    return insideFolder(sClick, sClick.m_strPhotographicImageFile);
}

QString OrmClickFacts::luminescentFile(const SClickFacts& sClick)
{
    return insideFolder(sClick, sClick.m_strLuminescentImageFile);
}
