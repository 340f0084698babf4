#pragma once

#include "ScalarBytes.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <array>

/// Which way the axes of physical coordinates point in the subject. What x, y and z grow towards:
enum class ESpace
{
    Unknown,
    RAS, ///< right, anterior, superior
    LAS, ///< left, anterior, superior
    LPS  ///< left, posterior, superior
};

/// A volume as an open format holds it: scalar numbers on a grid. The numbers stay the bytes of the file until they are asked for.
struct SOpenVolume
{
    using Vector = std::array<double, 3>;

    std::array<qint64, 3> m_anSize = {0, 0, 0}; ///< voxels along the three indexes, each above 0
    std::array<Vector, 3> m_avecStep = {};      ///< mm from a voxel to the next along each index; no zero vector, all finite
    Vector m_vecOrigin = {0.0, 0.0, 0.0};       ///< mm, centre of the voxel 0, 0, 0; finite
    ESpace m_eSpace = ESpace::Unknown;
    EScalar m_eType = EScalar::Float;
    bool m_bBigEndian = false;
    double m_fSlope = 1.0;     ///< what the file's numbers are multiplied by
    double m_fIntercept = 0.0; ///< what is added then
    QByteArray m_baValues;     ///< exactly one number per voxel, the first index fastest
    QStringList m_lstNotes;    ///< what was assumed in reading, a sentence each

    qint64 voxelCount() const { return m_anSize[0] * m_anSize[1] * m_anSize[2]; }
    /// The number of a voxel, scaled; it may be NaN or infinite.
    double value(qint64 nVoxel) const
    {
        const double fValue = ScalarBytes::toDouble(m_baValues.constData() + nVoxel * ScalarBytes::size(m_eType), m_eType, m_bBigEndian);
        return m_fSlope == 1.0 && m_fIntercept == 0.0 ? fValue : fValue * m_fSlope + m_fIntercept;
    }
};
