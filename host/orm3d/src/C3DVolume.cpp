#include "C3DVolume.h"

#include "CDrawRehearsal.h"
#include "COrmLog.h"
#include "CVolumeMarks.h"
#include "CVoxelBlock.h"
#include "FiniteSum.h"
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

bool isVoxelSize(float fVoxelSize)
{
    if (fVoxelSize > 0.0f && std::isfinite(fVoxelSize))
        return true;
    ORM_LOG(3, QStringLiteral("A volume was refused: its voxel size %1 is not above 0.").arg(static_cast<double>(fVoxelSize)));
    return false;
}

bool refuseCounts(std::size_t nCoordinates, std::size_t nValues)
{
    ORM_LOG(3, QStringLiteral("A volume was refused: there are %1 coordinates for %2 values.").arg(nCoordinates).arg(nValues));
    return false;
}

/// Takes one scene object number per voxel; returns the first.
long takeNumbers(std::size_t nVoxels)
{
    const long nFirst = C3DSGNode::m_nObjectCount;
    C3DSGNode::m_nObjectCount += static_cast<long>(nVoxels);
    return nFirst;
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
    if (!isVoxelSize(fVoxelSize))
        return false;
    setBlock(fVoxelSize, std::make_shared<const CVoxelBlock>(fVoxelSize, std::move(vecVoxels)), fMin, fMax);
    return true;
}

bool C3DVolume::takeVoxels(float fVoxelSize, SVoxelArrays sVoxels, float fMin, float fMax)
{
    const std::size_t nVoxels = sVoxels.m_vecValues.size();
    if (sVoxels.m_vecPositions.size() != 3 * nVoxels)
        return refuseCounts(sVoxels.m_vecPositions.size(), nVoxels);
    if (!isVoxelSize(fVoxelSize))
        return false;
    auto pPositions = std::make_shared<const OrmArray<float>>(std::move(sVoxels.m_vecPositions));
    auto pValues = std::make_shared<const OrmArray<float>>(std::move(sVoxels.m_vecValues));
    setBlock(fVoxelSize, std::make_shared<const CVoxelBlock>(fVoxelSize, std::move(pPositions), std::move(pValues), takeNumbers(nVoxels)),
             fMin, fMax);
    return true;
}

bool C3DVolume::takeValues(OrmArray<float> vecValues, float fMin, float fMax)
{
    const std::size_t nVoxels = vecValues.size();
    if (nVoxels != m_pBlock->size())
        return refuseCounts(m_pBlock->positions()->size(), nVoxels);
    auto pValues = std::make_shared<const OrmArray<float>>(std::move(vecValues));
    setBlock(m_fVoxelSize,
             std::make_shared<const CVoxelBlock>(m_fVoxelSize, m_pBlock->positions(), std::move(pValues), takeNumbers(nVoxels)), fMin,
             fMax);
    return true;
}

void C3DVolume::shareVoxels(const C3DVolume& objOther)
{
    const CVoxelBlock& objVoxels = *objOther.m_pBlock;
    setBlock(objOther.m_fVoxelSize,
             std::make_shared<const CVoxelBlock>(objOther.m_fVoxelSize, objVoxels.positions(), objVoxels.sharedValues(),
                                                 takeNumbers(objVoxels.size())),
             objOther.m_fAttribMin, objOther.m_fAttribMax);
}

/// Puts voxels in the place of those that are there.
void C3DVolume::setBlock(float fVoxelSize, std::shared_ptr<const CVoxelBlock> pBlock, float fMin, float fMax)
{
    m_fVoxelSize = fVoxelSize;
    m_nVoxels = static_cast<long>(pBlock->size());
    m_fAttribMin = fMin;
    m_fAttribMax = fMax;
    m_pBlock = std::move(pBlock);
    m_pHighestLook.reset();
    m_pTranslucentLook.reset();
    m_pMarks = nullptr;
    if (std::isfinite(fMin) && std::isfinite(fMax))
        m_objPalette.SetImageMinMax(static_cast<double>(fMin), static_cast<double>(fMax));
}

const OrmArray<float>& C3DVolume::positions() const
{
    return *m_pBlock->positions();
}

const OrmArray<float>& C3DVolume::values() const
{
    return m_pBlock->values();
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
        m_pMarks = new CVolumeMarks(m_pBlock->size());
    for (const quint32 nVoxel : vecVoxels)
        m_pMarks->add(nVoxel, m_pBlock->position(nVoxel));
}

void C3DVolume::clearAllVoxelSelection()
{
    m_pMarks = nullptr;
}

bool C3DVolume::isVoxelSelected(int nVoxel) const
{
    return m_pMarks && nVoxel >= 0 && nVoxel < m_nVoxels && m_pMarks->isMarked(static_cast<quint32>(nVoxel));
}

float C3DVolume::getTotalFluxForSelectedVoxels(bool bSelected)
{
    const OrmArray<float>& vecValues = m_pBlock->values();
    if (!bSelected)
        return clampedToFloat(FiniteSum::of(vecValues.data(), vecValues.size()));
    if (!m_pMarks)
        return 0.0f;
    double fSum = 0.0;
    for (const quint32 nVoxel : m_pMarks.constData()->voxels())
        fSum += std::isfinite(vecValues[nVoxel]) ? static_cast<double>(vecValues[nVoxel]) : 0.0;
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
    if (!m_bShown || m_pBlock->size() == 0)
        return;
    if (nMode == GL_SELECT)
        nameVoxels();
    else if (bDraw && nMode == GL_RENDER && !CDrawRehearsal::isUnderWay())
        drawVoxels();
}
