#pragma once

#include "SOpenSurface.h"

#include <QByteArray>
#include <QStringList>

#include <array>
#include <vector>

/// Numbers on a cubic grid, to be written.
struct SCubicGrid
{
    std::array<qint64, 3> m_anSize = {0, 0, 0};         ///< voxels along x, y and z, each above 0
    std::array<double, 3> m_afOrigin = {0.0, 0.0, 0.0}; ///< mm, centre of the first voxel
    double m_fPitch = 1.0;                              ///< mm
    QString m_strName;                                  ///< of what the numbers are
    bool m_bSingle = true;                              ///< whether single precision holds the numbers exactly
    std::vector<double> m_vecValues;                    ///< x fastest, then y, then z
};

/// Surfaces and volumes as files of open formats, in memory. Numbers read back as they were, bit by bit; texts are those of the C locale.
namespace OpenWriters
{
/// XML PolyData of VTK (version 1.0, little endian, base64), with the maps as point data. The remarks stand as a comment in the file.
QByteArray vtp(const SOpenSurface& surface, const QStringList& lstRemarks);

/// XML ImageData of VTK: the numbers are point data, the points are the centres of the voxels.
QByteArray vti(const SCubicGrid& grid, const QStringList& lstRemarks);

/// PLY 1.0, binary of little endian, with the maps as properties of the vertices. A property's name can hold no blanks, and must differ
/// from the other ones': where a map's does not do, it is changed.
QByteArray ply(const SOpenSurface& surface, const QStringList& lstRemarks);

/// NRRD 4, raw, little endian.
QByteArray nrrd(const SCubicGrid& grid, const QStringList& lstRemarks);
} // namespace OpenWriters
