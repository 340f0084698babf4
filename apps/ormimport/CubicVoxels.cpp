#include "CubicVoxels.h"

#include "CVoxelLattice.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{
using Vector = SOpenVolume::Vector;

constexpr double fTolerance = 0.002;  ///< of a voxel: what counts as the same place
constexpr qint64 nMargin = 2;         ///< cells that a refinement adds on every side
constexpr double fPartsPerCell = 4.0; ///< along each axis of a tilted voxel
constexpr double fLeastShare = 1e-9;  ///< of a voxel, along an axis
constexpr double fMostParts = 4e9;    ///< of all voxels together: about a minute

double length(const Vector& vecStep)
{
    return std::hypot(vecStep[0], vecStep[1], vecStep[2]);
}

/// How the indexes of a volume run along x, y and z.
struct SAxes
{
    bool m_bAligned = true;
    std::array<std::size_t, 3> m_anIndexOf = {0, 1, 2}; ///< the index that runs along x, along y, along z
    std::array<double, 3> m_afStep = {1.0, 1.0, 1.0};   ///< mm, along x, y and z; below 0: the index runs down
};

SAxes axesOf(const SOpenVolume& volume)
{
    SAxes axes;
    std::array<bool, 3> abTaken = {false, false, false};
    double fShortest = std::numeric_limits<double>::infinity();
    for (const Vector& vecStep : volume.m_avecStep)
        fShortest = std::min(fShortest, length(vecStep));
    for (std::size_t nIndex = 0; nIndex < 3; ++nIndex)
    {
        const Vector& vecStep = volume.m_avecStep[nIndex];
        const auto itMain = std::max_element(vecStep.begin(), vecStep.end(), [](double a, double b) { return std::abs(a) < std::abs(b); });
        const auto nAxis = static_cast<std::size_t>(itMain - vecStep.begin());
        for (std::size_t n = 0; n < 3; ++n)
        {
            if (n != nAxis && std::abs(vecStep[n]) * static_cast<double>(volume.m_anSize[nIndex]) > fTolerance * fShortest)
                axes.m_bAligned = false;
        }
        axes.m_bAligned = axes.m_bAligned && !abTaken[nAxis];
        abTaken[nAxis] = true;
        axes.m_anIndexOf[nAxis] = nIndex;
        axes.m_afStep[nAxis] = vecStep[nAxis];
    }
    return axes;
}

/// The numbers of a volume that count, and what became of the others.
class CAmounts
{
public:
    explicit CAmounts(const SOpenVolume& volume) : m_volume(volume) {}

    /// Calls the function with the indexes and the amount of each voxel above 0.
    template <typename Fn>
    void each(Fn fnVoxel) const
    {
        qint64 nVoxel = 0;
        std::array<qint64, 3> anAt = {};
        for (anAt[2] = 0; anAt[2] < m_volume.m_anSize[2]; ++anAt[2])
        {
            for (anAt[1] = 0; anAt[1] < m_volume.m_anSize[1]; ++anAt[1])
            {
                for (anAt[0] = 0; anAt[0] < m_volume.m_anSize[0]; ++anAt[0], ++nVoxel)
                {
                    const double fAmount = m_volume.value(nVoxel);
                    if (fAmount > 0.0)
                        fnVoxel(anAt, fAmount);
                }
            }
        }
    }

    /// Looks at all numbers once. An empty text, or which one cannot be used.
    QString survey(SCubicVoxels& voxels)
    {
        qint64 nNoNumbers = 0;
        qint64 nNegative = 0;
        double fNegative = 0.0;
        for (qint64 nVoxel = 0; nVoxel < m_volume.voxelCount(); ++nVoxel)
        {
            const double fAmount = m_volume.value(nVoxel);
            if (std::isinf(fAmount))
                return QStringLiteral("voxel %1, %2, %3: its number is infinite")
                    .arg(nVoxel % m_volume.m_anSize[0])
                    .arg(nVoxel / m_volume.m_anSize[0] % m_volume.m_anSize[1])
                    .arg(nVoxel / m_volume.m_anSize[0] / m_volume.m_anSize[1]);
            nNoNumbers += std::isnan(fAmount) ? 1 : 0;
            nNegative += fAmount < 0.0 ? 1 : 0;
            fNegative += fAmount < 0.0 ? fAmount : 0.0;
        }
        each(
            [&](const std::array<qint64, 3>& anAt, double fAmount)
            {
                for (std::size_t n = 0; n < 3; ++n)
                {
                    m_anFirst[n] = m_nPositive > 0 ? std::min(m_anFirst[n], anAt[n]) : anAt[n];
                    m_anLast[n] = m_nPositive > 0 ? std::max(m_anLast[n], anAt[n]) : anAt[n];
                }
                ++m_nPositive;
                voxels.m_fTotalRead += fAmount;
            });
        if (nNoNumbers > 0)
            voxels.m_lstNotes.append(QStringLiteral("%1 voxels whose number is NaN were taken for empty.").arg(nNoNumbers));
        if (nNegative > 0)
            voxels.m_lstNotes.append(
                QStringLiteral("%1 voxels with a number below 0 (%2 in all) were taken for empty.").arg(nNegative).arg(fNegative));
        if (m_nPositive == 0)
            voxels.m_lstNotes.append(QStringLiteral("The volume has no number above 0: the result has no source."));
        return {};
    }

    qint64 m_nPositive = 0;                      ///< voxels above 0
    std::array<qint64, 3> m_anFirst = {0, 0, 0}; ///< the box around them, in indexes
    std::array<qint64, 3> m_anLast = {0, 0, 0};

private:
    const SOpenVolume& m_volume;
};

/// An empty text where a result may have so many cells of that pitch.
QString problemOfCells(const std::array<double, 3>& afCells, double fPitch)
{
    const int nParts = CVoxelLattice::subdivision(static_cast<float>(fPitch));
    double fRefined = 1.0;
    for (const double fAxis : afCells)
        fRefined *= (fAxis + 2.0 * nMargin) * nParts;
    if (fRefined <= static_cast<double>(CVoxelLattice::nMaxCells))
        return {};
    return QStringLiteral("volume: %1 x %2 x %3 cells of %4 mm around its numbers above 0 are more than a result can have; give a larger "
                          "--voxel-size")
        .arg(afCells[0], 0, 'f', 0)
        .arg(afCells[1], 0, 'f', 0)
        .arg(afCells[2], 0, 'f', 0)
        .arg(fPitch);
}

/// Cells of a cubic grid with the amounts that were put into them.
class CCells
{
public:
    /// The cells that cover the box from one corner to the other.
    QString cover(const Vector& vecLow, const Vector& vecHigh, double fPitch)
    {
        std::array<double, 3> afCells = {};
        m_fPitch = fPitch;
        for (std::size_t n = 0; n < 3; ++n)
        {
            m_vecLow[n] = vecLow[n];
            afCells[n] = std::max(1.0, std::ceil((vecHigh[n] - vecLow[n]) / fPitch - fTolerance));
        }
        const QString strProblem = problemOfCells(afCells, fPitch);
        if (!strProblem.isEmpty())
            return strProblem;
        for (std::size_t n = 0; n < 3; ++n)
            m_anCells[n] = static_cast<qint64>(afCells[n]);
        m_vecAmounts.assign(static_cast<std::size_t>(m_anCells[0] * m_anCells[1] * m_anCells[2]), 0.0);
        return {};
    }

    double& at(const std::array<qint64, 3>& anCell)
    {
        return m_vecAmounts[static_cast<std::size_t>((anCell[2] * m_anCells[1] + anCell[1]) * m_anCells[0] + anCell[0])];
    }

    qint64 cellOf(double fPlace, std::size_t nAxis) const
    {
        const double fCell = std::floor((fPlace - m_vecLow[nAxis]) / m_fPitch);
        return std::clamp<qint64>(static_cast<qint64>(std::clamp(fCell, -1e9, 1e9)), 0, m_anCells[nAxis] - 1);
    }

    /// The cells between two places along an axis, and which part of the way lies in each.
    void shares(double fFrom, double fTo, std::size_t nAxis, std::vector<std::pair<qint64, double>>& vecShares) const
    {
        vecShares.clear();
        const qint64 nLast = cellOf(fTo, nAxis);
        for (qint64 nCell = cellOf(fFrom, nAxis); nCell <= nLast; ++nCell)
        {
            const double fCellFrom = m_vecLow[nAxis] + static_cast<double>(nCell) * m_fPitch;
            // The outermost cells take what rounding would put beside the grid.
            const double fLow = std::max(fFrom, vecShares.empty() ? fFrom : fCellFrom);
            const double fHigh = nCell == nLast ? fTo : std::min(fTo, fCellFrom + m_fPitch);
            vecShares.emplace_back(nCell, (fHigh - fLow) / (fTo - fFrom));
        }
        // A cell that is touched by nothing but rounding gets nothing.
        if (vecShares.size() > 1 && vecShares.back().second < fLeastShare)
        {
            vecShares[vecShares.size() - 2].second += vecShares.back().second;
            vecShares.pop_back();
        }
        if (vecShares.size() > 1 && vecShares.front().second < fLeastShare)
        {
            vecShares[1].second += vecShares.front().second;
            vecShares.erase(vecShares.begin());
        }
    }

    void list(SCubicVoxels& voxels) const
    {
        std::size_t nCell = 0;
        for (qint64 nZ = 0; nZ < m_anCells[2]; ++nZ)
        {
            for (qint64 nY = 0; nY < m_anCells[1]; ++nY)
            {
                for (qint64 nX = 0; nX < m_anCells[0]; ++nX, ++nCell)
                {
                    if (m_vecAmounts[nCell] > 0.0)
                        voxels.m_vecVoxels.push_back({{centre(nX, 0), centre(nY, 1), centre(nZ, 2)}, m_vecAmounts[nCell]});
                }
            }
        }
    }

private:
    float centre(qint64 nCell, std::size_t nAxis) const
    {
        return static_cast<float>(m_vecLow[nAxis] + (static_cast<double>(nCell) + 0.5) * m_fPitch);
    }

    Vector m_vecLow = {}; ///< lowest corner, mm
    double m_fPitch = 1.0;
    std::array<qint64, 3> m_anCells = {0, 0, 0};
    std::vector<double> m_vecAmounts;
};

/// Voxels that lie on a cubic grid as they are.
void listVoxels(const SOpenVolume& volume, const SAxes& axes, const CAmounts& amounts, SCubicVoxels& voxels)
{
    voxels.m_vecVoxels.reserve(static_cast<std::size_t>(amounts.m_nPositive));
    amounts.each(
        [&](const std::array<qint64, 3>& anAt, double fAmount)
        {
            SCubicVoxels::SVoxel voxel = {{}, fAmount};
            for (std::size_t n = 0; n < 3; ++n)
            {
                const double fStep = std::copysign(voxels.m_fPitch, axes.m_afStep[n]);
                voxel.m_afPlace[n] = static_cast<float>(volume.m_vecOrigin[n] + static_cast<double>(anAt[axes.m_anIndexOf[n]]) * fStep);
            }
            voxels.m_vecVoxels.push_back(voxel);
        });
    std::sort(voxels.m_vecVoxels.begin(), voxels.m_vecVoxels.end(),
              [](const SCubicVoxels::SVoxel& one, const SCubicVoxels::SVoxel& other) {
                  return std::lexicographical_compare(one.m_afPlace.rbegin(), one.m_afPlace.rend(), other.m_afPlace.rbegin(),
                                                      other.m_afPlace.rend());
              });
}

QString spreadBoxes(const SOpenVolume& volume, const SAxes& axes, const CAmounts& amounts, SCubicVoxels& voxels)
{
    Vector vecLow = {};
    Vector vecHigh = {};
    const auto edge = [&](qint64 nIndex, std::size_t n) // of a voxel where its index begins
    { return volume.m_vecOrigin[n] + (static_cast<double>(nIndex) - 0.5) * axes.m_afStep[n]; };
    for (std::size_t n = 0; n < 3; ++n)
    {
        const std::size_t nIndex = axes.m_anIndexOf[n];
        vecLow[n] = std::min(edge(amounts.m_anFirst[nIndex], n), edge(amounts.m_anLast[nIndex] + 1, n));
        vecHigh[n] = std::max(edge(amounts.m_anFirst[nIndex], n), edge(amounts.m_anLast[nIndex] + 1, n));
    }
    CCells cells;
    const QString strProblem = cells.cover(vecLow, vecHigh, voxels.m_fPitch);
    if (!strProblem.isEmpty())
        return strProblem;
    // The cells that a voxel shares along an axis depend on its index along that axis alone.
    std::array<std::vector<std::vector<std::pair<qint64, double>>>, 3> avecShares;
    for (std::size_t n = 0; n < 3; ++n)
    {
        const std::size_t nIndex = axes.m_anIndexOf[n];
        avecShares[n].resize(static_cast<std::size_t>(amounts.m_anLast[nIndex] - amounts.m_anFirst[nIndex] + 1));
        for (qint64 i = amounts.m_anFirst[nIndex]; i <= amounts.m_anLast[nIndex]; ++i)
        {
            const auto [fFrom, fTo] = std::minmax({edge(i, n), edge(i + 1, n)});
            cells.shares(fFrom, fTo, n, avecShares[n][static_cast<std::size_t>(i - amounts.m_anFirst[nIndex])]);
        }
    }
    amounts.each(
        [&](const std::array<qint64, 3>& anAt, double fAmount)
        {
            const auto sharesOf = [&](std::size_t n) -> const std::vector<std::pair<qint64, double>>&
            {
                const std::size_t nIndex = axes.m_anIndexOf[n];
                return avecShares[n][static_cast<std::size_t>(anAt[nIndex] - amounts.m_anFirst[nIndex])];
            };
            for (const auto& [nZ, fZ] : sharesOf(2))
            {
                for (const auto& [nY, fY] : sharesOf(1))
                {
                    for (const auto& [nX, fX] : sharesOf(0))
                        cells.at({nX, nY, nZ}) += fAmount * fX * fY * fZ;
                }
            }
        });
    cells.list(voxels);
    return {};
}

/// The place of a point of the grid of voxels, given in fractions of indexes.
Vector placeOf(const SOpenVolume& volume, const std::array<double, 3>& afAt)
{
    Vector vecPlace = volume.m_vecOrigin;
    for (std::size_t nIndex = 0; nIndex < 3; ++nIndex)
    {
        for (std::size_t n = 0; n < 3; ++n)
            vecPlace[n] += afAt[nIndex] * volume.m_avecStep[nIndex][n];
    }
    return vecPlace;
}

QString spreadParts(const SOpenVolume& volume, const CAmounts& amounts, SCubicVoxels& voxels)
{
    Vector vecLow = {};
    Vector vecHigh = {};
    for (int nCorner = 0; nCorner < 8; ++nCorner)
    {
        std::array<double, 3> afAt = {};
        for (std::size_t n = 0; n < 3; ++n)
            afAt[n] =
                (nCorner >> n & 1) != 0 ? static_cast<double>(amounts.m_anLast[n]) + 0.5 : static_cast<double>(amounts.m_anFirst[n]) - 0.5;
        const Vector vecPlace = placeOf(volume, afAt);
        for (std::size_t n = 0; n < 3; ++n)
        {
            vecLow[n] = nCorner > 0 ? std::min(vecLow[n], vecPlace[n]) : vecPlace[n];
            vecHigh[n] = nCorner > 0 ? std::max(vecHigh[n], vecPlace[n]) : vecPlace[n];
        }
    }
    CCells cells;
    const QString strProblem = cells.cover(vecLow, vecHigh, voxels.m_fPitch);
    if (!strProblem.isEmpty())
        return strProblem;
    std::array<double, 3> afParts = {};
    for (std::size_t n = 0; n < 3; ++n)
        afParts[n] = std::ceil(fPartsPerCell * length(volume.m_avecStep[n]) / voxels.m_fPitch);
    const double fParts = afParts[0] * afParts[1] * afParts[2];
    if (fParts * static_cast<double>(amounts.m_nPositive) > fMostParts)
        return QStringLiteral("volume: its voxels are too many for so small a grid; give a larger --voxel-size");
    const std::array<qint64, 3> anParts = {static_cast<qint64>(afParts[0]), static_cast<qint64>(afParts[1]),
                                           static_cast<qint64>(afParts[2])};
    amounts.each(
        [&](const std::array<qint64, 3>& anAt, double fAmount)
        {
            std::array<double, 3> afAt = {};
            const auto part = [&](std::size_t n, qint64 nPart)
            { afAt[n] = static_cast<double>(anAt[n]) - 0.5 + (static_cast<double>(nPart) + 0.5) / afParts[n]; };
            for (qint64 k = 0; k < anParts[2]; ++k)
            {
                part(2, k);
                for (qint64 j = 0; j < anParts[1]; ++j)
                {
                    part(1, j);
                    for (qint64 i = 0; i < anParts[0]; ++i)
                    {
                        part(0, i);
                        const Vector vecPlace = placeOf(volume, afAt);
                        cells.at({cells.cellOf(vecPlace[0], 0), cells.cellOf(vecPlace[1], 1), cells.cellOf(vecPlace[2], 2)}) +=
                            fAmount / fParts;
                    }
                }
            }
        });
    cells.list(voxels);
    return {};
}
} // namespace

QString CubicVoxels::from(const SOpenVolume& volume, double fPitch, SCubicVoxels& voxels)
{
    voxels = SCubicVoxels();
    CAmounts amounts(volume);
    QString strProblem = amounts.survey(voxels);
    if (!strProblem.isEmpty())
        return strProblem;
    const SAxes axes = axesOf(volume);
    std::array<double, 3> afSpacing = {};
    for (std::size_t n = 0; n < 3; ++n)
        afSpacing[n] = axes.m_bAligned ? std::abs(axes.m_afStep[n]) : length(volume.m_avecStep[n]);
    voxels.m_fPitch = fPitch > 0.0 ? fPitch : *std::min_element(afSpacing.begin(), afSpacing.end());
    bool bAsItIs = axes.m_bAligned;
    for (std::size_t n = 0; n < 3; ++n)
        bAsItIs = bAsItIs && std::abs(afSpacing[n] - voxels.m_fPitch) * static_cast<double>(volume.m_anSize[axes.m_anIndexOf[n]]) <=
                                 fTolerance * voxels.m_fPitch;
    if (amounts.m_nPositive == 0)
        return {};
    if (bAsItIs)
    {
        std::array<double, 3> afCells = {};
        for (std::size_t n = 0; n < 3; ++n)
            afCells[n] = static_cast<double>(amounts.m_anLast[axes.m_anIndexOf[n]] - amounts.m_anFirst[axes.m_anIndexOf[n]] + 1);
        strProblem = problemOfCells(afCells, voxels.m_fPitch);
        if (strProblem.isEmpty())
            listVoxels(volume, axes, amounts, voxels);
        return strProblem;
    }
    voxels.m_bResampled = true;
    voxels.m_lstNotes.append(
        QStringLiteral("The volume was brought from %1voxels of %2 x %3 x %4 mm onto a cubic grid of %5 mm; its total was kept.")
            .arg(axes.m_bAligned ? QString() : QStringLiteral("tilted "))
            .arg(afSpacing[0])
            .arg(afSpacing[1])
            .arg(afSpacing[2])
            .arg(voxels.m_fPitch));
    return axes.m_bAligned ? spreadBoxes(volume, axes, amounts, voxels) : spreadParts(volume, amounts, voxels);
}

void CubicVoxels::turnTo(ESpace eSpace, SOpenVolume& volume)
{
    if (eSpace == ESpace::Unknown || volume.m_eSpace == ESpace::Unknown)
        return;
    // x grows to the right or left, y to the front or back.
    const auto isLeft = [](ESpace e) { return e != ESpace::RAS; };
    const auto isBack = [](ESpace e) { return e == ESpace::LPS; };
    const std::array<bool, 2> abTurn = {isLeft(eSpace) != isLeft(volume.m_eSpace), isBack(eSpace) != isBack(volume.m_eSpace)};
    for (std::size_t n = 0; n < abTurn.size(); ++n)
    {
        if (!abTurn[n])
            continue;
        volume.m_vecOrigin[n] = -volume.m_vecOrigin[n];
        for (Vector& vecStep : volume.m_avecStep)
            vecStep[n] = -vecStep[n];
    }
    volume.m_eSpace = eSpace;
}
