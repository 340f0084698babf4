#include "CPLResultXMLWrapper.h"
#include "CostMeter.h"
#include "LogRecorder.h"
#include "OrmDocumentLimits.h"
#include "TestDocuments.h"
#include "TestFiles.h"

#include <QtTest>

using TestDocuments::document;
using TestDocuments::repeated;
using TestDocuments::section;

namespace
{
QByteArray nested(int nDepth)
{
    return "<Ormelle.Result>" + repeated("<a>", nDepth - 1) + repeated("</a>", nDepth - 1) + "</Ormelle.Result>";
}

/// A document of so many elements in all.
QByteArray elements(int nCount)
{
    return "<Ormelle.Result>" + repeated("<a/>", nCount - 1) + "</Ormelle.Result>";
}

QByteArray sections(int nCount)
{
    QByteArray baText = "<Ormelle.Result><First>";
    for (int i = 0; i < nCount; ++i)
        baText += "<s" + QByteArray::number(i) + "/>";
    return baText + "</First></Ormelle.Result>";
}

QByteArray firstTags(int nCount)
{
    QByteArray baText = "<Ormelle.Result>";
    for (int i = 0; i < nCount; ++i)
        baText += "<s" + QByteArray::number(i) + "/>";
    return baText + "</Ormelle.Result>";
}

QByteArray utf16(const QByteArray& baAscii, bool bHighFirst)
{
    QByteArray baText;
    for (const char c : baAscii)
        baText += bHighFirst ? QByteArray(1, '\0') + c : QByteArray(1, c) + '\0';
    return baText;
}
} // namespace

/// Documents that are damaged, unusual, or made to hurt: refused with a reason, or read.
class tst_hostiledocuments : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void unreadableDocumentsAreRefused_data();
    void unreadableDocumentsAreRefused();
    void unusualDocumentsAreRead_data();
    void unusualDocumentsAreRead();
    void limitsAreAcceptedAndWhatExceedsThemIsRefused_data();
    void limitsAreAcceptedAndWhatExceedsThemIsRefused();
    void everyBeginningOfADocumentEndsEarly_data();
    void everyBeginningOfADocumentEndsEarly();
    void beginningsOfALargeDocumentEndEarly();
    void whatIsNoDocumentIsRefused_data();
    void whatIsNoDocumentIsRefused();

    void wrongDocumentsNeverBreakTheReader();

private:
    void addRefused(const char* pTitle, const QByteArray& baDocument, const QString& strReason)
    {
        QTest::newRow(pTitle) << FnDocument([baDocument] { return baDocument; }) << strReason;
    }

    TestFiles m_objFiles;
};

void tst_hostiledocuments::initTestCase()
{
    QVERIFY(m_objFiles.isValid());
    QVERIFY(costMeterSeesQt());
}

void tst_hostiledocuments::unreadableDocumentsAreRefused_data()
{
    QTest::addColumn<FnDocument>("fnDocument");
    QTest::addColumn<QString>("strReason");

    const QString strDoctype = "document type declarations (DOCTYPE) are not allowed";
    QByteArray baLaughs = "<!DOCTYPE l [<!ENTITY a0 \"aaaaaaaaaa\">";
    for (int i = 1; i <= 8; ++i)
        baLaughs += "<!ENTITY a" + QByteArray::number(i) + " \"" + repeated("&a" + QByteArray::number(i - 1) + ";", 10) + "\">";
    addRefused("entities that multiply", baLaughs + "]><R>&a8;</R>", strDoctype);
    addRefused("an entity from a file", "<?xml version=\"1.0\"?><!DOCTYPE x [<!ENTITY e SYSTEM \"file:///etc/passwd\">]><R>&e;</R>",
               strDoctype);
    addRefused("an entity from the network", "<!DOCTYPE x [<!ENTITY e SYSTEM \"http://localhost/\">]><R a=\"&e;\"/>", strDoctype);
    addRefused("a bare document type", "<!DOCTYPE Ormelle.Result><Ormelle.Result/>", strDoctype);
    addRefused("a document type behind a remark", "<!-- x --><!DOCTYPE Ormelle.Result><Ormelle.Result/>", strDoctype);
    addRefused("a document type inside", "<Ormelle.Result><!DOCTYPE a></Ormelle.Result>", strDoctype);
    QTest::newRow("a document type of 100 MB") << FnDocument([] { return "<!DOCTYPE x [" + QByteArray(100000000, ' ') + "]><R/>"; })
                                               << strDoctype;
    addRefused("an entity without a declaration", document("<a>&e;</a>"), "unknown reference \"&e;\"");
    addRefused("the same in an attribute", document("<a b=\"&e;\"/>"), "unknown reference \"&e;\"");
    addRefused("an element declaration", "<!ELEMENT a ANY><Ormelle.Result/>", "markup declarations are not allowed");

    QTest::newRow("2 000 000 open elements") << FnDocument([] { return repeated("<a>", 2000000); }) << "nested deeper than 64";
    QTest::newRow("200 000 nested elements") << FnDocument([] { return nested(200000); }) << "nested deeper than 64";
    QTest::newRow("20 000 attributes") << FnDocument([] { return document("<a" + attributes(20000) + "/>"); })
                                       << "more than 256 attributes";
    QTest::newRow("an attribute name of 10 MB")
        << FnDocument([] { return document("<a " + QByteArray(10000000, 'n') + "=\"\"/>"); }) << "a name longer than 1024 bytes";
    QTest::newRow("an attribute value of 10 MB") << FnDocument([] { return document("<a b=\"" + QByteArray(10000000, 'v') + "\"/>"); })
                                                 << "the value of the attribute \"b\" is longer than 65536 bytes";
    QTest::newRow("an element name of 10 MB") << FnDocument([] { return document("<" + QByteArray(10000000, 'n') + "/>"); })
                                              << "a name longer than 1024 bytes";

    addRefused("an attribute given twice", document("<a b=\"1\" b=\"2\"/>"), "the attribute \"b\" is given twice");
    addRefused("an attribute of many given twice", document("<a" + attributes(200) + " a7=\"\"/>"), "the attribute \"a7\" is given twice");
    addRefused("the last of many given twice", document("<a" + attributes(255) + " a254=\"\"/>"), "the attribute \"a254\" is given twice");
    addRefused("a value without quotes", document("<a b=1/>"), "the value of the attribute \"b\" is not in quotes");
    addRefused("an attribute without a value", document("<a b/>"), "the attribute \"b\" has no value");
    addRefused("a tag within a value", document("<a b=\"<c/>\"/>"), "'<' in the value of the attribute \"b\"");
    addRefused("attributes without a blank between", document("<a b=\"1\"c=\"2\"/>"), "the tag \"a\" is damaged");
    addRefused("a slash within a tag", document("<a / b=\"1\">"), "the tag \"a\" is damaged");
    addRefused("a number as a name", document("<a 1=\"1\"/>"), "the tag \"a\" is damaged");
    addRefused("a tag without a name", document("< a/>"), "'<' is not followed by a tag");
    addRefused("a bare less-than sign", document("<a>1 < 2</a>"), "'<' is not followed by a tag");
    addRefused("tags that cross", document("<a><b></a></b>"), "the tag \"b\" is not closed");
    addRefused("an end tag of another name", document("<a></ab>"), "the tag \"a\" is not closed");
    addRefused("an end tag too many", document("</a>"), "the tag \"Ormelle.Result\" is not closed");
    addRefused("an end tag at first", "</Ormelle.Result>", "an end tag without a start tag");
    addRefused("text behind the document", document("") + "x", "content after the end of the document");
    addRefused("a second document", document("") + "<Ormelle.Result/>", "content after the end of the document");
    addRefused("a second declaration", document("") + "<?xml version=\"1.0\"?>", "an XML declaration that is not at the beginning");
    addRefused("a blank before the declaration", " " + document(""), "an XML declaration that is not at the beginning");
    addRefused("two dashes in a remark", document("<!-- a -- b -->"), "\"--\" within a comment");
    addRefused("an instruction without a name", document("<? x?>"), "a processing instruction without a name");
    addRefused("CDATA outside", "<![CDATA[x]]><Ormelle.Result/>", "markup declarations are not allowed");
    addRefused("XML 1.1", "<?xml version=\"1.1\"?><Ormelle.Result/>", "XML version not supported: \"1.1\"");
    addRefused("a damaged declaration", "<?xml version=1.0?><Ormelle.Result/>", "the XML declaration is damaged");

    for (const char* pReference :
         {"&;", "&#;", "&#x;", "&#0;", "&#1;", "&#xD800;", "&#xFFFE;", "&#1114112;", "&#99999999999;", "&#-1;", "&#x-1;", "&#1a;", "&AMP;"})
        addRefused(pReference, document("<a>" + QByteArray(pReference) + "</a>"),
                   QStringLiteral("unknown reference \"%1\"").arg(pReference));
    addRefused("a bare ampersand", document("<a>1 & 2</a>" + QByteArray(100, ' ')), "unknown reference \"& 2</a>");

    const QString strEncoding = "encoding not supported";
    addRefused("UTF-16, low byte first, with a mark", "\xFF\xFE" + utf16(document(""), false), strEncoding);
    addRefused("UTF-16, high byte first, with a mark", "\xFE\xFF" + utf16(document(""), true), strEncoding);
    addRefused("UTF-16, low byte first", utf16(document(""), false), strEncoding);
    addRefused("UTF-16, high byte first", utf16(document(""), true), strEncoding);
    addRefused("UTF-32", QByteArray("\0\0\0<\0\0\0a", 8), strEncoding);
    addRefused("Latin-1 declared", "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><Ormelle.Result/>",
               "encoding not supported: \"ISO-8859-1\"");
    addRefused("an unknown encoding", "<?xml version='1.0' encoding='FOO-9'?><Ormelle.Result/>", "encoding not supported: \"FOO-9\"");
    addRefused("a Latin-1 byte", document("<a b=\"caf\xE9\"/>"), "byte 0xe9 is not UTF-8 (line 3, offset ");
    addRefused("a Latin-1 byte in a text", document("<a>caf\xE9</a>"), "byte 0xe9 is not UTF-8");
    addRefused("a Latin-1 byte in a name", document("<caf\xE9/>"), "byte 0xe9 is not UTF-8");
    addRefused("a lone continuation", document("<a>\x80</a>"), "byte 0x80 is not UTF-8");
    addRefused("an overlong form", document("<a>\xC0\xAF</a>"), "byte 0xc0 is not UTF-8");
    addRefused("half of a pair", document("<a>\xED\xA0\x80</a>"), "byte 0xed is not UTF-8");
    addRefused("beyond the last code", document("<a>\xF4\x90\x80\x80</a>"), "byte 0xf4 is not UTF-8");
    addRefused("a code that is no character", document("<a>\xEF\xBF\xBF</a>"), "byte 0xef is not UTF-8");
    addRefused("a bad byte far behind", document("<a>" + QByteArray(100000, 'x') + "\xFF" + QByteArray(100000, 'x') + "</a>"),
               "byte 0xff is not UTF-8 (line 3, offset 100073)");
    addRefused("NUL in a text", document(QByteArray("<a>x\0y</a>", 10)), "NUL byte (line 3, offset 74)");
    addRefused("NUL in an attribute", document(QByteArray("<a b=\"x\0\"/>", 11)), "NUL byte");
    addRefused("NUL in a long text", document("<a>" + QByteArray(50000, 'x') + '\0' + QByteArray(50000, 'x') + "</a>"), "NUL byte");
    addRefused("NUL in a remark", document(QByteArray("<!-- \0 -->", 10)), "NUL byte");
    addRefused("NUL behind the end", document("") + QByteArray(1, '\0'), "content after the end of the document");
    addRefused("a control character", document("<a>\x01</a>"), "control character 0x01");
    addRefused("a control character in an attribute", document("<a b=\"\x1B[2J\"/>"), "control character 0x1b");
    addRefused("the earlier of two errors", document("<a>\xFF</a><b></c>"), "byte 0xff is not UTF-8");
    addRefused("another document", "<svg xmlns=\"http://www.w3.org/2000/svg\"/>", "not a result document, its outermost tag is \"svg\"");
    addRefused("almost the right tag", "<Ormelle.Results/>", "not a result document, its outermost tag is \"Ormelle.Results\"");
}

void tst_hostiledocuments::unreadableDocumentsAreRefused()
{
    QFETCH(FnDocument, fnDocument);
    QFETCH(QString, strReason);

    const QByteArray baDocument = fnDocument();
    const QString strFile = m_objFiles.write("hostile.xml", baDocument);
    LogRecorder objLog;
    CPLResultXMLWrapper objXML;
    const CostMeter objMeter;
    QVERIFY(!objXML.loadXMLFile(strFile));
    const bool bQuick = objMeter.isWithinPatience(baDocument.size());
    const long long nBytes = objMeter.bytes();
    QVERIFY2(objXML.lastError().startsWith(strFile + ": " + strReason), qPrintable(objXML.lastError()));
    QVERIFY2(objLog.isOne(3, objXML.lastError()), qPrintable(objLog.messages().join('\n')));
    QVERIFY2(bQuick, "it took long");
    QVERIFY2(nBytes < baDocument.size() + nMegabyte, qPrintable(QString::number(nBytes)));
    QVERIFY(objXML.getVersion().isNull());
}

void tst_hostiledocuments::unusualDocumentsAreRead_data()
{
    QTest::addColumn<FnDocument>("fnDocument");
    const auto add = [](const char* pTitle, const QByteArray& baDocument)
    { QTest::newRow(pTitle) << FnDocument([baDocument] { return baDocument; }); };
    const QByteArray baSection = "<First><Second><Row Key=\"v\"/></Second></First>";
    add("no declaration", "<Ormelle.Result>" + baSection + "</Ormelle.Result>");
    add("a byte-order mark", "\xEF\xBB\xBF" + document(baSection));
    add("lower-case encoding",
        "<?xml version='1.0' encoding='utf-8' standalone='yes' ?>\n<Ormelle.Result>" + baSection + "</Ormelle.Result>");
    add("blanks before and behind", "\n \t<Ormelle.Result>" + baSection + "</Ormelle.Result>\n\r\n \t");
    add("remarks and instructions everywhere",
        "<!-- a --><?b?><Ormelle.Result><!-- c -->" + baSection + "<?d e?><!----></Ormelle.Result><!-- f --><?g?>");
    QTest::newRow("a remark of 20 MB") << FnDocument([baSection]
                                                     { return document("<!--" + QByteArray(20000000, 'x') + "-->" + baSection); });
    QTest::newRow("20 MB of remarks") << FnDocument([baSection] { return document(repeated("<!--x-->", 2500000) + baSection); });
    QTest::newRow("20 MB of remarks between rows")
        << FnDocument([] { return document("<First><Second>" + repeated("<!--x-->", 2500000) + "<Row Key=\"v\"/></Second></First>"); });
    QTest::newRow("20 MB of instructions") << FnDocument([baSection] { return document(repeated("<?x ?>", 3333333) + baSection); });
    QTest::newRow("20 MB of references") << FnDocument([baSection]
                                                       { return document("<x>" + repeated("&amp;", 4000000) + "</x>" + baSection); });
    QTest::newRow("20 MB of blanks") << FnDocument([baSection] { return document(QByteArray(20000000, ' ') + baSection); });
    QTest::newRow("20 MB of other scripts") << FnDocument(
        [baSection] { return document("<x>" + repeated("\xE6\x97\xA5", 6666666) + "</x>" + baSection); });
    QTest::newRow("unknown elements and attributes") << FnDocument(
        []
        {
            return document("<Unknown a=\"1\"><b/></Unknown><First c=\"2\"><Unknown/><Second d=\"3\"><Unknown/><Row e=\"4\" "
                            "Key=\"v\"/></Second></First>");
        });
    QTest::newRow("12 800 blocks") << FnDocument(
        [baSection]
        {
            QByteArray baBlocks;
            for (int i = 0; i < 12800; ++i)
                baBlocks += "<Block" + QByteArray::number(i) + "><Text.Data>0000803F</Text.Data></Block" + QByteArray::number(i) + ">";
            return document("<Blocks>" + baBlocks + "</Blocks>" + baSection);
        });
    QTest::newRow("attributes of like names") << FnDocument(
        [baSection] { return document(repeated("<x" + attributes(256) + "/>", 5000) + baSection); });
}

void tst_hostiledocuments::unusualDocumentsAreRead()
{
    QFETCH(FnDocument, fnDocument);

    const QByteArray baDocument = fnDocument();
    const QString strFile = m_objFiles.write("unusual.xml", baDocument);
    CPLResultXMLWrapper objXML;
    const CostMeter objMeter;
    QVERIFY2(objXML.loadXMLFile(strFile), qPrintable(objXML.lastError()));
    QString strValue;
    QVERIFY(objXML.Read3rdTagKeyValues("First", "Second", "Row", "Key", strValue, 0));
    QVERIFY2(objMeter.isWithinPatience(baDocument.size()), qPrintable(QString::number(objMeter.seconds())));
    QVERIFY2(objMeter.bytes() < baDocument.size() + 8 * nMegabyte, qPrintable(QString::number(objMeter.bytes())));
    QCOMPARE(strValue, QStringLiteral("v"));
    int nValue = 0;
    QVERIFY(!objXML.Read2ndTagKeyValues("First", "Second", "Count", nValue));
}

void tst_hostiledocuments::limitsAreAcceptedAndWhatExceedsThemIsRefused_data()
{
    QTest::addColumn<FnDocument>("fnDocument");
    QTest::addColumn<QString>("strReason"); // null: accepted

    using MakeDocument = QByteArray (*)(int);
    struct SLimit
    {
        const char* pTitle;
        int nLimit;
        QString strReason;
        MakeDocument fnMake;
    };
    const SLimit aLimits[] = {
        {"depth", OrmDocumentLimits::nXmlDepth, "nested deeper than 64", nested},
        {"elements", static_cast<int>(OrmDocumentLimits::nXmlElements), "more than 10000000 elements", elements},
        {"attributes", OrmDocumentLimits::nXmlAttributes, "more than 256 attributes",
         [](int n) { return document("<a" + attributes(n) + "/>"); }},
        {"element name", static_cast<int>(OrmDocumentLimits::nXmlNameBytes), "a name longer than 1024 bytes",
         [](int n) { return document("<" + QByteArray(n, 'n') + "/>"); }},
        {"attribute name", static_cast<int>(OrmDocumentLimits::nXmlNameBytes), "a name longer than 1024 bytes",
         [](int n) { return document("<a " + QByteArray(n, 'n') + "=\"1\"/>"); }},
        {"attribute value", static_cast<int>(OrmDocumentLimits::nXmlValueBytes),
         "the value of the attribute \"b\" is longer than 65536 bytes",
         [](int n) { return document("<a b=\"" + QByteArray(n, 'v') + "\"/>"); }},
        {"attribute value with references", static_cast<int>(OrmDocumentLimits::nXmlValueBytes),
         "the value of the attribute \"b\" is longer than 65536 bytes",
         [](int n) { return document("<a b='" + QByteArray(n - 5, 'v') + "&amp;'/>"); }},
        {"second tags", OrmDocumentLimits::nXmlSections, "more than 100000 sections", sections},
        {"first tags", OrmDocumentLimits::nXmlSections, "more than 100000 sections", firstTags},
    };
    for (const SLimit& objLimit : aLimits)
    {
        for (const int nMore : {-1, 0, 1})
        {
            const FnDocument fnDocument = [fnMake = objLimit.fnMake, n = objLimit.nLimit + nMore] { return fnMake(n); };
            QTest::addRow("%s %+d", objLimit.pTitle, nMore) << fnDocument << (nMore > 0 ? objLimit.strReason : QString());
        }
    }
}

void tst_hostiledocuments::limitsAreAcceptedAndWhatExceedsThemIsRefused()
{
    QFETCH(FnDocument, fnDocument);
    QFETCH(QString, strReason);

    const QByteArray baDocument = fnDocument();
    const QString strFile = m_objFiles.write("limit.xml", baDocument);
    CPLResultXMLWrapper objXML;
    const CostMeter objMeter;
    const bool bLoaded = objXML.loadXMLFile(strFile);
    QVERIFY2(objMeter.isWithinPatience(baDocument.size()), qPrintable(QString::number(objMeter.seconds())));
    QVERIFY2(objMeter.bytes() < baDocument.size() + nAllowedMemory, qPrintable(QString::number(objMeter.bytes())));
    QVERIFY2(bLoaded == strReason.isNull(), qPrintable(objXML.lastError()));
    QVERIFY2(strReason.isNull() || objXML.lastError().startsWith(strFile + ": " + strReason + " (line "), qPrintable(objXML.lastError()));
}

void tst_hostiledocuments::everyBeginningOfADocumentEndsEarly_data()
{
    QTest::addColumn<QByteArray>("baDocument");
    QTest::newRow("version 1.0") << TestDocuments::sample10();
    QTest::newRow("version 2.0") << TestDocuments::sample20();
    QTest::newRow("the smallest") << QByteArray("<Ormelle.Result/>");
    QTest::newRow("one tag") << QByteArray(
        "<Ormelle.Result Version='1.0'>&#65;<![CDATA[x]]><?y z?><!-- \xF0\x9F\x90\xAD --></Ormelle.Result >\n");
}

void tst_hostiledocuments::everyBeginningOfADocumentEndsEarly()
{
    QFETCH(QByteArray, baDocument);

    const int nEnd = baDocument.lastIndexOf("Result") < 0 ? 0 : baDocument.indexOf('>', baDocument.lastIndexOf("Result")) + 1;
    QVERIFY(nEnd > 0);
    for (int nLength = 0; nLength <= baDocument.size(); ++nLength)
    {
        const QString strFile = m_objFiles.write("cut.xml", baDocument.left(nLength));
        CPLResultXMLWrapper objXML;
        const bool bWhole =
            nLength == nEnd || (nLength > nEnd && baDocument.mid(nEnd, nLength - nEnd).trimmed().isEmpty()) || nLength == baDocument.size();
        const QByteArray baWhere =
            QStringLiteral("%1 of %2 bytes: %3").arg(nLength).arg(baDocument.size()).arg(objXML.lastError()).toUtf8();
        QVERIFY2(objXML.loadXMLFile(strFile) == bWhole, baWhere.constData());
        const QString strReason = nLength == 0 ? "the file is empty" : "the file ends early";
        QVERIFY2(bWhole || objXML.lastError().startsWith(strFile + ": " + strReason), (baWhere + objXML.lastError().toUtf8()).constData());
    }
}

void tst_hostiledocuments::beginningsOfALargeDocumentEndEarly()
{
    QByteArray baRows;
    for (int i = 0; i < 20000; ++i)
        baRows += "<Row Key=\"" + QByteArray::number(i) + "\"/>\n";
    const QByteArray baDocument = section("", "<Row><Text.Data>" + repeated("0000803F", 200000) + "</Text.Data></Row>" + baRows).trimmed();
    for (int i = 1; i <= 100; ++i)
    {
        const int nLength = static_cast<int>(static_cast<qint64>(baDocument.size()) * i / 101) + i;
        const QString strFile = m_objFiles.write("cut.xml", baDocument.left(nLength));
        CPLResultXMLWrapper objXML;
        QVERIFY(!objXML.loadXMLFile(strFile));
        QVERIFY2(objXML.lastError().startsWith(strFile + ": the file ends early (line "), qPrintable(objXML.lastError()));
        QVERIFY(objXML.lastError().endsWith(QStringLiteral("offset %1)").arg(nLength)));
    }
    CPLResultXMLWrapper objXML;
    QVERIFY(objXML.loadXMLFile(m_objFiles.write("whole.xml", baDocument)));
}

void tst_hostiledocuments::whatIsNoDocumentIsRefused_data()
{
    QTest::addColumn<QByteArray>("baContent");
    QTest::addColumn<QString>("strReason");
    const QString strNone = "not a result document";
    QTest::newRow("0 bytes") << QByteArray() << "the file is empty";
    QTest::newRow("1 byte") << QByteArray("x") << strNone;
    QTest::newRow("one bracket") << QByteArray("<") << "the file ends early";
    QTest::newRow("an attribute's name") << QByteArray("<Ormelle.Result Version \n") << "the file ends early";
    QTest::newRow("a control character, seen in the middle of the tags")
        << QByteArray("<Ormelle.Result Version=\"2.0\"><a>\x01</a>") + TestDocuments::repeated("<a/>", 10000)
        << "control character 0x01 (line 1, offset 33)";
    QTest::newRow("nothing but blanks") << QByteArray(1000, '\n') << "the file ends early";
    QTest::newRow("nothing but a byte-order mark") << QByteArray("\xEF\xBB\xBF") << "the file ends early";
    QTest::newRow("nothing but a remark") << QByteArray("<!-- x -->") << "the file ends early";
    QTest::newRow("nothing but NUL") << QByteArray(100000, '\0') << strNone;
    QTest::newRow("settings") << QByteArray("[SOLA_1]\nMenuName=Day 0\n") << strNone;
    QTest::newRow("a picture") << QByteArray("\x89PNG\r\n\x1A\n\0\0\0\rIHDR", 16) << strNone;
    QTest::newRow("a program") << QByteArray("\x7F"
                                             "ELF\x02\x01\x01\0",
                                             8)
                               << strNone;
    QTest::newRow("compressed") << QByteArray("\x1F\x8B\x08\0\0\0\0\0", 8) << strNone;
    QTest::newRow("a web page") << QByteArray("<html><body></body></html>") << "not a result document, its outermost tag is \"html\"";
}

void tst_hostiledocuments::whatIsNoDocumentIsRefused()
{
    QFETCH(QByteArray, baContent);
    QFETCH(QString, strReason);
    const QString strFile = m_objFiles.write("nodocument.xml", baContent);
    LogRecorder objLog;
    CPLResultXMLWrapper objXML;
    QVERIFY(!objXML.loadXMLFile(strFile));
    QVERIFY2(objXML.lastError().startsWith(strFile + ": " + strReason), qPrintable(objXML.lastError()));
    QVERIFY(objLog.isOne(3, objXML.lastError()));
}

void tst_hostiledocuments::wrongDocumentsNeverBreakTheReader()
{
    // Sound documents with a few bytes changed: whatever comes of it, it is an answer.
    const QByteArray aSamples[] = {TestDocuments::sample10(), TestDocuments::sample20()};
    const QByteArray baBytes = "<>/!?-[]\"'=& \n\r\t;#x0aAZ.\x01\x80\xC3\xFF";
    quint32 nState = 2026;
    const auto random = [&nState](int nBelow)
    {
        nState = nState * 1664525U + 1013904223U;
        return static_cast<int>((nState >> 8) % static_cast<quint32>(nBelow));
    };
    int nLoaded = 0;
    int nRefused = 0;
    for (int nRound = 0; nRound < 4000; ++nRound)
    {
        QByteArray baDocument = aSamples[nRound % 2];
        for (int nChange = random(3); nChange >= 0; --nChange)
        {
            const int nPlace = random(baDocument.size());
            const int nHow = random(3);
            if (nHow == 0)
                baDocument.remove(nPlace, 1 + random(20));
            else if (nHow == 1)
                baDocument[nPlace] = baBytes.at(random(baBytes.size()));
            else
                baDocument.insert(nPlace, baDocument.mid(random(baDocument.size()), random(30)));
        }
        CPLResultXMLWrapper objXML;
        if (!objXML.loadXMLFile(m_objFiles.write("wrong.xml", baDocument)))
        {
            ++nRefused;
            QVERIFY(!objXML.lastError().isEmpty());
            continue;
        }
        ++nLoaded;
        std::vector<int> vecCounts;
        std::vector<float> vecValues;
        QStringList lstValues;
        objXML.Read2ndTagKeyValues("Orm3.0.SOLA.Data", "Orm3.0.SOLA.Measured.Photon.Density.Data",
                                   QStringList{"Total.WaveLengths", "Total.Vertices"}, vecCounts);
        objXML.readCurrentNumbers("Orm3.0.SOLA.Measured.Photon.Density.Value", {"Photon.Density"}, 4, vecValues);
        objXML.Read2ndTagKeyValues("Orm3.0.SOLA.Data", "Orm3.0.SOLA.HeightMap.Data", QStringList{"Width", "Height"}, vecCounts);
        objXML.readCurrentHexFloats("Orm3.0.SOLA.HeightMap.Pixel", 0, 2, vecValues);
        objXML.Read3rdTagKeyValues("Orm3.0.SOLA.Data", "Orm3.0.SOLA.Results", "Orm.3.0.SOLA.Results", QStringList{"Key", "Value"},
                                   lstValues, 1);
    }
    QVERIFY(nLoaded > 100);
    QVERIFY(nRefused > 1000);
}

QTEST_GUILESS_MAIN(tst_hostiledocuments)
#include "tst_hostiledocuments.moc"
