#pragma once

#include "../tests/results/CWalkRecorder.h"

#include "AnalysisRecords.h"
#include "CStudyWriter.h"
#include "SourceVoxels.h"
#include "VolumeSurfaceConversion.h"

#include <QString>
#include <QStringList>

#include <cmath>
#include <cstdlib>
#include <vector>

/// A study whose results have 10,000 vertices, 20,000 triangles, two times 20 density maps and 50,000 voxels of 1 mm each, and the steps
/// of a load one by one.
class CLoadStudy
{
public:
    explicit CLoadStudy(int nResults)
    {
        m_objWriter.addSequence(sequenceID(), SSequenceLook::luminescent());
        SResultDocument objDocument;
        objDocument.strSequenceID = sequenceID();
        setBall(objDocument);
        objDocument.setCube(nEdge, 1.0);
        QStringList lstWavelengths;
        for (int i = 0; i < nMaps; ++i)
        {
            lstWavelengths.append(QString::number(500 + 10 * i));
        }
        objDocument.setNames(lstWavelengths);
        for (int i = 0; i < nResults; ++i)
        {
            m_lstResults.append(QStringLiteral("Result %1").arg(i));
            m_lstFiles.append(m_objWriter.addResult(sequenceID(), m_lstResults.last(), objDocument));
        }
    }

    static QString sequenceID() { return QStringLiteral("SEQ1"); }
    QString folder() const { return m_objWriter.folder(); }
    const QStringList& results() const { return m_lstResults; }
    const QStringList& files() const { return m_lstFiles; }

    /// From the file to the filled record.
    static void read(const QString& strFile, SSOLAAnalysis& objAnalysis)
    {
        CWalkRecorder objHost(SResultDocument::SOLA);
        if (!ResultDocument::read(ResultDocument::sola(), objHost, strFile,
                                  {objAnalysis, objAnalysis.nWavelengthCount, objAnalysis.lstWavelengths}))
        {
            std::abort();
        }
    }

    static void refine(SSOLAAnalysis& objAnalysis)
    {
        IA3D::mesh objMesh;
        IA3D::mesh_utils::viewinfo objView;
        VolumeSurfaceConversion::convert(objAnalysis.objMesh, objMesh);
        interpolateSourceVoxels(&objAnalysis.objVolume, objMesh, objView, refinementFactor(objAnalysis.objVolume.getVoxelSize()));
    }

private:
    static constexpr int nMaps = 20;
    static constexpr int nEdge = 37; ///< voxels
    static constexpr double fRadius = 21.0;

    static void setBall(SResultDocument& objDocument)
    {
        constexpr quint32 nRings = 70;
        constexpr quint32 nSides = 143;
        constexpr double fPi = 3.14159265358979;
        objDocument.vecVertices = {0.0f, 0.0f, static_cast<float>(-fRadius)};
        for (quint32 nRing = 1; nRing <= nRings; ++nRing)
        {
            const double fPolar = fPi * nRing / (nRings + 1);
            for (quint32 nSide = 0; nSide < nSides; ++nSide)
            {
                const double fTurn = 2.0 * fPi * nSide / nSides;
                for (const double f : {std::sin(fPolar) * std::cos(fTurn), std::sin(fPolar) * std::sin(fTurn), -std::cos(fPolar)})
                {
                    objDocument.vecVertices.push_back(static_cast<float>(fRadius * f));
                }
            }
        }
        objDocument.vecVertices.insert(objDocument.vecVertices.end(), {0.0f, 0.0f, static_cast<float>(fRadius)});
        const quint32 nLast = nRings * nSides + 1;
        objDocument.vecTriangles.clear();
        for (quint32 nSide = 0; nSide < nSides; ++nSide)
        {
            const quint32 nNext = (nSide + 1) % nSides;
            objDocument.vecTriangles.insert(objDocument.vecTriangles.end(), {0, 1 + nNext, 1 + nSide});
            for (quint32 nRing = 0; nRing + 1 < nRings; ++nRing)
            {
                const quint32 n = 1 + nRing * nSides;
                objDocument.vecTriangles.insert(objDocument.vecTriangles.end(), {n + nSide, n + nNext, n + nSides + nSide, n + nNext,
                                                                                 n + nSides + nNext, n + nSides + nSide});
            }
            const quint32 n = 1 + (nRings - 1) * nSides;
            objDocument.vecTriangles.insert(objDocument.vecTriangles.end(), {n + nSide, n + nNext, nLast});
        }
    }

    CStudyWriter m_objWriter;
    QStringList m_lstResults;
    QStringList m_lstFiles;
};
