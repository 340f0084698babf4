// How names from files are shown, and what message and error boxes are asked through their responders.

#include "COrmErrorHandler.h"
#include "COrmMessageBox.h"
#include "COrmPlainText.h"

#include <QApplication>
#include <QHelpEvent>
#include <QListWidget>
#include <QTest>
#include <QTextDocument>
#include <QToolTip>

class CTextAndBoxesTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        COrmMessageBox::setResponder({});
        COrmErrorHandler::setResponder({});
    }

    // ---- Plain text -------------------------------------------------------------------------------------------------

    void hiddenCharactersBecomeVisible_data()
    {
        QTest::addColumn<QString>("strText");
        QTest::addColumn<QString>("strExpected");
        QTest::newRow("plain") << "Mouse 3 – Tag 14 µm"
                               << "Mouse 3 – Tag 14 µm";
        QTest::newRow("markup stays text") << "<img src=file:///x>"
                                           << "<img src=file:///x>";
        QTest::newRow("line feed, tab, return") << "a\nb\tc\r"
                                                << "a\\nb\\tc\\r";
        QTest::newRow("zero byte") << QString("a") + QChar(0) + "b"
                                   << "a\\u0000b";
        QTest::newRow("override") << QString("exe") + QChar(0x202E) + "gpj"
                                  << "exe\\u202Egpj";
        QTest::newRow("isolate") << QString(QChar(0x2066)) << "\\u2066";
        QTest::newRow("zero width space") << QString("a") + QChar(0x200B) << "a\\u200B";
        QTest::newRow("delete and C1") << QString(QChar(0x7F)) + QChar(0x85) + QChar(0x9F) << "\\u007F\\u0085\\u009F";
        QTest::newRow("no-break space stays") << QString(QChar(0xA0)) << QString(QChar(0xA0));
        QTest::newRow("Hebrew and accents stay") << QString::fromUtf8("עכבר é") << QString::fromUtf8("עכבר é");
        QTest::newRow("emoji with joiner stays") << QString::fromUtf8("👩‍🔬") << QString::fromUtf8("👩‍🔬");
        QTest::newRow("tag beyond the first plane") << QString::fromUcs4(U"\U000E0041", 1) << "\\U000E0041";
        QTest::newRow("half a pair") << QString("a") + QChar(0xD83D) + "b"
                                     << "a\\uD83Db";
        QTest::newRow("other half") << QString(QChar(0xDC00)) << "\\uDC00";
        QTest::newRow("empty") << ""
                               << "";
    }
    void hiddenCharactersBecomeVisible()
    {
        QFETCH(QString, strText);
        QFETCH(QString, strExpected);
        QCOMPARE(COrmPlainText::visible(strText), strExpected);
    }

    void lineBreaksCanBeKept() { QCOMPARE(COrmPlainText::visible("a\nb\tc", true), QString("a\nb\\tc")); }

    void shorteningKeepsBothEnds_data()
    {
        QTest::addColumn<QString>("strText");
        QTest::addColumn<int>("nMaximum");
        QTest::addColumn<QString>("strExpected");
        const QString strMouse = QString::fromUtf8("🐭");
        QTest::newRow("short enough") << "abcdefg" << 7 << "abcdefg";
        QTest::newRow("one too long") << "abcdefgh" << 7 << QString::fromUtf8("abc…fgh");
        QTest::newRow("even") << "abcdefgh" << 6 << QString::fromUtf8("abc…gh");
        QTest::newRow("never below three") << "abcdefgh" << -5 << QString::fromUtf8("a…h");
        QTest::newRow("pairs stay whole") << strMouse + strMouse + strMouse + strMouse << 7 << strMouse + QString::fromUtf8("…") + strMouse;
        QTest::newRow("empty") << "" << 5 << "";
    }
    void shorteningKeepsBothEnds()
    {
        QFETCH(QString, strText);
        QFETCH(int, nMaximum);
        QFETCH(QString, strExpected);
        QCOMPARE(COrmPlainText::shortened(strText, nMaximum), strExpected);
        QCOMPARE(COrmPlainText::visible(COrmPlainText::shortened(strText, nMaximum)), strExpected);
    }

    void eldingFitsTheWidthWhateverTheLength()
    {
        const QFontMetrics objMetrics(QApplication::font());
        const QString strLong = QString("begin") + QString(65000, QChar('x')) + "end";
        for (const int nWidth : {60, 200, 400})
        {
            const QString strElided = COrmPlainText::elided(strLong, objMetrics, nWidth);
            QVERIFY(objMetrics.horizontalAdvance(strElided) <= nWidth);
            QVERIFY(strElided.startsWith("b") && strElided.endsWith("d") && strElided.contains(QChar(0x2026)));
        }
        QCOMPARE(COrmPlainText::elided("a\nb", objMetrics, 400), QString("a\\nb"));
        QCOMPARE(COrmPlainText::elided("ab", objMetrics, -3), objMetrics.elidedText("ab", Qt::ElideMiddle, -3));
    }

    void toolTipsShowMarkupLiterally()
    {
        const QString strToolTip = COrmPlainText::toolTip("<b>x</b>\n&");
        QVERIFY(Qt::mightBeRichText(strToolTip)); // so that the tool tip unescapes what was escaped
        QVERIFY(strToolTip.contains("&lt;b&gt;x&lt;/b&gt;\\n&amp;"));
        QVERIFY(COrmPlainText::toolTip(QString(100000, QChar('y'))).size() < 2100);
    }

    void delegateShowsTheVisibleFormAndLeavesTheData()
    {
        QListWidget objList;
        COrmPlainTextDelegate objDelegate;
        objList.setItemDelegate(&objDelegate);
        const QString strName = QString("day 3") + QChar(0x202E) + "\n<b>";
        objList.addItem(strName);
        objList.addItem(QString(65000, QChar('w')));
        QCOMPARE(objDelegate.displayText(strName, QLocale()), QString("day 3\\u202E\\n<b>"));
        QCOMPARE(objDelegate.displayText(12, QLocale::c()), QString("12"));
        QVERIFY(objDelegate.displayText(objList.item(1)->text(), QLocale()).size() <= 1000);
        QCOMPARE(objList.item(0)->text(), strName);

        objList.resize(120, 100);
        objList.show();
        QVERIFY(QTest::qWaitForWindowExposed(&objList));
        const auto help = [&](int nRow)
        {
            const QRect rcItem = objList.visualItemRect(objList.item(nRow));
            QHelpEvent objEvent(QEvent::ToolTip, rcItem.center(), objList.viewport()->mapToGlobal(rcItem.center()));
            QCoreApplication::sendEvent(objList.viewport(), &objEvent);
            return QToolTip::text();
        };
        QVERIFY(help(1).contains("wwww"));
        objList.item(0)->setToolTip("<i>typed</i>");
        QVERIFY(help(0).contains("&lt;i&gt;typed"));
        QToolTip::hideText();
    }

    // ---- What boxes are asked ---------------------------------------------------------------------------------------

    void messageBoxHandsEverythingToTheResponder()
    {
        QWidget objParent;
        SMessageRequest objSeen;
        COrmMessageBox::setResponder(
            [&](const SMessageRequest& objRequest)
            {
                objSeen = objRequest;
                return 17;
            });
        QCOMPARE(COrmMessageBox::information(&objParent, QString(), "Unable to load analysis data", QString(), QString(), QString(), 0, -1),
                 17);
        QCOMPARE(objSeen.eKind, QMessageBox::Information);
        QCOMPARE(objSeen.pParent, &objParent);
        QVERIFY(objSeen.strCaption.isNull());
        QCOMPARE(objSeen.strText, QString("Unable to load analysis data"));
        QVERIFY(objSeen.bTextButtons);
        QCOMPARE(objSeen.lstTexts.size(), 3);
        for (const QString& strText : qAsConst(objSeen.lstTexts))
            QVERIFY(strText.isNull());
        QCOMPARE(objSeen.nDefault, 0);
        QCOMPARE(objSeen.nEscape, -1);

        COrmMessageBox::warning(nullptr, "c", "t", QMessageBox::Yes, QMessageBox::No | QMessageBox::Default,
                                QMessageBox::Cancel | QMessageBox::Escape);
        QCOMPARE(objSeen.eKind, QMessageBox::Warning);
        QVERIFY(!objSeen.bTextButtons);
        QCOMPARE(objSeen.lstButtons,
                 QList<int>({QMessageBox::Yes, QMessageBox::No | QMessageBox::Default, QMessageBox::Cancel | QMessageBox::Escape}));
        COrmMessageBox::information(nullptr, "c", "t", QMessageBox::Ok | QMessageBox::Default, 0, 0);
        QCOMPARE(objSeen.eKind, QMessageBox::Information);
        QCOMPARE(objSeen.lstButtons, QList<int>({QMessageBox::Ok | QMessageBox::Default, 0, 0}));
        COrmMessageBox::critical(nullptr, "c", "t", QMessageBox::Ok);
        QCOMPARE(objSeen.eKind, QMessageBox::Critical);
    }

    void errorTextsByStatus_data()
    {
        QTest::addColumn<int>("nStatus");
        QTest::addColumn<QString>("strExtra");
        QTest::addColumn<QString>("strExpected");
        QTest::newRow("cannot be written") << 64 << QString() << "The file cannot be written.";
        QTest::newRow("cannot be read") << 65 << QString() << "The file cannot be read.";
        QTest::newRow("with a name") << 65 << "a.xml"
                                     << "The file cannot be read.\na.xml";
        QTest::newRow("another code") << 12 << QString() << "The operation failed (status 12).";
    }
    void errorTextsByStatus()
    {
        QFETCH(int, nStatus);
        QFETCH(QString, strExtra);
        QFETCH(QString, strExpected);
        SMessageRequest objBox;
        COrmMessageBox::setResponder(
            [&](const SMessageRequest& objRequest)
            {
                objBox = objRequest;
                return int(QMessageBox::Ok);
            });
        QWidget objParent;
        COrmErrorHandler::errorMessage(&objParent, tag_estatus(nStatus), strExtra);
        QCOMPARE(objBox.strText, strExpected);
        QCOMPARE(objBox.eKind, QMessageBox::Critical);
        QCOMPARE(objBox.strCaption, QString("Ormelle"));
        QCOMPARE(objBox.pParent, &objParent);

        objBox = SMessageRequest();
        SErrorRequest objError;
        COrmErrorHandler::setResponder([&](const SErrorRequest& objRequest) { objError = objRequest; });
        COrmErrorHandler::errorMessage(&objParent, tag_estatus(nStatus), strExtra);
        QCOMPARE(int(objError.eStatus), nStatus);
        QCOMPARE(objError.strText, strExpected);
        QCOMPARE(objError.strExtra, strExtra);
        QCOMPARE(objError.pParent, &objParent);
        QVERIFY(objBox.strText.isNull()); // one of the two is asked, never both
    }
};

QTEST_MAIN(CTextAndBoxesTest)
#include "tst_textandboxes.moc"
