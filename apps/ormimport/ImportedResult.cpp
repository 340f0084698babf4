#include "ImportedResult.h"

#include "CVoxelLattice.h"
#include "OrmDocumentLimits.h"
#include "ResultUnitNames.h"
#include "TextLines.h"

#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{
constexpr qint64 kMarginBytes = 4194304; ///< of a document beside its numbers

/// How the maps are called when the surface has none.
const QString& noMap()
{
    static const QString strName = QStringLiteral("none");
    return strName;
}

int indexOfMap(const SOpenSurface& surface, const QString& strName)
{
    for (std::size_t n = 0; n < surface.m_vecMaps.size(); ++n)
    {
        if (surface.m_vecMaps[n].m_strName == strName)
        {
            return static_cast<int>(n);
        }
    }
    return -1;
}

QString namesOf(const SOpenSurface& surface)
{
    QStringList lstNames;
    for (const SOpenMap& map : surface.m_vecMaps)
    {
        lstNames.append(map.m_strName);
    }
    return lstNames.isEmpty() ? QStringLiteral("it has none") : QStringLiteral("it has %1").arg(lstNames.join(QStringLiteral(", ")));
}

/// A surface without maps gets one per name, without values.
void addEmptyMaps(const QStringList& lstNames, SOpenSurface& surface)
{
    for (const QString& strName : lstNames)
    {
        surface.m_vecMaps.push_back(
            {strName, std::vector<float>(surface.m_vecVertices.size() / 3, std::numeric_limits<float>::quiet_NaN())});
    }
    surface.m_lstNotes.append(QStringLiteral("The surface has no density map: it got \"%1\" without values.").arg(lstNames.join("\", \"")));
}

/// The map that an entry of --maps asks for, by its name or by what stands before the last '='.
bool findMap(const SOpenSurface& surface, const QString& strEntry, int& nMap, QString& strName)
{
    nMap = indexOfMap(surface, strEntry);
    strName = strEntry;
    if (nMap < 0 && strEntry.contains(QLatin1Char('=')))
    {
        nMap = indexOfMap(surface, strEntry.section(QLatin1Char('='), 0, -2).trimmed());
        strName = strEntry.section(QLatin1Char('='), -1).trimmed();
    }
    return nMap >= 0 && !strName.isEmpty();
}
} // namespace

QString ImportedResult::chooseMaps(const QStringList& lstWanted, SOpenSurface& surface)
{
    if (surface.m_vecMaps.empty())
    {
        addEmptyMaps(lstWanted.isEmpty() ? QStringList{noMap()} : lstWanted, surface);
    }
    else if (!lstWanted.isEmpty())
    {
        int nMap = -1;
        QString strName;
        const bool bAnyProperty = std::any_of(lstWanted.begin(), lstWanted.end(),
                                              [&](const QString& strEntry) { return findMap(surface, strEntry, nMap, strName); });
        std::vector<SOpenMap> vecMaps;
        for (int n = 0; n < lstWanted.size(); ++n)
        {
            if (!bAnyProperty)
            {
                nMap = static_cast<std::size_t>(lstWanted.size()) == surface.m_vecMaps.size() ? n : -1;
                strName = lstWanted.at(n);
            }
            if (bAnyProperty ? !findMap(surface, lstWanted.at(n), nMap, strName) : nMap < 0)
            {
                return QStringLiteral("vertices: there is no density map \"%1\": %2").arg(lstWanted.at(n), namesOf(surface));
            }
            vecMaps.push_back({strName, surface.m_vecMaps[static_cast<std::size_t>(nMap)].m_vecValues});
        }
        surface.m_vecMaps.swap(vecMaps);
    }
    QSet<QString> setNames;
    for (SOpenMap& map : surface.m_vecMaps)
    {
        map.m_strName = map.m_strName.trimmed();
        const bool bPrintable = std::all_of(map.m_strName.begin(), map.m_strName.end(), [](QChar c) { return c.isPrint(); });
        if (map.m_strName.isEmpty() || !bPrintable || setNames.contains(map.m_strName))
        {
            return QStringLiteral("vertices: the name \"%1\" of a density map %2")
                .arg(OpenText::shown(map.m_strName.toStdString()),
                     setNames.contains(map.m_strName) ? QLatin1String("occurs twice") : QLatin1String("cannot be shown"));
        }
        setNames.insert(map.m_strName);
    }
    return {};
}

QString ImportedResult::fill(const SImportOptions& options, const SOpenSurface& surface, const SCubicVoxels& voxels, SSavedResult& result)
{
    result.m_bNova = options.m_bNova;
    result.m_strEmissionFilter = options.m_strEmission;
    result.m_strExcitationFilter = options.m_strExcitation;
    result.m_vecVertices = surface.m_vecVertices;
    for (float& fPlace : result.m_vecVertices)
    {
        fPlace = static_cast<float>(static_cast<double>(fPlace) * options.m_fSurfaceUnit);
        if (!std::isfinite(fPlace))
        {
            return QStringLiteral("%1: vertices: a coordinate is too large in millimetres").arg(options.m_strSurface);
        }
    }
    result.m_vecTriangles = surface.m_vecTriangles;
    const std::vector<float> vecUnknown(result.m_vecVertices.size() / 3, std::numeric_limits<float>::quiet_NaN());
    for (const SOpenMap& map : surface.m_vecMaps)
    {
        result.m_lstChannels.append(map.m_strName);
        result.m_vecMeasured.push_back(map.m_vecValues);
        result.m_vecSimulated.push_back(vecUnknown); // a document must have these maps; what a model would give is not known
    }
    double fTotal = 0.0;
    const double fFactor = options.m_bAsStored ? 1.0 : options.m_fDivisor;
    for (const SCubicVoxels::SVoxel& voxel : voxels.m_vecVoxels)
    {
        const auto fAmount = static_cast<float>(voxel.m_fAmount * fFactor);
        if (!std::isfinite(fAmount))
        {
            return QStringLiteral("%1: voxels: the amount %2 is too large for a result").arg(options.m_strVolume).arg(voxel.m_fAmount);
        }
        if (fAmount > 0.0F)
        {
            result.m_vecVoxels.push_back({voxel.m_afPlace[0], voxel.m_afPlace[1], voxel.m_afPlace[2], fAmount});
            fTotal += static_cast<double>(fAmount);
        }
    }
    result.m_strVoxelSize = QString::fromLatin1(OpenText::number(voxels.m_fPitch));
    const QString strType = ResultUnitNames::measurementType(options.m_strUnit);
    if (!strType.isEmpty())
    {
        result.m_objCalibration = {QStringLiteral("Imported"), options.m_date.toString(Qt::ISODate), strType, QString(), QString(),
                                   options.m_strUnitValue};
    }
    result.m_lstTable = {{result.m_bNova ? "Total fluorescence yield" : "Total source flux (photons/s)", QString::number(fTotal, 'g', 9)},
                         {"Final voxel size (mm)", result.m_strVoxelSize},
                         {"Number of sources", QString::number(static_cast<qulonglong>(result.m_vecVoxels.size()))},
                         {"Imported surface", QFileInfo(options.m_strSurface).fileName()},
                         {"Imported volume", QFileInfo(options.m_strVolume).fileName() +
                                                 (voxels.m_bResampled ? QLatin1String(", resampled") : QLatin1String())}};
    CVoxelLattice lattice;
    QString strReason;
    const float* pFirst = result.m_vecVoxels.empty() ? nullptr : &result.m_vecVoxels.front().m_fX;
    if (!lattice.fit(pFirst, static_cast<qint64>(result.m_vecVoxels.size()), 4, static_cast<double>(static_cast<float>(voxels.m_fPitch)),
                     &strReason))
    {
        return QStringLiteral("%1: voxels: they lie too far from 0, 0, 0 for their size (%2)")
            .arg(options.m_strVolume, strReason.endsWith(QLatin1Char('.')) ? strReason.chopped(1) : strReason);
    }
    return SavedResultDocument::numberBytes(result) <= OrmDocumentLimits::nFileBytes - kMarginBytes
               ? QString()
               : QStringLiteral("%1 and %2: together they are larger than a result can be").arg(options.m_strSurface, options.m_strVolume);
}

QString ImportedResult::misplaced(const SSavedResult& result)
{
    if (result.m_vecVoxels.empty())
    {
        return {};
    }
    for (std::size_t nAxis = 0; nAxis < 3; ++nAxis)
    {
        float fLowest = std::numeric_limits<float>::infinity();
        float fHighest = -fLowest;
        for (std::size_t n = nAxis; n < result.m_vecVertices.size(); n += 3)
        {
            fLowest = std::min(fLowest, result.m_vecVertices[n]);
            fHighest = std::max(fHighest, result.m_vecVertices[n]);
        }
        const auto isBeside = [&](const SSavedVoxel& voxel)
        {
            const float fPlace = (&voxel.m_fX)[nAxis];
            return fPlace < fLowest || fPlace > fHighest;
        };
        if (std::all_of(result.m_vecVoxels.begin(), result.m_vecVoxels.end(), isBeside))
        {
            return QStringLiteral("All of the source lies beside the surface along %1: do both files use the same coordinates and units?")
                .arg(QLatin1Char("xyz"[nAxis]));
        }
    }
    return {};
}
