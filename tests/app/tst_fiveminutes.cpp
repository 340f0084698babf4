#include "RunningOrmelle.h"

#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QtTest>

/// What a new user does in the first five minutes, on the program itself: from the empty window over the demo study to a figure and a
/// table.
class TestFiveMinutes : public QObject
{
    Q_OBJECT

private slots:
    void fromTheEmptyWindowToFigureAndTable();

private:
    static QList<QStringList> table(const QString& strFile);
};

/// The rows of a file of comma-separated values without quotes.
QList<QStringList> TestFiveMinutes::table(const QString& strFile)
{
    QFile objFile(strFile);
    QList<QStringList> lstRows;
    if (objFile.open(QIODevice::ReadOnly))
        for (const QString& strLine : QString::fromUtf8(objFile.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts))
            lstRows.append(strLine.trimmed().split(QLatin1Char(',')));
    return lstRows;
}

void TestFiveMinutes::fromTheEmptyWindowToFigureAndTable()
{
    QTemporaryDir objHome;
    const QString strFigure = objHome.filePath(QStringLiteral("figure.png"));
    const QString strTable = objHome.filePath(QStringLiteral("table.csv"));
    const CDisplay objDisplay({QStringLiteral("+extension"), QStringLiteral("GLX")});
    CRunningOrmelle objProgram(QStringLiteral(ORM_BINARY_DIR "/bin/ormelle"), {},
                               {QStringLiteral("DISPLAY=") + objDisplay.name(), QStringLiteral("HOME=") + objHome.path(),
                                QStringLiteral("XDG_CONFIG_HOME=") + objHome.filePath(QStringLiteral("config")),
                                QStringLiteral("XDG_DATA_HOME=") + objHome.filePath(QStringLiteral("data"))});
    const auto rows = [&](const char* pView) { return objProgram.rows(QLatin1String(pView)); };
    const auto visible = [&](const char* pWidget) { return objProgram.does({QStringLiteral("visible"), QLatin1String(pWidget)}); };
    const auto press = [&](const char* pWidget) { return objProgram.does({QStringLiteral("press"), QLatin1String(pWidget)}); };
    const auto title = [&] { return objProgram.ask({QStringLiteral("title")}).toString(); };
    const auto saveAs = [&](const QString& strFile) { return objProgram.does({QStringLiteral("save"), strFile}); };

    // The empty window offers the demo study.
    QTRY_VERIFY_WITH_TIMEOUT(visible("demoStudyButton"), s_nPatience);
    QVERIFY(press("demoStudyButton"));
    QTRY_COMPARE_WITH_TIMEOUT(rows("sequenceList").size(), 10, s_nPatience);

    // One click leads from a sequence to the tool, with that sequence chosen there.
    QTRY_VERIFY_WITH_TIMEOUT(visible("compareButton"), s_nPatience);
    QVERIFY(press("compareButton"));
    QTRY_COMPARE_WITH_TIMEOUT(rows("m_pSequenceNameLW").size(), 10, s_nPatience);
    QTRY_VERIFY_WITH_TIMEOUT(!rows("m_pResultWidget").isEmpty(), s_nPatience);

    // Five time points of a kind, side by side.
    const QStringList lstSOLA = rows("m_pSequenceNameLW").filter(QRegularExpression(QStringLiteral("^SOLA ")));
    QCOMPARE(lstSOLA.size(), 5);
    for (const QString& strSequence : lstSOLA)
    {
        QVERIFY(objProgram.does({QStringLiteral("pick"), QStringLiteral("m_pSequenceNameLW"), strSequence}));
        QTRY_VERIFY_WITH_TIMEOUT(!rows("m_pResultWidget").isEmpty(), s_nPatience);
        QVERIFY(objProgram.does({QStringLiteral("pick"), QStringLiteral("m_pResultWidget"), rows("m_pResultWidget").first()}));
        QVERIFY(press("m_pLoadButton"));
    }

    // The figure.
    QVERIFY(objProgram.does({QStringLiteral("later"), QStringLiteral("press"), QStringLiteral("m_pExportButton")}));
    QTRY_COMPARE_WITH_TIMEOUT(title(), QStringLiteral("Export Active View As"), s_nPatience);
    QVERIFY(saveAs(strFigure));
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(strFigure), s_nPatience);
    const QImage imgFigure(strFigure);
    QSet<QRgb> setColours;
    for (int nY = 0; nY < imgFigure.height(); ++nY)
        for (int nX = 0; nX < imgFigure.width(); ++nX)
            setColours.insert(imgFigure.pixel(nX, nY));
    QVERIFY2(setColours.size() > 100, qPrintable(QString::number(setColours.size())));

    // The whole flux over time, as a table: one row for each time point, and the source grows.
    QVERIFY(objProgram.does({QStringLiteral("tab"), QStringLiteral("m_p3DBrowserTabWidget"), QStringLiteral("1")}));
    QVERIFY(objProgram.does({QStringLiteral("later"), QStringLiteral("context"), QStringLiteral("class:COrmXYPlot")}));
    QTRY_VERIFY_WITH_TIMEOUT(visible("class:QMenu"), s_nPatience);
    QVERIFY(objProgram.does({QStringLiteral("entry"), QStringLiteral("Save Numbers...")}));
    QTRY_COMPARE_WITH_TIMEOUT(title(), QStringLiteral("Save Numbers"), s_nPatience);
    QVERIFY(saveAs(strTable));
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(strTable), s_nPatience);
    const QList<QStringList> lstRows = table(strTable);
    QCOMPARE(lstRows.size(), 6);
    for (int nRow = 2; nRow < lstRows.size(); ++nRow)
        QVERIFY2(lstRows.at(nRow).last().toDouble() > lstRows.at(nRow - 1).last().toDouble(), qPrintable(lstRows.at(nRow).join(' ')));

    QCOMPARE(objProgram.close(), 0);
}

QTEST_GUILESS_MAIN(TestFiveMinutes)
#include "tst_fiveminutes.moc"
