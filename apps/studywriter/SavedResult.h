#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>

#include <vector>

/// One voxel of a source volume.
struct SSavedVoxel
{
    float m_fX = 0.0F, m_fY = 0.0F, m_fZ = 0.0F; ///< centre, mm
    float m_fValue = 0.0F;                       ///< amount in this voxel, as the document stores it
};

/// A well-plate calibration: how much source strength equals one cell or one unit of dye.
struct SSavedCalibration
{
    QString m_strName;
    QString m_strDate;            ///< ISO 8601
    QString m_strMeasurementType; ///< "Cells" or, for fluorescence, "Dye molecules"; empty: there is no calibration
    QString m_strProbe;
    QString m_strPlateType;
    QString m_strPerUnitValue; ///< decimal number as text
};

/// All that a saved result holds.
struct SSavedResult
{
    bool m_bNova = false;                              ///< kind: fluorescent (NOVA) or luminescent (SOLA)
    QString m_strSequenceID;                           ///< sequence that the result belongs to
    QStringList m_lstChannels;                         ///< wavelengths, or image sources of a NOVA result
    QStringList m_lstClickNumbers;                     ///< one per channel
    QString m_strEmissionFilter;                       ///< nm, NOVA
    QString m_strExcitationFilter;                     ///< nm, NOVA
    QString m_strSourceDatabase;                       ///< of the optical properties, NOVA; empty: none are written
    QString m_strTissueDatabase;                       ///< likewise
    SSavedCalibration m_objCalibration;                ///< without a measurement type none is written
    std::vector<float> m_vecVertices;                  ///< x, y, z of each vertex, mm
    std::vector<quint32> m_vecTriangles;               ///< three vertex indexes per triangle, counter-clockwise seen from outside
    std::vector<std::vector<float>> m_vecMeasured;     ///< a row per channel, a value per vertex
    std::vector<std::vector<float>> m_vecSimulated;    ///< the same shape
    std::vector<SSavedVoxel> m_vecVoxels;              ///< source volume
    QString m_strVoxelSize;                            ///< mm, decimal number as text
    int m_nHeightMapWidth = 0, m_nHeightMapHeight = 0; ///< pixels; 0: no height map is written
    std::vector<float> m_vecHeightMap;                 ///< row by row, mm
    QList<QPair<QString, QString>> m_lstTable;         ///< results table
    bool m_bRegistration = false;                      ///< with the registration matrix of a SOLA result, which is the identity
};

namespace SavedResultDocument
{
/// The result as an XML document of format version "1.0" or "2.0". What holds NaN can be written in version 2.0 alone.
QByteArray text(const SSavedResult& result, const QString& strVersion);

/// How many bytes the numbers of the result take in a document of version 2.0; the whole is a few thousand more.
qint64 numberBytes(const SSavedResult& result);
} // namespace SavedResultDocument
