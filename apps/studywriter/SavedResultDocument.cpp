#include "SavedResult.h"

#include "OrmHexText.h"

#include <algorithm>
#include <iterator>

namespace
{
/// Writes tags into one buffer; every text is escaped.
class CDocumentWriter
{
public:
    explicit CDocumentWriter(bool bHexText) : m_bHexText(bHexText) {}

    using Keys = QList<QPair<const char*, QString>>;

    void open(const QString& strTag, const Keys& lstKeys = {})
    {
        tag(strTag, lstKeys);
        m_aText += ">\n";
    }
    void close(const QString& strTag) { m_aText += "</" + strTag.toUtf8() + ">\n"; }
    void leaf(const QString& strTag, const Keys& lstKeys)
    {
        tag(strTag, lstKeys);
        m_aText += "/>\n";
    }

    /// Numbers as hex text in one element, or as one element per row of lstKeys.size() numbers.
    template <class T>
    void values(const QString& strHexTag, const QString& strRowTag, const QStringList& lstKeys, const T* pValues, std::size_t nCount)
    {
        if (m_bHexText)
        {
            hexText(strHexTag, pValues, nCount);
            return;
        }
        const auto nKeys = static_cast<std::size_t>(lstKeys.size());
        for (std::size_t nAt = 0; nAt + nKeys <= nCount; nAt += nKeys)
        {
            m_aText += '<' + strRowTag.toUtf8();
            for (std::size_t nKey = 0; nKey < nKeys; ++nKey)
            {
                m_aText += ' ' + lstKeys.at(static_cast<int>(nKey)).toUtf8() + "=\"" + number(pValues[nAt + nKey]) + '"';
            }
            m_aText += "/>\n";
        }
    }

    template <class T>
    void hexText(const QString& strTag, const T* pValues, std::size_t nCount)
    {
        m_aText += '<' + strTag.toUtf8() + "><Text.Data>";
        m_aText += hexOf(pValues, static_cast<qint64>(nCount));
        m_aText += "</Text.Data></" + strTag.toUtf8() + ">\n";
    }

    QByteArray m_aText = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

private:
    static QByteArray number(float fValue) { return QByteArray::number(static_cast<double>(fValue), 'g', 9); }
    static QByteArray number(quint32 nValue) { return QByteArray::number(nValue); }
    static QByteArray hexOf(const float* pValues, qint64 nCount) { return OrmHexText::encodeFloats(pValues, nCount); }
    static QByteArray hexOf(const quint32* pValues, qint64 nCount) { return OrmHexText::encodeUInts(pValues, nCount); }

    void tag(const QString& strTag, const Keys& lstKeys)
    {
        m_aText += '<' + strTag.toUtf8();
        for (const auto& key : lstKeys)
        {
            m_aText += QByteArray(" ") + key.first + "=\"" + key.second.toHtmlEscaped().toUtf8() + '"';
        }
    }

    bool m_bHexText;
};

QString count(std::size_t nCount)
{
    return QString::number(static_cast<qulonglong>(nCount));
}

void writeSurface(CDocumentWriter& writer, const SSavedResult& result)
{
    const QString strTag = QStringLiteral("Orm3.0.Surface.");
    writer.open(strTag + "Data");
    writer.open(strTag + "Vertices", {{"Count", count(result.m_vecVertices.size() / 3)}});
    writer.values(strTag + "Vertices.Values", strTag + "Vertex", {"X", "Y", "Z"}, result.m_vecVertices.data(), result.m_vecVertices.size());
    writer.close(strTag + "Vertices");
    writer.open(strTag + "Triangles", {{"Count", count(result.m_vecTriangles.size() / 3)}});
    writer.values(strTag + "Triangles.Values", strTag + "Triangle", {"A", "B", "C"}, result.m_vecTriangles.data(),
                  result.m_vecTriangles.size());
    writer.close(strTag + "Triangles");
    writer.close(strTag + "Data");
}

void writeVolume(CDocumentWriter& writer, const SSavedResult& result)
{
    static_assert(sizeof(SSavedVoxel) == 4 * sizeof(float));
    const QString strTag = QStringLiteral("Orm3.0.Volume.");
    writer.open(strTag + "Data");
    writer.open(
        strTag + "Voxels",
        {{"Kind", result.m_bNova ? "NOVA" : "SOLA"}, {"Count", count(result.m_vecVoxels.size())}, {"VoxelSize", result.m_strVoxelSize}});
    writer.values(strTag + "Voxels.Values", strTag + "Voxel", {"X", "Y", "Z", "Value"},
                  reinterpret_cast<const float*>(result.m_vecVoxels.data()), 4 * result.m_vecVoxels.size());
    writer.close(strTag + "Voxels");
    writer.close(strTag + "Data");
}

void writeNames(CDocumentWriter& writer, const QString& strTag, const char* pszKey, const QStringList& lstNames,
                CDocumentWriter::Keys lstMoreKeys = {})
{
    lstMoreKeys.prepend({"Count", QString::number(lstNames.size())});
    writer.open(strTag, lstMoreKeys);
    for (const QString& strName : lstNames)
    {
        writer.leaf(strTag + ".Name", {{pszKey, strName}});
    }
    writer.close(strTag);
}

void writeDensity(CDocumentWriter& writer, const QString& strTag, const SSavedResult& result,
                  const std::vector<std::vector<float>>& vecRows)
{
    writer.open(strTag + ".Data", {{result.m_bNova ? "Total.ImageSource" : "Total.WaveLengths", count(vecRows.size())},
                                   {"Total.Vertices", count(result.m_vecVertices.size() / 3)}});
    for (const std::vector<float>& vecRow : vecRows)
    {
        writer.values(strTag + ".Values", strTag + ".Value", {"Photon.Density"}, vecRow.data(), vecRow.size());
    }
    writer.close(strTag + ".Data");
}

void writeCalibration(CDocumentWriter& writer, const SSavedCalibration& calibration)
{
    if (calibration.m_strMeasurementType.isEmpty())
    {
        return;
    }
    writer.open(QStringLiteral("Orm3.0.WellPlate.Data"));
    writer.leaf(QStringLiteral("Orm3.0.WellPlate.Quantification"), {{"Name", calibration.m_strName},
                                                                    {"Date", calibration.m_strDate},
                                                                    {"MeasurementType", calibration.m_strMeasurementType},
                                                                    {"Probe", calibration.m_strProbe},
                                                                    {"PlateType", calibration.m_strPlateType},
                                                                    {"Unit", calibration.m_strMeasurementType},
                                                                    {"PerUnitValue", calibration.m_strPerUnitValue}});
    writer.close(QStringLiteral("Orm3.0.WellPlate.Data"));
}

void writeKind(CDocumentWriter& writer, const SSavedResult& result)
{
    const QString strKind = result.m_bNova ? QStringLiteral("NOVA") : QStringLiteral("SOLA");
    const QString strTag = "Orm3.0." + strKind + '.';
    writer.open(strTag + "Data");
    writer.open(strTag + "SequenceID");
    writer.leaf(strTag + "SequenceID.Name", {{"SequenceID", result.m_strSequenceID}});
    writer.close(strTag + "SequenceID");
    if (result.m_bNova)
    {
        const int nChannels = result.m_lstChannels.size();
        const auto repeated = [nChannels](const QString& strText)
        {
            QStringList lstTexts;
            std::fill_n(std::back_inserter(lstTexts), nChannels, strText);
            return lstTexts;
        };
        writeNames(writer, strTag + "Imagesource", "ImgSources", result.m_lstChannels);
        writeNames(writer, strTag + "EmmissionFilter", "EMFilter", repeated(result.m_strEmissionFilter));
        writeNames(writer, strTag + "ExcitationFilter", "EXFilter", repeated(result.m_strExcitationFilter));
    }
    else
    {
        writer.open(strTag + "Wavelengths", {{"Count", QString::number(result.m_lstChannels.size())}, {"Views", "0"}});
        for (const QString& strName : result.m_lstChannels)
        {
            writer.leaf(strTag + "Wavelength.Name", {{"Wavelength", strName}});
        }
        writer.close(strTag + "Wavelengths");
    }
    writeNames(writer, strTag + "ClickNumber", "ClickNumber", result.m_lstClickNumbers);
    if (result.m_bNova && !result.m_strSourceDatabase.isEmpty())
    {
        writer.open(strTag + "Optical.Properties");
        writer.leaf(strTag + "Optical.Properties.Data",
                    {{"Source.Database", result.m_strSourceDatabase}, {"Tissue.Database", result.m_strTissueDatabase}});
        writer.close(strTag + "Optical.Properties");
    }
    if (result.m_nHeightMapWidth > 0)
    {
        writer.open(strTag + "HeightMap.Data",
                    {{"Width", QString::number(result.m_nHeightMapWidth)}, {"Height", QString::number(result.m_nHeightMapHeight)}});
        writer.hexText(strTag + "HeightMap.Pixel", result.m_vecHeightMap.data(), result.m_vecHeightMap.size());
        writer.close(strTag + "HeightMap.Data");
    }
    writeDensity(writer, strTag + "Simulated.Photon.Density", result, result.m_vecSimulated);
    writeDensity(writer, strTag + "Measured.Photon.Density", result, result.m_vecMeasured);
    writer.open(strTag + "Results", {{"Count", QString::number(result.m_lstTable.size())}});
    for (const auto& row : result.m_lstTable)
    {
        writer.leaf("Orm.3.0." + strKind + ".Results", {{"Key", row.first}, {"Value", row.second}});
    }
    writer.close(strTag + "Results");
    if (!result.m_bNova && result.m_bRegistration)
    {
        writer.open(strTag + "Registration.Matrices", {{"Count", "1"}});
        writer.leaf(strTag + "Registration.Matrix", {{"Index", "0"}, {"Values", "1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1"}});
        writer.close(strTag + "Registration.Matrices");
    }
    writer.close(strTag + "Data");
}
} // namespace

QByteArray SavedResultDocument::text(const SSavedResult& result, const QString& strVersion)
{
    CDocumentWriter writer(strVersion != QLatin1String("1.0"));
    writer.open(QStringLiteral("Ormelle.Result"), {{"Version", strVersion}});
    writer.open(QStringLiteral("Orm3.0.Version.Data"));
    writer.leaf(QStringLiteral("Orm3.0.Version"), {{"Software", "Ormelle version: " ORM_VERSION}});
    writer.close(QStringLiteral("Orm3.0.Version.Data"));
    writeCalibration(writer, result.m_objCalibration);
    writeSurface(writer, result);
    writeVolume(writer, result);
    writeKind(writer, result);
    writer.close(QStringLiteral("Ormelle.Result"));
    return writer.m_aText;
}

qint64 SavedResultDocument::numberBytes(const SSavedResult& result)
{
    std::size_t nNumbers =
        result.m_vecVertices.size() + result.m_vecTriangles.size() + 4 * result.m_vecVoxels.size() + result.m_vecHeightMap.size();
    for (const auto* pRows : {&result.m_vecMeasured, &result.m_vecSimulated})
    {
        for (const std::vector<float>& vecRow : *pRows)
        {
            nNumbers += vecRow.size();
        }
    }
    return OrmHexText::nDigitsPerValue * static_cast<qint64>(nNumbers);
}
