#include "OrmArray.h"

#include <cstdint>

#include <sys/mman.h>

void OrmLargePages::prefer(void* pBlock, std::size_t nBytes)
{
    constexpr std::uintptr_t nLargePage = 2097152;
    const auto nBlock = reinterpret_cast<std::uintptr_t>(pBlock);
    const std::uintptr_t nStart = (nBlock + nLargePage - 1) / nLargePage * nLargePage;
    const std::uintptr_t nEnd = (nBlock + nBytes) / nLargePage * nLargePage;
    if (nEnd > nStart)
        madvise(static_cast<char*>(pBlock) + (nStart - nBlock), nEnd - nStart, MADV_HUGEPAGE);
}
