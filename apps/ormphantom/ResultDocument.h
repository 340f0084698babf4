#pragma once

#include "PhantomBody.h"

#include <QByteArray>
#include <QPair>
#include <QString>
#include <QStringList>

#include <vector>

/// One voxel of a source volume.
struct SPhantomVoxel
{
    float m_fX = 0.0F, m_fY = 0.0F, m_fZ = 0.0F; ///< centre, mm
    float m_fValue = 0.0F;                       ///< amount in this voxel, in the kind's unit
};

/// All that a saved result holds.
struct SPhantomResult
{
    bool m_bNova = false;                              ///< kind: fluorescent (NOVA) or luminescent (SOLA)
    QString m_strSequenceID;                           ///< sequence that the result belongs to
    QStringList m_lstChannels;                         ///< wavelengths, or image sources of a NOVA result
    QStringList m_lstClickNumbers;                     ///< one per channel
    QString m_strEmissionFilter;                       ///< nm, NOVA
    QString m_strExcitationFilter;                     ///< nm, NOVA
    QString m_strMeasurementType;                      ///< well-plate calibration; empty: none
    QString m_strPerUnitValue;                         ///< of the calibration
    CPhantomBody::SMesh m_mesh;                        ///< surface
    std::vector<std::vector<float>> m_vecMeasured;     ///< a row per channel, a value per vertex
    std::vector<std::vector<float>> m_vecSimulated;    ///< the same shape
    std::vector<SPhantomVoxel> m_vecVoxels;            ///< source volume
    double m_fVoxelSize = 1.0;                         ///< mm
    int m_nHeightMapWidth = 0, m_nHeightMapHeight = 0; ///< pixels
    std::vector<float> m_vecHeightMap;                 ///< row by row, mm
    QList<QPair<QString, QString>> m_lstTable;         ///< results table
};

namespace ResultDocument
{
/// The result as an XML document of format version "1.0" or "2.0".
QByteArray text(const SPhantomResult& result, const QString& strVersion);
} // namespace ResultDocument
