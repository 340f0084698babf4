#include "ExportTestTools.h"

#include "COrmXYPlot.h"
#include "OrmTestMain.h"

#include <QAbstractSlider>
#include <QClipboard>
#include <QComboBox>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using ExportTest::CExport;
using WindowTest::call;
using WindowTest::CStudy;
using WindowTest::paint;

namespace
{
/// The window with two results of one sequence.
class CLoadedTool : public CToolWindow
{
public:
    CLoadedTool()
    {
        open(m_objStudy.folder());
        chooseSequence(QStringLiteral("SOLA S1"));
        load({QStringLiteral("one"), QStringLiteral("two")});
    }

private:
    CStudy m_objStudy;
};
} // namespace

/// What of the window gets into files and onto the clipboard.
class tst_exportpicture : public QObject
{
    Q_OBJECT

private slots:
    void activeTabIsWritten_data();
    void activeTabIsWritten();
    void pictureSaysWhatItShows_data();
    void pictureSaysWhatItShows();
    void otherPicturesSayNothing();
    void emptyPlotIsWritten();
    void failureIsLeftToTheExporter_data();
    void failureIsLeftToTheExporter();
    void buttonCopiesTheActiveTab_data();
    void buttonCopiesTheActiveTab();
    void hostsCommandCopiesVisibleWindowsOnly();
    void buttonsSlotCopiesHiddenWindowsToo();
};

void tst_exportpicture::activeTabIsWritten_data()
{
    QTest::addColumn<int>("nTab");
    QTest::addColumn<QString>("strName");
    for (const char* pName : {"view.png", "view.bmp"})
    {
        QTest::addRow("view as %s", pName) << 0 << QString::fromLatin1(pName);
        QTest::addRow("plot as %s", pName) << 1 << QString::fromLatin1(pName);
    }
}

void tst_exportpicture::activeTabIsWritten()
{
    QFETCH(int, nTab);
    QFETCH(QString, strName);
    CLoadedTool objTool;
    CExport objExport(objTool);
    objTool.get<QTabWidget>("m_p3DBrowserTabWidget")->setCurrentIndex(nTab);
    paint(objTool);
    objTool.host().clear();
    objExport.exportBy({{"png", objExport.path(strName)}});
    QCOMPARE(objExport.calls(), QStringList{"dialog"});
    auto* pPlot = objTool.window().findChild<COrmXYPlot*>();
    const QImage imgShown = (nTab == 0 ? objTool.view().getPrintImage() : pPlot->getPrintImage()).convertToFormat(QImage::Format_RGB32);
    const QImage imgWritten = QImage(objExport.path(strName)).convertToFormat(QImage::Format_RGB32);
    QVERIFY(!imgShown.isNull());
    QCOMPARE(imgWritten.size(), nTab == 0 ? objTool.view().size() : pPlot->size());
    QCOMPARE(imgWritten, imgShown);
    // More than one colour: something is in it.
    QImage imgOneColor = imgWritten;
    imgOneColor.fill(imgWritten.pixel(0, 0));
    QVERIFY(imgWritten != imgOneColor);
}

void tst_exportpicture::pictureSaysWhatItShows_data()
{
    QTest::addColumn<int>("nTab");
    QTest::addColumn<QString>("strName");
    QTest::addColumn<QString>("strShows");
    QTest::newRow("view") << 0 << "view.png"
                          << "view";
    QTest::newRow("plot, in capitals") << 1 << "plot.PNG"
                                       << "plot of SOLA Quantification";
}

void tst_exportpicture::pictureSaysWhatItShows()
{
    QFETCH(int, nTab);
    QFETCH(QString, strName);
    QFETCH(QString, strShows);
    CLoadedTool objTool;
    CExport objExport(objTool);
    objTool.get<QAbstractSlider>("m_pThumWheel")->setValue(40);
    auto* pTables = objTool.get<QComboBox>("m_pColorTableCB");
    pTables->setCurrentIndex(pTables->findText(QStringLiteral("Rainbow")));
    TestWidgets::click(objTool.get<QAbstractButton>("m_pReverseColorMapCheck"));
    objTool.get<QTabWidget>("m_p3DBrowserTabWidget")->setCurrentIndex(nTab);
    paint(objTool);
    objTool.view().settle();
    objExport.exportBy({{"png", objExport.path(strName)}});

    const QImage imgWritten(objExport.path(strName));
    QCOMPARE(imgWritten.text(QStringLiteral("Software")),
             QCoreApplication::applicationName() + QLatin1Char(' ') + QCoreApplication::applicationVersion());
    const QJsonObject objState = QJsonDocument::fromJson(imgWritten.text(QStringLiteral("OrmelleState")).toUtf8()).object();
    QCOMPARE(objState.keys(), (QStringList{"kinds", "mip", "picture", "results", "rotation", "version"}));
    QCOMPARE(objState["picture"].toString(), strShows);
    QCOMPARE(objState["rotation"].toInt(), 40);
    QCOMPARE(objState["mip"].toBool(), objTool.get<QAbstractButton>("m_pMIPCheck")->isChecked());
    const QJsonArray objResults = {QJsonObject{{"kind", "SOLA"}, {"sequence", "S1"}, {"name", "one"}},
                                   QJsonObject{{"kind", "SOLA"}, {"sequence", "S1"}, {"name", "two"}}};
    QCOMPARE(objState["results"].toArray(), objResults);
    float afRange[4] = {};
    objTool.view().getMinMax(&afRange[0], &afRange[1], &afRange[2], &afRange[3]);
    QVERIFY(afRange[0] < afRange[1]);
    const QJsonObject objSola = {{"unit", "photons/sec"}, {"colors", "Rainbow"},       {"reversed", true},
                                 {"log", false},          {"min", double(afRange[0])}, {"max", double(afRange[1])}};
    QCOMPARE(objState["kinds"].toObject(), (QJsonObject{{"SOLA", objSola}}));
}

void tst_exportpicture::otherPicturesSayNothing()
{
    CStudy objStudy;
    CToolWindow objTool;
    CExport objExport(objTool);
    objTool.open(objStudy.folder());
    objExport.exportBy({{"png", objExport.path("empty.png")}}); // there is nothing to tell
    objTool.chooseSequence(QStringLiteral("SOLA S1"));
    objTool.load({QStringLiteral("one")});
    objExport.exportBy({{"jpg", objExport.path("view.jpg")}});
    for (const char* pName : {"empty.png", "view.jpg"})
    {
        const QImage imgWritten(objExport.path(QLatin1String(pName)));
        QVERIFY(!imgWritten.isNull());
        QCOMPARE(imgWritten.text(QStringLiteral("OrmelleState")), QString());
    }
}

void tst_exportpicture::emptyPlotIsWritten()
{
    CToolWindow objTool;
    CExport objExport(objTool);
    objTool.get<QTabWidget>("m_p3DBrowserTabWidget")->setCurrentIndex(1);
    objExport.exportBy({{"png", objExport.path("plot")}});
    QCOMPARE(objExport.calls(), QStringList{"dialog"});
    auto* pPlot = objTool.window().findChild<COrmXYPlot*>();
    QCOMPARE(QImage(objExport.path("plot.png")).convertToFormat(QImage::Format_RGB32),
             pPlot->getPrintImage().convertToFormat(QImage::Format_RGB32));
}

void tst_exportpicture::failureIsLeftToTheExporter_data()
{
    QTest::addColumn<QString>("strTyped");
    QTest::addColumn<QString>("strText");
    const QString strFormats = "only bmp, jpg, png, eps and tif can be written; end the name in one of them.";
    QTest::newRow("emf") << "view.emf"
                         << "The picture was not saved as \"view.emf\": " + strFormats;
    QTest::newRow("wmf in capitals") << "view.WMF"
                                     << "The picture was not saved as \"view.WMF\": " + strFormats;
    QTest::newRow("too long for the disk") << QString(100, QChar(0x9f20))
                                           << "The picture was not saved as \"" + QString(100, QChar(0x9f20)) +
                                                  ".png\": File name too long; choose another name or folder.";
}

void tst_exportpicture::failureIsLeftToTheExporter()
{
    QFETCH(QString, strTyped);
    QFETCH(QString, strText);
    CToolWindow objTool;
    CExport objExport(objTool);
    objExport.exportBy({{"png", objExport.path(strTyped)}});
    const QStringList lstCalls = objExport.calls();
    QCOMPARE(lstCalls.size(), 3);
    QCOMPARE(lstCalls.mid(0, 2), (QStringList{"dialog", "box critical: " + strText}));
    QCOMPARE(objExport.entries(), QStringList());
}

void tst_exportpicture::buttonCopiesTheActiveTab_data()
{
    QTest::addColumn<int>("nTab");
    QTest::newRow("view") << 0;
    QTest::newRow("plot") << 1;
}

void tst_exportpicture::buttonCopiesTheActiveTab()
{
    QFETCH(int, nTab);
    CToolWindow objTool;
    CExport objExport(objTool);
    objTool.get<QTabWidget>("m_p3DBrowserTabWidget")->setCurrentIndex(nTab);
    paint(objTool);
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    TestWidgets::click(objTool.get<QAbstractButton>("m_pCopyToClipboardButton"));
    auto* pPlot = objTool.window().findChild<COrmXYPlot*>();
    const QImage imgShown = nTab == 0 ? objTool.view().getPrintImage() : pPlot->getPrintImage();
    QVERIFY(!imgShown.isNull());
    QCOMPARE(QGuiApplication::clipboard()->image().convertToFormat(QImage::Format_RGB32), imgShown.convertToFormat(QImage::Format_RGB32));
    QVERIFY(QGuiApplication::clipboard()->text().isEmpty());
    QCOMPARE(objExport.calls(), QStringList());
}

void tst_exportpicture::hostsCommandCopiesVisibleWindowsOnly()
{
    CToolWindow objTool;
    CExport objExport(objTool);
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    objTool.window().hide();
    call(objTool, "onClickCopyToClipboard");
    QCOMPARE(QGuiApplication::clipboard()->text(), QString("before"));
    objTool.window().show();
    QVERIFY(QTest::qWaitForWindowExposed(&objTool.window()));
    call(objTool, "onClickCopyToClipboard");
    QVERIFY(!QGuiApplication::clipboard()->image().isNull());
    QCOMPARE(QGuiApplication::clipboard()->image().size(), objTool.view().size());
}

void tst_exportpicture::buttonsSlotCopiesHiddenWindowsToo()
{
    CToolWindow objTool;
    CExport objExport(objTool);
    objTool.get<QTabWidget>("m_p3DBrowserTabWidget")->setCurrentIndex(1);
    objTool.window().hide();
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    call(objTool, "onClickCopyGraphics");
    QVERIFY(!QGuiApplication::clipboard()->image().isNull());
}

ORM_TEST_MAIN(tst_exportpicture)
#include "tst_exportpicture.moc"
