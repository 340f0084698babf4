#pragma once

/// A point or vector in space, in the unit of its use (millimetres in a scene, pixels in a window).
struct Coord3d
{
    Coord3d() = default;
    Coord3d(double fX, double fY, double fZ) : x(fX), y(fY), z(fZ) {}

    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

/// A point in a plane.
struct Coord2d
{
    Coord2d() = default;
    Coord2d(double fX, double fY) : x(fX), y(fY) {}

    double x = 0.0;
    double y = 0.0;
};
