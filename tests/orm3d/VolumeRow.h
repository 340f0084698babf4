#pragma once

#include "C3DVolume.h"

#include <QtTest>

#include <algorithm>
#include <vector>

/// A volume in one row along x with these values and numbers from nFirst on.
inline C3DVolume volumeRow(const std::vector<float>& vecValues, long nFirst = 1000)
{
    C3DVolume objVolume(QStringLiteral("Source"));
    QVector<C3DVolume::Voxel> vecVoxels;
    for (std::size_t i = 0; i < vecValues.size(); ++i)
        vecVoxels.append({static_cast<float>(i), 0.0f, 0.0f, nFirst + static_cast<long>(i), vecValues[i]});
    const auto pairEnds = std::minmax_element(vecValues.begin(), vecValues.end());
    if (!objVolume.loadVoxelData(1.0f, vecValues.size(), vecVoxels.data(), *pairEnds.first, *pairEnds.second))
        QTest::qFail("the test's own volume does not load", __FILE__, __LINE__);
    return objVolume;
}
