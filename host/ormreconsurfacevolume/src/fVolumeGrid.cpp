#include "fVolumeGrid.h"

#include "CGridSweep.h"
#include "COrmLog.h"
#include "COrmProcess.h"

#include <QMutexLocker>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace
{
/// Whether a box of these cells, widened and split, stays within what a grid may hold.
bool isPossible(const bVolumeGrid& objGrid, qint64 nMargin, qint64 nParts)
{
    qint64 nCells = 1;
    for (int nAxis = 0; nAxis < 3; ++nAxis)
    {
        qint64 nLine = 0;
        if (__builtin_mul_overflow(nMargin, 2, &nLine) || __builtin_add_overflow(nLine, objGrid.cells(nAxis), &nLine) ||
            __builtin_mul_overflow(nLine, nParts, &nLine) || __builtin_mul_overflow(nCells, nLine, &nCells) ||
            nCells > CVoxelLattice::nMaxCells)
            return false;
    }
    return true;
}

bool refuse(const QString& strReason)
{
    ORM_LOG(3, strReason);
    return false;
}
} // namespace

fVolumeGrid::fVolumeGrid() = default;

fVolumeGrid::~fVolumeGrid() = default;

void fVolumeGrid::assign(const CVoxelLattice& objLattice, const C3DVolume& objVolume)
{
    const QMutexLocker objLocker(&m_objMutex);
    for (std::size_t nAxis = 0; nAxis < 3; ++nAxis)
    {
        m_anCells[nAxis] = objLattice.cells(static_cast<int>(nAxis));
        m_afOrigin[nAxis] = objLattice.origin(static_cast<int>(nAxis));
        m_abandAxes[nAxis] = CAxisBand(m_anCells[nAxis]);
    }
    m_anSourceCells = m_anCells;
    m_anBlockCells = m_anCells;
    m_fCellSize = objLattice.pitch();
    m_nMargin = 0;
    m_nParts = 1;
    m_fFactor = 1.0;
    m_fSourceTotal = 0.0;
    m_vecSource.assign(static_cast<std::size_t>(cellCount()), 0.0f);
    m_vecFilled.assign(m_vecSource.size(), false);
    m_lstFilled.clear();
    const OrmArray<float>& vecValues = objVolume.values();
    m_lstFilled.reserve(static_cast<int>(vecValues.size()));
    for (std::size_t i = 0; i < vecValues.size(); ++i)
    {
        const quint32 nCell =
            objLattice.cellOf(objVolume.positions()[3 * i], objVolume.positions()[3 * i + 1], objVolume.positions()[3 * i + 2]);
        m_vecFilled[nCell] = true;
        m_lstFilled.append(VoxelIndex{nCell});
        if (!(vecValues[i] > 0.0f) || !std::isfinite(vecValues[i]))
            continue;
        m_vecSource[nCell] = vecValues[i];
        m_fSourceTotal += static_cast<double>(vecValues[i]);
    }
}

bool fVolumeGrid::paddingVoxels(unsigned long nMargin)
{
    if (nMargin > static_cast<unsigned long>(CVoxelLattice::nMaxCells) || !isPossible(*this, static_cast<qint64>(nMargin), 1))
        return refuse(QStringLiteral("A grid cannot have a margin of %1 cells.").arg(nMargin));
    const QMutexLocker objLocker(&m_objMutex);
    const auto nCells = static_cast<long>(nMargin);
    for (CAxisBand& objBand : m_abandAxes)
        objBand.widen(nCells);
    growBox(nCells);
    return true;
}

bool fVolumeGrid::subdivide(unsigned long nParts)
{
    if (nParts == 0 || nParts > static_cast<unsigned long>(CVoxelLattice::nMaxCells) || !isPossible(*this, 0, static_cast<qint64>(nParts)))
        return refuse(QStringLiteral("The cells of a grid cannot be split into %1 parts along each axis.").arg(nParts));
    const QMutexLocker objLocker(&m_objMutex);
    const auto nAlong = static_cast<long>(nParts);
    for (CAxisBand& objBand : m_abandAxes)
        objBand.subdivide(nAlong);
    splitCells(nAlong);
    m_fFactor /= static_cast<double>(nAlong) * static_cast<double>(nAlong) * static_cast<double>(nAlong);
    return true;
}

void fVolumeGrid::average(long nPasses)
{
    const QMutexLocker objLocker(&m_objMutex);
    for (long i = 0; i < nPasses; ++i)
    {
        for (CAxisBand& objBand : m_abandAxes)
            objBand.average();
    }
}

void fVolumeGrid::update(double fMinimum)
{
    if (!(fMinimum > 0.0))
        return;
    change(
        [&](long, long, float* pAmounts)
        {
            const auto isTooLow = [=](float fAmount) { return static_cast<double>(fAmount) < fMinimum; };
            std::replace_if(pAmounts, pAmounts + m_anCells[0], isTooLow, 0.0f);
        });
}

void fVolumeGrid::change(const FnRow& fnRow)
{
    const QMutexLocker objLocker(&m_objMutex);
    CGridSweep objSweep(*this);
    const double fUnit = objSweep.unit();
    constexpr double fMost = std::numeric_limits<float>::max();
    std::vector<float> vecAmounts(static_cast<std::size_t>(cellCount()));
    float* pAmounts = vecAmounts.data();
    for (long nZ = 0; nZ < m_anCells[2]; ++nZ)
    {
        COrmProcess::keepAlive();
        for (long nY = 0; nY < m_anCells[1]; ++nY, pAmounts += m_anCells[0])
        {
            const float* pRow = objSweep.row(nY, nZ);
            std::transform(pRow, pRow + m_anCells[0], pAmounts,
                           [=](float fPart) { return static_cast<float>(std::min(fUnit * static_cast<double>(fPart), fMost)); });
            fnRow(nY, nZ, pAmounts);
        }
    }
    m_vecSource = std::move(vecAmounts);
    m_anBlockCells = m_anCells;
    for (std::size_t nAxis = 0; nAxis < 3; ++nAxis)
        m_abandAxes[nAxis] = CAxisBand(m_anCells[nAxis]);
    m_fFactor = 1.0;
}

double fVolumeGrid::value(long nX, long nY, long nZ) const
{
    const long anCell[3] = {nX, nY, nZ};
    for (std::size_t nAxis = 0; nAxis < 3; ++nAxis)
    {
        if (anCell[nAxis] < 0 || anCell[nAxis] >= m_anCells[nAxis])
            return 0.0;
    }
    double fSum = 0.0;
    const auto& [objX, objY, objZ] = m_abandAxes;
    for (long k = 0; k < objZ.count(nZ); ++k)
    {
        for (long j = 0; j < objY.count(nY); ++j)
        {
            const long nRow = ((objZ.first(nZ) + k) * m_anBlockCells[1] + objY.first(nY) + j) * m_anBlockCells[0];
            for (long i = 0; i < objX.count(nX); ++i)
                fSum += objZ.weights(nZ)[k] * objY.weights(nY)[j] * objX.weights(nX)[i] *
                        static_cast<double>(m_vecSource[static_cast<std::size_t>(nRow + objX.first(nX) + i)]);
        }
    }
    return fSum * m_fFactor;
}
