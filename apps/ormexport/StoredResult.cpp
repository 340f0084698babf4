#include "StoredResult.h"

#include "AnalysisResultXMLWrapper.h"
#include "COrmLog.h"
#include "CPLSettingsFileWrapper.h"
#include "CVoxelLattice.h"
#include "OrmCsv.h"
#include "OrmSequenceScanner.h"
#include "ResultDocumentWalk.h"
#include "ResultUnits.h"
#include "SAnalysisBase.h"
#include "TextLines.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{
/// The calibration of a document; empty texts where it has none.
void readCalibration(CPLResultXMLWrapper& document, CWPQuantData& calibration)
{
    if (document.openSection(QStringLiteral("Orm3.0.WellPlate.Data"), QStringLiteral("Orm3.0.WellPlate.Quantification")))
    {
        document.currentKeyText(QStringLiteral("MeasurementType"), calibration.strMeasurementType);
        document.currentKeyText(QStringLiteral("PerUnitValue"), calibration.strPerUnitValue);
    }
}

/// Lets the tool's walk over a document work without a window. Any unit will do: the one of the document is selected.
class CReadingHost : public ResultDocument::CWalkHost
{
public:
    explicit CReadingHost(const QString& strUnit) : m_strUnit(strUnit) {}

    void log(const QString& strMessage, long nLevel) override { note(strMessage, nLevel); }
    void hint(const QString& strMessage) override { note(strMessage, 1); }
    void progress(const QString& /*strMessage*/, int /*nStep*/) override {}
    QString analysisName() const override { return QString(); }
    QString selectedUnit() const override { return m_strUnit; }
    void namesRead(const QStringList& /*lstNames*/) override {}
    void readQuantification(AnalysisResultXMLWrapper& document, SAnalysisBase& record) override
    {
        readCalibration(document, record.objQuantData);
    }
    void readSoftwareVersion(AnalysisResultXMLWrapper& /*document*/, QString& /*strVersion*/) override {}
    bool readMesh(AnalysisResultXMLWrapper& document, SAnalysisBase& record) override { return record.objMesh.loadFromXML(&document); }
    bool readVolume(AnalysisResultXMLWrapper& document, SAnalysisBase& record, QString& strKind) override
    {
        return record.objVolume.loadFromXML(&document, strKind);
    }
    void readMask(AnalysisResultXMLWrapper& /*document*/, SAnalysisBase& /*record*/) override {}
    void waitForSavePrompt() override {}

    QString m_strReason; ///< the last message that is no progress

private:
    void note(const QString& strMessage, long nLevel)
    {
        if (nLevel > 1 || strMessage.startsWith(QLatin1String("Unable")) || strMessage.startsWith(QLatin1String("Data mismatch")))
        {
            m_strReason = strMessage;
        }
    }

    QString m_strUnit;
};

/// Keeps what the host's libraries say of a failure while it lives.
class CFailureNote
{
public:
    CFailureNote()
        : m_nSink(getLogObject()->addSink(
              [this](const SLogEntry& entry)
              {
                  if (entry.nLevel > 2)
                  {
                      m_strReason = entry.strMessage;
                  }
              }))
    {
    }
    ~CFailureNote() { getLogObject()->removeSink(m_nSink); }
    CFailureNote(const CFailureNote&) = delete;
    CFailureNote& operator=(const CFailureNote&) = delete;

    QString m_strReason;

private:
    int m_nSink;
};

/// The coordinates of voxels along an axis as steps of a grid.
class CGridSteps
{
public:
    CGridSteps(const QVector<C3DVolume::Voxel>& vecVoxels, float C3DVolume::Voxel::*pPlace, double fOrigin, double fPitch)
        : m_vecVoxels(vecVoxels), m_pPlace(pPlace), m_fOrigin(fOrigin), m_fPitch(fPitch)
    {
    }

    /// The origin from which the steps give the very coordinates, rounded to single precision: a lattice knows it only as well as one of
    /// them. Of several the shortest decimal, which is most likely the one that was meant; where there is none, that of the lattice.
    double origin() const
    {
        double fLowest = -std::numeric_limits<double>::infinity();
        double fHighest = -fLowest;
        const float fInfinity = std::numeric_limits<float>::infinity();
        for (const C3DVolume::Voxel& voxel : m_vecVoxels)
        {
            const float fPlace = voxel.*m_pPlace;
            const auto fExact = static_cast<double>(fPlace);
            fLowest = std::max(fLowest, (fExact + static_cast<double>(std::nextafter(fPlace, -fInfinity))) / 2.0 - offset(fExact));
            fHighest = std::min(fHighest, (fExact + static_cast<double>(std::nextafter(fPlace, fInfinity))) / 2.0 - offset(fExact));
        }
        const double fMiddle = (fLowest + fHighest) / 2.0;
        double fScale = 1.0;
        for (int nDigits = 0; nDigits < 12; ++nDigits, fScale *= 10.0)
        {
            const double fRounded = std::round(fMiddle * fScale) / fScale;
            if (fRounded >= fLowest && fRounded <= fHighest && isRightWith(fRounded))
            {
                return fRounded;
            }
        }
        return isRightWith(fMiddle) ? fMiddle : m_fOrigin;
    }

private:
    double offset(double fPlace) const { return std::round((fPlace - m_fOrigin) / m_fPitch) * m_fPitch; }
    bool isRightWith(double fOrigin) const
    {
        return std::all_of(m_vecVoxels.begin(), m_vecVoxels.end(),
                           [&](const C3DVolume::Voxel& voxel)
                           { return static_cast<float>(fOrigin + offset(static_cast<double>(voxel.*m_pPlace))) == voxel.*m_pPlace; });
    }

    const QVector<C3DVolume::Voxel>& m_vecVoxels;
    float C3DVolume::Voxel::*m_pPlace;
    double m_fOrigin; ///< about that of the grid
    double m_fPitch;
};

QString placeText(float fPlace)
{
    return QString::fromLatin1(OpenText::number(fPlace));
}

void takeVolume(const C3DVolume& volume, SStoredResult& result)
{
    result.m_baVoxels = OrmCsv::line({QStringLiteral("x (mm)"), QStringLiteral("y (mm)"), QStringLiteral("z (mm)"), result.m_strUnit});
    CVoxelLattice lattice;
    if (volume.getNoOfVoxels() < 1 || !lattice.fit(volume, nullptr))
    {
        return;
    }
    SCubicGrid& grid = result.m_grid;
    grid.m_strName = result.m_strUnit;
    grid.m_bSingle = result.m_fDivisor == 1.0;
    grid.m_fPitch = OpenText::decimalOf(volume.getVoxelSize());
    for (std::size_t nAxis = 0; nAxis < 3; ++nAxis)
    {
        constexpr std::array<float C3DVolume::Voxel::*, 3> kPlaces = {&C3DVolume::Voxel::x, &C3DVolume::Voxel::y, &C3DVolume::Voxel::z};
        grid.m_anSize[nAxis] = lattice.cells(static_cast<int>(nAxis));
        grid.m_afOrigin[nAxis] =
            CGridSteps(volume.voxels(), kPlaces[nAxis], lattice.origin(static_cast<int>(nAxis)), grid.m_fPitch).origin();
    }
    grid.m_vecValues.assign(static_cast<std::size_t>(lattice.cellCount()), 0.0);
    for (const C3DVolume::Voxel& voxel : volume.voxels())
    {
        const double fValue = static_cast<double>(voxel.fValue) / result.m_fDivisor;
        grid.m_vecValues[lattice.cellOf(voxel.x, voxel.y, voxel.z)] = fValue;
        result.m_baVoxels +=
            OrmCsv::line({placeText(voxel.x), placeText(voxel.y), placeText(voxel.z),
                          QString::fromLatin1(grid.m_bSingle ? OpenText::number(voxel.fValue) : OpenText::number(fValue))});
    }
}

QString readRecord(const SResultPlace& place, SAnalysisBase& record, int& nNames, QStringList& lstNames)
{
    const bool bNova = place.m_strKind == QLatin1String("NOVA");
    const CFailureNote note;
    CWPQuantData calibration;
    {
        CPLResultXMLWrapper document;
        if (!document.loadXMLFile(place.m_strFile))
        {
            return note.m_strReason;
        }
        readCalibration(document, calibration);
    }
    CReadingHost host(ResultUnits::unitOfCalibration(bNova ? 1 : 0, calibration.strMeasurementType));
    const ResultDocument::STarget target = {record, nNames, lstNames};
    if (!ResultDocument::read(bNova ? ResultDocument::nova() : ResultDocument::sola(), host, place.m_strFile, target))
    {
        const QString strReason = note.m_strReason.isEmpty() ? host.m_strReason : note.m_strReason;
        return strReason.startsWith(place.m_strFile) ? strReason : QStringLiteral("%1: %2").arg(place.m_strFile, strReason);
    }
    return {};
}
} // namespace

std::vector<SResultPlace> StoredResults::list(const QStringList& lstFolders, QStringList& lstProblems)
{
    std::vector<SResultPlace> vecPlaces;
    const SScanOutcome outcome = OrmSequenceScanner::scan(
        lstFolders,
        [&](const SSequenceFacts& sequence)
        {
            for (const QString& strKind : {QStringLiteral("SOLA"), QStringLiteral("NOVA")})
            {
                const QString strXml = sequence.m_strInfoPath + QLatin1String("XML/");
                CPLSettingsFileWrapper index;
                index.setAutoMenuNameTag(strKind + QLatin1Char('_'));
                index.setMenuNameTag(QStringLiteral("MenuName"));
                index.setFileNameTag(QStringLiteral("FileName"));
                if ((strKind == QLatin1String("SOLA") ? sequence.m_nSOLAResults : sequence.m_nNOVAResults) < 1 ||
                    index.load(strXml + strKind + QLatin1String(".txt")) != 0)
                {
                    continue;
                }
                for (const QString& strName : index.getMenuNames(strKind))
                {
                    const QString strFile = index.getFileNameForMenuName(strName, QStringLiteral("-"));
                    vecPlaces.push_back({strKind, sequence.m_strSequenceID, strName, strFile.isEmpty() ? strFile : strXml + strFile,
                                         sequence.m_strSubject, sequence.m_strDateTime});
                }
            }
        });
    lstProblems += outcome.m_lstProblems;
    return vecPlaces;
}

QString StoredResults::read(const SResultPlace& place, bool bAsStored, SStoredResult& result)
{
    result = SStoredResult();
    if (place.m_strFile.isEmpty())
    {
        return QStringLiteral("%1: the index names no file of its sequence").arg(place.text());
    }
    SAnalysisBase record;
    QStringList lstNames;
    int nNames = 0;
    const QString strProblem = readRecord(place, record, nNames, lstNames);
    if (!strProblem.isEmpty())
    {
        return strProblem;
    }
    const int nKind = place.m_strKind == QLatin1String("NOVA") ? 1 : 0;
    const CWPQuantData& calibration = record.objQuantData;
    const double fDivisor = ResultUnits::divisor(nKind, calibration.strMeasurementType, calibration.strPerUnitValue);
    result.m_strUnit = bAsStored ? QStringLiteral("stored amount") : ResultUnits::shownUnit(nKind, calibration.strMeasurementType);
    result.m_fDivisor = !bAsStored && fDivisor > 0.0 ? fDivisor : 1.0; // as the tool does where a calibration has no usable number
    result.m_surface.m_vecVertices = record.objMesh.vertices();
    result.m_surface.m_vecTriangles = record.objMesh.triangles();
    for (std::size_t n = 0; n < record.vecMeasuredPhotonDensity.size() && static_cast<int>(n) < lstNames.size(); ++n)
    {
        std::vector<float>& vecRow = record.vecMeasuredPhotonDensity[n];
        if (vecRow.size() == result.m_surface.m_vecVertices.size() / 3)
        {
            result.m_surface.m_vecMaps.push_back({lstNames.at(static_cast<int>(n)).trimmed(), std::move(vecRow)});
        }
    }
    result.m_lstRemarks = QStringList{QStringLiteral("%1, by Ormelle").arg(place.text()),
                                      QStringLiteral("subject %1, %2").arg(place.m_strSubject, place.m_strDateTime),
                                      QStringLiteral("lengths in mm, amounts per voxel in %1").arg(result.m_strUnit)};
    takeVolume(record.objVolume, result);
    return {};
}
