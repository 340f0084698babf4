#pragma once

#include "C3DMesh.h"
#include "C3DVolume.h"

#include <QMap>
#include <QString>
#include <QVector>

#include <memory>
#include <vector>

/// The lasting record of a loaded result: one per tile, held by value in the view's list. Plain data; copies share
/// mesh, volumes and the photon density blocks until one of them is written.
struct sAnalysisBase
{
    QString strSequenceID;                  ///< as the result file has it; with strResultName the identity of the record
    QString strResultName;                  ///< as chosen in the list of results
    int nAnalysisType = 0;                  ///< 0 SOLA, 1 NOVA
    C3DMesh objMesh{QString()};             ///< the surface, in millimetres
    C3DVolume objVolume{QString()};         ///< what is shown: values in the selected unit
    QMap<QString, float*> mapPhotonDensity; ///< measured density by wavelength or image source, one float per vertex
    double dFinalVoxelSize = 0.0;           ///< mm; 0 where the results table has none
    double dStartingVoxelSize = 0.0;        ///< mm; 0 where the results table has none
    double dReducedChi2 = 0.0;              ///< 0 where the results table has none
    float fSelectLeft = 0.0f;               ///< voxel selection rectangle of the tile, in view coordinates
    float fSelectTop = 0.0f;
    float fSelectRight = 0.0f;
    float fSelectBottom = 0.0f;
    C3DVolume objRawVolume{QString()}; ///< as read and refined, never rescaled: the source of every rescaling
    /// The counted owners of the blocks that mapPhotonDensity points into: a block lives as long as any copy of the record.
    QVector<std::shared_ptr<float>> lstDensityBlocks;

    /// Keeps a copy of the row under the name. Nothing happens for an empty row or where memory is short.
    void addPhotonDensity(const QString& strName, const std::vector<float>& vecRow);
};
