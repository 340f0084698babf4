#include "PluginTest.h"

#include <QCheckBox>
#include <QClipboard>
#include <QFileInfo>
#include <QLibrary>
#include <QMetaMethod>
#include <QTabWidget>

using namespace PluginTest;

namespace
{
QStringList slotsOf(const QMetaObject* pMeta)
{
    QStringList lstSlots;
    for (int i = pMeta->methodOffset(); i < pMeta->methodCount(); ++i)
    {
        const QMetaMethod objMethod = pMeta->method(i);
        lstSlots.append(QStringLiteral("%1%2 %3 (%4)")
                            .arg(QLatin1String(objMethod.methodType() == QMetaMethod::Slot ? "" : "not a slot: "),
                                 QLatin1String(objMethod.access() == QMetaMethod::Protected ? "protected" : "not protected"),
                                 QString::fromLatin1(objMethod.methodSignature()),
                                 QString::fromLatin1(objMethod.parameterNames().join(','))));
    }
    return lstSlots;
}
} // namespace

/// The tool as a host sees it: a library of the Plugins folder, its menu entry and its window.
class tst_plugin : public CPluginTest
{
    Q_OBJECT

private slots:
    void init() { loadTool(); }
    void cleanup() { removeTool(); }

    void metadataIsThatOfADebugBuild();
    void onlyTheOwnerCanWriteToTheFolder();
    void entryPointsAreExported();
    void deletedInstanceIsReplaced();
    void interfaceIsAnsweredByName();
    void slotsStandInTheirOrder();
    void answersOfTheMenuEntry();
    void actionIsMadeOnce();
    void neverVisible();
    void firstUseMakesTheWindow();
    void firstUseWithoutSequencesStaysHidden();
    void showShowsTheWindowAtItsPlace();
    void laterUseShowsTheWindowAgain();
    void laterUseRefreshesTheControls();
    void copyIgnoresCase_data();
    void copyIgnoresCase();
    void copyWithoutWindowDoesNothing();
    void resetWithoutWindowKeepsTheLists();
    void resetEmptiesAndHides();
    void initForgetsTheWindow();
    void goneWindowLeavesAMarkerBehind();
    void windowGoesWithTheTool();
};

void tst_plugin::metadataIsThatOfADebugBuild()
{
    const QJsonObject jsonMeta = QPluginLoader(g_strPluginFile).metaData();
    QCOMPARE(jsonMeta.value(QStringLiteral("IID")).toString(), QStringLiteral("tdl.ormelle.ormlongitudinalstudybrowser"));
    QCOMPARE(jsonMeta.value(QStringLiteral("className")).toString(), QStringLiteral("COrmLongitudinalStudyBrowserPlugin"));
    // An object without entries is not written down.
    QVERIFY(!jsonMeta.contains(QStringLiteral("MetaData")) || jsonMeta.value(QStringLiteral("MetaData")).isObject());
    QCOMPARE(jsonMeta.value(QStringLiteral("MetaData")).toObject(), QJsonObject());
    QCOMPARE(jsonMeta.value(QStringLiteral("debug")), QJsonValue(true));
    QCOMPARE(jsonMeta.value(QStringLiteral("version")).toInt() & 0xFFFF00, QT_VERSION & 0xFFFF00);
}

void tst_plugin::onlyTheOwnerCanWriteToTheFolder()
{
    const QFileDevice::Permissions eOthers = QFileDevice::WriteGroup | QFileDevice::WriteOther;
    QVERIFY(!(QFileInfo(g_strPluginFile).permissions() & eOthers));
    QVERIFY(!(QFileInfo(QFileInfo(g_strPluginFile).path()).permissions() & eOthers));
}

void tst_plugin::entryPointsAreExported()
{
    QVERIFY(QLibrary::resolve(g_strPluginFile, "qt_plugin_instance") != nullptr);
    QVERIFY(QLibrary::resolve(g_strPluginFile, "qt_plugin_query_metadata") != nullptr);
}

void tst_plugin::deletedInstanceIsReplaced()
{
    using FnInstance = QObject* (*)();
    const auto fnInstance = reinterpret_cast<FnInstance>(QLibrary::resolve(g_strPluginFile, "qt_plugin_instance"));
    QObject* pInstance = fnInstance();
    QCOMPARE(pInstance, m_pTool.get());
    QCOMPARE(fnInstance(), pInstance);
    QPointer<QObject> pGuard(pInstance);
    m_pTool.reset();
    QVERIFY(pGuard.isNull());
    m_pTool.reset(qobject_cast<COrmToolPluginBase*>(fnInstance()));
    QVERIFY(m_pTool != nullptr);
    m_pTool->init();
}

void tst_plugin::interfaceIsAnsweredByName()
{
    QCOMPARE(tool().metaObject()->className(), "COrmLongitudinalStudyBrowserPlugin");
    QCOMPARE(tool().metaObject()->superClass()->className(), "COrmToolPluginBase");
    QCOMPARE(tool().qt_metacast("COrmLongitudinalStudyBrowserPlugin"), static_cast<void*>(m_pTool.get()));
    QCOMPARE(tool().qt_metacast("com.Brisano.Ormelle.COrmToolPluginBase/1.0"), static_cast<void*>(m_pTool.get()));
    QCOMPARE(tool().qt_metacast("COrmToolPluginBase"), static_cast<void*>(m_pTool.get()));
    QVERIFY(tool().qt_metacast("com.Brisano.Ormelle.COrmToolPluginBase/2.0") == nullptr);
    QCOMPARE(qobject_interface_iid<COrmToolPluginBase*>(), "com.Brisano.Ormelle.COrmToolPluginBase/1.0");
    QVERIFY(tool().parent() == nullptr);
}

void tst_plugin::slotsStandInTheirOrder()
{
    const QStringList lstExpected = {QStringLiteral("protected onSignalDatasetChanged(COrmDataset*) ()"),
                                     QStringLiteral("protected onSignalSequenceChanged(COrmSequenceDataset*) ()"),
                                     QStringLiteral("protected onSignalDatasetRemoved(COrmDataset*) ()"),
                                     QStringLiteral("protected onSignalSequenceAdded(COrmSequenceDataset*) ()"),
                                     QStringLiteral("protected onSignalSequenceRemoved(COrmSequenceDataset*) ()"),
                                     QStringLiteral("protected onSignalROIModified(QString) ()"),
                                     QStringLiteral("protected onSignalROIDeleted() ()"),
                                     QStringLiteral("protected onSignalupdateROIList() ()"),
                                     QStringLiteral("protected signalAddWidgetToWorkspace(QWidget*) (pWidget)"),
                                     QStringLiteral("protected onSignalCopyToClipboard(QString) (strObjectName)"),
                                     QStringLiteral("protected onSignalToolsMenuLongiStudyUpdate() ()")};
    QCOMPARE(slotsOf(tool().metaObject()), lstExpected);
}

void tst_plugin::answersOfTheMenuEntry()
{
    QVERIFY(tool().pluginMenu() == nullptr);
    QVERIFY(tool().pluginIcon().isNull());
    QCOMPARE(tool().PluginMenuItem(), QStringLiteral("Longitudinal Study"));
    QCOMPARE(tool().MenuItemBefore(), QStringLiteral("Image Overlay"));
    QVERIFY(tool().defaultVisibilityForPluggin());
}

void tst_plugin::actionIsMadeOnce()
{
    QAction* pAction = tool().pluginAction();
    QVERIFY(pAction != nullptr);
    QCOMPARE(pAction->text(), QStringLiteral("Longitudinal Study"));
    QCOMPARE(pAction->objectName(), QStringLiteral("Longitudinal Study"));
    QCOMPARE(pAction->parent(), m_pTool.get());
    QCOMPARE(tool().pluginAction(), pAction);
}

void tst_plugin::neverVisible()
{
    QVERIFY(!tool().isVisible());
    QVERIFY(tool().createObject());
    tool().show();
    QVERIFY(toolWindow()->isVisible());
    QVERIFY(!tool().isVisible());
}

void tst_plugin::firstUseMakesTheWindow()
{
    QSignalSpy objWorkspace(COrmPreference::getSignalHandler(), SIGNAL(signalAddWidgetToWorkspace(QWidget*)));
    tool().onSignalSequenceAdded(m_pSequences->open(QStringLiteral("A"), Luminescent));
    QVERIFY(tool().createObject());
    QWidget* pWindow = toolWindow();
    QVERIFY(pWindow != nullptr);
    QCOMPARE(objWorkspace.size(), 1);
    QCOMPARE(objWorkspace.at(0).at(0).value<QWidget*>(), pWindow);
    QVERIFY(pWindow->parent() == nullptr);
    QVERIFY(!pWindow->isVisible());
    QCOMPARE(pWindow->pos(), QPoint(0, 70));
    QCOMPARE(pWindow->size(), QSize(1011 + 15, 719 + 40));
    QCOMPARE(pWindow->windowTitle(), QStringLiteral("Longitudinal Study Window"));
}

void tst_plugin::firstUseWithoutSequencesStaysHidden()
{
    QVERIFY(tool().createObject());
    QVERIFY(!toolWindow()->isVisible());
    QCOMPARE(listedSequences(), QStringList());
    // Whoever has a window of its own hidden sees it when a sequence comes and the entry is used.
    tool().onSignalSequenceAdded(m_pSequences->open(QStringLiteral("A"), Luminescent));
    QCOMPARE(listedSequences(), QStringList{QStringLiteral("SOLA A")});
    QVERIFY(!toolWindow()->isVisible());
    QVERIFY(tool().createObject());
    QVERIFY(toolWindow()->isVisible());
}

void tst_plugin::showShowsTheWindowAtItsPlace()
{
    tool().onSignalSequenceAdded(m_pSequences->open(QStringLiteral("A"), Luminescent));
    QVERIFY(tool().createObject());
    tool().show();
    QWidget* pWindow = toolWindow();
    QVERIFY(QTest::qWaitForWindowExposed(pWindow));
    QVERIFY(pWindow->isVisible());
    QCOMPARE(pWindow->pos(), QPoint(0, 70));
    QCOMPARE(listedSequences(), QStringList{QStringLiteral("SOLA A")});
}

void tst_plugin::laterUseShowsTheWindowAgain()
{
    tool().onSignalSequenceAdded(m_pSequences->open(QStringLiteral("A"), Luminescent));
    QVERIFY(tool().createObject());
    tool().show();
    QWidget* pWindow = toolWindow();
    pWindow->close();
    QVERIFY(!pWindow->isVisible());
    pWindow->move(300, 200);
    QVERIFY(tool().createObject());
    QCOMPARE(toolWindow(), pWindow);
    QVERIFY(pWindow->isVisible());
    QCOMPARE(pWindow->pos(), QPoint(0, 70));
    QCOMPARE(listedSequences(), QStringList{QStringLiteral("SOLA A")});
}

void tst_plugin::laterUseRefreshesTheControls()
{
    tool().onSignalSequenceAdded(m_pSequences->open(QStringLiteral("A"), Luminescent));
    QVERIFY(tool().createObject());
    tool().show();
    toolWindow()->close(); // checks MIP
    auto* pMIP = toolWindow()->findChild<QCheckBox*>(QStringLiteral("m_pMIPCheck"));
    QVERIFY(pMIP->isChecked());
    QVERIFY(tool().createObject());
    QVERIFY(!pMIP->isChecked()); // the look of a kind without results
}

void tst_plugin::copyIgnoresCase_data()
{
    QTest::addColumn<QString>("strName");
    QTest::addColumn<bool>("bCopies");
    QTest::newRow("as it is") << QStringLiteral("Longitudinal Study") << true;
    QTest::newRow("upper case") << QStringLiteral("LONGITUDINAL STUDY") << true;
    QTest::newRow("other window") << QStringLiteral("Image Overlay") << false;
    QTest::newRow("part of the name") << QStringLiteral("Longitudinal") << false;
    QTest::newRow("no name") << QString() << false;
}

void tst_plugin::copyIgnoresCase()
{
    QFETCH(QString, strName);
    QFETCH(bool, bCopies);
    tool().onSignalSequenceAdded(m_pSequences->open(QStringLiteral("A"), Luminescent));
    QVERIFY(tool().createObject());
    tool().show();
    toolWindow()->findChild<QTabWidget*>(QStringLiteral("m_p3DBrowserTabWidget"))->setCurrentIndex(1);
    QApplication::clipboard()->setText(QStringLiteral("before"));
    tool().onSignalCopyToClipboard(strName);
    QCOMPARE(!QApplication::clipboard()->image().isNull(), bCopies);
    QCOMPARE(QApplication::clipboard()->text(), bCopies ? QString() : QStringLiteral("before"));
    // Hidden windows have nothing to copy.
    toolWindow()->hide();
    QApplication::clipboard()->setText(QStringLiteral("before"));
    tool().onSignalCopyToClipboard(strName);
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("before"));
}

void tst_plugin::copyWithoutWindowDoesNothing()
{
    QApplication::clipboard()->setText(QStringLiteral("before"));
    tool().onSignalCopyToClipboard(QStringLiteral("Longitudinal Study"));
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("before"));
    QVERIFY(toolWindow() == nullptr);
}

void tst_plugin::resetWithoutWindowKeepsTheLists()
{
    tool().onSignalSequenceAdded(m_pSequences->open(QStringLiteral("A"), Luminescent));
    tool().onSignalSequenceAdded(m_pSequences->open(QStringLiteral("F"), Fluorescent));
    QVERIFY(QMetaObject::invokeMethod(m_pTool.get(), "onSignalToolsMenuLongiStudyUpdate"));
    QVERIFY(toolWindow() == nullptr);
    QVERIFY(tool().createObject());
    const QStringList lstExpected = {QStringLiteral("SOLA A"), QStringLiteral("NOVA F")};
    QCOMPARE(listedSequences(), lstExpected);
}

void tst_plugin::resetEmptiesAndHides()
{
    tool().onSignalSequenceAdded(m_pSequences->open(QStringLiteral("A"), Luminescent));
    QVERIFY(tool().createObject());
    tool().show();
    QVERIFY(toolWindow()->isVisible());
    QVERIFY(QMetaObject::invokeMethod(m_pTool.get(), "onSignalToolsMenuLongiStudyUpdate"));
    QVERIFY(!toolWindow()->isVisible());
    // The window's own lists are not touched.
    QCOMPARE(listedSequences(), QStringList{QStringLiteral("SOLA A")});
    // Those of the tool are: a window made now finds markers only.
    tool().show();
    toolWindow()->close();
    delete toolWindow();
    QVERIFY(tool().createObject());
    QCOMPARE(listedSequences(), QStringList());
}

void tst_plugin::initForgetsTheWindow()
{
    QVERIFY(tool().createObject());
    QWidget* pForgotten = toolWindow();
    tool().init();
    QCOMPARE(toolWindow(), pForgotten);
    QVERIFY(!tool().isVisible());
    // Sequences are gathered again, and do not reach the old window.
    tool().onSignalSequenceAdded(m_pSequences->open(QStringLiteral("A"), Luminescent));
    QCOMPARE(listedSequences(), QStringList());
    delete pForgotten;
}

void tst_plugin::goneWindowLeavesAMarkerBehind()
{
    tool().onSignalSequenceAdded(m_pSequences->open(QStringLiteral("A"), Luminescent));
    QVERIFY(tool().createObject());
    delete toolWindow();
    QVERIFY(tool().createObject());
    // The first marker reads like a sequence ID now.
    const QStringList lstExpected = {QStringLiteral("SOLA SOLA"), QStringLiteral("SOLA A"), QStringLiteral("NOVA NOVA")};
    QCOMPARE(listedSequences(), lstExpected);
}

void tst_plugin::windowGoesWithTheTool()
{
    tool().onSignalSequenceAdded(m_pSequences->open(QStringLiteral("A"), Luminescent));
    QVERIFY(tool().createObject());
    tool().show();
    const QPointer<QWidget> pWindow(toolWindow());
    m_pTool.reset();
    QVERIFY(pWindow.isNull());
}

int main(int nArguments, char** ppArguments)
{
    return runPluginTest<tst_plugin>(nArguments, ppArguments);
}

#include "tst_plugin.moc"
