#include "FormatBytes.h"
#include "ProgramRun.h"
#include "StoredDocument.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

#include <cmath>

namespace
{
using FormatBytes::of;

QByteArray contentOf(const QString& strFile)
{
    QFile file(strFile);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// A file of VTK's, read by plain means: the arrays by their names, as the bytes that they stand for.
struct SVtkFile
{
    QMap<QString, QByteArray> m_mapArrays;
    QMap<QString, QString> m_mapTypes;
    QString m_strExtent;
    QString m_strOrigin;
    QString m_strSpacing;
    int m_nPoints = 0;
    int m_nPolygons = 0;

    static SVtkFile of(const QString& strFile)
    {
        SVtkFile read;
        pugi::xml_document xml;
        xml.load_file(strFile.toUtf8().constData());
        const pugi::xml_node root = xml.child("VTKFile");
        const pugi::xml_node image = root.child("ImageData");
        read.m_strExtent = image.attribute("WholeExtent").value();
        read.m_strOrigin = image.attribute("Origin").value();
        read.m_strSpacing = image.attribute("Spacing").value();
        const pugi::xml_node piece = image ? image.child("Piece") : root.child("PolyData").child("Piece");
        read.m_nPoints = piece.attribute("NumberOfPoints").as_int();
        read.m_nPolygons = piece.attribute("NumberOfPolys").as_int();
        for (const char* pPart : {"PointData", "Points", "Polys"})
        {
            for (const pugi::xml_node& array : piece.child(pPart).children("DataArray"))
            {
                const QByteArray baBytes = QByteArray::fromBase64(array.child_value());
                const QByteArray baCount = baBytes.left(8);
                const bool bSound = baCount == FormatBytes::of<quint64>(static_cast<quint64>(baBytes.size() - 8));
                read.m_mapArrays.insert(QString::fromUtf8(array.attribute("Name").value()),
                                        bSound ? baBytes.mid(8) : QByteArray("no count"));
                read.m_mapTypes.insert(QString::fromUtf8(array.attribute("Name").value()), array.attribute("type").value());
            }
        }
        return read;
    }
};

template <typename T>
T number(const QByteArray& baBytes, int nAt)
{
    T value = {};
    std::memcpy(&value, baBytes.constData() + nAt * static_cast<int>(sizeof(T)), sizeof(T));
    return value;
}

/// A Python that has VTK; empty: there is none.
QString pythonWithVtk()
{
    for (const char* pName : {"/usr/bin/python3", "python3"})
    {
        QProcess process;
        process.start(pName, {"-c", "import vtkmodules.vtkIOXML"});
        if (process.waitForFinished(60000) && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0)
        {
            return pName;
        }
    }
    return {};
}

/// What VTK's own readers find in the two files, as "points polygons | map: sum ... | extent | origin | spacing | sum".
const char s_acReadByVtk[] = R"(
import sys
from vtkmodules.vtkIOXML import vtkXMLPolyDataReader, vtkXMLImageDataReader
def total(a): return repr(sum(a.GetTuple1(i) for i in range(a.GetNumberOfTuples())))
r = vtkXMLPolyDataReader(); r.SetFileName(sys.argv[1]); r.Update(); p = r.GetOutput()
d = p.GetPointData()
maps = [d.GetArrayName(i) + ':' + total(d.GetArray(i)) for i in range(d.GetNumberOfArrays())]
r = vtkXMLImageDataReader(); r.SetFileName(sys.argv[2]); r.Update(); g = r.GetOutput()
print(p.GetNumberOfPoints(), p.GetNumberOfPolys(), '|', ' '.join(maps), '|', ' '.join(map(str, g.GetDimensions())), '|',
      ' '.join(map(repr, g.GetOrigin())), '|', ' '.join(map(repr, g.GetSpacing())), '|', g.GetPointData().GetScalars().GetName(), '|',
      total(g.GetPointData().GetScalars()))
)";

/// Lets VTK write the grid as NIfTI and as MetaImage, and the surface as PLY.
const char s_acWrittenByVtk[] = R"(
import sys
from vtkmodules.vtkIOXML import vtkXMLPolyDataReader, vtkXMLImageDataReader
from vtkmodules.vtkIOImage import vtkNIFTIImageWriter, vtkMetaImageWriter
from vtkmodules.vtkIOPLY import vtkPLYWriter
from vtkmodules.vtkIOGeometry import vtkSTLWriter
p = vtkXMLPolyDataReader(); p.SetFileName(sys.argv[1]); p.Update()
g = vtkXMLImageDataReader(); g.SetFileName(sys.argv[2]); g.Update()
w = vtkNIFTIImageWriter(); w.SetInputData(g.GetOutput()); w.SetFileName(sys.argv[3] + '.nii.gz'); w.Write()
w = vtkMetaImageWriter(); w.SetInputData(g.GetOutput()); w.SetFileName(sys.argv[3] + '.mha'); w.SetCompression(True); w.Write()
w = vtkPLYWriter(); w.SetInputData(p.GetOutput()); w.SetFileName(sys.argv[3] + '.ply'); w.Write()
w = vtkSTLWriter(); w.SetInputData(p.GetOutput()); w.SetFileName(sys.argv[3] + '.stl'); w.SetFileTypeToBinary(); w.Write()
)";
} // namespace

/// ormexport, and the way out and in again.
class tst_exporting : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void theSurfaceIsThatOfTheResult();
    void theVolumeIsThatOfTheResult_data();
    void theVolumeIsThatOfTheResult();
    void theTableHasEveryVoxel();
    void vtkReadsTheSame();
    void outAndInAgainIsTheSame_data();
    void outAndInAgainIsTheSame();
    void whatVtkWritesComesIn();
    void theToolShowsTheSameNumbers();
    void allResultsIntoAFolder();
    void whatCannotBeWrittenIsToldAndLeavesNothing_data();
    void whatCannotBeWrittenIsToldAndLeavesNothing();
    void wrongUsageIsRefused_data();
    void wrongUsageIsRefused();

private:
    QString path(const QString& strName) const { return m_objFolder.filePath(strName); }
    SProgramRun write(const QString& strPattern, const QString& strStem, const QStringList& lstMore = {}) const
    {
        return runProgram("ormexport", QStringList{path("study"), "--load", strPattern, "--surface", path(strStem + ".vtp"), "--volume",
                                                   path(strStem + ".vti"), "--voxels", path(strStem + ".csv")} +
                                           lstMore);
    }
    SStoredDocument document(const QString& strFile) const { return SStoredDocument::of(path("study/" + strFile)); }

    QTemporaryDir m_objFolder;
};

const QString s_strSola = "SOLA PM20260302_L/Day 0, 0.6 mm";
const QString s_strSolaFile = "PM20260302_L/XML/SOLA_1.xml";

void tst_exporting::initTestCase()
{
    QVERIFY(m_objFolder.isValid());
    QCOMPARE(runProgram("ormphantom", {path("study"), "--timepoints", "2", "--vertices", "300", "--voxel-size", "0.6"}).m_nExit, 0);
    const SProgramRun run = write(s_strSola, "sola");
    QCOMPARE(run.m_strError, QString());
    QCOMPARE(run.m_nExit, 0);
    QCOMPARE(run.m_strOut.count(": written to "), 3);
}

void tst_exporting::theSurfaceIsThatOfTheResult()
{
    const SStoredDocument stored = document(s_strSolaFile);
    const SVtkFile file = SVtkFile::of(path("sola.vtp"));
    QCOMPARE(file.m_nPoints, stored.m_baVertices.size() / 12);
    QCOMPARE(file.m_nPolygons, stored.m_baTriangles.size() / 12);
    QCOMPARE(file.m_mapArrays.value("Points"), stored.m_baVertices);
    QCOMPARE(stored.m_lstChannels.size(), 5);
    for (int n = 0; n < 5; ++n)
    {
        QCOMPARE(file.m_mapArrays.value(stored.m_lstChannels.at(n)), stored.m_lstMeasured.at(n));
        QCOMPARE(file.m_mapTypes.value(stored.m_lstChannels.at(n)), QString("Float32"));
    }
    for (int n = 0; n < stored.m_baTriangles.size() / 4; ++n)
    {
        QCOMPARE(number<qint64>(file.m_mapArrays.value("connectivity"), n), static_cast<qint64>(number<quint32>(stored.m_baTriangles, n)));
    }
    QCOMPARE(number<qint64>(file.m_mapArrays.value("offsets"), file.m_nPolygons - 1), qint64(3) * file.m_nPolygons);
}

void tst_exporting::theVolumeIsThatOfTheResult_data()
{
    QTest::addColumn<QString>("strPattern");
    QTest::addColumn<QString>("strFile");
    QTest::addColumn<bool>("bAsStored");
    QTest::addColumn<QString>("strUnit");
    QTest::addColumn<double>("fDivisor");
    QTest::newRow("photons") << s_strSola << s_strSolaFile << false << "photons/sec" << 1.0;
    QTest::newRow("cells") << "SOLA PM20260302_L/*cells"
                           << "PM20260302_L/XML/SOLA_2.xml" << false << "cells" << 45.5;
    QTest::newRow("cells, as stored") << "SOLA PM20260302_L/*cells"
                                      << "PM20260302_L/XML/SOLA_2.xml" << true << "stored amount" << 1.0;
    QTest::newRow("yield") << "NOVA PM20260302_F/*mm"
                           << "PM20260302_F/XML/NOVA_1.xml" << false << QString::fromUtf8("pmol M-\xC2\xB9 cm-\xC2\xB9") << 1e-7;
    QTest::newRow("NOVA, cells") << "NOVA PM20260302_F/*cells"
                                 << "PM20260302_F/XML/NOVA_2.xml" << false << "cells" << double(4.55e-11F);
}

/// Each voxel stands at its place, everything else is 0.
void tst_exporting::theVolumeIsThatOfTheResult()
{
    QFETCH(QString, strPattern);
    QFETCH(QString, strFile);
    QFETCH(bool, bAsStored);
    QFETCH(QString, strUnit);
    QFETCH(double, fDivisor);
    const SProgramRun run = write(strPattern, "volume", bAsStored ? QStringList{"--as-stored"} : QStringList());
    QCOMPARE(run.m_strError, QString());
    const SVtkFile file = SVtkFile::of(path("volume.vti"));
    const QByteArray baValues = file.m_mapArrays.value(strUnit);
    const bool bSingle = fDivisor == 1.0;
    QCOMPARE(file.m_mapTypes.value(strUnit), QString(bSingle ? "Float32" : "Float64"));
    QCOMPARE(file.m_strSpacing, QString("0.6 0.6 0.6"));
    const QStringList lstExtent = file.m_strExtent.split(' ');
    const QStringList lstOrigin = file.m_strOrigin.split(' ');
    const qint64 anSize[3] = {lstExtent.value(1).toInt() + 1, lstExtent.value(3).toInt() + 1, lstExtent.value(5).toInt() + 1};
    QCOMPARE(static_cast<qint64>(baValues.size()), anSize[0] * anSize[1] * anSize[2] * (bSingle ? 4 : 8));
    const QByteArray baVoxels = document(strFile).m_baVoxels;
    QVERIFY(baVoxels.size() > 16 * 100);
    qint64 nFilled = 0;
    for (int n = 0; n < baVoxels.size() / 16; ++n)
    {
        qint64 anAt[3] = {};
        for (int nAxis = 0; nAxis < 3; ++nAxis)
        {
            const float fPlace = number<float>(baVoxels, 4 * n + nAxis);
            anAt[nAxis] = std::llround((static_cast<double>(fPlace) - lstOrigin.at(nAxis).toDouble()) / 0.6);
            QCOMPARE(static_cast<float>(lstOrigin.at(nAxis).toDouble() + static_cast<double>(anAt[nAxis]) * 0.6), fPlace); // the very bits
        }
        const int nCell = static_cast<int>((anAt[2] * anSize[1] + anAt[1]) * anSize[0] + anAt[0]);
        const double fAmount = static_cast<double>(number<float>(baVoxels, 4 * n + 3));
        QVERIFY((bSingle ? static_cast<double>(number<float>(baValues, nCell)) : number<double>(baValues, nCell)) == fAmount / fDivisor);
        nFilled += fAmount != 0.0 ? 1 : 0;
    }
    qint64 nNotEmpty = 0;
    for (int nCell = 0; nCell < anSize[0] * anSize[1] * anSize[2]; ++nCell)
    {
        nNotEmpty += (bSingle ? static_cast<double>(number<float>(baValues, nCell)) : number<double>(baValues, nCell)) != 0.0 ? 1 : 0;
    }
    QCOMPARE(nNotEmpty, nFilled);
}

void tst_exporting::theTableHasEveryVoxel()
{
    const QByteArray baVoxels = document(s_strSolaFile).m_baVoxels;
    const QList<QByteArray> lstLines = contentOf(path("sola.csv")).split('\n');
    QCOMPARE(lstLines.first(), QByteArray("x (mm),y (mm),z (mm),photons/sec\r"));
    QCOMPARE(lstLines.size(), baVoxels.size() / 16 + 2);
    for (int n = 0; n < baVoxels.size() / 16; ++n)
    {
        const QList<QByteArray> lstFields = lstLines.at(n + 1).trimmed().split(',');
        QCOMPARE(lstFields.size(), 4);
        for (int i = 0; i < 4; ++i)
        {
            QCOMPARE(of(lstFields.at(i).toFloat()), baVoxels.mid(16 * n + 4 * i, 4));
        }
    }
}

/// VTK itself where it is installed; the same is asked of the plain reading in any case.
void tst_exporting::vtkReadsTheSame()
{
    const SVtkFile surface = SVtkFile::of(path("sola.vtp"));
    const SVtkFile grid = SVtkFile::of(path("sola.vti"));
    const auto total = [](const QByteArray& baFloats)
    {
        double fTotal = 0.0;
        for (int n = 0; n < baFloats.size() / 4; ++n)
        {
            fTotal += static_cast<double>(number<float>(baFloats, n));
        }
        return fTotal;
    };
    QVERIFY(surface.m_nPoints > 200);
    QVERIFY(total(grid.m_mapArrays.value("photons/sec")) > 1e7);
    const QString strPython = pythonWithVtk();
    if (strPython.isEmpty())
    {
        return;
    }
    QProcess process;
    process.start(strPython, {"-c", s_acReadByVtk, path("sola.vtp"), path("sola.vti")});
    QVERIFY(process.waitForFinished(120000));
    const QStringList lstParts = QString::fromUtf8(process.readAllStandardOutput()).trimmed().split(" | ");
    QVERIFY2(lstParts.size() == 7, process.readAllStandardError().constData());
    QCOMPARE(lstParts.at(0), QStringLiteral("%1 %2").arg(surface.m_nPoints).arg(surface.m_nPolygons));
    const QStringList lstMaps = lstParts.at(1).split(' ');
    QCOMPARE(lstMaps.size(), 5);
    for (const QString& strMap : lstMaps)
    {
        QCOMPARE(strMap.section(':', 1).toDouble(), total(surface.m_mapArrays.value(strMap.section(':', 0, 0))));
    }
    const QStringList lstExtent = grid.m_strExtent.split(' ');
    const QStringList lstDimensions = lstParts.at(2).split(' ');
    const QStringList lstOrigin = lstParts.at(3).split(' ');
    for (int n = 0; n < 3; ++n)
    {
        QCOMPARE(lstDimensions.at(n).toInt(), lstExtent.at(2 * n + 1).toInt() + 1);
        QVERIFY(lstOrigin.at(n).toDouble() == grid.m_strOrigin.split(' ').at(n).toDouble());
        QVERIFY(lstParts.at(4).split(' ').at(n).toDouble() == 0.6);
    }
    QCOMPARE(lstParts.at(5), QString("photons/sec"));
    QCOMPARE(lstParts.at(6).toDouble(), total(grid.m_mapArrays.value("photons/sec")));
}

void tst_exporting::outAndInAgainIsTheSame_data()
{
    QTest::addColumn<QString>("strPattern");
    QTest::addColumn<QString>("strFile");
    QTest::addColumn<QStringList>("lstImport");
    QTest::addColumn<QString>("strImported");
    QTest::newRow("photons") << s_strSola << s_strSolaFile << QStringList{"--kind", "SOLA"} << "SOLA_1.xml";
    QTest::newRow("SOLA, cells") << "SOLA PM20260302_L/*cells"
                                 << "PM20260302_L/XML/SOLA_2.xml"
                                 << QStringList{"--kind", "SOLA", "--unit", "cells", "--unit-value", "45.5"} << "SOLA_1.xml";
    const QString strNames = "Image_1=Image 1,Image_2=Image 2,Image_3=Image 3,Image_4=Image 4";
    QTest::newRow("yield") << "NOVA PM20260302_F/*mm"
                           << "PM20260302_F/XML/NOVA_1.xml" << QStringList{"--kind", "NOVA", "--maps", strNames} << "NOVA_1.xml";
    QTest::newRow("NOVA, cells") << "NOVA PM20260302_F/*cells"
                                 << "PM20260302_F/XML/NOVA_2.xml"
                                 << QStringList{"--kind", "NOVA", "--maps", strNames, "--unit", "cells", "--unit-value", "4.55e-11"}
                                 << "NOVA_1.xml";
}

/// Every bit of the numbers; only voxels that have nothing in them may be missing.
void tst_exporting::outAndInAgainIsTheSame()
{
    QFETCH(QString, strPattern);
    QFETCH(QString, strFile);
    QFETCH(QStringList, lstImport);
    QFETCH(QString, strImported);
    QTemporaryDir objStudy;
    QCOMPARE(runProgram("ormexport",
                        {path("study"), "--load", strPattern, "--surface", path("again.ply"), "--volume", path("again.nrrd"), "--quiet"})
                 .m_nExit,
             0);
    const SProgramRun run = runProgram("ormimport", QStringList{"--surface", path("again.ply"), "--volume", path("again.nrrd"), "--subject",
                                                                "P", "--date", "2026-03-02", "--sequence", "S", "--out", objStudy.path()} +
                                                        lstImport);
    QCOMPARE(run.m_strError, QString());
    const SStoredDocument before = document(strFile);
    const SStoredDocument after = SStoredDocument::of(objStudy.filePath("S/XML/" + strImported));
    QByteArray baFilled;
    for (int n = 0; n < before.m_baVoxels.size() / 16; ++n)
    {
        baFilled += number<float>(before.m_baVoxels, 4 * n + 3) > 0.0F ? before.m_baVoxels.mid(16 * n, 16) : QByteArray();
    }
    QCOMPARE(after.m_baVoxels.size(), baFilled.size());
    QVERIFY(after.m_baVoxels == baFilled);
    QVERIFY(after.m_baVertices == before.m_baVertices);
    QVERIFY(after.m_baTriangles == before.m_baTriangles);
    QCOMPARE(after.m_lstMeasured, before.m_lstMeasured);
    QCOMPARE(after.m_lstChannels, before.m_lstChannels);
    QCOMPARE(after.m_strVoxelSize, before.m_strVoxelSize);
    QCOMPARE(after.m_mapCalibration.value("PerUnitValue"), before.m_mapCalibration.value("PerUnitValue"));
}

/// Where there is no VTK, a NIfTI of the same numbers by hand stands for what it writes.
void tst_exporting::whatVtkWritesComesIn()
{
    const QString strPython = pythonWithVtk();
    QStringList lstVolumes = {path("vtk.nii.gz"), path("vtk.mha")};
    if (strPython.isEmpty())
    {
        const SVtkFile grid = SVtkFile::of(path("sola.vti"));
        FormatBytes::SNifti nifti;
        nifti.m_nQform = 1;
        for (int n = 0; n < 3; ++n)
        {
            nifti.m_anSize[n] = static_cast<std::int16_t>(grid.m_strExtent.split(' ').at(2 * n + 1).toInt() + 1);
            nifti.m_afSpacing[n] = 0.6F;
            nifti.m_afOffset[n] = grid.m_strOrigin.split(' ').at(n).toFloat();
        }
        QFile file(lstVolumes.takeFirst());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(FormatBytes::packed(nifti.header() + grid.m_mapArrays.value("photons/sec")));
        lstVolumes = QStringList{file.fileName()};
        QCOMPARE(runProgram("ormexport", {path("study"), "--load", s_strSola, "--surface", path("vtk.ply")}).m_nExit, 0);
    }
    else
    {
        QProcess process;
        process.start(strPython, {"-c", s_acWrittenByVtk, path("sola.vtp"), path("sola.vti"), path("vtk")});
        QVERIFY(process.waitForFinished(120000));
        QVERIFY2(process.exitCode() == 0, process.readAllStandardError().constData());
        QTemporaryDir objStudy;
        const SProgramRun run =
            runProgram("ormimport", {"--surface", path("vtk.stl"), "--volume", path("vtk.mha"), "--kind", "SOLA", "--subject", "P",
                                     "--date", "2026-03-02", "--sequence", "S", "--out", objStudy.path()});
        QCOMPARE(run.m_strError, QString());
        QCOMPARE(SStoredDocument::of(objStudy.filePath("S/XML/SOLA_1.xml")).m_baVertices.size(),
                 document(s_strSolaFile).m_baVertices.size());
    }
    for (const QString& strVolume : qAsConst(lstVolumes))
    {
        QTemporaryDir objStudy;
        const SProgramRun run = runProgram("ormimport", {"--surface", path("vtk.ply"), "--volume", strVolume, "--kind", "SOLA", "--subject",
                                                         "P", "--date", "2026-03-02", "--sequence", "S", "--out", objStudy.path()});
        QCOMPARE(run.m_strError, QString());
        const SStoredDocument before = document(s_strSolaFile);
        const SStoredDocument after = SStoredDocument::of(objStudy.filePath("S/XML/SOLA_1.xml"));
        QVERIFY(after.m_baVertices == before.m_baVertices);
        QVERIFY(after.m_baTriangles == before.m_baTriangles);
        QCOMPARE(after.m_baVoxels.size(), before.m_baVoxels.size());
        for (int n = 0; n < before.m_baVoxels.size() / 4; ++n)
        {
            const float fAfter = number<float>(after.m_baVoxels, n);
            const float fBefore = number<float>(before.m_baVoxels, n);
            // MetaImage has its places as text of few digits; amounts are the very same.
            QVERIFY2(n % 4 == 3 ? fAfter == fBefore : std::abs(fAfter - fBefore) < 1e-4F, qPrintable(QString::number(n)));
        }
    }
}

/// What the tool says of a result and of the same one after it went out and in.
void tst_exporting::theToolShowsTheSameNumbers()
{
    QCOMPARE(
        runProgram("ormexport", {path("study"), "--load", s_strSola, "--surface", path("tool.ply"), "--volume", path("tool.nrrd")}).m_nExit,
        0);
    QCOMPARE(runProgram("ormimport", {"--surface", path("tool.ply"), "--volume", path("tool.nrrd"), "--kind", "SOLA", "--subject", "P",
                                      "--date", "2026-03-02", "--sequence", "S", "--name", "imported", "--out", path("imported")})
                 .m_nExit,
             0);
    QJsonObject aobjResults[2];
    const QStringList lstStudies = {path("study"), path("imported")};
    const QStringList lstPatterns = {s_strSola, "SOLA S/imported"};
    for (int n = 0; n < 2; ++n)
    {
        const SProgramRun run =
            runProgram("ormcompare", {lstStudies.at(n), "--load", lstPatterns.at(n), "--report", path("report.json"), "--size", "200x200"});
        QVERIFY2(run.m_nExit == 0, qPrintable(run.m_strError));
        aobjResults[n] = QJsonDocument::fromJson(contentOf(path("report.json"))).object().value("results").toArray().at(0).toObject();
    }
    QVERIFY(aobjResults[0].value("total").toDouble() > 1e7);
    for (const char* pKey : {"kind", "unit", "vertices", "triangles", "voxels", "voxel_size_mm", "value_min", "value_max", "total",
                             "wavelengths", "final_voxel_size_mm"})
    {
        QVERIFY2(aobjResults[0].contains(pKey), pKey);
        QCOMPARE(aobjResults[1].value(pKey), aobjResults[0].value(pKey));
    }
}

void tst_exporting::allResultsIntoAFolder()
{
    const SProgramRun run = runProgram("ormexport", {path("study/PM20260302_L"), path("study/PM20260302_F"), "--out", path("all/of it")});
    QCOMPARE(run.m_strError, QString());
    QCOMPARE(QDir(path("all/of it")).entryList(QDir::Files),
             (QStringList{"NOVA_PM20260302_F_Day_0,_0.6_mm,_cells.csv", "NOVA_PM20260302_F_Day_0,_0.6_mm,_cells.vti",
                          "NOVA_PM20260302_F_Day_0,_0.6_mm,_cells.vtp", "NOVA_PM20260302_F_Day_0,_0.6_mm.csv",
                          "NOVA_PM20260302_F_Day_0,_0.6_mm.vti", "NOVA_PM20260302_F_Day_0,_0.6_mm.vtp",
                          "SOLA_PM20260302_L_Day_0,_0.6_mm,_cells.csv", "SOLA_PM20260302_L_Day_0,_0.6_mm,_cells.vti",
                          "SOLA_PM20260302_L_Day_0,_0.6_mm,_cells.vtp", "SOLA_PM20260302_L_Day_0,_0.6_mm.csv",
                          "SOLA_PM20260302_L_Day_0,_0.6_mm.vti", "SOLA_PM20260302_L_Day_0,_0.6_mm.vtp"}));
    QCOMPARE(contentOf(path("all/of it/SOLA_PM20260302_L_Day_0,_0.6_mm.vti")), contentOf(path("sola.vti")));
}

void tst_exporting::whatCannotBeWrittenIsToldAndLeavesNothing_data()
{
    QTest::addColumn<QStringList>("lstArguments"); // %1: the folder of the test
    QTest::addColumn<QString>("strReason");
    const QStringList lstFiles = {"--surface", "%1/none.vtp", "--volume", "%1/none.vti"};
    QTest::newRow("no such result") << QStringList{"%1/study", "--load", "SOLA none/*"} + lstFiles
                                    << "No saved result matches \"SOLA none/*\".";
    QTest::newRow("several results")
        << QStringList{"%1/study", "--load", "SOLA *mm"} + lstFiles
        << "2 saved results match, among them \"SOLA PM20260302_L/Day 0, 0.6 mm\" and \"SOLA PM20260305_L/Day 3, 0.6 mm\": choose "
           "one by --load, or write all by --out.";
    QTest::newRow("no study") << QStringList{"%1/nothing"} + lstFiles << "There is no saved result under %1/nothing.";
    QTest::newRow("damaged result") << QStringList{"%1/damaged", "--load", "*mm"} + lstFiles
                                    << "SOLA PM20260302_L/Day 0, 0.6 mm: %1/damaged/PM20260302_L/XML/SOLA_1.xml: ";
    QTest::newRow("no document")
        << QStringList{"%1/damaged", "--load", "*cells"} + lstFiles
        << "SOLA PM20260302_L/Day 0, 0.6 mm, cells: %1/damaged/PM20260302_L/XML/SOLA_2.xml: No such file or directory.";
    QTest::newRow("no folder")
        << QStringList{"%1/study", "--load", s_strSola, "--surface", "%1/none.vtp", "--volume", "%1/no folder/none.vti"}
        << "SOLA PM20260302_L/Day 0, 0.6 mm: %1/no folder/none.vti: ";
    QTest::newRow("folder is a file") << QStringList{"%1/study", "--out", "%1/sola.csv"} << "%1/sola.csv: the folder cannot be made.";
}

void tst_exporting::whatCannotBeWrittenIsToldAndLeavesNothing()
{
    QFETCH(QStringList, lstArguments);
    QFETCH(QString, strReason);
    const QString strFolder = m_objFolder.path();
    if (!QDir(path("damaged")).exists())
    {
        QVERIFY(QDir().mkpath(path("damaged/PM20260302_L/XML")));
        QVERIFY(QDir().mkpath(path("damaged/PM20260302_L/PM20260302_L_001")));
        for (const QString strName : {"SequenceInfo.txt", "XML/SOLA.txt", "PM20260302_L_001/ClickInfo.txt"})
        {
            QVERIFY(QFile::copy(path("study/PM20260302_L/" + strName), path("damaged/PM20260302_L/" + strName)));
        }
        QFile file(path("damaged/PM20260302_L/XML/SOLA_1.xml"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(contentOf(path("study/" + s_strSolaFile)).replace("Total.Vertices=\"", "Total.Vertices=\"9"));
    }
    const SProgramRun run = runProgram("ormexport", lstArguments.replaceInStrings("%1", strFolder));
    QVERIFY2(run.m_strError.startsWith("ormexport: " + strReason.replace("%1", strFolder)), qPrintable(run.m_strError));
    QCOMPARE(run.m_nExit, 1);
    QVERIFY(!QFileInfo::exists(path("none.vtp")));
    QVERIFY(!QFileInfo::exists(path("none.vti")));
}

void tst_exporting::wrongUsageIsRefused_data()
{
    QTest::addColumn<QStringList>("lstArguments");
    QTest::addColumn<QString>("strReason");
    QTest::newRow("no folder") << QStringList{"--out", "x"} << "At least one folder is needed.";
    QTest::newRow("nothing to write") << QStringList{"study"}
                                      << "Nothing is to be written: --surface, --volume, --voxels or --out is needed.";
    QTest::newRow("surface of another format") << QStringList{"study", "--surface", "a.stl"}
                                               << "--surface takes a file whose name ends in .vtp or .ply.";
    QTest::newRow("volume of another format") << QStringList{"study", "--volume", "a.nii"}
                                              << "--volume takes a file whose name ends in .vti or .nrrd.";
    QTest::newRow("no pattern") << QStringList{"study", "--out", "x", "--load", "[z-a]"} << "--load [z-a] is no pattern.";
    QTest::newRow("unknown option") << QStringList{"study", "--nonsense"} << "Unknown option 'nonsense'.";
}

void tst_exporting::wrongUsageIsRefused()
{
    QFETCH(QStringList, lstArguments);
    QFETCH(QString, strReason);
    const SProgramRun run = runProgram("ormexport", lstArguments);
    QCOMPARE(run.m_strError, "ormexport: " + strReason + "\nTry ormexport --help.\n");
    QCOMPARE(run.m_nExit, 2);
    QVERIFY(!QDir("x").exists());
}

QTEST_GUILESS_MAIN(tst_exporting)
#include "tst_exporting.moc"
