#include "OrmFaults.h"

#include <bitset>
#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <link.h>
#include <new>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <unwind.h>

// Nothing here may allocate: it runs inside of malloc.

namespace
{
constexpr int g_nDescriptors = 4096;
constexpr size_t g_nShortBytes = 7;

struct SState
{
    OrmFaults::SPlan sPlan;
    OrmFaults::SRun sRun;
    std::bitset<g_nDescriptors> setWatched; ///< descriptors of files below the folder
};
SState g_sState;
thread_local bool t_bActive = false; ///< this thread is between begin() and end()
thread_local int t_nHeld = 0;

enum class EOwner
{
    Project,
    Below, ///< works on behalf of its caller
    Beside ///< user interface, drawing, the display
};

bool contains(const char* pText, const char* pPart)
{
    return std::strstr(pText, pPart) != nullptr;
}

/// Whose code it is, by the name of its library. The program itself has none.
EOwner ownerOf(const char* pLibrary)
{
    if (*pLibrary == '\0' || contains(pLibrary, "/liborm"))
        return contains(pLibrary, "ormfaults") ? EOwner::Below : EOwner::Project;
    if (contains(pLibrary, "libQt5Gui"))
        return g_sState.sPlan.nLeastBytes > 0 ? EOwner::Below : EOwner::Beside;
    for (const char* pBelow : {"libQt5Core", "libstdc++", "libc.so", "libgcc_s", "libpugixml", "libtiff", "libz.", "libpng", "libjpeg",
                               "libasan", "ld-linux", "libqjpeg", "libLerc", "libdeflate", "libzstd", "liblzma", "libwebp", "libjbig"})
    {
        if (contains(pLibrary, pBelow))
            return EOwner::Below;
    }
    return EOwner::Beside;
}

/// Qt's objects, threads and files end the program where they find no memory while they are made.
bool isOfQtObject(void* pCode)
{
    Dl_info objInfo = {};
    if (dladdr(pCode, &objInfo) == 0 || !objInfo.dli_sname)
        return false;
    for (const char* pClass : {"_ZN7QObject", "_ZN14QObjectPrivate", "_ZN11QMetaObject", "_ZN16QCoreApplication", "_ZN7QThread",
                               "_ZN9QSaveFile", "_ZN5QFile", "_ZN11QFileDevice", "_ZN13QFSFileEngine"})
    {
        if (std::strncmp(objInfo.dli_sname, pClass, std::strlen(pClass)) == 0)
            return true;
    }
    return false;
}

_Unwind_Reason_Code lookAtFrame(_Unwind_Context* pContext, void* pResult)
{
    dl_find_object objFound = {};
    void* pCode = reinterpret_cast<void*>(_Unwind_GetIP(pContext) - 1); // NOLINT(performance-no-int-to-ptr): what unwinding gives
    if (_dl_find_object(pCode, &objFound) != 0)
        return _URC_NO_REASON;
    const char* pLibrary = objFound.dlfo_link_map->l_name;
    const EOwner eOwner = contains(pLibrary, "libQt5Core") && isOfQtObject(pCode) ? EOwner::Beside : ownerOf(pLibrary);
    if (eOwner == EOwner::Below)
        return _URC_NO_REASON;
    *static_cast<bool*>(pResult) = eOwner == EOwner::Project;
    return _URC_END_OF_STACK;
}

bool isForProject()
{
    bool bProject = false;
    const OrmFaults::CHold objHold;
    _Unwind_Backtrace(&lookAtFrame, &bProject);
    return bProject;
}

bool isWatching(OrmFaults::EKind eKind)
{
    return t_bActive && t_nHeld == 0 && g_sState.sPlan.eKind == eKind;
}

/// Counts a call that may fail, and decides. The stack is looked at only where it matters: it costs more than the call.
bool failsNow()
{
    const OrmFaults::SPlan& sPlan = g_sState.sPlan;
    OrmFaults::SRun& sRun = g_sState.sRun;
    ++sRun.nCalls;
    if (sPlan.nFirst == 0 || sRun.nCalls < sPlan.nFirst || (sRun.nHit != 0 && !sPlan.bForEver))
        return false;
    if (sPlan.eKind == OrmFaults::EKind::Memory && !isForProject())
        return false;
    if (sRun.nHit == 0)
        sRun.nHit = sRun.nCalls;
    return true;
}

bool memoryFails(size_t nBytes)
{
    if (!isWatching(OrmFaults::EKind::Memory) || nBytes < g_sState.sPlan.nLeastBytes || !failsNow())
        return false;
    errno = ENOMEM;
    return true;
}

bool isWatched(int nDescriptor)
{
    return nDescriptor >= 0 && nDescriptor < g_nDescriptors && g_sState.setWatched.test(static_cast<size_t>(nDescriptor));
}

bool isWatched(const char* pPath)
{
    const char* pFolder = g_sState.sPlan.pFolder;
    return *pFolder != '\0' && pPath && std::strncmp(pPath, pFolder, std::strlen(pFolder)) == 0;
}

bool fileFails(bool bWatched)
{
    if (!isWatching(OrmFaults::EKind::File) || !bWatched || !failsNow())
        return false;
    errno = g_sState.sPlan.nError;
    return true;
}

/// How many of the bytes may be read or written at once.
size_t allowed(int nDescriptor, size_t nBytes)
{
    return isWatching(OrmFaults::EKind::Short) && isWatched(nDescriptor) && nBytes > g_nShortBytes && failsNow() ? g_nShortBytes : nBytes;
}

int watch(int nDescriptor, bool bWatched)
{
    if (t_bActive && bWatched && nDescriptor >= 0 && nDescriptor < g_nDescriptors)
        g_sState.setWatched.set(static_cast<size_t>(nDescriptor));
    return nDescriptor;
}

bool makesFile(int nFlags)
{
    return (nFlags & O_CREAT) != 0 || (nFlags & O_TMPFILE) == O_TMPFILE;
}

template <typename Fn>
Fn next(const char* pName)
{
    const OrmFaults::CHold objHold; // dlsym may allocate
    return reinterpret_cast<Fn>(dlsym(RTLD_NEXT, pName));
}
} // namespace

void OrmFaults::begin(const SPlan& sPlan)
{
    g_sState.sPlan = sPlan;
    g_sState.sRun = SRun();
    g_sState.setWatched.reset();
    t_bActive = true;
}

OrmFaults::SRun OrmFaults::end()
{
    t_bActive = false;
    return g_sState.sRun;
}

OrmFaults::CHold::CHold()
{
    ++t_nHeld;
}

OrmFaults::CHold::~CHold()
{
    --t_nHeld;
}

extern "C"
{
    // What the functions do in the end: the sanitizer's ones where there is one, else those of the C library.
    void* __interceptor_malloc(size_t nBytes) __attribute__((weak));                  // NOLINT(bugprone-reserved-identifier)
    void* __interceptor_calloc(size_t nCount, size_t nBytes) __attribute__((weak));   // NOLINT(bugprone-reserved-identifier)
    void* __interceptor_realloc(void* pBlock, size_t nBytes) __attribute__((weak));   // NOLINT(bugprone-reserved-identifier)
    void* __interceptor_memalign(size_t nAlign, size_t nBytes) __attribute__((weak)); // NOLINT(bugprone-reserved-identifier)
    void* __libc_malloc(size_t nBytes);                                               // NOLINT(bugprone-reserved-identifier)
    void* __libc_calloc(size_t nCount, size_t nBytes);                                // NOLINT(bugprone-reserved-identifier)
    void* __libc_realloc(void* pBlock, size_t nBytes);                                // NOLINT(bugprone-reserved-identifier)
    void* __libc_memalign(size_t nAlign, size_t nBytes);                              // NOLINT(bugprone-reserved-identifier)

    void* malloc(size_t nBytes) noexcept
    {
        if (memoryFails(nBytes))
            return nullptr;
        return __interceptor_malloc ? __interceptor_malloc(nBytes) : __libc_malloc(nBytes);
    }

    void* calloc(size_t nCount, size_t nBytes) noexcept
    {
        if (memoryFails(nCount * nBytes))
            return nullptr;
        return __interceptor_calloc ? __interceptor_calloc(nCount, nBytes) : __libc_calloc(nCount, nBytes);
    }

    void* realloc(void* pBlock, size_t nBytes) noexcept
    {
        if (nBytes > 0 && memoryFails(nBytes))
            return nullptr;
        return __interceptor_realloc ? __interceptor_realloc(pBlock, nBytes) : __libc_realloc(pBlock, nBytes);
    }

    void* memalign(size_t nAlign, size_t nBytes) noexcept
    {
        if (memoryFails(nBytes))
            return nullptr;
        return __interceptor_memalign ? __interceptor_memalign(nAlign, nBytes) : __libc_memalign(nAlign, nBytes);
    }

    void* aligned_alloc(size_t nAlign, size_t nBytes) noexcept
    {
        return memalign(nAlign, nBytes);
    }

    int posix_memalign(void** ppBlock, size_t nAlign, size_t nBytes) noexcept
    {
        *ppBlock = memalign(nAlign, nBytes);
        return *ppBlock ? 0 : ENOMEM;
    }

    int open(const char* pPath, int nFlags, ...)
    {
        static const auto fnOpen = next<int (*)(const char*, int, mode_t)>("open");
        va_list objArguments;
        va_start(objArguments, nFlags);
        const mode_t nMode = makesFile(nFlags) ? va_arg(objArguments, mode_t) : 0;
        va_end(objArguments);
        return fileFails(isWatched(pPath)) ? -1 : watch(fnOpen(pPath, nFlags, nMode), isWatched(pPath));
    }

    int open64(const char* pPath, int nFlags, ...)
    {
        static const auto fnOpen = next<int (*)(const char*, int, mode_t)>("open64");
        va_list objArguments;
        va_start(objArguments, nFlags);
        const mode_t nMode = makesFile(nFlags) ? va_arg(objArguments, mode_t) : 0;
        va_end(objArguments);
        return fileFails(isWatched(pPath)) ? -1 : watch(fnOpen(pPath, nFlags, nMode), isWatched(pPath));
    }

    long syscall(long nNumber, ...) noexcept
    {
        static const auto fnSyscall = next<long (*)(long, ...)>("syscall");
        va_list objArguments;
        va_start(objArguments, nNumber);
        long anArguments[6];
        for (long& nArgument : anArguments)
            nArgument = va_arg(objArguments, long);
        va_end(objArguments);
        const bool bWatched = nNumber == SYS_openat2 && isWatched(static_cast<int>(anArguments[0]));
        if (fileFails(bWatched))
            return -1;
        const long nResult =
            fnSyscall(nNumber, anArguments[0], anArguments[1], anArguments[2], anArguments[3], anArguments[4], anArguments[5]);
        if (bWatched)
            watch(static_cast<int>(nResult), true);
        return nResult;
    }

    int close(int nDescriptor)
    {
        static const auto fnClose = next<int (*)(int)>("close");
        if (isWatched(nDescriptor))
            g_sState.setWatched.reset(static_cast<size_t>(nDescriptor));
        return fnClose(nDescriptor);
    }

    ssize_t read(int nDescriptor, void* pBuffer, size_t nBytes)
    {
        static const auto fnRead = next<ssize_t (*)(int, void*, size_t)>("read");
        return fileFails(isWatched(nDescriptor)) ? -1 : fnRead(nDescriptor, pBuffer, allowed(nDescriptor, nBytes));
    }

    ssize_t write(int nDescriptor, const void* pBuffer, size_t nBytes)
    {
        static const auto fnWrite = next<ssize_t (*)(int, const void*, size_t)>("write");
        return fileFails(isWatched(nDescriptor)) ? -1 : fnWrite(nDescriptor, pBuffer, allowed(nDescriptor, nBytes));
    }

    int fsync(int nDescriptor)
    {
        static const auto fnSync = next<int (*)(int)>("fsync");
        return fileFails(isWatched(nDescriptor)) ? -1 : fnSync(nDescriptor);
    }

    int fdatasync(int nDescriptor)
    {
        static const auto fnSync = next<int (*)(int)>("fdatasync");
        return fileFails(isWatched(nDescriptor)) ? -1 : fnSync(nDescriptor);
    }

    int ftruncate(int nDescriptor, off_t nLength) noexcept
    {
        static const auto fnTruncate = next<int (*)(int, off_t)>("ftruncate");
        return fileFails(isWatched(nDescriptor)) ? -1 : fnTruncate(nDescriptor, nLength);
    }

    int ftruncate64(int nDescriptor, off64_t nLength) noexcept
    {
        static const auto fnTruncate = next<int (*)(int, off64_t)>("ftruncate64");
        return fileFails(isWatched(nDescriptor)) ? -1 : fnTruncate(nDescriptor, nLength);
    }

    int rename(const char* pOld, const char* pNew) noexcept
    {
        static const auto fnRename = next<int (*)(const char*, const char*)>("rename");
        return fileFails(isWatched(pNew)) ? -1 : fnRename(pOld, pNew);
    }

    int linkat(int nOldFolder, const char* pOld, int nNewFolder, const char* pNew, int nFlags) noexcept
    {
        static const auto fnLink = next<int (*)(int, const char*, int, const char*, int)>("linkat");
        return fileFails(isWatched(pNew)) ? -1 : fnLink(nOldFolder, pOld, nNewFolder, pNew, nFlags);
    }

    int fstat(int nDescriptor, struct stat* pStat) noexcept
    {
        static const auto fnStat = next<int (*)(int, struct stat*)>("fstat");
        return fileFails(isWatched(nDescriptor)) ? -1 : fnStat(nDescriptor, pStat);
    }

    int fstat64(int nDescriptor, struct stat64* pStat) noexcept
    {
        static const auto fnStat = next<int (*)(int, struct stat64*)>("fstat64");
        return fileFails(isWatched(nDescriptor)) ? -1 : fnStat(nDescriptor, pStat);
    }

    int statx(int nFolder, const char* pPath, int nFlags, unsigned int nMask, struct statx* pStat) noexcept
    {
        static const auto fnStat = next<int (*)(int, const char*, int, unsigned int, struct statx*)>("statx");
        const bool bOfDescriptor = (nFlags & AT_EMPTY_PATH) != 0 && isWatched(nFolder);
        return fileFails(bOfDescriptor) ? -1 : fnStat(nFolder, pPath, nFlags, nMask, pStat);
    }
}

#ifdef ORM_FAULTS_SANITIZED
// The sanitizer's own operators do not come by malloc.
void* operator new(size_t nBytes)
{
    if (void* pBlock = malloc(nBytes))
        return pBlock;
    throw std::bad_alloc();
}

void* operator new[](size_t nBytes)
{
    return operator new(nBytes);
}

void* operator new(size_t nBytes, const std::nothrow_t&) noexcept
{
    return malloc(nBytes);
}

void* operator new[](size_t nBytes, const std::nothrow_t&) noexcept
{
    return malloc(nBytes);
}
#endif
