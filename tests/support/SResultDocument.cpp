#include "SResultDocument.h"

#include "OrmHexText.h"
#include "TestWidgets.h"

#include <array>
#include <cmath>
#include <map>

namespace
{

using Attributes = QList<QPair<QByteArray, QByteArray>>;

QByteArray number(double dValue)
{
    return QByteArray::number(dValue, 'g', 9);
}

QByteArray attributes(const Attributes& lstAttributes)
{
    QByteArray byText;
    for (const auto& pairAttribute : lstAttributes)
    {
        byText += ' ' + pairAttribute.first + "=\"" + QString::fromUtf8(pairAttribute.second).toHtmlEscaped().toUtf8() + '"';
    }
    return byText;
}

QByteArray leaf(const QByteArray& byTag, const Attributes& lstAttributes)
{
    return '<' + byTag + attributes(lstAttributes) + "/>\n";
}

QByteArray element(const QByteArray& byTag, const Attributes& lstAttributes, const QByteArray& byContent)
{
    return '<' + byTag + attributes(lstAttributes) + ">\n" + byContent + "</" + byTag + ">\n";
}

QByteArray hexChild(const QByteArray& byTag, const QByteArray& byHex)
{
    return '<' + byTag + "><Text.Data>" + byHex + "</Text.Data></" + byTag + ">\n";
}

QByteArray hexFloats(const std::vector<float>& vecValues)
{
    return OrmHexText::encodeFloats(vecValues.data(), static_cast<qint64>(vecValues.size()));
}

/// Builds the blocks of one document.
class CBuilder
{
public:
    explicit CBuilder(const SResultDocument& objDocument)
        : m_obj(objDocument), m_byPrefix(m_obj.nKind == 1 ? "Orm3.0.NOVA." : "Orm3.0.SOLA.")
    {
    }

    QByteArray text() const
    {
        QByteArray byText = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Ormelle.Result Version=\"" + m_obj.strVersion.toUtf8() + "\">\n";
        byText += software() + calibration() + surface() + volume() + mask() + data();
        return byText + "</Ormelle.Result>\n";
    }

private:
    /// A second tag, unless it is left out.
    QByteArray block(const QByteArray& byTag, const Attributes& lstAttributes, const QByteArray& byContent) const
    {
        return m_obj.setLeftOut.contains(byTag) ? QByteArray() : element(byTag, lstAttributes, byContent);
    }

    QByteArray data() const
    {
        QByteArray by =
            block(m_byPrefix + "SequenceID", {}, leaf(m_byPrefix + "SequenceID.Name", {{"SequenceID", m_obj.strSequenceID.toUtf8()}}));
        by += m_obj.nKind == 1 ? sources() : wavelengths();
        by += list("ClickNumber", "ClickNumber.Name", "ClickNumber", m_obj.lstClicks);
        if (m_obj.nKind == 1)
        {
            by += block(m_byPrefix + "Optical.Properties", {},
                        leaf(m_byPrefix + "Optical.Properties.Data", {{"Source.Database", "sources"}, {"Tissue.Database", "tissues"}}));
        }
        by += heightMap();
        by += density("Simulated", m_obj.vecSimulated) + density("Measured", m_obj.vecMeasured);
        by += registration() + results();
        return element(m_byPrefix + "Data", {}, by);
    }

    QByteArray list(const QByteArray& byBlock, const QByteArray& byEntry, const QByteArray& byKey, const QStringList& lstEntries) const
    {
        QByteArray by;
        for (const QString& strEntry : lstEntries)
        {
            by += leaf(m_byPrefix + byEntry, {{byKey, strEntry.toUtf8()}});
        }
        return block(m_byPrefix + byBlock, {{"Count", QByteArray::number(lstEntries.size())}}, by);
    }

    QByteArray wavelengths() const
    {
        QByteArray by;
        for (const QString& strName : m_obj.lstNames)
        {
            by += leaf(m_byPrefix + "Wavelength.Name", {{"Wavelength", strName.toUtf8()}});
        }
        Attributes lstCounts = {{"Count", QByteArray::number(m_obj.lstNames.size())}};
        if (m_obj.nViews >= 0)
        {
            lstCounts.append({"Views", QByteArray::number(m_obj.nViews)});
        }
        return block(m_byPrefix + "Wavelengths", lstCounts, by);
    }

    QByteArray sources() const
    {
        return list("Imagesource", "Imagesource.Name", "ImgSources", m_obj.lstNames) +
               list("EmmissionFilter", "EmmissionFilter.Name", "EMFilter", m_obj.lstEmission) +
               list("ExcitationFilter", "ExcitationFilter.Name", "EXFilter", m_obj.lstExcitation);
    }

    QByteArray heightMap() const
    {
        std::vector<float> vecPixels;
        const int nPixels = m_obj.nMapWidth * m_obj.nMapHeight;
        vecPixels.reserve(static_cast<size_t>(nPixels));
        for (int i = 0; i < nPixels; ++i)
        {
            vecPixels.push_back(static_cast<float>(i) * 0.5f);
        }
        return block(m_byPrefix + "HeightMap.Data",
                     {{"Width", QByteArray::number(m_obj.nMapWidth)}, {"Height", QByteArray::number(m_obj.nMapHeight)}},
                     hexChild(m_byPrefix + "HeightMap.Pixel", hexFloats(vecPixels)));
    }

    QByteArray density(const QByteArray& byWhich, const std::vector<std::vector<float>>& vecRows) const
    {
        const QByteArray byStem = m_byPrefix + byWhich + ".Photon.Density.";
        QByteArray by;
        for (const std::vector<float>& vecRow : vecRows)
        {
            if (!isOld())
            {
                by += hexChild(byStem + "Values", hexFloats(vecRow));
                continue;
            }
            for (const float fValue : vecRow)
            {
                by += leaf(byStem + "Value", {{"Photon.Density", number(static_cast<double>(fValue))}});
            }
        }
        const size_t nVertices = vecRows.empty() ? 0 : vecRows.front().size();
        return block(byStem + "Data",
                     {{m_obj.nKind == 1 ? "Total.ImageSource" : "Total.WaveLengths", QByteArray::number(static_cast<int>(vecRows.size()))},
                      {"Total.Vertices", QByteArray::number(static_cast<int>(nVertices))}},
                     by);
    }

    QByteArray results() const
    {
        QByteArray by;
        for (const auto& pairRow : m_obj.lstResults)
        {
            by += leaf(m_obj.nKind == 1 ? "Orm.3.0.NOVA.Results" : "Orm.3.0.SOLA.Results",
                       {{"Key", pairRow.first.toUtf8()}, {"Value", pairRow.second.toUtf8()}});
        }
        return block(m_byPrefix + "Results", {{"Count", QByteArray::number(m_obj.lstResults.size())}}, by);
    }

    QByteArray registration() const
    {
        if (m_obj.nKind == 1 || !m_obj.bRegistration)
        {
            return QByteArray();
        }
        return block(m_byPrefix + "Registration.Matrices", {{"Count", "1"}},
                     leaf(m_byPrefix + "Registration.Matrix", {{"Index", "0"}, {"Values", "1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1"}}));
    }

    QByteArray software() const
    {
        return m_obj.strSoftware.isNull()
                   ? QByteArray()
                   : element("Orm3.0.Version.Data", {}, leaf("Orm3.0.Version", {{"Software", m_obj.strSoftware.toUtf8()}}));
    }

    QByteArray calibration() const
    {
        if (m_obj.strMeasurementType.isNull() && m_obj.strPerUnitValue.isNull())
        {
            return QByteArray();
        }
        return element("Orm3.0.WellPlate.Data", {},
                       leaf("Orm3.0.WellPlate.Quantification", {{"Name", "calibration"},
                                                                {"Date", "2026-08-01"},
                                                                {"MeasurementType", m_obj.strMeasurementType.toUtf8()},
                                                                {"Probe", "probe"},
                                                                {"PlateType", "96"},
                                                                {"Unit", "unit"},
                                                                {"PerUnitValue", m_obj.strPerUnitValue.toUtf8()}}));
    }

    QByteArray surface() const
    {
        const Attributes lstVertices = {{"Count", QByteArray::number(m_obj.vertexCount())}};
        const Attributes lstTriangles = {{"Count", QByteArray::number(static_cast<int>(m_obj.vecTriangles.size() / 3))}};
        QByteArray byVertices;
        QByteArray byTriangles;
        if (isOld())
        {
            for (size_t i = 0; i + 2 < m_obj.vecVertices.size(); i += 3)
            {
                byVertices += leaf("Orm3.0.Surface.Vertex", {{"X", number(static_cast<double>(m_obj.vecVertices[i]))},
                                                             {"Y", number(static_cast<double>(m_obj.vecVertices[i + 1]))},
                                                             {"Z", number(static_cast<double>(m_obj.vecVertices[i + 2]))}});
            }
            for (size_t i = 0; i + 2 < m_obj.vecTriangles.size(); i += 3)
            {
                byTriangles += leaf("Orm3.0.Surface.Triangle", {{"A", QByteArray::number(m_obj.vecTriangles[i])},
                                                                {"B", QByteArray::number(m_obj.vecTriangles[i + 1])},
                                                                {"C", QByteArray::number(m_obj.vecTriangles[i + 2])}});
            }
        }
        else
        {
            byVertices = hexChild("Orm3.0.Surface.Vertices.Values", hexFloats(m_obj.vecVertices));
            byTriangles = hexChild("Orm3.0.Surface.Triangles.Values",
                                   OrmHexText::encodeUInts(m_obj.vecTriangles.data(), static_cast<qint64>(m_obj.vecTriangles.size())));
        }
        const QByteArray by =
            block("Orm3.0.Surface.Vertices", lstVertices, byVertices) + block("Orm3.0.Surface.Triangles", lstTriangles, byTriangles);
        return element("Orm3.0.Surface.Data", {}, by);
    }

    QByteArray volume() const
    {
        QByteArray by;
        if (isOld())
        {
            for (size_t i = 0; i + 3 < m_obj.vecVoxels.size(); i += 4)
            {
                by += leaf("Orm3.0.Volume.Voxel", {{"X", number(static_cast<double>(m_obj.vecVoxels[i]))},
                                                   {"Y", number(static_cast<double>(m_obj.vecVoxels[i + 1]))},
                                                   {"Z", number(static_cast<double>(m_obj.vecVoxels[i + 2]))},
                                                   {"Value", number(static_cast<double>(m_obj.vecVoxels[i + 3]))}});
            }
        }
        else
        {
            by = hexChild("Orm3.0.Volume.Voxels.Values", hexFloats(m_obj.vecVoxels));
        }
        return element("Orm3.0.Volume.Data", {},
                       block("Orm3.0.Volume.Voxels",
                             {{"Kind", m_obj.nKind == 1 ? "NOVA" : "SOLA"},
                              {"Count", QByteArray::number(static_cast<int>(m_obj.vecVoxels.size() / 4))},
                              {"VoxelSize", number(m_obj.dVoxelSize)}},
                             by));
    }

    QByteArray mask() const
    {
        return m_obj.nKind == 1 || !m_obj.bMask
                   ? QByteArray()
                   : element("Orm3.0.Mask.Data", {},
                             block("Orm3.0.Mask.Image", {{"Width", "2"}, {"Height", "2"}}, hexChild("Orm3.0.Mask.Pixel", "00FF00FF")));
    }

    bool isOld() const { return m_obj.strVersion.trimmed() == QLatin1String("1.0"); }

    const SResultDocument& m_obj;
    QByteArray m_byPrefix;
};

} // namespace

SResultDocument::SResultDocument(int nTheKind, const QString& strTheVersion)
    : nKind(nTheKind), strVersion(strTheVersion), lstClicks({"C1", "C2", "C3", "C4", "C5"})
{
    if (nKind == NOVA)
    {
        lstEmission = QStringList({"620", "640"});
        lstExcitation = QStringList({"570", "580"});
    }
    lstNames = nKind == NOVA ? QStringList({"570/620", "580/640"}) : QStringList({"560", "620"});
    lstResults = {{"Final voxel size (mm)", "1.0"},
                  {nKind == NOVA ? "Starting vsize" : "Starting vsize (best)", "4.0"},
                  {"Reduced Chi2", "1.25"},
                  {nKind == NOVA ? "Total fluorescence yield" : "Total source flux", "2080"}};
    setSphere(1);
    setCube(4, 1.0);
}

void SResultDocument::setNames(const QStringList& lstNewNames)
{
    lstNames = lstNewNames;
    vecSimulated.clear();
    vecMeasured.clear();
    for (int nRow = 0; nRow < lstNames.size(); ++nRow)
    {
        std::vector<float> vecSimulatedRow;
        std::vector<float> vecMeasuredRow;
        for (int i = 0; i < vertexCount(); ++i)
        {
            vecSimulatedRow.push_back(100.0f * static_cast<float>(nRow + 1) + static_cast<float>(i));
            vecMeasuredRow.push_back(1000.0f * static_cast<float>(nRow + 1) + static_cast<float>(i));
        }
        vecSimulated.push_back(vecSimulatedRow);
        vecMeasured.push_back(vecMeasuredRow);
    }
}

void SResultDocument::setSphere(int nSteps, float fRadius)
{
    // An octahedron whose triangles are split into four, the new corners moved out to the sphere.
    std::vector<std::array<double, 3>> vecPoints = {{1, 0, 0}, {-1, 0, 0}, {0, 1, 0}, {0, -1, 0}, {0, 0, 1}, {0, 0, -1}};
    std::vector<std::array<quint32, 3>> vecFaces = {{0, 2, 4}, {2, 1, 4}, {1, 3, 4}, {3, 0, 4}, {2, 0, 5}, {1, 2, 5}, {3, 1, 5}, {0, 3, 5}};
    for (int nStep = 0; nStep <= nSteps; ++nStep)
    {
        std::map<std::pair<quint32, quint32>, quint32> mapMiddles;
        const auto middle = [&](quint32 a, quint32 b)
        {
            const auto [it, bNew] = mapMiddles.try_emplace(std::minmax(a, b), static_cast<quint32>(vecPoints.size()));
            if (bNew)
            {
                std::array<double, 3> adSum{};
                for (size_t i = 0; i < 3; ++i)
                {
                    adSum[i] = vecPoints[a][i] + vecPoints[b][i];
                }
                const double dLength = std::hypot(adSum[0], adSum[1], adSum[2]);
                vecPoints.push_back({adSum[0] / dLength, adSum[1] / dLength, adSum[2] / dLength});
            }
            return it->second;
        };
        std::vector<std::array<quint32, 3>> vecSplit;
        for (const auto& [a, b, c] : vecFaces)
        {
            const quint32 ab = middle(a, b);
            const quint32 bc = middle(b, c);
            const quint32 ca = middle(c, a);
            vecSplit.insert(vecSplit.end(), {{a, ab, ca}, {ab, b, bc}, {ca, bc, c}, {ab, bc, ca}});
        }
        vecFaces.swap(vecSplit);
    }
    vecVertices.clear();
    vecTriangles.clear();
    for (const std::array<double, 3>& adPoint : vecPoints)
    {
        for (const double dValue : adPoint)
        {
            vecVertices.push_back(static_cast<float>(dValue) * fRadius);
        }
    }
    for (const std::array<quint32, 3>& anFace : vecFaces)
    {
        vecTriangles.insert(vecTriangles.end(), anFace.begin(), anFace.end());
    }
    setNames(lstNames);
}

void SResultDocument::setCube(int nEdge, double dSize, float fFactor)
{
    dVoxelSize = dSize;
    vecVoxels.clear();
    const double dFirst = -0.5 * dSize * (nEdge - 1);
    int nVoxel = 0;
    for (int z = 0; z < nEdge; ++z)
    {
        for (int y = 0; y < nEdge; ++y)
        {
            for (int x = 0; x < nEdge; ++x)
            {
                for (const int n : {x, y, z})
                {
                    vecVoxels.push_back(static_cast<float>(dFirst + n * dSize));
                }
                vecVoxels.push_back(static_cast<float>(++nVoxel) * fFactor);
            }
        }
    }
}

double SResultDocument::total() const
{
    double dTotal = 0.0;
    for (size_t i = 3; i < vecVoxels.size(); i += 4)
    {
        dTotal += static_cast<double>(vecVoxels[i]);
    }
    return dTotal;
}

SResultDocument& SResultDocument::leaveOut(const QByteArray& byTag)
{
    setLeftOut.insert(byTag);
    return *this;
}

SResultDocument& SResultDocument::replace(const QByteArray& byOld, const QByteArray& byNew)
{
    lstReplacements.append({byOld, byNew});
    return *this;
}

QByteArray SResultDocument::toXml() const
{
    QByteArray byText = CBuilder(*this).text();
    for (const auto& pairReplacement : lstReplacements)
    {
        if (!byText.contains(pairReplacement.first))
        {
            TestWidgets::fail(QStringLiteral("The document doesn't hold \"%1\"").arg(QString::fromUtf8(pairReplacement.first)));
        }
        byText.replace(pairReplacement.first, pairReplacement.second);
    }
    return byText;
}
