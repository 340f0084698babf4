#pragma once

#include <cstddef>

/// Lets things go wrong on demand. The library stands in front of the C library's memory and file functions: put it first with
/// LD_PRELOAD. Nothing goes wrong, and nothing is counted, but between begin() and end() on the thread that called begin(), and not while
/// it is held off.
///
/// Memory: an allocation counts where it is asked for by code of this project, or by a library on its behalf that is one of those below the
/// user interface (Qt's texts and containers, the C++ library, the XML parser, the picture formats). What Qt's objects, threads, files and
/// widgets, the drawing libraries and the connection to the display allocate for themselves is left alone: they end the program when
/// memory runs out.
///
/// Files: a call counts where it opens a file below the watched folder, or is about a descriptor that was opened so.
namespace OrmFaults
{
enum class EKind
{
    Memory, ///< malloc, calloc, realloc, aligned memory, new: no memory
    File,   ///< open, read, write, fsync, ftruncate, rename, link, fstat: the error given
    Short   ///< read and write: 7 bytes at most
};

struct SPlan
{
    EKind eKind = EKind::Memory;
    long nFirst = 0;             ///< number of the call that fails, from 1; 0: none, calls are only counted
    bool bForEver = false;       ///< and all that follow
    int nError = 0;              ///< errno of a File fault
    std::size_t nLeastBytes = 0; ///< smaller allocations do not count; where it is set, those of QtGui do, which writes pictures
    const char* pFolder = "";    ///< watched; must stay valid until end()
};

/// What happened between begin() and end().
struct SRun
{
    long nCalls = 0; ///< of the plan's kind
    long nHit = 0;   ///< number of the first call that failed; 0: none did
};

void begin(const SPlan& sPlan);
SRun end();

/// While one lives, nothing goes wrong and nothing is counted.
class CHold
{
public:
    CHold();
    ~CHold();
    CHold(const CHold&) = delete;
    CHold& operator=(const CHold&) = delete;
};
} // namespace OrmFaults
