// Source volume section of result documents.

#include "C3DVolume.h"

#include "COrmLog.h"
#include "COrmProcess.h"
#include "CPLResultXMLWrapper.h"
#include "CVoxelLattice.h"
#include "OrmNumberText.h"

#include <QStringList>

#include <algorithm>
#include <cmath>
#include <new>
#include <utility>
#include <vector>

namespace
{
const QLatin1String strData("Orm3.0.Volume.Data");
const QLatin1String strVoxels("Orm3.0.Volume.Voxels");
const QLatin1String strVoxel("Orm3.0.Volume.Voxel");
const QLatin1String strVoxelValues("Orm3.0.Volume.Voxels.Values");
constexpr qint64 nRefinementMargin = 2; ///< cells that a refinement adds on every side

bool refuse(const QString& strReason)
{
    ORM_LOG(3, QStringLiteral("The source volume cannot be read: %1").arg(strReason));
    return false;
}

/// What the section says of itself.
struct SHeader
{
    int m_nCount = 0;
    float m_fVoxelSize = 0.0f;
    bool m_bText = false; ///< version 1.0: one element per voxel
};

bool readHeader(CPLResultXMLWrapper& objWrapper, const QString& strKind, SHeader& sHeader)
{
    const QString strVersion = objWrapper.getVersion();
    sHeader.m_bText = strVersion == QLatin1String("1.0");
    if (!sHeader.m_bText && strVersion != QLatin1String("2.0"))
        return refuse(QStringLiteral("version \"%1\" of the document is not known.").arg(strVersion.left(40)));
    if (!objWrapper.openSection(strData, strVoxels))
        return refuse(QStringLiteral("there is no \"%1\".").arg(strVoxels));
    QString strText;
    if (!objWrapper.currentKeyText(QStringLiteral("Kind"), strText) || strText != strKind)
        return refuse(QStringLiteral("its kind is \"%1\", not \"%2\".").arg(strText.left(40), strKind));
    strText.clear();
    if (!objWrapper.currentKeyText(QStringLiteral("Count"), strText) || !OrmNumberText::toInt(strText, sHeader.m_nCount) ||
        sHeader.m_nCount < 0)
        return refuse(QStringLiteral("the count \"%1\" is no number of voxels.").arg(strText.left(40)));
    strText.clear();
    double fVoxelSize = 0.0;
    if (!objWrapper.currentKeyText(QStringLiteral("VoxelSize"), strText) || !OrmNumberText::toDouble(strText, fVoxelSize))
        return refuse(QStringLiteral("the voxel size \"%1\" is no number.").arg(strText.left(40)));
    if (fVoxelSize <= static_cast<double>(std::numeric_limits<float>::max()))
        sHeader.m_fVoxelSize = static_cast<float>(fVoxelSize);
    if (!(sHeader.m_fVoxelSize > 0.0f))
        return refuse(QStringLiteral("the voxel size %1 is not above 0 or too large.").arg(strText.left(40)));
    return true;
}

/// Whether the voxels, given as x, y, z, value each, lie on a grid that can be refined.
bool checkVoxels(const std::vector<float>& vecNumbers, const SHeader& sHeader)
{
    for (std::size_t i = 0; i < vecNumbers.size(); ++i)
    {
        if (!std::isfinite(vecNumbers[i]))
            return refuse(QStringLiteral("voxel %1 has a number that is not finite.").arg(i / 4));
    }
    CVoxelLattice objLattice;
    QString strReason;
    if (!objLattice.fit(vecNumbers.data(), sHeader.m_nCount, 4, static_cast<double>(sHeader.m_fVoxelSize), &strReason))
        return refuse(strReason);
    if (sHeader.m_nCount > 0 && objLattice.refinedCellCount(nRefinementMargin, CVoxelLattice::subdivision(sHeader.m_fVoxelSize)) < 0)
        return refuse(QStringLiteral("its box of %1 x %2 x %3 cells would have more than %4 cells when refined.")
                          .arg(objLattice.cells(0))
                          .arg(objLattice.cells(1))
                          .arg(objLattice.cells(2))
                          .arg(CVoxelLattice::nMaxCells));
    return true;
}
} // namespace

bool C3DVolume::loadFromXML(CPLResultXMLWrapper* pWrapper, const QString& strKind)
{
    if (!pWrapper)
        return false;
    try
    {
        SHeader sHeader;
        std::vector<float> vecNumbers;
        if (!readHeader(*pWrapper, strKind, sHeader))
            return false;
        const QStringList lstKeys{QStringLiteral("X"), QStringLiteral("Y"), QStringLiteral("Z"), QStringLiteral("Value")};
        if (!(sHeader.m_bText ? pWrapper->readCurrentNumbers(strVoxel, lstKeys, sHeader.m_nCount, vecNumbers)
                              : pWrapper->readCurrentHexFloats(strVoxelValues, 0, 4 * static_cast<qint64>(sHeader.m_nCount), vecNumbers)))
            return false;
        COrmProcess::keepAlive();
        if (!checkVoxels(vecNumbers, sHeader))
            return false;
        const auto nVoxels = static_cast<std::size_t>(sHeader.m_nCount);

        SVoxelArrays sVoxels;
        sVoxels.m_vecPositions.resize(3 * nVoxels);
        sVoxels.m_vecValues.resize(nVoxels);
        for (std::size_t i = 0; i < nVoxels; ++i)
        {
            std::copy_n(vecNumbers.data() + 4 * i, 3, sVoxels.m_vecPositions.data() + 3 * i);
            sVoxels.m_vecValues[i] = vecNumbers[4 * i + 3];
        }
        const auto pairEnds = std::minmax_element(sVoxels.m_vecValues.cbegin(), sVoxels.m_vecValues.cend());
        const float fMin = nVoxels > 0 ? *pairEnds.first : 0.0f;
        const float fMax = nVoxels > 0 ? *pairEnds.second : 0.0f;
        return takeVoxels(sHeader.m_fVoxelSize, std::move(sVoxels), fMin, fMax);
    }
    catch (const std::bad_alloc&)
    {
        return refuse(QStringLiteral("there is not enough memory for it."));
    }
}
