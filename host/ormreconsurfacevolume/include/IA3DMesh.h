#pragma once

#include <utility>
#include <vector>

/// The volume library's own form of surfaces and views.
namespace IA3D
{
// The nested names are part of the host's interface.
// NOLINTBEGIN(bugprone-reserved-identifier)

/// A surface of triangles, in millimetres.
class mesh
{
public:
    struct _Point
    {
        double x = 0.0;
        double y = 0.0;
        double z = 0.0;
    };
    struct _Vector
    {
        double x = 0.0;
        double y = 0.0;
        double z = 0.0;
    };
    /// Three point indexes from 0, counter-clockwise seen from outside.
    struct _Triangle
    {
        unsigned int a = 0;
        unsigned int b = 0;
        unsigned int c = 0;
    };
    struct _Color
    {
        double r = 0.0;
        double g = 0.0;
        double b = 0.0;
        double a = 0.0;
    };

    std::vector<_Point> m_vecPoints;
    std::vector<_Vector> m_vecPointNormals; ///< unit length, parallel to the points
    std::vector<_Triangle> m_vecTriangles;
    std::vector<_Vector> m_vecTriangleNormals; ///< unit length, parallel to the triangles
    std::pair<double, double> m_pairRangeX;    ///< smallest and largest x; zeros without points
    std::pair<double, double> m_pairRangeY;
    std::pair<double, double> m_pairRangeZ;
    _Color m_objColor;

    mesh();
    mesh(const mesh&) = default;
    mesh(mesh&&) = default;
    mesh& operator=(const mesh&) = default;
    mesh& operator=(mesh&&) = default;
    virtual ~mesh();

    unsigned long get_num_points() const { return static_cast<unsigned long>(m_vecPoints.size()); }
    bool is_empty() const { return m_vecPoints.empty(); }
};
// NOLINTEND(bugprone-reserved-identifier)

namespace mesh_utils
{
/// The view in which a surface is meant to be seen. Conversions carry it; which voxels lie inside a surface is decided in space
/// and does not depend on it.
struct viewinfo
{
    int nView = 1;             ///< number of the view
    double dCenterX = 0.0;     ///< centre of the view, millimetres
    double dCenterY = 0.0;     ///< centre of the view, millimetres
    double dFieldOfView = 0.0; ///< width of what is seen, millimetres
    double dRotation = 0.0;    ///< degrees
    double dDistance = 0.0;    ///< of the viewer, millimetres; 0 for a parallel view
    int nImageSize = 0;        ///< pixels across the field of view
    int nBinning = 0;          ///< 0 for none
};
} // namespace mesh_utils
} // namespace IA3D
