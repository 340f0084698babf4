#pragma once

#include "PhantomBody.h"

#include <vector>

/// Optical properties of soft tissue at one wavelength.
struct STissueOptics
{
    double m_fAbsorption = 0.0;        ///< absorption coefficient, 1/mm
    double m_fReducedScattering = 0.0; ///< reduced scattering coefficient, 1/mm
};

/// A point source of light.
struct SPointSource
{
    double m_fX = 0.0, m_fY = 0.0, m_fZ = 0.0; ///< position, mm
    double m_fPower = 0.0;                     ///< emitted photons per second
};

namespace PhantomOptics
{
/// Properties of muscle-like tissue at @p fWavelength nanometres (clamped to 560 to 900).
///
/// Absorption is that of 5 % blood by volume, 70 % oxygenated, at 150 g/l of haemoglobin, from the molar extinction coefficients
/// compiled by S. Prahl ("Optical Absorption of Hemoglobin", Oregon Medical Laser Center, 1999), interpolated linearly in their logarithm.
/// Reduced scattering follows the power law a (lambda / 500 nm)^-b with a = 1.89 1/mm and b = 1.286, the mean of soft tissues of S. L.
/// Jacques, "Optical properties of biological tissues: a review", Phys. Med. Biol. 58 (2013) R37.
STissueOptics tissue(double fWavelength);

/// Photon density (fluence rate, photons per second and mm²) at each point from all sources together, by the steady-state diffusion
/// approximation for an unbounded homogeneous medium: P exp(-mu_eff r) / (4 pi D r) with D = 1 / (3 (mu_a + mu_s')) and
/// mu_eff = sqrt(mu_a / D) (T. J. Farrell, M. S. Patterson, B. Wilson, Med. Phys. 19 (1992) 879). Closer than one transport length the
/// approximation does not hold; there the value at that distance is taken.
std::vector<float> photonDensity(const std::vector<CPhantomBody::Point>& vecPoints, const std::vector<SPointSource>& vecSources,
                                 const STissueOptics& optics);
} // namespace PhantomOptics
