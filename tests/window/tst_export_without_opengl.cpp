#include "ExportTestTools.h"

#include "COrmXYPlot.h"

#include <QClipboard>

using ExportTest::CExport;

namespace
{
/// Qt says so whenever a picture of the view is asked for.
void expectNoContext()
{
    QTest::ignoreMessage(QtWarningMsg, "QXcbIntegration: Cannot create platform OpenGL context, neither GLX nor EGL are enabled");
    QTest::ignoreMessage(QtWarningMsg, "QOpenGLWidget: Failed to create context");
}
} // namespace

/// A display without OpenGL: there is no picture of the view to export, which the user is told; the plot's is there.
class tst_export_without_opengl : public QObject
{
    Q_OBJECT

private slots:
    void cleanupTestCase() { m_pTool.reset(); }
    void initTestCase();
    void viewHasNoPictureAndTheOldFileStays();
    void plotIsWritten();
    void copyOfTheViewIsEmpty();

private:
    std::unique_ptr<CToolWindow> m_pTool; ///< the window, for all tests
};

void tst_export_without_opengl::initTestCase()
{
    QTest::ignoreMessage(QtWarningMsg, "QXcbIntegration: Cannot create platform OpenGL context, neither GLX nor EGL are enabled");
    QVERIFY(!CSOLAView::openGLAvailable()); // asks Qt once, which says so
    m_pTool = std::make_unique<CToolWindow>();
}

void tst_export_without_opengl::viewHasNoPictureAndTheOldFileStays()
{
    CExport objExport(*m_pTool);
    objExport.put("old.png", "old");
    objExport.answerBoxes({int(QMessageBox::Yes), int(QMessageBox::Ok)});
    expectNoContext();
    objExport.exportBy({{"png", objExport.path("old.png")}});
    const QString strRemembered = QStringLiteral("  remembered: FOLDER, png");
    const QString strRefusal = "box critical: The picture was not saved as \"old.png\": there is no picture, because the view is empty or "
                               "OpenGL is missing.";
    QCOMPARE(objExport.calls(),
             (QStringList{"dialog", "box information: File: old.png exists in the specified path.\nOverwrite existing file?", strRemembered,
                          strRefusal, strRemembered}));
    QCOMPARE(objExport.get("old.png"), QByteArray("old"));
    QCOMPARE(objExport.entries(), QStringList{"old.png"});
}

void tst_export_without_opengl::plotIsWritten()
{
    CExport objExport(*m_pTool);
    expectNoContext();
    objExport.tool().get<QTabWidget>("m_p3DBrowserTabWidget")->setCurrentIndex(1);
    objExport.exportBy({{"png", objExport.path("plot.png")}});
    QCOMPARE(objExport.calls(), QStringList{"dialog"});
    QCOMPARE(QImage(objExport.path("plot.png")).size(), objExport.tool().window().findChild<COrmXYPlot*>()->size());
}

void tst_export_without_opengl::copyOfTheViewIsEmpty()
{
    CExport objExport(*m_pTool);
    expectNoContext();
    TestWidgets::click(objExport.tool().get<QAbstractButton>("m_pCopyToClipboardButton"));
    QVERIFY(QGuiApplication::clipboard()->image().isNull());
    QCOMPARE(objExport.calls(), QStringList());
}

int main(int nArguments, char** ppArguments)
{
    qputenv("QT_XCB_GL_INTEGRATION", "none");
    CSOLAView::setDefaultFormat();
    QApplication objApplication(nArguments, ppArguments);
    COrmPreference::setStore(QString());
    tst_export_without_opengl objTest;
    return QTest::qExec(&objTest, nArguments, ppArguments);
}
#include "tst_export_without_opengl.moc"
