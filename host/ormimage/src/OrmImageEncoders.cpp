#include "OrmImageEncoders.h"

#include <QImageWriter>

#include <cmath>

namespace
{
constexpr double g_dMetersPerInch = 0.0254;
/// Text and single voxels stay free of visible rings.
constexpr int g_nJpegQuality = 95;

QString encodeByQt(const QImage& image, QIODevice& device, const char* pFormat, int nQuality = -1)
{
    QImageWriter objWriter(&device, pFormat);
    objWriter.setQuality(nQuality);
    return objWriter.write(image) ? QString() : objWriter.errorString();
}
} // namespace

QString OrmImageEncoders::encodeBmp(const QImage& image, QIODevice& device)
{
    return encodeByQt(image, device, "bmp");
}

QString OrmImageEncoders::encodeJpeg(const QImage& image, QIODevice& device)
{
    return encodeByQt(image, device, "jpg", g_nJpegQuality);
}

QString OrmImageEncoders::encodePng(const QImage& image, QIODevice& device)
{
    return encodeByQt(image, device, "png");
}

double OrmImageEncoders::dotsPerInch(int nDotsPerMeter)
{
    const double dExact = nDotsPerMeter * g_dMetersPerInch;
    const double dWhole = std::round(dExact);
    return std::lround(dWhole / g_dMetersPerInch) == nDotsPerMeter ? dWhole : dExact;
}
