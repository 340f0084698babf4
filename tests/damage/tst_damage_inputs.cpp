#include "CProcessorMeter.h"
#include "CompareResult.h"
#include "CompareSettings.h"
#include "DamageTools.h"
#include "LogRecorder.h"
#include "OrmTestMain.h"

#include "CWalkRecorder.h"
#include "FuzzTarget.h"

#include <functional>

using DamageTools::bytes;
using DamageTools::plainUnit;
using DamageTools::smallResult;

namespace
{

constexpr int g_nCompared = 4194304; ///< bytes up to which the second reader reads too

using FnBytes = std::function<QByteArray()>;

/// What comes of a file.
enum EOutcome
{
    Read,
    Refused
};

SResultDocument sola(const char* pVersion = "2.0")
{
    return smallResult(SResultDocument::SOLA, pVersion);
}

/// The sound result of version 2.0 with one part replaced.
QByteArray with(const QByteArray& byOld, const QByteArray& byNew)
{
    return sola().replace(byOld, byNew).toXml();
}

/// Its surface's hexadecimal text with another beginning of the same length.
QByteArray vertices(const QByteArray& byFirst)
{
    QByteArray by = sola().toXml();
    const QByteArray byTag = "Vertices.Values><Text.Data>";
    return by.replace(by.indexOf(byTag) + byTag.size(), byFirst.size(), byFirst);
}

QByteArray repeated(const QByteArray& by, int nTimes)
{
    return by.repeated(nTimes);
}

QByteArray utf16(const QByteArray& by, bool bHighFirst)
{
    QByteArray byWide;
    for (const char c : by)
    {
        byWide += bHighFirst ? QByteArray(1, '\0') + c : QByteArray(1, c) + '\0';
    }
    return byWide;
}

} // namespace

Q_DECLARE_METATYPE(FnBytes)

/// Files that mean no good, one row each, and the right outcome: read as they stand, or refused with a reason in the log, at little cost.
class tst_damage_inputs : public QObject
{
    Q_OBJECT

private slots:
    void results_data();
    void results();
    void texts_data();
    void texts();

private:
    void addMarkup();
    void addCounts();
    void addHexText();
    void addEncodings();
    static void add(const char* pTitle, const QByteArray& by, EOutcome eOutcome, const char* pReason)
    {
        QTest::newRow(pTitle) << FnBytes([by] { return by; }) << static_cast<int>(eOutcome) << QString::fromUtf8(pReason);
    }
    static void addLarge(const char* pTitle, const FnBytes& fnBytes, EOutcome eOutcome, const char* pReason)
    {
        QTest::newRow(pTitle) << fnBytes << static_cast<int>(eOutcome) << QString::fromUtf8(pReason);
    }
};

void tst_damage_inputs::results_data()
{
    QTest::addColumn<FnBytes>("fnBytes");
    QTest::addColumn<int>("nOutcome");
    QTest::addColumn<QString>("strReason"); // part of a log entry; empty: none is asked for
    add("sound", sola().toXml(), Read, "");
    add("sound, version 1.0", sola("1.0").toXml(), Read, "");
    addMarkup();
    addCounts();
    addHexText();
    addEncodings();
}

void tst_damage_inputs::addMarkup()
{
    const QByteArray bySound = sola().toXml();
    const QByteArray byRoot = "<Ormelle.Result Version=\"2.0\">";
    const auto doctype = [&](const QByteArray& by) { return QByteArray(bySound).replace(byRoot, by + byRoot); };
    const char* pDoctype = "document type declarations (DOCTYPE) are not allowed";
    QByteArray byLaughs = "<!DOCTYPE l [<!ENTITY a0 \"aaaaaaaaaa\">";
    for (int i = 1; i <= 8; ++i)
    {
        byLaughs += "<!ENTITY a" + QByteArray::number(i) + " \"" + repeated("&a" + QByteArray::number(i - 1) + ";", 10) + "\">";
    }
    add("entities that multiply", doctype(byLaughs + "]>"), Refused, pDoctype);
    add("an entity from a file", doctype("<!DOCTYPE x [<!ENTITY e SYSTEM \"file:///etc/passwd\">]>"), Refused, pDoctype);
    add("an entity from the network", doctype("<!DOCTYPE x [<!ENTITY e SYSTEM \"http://localhost/\">]>"), Refused, pDoctype);
    add("a bare document type", doctype("<!DOCTYPE Ormelle.Result>"), Refused, pDoctype);
    addLarge(
        "a document type of 100 MB", [] { return "<!DOCTYPE x [" + QByteArray(100000000, ' ') + "]><Ormelle.Result/>"; }, Refused,
        pDoctype);
    add("an entity that nobody declares", with("SequenceID=\"SEQ1\"", "SequenceID=\"&e;\""), Refused, "unknown reference \"&e;\"");

    addLarge(
        "2 000 000 open elements", [] { return repeated("<a>", 2000000); }, Refused, "nested deeper than 64");
    addLarge(
        "200 000 nested elements", [byRoot] { return byRoot + repeated("<a>", 200000) + repeated("</a>", 200000) + "</Ormelle.Result>"; },
        Refused, "nested deeper than 64");
    addLarge(
        "20 000 attributes",
        [byRoot]
        {
            QByteArray by = byRoot + "<a";
            for (int i = 0; i < 20000; ++i)
            {
                by += " a" + QByteArray::number(i) + "=\"\"";
            }
            return by + "/></Ormelle.Result>";
        },
        Refused, "more than 256 attributes");
    addLarge(
        "an attribute value of 10 MB", [byRoot] { return byRoot + "<a b=\"" + QByteArray(10000000, 'v') + "\"/></Ormelle.Result>"; },
        Refused, "longer than 65536 bytes");

    add("text after the document", bySound + "x", Refused, "content after the end of the document");
    add("two documents", bySound + byRoot + "</Ormelle.Result>", Refused, "content after the end of the document");
    add("unknown elements and attributes",
        QByteArray(bySound).replace(byRoot, byRoot + "<New a=\"1\"><b/>text</New>").replace("Count=", "New=\"1\" Count="), Read, "");
    addLarge(
        "a very long remark", [bySound] { return bySound + "<!--" + QByteArray(20000000, 'x') + "-->"; }, Read, "");
    addLarge(
        "12 800 blocks that nobody asks for",
        [bySound, byRoot]
        {
            QByteArray byBlocks = "<Blocks>";
            for (int i = 0; i < 12800; ++i)
            {
                byBlocks += "<Block" + QByteArray::number(i) + "><Text.Data>0000803F</Text.Data></Block" + QByteArray::number(i) + ">";
            }
            return QByteArray(bySound).replace(byRoot, byRoot + byBlocks + "</Blocks>");
        },
        Read, "");
    add("settings", "[SOLA_1]\nMenuName=a\n", Refused, "not a result document");
    add("a picture", QByteArray("\x89PNG\r\n\x1A\n\0\0\0\rIHDR", 16), Refused, "not a result document");
    add("a program",
        QByteArray("\x7F"
                   "ELF\x02\x01\x01\0",
                   8),
        Refused, "not a result document");
    add("compressed", QByteArray("\x1F\x8B\x08\0\0\0\0\0", 8), Refused, "not a result document");
}

void tst_damage_inputs::addCounts()
{
    // The height map's sizes: what is no int is a map that is not there, which a result does without.
    const auto map = [](const QByteArray& byWidth, const QByteArray& byHeight)
    { return with("Width=\"4\" Height=\"3\"", "Width=\"" + byWidth + "\" Height=\"" + byHeight + "\""); };
    add("a map of 25 million pixels that holds 12", map("5000", "5000"), Refused, "declares 25000000 values, holds 12");
    add("map sizes whose product is 0 in 32 bits", map("65536", "65536"), Refused, "declares 4294967296 values, holds 12");
    add("map sizes whose product is negative in 32 bits", map("46341", "46341"), Refused, "declares 2147488281 values, holds 12");
    add("a map size beyond an int", map("2147483648", "2"), Read, "is no int");
    add("map sizes beyond 32 bits", map("4294967296", "4294967296"), Read, "is no int");
    add("negative map sizes", map("-4", "3"), Read, "");
    add("no pixels", map("0", "5"), Read, "");
    const auto densities = [](const QByteArray& byNames, const QByteArray& byVertices)
    {
        return sola()
            .replace("Wavelengths Count=\"2\" Views=\"0\"", "Wavelengths Count=\"" + byNames + "\" Views=\"2\"")
            .replace("Total.WaveLengths=\"2\" Total.Vertices=\"4\"",
                     "Total.WaveLengths=\"" + byNames + "\" Total.Vertices=\"" + byVertices + "\"")
            .toXml();
    };
    add("densities of as many values as 64 bits hold", densities("2147483647", "2147483647"), Refused,
        "declares 2147483647 values, holds 4");
    add("densities of 65536 rows of 65536", densities("65536", "65536"), Refused, "declares 65536 values, holds 4");
    add("one density row too few", densities("3", "4"), Refused, "Values[2]: absent");
    add("one density row too many", densities("1", "4"), Read, "");
    add("densities of another number of names", sola().replace("Total.WaveLengths=\"2\"", "Total.WaveLengths=\"3\"").toXml(), Refused, "");

    for (const char* pCount : {"-1", "+3", " 4", "4 ", "4.0", "4e0", "0x4", "004", "", "\xD9\xA4", "12345678901234567890"})
    {
        const QByteArray byReason = "the count \"" + QByteArray(pCount) + "\" of";
        QTest::addRow("a count of vertices that is \"%s\"", pCount)
            << FnBytes([pCount] { return with("Vertices Count=\"4\"", "Vertices Count=\"" + QByteArray(pCount) + "\""); })
            << static_cast<int>(Refused) << QString::fromUtf8(byReason);
    }
    add("no count of vertices", with("Vertices Count=\"4\"", "Vertices"), Refused, "the count \"\" of");
    add("the count of vertices twice", with("Vertices Count=\"4\"", "Vertices Count=\"4\" Count=\"4\""), Refused,
        "the attribute \"Count\" is given twice");
    add("more vertices than the text holds", with("Vertices Count=\"4\"", "Vertices Count=\"5\""), Refused, "declares 15 values, holds 12");
    add("more vertices than bytes", with("Vertices Count=\"4\"", "Vertices Count=\"2147483647\""), Refused, "declares 6442450941 values");
    add("more voxels than bytes", with("Kind=\"SOLA\" Count=\"8\"", "Kind=\"SOLA\" Count=\"2000000000\""), Refused,
        "declares 8000000000 values");
    add("fewer vertices than triangles name", with("Vertices Count=\"4\"", "Vertices Count=\"3\""), Refused, "names vertex 3 of 3");

    SResultDocument objIndex = sola();
    objIndex.vecTriangles[5] = 4;
    add("a triangle that names the vertex behind the last", objIndex.toXml(), Refused, "names vertex 4 of 4");
    objIndex.vecTriangles[5] = 4294967295U;
    add("a triangle that names the largest number", objIndex.toXml(), Refused, "names vertex 4294967295 of 4");
    add("a triangle that names a negative number", sola("1.0").replace("A=\"0\" B=\"2\"", "A=\"0\" B=\"-1\"").toXml(), Refused,
        "B=\"-1\" is no number");
    add("a triangle without its third corner", sola("1.0").replace("B=\"2\" C=\"1\"", "B=\"2\"").toXml(), Refused, "has no C");

    SResultDocument objEmpty = sola();
    objEmpty.vecVertices.clear();
    objEmpty.vecTriangles.clear();
    objEmpty.vecVoxels.clear();
    objEmpty.setNames({});
    objEmpty.lstClicks.clear();
    objEmpty.lstResults.clear();
    objEmpty.nMapWidth = 0;
    add("nothing in any block", objEmpty.toXml(), Read, "");
    add("no block at all", "<Ormelle.Result Version=\"2.0\"/>", Refused, "there is no");
}

void tst_damage_inputs::addHexText()
{
    add("lower-case digits", vertices("0000a0c0"), Read, "");
    add("a character behind the digits asked for",
        with("</Text.Data></Orm3.0.Surface.Vertices.Values>", "x</Text.Data></Orm3.0.Surface.Vertices.Values>"), Read, "");
    SResultDocument objShort = sola();
    objShort.vecMeasured[1].pop_back();
    add("a row of densities that is one value short", objShort.toXml(), Refused, "declares 4 values, holds 3");
    SResultDocument objLong = sola();
    objLong.vecMeasured[1].push_back(1.0f);
    add("a row of densities that is one value long", objLong.toXml(), Read, "");
    const char* pNoDigit = "no hexadecimal digit at offset ";
    add("the letter behind the last digit", vertices("0000g03F"), Refused, pNoDigit);
    add("a sign", vertices("-000803F"), Refused, pNoDigit);
    add("a prefix", vertices("0x00803F"), Refused, pNoDigit);
    add("a full-width digit",
        vertices("0000\xEF\xBC\x90"
                 "3F"),
        Refused, pNoDigit);
    add("a line end", vertices("0000\n03F"), Refused, pNoDigit);
    add("a blank before", vertices(" 000803F"), Refused, pNoDigit);
    add("NUL among the digits",
        vertices(QByteArray("0000\0"
                            "03F",
                            8)),
        Refused, "NUL byte");
    const QByteArray byTag = "Vertices.Values><Text.Data>0";
    add("a digit as a reference", with(byTag, QByteArray(byTag).replace(">0", ">&#48;")), Read, "");
    add("a digit in CDATA", with(byTag, QByteArray(byTag).replace(">0", "><![CDATA[0]]>")), Read, "");
    add("a remark among the digits", with(byTag, byTag + "<!-- x -->"), Read, "");

    add("a coordinate that is no number", vertices("0000C07F"), Refused, "has a coordinate that is not finite");
    add("a coordinate that is a signalling no number", vertices("0100807F"), Refused, "has a coordinate that is not finite");
    add("an infinite coordinate", vertices("0000807F"), Refused, "has a coordinate that is not finite");
    add("a negative infinite coordinate", vertices("000080FF"), Refused, "has a coordinate that is not finite");
    add("a denormal coordinate", vertices("01000000"), Read, "");
    add("a negative zero", vertices("00000080"), Read, "");
    add("the largest coordinate", vertices("FFFF7F7F"), Read, "");
    SResultDocument objVoxels = sola();
    objVoxels.vecVoxels[3] = std::numeric_limits<float>::quiet_NaN();
    add("a voxel value that is no number", objVoxels.toXml(), Refused, "has a number that is not finite");
    for (const bool bAll : {false, true})
    {
        SResultDocument objDensities = sola();
        for (std::vector<float>& vecRow : objDensities.vecSimulated)
        {
            vecRow.front() = std::numeric_limits<float>::quiet_NaN();
            vecRow.resize(4, std::numeric_limits<float>::infinity());
            std::fill(vecRow.begin(), bAll ? vecRow.end() : vecRow.begin(), std::numeric_limits<float>::quiet_NaN());
        }
        add(bAll ? "densities all of which are no numbers" : "densities the first of which is no number", objDensities.toXml(), Read, "");
    }
    add("values with the highest byte first",
        vertices("3F80000040800000408000004080000040800000408000004080000040800000408000004080000040800000"), Read,
        "values look byte-swapped");
}

void tst_damage_inputs::addEncodings()
{
    const QByteArray bySound = sola().toXml();
    add("a byte-order mark", "\xEF\xBB\xBF" + bySound, Read, "");
    for (const bool bHighFirst : {false, true})
    {
        const char* pReason = "encoding not supported, it must be UTF-8";
        add(bHighFirst ? "UTF-16, high byte first" : "UTF-16, low byte first", utf16(bySound, bHighFirst), Refused, pReason);
        add(bHighFirst ? "UTF-16, high byte first, with a mark" : "UTF-16, low byte first, with a mark",
            (bHighFirst ? "\xFE\xFF" : "\xFF\xFE") + utf16(bySound, bHighFirst), Refused, pReason);
    }
    add("Latin-1 by its own word", with("UTF-8", "ISO-8859-1"), Refused, "encoding not supported: \"ISO-8859-1\"");
    add("an unknown encoding", with("UTF-8", "FOO-9"), Refused, "encoding not supported: \"FOO-9\"");
    add("a byte of Latin-1", with("SEQ1", "SEQ\xE9"), Refused, "byte 0xe9 is not UTF-8 (line ");
    add("NUL in an attribute", with("SEQ1", QByteArray("SEQ\0", 4)), Refused, "NUL byte");
    add("nothing but NUL", QByteArray(100000, '\0'), Refused, "not a result document");
    add("0 bytes", "", Refused, "the file is empty");
    add("1 byte", "<", Refused, "the file ends early");
}

void tst_damage_inputs::results()
{
    QFETCH(FnBytes, fnBytes);
    QFETCH(int, nOutcome);
    QFETCH(QString, strReason);
    const QByteArray by = fnBytes();
    if (by.size() <= g_nCompared)
    {
        QCOMPARE(CompareResult::readBothWays(bytes(by), false, plainUnit(SResultDocument::SOLA)), nOutcome == Read);
    }
    const QString strFile = FuzzTarget::fileWith(by);
    LogRecorder objLog;
    CWalkRecorder objMessages(SResultDocument::SOLA);
    SSOLAAnalysis objRecord;
    bool bRead = false;
    const CProcessorMeter objMeter;
    {
        const CMemoryBound objBound(by.size() + 32 * 1024 * 1024);
        bRead = ResultDocument::read(ResultDocument::sola(), objMessages, strFile,
                                     {objRecord, objRecord.nWavelengthCount, objRecord.lstWavelengths});
    }
    QVERIFY2(objMeter.isWithinPatience(by.size()), qPrintable(QString::number(objMeter.seconds())));
    QVERIFY2(bRead == (nOutcome == Read), qPrintable(objLog.messages().join('\n')));
    const QString strLog = objLog.messages().join('\n');
    QVERIFY2(strReason.isEmpty() || strLog.contains(strReason), qPrintable(strLog));
    // A refusal is told, in the log of the host or by the step at work.
    QVERIFY(bRead || !strLog.isEmpty() || !objMessages.lstFailures.isEmpty());
}

void tst_damage_inputs::texts_data()
{
    QTest::addColumn<FnBytes>("fnBytes");
    QTest::addColumn<int>("nOutcome");
    QTest::addColumn<QString>("strReason");
    const char* pIgnored = "is neither a section nor a key and is ignored";
    add("no opening bracket", "a]\nk=1\n", Read, pIgnored);
    add("no closing bracket", "[a\nk=1\n", Read, pIgnored);
    add("no section", "k=1\n", Read, "");
    add("no equal sign", "[a]\nk\n", Read, "line 2 is neither a section nor a key and is ignored");
    add("no key", "[a]\n=1\n", Read, pIgnored);
    add("no value", "[a]\nk=\n", Read, "");
    add("nothing but remarks", "# a\n; b\n", Read, "");
    add("0 bytes", "", Read, "");
    add("a section twice", "[a]\nk=1\n[b]\n[a]\nl=2\n", Read, "");
    add("a key twice", "[a]\nk=1\nk=2\n", Read, "");
    add("names that differ in case", "[a]\nk=1\nK=2\n[A]\nk=3\n", Read, "");
    add("two results of one name", "[SOLA_1]\nMenuName=a\nFileName=a.xml\n[SOLA_2]\nMenuName=a\nFileName=b.xml\n", Read,
        "several SOLA results are named \"a\"");
    add("two results of one file", "[SOLA_1]\nMenuName=a\nFileName=a.xml\n[SOLA_2]\nMenuName=b\nFileName=a.xml\n", Read, "");
    add("punctuation in a value", "[a]\nk= , ; = \" \\ % # [ \n", Read, "");
    add("line ends of all kinds", "[a]\rk=1\r\nl=2\nm=3\r\r\nn=4", Read, "");
    add("NUL",
        QByteArray("[a]\nk=\0"
                   "1\n",
                   9),
        Refused, "NUL byte in line 2");
    add("a byte-order mark", "\xEF\xBB\xBF[a]\nk=1\n", Read, "");
    add("UTF-16", utf16("[a]\nk=1\n", false), Refused, "encoding not supported");
    add("a byte of Latin-1", "[a]\nk=caf\xE9\n", Read, "line 2 is not UTF-8");
    addLarge(
        "a line of 50 MB", [] { return "k=" + QByteArray(50000000, 'v'); }, Refused, "too large");
    addLarge(
        "300 000 keys", [] { return repeated("k=v\n", 300000); }, Refused, "more than 100000 entries");
    add("numbers with a comma or in other digits", "[luminescent image]\nFL x-spot=1,5\nFL y-spot=\xD9\xA1\xD9\xAB\xD9\xA5\n", Read, "");
    add("positions beyond any image", "[luminescent image]\nFL x-spot=1e308\nFL y-spot=-1\nField of View=nan\n", Read, "");
    const QByteArray byClicks = "[Click Numbers]\nCount=3\n";
    add("a click too few", byClicks + "1=a\n2=b\n", Read, "the first one missing is 3");
    add("a click too many", byClicks + "1=a\n2=b\n3=c\n4=d\n", Read, "has 1 clicks more than the 3 it says");
    add("a gap among the clicks", byClicks + "1=a\n3=c\n", Read, "the first one missing is 2");
    add("a count of clicks beyond all memory", "[Click Numbers]\nCount=2147483647\n1=a\n", Read, "the first one missing is 2");
    add("a count of clicks that is none", "[Click Numbers]\nCount=3.0\n1=a\n", Read, "Count=\"3.0\" is no count");
    add("dates that are none", "[Sequence Information]\nSequence=S\nDate Time=2026-02-31T25:61:00+99:00\n", Read, "");
    add("text that others would interpret", "[a]\nk=@Variant(x)\nl=%n ${HOME} $(id)\n", Read, "");
    add("a name of 65 000 characters", "[" + QByteArray(65000, 'n') + "]\nMenuName=" + QByteArray(65000, 'm') + "\n", Read, "");
    add("names with marks, tags and directions", "[SOLA_1]\nMenuName=<img src=file:///x>\t\xE2\x80\xAE\x61\xCC\x81\xF0\x9F\x90\xAD\n", Read,
        "");
    add("a file name that leads out", "[SOLA_1]\nMenuName=a\nFileName=../../../etc/passwd\n", Read, "leads outside the study folder");
    add("an absolute file name", "[SOLA_1]\nMenuName=a\nFileName=/etc/passwd\n", Read, "leads outside the study folder");
    add("a file name for another system", "[SOLA_1]\nMenuName=a\nFileName=C:\\x\n", Read, "leads outside the study folder");
    add("an address as a file name", "[SOLA_1]\nMenuName=a\nFileName=file:///x\n", Read, "leads outside the study folder");
    add("a folder as a file name", "[SOLA_1]\nMenuName=a\nFileName=below/\n", Read, "names a folder");
}

void tst_damage_inputs::texts()
{
    QFETCH(FnBytes, fnBytes);
    QFETCH(int, nOutcome);
    QFETCH(QString, strReason);
    const QByteArray by = fnBytes();
    LogRecorder objLog;
    const CProcessorMeter objMeter;
    QCOMPARE(CompareSettings::textBothWays(bytes(by)), nOutcome == Read);
    if (by.size() <= g_nCompared)
    {
        QCOMPARE(CompareSettings::filesBothWays(bytes(by)), nOutcome == Read);
    }
    QVERIFY2(objMeter.isWithinPatience(by.size()), qPrintable(QString::number(objMeter.seconds())));
    const QString strLog = objLog.messages().join('\n');
    QVERIFY2(strReason.isEmpty() || strLog.contains(strReason), qPrintable(strLog));
}

ORM_TEST_MAIN(tst_damage_inputs)
#include "tst_damage_inputs.moc"
