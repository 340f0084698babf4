#include "C3DVolume.h"

#include "COrmLog.h"
#include "CVolumeLook.h"
#include "CVolumeMarks.h"
#include "CVoxelBlock.h"
#include "OrmColorTables.h"

#include <QtGui/qopengl.h>

#include <GL/gl.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>
#include <utility>

namespace
{
constexpr double fDefaultDisplayThreshold = 0.05;

float clampedToFloat(double fValue)
{
    constexpr double fMost = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(fValue, -fMost, fMost));
}
} // namespace

C3DVolume::C3DVolume(QString strName)
    : C3DObject(std::move(strName)), m_pBlock(std::make_shared<CVoxelBlock>()), m_fDisplayThreshold(fDefaultDisplayThreshold)
{
}

C3DVolume::C3DVolume(const C3DVolume& objOther) = default;
C3DVolume& C3DVolume::operator=(const C3DVolume& objOther) = default;
C3DVolume::~C3DVolume() = default;

bool C3DVolume::loadVoxelData(float fVoxelSize, unsigned long nVoxels, C3DVolume::Voxel* pVoxels, float fMin, float fMax)
{
    if ((nVoxels > 0 && !pVoxels) || nVoxels > nMaxVoxels)
    {
        ORM_LOG(3, QStringLiteral("A volume of %1 voxels was refused.").arg(nVoxels));
        return false;
    }
    try
    {
        QVector<Voxel> vecVoxels(static_cast<int>(nVoxels));
        std::copy(pVoxels, pVoxels + nVoxels, vecVoxels.begin());
        return takeVoxelData(fVoxelSize, std::move(vecVoxels), fMin, fMax);
    }
    catch (const std::bad_alloc&)
    {
        ORM_LOG(3, QStringLiteral("A volume of %1 voxels was refused: there is not enough memory for it.").arg(nVoxels));
        return false;
    }
}

bool C3DVolume::takeVoxelData(float fVoxelSize, QVector<Voxel> vecVoxels, float fMin, float fMax)
{
    if (!(fVoxelSize > 0.0f) || !std::isfinite(fVoxelSize))
    {
        ORM_LOG(3, QStringLiteral("A volume was refused: its voxel size %1 is not above 0.").arg(static_cast<double>(fVoxelSize)));
        return false;
    }
    m_fVoxelSize = fVoxelSize;
    m_nVoxels = vecVoxels.size();
    m_fAttribMin = fMin;
    m_fAttribMax = fMax;
    m_pBlock = std::make_shared<const CVoxelBlock>(fVoxelSize, std::move(vecVoxels));
    m_pLook.reset();
    m_pMarks = nullptr;
    if (std::isfinite(fMin) && std::isfinite(fMax))
        m_objPalette.SetImageMinMax(static_cast<double>(fMin), static_cast<double>(fMax));
    return true;
}

const QVector<C3DVolume::Voxel>& C3DVolume::voxels() const
{
    return m_pBlock->voxels();
}

C3DVolume::Voxel* C3DVolume::getVoxelByNum(int nVoxel)
{
    const QVector<Voxel>& vecVoxels = m_pBlock->voxels();
    if (nVoxel < 0 || nVoxel >= vecVoxels.size())
        return nullptr;
    return const_cast<Voxel*>(vecVoxels.constData() + nVoxel); // the interface is older than the sharing of voxels
}

void C3DVolume::addToVoxelSelection(long nID)
{
    const std::vector<quint32> vecVoxels = m_pBlock->voxelsNamed(static_cast<quint32>(nID));
    if (vecVoxels.empty())
        return;
    if (!m_pMarks)
        m_pMarks = new CVolumeMarks(m_pBlock->voxels().size());
    for (const quint32 nVoxel : vecVoxels)
        m_pMarks->add(nVoxel, m_pBlock->voxels().at(static_cast<int>(nVoxel)));
}

void C3DVolume::clearAllVoxelSelection()
{
    m_pMarks = nullptr;
}

bool C3DVolume::isVoxelSelected(int nVoxel) const
{
    return m_pMarks && nVoxel >= 0 && nVoxel < m_pBlock->voxels().size() && m_pMarks->isMarked(static_cast<quint32>(nVoxel));
}

float C3DVolume::getTotalFluxForSelectedVoxels(bool bSelected)
{
    double fSum = 0.0;
    const QVector<Voxel>& vecVoxels = m_pBlock->voxels();
    const auto add = [&](const Voxel& voxel)
    {
        if (std::isfinite(voxel.fValue))
            fSum += static_cast<double>(voxel.fValue);
    };
    if (!bSelected)
        std::for_each(vecVoxels.cbegin(), vecVoxels.cend(), add);
    else if (m_pMarks)
    {
        for (const quint32 nVoxel : m_pMarks.constData()->voxels())
            add(vecVoxels.at(static_cast<int>(nVoxel)));
    }
    return clampedToFloat(fSum);
}

void C3DVolume::setAllDefaultThreshold(bool bDefault)
{
    if (bDefault)
        m_fDisplayThreshold = fDefaultDisplayThreshold;
}

void C3DVolume::setDisplayThreshold(double fFraction)
{
    m_fDisplayThreshold = fFraction > 0.0 ? std::min(fFraction, 1.0) : 0.0;
}

void C3DVolume::setColorTable(int nPosition, float fLow, float fHigh)
{
    m_objPalette.setColorTableType(OrmColorTables::typeForPosition(nPosition), fLow, fHigh);
}

void C3DVolume::render(bool bDraw, unsigned int nMode)
{
    if (!m_bShown || m_pBlock->voxels().isEmpty())
        return;
    if (nMode == GL_SELECT)
        nameVoxels();
    else if (bDraw && nMode == GL_RENDER)
        drawVoxels();
}
