#include "PlainResult.h"

#include "PlainText.h"
#include "PlainXml.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstring>
#include <limits>
#include <set>

namespace
{
using PlainResult::EOutcome;
using PlainResult::SRecord;
using PlainXml::EKey;
using PlainXml::SSection;
using Words = std::vector<std::uint32_t>;

constexpr double fMostCells = 64e6;
constexpr int nMargin = 2; ///< cells that a refinement adds on every side

std::uint32_t bits(float fValue)
{
    std::uint32_t nBits = 0;
    std::memcpy(&nBits, &fValue, sizeof(nBits));
    return nBits;
}

float number(std::uint32_t nBits)
{
    float fValue = 0.0F;
    std::memcpy(&fValue, &nBits, sizeof(fValue));
    return fValue;
}

bool toInt(const std::string& strText, int& nValue)
{
    std::int64_t nRead = 0;
    if (!PlainText::wholeNumber(strText, std::numeric_limits<int>::min(), std::numeric_limits<int>::max(), nRead))
        return false;
    nValue = static_cast<int>(nRead);
    return true;
}

bool allFinite(const Words& vecWords)
{
    return std::all_of(vecWords.begin(), vecWords.end(), [](std::uint32_t n) { return std::isfinite(number(n)); });
}

/// Which of one axis' cells the voxels lie in.
EOutcome cellsAlong(const Words& vecVoxels, std::size_t nAxis, double fPitch, std::vector<double>& vecCells)
{
    std::vector<double> vecRests;
    const double fStart = number(vecVoxels[nAxis]);
    double fLargest = 0.0;
    for (std::size_t i = nAxis; i < vecVoxels.size(); i += 4)
    {
        fLargest = std::max(fLargest, std::fabs(double(number(vecVoxels[i]))));
        vecRests.push_back(std::remainder((number(vecVoxels[i]) - fStart) / fPitch, 1.0));
    }
    if (!(fLargest / fPitch < 1e4)) // beyond this the rounding of the file's own numbers counts
        return EOutcome::Unsure;
    std::vector<double> vecSorted = vecRests;
    std::sort(vecSorted.begin(), vecSorted.end());
    const double fPlane = vecSorted[vecSorted.size() / 2];
    bool bClear = true;
    bool bOff = false;
    for (const double fRest : vecRests)
    {
        const double fAway = std::fabs(std::remainder(fRest - fPlane, 1.0));
        bClear = bClear && (fAway < 0.005 || fAway > 0.03);
        bOff = bOff || fAway > 0.03;
    }
    if (bOff)
        return EOutcome::Refused;
    if (!bClear)
        return EOutcome::Unsure;
    for (std::size_t i = nAxis; i < vecVoxels.size(); i += 4)
        vecCells.push_back(std::round((number(vecVoxels[i]) - fStart) / fPitch - fPlane));
    return EOutcome::Read;
}

/// Whether voxels given as x, y, z, value lie on a grid that can be refined.
EOutcome fitsGrid(const Words& vecVoxels, float fVoxelSize)
{
    if (!allFinite(vecVoxels))
        return EOutcome::Refused;
    if (vecVoxels.empty())
        return EOutcome::Read;
    std::vector<double> avecCells[3];
    double fCells = 1.0;
    bool bUnsure = false;
    for (std::size_t nAxis = 0; nAxis < 3; ++nAxis)
    {
        const EOutcome eAxis = cellsAlong(vecVoxels, nAxis, double(fVoxelSize), avecCells[nAxis]);
        if (eAxis == EOutcome::Refused)
            return EOutcome::Refused;
        bUnsure = bUnsure || eAxis == EOutcome::Unsure;
        if (bUnsure)
            continue;
        const auto [itLow, itHigh] = std::minmax_element(avecCells[nAxis].begin(), avecCells[nAxis].end());
        fCells *= (*itHigh - *itLow + 1.0 + 2 * nMargin) * (fVoxelSize >= 1.0F ? 4 : fVoxelSize >= 0.5F ? 2 : 1);
    }
    if (bUnsure)
        return EOutcome::Unsure;
    std::set<std::array<double, 3>> setTaken;
    for (std::size_t i = 0; i < avecCells[0].size(); ++i)
        setTaken.insert({avecCells[0][i], avecCells[1][i], avecCells[2][i]});
    return setTaken.size() == avecCells[0].size() && fCells <= fMostCells ? EOutcome::Read : EOutcome::Refused;
}

/// The steps. Each returns false where reading ends.
class CSteps
{
public:
    CSteps(std::string_view strDocument, bool bNova, const std::string& strUnit)
        : m_objDocument(PlainXml::read(strDocument)), m_bNova(bNova), m_strUnit(strUnit), m_strStem(bNova ? "Orm3.0.NOVA." : "Orm3.0.SOLA.")
    {
    }

    SRecord run()
    {
        using Step = bool (CSteps::*)();
        const Step aSteps[] = {&CSteps::document, &CSteps::calibration, &CSteps::mesh,    &CSteps::sequence,  &CSteps::names,
                               &CSteps::filters,  &CSteps::clicks,      &CSteps::optical, &CSteps::heightMap, &CSteps::simulated,
                               &CSteps::measured, &CSteps::volume,      &CSteps::mask,    &CSteps::matrices,  &CSteps::table};
        for (const Step pStep : aSteps)
        {
            if (!(this->*pStep)())
                return m_obj; // refused, whatever was unsure before
            ++m_obj.m_nLastStep;
        }
        m_obj.m_eOutcome = m_bUnsure ? EOutcome::Unsure : EOutcome::Read;
        return m_obj;
    }

private:
    SSection data(const std::string& strBlock) const { return m_objDocument.section(m_strStem + "Data", m_strStem + strBlock); }

    bool document()
    {
        const std::string* pVersion = m_objDocument.m_bSound ? m_objDocument.m_objRoot.attribute("Version") : nullptr;
        m_bOld = pVersion && *pVersion == "1.0";
        return m_bOld || (pVersion && *pVersion == "2.0");
    }

    bool calibration()
    {
        const SSection objSection = m_objDocument.section("Orm3.0.WellPlate.Data", "Orm3.0.WellPlate.Quantification");
        for (const char* pKey : {"Name", "Date", "MeasurementType", "Probe", "PlateType", "Unit", "PerUnitValue"})
        {
            std::string strText;
            if (objSection.m_pElement && objSection.ownKey(pKey, strText) == EKey::Found)
                m_obj.m_mapCalibration[pKey] = strText;
        }
        const std::string strType = m_obj.m_mapCalibration["MeasurementType"];
        std::string strUnit;
        if (strType.empty())
            strUnit = m_bNova ? "uncalibrated" : "photons/sec";
        else if (strType == "Cells")
            strUnit = "cells";
        else if (strType == "Dye molecules" && m_bNova)
            strUnit = "pmol";
        return strUnit == m_strUnit;
    }

    /// A count of at least 0 that a section states.
    static bool count(const SSection& objSection, int& nCount)
    {
        std::string strText;
        return objSection.m_pElement && objSection.ownKey("Count", strText) == EKey::Found && toInt(strText, nCount) && nCount >= 0;
    }

    /// So many hexadecimal words of the row at an index. None at all need no row.
    static bool hex(const SSection& objSection, const std::string& strTag, long nIndex, std::int64_t nWords, Words& vecWords)
    {
        std::string strText;
        if (nWords == 0)
            return true;
        return nWords > 0 && objSection.rowKey(strTag, nIndex, "Text.Data", strText) == EKey::Found &&
               PlainText::hexWords(strText, nWords, vecWords);
    }

    /// The keys of the first rows of a tag, row by row.
    template <typename FnNumber>
    static bool rows(const SSection& objSection, const std::string& strTag, const std::vector<std::string>& vecKeys, std::int64_t nRows,
                     Words& vecWords, FnNumber fnNumber)
    {
        if (!objSection.m_pElement || nRows > objSection.rows(strTag))
            return false;
        for (std::int64_t nRow = 0; nRow < nRows; ++nRow)
        {
            for (const std::string& strKey : vecKeys)
            {
                std::string strText;
                std::uint32_t nWord = 0;
                if (objSection.rowKey(strTag, static_cast<long>(nRow), strKey, strText) != EKey::Found || !fnNumber(strText, nWord))
                    return false;
                vecWords.push_back(nWord);
            }
        }
        return true;
    }

    static bool floatWord(const std::string& strText, std::uint32_t& nWord)
    {
        float fValue = 0.0F;
        const bool bNumber = PlainText::floatNumber(strText, fValue);
        nWord = bits(fValue);
        return bNumber;
    }

    static bool indexWord(const std::string& strText, std::uint32_t& nWord)
    {
        std::int64_t nValue = 0;
        const bool bNumber = PlainText::wholeNumber(strText, 0, std::numeric_limits<std::uint32_t>::max(), nValue);
        nWord = static_cast<std::uint32_t>(nValue);
        return bNumber;
    }

    bool mesh()
    {
        const SSection objVertices = m_objDocument.section("Orm3.0.Surface.Data", "Orm3.0.Surface.Vertices");
        const SSection objTriangles = m_objDocument.section("Orm3.0.Surface.Data", "Orm3.0.Surface.Triangles");
        int nVertices = 0;
        int nTriangles = 0;
        if (!count(objVertices, nVertices) || !count(objTriangles, nTriangles))
            return false;
        const bool bRead =
            m_bOld ? rows(objVertices, "Orm3.0.Surface.Vertex", {"X", "Y", "Z"}, nVertices, m_obj.m_vecVertices, floatWord) &&
                         rows(objTriangles, "Orm3.0.Surface.Triangle", {"A", "B", "C"}, nTriangles, m_obj.m_vecTriangles, indexWord)
                   : hex(objVertices, "Orm3.0.Surface.Vertices.Values", 0, 3LL * nVertices, m_obj.m_vecVertices) &&
                         hex(objTriangles, "Orm3.0.Surface.Triangles.Values", 0, 3LL * nTriangles, m_obj.m_vecTriangles);
        return bRead && allFinite(m_obj.m_vecVertices) &&
               std::all_of(m_obj.m_vecTriangles.begin(), m_obj.m_vecTriangles.end(),
                           [&](std::uint32_t n) { return n < static_cast<std::uint32_t>(nVertices); });
    }

    bool sequence()
    {
        std::string strText;
        if (data("SequenceID").rowKey(m_strStem + "SequenceID.Name", 0, "SequenceID", strText) == EKey::Found)
            m_obj.m_strSequence = strText;
        return true;
    }

    bool entries(const SSection& objSection, const std::string& strTag, const std::string& strKey, std::int64_t nCount, int nStride,
                 std::vector<std::string>& vecEntries) const
    {
        for (std::int64_t i = 0; i < nCount; i += nStride)
        {
            std::string strText;
            if (objSection.rowKey(m_strStem + strTag, static_cast<long>(i), strKey, strText) != EKey::Found)
                return false;
            vecEntries.push_back(strText);
        }
        return true;
    }

    /// Two numbers of a section; one that is absent is 0.
    static bool twoNumbers(const SSection& objSection, const std::string& strFirst, const std::string& strSecond, int& nFirst, int& nSecond)
    {
        int anRead[2] = {0, 0};
        for (int i = 0; i < 2; ++i)
        {
            std::string strText;
            const EKey eKey = objSection.m_pElement ? objSection.ownKey(i == 0 ? strFirst : strSecond, strText) : EKey::TooLarge;
            if (eKey == EKey::TooLarge || (eKey == EKey::Found && !toInt(strText, anRead[i])))
                return false;
        }
        nFirst = anRead[0];
        nSecond = anRead[1];
        return true;
    }

    /// One number of a section, which must be there.
    static bool oneNumber(const SSection& objSection, int& nNumber)
    {
        std::string strText;
        return objSection.m_pElement && objSection.ownKey("Count", strText) == EKey::Found && toInt(strText, nNumber);
    }

    bool names()
    {
        int nEntries = 0;
        const SSection objSection = data(m_bNova ? "Imagesource" : "Wavelengths");
        if (m_bNova)
        {
            if (!oneNumber(objSection, m_obj.m_nNames))
                return true;
            nEntries = m_obj.m_nNames;
            return entries(objSection, "Imagesource.Name", "ImgSources", nEntries, 1, m_obj.m_vecNames);
        }
        int nViews = 0;
        if (!twoNumbers(objSection, "Count", "Views", m_obj.m_nNames, nViews))
            return true;
        nEntries = nViews != 0 ? nViews : m_obj.m_nNames;
        return entries(objSection, "Wavelength.Name", "Wavelength", nEntries, 1, m_obj.m_vecNames);
    }

    bool list(const std::string& strBlock, const std::string& strKey, int nStride, std::vector<std::string>& vecEntries) const
    {
        int nCount = 0;
        const SSection objSection = data(strBlock);
        return !oneNumber(objSection, nCount) || entries(objSection, strBlock + ".Name", strKey, nCount, nStride, vecEntries);
    }

    bool filters()
    {
        return !m_bNova || (list("EmmissionFilter", "EMFilter", 1, m_obj.m_vecEmission) &&
                            list("ExcitationFilter", "EXFilter", 1, m_obj.m_vecExcitation));
    }

    bool clicks() { return list("ClickNumber", "ClickNumber", 2, m_obj.m_vecClicks); }

    bool optical()
    {
        const SSection objSection = data("Optical.Properties");
        std::string strSource;
        std::string strTissue;
        if (m_bNova && objSection.rowKey(m_strStem + "Optical.Properties.Data", 0, "Source.Database", strSource) == EKey::Found &&
            objSection.rowKey(m_strStem + "Optical.Properties.Data", 0, "Tissue.Database", strTissue) == EKey::Found)
        {
            m_obj.m_strSourceDatabase = strSource;
            m_obj.m_strTissueDatabase = strTissue;
        }
        return true;
    }

    bool heightMap()
    {
        const SSection objSection = data("HeightMap.Data");
        if (!twoNumbers(objSection, "Width", "Height", m_anSizes[0], m_anSizes[1]))
            return true;
        const std::int64_t nPixels = std::int64_t(m_anSizes[0]) * m_anSizes[1];
        if (nPixels <= 0)
            return true;
        if (!hex(objSection, m_strStem + "HeightMap.Pixel", 0, nPixels, m_obj.m_vecMap))
            return false;
        if (m_anSizes[0] > 0)
        {
            m_obj.m_nMapWidth = m_anSizes[0];
            m_obj.m_nMapHeight = m_anSizes[1];
        }
        return true;
    }

    bool densities(const std::string& strWhich, bool bFirst, std::vector<std::vector<std::uint32_t>>& vecRows)
    {
        const std::string strBlock = strWhich + ".Photon.Density.";
        const SSection objSection = data(strBlock + "Data");
        // A block that cannot be read goes by the sizes that were read last.
        twoNumbers(objSection, m_bNova ? "Total.ImageSource" : "Total.WaveLengths", "Total.Vertices", m_anSizes[0], m_anSizes[1]);
        if (m_anSizes[0] != m_obj.m_nNames || (!bFirst && m_anSizes[1] != m_obj.m_nVertices))
            return false;
        if (m_anSizes[0] < 1 || m_anSizes[1] < 1)
            return true;
        if (bFirst)
            m_obj.m_nVertices = m_anSizes[1];
        if (m_bOld)
        {
            Words vecAll;
            const std::int64_t nValues = std::int64_t(m_anSizes[0]) * m_anSizes[1];
            if (!rows(objSection, m_strStem + strBlock + "Value", {"Photon.Density"}, nValues, vecAll, floatWord))
                return false;
            for (std::int64_t i = 0; i < nValues; i += m_anSizes[1])
                vecRows.emplace_back(vecAll.begin() + i, vecAll.begin() + i + m_anSizes[1]);
            return true;
        }
        for (int nRow = 0; nRow < m_anSizes[0]; ++nRow)
        {
            vecRows.emplace_back();
            if (!hex(objSection, m_strStem + strBlock + "Values", nRow, m_anSizes[1], vecRows.back()))
                return false;
        }
        return true;
    }

    bool simulated() { return densities("Simulated", true, m_obj.m_vecSimulated); }

    bool measured() { return densities("Measured", false, m_obj.m_vecMeasured); }

    bool volume()
    {
        const SSection objSection = m_objDocument.section("Orm3.0.Volume.Data", "Orm3.0.Volume.Voxels");
        std::string strKind;
        std::string strSize;
        double fSize = 0.0;
        int nCount = 0;
        if (!objSection.m_pElement || objSection.ownKey("Kind", strKind) != EKey::Found || strKind != (m_bNova ? "NOVA" : "SOLA") ||
            !count(objSection, nCount) || objSection.ownKey("VoxelSize", strSize) != EKey::Found ||
            !PlainText::decimalNumber(strSize, fSize) || fSize > double(FLT_MAX) || !(static_cast<float>(fSize) > 0.0F))
            return false;
        const auto fVoxelSize = static_cast<float>(fSize);
        const bool bRead = m_bOld ? rows(objSection, "Orm3.0.Volume.Voxel", {"X", "Y", "Z", "Value"}, nCount, m_obj.m_vecVoxels, floatWord)
                                  : hex(objSection, "Orm3.0.Volume.Voxels.Values", 0, 4LL * nCount, m_obj.m_vecVoxels);
        if (!bRead)
            return false;
        m_obj.m_nVoxelSize = bits(fVoxelSize);
        const EOutcome eFits = fitsGrid(m_obj.m_vecVoxels, fVoxelSize);
        m_bUnsure = eFits == EOutcome::Unsure;
        return eFits != EOutcome::Refused;
    }

    bool mask()
    {
        const SSection objSection = m_objDocument.section("Orm3.0.Mask.Data", "Orm3.0.Mask.Image");
        int nWidth = 0;
        int nHeight = 0;
        std::string strText;
        if (!m_bNova && twoNumbers(objSection, "Width", "Height", nWidth, nHeight) && nWidth > 0 && nHeight > 0 &&
            objSection.rowKey("Orm3.0.Mask.Pixel", 0, "Text.Data", strText) == EKey::Found &&
            PlainText::hexBytes(strText, std::int64_t(nWidth) * nHeight, m_obj.m_vecMask))
        {
            m_obj.m_nMaskWidth = nWidth;
            m_obj.m_nMaskHeight = nHeight;
        }
        return true;
    }

    bool matrices()
    {
        const SSection objSection = data("Registration.Matrices");
        const std::string strTag = m_strStem + "Registration.Matrix";
        int nCount = 0;
        if (m_bNova || !count(objSection, nCount) || nCount > objSection.rows(strTag))
            return true;
        std::map<int, std::array<double, 16>> mapRead;
        for (int i = 0; i < nCount; ++i)
        {
            std::string strIndex;
            std::string strValues;
            int nIndex = 0;
            std::array<double, 16> afMatrix{};
            if (objSection.rowKey(strTag, i, "Index", strIndex) != EKey::Found ||
                objSection.rowKey(strTag, i, "Values", strValues) != EKey::Found || !toInt(strIndex, nIndex))
                return true;
            for (std::size_t k = 0; k < 16; ++k)
            {
                const std::size_t nBlank = strValues.find(' ');
                if ((nBlank == std::string::npos) != (k == 15) || !PlainText::decimalNumber(strValues.substr(0, nBlank), afMatrix[k]))
                    return true;
                strValues.erase(0, nBlank == std::string::npos ? nBlank : nBlank + 1);
            }
            mapRead[nIndex] = afMatrix;
        }
        m_obj.m_mapMatrices = mapRead;
        return true;
    }

    bool table()
    {
        const SSection objSection = data("Results");
        const std::string strDropped = m_bNova ? "Total fluorescence yield" : "Total source flux";
        int nCount = 0;
        if (!oneNumber(objSection, nCount))
        {
            if (!m_bNova)
                return false;
            nCount = 0;
        }
        for (int i = 0; i < nCount; ++i)
        {
            std::string strKey;
            std::string strValue;
            const std::string strTag = m_bNova ? "Orm.3.0.NOVA.Results" : "Orm.3.0.SOLA.Results";
            if (objSection.rowKey(strTag, i, "Key", strKey) != EKey::Found ||
                objSection.rowKey(strTag, i, "Value", strValue) != EKey::Found)
                return false;
            if (strKey.find(strDropped) != std::string::npos)
                continue;
            m_obj.m_vecKeys.push_back(strKey);
            m_obj.m_vecValues.push_back(strValue);
        }
        if (m_bNova)
        {
            m_obj.m_vecKeys.emplace_back("Version");
            m_obj.m_vecValues.push_back(software());
        }
        return true;
    }

    std::string software() const
    {
        const SSection objSection = m_objDocument.section("Orm3.0.Version.Data", "Orm3.0.Version");
        std::string strText;
        if (!objSection.m_pElement || objSection.ownKey("Software", strText) != EKey::Found || strText.empty())
            return "N/A";
        std::string strLower = strText;
        std::transform(strLower.begin(), strLower.end(), strLower.begin(), [](unsigned char c) { return std::tolower(c); });
        if (strLower.find("version") == std::string::npos)
            return strText;
        const std::size_t nColon = strText.rfind(':');
        return nColon == std::string::npos ? strText : strText.substr(nColon + 1);
    }

    const PlainXml::SDocument m_objDocument;
    const bool m_bNova;
    const std::string m_strUnit;
    const std::string m_strStem;
    bool m_bOld = false;       ///< format version 1.0
    int m_anSizes[2] = {0, 0}; ///< read last: of the height map, then of the densities
    bool m_bUnsure = false;    ///< whether the voxels lie on a grid
    SRecord m_obj;
};
} // namespace

namespace PlainResult
{
SRecord read(std::string_view strDocument, bool bNova, const std::string& strUnit)
{
    return CSteps(strDocument, bNova, strUnit).run();
}
} // namespace PlainResult
