#include "COrmDataset.h"
#include "COrmLog.h"
#include "COrmPreference.h"
#include "COrmSequenceCollection.h"
#include "COrmSequenceDataset.h"
#include "COrmToolPluginBase.h"
#include "CStudyWriter.h"
#include "OrmTestMain.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

namespace
{
const QByteArray g_arrSurface = "[photographic image]\nField of View=13.6\n[structure image]\n[reference image]\n";

/// Writes a sequence with the given click files, in a folder of its own.
class CSequenceFiles
{
public:
    explicit CSequenceFiles(const QList<QByteArray>& lstClicks, const QByteArray& arrMore = QByteArray(), const QByteArray& arrID = "S1")
    {
        QByteArray arrInfo = "[Sequence Information]\nSequence=" + arrID + "\nSubject=Mouse\nDate Time=2026-08-01T09:30:00\n" + arrMore +
                             "[Click Numbers]\nCount=" + QByteArray::number(lstClicks.size()) + "\n";
        for (int nClick = 0; nClick < lstClicks.size(); ++nClick)
        {
            arrInfo += QByteArray::number(nClick + 1) + "=C" + QByteArray::number(nClick + 1) + "\n";
            setClick(nClick + 1, lstClicks.at(nClick));
        }
        CStudyWriter::writeFile(file(), arrInfo);
    }

    QString folder() const { return m_objFolder.path() + QLatin1Char('/'); }
    QString file() const { return folder() + QStringLiteral("SequenceInfo.txt"); }
    QString clickFile(int nClick) const { return folder() + QStringLiteral("C%1/ClickInfo.txt").arg(nClick); }
    void setClick(int nClick, const QByteArray& arrText) const { CStudyWriter::writeFile(clickFile(nClick), arrText); }

private:
    QTemporaryDir m_objFolder;
};

/// What the hub says, as texts in the order of arrival.
class CHubEar : public QObject
{
public:
    CHubEar()
    {
        using CHub = COrmSignalHandler;
        CHub* pHub = COrmPreference::getSignalHandler();
        connect(pHub, &CHub::signalSequenceAdded, this, [this](COrmSequenceDataset* p) { hear("added", p->getSequenceID()); });
        connect(pHub, &CHub::signalSequenceChanged, this, [this](COrmSequenceDataset* p) { hear("changed", p->getSequenceID()); });
        connect(pHub, &CHub::signalSequenceRemoved, this,
                [this](COrmSequenceDataset* p)
                {
                    // Whoever is told still has the object, but the host has it open no more.
                    hear(COrmSequenceDataset::getSequenceDataset(p->getSequenceID()) == nullptr ? "removed" : "removed while open",
                         p->getSequenceID());
                });
        connect(pHub, &CHub::signalDatasetChanged, this, [this](COrmDataset* p) { hear("image changed", p->getClickNumber()); });
        connect(pHub, &CHub::signalDatasetRemoved, this, [this](COrmDataset* p) { hear("image removed", p->getClickNumber()); });
    }
    QStringList take() { return std::exchange(m_lstHeard, {}); }

private:
    void hear(const char* pWhat, const QString& strName) { m_lstHeard.append(QLatin1String(pWhat) + QLatin1Char(' ') + strName); }
    QStringList m_lstHeard;
};

QStringList idsOf(const COrmSequenceCollection& objCollection)
{
    QStringList lstIDs;
    for (const COrmSequenceDataset* pSequence : objCollection.sequences())
        lstIDs.append(pSequence->getSequenceID());
    return lstIDs;
}
} // namespace

class TestSequences : public QObject
{
    Q_OBJECT

private slots:
    void flagsFollowTheClicksOnDisk_data();
    void flagsFollowTheClicksOnDisk();
    void fieldOfViewIsInCentimetres_data();
    void fieldOfViewIsInCentimetres();
    void infoPathEndsWithASeparator();
    void openSequenceIsFoundByItsExactID();
    void sequenceThatCannotBeOpenedSaysWhy_data();
    void sequenceThatCannotBeOpenedSaysWhy();
    void unreadableClicksAreLeftOutAndTold();
    void clickOutsideTheSequenceFolderIsLeftOut_data();
    void clickOutsideTheSequenceFolderIsLeftOut();
    void savedResultsAreCounted();
    void namesAreTakenAsTheyAre();
    void imageFilesLieInTheClickFolder_data();
    void imageFilesLieInTheClickFolder();
    void collectionTellsTheHubWhatComesAndGoes();
    void sameIDIsOpenedOnce();
    void refreshTellsWhatChanged();
    void refreshOfADamagedSequenceKeepsIt();
    void ctSurfaceAcquiredLaterIsSeenOnRereading();
    void sequenceMayBeClosedByWhoeverIsTold();
    void pluginBaseStartsWithoutActionAndKeepsItEnabled();
    void pluginBaseHandsItsWindowToTheHub();
};

void TestSequences::flagsFollowTheClicksOnDisk_data()
{
    QTest::addColumn<QList<QByteArray>>("clicks");
    QTest::addColumn<QByteArray>("more");
    QTest::addColumn<QString>("flags"); // S structured light, C CT, L luminescent, F fluorescent, T trans-illumination, O overview

    const QByteArray arrLum = "[luminescent image]\nImage Subtype=luminescent\n";
    const QByteArray arrFl = "[luminescent image]\nImage Subtype=fluorescent\n";
    const QByteArray arrSpot = "FL x-spot=1.25\nFL y-spot=0.50\n";
    using L = QList<QByteArray>;
    QTest::newRow("photograph only") << L{"[photographic image]\n"} << QByteArray() << "";
    QTest::newRow("empty click file") << L{""} << QByteArray() << "";
    QTest::newRow("luminescent without a surface") << L{arrLum} << QByteArray() << "L";
    QTest::newRow("luminescent, no subtype") << L{g_arrSurface + "[luminescent image]\n"} << QByteArray() << "SL";
    QTest::newRow("luminescent, empty subtype") << L{g_arrSurface + "[luminescent image]\nImage Subtype=\n"} << QByteArray() << "SL";
    QTest::newRow("luminescent, unknown subtype") << L{g_arrSurface + "[luminescent image]\nImage Subtype=glow\n"} << QByteArray() << "SL";
    QTest::newRow("subtype outside its section") << L{"Image Subtype=fluorescent\n[luminescent image]\n"} << QByteArray() << "L";
    QTest::newRow("fluorescent") << L{g_arrSurface + arrFl} << QByteArray() << "SF";
    QTest::newRow("fluorescent, case aside") << L{g_arrSurface + "[luminescent image]\nImage Subtype=FluoreScent\n"} << QByteArray()
                                             << "SF";
    QTest::newRow("fluorescent with one spot") << L{g_arrSurface + arrFl + arrSpot} << QByteArray() << "SFT";
    QTest::newRow("luminescent with one spot") << L{arrLum + arrSpot} << QByteArray() << "LT";
    QTest::newRow("spot without y") << L{arrFl + "FL x-spot=1\n"} << QByteArray() << "F";
    QTest::newRow("spot without x") << L{arrFl + "FL y-spot=1\n"} << QByteArray() << "F";
    QTest::newRow("spot at x 0") << L{arrFl + "FL x-spot=0\nFL y-spot=1\n"} << QByteArray() << "F";
    QTest::newRow("spot at y 0") << L{arrFl + "FL x-spot=1\nFL y-spot=0.0\n"} << QByteArray() << "F";
    QTest::newRow("spot at a negative place") << L{arrFl + "FL x-spot=-1\nFL y-spot=1\n"} << QByteArray() << "F";
    QTest::newRow("several spots in x") << L{arrFl + "FL x-spot=1.25;2.0\nFL y-spot=0.5;0.5\n"} << QByteArray() << "F";
    QTest::newRow("several spots in y only") << L{arrFl + "FL x-spot=1.25\nFL y-spot=0.5;0.6\n"} << QByteArray() << "F";
    QTest::newRow("spot that is no number") << L{arrFl + "FL x-spot=nan\nFL y-spot=1\n"} << QByteArray() << "F";
    QTest::newRow("spot with a comma") << L{arrFl + "FL x-spot=1,5\nFL y-spot=1\n"} << QByteArray() << "F";
    QTest::newRow("spot without the image") << L{"[photographic image]\nFL x-spot=1\nFL y-spot=1\n"} << QByteArray() << "";
    QTest::newRow("one click of three has a spot") << L{arrFl, arrFl + arrSpot, arrFl} << QByteArray() << "FT";
    QTest::newRow("both kinds in two clicks") << L{arrLum, g_arrSurface + arrFl} << QByteArray() << "SLF";
    QTest::newRow("surface parts spread over clicks")
        << L{"[structure image]\n[reference image]\n", "[photographic image]\n"} << QByteArray() << "";
    QTest::newRow("no reference image") << L{"[photographic image]\n[structure image]\n"} << QByteArray() << "";
    QTest::newRow("section names compare exactly")
        << L{"[Photographic Image]\n[Structure image]\n[Luminescent image]\n"} << QByteArray() << "";
    QTest::newRow("CT") << L{arrLum} << QByteArray("[CT Acquisition Parameters]\nVoltage=50\n") << "CL";
    QTest::newRow("CT section without keys") << L{arrLum} << QByteArray("[CT Acquisition Parameters]\n") << "CL";
    QTest::newRow("overview") << L{g_arrSurface + arrFl + arrSpot} << QByteArray("Trans-illumination Overview=1\n") << "SFTO";
    QTest::newRow("overview 0") << L{arrFl} << QByteArray("Trans-illumination Overview=0\n") << "F";
    QTest::newRow("overview neither 0 nor 1") << L{arrFl} << QByteArray("Trans-illumination Overview=yes\n") << "F";
}

void TestSequences::flagsFollowTheClicksOnDisk()
{
    QFETCH(QList<QByteArray>, clicks);
    QFETCH(QByteArray, more);
    QFETCH(QString, flags);
    const CSequenceFiles objFiles(clicks, more);
    SSequenceFacts sFacts;
    QCOMPARE(OrmSequenceFacts::read(objFiles.file(), sFacts), QString());
    const COrmSequenceDataset objSequence(sFacts);
    QString strFlags;
    strFlags += objSequence.isSLASequence() ? QStringLiteral("S") : QString();
    strFlags += objSequence.isCTSequence(false) ? QStringLiteral("C") : QString();
    strFlags += objSequence.isLuminescentSequence() ? QStringLiteral("L") : QString();
    strFlags += objSequence.isFluorescentSequence() ? QStringLiteral("F") : QString();
    strFlags += objSequence.isTransIlluminationSequence() ? QStringLiteral("T") : QString();
    strFlags += objSequence.isTransIllumOverviewResultSequence() ? QStringLiteral("O") : QString();
    QCOMPARE(strFlags, flags);
    QCOMPARE(objSequence.getDatasets().size(), clicks.size());
}

void TestSequences::fieldOfViewIsInCentimetres_data()
{
    QTest::addColumn<QByteArray>("click");
    QTest::addColumn<double>("fov");
    QTest::newRow("luminescent image") << QByteArray("[luminescent image]\nField of View=12.5\n") << 12.5;
    QTest::newRow("photographic image") << QByteArray("[photographic image]\nField of View=10\n") << 10.0;
    QTest::newRow("the luminescent one counts")
        << QByteArray("[photographic image]\nField of View=10\n[luminescent image]\nField of View=6.6\n") << 6.6;
    QTest::newRow("the other where one is no number")
        << QByteArray("[photographic image]\nField of View=10\n[luminescent image]\nField of View=wide\n") << 10.0;
    QTest::newRow("none") << QByteArray("[luminescent image]\n") << 13.6;
    QTest::newRow("zero") << QByteArray("[luminescent image]\nField of View=0\n") << 13.6;
    QTest::newRow("negative") << QByteArray("[luminescent image]\nField of View=-3\n") << 13.6;
    QTest::newRow("infinite") << QByteArray("[luminescent image]\nField of View=inf\n") << 13.6;
    QTest::newRow("comma") << QByteArray("[luminescent image]\nField of View=1,5\n") << 13.6;
    QTest::newRow("too large for a number") << QByteArray("[luminescent image]\nField of View=1e999\n") << 13.6;
}

void TestSequences::fieldOfViewIsInCentimetres()
{
    QFETCH(QByteArray, click);
    QFETCH(double, fov);
    const CSequenceFiles objFiles({click});
    SSequenceFacts sFacts;
    QCOMPARE(OrmSequenceFacts::read(objFiles.file(), sFacts), QString());
    COrmSequenceDataset objSequence(sFacts);
    COrmDataset* pDataset = objSequence.getDatasets().first();
    QCOMPARE(pDataset->getImageFOV(), COrmDataset::s_fDefaultFOV); // nothing calculated yet
    pDataset->calculateFOV();
    QCOMPARE(pDataset->getImageFOV(), fov);
}

void TestSequences::infoPathEndsWithASeparator()
{
    const CSequenceFiles objFiles({g_arrSurface});
    SSequenceFacts sFacts;
    // However the file is named, the path is the absolute one of the folder.
    QCOMPARE(OrmSequenceFacts::read(objFiles.folder() + QStringLiteral("C1/..//SequenceInfo.txt"), sFacts), QString());
    const COrmSequenceDataset objSequence(sFacts);
    QCOMPARE(objSequence.getSequenceInfoPath(), objFiles.folder());
    QVERIFY(QFile::exists(objSequence.getSequenceInfoPath() + QStringLiteral("SequenceInfo.txt")));
    QCOMPARE(objSequence.getDatasets().first()->getClickInfoPath(), objFiles.folder() + QStringLiteral("C1/"));
    QCOMPARE(sFacts.m_strSubject, QStringLiteral("Mouse"));
    QCOMPARE(sFacts.m_strDateTime, QStringLiteral("2026-08-01T09:30:00"));
}

void TestSequences::openSequenceIsFoundByItsExactID()
{
    const CSequenceFiles objFiles({g_arrSurface}, QByteArray(), "Mouse 1");
    SSequenceFacts sFacts;
    QCOMPARE(OrmSequenceFacts::read(objFiles.file(), sFacts), QString());
    QVERIFY(COrmSequenceDataset::getSequenceDataset(QStringLiteral("Mouse 1")) == nullptr);
    {
        COrmSequenceDataset objFirst(sFacts);
        QCOMPARE(COrmSequenceDataset::getSequenceDataset(QStringLiteral("Mouse 1")), &objFirst);
        QVERIFY(COrmSequenceDataset::getSequenceDataset(QStringLiteral("mouse 1")) == nullptr);
        QVERIFY(COrmSequenceDataset::getSequenceDataset(QString()) == nullptr);
        {
            const COrmSequenceDataset objSecond(sFacts);
            QCOMPARE(COrmSequenceDataset::getSequenceDataset(QStringLiteral("Mouse 1")), &objFirst);
        }
        QCOMPARE(COrmSequenceDataset::getSequenceDataset(QStringLiteral("Mouse 1")), &objFirst);
    }
    QVERIFY(COrmSequenceDataset::getSequenceDataset(QStringLiteral("Mouse 1")) == nullptr);
}

void TestSequences::sequenceThatCannotBeOpenedSaysWhy_data()
{
    QTest::addColumn<QByteArray>("info");
    QTest::addColumn<QString>("reason");
    QTest::newRow("no ID") << QByteArray("[Click Numbers]\nCount=1\n1=C1\n") << "names no sequence.";
    QTest::newRow("empty ID") << QByteArray("[Sequence Information]\nSequence=\n[Click Numbers]\nCount=1\n1=C1\n") << "names no sequence.";
    QTest::newRow("no clicks") << QByteArray("[Sequence Information]\nSequence=S1\n") << "no click that can be read.";
    QTest::newRow("no click listed") << QByteArray("[Sequence Information]\nSequence=S1\n[Click Numbers]\nCount=0\n")
                                     << "no click that can be read.";
    QTest::newRow("count is no number") << QByteArray("[Sequence Information]\nSequence=S1\n[Click Numbers]\nCount=many\n1=C1\n")
                                        << "no click that can be read.";
    QTest::newRow("click file missing") << QByteArray("[Sequence Information]\nSequence=S1\n[Click Numbers]\nCount=1\n1=C9\n")
                                        << "no click that can be read.";
    QTest::newRow("empty file") << QByteArray() << "names no sequence.";
}

void TestSequences::sequenceThatCannotBeOpenedSaysWhy()
{
    QFETCH(QByteArray, info);
    QFETCH(QString, reason);
    const CSequenceFiles objFiles({g_arrSurface});
    CStudyWriter::writeFile(objFiles.file(), info);
    SSequenceFacts sFacts;
    const QString strReason = OrmSequenceFacts::read(objFiles.file(), sFacts);
    QVERIFY2(strReason.endsWith(reason), qPrintable(strReason));
    COrmSequenceCollection objCollection;
    QString strRefused;
    QVERIFY(objCollection.add(sFacts, &strRefused) == nullptr);
    QVERIFY(!strRefused.isEmpty());
    QVERIFY(objCollection.sequences().isEmpty());
}

void TestSequences::unreadableClicksAreLeftOutAndTold()
{
    const CSequenceFiles objFiles({g_arrSurface, g_arrSurface, g_arrSurface});
    QVERIFY(QFile::remove(objFiles.clickFile(2)));
    SSequenceFacts sFacts;
    QCOMPARE(OrmSequenceFacts::read(objFiles.file(), sFacts), QString());
    QCOMPARE(sFacts.m_lstClicks.size(), 2);
    QCOMPARE(sFacts.m_lstClicks.at(1).m_strClickNumber, QStringLiteral("C3"));
    QCOMPARE(sFacts.m_lstProblems.size(), 1);
    QVERIFY2(sFacts.m_lstProblems.first().contains(QStringLiteral("Click C2")), qPrintable(sFacts.m_lstProblems.first()));
}

void TestSequences::clickOutsideTheSequenceFolderIsLeftOut_data()
{
    QTest::addColumn<QByteArray>("click");
    QTest::newRow("parent folder") << QByteArray("../outside");
    QTest::newRow("in and out again") << QByteArray("C1/../../outside");
    QTest::newRow("absolute") << QByteArray("%ABSOLUTE%");
    QTest::newRow("a link that leads out") << QByteArray("link");
}

void TestSequences::clickOutsideTheSequenceFolderIsLeftOut()
{
    QFETCH(QByteArray, click);
    const QTemporaryDir objRoot;
    const QString strOutside = objRoot.filePath(QStringLiteral("outside"));
    CStudyWriter::writeFile(strOutside + QStringLiteral("/ClickInfo.txt"), "[luminescent image]\n");
    click.replace("%ABSOLUTE%", strOutside.toUtf8());
    const QString strSequence = objRoot.filePath(QStringLiteral("sequence"));
    CStudyWriter::writeFile(strSequence + QStringLiteral("/C1/ClickInfo.txt"), g_arrSurface);
    CStudyWriter::writeFile(strSequence + QStringLiteral("/SequenceInfo.txt"),
                            "Sequence=S1\n[Click Numbers]\nCount=2\n1=C1\n2=" + click + "\n");
    QVERIFY(QFile::link(strOutside, strSequence + QStringLiteral("/link")));
    SSequenceFacts sFacts;
    QCOMPARE(OrmSequenceFacts::read(strSequence + QStringLiteral("/SequenceInfo.txt"), sFacts), QString());
    QCOMPARE(sFacts.m_lstClicks.size(), 1);
    QCOMPARE(sFacts.m_lstClicks.first().m_strClickNumber, QStringLiteral("C1"));
    QCOMPARE(sFacts.m_lstProblems.size(), 1);
}

void TestSequences::savedResultsAreCounted()
{
    const CSequenceFiles objFiles({g_arrSurface});
    CStudyWriter::writeFile(objFiles.folder() + QStringLiteral("XML/SOLA.txt"),
                            "[SOLA_1]\nMenuName=Day 0\nFileName=a.xml\n[SOLA_2]\nFileName=b.xml\n[other]\nFileName=c.xml\n");
    SSequenceFacts sFacts;
    QCOMPARE(OrmSequenceFacts::read(objFiles.file(), sFacts), QString());
    QCOMPARE(sFacts.m_nSOLAResults, 2); // the section that has neither a name nor the automatic one is not listed
    QCOMPARE(sFacts.m_nNOVAResults, 0);
}

void TestSequences::namesAreTakenAsTheyAre()
{
    const QString strID = QString::fromUtf8("Maus \xE2\x80\xAE <b>1</b> & ;,=\\");
    const CSequenceFiles objFiles({g_arrSurface}, QByteArray(), strID.toUtf8());
    COrmSequenceCollection objCollection;
    QCOMPARE(objCollection.open({objFiles.folder()}).m_nSequences, 1);
    QCOMPARE(idsOf(objCollection), QStringList{strID});
    QVERIFY(COrmSequenceDataset::getSequenceDataset(strID) != nullptr);
}

void TestSequences::imageFilesLieInTheClickFolder_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<bool>("found");
    QTest::newRow("plain") << QByteArray("photograph.png") << true;
    QTest::newRow("missing") << QByteArray("none.png") << false;
    QTest::newRow("empty") << QByteArray("") << false;
    QTest::newRow("parent folder") << QByteArray("../SequenceInfo.txt") << false;
    QTest::newRow("absolute") << QByteArray("/etc/passwd") << false;
    QTest::newRow("a link that leads out") << QByteArray("link.png") << false;
    QTest::newRow("a folder") << QByteArray("sub") << false;
    QTest::newRow("the folder itself") << QByteArray(".") << false;
}

void TestSequences::imageFilesLieInTheClickFolder()
{
    QFETCH(QByteArray, name);
    QFETCH(bool, found);
    const CSequenceFiles objFiles({"[photographic image]\nImage File=" + name + "\n"});
    CStudyWriter::writeFile(objFiles.folder() + QStringLiteral("C1/photograph.png"), "x");
    CStudyWriter::writeFile(objFiles.folder() + QStringLiteral("C1/sub/file"), "x");
    QVERIFY(QFile::link(objFiles.file(), objFiles.folder() + QStringLiteral("C1/link.png")));
    SSequenceFacts sFacts;
    QCOMPARE(OrmSequenceFacts::read(objFiles.file(), sFacts), QString());
    const COrmSequenceDataset objSequence(sFacts);
    const QString strFile = objSequence.getDatasets().first()->getPhotographFile();
    QCOMPARE(!strFile.isNull(), found);
    if (found)
        QCOMPARE(QFileInfo(strFile).fileName(), QString::fromUtf8(name));
    QVERIFY(objSequence.getDatasets().first()->getLuminescentFile().isNull());
}

void TestSequences::collectionTellsTheHubWhatComesAndGoes()
{
    CStudyWriter objStudy;
    objStudy.addSequence(QStringLiteral("B"));
    objStudy.addSequence(QStringLiteral("A"));
    objStudy.addSequence(QStringLiteral("C"));
    CHubEar objEar;
    COrmSequenceCollection objCollection;
    const SScanOutcome sOutcome = objCollection.open({objStudy.folder()});
    QCOMPARE(sOutcome.m_nSequences, 3);
    QVERIFY2(sOutcome.m_lstProblems.isEmpty(), qPrintable(sOutcome.m_lstProblems.join(QLatin1Char('\n'))));
    QCOMPARE(objEar.take(), (QStringList{"added A", "added B", "added C"}));
    QCOMPARE(idsOf(objCollection), (QStringList{"A", "B", "C"}));

    QVERIFY(objCollection.close(QStringLiteral("B")));
    QCOMPARE(objEar.take(), (QStringList{"image removed B_001", "image removed B_002", "removed B"}));
    QVERIFY(COrmSequenceDataset::getSequenceDataset(QStringLiteral("B")) == nullptr);
    QVERIFY(!objCollection.close(QStringLiteral("B")));
    QVERIFY(!objCollection.close(QStringLiteral("unknown")));
    QVERIFY(objEar.take().isEmpty());

    // What was closed can be opened again; what is open is not told again.
    QCOMPARE(objCollection.open({objStudy.folder()}).m_nSequences, 3);
    QCOMPARE(objEar.take(), QStringList{"added B"});
    objCollection.closeAll();
    QCOMPARE(objEar.take().filter(QStringLiteral("removed B")).size(), 3); // two images and the sequence
    QVERIFY(objCollection.sequences().isEmpty());
}

void TestSequences::sameIDIsOpenedOnce()
{
    const CSequenceFiles objFirst({g_arrSurface});
    const CSequenceFiles objSecond({g_arrSurface});
    COrmSequenceCollection objCollection;
    QVERIFY(objCollection.open({objFirst.folder()}).m_lstProblems.isEmpty());
    const SScanOutcome sOutcome = objCollection.open({objSecond.folder()});
    QCOMPARE(sOutcome.m_lstProblems.size(), 1);
    QVERIFY(sOutcome.m_lstProblems.first().contains(objFirst.folder()));
    QVERIFY(sOutcome.m_lstProblems.first().contains(objSecond.folder()));
    QCOMPARE(objCollection.sequences().size(), 1);
    QCOMPARE(objCollection.sequences().first()->getSequenceInfoPath(), objFirst.folder());
    // The same folder again, by another road, is no problem.
    const QTemporaryDir objRoads;
    const QString strLink = objRoads.filePath(QStringLiteral("study"));
    QVERIFY(QFile::link(objFirst.folder(), strLink));
    QVERIFY(objCollection.open({strLink}).m_lstProblems.isEmpty());
    QCOMPARE(objCollection.sequences().size(), 1);
    // IDs differ in upper and lower case.
    const CSequenceFiles objThird({g_arrSurface}, QByteArray(), "s1");
    QVERIFY(objCollection.open({objThird.folder()}).m_lstProblems.isEmpty());
    QCOMPARE(idsOf(objCollection), (QStringList{"S1", "s1"}));
}

void TestSequences::refreshTellsWhatChanged()
{
    const CSequenceFiles objFiles({g_arrSurface, g_arrSurface});
    COrmSequenceCollection objCollection;
    QCOMPARE(objCollection.open({objFiles.folder()}).m_nSequences, 1);
    COrmSequenceDataset* pSequence = objCollection.sequences().first();
    COrmDataset* pFirst = pSequence->getDatasets().first();
    CHubEar objEar;
    QCOMPARE(objCollection.refresh(QStringLiteral("S1")), QString());
    QVERIFY(objEar.take().isEmpty());

    objFiles.setClick(1, g_arrSurface + "[luminescent image]\nField of View=5\n");
    QCOMPARE(objCollection.refresh(QStringLiteral("S1")), QString());
    QCOMPARE(objEar.take(), (QStringList{"image changed C1", "changed S1"}));
    QVERIFY(pSequence->isLuminescentSequence());
    QCOMPARE(pSequence->getDatasets().first(), pFirst);
    pFirst->calculateFOV();
    QCOMPARE(pFirst->getImageFOV(), 5.0);

    CStudyWriter::writeFile(objFiles.file(), "Sequence=S1\n[Click Numbers]\nCount=2\n1=C3\n2=C1\n");
    objFiles.setClick(3, g_arrSurface);
    QCOMPARE(objCollection.refresh(QStringLiteral("S1")), QString());
    QCOMPARE(objEar.take(), (QStringList{"image removed C2", "image changed C3", "changed S1"}));
    QCOMPARE(pSequence->getDatasets().size(), 2);
    QCOMPARE(pSequence->getDatasets().last(), pFirst);

    // Results saved since are a change of the sequence alone.
    CStudyWriter::writeFile(objFiles.folder() + QStringLiteral("XML/NOVA.txt"), "[NOVA_1]\nFileName=a.xml\n");
    QCOMPARE(objCollection.refresh(QStringLiteral("S1")), QString());
    QCOMPARE(objEar.take(), QStringList{"changed S1"});
    QCOMPARE(pSequence->getFacts().m_nNOVAResults, 1);
}

void TestSequences::refreshOfADamagedSequenceKeepsIt()
{
    const CSequenceFiles objFiles({g_arrSurface});
    COrmSequenceCollection objCollection;
    QCOMPARE(objCollection.open({objFiles.folder()}).m_nSequences, 1);
    CHubEar objEar;
    CStudyWriter::writeFile(objFiles.file(), "Sequence=Other\n[Click Numbers]\nCount=1\n1=C1\n");
    QVERIFY(objCollection.refresh(QStringLiteral("S1")).contains(QStringLiteral("Other")));
    QVERIFY(QFile::remove(objFiles.file()));
    QVERIFY(!objCollection.refresh(QStringLiteral("S1")).isEmpty());
    QVERIFY(!objCollection.refresh(QStringLiteral("unknown")).isEmpty());
    QVERIFY(objEar.take().isEmpty());
    QCOMPARE(idsOf(objCollection), QStringList{"S1"});
    QVERIFY(objCollection.sequences().first()->isSLASequence());
}

void TestSequences::ctSurfaceAcquiredLaterIsSeenOnRereading()
{
    const CSequenceFiles objFiles({g_arrSurface});
    SSequenceFacts sFacts;
    QCOMPARE(OrmSequenceFacts::read(objFiles.file(), sFacts), QString());
    const COrmSequenceDataset objSequence(sFacts);
    CStudyWriter::writeFile(objFiles.file(), "Sequence=S1\n[Click Numbers]\nCount=1\n1=C1\n[CT Acquisition Parameters]\n");
    QVERIFY(!objSequence.isCTSequence(false));
    QVERIFY(objSequence.isCTSequence(true));
    QVERIFY(QFile::remove(objFiles.file()));
    QVERIFY(!objSequence.isCTSequence(true)); // what cannot be read leaves the answer of the opening
}

void TestSequences::sequenceMayBeClosedByWhoeverIsTold()
{
    const CSequenceFiles objFiles({g_arrSurface, g_arrSurface});
    COrmSequenceCollection objCollection;
    QCOMPARE(objCollection.open({objFiles.folder()}).m_nSequences, 1);
    objFiles.setClick(1, "[photographic image]\n");
    objFiles.setClick(2, "[photographic image]\n");
    QObject objGuard;
    connect(COrmPreference::getSignalHandler(), &COrmSignalHandler::signalDatasetChanged, &objGuard,
            [&objCollection](COrmDataset*) { objCollection.close(QStringLiteral("S1")); });
    CHubEar objEar;
    QCOMPARE(objCollection.refresh(QStringLiteral("S1")), QString());
    QCOMPARE(objEar.take().filter(QStringLiteral("changed")), QStringList{"image changed C1"});
    QVERIFY(objCollection.sequences().isEmpty());
}

namespace
{
/// The least that a tool has to have.
class CPlainTool : public COrmToolPluginBase
{
public:
    QAction* pluginAction() override
    {
        if (m_pAction == nullptr)
            m_pAction = new QAction(QStringLiteral("Plain"), this);
        return m_pAction;
    }
    QString PluginMenuItem() override { return QStringLiteral("Plain"); }
    void init() override {}
    void show() override {}
    bool createObject() override { return true; }
    QAction* storedAction() const { return m_pAction; }
};
} // namespace

void TestSequences::pluginBaseStartsWithoutActionAndKeepsItEnabled()
{
    CPlainTool objTool;
    QVERIFY(objTool.storedAction() == nullptr);
    QVERIFY(objTool.pluginMenu() == nullptr);
    QVERIFY(objTool.pluginIcon().isNull());
    QVERIFY(objTool.MenuItemBefore().isNull());
    QVERIFY(objTool.defaultVisibilityForPluggin());
    QVERIFY(!objTool.isVisible());
    QVERIFY(objTool.parent() == nullptr);
    // The interface is told by the tool's own declaration, so a class that only derives from the base is no tool yet.
    QVERIFY(qobject_cast<COrmToolPluginBase*>(static_cast<QObject*>(&objTool)) == nullptr);
    QCOMPARE(qobject_interface_iid<COrmToolPluginBase*>(), "com.Brisano.Ormelle.COrmToolPluginBase/1.0");

    QStringList lstLogged;
    const int nSink = getLogObject()->addSink([&lstLogged](const SLogEntry& sEntry) { lstLogged.append(sEntry.strMessage); });
    objTool.pluginAction()->setEnabled(false);
    objTool.signalUpdateToolPluginValidity(objTool.pluginAction(), true, false);
    QVERIFY(objTool.pluginAction()->isEnabled());
    objTool.signalUpdateToolPluginValidity(objTool.pluginAction(), false, false);
    QVERIFY(objTool.pluginAction()->isEnabled());
    objTool.signalUpdateToolPluginValidity(nullptr, true, false);
    getLogObject()->removeSink(nSink);
    QCOMPARE(lstLogged.size(), 2);
    QVERIFY(lstLogged.first().contains(QStringLiteral("Plain")));
}

void TestSequences::pluginBaseHandsItsWindowToTheHub()
{
    CPlainTool objTool;
    QWidget objWindow;
    QSignalSpy objSpy(COrmPreference::getSignalHandler(), &COrmSignalHandler::signalAddWidgetToWorkspace);
    objTool.signalAddWidgetToWorkspace(&objWindow);
    objTool.signalAddWidgetToWorkspace(nullptr);
    QCOMPARE(objSpy.count(), 1);
    QCOMPARE(objSpy.first().first().value<QWidget*>(), &objWindow);
}

ORM_TEST_MAIN(TestSequences)
#include "tst_sequences.moc"
