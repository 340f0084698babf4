#include "PhantomPhotograph.h"

#include "PhantomBody.h"

#include <QBuffer>
#include <QImage>

#include <algorithm>
#include <cmath>

namespace
{
constexpr int kPixels = 272;
constexpr double kPixelSize = 136.0 / kPixels; // mm

/// Height of the skin above the middle plane, below 0 beside the body.
double skinHeight(double fX, double fY)
{
    if (!CPhantomBody::contains(fX, fY, 0.0))
    {
        return -1.0;
    }
    double fInside = 0.0;
    double fOutside = 32.0;
    while (fOutside - fInside > 0.02)
    {
        const double fMiddle = 0.5 * (fInside + fOutside);
        (CPhantomBody::contains(fX, fY, fMiddle) ? fInside : fOutside) = fMiddle;
    }
    return fInside;
}
} // namespace

QByteArray PhantomPhotograph::png()
{
    QImage image(kPixels, kPixels, QImage::Format_Grayscale8);
    for (int nRow = 0; nRow < kPixels; ++nRow)
    {
        uchar* pLine = image.scanLine(nRow);
        const double fY = (0.5 * kPixels - nRow - 0.5) * kPixelSize;
        for (int nColumn = 0; nColumn < kPixels; ++nColumn)
        {
            const double fX = (nColumn + 0.5 - 0.5 * kPixels) * kPixelSize;
            const double fHeight = skinHeight(fX, fY);
            if (fHeight < 0.0)
            {
                pLine[nColumn] = 18;
                continue;
            }
            // Light from the upper left, by the slope of the skin.
            const double fSlopeX = skinHeight(fX + kPixelSize, fY) - fHeight;
            const double fSlopeY = skinHeight(fX, fY + kPixelSize) - fHeight;
            const double fLight = (kPixelSize + 0.5 * fSlopeX - 0.5 * fSlopeY) / std::hypot(kPixelSize, fSlopeX, fSlopeY);
            pLine[nColumn] = static_cast<uchar>(std::clamp(60.0 + 130.0 * fLight, 30.0, 235.0));
        }
    }
    QByteArray aPng;
    QBuffer buffer(&aPng);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return aPng;
}
