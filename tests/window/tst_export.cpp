#include "CPlainUser.h"
#include "ExportTestTools.h"

#include "COrmUtilityFns.h"
#include "OrmTestMain.h"

using ExportTest::CExport;

namespace
{
const QStringList s_lstOffered = {"bmp", "jpg", "png", "eps", "tif"};
constexpr int s_nOk = int(QMessageBox::Ok);
constexpr int s_nYes = int(QMessageBox::Yes);
constexpr int s_nNo = int(QMessageBox::No);
constexpr int s_nCancel = int(QMessageBox::Cancel);

const SSaveAnswer s_objCancelled = {QString(), QString()};

/// A file name of so many characters, extension included.
QString longName(int nCharacters, const QString& strExtension)
{
    return QString(nCharacters - strExtension.size() - 1, QLatin1Char('n')) + QLatin1Char('.') + strExtension;
}

/// What the bytes of a file are.
QString kindOf(const QByteArray& aBytes)
{
    const QList<QPair<QByteArray, QString>> lstKinds = {{"BM", "bmp"},
                                                        {QByteArray("\xff\xd8\xff"), "jpg"},
                                                        {QByteArray("\x89PNG"), "png"},
                                                        {"%!PS-Adobe-3.0 EPSF", "eps"},
                                                        {QByteArray("II*\0", 4), "tif"}};
    for (const auto& objKind : lstKinds)
    {
        if (aBytes.startsWith(objKind.first))
        {
            return objKind.second;
        }
    }
    return QStringLiteral("unknown");
}

QString question(const QString& strName)
{
    return QStringLiteral("box information: File: %1 exists in the specified path.\nOverwrite existing file?").arg(strName);
}

/// The entry of the list of calls that follows each box.
QString remembered(const QString& strFolder, const QString& strFormat)
{
    return QStringLiteral("  remembered: %1, %2").arg(strFolder, strFormat);
}
} // namespace

/// The way from the export button to a file: the save dialog, what becomes of its answer, and every answer of every box.
class tst_export : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase() { m_pTool.reset(); }

    // ---- The dialog -----------------------------------------------------------------------------------------------
    void firstDialogStartsByTheEnumerator();
    void cancelledDialogChangesNothing();
    void folderAndFormatAreRemembered_data();
    void folderAndFormatAreRemembered();
    void preferredFormatIsOfferedFirst();
    void namesGetTheirExtension_data();
    void namesGetTheirExtension();

    // ---- Boxes ----------------------------------------------------------------------------------------------------
    void hundredAndEightyFiveCharactersPass();
    void tooLongNameOpensTheDialogAgain();
    void tooLongNameIsKeptOnAnyOtherAnswer_data();
    void tooLongNameIsKeptOnAnyOtherAnswer();
    void tooLongNameThatExistsIsAskedAbout();
    void theFolderDoesNotCount();
    void writeProtectedFileIsRefused();
    void overwriteYesReplacesTheFile();
    void overwriteNoOpensTheDialogAgain();
    void overwriteCancelStops_data();
    void overwriteCancelStops();
    void questionNamesTheRepairedFile();
    void retryKeepsOnlyFolderAndFormat();

private:
    std::unique_ptr<CToolWindow> m_pTool; ///< the window, for all tests
};

void tst_export::initTestCase()
{
    m_pTool = std::make_unique<CToolWindow>();
}

void tst_export::firstDialogStartsByTheEnumerator()
{
    CExport objExport(*m_pTool);
    const QList<SSaveDialog> lstSeen = objExport.exportBy({s_objCancelled});
    QCOMPARE(lstSeen.size(), 1);
    const SSaveDialog& objSeen = lstSeen.first();
    QCOMPARE(objSeen.strCaption, QString("Export Active View As"));
    QCOMPARE(objSeen.strParent, QString("Longitudinal Study"));
    QVERIFY(objSeen.bSaves);
    QVERIFY(!objSeen.bConfirmsOverwrite);
    QCOMPARE(objSeen.lstFilters, s_lstOffered);
    QCOMPARE(objSeen.strFilter, QString("bmp"));
    // The start folder is no folder but a word, which the dialog takes for a name in the current one.
    QCOMPARE(objSeen.strFolder, QDir::currentPath());
    QCOMPARE(objSeen.strName, QString("DesktopLocation"));
}

void tst_export::cancelledDialogChangesNothing()
{
    CExport objExport(*m_pTool);
    COrmPreference::getSettings()->setRecentFilePath(objExport.folder());
    COrmPreference::setUsersPreferredFormat(QStringLiteral("eps"));
    objExport.exportBy({s_objCancelled});
    QCOMPARE(objExport.calls(), QStringList{"dialog"});
    QCOMPARE(COrmPreference::getSettings()->getRecentFilePath(), objExport.folder());
    QCOMPARE(COrmPreference::getUsersPreferredFormat(), QString("eps"));
    QCOMPARE(objExport.entries(), QStringList());
}

void tst_export::folderAndFormatAreRemembered_data()
{
    QTest::addColumn<QString>("strName");
    QTest::addColumn<QString>("strFolder"); // below the folder for exports
    QTest::addColumn<QString>("strFormat"); // "FOLDER" stands for that folder
    QTest::newRow("plain") << "view.png"
                           << ""
                           << "png";
    QTest::newRow("as typed, not as repaired") << "view"
                                               << ""
                                               << "FOLDER/view";
    QTest::newRow("capitals") << "VIEW.TIF"
                              << ""
                              << "TIF";
    QTest::newRow("first dot of the name") << "view.2.png"
                                           << ""
                                           << "2.png";
    QTest::newRow("dot at the end") << "view."
                                    << ""
                                    << "";
    QTest::newRow("folder with a dot") << "week.1/view.png"
                                       << "/week.1"
                                       << "1/view.png";
    QTest::newRow("folder with a dot, name without") << "week.1/view"
                                                     << "/week.1"
                                                     << "1/view";
}

void tst_export::folderAndFormatAreRemembered()
{
    QFETCH(QString, strName);
    QFETCH(QString, strFolder);
    QFETCH(QString, strFormat);
    CExport objExport(*m_pTool);
    QVERIFY(QDir(objExport.folder()).mkdir("week.1"));
    COrmPreference::getSettings()->setKeepExportPath(true);
    objExport.exportBy({{"png", objExport.path(strName)}});
    QCOMPARE(objExport.calls(), QStringList{"dialog"});
    QCOMPARE(COrmPreference::getSettings()->getRecentFilePath(), objExport.folder() + strFolder);
    QCOMPARE(COrmPreference::getSettings()->getExportPath(), objExport.folder() + strFolder);
    QCOMPARE(COrmPreference::getUsersPreferredFormat(), strFormat.replace("FOLDER", objExport.folder()));
}

void tst_export::preferredFormatIsOfferedFirst()
{
    CExport objExport(*m_pTool);
    objExport.exportBy({{"png", objExport.path("view.tif")}});
    const SSaveDialog objSeen = objExport.exportBy({s_objCancelled}).first();
    QCOMPARE(objSeen.lstFilters, (QStringList{"tif", "bmp", "jpg", "png", "eps"}));
    QCOMPARE(objSeen.strFilter, QString("tif"));
    QCOMPARE(objSeen.strFolder, objExport.folder());
    QCOMPARE(objSeen.strName, QString());
    // A long tail that ends in a format names it too.
    objExport.exportBy({{"png", objExport.path("view.2.jpg")}});
    QCOMPARE(objExport.exportBy({s_objCancelled}).first().lstFilters, (QStringList{"jpg", "bmp", "png", "eps", "tif"}));
}

void tst_export::namesGetTheirExtension_data()
{
    QTest::addColumn<QString>("strFilter");
    QTest::addColumn<QString>("strTyped");
    QTest::addColumn<QString>("strWritten");
    QTest::addColumn<QString>("strKind");
    QTest::newRow("name alone, BMP") << "bmp"
                                     << "sample"
                                     << "sample.bmp"
                                     << "bmp";
    QTest::newRow("name alone, JPEG") << "jpg"
                                      << "sample"
                                      << "sample.jpg"
                                      << "jpg";
    QTest::newRow("name alone, PNG") << "png"
                                     << "sample"
                                     << "sample.png"
                                     << "png";
    QTest::newRow("name alone, EPS") << "eps"
                                     << "sample"
                                     << "sample.eps"
                                     << "eps";
    QTest::newRow("name alone, TIFF") << "tif"
                                      << "sample"
                                      << "sample.tif"
                                      << "tif";
    QTest::newRow("dot at the end") << "jpg"
                                    << "sample."
                                    << "sample.jpg"
                                    << "jpg";
    QTest::newRow("two dots at the end") << "jpg"
                                         << "sample.."
                                         << "sample..jpg"
                                         << "jpg";
    QTest::newRow("known extension and a dot") << "jpg"
                                               << "sample.png."
                                               << "sample.png.jpg"
                                               << "jpg";
    QTest::newRow("unknown extension") << "bmp"
                                       << "sample.xyz"
                                       << "sample.xyz.bmp"
                                       << "bmp";
    QTest::newRow("another unknown extension") << "png"
                                               << "sample.raw"
                                               << "sample.raw.png"
                                               << "png";
    QTest::newRow("jpeg is none of the known") << "jpg"
                                               << "sample.jpeg"
                                               << "sample.jpeg.jpg"
                                               << "jpg";
    QTest::newRow("version number") << "png"
                                    << "sample 1.5"
                                    << "sample 1.5.png"
                                    << "png";
    QTest::newRow("extension of the filter") << "png"
                                             << "sample.png"
                                             << "sample.png"
                                             << "png";
    QTest::newRow("capitals") << "tif"
                              << "SAMPLE.TIF"
                              << "SAMPLE.TIF"
                              << "tif";
    QTest::newRow("capitals against the filter") << "png"
                                                 << "sample.TIF"
                                                 << "sample.TIF"
                                                 << "tif";
    QTest::newRow("typed extension wins") << "png"
                                          << "sample.tif"
                                          << "sample.tif"
                                          << "tif";
    QTest::newRow("tiff, which no filter offers") << "png"
                                                  << "sample.tiff"
                                                  << "sample.tiff"
                                                  << "tif";
    QTest::newRow("extension alone") << "png"
                                     << ".bmp"
                                     << ".bmp"
                                     << "bmp";
    QTest::newRow("folder with a dot") << "png"
                                       << "week.1/sample"
                                       << "week.1/sample.png"
                                       << "png";
    QTest::newRow("folder with a dot, name with one at the end") << "eps"
                                                                 << "week.1/sample."
                                                                 << "week.1/sample.eps"
                                                                 << "eps";
    QTest::newRow("folder that ends like a format") << "png"
                                                    << "week.bmp/sample"
                                                    << "week.bmp/sample.png"
                                                    << "png";
    QTest::newRow("letters of many languages") << "png" << QString::fromUtf8("Maus Größe 小鼠 №1")
                                               << QString::fromUtf8("Maus Größe 小鼠 №1.png") << "png";
    QTest::newRow("capitals of other letters") << "png" << QString::fromUtf8("sample.ÄÖ") << QString::fromUtf8("sample.ÄÖ.png") << "png";
    QTest::newRow("blank before the dot") << "png"
                                          << "sample .jpg"
                                          << "sample .jpg"
                                          << "jpg";
}

void tst_export::namesGetTheirExtension()
{
    QFETCH(QString, strFilter);
    QFETCH(QString, strTyped);
    QFETCH(QString, strWritten);
    QFETCH(QString, strKind);
    CExport objExport(*m_pTool);
    QVERIFY(QDir(objExport.folder()).mkdir("week.1"));
    QVERIFY(QDir(objExport.folder()).mkdir("week.bmp"));
    objExport.exportBy({{strFilter, objExport.path(strTyped)}});
    QCOMPARE(objExport.calls(), QStringList{"dialog"});
    QCOMPARE(kindOf(objExport.get(strWritten)), strKind);
    const QString strTop = strWritten.contains('/') ? QString() : strWritten;
    QStringList lstExpected = {"week.1", "week.bmp"};
    QStringList lstFound = objExport.entries();
    if (!strTop.isEmpty())
    {
        lstExpected.append(strTop);
    }
    lstExpected.sort();
    lstFound.sort();
    QCOMPARE(lstFound, lstExpected);
}

// ---- Boxes --------------------------------------------------------------------------------------------------------

void tst_export::hundredAndEightyFiveCharactersPass()
{
    CExport objExport(*m_pTool);
    const QString strName = longName(185, "png");
    objExport.exportBy({{"png", objExport.path(strName)}});
    QCOMPARE(objExport.calls(), QStringList{"dialog"});
    QCOMPARE(objExport.entries(), QStringList{strName});
    // The extension counts, also where it is added.
    objExport.exportBy({{"png", objExport.path(longName(185, "png").chopped(4))}, s_objCancelled});
    QCOMPARE(objExport.tool().host().boxes().size(), 1); // the same file: the question
    QVERIFY(objExport.tool().host().boxes().first().strText.endsWith("Overwrite existing file?"));
}

void tst_export::tooLongNameOpensTheDialogAgain()
{
    CExport objExport(*m_pTool);
    objExport.answerBoxes({s_nOk});
    const QString strName = longName(186, "jpg");
    // The extension that is added makes it too long.
    const QList<SSaveDialog> lstSeen = objExport.exportBy({{"jpg", objExport.path(strName.chopped(4))}, {"png", objExport.path("short")}});
    QCOMPARE(objExport.calls(), (QStringList{"dialog",
                                             "box information: The path you entered, \n'" + strName.left(93) + "\n" + strName.mid(93) +
                                                 "',\nis too long. Enter a shorter path",
                                             remembered("FOLDER", "FOLDER/" + strName.chopped(4)), "dialog"}));
    const SMessageRequest objBox = objExport.tool().host().boxes().first();
    QCOMPARE(objBox.pParent, static_cast<QWidget*>(&objExport.tool().window()));
    QCOMPARE(objBox.strCaption, COrmUtilityFns::getAppName());
    QCOMPARE(objBox.lstButtons, (QList<int>{s_nOk | int(QMessageBox::Default), 0, 0}));
    QCOMPARE(objExport.entries(), QStringList{"short.png"});
    QCOMPARE(lstSeen.at(1).strFolder, objExport.folder());
    QCOMPARE(lstSeen.at(1).strName, QString());
    QCOMPARE(COrmPreference::getUsersPreferredFormat(), objExport.path("short"));
}

void tst_export::tooLongNameIsKeptOnAnyOtherAnswer_data()
{
    QTest::addColumn<int>("nAnswer");
    QTest::newRow("none") << 0;
    QTest::newRow("cancel") << s_nCancel;
    QTest::newRow("close") << int(QMessageBox::Close);
    QTest::newRow("OK with a flag") << (s_nOk | int(QMessageBox::Default));
}

void tst_export::tooLongNameIsKeptOnAnyOtherAnswer()
{
    QFETCH(int, nAnswer);
    CExport objExport(*m_pTool);
    objExport.answerBoxes({nAnswer});
    const QString strName = longName(200, "png");
    objExport.exportBy({{"png", objExport.path(strName)}});
    QCOMPARE(objExport.calls().size(), 3); // dialog, box, what was remembered
    QCOMPARE(objExport.calls().first(), QString("dialog"));
    QCOMPARE(objExport.calls().last(), remembered("FOLDER", "png"));
    QCOMPARE(objExport.entries(), QStringList{strName});
    QCOMPARE(kindOf(objExport.get(strName)), QString("png"));
}

void tst_export::tooLongNameThatExistsIsAskedAbout()
{
    CExport objExport(*m_pTool);
    const QString strName = longName(186, "png");
    objExport.put(strName, "old");
    objExport.answerBoxes({0, s_nCancel});
    objExport.exportBy({{"png", objExport.path(strName)}});
    QCOMPARE(objExport.calls().size(), 5);
    QCOMPARE(objExport.calls().at(3), question(strName));
    QCOMPARE(objExport.get(strName), QByteArray("old"));
}

void tst_export::theFolderDoesNotCount()
{
    CExport objExport(*m_pTool);
    const QString strFolder = QString(200, 'f');
    QVERIFY(QDir(objExport.folder()).mkdir(strFolder));
    const QString strName = strFolder + "/" + longName(185, "png");
    objExport.exportBy({{"png", objExport.path(strName)}});
    QCOMPARE(objExport.calls(), QStringList{"dialog"});
    QCOMPARE(kindOf(objExport.get(strName)), QString("png"));
}

void tst_export::writeProtectedFileIsRefused()
{
    CExport objExport(*m_pTool);
    objExport.put("old.png", "old");
    QVERIFY(QFile::setPermissions(objExport.path("old.png"), QFile::ReadOwner | QFile::ReadOther));
    QVERIFY(QFile::setPermissions(objExport.folder(), QFile::Permissions(0x7055)));
    {
        const CPlainUser objUser(CPlainUser::Asks);
        objExport.exportBy({{"png", objExport.path("old")}});
    }
    QCOMPARE(objExport.calls(), (QStringList{"dialog", "error 64: "}));
    QCOMPARE(objExport.get("old.png"), QByteArray("old"));
    QCOMPARE(objExport.entries(), QStringList{"old.png"});
    // Folder and format were stored before.
    QCOMPARE(COrmPreference::getSettings()->getRecentFilePath(), objExport.folder());
    QCOMPARE(COrmPreference::getUsersPreferredFormat(), objExport.path("old"));
}

void tst_export::overwriteYesReplacesTheFile()
{
    CExport objExport(*m_pTool);
    objExport.put("old.png", "old");
    objExport.answerBoxes({s_nYes});
    objExport.exportBy({{"png", objExport.path("old.png")}});
    QCOMPARE(objExport.calls(), (QStringList{"dialog", question("old.png"), remembered("FOLDER", "png")}));
    const SMessageRequest objBox = objExport.tool().host().boxes().first();
    QCOMPARE(objBox.pParent, static_cast<QWidget*>(&objExport.tool().window()));
    QCOMPARE(objBox.strCaption, COrmUtilityFns::getAppName());
    QCOMPARE(objBox.lstButtons, (QList<int>{s_nYes, s_nNo | int(QMessageBox::Default), s_nCancel | int(QMessageBox::Escape)}));
    QCOMPARE(kindOf(objExport.get("old.png")), QString("png"));
    QCOMPARE(objExport.entries(), QStringList{"old.png"});
}

void tst_export::overwriteNoOpensTheDialogAgain()
{
    CExport objExport(*m_pTool);
    objExport.put("old.png", "old");
    objExport.put("older.png", "older");
    objExport.answerBoxes({s_nNo, s_nNo});
    objExport.exportBy({{"png", objExport.path("old.png")}, {"png", objExport.path("older.png")}, {"tif", objExport.path("new")}});
    QCOMPARE(objExport.calls(), (QStringList{"dialog", question("old.png"), remembered("FOLDER", "png"), "dialog", question("older.png"),
                                             remembered("FOLDER", "png"), "dialog"}));
    QCOMPARE(objExport.get("old.png"), QByteArray("old"));
    QCOMPARE(objExport.get("older.png"), QByteArray("older"));
    QCOMPARE(kindOf(objExport.get("new.tif")), QString("tif"));
    QCOMPARE(objExport.entries(), (QStringList{"new.tif", "old.png", "older.png"}));
}

void tst_export::overwriteCancelStops_data()
{
    QTest::addColumn<int>("nAnswer");
    QTest::newRow("cancel") << s_nCancel;
    QTest::newRow("none") << 0;
}

void tst_export::overwriteCancelStops()
{
    QFETCH(int, nAnswer);
    CExport objExport(*m_pTool);
    objExport.put("old.png", "old");
    objExport.answerBoxes({nAnswer});
    objExport.exportBy({{"png", objExport.path("old.png")}});
    QCOMPARE(objExport.calls(), (QStringList{"dialog", question("old.png"), remembered("FOLDER", "png")}));
    QCOMPARE(objExport.get("old.png"), QByteArray("old"));
    QCOMPARE(objExport.entries(), QStringList{"old.png"});
}

void tst_export::questionNamesTheRepairedFile()
{
    CExport objExport(*m_pTool);
    objExport.put("old.xyz.bmp", "old");
    objExport.put("old.xyz", "not asked about");
    objExport.answerBoxes({s_nCancel});
    objExport.exportBy({{"bmp", objExport.path("old.xyz")}});
    QCOMPARE(objExport.calls(), (QStringList{"dialog", question("old.xyz.bmp"), remembered("FOLDER", "xyz")}));
    QCOMPARE(objExport.get("old.xyz"), QByteArray("not asked about"));
}

void tst_export::retryKeepsOnlyFolderAndFormat()
{
    CExport objExport(*m_pTool);
    QVERIFY(QDir(objExport.folder()).mkdir("second"));
    objExport.put("second/old.eps", "old");
    COrmPreference::getSettings()->setRecentFilePath(objExport.folder());
    objExport.answerBoxes({s_nNo});
    const QList<SSaveDialog> lstSeen = objExport.exportBy({{"jpg", objExport.path("second/old.eps")}, s_objCancelled});
    QCOMPARE(lstSeen.size(), 2);
    QCOMPARE(lstSeen.first().strFolder, objExport.folder());
    QCOMPARE(lstSeen.first().lstFilters, s_lstOffered);
    QCOMPARE(lstSeen.last().strFolder, objExport.path("second"));
    QCOMPARE(lstSeen.last().lstFilters, (QStringList{"eps", "bmp", "jpg", "png", "tif"}));
    QCOMPARE(lstSeen.last().strFilter, QString("eps")); // not the JPEG that was chosen
    QCOMPARE(lstSeen.last().strName, QString());
    QCOMPARE(objExport.get("second/old.eps"), QByteArray("old"));
}

ORM_TEST_MAIN(tst_export)
#include "tst_export.moc"
