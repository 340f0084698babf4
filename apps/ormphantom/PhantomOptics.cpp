#include "PhantomOptics.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace
{
constexpr double kPi = 3.14159265358979323846;

/// Molar extinction coefficients of haemoglobin, 1/(cm M).
struct SExtinction
{
    double m_fWavelength;   ///< nm
    double m_fOxygenated;   ///< HbO2
    double m_fDeoxygenated; ///< Hb
};

constexpr std::array<SExtinction, 10> kExtinction = {{{560, 32613.2, 53788},
                                                      {580, 50104, 37020},
                                                      {600, 3200, 14677.2},
                                                      {620, 942, 6509.6},
                                                      {640, 442, 4345.2},
                                                      {660, 319.6, 3226.56},
                                                      {700, 290, 1794.28},
                                                      {740, 446, 1115.88},
                                                      {800, 816, 761.72},
                                                      {900, 1198, 761.84}}};
} // namespace

STissueOptics PhantomOptics::tissue(double fWavelength)
{
    constexpr double kBloodVolume = 0.05;
    constexpr double kOxygenation = 0.7;
    constexpr double kHaemoglobin = 150.0 / 64500.0; // mol/l of whole blood

    const double fNm = std::clamp(fWavelength, kExtinction.front().m_fWavelength, kExtinction.back().m_fWavelength);
    std::size_t nAt = 1;
    while (kExtinction[nAt].m_fWavelength < fNm)
    {
        ++nAt;
    }
    const SExtinction& below = kExtinction[nAt - 1];
    const SExtinction& above = kExtinction[nAt];
    const auto blood = [](const SExtinction& row) { return kOxygenation * row.m_fOxygenated + (1.0 - kOxygenation) * row.m_fDeoxygenated; };
    const double fT = (fNm - below.m_fWavelength) / (above.m_fWavelength - below.m_fWavelength);
    const double fExtinction = std::exp((1.0 - fT) * std::log(blood(below)) + fT * std::log(blood(above)));

    STissueOptics optics;
    optics.m_fAbsorption = 0.1 * std::log(10.0) * fExtinction * kHaemoglobin * kBloodVolume; // 1/cm to 1/mm
    optics.m_fReducedScattering = 1.89 * std::pow(fNm / 500.0, -1.286);
    return optics;
}

std::vector<float> PhantomOptics::photonDensity(const std::vector<CPhantomBody::Point>& vecPoints,
                                                const std::vector<SPointSource>& vecSources, const STissueOptics& optics)
{
    const double fTransport = optics.m_fAbsorption + optics.m_fReducedScattering;
    const double fDiffusion = 1.0 / (3.0 * fTransport);
    const double fAttenuation = std::sqrt(optics.m_fAbsorption / fDiffusion);
    const double fNearest = 1.0 / fTransport;

    std::vector<float> vecDensity;
    vecDensity.reserve(vecPoints.size());
    for (const CPhantomBody::Point& point : vecPoints)
    {
        double fSum = 0.0;
        for (const SPointSource& source : vecSources)
        {
            const double fDistance = std::max(fNearest, std::hypot(point[0] - source.m_fX, point[1] - source.m_fY, point[2] - source.m_fZ));
            fSum += source.m_fPower * std::exp(-fAttenuation * fDistance) / fDistance;
        }
        vecDensity.push_back(static_cast<float>(fSum / (4.0 * kPi * fDiffusion)));
    }
    return vecDensity;
}
