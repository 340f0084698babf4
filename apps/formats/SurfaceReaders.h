#pragma once

#include "SOpenSurface.h"

#include <QByteArray>

/// Readers of surfaces. Every count in a file is a claim: nothing is allocated beyond what the bytes themselves can fill.
///
/// Each reads a whole file and returns an empty text, or what is wrong with it as "place: reason"; then the surface is of no meaning.
namespace SurfaceReaders
{
/// Whether there is a reader for files of this name, by its extension: .ply, .stl or .obj, in either case.
bool isKnown(const QString& strFile);

/// Reads by the extension of the name.
QString read(const QString& strFile, const QByteArray& baContent, SOpenSurface& surface);

/// PLY 1.0, ascii and binary of either byte order (G. Turk, "The PLY Polygon File Format", 1994). Each scalar property of the vertices
/// beyond coordinates, normals, colours and texture coordinates becomes a map. Polygons are cut into fans of triangles.
QString readPly(const QByteArray& baContent, SOpenSurface& surface);

/// Stereolithography, ascii and binary (3D Systems, "StereoLithography Interface Specification", 1988). Corners with equal coordinates
/// become one vertex; a triangle of which two corners are the same then is left out.
QString readStl(const QByteArray& baContent, SOpenSurface& surface);

/// Wavefront OBJ: vertices and faces; polygons are cut into fans of triangles. Anything else in the file is passed over.
QString readObj(const QByteArray& baContent, SOpenSurface& surface);
} // namespace SurfaceReaders
