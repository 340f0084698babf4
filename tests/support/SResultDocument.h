#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QSet>
#include <QString>
#include <QStringList>

#include <vector>

/// What a saved result holds, and its text. The defaults make a sound small one: a sphere of radius 10 mm as surface and a
/// cube of 4 x 4 x 4 voxels of 1 mm at its centre, with the values 1 to 64. Defects are made by leaving blocks out, by counts that
/// lie, and by replacing parts of the text.
struct SResultDocument
{
    enum EKind
    {
        SOLA = 0,
        NOVA = 1
    };

    explicit SResultDocument(int nKind = SOLA, const QString& strVersion = QStringLiteral("2.0"));

    int nKind;
    QString strVersion; ///< of the format, as it stands in the document
    QString strSequenceID = QStringLiteral("SEQ1");
    QStringList lstNames;      ///< wavelengths or image sources
    int nViews = 0;            ///< SOLA only; below 0: the key is left out
    QStringList lstEmission;   ///< NOVA only
    QStringList lstExcitation; ///< NOVA only
    QStringList lstClicks;     ///< image numbers
    int nMapWidth = 4;         ///< height map
    int nMapHeight = 3;
    QString strMeasurementType; ///< with the next one: the calibration; both null: no such section
    QString strPerUnitValue;
    QString strSoftware = QStringLiteral("Ormelle version: 4.2.1"); ///< null: no such section
    bool bMask = true;                                              ///< SOLA only
    bool bRegistration = true;                                      ///< SOLA only
    std::vector<float> vecVertices;
    std::vector<quint32> vecTriangles;
    std::vector<float> vecVoxels; ///< x, y, z, value of each
    double dVoxelSize = 1.0;
    std::vector<std::vector<float>> vecSimulated; ///< a row per name
    std::vector<std::vector<float>> vecMeasured;
    QList<QPair<QString, QString>> lstResults;

    QSet<QByteArray> setLeftOut;                          ///< second tags that aren't written
    QList<QPair<QByteArray, QByteArray>> lstReplacements; ///< applied to the text in turn; each must match, or the test ends

    /// Sets the names and makes the density rows fit them.
    void setNames(const QStringList& lstNewNames);
    /// Replaces the surface by a finer sphere and makes the density rows fit it. Each step has four times the triangles of the one before.
    void setSphere(int nSteps, float fRadius = 10.0f);
    /// Replaces the volume by a cube of n x n x n voxels at the centre, with the values 1 to n^3 times the factor.
    void setCube(int nEdge, double dSize, float fFactor = 1.0f);

    int vertexCount() const { return static_cast<int>(vecVertices.size() / 3); }
    /// The sum of the voxel values.
    double total() const;
    SResultDocument& leaveOut(const QByteArray& byTag);
    SResultDocument& replace(const QByteArray& byOld, const QByteArray& byNew);

    QByteArray toXml() const;
};
