#include "CompareSettings.h"

#include "CPLClickInfo.h"
#include "CPLSequenceInfo.h"
#include "CPLSettingsFileWrapper.h"
#include "FuzzTarget.h"
#include "OrmSettingsText.h"
#include "PlainSettings.h"
#include "PlainText.h"
#include "SClickFacts.h"

#include <algorithm>
#include <cctype>

namespace
{
constexpr long long nAllowedMemory = 32LL * 1024 * 1024; ///< beyond what grows with the text
constexpr std::size_t nMostListed = 10000;

using FuzzTarget::demand;
using PlainSettings::SText;

std::string decoded(const std::string& strBytes)
{
    return QString::fromUtf8(strBytes.data(), static_cast<int>(strBytes.size())).toStdString();
}

const std::string* valueOf(const SText& objPlain, const std::string& strSection, const std::string& strKey)
{
    const PlainSettings::SSection* pSection = objPlain.section(strSection);
    return pSection ? pSection->value(strKey) : nullptr;
}

void compareSequence(const QString& strFile, const SText& objPlain)
{
    CPLSequenceInfo objInfo;
    demand((objInfo.loadFile(strFile) == 0) == objPlain.m_bReadable, "whether the sequence information can be read");
    const QStringList lstClicks = objInfo.getClickNumberList();
    const std::vector<std::string> vecPlain = PlainSettings::clickNumbers(objPlain);
    demand(lstClicks.size() == static_cast<int>(vecPlain.size()), "the number of clicks");
    for (int i = 0; i < lstClicks.size(); ++i)
        demand(lstClicks.at(i).toStdString() == vecPlain[static_cast<std::size_t>(i)], "click " + std::to_string(i));
    for (const PlainSettings::SSection& objSection : objPlain.m_vecSections)
    {
        const QString strSection = QString::fromStdString(objSection.m_strName);
        for (const auto& [strKey, strValue] : objSection.m_vecKeys)
            demand(objInfo.value(strSection, QString::fromStdString(strKey)).toStdString() == strValue, "value of " + strKey);
    }
}

double positive(const std::string* pText)
{
    double fValue = 0.0;
    return pText && PlainText::decimalNumber(*pText, fValue) && fValue > 0.0 ? fValue : 0.0;
}

void compareClick(const QString& strFile, const SText& objPlain)
{
    CPLClickInfo objInfo;
    demand((objInfo.loadClickInfo(strFile, false) == 0) == objPlain.m_bReadable, "whether the click information can be read");
    const SClickFacts sFacts = OrmClickFacts::fromClickInfo(objInfo);
    const std::string strLuminescent = "luminescent image";
    const std::string* pSubtype = valueOf(objPlain, strLuminescent, "Image Subtype");
    const bool bLuminescent = objPlain.section(strLuminescent) != nullptr;
    std::string strSubtype = pSubtype ? *pSubtype : "";
    std::transform(strSubtype.begin(), strSubtype.end(), strSubtype.begin(), [](unsigned char c) { return std::tolower(c); });
    demand(OrmClickFacts::isFluorescent(sFacts) == (bLuminescent && strSubtype == "fluorescent"), "whether the click is fluorescent");
    demand(OrmClickFacts::hasStructuredLight(sFacts) ==
               (objPlain.section("structure image") && objPlain.section("reference image") && objPlain.section("photographic image")),
           "whether the click has structured light");
    const bool bSpot =
        positive(valueOf(objPlain, strLuminescent, "FL x-spot")) > 0.0 && positive(valueOf(objPlain, strLuminescent, "FL y-spot")) > 0.0;
    demand(OrmClickFacts::hasSingleSpot(sFacts) == (bLuminescent && bSpot), "whether the click has a single spot");
    const double fOwn = positive(valueOf(objPlain, strLuminescent, "Field of View"));
    const double fView = fOwn > 0.0 ? fOwn : positive(valueOf(objPlain, "photographic image", "Field of View"));
    demand(OrmClickFacts::fieldOfView(sFacts) == fView, "field of view");

    const std::string* pFirst = nullptr;
    for (const PlainSettings::SSection& objSection : objPlain.m_vecSections)
        pFirst = pFirst ? pFirst : objSection.value("Count");
    QString strValue = QStringLiteral("before");
    demand((CPLClickInfo::obtainValueFromClickInfoFile(strFile, QStringLiteral("Count"), &strValue) == 0) == (pFirst != nullptr) &&
               strValue.toStdString() == (pFirst ? *pFirst : "before"),
           "a key from the first section that has it");
}

/// Whether a name stays inside its folder, whatever the folders that it names are.
bool staysInside(const std::string& strName)
{
    int nDepth = 0;
    std::string strRest = strName + "/";
    while (!strRest.empty())
    {
        const std::string strPart = strRest.substr(0, strRest.find('/'));
        strRest.erase(0, strPart.size() + 1);
        nDepth += strPart == ".." ? -1 : strPart.empty() || strPart == "." ? 0 : 1;
        if (nDepth < 0)
            return false;
    }
    return nDepth > 0 && strName[0] != '/' && strName.find('\\') == std::string::npos && strName.find("://") == std::string::npos;
}

/// A name about which there can be no doubt.
bool isPlainName(const std::string& strName)
{
    return !strName.empty() && std::isalpha(static_cast<unsigned char>(strName[0])) != 0 &&
           std::all_of(strName.begin(), strName.end(),
                       [](unsigned char c) { return c < 0x80 && (std::isalnum(c) != 0 || c == '_' || c == '.'); });
}

void compareIndex(const QString& strFile, const SText& objPlain)
{
    CPLSettingsFileWrapper objIndex;
    objIndex.setAutoMenuNameTag(QStringLiteral("SOLA_"));
    objIndex.setMenuNameTag(QStringLiteral("MenuName"));
    objIndex.setFileNameTag(QStringLiteral("FileName"));
    demand((objIndex.load(strFile) == 0) == objPlain.m_bReadable, "whether the index can be read");
    std::vector<std::pair<std::string, const PlainSettings::SSection*>> vecListed;
    for (const PlainSettings::SSection& objSection : objPlain.m_vecSections)
    {
        const std::string* pName = objSection.value("MenuName");
        const std::string strName = pName && !pName->empty()                       ? *pName
                                    : objSection.m_strName.substr(0, 5) == "SOLA_" ? objSection.m_strName
                                                                                   : "";
        if (!strName.empty() && vecListed.size() < nMostListed)
            vecListed.emplace_back(strName, &objSection);
    }
    const QStringList lstNames = objIndex.getMenuNames(QStringLiteral("SOLA"));
    demand(lstNames.size() == static_cast<int>(vecListed.size()), "the number of listed results");
    for (int i = 0; i < lstNames.size(); ++i)
    {
        const std::string& strName = vecListed[static_cast<std::size_t>(i)].first;
        demand(lstNames.at(i).toStdString() == strName, "listed result " + strName);
        const auto itFirst =
            std::find_if(vecListed.begin(), vecListed.end(), [&](const auto& objListed) { return objListed.first == strName; });
        const std::string* pGiven = itFirst->second->value("FileName");
        const std::string strGiven = pGiven ? *pGiven : "";
        const std::string strGot = objIndex.getFileNameForMenuName(lstNames.at(i), QStringLiteral("none")).toStdString();
        demand(strGot.empty() || (strGot == strGiven && staysInside(strGot)), "file name " + strGot);
        demand(strGot == strGiven || strGiven == "none" || !isPlainName(strGiven), "a sound file name was dropped: " + strGiven);
    }
}

void compareSection(const CPLSection& objRead, const PlainSettings::SSection& objPlain)
{
    demand(objRead.name().toStdString() == objPlain.m_strName, "section [" + objPlain.m_strName + "]");
    const QStringList lstKeys = objRead.keys();
    demand(lstKeys.size() == static_cast<int>(objPlain.m_vecKeys.size()) && objRead.keyCount() == lstKeys.size(),
           "the number of keys of [" + objPlain.m_strName + "]");
    for (int i = 0; i < lstKeys.size(); ++i)
    {
        const auto& [strKey, strValue] = objPlain.m_vecKeys[static_cast<std::size_t>(i)];
        demand(lstKeys.at(i).toStdString() == strKey, "key " + strKey);
        QString strRead;
        demand(objRead.contains(lstKeys.at(i)) && objRead.getValue(lstKeys.at(i), &strRead) == 0 && strRead.toStdString() == strValue,
               "value of " + strKey);
    }
}
} // namespace

namespace CompareSettings
{
bool textBothWays(const std::string& strText)
{
    const PlainSettings::SText objPlain = PlainSettings::read(strText, decoded);
    OrmSettingsText objRead;
    bool bRead = false;
    {
        const CMemoryBound objBound(nAllowedMemory + 100LL * static_cast<long long>(strText.size()));
        bRead = objRead.parse(QByteArray(strText.data(), static_cast<int>(strText.size())), QStringLiteral("input"));
    }
    demand(bRead == objPlain.m_bReadable,
           bRead ? "read, but should be refused" : "refused, but should be read: " + objRead.lastError().toStdString());
    demand(bRead == objRead.lastError().isEmpty(), "a refusal without a reason, or a reason without one");
    demand(objRead.sectionCount() == static_cast<int>(objPlain.m_vecSections.size()), "the number of sections");
    for (int i = 0; i < objRead.sectionCount(); ++i)
    {
        const PlainSettings::SSection& objSection = objPlain.m_vecSections[static_cast<std::size_t>(i)];
        compareSection(objRead.sectionAt(i), objSection);
        demand(objRead.section(objRead.sectionAt(i).name()) == &objRead.sectionAt(i), "section by name [" + objSection.m_strName + "]");
    }
    return bRead;
}

bool filesBothWays(const std::string& strText)
{
    const SText objPlain = PlainSettings::read(strText, decoded);
    const QString strFile = FuzzTarget::fileWith(QByteArray(strText.data(), static_cast<int>(strText.size())));
    const CMemoryBound objBound(nAllowedMemory + 200LL * static_cast<long long>(strText.size()));
    compareSequence(strFile, objPlain);
    compareClick(strFile, objPlain);
    compareIndex(strFile, objPlain);
    return objPlain.m_bReadable;
}
} // namespace CompareSettings
