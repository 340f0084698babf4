#pragma once

#include "ScalarBytes.h"

#include <QByteArray>
#include <QString>

#include <vector>

/// One property of an element of a PLY file: a number, or a list of numbers with its length before it.
struct SPlyProperty
{
    QString m_strName;
    bool m_bList = false;
    EScalar m_eLength = EScalar::UInt8; ///< of a list
    EScalar m_eType = EScalar::Float;   ///< of the number or numbers
};

/// One kind of element of a PLY file.
struct SPlyElement
{
    QString m_strName;
    qint64 m_nCount = 0; ///< as the file claims it; not below 0
    std::vector<SPlyProperty> m_vecProperties;

    /// The position of the property of that name; -1: none.
    int find(const QString& strProperty) const;
    /// Bytes that each element takes in a binary file at least: all of them where it has no lists.
    qint64 leastBytes() const;
};

/// What the header of a PLY file says.
struct SPlyHeader
{
    bool m_bAscii = false;
    bool m_bBigEndian = false;
    std::vector<SPlyElement> m_vecElements;
    qint64 m_nBodyAt = 0; ///< first byte behind the header
    qint64 m_nLines = 0;  ///< lines of the header

    /// Reads the header at the start of the file; an empty text, or "place: reason".
    QString read(const QByteArray& baContent);
};
