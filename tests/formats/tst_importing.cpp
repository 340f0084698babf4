#include "FormatBytes.h"
#include "ProgramRun.h"
#include "SequenceKind.h"
#include "StoredDocument.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>

namespace
{
using FormatBytes::of;
using FormatBytes::SNifti;

/// A cube of 20 mm around 0, 0, 0 with two maps.
QByteArray cube()
{
    QByteArray ba = "ply\nformat ascii 1.0\nelement vertex 8\nproperty float x\nproperty float y\nproperty float z\nproperty float d560\n"
                    "property float d580\nelement face 6\nproperty list uchar int vertex_indices\nend_header\n";
    for (int n = 0; n < 8; ++n)
    {
        ba += QByteArray(n & 1 ? "10 " : "-10 ") + (n & 2 ? "10 " : "-10 ") + (n & 4 ? "10 " : "-10 ") + QByteArray::number(0.1 * n) + ' ' +
              QByteArray::number(1.5 * n) + '\n';
    }
    return ba + "4 0 2 3 1\n4 4 5 7 6\n4 0 1 5 4\n4 2 6 7 3\n4 0 4 6 2\n4 1 3 7 5\n";
}

/// 2 x 3 x 4 voxels of 0.5 mm with 0.1 to 2.4.
QByteArray volume()
{
    SNifti nifti;
    std::fill_n(nifti.m_afSpacing, 3, 0.5F);
    QByteArray ba = nifti.header();
    for (int n = 1; n <= 24; ++n)
    {
        ba += of(0.1F * static_cast<float>(n));
    }
    return ba;
}

/// Names and contents of everything below a folder; what a link points at is not looked at.
QMap<QString, QByteArray> contents(const QString& strFolder)
{
    QMap<QString, QByteArray> mapContents;
    QDirIterator files(strFolder, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (files.hasNext())
    {
        QFile file(files.next());
        const bool bFile = QFileInfo(file).isFile() && file.open(QIODevice::ReadOnly);
        mapContents.insert(QDir(strFolder).relativeFilePath(file.fileName()), bFile ? file.readAll() : QByteArray("folder"));
    }
    return mapContents;
}
} // namespace

/// ormimport, from the command line to the files that it writes.
class tst_importing : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void aSequenceIsMade();
    void theNumbersAreThoseOfTheFiles();
    void aSecondResultJoinsTheSequence();
    void anIndexByHandStaysAsItIs();
    void novaIsListedAsNova();
    void unitsAreStoredAsTheToolReadsThem_data();
    void unitsAreStoredAsTheToolReadsThem();
    void mapsAreChosen_data();
    void mapsAreChosen();
    void aSurfaceWithoutMaps();
    void unitsOfLength();
    void dataFilesBesideTheirHeader();
    void theTerminalTellsWhatWasChanged();
    void wrongUsageIsRefused_data();
    void wrongUsageIsRefused();
    void whatFailsLeavesNothing_data();
    void whatFailsLeavesNothing();
    void importsAtTheSameTime();
    void helpSaysWhatTheNumbersAre();

private:
    QString path(const QString& strName) const { return m_pFolder->filePath(strName); }
    void write(const QString& strName, const QByteArray& baContent) const
    {
        QFile file(path(strName));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(baContent) == baContent.size());
    }
    /// The usual arguments; an option among those given takes the place of the usual one.
    QStringList arguments(const QStringList& lstMore) const
    {
        QStringList lstAll;
        for (const auto& option : {std::pair<QString, QString>{"--surface", path("cube.ply")},
                                   {"--volume", path("source.nii")},
                                   {"--kind", "SOLA"},
                                   {"--subject", "Mouse 7"},
                                   {"--date", "2026-08-01"},
                                   {"--out", path("study")}})
        {
            if (!lstMore.contains(option.first))
            {
                lstAll << option.first << option.second;
            }
        }
        return lstAll + lstMore;
    }
    SProgramRun import(const QStringList& lstMore = {}) const { return runProgram("ormimport", arguments(lstMore)); }
    SStoredDocument document(const QString& strSequence = "Mouse_7_20260801_L", const QString& strFile = "SOLA_1.xml") const
    {
        return SStoredDocument::of(path("study/" + strSequence + "/XML/" + strFile));
    }

    std::unique_ptr<QTemporaryDir> m_pFolder;
};

void tst_importing::init()
{
    m_pFolder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_pFolder->isValid());
    write("cube.ply", cube());
    write("source.nii", volume());
}

void tst_importing::aSequenceIsMade()
{
    const SProgramRun run = import();
    QCOMPARE(run.m_strError, QString());
    QCOMPARE(run.m_nExit, 0);
    const QMap<QString, QByteArray> mapStudy = contents(path("study"));
    QCOMPARE(mapStudy.value("Mouse_7_20260801_L/SequenceInfo.txt"),
             QByteArray("[Sequence Information]\nSequence=Mouse_7_20260801_L\nSubject=Mouse 7\nDate Time=2026-08-01\n\n[Click Numbers]\n"
                        "Count=2\n1=Mouse_7_20260801_L_001\n2=Mouse_7_20260801_L_002\n"));
    QCOMPARE(mapStudy.value("Mouse_7_20260801_L/XML/SOLA.txt"), QByteArray("[SOLA_1]\nMenuName=source\nFileName=SOLA_1.xml\n"));
    QVERIFY(mapStudy.value("Mouse_7_20260801_L/Mouse_7_20260801_L_002/ClickInfo.txt").contains("Image Subtype=luminescent"));
    QCOMPARE(mapStudy.size(), 9); // four folders and the sequence's own, four files
    QCOMPARE(SequenceKind::ofFile(path("study/Mouse_7_20260801_L/SequenceInfo.txt")), QString("SOLA"));
    QVERIFY(QFileInfo(path("study/Mouse_7_20260801_L")).permission(QFile::ReadGroup | QFile::ExeGroup));
}

void tst_importing::theNumbersAreThoseOfTheFiles()
{
    QCOMPARE(import().m_nExit, 0);
    const SStoredDocument stored = document();
    QByteArray baVoxels;
    int n = 0;
    for (int nZ = 0; nZ < 4; ++nZ)
    {
        for (int nY = 0; nY < 3; ++nY)
        {
            for (int nX = 0; nX < 2; ++nX)
            {
                baVoxels += of(0.5F * static_cast<float>(nX)) + of(0.5F * static_cast<float>(nY)) + of(0.5F * static_cast<float>(nZ)) +
                            of(0.1F * static_cast<float>(++n));
            }
        }
    }
    QCOMPARE(stored.m_baVoxels, baVoxels);
    QCOMPARE(stored.m_strVoxelSize, QString("0.5"));
    QCOMPARE(stored.m_baVertices.size(), 8 * 12);
    QCOMPARE(stored.m_baVertices.left(24), of(-10.0F) + of(-10.0F) + of(-10.0F) + of(10.0F) + of(-10.0F) + of(-10.0F));
    QCOMPARE(stored.m_baTriangles.size(), 12 * 12);
    QCOMPARE(stored.m_lstChannels, (QStringList{"d560", "d580"}));
    QCOMPARE(stored.m_lstMeasured.value(0).mid(28), of(0.7F));
    QCOMPARE(stored.m_lstMeasured.value(1).mid(28), of(10.5F));
    QVERIFY(stored.m_mapCalibration.isEmpty());
    QCOMPARE(stored.m_mapTable.value("Final voxel size (mm)"), QString("0.5"));
    QCOMPARE(stored.m_mapTable.value("Imported volume"), QString("source.nii"));
}

void tst_importing::aSecondResultJoinsTheSequence()
{
    QCOMPARE(import({"--sequence", "S1", "--name", "first"}).m_nExit, 0);
    QMap<QString, QByteArray> mapBefore = contents(path("study"));
    QCOMPARE(import({"--sequence", "S1", "--name", "second", "--maps", "d580"}).m_nExit, 0);
    QMap<QString, QByteArray> mapAfter = contents(path("study"));
    QCOMPARE(mapAfter.take("S1/XML/SOLA.txt"), mapBefore.take("S1/XML/SOLA.txt") + "[SOLA_2]\nMenuName=second\nFileName=SOLA_2.xml\n");
    QVERIFY(!mapAfter.take("S1/XML/SOLA_2.xml").isEmpty());
    QCOMPARE(mapAfter, mapBefore);
    QCOMPARE(document("S1", "SOLA_2.xml").m_lstChannels, QStringList{"d580"});

    // The sequence is found wherever it lies in the study.
    QVERIFY(QDir(path("study")).mkpath("group/cage"));
    QVERIFY(QDir().rename(path("study/S1"), path("study/group/cage/other name")));
    QCOMPARE(import({"--sequence", "S1", "--name", "third"}).m_nExit, 0);
    QVERIFY(QFileInfo::exists(path("study/group/cage/other name/XML/SOLA_3.xml")));
    QVERIFY(!QFileInfo::exists(path("study/S1")));
}

void tst_importing::anIndexByHandStaysAsItIs()
{
    QCOMPARE(import({"--sequence", "S1"}).m_nExit, 0);
    const QByteArray baByHand = "\xEF\xBB\xBF# by hand\r\n[SOLA_7]\r\nMenuName=a\r\nFileName=x.xml\r\n[SOLA_2]"; // no line end
    write("study/S1/XML/SOLA.txt", baByHand);
    write("study/S1/XML/SOLA_3.xml", "not in the index");
    QCOMPARE(import({"--sequence", "S1"}).m_nExit, 0); // SOLA_1 is there as a file, 2 in the index, 3 as a file again
    const QMap<QString, QByteArray> mapStudy = contents(path("study"));
    QCOMPARE(mapStudy.value("S1/XML/SOLA.txt"), baByHand + "\n[SOLA_4]\nMenuName=source\nFileName=SOLA_4.xml\n");
    QCOMPARE(mapStudy.value("S1/XML/SOLA_3.xml"), QByteArray("not in the index"));
}

void tst_importing::novaIsListedAsNova()
{
    const SProgramRun run = import({"--kind", "NOVA", "--emission", "720", "--excitation", "675"});
    QCOMPARE(run.m_nExit, 0);
    QCOMPARE(SequenceKind::ofFile(path("study/Mouse_7_20260801_F/SequenceInfo.txt")), QString("NOVA"));
    const QByteArray baClick = contents(path("study")).value("Mouse_7_20260801_F/Mouse_7_20260801_F_001/ClickInfo.txt");
    QVERIFY(baClick.contains("Emission Filter=720\nExcitation Filter=675\n"));
    QCOMPARE(document("Mouse_7_20260801_F", "NOVA_1.xml").m_lstChannels, (QStringList{"d560", "d580"}));
}

void tst_importing::unitsAreStoredAsTheToolReadsThem_data()
{
    QTest::addColumn<QStringList>("lstOptions");
    QTest::addColumn<double>("fFactor");
    QTest::addColumn<QString>("strType");
    QTest::newRow("photons") << QStringList{"--unit", "photons/sec"} << 1.0 << "";
    QTest::newRow("cells") << QStringList{"--unit", "cells", "--unit-value", "45.5"} << 45.5 << "Cells";
    QTest::newRow("cells, as stored") << QStringList{"--unit", "cells", "--unit-value", "45.5", "--as-stored"} << 1.0 << "Cells";
    QTest::newRow("NOVA") << QStringList{"--kind", "NOVA"} << 1e-7 << "";
    QTest::newRow("NOVA, by name") << QStringList{"--kind", "NOVA", "--unit", "pmol M-1 cm-1"} << 1e-7 << "";
    QTest::newRow("NOVA, as stored") << QStringList{"--kind", "NOVA", "--as-stored"} << 1.0 << "";
    QTest::newRow("NOVA, cells") << QStringList{"--kind", "NOVA", "--unit", "cells", "--unit-value", "0.25"} << 0.25 << "Cells";
    QTest::newRow("NOVA, pmol") << QStringList{"--kind", "NOVA", "--unit", "pmol", "--unit-value", "0.5"} << 0.5 * 6.022e11
                                << "Dye molecules";
}

void tst_importing::unitsAreStoredAsTheToolReadsThem()
{
    QFETCH(QStringList, lstOptions);
    QFETCH(double, fFactor);
    QFETCH(QString, strType);
    const SProgramRun run = import(lstOptions + QStringList{"--sequence", "S1"});
    QCOMPARE(run.m_strError, QString());
    const SStoredDocument stored = document("S1", lstOptions.contains("NOVA") ? "NOVA_1.xml" : "SOLA_1.xml");
    QCOMPARE(stored.m_baVoxels.size(), 24 * 16);
    for (int n = 0; n < 24; ++n)
    {
        const double fRead = static_cast<double>(0.1F * static_cast<float>(n + 1));
        QCOMPARE(stored.m_baVoxels.mid(16 * n + 12, 4), of(static_cast<float>(fRead * fFactor)));
    }
    QCOMPARE(stored.m_mapCalibration.value("MeasurementType"), strType);
    QCOMPARE(stored.m_mapCalibration.value("PerUnitValue"),
             strType.isEmpty() ? QString() : lstOptions.at(lstOptions.indexOf("--unit-value") + 1));
}

void tst_importing::mapsAreChosen_data()
{
    QTest::addColumn<QString>("strMaps");
    QTest::addColumn<QStringList>("lstNames");
    QTest::addColumn<int>("nFirst"); // of the maps of the file: which one comes first
    QTest::newRow("one") << "d580" << QStringList{"d580"} << 1;
    QTest::newRow("another order") << "d580,d560" << QStringList{"d580", "d560"} << 1;
    QTest::newRow("other names") << "d580=580, d560 = Day 0" << QStringList{"580", "Day 0"} << 1;
    QTest::newRow("names alone") << "560,580" << QStringList{"560", "580"} << 0;
    QTest::newRow("one twice") << "d560=a,d560=b" << QStringList{"a", "b"} << 0;
}

void tst_importing::mapsAreChosen()
{
    QFETCH(QString, strMaps);
    QFETCH(QStringList, lstNames);
    QFETCH(int, nFirst);
    const SProgramRun run = import({"--maps", strMaps});
    QCOMPARE(run.m_strError, QString());
    const SStoredDocument stored = document();
    QCOMPARE(stored.m_lstChannels, lstNames);
    QCOMPARE(stored.m_lstMeasured.value(0).mid(28), of(nFirst == 0 ? 0.7F : 10.5F));
}

void tst_importing::aSurfaceWithoutMaps()
{
    write("a.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    QVERIFY(import({"--surface", path("a.obj"), "--sequence", "S1"})
                .m_strOut.contains("The surface has no density map: it got \"none\" without values."));
    QCOMPARE(document("S1").m_lstChannels, QStringList{"none"});
    QCOMPARE(import({"--surface", path("a.obj"), "--sequence", "S2", "--maps", "560,580"}).m_nExit, 0);
    QCOMPARE(document("S2").m_lstChannels, (QStringList{"560", "580"}));
    float fValue = 0.0F;
    std::memcpy(&fValue, document("S2").m_lstMeasured.value(1).constData() + 8, 4);
    QVERIFY(std::isnan(fValue));
}

void tst_importing::unitsOfLength()
{
    QCOMPARE(import({"--surface-unit", "cm"}).m_nExit, 0);
    QCOMPARE(document().m_baVertices.left(4), of(-100.0F));
}

void tst_importing::dataFilesBesideTheirHeader()
{
    const QByteArray baHeader = "NDims = 3\nDimSize = 2 1 1\nElementSpacing = 1 1 1\nElementType = MET_FLOAT\nElementDataFile = ";
    write("inside.raw", of(3.0F) + of(4.0F));
    write("a.mhd", baHeader + "inside.raw\n");
    QCOMPARE(import({"--volume", path("a.mhd")}).m_nExit, 0);
    QCOMPARE(document().m_baVoxels.size(), 32);
    // A header must not make other files of the machine part of a study.
    QVERIFY(QDir(m_pFolder->path()).mkdir("headers"));
    for (const QString& strName : {path("inside.raw"), QString("../inside.raw")})
    {
        write("headers/a.mhd", baHeader + strName.toUtf8() + '\n');
        const SProgramRun run = import({"--volume", path("headers/a.mhd"), "--name", "b"});
        QCOMPARE(run.m_nExit, 1);
        QVERIFY2(run.m_strError.contains("line 5: "), qPrintable(run.m_strError));
    }
    SNifti nifti;
    nifti.m_bTwoFiles = true;
    write("b.hdr", nifti.header());
    write("b.img", volume().mid(352));
    QCOMPARE(import({"--volume", path("b.hdr")}).m_nExit, 0);
    QVERIFY(QFile::remove(path("b.img")));
    QVERIFY(import({"--volume", path("b.hdr"), "--name", "c"}).m_strError.contains("b.img in "));
}

void tst_importing::theTerminalTellsWhatWasChanged()
{
    SNifti nifti;
    nifti.m_nUnits = 0;
    nifti.m_afSpacing[2] = 2.0F;
    QByteArray ba = nifti.header();
    for (int n = 0; n < 24; ++n)
    {
        ba += of(n == 0 ? -5.0F : n == 1 ? std::numeric_limits<float>::quiet_NaN() : 1.0F);
    }
    write("a.nii", ba);
    const SProgramRun run = import({"--volume", path("a.nii"), "--kind", "NOVA"});
    QCOMPARE(run.m_nExit, 0);
    for (const char* pText :
         {"The volume names no unit of length: millimetres were taken.\n", "1 voxels whose number is NaN were taken for empty.\n",
          "1 voxels with a number below 0 (-5 in all) were taken for empty.\n",
          "The volume was brought from voxels of 1 x 1 x 2 mm onto a cubic grid of 1 mm; its total was kept.\n",
          "Source: 44 voxels of 1 mm, 22 pmol M-\xC2\xB9 cm-\xC2\xB9 in all\n",
          "The result stores amounts that are 1e-07 times as large; the tool divides by that.\n"})
    {
        QVERIFY2(run.m_strOut.contains(QString::fromUtf8(pText)), qPrintable(run.m_strOut));
    }
    QVERIFY(document("Mouse_7_20260801_F", "NOVA_1.xml").m_mapTable.value("Imported volume") == "a.nii, resampled");
    QCOMPARE(import({"--volume", path("a.nii"), "--quiet"}).m_strOut, QString());
    write("far.obj", "v 100 0 0\nv 101 0 0\nv 100 1 0\nf 1 2 3\n");
    QVERIFY(import({"--surface", path("far.obj"), "--name", "far"}).m_strOut.contains("All of the source lies beside the surface along x"));
}

void tst_importing::wrongUsageIsRefused_data()
{
    QTest::addColumn<QStringList>("lstOptions");
    QTest::addColumn<QString>("strReason");
    QTest::newRow("no subject") << QStringList{"--subject", ""} << "--subject is needed.";
    QTest::newRow("subject of two lines") << QStringList{"--subject", "a\nb"} << "--subject takes a name of up to 100 characters.";
    QTest::newRow("no date") << QStringList{"--date", "1.8.2026"} << "--date takes a day as YYYY-MM-DD.";
    QTest::newRow("date that is none") << QStringList{"--date", "2026-02-30"} << "--date takes a day as YYYY-MM-DD.";
    QTest::newRow("another kind") << QStringList{"--kind", "sola"} << "--kind takes SOLA or NOVA.";
    QTest::newRow("sequence leads out") << QStringList{"--sequence", "../x"}
                                        << "--sequence takes letters, digits, '.', '-' and '_', up to 100 of them, and no '.' first.";
    QTest::newRow("sequence hidden") << QStringList{"--sequence", ".x"}
                                     << "--sequence takes letters, digits, '.', '-' and '_', up to 100 of them, and no '.' first.";
    QTest::newRow("name of blanks") << QStringList{"--name", " "} << "--name takes a name of up to 100 characters.";
    QTest::newRow("surface of another format") << QStringList{"--surface", "a.vtk"}
                                               << "--surface takes a file whose name ends in .ply, .stl or .obj.";
    QTest::newRow("volume of another format")
        << QStringList{"--volume", "a.dcm"} << "--volume takes a file whose name ends in .nii, .nii.gz, .hdr, .mha, .mhd, .nrrd or .nhdr.";
    QTest::newRow("unit of the other kind") << QStringList{"--unit", "pmol", "--unit-value", "1"}
                                            << "--unit takes one of: photons/sec, cells.";
    QTest::newRow("cells without a value") << QStringList{"--unit", "cells"} << "--unit cells needs a --unit-value.";
    QTest::newRow("value without cells") << QStringList{"--unit-value", "3"} << "--unit-value goes with --unit cells or pmol alone.";
    QTest::newRow("value 0") << QStringList{"--unit", "cells", "--unit-value", "0"} << "--unit-value takes a number above 0.";
    QTest::newRow("value is no number") << QStringList{"--unit", "cells", "--unit-value", "4,5"} << "--unit-value takes a number above 0.";
    QTest::newRow("voxel size") << QStringList{"--voxel-size", "nan"} << "--voxel-size takes millimetres from 0.001 to 100.";
    QTest::newRow("space") << QStringList{"--space", "RAI"} << "--space takes RAS or LPS.";
    QTest::newRow("unit of length") << QStringList{"--surface-unit", "inch"} << "--surface-unit takes m, cm, mm or um.";
    QTest::newRow("filter of SOLA")
        << QStringList{"--emission", "620"}
        << "--emission and --excitation go with --kind NOVA; the wavelengths of a SOLA result are the names of its maps.";
    QTest::newRow("no maps") << QStringList{"--maps", ","} << "--maps takes names with commas between them.";
    QTest::newRow("something more") << QStringList{"more"} << "\"more\" belongs to no option.";
    QTest::newRow("unknown option") << QStringList{"--nonsense"} << "Unknown option 'nonsense'.";
}

void tst_importing::wrongUsageIsRefused()
{
    QFETCH(QStringList, lstOptions);
    QFETCH(QString, strReason);
    const SProgramRun run = import(lstOptions);
    QCOMPARE(run.m_strError, "ormimport: " + strReason + "\nTry ormimport --help.\n");
    QCOMPARE(run.m_nExit, 2);
    QVERIFY(!QFileInfo::exists(path("study")));
}

void tst_importing::whatFailsLeavesNothing_data()
{
    QTest::addColumn<QString>("strDamage");
    QTest::addColumn<QStringList>("lstOptions");
    QTest::addColumn<QString>("strReason"); // %1: the folder of the test
    QTest::newRow("no surface") << "" << QStringList{"--surface", "%1/none.ply"} << "%1/none.ply: No such file or directory.";
    QTest::newRow("surface is a folder") << "folder" << QStringList{"--surface", "%1/folder.ply"} << "%1/folder.ply: not a regular file.";
    QTest::newRow("surface is a pipe") << "pipe" << QStringList{"--surface", "%1/pipe.ply"} << "%1/pipe.ply: not a regular file.";
    QTest::newRow("volume too large") << "large" << QStringList{"--volume", "%1/large.nii"}
                                      << "%1/large.nii: too large: 1073741825 bytes, of at most 1073741824.";
    QTest::newRow("damaged surface") << "surface" << QStringList{} << "%1/cube.ply: line 14: vertex 2 has no number for \"y\".";
    QTest::newRow("damaged volume") << "volume" << QStringList{} << "%1/source.nii: byte 352: the numbers take 96 bytes, there are 95.";
    QTest::newRow("no such map") << "" << QStringList{"--maps", "d560,d600"}
                                 << "%1/cube.ply: vertices: there is no density map \"d600\": it has d560, d580.";
    QTest::newRow("map twice") << "" << QStringList{"--maps", "d560=a,d580=a"}
                               << "%1/cube.ply: vertices: the name \"a\" of a density map occurs twice.";
    QTest::newRow("too far for its size") << "far" << QStringList{}
                                          << "%1/source.nii: voxels: they lie too far from 0, 0, 0 for their size";
    QTest::newRow("name is there") << "" << QStringList{"--sequence", "THERE", "--name", "First"}
                                   << "%1/study/THERE/XML/SOLA.txt: there is a result \"First\" already; give another --name.";
    QTest::newRow("another subject") << "" << QStringList{"--sequence", "THERE", "--subject", "Mouse 8"}
                                     << "%1/study/THERE/SequenceInfo.txt: its subject is \"Mouse 7\", not \"Mouse 8\".";
    QTest::newRow("another date") << "" << QStringList{"--sequence", "THERE", "--date", "2026-08-02"}
                                  << "%1/study/THERE/SequenceInfo.txt: its date is \"2026-08-01\", not \"2026-08-02\".";
    QTest::newRow("another kind")
        << "" << QStringList{"--sequence", "THERE", "--kind", "NOVA"}
        << "%1/study/THERE/SequenceInfo.txt: it is a sequence of the kind SOLA, in which a NOVA result would not be listed.";
    QTest::newRow("something else there") << "" << QStringList{"--sequence", "notes"} << "%1/study/notes: it exists and is no sequence.";
    QTest::newRow("study is a file") << "" << QStringList{"--out", "%1/cube.ply"} << "%1/cube.ply: the folder cannot be made.";
    QTest::newRow("no place for a study") << "" << QStringList{"--out", "/proc/none"} << "/proc/none: the folder cannot be made.";
}

void tst_importing::whatFailsLeavesNothing()
{
    QFETCH(QString, strDamage);
    QFETCH(QStringList, lstOptions);
    QFETCH(QString, strReason);
    QCOMPARE(import({"--sequence", "THERE", "--name", "first"}).m_nExit, 0);
    QVERIFY(QDir(path("study")).mkdir("notes"));
    if (strDamage == "folder")
    {
        QVERIFY(QDir(m_pFolder->path()).mkdir("folder.ply"));
    }
    else if (strDamage == "pipe")
    {
        QCOMPARE(mkfifo(QFile::encodeName(path("pipe.ply")).constData(), 0600), 0);
    }
    else if (strDamage == "large")
    {
        QFile file(path("large.nii"));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(1073741825));
    }
    else if (strDamage == "surface")
    {
        write("cube.ply", cube().replace("-10 10 -10", "-10 ten -10"));
    }
    else if (strDamage == "volume")
    {
        write("source.nii", volume().chopped(1));
    }
    else if (strDamage == "far")
    {
        SNifti nifti;
        nifti.m_nQform = 1;
        std::fill_n(nifti.m_afSpacing, 3, 1e-3F);
        nifti.m_afOffset[0] = 5e6F;
        write("source.nii", nifti.header() + volume().mid(352));
    }
    const QMap<QString, QByteArray> mapBefore = contents(path("study"));
    const SProgramRun run = import(lstOptions.replaceInStrings("%1", m_pFolder->path()));
    const QString strExpected = "ormimport: " + strReason.replace("%1", m_pFolder->path());
    QVERIFY2(run.m_strError.startsWith(strExpected), qPrintable(run.m_strError + strExpected));
    QCOMPARE(run.m_strError.count('\n'), 1);
    QCOMPARE(run.m_nExit, 1);
    QCOMPARE(contents(path("study")), mapBefore);
}

/// Each of several imports at once finds what the others wrote.
void tst_importing::importsAtTheSameTime()
{
    constexpr int nImports = 5;
    std::vector<std::unique_ptr<QProcess>> vecImports;
    for (int n = 0; n < nImports; ++n)
    {
        vecImports.push_back(std::make_unique<QProcess>());
        vecImports.back()->start(QStringLiteral(ORM_BINARY_DIR "/bin/ormimport"),
                                 arguments({"--sequence", "S1", "--name", QString::number(n)}));
    }
    for (const auto& pImport : vecImports)
    {
        QVERIFY(pImport->waitForFinished(120000));
        QCOMPARE(QString::fromUtf8(pImport->readAllStandardError()), QString());
        QCOMPARE(pImport->exitCode(), 0);
    }
    const QMap<QString, QByteArray> mapStudy = contents(path("study"));
    QCOMPARE(mapStudy.value("S1/XML/SOLA.txt").count("MenuName="), nImports);
    for (int n = 1; n <= nImports; ++n)
    {
        QVERIFY(mapStudy.value(QStringLiteral("S1/XML/SOLA_%1.xml").arg(n)).endsWith("</Ormelle.Result>\n"));
    }
}

void tst_importing::helpSaysWhatTheNumbersAre()
{
    const SProgramRun run = runProgram("ormimport", {"--help"});
    QCOMPARE(run.m_nExit, 0);
    const QString strText = run.m_strOut.simplified();
    QVERIFY2(strText.contains("Its numbers are taken for amounts per voxel"), qPrintable(strText));
    QVERIFY(strText.contains("NaN is taken for an empty voxel and so is a number below 0"));
    QVERIFY(runProgram("ormimport", {"--version"}).m_strOut.startsWith("ormimport "));
}

QTEST_GUILESS_MAIN(tst_importing)
#include "tst_importing.moc"
