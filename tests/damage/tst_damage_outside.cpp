#include "DamageTools.h"
#include "OrmTestMain.h"

#include "CWalkRecorder.h"
#include "FuzzTarget.h"

#include <QFile>
#include <QTemporaryDir>

#include <arpa/inet.h>
#include <array>
#include <sys/inotify.h>
#include <sys/socket.h>
#include <unistd.h>

namespace
{
/// A file of which the system tells when anybody opens it.
class CWatchedFile
{
public:
    CWatchedFile()
    {
        QFile objFile(path());
        if (objFile.open(QIODevice::WriteOnly))
            objFile.write("a secret");
        objFile.close();
        m_nWatch = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
        if (inotify_add_watch(m_nWatch, QFile::encodeName(path()).constData(), IN_OPEN | IN_ACCESS) < 0)
            qFatal("Cannot watch a file");
    }
    ~CWatchedFile() { close(m_nWatch); }
    CWatchedFile(const CWatchedFile&) = delete;
    CWatchedFile& operator=(const CWatchedFile&) = delete;

    QString path() const { return m_objFolder.filePath(QStringLiteral("secret.txt")); }
    /// Whether it was opened since the last question.
    bool wasOpened() const
    {
        std::array<char, 4096> arrEvents = {};
        return read(m_nWatch, arrEvents.data(), arrEvents.size()) > 0;
    }

private:
    QTemporaryDir m_objFolder;
    int m_nWatch = -1;
};

/// Listens at a port of this machine.
class CListener
{
public:
    CListener() : m_nSocket(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0))
    {
        m_sAddress.sin_family = AF_INET;
        m_sAddress.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t nSize = sizeof m_sAddress;
        if (bind(m_nSocket, address(), nSize) != 0 || listen(m_nSocket, 5) != 0 || getsockname(m_nSocket, address(), &nSize) != 0)
            qFatal("Cannot listen");
    }
    ~CListener() { close(m_nSocket); }
    CListener(const CListener&) = delete;
    CListener& operator=(const CListener&) = delete;

    sockaddr* address() { return reinterpret_cast<sockaddr*>(&m_sAddress); }
    QString url() const { return QStringLiteral("http://127.0.0.1:%1/x").arg(ntohs(m_sAddress.sin_port)); }
    /// Whether somebody came since the last question.
    bool wasAsked() const
    {
        const int nVisitor = accept4(m_nSocket, nullptr, nullptr, SOCK_CLOEXEC);
        if (nVisitor >= 0)
            close(nVisitor);
        return nVisitor >= 0;
    }

private:
    sockaddr_in m_sAddress = {};
    int m_nSocket;
};
} // namespace

/// What a result document names is not opened: no other file, of which the system would tell, and no address, at which somebody listens.
class tst_damage_outside : public QObject
{
    Q_OBJECT

private slots:
    void theWatchersNotice();
    void nothingElseIsOpened_data();
    void nothingElseIsOpened();
};

void tst_damage_outside::theWatchersNotice()
{
    const CWatchedFile objFile;
    QVERIFY(!objFile.wasOpened());
    QFile objReader(objFile.path());
    QVERIFY(objReader.open(QIODevice::ReadOnly));
    QVERIFY(objFile.wasOpened());
    QVERIFY(!objFile.wasOpened());
    CListener objListener;
    QVERIFY(!objListener.wasAsked());
    const int nVisitor = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    QVERIFY(::connect(nVisitor, objListener.address(), sizeof(sockaddr_in)) == 0);
    QVERIFY(objListener.wasAsked());
    QVERIFY(!objListener.wasAsked());
    close(nVisitor);
}

void tst_damage_outside::nothingElseIsOpened_data()
{
    QTest::addColumn<QByteArray>("byMark"); // what stands before the root element or in its place; %1: what it names
    QTest::addColumn<bool>("bRead");
    const QByteArray byRoot = "<Ormelle.Result Version=\"2.0\">";
    QTest::newRow("an entity in the text") << "<!DOCTYPE x [<!ENTITY e SYSTEM \"%1\">]>" + byRoot + "&e;" << false;
    QTest::newRow("an entity in an attribute")
        << QByteArray("<!DOCTYPE x [<!ENTITY e SYSTEM \"%1\">]><Ormelle.Result Version=\"2.0\" New=\"&e;\">") << false;
    QTest::newRow("an entity of the type itself") << "<!DOCTYPE x [<!ENTITY % p SYSTEM \"%1\">%p;]>" + byRoot << false;
    QTest::newRow("a document type elsewhere") << "<!DOCTYPE x SYSTEM \"%1\">" + byRoot << false;
    QTest::newRow("a public document type") << "<!DOCTYPE x PUBLIC \"-//X\" \"%1\">" + byRoot << false;
    QTest::newRow("a style sheet") << "<?xml-stylesheet type=\"text/xsl\" href=\"%1\"?>" + byRoot << true;
    QTest::newRow("an inclusion") << byRoot + "<xi:include xmlns:xi=\"http://www.w3.org/2001/XInclude\" href=\"%1\"/>" << true;
    QTest::newRow("a schema") << QByteArray("<Ormelle.Result xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
                                            "xsi:noNamespaceSchemaLocation=\"%1\" Version=\"2.0\">")
                              << true;
    QTest::newRow("a base") << QByteArray("<Ormelle.Result xml:base=\"%1\" Version=\"2.0\">") << true;
}

void tst_damage_outside::nothingElseIsOpened()
{
    QFETCH(QByteArray, byMark);
    QFETCH(bool, bRead);
    const CWatchedFile objFile;
    const CListener objListener;
    const QByteArray byRoot = "<Ormelle.Result Version=\"2.0\">";
    const QByteArray bySound = DamageTools::smallResult(SResultDocument::SOLA, "2.0").toXml();
    QVERIFY(bySound.contains(byRoot));
    for (const QString& strNamed : {objFile.path(), "file://" + objFile.path(), objListener.url()})
    {
        const QString strDocument =
            FuzzTarget::fileWith(QByteArray(bySound).replace(byRoot, QByteArray(byMark).replace("%1", strNamed.toUtf8())));
        CWalkRecorder objMessages(SResultDocument::SOLA);
        SSOLAAnalysis objRecord;
        QCOMPARE(ResultDocument::read(ResultDocument::sola(), objMessages, strDocument,
                                      {objRecord, objRecord.nWavelengthCount, objRecord.lstWavelengths}),
                 bRead);
        QVERIFY2(!objFile.wasOpened(), qPrintable(strNamed));
        QVERIFY2(!objListener.wasAsked(), qPrintable(strNamed));
    }
}

ORM_TEST_MAIN(tst_damage_outside)
#include "tst_damage_outside.moc"
