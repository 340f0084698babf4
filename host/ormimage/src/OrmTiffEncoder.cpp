#include "OrmImageEncoders.h"

#include <QCoreApplication>

#include <tiffio.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <memory>
#include <new>
#include <vector>

namespace
{
/// Bytes that are compressed together, before compression: files are a fifth smaller than with the 8 KiB that libtiff proposes.
constexpr int g_nStripBytes = 65536;

struct STiffEnd
{
    void operator()(TIFF* pTiff) const { TIFFClose(pTiff); }
};
struct SOptionsEnd
{
    void operator()(TIFFOpenOptions* pOptions) const { TIFFOpenOptionsFree(pOptions); }
};
using Tiff = std::unique_ptr<TIFF, STiffEnd>;
using Options = std::unique_ptr<TIFFOpenOptions, SOptionsEnd>;

/// Keeps the first error's text; the library would print it.
int keepError(TIFF* /*pTiff*/, void* pFirstError, const char* /*pModule*/, const char* pFormat, va_list lstArguments)
{
    auto* pError = static_cast<QString*>(pFirstError);
    char szText[256] = {};
    std::vsnprintf(szText, sizeof szText, pFormat, lstArguments);
    if (pError->isEmpty())
        *pError = QString::fromLocal8Bit(szText);
    return 1;
}

QIODevice* device(thandle_t pHandle)
{
    return static_cast<QIODevice*>(pHandle);
}

tmsize_t readNothing(thandle_t /*pHandle*/, void* /*pBytes*/, tmsize_t /*nBytes*/)
{
    return -1; // the device is open for writing alone
}

/// Called by the library, which is C: nothing may be thrown through it.
tmsize_t writeBytes(thandle_t pHandle, void* pBytes, tmsize_t nBytes)
{
    try
    {
        return tmsize_t(device(pHandle)->write(static_cast<const char*>(pBytes), nBytes));
    }
    catch (const std::bad_alloc&)
    {
        return -1;
    }
}

toff_t seek(thandle_t pHandle, toff_t nOffset, int nWhence)
{
    qint64 nPosition = qint64(nOffset);
    if (nWhence == SEEK_CUR)
        nPosition += device(pHandle)->pos();
    else if (nWhence == SEEK_END)
        nPosition += device(pHandle)->size();
    return device(pHandle)->seek(nPosition) ? toff_t(nPosition) : toff_t(-1);
}

int keepOpen(thandle_t /*pHandle*/)
{
    return 0; // the device belongs to the caller
}

toff_t size(thandle_t pHandle)
{
    return toff_t(device(pHandle)->size());
}

bool setTags(TIFF* pTiff, const QImage& image)
{
    const int nRows = std::max(1, g_nStripBytes / (image.width() * 3));
    return TIFFSetField(pTiff, TIFFTAG_IMAGEWIDTH, uint32_t(image.width())) == 1 &&
           TIFFSetField(pTiff, TIFFTAG_IMAGELENGTH, uint32_t(image.height())) == 1 && //
           TIFFSetField(pTiff, TIFFTAG_BITSPERSAMPLE, 8) == 1 &&                      //
           TIFFSetField(pTiff, TIFFTAG_SAMPLESPERPIXEL, 3) == 1 && TIFFSetField(pTiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB) == 1 &&
           TIFFSetField(pTiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG) == 1 &&
           TIFFSetField(pTiff, TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT) == 1 &&
           TIFFSetField(pTiff, TIFFTAG_COMPRESSION, COMPRESSION_LZW) == 1 &&
           TIFFSetField(pTiff, TIFFTAG_PREDICTOR, PREDICTOR_HORIZONTAL) == 1 &&
           TIFFSetField(pTiff, TIFFTAG_ROWSPERSTRIP, uint32_t(nRows)) == 1 &&
           TIFFSetField(pTiff, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH) == 1 &&
           TIFFSetField(pTiff, TIFFTAG_XRESOLUTION, OrmImageEncoders::dotsPerInch(image.dotsPerMeterX())) == 1 &&
           TIFFSetField(pTiff, TIFFTAG_YRESOLUTION, OrmImageEncoders::dotsPerInch(image.dotsPerMeterY())) == 1;
}

bool writeRows(TIFF* pTiff, const QImage& image)
{
    std::vector<uint8_t> vecRow(size_t(image.width()) * 3);
    for (int y = 0; y < image.height(); ++y)
    {
        const auto* pPixel = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (auto it = vecRow.begin(); it != vecRow.end(); ++pPixel)
        {
            *it++ = uint8_t(qRed(*pPixel));
            *it++ = uint8_t(qGreen(*pPixel));
            *it++ = uint8_t(qBlue(*pPixel));
        }
        if (TIFFWriteScanline(pTiff, vecRow.data(), uint32_t(y), 0) != 1)
            return false;
    }
    return true;
}
} // namespace

QString OrmImageEncoders::encodeTiff(const QImage& image, QIODevice& objDevice)
{
    QString strError;
    bool bDone = false;
    const Options pOptions(TIFFOpenOptionsAlloc());
    TIFFOpenOptionsSetErrorHandlerExtR(pOptions.get(), &keepError, &strError);
    TIFFOpenOptionsSetWarningHandlerExtR(pOptions.get(), &keepError, &strError);
    const Tiff pTiff(TIFFClientOpenExt("picture", "w", &objDevice, &readNothing, &writeBytes, &seek, &keepOpen, &size, nullptr, nullptr,
                                       pOptions.get()));
    if (pTiff)
        bDone = setTags(pTiff.get(), image) && writeRows(pTiff.get(), image) && TIFFWriteDirectory(pTiff.get()) == 1;
    if (bDone && strError.isEmpty())
        return QString();
    return strError.isEmpty() ? QCoreApplication::translate("OrmImageEncoders", "the picture cannot be put into a TIFF file") : strError;
}
