// The readers of surfaces of other programs against plain ones: what they refuse, and every number that they give.

#include "FormatGrammar.h"
#include "FuzzTarget.h"
#include "PlainFormats.h"
#include "SurfaceReaders.h"

#include <cstring>

namespace
{
constexpr long long nAllowedMemory = 1024LL * 1024; ///< beyond what goes with the size of the file
constexpr long long nMemoryPerByte = 200;

using FuzzTarget::demand;

void same(const std::vector<float>& vecRead, const std::vector<float>& vecPlain, const std::string& strWhat)
{
    demand(vecRead.size() == vecPlain.size(), strWhat + ": another number of values");
    for (std::size_t n = 0; n < vecRead.size(); ++n)
        demand(vecRead[n] == vecPlain[n] || (vecRead[n] != vecRead[n] && vecPlain[n] != vecPlain[n]), strWhat + ": a value differs");
}

bool bothWays(const char* pFormat, const std::string& strFile, QString (*fnRead)(const QByteArray&, SOpenSurface&),
              PlainFormats::SSurface (*fnPlain)(const std::string&))
{
    // A copy that ends where the file ends, so that a read beyond it is seen.
    const QByteArray baFile(strFile.data(), static_cast<int>(strFile.size()));
    SOpenSurface surface;
    QString strProblem;
    {
        const CMemoryBound objBound(nMemoryPerByte * static_cast<long long>(strFile.size()) + nAllowedMemory);
        strProblem = fnRead(baFile, surface);
    }
    const PlainFormats::SSurface plain = fnPlain(strFile);
    demand(strProblem.isEmpty() == plain.m_bSound,
           std::string(pFormat) + (plain.m_bSound ? ": sound, but refused: " + FuzzTarget::text(strProblem) : ": taken, but is not sound"));
    demand(strProblem.isEmpty() || strProblem.contains(QLatin1String(": ")), std::string(pFormat) + ": a refusal without its place");
    if (!plain.m_bSound)
        return false;
    same(surface.m_vecVertices, plain.m_vecPlaces, std::string(pFormat) + " vertices");
    demand(surface.m_vecTriangles == std::vector<quint32>(plain.m_vecCorners.begin(), plain.m_vecCorners.end()),
           std::string(pFormat) + " triangles");
    demand(surface.m_vecMaps.size() == plain.m_vecMaps.size(), std::string(pFormat) + ": another number of maps");
    for (std::size_t n = 0; n < surface.m_vecMaps.size(); ++n)
    {
        demand(surface.m_vecMaps[n].m_strName == QString::fromStdString(plain.m_vecMaps[n].first),
               std::string(pFormat) + ": the name of a map");
        same(surface.m_vecMaps[n].m_vecValues, plain.m_vecMaps[n].second, std::string(pFormat) + " map");
    }
    return true;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize)
{
    const std::string strFile = FuzzTarget::textOf(pData, nSize, FormatGrammar::surface);
    // Each reader must cope with files of the others.
    bool bTaken = bothWays("PLY", strFile, SurfaceReaders::readPly, PlainFormats::ply);
    bTaken = bothWays("STL", strFile, SurfaceReaders::readStl, PlainFormats::stl) || bTaken;
    bTaken = bothWays("OBJ", strFile, SurfaceReaders::readObj, PlainFormats::obj) || bTaken;
    FuzzTarget::tookInput(bTaken);
    return 0;
}
