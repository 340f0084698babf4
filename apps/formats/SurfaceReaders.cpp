#include "SurfaceReaders.h"

namespace
{
using FnRead = QString (*)(const QByteArray&, SOpenSurface&);

FnRead readerOf(const QString& strFile)
{
    if (strFile.endsWith(QLatin1String(".ply"), Qt::CaseInsensitive))
        return SurfaceReaders::readPly;
    if (strFile.endsWith(QLatin1String(".stl"), Qt::CaseInsensitive))
        return SurfaceReaders::readStl;
    return strFile.endsWith(QLatin1String(".obj"), Qt::CaseInsensitive) ? SurfaceReaders::readObj : nullptr;
}
} // namespace

bool SurfaceReaders::isKnown(const QString& strFile)
{
    return readerOf(strFile) != nullptr;
}

QString SurfaceReaders::read(const QString& strFile, const QByteArray& baContent, SOpenSurface& surface)
{
    const FnRead fnRead = readerOf(strFile);
    return fnRead != nullptr ? fnRead(baContent, surface) : QStringLiteral("name: the extension is none of .ply, .stl and .obj");
}
