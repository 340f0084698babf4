#pragma once

#include <array>
#include <cstdint>
#include <vector>

/// A closed, mouse-like body: snout towards +y, back towards +z, all lengths in millimetres.
///
/// Every cross-section perpendicular to y is star-shaped about the axis, so that the surface is one formula: it gives the mesh and
/// tells what lies inside.
class CPhantomBody
{
public:
    using Point = std::array<float, 3>;

    /// Surface mesh: shared vertices, triangles counter-clockwise seen from outside.
    struct SMesh
    {
        std::vector<Point> m_vecVertices;
        std::vector<std::array<std::uint32_t, 3>> m_vecTriangles;
    };

    /// The mesh with about @p nVertices vertices (at least 14): rings of points between the two poles. The mesh is closed.
    static SMesh mesh(int nVertices);

    /// True where the point lies inside the surface, at least @p fMargin millimetres from it in the cross-section.
    static bool contains(double fX, double fY, double fZ, double fMargin = 0.0);

    static constexpr double kLength = 76.0; ///< snout to tail base

private:
    /// Radius of the cross-section at height y in direction fAngle (0: +x, a quarter turn: +z).
    static double radius(double fY, double fAngle);
};
