#include "OrmImageFile.h"

#include "OrmFileWriter.h"
#include "OrmImageEncoders.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <new>

namespace
{
class CText
{
    Q_DECLARE_TR_FUNCTIONS(OrmImageFile)
};

constexpr int g_nDefaultDotsPerMeter = 3780; ///< 96 dots per inch

/// A format, what it holds at most, and who writes it.
struct SFormat
{
    const char* pExtension;
    const char* pName; ///< for the user
    int nLongest;      ///< pixels across or down that format and library take
    QString (*fnEncode)(const QImage&, QIODevice&);
};

constexpr std::array<SFormat, 7> g_lstFormats = {{
    {"bmp", "BMP", 1000000, &OrmImageEncoders::encodeBmp},
    {"jpg", "JPEG", 65500, &OrmImageEncoders::encodeJpeg}, // JPEG_MAX_DIMENSION of libjpeg
    {"jpeg", "JPEG", 65500, &OrmImageEncoders::encodeJpeg},
    {"png", "PNG", 1000000, &OrmImageEncoders::encodePng}, // PNG_USER_WIDTH_MAX of libpng
    {"eps", "EPS", 1000000, &OrmImageEncoders::encodeEps},
    {"tif", "TIFF", 1000000, &OrmImageEncoders::encodeTiff},
    {"tiff", "TIFF", 1000000, &OrmImageEncoders::encodeTiff},
}};

const SFormat* formatOf(const QString& strExtension)
{
    for (const SFormat& objFormat : g_lstFormats)
        if (strExtension.compare(QLatin1String(objFormat.pExtension), Qt::CaseInsensitive) == 0)
            return &objFormat;
    return nullptr;
}

/// The picture before white paper, with a resolution; null if there is no memory for it.
QImage onPaper(const QImage& image)
{
    QImage imgOpaque;
    if (!image.hasAlphaChannel())
    {
        imgOpaque = image.convertToFormat(QImage::Format_RGB32);
    }
    else
    {
        imgOpaque = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
        for (int y = 0; y < imgOpaque.height(); ++y)
        {
            auto* pPixel = reinterpret_cast<QRgb*>(imgOpaque.scanLine(y));
            for (int x = 0; x < imgOpaque.width(); ++x, ++pPixel)
            {
                const int nPaper = 255 - qAlpha(*pPixel);
                *pPixel = qRgb(qRed(*pPixel) + nPaper, qGreen(*pPixel) + nPaper, qBlue(*pPixel) + nPaper);
            }
        }
        imgOpaque.reinterpretAsFormat(QImage::Format_RGB32);
    }
    if (imgOpaque.isNull())
        return imgOpaque;
    if (imgOpaque.dotsPerMeterX() <= 0)
        imgOpaque.setDotsPerMeterX(g_nDefaultDotsPerMeter);
    if (imgOpaque.dotsPerMeterY() <= 0)
        imgOpaque.setDotsPerMeterY(g_nDefaultDotsPerMeter);
    return imgOpaque;
}

/// Why no file of that path can be written, as far as one can tell before; empty if nothing speaks against it.
QString refusal(const QFileInfo& objTarget)
{
    const QFileInfo objFolder(objTarget.absolutePath());
    if (!objFolder.exists())
        return CText::tr("the folder \"%1\" does not exist; choose another one").arg(objFolder.filePath());
    if (objTarget.isDir())
        return CText::tr("there is a folder of this name; choose another name");
    if (objTarget.exists() && !objTarget.isFile())
        return CText::tr("what has this name is not an ordinary file; choose another name");
    if (objTarget.exists() && !objTarget.isWritable())
        return CText::tr("the file of this name is write-protected; choose another name");
    return QString();
}

/// The file of a picture, in memory: no encoder has to see, or can overlook, that a disk is full. Empty with a reason where it fails.
QByteArray encoded(const QImage& image, const SFormat& objFormat, QString& strReason)
{
    QByteArray aBytes;
    QBuffer objBuffer(&aBytes);
    objBuffer.open(QIODevice::WriteOnly);
    strReason = objFormat.fnEncode(image, objBuffer);
    return strReason.isEmpty() ? aBytes : QByteArray();
}

/// Puts the bytes in the place of the file, whole or not at all. @return why not and what can be done, or an empty text
QString replaceFile(const QString& strPath, const QByteArray& aBytes)
{
    const QString strReason = OrmFileWriter::replace(strPath, aBytes);
    if (strReason.isEmpty())
        return QString();
    return strReason == OrmFileWriter::diskIsFull() ? CText::tr("%1; make room or choose another folder").arg(strReason)
                                                    : CText::tr("%1; choose another name or folder").arg(strReason);
}

/// Writes the picture. @return why not, in one sentence, or an empty text
QString writePicture(const QImage& image, const QString& strPath)
{
    const QFileInfo objTarget(strPath);
    const QString strName = objTarget.fileName().isEmpty() ? strPath : objTarget.fileName();
    const auto failure = [&](const QString& strReason)
    { return CText::tr("The picture was not saved as \"%1\": %2.").arg(strName, strReason); };

    if (image.isNull())
        return failure(CText::tr("there is no picture, because the view is empty or OpenGL is missing"));
    const SFormat* pFormat = formatOf(objTarget.suffix());
    if (pFormat == nullptr)
        return failure(CText::tr("only bmp, jpg, png, eps and tif can be written; end the name in one of them"));
    const int nLongest = std::max(image.width(), image.height());
    if (nLongest > pFormat->nLongest)
        return failure(CText::tr("%1 holds at most %2 pixels a side, and this picture has %3; choose another format")
                           .arg(QLatin1String(pFormat->pName))
                           .arg(pFormat->nLongest)
                           .arg(nLongest));
    const QString strRefusal = refusal(objTarget);
    if (!strRefusal.isEmpty())
        return failure(strRefusal);
    const QImage imgOpaque = onPaper(image);
    if (imgOpaque.isNull())
        return failure(CText::tr("there is not enough memory; close other windows"));
    QString strReason;
    const QByteArray aBytes = encoded(imgOpaque, *pFormat, strReason);
    if (strReason.isEmpty())
        strReason = replaceFile(strPath, aBytes);
    return strReason.isEmpty() ? QString() : failure(strReason);
}
} // namespace

QStringList OrmImageFile::extensions()
{
    QStringList lstExtensions;
    for (const SFormat& objFormat : g_lstFormats)
        lstExtensions.append(QLatin1String(objFormat.pExtension));
    return lstExtensions;
}

QString OrmImageFile::write(const QImage& image, const QString& strPath)
{
    try
    {
        return writePicture(image, strPath);
    }
    catch (const std::bad_alloc&)
    {
        return CText::tr("The picture was not saved: there is not enough memory; close other windows.");
    }
}
