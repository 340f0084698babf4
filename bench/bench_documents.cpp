// Reading of result documents and of the hex text in them, each beside a plain reference in the same run: the counter "of_plain" is our
// time divided by the reference's. "of_half" is the time divided by that of a document of half the elements.

#include "BenchRatio.h"
#include "CPLResultXMLWrapper.h"
#include "LoadStudy.h"
#include "OrmHexText.h"
#include "PlainDocumentReader.h"

#include <benchmark/benchmark.h>

#include <QByteArray>
#include <QFile>
#include <QStringList>
#include <QTemporaryDir>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <vector>

using BenchRatio::compare;

namespace
{
constexpr int nRowsOfDensity = 5;
const QString strData = QStringLiteral("Orm3.0.SOLA.Data");
const QString strDensity = QStringLiteral("Orm3.0.SOLA.Measured.Photon.Density.Data");
const QString strSurface = QStringLiteral("Orm3.0.Surface.Data");
const QString strVertices = QStringLiteral("Orm3.0.Surface.Vertices");
const QString strVolume = QStringLiteral("Orm3.0.Volume.Data");
const QString strVoxels = QStringLiteral("Orm3.0.Volume.Voxels");

/// Values like those of a result, the same in every run.
std::vector<float> makeValues(size_t nValues)
{
    std::vector<float> vecValues(nValues);
    for (size_t i = 0; i < nValues; ++i)
        vecValues[i] = static_cast<float>(std::exp(std::sin(static_cast<double>(i) * 0.37)) * 12.5);
    return vecValues;
}

QByteArray number(float fValue)
{
    return QByteArray::number(static_cast<double>(fValue), 'g', 9);
}

void appendSection(QByteArray& baText, const QString& strSection, int nVersion, const QString& strRow, const QStringList& lstKeys,
                   int nRows, const std::vector<float>& vecValues)
{
    baText += "<" + strSection.toUtf8() + ">\n";
    if (nVersion == 2)
    {
        const qint64 nOfRow = static_cast<qint64>(vecValues.size()) / nRows;
        for (int i = 0; i < nRows; ++i)
            baText += "<" + strRow.toUtf8() + "s><Text.Data>" + OrmHexText::encodeFloats(vecValues.data() + i * nOfRow, nOfRow) +
                      "</Text.Data></" + strRow.toUtf8() + "s>\n";
    }
    else
    {
        for (size_t i = 0; i < vecValues.size(); i += static_cast<size_t>(lstKeys.size()))
        {
            baText += "<" + strRow.toUtf8();
            for (int nKey = 0; nKey < lstKeys.size(); ++nKey)
                baText += " " + lstKeys.at(nKey).toUtf8() + "=\"" + number(vecValues[i + static_cast<size_t>(nKey)]) + "\"";
            baText += "/>\n";
        }
    }
    baText += "</" + strSection.toUtf8() + ">\n";
}

const QString strVertexRow = QStringLiteral("Orm3.0.Surface.Vertex");
const QString strVoxelRow = QStringLiteral("Orm3.0.Volume.Voxel");
const QString strDensityRow = QStringLiteral("Orm3.0.SOLA.Measured.Photon.Density.Value");
const QStringList lstVertexKeys = {QStringLiteral("X"), QStringLiteral("Y"), QStringLiteral("Z")};
const QStringList lstVoxelKeys = {QStringLiteral("X"), QStringLiteral("Y"), QStringLiteral("Z"), QStringLiteral("Value")};
const QStringList lstDensityKeys = {QStringLiteral("Photon.Density")};

/// A result with so many vertices, half as many voxels and five density rows, in a file that lives as long as the program.
QString documentFile(int nVersion, int nVertices)
{
    static QTemporaryDir objFolder;
    const QString strFile = objFolder.filePath(QStringLiteral("%1_%2.xml").arg(nVersion).arg(nVertices));
    if (QFile::exists(strFile))
        return strFile;
    const auto n = static_cast<size_t>(nVertices);
    QByteArray baText = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Ormelle.Result Version=\"" + QByteArray::number(nVersion) +
                        ".0\">\n<" + strSurface.toUtf8() + ">\n";
    appendSection(baText, strVertices, nVersion, strVertexRow, lstVertexKeys, 1, makeValues(3 * n));
    baText += "</" + strSurface.toUtf8() + ">\n<" + strData.toUtf8() + ">\n";
    appendSection(baText, strDensity, nVersion, strDensityRow, lstDensityKeys, nRowsOfDensity, makeValues(nRowsOfDensity * n));
    baText += "</" + strData.toUtf8() + ">\n<" + strVolume.toUtf8() + ">\n";
    appendSection(baText, strVoxels, nVersion, strVoxelRow, lstVoxelKeys, 1, makeValues(2 * n));
    baText += "</" + strVolume.toUtf8() + ">\n</Ormelle.Result>\n";
    QFile objFile(strFile);
    if (!objFile.open(QIODevice::WriteOnly) || objFile.write(baText) != baText.size())
        std::abort();
    return strFile;
}

/// Everything of the document through the host's reader.
std::vector<float> readNumbers(const QString& strFile, int nVersion, qint64 nVertices)
{
    CPLResultXMLWrapper objXML;
    std::vector<float> vecAll;
    bool bRead = objXML.loadXMLFile(strFile);
    std::vector<float> vecPart;
    const auto append = [&](bool bPart)
    {
        bRead = bRead && bPart;
        vecAll.insert(vecAll.end(), vecPart.begin(), vecPart.end());
    };
    const auto readSection =
        [&](const QString& strFirst, const QString& strSecond, const QString& strRow, const QStringList& lstKeys, int nRows, qint64 nCount)
    {
        bRead = bRead && objXML.openSection(strFirst, strSecond);
        if (nVersion == 1)
            append(objXML.readCurrentNumbers(strRow, lstKeys, nRows * nCount, vecPart));
        for (int i = 0; i < nRows && nVersion == 2; ++i)
            append(objXML.readCurrentHexFloats(strRow + QLatin1Char('s'), i, nCount * lstKeys.size(), vecPart));
    };
    readSection(strSurface, strVertices, strVertexRow, lstVertexKeys, 1, nVertices);
    readSection(strData, strDensity, strDensityRow, lstDensityKeys, nRowsOfDensity, nVertices);
    readSection(strVolume, strVoxels, strVoxelRow, lstVoxelKeys, 1, nVertices / 2);
    if (!bRead)
        std::abort();
    return vecAll;
}

void hexText(benchmark::State& state)
{
    const std::vector<float> vecValues = makeValues(static_cast<size_t>(state.range(0)));
    const QByteArray baText = OrmHexText::encodeFloats(vecValues.data(), state.range(0));
    std::vector<float> vecOut(vecValues.size());
    compare(
        state, "of_plain",
        [&] { benchmark::DoNotOptimize(OrmHexText::textBufToValueBuf(baText.constData(), baText.size(), state.range(0), vecOut.data())); },
        [&]
        {
            PlainDocumentReader::decodeHex(baText.constData(), vecOut.size(), vecOut.data());
            benchmark::DoNotOptimize(vecOut.data());
        });
    if (vecOut != vecValues)
        state.SkipWithError("decoded other values");
    state.SetBytesProcessed(state.iterations() * baText.size());
}

void document(benchmark::State& state)
{
    const int nVersion = static_cast<int>(state.range(0));
    const int nVertices = static_cast<int>(state.range(1));
    const QString strFile = documentFile(nVersion, nVertices);
    if (readNumbers(strFile, nVersion, nVertices) != PlainDocumentReader::readNumbers(strFile.toStdString()))
        state.SkipWithError("read other numbers than the reference");
    compare(
        state, "of_plain", [&] { benchmark::DoNotOptimize(readNumbers(strFile, nVersion, nVertices)); },
        [&] { benchmark::DoNotOptimize(PlainDocumentReader::readNumbers(strFile.toStdString())); });
    state.SetBytesProcessed(state.iterations() * QFile(strFile).size());
}

/// A whole result: parsed, decoded, checked and put where a record holds it.
void record(benchmark::State& state)
{
    const CLoadStudy objStudy(1);
    const QString strFile = objStudy.files().first();
    compare(
        state, "of_plain",
        [&]
        {
            SSOLAAnalysis objAnalysis;
            CLoadStudy::read(strFile, objAnalysis);
            benchmark::DoNotOptimize(objAnalysis.objVolume.values().data());
        },
        [&] { benchmark::DoNotOptimize(PlainDocumentReader::readNumbers(strFile.toStdString())); });
    state.SetBytesProcessed(state.iterations() * QFile(strFile).size());
}

void twiceTheElements(benchmark::State& state)
{
    const int nVersion = static_cast<int>(state.range(0));
    const int nVertices = static_cast<int>(state.range(1));
    const QString strHalf = documentFile(nVersion, nVertices / 2);
    const QString strFile = documentFile(nVersion, nVertices);
    compare(
        state, "of_half", [&] { benchmark::DoNotOptimize(readNumbers(strFile, nVersion, nVertices)); },
        [&] { benchmark::DoNotOptimize(readNumbers(strHalf, nVersion, nVertices / 2)); });
}
} // namespace

BENCHMARK(hexText)->Arg(1760)->Arg(64000)->Arg(4000000)->UseManualTime();
BENCHMARK(document)
    ->ArgNames({"version", "vertices"})
    ->ArgsProduct({{1}, {1760, 16000, 128000}})
    ->ArgsProduct({{2}, {1760, 64000, 800000}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(record)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(twiceTheElements)
    ->ArgNames({"version", "vertices"})
    ->ArgsProduct({{1}, {8000, 64000, 128000}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
