#pragma once

#include "COrmPalette.h"
#include "OrmDataTypes.h"

#include <QSharedDataPointer>

class COrmImageData;

/// An image of numbers with the palette to show it. Copies share the pixels until one of them is written; the palette is each copy's own.
class COrmImage
{
public:
    /// An empty image.
    COrmImage();
    COrmImage(const COrmImage& objOther);
    COrmImage& operator=(const COrmImage& objOther);
    ~COrmImage();

    /// Copies a buffer of nWidth x nHeight pixels, row by row without padding. A width or height of 0 makes the image empty.
    /// A negative size, a size beyond what memory can hold, an unknown type, or no buffer where one is needed is refused
    /// and logged: the image stays as it was and the result is false.
    bool initWithData(OrmDataTypes eType, long nWidth, long nHeight, void* pData);

    OrmDataTypes dataType() const;
    long width() const;
    long height() const;
    bool isEmpty() const;
    /// Bytes of all pixels.
    qint64 byteCount() const;
    /// The pixels; null when empty. Valid until the image changes or goes.
    const void* constData() const;
    /// The pixel in column nX of row nY as a number; 0 outside.
    double valueAt(long nX, long nY) const;

    COrmPalette* getPalette() { return &m_objPalette; }
    const COrmPalette* getPalette() const { return &m_objPalette; }

private:
    QSharedDataPointer<COrmImageData> m_pData;
    COrmPalette m_objPalette;
};
