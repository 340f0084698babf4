#include "InstalledTree.h"

#include <QDirIterator>
#include <QTemporaryDir>
#include <QtTest>

/// The Debian packages: made, examined, installed into a root of their own, run there and removed.
class TestPackages : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void theCheckerFindsNoError();
    void theyNeedWhatTheyUse();
    void theyInstallRunAndGoWithoutATrace();

private:
    SRun dpkg(const QStringList& lstArguments) const;
    QString root() const { return m_objFolder.filePath(QStringLiteral("root")); }
    /// Everything below the root but dpkg's own records.
    QStringList present() const;

    QTemporaryDir m_objFolder;
    QStringList m_lstPackages; ///< full paths; ormelle-dev before ormelle
};

void TestPackages::initTestCase()
{
    QVERIFY(m_objFolder.isValid());
    const SRun sRun = run(QStringLiteral("cpack"), {QStringLiteral("-B"), m_objFolder.path()}, {}, QStringLiteral(ORM_BINARY_DIR));
    QVERIFY2(sRun.m_nExit == 0, qPrintable(sRun.m_strOut));
    for (const QString& strFile : filesOf(m_objFolder.path()))
        if (strFile.endsWith(QLatin1String(".deb")))
            m_lstPackages.append(m_objFolder.filePath(strFile));
    QCOMPARE(m_lstPackages.size(), 2);
}

void TestPackages::theCheckerFindsNoError()
{
    const SRun sRun =
        run(QStringLiteral("lintian"),
            QStringList{QStringLiteral("--allow-root"), QStringLiteral("--fail-on"), QStringLiteral("error")} + m_lstPackages);
    QVERIFY2(sRun.m_nExit == 0, qPrintable(sRun.m_strOut));
    QVERIFY2(!sRun.m_strOut.contains(QLatin1String("E: ")), qPrintable(sRun.m_strOut));
}

void TestPackages::theyNeedWhatTheyUse()
{
    const auto depends = [](const QString& strPackage) {
        return run(QStringLiteral("dpkg-deb"), {QStringLiteral("-f"), strPackage, QStringLiteral("Depends")}).m_strOut;
    };
    for (const char* pPackage : {"libqt5widgets5", "libqwt-qt5-6", "libtiff6", "libpugixml1v5"})
        QVERIFY2(depends(m_lstPackages.last()).contains(QLatin1String(pPackage)), pPackage);
    QVERIFY(depends(m_lstPackages.first()).startsWith(QLatin1String("ormelle (= ")));
}

SRun TestPackages::dpkg(const QStringList& lstArguments) const
{
    return run(QStringLiteral("dpkg"),
               QStringList{QStringLiteral("--root=") + root(), QStringLiteral("--force-not-root"), QStringLiteral("--force-depends"),
                           QStringLiteral("--force-script-chrootless"), QStringLiteral("--log=/dev/null")} +
                   lstArguments);
}

QStringList TestPackages::present() const
{
    QStringList lstFiles;
    for (QDirIterator it(root(), QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories); it.hasNext();)
    {
        const QString strFile = QDir(root()).relativeFilePath(it.next());
        if (!strFile.startsWith(QLatin1String("var/lib/dpkg/")))
            lstFiles.append(strFile);
    }
    return lstFiles;
}

void TestPackages::theyInstallRunAndGoWithoutATrace()
{
    QVERIFY(QDir().mkpath(root() + QStringLiteral("/var/lib/dpkg/updates")));
    QVERIFY(QDir().mkpath(root() + QStringLiteral("/var/lib/dpkg/info")));
    QFile objStatus(root() + QStringLiteral("/var/lib/dpkg/status"));
    QVERIFY(objStatus.open(QIODevice::WriteOnly));
    objStatus.close();

    SRun sRun = dpkg(QStringList{QStringLiteral("-i")} + m_lstPackages);
    QVERIFY2(sRun.m_nExit == 0, qPrintable(sRun.m_strOut));
    for (const QString& strName : filesOf(QStringLiteral(ORM_BINARY_DIR "/bin")))
    {
        sRun = run(root() + QStringLiteral("/usr/bin/") + strName, {QStringLiteral("--version")});
        QVERIFY2(sRun.m_nExit == 0, qPrintable(strName + QStringLiteral(": ") + sRun.m_strOut));
    }
    QVERIFY(present().contains(QStringLiteral("usr/include/ormelle/ormapi/COrmToolPluginBase.h")));

    sRun = dpkg({QStringLiteral("-P"), QStringLiteral("ormelle-dev"), QStringLiteral("ormelle")});
    QVERIFY2(sRun.m_nExit == 0, qPrintable(sRun.m_strOut));
    QCOMPARE(present(), QStringList());
}

QTEST_GUILESS_MAIN(TestPackages)
#include "tst_packages.moc"
