#pragma once

#include <cstddef>
#include <new>
#include <type_traits>
#include <utility>
#include <vector>

/// Memory for arrays of millions of elements.
namespace OrmLargePages
{
/// Asks for large pages under the whole of them that lie within a block of memory: the first touch of fresh memory in small pages costs
/// more time in the kernel than what is computed into it. Where there are none nothing happens.
void prefer(void* pBlock, std::size_t nBytes);
} // namespace OrmLargePages

/// Gives an array its memory in large pages, and its elements as the memory is: they are written once, not filled with zeros before.
template <typename T>
struct OrmArrayAllocator
{
    static_assert(std::is_trivial_v<T>, "elements are left as the memory is");
    using value_type = T;

    OrmArrayAllocator() = default;
    template <typename U>
    OrmArrayAllocator(const OrmArrayAllocator<U>&) // NOLINT(google-explicit-constructor): what an allocator must have
    {
    }

    T* allocate(std::size_t nElements)
    {
        void* pBlock = ::operator new(nElements * sizeof(T));
        OrmLargePages::prefer(pBlock, nElements * sizeof(T));
        return static_cast<T*>(pBlock);
    }
    void deallocate(T* pBlock, std::size_t /*elements*/) { ::operator delete(pBlock); }

    void construct(T* /*element*/) {}
    template <typename... Args>
    void construct(T* pElement, Args&&... args)
    {
        ::new (static_cast<void*>(pElement)) T(std::forward<Args>(args)...);
    }

    template <typename U>
    bool operator==(const OrmArrayAllocator<U>&) const
    {
        return true;
    }
    template <typename U>
    bool operator!=(const OrmArrayAllocator<U>&) const
    {
        return false;
    }
};

/// An array of plain numbers that may be long. Elements that resize() adds have no value yet.
template <typename T>
using OrmArray = std::vector<T, OrmArrayAllocator<T>>;
