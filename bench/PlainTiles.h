#pragma once

// A plain way to draw the tiles of the comparative view: the same surfaces and voxels at the same places, all of their triangles and points
// blended one over the other, from buffer objects that are filled once, with the fewest calls and no regard for anybody else's state. No
// names, bars or frames, and no care for the order of a surface's layers.

#include "C3DMesh.h"
#include "C3DVolume.h"

#include <QtGui/qopengl.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <vector>

#include <GL/gl.h>

struct SPlainTile
{
    GLuint nVertices = 0; ///< x, y, z and normal
    GLuint nIndexes = 0;
    GLuint nVoxels = 0; ///< x, y, z and colour, in the order of drawing
    GLsizei nIndexCount = 0;
    GLsizei nVoxelCount = 0;
    float fVoxelSize = 1.0f;
};

class CPlainTiles
{
    /// A place in the bound buffer, in the form that OpenGL asks for.
    static const void* offset(size_t nBytes) { return reinterpret_cast<const void*>(nBytes); } // NOLINT(performance-no-int-to-ptr)

public:
    /// Fills the buffers of one result. The order of translucent voxels is that of turns between 0 and 90 degrees about the y axis.
    static SPlainTile makeTile(const C3DMesh& objMesh, C3DVolume& objVolume)
    {
        SPlainTile objTile;
        objTile.fVoxelSize = objVolume.getVoxelSize();
        std::vector<float> vecVertices = withNormals(objMesh);
        objTile.nVertices = buffer(GL_ARRAY_BUFFER, vecVertices.data(), vecVertices.size() * sizeof(float));
        objTile.nIndexes = buffer(GL_ELEMENT_ARRAY_BUFFER, objMesh.triangles().data(), objMesh.triangles().size() * sizeof(quint32));
        objTile.nIndexCount = static_cast<GLsizei>(objMesh.triangles().size());
        const std::vector<SPoint> vecPoints = points(objVolume);
        objTile.nVoxels = buffer(GL_ARRAY_BUFFER, vecPoints.data(), vecPoints.size() * sizeof(SPoint));
        objTile.nVoxelCount = static_cast<GLsizei>(vecPoints.size());
        glBindBuffer(GL_ARRAY_BUFFER, 0);
        glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
        return objTile;
    }

    /// Draws the voxels of one tile into a viewport of fPixelsPerMm, turned about the y axis.
    static void drawVoxels(const SPlainTile& objTile, bool bMIP, double fPixelsPerMm, double fDegrees)
    {
        glBindBuffer(GL_ARRAY_BUFFER, objTile.nVoxels);
        glEnableClientState(GL_VERTEX_ARRAY);
        glEnableClientState(GL_COLOR_ARRAY);
        glVertexPointer(3, GL_FLOAT, sizeof(SPoint), nullptr);
        glColorPointer(4, GL_UNSIGNED_BYTE, sizeof(SPoint), offset(3 * sizeof(float)));
        glDisable(GL_LIGHTING);
        glDisable(GL_DEPTH_TEST);
        glEnable(GL_BLEND);
        const double fEdge = fPixelsPerMm * static_cast<double>(objTile.fVoxelSize);
        if (bMIP)
        {
            const double fTurn = fDegrees * 3.14159265358979 / 180.0;
            glPointSize(static_cast<float>(std::ceil(fEdge * (std::fabs(std::cos(fTurn)) + std::fabs(std::sin(fTurn))))));
            glDrawArrays(GL_POINTS, 0, objTile.nVoxelCount);
        }
        else
        {
            glEnable(GL_POINT_SPRITE);
            glPointSize(static_cast<float>(2.0 * fEdge));
            glDrawArrays(GL_POINTS, 0, objTile.nVoxelCount);
            glDisable(GL_POINT_SPRITE);
        }
        glDisableClientState(GL_COLOR_ARRAY);
        glDisableClientState(GL_VERTEX_ARRAY);
        glBindBuffer(GL_ARRAY_BUFFER, 0);
    }

    /// Draws the surface of one tile.
    static void drawSurface(const SPlainTile& objTile, float fOpacity)
    {
        glBindBuffer(GL_ARRAY_BUFFER, objTile.nVertices);
        glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, objTile.nIndexes);
        glEnableClientState(GL_VERTEX_ARRAY);
        glVertexPointer(3, GL_FLOAT, 6 * sizeof(float), nullptr);
        glEnable(GL_DEPTH_TEST);
        glDepthFunc(GL_LEQUAL);
        glEnable(GL_BLEND);
        glEnable(GL_LIGHTING);
        glEnableClientState(GL_NORMAL_ARRAY);
        glNormalPointer(GL_FLOAT, 6 * sizeof(float), offset(3 * sizeof(float)));
        glColor4f(0.85f, 0.85f, 0.85f, fOpacity);
        glDrawElements(GL_TRIANGLES, objTile.nIndexCount, GL_UNSIGNED_INT, nullptr);
        glDisableClientState(GL_NORMAL_ARRAY);
        glDisableClientState(GL_VERTEX_ARRAY);
        glBindBuffer(GL_ARRAY_BUFFER, 0);
        glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
    }

private:
    struct SPoint
    {
        float afPosition[3];
        quint8 anColor[4];
    };

    static GLuint buffer(GLenum eTarget, const void* pData, size_t nBytes)
    {
        GLuint nBuffer = 0;
        glGenBuffers(1, &nBuffer);
        glBindBuffer(eTarget, nBuffer);
        glBufferData(eTarget, static_cast<GLsizeiptr>(nBytes), pData, GL_STATIC_DRAW);
        return nBuffer;
    }

    static std::vector<float> withNormals(const C3DMesh& objMesh)
    {
        const std::vector<float>& vecIn = objMesh.vertices();
        std::vector<float> vecOut(vecIn.size() * 2, 0.0f);
        const std::vector<quint32>& vecTriangles = objMesh.triangles();
        for (size_t i = 0; i + 2 < vecTriangles.size(); i += 3)
        {
            const float* p[3];
            for (size_t n = 0; n < 3; ++n)
            {
                p[n] = vecIn.data() + 3 * vecTriangles[i + n];
            }
            float afA[3];
            float afB[3];
            for (int n = 0; n < 3; ++n)
            {
                afA[n] = p[1][n] - p[0][n];
                afB[n] = p[2][n] - p[0][n];
            }
            for (size_t nCorner = 0; nCorner < 3; ++nCorner)
            {
                float* pNormal = vecOut.data() + 6 * vecTriangles[i + nCorner] + 3;
                for (int n = 0; n < 3; ++n)
                {
                    pNormal[n] += afA[(n + 1) % 3] * afB[(n + 2) % 3] - afA[(n + 2) % 3] * afB[(n + 1) % 3];
                }
            }
        }
        for (size_t i = 0; i < vecIn.size() / 3; ++i)
        {
            float* pOut = vecOut.data() + 6 * i;
            std::copy_n(vecIn.data() + 3 * i, 3, pOut);
            const float fLength = std::sqrt(pOut[3] * pOut[3] + pOut[4] * pOut[4] + pOut[5] * pOut[5]);
            for (int n = 3; n < 6; ++n)
            {
                pOut[n] /= fLength > 0.0f ? fLength : 1.0f;
            }
        }
        return vecOut;
    }

    static std::vector<SPoint> points(C3DVolume& objVolume)
    {
        std::vector<C3DVolume::Voxel> vecVoxels(objVolume.voxels().cbegin(), objVolume.voxels().cend());
        const float fHighest = objVolume.getAttribMaxValue();
        const bool bMIP = objVolume.m_bMIP;
        const auto fnBefore = [bMIP](const C3DVolume::Voxel& objA, const C3DVolume::Voxel& objB)
        {
            if (bMIP)
            {
                return objA.fValue < objB.fValue;
            }
            return objA.z != objB.z ? objA.z < objB.z : objA.x > objB.x;
        };
        std::stable_sort(vecVoxels.begin(), vecVoxels.end(), fnBefore);
        const auto nHalf = std::count_if(vecVoxels.begin(), vecVoxels.end(),
                                         [fHighest](const C3DVolume::Voxel& objVoxel) { return objVoxel.fValue >= fHighest / 2.0f; });
        const double fThrough = std::max(1.0, std::cbrt(static_cast<double>(nHalf)));
        std::vector<SPoint> vecPoints;
        vecPoints.reserve(vecVoxels.size());
        for (const C3DVolume::Voxel& objVoxel : vecVoxels)
        {
            const QRgb rgb = objVolume.getColorPalette()->colorForValue(static_cast<double>(objVoxel.fValue));
            const double fAlpha = bMIP ? 1.0 : 1.0 - std::pow(0.05, static_cast<double>(objVoxel.fValue / fHighest) / (4.0 * fThrough));
            vecPoints.push_back({{objVoxel.x, objVoxel.y, objVoxel.z},
                                 {static_cast<quint8>(qRed(rgb)), static_cast<quint8>(qGreen(rgb)), static_cast<quint8>(qBlue(rgb)),
                                  static_cast<quint8>(std::lround(fAlpha * 255.0))}});
        }
        return vecPoints;
    }
};
