#pragma once

#include "C3DMesh.h"
#include "C3DVolume.h"
#include "COrmImage.h"
#include "SFMatrix.h"

#include <QHash>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

#include <vector>

/// Parameters of an analysis' parameter page. Carried, not read, by what shows saved results.
struct ParamsTabData
{
    virtual ~ParamsTabData();

    float fDefaultValue = 0.0f;
    int nDefaultIndex = 0;
    int nDefaultState = 1;
};

/// What a data preview hands to a reconstruction. Carried, not read, by what shows saved results.
struct DataPreviewToReconParams
{
    virtual ~DataPreviewToReconParams();

    QHash<QString, int> mapNameToIndex;
    QHash<int, COrmImage> mapIndexToImage;
};

/// Well-plate calibration of a result: how much source strength equals one cell or one unit of dye. All null: no calibration.
struct CWPQuantData
{
    QString strName;            ///< of the calibration
    QString strDate;            ///< ISO 8601
    QString strMeasurementType; ///< null, "Cells" or, for fluorescence, "Dye molecules"
    QString strProbe;
    QString strPlateType;
    QString strUnit;
    QString strPerUnitValue; ///< decimal number as text: flux or yield per cell or per unit
};

/// A result file while it is read: one field per block of the document. It lives on the stack of the reader that fills it.
struct SAnalysisBase
{
    virtual ~SAnalysisBase();
    /// Does nothing; makes the three records tell themselves apart by type.
    virtual void whoamI();

    QString strSequenceID;                                     ///< as stored in the file
    int nTotalVertices = 0;                                    ///< of the simulated density block; 0 without one
    QStringList lstEmissionFilters;                            ///< fluorescence only, one per image source
    QStringList lstExcitationFilters;                          ///< fluorescence only
    QList<float> lstFloatValuesA;                              ///< declared by the record, never filled
    QList<float> lstFloatValuesB;                              ///< declared by the record, never filled
    QStringList lstClickNumbers;                               ///< image numbers of the result
    QString strTissueDatabase;                                 ///< fluorescence only
    QString strSourceDatabase;                                 ///< fluorescence only
    QMap<int, _SFMatrix> mapRegistrationMatrices;              ///< luminescence only, by index
    std::vector<std::vector<float>> vecMeasuredPhotonDensity;  ///< row per wavelength or image source, value per vertex
    std::vector<std::vector<float>> vecSimulatedPhotonDensity; ///< same shape
    COrmImage imgHeightMap;                                    ///< 32-bit float pixels; empty without the block
    C3DMesh objMesh{QString()};                                ///< surface, millimetres
    C3DVolume objVolume{QString()};                            ///< source, amounts per voxel
    DataPreviewToReconParams objReconParams;                   ///< carried unread
    QStringList lstResultKeys;                                 ///< of the results table, in file order
    QStringList lstResultValues;                               ///< parallel to lstResultKeys
    CWPQuantData objQuantData;                                 ///< all null without the section
    COrmImage imgMask;                                         ///< 8-bit pixels; empty without the section
};

/// A luminescent result while it is read.
struct SSOLAAnalysis : public SAnalysisBase
{
    ~SSOLAAnalysis() override;
    void whoamI() override;

    int nWavelengthCount = 0;
    QStringList lstWavelengths; ///< exactly as the file has them, blanks included
    ParamsTabData objParamsTabData;
};

/// A fluorescent result while it is read.
struct SNOVAAnalysis : public SAnalysisBase
{
    ~SNOVAAnalysis() override;
    void whoamI() override;

    int nImageSourceCount = 0;
    QStringList lstImageSources; ///< exactly as the file has them, blanks included
    ParamsTabData objParamsTabData;
};
