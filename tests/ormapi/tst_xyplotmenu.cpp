#include "CFileSizeLimit.h"
#include "CShownPlot.h"

#include "COrmErrorHandler.h"

#include <QClipboard>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QLocale>
#include <QTemporaryDir>
#include <QTimer>

using PlotTest::add;
using PlotTest::CShownPlot;
using PlotTest::fNan;
using PlotTest::g_strLine;

/// The plot's menu, and what is taken away from the plot: its picture and its numbers.
class TestXYPlotMenu : public QObject
{
    Q_OBJECT

private slots:
    // ---- The context menu ---------------------------------------------------------------------------------------------

    void theMenuHasTheModes_data()
    {
        QTest::addColumn<QString>("strEntry");
        QTest::addColumn<int>("nMode");
        QTest::newRow("line") << QStringLiteral("Line") << 1;
        QTest::newRow("line and points") << QStringLiteral("Line and Points") << 2;
        QTest::newRow("points") << QStringLiteral("Points") << 3;
        QTest::newRow("bars") << QStringLiteral("Bars") << 4;
    }

    void theMenuHasTheModes()
    {
        QFETCH(QString, strEntry);
        QFETCH(int, nMode);
        CShownPlot objShown(nMode == 1 ? 2 : 1);
        objShown.choose(strEntry);
        QCOMPARE(objShown.plot().getCurrentDisplayMode(), nMode);
        DISPLAY_SETTINGS sLook;
        QVERIFY(objShown.plot().getDisplaySettings(g_strLine, sLook));
        QCOMPARE(sLook.nDisplayMode, nMode);
        const QMenu* pMenu = objShown.menu();
        QVERIFY(pMenu != nullptr);
        for (const QString& strOther :
             {QStringLiteral("Line"), QStringLiteral("Line and Points"), QStringLiteral("Points"), QStringLiteral("Bars")})
            QCOMPARE(CShownPlot::entry(pMenu, strOther)->isChecked(), strOther == strEntry);
        QApplication::activePopupWidget()->close();
    }

    void theMenuTurnsTheAxisLogarithmic()
    {
        CShownPlot objShown;
        objShown.choose(QStringLiteral("Logarithmic Axis"));
        QVERIFY(objShown.plot().isLogarithmic());
        QVERIFY(CShownPlot::entry(objShown.menu(), QStringLiteral("Logarithmic Axis"))->isChecked());
        QApplication::activePopupWidget()->close();
        objShown.choose(QStringLiteral("Logarithmic Axis"));
        QVERIFY(!objShown.plot().isLogarithmic());
    }

    void theMenuOffersWhatThereIs()
    {
        CShownPlot objShown;
        objShown.plot().clear();
        const QMenu* pMenu = objShown.menu();
        QVERIFY(pMenu != nullptr);
        for (const char* pText : {"Line", "Bars", "Show Everything", "Copy Numbers", "Save Numbers..."})
            QVERIFY2(!CShownPlot::entry(pMenu, QLatin1String(pText))->isEnabled(), pText);
        QVERIFY(CShownPlot::entry(pMenu, QStringLiteral("Copy Picture"))->isEnabled());
        QApplication::activePopupWidget()->close();
    }

    // ---- Taking picture and numbers away ------------------------------------------------------------------------------

    void thePictureCanBeCopied()
    {
        CShownPlot objShown;
        objShown.choose(QStringLiteral("Copy Picture"));
        const QImage imgCopied = QApplication::clipboard()->image();
        QCOMPARE(imgCopied.convertToFormat(QImage::Format_RGB32), objShown.plot().getPrintImage().convertToFormat(QImage::Format_RGB32));
    }

    void theNumbersCanBeCopied()
    {
        CShownPlot objShown;
        objShown.choose(QStringLiteral("Copy Numbers"));
        QCOMPARE(QApplication::clipboard()->text().toUtf8(), objShown.plot().numbers());
    }

    void numbersReadBackAsTheyAre()
    {
        const QLocale objBefore;
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        COrmXYPlot objPlot;
        const std::vector<double> vecValues = {0.1, 1.0 / 3.0, 6.02214076e23, -0.0, fNan, 5e-324, std::numeric_limits<double>::max()};
        add<double>(objPlot, QStringLiteral("Final Voxel Size"), vecValues);
        add<float>(objPlot, QStringLiteral("Quantification, \u00B5"), {1.1f, 2.2f});
        objPlot.setXAxisLabel(QStringLiteral("Results"));
        objPlot.setYAxisLabel(QStringLiteral("pmol M-\u00B9 cm-\u00B9"));
        QTemporaryDir objFolder;
        const QString strPath = objFolder.filePath(QStringLiteral("numbers.csv"));
        QString strReason;
        QVERIFY(objPlot.saveNumbers(strPath, strReason));
        QLocale::setDefault(objBefore);
        QFile objFile(strPath);
        QVERIFY(objFile.open(QIODevice::ReadOnly));
        const QList<QByteArray> lstRows = objFile.readAll().split('\n');
        QCOMPARE(lstRows.size(), 9); // head, seven rows, and nothing behind the last line's end
        QCOMPARE(QString::fromUtf8(lstRows.at(0)), QStringLiteral("Results,Final Voxel Size (pmol M-\u00B9 cm-\u00B9),"
                                                                  "\"Quantification, \u00B5 (pmol M-\u00B9 cm-\u00B9)\"\r"));
        for (int i = 0; i < 7; ++i)
        {
            const QList<QByteArray> lstFields = lstRows.at(i + 1).trimmed().split(',');
            QCOMPARE(lstFields.size(), 3);
            QCOMPARE(lstFields.at(0), QByteArray::number(i));
            const double fValue = vecValues.at(static_cast<std::size_t>(i));
            bool bNumber = false;
            const double fRead = lstFields.at(1).toDouble(&bNumber);
            QCOMPARE(bNumber, !std::isnan(fValue));
            if (bNumber)
                QVERIFY(fRead == fValue);
            else
                QCOMPARE(lstFields.at(1), QByteArray());
            QCOMPARE(lstFields.at(2).isEmpty(), i > 1);
        }
        QVERIFY(lstRows.at(1).trimmed().split(',').at(2).toDouble() == static_cast<double>(1.1f));
    }

    void theMenuSavesTheNumbers()
    {
        CShownPlot objShown;
        QTemporaryDir objFolder;
        bool bAnswered = false;
        QTimer objAnswer;
        connect(&objAnswer, &QTimer::timeout, this,
                [&]
                {
                    auto* pDialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
                    if (pDialog == nullptr || bAnswered)
                        return;
                    bAnswered = true;
                    pDialog->setDirectory(objFolder.path());
                    pDialog->findChild<QLineEdit*>()->setText(QStringLiteral("totals"));
                    QTest::keyClick(pDialog->findChild<QLineEdit*>(), Qt::Key_Return);
                });
        objAnswer.start(20);
        objShown.choose(QStringLiteral("Save Numbers..."));
        QFile objFile(objFolder.filePath(QStringLiteral("totals.csv")));
        QTRY_VERIFY(objFile.exists());
        QVERIFY(bAnswered);
        QVERIFY(objFile.open(QIODevice::ReadOnly));
        QCOMPARE(objFile.readAll(), objShown.plot().numbers());
    }

    void aCancelledSaveWritesNothing()
    {
        CShownPlot objShown;
        bool bAnswered = false;
        QTimer objAnswer;
        connect(&objAnswer, &QTimer::timeout, this,
                [&]
                {
                    if (auto* pDialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget()))
                    {
                        bAnswered = true;
                        pDialog->reject();
                    }
                });
        objAnswer.start(20);
        bool bError = false;
        COrmErrorHandler::setResponder([&bError](const SErrorRequest&) { bError = true; });
        objShown.plot().askAndSaveNumbers();
        COrmErrorHandler::setResponder(COrmErrorHandler::FnResponder());
        QVERIFY(bAnswered);
        QVERIFY(!bError);
    }

    void aFailedSaveSaysWhy_data()
    {
        QTest::addColumn<QString>("strPath");
        QTest::newRow("a folder of that name") << QStringLiteral("folder");
        QTest::newRow("a folder that is not there") << QStringLiteral("missing/numbers.csv");
        QTest::newRow("a device") << QStringLiteral("/dev/null");
    }

    void aFailedSaveSaysWhy()
    {
        QFETCH(QString, strPath);
        COrmXYPlot objPlot;
        add<double>(objPlot, g_strLine, {1.0});
        const QTemporaryDir objFolder;
        QVERIFY(QDir(objFolder.path()).mkdir(QStringLiteral("folder")));
        QString strReason;
        QVERIFY(!objPlot.saveNumbers(QDir(objFolder.path()).filePath(strPath), strReason));
        QVERIFY(!strReason.isEmpty());
        QCOMPARE(QDir(objFolder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList({QStringLiteral("folder")}));
        QVERIFY(!QFileInfo(QStringLiteral("/dev/null")).isFile());
    }

    void withoutRoomTheOldFileStays()
    {
        COrmXYPlot objPlot;
        add<double>(objPlot, g_strLine, std::vector<double>(500, 1.0 / 3.0));
        const QTemporaryDir objFolder;
        const QString strPath = objFolder.filePath(QStringLiteral("numbers.csv"));
        QFile objOld(strPath);
        QVERIFY(objOld.open(QIODevice::WriteOnly) && objOld.write("old") == 3);
        objOld.close();
        QString strReason;
        {
            const CFileSizeLimit objLimit(1000);
            QVERIFY(!objPlot.saveNumbers(strPath, strReason));
        }
        QVERIFY(!strReason.isEmpty());
        QVERIFY(objOld.open(QIODevice::ReadOnly));
        QCOMPARE(objOld.readAll(), QByteArray("old"));
        QCOMPARE(QDir(objFolder.path()).entryList(QDir::Files), QStringList({QStringLiteral("numbers.csv")}));
    }
};

QTEST_MAIN(TestXYPlotMenu)
#include "tst_xyplotmenu.moc"
