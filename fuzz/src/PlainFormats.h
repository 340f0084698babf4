#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

/// Second readers of the open formats of surfaces and volumes: by position in a string, without any bound but the file's own end.
namespace PlainFormats
{
/// A surface; of no meaning unless it is sound.
struct SSurface
{
    bool m_bSound = false;
    std::vector<float> m_vecPlaces;
    std::vector<std::uint32_t> m_vecCorners;
    std::vector<std::pair<std::string, std::vector<float>>> m_vecMaps;
};

SSurface ply(const std::string& strFile);
SSurface stl(const std::string& strFile);
SSurface obj(const std::string& strFile);

/// A volume; of no meaning unless it is sound.
struct SVolume
{
    bool m_bSound = false;
    bool m_bUnsure = false; ///< so near to a limit of its lengths that rounding decides whether it is sound, or turned by a quaternion
    std::array<std::int64_t, 3> m_anSize = {};
    std::array<std::array<double, 3>, 3> m_aafStep = {};
    std::array<double, 3> m_afOrigin = {};
    std::vector<double> m_vecValues;
};

/// Each in a file of its own or with its numbers in @p strOther, where the header says so.
SVolume nifti(const std::string& strFile, const std::string& strOther);
SVolume metaImage(const std::string& strFile, const std::string& strOther);
SVolume nrrd(const std::string& strFile, const std::string& strOther);

// ---- What both have -------------------------------------------------------------------------------------------------------------------

/// Lines that end in LF, CRLF or CR, as positions: begin and end of each, and the begin of what follows.
struct SLine
{
    std::size_t m_nBegin;
    std::size_t m_nEnd;
    std::size_t m_nNext;
};
bool nextLine(const std::string& strText, std::size_t nAt, SLine& line);
std::vector<std::string> words(const std::string& strText);
/// Without blanks around it.
std::string bare(const std::string& strText);
std::string lower(std::string strText);
bool number(std::string strText, double& fValue);
bool anyNumber(std::string strText, double& fValue);
bool whole(std::string strText, std::int64_t& nValue);
/// So many bytes as a whole number, and as a float or double.
std::uint64_t bits(const std::string& strBytes, std::size_t nAt, int nBytes, bool bBig);
/// A type is a letter for its family (i, u, f) and its bytes: "i2", "f8". 0 where the bytes have run out.
bool scalar(const std::string& strBytes, std::size_t nAt, const std::string& strType, bool bBig, double& fValue);
} // namespace PlainFormats
