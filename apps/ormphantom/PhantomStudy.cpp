#include "PhantomStudy.h"

#include "PhantomOptics.h"
#include "PhantomPhotograph.h"
#include "SavedResult.h"
#include "SequenceFiles.h"

#include <QDate>
#include <QDir>
#include <QSaveFile>

#include <algorithm>
#include <cmath>
#include <map>
#include <random>
#include <tuple>

namespace
{
/// A source that grows: a ball of normally distributed density.
struct SGrowingSource
{
    double m_fX, m_fY, m_fZ; ///< centre, mm
    double m_fFirstAmount;   ///< on day 0, in the kind's unit
    double m_fDoublingDays;  ///< days in which the amount doubles
};

/// Evenly distributed numbers from 0 to 1 that are the same on every machine.
class CEvenNumbers
{
public:
    explicit CEvenNumbers(std::uint32_t nSeed) : m_objEngine(nSeed) {}
    double next() { return m_objEngine() / 4294967296.0; }
    double around(double fCentre, double fHalfWidth) { return fCentre + fHalfWidth * (2.0 * next() - 1.0); }

private:
    std::mt19937 m_objEngine;
};

int dayOf(int nTimePoint)
{
    return 7 * (nTimePoint / 2) + 3 * (nTimePoint % 2);
}

std::vector<SGrowingSource> sources(unsigned int nSeed, bool bNova)
{
    CEvenNumbers numbers(nSeed);
    const double fUnit = bNova ? 1.0e-12 : 1.0;
    return {{numbers.around(3.5, 1.0), numbers.around(4.0, 2.0), numbers.around(-1.0, 1.0), 2.4e7 * fUnit, 4.5},
            {numbers.around(-4.5, 1.0), numbers.around(-18.0, 2.0), numbers.around(2.0, 1.0), 0.9e7 * fUnit, 6.0}};
}

/// The source density on the grid of pitch @p fPitch, as amounts per voxel. Each source's whole amount lies on its voxels.
std::vector<SSavedVoxel> voxels(const std::vector<SGrowingSource>& vecSources, int nDay, double fPitch)
{
    std::map<std::tuple<long, long, long>, double> mapAmounts; // z, y, x: the order of the file
    for (const SGrowingSource& source : vecSources)
    {
        const double fAmount = source.m_fFirstAmount * std::exp2(nDay / source.m_fDoublingDays);
        const double fSpread = 0.9 * std::cbrt(1.0 + 3.0 * nDay / 14.0);
        const double fReach = 2.5 * fSpread;
        const auto first = [fPitch, fReach](double fCentre) { return std::lround(std::floor((fCentre - fReach) / fPitch)); };
        const auto last = [fPitch, fReach](double fCentre) { return std::lround(std::ceil((fCentre + fReach) / fPitch)); };
        std::map<std::tuple<long, long, long>, double> mapWeights;
        double fSum = 0.0;
        for (long nZ = first(source.m_fZ); nZ <= last(source.m_fZ); ++nZ)
        {
            for (long nY = first(source.m_fY); nY <= last(source.m_fY); ++nY)
            {
                for (long nX = first(source.m_fX); nX <= last(source.m_fX); ++nX)
                {
                    const double fDistance = std::hypot(nX * fPitch - source.m_fX, nY * fPitch - source.m_fY, nZ * fPitch - source.m_fZ);
                    if (fDistance <= fReach && CPhantomBody::contains(nX * fPitch, nY * fPitch, nZ * fPitch, 0.5 * fPitch))
                    {
                        const double fWeight = std::exp(-0.5 * fDistance * fDistance / (fSpread * fSpread));
                        mapWeights[{nZ, nY, nX}] = fWeight;
                        fSum += fWeight;
                    }
                }
            }
        }
        for (const auto& [cell, fWeight] : mapWeights)
        {
            mapAmounts[cell] += fAmount * fWeight / fSum;
        }
    }
    std::vector<SSavedVoxel> vecVoxels;
    vecVoxels.reserve(mapAmounts.size());
    for (const auto& [cell, fAmount] : mapAmounts)
    {
        const auto place = [fPitch](long nIndex) { return static_cast<float>(nIndex * fPitch); };
        vecVoxels.push_back({place(std::get<2>(cell)), place(std::get<1>(cell)), place(std::get<0>(cell)), static_cast<float>(fAmount)});
    }
    return vecVoxels;
}

/// The voxels as point sources, neighbours joined in cells of at least 2 mm: seen from the skin that is the same light.
std::vector<SPointSource> pointSources(const std::vector<SSavedVoxel>& vecVoxels)
{
    constexpr double kCell = 2.0;
    std::map<std::tuple<long, long, long>, SPointSource> mapCells;
    for (const SSavedVoxel& voxel : vecVoxels)
    {
        const auto cell = [](float fPlace) { return std::lround(fPlace / kCell); };
        SPointSource& sum = mapCells[{cell(voxel.m_fZ), cell(voxel.m_fY), cell(voxel.m_fX)}];
        const double fPower = static_cast<double>(voxel.m_fValue);
        sum.m_fX += fPower * voxel.m_fX;
        sum.m_fY += fPower * voxel.m_fY;
        sum.m_fZ += fPower * voxel.m_fZ;
        sum.m_fPower += fPower;
    }
    std::vector<SPointSource> vecPoints;
    for (const auto& [cell, sum] : mapCells)
    {
        if (sum.m_fPower > 0.0)
        {
            vecPoints.push_back({sum.m_fX / sum.m_fPower, sum.m_fY / sum.m_fPower, sum.m_fZ / sum.m_fPower, sum.m_fPower});
        }
    }
    return vecPoints;
}

double total(const std::vector<SSavedVoxel>& vecVoxels)
{
    double fSum = 0.0;
    for (const SSavedVoxel& voxel : vecVoxels)
    {
        fSum += static_cast<double>(voxel.m_fValue);
    }
    return fSum;
}

bool save(const QString& strPath, const QByteArray& aBytes, QString& strError)
{
    QSaveFile file(strPath);
    if (file.open(QIODevice::WriteOnly) && file.write(aBytes) == aBytes.size() && file.commit())
    {
        return true;
    }
    strError = QStringLiteral("%1 cannot be written: %2").arg(strPath, file.errorString());
    return false;
}

bool makeFolder(const QString& strPath, QString& strError)
{
    if (QDir().mkpath(strPath))
    {
        return true;
    }
    strError = QStringLiteral("The folder %1 cannot be made.").arg(strPath);
    return false;
}

void takeMesh(const CPhantomBody::SMesh& mesh, SSavedResult& result)
{
    for (const CPhantomBody::Point& point : mesh.m_vecVertices)
    {
        result.m_vecVertices.insert(result.m_vecVertices.end(), point.begin(), point.end());
    }
    for (const auto& corners : mesh.m_vecTriangles)
    {
        result.m_vecTriangles.insert(result.m_vecTriangles.end(), corners.begin(), corners.end());
    }
}

/// Surface height above z = 0 on a coarse grid, 0 beside the body.
void fillHeightMap(SSavedResult& result)
{
    result.m_nHeightMapWidth = 16;
    result.m_nHeightMapHeight = 32;
    for (int nRow = 0; nRow < result.m_nHeightMapHeight; ++nRow)
    {
        for (int nColumn = 0; nColumn < result.m_nHeightMapWidth; ++nColumn)
        {
            const double fX = 2.5 * (nColumn - 7.5);
            const double fY = 2.5 * (15.5 - nRow);
            double fHeight = 0.0;
            while (fHeight < 20.0 && CPhantomBody::contains(fX, fY, fHeight))
            {
                fHeight += 0.25;
            }
            result.m_vecHeightMap.push_back(static_cast<float>(fHeight));
        }
    }
}
} // namespace

CPhantomStudy::CPhantomStudy(const SPhantomOptions& options) : m_options(options) {}

bool CPhantomStudy::write(QString& strError) const
{
    for (int nTimePoint = 0; nTimePoint < m_options.m_nTimePoints; ++nTimePoint)
    {
        if ((m_options.m_bSola && !writeSequence(nTimePoint, false, strError)) ||
            (m_options.m_bNova && !writeSequence(nTimePoint, true, strError)))
        {
            return false;
        }
    }
    return true;
}

bool CPhantomStudy::writeSequence(int nTimePoint, bool bNova, QString& strError) const
{
    const int nDay = dayOf(nTimePoint);
    const QDate date = QDate(2026, 3, 2).addDays(nDay);
    const QString strID = QStringLiteral("PM%1_%2").arg(date.toString(QStringLiteral("yyyyMMdd")), bNova ? "F" : "L");
    const QString strFolder = QDir(m_options.m_strFolder).filePath(strID);
    const QStringList lstWavelengths = {"560", "580", "600", "620", "640"};

    SSavedResult result;
    result.m_bNova = bNova;
    result.m_bRegistration = true;
    result.m_strSequenceID = strID;
    result.m_strVoxelSize = QString::number(m_options.m_fVoxelSize);
    result.m_strEmissionFilter = QStringLiteral("720");
    result.m_strExcitationFilter = QStringLiteral("675");
    result.m_strSourceDatabase = QStringLiteral("Red dye");
    result.m_strTissueDatabase = QStringLiteral("Mouse tissue");
    const CPhantomBody::SMesh mesh = CPhantomBody::mesh(m_options.m_nVertices);
    takeMesh(mesh, result);
    result.m_vecVoxels = voxels(sources(m_options.m_nSeed, bNova), nDay, m_options.m_fVoxelSize);
    fillHeightMap(result);

    CEvenNumbers noise(m_options.m_nSeed + 1000U * static_cast<unsigned int>(nTimePoint) + (bNova ? 1U : 0U));
    const std::vector<SPointSource> vecPoints = pointSources(result.m_vecVoxels);
    const QByteArray aPhotograph = PhantomPhotograph::png();
    const int nChannels = bNova ? 4 : lstWavelengths.size();
    for (int nChannel = 0; nChannel < nChannels; ++nChannel)
    {
        const QString strNumber = SequenceFiles::clickNumber(strID, nChannel + 1);
        const QString strWavelength = bNova ? result.m_strEmissionFilter : lstWavelengths.at(nChannel);
        result.m_lstChannels.append(bNova ? QStringLiteral("Image %1").arg(nChannel + 1) : strWavelength);
        result.m_lstClickNumbers.append(strNumber);
        result.m_vecSimulated.push_back(
            PhantomOptics::photonDensity(mesh.m_vecVertices, vecPoints, PhantomOptics::tissue(strWavelength.toDouble())));
        result.m_vecMeasured.push_back(result.m_vecSimulated.back());
        for (float& fValue : result.m_vecMeasured.back())
        {
            fValue *= static_cast<float>(noise.around(1.0, 0.04));
        }

        SClickText click;
        click.m_bFluorescent = bNova;
        click.m_strEmission = strWavelength;
        click.m_strImageFile = QStringLiteral("photograph.png");
        click.m_strExposure = bNova ? QStringLiteral("2") : QStringLiteral("60");
        if (bNova)
        {
            click.m_strExcitation = result.m_strExcitationFilter;
            const int nRow = nChannel / 2;
            click.m_strSpotX = QString::number(6.4 + 0.4 * (nChannel % 2), 'f', 2);
            click.m_strSpotY = QString::number(6.4 + 0.8 * nRow, 'f', 2);
        }
        const QString strClickFolder = strFolder + '/' + strNumber;
        if (!makeFolder(strClickFolder, strError) || !save(strClickFolder + "/ClickInfo.txt", SequenceFiles::clickInfo(click), strError) ||
            !save(strClickFolder + "/photograph.png", aPhotograph, strError))
        {
            return false;
        }
    }

    const double fTotal = total(result.m_vecVoxels);
    const QString& strSize = result.m_strVoxelSize;
    result.m_lstTable = {{bNova ? "Total fluorescence yield" : "Total source flux (photons/s)", QString::number(fTotal, 'e', 4)},
                         {"Final voxel size (mm)", strSize},
                         {bNova ? "Starting vsize" : "Starting vsize (best)", QString::number(4.0 * m_options.m_fVoxelSize)},
                         {"Reduced Chi2", QString::number(noise.around(1.0, 0.05), 'f', 4)},
                         {"Number of sources", QString::number(static_cast<qulonglong>(result.m_vecVoxels.size()))}};

    const QString strKind = bNova ? QStringLiteral("NOVA") : QStringLiteral("SOLA");
    const QString strXml = strFolder + "/XML/";
    if (!makeFolder(strXml, strError))
    {
        return false;
    }
    QByteArray aIndex;
    const auto saveResult = [&](int nNumber, const QString& strName)
    {
        const QString strEntry = QStringLiteral("%1_%2").arg(strKind).arg(nNumber);
        aIndex += SequenceFiles::indexEntry(strEntry, strName);
        return save(strXml + strEntry + ".xml", SavedResultDocument::text(result, m_options.m_strFormat), strError);
    };
    const QString strName = QStringLiteral("Day %1, %2 mm").arg(nDay).arg(strSize);
    if (!saveResult(1, strName))
    {
        return false;
    }
    result.m_objCalibration = {QStringLiteral("Phantom plate"),
                               QStringLiteral("2026-01-05"),
                               QStringLiteral("Cells"),
                               bNova ? QStringLiteral("Red dye") : QStringLiteral("Luciferase"),
                               QStringLiteral("96"),
                               bNova ? QStringLiteral("4.55e-11") : QStringLiteral("45.5")};
    if (!saveResult(2, strName + ", cells"))
    {
        return false;
    }
    const QByteArray aSequence = SequenceFiles::sequenceInfo(
        strID, QStringLiteral("Phantom mouse"), date.toString(Qt::ISODate) + QLatin1String("T09:30:00"), result.m_lstClickNumbers);
    // The sequence file comes last: a study that could not be written whole has no sequence without its results.
    return save(strXml + strKind + ".txt", aIndex, strError) && save(strFolder + "/SequenceInfo.txt", aSequence, strError);
}
