#pragma once

#include "SOpenVolume.h"

#include <functional>

/// Readers of volumes. Every count in a file is a claim: nothing is allocated beyond what the bytes themselves can fill.
///
/// Each reads a whole file and returns an empty text, or what is wrong with it as "place: reason"; then the volume is of no meaning.
namespace VolumeReaders
{
/// Gives the bytes of another file that a header names, relative to the header's folder, or returns why not.
using FnSibling = std::function<QString(const QString& strName, QByteArray& baContent)>;

/// Whether there is a reader for files of this name, by its extension: .nii and .hdr with or without .gz, .mha, .mhd, .nrrd or
/// .nhdr, in either case.
bool isKnown(const QString& strFile);

/// Reads by the extension of the name.
QString read(const QString& strFile, const QByteArray& baContent, const FnSibling& fnSibling, SOpenVolume& volume);

/// NIfTI-1, in one file or two, plain or compressed (R. W. Cox and others, "A (sort of) new image data format standard: NIfTI-1", 2004).
/// Where the numbers lie is told by the sform, else the qform, else the spacing alone; lengths are brought to millimetres.
/// @param strFile name of the file: one that ends in ".hdr" has its numbers in the file that ends in ".img"
QString readNifti(const QString& strFile, const QByteArray& baContent, const FnSibling& fnSibling, SOpenVolume& volume);

/// MetaImage, in one file or two, raw or compressed (Insight Toolkit, "MetaIO documentation"). Lengths are millimetres, the space is LPS.
QString readMetaImage(const QByteArray& baContent, const FnSibling& fnSibling, SOpenVolume& volume);

/// NRRD 1 to 5, in one file or two, encoding raw or gzip (G. Kindlmann, "Definition of NRRD File Format"). Lengths are brought to
/// millimetres.
QString readNrrd(const QByteArray& baContent, const FnSibling& fnSibling, SOpenVolume& volume);
} // namespace VolumeReaders
