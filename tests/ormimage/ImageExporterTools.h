#pragma once

#include <QFile>
#include <QImage>
#include <QtTest>

#include <cstdint>
#include <memory>
#include <vector>

#include <tiffio.h>

/// What the tests of the picture files share: pictures, and a look into a TIFF file.
namespace ImageExporterTools
{
/// A picture in which every pixel differs from its neighbours in all colours; opaque.
inline QImage noise(int nWidth, int nHeight)
{
    QImage img(nWidth, nHeight, QImage::Format_RGB32);
    quint32 nState = 12345;
    for (int y = 0; y < nHeight; ++y)
    {
        for (int x = 0; x < nWidth; ++x)
        {
            nState = nState * 1664525u + 1013904223u;
            img.setPixel(x, y, 0xff000000u | (nState >> 8));
        }
    }
    return img;
}

/// A picture as photographs are: colours change slowly.
inline QImage gradient(int nWidth, int nHeight)
{
    QImage img(nWidth, nHeight, QImage::Format_RGB32);
    for (int y = 0; y < nHeight; ++y)
    {
        for (int x = 0; x < nWidth; ++x)
        {
            img.setPixel(x, y, qRgb(255 * x / nWidth, 255 * y / nHeight, 128));
        }
    }
    return img;
}

/// The greatest difference of two pictures in any colour of any pixel; 1000 where the sizes differ.
inline int difference(const QImage& img1, const QImage& img2)
{
    if (img1.size() != img2.size())
    {
        return 1000;
    }
    int nGreatest = 0;
    for (int y = 0; y < img1.height(); ++y)
    {
        for (int x = 0; x < img1.width(); ++x)
        {
            const QRgb n1 = img1.pixel(x, y);
            const QRgb n2 = img2.pixel(x, y);
            for (const int nDifference : {qRed(n1) - qRed(n2), qGreen(n1) - qGreen(n2), qBlue(n1) - qBlue(n2), qAlpha(n1) - qAlpha(n2)})
            {
                nGreatest = std::max(nGreatest, std::abs(nDifference));
            }
        }
    }
    return nGreatest;
}

/// What a TIFF file holds; its picture is null where libtiff or the kind of pixels does not fit.
struct STiffFile
{
    QImage imgPicture;
    int nCompression = 0;
    int nUnit = 0;
    float fDotsX = 0.0f;
    float fDotsY = 0.0f;
    int nDirectories = 0;
};

inline STiffFile readTiff(const QString& strFile)
{
    STiffFile objFile;
    const std::unique_ptr<TIFF, void (*)(TIFF*)> pTiff(TIFFOpen(QFile::encodeName(strFile).constData(), "r"),
                                                       [](TIFF* p) { TIFFClose(p); });
    if (!pTiff)
    {
        return objFile;
    }
    const auto number = [&](uint32_t nTag)
    {
        uint16_t nValue = 0;
        TIFFGetField(pTiff.get(), nTag, &nValue);
        return int(nValue);
    };
    uint32_t nWidth = 0;
    uint32_t nHeight = 0;
    TIFFGetField(pTiff.get(), TIFFTAG_IMAGEWIDTH, &nWidth);
    TIFFGetField(pTiff.get(), TIFFTAG_IMAGELENGTH, &nHeight);
    TIFFGetField(pTiff.get(), TIFFTAG_XRESOLUTION, &objFile.fDotsX);
    TIFFGetField(pTiff.get(), TIFFTAG_YRESOLUTION, &objFile.fDotsY);
    objFile.nCompression = number(TIFFTAG_COMPRESSION);
    objFile.nUnit = number(TIFFTAG_RESOLUTIONUNIT);
    objFile.nDirectories = int(TIFFNumberOfDirectories(pTiff.get()));
    if (number(TIFFTAG_BITSPERSAMPLE) != 8 || number(TIFFTAG_SAMPLESPERPIXEL) != 3 || number(TIFFTAG_PHOTOMETRIC) != PHOTOMETRIC_RGB)
    {
        return objFile;
    }
    QImage img(int(nWidth), int(nHeight), QImage::Format_RGB32);
    std::vector<uint8_t> vecRow(size_t(TIFFScanlineSize(pTiff.get())));
    for (uint32_t y = 0; y < nHeight; ++y)
    {
        if (TIFFReadScanline(pTiff.get(), vecRow.data(), y) != 1)
        {
            return objFile;
        }
        for (uint32_t x = 0; x < nWidth; ++x)
        {
            img.setPixel(int(x), int(y), qRgb(vecRow[x * 3], vecRow[x * 3 + 1], vecRow[x * 3 + 2]));
        }
    }
    objFile.imgPicture = img;
    return objFile;
}

} // namespace ImageExporterTools
