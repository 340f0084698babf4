#include "CPLSettingsFileWrapper.h"
#include "LogRecorder.h"
#include "OrmFileReader.h"
#include "TestFiles.h"

#include <QDir>
#include <QtTest>

#include <unistd.h>

namespace
{
/// An index of so many results, each with a file name of its own.
QByteArray indexOf(int nResults)
{
    QByteArray baText;
    for (int i = 0; i < nResults; ++i)
        baText += "[SOLA_" + QByteArray::number(i) + "]\nMenuName=Day " + QByteArray::number(i) + "\nFileName=SOLA_" +
                  QByteArray::number(i) + ".xml\n";
    return baText;
}

constexpr auto pMenuNameTag = "MenuName";
constexpr auto pFileNameTag = "FileName";
} // namespace

/// The index of saved results: names, files, and what stays in its folder.
class tst_resultindex : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void resultsAreListedInFileOrder();
    void tagsMayBeSetBeforeOrAfterLoading_data();
    void tagsMayBeSetBeforeOrAfterLoading();
    void automaticMenuNames_data();
    void automaticMenuNames();
    void fileNamesAreFoundByMenuName_data();
    void fileNamesAreFoundByMenuName();
    void equalMenuNamesAreAllListedAndTheFirstCounts();
    void fileNamesStayInTheFolder_data();
    void fileNamesStayInTheFolder();
    void atMostTenThousandResultsAreListed_data();
    void atMostTenThousandResultsAreListed();
    void anUnreadableIndexFails_data();
    void anUnreadableIndexFails();

private:
    TestFiles m_objFiles;
};

void tst_resultindex::initTestCase()
{
    QVERIFY(m_objFiles.isValid());
}

void tst_resultindex::resultsAreListedInFileOrder()
{
    const QString strFile = m_objFiles.write(
        "SOLA.txt", "[SOLA_2]\nMenuName=Day 4, 5 wavelengths\nFileName=SOLA_2.xml\n[SOLA_1]\nFileName=SOLA_1.xml\nMenuName= Day 0 \n");
    CPLSettingsFileWrapper objIndex;
    objIndex.setAutoMenuNameTag("SOLA_");
    objIndex.setMenuNameTag(pMenuNameTag);
    objIndex.setFileNameTag(pFileNameTag);
    objIndex.setSettingsFileName(strFile);
    QVERIFY(objIndex.getMenuNames("SOLA").isEmpty());
    QCOMPARE(objIndex.load(), 0);
    QCOMPARE(objIndex.getMenuNames("SOLA"), (QStringList{"Day 4, 5 wavelengths", "Day 0"}));
    QCOMPARE(objIndex.getFileNameForMenuName("Day 0", "-"), QStringLiteral("SOLA_1.xml"));
}

void tst_resultindex::tagsMayBeSetBeforeOrAfterLoading_data()
{
    QTest::addColumn<bool>("bBefore");
    QTest::newRow("before") << true;
    QTest::newRow("after") << false;
}

void tst_resultindex::tagsMayBeSetBeforeOrAfterLoading()
{
    QFETCH(bool, bBefore);

    const QString strFile = m_objFiles.write("NOVA.txt", "[NOVA_1]\nTitle=Day 0\nPlace=NOVA_1.xml\n");
    CPLSettingsFileWrapper objIndex;
    const auto setTags = [&]
    {
        objIndex.setMenuNameTag("Title");
        objIndex.setFileNameTag("Place");
    };
    if (bBefore)
        setTags();
    QCOMPARE(objIndex.load(strFile), 0);
    if (!bBefore)
        setTags();
    QCOMPARE(objIndex.getMenuNames("NOVA"), QStringList{"Day 0"});
    QCOMPARE(objIndex.getFileNameForMenuName("Day 0", "-"), QStringLiteral("NOVA_1.xml"));
}

void tst_resultindex::automaticMenuNames_data()
{
    QTest::addColumn<QByteArray>("baText");
    QTest::addColumn<QString>("strTag");
    QTest::addColumn<QStringList>("lstExpected");

    QTest::newRow("a name is given") << QByteArray("[SOLA_1]\nMenuName=Day 0") << "SOLA_" << QStringList{"Day 0"};
    QTest::newRow("a name under any section") << QByteArray("[Result]\nMenuName=Day 0") << "SOLA_" << QStringList{"Day 0"};
    QTest::newRow("none") << QByteArray("[SOLA_1]\nFileName=a.xml") << "SOLA_" << QStringList{"SOLA_1"};
    QTest::newRow("an empty one") << QByteArray("[SOLA_1]\nMenuName=\nFileName=a.xml") << "SOLA_" << QStringList{"SOLA_1"};
    QTest::newRow("none under another section")
        << QByteArray("[General]\nVersion=1\n[SOLA_1]\nFileName=a.xml") << "SOLA_" << QStringList{"SOLA_1"};
    QTest::newRow("the tag of the other kind") << QByteArray("[SOLA_1]\nFileName=a.xml") << "NOVA_" << QStringList();
    QTest::newRow("the tag in other case") << QByteArray("[sola_1]\nFileName=a.xml") << "SOLA_" << QStringList();
    QTest::newRow("no tag is set") << QByteArray("[SOLA_1]\nFileName=a.xml") << QString() << QStringList{"SOLA_1"};
    QTest::newRow("the nameless section has no name") << QByteArray("FileName=a.xml") << QString() << QStringList();
    QTest::newRow("an empty section") << QByteArray("[SOLA_9]") << "SOLA_" << QStringList{"SOLA_9"};
}

void tst_resultindex::automaticMenuNames()
{
    QFETCH(QByteArray, baText);
    QFETCH(QString, strTag);
    QFETCH(QStringList, lstExpected);

    CPLSettingsFileWrapper objIndex;
    QCOMPARE(objIndex.load(m_objFiles.write("SOLA.txt", baText)), 0);
    objIndex.setMenuNameTag(pMenuNameTag);
    objIndex.setFileNameTag(pFileNameTag);
    if (!strTag.isNull())
        objIndex.setAutoMenuNameTag(strTag);
    QCOMPARE(objIndex.getMenuNames("SOLA"), lstExpected);
}

void tst_resultindex::fileNamesAreFoundByMenuName_data()
{
    QTest::addColumn<QString>("strName");
    QTest::addColumn<QString>("strExpected");

    QTest::newRow("exact") << "Day 0"
                           << "zero.xml";
    QTest::newRow("exact comes before the first like it") << "DAY 0"
                                                          << "upper.xml";
    QTest::newRow("in other case") << "dAY 0"
                                   << "zero.xml";
    QTest::newRow("by its section") << "SOLA_4"
                                    << "four.xml";
    QTest::newRow("by its section in other case") << "sola_4"
                                                  << "four.xml";
    QTest::newRow("unknown") << "Day 9"
                             << "";
    QTest::newRow("empty") << ""
                           << "";
    QTest::newRow("without a file name") << "no file"
                                         << "";
    QTest::newRow("with an empty file name") << "empty file"
                                             << "";
    QTest::newRow("with the mark for none") << "dash"
                                            << "";
    QTest::newRow("plain text, not a pattern") << "Day *"
                                               << "";
}

void tst_resultindex::fileNamesAreFoundByMenuName()
{
    QFETCH(QString, strName);
    QFETCH(QString, strExpected);

    CPLSettingsFileWrapper objIndex;
    QCOMPARE(objIndex.load(m_objFiles.write("SOLA.txt", "[SOLA_1]\nMenuName=Day 0\nFileName=zero.xml\n"
                                                        "[SOLA_2]\nMenuName=DAY 0\nFileName=upper.xml\n"
                                                        "[SOLA_4]\nFileName=four.xml\n[SOLA_5]\nMenuName=no file\n"
                                                        "[SOLA_6]\nMenuName=empty file\nFileName=\n[SOLA_7]\nMenuName=dash\nFileName=-\n")),
             0);
    objIndex.setMenuNameTag(pMenuNameTag);
    objIndex.setFileNameTag(pFileNameTag);
    QCOMPARE(objIndex.getFileNameForMenuName(strName, "-"), strExpected);
}

void tst_resultindex::equalMenuNamesAreAllListedAndTheFirstCounts()
{
    CPLSettingsFileWrapper objIndex;
    objIndex.setMenuNameTag(pMenuNameTag);
    objIndex.setFileNameTag(pFileNameTag);
    QCOMPARE(objIndex.load(m_objFiles.write("SOLA.txt", "[SOLA_1]\nMenuName=Day 0\nFileName=one.xml\n"
                                                        "[SOLA_2]\nMenuName=Day 0\nFileName=two.xml\n"
                                                        "[SOLA_3]\nMenuName=Day 4\nFileName=one.xml\n")),
             0);
    LogRecorder objLog;
    QCOMPARE(objIndex.getMenuNames("SOLA"), (QStringList{"Day 0", "Day 0", "Day 4"}));
    QVERIFY2(objLog.isOne(2, "several SOLA results are named \"Day 0\"; the first one is the one that loads"),
             qPrintable(objLog.messages().join('\n')));
    QCOMPARE(objIndex.getFileNameForMenuName("Day 0", "-"), QStringLiteral("one.xml"));
    QCOMPARE(objIndex.getFileNameForMenuName("Day 4", "-"), QStringLiteral("one.xml"));
}

void tst_resultindex::fileNamesStayInTheFolder_data()
{
    QTest::addColumn<QString>("strName");
    QTest::addColumn<bool>("bAccepted");

    QTest::newRow("a file") << "good.xml" << true;
    QTest::newRow("a file that is missing") << "none.xml" << true;
    QTest::newRow("a file in a folder below") << "below/good.xml" << true;
    QTest::newRow("up and down again") << "below/../good.xml" << true;
    QTest::newRow("here") << "./good.xml" << true;
    QTest::newRow("two points in a name") << "a..b.xml" << true;
    QTest::newRow("255 bytes") << QString(251, 'n') + ".xml" << true;
    QTest::newRow("a link to a sibling") << "sibling.xml" << true;
    QTest::newRow("a link to a link to a sibling") << "chain.xml" << true;
    QTest::newRow("through a linked folder that is inside") << "linkbelow/good.xml" << true;
    QTest::newRow("up") << "../outside.xml" << false;
    QTest::newRow("far up") << "../../../etc/passwd" << false;
    QTest::newRow("up through a folder") << "below/../../outside.xml" << false;
    QTest::newRow("up through a folder that is missing") << "a/../../x" << false;
    QTest::newRow("absolute") << "/etc/passwd" << false;
    QTest::newRow("absolute, twice") << "//etc/passwd" << false;
    QTest::newRow("absolute, though inside") << m_objFiles.path("XML/good.xml") << false;
    QTest::newRow("a drive") << "C:\\x" << false;
    QTest::newRow("a drive with a slash") << "C:/x" << false;
    QTest::newRow("a server") << "\\\\srv\\x" << false;
    QTest::newRow("backwards up") << "..\\outside.xml" << false;
    QTest::newRow("an address") << "file:///etc/passwd" << false;
    QTest::newRow("a home") << "~/x" << false;
    QTest::newRow("the folder itself") << "." << false;
    QTest::newRow("the folder above") << ".." << false;
    QTest::newRow("the folder itself the long way") << "below/.." << false;
    QTest::newRow("a folder") << "below/" << false;
    QTest::newRow("a link to outside") << "outside.xml" << false;
    QTest::newRow("an absolute link to outside") << "absolute.xml" << false;
    QTest::newRow("a link to outside that is missing") << "dangling.xml" << false;
    QTest::newRow("a link in a circle") << "loop.xml" << false;
    QTest::newRow("through a linked folder outside") << "linkoutside/outside.xml" << false;
    QTest::newRow("through a link to process descriptors") << "fd/0" << false;
}

void tst_resultindex::fileNamesStayInTheFolder()
{
    QFETCH(QString, strName);
    QFETCH(bool, bAccepted);

    QDir objTop(m_objFiles.folder());
    if (!objTop.exists("XML"))
    {
        QVERIFY(objTop.mkpath("XML/below"));
        QVERIFY(objTop.mkpath("other"));
        for (const char* pName : {"XML/good.xml", "XML/below/good.xml", "outside.xml", "other/outside.xml"})
            QVERIFY(!m_objFiles.write(pName, "x").isNull());
        const auto link = [&](const QString& strTarget, const QString& strLink) {
            return symlink(QFile::encodeName(strTarget).constData(), QFile::encodeName(m_objFiles.path("XML/" + strLink)).constData()) == 0;
        };
        QVERIFY(link("good.xml", "sibling.xml") && link("sibling.xml", "chain.xml") && link("below", "linkbelow"));
        QVERIFY(link("../outside.xml", "outside.xml") && link(m_objFiles.path("outside.xml"), "absolute.xml"));
        QVERIFY(link("../none.xml", "dangling.xml") && link("loop.xml", "loop.xml") && link("../other", "linkoutside"));
        QVERIFY(link("/proc/self/fd", "fd"));
    }
    CPLSettingsFileWrapper objIndex;
    QCOMPARE(objIndex.load(m_objFiles.write("XML/SOLA.txt", "[SOLA_1]\nMenuName=Day 0\nFileName=" + strName.toUtf8() + "\n")), 0);
    objIndex.setMenuNameTag(pMenuNameTag);
    objIndex.setFileNameTag(pFileNameTag);
    LogRecorder objLog;
    QCOMPARE(objIndex.getFileNameForMenuName("Day 0", "-"), bAccepted ? strName : QString());
    QVERIFY2(bAccepted ? objLog.entries().isEmpty() : objLog.isOne(3, "XML/SOLA.txt: [SOLA_1] FileName=\"" + strName + "\": "),
             qPrintable(objLog.messages().join('\n')));

    // Reading by that name keeps to the same rule.
    QByteArray baContent = "before";
    const bool bThere = bAccepted && QFile::exists(m_objFiles.path("XML/" + strName));
    QCOMPARE(OrmFileReader::readBeneath(m_objFiles.path("XML"), strName, baContent), bThere);
    QCOMPARE(baContent, bThere ? QByteArray("x") : QByteArray("before"));
}

void tst_resultindex::atMostTenThousandResultsAreListed_data()
{
    QTest::addColumn<int>("nResults");
    QTest::addColumn<int>("nListed");
    QTest::newRow("just below") << 9999 << 9999;
    QTest::newRow("at the limit") << 10000 << 10000;
    QTest::newRow("one more") << 10001 << 10000;
    QTest::newRow("many more") << 40000 << 10000;
}

void tst_resultindex::atMostTenThousandResultsAreListed()
{
    QFETCH(int, nResults);
    QFETCH(int, nListed);

    CPLSettingsFileWrapper objIndex;
    objIndex.setAutoMenuNameTag("SOLA_");
    objIndex.setMenuNameTag(pMenuNameTag);
    objIndex.setFileNameTag(pFileNameTag);
    QCOMPARE(objIndex.load(m_objFiles.write("SOLA.txt", indexOf(nResults))), 0);
    LogRecorder objLog;
    const QStringList lstNames = objIndex.getMenuNames("SOLA");
    QCOMPARE(lstNames.size(), nListed);
    QCOMPARE(lstNames.last(), QStringLiteral("Day %1").arg(nListed - 1));
    if (nResults > nListed)
        QVERIFY(objLog.isOne(2, QStringLiteral("%1 SOLA results beyond the first 10000 are not listed").arg(nResults - nListed)));
    else
        QVERIFY(objLog.entries().isEmpty());
    QCOMPARE(objIndex.getFileNameForMenuName(lstNames.last(), "-"), QStringLiteral("SOLA_%1.xml").arg(nListed - 1));
}

void tst_resultindex::anUnreadableIndexFails_data()
{
    QTest::addColumn<QString>("strPath");
    QTest::addColumn<QString>("strReason");
    QTest::newRow("a missing one") << m_objFiles.path("XML2/SOLA.txt") << "No such file or directory";
    QTest::newRow("a folder") << m_objFiles.folder() << "not a regular file";
    QTest::newRow("no name") << QString() << "no file name";
    QTest::newRow("a device") << "/dev/zero"
                              << "not a regular file";
}

void tst_resultindex::anUnreadableIndexFails()
{
    QFETCH(QString, strPath);
    QFETCH(QString, strReason);

    CPLSettingsFileWrapper objIndex;
    objIndex.setMenuNameTag(pMenuNameTag);
    objIndex.setSettingsFileName(strPath);
    QVERIFY(objIndex.load() != 0);
    QVERIFY(objIndex.load(strPath) != 0);
    QVERIFY2(objIndex.lastError().contains(strReason), qPrintable(objIndex.lastError()));
    QVERIFY(objIndex.getMenuNames("SOLA").isEmpty());
    QVERIFY(objIndex.getFileNameForMenuName("Day 0", "-").isEmpty());
}

QTEST_GUILESS_MAIN(tst_resultindex)
#include "tst_resultindex.moc"
