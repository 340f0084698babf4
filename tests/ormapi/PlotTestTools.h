#pragma once

// What tests of the plot share: lines to plot, and looks at its picture.

#include "COrmXYPlot.h"

#include <QDir>
#include <QImage>
#include <QRect>
#include <QTest>
#include <QVector>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

namespace PlotTest
{
constexpr int nLegendRows = 32; ///< pixels at the top of a plot that the legend takes
constexpr double fNan = std::numeric_limits<double>::quiet_NaN();
constexpr double fInfinity = std::numeric_limits<double>::infinity();

inline bool isLike(QRgb n1, QRgb n2)
{
    return std::abs(qRed(n1) - qRed(n2)) < 40 && std::abs(qGreen(n1) - qGreen(n2)) < 40 && std::abs(qBlue(n1) - qBlue(n2)) < 40;
}

/// Number of pixels of about this colour, below the legend.
inline int pixelsLike(const QImage& imgSeen, const QColor& clrWanted, int nFromRow = nLegendRows)
{
    int nPixels = 0;
    for (int y = nFromRow; y < imgSeen.height(); ++y)
    {
        for (int x = 0; x < imgSeen.width(); ++x)
            nPixels += isLike(imgSeen.pixel(x, y), clrWanted.rgb()) ? 1 : 0;
    }
    return nPixels;
}

/// Leftmost and rightmost column with a pixel of about this colour, below the legend; -1 if there is none.
inline std::pair<int, int> columnsLike(const QImage& imgSeen, const QColor& clrWanted, int nFromRow = nLegendRows)
{
    std::pair<int, int> pairColumns(-1, -1);
    for (int x = 0; x < imgSeen.width(); ++x)
    {
        for (int y = nFromRow; y < imgSeen.height(); ++y)
        {
            if (!isLike(imgSeen.pixel(x, y), clrWanted.rgb()))
                continue;
            pairColumns.first = pairColumns.first < 0 ? x : pairColumns.first;
            pairColumns.second = x;
        }
    }
    return pairColumns;
}

/// The plot's picture; kept in the folder ORM_TEST_PICTURES names, if it does.
inline QImage pictureOf(COrmXYPlot& objPlot)
{
    const QImage imgSeen = objPlot.getPrintImage();
    const QString strFolder = qEnvironmentVariable("ORM_TEST_PICTURES");
    if (!strFolder.isEmpty())
        imgSeen.save(QDir(strFolder).filePath(
            QStringLiteral("plot-%1-%2.png").arg(QLatin1String(QTest::currentTestFunction())).arg(imgSeen.width())));
    return imgSeen;
}

inline DISPLAY_SETTINGS lookOfFirstLine()
{
    DISPLAY_SETTINGS sSettings;
    sSettings.lineColor = Qt::blue;
    sSettings.nDisplayMode = 2;
    sSettings.objPointProperties.pointColor = Qt::red;
    sSettings.objPointProperties.bPointVisible = true;
    return sSettings;
}

template <typename Y>
bool add(COrmXYPlot& objPlot, const QString& strName, std::vector<Y> vecY)
{
    std::vector<int> vecX(vecY.size());
    for (std::size_t i = 0; i < vecX.size(); ++i)
        vecX[i] = static_cast<int>(i);
    return objPlot.addDataLine<int, Y>(strName, vecX.data(), vecY.data(), static_cast<int>(vecY.size()));
}

/// Number of pixels of another colour.
inline int pixelsNotLike(const QImage& imgSeen, const QColor& clrWanted)
{
    int nPixels = 0;
    for (int y = 0; y < imgSeen.height(); ++y)
    {
        for (int x = 0; x < imgSeen.width(); ++x)
            nPixels += isLike(imgSeen.pixel(x, y), clrWanted.rgb()) ? 0 : 1;
    }
    return nPixels;
}

/// The boxes of what hangs together in about this colour, below the legend, from left to right. Specks are left out.
inline QVector<QRect> blobsLike(const QImage& imgSeen, const QColor& clrWanted, int nFromRow = nLegendRows)
{
    constexpr int nSpeck = 6; // pixels
    QVector<QRect> vecBlobs;
    QVector<char> vecSeen(imgSeen.width() * imgSeen.height(), 0);
    const auto isWanted = [&](int x, int y)
    {
        return x >= 0 && y >= nFromRow && x < imgSeen.width() && y < imgSeen.height() && vecSeen.at(y * imgSeen.width() + x) == 0 &&
               isLike(imgSeen.pixel(x, y), clrWanted.rgb());
    };
    for (int nColumn = 0; nColumn < imgSeen.width(); ++nColumn)
    {
        for (int nRow = nFromRow; nRow < imgSeen.height(); ++nRow)
        {
            if (!isWanted(nColumn, nRow))
                continue;
            QVector<QPoint> vecOpen = {QPoint(nColumn, nRow)};
            vecSeen[nRow * imgSeen.width() + nColumn] = 1;
            QRect rectBlob(nColumn, nRow, 1, 1);
            int nPixels = 0;
            while (!vecOpen.isEmpty())
            {
                const QPoint pt = vecOpen.takeLast();
                rectBlob = rectBlob.united(QRect(pt, QSize(1, 1)));
                ++nPixels;
                for (int nX = pt.x() - 1; nX <= pt.x() + 1; ++nX)
                {
                    for (int nY = pt.y() - 1; nY <= pt.y() + 1; ++nY)
                    {
                        if (!isWanted(nX, nY))
                            continue;
                        vecSeen[nY * imgSeen.width() + nX] = 1;
                        vecOpen.append(QPoint(nX, nY));
                    }
                }
            }
            if (nPixels >= nSpeck)
                vecBlobs.append(rectBlob);
        }
    }
    std::sort(vecBlobs.begin(), vecBlobs.end(), [](const QRect& r1, const QRect& r2) { return r1.center().x() < r2.center().x(); });
    return vecBlobs;
}

/// Height of the lowest row of text.
inline int rowsOfLowestText(const QImage& imgSeen)
{
    const auto isBlank = [&](int y) { return pixelsNotLike(imgSeen.copy(0, y, imgSeen.width(), 1), Qt::white) == 0; };
    int nBottom = imgSeen.height() - 1;
    while (nBottom > 0 && isBlank(nBottom))
        --nBottom;
    int nTop = nBottom;
    while (nTop > 0 && !isBlank(nTop))
        --nTop;
    return nBottom - nTop;
}

/// The widget that the lines are drawn on.
inline QWidget* canvas(COrmXYPlot& objPlot)
{
    for (QWidget* pChild : objPlot.findChildren<QWidget*>())
    {
        if (pChild->inherits("QwtPlotCanvas"))
            return pChild;
    }
    return nullptr;
}

/// The line of text below the plot.
inline QString remark(COrmXYPlot& objPlot)
{
    const QWidget* pRemark = objPlot.findChild<QWidget*>(QStringLiteral("QwtPlotFooter"));
    return pRemark != nullptr ? pRemark->property("plainText").toString() : QStringLiteral("no remark is there");
}
} // namespace PlotTest
