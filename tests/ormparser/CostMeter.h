#pragma once

// What documents cost their readers, in time and memory.

#include "MemoryMeter.h"
#include "TestDocuments.h"

#include <QMetaType>

#include <ctime>
#include <functional>

constexpr long long nMegabyte = 1048576;
constexpr long long nAllowedMemory = 32 * nMegabyte; ///< for a refusal, beyond the size of the file
#ifdef __SANITIZE_ADDRESS__
constexpr double fPatience = 20.0; ///< the sanitizers take their time
#else
constexpr double fPatience = 1.0;
#endif

/// Time and memory since it was made. Time is the processor's: others may use the machine too.
class CostMeter
{
public:
    CostMeter() : m_fStart(now()), m_nStart(MemoryMeter::restart()) {}
    double seconds() const { return now() - m_fStart; }
    long long bytes() const { return MemoryMeter::peak() - m_nStart; }

private:
    static double now()
    {
        timespec objTime = {};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &objTime);
        return static_cast<double>(objTime.tv_sec) + static_cast<double>(objTime.tv_nsec) * 1e-9;
    }

    double m_fStart;
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
