#pragma once

#include "SOpenVolume.h"

#include <QStringList>

#include <vector>

/// A source volume as a saved result has it: voxels with an amount, on a cubic grid along x, y and z.
struct SCubicVoxels
{
    struct SVoxel
    {
        std::array<float, 3> m_afPlace; ///< centre, mm
        double m_fAmount;               ///< above 0
    };
    double m_fPitch = 1.0;           ///< mm
    std::vector<SVoxel> m_vecVoxels; ///< x fastest, then y, then z
    bool m_bResampled = false;       ///< the numbers are not those of the file any more
    double m_fTotalRead = 0.0;       ///< of the file's numbers above 0
    QStringList m_lstNotes;          ///< what was left out or changed, a sentence each
};

/// Brings volumes of other programs onto cubic grids.
namespace CubicVoxels
{
/// The voxels of the volume with a number above 0. Where the axes run along x, y and z, in any order and direction, and the spacing is the
/// same along all of them, the numbers stay as they are. Otherwise the amounts are spread over a cubic grid: each voxel is a box of even
/// density whose amount goes to the cells in proportion to what they share with it; along axes that are tilted, it goes by parts of which
/// four fill the length of a cell. Both keep the total.
///
/// Spacings and directions that differ by so little that no voxel moves by more than a five-hundredth of its size count as equal.
/// @param fPitch the grid's pitch in mm that was asked for; 0: the smallest spacing of the volume
/// @return an empty text, or why the volume cannot be used: an infinite number, or more cells than a result can have
QString from(const SOpenVolume& volume, double fPitch, SCubicVoxels& voxels);

/// Turns the coordinates of a volume into those of another space, where both are known.
void turnTo(ESpace eSpace, SOpenVolume& volume);
} // namespace CubicVoxels
