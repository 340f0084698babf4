#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

/// A second reader of saved results, for comparison with the one under test: the steps of the file format in their order, over a whole
/// tree of the document.
namespace PlainResult
{
enum class EOutcome
{
    Read,
    Refused,
    Unsure ///< a voxel lies so near the border of what is on the grid that only exact arithmetic could tell
};

struct SRecord
{
    EOutcome m_eOutcome = EOutcome::Refused;
    int m_nLastStep = 0; ///< number of the last step that was done, for the message of a difference

    std::map<std::string, std::string> m_mapCalibration;
    std::vector<std::uint32_t> m_vecVertices; ///< the bits of floats, so that they compare exactly
    std::vector<std::uint32_t> m_vecTriangles;
    std::string m_strSequence;
    int m_nNames = 0;
    std::vector<std::string> m_vecNames;
    std::vector<std::string> m_vecEmission;
    std::vector<std::string> m_vecExcitation;
    std::vector<std::string> m_vecClicks;
    std::string m_strSourceDatabase;
    std::string m_strTissueDatabase;
    int m_nMapWidth = 0; ///< of the height map; 0: none
    int m_nMapHeight = 0;
    std::vector<std::uint32_t> m_vecMap;
    int m_nVertices = 0; ///< of the densities
    std::vector<std::vector<std::uint32_t>> m_vecSimulated;
    std::vector<std::vector<std::uint32_t>> m_vecMeasured;
    std::uint32_t m_nVoxelSize = 0;         ///< the bits of a float
    std::vector<std::uint32_t> m_vecVoxels; ///< x, y, z, value
    int m_nMaskWidth = 0;
    int m_nMaskHeight = 0;
    std::vector<std::uint8_t> m_vecMask;
    std::map<int, std::array<double, 16>> m_mapMatrices;
    std::vector<std::string> m_vecKeys; ///< of the results table
    std::vector<std::string> m_vecValues;
};

/// @param bNova    the kind that the result must have
/// @param strUnit  the unit selected, which the result must fit
SRecord read(std::string_view strDocument, bool bNova, const std::string& strUnit);
} // namespace PlainResult
