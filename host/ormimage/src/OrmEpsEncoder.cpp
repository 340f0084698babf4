#include "OrmImageEncoders.h"

#include <QCoreApplication>

#include <cmath>

// By hand, because cairo 1.16 collects a page in a temporary file, frees memory twice when that finds no room, and takes a cut
// file for a whole one when only its last piece finds none.

namespace
{
constexpr double g_dPointsPerInch = 72.0;
constexpr int g_nCharactersALine = 75;

/// Red, green and blue of each pixel from the top left, a byte each.
QByteArray samples(const QImage& image)
{
    QByteArray aSamples(image.width() * image.height() * 3, Qt::Uninitialized);
    auto* pSample = aSamples.data();
    for (int y = 0; y < image.height(); ++y)
    {
        const auto* pPixel = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x, ++pPixel)
        {
            *pSample++ = char(qRed(*pPixel));
            *pSample++ = char(qGreen(*pPixel));
            *pSample++ = char(qBlue(*pPixel));
        }
    }
    return aSamples;
}

/// A zlib stream; empty if there was no memory for it.
QByteArray deflated(const QByteArray& aBytes)
{
    constexpr int nLengthOfQt = 4; // Qt puts the length before the stream
    return qCompress(aBytes).mid(nLengthOfQt);
}

/// Base 85 as PostScript reads it: four bytes become five characters, four zeros a "z". Lines begin with a blank, so that none looks
/// like a comment.
QByteArray base85(const QByteArray& aBytes)
{
    QByteArray aText(" ");
    aText.reserve(aBytes.size() / 4 * 5 + aBytes.size() / 50 + 16);
    int nInLine = 0;
    for (int nFirst = 0; nFirst < aBytes.size(); nFirst += 4)
    {
        const int nBytes = std::min(4, aBytes.size() - nFirst);
        quint32 nGroup = 0;
        for (int i = 0; i < 4; ++i)
            nGroup = nGroup << 8 | (i < nBytes ? quint8(aBytes.at(nFirst + i)) : 0u);
        if (nGroup == 0 && nBytes == 4)
        {
            aText += 'z';
            ++nInLine;
        }
        else
        {
            char szDigits[5];
            for (int i = 4; i >= 0; --i, nGroup /= 85)
                szDigits[i] = char('!' + nGroup % 85);
            aText.append(szDigits, nBytes + 1);
            nInLine += nBytes + 1;
        }
        if (nInLine >= g_nCharactersALine)
        {
            aText += "\n ";
            nInLine = 0;
        }
    }
    return aText + "~>\n";
}
} // namespace

QString OrmImageEncoders::encodeEps(const QImage& image, QIODevice& device)
{
    const double dWidth = image.width() * g_dPointsPerInch / dotsPerInch(image.dotsPerMeterX());
    const double dHeight = image.height() * g_dPointsPerInch / dotsPerInch(image.dotsPerMeterY());
    const QByteArray aStream = deflated(samples(image));
    if (aStream.isEmpty())
        return QCoreApplication::translate("OrmImageEncoders", "there is not enough memory; close other windows");
    const auto pair = [](double dX, double dY) { return QByteArray::number(dX, 'f', 4) + ' ' + QByteArray::number(dY, 'f', 4); };
    const QByteArray aColumns = QByteArray::number(image.width());
    const QByteArray aRows = QByteArray::number(image.height());

    const QByteArray aHead = "%!PS-Adobe-3.0 EPSF-3.0\n"
                             "%%BoundingBox: 0 0 " +
                             QByteArray::number(std::ceil(dWidth), 'f', 0) + ' ' + QByteArray::number(std::ceil(dHeight), 'f', 0) +
                             "\n"
                             "%%HiResBoundingBox: 0 0 " +
                             pair(dWidth, dHeight) +
                             "\n"
                             "%%LanguageLevel: 3\n"
                             "%%DocumentData: Clean7Bit\n"
                             "%%Pages: 1\n"
                             "%%EndComments\n"
                             "%%Page: 1 1\n"
                             "4 dict begin gsave\n" +
                             pair(dWidth, dHeight) +
                             " scale\n"
                             "/DeviceRGB setcolorspace\n"
                             "/Characters currentfile /ASCII85Decode filter def\n"
                             "{ << /ImageType 1 /Width " +
                             aColumns + " /Height " + aRows + " /ImageMatrix [" + aColumns + " 0 0 -" + aRows + " 0 " + aRows +
                             "]\n"
                             "/BitsPerComponent 8 /Decode [0 1 0 1 0 1] /Interpolate false\n"
                             "/DataSource Characters /FlateDecode filter >> image Characters flushfile } exec\n";
    const QByteArray aTail = "grestore end\n"
                             "showpage\n"
                             "%%Trailer\n"
                             "%%EOF\n";
    device.write(aHead);
    device.write(base85(aStream));
    device.write(aTail);
    return QString();
}
