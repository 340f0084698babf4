#include "ProgramRun.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QImage>
#include <QMap>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <QtTest>

#include <cmath>
#include <cstring>

namespace
{
/// What a document of the phantom holds, read by plain means.
struct SDocument
{
    QString m_strVersion;
    std::vector<float> m_vecVertices;
    std::vector<quint32> m_vecCorners;
    std::vector<float> m_vecVoxels;
    QMap<QString, QString> m_mapTable;
    int m_nDensityRows = 0;
    int m_nDensityValues = 0;
};

template <class T>
std::vector<T> decoded(const QString& strHex)
{
    const QByteArray aBytes = QByteArray::fromHex(strHex.toLatin1());
    std::vector<T> vecValues(static_cast<std::size_t>(aBytes.size()) / sizeof(T));
    std::memcpy(vecValues.data(), aBytes.constData(), vecValues.size() * sizeof(T));
    return vecValues;
}

SDocument readDocument(const QString& strFile)
{
    SDocument document;
    QFile file(strFile);
    if (!file.open(QIODevice::ReadOnly))
    {
        return document;
    }
    QXmlStreamReader reader(&file);
    QString strParent;
    while (!reader.atEnd())
    {
        if (reader.readNext() != QXmlStreamReader::StartElement)
        {
            continue;
        }
        const QString strTag = reader.name().toString();
        const QXmlStreamAttributes attributes = reader.attributes();
        const auto number = [&attributes](const char* pszKey) { return attributes.value(QLatin1String(pszKey)).toFloat(); };
        if (strTag == "Ormelle.Result")
        {
            document.m_strVersion = attributes.value("Version").toString();
        }
        else if (strTag == "Orm3.0.Surface.Vertex")
        {
            document.m_vecVertices.insert(document.m_vecVertices.end(), {number("X"), number("Y"), number("Z")});
        }
        else if (strTag == "Orm3.0.Surface.Triangle")
        {
            for (const char* pszKey : {"A", "B", "C"})
            {
                document.m_vecCorners.push_back(attributes.value(QLatin1String(pszKey)).toUInt());
            }
        }
        else if (strTag == "Orm3.0.Volume.Voxel")
        {
            document.m_vecVoxels.insert(document.m_vecVoxels.end(), {number("X"), number("Y"), number("Z"), number("Value")});
        }
        else if (strTag.endsWith("Measured.Photon.Density.Value"))
        {
            ++document.m_nDensityValues;
        }
        else if (strTag.endsWith("Measured.Photon.Density.Values"))
        {
            ++document.m_nDensityRows;
            strParent = strTag;
        }
        else if (strTag.startsWith("Orm.3.0."))
        {
            document.m_mapTable.insert(attributes.value("Key").toString(), attributes.value("Value").toString());
        }
        else if (strTag == "Text.Data")
        {
            const QString strText = reader.readElementText();
            if (strParent == "Orm3.0.Surface.Vertices.Values")
            {
                document.m_vecVertices = decoded<float>(strText);
            }
            else if (strParent == "Orm3.0.Surface.Triangles.Values")
            {
                document.m_vecCorners = decoded<quint32>(strText);
            }
            else if (strParent == "Orm3.0.Volume.Voxels.Values")
            {
                document.m_vecVoxels = decoded<float>(strText);
            }
            else if (strParent.endsWith("Measured.Photon.Density.Values"))
            {
                document.m_nDensityValues += strText.size() / 8;
            }
        }
        else
        {
            strParent = strTag;
        }
    }
    return reader.hasError() ? SDocument() : document;
}

/// Names and hashes of all files below a folder.
QMap<QString, QByteArray> hashes(const QString& strFolder)
{
    QMap<QString, QByteArray> mapHashes;
    QDirIterator files(strFolder, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext())
    {
        QFile file(files.next());
        if (file.open(QIODevice::ReadOnly))
        {
            mapHashes.insert(QDir(strFolder).relativeFilePath(file.fileName()),
                             QCryptographicHash::hash(file.readAll(), QCryptographicHash::Sha1));
        }
    }
    return mapHashes;
}

double totalOf(const SDocument& document)
{
    double fTotal = 0.0;
    for (std::size_t nAt = 3; nAt < document.m_vecVoxels.size(); nAt += 4)
    {
        fTotal += static_cast<double>(document.m_vecVoxels[nAt]);
    }
    return fTotal;
}
} // namespace

class tst_Phantom : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void studyHasItsSequences_data();
    void studyHasItsSequences();
    void sameSeedMakesTheSameBytes();
    void otherSeedMakesOtherSources();
    void surfaceIsClosedAndFacesOutwards_data();
    void surfaceIsClosedAndFacesOutwards();
    void bothFormatsHoldTheSame();
    void sourcesGrow();
    void storedTotalIsTheSumOfTheVoxels();
    void voxelsLieOnTheGrid();
    void wrongUsageIsRefused_data();
    void wrongUsageIsRefused();
    void unwritableFolderIsReported();

private:
    QString folder(const QString& strName) const { return m_objFolder.filePath(strName); }
    QTemporaryDir m_objFolder;
};

void tst_Phantom::initTestCase()
{
    QVERIFY(m_objFolder.isValid());
    QCOMPARE(runProgram("ormphantom", {folder("two"), "--timepoints", "3", "--vertices", "600"}).m_nExit, 0);
    QCOMPARE(runProgram("ormphantom", {folder("one"), "--timepoints", "1", "--vertices", "600", "--format", "1.0"}).m_nExit, 0);
}

void tst_Phantom::studyHasItsSequences_data()
{
    QTest::addColumn<QString>("strKind");
    QTest::addColumn<int>("nSequences");
    QTest::newRow("SOLA") << "SOLA" << 2;
    QTest::newRow("NOVA") << "NOVA" << 2;
    QTest::newRow("both") << "both" << 4;
}

void tst_Phantom::studyHasItsSequences()
{
    QFETCH(QString, strKind);
    const QString strStudy = folder("kind-" + strKind);
    QCOMPARE(runProgram("ormphantom", {strStudy, "--timepoints", "2", "--kind", strKind, "--vertices", "100"}).m_nExit, 0);
    const QStringList lstSequences = QDir(strStudy).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    QTEST(lstSequences.size(), "nSequences");
    for (const QString& strSequence : lstSequences)
    {
        const QDir sequence(strStudy + '/' + strSequence);
        const QString strIndex = strSequence.endsWith("_F") ? "XML/NOVA.txt" : "XML/SOLA.txt";
        QVERIFY(sequence.exists("SequenceInfo.txt"));
        QVERIFY2(sequence.exists(strIndex), qPrintable(strSequence));
        QCOMPARE(sequence.entryList({strSequence + "_*"}, QDir::Dirs).size(), strSequence.endsWith("_F") ? 4 : 5);
        QVERIFY(!QImage(sequence.filePath(strSequence + "_001/photograph.png")).isNull());
    }
}

void tst_Phantom::sameSeedMakesTheSameBytes()
{
    QCOMPARE(runProgram("ormphantom", {folder("again"), "--timepoints", "3", "--vertices", "600"}).m_nExit, 0);
    const QMap<QString, QByteArray> mapFirst = hashes(folder("two"));
    QVERIFY(mapFirst.size() > 30);
    QCOMPARE(hashes(folder("again")), mapFirst);
}

void tst_Phantom::otherSeedMakesOtherSources()
{
    QCOMPARE(runProgram("ormphantom", {folder("seed"), "--timepoints", "1", "--vertices", "600", "--seed", "5"}).m_nExit, 0);
    const QString strFile = "/PM20260302_L/XML/SOLA_1.xml";
    QVERIFY(readDocument(folder("seed") + strFile).m_vecVoxels != readDocument(folder("two") + strFile).m_vecVoxels);
}

void tst_Phantom::surfaceIsClosedAndFacesOutwards_data()
{
    QTest::addColumn<int>("nVertices");
    for (const int nVertices : {14, 100, 1759, 10000})
    {
        QTest::addRow("%d", nVertices) << nVertices;
    }
}

void tst_Phantom::surfaceIsClosedAndFacesOutwards()
{
    QFETCH(int, nVertices);
    const QString strStudy = folder(QStringLiteral("surface%1").arg(nVertices));
    QCOMPARE(runProgram("ormphantom", {strStudy, "--timepoints", "1", "--kind", "SOLA", "--vertices", QString::number(nVertices)}).m_nExit,
             0);
    const SDocument document = readDocument(strStudy + "/PM20260302_L/XML/SOLA_1.xml");
    const auto nFound = static_cast<int>(document.m_vecVertices.size() / 3);
    QVERIFY2(std::abs(nFound - nVertices) <= 1 + 2 * static_cast<int>(std::sqrt(nVertices)), qPrintable(QString::number(nFound)));
    QMap<QPair<quint32, quint32>, int> mapEdges;
    double fVolume = 0.0;
    for (std::size_t nAt = 0; nAt < document.m_vecCorners.size(); nAt += 3)
    {
        const quint32* pCorners = &document.m_vecCorners[nAt];
        const float* pA = &document.m_vecVertices.at(3 * pCorners[0]);
        const float* pB = &document.m_vecVertices.at(3 * pCorners[1]);
        const float* pC = &document.m_vecVertices.at(3 * pCorners[2]);
        fVolume +=
            (pA[0] * (pB[1] * pC[2] - pB[2] * pC[1]) - pA[1] * (pB[0] * pC[2] - pB[2] * pC[0]) + pA[2] * (pB[0] * pC[1] - pB[1] * pC[0])) /
            6.0;
        for (int nCorner = 0; nCorner < 3; ++nCorner)
        {
            ++mapEdges[{pCorners[nCorner], pCorners[(nCorner + 1) % 3]}];
        }
    }
    QVERIFY(fVolume > 0.0);
    for (auto edge = mapEdges.cbegin(); edge != mapEdges.cend(); ++edge)
    {
        QCOMPARE(edge.value(), 1);
        QCOMPARE(mapEdges.value({edge.key().second, edge.key().first}), 1);
    }
}

void tst_Phantom::bothFormatsHoldTheSame()
{
    for (const QString strFile : {"/PM20260302_L/XML/SOLA_1.xml", "/PM20260302_F/XML/NOVA_2.xml"})
    {
        const SDocument old = readDocument(folder("one") + strFile);
        const SDocument current = readDocument(folder("two") + strFile);
        QCOMPARE(old.m_strVersion, QString("1.0"));
        QCOMPARE(current.m_strVersion, QString("2.0"));
        QVERIFY(!current.m_vecVertices.empty());
        QVERIFY(old.m_vecVertices == current.m_vecVertices);
        QVERIFY(old.m_vecCorners == current.m_vecCorners);
        QVERIFY(old.m_vecVoxels == current.m_vecVoxels);
        QCOMPARE(old.m_mapTable, current.m_mapTable);
        QCOMPARE(old.m_nDensityValues, current.m_nDensityValues);
        QCOMPARE(current.m_nDensityRows, strFile.contains("_F") ? 4 : 5);
    }
}

void tst_Phantom::sourcesGrow()
{
    double fBefore = 0.0;
    for (const char* pszDay : {"20260302", "20260305", "20260309"})
    {
        const double fTotal = totalOf(readDocument(folder("two") + "/PM" + pszDay + "_L/XML/SOLA_1.xml"));
        QVERIFY(fTotal > 1.2 * fBefore);
        fBefore = fTotal;
    }
}

void tst_Phantom::storedTotalIsTheSumOfTheVoxels()
{
    const SDocument document = readDocument(folder("two") + "/PM20260309_L/XML/SOLA_1.xml");
    const double fStored = document.m_mapTable.value("Total source flux (photons/s)").toDouble();
    QVERIFY(fStored > 0.0);
    QVERIFY(std::abs(totalOf(document) - fStored) < 1.0e-4 * fStored);
}

void tst_Phantom::voxelsLieOnTheGrid()
{
    QCOMPARE(runProgram("ormphantom", {folder("fine"), "--timepoints", "1", "--vertices", "100", "--voxel-size", "0.3"}).m_nExit, 0);
    const SDocument document = readDocument(folder("fine") + "/PM20260302_L/XML/SOLA_1.xml");
    QVERIFY(document.m_vecVoxels.size() > 400);
    for (std::size_t nAt = 0; nAt < document.m_vecVoxels.size(); ++nAt)
    {
        if (nAt % 4 != 3)
        {
            const double fCells = static_cast<double>(document.m_vecVoxels[nAt]) / 0.3;
            QVERIFY(std::abs(fCells - std::round(fCells)) < 0.001);
        }
    }
}

void tst_Phantom::wrongUsageIsRefused_data()
{
    QTest::addColumn<QStringList>("lstArguments");
    QTest::newRow("no folder") << QStringList();
    QTest::newRow("two folders") << QStringList{"a", "b"};
    QTest::newRow("no time point") << QStringList{"x", "--timepoints", "0"};
    QTest::newRow("time points no number") << QStringList{"x", "--timepoints", "many"};
    QTest::newRow("unknown kind") << QStringList{"x", "--kind", "sola"};
    QTest::newRow("too few vertices") << QStringList{"x", "--vertices", "3"};
    QTest::newRow("voxel size 0") << QStringList{"x", "--voxel-size", "0"};
    QTest::newRow("voxel size no number") << QStringList{"x", "--voxel-size", "nan"};
    QTest::newRow("unknown format") << QStringList{"x", "--format", "3.0"};
    QTest::newRow("seed below 0") << QStringList{"x", "--seed=-1"};
    QTest::newRow("unknown option") << QStringList{"x", "--nonsense"};
}

void tst_Phantom::wrongUsageIsRefused()
{
    QFETCH(QStringList, lstArguments);
    const SProgramRun run = runProgram("ormphantom", lstArguments);
    QCOMPARE(run.m_nExit, 2);
    QVERIFY(run.m_strError.startsWith("ormphantom: "));
    QCOMPARE(run.m_strError.count('\n'), 1);
    QVERIFY(!QDir("x").exists());
}

void tst_Phantom::unwritableFolderIsReported()
{
    QFile file(folder("a-file"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    const SProgramRun run = runProgram("ormphantom", {file.fileName(), "--timepoints", "1"});
    QCOMPARE(run.m_nExit, 1);
    QVERIFY2(run.m_strError.contains(file.fileName()), qPrintable(run.m_strError));
}

QTEST_GUILESS_MAIN(tst_Phantom)
#include "tst_phantom.moc"
