#include "COrmLog.h"
#include "COrmPreference.h"
#include "COrmSequenceCollection.h"
#include "COrmSequenceDataset.h"
#include "COrmToolPluginBase.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QDir>
#include <QFileInfo>
#include <QLibrary>
#include <QListWidget>
#include <QMetaMethod>
#include <QPluginLoader>
#include <QSurfaceFormat>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace
{
const QString s_strFile = QStringLiteral(ORM_BINARY_DIR "/bin/Plugins/libormlongitudinalstudy.so");

void write(const QString& strFile, const QByteArray& byText)
{
    QDir().mkpath(QFileInfo(strFile).path());
    QFile objFile(strFile);
    if (!objFile.open(QIODevice::WriteOnly) || objFile.write(byText) != byText.size())
    {
        qFatal("Cannot write %s", qPrintable(strFile));
    }
}

/// How a sequence was acquired.
enum EKind
{
    Luminescent,
    Fluorescent,
    Both,
    Overview,
    Plain,
    LuminescentCT
};

/// Sequences on disk that the host has open.
class COpenSequences
{
public:
    COrmSequenceDataset* open(const QString& strSequenceID, EKind eKind)
    {
        const QString strFolder = m_objFolder.filePath(QString::number(++m_nFolders)) + QLatin1Char('/');
        QByteArray by = "[Sequence Information]\nSequence=" + strSequenceID.toUtf8() + '\n';
        by += eKind == Overview ? "Trans-illumination Overview=1\n" : "";
        by += "[Click Numbers]\nCount=2\n1=C1\n2=C2\n";
        by += eKind == LuminescentCT ? "[CT Acquisition Parameters]\nVoltage=50\n" : "";
        write(strFolder + QStringLiteral("SequenceInfo.txt"), by);
        for (int i = 1; i <= 2; ++i)
        {
            QByteArray byClick = "[photographic image]\nField of View=13.6\n";
            byClick += eKind == Plain || eKind == LuminescentCT ? "" : "[structure image]\n[reference image]\n";
            const bool bFluorescent = eKind == Fluorescent || eKind == Overview || (eKind == Both && i == 2);
            byClick += "[luminescent image]\n";
            byClick += bFluorescent ? "Image Subtype=fluorescent\nFL x-spot=1.25\nFL y-spot=0.5\n" : "Image Subtype=luminescent\n";
            write(strFolder + QStringLiteral("C%1/ClickInfo.txt").arg(i), byClick);
        }
        m_objSequences.open({strFolder});
        COrmSequenceDataset* pSequence = COrmSequenceDataset::getSequenceDataset(strSequenceID);
        if (pSequence == nullptr)
        {
            qFatal("%s is not open", qPrintable(strSequenceID));
        }
        return pSequence;
    }
    void close(const QString& strSequenceID) { m_objSequences.close(strSequenceID); }

private:
    QTemporaryDir m_objFolder;
    COrmSequenceCollection m_objSequences;
    int m_nFolders = 0;
};

/// Counts how often the tool asks the host to look at its menu entry.
class CValidityCount
{
public:
    CValidityCount()
    {
        m_nSink = getLogObject()->addSink(
            [this](const SLogEntry& sEntry) {
                m_nCount += sEntry.strMessage.contains(QLatin1String("Longitudinal Study asked for its menu entry to be enabled")) ? 1 : 0;
            });
    }
    ~CValidityCount() { getLogObject()->removeSink(m_nSink); }
    CValidityCount(const CValidityCount&) = delete;
    CValidityCount& operator=(const CValidityCount&) = delete;
    int take() { return std::exchange(m_nCount, 0); }

private:
    int m_nSink = 0;
    int m_nCount = 0;
};

QWidget* toolWindow()
{
    for (QWidget* pWidget : QApplication::topLevelWidgets())
    {
        if (pWidget->objectName() == QLatin1String("Longitudinal Study"))
        {
            return pWidget;
        }
    }
    return nullptr;
}

QStringList listedSequences()
{
    const auto* pList = toolWindow() != nullptr ? toolWindow()->findChild<QListWidget*>(QStringLiteral("m_pSequenceNameLW")) : nullptr;
    QStringList lstTexts;
    for (int i = 0; pList != nullptr && i < pList->count(); ++i)
    {
        lstTexts.append(pList->item(i)->text());
    }
    return lstTexts;
}

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

/// The tool as a host sees it: a library of the Plugins folder, loaded into a program that knows its base class only.
class tst_plugin : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

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
    void gatheredSequencesAreListedInOrder();
    void removedSequencesAreNotListed();
    void sequenceIsGatheredOnce();
    void otherKindsOnlyRefreshTheEntry_data();
    void otherKindsOnlyRefreshTheEntry();
    void bothKindsCountAsTheFirst();
    void sequenceWithCTSurfaceIsListed();
    void windowHearsOfLaterSequences();
    void sequencesOfBothKindsAreListedTwiceByTheWindow();
    void changesRefreshTheEntry();
    void removalDoesNotRefreshTheEntry();
    void otherNotificationsDoNothing();
    void copyIgnoresCase_data();
    void copyIgnoresCase();
    void copyWithoutWindowDoesNothing();
    void resetWithoutWindowKeepsTheLists();
    void resetEmptiesAndHides();
    void initForgetsTheWindow();
    void goneWindowLeavesAMarkerBehind();
    void windowGoesWithTheTool();

private:
    COrmToolPluginBase& tool() { return *m_pTool; }

    std::unique_ptr<COrmToolPluginBase> m_pTool;
    std::unique_ptr<COpenSequences> m_pSequences;
};

void tst_plugin::init()
{
    m_pSequences = std::make_unique<COpenSequences>();
    QPluginLoader objLoader(s_strFile);
    QObject* pInstance = objLoader.instance();
    QVERIFY2(pInstance != nullptr, qPrintable(objLoader.errorString()));
    m_pTool.reset(qobject_cast<COrmToolPluginBase*>(pInstance));
    QVERIFY(m_pTool != nullptr);
    m_pTool->init();
}

void tst_plugin::cleanup()
{
    m_pTool.reset();
    m_pSequences.reset();
    QVERIFY(toolWindow() == nullptr);
}

void tst_plugin::metadataIsThatOfADebugBuild()
{
    const QJsonObject jsonMeta = QPluginLoader(s_strFile).metaData();
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
    QVERIFY(!(QFileInfo(s_strFile).permissions() & eOthers));
    QVERIFY(!(QFileInfo(QFileInfo(s_strFile).path()).permissions() & eOthers));
}

void tst_plugin::entryPointsAreExported()
{
    QVERIFY(QLibrary::resolve(s_strFile, "qt_plugin_instance") != nullptr);
    QVERIFY(QLibrary::resolve(s_strFile, "qt_plugin_query_metadata") != nullptr);
}

void tst_plugin::deletedInstanceIsReplaced()
{
    using FnInstance = QObject* (*)();
    const auto fnInstance = reinterpret_cast<FnInstance>(QLibrary::resolve(s_strFile, "qt_plugin_instance"));
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

void tst_plugin::gatheredSequencesAreListedInOrder()
{
    tool().onSignalSequenceAdded(m_pSequences->open(QStringLiteral("B"), Luminescent));
    tool().onSignalSequenceAdded(m_pSequences->open(QStringLiteral("F2"), Fluorescent));
    tool().onSignalSequenceAdded(m_pSequences->open(QStringLiteral("A"), Luminescent));
    tool().onSignalSequenceAdded(m_pSequences->open(QStringLiteral("F1"), Fluorescent));
    QVERIFY(tool().createObject());
    const QStringList lstExpected = {QStringLiteral("SOLA B"), QStringLiteral("SOLA A"), QStringLiteral("NOVA F2"),
                                     QStringLiteral("NOVA F1")};
    QCOMPARE(listedSequences(), lstExpected);
}

void tst_plugin::removedSequencesAreNotListed()
{
    COrmSequenceDataset* pA = m_pSequences->open(QStringLiteral("A"), Luminescent);
    COrmSequenceDataset* pB = m_pSequences->open(QStringLiteral("B"), Luminescent);
    COrmSequenceDataset* pF = m_pSequences->open(QStringLiteral("F"), Fluorescent);
    for (COrmSequenceDataset* pSequence : {pA, pB, pF})
    {
        tool().onSignalSequenceAdded(pSequence);
    }
    tool().onSignalSequenceRemoved(pA);
    tool().onSignalSequenceRemoved(pF);
    tool().onSignalSequenceRemoved(pF); // no longer known
    QVERIFY(tool().createObject());
    QCOMPARE(listedSequences(), QStringList{QStringLiteral("SOLA B")});
}

void tst_plugin::sequenceIsGatheredOnce()
{
    COrmSequenceDataset* pA = m_pSequences->open(QStringLiteral("A"), Luminescent);
    COrmSequenceDataset* pLower = m_pSequences->open(QStringLiteral("a"), Luminescent);
    tool().onSignalSequenceAdded(pA);
    tool().onSignalSequenceAdded(pA);
    tool().onSignalSequenceAdded(pLower);
    QVERIFY(tool().createObject());
    const QStringList lstExpected = {QStringLiteral("SOLA A"), QStringLiteral("SOLA a")};
    QCOMPARE(listedSequences(), lstExpected);
}

void tst_plugin::otherKindsOnlyRefreshTheEntry_data()
{
    QTest::addColumn<int>("nKind");
    QTest::newRow("without a surface") << static_cast<int>(Plain);
    QTest::newRow("overview of a trans-illumination") << static_cast<int>(Overview);
}

void tst_plugin::otherKindsOnlyRefreshTheEntry()
{
    QFETCH(int, nKind);
    CValidityCount objCount;
    tool().onSignalSequenceAdded(m_pSequences->open(QStringLiteral("X"), static_cast<EKind>(nKind)));
    QCOMPARE(objCount.take(), 1);
    QVERIFY(tool().pluginAction()->isEnabled());
    QVERIFY(tool().createObject());
    QCOMPARE(listedSequences(), QStringList());
}

void tst_plugin::bothKindsCountAsTheFirst()
{
    tool().onSignalSequenceAdded(m_pSequences->open(QStringLiteral("AB"), Both));
    QVERIFY(tool().createObject());
    QCOMPARE(listedSequences(), QStringList{QStringLiteral("SOLA AB")});
}

void tst_plugin::sequenceWithCTSurfaceIsListed()
{
    tool().onSignalSequenceAdded(m_pSequences->open(QStringLiteral("CT"), LuminescentCT));
    QVERIFY(tool().createObject());
    QCOMPARE(listedSequences(), QStringList{QStringLiteral("SOLA CT")});
}

void tst_plugin::windowHearsOfLaterSequences()
{
    CValidityCount objCount;
    QVERIFY(tool().createObject());
    COrmSequenceDataset* pA = m_pSequences->open(QStringLiteral("A"), Luminescent);
    tool().onSignalSequenceAdded(pA);
    QCOMPARE(objCount.take(), 1);
    QCOMPARE(listedSequences(), QStringList{QStringLiteral("SOLA A")});
    tool().onSignalSequenceRemoved(pA);
    QCOMPARE(objCount.take(), 0);
    // It stays listed until the window is closed.
    QCOMPARE(listedSequences(), QStringList{QStringLiteral("SOLA A")});
    tool().show();
    toolWindow()->close();
    QVERIFY(tool().createObject());
    QCOMPARE(listedSequences(), QStringList());
}

void tst_plugin::sequencesOfBothKindsAreListedTwiceByTheWindow()
{
    QVERIFY(tool().createObject());
    tool().onSignalSequenceAdded(m_pSequences->open(QStringLiteral("AB"), Both));
    const QStringList lstExpected = {QStringLiteral("SOLA AB"), QStringLiteral("NOVA AB")};
    QCOMPARE(listedSequences(), lstExpected);
}

void tst_plugin::changesRefreshTheEntry()
{
    CValidityCount objCount;
    COrmSequenceDataset* pA = m_pSequences->open(QStringLiteral("A"), Luminescent);
    tool().onSignalSequenceChanged(pA);
    QCOMPARE(objCount.take(), 1);
    tool().onSignalDatasetChanged(pA->getDatasets().first());
    QCOMPARE(objCount.take(), 1);
    tool().onSignalDatasetChanged(nullptr); // nobody looks at it
    QCOMPARE(objCount.take(), 1);
    QVERIFY(tool().createObject());
    QCOMPARE(listedSequences(), QStringList());
}

void tst_plugin::removalDoesNotRefreshTheEntry()
{
    CValidityCount objCount;
    COrmSequenceDataset* pA = m_pSequences->open(QStringLiteral("A"), Luminescent);
    tool().onSignalSequenceAdded(pA);
    QCOMPARE(objCount.take(), 1);
    tool().onSignalSequenceRemoved(pA);
    QCOMPARE(objCount.take(), 0);
}

void tst_plugin::otherNotificationsDoNothing()
{
    CValidityCount objCount;
    COrmSequenceDataset* pA = m_pSequences->open(QStringLiteral("A"), Luminescent);
    tool().onSignalDatasetRemoved(pA->getDatasets().first());
    tool().onSignalROIModified(QStringLiteral("ROI 1"));
    tool().onSignalROIDeleted();
    tool().onSignalupdateROIList();
    QCOMPARE(objCount.take(), 0);
    QVERIFY(toolWindow() == nullptr);
    QVERIFY(tool().createObject());
    tool().onSignalDatasetRemoved(nullptr);
    tool().onSignalROIModified(QString());
    tool().onSignalROIDeleted();
    tool().onSignalupdateROIList();
    QCOMPARE(objCount.take(), 0);
    QCOMPARE(listedSequences(), QStringList());
    QVERIFY(!toolWindow()->isVisible());
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
    QSurfaceFormat objFormat;
    objFormat.setVersion(2, 1);
    objFormat.setProfile(QSurfaceFormat::CompatibilityProfile);
    objFormat.setDepthBufferSize(24);
    QSurfaceFormat::setDefaultFormat(objFormat);
    QApplication objApplication(nArguments, ppArguments);
    COrmPreference::setStore(QString());
    tst_plugin objTest;
    return QTest::qExec(&objTest, nArguments, ppArguments);
}

#include "tst_plugin.moc"
