#include "VolumeReaders.h"

namespace
{
bool endsWithOneOf(const QString& strFile, std::initializer_list<const char*> lstEnds)
{
    for (const char* pEnd : lstEnds)
    {
        if (strFile.endsWith(QLatin1String(pEnd), Qt::CaseInsensitive))
            return true;
    }
    return false;
}

bool isNifti(const QString& strFile)
{
    return endsWithOneOf(strFile, {".nii", ".nii.gz", ".hdr", ".hdr.gz"});
}

bool isMetaImage(const QString& strFile)
{
    return endsWithOneOf(strFile, {".mha", ".mhd"});
}

bool isNrrd(const QString& strFile)
{
    return endsWithOneOf(strFile, {".nrrd", ".nhdr"});
}
} // namespace

bool VolumeReaders::isKnown(const QString& strFile)
{
    return isNifti(strFile) || isMetaImage(strFile) || isNrrd(strFile);
}

QString VolumeReaders::read(const QString& strFile, const QByteArray& baContent, const FnSibling& fnSibling, SOpenVolume& volume)
{
    if (isNifti(strFile))
        return readNifti(strFile, baContent, fnSibling, volume);
    if (isMetaImage(strFile))
        return readMetaImage(baContent, fnSibling, volume);
    if (isNrrd(strFile))
        return readNrrd(baContent, fnSibling, volume);
    return QStringLiteral("name: the extension is none of .nii, .nii.gz, .hdr, .mha, .mhd, .nrrd and .nhdr");
}
