#include "SequenceKind.h"

#include "CPLClickInfo.h"
#include "CPLSequenceInfo.h"
#include "CStudyWriter.h"
#include "TestWidgets.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <functional>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using SequenceKind::SFlags;

using Damage = std::function<void(const QString&)>; ///< of the file with that path
Q_DECLARE_METATYPE(Damage)

namespace
{
/// The sections of a click with a surface by structured light.
const QByteArray g_byStructure = "[photographic image]\n[structure image]\n[reference image]\n";

QByteArray luminescent(const QByteArray& byKeys)
{
    return "[luminescent image]\n" + byKeys;
}

QByteArray fluorescentAt(const QByteArray& byX, const QByteArray& byY)
{
    return luminescent("Image Subtype=fluorescent\nFL x-spot=" + byX + "\nFL y-spot=" + byY + '\n');
}

/// What a click of that text says, with nothing known before.
SFlags flagsOfClick(const QByteArray& byText)
{
    QTemporaryDir objFolder;
    const QString strFile = objFolder.filePath(QStringLiteral("ClickInfo.txt"));
    CStudyWriter::writeFile(strFile, byText);
    CPLClickInfo objClick;
    if (objClick.loadClickInfo(strFile, false) != 0)
    {
        TestWidgets::fail(objClick.lastError());
    }
    SFlags sFlags;
    SequenceKind::addClick(sFlags, objClick);
    return sFlags;
}

/// The flags that are set, in their order.
QString named(const SFlags& sFlags)
{
    QStringList lstSet;
    const auto add = [&lstSet](bool bSet, const char* pName)
    {
        if (bSet)
        {
            lstSet.append(QLatin1String(pName));
        }
    };
    add(sFlags.m_bStructure, "structure");
    add(sFlags.m_bCT, "CT");
    add(sFlags.m_bLuminescent, "luminescent");
    add(sFlags.m_bFluorescent, "fluorescent");
    add(sFlags.m_bMultiSpot, "multi-spot");
    add(sFlags.m_bSpot, "spot");
    return lstSet.join(QLatin1Char(' '));
}

/// A sequence in a folder of its own whose clicks have these texts. Returns its file's path.
QString writeSequence(const QTemporaryDir& objFolder, const QList<QByteArray>& lstClicks, const QByteArray& byMore = {})
{
    QByteArray by = "[Sequence Information]\nSequence=S1\n[Click Numbers]\nCount=" + QByteArray::number(lstClicks.size()) + '\n';
    for (int i = 0; i < lstClicks.size(); ++i)
    {
        by += QByteArray::number(i + 1) + "=C" + QByteArray::number(i + 1) + '\n';
        CStudyWriter::writeFile(objFolder.filePath(QStringLiteral("C%1/ClickInfo.txt").arg(i + 1)), lstClicks.at(i));
    }
    const QString strFile = objFolder.filePath(QStringLiteral("SequenceInfo.txt"));
    CStudyWriter::writeFile(strFile, by + byMore);
    return strFile;
}

/// Runs the check as an ordinary user, in a child process where this one is the administrator, whom no permission stops. Returns
/// whether it held.
bool holdsForOrdinaryUser(const std::function<bool()>& fnCheck)
{
    const pid_t nChild = fork();
    if (nChild == 0)
    {
        constexpr uid_t nNobody = 65534;
        if (geteuid() == 0 && (setgid(nNobody) != 0 || setuid(nNobody) != 0))
        {
            _exit(2);
        }
        _exit(fnCheck() ? 0 : 1);
    }
    int nStatus = 0;
    return nChild > 0 && waitpid(nChild, &nStatus, 0) == nChild && WIFEXITED(nStatus) && WEXITSTATUS(nStatus) == 0;
}
} // namespace

/// Which kind a sequence on disk is of, told from its information files.
class tst_sequencekind : public QObject
{
    Q_OBJECT

private slots:
    void kindOfAllFlags_data();
    void kindOfAllFlags();
    void clicksSayWhatTheyAre_data();
    void clicksSayWhatTheyAre();
    void spotsByTheirText_data();
    void spotsByTheirText();
    void clicksAddUp();
    void sectionOfCT_data();
    void sectionOfCT();
    void kindOfFiles_data();
    void kindOfFiles();
    void fewerThanTwoClicksAreNoSequence_data();
    void fewerThanTwoClicksAreNoSequence();
    void clicksThatCannotBeReadSayNothing_data();
    void clicksThatCannotBeReadSayNothing();
    void sequenceFilesThatCannotBeReadAreOfNoKind_data();
    void sequenceFilesThatCannotBeReadAreOfNoKind();
    void filesWithoutPermissionSayNothing();
    void aClickListedOftenIsReadOnce();
    void aHugeCountOfClicksEndsSoon();
    void readingChangesNothing();
};

void tst_sequencekind::kindOfAllFlags_data()
{
    QTest::addColumn<int>("nFlags");
    QTest::addColumn<QString>("strKind");
    // Bits: structure, CT, luminescent, fluorescent, multi-spot, spot. Of the 64 combinations six are of a kind.
    const QMap<int, QString> mapKinds = {{0b000101, QStringLiteral("SOLA")}, {0b000110, QStringLiteral("SOLA")},
                                         {0b000111, QStringLiteral("SOLA")}, {0b101001, QStringLiteral("NOVA")},
                                         {0b101010, QStringLiteral("NOVA")}, {0b101011, QStringLiteral("NOVA")}};
    for (int nFlags = 0; nFlags < 64; ++nFlags)
    {
        QTest::addRow("structure %d, CT %d, luminescent %d, fluorescent %d, multi-spot %d, spot %d", nFlags & 1, (nFlags >> 1) & 1,
                      (nFlags >> 2) & 1, (nFlags >> 3) & 1, (nFlags >> 4) & 1, (nFlags >> 5) & 1)
            << nFlags << mapKinds.value(nFlags);
    }
}

void tst_sequencekind::kindOfAllFlags()
{
    QFETCH(int, nFlags);
    QFETCH(QString, strKind);
    SFlags sFlags;
    sFlags.m_bStructure = (nFlags & 1) != 0;
    sFlags.m_bCT = (nFlags & 2) != 0;
    sFlags.m_bLuminescent = (nFlags & 4) != 0;
    sFlags.m_bFluorescent = (nFlags & 8) != 0;
    sFlags.m_bMultiSpot = (nFlags & 16) != 0;
    sFlags.m_bSpot = (nFlags & 32) != 0;
    QCOMPARE(SequenceKind::kindOf(sFlags), strKind);
    QCOMPARE(SequenceKind::kindOf(sFlags).isNull(), strKind.isNull());
}

void tst_sequencekind::clicksSayWhatTheyAre_data()
{
    QTest::addColumn<QByteArray>("byText");
    QTest::addColumn<QString>("strFlags");
    const auto row = [](const char* pName, const QByteArray& byText, const char* pFlags)
    { QTest::newRow(pName) << byText << QString::fromLatin1(pFlags); };
    row("nothing", "", "");
    row("all three images", g_byStructure, "structure");
    row("no structure image", "[photographic image]\n[reference image]\n", "");
    row("no reference image", "[photographic image]\n[structure image]\n", "");
    row("no photographic image", "[structure image]\n[reference image]\n", "");
    row("section names in other case", "[Photographic image]\n[structure image]\n[reference image]\n[Luminescent image]\n", "");
    row("luminescent", luminescent("Image Subtype=luminescent\n"), "luminescent");
    row("no subtype", luminescent(""), "luminescent");
    row("empty subtype", luminescent("Image Subtype=\n"), "luminescent");
    row("other subtype", luminescent("Image Subtype=bioluminescent\n"), "luminescent");
    row("subtype that begins alike", luminescent("Image Subtype=fluorescent bkg\n"), "luminescent");
    row("fluorescent", luminescent("Image Subtype=fluorescent\n"), "fluorescent");
    row("fluorescent in other case", luminescent("Image Subtype=FLUORescent\n"), "fluorescent");
    row("subtype key in other case", luminescent("image subtype=fluorescent\n"), "luminescent");
    row("subtype given twice: the later one", luminescent("Image Subtype=luminescent\nImage Subtype=fluorescent\n"), "fluorescent");
    row("subtype in another section", "[photographic image]\nImage Subtype=fluorescent\n" + luminescent(""), "luminescent");
    row("fluorescent at a spot", fluorescentAt("1.25", "0.5"), "fluorescent spot");
    row("luminescent at a spot", luminescent("FL x-spot=1.25\nFL y-spot=0.5\n"), "luminescent spot");
    row("x alone", luminescent("FL x-spot=1.25\n"), "luminescent");
    row("y alone", luminescent("FL y-spot=1.25\n"), "luminescent");
    row("several x without y", luminescent("FL x-spot=1;2\n"), "luminescent");
    row("spot in another section", "[photographic image]\nFL x-spot=1\nFL y-spot=1\n" + luminescent(""), "luminescent");
    row("spot without a luminescent image", "[photographic image]\nFL x-spot=1\nFL y-spot=1\n", "");
    row("several spots", fluorescentAt("1;2", "1;2"), "fluorescent multi-spot spot");
    row("all at once", g_byStructure + fluorescentAt("1", "1"), "structure fluorescent spot");
}

void tst_sequencekind::clicksSayWhatTheyAre()
{
    QFETCH(QByteArray, byText);
    QFETCH(QString, strFlags);
    QCOMPARE(named(flagsOfClick(byText)), strFlags);
}

void tst_sequencekind::spotsByTheirText_data()
{
    QTest::addColumn<QString>("strX");
    QTest::addColumn<QString>("strY");
    QTest::addColumn<QString>("strFlags");
    const auto row = [](const char* pName, const char* pX, const char* pY, const char* pFlags)
    { QTest::newRow(pName) << QString::fromUtf8(pX) << QString::fromUtf8(pY) << QString::fromLatin1(pFlags); };
    row("both above 0", "1.25", "0.5", "spot");
    row("whole numbers", "1", "2", "spot");
    row("exponents", "1e-3", "2E2", "spot");
    row("both 0", "0", "0", "");
    row("both 0.0", "0.0", "0.0", "");
    row("x 0", "0", "0.5", "");
    row("y 0", "0.5", "0", "");
    row("x negative", "-1", "0.5", "");
    row("y negative", "0.5", "-1", "");
    row("negative 0", "-0.0", "1", "");
    row("both negative", "-1", "-1", "");
    row("empty", "", "", "");
    row("x empty", "", "1", "");
    row("no number", "here", "there", "");
    row("not a number", "nan", "nan", "");
    row("unit behind", "1.25 cm", "0.5 cm", "");
    row("comma for a point", "1,5", "0,5", "");
    row("Arabic digits", "\xD9\xA1", "\xD9\xA1", "");
    row("hexadecimal", "0x10", "0x10", "");
    row("too small for a float", "1e-60", "1", "");
    row("smallest float", "1.5e-45", "1", "spot");
    row("several spots, first above 0", "1;2", "3;4", "multi-spot spot");
    row("several spots, first 0", "0;2", "3;4", "multi-spot");
    row("several spots, y is whole", "1;2", "3", "multi-spot spot");
    row("several y alone", "1", "3;4", "");
    row("separator alone", ";", ";", "multi-spot");
    row("separator at the end", "1;", "2;", "multi-spot spot");
    row("separator at the beginning", ";1", ";2", "multi-spot");
    row("blank before the separator", "1 ;2", "3 ;4", "multi-spot spot");
    row("other separators", "1|2", "3|4", "");
}

void tst_sequencekind::spotsByTheirText()
{
    QFETCH(QString, strX);
    QFETCH(QString, strY);
    QFETCH(QString, strFlags);
    SFlags sFlags;
    SequenceKind::addSpot(sFlags, strX, strY);
    QCOMPARE(named(sFlags), strFlags);
}

void tst_sequencekind::clicksAddUp()
{
    SFlags sFlags;
    sFlags.m_bCT = true;
    SequenceKind::addSpot(sFlags, QStringLiteral("1"), QStringLiteral("1"));
    SequenceKind::addSpot(sFlags, QStringLiteral("0"), QStringLiteral("0"));
    QCOMPARE(named(sFlags), QStringLiteral("CT spot"));
    SequenceKind::addSpot(sFlags, QStringLiteral("1;1"), QStringLiteral("0"));
    SequenceKind::addSpot(sFlags, QStringLiteral("1"), QStringLiteral("1"));
    QCOMPARE(named(sFlags), QStringLiteral("CT multi-spot spot"));
    SequenceKind::addClick(sFlags, CPLClickInfo());
    QCOMPARE(named(sFlags), QStringLiteral("CT multi-spot spot"));
}

void tst_sequencekind::sectionOfCT_data()
{
    QTest::addColumn<QByteArray>("byText");
    QTest::addColumn<bool>("bCT");
    QTest::newRow("there") << QByteArray("[CT Acquisition Parameters]\nVoltage=50\n") << true;
    QTest::newRow("there without keys") << QByteArray("[CT Acquisition Parameters]\n") << true;
    QTest::newRow("name with blanks around") << QByteArray("[ CT Acquisition Parameters ]\n") << true;
    QTest::newRow("not there") << QByteArray("[Sequence Information]\nCT Acquisition Parameters=1\n") << false;
    QTest::newRow("in other case") << QByteArray("[ct acquisition parameters]\n") << false;
}

void tst_sequencekind::sectionOfCT()
{
    QFETCH(QByteArray, byText);
    QFETCH(bool, bCT);
    QTemporaryDir objFolder;
    const QString strFile = objFolder.filePath(QStringLiteral("SequenceInfo.txt"));
    CStudyWriter::writeFile(strFile, byText);
    CPLSequenceInfo objSequence;
    QCOMPARE(objSequence.loadFile(strFile), 0);
    QCOMPARE(SequenceKind::hasCTSection(objSequence), bCT);
}

void tst_sequencekind::kindOfFiles_data()
{
    QTest::addColumn<QList<QByteArray>>("lstClicks");
    QTest::addColumn<bool>("bCT");
    QTest::addColumn<QString>("strKind");
    const QString strSOLA = QStringLiteral("SOLA");
    const QString strNOVA = QStringLiteral("NOVA");
    const QByteArray byLuminescent = luminescent("Image Subtype=luminescent\n");
    const QByteArray byFluorescent = luminescent("Image Subtype=fluorescent\n");
    const QByteArray bySpot = fluorescentAt("1", "2");
    using Clicks = QList<QByteArray>;
    QTest::newRow("luminescent") << Clicks{g_byStructure + byLuminescent, g_byStructure + byLuminescent} << false << strSOLA;
    QTest::newRow("surface in one click, light in the other") << Clicks{g_byStructure, byLuminescent} << false << strSOLA;
    QTest::newRow("surface by CT") << Clicks{byLuminescent, byLuminescent} << true << strSOLA;
    QTest::newRow("both surfaces") << Clicks{g_byStructure + byLuminescent, byLuminescent} << true << strSOLA;
    QTest::newRow("no surface") << Clicks{byLuminescent, byLuminescent} << false << QString();
    QTest::newRow("images of a surface in different clicks")
        << Clicks{"[photographic image]\n[structure image]\n" + byLuminescent, "[reference image]\n"} << false << QString();
    QTest::newRow("fluorescent") << Clicks{g_byStructure + bySpot, bySpot} << false << strNOVA;
    QTest::newRow("fluorescent, CT") << Clicks{bySpot, bySpot} << true << strNOVA;
    QTest::newRow("fluorescent, one click without a spot") << Clicks{g_byStructure + bySpot, byFluorescent} << false << strNOVA;
    QTest::newRow("fluorescent, lit from above") << Clicks{g_byStructure + byFluorescent, byFluorescent} << false << QString();
    QTest::newRow("fluorescent, spot at 0, 0") << Clicks{g_byStructure + fluorescentAt("0", "0"), byFluorescent} << false << QString();
    QTest::newRow("fluorescent, several spots in one click")
        << Clicks{g_byStructure + bySpot, fluorescentAt("1;2", "1;2")} << false << QString();
    QTest::newRow("mixed luminescent and fluorescent clicks") << Clicks{g_byStructure + byLuminescent, bySpot} << false << QString();
    QTest::newRow("mixed without a spot") << Clicks{g_byStructure + byLuminescent, byFluorescent} << false << QString();
    QTest::newRow("luminescent with a spot") << Clicks{g_byStructure + luminescent("FL x-spot=1\nFL y-spot=1\n"), byLuminescent} << false
                                             << QString();
    QTest::newRow("luminescent with a spot at 0, 0")
        << Clicks{g_byStructure + luminescent("FL x-spot=0\nFL y-spot=0\n"), byLuminescent} << false << strSOLA;
    QTest::newRow("no light at all") << Clicks{g_byStructure, g_byStructure} << true << QString();
}

void tst_sequencekind::kindOfFiles()
{
    QFETCH(QList<QByteArray>, lstClicks);
    QFETCH(bool, bCT);
    QFETCH(QString, strKind);
    QTemporaryDir objFolder;
    const QString strFile =
        writeSequence(objFolder, lstClicks, bCT ? QByteArray("[CT Acquisition Parameters]\nVoltage=50\n") : QByteArray());
    QCOMPARE(SequenceKind::ofFile(strFile), strKind);
    QCOMPARE(SequenceKind::ofFile(strFile).isNull(), strKind.isNull());
    // A path that is relative means the same.
    const QString strBefore = QDir::currentPath();
    QVERIFY(QDir::setCurrent(objFolder.path()));
    const QString strRelative = SequenceKind::ofFile(QStringLiteral("SequenceInfo.txt"));
    QVERIFY(QDir::setCurrent(strBefore));
    QCOMPARE(strRelative, strKind);
}

void tst_sequencekind::fewerThanTwoClicksAreNoSequence_data()
{
    QTest::addColumn<QByteArray>("byClicks");
    QTest::addColumn<QString>("strKind");
    const QString strSOLA = QStringLiteral("SOLA");
    QTest::newRow("no list") << QByteArray() << QString();
    QTest::newRow("none") << QByteArray("[Click Numbers]\nCount=0\n") << QString();
    QTest::newRow("one") << QByteArray("[Click Numbers]\nCount=1\n1=C1\n") << QString();
    QTest::newRow("two") << QByteArray("[Click Numbers]\nCount=2\n1=C1\n2=C2\n") << strSOLA;
    QTest::newRow("two but one counted") << QByteArray("[Click Numbers]\nCount=1\n1=C1\n2=C2\n") << QString();
    QTest::newRow("three counted, two there") << QByteArray("[Click Numbers]\nCount=3\n1=C1\n3=C2\n") << strSOLA;
    QTest::newRow("two thousand million counted, one there") << QByteArray("[Click Numbers]\nCount=2147483647\n1=C1\n") << QString();
    QTest::newRow("count is no number") << QByteArray("[Click Numbers]\nCount=two\n1=C1\n2=C2\n") << QString();
    QTest::newRow("count is negative") << QByteArray("[Click Numbers]\nCount=-2\n1=C1\n2=C2\n") << QString();
    QTest::newRow("one click twice") << QByteArray("[Click Numbers]\nCount=2\n1=C1\n2=C1\n") << strSOLA;
}

void tst_sequencekind::fewerThanTwoClicksAreNoSequence()
{
    QFETCH(QByteArray, byClicks);
    QFETCH(QString, strKind);
    QTemporaryDir objFolder;
    const QByteArray byClick = g_byStructure + luminescent("");
    writeSequence(objFolder, {byClick, byClick});
    const QString strFile = objFolder.filePath(QStringLiteral("Sequence 2.txt"));
    CStudyWriter::writeFile(strFile, "[Sequence Information]\nSequence=S1\n" + byClicks);
    QCOMPARE(SequenceKind::ofFile(strFile), strKind);
}

void tst_sequencekind::clicksThatCannotBeReadSayNothing_data()
{
    QTest::addColumn<Damage>("fnDamage");
    QTest::addColumn<QString>("strKind"); // the other click alone makes it SOLA; the damaged one is fluorescent
    const QString strSOLA = QStringLiteral("SOLA");
    const auto bytes = [](const QByteArray& byText)
    { return Damage([byText](const QString& strFile) { CStudyWriter::writeFile(strFile, byText); }); };
    const auto instead = [](std::function<bool(const QString&)> fnMake)
    {
        return Damage(
            [fnMake](const QString& strFile)
            {
                QVERIFY(QFile::remove(strFile));
                QVERIFY(fnMake(strFile));
            });
    };
    const QByteArray byFluorescent = fluorescentAt("1", "1");
    QTest::newRow("sound") << Damage([](const QString&) {}) << QString();
    QTest::newRow("gone") << instead([](const QString&) { return true; }) << strSOLA;
    QTest::newRow("folder gone") << Damage([](const QString& strFile) { QVERIFY(QDir(QFileInfo(strFile).path()).removeRecursively()); })
                                 << strSOLA;
    QTest::newRow("empty") << bytes("") << strSOLA;
    QTest::newRow("NUL bytes") << bytes(QByteArray(4096, '\0')) << strSOLA;
    QTest::newRow("UTF-16") << bytes(QByteArray("\xFF\xFE", 2) +
                                     QByteArray(reinterpret_cast<const char*>(QString::fromLatin1(byFluorescent).utf16()),
                                                2 * byFluorescent.size()))
                            << strSOLA;
    QTest::newRow("picture") << bytes(QByteArray::fromHex("89504e470d0a1a0a0000000d49484452")) << strSOLA;
    QTest::newRow("line of a hundred thousand characters") << bytes(byFluorescent + "Note=" + QByteArray(100000, 'x') + '\n') << strSOLA;
    QTest::newRow("a folder") << instead([](const QString& strFile) { return QDir().mkpath(strFile); }) << strSOLA;
    QTest::newRow("a pipe") << instead([](const QString& strFile) { return mkfifo(qPrintable(strFile), 0600) == 0; }) << strSOLA;
    QTest::newRow("link to an endless device") << instead([](const QString& strFile)
                                                          { return QFile::link(QStringLiteral("/dev/zero"), strFile); })
                                               << strSOLA;
    QTest::newRow("dangling link") << instead([](const QString& strFile) { return QFile::link(QStringLiteral("nothing.txt"), strFile); })
                                   << strSOLA;
    QTest::newRow("loop of links") << instead([](const QString& strFile) { return QFile::link(QFileInfo(strFile).fileName(), strFile); })
                                   << strSOLA;
    QTest::newRow("claims 1 GiB") << Damage([](const QString& strFile) { QVERIFY(QFile::resize(strFile, qint64(1) << 30)); }) << strSOLA;
    // What can be read counts, however it is written.
    QTest::newRow("byte-order mark") << bytes("\xEF\xBB\xBF" + byFluorescent) << QString();
    QTest::newRow("ends of lines of other systems") << bytes(QByteArray(byFluorescent).replace("\n", "\r\n")) << QString();
    QTest::newRow("link to a sound file") << instead(
                                                 [byFluorescent](const QString& strFile)
                                                 {
                                                     CStudyWriter::writeFile(strFile + QStringLiteral(".real"), byFluorescent);
                                                     return QFile::link(QFileInfo(strFile).fileName() + QStringLiteral(".real"), strFile);
                                                 })
                                          << QString();
}

void tst_sequencekind::clicksThatCannotBeReadSayNothing()
{
    QFETCH(Damage, fnDamage);
    QFETCH(QString, strKind);
    QTemporaryDir objFolder;
    const QString strFile = writeSequence(objFolder, {g_byStructure + luminescent(""), fluorescentAt("1", "1")});
    fnDamage(objFolder.filePath(QStringLiteral("C2/ClickInfo.txt")));
    QCOMPARE(SequenceKind::ofFile(strFile), strKind);
}

void tst_sequencekind::sequenceFilesThatCannotBeReadAreOfNoKind_data()
{
    QTest::addColumn<Damage>("fnDamage");
    const auto instead = [](std::function<bool(const QString&)> fnMake)
    {
        return Damage(
            [fnMake](const QString& strFile)
            {
                QVERIFY(QFile::remove(strFile));
                QVERIFY(fnMake(strFile));
            });
    };
    QTest::newRow("gone") << instead([](const QString&) { return true; });
    QTest::newRow("empty") << Damage([](const QString& strFile) { CStudyWriter::writeFile(strFile, QByteArray()); });
    QTest::newRow("NUL bytes") << Damage([](const QString& strFile) { CStudyWriter::writeFile(strFile, QByteArray(100, '\0')); });
    QTest::newRow("a folder") << instead([](const QString& strFile) { return QDir().mkpath(strFile); });
    QTest::newRow("a pipe") << instead([](const QString& strFile) { return mkfifo(qPrintable(strFile), 0600) == 0; });
    QTest::newRow("loop of links") << instead([](const QString& strFile) { return QFile::link(QFileInfo(strFile).fileName(), strFile); });
    QTest::newRow("claims 1 GiB") << Damage([](const QString& strFile) { QVERIFY(QFile::resize(strFile, qint64(1) << 30)); });
}

void tst_sequencekind::sequenceFilesThatCannotBeReadAreOfNoKind()
{
    QFETCH(Damage, fnDamage);
    QTemporaryDir objFolder;
    const QByteArray byClick = g_byStructure + luminescent("");
    const QString strFile = writeSequence(objFolder, {byClick, byClick});
    QCOMPARE(SequenceKind::ofFile(strFile), QStringLiteral("SOLA"));
    fnDamage(strFile);
    QVERIFY(SequenceKind::ofFile(strFile).isNull());
}

void tst_sequencekind::filesWithoutPermissionSayNothing()
{
    QTemporaryDir objFolder;
    QVERIFY(QFile::setPermissions(objFolder.path(), QFile::Permissions(0x7755)));
    const QString strFile = writeSequence(objFolder, {g_byStructure + luminescent(""), fluorescentAt("1", "1")});
    const QString strClick = objFolder.filePath(QStringLiteral("C2/ClickInfo.txt"));
    QVERIFY(holdsForOrdinaryUser([&] { return SequenceKind::ofFile(strFile).isNull(); })); // mixed
    QVERIFY(QFile::setPermissions(strClick, QFile::Permissions()));
    QVERIFY(holdsForOrdinaryUser([&] { return SequenceKind::ofFile(strFile) == QLatin1String("SOLA"); }));
    // The same where the folder may not be entered.
    QVERIFY(QFile::setPermissions(strClick, QFile::ReadOwner | QFile::ReadOther));
    QVERIFY(QFile::setPermissions(objFolder.filePath(QStringLiteral("C2")), QFile::Permissions()));
    QVERIFY(holdsForOrdinaryUser([&] { return SequenceKind::ofFile(strFile) == QLatin1String("SOLA"); }));
    QVERIFY(QFile::setPermissions(objFolder.filePath(QStringLiteral("C2")), QFile::Permissions(0x7755)));
    QVERIFY(QFile::setPermissions(strFile, QFile::Permissions()));
    QVERIFY(holdsForOrdinaryUser([&] { return SequenceKind::ofFile(strFile).isNull(); }));
}

void tst_sequencekind::aClickListedOftenIsReadOnce()
{
    // One click of a megabyte, listed fifty thousand times: read each time it would be fifty gigabytes.
    QTemporaryDir objFolder;
    QByteArray byClick = g_byStructure + luminescent("");
    while (byClick.size() < 1000000)
    {
        byClick += "Note " + QByteArray::number(byClick.size()) + "=a note that fills the file\n";
    }
    CStudyWriter::writeFile(objFolder.filePath(QStringLiteral("C1/ClickInfo.txt")), byClick);
    const int nClicks = 50000;
    QByteArray by = "[Click Numbers]\nCount=" + QByteArray::number(nClicks) + '\n';
    for (int i = 1; i <= nClicks; ++i)
    {
        by += QByteArray::number(i) + "=C1\n";
    }
    const QString strFile = objFolder.filePath(QStringLiteral("SequenceInfo.txt"));
    CStudyWriter::writeFile(strFile, by);
    QElapsedTimer objTimer;
    objTimer.start();
    QCOMPARE(SequenceKind::ofFile(strFile), QStringLiteral("SOLA"));
    QVERIFY2(objTimer.elapsed() < 60000, qPrintable(QString::number(objTimer.elapsed())));
}

void tst_sequencekind::aHugeCountOfClicksEndsSoon()
{
    QTemporaryDir objFolder;
    const int nClicks = 90000;
    QByteArray by = "[Click Numbers]\nCount=2147483647\n";
    for (int i = 1; i <= nClicks; ++i)
    {
        by += QByteArray::number(i) + "=missing" + QByteArray::number(i) + '\n';
    }
    const QString strFile = objFolder.filePath(QStringLiteral("SequenceInfo.txt"));
    CStudyWriter::writeFile(strFile, by);
    QElapsedTimer objTimer;
    objTimer.start();
    QVERIFY(SequenceKind::ofFile(strFile).isNull());
    QVERIFY2(objTimer.elapsed() < 60000, qPrintable(QString::number(objTimer.elapsed())));
}

void tst_sequencekind::readingChangesNothing()
{
    QTemporaryDir objFolder;
    const QByteArray byClick = g_byStructure + luminescent("");
    const QString strFile = writeSequence(objFolder, {byClick, byClick});
    const auto listing = [&]
    {
        QStringList lstFiles;
        QDirIterator it(objFolder.path(), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
        while (it.hasNext())
        {
            const QFileInfo objFile(it.next());
            lstFiles.append(objFile.filePath() + QLatin1Char(' ') + QString::number(objFile.size()) + QLatin1Char(' ') +
                            objFile.lastModified().toString(Qt::ISODateWithMs));
        }
        lstFiles.sort();
        return lstFiles;
    };
    const QStringList lstBefore = listing();
    QCOMPARE(lstBefore.size(), 5);
    QCOMPARE(SequenceKind::ofFile(strFile), QStringLiteral("SOLA"));
    QCOMPARE(listing(), lstBefore);
}

QTEST_GUILESS_MAIN(tst_sequencekind)
#include "tst_sequencekind.moc"
