#pragma once

#include "OrmArray.h"
#include "SVolumeLook.h"

#include <QtGlobal>

#include <array>
#include <cstddef>

class CVoxelBlock;

/// The voxels of a volume by ascending value, so that what lies above a threshold is one stretch at the end, and so that later ones may
/// overwrite earlier ones. A number in this order is called a place here.
class CValueOrder
{
public:
    explicit CValueOrder(const CVoxelBlock& objVoxels);

    std::size_t size() const { return m_vecValues.size(); }
    /// Coordinates of each place along an axis, 0 for x to 2 for z.
    const float* coordinates(std::size_t nAxis) const { return m_avecCoordinates[nAxis].data(); }
    /// Values by place; those that are not finite come first, as the lowest number there is.
    const OrmArray<float>& values() const { return m_vecValues; }

private:
    OrmArray<float> m_vecValues; ///< by place, as the next ones
    std::array<OrmArray<float>, 3> m_avecCoordinates;
};

/// A volume drawn as its maximum intensity projection.
class CHighestLook
{
public:
    CHighestLook(const CVoxelBlock& objVoxels, const SVolumeLook& sLook);

    const SVolumeLook& look() const { return m_sLook; }
    /// The first place of the order by value that is drawn; all after it are drawn, too.
    std::size_t first() const { return m_nFirst; }
    /// Red, green, blue, alpha of each place from first() on.
    const quint8* colors() const { return m_vecColors.data(); }

private:
    SVolumeLook m_sLook;
    std::size_t m_nFirst;
    OrmArray<quint8> m_vecColors;
};
