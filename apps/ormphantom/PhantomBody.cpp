#include "PhantomBody.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr double kPi = 3.14159265358979323846;
constexpr double kFlatness = 0.82; ///< height of the body over its width

double bell(double fX, double fCentre, double fWidth)
{
    const double fT = (fX - fCentre) / fWidth;
    return std::exp(-fT * fT);
}

/// A bump at a place of the skin and its mirror image on the other side.
double bumpPair(double fS, double fAngle, double fAtS, double fAtAngle, double fWidthS, double fWidthAngle)
{
    const auto difference = [fAngle](double fAt) { return std::remainder(fAngle - fAt, 2.0 * kPi); };
    return bell(fS, fAtS, fWidthS) * (bell(difference(fAtAngle), 0.0, fWidthAngle) + bell(difference(kPi - fAtAngle), 0.0, fWidthAngle));
}
} // namespace

double CPhantomBody::radius(double fY, double fAngle)
{
    const double fS = fY / kLength + 0.5; // 0 at the tail base, 1 at the snout
    if (fS <= 0.0 || fS >= 1.0)
    {
        return 0.0;
    }
    const double fEnds = std::pow(1.0 - std::pow(1.0 - fS, 12.0), 0.5) * std::pow(1.0 - std::pow(fS, 3.0), 0.75);
    const double fTrunk = 7.0 + 6.5 * bell(fS, 0.28, 0.27) + 3.0 * bell(fS, 0.80, 0.09) - 0.8 * bell(fS, 0.68, 0.06);
    const double fEars = 6.5 * bumpPair(fS, fAngle, 0.78, 0.20 * kPi, 0.028, 0.30);
    const double fForeLegs = 6.0 * bumpPair(fS, fAngle, 0.62, -0.12 * kPi, 0.035, 0.28);
    const double fHindLegs = 7.5 * bumpPair(fS, fAngle, 0.15, -0.10 * kPi, 0.050, 0.30);
    return fEnds * fTrunk + fEars + fForeLegs + fHindLegs;
}

bool CPhantomBody::contains(double fX, double fY, double fZ, double fMargin)
{
    const double fHeight = fZ / kFlatness;
    return std::hypot(fX, fHeight) + fMargin < radius(fY, std::atan2(fHeight, fX));
}

CPhantomBody::SMesh CPhantomBody::mesh(int nVertices)
{
    const int nAround = std::max(3, static_cast<int>(std::lround(std::sqrt(std::max(nVertices, 14) - 2.0))));
    const int nRings = std::max(2, static_cast<int>(std::lround((nVertices - 2.0) / nAround)));

    SMesh mesh;
    mesh.m_vecVertices.reserve(static_cast<std::size_t>(nAround) * nRings + 2);
    mesh.m_vecVertices.push_back({0.0F, static_cast<float>(-kLength / 2), 0.0F});
    for (int nRing = 0; nRing < nRings; ++nRing)
    {
        // Rings stand closer together towards the ends, where the surface bends most.
        const double fY = -0.5 * kLength * std::cos(kPi * (nRing + 1.0) / (nRings + 1.0));
        for (int nStep = 0; nStep < nAround; ++nStep)
        {
            const double fAngle = 2.0 * kPi * nStep / nAround;
            const double fRadius = radius(fY, fAngle);
            mesh.m_vecVertices.push_back({static_cast<float>(fRadius * std::cos(fAngle)), static_cast<float>(fY),
                                          static_cast<float>(kFlatness * fRadius * std::sin(fAngle))});
        }
    }
    mesh.m_vecVertices.push_back({0.0F, static_cast<float>(kLength / 2), 0.0F});

    const auto at = [nAround](int nRing, int nStep) { return static_cast<std::uint32_t>(1 + nRing * nAround + nStep % nAround); };
    const auto nLast = static_cast<std::uint32_t>(mesh.m_vecVertices.size() - 1);
    mesh.m_vecTriangles.reserve(2 * static_cast<std::size_t>(nAround) * nRings);
    for (int nStep = 0; nStep < nAround; ++nStep)
    {
        mesh.m_vecTriangles.push_back({0U, at(0, nStep), at(0, nStep + 1)});
        for (int nRing = 0; nRing + 1 < nRings; ++nRing)
        {
            mesh.m_vecTriangles.push_back({at(nRing, nStep), at(nRing + 1, nStep), at(nRing, nStep + 1)});
            mesh.m_vecTriangles.push_back({at(nRing, nStep + 1), at(nRing + 1, nStep), at(nRing + 1, nStep + 1)});
        }
        mesh.m_vecTriangles.push_back({at(nRings - 1, nStep), nLast, at(nRings - 1, nStep + 1)});
    }
    return mesh;
}
