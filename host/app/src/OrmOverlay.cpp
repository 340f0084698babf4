#include "OrmOverlay.h"

#include "COrmPalette.h"
#include "OrmFileReader.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QImageReader>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace
{
class CText
{
    Q_DECLARE_TR_FUNCTIONS(OrmOverlay)
};

/// The luminescent image in the colours of a table; what has the lowest value is transparent.
QImage coloured(const QImage& imgLuminescent, double fOpacity)
{
    const QImage imgGrey = imgLuminescent.convertToFormat(QImage::Format_Grayscale16);
    quint16 nLow = 65535;
    quint16 nHigh = 0;
    for (int y = 0; y < imgGrey.height(); ++y)
    {
        const auto* pLine = reinterpret_cast<const quint16*>(imgGrey.constScanLine(y));
        const auto sEnds = std::minmax_element(pLine, pLine + imgGrey.width());
        nLow = std::min(nLow, *sEnds.first);
        nHigh = std::max(nHigh, *sEnds.second);
    }
    QImage imgColour(imgGrey.size(), QImage::Format_ARGB32);
    imgColour.fill(Qt::transparent);
    if (nHigh <= nLow || imgColour.isNull())
        return imgColour; // one value everywhere shows nothing
    COrmPalette objPalette;
    objPalette.setColorTableType(ORM_CT_RAINBOW, 0.0F, 1.0F);
    const QRgb* pTable = objPalette.lut();
    const double fScale = 1.0 / (nHigh - nLow);
    for (int y = 0; y < imgGrey.height(); ++y)
    {
        const auto* pIn = reinterpret_cast<const quint16*>(imgGrey.constScanLine(y));
        auto* pOut = reinterpret_cast<QRgb*>(imgColour.scanLine(y));
        for (int x = 0; x < imgGrey.width(); ++x)
        {
            const double fPlace = (pIn[x] - nLow) * fScale;
            const QRgb nColour = pTable[std::lround(fPlace * 255.0)];
            pOut[x] = qRgba(qRed(nColour), qGreen(nColour), qBlue(nColour), static_cast<int>(std::lround(fPlace * fOpacity * 255.0)));
        }
    }
    return imgColour;
}
} // namespace

QImage OrmOverlay::load(const QString& strFile, QString* pstrReason)
{
    QString strReason;
    QByteArray arrContent;
    QImage imgRead;
    if (OrmFileReader::read(strFile, arrContent, &strReason, s_nMaxFileBytes))
    {
        QBuffer objBuffer(&arrContent);
        objBuffer.open(QIODevice::ReadOnly);
        QImageReader objReader(&objBuffer);
        const QSize szImage = objReader.size();
        if (qint64(szImage.width()) * szImage.height() > s_nMaxPixels)
            strReason = CText::tr("%1 is too large: %2 x %3 pixels.").arg(strFile).arg(szImage.width()).arg(szImage.height());
        else if (!objReader.read(&imgRead))
            strReason = CText::tr("%1 cannot be shown: %2.").arg(strFile, objReader.errorString());
    }
    if (imgRead.isNull() && pstrReason != nullptr)
        *pstrReason = strReason;
    return imgRead;
}

QImage OrmOverlay::compose(const QImage& imgPhotograph, const QImage& imgLuminescent, double fOpacity)
{
    if (imgPhotograph.isNull() && imgLuminescent.isNull())
        return {};
    QImage imgResult;
    if (imgPhotograph.isNull())
    {
        imgResult = QImage(imgLuminescent.size(), QImage::Format_RGB32);
        imgResult.fill(Qt::black);
    }
    else
        imgResult = imgPhotograph.convertToFormat(QImage::Format_Grayscale8).convertToFormat(QImage::Format_RGB32);
    if (!imgLuminescent.isNull())
    {
        QPainter objPainter(&imgResult);
        objPainter.setRenderHint(QPainter::SmoothPixmapTransform);
        objPainter.drawImage(imgResult.rect(), coloured(imgLuminescent, std::clamp(fOpacity, 0.0, 1.0)));
    }
    return imgResult;
}
