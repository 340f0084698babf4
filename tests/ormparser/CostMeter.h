#pragma once

// What documents cost their readers, in time and memory.

#include "CProcessorMeter.h"
#include "MemoryMeter.h"
#include "TestDocuments.h"

#include <QMetaType>

#include <functional>

constexpr long long nMegabyte = 1048576;
constexpr long long nAllowedMemory = 32 * nMegabyte; ///< for a refusal, beyond the size of the file

/// Processor time and memory since it was made.
class CostMeter : public CProcessorMeter
{
public:
    CostMeter() : m_nStart(MemoryMeter::restart()) {}
    long long bytes() const { return MemoryMeter::peak() - m_nStart; }

private:
    long long m_nStart;
};

/// Whether the meter sees what Qt's libraries allocate too.
inline bool costMeterSeesQt()
{
    const CostMeter objMeter;
    {
        const QByteArray baBlock(5000000, 'x');
        if (baBlock.size() != 5000000)
            return false;
    }
    return objMeter.bytes() >= 5000000 && objMeter.bytes() < 6000000;
}

/// Makes a document; rows hold the way to make it, since some are large.
using FnDocument = std::function<QByteArray()>;
Q_DECLARE_METATYPE(FnDocument)

/// Attributes of a tag, as many as asked for, each of them empty.
inline QByteArray attributes(int nCount)
{
    QByteArray baText;
    for (int i = 0; i < nCount; ++i)
        baText += " a" + QByteArray::number(i) + "=\"\"";
    return baText;
}
