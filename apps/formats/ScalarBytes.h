#pragma once

#include <QtGlobal>

#include <cstring>

/// The types of numbers that files of bytes hold.
enum class EScalar
{
    Int8,
    UInt8,
    Int16,
    UInt16,
    Int32,
    UInt32,
    Int64,
    UInt64,
    Float,
    Double
};

/// Numbers in bytes of either order.
namespace ScalarBytes
{
/// Bytes of a number of the type.
constexpr int size(EScalar eType)
{
    return eType == EScalar::Int8 || eType == EScalar::UInt8                                ? 1
           : eType == EScalar::Int16 || eType == EScalar::UInt16                            ? 2
           : eType == EScalar::Int32 || eType == EScalar::UInt32 || eType == EScalar::Float ? 4
                                                                                            : 8;
}

constexpr bool isFloat(EScalar eType)
{
    return eType == EScalar::Float || eType == EScalar::Double;
}

/// A number as it stands in memory of a machine with the byte order asked for.
template <typename T>
T read(const char* pBytes, bool bBigEndian)
{
    unsigned char acBytes[sizeof(T)];
    std::memcpy(acBytes, pBytes, sizeof(T));
    if (bBigEndian != (Q_BYTE_ORDER == Q_BIG_ENDIAN))
    {
        for (std::size_t i = 0; i < sizeof(T) / 2; ++i)
        {
            const unsigned char cByte = acBytes[i];
            acBytes[i] = acBytes[sizeof(T) - 1 - i];
            acBytes[sizeof(T) - 1 - i] = cByte;
        }
    }
    T value;
    std::memcpy(&value, acBytes, sizeof(T));
    return value;
}

/// Any number as a double; whole numbers beyond 2^53 are rounded.
inline double toDouble(const char* pBytes, EScalar eType, bool bBigEndian)
{
    switch (eType)
    {
    case EScalar::Int8:
        return static_cast<double>(read<qint8>(pBytes, bBigEndian));
    case EScalar::UInt8:
        return static_cast<double>(read<quint8>(pBytes, bBigEndian));
    case EScalar::Int16:
        return static_cast<double>(read<qint16>(pBytes, bBigEndian));
    case EScalar::UInt16:
        return static_cast<double>(read<quint16>(pBytes, bBigEndian));
    case EScalar::Int32:
        return static_cast<double>(read<qint32>(pBytes, bBigEndian));
    case EScalar::UInt32:
        return static_cast<double>(read<quint32>(pBytes, bBigEndian));
    case EScalar::Int64:
        return static_cast<double>(read<qint64>(pBytes, bBigEndian));
    case EScalar::UInt64:
        return static_cast<double>(read<quint64>(pBytes, bBigEndian));
    case EScalar::Float:
        return static_cast<double>(read<float>(pBytes, bBigEndian));
    case EScalar::Double:
        return read<double>(pBytes, bBigEndian);
    }
    return 0.0;
}

/// A whole number of an integer type of at most 32 bits; of any other type -1, as an index that nothing has.
inline qint64 toInteger(const char* pBytes, EScalar eType, bool bBigEndian)
{
    switch (eType)
    {
    case EScalar::Int8:
        return read<qint8>(pBytes, bBigEndian);
    case EScalar::UInt8:
        return read<quint8>(pBytes, bBigEndian);
    case EScalar::Int16:
        return read<qint16>(pBytes, bBigEndian);
    case EScalar::UInt16:
        return read<quint16>(pBytes, bBigEndian);
    case EScalar::Int32:
        return read<qint32>(pBytes, bBigEndian);
    case EScalar::UInt32:
        return read<quint32>(pBytes, bBigEndian);
    default:
        return -1;
    }
}
} // namespace ScalarBytes
