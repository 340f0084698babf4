#include "OpenDialog.h"
#include "WindowTestTools.h"

#include "COrmPreference.h"
#include "COrmSettings.h"
#include "OrmTestMain.h"

#include <QTemporaryDir>

#include <memory>

using OpenDialog::cancel;
using OpenDialog::pick;
using WindowTest::CStudy;

/// The folder in which the dialog opens. It lives as long as the process, so that this test has one of its own, and one function in
/// which the order of things is the story.
class tst_opening_folder : public QObject
{
    Q_OBJECT

private slots:
    void dialogRemembersTheFolderOfTheLastReadablePick();
};

void tst_opening_folder::dialogRemembersTheFolderOfTheLastReadablePick()
{
    QTemporaryDir objBrowse;
    QTemporaryDir objOtherBrowse;
    const auto path = [](const QString& strFolder) { return QDir(strFolder).absolutePath(); };
    CStudy objStudy;
    const QString strS1 = objStudy.writer().sequenceFolder(QStringLiteral("S1"));
    const QString strS2 = objStudy.writer().sequenceFolder(QStringLiteral("S2"));
    const QString strN1 = objStudy.writer().sequenceFolder(QStringLiteral("N1"));
    const QString strFile = QStringLiteral("SequenceInfo.txt");
    auto pTool = std::make_unique<CToolWindow>();
    pTool->open(objStudy.folder());

    // The settings are asked at the first press, not before and never again.
    COrmPreference::getSettings()->setBrowsePath(objBrowse.path());
    QCOMPARE(cancel(*pTool).strFolder, path(objBrowse.path()));
    COrmPreference::getSettings()->setBrowsePath(objOtherBrowse.path());
    QCOMPARE(cancel(*pTool).strFolder, path(objBrowse.path()));

    // A file that is read moves the folder, whether or not it brings a sequence; the settings do not follow.
    QCOMPARE(pick(*pTool, strS1 + strFile).strFolder, path(objBrowse.path()));
    QCOMPARE(cancel(*pTool).strFolder, path(strS1));
    QCOMPARE(COrmPreference::getSettings()->getBrowsePath(), objOtherBrowse.path());

    // One that cannot be read does not.
    pick(*pTool, strS2 + strFile, [&] { QVERIFY(QFile::rename(strS2 + strFile, strS2 + QStringLiteral("away.txt"))); });
    QCOMPARE(pTool->host().callsOf(QStringLiteral("error")), QStringList(QStringLiteral("error 65: ")));
    QCOMPARE(cancel(*pTool).strFolder, path(strS1));
    QVERIFY(QFile::rename(strS2 + QStringLiteral("away.txt"), strS2 + strFile));

    // One that can be read but names no sequence does.
    CStudyWriter::writeFile(strN1 + QStringLiteral("Sequence nameless.txt"), "[Sequence Information]\nSubject=M\n");
    pick(*pTool, strN1 + QStringLiteral("Sequence nameless.txt"));
    QCOMPARE(cancel(*pTool).strFolder, path(strN1));

    // Neither a close nor another window changes it.
    QVERIFY(pTool->window().close());
    pTool.reset();
    CToolWindow objOther;
    objOther.open(objStudy.folder());
    QCOMPARE(cancel(objOther).strFolder, path(strN1));

    // A folder that has gone opens the dialog somewhere else, and the next pick counts again.
    QVERIFY(QDir(strN1).removeRecursively());
    QVERIFY(cancel(objOther).bShown);
    pick(objOther, strS2 + strFile);
    QCOMPARE(cancel(objOther).strFolder, path(strS2));
    COrmPreference::getSettings()->setBrowsePath(QString());
    QCOMPARE(cancel(objOther).strFolder, path(strS2));
}

ORM_TEST_MAIN(tst_opening_folder)
#include "tst_opening_folder.moc"
