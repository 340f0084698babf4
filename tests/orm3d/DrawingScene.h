#pragma once

#include "C3DMesh.h"
#include "C3DVolume.h"
#include "Shapes.h"

#include <QColor>
#include <QImage>
#include <QVector>
#include <QtTest>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>

#include <GL/gl.h>

/// Objects to draw, and ways to look at what was drawn.
namespace DrawingScene
{
using Voxel = C3DVolume::Voxel;
constexpr int nSize = 200;                         ///< pixels of a frame
inline const QColor colorGround(10, 20, 30);       ///< that no table has
constexpr float afPlain[3] = {0.5f, 0.75f, 0.25f}; ///< colour of surfaces

inline C3DMesh meshOf(const Shapes::SSurface& sSurface, float fOpacity = 0.5f)
{
    C3DMesh objMesh(QStringLiteral("Surface"));
    if (!objMesh.loadMeshData(sSurface.m_vecVertices, sSurface.m_vecTriangles))
        QTest::qFail("the test's own surface does not load", __FILE__, __LINE__);
    float afColor[3] = {afPlain[0], afPlain[1], afPlain[2]};
    objMesh.setFaceSetColor(afColor);
    objMesh.setOpacity(fOpacity);
    return objMesh;
}

inline C3DVolume volumeOf(QVector<Voxel> vecVoxels, float fSize = 1.0f)
{
    float fMin = std::numeric_limits<float>::max();
    float fMax = std::numeric_limits<float>::lowest();
    for (const Voxel& voxel : vecVoxels)
    {
        fMin = std::min(fMin, voxel.fValue);
        fMax = std::max(fMax, voxel.fValue);
    }
    C3DVolume objVolume(QStringLiteral("Source"));
    if (!objVolume.loadVoxelData(fSize, static_cast<unsigned long>(vecVoxels.size()), vecVoxels.data(), fMin, fMax))
        QTest::qFail("the test's own volume does not load", __FILE__, __LINE__);
    objVolume.setColorTable(12, 0.0f, 1.0f);
    return objVolume;
}

/// A cube of n x n x n voxels about the origin.
inline QVector<Voxel> cube(int n, float fSize, const std::function<float(int, int, int)>& fnValue)
{
    QVector<Voxel> vecVoxels;
    const float fFirst = -0.5f * static_cast<float>(n - 1) * fSize;
    for (int nZ = 0; nZ < n; ++nZ)
    {
        for (int nY = 0; nY < n; ++nY)
        {
            for (int nX = 0; nX < n; ++nX)
                vecVoxels.append({fFirst + static_cast<float>(nX) * fSize, fFirst + static_cast<float>(nY) * fSize,
                                  fFirst + static_cast<float>(nZ) * fSize, vecVoxels.size() + 1, fnValue(nX, nY, nZ)});
        }
    }
    return vecVoxels;
}

/// Light from everywhere: a surface has just its own colour.
inline void lightEvenly()
{
    const float afAmbient[4] = {1.0f, 1.0f, 1.0f, 1.0f};
    glLightModelfv(GL_LIGHT_MODEL_AMBIENT, afAmbient);
    glDisable(GL_LIGHT0);
}

inline bool isNear(QRgb nSeen, const QColor& colorExpected, int nTolerance)
{
    return std::abs(qRed(nSeen) - colorExpected.red()) <= nTolerance && std::abs(qGreen(nSeen) - colorExpected.green()) <= nTolerance &&
           std::abs(qBlue(nSeen) - colorExpected.blue()) <= nTolerance;
}

/// A colour over another one.
inline QColor over(const QColor& colorFront, const QColor& colorBack, double fOpacity)
{
    const auto mix = [=](int nFront, int nBack) { return qRound(fOpacity * nFront + (1.0 - fOpacity) * nBack); };
    return {mix(colorFront.red(), colorBack.red()), mix(colorFront.green(), colorBack.green()), mix(colorFront.blue(), colorBack.blue())};
}

inline QColor plainColor()
{
    return {qRound(255 * afPlain[0]), qRound(255 * afPlain[1]), qRound(255 * afPlain[2])};
}

inline int countNot(const QImage& imgFrame, QRgb nColor)
{
    int nCount = 0;
    for (int nY = 0; nY < imgFrame.height(); ++nY)
    {
        for (int nX = 0; nX < imgFrame.width(); ++nX)
            nCount += imgFrame.pixel(nX, nY) != nColor ? 1 : 0;
    }
    return nCount;
}

/// Whether two pictures agree but for the last bit of a few pixels, which depends on the order of the terms of a colour.
inline bool isSamePicture(const QImage& imgSeen, const QImage& imgExpected)
{
    int nDifferent = 0;
    for (int nY = 0; nY < imgSeen.height(); ++nY)
    {
        for (int nX = 0; nX < imgSeen.width(); ++nX)
        {
            if (!isNear(imgSeen.pixel(nX, nY), QColor(imgExpected.pixel(nX, nY)), 1))
                return false;
            nDifferent += imgSeen.pixel(nX, nY) != imgExpected.pixel(nX, nY) ? 1 : 0;
        }
    }
    return imgSeen.size() == imgExpected.size() && nDifferent * 1000 < imgSeen.width() * imgSeen.height();
}

/// A quad towards the viewer, 8 x 8 mm.
inline Shapes::SSurface quad()
{
    Shapes::SSurface sQuad;
    sQuad.add(-4, -4, 0);
    sQuad.add(4, -4, 0);
    sQuad.add(4, 4, 0);
    sQuad.add(-4, 4, 0);
    sQuad.addTriangle(0, 1, 2);
    sQuad.addTriangle(0, 2, 3);
    return sQuad;
}
} // namespace DrawingScene
