#pragma once

#include "SOpenVolume.h"
#include "VolumeReaders.h"

#include <QByteArray>
#include <QMap>
#include <QString>

#include <string_view>

/// A header of text before the numbers of a volume: values under names, each in a line.
struct SVolumeHeader
{
    struct SField
    {
        std::string_view m_strValue; ///< without blanks around it; lies in the file's bytes
        qint64 m_nLine = 0;          ///< counted from 1
    };
    QMap<QString, SField> m_mapFields; ///< by the name in lower case
    qint64 m_nBodyAt = 0;              ///< first byte behind the header
    qint64 m_nLines = 1;               ///< the line that is named where a field is missing

    /// Null where there is no such field.
    const SField* find(const char* pName) const;
    /// What is wrong with a field, with its line before it.
    QString at(const char* pName, const QString& strReason) const;
};

/// What the readers of such headers share. The texts that they return are empty, or say what is wrong and where.
namespace VolumeHeader
{
/// The part of a file in which a header is looked for: its first mebibyte.
std::string_view textOf(const QByteArray& baContent);

/// The three numbers of voxels under a name.
/// @param strNotThree what is wrong where there are not three
QString readSizes(const SVolumeHeader& header, const char* pName, const QString& strNotThree, SOpenVolume& volume);

/// Takes the file that a field names for the numbers, which then begin at @p nAt = 0.
QString openFile(const SVolumeHeader& header, const char* pName, const VolumeReaders::FnSibling& fnSibling, QByteArray& baNumbers,
                 qint64& nAt);

/// Moves @p nAt over @p nSkip bytes; -1 stands for all but the last @p nBytes, which the numbers take as they are.
/// @return an empty text, or the reason, without a line
QString passOver(qint64 nSkip, bool bCompressed, qint64 nBytes, const QByteArray& baNumbers, qint64& nAt);

/// Takes the numbers behind @p nAt, no more and no fewer than size and type ask for.
QString takeNumbers(const QByteArray& baNumbers, qint64 nAt, bool bCompressed, SOpenVolume& volume);
} // namespace VolumeHeader
