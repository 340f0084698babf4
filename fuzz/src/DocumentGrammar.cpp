#include "DocumentGrammar.h"

#include "FuzzInput.h"

#include <cstdio>
#include <cstring>
#include <utility>
#include <vector>

namespace
{
using Keys = std::vector<std::pair<std::string, std::string>>;

/// Counts as files claim them: beside the true one those around it, those that wrap when multiplied, and what is no count.
const std::vector<std::string> vecClaims = {
    "0",         "-1",         "1",          "2",         "3",          "65536",    "46341", "2147483647",  "-4",
    "715827883", "2147483648", "1431655766", "536870913", "4294967296", "25000000", "+3",    " 3",          "3 ",
    "3.0",       "1e3",        "0x10",       "007",       "",           "\xD9\xA3", "-0",    "-2147483648", "99999999999999999999",
    "1000000",   "100000"};

const std::vector<std::uint32_t> vecHardFloats = {0x3F800000, 0x00000000, 0x80000000, 0x7FC00000, 0x7F800001, 0x7F800000,
                                                  0xFF800000, 0x00000001, 0x7F7FFFFF, 0xC2C80000, 0x0000803F};

const std::vector<std::string> vecHardNumbers = {
    "0",  "1",  "-1.5", "1e3",    "nan",          "inf",   "-inf",  "1e39", "1e-46", "",       " 1",   "1 ",    "1,5", "0x1p3", "+1",
    "1.", ".5", "1e",   "1e-400", "3.4028235e38", "1e400", "1.2.3", "--1",  "-",     "0.1e-2", "1E+2", "-.5e1", "e1",  "00012", "-0"};

std::uint32_t bits(float fValue)
{
    std::uint32_t nBits = 0;
    std::memcpy(&nBits, &fValue, sizeof(nBits));
    return nBits;
}

std::string decimal(std::uint32_t nBits)
{
    float fValue = 0.0F;
    std::memcpy(&fValue, &nBits, sizeof(fValue));
    char acText[40];
    std::snprintf(acText, sizeof(acText), "%.9g", static_cast<double>(fValue));
    return acText;
}

class CBuilder
{
public:
    CBuilder(const std::uint8_t* pData, std::size_t nSize) : m_objIn(pData, nSize) {}

    DocumentGrammar::SBuilt build()
    {
        const int nShape = m_objIn.byte();
        m_objBuilt.m_bNova = (nShape & 1) != 0;
        m_bOld = (nShape & 2) != 0;
        m_strStem = m_objBuilt.m_bNova ? "Orm3.0.NOVA." : "Orm3.0.SOLA.";
        m_nNames = 1 + m_objIn.below(3);
        m_nVertices = 3 + m_objIn.below(5);

        std::vector<std::pair<std::string, std::string>> vecFirsts; // name and content of the first tags
        vecFirsts.emplace_back("Orm3.0.Version.Data", second("Orm3.0.Version", {{"Software", software()}}, ""));
        const std::string strCalibration = calibration();
        if (!strCalibration.empty())
            vecFirsts.emplace_back("Orm3.0.WellPlate.Data", strCalibration);
        vecFirsts.emplace_back("Orm3.0.Surface.Data", surface());
        vecFirsts.emplace_back("Orm3.0.Volume.Data", volume());
        vecFirsts.emplace_back("Orm3.0.Mask.Data", mask());
        vecFirsts.emplace_back(m_strStem + "Data", data());
        if (m_objIn.rarely(16))
            std::swap(vecFirsts.front(), vecFirsts.back());
        if (m_objIn.rarely(32))
            vecFirsts.insert(vecFirsts.begin(), vecFirsts[m_objIn.byte() % vecFirsts.size()]); // the first one of a name counts

        const std::vector<std::string> vecVersions = {m_bOld ? "1.0" : "2.0", m_bOld ? "1.0" : "2.0", "2.0 ", "3.0", "", "1.0"};
        const std::string strVersion = m_objIn.rarely(16) ? m_objIn.oneOf(vecVersions) : vecVersions.front();
        std::string strBody;
        for (const auto& [strName, strContent] : vecFirsts)
            strBody += "<" + strName + ">\n" + strContent + "</" + strName + ">" + aside();
        m_objBuilt.m_strText = prolog() + "<Ormelle.Result Version=\"" + strVersion + "\">\n" + strBody + "</Ormelle.Result>\n";
        m_objIn.damage(m_objBuilt.m_strText);
        return m_objBuilt;
    }

private:
    std::string prolog()
    {
        const std::vector<std::string> vecPrologs = {"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n",
                                                     "",
                                                     "\xEF\xBB\xBF<?xml version='1.0'?>",
                                                     "<!-- a --><?b c?>\n",
                                                     "<?xml version=\"1.0\" encoding=\"FOO-9\"?>",
                                                     "<!DOCTYPE a [<!ENTITY b \"c\">]>"};
        return m_objIn.rarely(8) ? m_objIn.oneOf(vecPrologs) : vecPrologs.front();
    }

    static std::string repeated(const std::string& strText, int nTimes)
    {
        std::string strAll;
        for (int i = 0; i < nTimes; ++i)
            strAll += strText;
        return strAll;
    }

    /// What may stand between tags without a meaning.
    std::string aside()
    {
        if (!m_objIn.rarely(8))
            return "\n";
        const int nHow = m_objIn.below(16);
        if (nHow == 14) // around the deepest nesting
        {
            const int nDepth = 61 + m_objIn.below(5);
            return repeated("<Deep>", nDepth) + repeated("</Deep>", nDepth);
        }
        if (nHow == 15) // around the most attributes
        {
            std::string strAttributes;
            for (int i = 252 + m_objIn.below(8); i > 0; --i)
                strAttributes += " a" + std::to_string(i) + "=''";
            return "<Wide" + strAttributes + "/>";
        }
        const std::vector<std::string> vecAsides = {"", "<!-- remark -->", "<?note x?>", "\r\n\t", "<Unknown a=\"1\"><b/>text</Unknown>"};
        return m_objIn.oneOf(vecAsides);
    }

    static std::string escaped(const std::string& strText)
    {
        std::string strSafe;
        for (const char c : strText)
            strSafe += c == '&' ? "&amp;" : c == '<' ? "&lt;" : c == '"' ? "&quot;" : std::string(1, c);
        return strSafe;
    }

    /// A text inside an element, whole or in pieces.
    std::string inPieces(const std::string& strText)
    {
        if (strText.empty() || !m_objIn.rarely(16))
            return escaped(strText);
        const std::size_t nCut = m_objIn.byte() % strText.size();
        const std::string strRest = strText.substr(nCut);
        const std::vector<std::string> vecRests = {"<!-- x -->" + escaped(strRest), "<![CDATA[" + strRest + "]]>",
                                                   "<?y z?>" + escaped(strRest), "<Inner>00</Inner>" + escaped(strRest),
                                                   "\n" + escaped(strRest)};
        return escaped(strText.substr(0, nCut)) + m_objIn.oneOf(vecRests);
    }

    /// A tag with keys, each as attribute or as child element; now and then one is missing or given in both places.
    std::string element(const std::string& strTag, const Keys& vecKeys, const std::string& strContent, bool bMayBeChildren = true)
    {
        std::string strAttributes;
        std::string strChildren;
        for (const auto& [strKey, strValue] : vecKeys)
        {
            const int nWhere = m_objIn.below(64);
            if (nWhere == 63)
                continue;
            if (nWhere == 61 && m_objIn.rarely(8)) // around the most elements of a row
                strChildren += repeated("<x/>", 1020 + m_objIn.below(8));
            const bool bText = strKey == "Text.Data";
            if ((bText && nWhere != 60) || (bMayBeChildren && nWhere > 56))
                strChildren += "<" + strKey + ">" + inPieces(strValue) + "</" + strKey + ">";
            else
                strAttributes += " " + strKey + "=\"" + escaped(strValue) + "\"";
            if (nWhere == 62)
                strAttributes += " " + strKey + "=\"" + escaped(m_objIn.oneOf(vecClaims)) + "\"";
        }
        if (strChildren.empty() && strContent.empty())
            return "<" + strTag + strAttributes + (m_objIn.rarely(16) ? "></" + strTag + ">" : "/>");
        return "<" + strTag + strAttributes + ">" + strChildren + strContent + "</" + strTag + ">";
    }

    /// A second tag; now and then it is missing, misspelt or there twice.
    std::string second(const std::string& strTag, const Keys& vecKeys, const std::string& strRows)
    {
        const int nHow = m_objIn.below(48);
        if (nHow == 47)
            return "";
        const std::string strBlock = element(nHow == 46 ? strTag + "s" : strTag, vecKeys, strRows) + aside();
        return nHow == 45 ? strBlock + strBlock : strBlock;
    }

    std::string claim(std::int64_t nTrue)
    {
        const int nHow = m_objIn.below(32);
        if (nHow == 31)
            return m_objIn.oneOf(vecClaims);
        return std::to_string(nHow == 30 ? nTrue + 1 : nHow == 29 ? nTrue - 1 : nTrue);
    }

    /// Two counts whose product is what a reader needs: each for itself, or a pair that multiplies to little in too few bits.
    std::pair<std::string, std::string> claims(std::int64_t nFirst, std::int64_t nSecond)
    {
        const std::vector<std::pair<std::string, std::string>> vecPairs = {
            {"65536", "65536"}, {"46341", "46341"},  {"1073741824", "4"}, {"2147483647", "2147483647"}, {"-1", "-1"},
            {"-4", "-3"},       {"131072", "32768"}, {"536870912", "8"},  {"1431655766", "3"}};
        if (m_objIn.rarely(24))
            return m_objIn.oneOf(vecPairs);
        const std::string strFirst = claim(nFirst);
        return {strFirst, claim(nSecond)};
    }

    std::uint32_t word(float fPlain)
    {
        const int nHow = m_objIn.below(64);
        return nHow == 63 ? m_objIn.oneOf(vecHardFloats) : nHow == 62 ? m_objIn.bits32() : bits(fPlain);
    }

    std::string hexOf(const std::vector<std::uint32_t>& vecWords)
    {
        std::string strText;
        const bool bLower = m_objIn.rarely(8);
        for (const std::uint32_t nWord : vecWords)
        {
            for (int nShift = 0; nShift < 32; nShift += 8)
            {
                char acByte[3];
                std::snprintf(acByte, sizeof(acByte), bLower ? "%02x" : "%02X", (nWord >> nShift) & 255U);
                strText += acByte;
            }
        }
        damageHex(strText);
        return strText;
    }

    void damageHex(std::string& strText)
    {
        const int nHow = m_objIn.below(32);
        if (strText.empty() || nHow < 26)
            return;
        const std::size_t nPlace = m_objIn.byte() % strText.size();
        if (nHow == 26)
            strText += "0000803F";
        else if (nHow == 27)
            strText.resize(nPlace);
        else if (nHow == 28)
            strText[nPlace] = "gG/:@`-+ xX."[m_objIn.below(12)];
        else if (nHow == 29)
            strText.insert(nPlace, 1, m_objIn.rarely(2) ? '\n' : ' ');
        else if (nHow == 30)
            strText.pop_back();
        else
            strText += strText;
    }

    std::string numberOf(std::uint32_t nWord) { return m_objIn.rarely(64) ? m_objIn.oneOf(vecHardNumbers) : decimal(nWord); }

    /// Rows of version 1.0: a row of keys for so many words each.
    std::string rowsOf(const std::string& strTag, const std::vector<std::string>& vecNames, const std::vector<std::uint32_t>& vecWords,
                       bool bIndexes = false)
    {
        std::string strRows;
        for (std::size_t i = 0; i + vecNames.size() <= vecWords.size(); i += vecNames.size())
        {
            Keys vecKeys;
            for (std::size_t k = 0; k < vecNames.size(); ++k)
                vecKeys.emplace_back(vecNames[k], bIndexes ? std::to_string(vecWords[i + k]) : numberOf(vecWords[i + k]));
            strRows += element(strTag, vecKeys, "");
        }
        return strRows;
    }

    std::string software()
    {
        const std::vector<std::string> vecSoftware = {"Ormelle version: 4.2.1", "", "4.2", "a:b version", "VERSION"};
        return m_objIn.oneOf(vecSoftware);
    }

    std::string calibration()
    {
        m_objBuilt.m_strUnit = m_objBuilt.m_bNova ? "uncalibrated" : "photons/sec";
        const int nHow = m_objIn.below(16);
        if (nHow < 12)
            return "";
        if (nHow == 13)
            m_objBuilt.m_strUnit = "cells";
        if (nHow == 14)
            m_objBuilt.m_strUnit = "pmol";
        return second("Orm3.0.WellPlate.Quantification",
                      {{"Name", "n"},
                       {"MeasurementType", nHow == 14   ? "Dye molecules"
                                           : nHow == 15 ? ""
                                                        : "Cells"},
                       {"PerUnitValue", "12.5"}},
                      "");
    }

    std::string surface()
    {
        std::vector<std::uint32_t> vecVertices;
        for (int i = 0; i < 3 * m_nVertices; ++i)
            vecVertices.push_back(word(static_cast<float>((i * 7) % 11)));
        std::vector<std::uint32_t> vecTriangles;
        const int nTriangles = m_objIn.below(6);
        for (int i = 0; i < 3 * nTriangles; ++i)
        {
            const int nHow = m_objIn.below(64);
            vecTriangles.push_back(nHow == 63   ? static_cast<std::uint32_t>(m_nVertices)
                                   : nHow == 62 ? m_objIn.bits32()
                                                : static_cast<std::uint32_t>(i % m_nVertices));
        }
        return second("Orm3.0.Surface.Vertices", {{"Count", claim(m_nVertices)}},
                      m_bOld ? rowsOf("Orm3.0.Surface.Vertex", {"X", "Y", "Z"}, vecVertices)
                             : element("Orm3.0.Surface.Vertices.Values", {{"Text.Data", hexOf(vecVertices)}}, "")) +
               second("Orm3.0.Surface.Triangles", {{"Count", claim(nTriangles)}},
                      m_bOld ? rowsOf("Orm3.0.Surface.Triangle", {"A", "B", "C"}, vecTriangles, true)
                             : element("Orm3.0.Surface.Triangles.Values", {{"Text.Data", hexOf(vecTriangles)}}, ""));
    }

    std::string volume()
    {
        const std::vector<std::pair<std::string, float>> vecSizes = {{"1", 1.0F}, {"0.5", 0.5F}, {"0.25", 0.25F}, {"4.0", 4.0F}};
        const auto& [strSize, fSize] = m_objIn.oneOf(vecSizes);
        const int nVoxels = m_objIn.below(9);
        std::vector<std::uint32_t> vecVoxels;
        for (int i = 0; i < nVoxels; ++i)
        {
            for (const int nStep : {i % 3, i / 3 % 3, i / 9})
            {
                const int nHow = m_objIn.below(64);
                const float fPlain = (static_cast<float>(nStep) + (nHow == 61 ? 0.25F : 0.0F)) * fSize;
                vecVoxels.push_back(nHow == 60 ? bits(fPlain * 100.0F) : word(fPlain));
            }
            vecVoxels.push_back(word(static_cast<float>(i) + 0.5F));
        }
        const std::vector<std::string> vecKinds = {"SOLA", "NOVA", "", "sola"};
        const std::string strKind = m_objIn.rarely(32) ? m_objIn.oneOf(vecKinds) : vecKinds[m_objBuilt.m_bNova ? 1 : 0];
        return second(
            "Orm3.0.Volume.Voxels",
            {{"Kind", strKind}, {"Count", claim(nVoxels)}, {"VoxelSize", m_objIn.rarely(16) ? m_objIn.oneOf(vecHardNumbers) : strSize}},
            m_bOld ? rowsOf("Orm3.0.Volume.Voxel", {"X", "Y", "Z", "Value"}, vecVoxels)
                   : element("Orm3.0.Volume.Voxels.Values", {{"Text.Data", hexOf(vecVoxels)}}, ""));
    }

    std::string mask()
    {
        std::string strPixels = "00FF00ff0102";
        damageHex(strPixels);
        const auto [strWidth, strHeight] = claims(3, 2);
        return second("Orm3.0.Mask.Image", {{"Width", strWidth}, {"Height", strHeight}},
                      element("Orm3.0.Mask.Pixel", {{"Text.Data", strPixels}}, ""));
    }

    std::string data()
    {
        std::string strText = second(m_strStem + "SequenceID", {}, element(m_strStem + "SequenceID.Name", {{"SequenceID", "SEQ1"}}, ""));
        strText += m_objBuilt.m_bNova ? list("Imagesource", "ImgSources", m_nNames) + list("EmmissionFilter", "EMFilter", m_nNames) +
                                            list("ExcitationFilter", "EXFilter", m_nNames)
                                      : wavelengths();
        strText += list("ClickNumber", "ClickNumber", m_objIn.below(6));
        if (m_objBuilt.m_bNova)
            strText += second(m_strStem + "Optical.Properties", {},
                              element(m_strStem + "Optical.Properties.Data", {{"Source.Database", "s"}, {"Tissue.Database", "t"}}, ""));
        strText += heightMap() + densities("Simulated") + densities("Measured") + matrices() + table();
        return strText;
    }

    std::string entries(const std::string& strTag, const std::string& strKey, int nEntries)
    {
        const std::vector<std::string> vecNames = {"560", "620 ", "a & b", "", "\xC2\xB5m", "<x>", "a\tb\r\nc"};
        std::string strRows;
        for (int i = 0; i < nEntries; ++i)
            strRows += element(m_strStem + strTag, {{strKey, m_objIn.rarely(4) ? m_objIn.oneOf(vecNames) : "n" + std::to_string(i)}}, "");
        return strRows;
    }

    std::string list(const std::string& strBlock, const std::string& strKey, int nEntries)
    {
        return second(m_strStem + strBlock, {{"Count", claim(nEntries)}}, entries(strBlock + ".Name", strKey, nEntries));
    }

    std::string wavelengths()
    {
        const int nViews = m_objIn.rarely(4) ? m_nNames : 0;
        return second(m_strStem + "Wavelengths", {{"Count", claim(m_nNames)}, {"Views", claim(nViews)}},
                      entries("Wavelength.Name", "Wavelength", m_nNames));
    }

    std::string heightMap()
    {
        const int nWidth = m_objIn.below(4);
        const int nHeight = m_objIn.below(4);
        std::vector<std::uint32_t> vecPixels;
        for (int i = 0; i < nWidth * nHeight; ++i)
            vecPixels.push_back(word(static_cast<float>(i)));
        const auto [strWidth, strHeight] = claims(nWidth, nHeight);
        return second(m_strStem + "HeightMap.Data", {{"Width", strWidth}, {"Height", strHeight}},
                      element(m_strStem + "HeightMap.Pixel", {{"Text.Data", hexOf(vecPixels)}}, ""));
    }

    std::string densities(const std::string& strWhich)
    {
        const std::string strBlock = m_strStem + strWhich + ".Photon.Density.";
        std::string strRows;
        for (int nRow = 0; nRow < m_nNames; ++nRow)
        {
            std::vector<std::uint32_t> vecValues;
            for (int i = 0; i < m_nVertices; ++i)
                vecValues.push_back(word(static_cast<float>(100 * nRow + i)));
            strRows += m_bOld ? rowsOf(strBlock + "Value", {"Photon.Density"}, vecValues)
                              : element(strBlock + "Values", {{"Text.Data", hexOf(vecValues)}}, "");
        }
        return second(
            strBlock + "Data",
            {{m_objBuilt.m_bNova ? "Total.ImageSource" : "Total.WaveLengths", claim(m_nNames)}, {"Total.Vertices", claim(m_nVertices)}},
            strRows);
    }

    std::string matrices()
    {
        if (m_objBuilt.m_bNova)
            return "";
        const int nMatrices = m_objIn.below(3);
        std::string strRows;
        for (int i = 0; i < nMatrices; ++i)
        {
            std::string strValues;
            for (int k = 0; k < 16; ++k)
                strValues += (k == 0 ? "" : m_objIn.rarely(128) ? "  " : " ") + numberOf(bits(static_cast<float>(k)));
            strRows += element(m_strStem + "Registration.Matrix", {{"Index", claim(i)}, {"Values", strValues}}, "");
        }
        return second(m_strStem + "Registration.Matrices", {{"Count", claim(nMatrices)}}, strRows);
    }

    std::string table()
    {
        const std::vector<std::string> vecKeys = {"Final voxel size (mm)", "Reduced Chi2", "Total source flux", "Total fluorescence yield",
                                                  ""};
        const int nRows = m_objIn.below(5);
        std::string strRows;
        for (int i = 0; i < nRows; ++i)
            strRows += element(m_objBuilt.m_bNova ? "Orm.3.0.NOVA.Results" : "Orm.3.0.SOLA.Results",
                               {{"Key", m_objIn.oneOf(vecKeys)}, {"Value", "1.25"}}, "");
        return second(m_strStem + "Results", {{"Count", claim(nRows)}}, strRows);
    }

    CFuzzInput m_objIn;
    DocumentGrammar::SBuilt m_objBuilt;
    std::string m_strStem;
    bool m_bOld = false;
    int m_nNames = 0;
    int m_nVertices = 0;
};
} // namespace

namespace DocumentGrammar
{
SBuilt build(const std::uint8_t* pData, std::size_t nSize)
{
    return CBuilder(pData, nSize).build();
}
} // namespace DocumentGrammar
