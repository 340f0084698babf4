#include "CVolumeLook.h"

#include "OrmColorScale.h"
#include "OrmColorTables.h"

#include <algorithm>

namespace
{
/// The first place that is drawn. A voxel without any amount never is.
std::size_t firstDrawn(const CVolumeGeometry& objGeometry, const CVolumeLook::SState& sState)
{
    const double fLeast = sState.m_objPalette.logScale() == 0 ? sState.m_fThreshold * static_cast<double>(objGeometry.highest()) : 0.0;
    const auto isHidden = [&](float fValue)
    { return !(fValue > 0.0f) || static_cast<double>(fValue) < fLeast || sState.m_objPalette.isBelowRange(static_cast<double>(fValue)); };
    const OrmArray<float>& vecValues = objGeometry.values();
    return static_cast<std::size_t>(std::partition_point(vecValues.begin(), vecValues.end(), isHidden) - vecValues.begin());
}
} // namespace

bool CVolumeLook::SState::operator==(const SState& sOther) const
{
    const OrmColorScale::SRange sRange = m_objPalette.range();
    const OrmColorScale::SRange sOtherRange = sOther.m_objPalette.range();
    return m_objPalette.lut() == sOther.m_objPalette.lut() && sRange.m_fMin == sOtherRange.m_fMin && sRange.m_fMax == sOtherRange.m_fMax &&
           sRange.m_bLog == sOtherRange.m_bLog && m_fThreshold == sOther.m_fThreshold && m_bMIP == sOther.m_bMIP;
}

CVolumeLook::CVolumeLook(const CVolumeGeometry& objGeometry, const SState& sState, const CVolumeLook* pFormer)
    : m_sState(sState), m_nFirst(firstDrawn(objGeometry, sState))
{
    m_pOrders = pFormer && pFormer->m_nFirst == m_nFirst ? pFormer->m_pOrders : std::make_shared<Orders>();

    // Values ascend, so that the places of one table entry are one stretch: its end is searched for, not computed voxel by voxel.
    const OrmArray<float>& vecValues = objGeometry.values();
    const COrmPalette& objPalette = m_sState.m_objPalette;
    const auto entry = [&](float fValue)
    {
        constexpr int nLast = OrmColorTables::nTableSize - 1;
        return OrmColorScale::toIndex(objPalette.position(static_cast<double>(fValue)) * nLast, nLast + 1);
    };
    m_vecColors.resize(4 * (vecValues.size() - m_nFirst));
    quint8* pOut = m_vecColors.data();
    for (auto it = vecValues.begin() + static_cast<std::ptrdiff_t>(m_nFirst); it != vecValues.end();)
    {
        const int nEntry = entry(*it);
        const auto itEnd = std::partition_point(it, vecValues.end(), [&](float fValue) { return entry(fValue) == nEntry; });
        const QRgb nColor = objPalette.lut()[nEntry];
        for (; it != itEnd; ++it, pOut += 4)
        {
            pOut[0] = static_cast<quint8>(qRed(nColor));
            pOut[1] = static_cast<quint8>(qGreen(nColor));
            pOut[2] = static_cast<quint8>(qBlue(nColor));
            pOut[3] = 255;
        }
    }
    if (m_sState.m_bMIP)
        return;
    const std::vector<quint8> vecOpacities = objGeometry.opacities();
    for (std::size_t nPlace = m_nFirst; nPlace < vecOpacities.size(); ++nPlace)
        m_vecColors[4 * (nPlace - m_nFirst) + 3] = vecOpacities[nPlace];
}

const std::vector<quint32>& CVolumeLook::backToFront(const CVolumeGeometry& objGeometry, bool bNearerWithX, bool bNearerWithY,
                                                     bool bNearerWithZ) const
{
    std::vector<quint32>& vecOrder = (*m_pOrders)[(bNearerWithX ? 1U : 0U) + (bNearerWithY ? 2U : 0U) + (bNearerWithZ ? 4U : 0U)];
    if (vecOrder.empty())
        vecOrder = objGeometry.backToFront(m_nFirst, bNearerWithX, bNearerWithY, bNearerWithZ);
    return vecOrder;
}
