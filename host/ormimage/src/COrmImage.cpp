#include "COrmImage.h"

#include "COrmLog.h"

#include <QSharedData>
#include <QString>

#include <cstddef>
#include <cstring>
#include <new>
#include <vector>

class COrmImageData : public QSharedData
{
public:
    OrmDataTypes m_eType = ORM_DATA_FLOAT32;
    long m_nWidth = 0;
    long m_nHeight = 0;
    std::vector<unsigned char> m_vecPixels; ///< rows without padding
};

namespace
{
/// Bytes of an image; -1 if its size is negative, unknown or too large to count.
qint64 checkedSize(OrmDataTypes eType, long nWidth, long nHeight)
{
    const int nPixelBytes = ormBytesPerPixel(eType);
    qint64 nPixels = 0;
    qint64 nBytes = 0;
    if (nPixelBytes == 0 || nWidth < 0 || nHeight < 0 || __builtin_mul_overflow(qint64{nWidth}, qint64{nHeight}, &nPixels) ||
        __builtin_mul_overflow(nPixels, qint64{nPixelBytes}, &nBytes) || nBytes > static_cast<qint64>(PTRDIFF_MAX))
        return -1;
    return nBytes;
}

bool refuse(OrmDataTypes eType, long nWidth, long nHeight, const QString& strReason)
{
    ORM_LOG(
        2,
        QStringLiteral("An image of type %1 and %2 x %3 pixels was refused: %4").arg(int{eType}).arg(nWidth).arg(nHeight).arg(strReason));
    return false;
}

template <typename T>
double pixelAs(const unsigned char* pPixel)
{
    T value;
    std::memcpy(&value, pPixel, sizeof(T));
    return static_cast<double>(value);
}
} // namespace

COrmImage::COrmImage() : m_pData(new COrmImageData) {}

COrmImage::COrmImage(const COrmImage& objOther) = default;
COrmImage& COrmImage::operator=(const COrmImage& objOther) = default;
COrmImage::~COrmImage() = default;

bool COrmImage::initWithData(OrmDataTypes eType, long nWidth, long nHeight, void* pData)
{
    const qint64 nBytes = checkedSize(eType, nWidth, nHeight);
    if (nBytes < 0)
        return refuse(eType, nWidth, nHeight, QStringLiteral("there is no such size or type."));
    if (nBytes > 0 && pData == nullptr)
        return refuse(eType, nWidth, nHeight, QStringLiteral("there are no pixels."));
    QSharedDataPointer<COrmImageData> pNew(new COrmImageData);
    COrmImageData* pImage = pNew.data();
    try
    {
        const auto* pFirst = static_cast<const unsigned char*>(pData);
        if (nBytes > 0)
            pImage->m_vecPixels.assign(pFirst, pFirst + nBytes);
    }
    catch (const std::bad_alloc&)
    {
        return refuse(eType, nWidth, nHeight, QStringLiteral("there is not enough memory."));
    }
    pImage->m_eType = eType;
    pImage->m_nWidth = nWidth;
    pImage->m_nHeight = nHeight;
    m_pData = pNew;
    return true;
}

OrmDataTypes COrmImage::dataType() const
{
    return m_pData->m_eType;
}

long COrmImage::width() const
{
    return m_pData->m_nWidth;
}

long COrmImage::height() const
{
    return m_pData->m_nHeight;
}

bool COrmImage::isEmpty() const
{
    return m_pData->m_vecPixels.empty();
}

qint64 COrmImage::byteCount() const
{
    return static_cast<qint64>(m_pData->m_vecPixels.size());
}

const void* COrmImage::constData() const
{
    return isEmpty() ? nullptr : m_pData->m_vecPixels.data();
}

double COrmImage::valueAt(long nX, long nY) const
{
    if (nX < 0 || nY < 0 || nX >= width() || nY >= height())
        return 0.0;
    const std::ptrdiff_t nPixel = nY * width() + nX;
    const unsigned char* pPixel = m_pData->m_vecPixels.data() + nPixel * ormBytesPerPixel(dataType());
    switch (dataType())
    {
    case ORM_DATA_UINT8:
        return pixelAs<quint8>(pPixel);
    case ORM_DATA_INT16:
        return pixelAs<qint16>(pPixel);
    case ORM_DATA_UINT16:
        return pixelAs<quint16>(pPixel);
    case ORM_DATA_INT32:
        return pixelAs<qint32>(pPixel);
    case ORM_DATA_FLOAT32:
        return pixelAs<float>(pPixel);
    case ORM_DATA_FLOAT64:
        return pixelAs<double>(pPixel);
    }
    return 0.0;
}
