#include "FormatBytes.h"
#include "OpenWriters.h"
#include "VolumeReaders.h"

#include <QtTest>

#include <cmath>
#include <limits>

namespace
{
using FormatBytes::of;
using FormatBytes::packed;
using FormatBytes::SNifti;

/// A type of numbers under the names that the formats have for it.
struct SType
{
    const char* m_pName;
    int m_nNifti;
    const char* m_pMeta;
    const char* m_pNrrd;
    QByteArray (*m_fnBytes)(int nValue, bool bBig);
};

template <typename T>
QByteArray bytesOf(int nValue, bool bBig)
{
    return of(static_cast<T>(nValue), bBig);
}

const std::vector<SType>& types()
{
    static const std::vector<SType> vecTypes = {{"int8", 256, "MET_CHAR", "signed char", bytesOf<qint8>},
                                                {"uint8", 2, "MET_UCHAR", "uchar", bytesOf<quint8>},
                                                {"int16", 4, "MET_SHORT", "short", bytesOf<qint16>},
                                                {"uint16", 512, "MET_USHORT", "uint16", bytesOf<quint16>},
                                                {"int32", 8, "MET_INT", "int", bytesOf<qint32>},
                                                {"uint32", 768, "MET_UINT", "unsigned int", bytesOf<quint32>},
                                                {"int64", 1024, "MET_LONG_LONG", "long long int", bytesOf<qint64>},
                                                {"uint64", 1280, "MET_ULONG_LONG", "uint64_t", bytesOf<quint64>},
                                                {"float", 16, "MET_FLOAT", "float", bytesOf<float>},
                                                {"double", 64, "MET_DOUBLE", "double", bytesOf<double>}};
    return vecTypes;
}

/// The numbers 1 to 24, which every file of 2 x 3 x 4 voxels here holds.
QByteArray numbers(const SType& type, bool bBig)
{
    QByteArray ba;
    for (int n = 1; n <= 24; ++n)
    {
        ba += type.m_fnBytes(n, bBig);
    }
    return ba;
}

const SType& floats()
{
    return types()[8];
}

QByteArray metaHeader(const QByteArray& baMore, const QByteArray& baFile, const QByteArray& baType = "MET_FLOAT",
                      const QByteArray& baSize = "2 3 4")
{
    return "ObjectType = Image\nNDims = 3\nBinaryData = True\n" + baMore + "DimSize = " + baSize + "\nElementType = " + baType +
           "\nElementDataFile = " + baFile + "\n";
}

QByteArray nrrdHeader(const QByteArray& baMore, const QByteArray& baType = "float", const QByteArray& baSizes = "2 3 4")
{
    return "NRRD0004\n# a remark\ntype: " + baType + "\ndimension: 3\nsizes: " + baSizes + "\n" + baMore + "\n";
}

QString noSibling(const QString& strName, QByteArray& /*baContent*/)
{
    return QStringLiteral("no file %1").arg(strName);
}

/// What a reading must have given: numbers 1 to 24.
void verifyNumbers(const SOpenVolume& volume)
{
    QCOMPARE(volume.voxelCount(), qint64(24));
    QCOMPARE(volume.m_anSize[0], qint64(2));
    for (qint64 n = 0; n < 24; ++n)
    {
        QCOMPARE(volume.value(n), static_cast<double>(n + 1));
    }
}

using Vector = SOpenVolume::Vector;

QString text(const Vector& vec)
{
    return QStringLiteral("%1 %2 %3").arg(vec[0]).arg(vec[1]).arg(vec[2]);
}

/// Steps along the three indexes and the origin.
QString grid(const SOpenVolume& volume)
{
    return text(volume.m_avecStep[0]) + " | " + text(volume.m_avecStep[1]) + " | " + text(volume.m_avecStep[2]) + " | " +
           text(volume.m_vecOrigin);
}
} // namespace

/// Readers of volumes of other programs, and what writes them.
class tst_volumeformats : public QObject
{
    Q_OBJECT

private slots:
    void numbersOfEveryType_data();
    void numbersOfEveryType();
    void numbersInAFileOfTheirOwn_data();
    void numbersInAFileOfTheirOwn();
    void placesOfVoxels_data();
    void placesOfVoxels();
    void scaledNumbers();
    void notesSayWhatWasAssumed();
    void damagedFilesAreRefused_data();
    void damagedFilesAreRefused();
    void aCutFileIsNeverTaken_data();
    void aCutFileIsNeverTaken();
    void aSmallStreamOfMuchIsNotUnpacked();
    void aWrittenVolumeComesBack_data();
    void aWrittenVolumeComesBack();
};

void tst_volumeformats::numbersOfEveryType_data()
{
    QTest::addColumn<QString>("strFile");
    QTest::addColumn<QByteArray>("baContent");
    for (const SType& type : types())
    {
        for (const bool bBig : {false, true})
        {
            const QByteArray baNumbers = numbers(type, bBig);
            const auto row = [&](const char* pFormat) -> QTestData&
            { return QTest::addRow("%s, %s, %s", pFormat, type.m_pName, bBig ? "big" : "little"); };
            SNifti nifti;
            nifti.m_nType = static_cast<std::int16_t>(type.m_nNifti);
            nifti.m_bBigEndian = bBig;
            row("NIfTI") << "a.nii" << nifti.header() + baNumbers;
            row("NIfTI, packed") << "a.nii.gz" << packed(nifti.header() + baNumbers);
            const QByteArray baOrder = QByteArray("BinaryDataByteOrderMSB = ") + (bBig ? "True" : "False") + "\n";
            row("MetaImage") << "a.mha" << metaHeader(baOrder, "LOCAL", type.m_pMeta) + baNumbers;
            row("MetaImage, packed") << "a.MHA"
                                     << metaHeader(baOrder + "CompressedData = True\nCompressedDataSize = 1\n", "LOCAL", type.m_pMeta) +
                                            packed(baNumbers, false);
            const QByteArray baEndian = QByteArray("endian: ") + (bBig ? "big" : "little") + "\n";
            row("NRRD") << "a.nrrd" << nrrdHeader(baEndian + "encoding: raw\n", type.m_pNrrd) + baNumbers;
            row("NRRD, packed") << "a.nrrd" << nrrdHeader(baEndian + "encoding: gzip\n", type.m_pNrrd) + packed(baNumbers);
        }
    }
}

void tst_volumeformats::numbersOfEveryType()
{
    QFETCH(QString, strFile);
    QFETCH(QByteArray, baContent);
    SOpenVolume volume;
    QCOMPARE(VolumeReaders::read(strFile, baContent, noSibling, volume), QString());
    verifyNumbers(volume);
}

void tst_volumeformats::numbersInAFileOfTheirOwn_data()
{
    QTest::addColumn<QString>("strFile");
    QTest::addColumn<QByteArray>("baContent");
    QTest::addColumn<QString>("strSibling");
    QTest::addColumn<QByteArray>("baSibling");
    const QByteArray baNumbers = numbers(floats(), false);
    SNifti nifti;
    nifti.m_bTwoFiles = true;
    QTest::newRow("NIfTI") << "folder/a.hdr" << nifti.header() << "a.img" << baNumbers;
    QTest::newRow("NIfTI, header alone") << "a.hdr" << nifti.header().left(348) << "a.img" << baNumbers;
    QTest::newRow("NIfTI, capitals") << "A.HDR" << nifti.header() << "A.IMG" << baNumbers;
    QTest::newRow("NIfTI, packed") << "a.hdr.gz" << packed(nifti.header()) << "a.img.gz" << packed(baNumbers);
    QTest::newRow("MetaImage") << "a.mhd" << metaHeader("", "a.raw") << "a.raw" << baNumbers;
    QTest::newRow("MetaImage, a name like a list's") << "a.mhd" << metaHeader("", "Listed.raw") << "Listed.raw" << baNumbers;
    QTest::newRow("MetaImage, with a head") << "a.mhd" << metaHeader("HeaderSize = 7\n", "b c.raw") << "b c.raw"
                                            << "1234567" + baNumbers;
    QTest::newRow("MetaImage, empty lines") << "a.mhd"
                                            << "\n" + metaHeader("  \n", "a.raw") << "a.raw" << baNumbers;
    QTest::newRow("MetaImage, at the end") << "a.mhd" << metaHeader("HeaderSize = -1\n", "a.raw") << "a.raw"
                                           << "12345" + baNumbers;
    QTest::newRow("MetaImage, packed, by a number")
        << "a.mhd" << metaHeader("CompressedData = 1\n", "a.zraw") << "a.zraw" << packed(baNumbers, false);
    QTest::newRow("MetaImage, packed") << "a.mhd" << metaHeader("CompressedData = True\n", "a.zraw") << "a.zraw"
                                       << packed(baNumbers, false);
    QTest::newRow("NRRD, a name like a list's")
        << "a.nhdr" << nrrdHeader("endian: little\nencoding: raw\ndata file: list.raw\n").chopped(1) << "list.raw" << baNumbers;
    QTest::newRow("NRRD") << "a.nhdr" << nrrdHeader("endian: little\nencoding: raw\ndata file: a.raw\n").chopped(1) << "a.raw" << baNumbers;
    QTest::newRow("NRRD, lines and bytes before")
        << "a.nhdr" << nrrdHeader("endian: little\nencoding: raw\nline skip: 2\nbyteskip: 3\ndatafile: a.raw\n") << "a.raw"
        << "one\ntwo\nxyz" + baNumbers;
    QTest::newRow("NRRD, at the end") << "a.nhdr" << nrrdHeader("endian: little\nencoding: raw\nbyte skip: -1\ndatafile: a.raw\n")
                                      << "a.raw"
                                      << "anything" + baNumbers;
    QTest::newRow("NRRD, packed") << "a.nhdr" << nrrdHeader("endian: little\nencoding: gz\ndata file: a.gz\n") << "a.gz"
                                  << packed(baNumbers);
    QTest::newRow("NRRD, packed in two") << "a.nhdr" << nrrdHeader("endian: little\nencoding: gz\ndata file: a.gz\n") << "a.gz"
                                         << packed(baNumbers.left(50)) + packed(baNumbers.mid(50));
}

void tst_volumeformats::numbersInAFileOfTheirOwn()
{
    QFETCH(QString, strFile);
    QFETCH(QByteArray, baContent);
    QFETCH(QString, strSibling);
    QFETCH(QByteArray, baSibling);
    QString strAsked;
    SOpenVolume volume;
    const auto give = [&](const QString& strName, QByteArray& baGiven)
    {
        strAsked = strName;
        baGiven = baSibling;
        return QString();
    };
    QCOMPARE(VolumeReaders::read(strFile, baContent, give, volume), QString());
    QCOMPARE(strAsked, strSibling);
    verifyNumbers(volume);
    QVERIFY(VolumeReaders::read(strFile, baContent, noSibling, volume).endsWith("no file " + strSibling));
}

void tst_volumeformats::placesOfVoxels_data()
{
    QTest::addColumn<QString>("strFile");
    QTest::addColumn<QByteArray>("baContent");
    QTest::addColumn<QString>("strGrid");
    QTest::addColumn<int>("nSpace");
    const QByteArray baNumbers = numbers(floats(), false);
    SNifti nifti;
    nifti.m_afSpacing[0] = 0.3F;
    nifti.m_afSpacing[1] = 0.7F;
    QTest::newRow("NIfTI, spacing alone") << "a.nii" << nifti.header() + baNumbers << "0.3 0 0 | 0 0.7 0 | 0 0 1 | 0 0 0"
                                          << int(ESpace::Unknown);
    SNifti metres = nifti;
    metres.m_nUnits = 1;
    QTest::newRow("NIfTI, metres") << "a.nii" << metres.header() + baNumbers << "300 0 0 | 0 700 0 | 0 0 1000 | 0 0 0"
                                   << int(ESpace::Unknown);
    SNifti microns = nifti;
    microns.m_nUnits = 3;
    microns.m_afSpacing[2] = 50.0F;
    QTest::newRow("NIfTI, micrometres") << "a.nii" << microns.header() + baNumbers << "0.0003 0 0 | 0 0.0007 0 | 0 0 0.05 | 0 0 0"
                                        << int(ESpace::Unknown);
    SNifti qform = nifti;
    qform.m_nQform = 1;
    qform.m_afOffset[0] = -10.1F;
    qform.m_fQfac = -1.0F;
    QTest::newRow("NIfTI, qform") << "a.nii" << qform.header() + baNumbers << "0.3 0 0 | 0 0.7 0 | 0 0 -1 | -10.1 0 0" << int(ESpace::RAS);
    SNifti sform = qform;
    sform.m_nSform = 2;
    const float afRows[12] = {0, 0.7F, 0, 1, -0.3F, 0, 0, 2, 0, 0, 1, -3.5F};
    std::copy(afRows, afRows + 12, sform.m_afRows);
    QTest::newRow("NIfTI, sform before qform") << "a.nii" << sform.header() + baNumbers << "0 -0.3 0 | 0.7 0 0 | 0 0 1 | 1 2 -3.5"
                                               << int(ESpace::RAS);
    sform.m_bBigEndian = true;
    QTest::newRow("NIfTI, sform, big endian") << "a.nii" << sform.header() + numbers(floats(), true)
                                              << "0 -0.3 0 | 0.7 0 0 | 0 0 1 | 1 2 -3.5" << int(ESpace::RAS);
    QTest::newRow("MetaImage, nothing said") << "a.mha" << metaHeader("", "LOCAL") + baNumbers << "1 0 0 | 0 1 0 | 0 0 1 | 0 0 0"
                                             << int(ESpace::LPS);
    QTest::newRow("MetaImage") << "a.mha"
                               << metaHeader("TransformMatrix = 0 1 0 -1 0 0 0 0 1\nOffset = 1 -2 3.5\nElementSpacing = 0.1 0.2 0.3\n",
                                             "LOCAL") +
                                      baNumbers
                               << "0 0.1 0 | -0.2 0 0 | 0 0 0.3 | 1 -2 3.5" << int(ESpace::LPS);
    QTest::newRow("MetaImage, other words") << "a.mha"
                                            << metaHeader("Orientation = 1 0 0 0 1 0 0 0 1\nPosition = 1 2 3\nElementSize = 2 2 2\n",
                                                          "LOCAL") +
                                                   baNumbers
                                            << "2 0 0 | 0 2 0 | 0 0 2 | 1 2 3" << int(ESpace::LPS);
    const QByteArray baRaw = "endian: little\nencoding: raw\n";
    QTest::newRow("NRRD, spacings") << "a.nrrd" << nrrdHeader(baRaw + "spacings: 0.1 0.2 0.3\n") + baNumbers
                                    << "0.1 0 0 | 0 0.2 0 | 0 0 0.3 | 0 0 0" << int(ESpace::Unknown);
    QTest::newRow("NRRD, directions") << "a.nrrd"
                                      << nrrdHeader(baRaw +
                                                    "space: right-anterior-superior\nspace directions: (0,0,0.5) (-0.5, 0, 0) "
                                                    "(0,0.5,0)\nspace origin: (1,-2,3e1)\nkinds: domain domain domain\nkey:=value\n") +
                                             baNumbers
                                      << "0 0 0.5 | -0.5 0 0 | 0 0.5 0 | 1 -2 30" << int(ESpace::RAS);
    QTest::newRow("NRRD, LAS in cm")
        << "a.nrrd"
        << nrrdHeader(baRaw +
                      "space: LAS\nspace directions: (1,0,0) (0,1,0) (0,0,1)\nspace origin: (1,2,3)\nspace units: \"cm\" \"mm\" \"um\"\n") +
               baNumbers
        << "10 0 0 | 0 1 0 | 0 0 0.001 | 10 2 0.003" << int(ESpace::LAS);
    QTest::newRow("NRRD, units by their names") << "a.nrrd"
                                                << nrrdHeader(baRaw + "space: RAS\nspace directions: (1,0,0) (0,1,0) (0,0,1)\n"
                                                                      "space units: \"millimeter\" \"millimetre\" \"m\"\n") +
                                                       baNumbers
                                                << "1 0 0 | 0 1 0 | 0 0 1000 | 0 0 0" << int(ESpace::RAS);
    QTest::newRow("NRRD, micrometres") << "a.nrrd"
                                       << nrrdHeader(baRaw + "space: RAS\nspace directions: (1,0,0) (0,1,0) (0,0,1)\n"
                                                             "space units: \"\xC2\xB5m\" \"mm\" \"mm\"\n") +
                                              baNumbers
                                       << "0.001 0 0 | 0 1 0 | 0 0 1 | 0 0 0" << int(ESpace::RAS);
    QTest::newRow("NRRD, LPS") << "a.nrrd" << nrrdHeader(baRaw + "space: left-posterior-superior\n") + baNumbers
                               << "1 0 0 | 0 1 0 | 0 0 1 | 0 0 0" << int(ESpace::LPS);
}

void tst_volumeformats::placesOfVoxels()
{
    QFETCH(QString, strFile);
    QFETCH(QByteArray, baContent);
    SOpenVolume volume;
    QCOMPARE(VolumeReaders::read(strFile, baContent, noSibling, volume), QString());
    QTEST(grid(volume), "strGrid");
    QTEST(int(volume.m_eSpace), "nSpace");
    verifyNumbers(volume);
}

void tst_volumeformats::scaledNumbers()
{
    SNifti nifti;
    nifti.m_fSlope = 0.1F;
    nifti.m_fIntercept = -2.0F;
    SOpenVolume volume;
    QCOMPARE(VolumeReaders::read("a.nii", nifti.header() + numbers(floats(), false), noSibling, volume), QString());
    QCOMPARE(volume.value(22), 23 * 0.1 - 2.0);
    nifti.m_fIntercept = std::numeric_limits<float>::infinity();
    QCOMPARE(VolumeReaders::read("a.nii", nifti.header() + numbers(floats(), false), noSibling, volume),
             QString("byte 116: what is to be added to the numbers is not finite"));
    nifti.m_fSlope = 1.0F;
    nifti.m_fIntercept = 0.5F;
    QCOMPARE(VolumeReaders::read("a.nii", nifti.header() + numbers(floats(), false), noSibling, volume), QString());
    QCOMPARE(volume.value(22), 23.5);
    nifti.m_fSlope = std::numeric_limits<float>::quiet_NaN(); // how some programs say that there is none
    QCOMPARE(VolumeReaders::read("a.nii", nifti.header() + numbers(floats(), false), noSibling, volume), QString());
    QCOMPARE(volume.value(22), 23.0);
}

void tst_volumeformats::notesSayWhatWasAssumed()
{
    SOpenVolume volume;
    SNifti nifti;
    nifti.m_nUnits = 0;
    QCOMPARE(VolumeReaders::read("a.nii", nifti.header() + numbers(floats(), false) + "more", noSibling, volume), QString());
    QCOMPARE(volume.m_lstNotes, (QStringList{"The volume names no unit of length: millimetres were taken.",
                                             "The volume says nothing of its place: its first voxel was put at 0, 0, 0.",
                                             "Bytes behind the numbers were not read."}));
    nifti.m_nUnits = 3;
    nifti.m_nQform = 1;
    QCOMPARE(VolumeReaders::read("a.nii", nifti.header() + numbers(floats(), false), noSibling, volume), QString());
    QCOMPARE(volume.m_lstNotes, QStringList{"Lengths of the volume in micrometres were brought to millimetres."});
    QCOMPARE(VolumeReaders::read("a.mha", metaHeader("", "LOCAL") + numbers(floats(), false), noSibling, volume), QString());
    QCOMPARE(volume.m_lstNotes, QStringList{"The volume names no spacing: 1 mm was taken."});
}

void tst_volumeformats::damagedFilesAreRefused_data()
{
    QTest::addColumn<QString>("strFile");
    QTest::addColumn<QByteArray>("baContent");
    QTest::addColumn<QString>("strProblem");
    const QByteArray baNumbers = numbers(floats(), false);
    const QByteArray baNifti = SNifti().header() + baNumbers;
    const auto nifti = [&](int nAt, const QByteArray& baNew) { return QByteArray(baNifti).replace(nAt, baNew.size(), baNew); };
    const auto row = [](const char* pName, const char* pFile, const QByteArray& baContent, const char* pProblem)
    { QTest::newRow(pName) << QString(pFile) << baContent << QString::fromUtf8(pProblem); };
    row("NIfTI, nothing", "a.nii", QByteArray(), "byte 0: the file ends within the header");
    row("NIfTI, no header", "a.nii", QByteArray(400, 'x'), "byte 0: this is no NIfTI-1 header");
    row("NIfTI-2", "a.nii", nifti(0, of<qint32>(540)), "byte 0: this is NIfTI-2, of which only version 1 can be read");
    row("NIfTI, no mark", "a.nii", nifti(344, "xxxx"), "byte 344: the mark of NIfTI-1 is missing");
    row("NIfTI, no dimensions", "a.nii", nifti(40, of<qint16>(0)), "byte 40: 0 dimensions");
    row("NIfTI, nine dimensions", "a.nii", nifti(40, of<qint16>(9)), "byte 40: 9 dimensions");
    row("NIfTI, size below 0", "a.nii", nifti(44, of<qint16>(-3)), "byte 44: a size of -3 voxels");
    row("NIfTI, offset of a half byte", "a.nii", nifti(108, of(352.5F)), "byte 108: the numbers begin at no byte of a file");
    row("NIfTI, four dimensions", "a.nii", nifti(40, of<qint16>(4) + of<qint16>(2) + of<qint16>(3) + of<qint16>(2) + of<qint16>(2)),
        "byte 48: 2 numbers per voxel, of which only one can be read");
    row("NIfTI, too many voxels", "a.nii", nifti(42, of<qint16>(32767) + of<qint16>(32767) + of<qint16>(32767)),
        "byte 40: 32767 x 32767 x 32767 voxels take more than 1073741824 bytes");
    row("NIfTI, more voxels than bytes", "a.nii", nifti(42, of<qint16>(300) + of<qint16>(300) + of<qint16>(300)),
        "byte 352: the numbers take 108000000 bytes, there are 96");
    row("NIfTI, colours", "a.nii", nifti(70, of<qint16>(128)), "byte 70: the type 128 is no plain number");
    row("NIfTI, unknown type", "a.nii", nifti(70, of<qint16>(999)), "byte 70: the type 999 is no plain number");
    row("NIfTI, no spacing", "a.nii", nifti(84, of(0.0F)), "byte 84: the spacing is no length");
    row("NIfTI, spacing NaN", "a.nii", nifti(84, of(std::numeric_limits<float>::quiet_NaN())), "byte 84: the spacing is no length");
    row("NIfTI, spacing too large", "a.nii", nifti(84, of(1e30F)), "byte 40: the spacing 1e+30 mm is no length of a voxel");
    row("NIfTI, offset NaN", "a.nii", nifti(108, of(std::numeric_limits<float>::quiet_NaN())),
        "byte 108: the numbers begin at no byte of a file");
    row("NIfTI, offset in the header", "a.nii", nifti(108, of(100.0F)), "byte 108: the numbers begin within the header");
    row("NIfTI, offset too large", "a.nii", nifti(108, of(1e30F)), "byte 108: the numbers begin at no byte of a file");
    row("NIfTI, offset behind the end", "a.nii", nifti(108, of(4000.0F)), "byte 4000: the numbers take 96 bytes, there are 0");
    row("NIfTI, flat", "a.nii", nifti(254, of<qint16>(1)), "byte 40: the spacing 0 mm is no length of a voxel");
    row("NIfTI, sform infinite", "a.nii", nifti(254, of<qint16>(1)).replace(280, 4, of(std::numeric_limits<float>::infinity())),
        "byte 40: the spacing nan mm is no length of a voxel");
    row("NIfTI, packed badly", "a.nii.gz", packed(baNifti).replace(20, 4, "\xFF\xFF\xFF\xFF"), "byte 0: the compressed data are damaged");
    row("NIfTI, wrong check sum", "a.nii.gz", packed(baNifti).replace(packed(baNifti).size() - 8, 4, "\1\2\3\4"),
        "byte 352: the compressed data are damaged");
    row("MetaImage, nothing", "a.mha", QByteArray(), "line 0: the header has no \"ElementDataFile\"");
    row("MetaImage, no key", "a.mha", QByteArray("anything\n"), "line 1: \"anything\" is no \"key = value\"");
    row("MetaImage, plane", "a.mha", metaHeader("", "LOCAL").replace("NDims = 3", "NDims = 2"), "line 1: \"NDims\" is not 3");
    row("MetaImage, no image", "a.mha", metaHeader("ObjectType = Tube\n", "LOCAL") + baNumbers, "line 1: \"ObjectType\" is not Image");
    row("MetaImage, no dimensions", "a.mha", metaHeader("", "LOCAL").replace("NDims = 3\n", ""), "line 1: \"NDims\" is not 3");
    row("MetaImage, no type", "a.mha", metaHeader("", "LOCAL").replace("ElementType = MET_FLOAT\n", "") + baNumbers,
        "line 1: the type of the numbers is not known");
    row("MetaImage, head below -1", "a.mha", metaHeader("HeaderSize = -2\n", "LOCAL") + baNumbers,
        "line 4: the numbers would begin outside the file");
    row("MetaImage, head no number", "a.mha", metaHeader("HeaderSize = few\n", "LOCAL") + baNumbers,
        "line 4: \"few\" is no number of bytes");
    row("MetaImage, colours", "a.mha", metaHeader("ElementNumberOfChannels = 3\n", "LOCAL") + baNumbers,
        "line 1: \"ElementNumberOfChannels\" is not 1");
    row("MetaImage, text", "a.mha", metaHeader("", "LOCAL").replace("True", "False"), "line 1: numbers as text are not read");
    row("MetaImage, unknown type", "a.mha", metaHeader("", "LOCAL", "MET_OTHER"), "line 5: the type of the numbers is not known");
    row("MetaImage, two sizes", "a.mha", metaHeader("", "LOCAL", "MET_FLOAT", "2 3"),
        "line 4: three numbers of voxels are needed as \"DimSize\"");
    row("MetaImage, size no number", "a.mha", metaHeader("", "LOCAL", "MET_FLOAT", "2 3 x"), "line 4: \"x\" is no number of voxels");
    row("MetaImage, size 0", "a.mha", metaHeader("", "LOCAL", "MET_FLOAT", "2 0 4") + baNumbers, "line 4: a size of 0 voxels");
    row("MetaImage, sizes wrap", "a.mha", metaHeader("", "LOCAL", "MET_FLOAT", "4294967296 4294967296 4") + baNumbers,
        "line 4: 4294967296 x 4294967296 x 4 voxels take more than 1073741824 bytes");
    row("MetaImage, spacing", "a.mha", metaHeader("ElementSpacing = 1 1\n", "LOCAL"), "line 4: 3 numbers are needed");
    row("MetaImage, spacing 0", "a.mha", metaHeader("ElementSpacing = 1 1 0\n", "LOCAL"),
        "line 5: the spacing 0 mm is no length of a voxel");
    row("MetaImage, flat", "a.mha", metaHeader("TransformMatrix = 1 0 0 1 0 0 0 0 1\n", "LOCAL"), "line 5: the axes lie in one plane");
    row("MetaImage, far away", "a.mha", metaHeader("Offset = 1e300 0 0\n", "LOCAL"), "line 5: the origin is not finite or too far away");
    row("MetaImage, many files", "a.mha", metaHeader("", "LIST"), "line 6: numbers in several files are not read");
    row("MetaImage, head too long", "a.mha", metaHeader("HeaderSize = 1000\n", "LOCAL") + baNumbers,
        "line 4: the numbers would begin outside the file");
    row("MetaImage, too few bytes", "a.mha", metaHeader("", "LOCAL") + baNumbers.chopped(1),
        "byte 111 of the numbers: the numbers take 96 bytes, there are 95");
    row("MetaImage, too many bytes", "a.mha", metaHeader("", "LOCAL") + baNumbers + "x",
        "byte 111 of the numbers: there are more bytes than the 96 that the numbers take");
    row("MetaImage, packed too short", "a.mha", metaHeader("CompressedData = True\n", "LOCAL") + packed(baNumbers.chopped(1), false),
        "byte 133 of the numbers: the numbers take 96 bytes, there are 95");
    row("MetaImage, packed too long", "a.mha", metaHeader("CompressedData = True\n", "LOCAL") + packed(baNumbers + "x", false),
        "byte 133 of the numbers: there are more bytes than the 96 that the numbers take");
    row("NRRD, nothing", "a.nrrd", QByteArray(), "line 1: the file does not begin like NRRD 1 to 5");
    row("NRRD, later version", "a.nrrd", QByteArray("NRRD0009\n"), "line 1: the file does not begin like NRRD 1 to 5");
    row("NRRD, no field", "a.nrrd", QByteArray("NRRD0004\nanything\n"), "line 2: \"anything\" is no field");
    row("NRRD, field twice", "a.nrrd", nrrdHeader("type: int\n"), "line 6: the field \"type\" occurs twice");
    row("NRRD, block", "a.nrrd", nrrdHeader("", "block"), "line 3: the type of the numbers is not known");
    row("NRRD, four dimensions", "a.nrrd", nrrdHeader("").replace("dimension: 3", "dimension: 4"), "line 4: the dimension is not 3");
    row("NRRD, no byte order", "a.nrrd", nrrdHeader("encoding: raw\n") + baNumbers, "line 7: the byte order is neither little nor big");
    row("NRRD, no encoding", "a.nrrd", nrrdHeader("endian: little\n") + baNumbers, "line 7: the encoding is neither raw nor gzip");
    row("NRRD, text", "a.nrrd", nrrdHeader("endian: little\nencoding: ascii\n"), "line 7: the encoding is neither raw nor gzip");
    row("NRRD, sizes wrap", "a.nrrd", nrrdHeader("endian: little\nencoding: raw\n", "float", "9223372036854775807 9223372036854775807 2"),
        "line 5: 9223372036854775807 x 9223372036854775807 x 2 voxels take more than 1073741824 bytes");
    row("NRRD, size too long", "a.nrrd", nrrdHeader("endian: little\nencoding: raw\n", "float", "9223372036854775808 1 2"),
        "line 5: \"9223372036854775808\" is no number of voxels");
    row("NRRD, vector of two", "a.nrrd", nrrdHeader("endian: little\nencoding: raw\nspace directions: (1,0) (0,1,0) (0,0,1)\n"),
        "line 8: three vectors of three numbers are needed");
    row("NRRD, no vector", "a.nrrd", nrrdHeader("endian: little\nencoding: raw\nspace directions: none (0,1,0) (0,0,1)\n"),
        "line 8: three vectors of three numbers are needed");
    row("NRRD, unit", "a.nrrd", nrrdHeader("endian: little\nencoding: raw\nspace units: \"mm\" \"inch\" \"mm\"\n"),
        "line 8: the unit \"inch\" is none of m, cm, mm and um");
    row("NRRD, too few lines", "a.nrrd", nrrdHeader("endian: little\nencoding: raw\nline skip: 99\n") + baNumbers,
        "line 8: the file has fewer lines");
    row("NRRD, bytes below -1", "a.nrrd", nrrdHeader("endian: little\nencoding: raw\nbyte skip: -2\n") + baNumbers,
        "line 8: this is no number of bytes that can be passed over");
    const auto nrrd = [&](const char* pFields) { return nrrdHeader(QByteArray("endian: little\nencoding: raw\n") + pFields) + baNumbers; };
    row("NRRD, version 0", "a.nrrd", QByteArray("NRRD0000\n"), "line 1: the file does not begin like NRRD 1 to 5");
    row("NRRD, no version", "a.nrrd", QByteArray("NRRD000\n"), "line 1: the file does not begin like NRRD 1 to 5");
    row("NRRD, vector without end", "a.nrrd", nrrd("space origin: (1,2,3\n"), "line 8: a vector of three numbers is needed");
    row("NRRD, two origins", "a.nrrd", nrrd("space origin: (1,2,3) (4,5,6)\n"), "line 8: a vector of three numbers is needed");
    row("NRRD, vector of words", "a.nrrd", nrrd("space origin: (1,two,3)\n"), "line 8: a vector of three numbers is needed");
    row("NRRD, spacing of words", "a.nrrd", nrrd("spacings: 1 two 3\n"), "line 8: three numbers are needed");
    row("NRRD, lines no number", "a.nrrd", nrrd("line skip: few\n"), "line 8: this is no number of lines");
    row("NRRD, bytes no number", "a.nrrd", nrrd("byte skip: few\n"), "line 8: this is no number of bytes that can be passed over");
    row("NRRD, packed, bytes before", "a.nrrd", nrrdHeader("endian: little\nencoding: gzip\nbyte skip: 3\n") + "xyz" + packed(baNumbers),
        "line 8: this is no number of bytes that can be passed over");
    row("NRRD, size 0", "a.nrrd", nrrdHeader("endian: little\nencoding: raw\n", "float", "2 0 4") + baNumbers,
        "line 5: a size of 0 voxels");
    row("NRRD, no type", "a.nrrd", nrrd("").replace("type: float\n", ""), "line 7: the type of the numbers is not known");
    row("NRRD, units without marks", "a.nrrd", nrrdHeader("endian: little\nencoding: raw\nspace units: mm mm mm\n"),
        "line 8: three units in quotation marks are needed");
    row("NRRD, two spacings", "a.nrrd", nrrdHeader("endian: little\nencoding: raw\nspacings: 1 1\n"), "line 8: three numbers are needed");
    row("NRRD, four spacings", "a.nrrd", nrrdHeader("endian: little\nencoding: raw\nspacings: 1 1 1 1\n"),
        "line 8: three numbers are needed");
    row("NRRD, origin of two", "a.nrrd", nrrdHeader("endian: little\nencoding: raw\nspace origin: (1,2)\n"),
        "line 8: a vector of three numbers is needed");
    row("NRRD, lines below 0", "a.nrrd", nrrdHeader("endian: little\nencoding: raw\nline skip: -1\n") + baNumbers,
        "line 8: this is no number of lines");
    row("NRRD, bytes behind the end", "a.nrrd", nrrdHeader("endian: little\nencoding: raw\nbyte skip: 1000\n") + baNumbers,
        "line 8: the numbers would begin outside the file");
    row("MetaImage, a list of planes", "a.mha", metaHeader("", "LIST\t2"), "line 6: numbers in several files are not read");
    row("NRRD, a list", "a.nrrd", nrrdHeader("endian: little\nencoding: raw\ndata file: list 2\n"),
        "line 8: numbers in several files are not read");
    row("NRRD, many files", "a.nrrd", nrrdHeader("endian: little\nencoding: raw\ndata file: a%03d.raw 1 9 1\n"),
        "line 8: numbers in several files are not read");
    row("another format", "a.dcm", baNumbers, "name: the extension is none of .nii, .nii.gz, .hdr, .mha, .mhd, .nrrd and .nhdr");
}

void tst_volumeformats::damagedFilesAreRefused()
{
    QFETCH(QString, strFile);
    QFETCH(QByteArray, baContent);
    SOpenVolume volume;
    QTEST(VolumeReaders::read(strFile, baContent, noSibling, volume), "strProblem");
}

void tst_volumeformats::aCutFileIsNeverTaken_data()
{
    QTest::addColumn<QString>("strFile");
    QTest::addColumn<QByteArray>("baContent");
    const QByteArray baNumbers = numbers(floats(), false);
    QTest::newRow("NIfTI") << "a.nii" << SNifti().header() + baNumbers;
    QTest::newRow("NIfTI, packed") << "a.nii.gz" << packed(SNifti().header() + baNumbers);
    QTest::newRow("MetaImage") << "a.mha" << metaHeader("", "LOCAL") + baNumbers;
    QTest::newRow("MetaImage, packed") << "a.mha" << metaHeader("CompressedData = True\n", "LOCAL") + packed(baNumbers, false);
    QTest::newRow("NRRD") << "a.nrrd" << nrrdHeader("endian: little\nencoding: raw\n") + baNumbers;
    QTest::newRow("NRRD, packed") << "a.nrrd" << nrrdHeader("endian: little\nencoding: gzip\n") + packed(baNumbers);
}

void tst_volumeformats::aCutFileIsNeverTaken()
{
    QFETCH(QString, strFile);
    QFETCH(QByteArray, baContent);
    for (int nSize = 0; nSize < baContent.size(); ++nSize)
    {
        SOpenVolume volume;
        QVERIFY2(!VolumeReaders::read(strFile, baContent.left(nSize), noSibling, volume).isEmpty(), qPrintable(QString::number(nSize)));
    }
}

/// A stream of a few bytes that would become very many is read only as far as the header asks for.
void tst_volumeformats::aSmallStreamOfMuchIsNotUnpacked()
{
    const QByteArray baMuch = packed(QByteArray(32 * 1024 * 1024, '\0'));
    QVERIFY(baMuch.size() < 1024 * 1024);
    SOpenVolume volume;
    QCOMPARE(VolumeReaders::read("a.nrrd", nrrdHeader("endian: little\nencoding: gzip\n") + baMuch, noSibling, volume),
             QString("byte %1 of the numbers: there are more bytes than the 96 that the numbers take")
                 .arg(nrrdHeader("endian: little\nencoding: gzip\n").size()));
}

void tst_volumeformats::aWrittenVolumeComesBack_data()
{
    QTest::addColumn<bool>("bSingle");
    QTest::newRow("single precision") << true;
    QTest::newRow("double precision") << false;
}

void tst_volumeformats::aWrittenVolumeComesBack()
{
    QFETCH(bool, bSingle);
    SCubicGrid grid;
    grid.m_anSize = {3, 1, 2};
    grid.m_afOrigin = {-0.1, 1.0 / 3.0, 1e-7};
    grid.m_fPitch = 0.3;
    grid.m_bSingle = bSingle;
    grid.m_vecValues = {0.0, static_cast<double>(0.1F), 1e-40, -3e38, static_cast<double>(1.0F / 3.0F), 5.0};
    SOpenVolume volume;
    QCOMPARE(VolumeReaders::readNrrd(OpenWriters::nrrd(grid, {"a remark"}), noSibling, volume), QString());
    QCOMPARE(volume.m_anSize, grid.m_anSize);
    QCOMPARE(volume.m_vecOrigin, grid.m_afOrigin);
    for (std::size_t n = 0; n < 6; ++n)
    {
        const double fWritten = bSingle ? static_cast<double>(static_cast<float>(grid.m_vecValues[n])) : grid.m_vecValues[n];
        QVERIFY(volume.value(static_cast<qint64>(n)) == fWritten);
    }
    for (std::size_t n = 0; n < 3; ++n)
    {
        QVERIFY(volume.m_avecStep[n][n] == 0.3);
    }
}

QTEST_GUILESS_MAIN(tst_volumeformats)
#include "tst_volumeformats.moc"
