#pragma once

#include "CPLResultXMLWrapper.h"

#include <new>

/// Lets no exception out of an operation of the wrapper: too little memory is a failed read.
template <typename FnRead>
bool CPLResultXMLWrapper::guarded(const QString& strPlace, FnRead fnRead)
{
    try
    {
        return fnRead();
    }
    catch (const std::bad_alloc&)
    {
        m_bOutOfMemory = true;
        return fail(strPlace, QStringLiteral("not enough memory"));
    }
}
