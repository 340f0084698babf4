#include "COrmHostSettings.h"
#include "COrmLog.h"
#include "COrmLogFile.h"
#include "COrmPreference.h"
#include "OrmCommandLine.h"
#include "OrmImageFile.h"
#include "OrmLanguage.h"
#include "OrmTestMain.h"
#include "RunningOrmelle.h"

#include <QDir>
#include <QLocale>
#include <QPainter>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QXmlStreamReader>

/// The files of the translations, the choice of a language, and what no language may change.
class TestTranslation : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void filesAreComplete_data() { languages(); }
    void filesAreComplete();
    void textsAgreeInTheirMarks_data() { languages(); }
    void textsAgreeInTheirMarks();
    void quotationMarksAreGerman();
    void languageIsChosen_data();
    void languageIsChosen();
    void languageGoesBack();
    void commandLineKnowsLanguages_data();
    void commandLineKnowsLanguages();
    void programSpeaksTheLanguage_data();
    void programSpeaksTheLanguage();
    void terminalStaysEnglish();
    void filesAreTheSameInEveryLanguage();

private:
    static void languages();
};

namespace
{
struct SText
{
    QString m_strPlace; ///< context and source
    QString m_strSource;
    QStringList m_lstTranslations; ///< one, or one for each form of number
    QString m_strState;            ///< empty: finished

    void readTranslation(QXmlStreamReader& objReader)
    {
        m_strState = objReader.attributes().value(QLatin1String("type")).toString();
        QString strAlone;
        while (objReader.readNext() != QXmlStreamReader::EndElement)
        {
            if (objReader.isStartElement())
                m_lstTranslations.append(objReader.readElementText());
            else
                strAlone += objReader.text();
        }
        if (m_lstTranslations.isEmpty())
            m_lstTranslations.append(strAlone);
    }
};

QByteArray contents(const QString& strFile)
{
    QFile objFile(strFile);
    return objFile.open(QIODevice::ReadOnly) ? objFile.readAll() : QByteArray("cannot be read: ") + strFile.toUtf8();
}

QString fileOf(const QString& strCode)
{
    return QStringLiteral(ORM_SOURCE_DIR "/host/app/translations/ormelle_%1.ts").arg(strCode);
}

QList<SText> textsOf(const QString& strFile)
{
    QList<SText> lstTexts;
    QXmlStreamReader objReader(contents(strFile));
    QString strContext;
    while (!objReader.atEnd())
    {
        if (objReader.readNext() != QXmlStreamReader::StartElement)
            continue;
        const QStringRef strName = objReader.name();
        if (strName == QLatin1String("name"))
            strContext = objReader.readElementText();
        else if (strName == QLatin1String("message"))
            lstTexts.append(SText());
        else if (strName == QLatin1String("source"))
        {
            lstTexts.last().m_strSource = objReader.readElementText();
            lstTexts.last().m_strPlace = strContext + QStringLiteral(": ") + lstTexts.last().m_strSource;
        }
        else if (strName == QLatin1String("translation"))
            lstTexts.last().readTranslation(objReader);
    }
    return lstTexts;
}

/// What must be the same in a text and in its translation.
QStringList marksOf(const QString& strText)
{
    static const QRegularExpression s_rePlace(QStringLiteral("%L?(\\d|n|v|m)"));
    QStringList lstMarks;
    for (auto it = s_rePlace.globalMatch(strText); it.hasNext();)
        lstMarks.append(it.next().captured());
    lstMarks.sort();
    const int nLetters = QString(strText).remove(QStringLiteral("&&")).count(QLatin1Char('&'));
    lstMarks.append(QStringLiteral("%1 letters underlined").arg(nLetters));
    lstMarks.append(QStringLiteral("%1 lines").arg(strText.count(QLatin1Char('\n')) + 1));
    for (const char* pszEnd : {"...", ":", ".", " "})
        lstMarks.append(QLatin1String(strText.endsWith(QLatin1String(pszEnd)) ? "ends with " : "does not end with ") +
                        QLatin1String(pszEnd));
    lstMarks.append(QLatin1String(strText.startsWith(QLatin1Char(' ')) ? "begins with a space" : "begins with a word"));
    return lstMarks;
}

/// Writes what the host keeps or saves itself, and gives the files back by their names.
QMap<QString, QByteArray> writtenFiles(const QString& strFolder)
{
    QDir().mkpath(strFolder);
    const auto path = [&strFolder](const QString& strName) { return strFolder + QLatin1Char('/') + strName; };
    COrmPreference::setStore(path(QStringLiteral("preferences.json")));
    S3DViewSettings objSettings;
    objSettings.nFontSize = 11;
    objSettings.clrBackground = QColor(12, 34, 56);
    COrmPreference::set3DViewPreferences(objSettings);
    COrmPreference::setDefaultColorBar({3, true});
    COrmPreference::setUsersPreferredFormat(QStringLiteral("png"));
    COrmHostSettings objHost;
    objHost.addRecentFolder(QStringLiteral("/studies/mouse 1.5"));
    objHost.setValue(QStringLiteral("geometry"), QByteArray("1.5"));
    COrmPreference::setStore(QString());

    QImage imgPicture(41, 23, QImage::Format_RGB32);
    imgPicture.fill(Qt::white);
    imgPicture.setDotsPerMeterX(5906); // numbers with a fraction in every format that tells a size
    imgPicture.setDotsPerMeterY(5906);
    QPainter(&imgPicture).fillRect(3, 4, 17, 9, Qt::darkGreen);
    const QStringList lstExtensions = OrmImageFile::extensions();
    for (const QString& strExtension : lstExtensions)
    {
        const QString strReason = OrmImageFile::write(imgPicture, path(QStringLiteral("picture.") + strExtension));
        if (!strReason.isEmpty())
            qWarning("%s", qPrintable(strReason));
    }

    QMap<QString, QByteArray> mapFiles;
    const QStringList lstFiles = QDir(strFolder).entryList(QDir::Files);
    for (const QString& strFile : lstFiles)
        mapFiles.insert(strFile, contents(path(strFile)));
    SLogEntry sEntry;
    sEntry.dtWritten = QDateTime(QDate(2026, 3, 1), QTime(13, 4, 5, 678), Qt::UTC);
    sEntry.nLevel = 3;
    sEntry.strCategory = QStringLiteral("orm.app");
    sEntry.strMessage = QStringLiteral("A line.");
    mapFiles.insert(QStringLiteral("line of a log"), COrmLogFile::lineFor(sEntry).toUtf8());
    return mapFiles;
}

struct SRun
{
    int nExit = -1;
    QByteArray baOutput;
    QByteArray baErrors;
};

SRun runProgram(const QStringList& lstArguments, const QStringList& lstEnvironment)
{
    QProcessEnvironment objEnvironment = QProcessEnvironment::systemEnvironment();
    for (const QString& strSetting : lstEnvironment)
        objEnvironment.insert(strSetting.section(QLatin1Char('='), 0, 0), strSetting.section(QLatin1Char('='), 1));
    QProcess objProcess;
    objProcess.setProcessEnvironment(objEnvironment);
    objProcess.start(QStringLiteral(ORM_BINARY_DIR "/bin/ormelle"), lstArguments);
    SRun sRun;
    if (!objProcess.waitForFinished(s_nPatience) || objProcess.exitStatus() != QProcess::NormalExit)
        return sRun;
    sRun = {objProcess.exitCode(), objProcess.readAllStandardOutput(), objProcess.readAllStandardError()};
    return sRun;
}
} // namespace

void TestTranslation::languages()
{
    QTest::addColumn<QString>("code");
    const QStringList lstFiles = QDir(QStringLiteral(ORM_SOURCE_DIR "/host/app/translations")).entryList({QStringLiteral("*.ts")});
    QVERIFY(lstFiles.contains(QStringLiteral("ormelle_de.ts")));
    for (const QString& strFile : lstFiles)
    {
        const QString strCode = strFile.section(QLatin1Char('_'), 1).section(QLatin1Char('.'), 0, 0);
        QTest::newRow(qPrintable(strCode)) << strCode;
    }
}

void TestTranslation::cleanup()
{
    OrmLanguage::use(QStringLiteral("en"));
    QLocale::setDefault(QLocale::c());
    COrmPreference::setStore(QString());
}

void TestTranslation::filesAreComplete()
{
    QFETCH(QString, code);
    const QTemporaryDir objFolder;
    const QString strCopy = objFolder.filePath(QStringLiteral("copy.ts"));
    QVERIFY(QFile::copy(fileOf(code), strCopy));
    QProcess objProcess;
    objProcess.setWorkingDirectory(QStringLiteral(ORM_SOURCE_DIR));
    objProcess.start(QStringLiteral(ORM_LUPDATE), {QStringLiteral("-locations"), QStringLiteral("none"), QStringLiteral("-recursive"),
                                                   QStringLiteral("host"), QStringLiteral("-ts"), strCopy});
    QVERIFY(objProcess.waitForFinished(s_nPatience));
    QCOMPARE(objProcess.exitCode(), 0);
    QCOMPARE(QString::fromLocal8Bit(objProcess.readAllStandardError()), QString()); // it tells there what it cannot read
    const QList<SText> lstTexts = textsOf(strCopy);
    QVERIFY(lstTexts.size() > 300);
    for (const SText& sText : lstTexts)
        QVERIFY2(sText.m_strState.isEmpty(), qPrintable(sText.m_strState + QStringLiteral(" in ") + sText.m_strPlace));
    const QList<SText> lstKept = textsOf(fileOf(code));
    for (const SText& sText : lstKept)
        QVERIFY2(sText.m_strState.isEmpty(), qPrintable(sText.m_strState + QStringLiteral(" in ") + sText.m_strPlace));
    QCOMPARE(lstKept.size(), lstTexts.size());
}

void TestTranslation::textsAgreeInTheirMarks()
{
    QFETCH(QString, code);
    const QList<SText> lstTexts = textsOf(fileOf(code));
    QVERIFY(lstTexts.size() > 300);
    for (const SText& sText : lstTexts)
    {
        for (const QString& strTranslation : sText.m_lstTranslations)
        {
            QVERIFY2(!strTranslation.trimmed().isEmpty(), qPrintable(sText.m_strPlace));
            QVERIFY2(marksOf(strTranslation) == marksOf(sText.m_strSource),
                     qPrintable(sText.m_strPlace + QLatin1String(" | ") + strTranslation));
        }
    }
}

void TestTranslation::quotationMarksAreGerman()
{
    const QList<SText> lstTexts = textsOf(fileOf(QStringLiteral("de")));
    int nQuoted = 0;
    for (const SText& sText : lstTexts)
    {
        for (const QString& strTranslation : sText.m_lstTranslations)
        {
            QVERIFY2(!strTranslation.contains(QLatin1Char('"')), qPrintable(sText.m_strPlace));
            QCOMPARE(strTranslation.count(QChar(0x201E)), strTranslation.count(QChar(0x201C)));
            QCOMPARE(strTranslation.contains(QChar(0x201E)), sText.m_strSource.contains(QLatin1Char('"')));
            nQuoted += strTranslation.count(QChar(0x201E));
        }
    }
    QVERIFY(nQuoted > 3);
}

void TestTranslation::languageIsChosen_data()
{
    QTest::addColumn<QString>("wanted");
    QTest::addColumn<QStringList>("system");
    QTest::addColumn<QString>("chosen");
    QTest::newRow("German system") << "" << QStringList{"de-DE"} << "de";
    QTest::newRow("Austrian system") << "" << QStringList{"de-AT", "de"} << "de";
    QTest::newRow("language alone") << "" << QStringList{"de"} << "de";
    QTest::newRow("C") << "" << QStringList{"C"} << "en";
    QTest::newRow("POSIX") << "" << QStringList{"POSIX"} << "en";
    QTest::newRow("none") << "" << QStringList() << "en";
    QTest::newRow("unknown language") << "" << QStringList{"fr-FR", "fr"} << "en";
    QTest::newRow("German as the second language") << "" << QStringList{"fr-FR", "de-CH"} << "de";
    QTest::newRow("English before German") << "" << QStringList{"en-GB", "de-DE"} << "en";
    QTest::newRow("begins alike") << "" << QStringList{"den-CA"} << "en";
    QTest::newRow("wanted") << "de" << QStringList{"en-US"} << "de";
    QTest::newRow("English wanted") << "en" << QStringList{"de-DE"} << "en";
    QTest::newRow("unknown wanted") << "xx" << QStringList{"de-DE"} << "de";
    QTest::newRow("damaged wanted") << "../de" << QStringList{"C"} << "en";
}

void TestTranslation::languageIsChosen()
{
    QFETCH(QString, wanted);
    QFETCH(QStringList, system);
    QTEST(OrmLanguage::choose(wanted, system), "chosen");
}

void TestTranslation::languageGoesBack()
{
    const auto text = [] { return QCoreApplication::translate("COrmMainWindow", "&File"); };
    const auto lines = [](int n) { return QCoreApplication::translate("COrmLogPanel", "%n lines", nullptr, n); };
    QCOMPARE(OrmLanguage::codes(), QStringList({QStringLiteral("en"), QStringLiteral("de")}));
    QCOMPARE(OrmLanguage::nameOf(QStringLiteral("en")), QStringLiteral("English"));
    QCOMPARE(OrmLanguage::nameOf(QStringLiteral("de")), QStringLiteral("Deutsch"));
    QCOMPARE(text(), QStringLiteral("&File"));
    QCOMPARE(lines(5), QStringLiteral("5 lines"));
    OrmLanguage::use(QStringLiteral("de"));
    QCOMPARE(OrmLanguage::current(), QStringLiteral("de"));
    QCOMPARE(text(), QStringLiteral("&Datei"));
    QCOMPARE(lines(1), QStringLiteral("1 Zeile"));
    QCOMPARE(lines(5), QStringLiteral("5 Zeilen"));
    OrmLanguage::use(QStringLiteral("xx"));
    QCOMPARE(OrmLanguage::current(), QStringLiteral("en"));
    QCOMPARE(text(), QStringLiteral("&File"));
}

void TestTranslation::commandLineKnowsLanguages_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("error");
    QTest::newRow("none") << QStringList{} << ""
                          << "";
    QTest::newRow("German") << QStringList{"--language", "de"} << "de"
                            << "";
    QTest::newRow("in one word") << QStringList{"--language=en"} << "en"
                                 << "";
    QTest::newRow("unknown") << QStringList{"--language", "fr"} << "fr"
                             << "--language needs one of en, de.";
    QTest::newRow("empty") << QStringList{"--language", ""} << ""
                           << "--language needs one of en, de.";
    QTest::newRow("twice") << QStringList{"--language", "de", "--language", "en"} << "en"
                           << "--language may be given once.";
}

void TestTranslation::commandLineKnowsLanguages()
{
    QFETCH(QStringList, arguments);
    const SCommandLine sLine = OrmCommandLine::parse(QStringList{QStringLiteral("ormelle")} + arguments);
    QTEST(sLine.m_strLanguage, "language");
    QTEST(sLine.m_strError, "error");
}

void TestTranslation::programSpeaksTheLanguage_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("system");
    QTest::addColumn<QString>("setting");
    QTest::addColumn<bool>("german");
    QTest::newRow("system") << QStringList{} << "de_DE.UTF-8"
                            << "" << true;
    QTest::newRow("other system") << QStringList{} << "fr_FR.UTF-8"
                                  << "" << false;
    QTest::newRow("plain system") << QStringList{} << "C"
                                  << "" << false;
    QTest::newRow("setting") << QStringList{} << "C"
                             << "de" << true;
    QTest::newRow("setting against the system") << QStringList{} << "de_DE.UTF-8"
                                                << "en" << false;
    QTest::newRow("command line") << QStringList{"--language", "de"} << "C"
                                  << "en" << true;
    QTest::newRow("no settings") << QStringList{"--no-settings"} << "C"
                                 << "de" << false;
}

void TestTranslation::programSpeaksTheLanguage()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, system);
    QFETCH(QString, setting);
    const QTemporaryDir objHome;
    QVERIFY(QDir(objHome.path()).mkpath(QStringLiteral("Ormelle")));
    COrmPreference::setStore(objHome.filePath(QStringLiteral("Ormelle/preferences.json")));
    COrmHostSettings().setLanguage(setting);
    const CDisplay objDisplay({});
    CRunningOrmelle objOrmelle(QStringLiteral(ORM_BINARY_DIR "/bin/ormelle"),
                               arguments + QStringList{QStringLiteral("--tool"), QStringLiteral("No Such Tool")},
                               {QStringLiteral("DISPLAY=") + objDisplay.name(), QStringLiteral("XDG_CONFIG_HOME=") + objHome.path(),
                                QStringLiteral("LANG=") + system, QStringLiteral("LC_ALL="), QStringLiteral("LANGUAGE=")});
    QFETCH(bool, german);
    const QString strTold =
        german ? QStringLiteral("Es gibt kein Werkzeug namens No Such Tool.") : QStringLiteral("There is no tool named No Such Tool.");
    QTRY_VERIFY_WITH_TIMEOUT(objOrmelle.log().contains(strTold), s_nPatience);
    QCOMPARE(objOrmelle.close(), 0);
}

void TestTranslation::terminalStaysEnglish()
{
    const QStringList lstGerman{QStringLiteral("LANG=de_DE.UTF-8"), QStringLiteral("LC_ALL="), QStringLiteral("LANGUAGE=de")};
    const QStringList lstEnglish{QStringLiteral("LANG=C"), QStringLiteral("LC_ALL="), QStringLiteral("LANGUAGE=")};
    for (const QStringList& lstArguments : {QStringList{QStringLiteral("--help")}, QStringList{QStringLiteral("--version")},
                                            QStringList{QStringLiteral("--reset-settings"), QStringLiteral("--no-settings")}})
    {
        const SRun sGerman = runProgram(lstArguments, lstGerman);
        const SRun sEnglish = runProgram(lstArguments, lstEnglish);
        QVERIFY(sGerman.nExit >= 0);
        QCOMPARE(sGerman.nExit, sEnglish.nExit);
        QCOMPARE(sGerman.baOutput, sEnglish.baOutput);
        QCOMPARE(sGerman.baErrors, sEnglish.baErrors);
        QVERIFY(!sEnglish.baOutput.isEmpty() || !sEnglish.baErrors.isEmpty());
    }
}

void TestTranslation::filesAreTheSameInEveryLanguage()
{
    const QTemporaryDir objFolder;
    const QMap<QString, QByteArray> mapEnglish = writtenFiles(objFolder.filePath(QStringLiteral("en")));
    QCOMPARE(mapEnglish.size(), 2 + OrmImageFile::extensions().size() + 1);
    OrmLanguage::use(QStringLiteral("de"));
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    QCOMPARE(QLocale().toString(1.5), QStringLiteral("1,5")); // the locale really differs
    const QMap<QString, QByteArray> mapGerman = writtenFiles(objFolder.filePath(QStringLiteral("de")));
    QCOMPARE(mapGerman.keys(), mapEnglish.keys());
    for (auto it = mapEnglish.cbegin(); it != mapEnglish.cend(); ++it)
    {
        QVERIFY2(!it.value().isEmpty(), qPrintable(it.key()));
        QVERIFY2(mapGerman.value(it.key()) == it.value(), qPrintable(it.key()));
    }
}

ORM_TEST_MAIN(TestTranslation)
#include "tst_translation.moc"
