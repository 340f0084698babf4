#pragma once

// The measuring tool from outside: a pointer over a view, and a computation of its own of which voxels lie under a rectangle.

#include "ViewTestTools.h"

#include <QDebug>
#include <QMouseEvent>
#include <QRectF>
#include <QSet>

namespace ViewTest
{
const Qt::KeyboardModifiers eNone = Qt::NoModifier;
const Qt::KeyboardModifiers eControl = Qt::ControlModifier;
const Qt::KeyboardModifiers eShift = Qt::ShiftModifier;

/// A pointer over a view. Places are window pixels with the origin at the bottom left.
class CPointer
{
public:
    explicit CPointer(CRecordingView& view) : m_view(view) {}

    void moveTo(const QPoint& pt)
    {
        m_pt = pt;
        send(QEvent::MouseMove, Qt::NoButton);
    }
    void press(Qt::MouseButton eButton = Qt::LeftButton)
    {
        m_eButtons |= eButton;
        send(QEvent::MouseButtonPress, eButton);
    }
    void release(Qt::MouseButton eButton = Qt::LeftButton)
    {
        m_eButtons &= ~Qt::MouseButtons(eButton);
        send(QEvent::MouseButtonRelease, eButton);
    }
    /// Comes without a button, and draws from one place to another.
    void drag(const QPoint& ptFrom, const QPoint& ptTo)
    {
        moveTo(ptFrom);
        press();
        moveTo(ptTo);
        release();
    }
    void click(const QPoint& pt)
    {
        moveTo(pt);
        press();
        release();
    }

    Qt::KeyboardModifiers m_eModifiers = Qt::NoModifier;
    Qt::MouseButtons m_eButtons = Qt::NoButton;

private:
    void send(QEvent::Type eType, Qt::MouseButton eButton)
    {
        const QPoint pt(m_pt.x(), m_view.height() - m_pt.y());
        QMouseEvent objEvent(eType, pt, m_view.mapToGlobal(pt), eButton, m_eButtons, m_eModifiers);
        QCoreApplication::sendEvent(&m_view, &objEvent);
    }

    CRecordingView& m_view;
    QPoint m_pt;
};

/// Shows a view with these results, tool on.
inline void showMeasuring(CRecordingView& view, const QList<sAnalysisBase>& lstResults, const QSize& size = QSize(900, 400))
{
    show(view, size);
    for (const sAnalysisBase& objResult : lstResults)
    {
        view.load(objResult);
    }
    view.picture();
    view.onSelectVoxelS(true);
}

/// Three results, of which the second is smaller, off the origin and of other voxels. A millimetre is about thirteen pixels.
inline QList<sAnalysisBase> threeResults()
{
    SResultRecipe objLarge;
    objLarge.nVoxelEdge = 9;
    SResultRecipe objSmall;
    objSmall.objSize = Coord3d(14.0, 11.0, 16.0);
    objSmall.objCenter = Coord3d(2.5, -3.25, 1.5);
    objSmall.nVoxelEdge = 6;
    objSmall.fMin = 100.0f;
    objSmall.fMax = 900.0f;
    SResultRecipe objOther = objLarge;
    objOther.nVoxelEdge = 7;
    return {result(QStringLiteral("A"), objLarge), result(QStringLiteral("B"), objSmall), result(QStringLiteral("C"), objOther)};
}

inline QVector<float> rectangleOf(const sAnalysisBase& objResult)
{
    return {objResult.fSelectLeft, objResult.fSelectTop, objResult.fSelectRight, objResult.fSelectBottom};
}

inline void setRectangle(sAnalysisBase& objResult, float fX1, float fY1, float fX2, float fY2)
{
    objResult.fSelectLeft = fX1;
    objResult.fSelectTop = fY1;
    objResult.fSelectRight = fX2;
    objResult.fSelectBottom = fY2;
}

/// Where a place of a tile's picture, in millimetres from its middle, is in the window.
inline QPointF windowPlace(const CRecordingView& view, int nResult, const QPointF& ptScene)
{
    const QRect rect = pictureOf(view, nResult);
    return {rect.x() + (ptScene.x() - view.m_dBoxMinX) / (view.m_dBoxMaxX - view.m_dBoxMinX) * rect.width(),
            rect.y() + (ptScene.y() - view.m_dBoxMinY) / (view.m_dBoxMaxY - view.m_dBoxMinY) * rect.height()};
}

/// The reverse.
inline QPointF scenePlace(const CRecordingView& view, int nResult, const QPointF& pt)
{
    const QRect rect = pictureOf(view, nResult);
    return {view.m_dBoxMinX + (pt.x() - rect.x()) / rect.width() * (view.m_dBoxMaxX - view.m_dBoxMinX),
            view.m_dBoxMinY + (pt.y() - rect.y()) / rect.height() * (view.m_dBoxMaxY - view.m_dBoxMinY)};
}

/// x1, y1, x2, y2 in the scene that a drag gives, lower left corner first.
inline QVector<float> drawnRectangle(const CRecordingView& view, int nResult, const QPoint& ptFrom, const QPoint& ptTo)
{
    const QPointF ptFirst = scenePlace(view, nResult, ptFrom);
    const QPointF ptSecond = scenePlace(view, nResult, ptTo);
    return {float(qMin(ptFirst.x(), ptSecond.x())), float(qMin(ptFirst.y(), ptSecond.y())), float(qMax(ptFirst.x(), ptSecond.x())),
            float(qMax(ptFirst.y(), ptSecond.y()))};
}

/// The same with the upper left corner first.
inline QVector<float> topFirst(const QVector<float>& vecRectangle)
{
    return {vecRectangle[0], vecRectangle[3], vecRectangle[2], vecRectangle[1]};
}

/// Equal but for rounding; otherwise the two are told.
inline bool isAbout(const QVector<float>& vecSeen, const QVector<float>& vecExpected)
{
    for (int i = 0; i < 4; ++i)
    {
        if (std::fabs(vecSeen[i] - vecExpected[i]) > 1e-4f)
        {
            qWarning() << "rectangle" << vecSeen << "expected" << vecExpected;
            return false;
        }
    }
    return true;
}

/// Whether the rectangles of all results are equal but for rounding.
inline bool allAreAbout(CRecordingView& view, const QVector<float>& vecExpected)
{
    const QList<sAnalysisBase>& lstResults = view.getAnalysisParams();
    return std::all_of(lstResults.begin(), lstResults.end(),
                       [&](const sAnalysisBase& objResult) { return isAbout(rectangleOf(objResult), vecExpected); });
}

/// The centre of a voxel in a tile turned by angles about x, y and z: x and y in window pixels, z in millimetres before the middle.
inline Coord3d voxelPlace(CRecordingView& view, int nResult, int nVoxel, const Coord3d& objAngles)
{
    sAnalysisBase& objResult = view.getAnalysisParams()[nResult];
    Coord3d objMin;
    Coord3d objMax;
    objResult.objMesh.getBBox(objMin, objMax);
    const C3DVolume::Voxel* pVoxel = objResult.objVolume.getVoxelByNum(nVoxel);
    double fX = pVoxel->x - (objMin.x + objMax.x) / 2.0;
    double fY = pVoxel->y - (objMin.y + objMax.y) / 2.0;
    double fZ = pVoxel->z - (objMin.z + objMax.z) / 2.0;
    const auto fnTurn = [](double& fFirst, double& fSecond, double fDegrees)
    {
        const double fAngle = fDegrees * 3.14159265358979323846 / 180.0;
        const double fTurned = fFirst * std::cos(fAngle) - fSecond * std::sin(fAngle);
        fSecond = fFirst * std::sin(fAngle) + fSecond * std::cos(fAngle);
        fFirst = fTurned;
    };
    // The rotation about x is multiplied on first, so a point meets it last.
    fnTurn(fX, fY, objAngles.z);
    fnTurn(fZ, fX, objAngles.y);
    fnTurn(fY, fZ, objAngles.x);
    const QPointF pt = windowPlace(view, nResult, QPointF(fX, fY));
    return {pt.x(), pt.y(), fZ};
}

/// What of a volume lies under a rectangle of the window, through the depth of the box.
struct SUnder
{
    QSet<int> setVoxels;
    double fSum = 0.0;
    int nUnsure = 0; ///< voxels closer than a hundredth of a pixel to an edge, or so close to an end of the box
};

inline SUnder voxelsUnder(CRecordingView& view, int nResult, const QRectF& rect, const Coord3d& objAngles = Coord3d())
{
    C3DVolume& objVolume = view.getAnalysisParams()[nResult].objVolume;
    SUnder objUnder;
    for (int i = 0; i < objVolume.getNoOfVoxels(); ++i)
    {
        const Coord3d pt = voxelPlace(view, nResult, i, objAngles);
        const double fInside =
            std::min({pt.x - rect.left(), rect.right() - pt.x, pt.y - rect.top(), rect.bottom() - pt.y, view.m_dBoxMaxZ - std::fabs(pt.z)});
        objUnder.nUnsure += std::fabs(fInside) < 0.01 ? 1 : 0;
        if (fInside > 0.0)
        {
            objUnder.setVoxels.insert(i);
            objUnder.fSum += double(objVolume.getVoxelByNum(i)->fValue);
        }
    }
    return objUnder;
}

inline QSet<int> selectedVoxels(CRecordingView& view, int nResult)
{
    const C3DVolume& objVolume = view.getAnalysisParams()[nResult].objVolume;
    QSet<int> setVoxels;
    for (int i = 0; i < objVolume.getNoOfVoxels(); ++i)
    {
        if (objVolume.isVoxelSelected(i))
        {
            setVoxels.insert(i);
        }
    }
    return setVoxels;
}

inline double selectedSum(CRecordingView& view, int nResult)
{
    return double(view.getAnalysisParams()[nResult].objVolume.getTotalFluxForSelectedVoxels(true));
}

/// The window's rectangle between two places of a tile's picture, given in hundredths of it.
inline QRectF partOf(const CRecordingView& view, int nResult, const QRectF& rectPart)
{
    const QRect rect = pictureOf(view, nResult);
    const QPointF ptFrom(rect.x() + std::floor(rectPart.left() * rect.width() / 100.0),
                         rect.y() + std::floor(rectPart.top() * rect.height() / 100.0));
    const QPointF ptTo(rect.x() + std::floor(rectPart.right() * rect.width() / 100.0),
                       rect.y() + std::floor(rectPart.bottom() * rect.height() / 100.0));
    return {ptFrom, ptTo};
}

/// The same place of another tile: all pictures have one size.
inline QRectF movedTo(const CRecordingView& view, const QRectF& rect, int nFrom, int nTo)
{
    return rect.translated(pictureOf(view, nTo).topLeft() - pictureOf(view, nFrom).topLeft());
}

/// Draws a rectangle, both corners in window pixels.
inline void drag(CRecordingView& view, const QRectF& rect, Qt::KeyboardModifiers eModifiers = Qt::NoModifier)
{
    CPointer pointer(view);
    pointer.m_eModifiers = eModifiers;
    pointer.drag(rect.topLeft().toPoint(), rect.bottomRight().toPoint());
}

/// Turns all tiles, and shows them.
inline void turn(CRecordingView& view, const Coord3d& objAngles)
{
    view.setRotation(objAngles.x, objAngles.y, objAngles.z);
    view.picture();
}

/// The selected voxels of each result.
inline QList<QSet<int>> allSelected(CRecordingView& view)
{
    QList<QSet<int>> lstSelected;
    for (int i = 0; i < view.getAnalysisParams().size(); ++i)
    {
        lstSelected.append(selectedVoxels(view, i));
    }
    return lstSelected;
}
} // namespace ViewTest
