#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <malloc.h>

/// Counts the bytes that this program has allocated. To be included by one source of a program: it stands in front of the allocation
/// functions of the C library.
namespace MemoryMeter
{
inline std::atomic<long long> g_nLive{0};
inline std::atomic<long long> g_nPeak{0};

inline void allocated(std::size_t nBytes)
{
    const long long nLive = g_nLive.fetch_add(static_cast<long long>(nBytes), std::memory_order_relaxed) + static_cast<long long>(nBytes);
    long long nPeak = g_nPeak.load(std::memory_order_relaxed);
    while (nLive > nPeak && !g_nPeak.compare_exchange_weak(nPeak, nLive, std::memory_order_relaxed))
    {
    }
}

inline void released(std::size_t nBytes)
{
    g_nLive.fetch_sub(static_cast<long long>(nBytes), std::memory_order_relaxed);
}

/// From now on the peak is counted anew; returns what is allocated now.
inline long long restart()
{
    g_nPeak = g_nLive.load();
    return g_nLive;
}

/// The most that was allocated at once since the last restart.
inline long long peak()
{
    return g_nPeak;
}
} // namespace MemoryMeter

// One compiler has a macro for it, the other a question.
#if defined(__SANITIZE_ADDRESS__)
#define ORM_ADDRESS_SANITIZER
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ORM_ADDRESS_SANITIZER
#endif
#endif

#ifdef ORM_ADDRESS_SANITIZER

// The sanitizer has hooks of its own; not every compiler comes with their header.
extern "C" int __sanitizer_install_malloc_and_free_hooks(void (*fnMalloc)(const volatile void*,
                                                                          std::size_t), // NOLINT(bugprone-reserved-identifier)
                                                         void (*fnFree)(const volatile void*));
extern "C" std::size_t __sanitizer_get_allocated_size(const volatile void* pBlock); // NOLINT(bugprone-reserved-identifier)

namespace MemoryMeter
{
inline const int g_nHooks = __sanitizer_install_malloc_and_free_hooks([](const volatile void*, std::size_t nBytes) { allocated(nBytes); },
                                                                      [](const volatile void* pBlock)
                                                                      { released(pBlock ? __sanitizer_get_allocated_size(pBlock) : 0); });
} // namespace MemoryMeter

#else

extern "C"
{
    void* __libc_malloc(size_t nBytes);                  // NOLINT(bugprone-reserved-identifier)
    void* __libc_calloc(size_t nCount, size_t nBytes);   // NOLINT(bugprone-reserved-identifier)
    void* __libc_realloc(void* pBlock, size_t nBytes);   // NOLINT(bugprone-reserved-identifier)
    void* __libc_memalign(size_t nAlign, size_t nBytes); // NOLINT(bugprone-reserved-identifier)
    void __libc_free(void* pBlock);                      // NOLINT(bugprone-reserved-identifier)

    void* malloc(size_t nBytes) noexcept
    {
        void* pBlock = __libc_malloc(nBytes);
        MemoryMeter::allocated(malloc_usable_size(pBlock));
        return pBlock;
    }
    void* calloc(size_t nCount, size_t nBytes) noexcept
    {
        void* pBlock = __libc_calloc(nCount, nBytes);
        MemoryMeter::allocated(malloc_usable_size(pBlock));
        return pBlock;
    }
    void* realloc(void* pBlock, size_t nBytes) noexcept
    {
        const size_t nBefore = malloc_usable_size(pBlock);
        void* pNew = __libc_realloc(pBlock, nBytes);
        if (pNew || nBytes == 0)
        {
            MemoryMeter::allocated(malloc_usable_size(pNew)); // both exist for a moment
            MemoryMeter::released(nBefore);
        }
        return pNew;
    }
    void* memalign(size_t nAlign, size_t nBytes) noexcept
    {
        void* pBlock = __libc_memalign(nAlign, nBytes);
        MemoryMeter::allocated(malloc_usable_size(pBlock));
        return pBlock;
    }
    void* aligned_alloc(size_t nAlign, size_t nBytes) noexcept
    {
        return memalign(nAlign, nBytes);
    }
    int posix_memalign(void** ppBlock, size_t nAlign, size_t nBytes) noexcept
    {
        *ppBlock = memalign(nAlign, nBytes);
        return *ppBlock ? 0 : 12;
    }
    void free(void* pBlock) noexcept
    {
        MemoryMeter::released(malloc_usable_size(pBlock));
        __libc_free(pBlock);
    }
}

#endif
