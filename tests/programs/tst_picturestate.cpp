#include "PictureReader.h"

#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

#include <functional>

namespace
{
SPictureState sample()
{
    SPictureState state;
    state.m_strVersion = "1.2.3";
    state.m_strPicture = "view";
    state.m_lstLook = QStringList{"--unit=photons/sec", "--size=600x400", "--rotate=30",         "--colors=Rainbow",
                                  "--range=1e3:9e4",    "--log",          "--wavelength=620 nm", "--measure=0,0.25,1,1"};
    state.m_lstResults = {{"SOLA", "S1", QString::fromUtf8("Tag  0:\u00a0 \"ü\" \U0001F42D\n\\ 1 mm")}, {"NOVA", "S/2", ""}};
    state.m_lstRefused = {{"SOLA", "S1", "cells"}};
    state.m_arrKinds.at(0) = SKindState{"photons/sec", "Rainbow", true, false, 1000.0, 0.1 + 0.2};
    state.m_bMip = true;
    state.m_nRotation = 30;
    state.m_strWavelength = "620 nm";
    state.m_strRegion = "0,0.25,1,1";
    return state;
}

QJsonObject sampleObject()
{
    return QJsonDocument::fromJson(PictureState::toJson(sample())).object();
}

QByteArray changed(const QString& strKey, const QJsonValue& value)
{
    QJsonObject object = sampleObject();
    object.insert(strKey, value);
    return QJsonDocument(object).toJson();
}
} // namespace

class tst_PictureState : public QObject
{
    Q_OBJECT

private slots:
    void stateSurvivesThePicture();
    void textIsPlain();
    void damagedStateIsRefused_data();
    void damagedStateIsRefused();
    void pictureMadeByHandIsRefused();
    void unsuitableFileIsRefused_data();
    void unsuitableFileIsRefused();
};

void tst_PictureState::stateSurvivesThePicture()
{
    const QTemporaryDir folder;
    const QString strFile = folder.filePath("picture.png");
    QImage image(3, 2, QImage::Format_RGB32);
    image.fill(Qt::red);
    const SPictureState before = sample();
    PictureState::sign(image, before);
    QVERIFY(image.save(strFile));
    SPictureState after;
    QCOMPARE(PictureReader::fromFile(strFile, after), QString());
    QCOMPARE(after.m_strVersion, before.m_strVersion);
    QCOMPARE(after.m_strPicture, before.m_strPicture);
    QCOMPARE(after.m_lstLook, before.m_lstLook);
    QCOMPARE(after.m_lstResults.size(), 2);
    for (int nResult = 0; nResult < 2; ++nResult)
    {
        QCOMPARE(after.m_lstResults.at(nResult).text(), before.m_lstResults.at(nResult).text());
    }
    QCOMPARE(after.m_lstRefused.size(), 1);
    QCOMPARE(after.m_lstRefused.at(0).text(), QString("SOLA S1/cells"));
    QVERIFY(after.m_arrKinds.at(0) && !after.m_arrKinds.at(1));
    QCOMPARE(after.m_arrKinds.at(0)->m_strUnit, QString("photons/sec"));
    QCOMPARE(after.m_arrKinds.at(0)->m_strColors, QString("Rainbow"));
    QVERIFY(after.m_arrKinds.at(0)->m_bReversed);
    QVERIFY(!after.m_arrKinds.at(0)->m_bLog);
    QVERIFY2(after.m_arrKinds.at(0)->m_fMax == 0.1 + 0.2, "to the last digit");
    QVERIFY(after.m_bMip);
    QCOMPARE(after.m_nRotation, 30);
    QCOMPARE(after.m_strWavelength, before.m_strWavelength);
    QCOMPARE(after.m_strRegion, before.m_strRegion);
}

void tst_PictureState::textIsPlain()
{
    const QByteArray aJson = PictureState::toJson(sample());
    QVERIFY(!aJson.contains("  "));
    for (const char cByte : aJson)
    {
        QVERIFY(cByte >= ' ' && cByte <= '~');
    }
}

void tst_PictureState::damagedStateIsRefused_data()
{
    QTest::addColumn<QByteArray>("aJson");
    const QByteArray aWhole = PictureState::toJson(sample());
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("no JSON") << QByteArray("made by hand");
    QTest::newRow("cut off") << aWhole.left(aWhole.size() / 2);
    QTest::newRow("a list") << QByteArray("[]");
    QTest::newRow("nothing in it") << QByteArray("{}");
    QTest::newRow("deep") << QByteArray(5000, '[') + QByteArray(5000, ']');
    QTest::newRow("version is a number") << changed("version", 1);
    QTest::newRow("look is a text") << changed("look", "--log");
    QTest::newRow("look holds a number") << changed("look", QJsonArray{"--size=600x400", 7});
    QTest::newRow("look is empty") << changed("look", QJsonArray{});
    QTest::newRow("look names a file") << changed("look", QJsonArray{"--size=600x400", "--view=/tmp/x.png"});
    QTest::newRow("look names a folder") << changed("look", QJsonArray{"--size=600x400", "/tmp"});
    QTest::newRow("look in another order") << changed("look", QJsonArray{"--rotate=30", "--size=600x400"});
    QTest::newRow("unknown option") << changed("look", QJsonArray{"--size=600x400", "--nothing"});
    QTest::newRow("size too large") << changed("look", QJsonArray{"--size=60000x60000"});
    QTest::newRow("size negative") << changed("look", QJsonArray{"--size=-600x400"});
    QTest::newRow("rotation too far") << changed("look", QJsonArray{"--size=600x400", "--rotate=9999999999"});
    QTest::newRow("range of no numbers") << changed("look", QJsonArray{"--size=600x400", "--range=nan:inf"});
    QTest::newRow("range upside down") << changed("look", QJsonArray{"--size=600x400", "--range=2:1"});
    QTest::newRow("rectangle outside") << changed("look", QJsonArray{"--size=600x400", "--measure=0,0,2,1"});
    QTest::newRow("unknown unit") << changed("look", QJsonArray{"--unit=furlongs", "--size=600x400"});
    QTest::newRow("long text") << changed("look", QJsonArray{"--size=600x400", "--colors=" + QString(5000, 'x')});
    QTest::newRow("no results") << changed("results", QJsonArray{});
    QTest::newRow("results are a text") << changed("results", "S1");
    QTest::newRow("result of no kind") << changed("results", QJsonArray{QJsonObject{{"kind", "X"}, {"sequence", "a"}, {"name", "b"}}});
    QTest::newRow("result without a name") << changed("results", QJsonArray{QJsonObject{{"kind", "SOLA"}, {"sequence", "a"}}});
    QTest::newRow("result is a number") << changed("results", QJsonArray{3});
    QTest::newRow("refused is missing") << changed("refused", QJsonValue());
    QTest::newRow("kinds are a list") << changed("kinds", QJsonArray{});
    QTest::newRow("kind without a range") << changed(
        "kinds", QJsonObject{{"SOLA", QJsonObject{{"unit", "x"}, {"colors", "y"}, {"reversed", false}, {"log", true}}}});
    QTest::newRow("range is a text") << changed(
        "kinds",
        QJsonObject{{"NOVA", QJsonObject{{"unit", "x"}, {"colors", "y"}, {"reversed", false}, {"log", true}, {"min", "0"}, {"max", 1}}}});
    QTest::newRow("projection is a text") << changed("mip", "yes");
    QTest::newRow("turn of millions") << changed("rotation", 4.0e9);
    QJsonArray lstMany;
    for (int nResult = 0; nResult < 20'001; ++nResult)
    {
        lstMany.append(QJsonObject{{"kind", "SOLA"}, {"sequence", "a"}, {"name", QString::number(nResult)}});
    }
    QTest::newRow("too many results") << changed("results", lstMany);
}

void tst_PictureState::damagedStateIsRefused()
{
    QFETCH(QByteArray, aJson);
    SPictureState state;
    QCOMPARE(PictureReader::fromJson(aJson, state), QString("its text on how it was made is damaged."));
}

void tst_PictureState::pictureMadeByHandIsRefused()
{
    SPictureState byHand = sample();
    byHand.m_lstLook.clear();
    SPictureState state;
    QCOMPARE(PictureReader::fromJson(PictureState::toJson(byHand), state),
             QString("it was exported from a window by hand; only pictures that ormcompare wrote can be made again."));
    QVERIFY(state.m_lstResults.isEmpty());
}

void tst_PictureState::unsuitableFileIsRefused_data()
{
    QTest::addColumn<QString>("strName");
    QTest::addColumn<QString>("strReason");
    QTest::newRow("missing") << "none.png"
                             << "there is no such file.";
    QTest::newRow("folder") << "."
                            << "there is no such file.";
    QTest::newRow("empty") << "empty.png"
                           << "it is no PNG picture.";
    QTest::newRow("text") << "text.png"
                          << "it is no PNG picture.";
    QTest::newRow("JPEG") << "picture.jpg"
                          << "it is no PNG picture.";
    QTest::newRow("PNG of another program") << "plain.png"
                                            << "it does not say how it was made.";
    QTest::newRow("PNG with a damaged text") << "damaged.png"
                                             << "its text on how it was made is damaged.";
    QTest::newRow("PNG that claims to be huge") << "huge.png"
                                                << "it does not say how it was made.";
    QTest::newRow("PNG that is cut off") << "cut.png"
                                         << "it is no PNG picture.";
}

void tst_PictureState::unsuitableFileIsRefused()
{
    QFETCH(QString, strName);
    QFETCH(QString, strReason);
    const QTemporaryDir folder;
    QImage image(30, 20, QImage::Format_RGB32);
    image.fill(Qt::red);
    QVERIFY(image.save(folder.filePath("plain.png")));
    QVERIFY(image.save(folder.filePath("picture.jpg")));
    image.setText(PictureState::stateKey(), "{\"version\":");
    QVERIFY(image.save(folder.filePath("damaged.png")));
    const auto write = [&folder](const char* pszName, const QByteArray& aBytes)
    {
        QFile file(folder.filePath(QLatin1String(pszName)));
        return file.open(QIODevice::WriteOnly) && file.write(aBytes) == aBytes.size();
    };
    QFile plain(folder.filePath("plain.png"));
    QVERIFY(plain.open(QIODevice::ReadOnly));
    QByteArray aPlain = plain.readAll();
    QVERIFY(write("empty.png", {}) && write("text.png", "Dear reader") && write("cut.png", aPlain.left(20)));
    // Width and height of the header, with the checksum made to fit.
    const QByteArray aHeader("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\x0d\xbb\xa0\0\x0d\xbb\xa0\x08\x02\0\0\0", 29);
    quint32 nCrc = 0xffffffffU;
    for (int nAt = 12; nAt < aHeader.size(); ++nAt)
    {
        nCrc ^= static_cast<quint8>(aHeader.at(nAt));
        for (int nBit = 0; nBit < 8; ++nBit)
        {
            nCrc = (nCrc & 1U) != 0 ? (nCrc >> 1U) ^ 0xedb88320U : nCrc >> 1U;
        }
    }
    nCrc = ~nCrc;
    QByteArray aCrc;
    for (const int nShift : {24, 16, 8, 0})
    {
        aCrc += static_cast<char>(nCrc >> nShift);
    }
    QVERIFY(write("huge.png", aHeader + aCrc + aPlain.mid(33)));
    SPictureState state;
    const QString strFile = folder.filePath(strName);
    const QString strGot = PictureReader::fromFile(strFile, state);
    QCOMPARE(strGot, strFile + " cannot be repeated: " + strReason);
}

QTEST_GUILESS_MAIN(tst_PictureState)
#include "tst_picturestate.moc"
