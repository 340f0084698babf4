#pragma once

#include <QtGlobal>

#include <random>

/// Random numbers that are the same on every machine for the same seed.
class CMonkeyRandom
{
public:
    explicit CMonkeyRandom(quint32 nSeed) : m_objEngine(nSeed) {}

    /// 0 to nBound - 1; 0 for a bound below 2.
    int below(int nBound) { return nBound < 2 ? 0 : static_cast<int>(m_objEngine() % static_cast<quint32>(nBound)); }
    /// From the first to the last number, both included.
    int between(int nFirst, int nLast) { return nFirst + below(nLast - nFirst + 1); }
    bool oneIn(int nBound) { return below(nBound) == 0; }
    template <class List>
    auto oneOf(const List& lst)
    {
        return *(std::begin(lst) + below(static_cast<int>(std::end(lst) - std::begin(lst))));
    }
    quint32 word() { return static_cast<quint32>(m_objEngine()); }

private:
    std::mt19937 m_objEngine;
};
