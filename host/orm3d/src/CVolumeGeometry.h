#pragma once

#include "OrmArray.h"

#include <QtGlobal>

#include <array>
#include <cstddef>
#include <vector>

class CVoxelBlock;

/// The voxels of a volume in the order in which they are drawn, whatever their colours: by ascending value, so that what lies above
/// a threshold is one stretch at the end, and so that later ones may overwrite earlier ones in a maximum intensity projection. A number
/// in this order is called a place here.
class CVolumeGeometry
{
public:
    /// The voxels must outlive this object.
    CVolumeGeometry(const CVoxelBlock& objVoxels, float fVoxelSize);

    std::size_t size() const { return m_vecValues.size(); }
    /// Coordinates of each place along an axis, 0 for x to 2 for z.
    const float* coordinates(std::size_t nAxis) const { return m_avecCoordinates[nAxis].data(); }
    /// x, y, z of each place, one after the other: a vertex array, made when first asked for.
    const float* positions() const;
    /// Values by place; those that are not finite come first, as the lowest number there is.
    const OrmArray<float>& values() const { return m_vecValues; }
    /// The OpenGL name of the voxel at a place.
    quint32 name(std::size_t nPlace) const;
    /// The highest finite value; 0 without any.
    float highest() const { return m_fHighest; }
    /// The largest absolute finite coordinate along each axis.
    const std::array<float, 3>& extent() const { return m_afExtent; }

    /// Opacity of each place, 0 to 255, for squares of two voxels drawn one over the other. Through as many voxels of the highest value
    /// as lie along the edge of a cube of all voxels from half of that value on, the opacity is 0.95, whatever grid or range.
    std::vector<quint8> opacities() const;

    /// The places from nFirst on, from the farthest to the nearest, each less nFirst. Voxels lie on a grid and are seen in parallel, so
    /// that the order depends on nothing but the directions in which the axes approach the viewer.
    std::vector<quint32> backToFront(std::size_t nFirst, bool bNearerWithX, bool bNearerWithY, bool bNearerWithZ) const;

private:
    void sortByGrid() const;

    const CVoxelBlock& m_objVoxels;
    float m_fVoxelSize;           ///< millimetres
    OrmArray<quint32> m_vecOrder; ///< the voxel at each place
    OrmArray<float> m_vecValues;  ///< by place
    std::array<OrmArray<float>, 3> m_avecCoordinates;
    mutable OrmArray<float> m_vecPositions;   ///< empty until needed
    mutable std::vector<quint32> m_vecGrid;   ///< places by ascending z, then y, then x; empty until needed, as the next two
    mutable std::vector<quint32> m_vecRows;   ///< where in m_vecGrid a row (same z and y) begins, and the end
    mutable std::vector<quint32> m_vecPlanes; ///< where in m_vecRows a plane (same z) begins, and the end
    std::array<float, 3> m_afExtent = {0.0f, 0.0f, 0.0f};
    float m_fHighest = 0.0f;
};
