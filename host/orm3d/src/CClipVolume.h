#pragma once

#include <QtGlobal>

#include <array>
#include <cstddef>

/// The clip volume of the current matrices, for telling in plain arithmetic which points are clearly outside of it. It is a little wider
/// than the one of OpenGL, which decides about what is on the edge.
class CClipVolume
{
public:
    /// Most points that are looked at together.
    static constexpr std::size_t nAtOnce = 512;

    /// @param afClip   from scene to clip coordinates, column by column
    /// @param afExtent the largest absolute coordinate of the points along each axis
    CClipVolume(const std::array<double, 16>& afClip, const std::array<float, 3>& afExtent);

    /// Writes which of the points from nFrom on to before nTo, no more than nAtOnce, may be inside.
    /// @param pPositions x, y, z of each point from the first on
    /// @param pInside    room for all of them
    /// @return how many there are
    std::size_t inside(const float* pPositions, std::size_t nFrom, std::size_t nTo, quint32* pInside) const;

private:
    float m_afRows[4][4]; ///< clip coordinates from scene coordinates
    float m_afSlack[3];   ///< how far outside is still inside, along each axis
};
