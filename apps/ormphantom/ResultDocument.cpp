#include "ResultDocument.h"

#include <cstdint>
#include <cstring>

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
        static_assert(sizeof(T) == 4);
        static const char* const kDigits = "0123456789ABCDEF";
        m_aText += '<' + strTag.toUtf8() + "><Text.Data>";
        int nAt = m_aText.size();
        m_aText.resize(nAt + static_cast<int>(8 * nCount));
        char* pOut = m_aText.data() + nAt;
        for (std::size_t nValue = 0; nValue < nCount; ++nValue)
        {
            std::uint32_t nBits = 0;
            std::memcpy(&nBits, pValues + nValue, sizeof nBits);
            for (int nByte = 0; nByte < 4; ++nByte, nBits >>= 8U)
            {
                *pOut++ = kDigits[(nBits >> 4U) & 0xFU];
                *pOut++ = kDigits[nBits & 0xFU];
            }
        }
        m_aText += "</Text.Data></" + strTag.toUtf8() + ">\n";
    }

    QByteArray m_aText = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

private:
    static QByteArray number(float fValue) { return QByteArray::number(static_cast<double>(fValue), 'g', 9); }
    static QByteArray number(std::uint32_t nValue) { return QByteArray::number(nValue); }

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

void writeSurface(CDocumentWriter& writer, const CPhantomBody::SMesh& mesh)
{
    static_assert(sizeof(CPhantomBody::Point) == 3 * sizeof(float));
    const QString strTag = QStringLiteral("Orm3.0.Surface.");
    writer.open(strTag + "Data");
    writer.open(strTag + "Vertices", {{"Count", count(mesh.m_vecVertices.size())}});
    writer.values(strTag + "Vertices.Values", strTag + "Vertex", {"X", "Y", "Z"}, mesh.m_vecVertices.data()->data(),
                  3 * mesh.m_vecVertices.size());
    writer.close(strTag + "Vertices");
    writer.open(strTag + "Triangles", {{"Count", count(mesh.m_vecTriangles.size())}});
    writer.values(strTag + "Triangles.Values", strTag + "Triangle", {"A", "B", "C"}, mesh.m_vecTriangles.data()->data(),
                  3 * mesh.m_vecTriangles.size());
    writer.close(strTag + "Triangles");
    writer.close(strTag + "Data");
}

void writeVolume(CDocumentWriter& writer, const SPhantomResult& result)
{
    static_assert(sizeof(SPhantomVoxel) == 4 * sizeof(float));
    const QString strTag = QStringLiteral("Orm3.0.Volume.");
    writer.open(strTag + "Data");
    writer.open(strTag + "Voxels", {{"Kind", result.m_bNova ? "NOVA" : "SOLA"},
                                    {"Count", count(result.m_vecVoxels.size())},
                                    {"VoxelSize", QString::number(result.m_fVoxelSize)}});
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

void writeDensity(CDocumentWriter& writer, const QString& strTag, const SPhantomResult& result,
                  const std::vector<std::vector<float>>& vecRows)
{
    writer.open(strTag + ".Data", {{result.m_bNova ? "Total.ImageSource" : "Total.WaveLengths", count(vecRows.size())},
                                   {"Total.Vertices", count(result.m_mesh.m_vecVertices.size())}});
    for (const std::vector<float>& vecRow : vecRows)
    {
        writer.values(strTag + ".Values", strTag + ".Value", {"Photon.Density"}, vecRow.data(), vecRow.size());
    }
    writer.close(strTag + ".Data");
}

void writeKind(CDocumentWriter& writer, const SPhantomResult& result)
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
    if (result.m_bNova)
    {
        writer.open(strTag + "Optical.Properties");
        writer.leaf(strTag + "Optical.Properties.Data", {{"Source.Database", "Red dye"}, {"Tissue.Database", "Mouse tissue"}});
        writer.close(strTag + "Optical.Properties");
    }
    writer.open(strTag + "HeightMap.Data",
                {{"Width", QString::number(result.m_nHeightMapWidth)}, {"Height", QString::number(result.m_nHeightMapHeight)}});
    writer.hexText(strTag + "HeightMap.Pixel", result.m_vecHeightMap.data(), result.m_vecHeightMap.size());
    writer.close(strTag + "HeightMap.Data");
    writeDensity(writer, strTag + "Simulated.Photon.Density", result, result.m_vecSimulated);
    writeDensity(writer, strTag + "Measured.Photon.Density", result, result.m_vecMeasured);
    writer.open(strTag + "Results", {{"Count", QString::number(result.m_lstTable.size())}});
    for (const auto& row : result.m_lstTable)
    {
        writer.leaf("Orm.3.0." + strKind + ".Results", {{"Key", row.first}, {"Value", row.second}});
    }
    writer.close(strTag + "Results");
    if (!result.m_bNova)
    {
        writer.open(strTag + "Registration.Matrices", {{"Count", "1"}});
        writer.leaf(strTag + "Registration.Matrix", {{"Index", "0"}, {"Values", "1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1"}});
        writer.close(strTag + "Registration.Matrices");
    }
    writer.close(strTag + "Data");
}
} // namespace

QByteArray ResultDocument::text(const SPhantomResult& result, const QString& strVersion)
{
    CDocumentWriter writer(strVersion != QLatin1String("1.0"));
    writer.open(QStringLiteral("Ormelle.Result"), {{"Version", strVersion}});
    writer.open(QStringLiteral("Orm3.0.Version.Data"));
    writer.leaf(QStringLiteral("Orm3.0.Version"), {{"Software", "Ormelle version: " ORM_VERSION}});
    writer.close(QStringLiteral("Orm3.0.Version.Data"));
    if (!result.m_strMeasurementType.isEmpty())
    {
        writer.open(QStringLiteral("Orm3.0.WellPlate.Data"));
        writer.leaf(QStringLiteral("Orm3.0.WellPlate.Quantification"), {{"Name", "Phantom plate"},
                                                                        {"Date", "2026-01-05"},
                                                                        {"MeasurementType", result.m_strMeasurementType},
                                                                        {"Probe", result.m_bNova ? "Red dye" : "Luciferase"},
                                                                        {"PlateType", "96"},
                                                                        {"Unit", result.m_strMeasurementType},
                                                                        {"PerUnitValue", result.m_strPerUnitValue}});
        writer.close(QStringLiteral("Orm3.0.WellPlate.Data"));
    }
    writeSurface(writer, result.m_mesh);
    writeVolume(writer, result);
    writeKind(writer, result);
    writer.close(QStringLiteral("Ormelle.Result"));
    return writer.m_aText;
}
