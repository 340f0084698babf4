#include "CVoxelLattice.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <vector>

/// The coordinates of voxels wherever they stand in memory.
struct CVoxelLattice::SCoordinates
{
    const float* m_pFirst; ///< x, y, z of the first
    qint64 m_nCount;
    std::size_t m_nStride; ///< floats from a voxel to the next

    float of(qint64 nVoxel, std::size_t nAxis) const { return m_pFirst[m_nStride * static_cast<std::size_t>(nVoxel) + nAxis]; }
};

namespace
{
constexpr qint64 nMedianSamples = 4096; ///< voxels looked at to find where the grid's planes lie

bool refuse(QString* pstrReason, const QString& strReason)
{
    if (pstrReason)
        *pstrReason = strReason;
    return false;
}

QString axisName(std::size_t nAxis)
{
    return QStringLiteral("xyz").mid(static_cast<int>(nAxis), 1);
}
} // namespace

bool CVoxelLattice::fit(const C3DVolume& objVolume, QString* pstrReason)
{
    return fit({objVolume.positions().data(), objVolume.m_nVoxels, 3}, static_cast<double>(objVolume.m_fVoxelSize), pstrReason);
}

bool CVoxelLattice::fit(const float* pCoordinates, qint64 nVoxels, std::size_t nStride, double fPitch, QString* pstrReason)
{
    return fit({pCoordinates, nVoxels, nStride}, fPitch, pstrReason);
}

bool CVoxelLattice::fit(const SCoordinates& sCoordinates, double fPitch, QString* pstrReason)
{
    *this = CVoxelLattice();
    if (!(fPitch > 0.0) || !std::isfinite(fPitch))
        return refuse(pstrReason, QStringLiteral("The voxel size %1 is not above 0.").arg(fPitch));
    m_fPitch = fPitch;
    if (sCoordinates.m_nCount <= 0)
        return true;
    for (std::size_t nAxis = 0; nAxis < 3; ++nAxis)
    {
        if (!fitAxis(sCoordinates, nAxis, pstrReason))
            return false;
    }
    if (refinedCellCount(0, 1) < 0)
        return refuse(pstrReason, QStringLiteral("The voxels span %1 x %2 x %3 cells, more than %4 in all.")
                                      .arg(m_anCells[0])
                                      .arg(m_anCells[1])
                                      .arg(m_anCells[2])
                                      .arg(nMaxCells));
    return isFree(sCoordinates, pstrReason);
}

bool CVoxelLattice::fitAxis(const SCoordinates& sCoordinates, std::size_t nAxis, QString* pstrReason)
{
    const double fStart = static_cast<double>(sCoordinates.of(0, nAxis));
    const auto steps = [&](qint64 nVoxel) { return (static_cast<double>(sCoordinates.of(nVoxel, nAxis)) - fStart) / m_fPitch; };

    double fLowest = 0.0;
    double fHighest = 0.0;
    double fLargest = 0.0;
    for (qint64 i = 0; i < sCoordinates.m_nCount; ++i)
    {
        const auto fCoordinate = static_cast<double>(sCoordinates.of(i, nAxis));
        if (!std::isfinite(fCoordinate))
            return refuse(pstrReason, QStringLiteral("Voxel %1 has no finite %2.").arg(i).arg(axisName(nAxis)));
        const double fSteps = steps(i);
        fLowest = std::min(fLowest, fSteps);
        fHighest = std::max(fHighest, fSteps);
        fLargest = std::max(fLargest, std::abs(fCoordinate));
    }
    if (!(fHighest - fLowest < static_cast<double>(nMaxCells)))
        return refuse(pstrReason, QStringLiteral("The voxels span more than %1 cells along %2.").arg(nMaxCells).arg(axisName(nAxis)));

    // The planes of the grid lie where most voxels have them, so that a single voxel beside the grid cannot hide by moving it.
    std::vector<double> vecRests;
    const qint64 nStep = std::max<qint64>(1, sCoordinates.m_nCount / nMedianSamples);
    for (qint64 i = 0; i < sCoordinates.m_nCount; i += nStep)
        vecRests.push_back(std::remainder(steps(i), 1.0));
    const auto itMedian = vecRests.begin() + static_cast<std::ptrdiff_t>(vecRests.size() / 2);
    std::nth_element(vecRests.begin(), itMedian, vecRests.end());
    const double fRest = *itMedian;

    const double fRounding = 2.0 * static_cast<double>(std::numeric_limits<float>::epsilon()) * fLargest / m_fPitch;
    for (qint64 i = 0; i < sCoordinates.m_nCount; ++i)
    {
        if (std::abs(std::remainder(steps(i) - fRest, 1.0)) > fTolerance + std::min(fRounding, fTolerance))
            return refuse(pstrReason,
                          QStringLiteral("Voxel %1 lies off the grid of pitch %2 along %3.").arg(i).arg(m_fPitch).arg(axisName(nAxis)));
    }
    const double fFirst = std::round(fLowest - fRest);
    m_afOrigin[nAxis] = fStart + (fFirst + fRest) * m_fPitch;
    m_anCells[nAxis] = static_cast<qint64>(std::round(fHighest - fRest) - fFirst) + 1;
    return true;
}

bool CVoxelLattice::isFree(const SCoordinates& sCoordinates, QString* pstrReason) const
{
    std::vector<bool> vecTaken(static_cast<std::size_t>(cellCount()), false);
    for (qint64 i = 0; i < sCoordinates.m_nCount; ++i)
    {
        const quint32 nCell = cellOf(sCoordinates.of(i, 0), sCoordinates.of(i, 1), sCoordinates.of(i, 2));
        if (vecTaken[nCell])
            return refuse(pstrReason, QStringLiteral("Voxel %1 lies in a cell that already has one.").arg(i));
        vecTaken[nCell] = true;
    }
    return true;
}

quint32 CVoxelLattice::cellOf(float fX, float fY, float fZ) const
{
    const std::array<double, 3> afPlace = {static_cast<double>(fX), static_cast<double>(fY), static_cast<double>(fZ)};
    qint64 nCell = 0;
    for (std::size_t nAxis = 3; nAxis-- > 0;)
    {
        const double fSteps = std::round((afPlace[nAxis] - m_afOrigin[nAxis]) / m_fPitch);
        const qint64 nStep = fSteps > 0.0 ? static_cast<qint64>(std::min(fSteps, static_cast<double>(m_anCells[nAxis] - 1))) : 0;
        nCell = nCell * m_anCells[nAxis] + nStep;
    }
    return static_cast<quint32>(nCell);
}

int CVoxelLattice::subdivision(float fVoxelSize)
{
    return fVoxelSize >= 1.0f ? 4 : fVoxelSize >= 0.5f ? 2 : 1;
}

qint64 CVoxelLattice::refinedCellCount(qint64 nMargin, qint64 nSubdivision) const
{
    qint64 nCount = 1;
    for (const qint64 nCells : m_anCells)
    {
        qint64 nLine = 0;
        if (__builtin_mul_overflow(nMargin, 2, &nLine) || __builtin_add_overflow(nLine, nCells, &nLine) ||
            __builtin_mul_overflow(nLine, nSubdivision, &nLine) || __builtin_mul_overflow(nCount, nLine, &nCount) || nCount > nMaxCells)
            return -1;
    }
    return nCount;
}
