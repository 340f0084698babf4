#pragma once

#include "SResultDocument.h"

#include <QByteArray>
#include <QByteArrayList>

#include <random>
#include <string>

/// Small sound files, and ways to damage them.
namespace DamageTools
{

/// A result of the kind and version with all its blocks, small enough to be cut at each of its bytes.
inline SResultDocument smallResult(int nKind, const QString& strVersion)
{
    SResultDocument objDocument(nKind, strVersion);
    objDocument.vecVertices = {0.0f, 0.0f, 0.0f, 4.0f, 0.0f, 0.0f, 0.0f, 4.0f, 0.0f, 0.0f, 0.0f, 4.0f};
    objDocument.vecTriangles = {0, 2, 1, 0, 1, 3, 0, 3, 2, 1, 2, 3};
    objDocument.setNames(objDocument.lstNames);
    objDocument.setCube(2, 1.0);
    return objDocument;
}

inline std::string bytes(const QByteArray& by)
{
    return by.toStdString();
}

/// The unit of a result without calibration, as the plain second reader calls it.
inline std::string plainUnit(int nKind)
{
    return nKind == SResultDocument::NOVA ? "uncalibrated" : "photons/sec";
}

/// The same damage in each run.
class CMutator
{
public:
    explicit CMutator(quint32 nSeed) : m_objRandom(nSeed) {}

    int below(int nBound) { return static_cast<int>(m_objRandom() % static_cast<quint32>(nBound)); }

    /// Up to three changes: bytes lost, replaced, doubled or moved, and numbers that lie.
    QByteArray mutant(QByteArray by)
    {
        const QByteArray byLikely = "<>/=\"' 0123456789abcdefABCDEFgG.-+eE\n[]#;&!?\xC3\x80";
        for (int nChanges = 1 + below(3); nChanges > 0; --nChanges)
        {
            const int nPlace = below(by.size() + 1);
            switch (below(6))
            {
            case 0:
                by.remove(nPlace, 1 + below(24));
                break;
            case 1:
                by.insert(nPlace, by.mid(below(by.size() + 1), below(40)));
                break;
            case 2:
                by.insert(nPlace, 1, static_cast<char>(below(256)));
                break;
            case 3:
                lie(by, nPlace);
                break;
            default:
                if (nPlace < by.size())
                {
                    by[nPlace] = byLikely.at(below(byLikely.size()));
                }
            }
        }
        return by;
    }

private:
    /// Puts a claim in place of the next number.
    void lie(QByteArray& by, int nFrom)
    {
        const QByteArrayList lstClaims = {"0",          "-1",         "1",       "3",  "65536", "46341",      "2147483647",
                                          "2147483648", "4294967296", "1e3",     " 3", "3.0",   "1431655766", "",
                                          "nan",        "536870913",  "1000000", "9",  "1e-50", "-2147483648"};
        while (nFrom < by.size() && !isDigit(by.at(nFrom)))
        {
            ++nFrom;
        }
        int nEnd = nFrom;
        while (nEnd < by.size() && isDigit(by.at(nEnd)) && nEnd < nFrom + 8)
        {
            ++nEnd;
        }
        by.replace(nFrom, nEnd - nFrom, lstClaims.at(below(lstClaims.size())));
    }

    static bool isDigit(char c) { return c >= '0' && c <= '9'; }

    std::mt19937 m_objRandom;
};

} // namespace DamageTools
