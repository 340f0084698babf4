#pragma once

// Small results to show, a view that writes down what it is told to draw, and readers of the pictures that it makes.

#include "AnalysisRecords.h"
#include "AnalysisResultXMLWrapper.h"
#include "C3DSGNode.h"
#include "COrmPreference.h"
#include "CSOLAView.h"
#include "LongitudinalStudyBrowserView.h"
#include "OrmTestMain.h"
#include "Singleton.h"
#include "TileGrid.h"

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>
#include <QVector>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

#include <GL/gl.h>

namespace ViewTest
{
template <class T>
QByteArray hexText(const std::vector<T>& vecValues)
{
    static_assert(sizeof(T) == 4, "the format has 32-bit values");
    return QByteArray(reinterpret_cast<const char*>(vecValues.data()), static_cast<int>(vecValues.size() * sizeof(T))).toHex();
}

/// A surface as it comes from a saved result: written as a document and read back.
inline C3DMesh meshFrom(const std::vector<float>& vecVertices, const std::vector<quint32>& vecTriangles)
{
    QByteArray byDocument = "<Ormelle.Result Version=\"2.0\"><Orm3.0.Surface.Data><Orm3.0.Surface.Vertices Count=\"";
    byDocument += QByteArray::number(static_cast<int>(vecVertices.size() / 3));
    byDocument += "\"><Orm3.0.Surface.Vertices.Values><Text.Data>" + hexText(vecVertices);
    byDocument += "</Text.Data></Orm3.0.Surface.Vertices.Values></Orm3.0.Surface.Vertices><Orm3.0.Surface.Triangles Count=\"";
    byDocument += QByteArray::number(static_cast<int>(vecTriangles.size() / 3));
    byDocument += "\"><Orm3.0.Surface.Triangles.Values><Text.Data>" + hexText(vecTriangles);
    byDocument += "</Text.Data></Orm3.0.Surface.Triangles.Values></Orm3.0.Surface.Triangles></Orm3.0.Surface.Data></Ormelle.Result>";
    const QTemporaryDir dir;
    QFile file(dir.filePath(QStringLiteral("surface.xml")));
    if (!file.open(QIODevice::WriteOnly) || file.write(byDocument) != byDocument.size())
    {
        qFatal("the test's document cannot be written");
    }
    file.close();
    AnalysisResultXMLWrapper wrapper;
    C3DMesh objMesh{QString()};
    if (!wrapper.loadXMLFile(file.fileName()) || !objMesh.loadFromXML(&wrapper))
    {
        qFatal("the test's document cannot be read: %s", qPrintable(wrapper.lastError()));
    }
    return objMesh;
}

/// A closed box with these edges, in millimetres, about a centre.
inline C3DMesh boxMesh(const Coord3d& objSize, const Coord3d& objCenter = Coord3d())
{
    std::vector<float> vecVertices;
    for (int i = 0; i < 8; ++i)
    {
        vecVertices.push_back(static_cast<float>(objCenter.x + ((i & 1) ? 0.5 : -0.5) * objSize.x));
        vecVertices.push_back(static_cast<float>(objCenter.y + ((i & 2) ? 0.5 : -0.5) * objSize.y));
        vecVertices.push_back(static_cast<float>(objCenter.z + ((i & 4) ? 0.5 : -0.5) * objSize.z));
    }
    return meshFrom(vecVertices,
                    {0, 2, 1, 1, 2, 3, 4, 5, 6, 5, 7, 6, 0, 1, 4, 1, 5, 4, 2, 6, 3, 3, 6, 7, 0, 4, 2, 2, 4, 6, 1, 3, 5, 3, 7, 5});
}

/// nEdge x nEdge x nEdge voxels of 1 mm about a centre, with values that rise from fMin to fMax.
inline C3DVolume cubeVolume(int nEdge, float fMin, float fMax, const Coord3d& objCenter = Coord3d())
{
    QVector<C3DVolume::Voxel> vecVoxels;
    const int nVoxels = nEdge * nEdge * nEdge;
    for (int i = 0; i < nVoxels; ++i)
    {
        const float fHalf = 0.5f * static_cast<float>(nEdge - 1);
        const int nY = i / nEdge % nEdge;
        const int nZ = i / nEdge / nEdge;
        C3DVolume::Voxel objVoxel{};
        objVoxel.x = static_cast<float>(objCenter.x) + static_cast<float>(i % nEdge) - fHalf;
        objVoxel.y = static_cast<float>(objCenter.y) + static_cast<float>(nY) - fHalf;
        objVoxel.z = static_cast<float>(objCenter.z) + static_cast<float>(nZ) - fHalf;
        objVoxel.nID = C3DSGNode::m_nObjectCount++;
        objVoxel.fValue = nVoxels == 1 ? fMax : fMin + (fMax - fMin) * static_cast<float>(i) / static_cast<float>(nVoxels - 1);
        vecVoxels.append(objVoxel);
    }
    C3DVolume objVolume{QString()};
    if (!objVolume.loadVoxelData(1.0f, static_cast<unsigned long>(nVoxels), vecVoxels.data(), fMin, fMax))
    {
        qFatal("the test's volume cannot be made");
    }
    return objVolume;
}

struct SResultRecipe
{
    int nKind = 0;
    QString strSequence = QStringLiteral("SEQ");
    Coord3d objSize{20.0, 20.0, 20.0};
    Coord3d objCenter;
    float fMin = 1.0f;
    float fMax = 10.0f;
    int nVoxelEdge = 4;
};

/// A result of a kind whose surface has this size.
inline SResultRecipe box(double fX, double fY, double fZ, int nKind = 0)
{
    SResultRecipe objRecipe;
    objRecipe.nKind = nKind;
    objRecipe.objSize = Coord3d(fX, fY, fZ);
    return objRecipe;
}

inline sAnalysisBase result(const QString& strName, const SResultRecipe& objRecipe = SResultRecipe())
{
    sAnalysisBase objResult;
    objResult.strSequenceID = objRecipe.strSequence;
    objResult.strResultName = strName;
    objResult.nAnalysisType = objRecipe.nKind;
    objResult.objMesh = boxMesh(objRecipe.objSize, objRecipe.objCenter);
    objResult.objVolume = cubeVolume(objRecipe.nVoxelEdge, objRecipe.fMin, objRecipe.fMax, objRecipe.objCenter);
    objResult.objVolume.setMIP(true);
    objResult.objRawVolume = objResult.objVolume;
    return objResult;
}

/// A text that the view was told to draw, and where.
struct STextCall
{
    QString strText;
    double fX;
    double fY;
    double fZ;
    QFont font;
    int nListBase;
    QRect rectViewport; ///< as recorded, which is what text is placed by
    double fLeft;       ///< the recorded box
    double fRight;
    double fBottom;
    double fTop;
    double fNear;
    double fFar;
    QColor clr; ///< OpenGL's current one
};

/// The view with its insides open to tests.
class CRecordingView : public CLongitudinalStudyBrowserView
{
public:
    explicit CRecordingView(QWidget* pParent = nullptr) : CLongitudinalStudyBrowserView(pParent) {}

    void renderText(double dX, double dY, double dZ, const QString& strText, const QFont& font, int nListBase) override
    {
        const Singleton* pRecord = Singleton::getInstance();
        float afColor[4] = {};
        glGetFloatv(GL_CURRENT_COLOR, afColor);
        m_lstTexts.append({strText, dX, dY, dZ, font, nListBase, QRect(pRecord->m_nX, pRecord->m_nY, pRecord->m_nWidth, pRecord->m_nHeight),
                           pRecord->m_fLeft, pRecord->m_fRight, pRecord->m_fBottom, pRecord->m_fTop, pRecord->m_fNear, pRecord->m_fFar,
                           QColor::fromRgbF(qBound(0.0, double(afColor[0]), 1.0), qBound(0.0, double(afColor[1]), 1.0),
                                            qBound(0.0, double(afColor[2]), 1.0))});
        CLongitudinalStudyBrowserView::renderText(dX, dY, dZ, strText, font, nListBase);
    }

    /// Adds a result as the window does: the record, then the key.
    void load(sAnalysisBase objResult)
    {
        setAnalysisParms(objResult);
        getLoadedResult().append(objResult.strSequenceID + objResult.strResultName);
    }

    /// The picture once nothing more is to be painted.
    QImage picture()
    {
        settle();
        return getPrintImage();
    }

    /// The texts of one further frame.
    QList<STextCall> textsOfAFrame()
    {
        settle();
        m_lstTexts.clear();
        grabFramebuffer();
        return m_lstTexts;
    }

    int tileWidth() const { return m_nTileWidth; }
    int tileHeight() const { return m_nTileHeight; }
    int textHeight() const { return m_nTextHeight; }

    using CLongitudinalStudyBrowserView::clearVoxelSelection;
    using CLongitudinalStudyBrowserView::doSelection;
    using CLongitudinalStudyBrowserView::doVoxelSelection;
    using CLongitudinalStudyBrowserView::drawMeasurePoints;
    using CLongitudinalStudyBrowserView::m_bColorPaletteModified;
    using CLongitudinalStudyBrowserView::m_bResultsChanged;
    using CLongitudinalStudyBrowserView::m_bSelectVoxel;
    using CLongitudinalStudyBrowserView::m_bShowPhotonDensity;
    using CLongitudinalStudyBrowserView::m_bToolDragging;
    using CLongitudinalStudyBrowserView::m_bToolMoved;
    using CLongitudinalStudyBrowserView::m_bUseCustomRange;
    using CLongitudinalStudyBrowserView::m_dBoxMaxX;
    using CLongitudinalStudyBrowserView::m_dBoxMaxY;
    using CLongitudinalStudyBrowserView::m_dBoxMaxZ;
    using CLongitudinalStudyBrowserView::m_dBoxMinX;
    using CLongitudinalStudyBrowserView::m_dBoxMinY;
    using CLongitudinalStudyBrowserView::m_dBoxMinZ;
    using CLongitudinalStudyBrowserView::m_dragEnd;
    using CLongitudinalStudyBrowserView::m_dragStart;
    using CLongitudinalStudyBrowserView::m_fMeshOpacity;
    using CLongitudinalStudyBrowserView::m_lstToolPoints;
    using CLongitudinalStudyBrowserView::m_nActiveResult;
    using CLongitudinalStudyBrowserView::m_nContextResult;
    using CLongitudinalStudyBrowserView::m_nToolHit;
    using CLongitudinalStudyBrowserView::m_pContextMenu;
    using CLongitudinalStudyBrowserView::m_pRemoveAction;
    using CLongitudinalStudyBrowserView::processVoxelSelection;
    using CLongitudinalStudyBrowserView::setupViewForResult;
    using CLongitudinalStudyBrowserView::updateSelectToolPosition;
    using CLongitudinalStudyBrowserView::updateVoxelSelections;

    QList<STextCall> m_lstTexts;
    int m_nPaints = 0; ///< frames painted so far

protected:
    void paintGL() override
    {
        ++m_nPaints;
        CLongitudinalStudyBrowserView::paintGL();
    }
};

/// Shows a view with this size.
inline void show(CRecordingView& view, const QSize& size)
{
    view.resize(size);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
}

/// The drawing rectangle of a tile: as large as the common box allows, in the tile's middle.
inline QRect pictureOf(const CRecordingView& view, int nResult)
{
    const int nBottom = TileGrid::tileBottom(nResult, view.getGLHeight(), view.tileHeight(), view.textHeight());
    const TileGrid::SRect rect =
        TileGrid::letterbox(TileGrid::tileLeft(nResult, view.tileWidth()), nBottom, view.tileWidth(), view.tileHeight(),
                            view.m_dBoxMaxX - view.m_dBoxMinX, view.m_dBoxMaxY - view.m_dBoxMinY);
    return {rect.nX, rect.nY, rect.width(), rect.height()};
}

/// Lets the view paint what is still to be painted. Returns the number of its frames so far.
inline int restOf(CRecordingView& view)
{
    for (int i = 0; i < 50; ++i)
    {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
    return view.m_nPaints;
}

// ---- Pictures. Rectangles are in window pixels with the origin at the bottom left, as the view counts them. ------------------------

inline bool isRed(QRgb rgb)
{
    return qRed(rgb) > 200 && qGreen(rgb) < 60 && qBlue(rgb) < 60;
}
inline bool isBlue(QRgb rgb)
{
    return qBlue(rgb) > 200 && qGreen(rgb) < 60 && qRed(rgb) < 60;
}
inline bool isGreen(QRgb rgb)
{
    return qGreen(rgb) > 200 && qRed(rgb) < 60 && qBlue(rgb) < 60;
}
inline bool isBlack(QRgb rgb)
{
    return qRed(rgb) == 0 && qGreen(rgb) == 0 && qBlue(rgb) == 0;
}
inline bool isNotBlack(QRgb rgb)
{
    return !isBlack(rgb);
}

/// The rectangle around all pixels within a part of a picture that a test is true for; null for none.
template <class Test>
QRect boundsOf(const QImage& img, const QRect& rectPart, Test fnTest)
{
    QRect rectFound;
    for (int nY = qMax(0, rectPart.top()); nY <= qMin(img.height() - 1, rectPart.bottom()); ++nY)
    {
        for (int nX = qMax(0, rectPart.left()); nX <= qMin(img.width() - 1, rectPart.right()); ++nX)
        {
            if (fnTest(img.pixel(nX, img.height() - 1 - nY)))
            {
                rectFound = rectFound.united(QRect(nX, nY, 1, 1));
            }
        }
    }
    return rectFound;
}

template <class Test>
int countOf(const QImage& img, const QRect& rectPart, Test fnTest)
{
    int nFound = 0;
    for (int nY = qMax(0, rectPart.top()); nY <= qMin(img.height() - 1, rectPart.bottom()); ++nY)
    {
        for (int nX = qMax(0, rectPart.left()); nX <= qMin(img.width() - 1, rectPart.right()); ++nX)
        {
            nFound += fnTest(img.pixel(nX, img.height() - 1 - nY)) ? 1 : 0;
        }
    }
    return nFound;
}

inline QRgb pixelAt(const QImage& img, int nX, int nY)
{
    return img.pixel(nX, img.height() - 1 - nY);
}
} // namespace ViewTest
