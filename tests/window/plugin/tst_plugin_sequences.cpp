#include "COrmLog.h"
#include "PluginTest.h"

using namespace PluginTest;

namespace
{
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
} // namespace

/// What the tool makes of the host's sequences before and after it has a window.
class tst_plugin_sequences : public CPluginTest
{
    Q_OBJECT

private slots:
    void init() { loadTool(); }
    void cleanup() { removeTool(); }

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
};

void tst_plugin_sequences::gatheredSequencesAreListedInOrder()
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

void tst_plugin_sequences::removedSequencesAreNotListed()
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

void tst_plugin_sequences::sequenceIsGatheredOnce()
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

void tst_plugin_sequences::otherKindsOnlyRefreshTheEntry_data()
{
    QTest::addColumn<int>("nKind");
    QTest::newRow("without a surface") << static_cast<int>(Plain);
    QTest::newRow("overview of a trans-illumination") << static_cast<int>(Overview);
}

void tst_plugin_sequences::otherKindsOnlyRefreshTheEntry()
{
    QFETCH(int, nKind);
    CValidityCount objCount;
    tool().onSignalSequenceAdded(m_pSequences->open(QStringLiteral("X"), static_cast<EKind>(nKind)));
    QCOMPARE(objCount.take(), 1);
    QVERIFY(tool().pluginAction()->isEnabled());
    QVERIFY(tool().createObject());
    QCOMPARE(listedSequences(), QStringList());
}

void tst_plugin_sequences::bothKindsCountAsTheFirst()
{
    tool().onSignalSequenceAdded(m_pSequences->open(QStringLiteral("AB"), Both));
    QVERIFY(tool().createObject());
    QCOMPARE(listedSequences(), QStringList{QStringLiteral("SOLA AB")});
}

void tst_plugin_sequences::sequenceWithCTSurfaceIsListed()
{
    tool().onSignalSequenceAdded(m_pSequences->open(QStringLiteral("CT"), LuminescentCT));
    QVERIFY(tool().createObject());
    QCOMPARE(listedSequences(), QStringList{QStringLiteral("SOLA CT")});
}

void tst_plugin_sequences::windowHearsOfLaterSequences()
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

void tst_plugin_sequences::sequencesOfBothKindsAreListedTwiceByTheWindow()
{
    QVERIFY(tool().createObject());
    tool().onSignalSequenceAdded(m_pSequences->open(QStringLiteral("AB"), Both));
    const QStringList lstExpected = {QStringLiteral("SOLA AB"), QStringLiteral("NOVA AB")};
    QCOMPARE(listedSequences(), lstExpected);
}

void tst_plugin_sequences::changesRefreshTheEntry()
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

void tst_plugin_sequences::removalDoesNotRefreshTheEntry()
{
    CValidityCount objCount;
    COrmSequenceDataset* pA = m_pSequences->open(QStringLiteral("A"), Luminescent);
    tool().onSignalSequenceAdded(pA);
    QCOMPARE(objCount.take(), 1);
    tool().onSignalSequenceRemoved(pA);
    QCOMPARE(objCount.take(), 0);
}

void tst_plugin_sequences::otherNotificationsDoNothing()
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

int main(int nArguments, char** ppArguments)
{
    return runPluginTest<tst_plugin_sequences>(nArguments, ppArguments);
}

#include "tst_plugin_sequences.moc"
