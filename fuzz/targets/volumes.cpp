// The readers of volumes of other programs against plain ones: what they refuse, and every number that they give.

#include "FormatGrammar.h"
#include "FuzzTarget.h"
#include "PlainFormats.h"
#include "VolumeReaders.h"

#include <cmath>

namespace
{
constexpr long long nAllowedMemory = 1024LL * 1024; ///< beyond what goes with the size of the file
constexpr long long nMemoryPerByte = 4000;          ///< a stream may grow a thousandfold, and is held up to three times

using FuzzTarget::demand;

/// Places differ by rounding at most: the second readers reckon in another order.
bool isSamePlace(double fRead, double fPlain)
{
    return std::fabs(fRead - fPlain) <= 1e-6 * std::fmax(std::fabs(fRead), std::fabs(fPlain));
}

void compare(const std::string& strFormat, const SOpenVolume& volume, const PlainFormats::SVolume& plain)
{
    for (std::size_t n = 0; n < 3; ++n)
    {
        demand(volume.m_anSize[n] == plain.m_anSize[n], strFormat + ": a size");
        for (std::size_t i = 0; i < 3 && !plain.m_bUnsure; ++i)
            demand(isSamePlace(volume.m_avecStep[n][i], plain.m_aafStep[n][i]), strFormat + ": a step");
        demand(plain.m_bUnsure || isSamePlace(volume.m_vecOrigin[n], plain.m_afOrigin[n]), strFormat + ": the origin");
        demand(std::isfinite(volume.m_vecOrigin[n]) &&
                   std::isfinite(volume.m_avecStep[n][0] + volume.m_avecStep[n][1] + volume.m_avecStep[n][2]),
               strFormat + ": a place that is not finite");
    }
    demand(volume.voxelCount() == static_cast<qint64>(plain.m_vecValues.size()), strFormat + ": another number of values");
    for (qint64 n = 0; n < volume.voxelCount(); ++n)
    {
        const double fRead = volume.value(n);
        const double fPlain = plain.m_vecValues[static_cast<std::size_t>(n)];
        demand(fRead == fPlain || (std::isnan(fRead) && std::isnan(fPlain)) || isSamePlace(fRead, fPlain), strFormat + ": a value");
    }
}

bool bothWays(const char* pFormat, const std::string& strFile, const std::string& strOther, const char* pName,
              PlainFormats::SVolume (*fnPlain)(const std::string&, const std::string&))
{
    const QByteArray baFile(strFile.data(), static_cast<int>(strFile.size()));
    const QByteArray baOther(strOther.data(), static_cast<int>(strOther.size()));
    SOpenVolume volume;
    QString strProblem;
    {
        const CMemoryBound objBound(nMemoryPerByte * static_cast<long long>(strFile.size() + strOther.size()) + nAllowedMemory);
        const auto give = [&](const QString& /*strName*/, QByteArray& baGiven)
        {
            baGiven = baOther;
            return QString();
        };
        strProblem = VolumeReaders::read(QLatin1String(pName), baFile, give, volume);
    }
    const PlainFormats::SVolume plain = fnPlain(strFile, strOther);
    demand(plain.m_bUnsure || strProblem.isEmpty() == plain.m_bSound,
           std::string(pFormat) + (plain.m_bSound ? ": sound, but refused: " + FuzzTarget::text(strProblem) : ": taken, but is not sound"));
    demand(strProblem.isEmpty() || strProblem.contains(QLatin1String(": ")), std::string(pFormat) + ": a refusal without its place");
    if (strProblem.isEmpty() && plain.m_bSound)
        compare(pFormat, volume, plain);
    return strProblem.isEmpty();
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize)
{
    FormatGrammar::SBuilt built;
    if (FuzzTarget::isChoices(pData, nSize))
        built = FormatGrammar::volume(pData + 1, nSize - 1);
    else
    {
        // The second half stands for the file with the numbers too.
        built.m_strFile = std::string(reinterpret_cast<const char*>(pData), nSize);
        built.m_strOther = built.m_strFile.substr(nSize / 2);
    }
    bool bTaken = bothWays("NIfTI", built.m_strFile, built.m_strOther, "a.hdr", PlainFormats::nifti);
    bTaken = bothWays("MetaImage", built.m_strFile, built.m_strOther, "a.mha", PlainFormats::metaImage) || bTaken;
    bTaken = bothWays("NRRD", built.m_strFile, built.m_strOther, "a.nrrd", PlainFormats::nrrd) || bTaken;
    FuzzTarget::tookInput(bTaken);
    return 0;
}
