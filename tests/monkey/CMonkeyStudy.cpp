#include "CMonkeyStudy.h"

namespace
{
const QString s_strSOLA = QStringLiteral("M1");
const QString s_strLonger = QStringLiteral("M12"); // holds the ID above
const QString s_strNOVA = QStringLiteral("FL");
const QString s_strBoth = QStringLiteral("BOTH");
const QString s_strNone = QStringLiteral("EMPTY");
const QString s_strDisk = QStringLiteral("DISK");
const QString s_strComesAndGoes = QStringLiteral("comes and goes");

SResultDocument document(int nKind, const QString& strSequenceID, int nEdge, float fFactor, float fRadius)
{
    SResultDocument objDocument(nKind);
    objDocument.strSequenceID = strSequenceID;
    objDocument.setSphere(1, fRadius);
    objDocument.setCube(nEdge, 1.0, fFactor);
    return objDocument;
}
} // namespace

CMonkeyStudy::CMonkeyStudy()
{
    constexpr int nSOLA = SResultDocument::SOLA;
    constexpr int nNOVA = SResultDocument::NOVA;
    m_objOpen.addSequence(s_strSOLA);
    m_objOpen.addResult(s_strSOLA, QStringLiteral("a"), document(nSOLA, s_strSOLA, 3, 1.0f, 10.0f));
    m_objOpen.addResult(s_strSOLA, QStringLiteral("b"), document(nSOLA, s_strSOLA, 4, 1e9f, 14.0f));
    m_objOpen.addResult(s_strSOLA, QStringLiteral("flat"), document(nSOLA, s_strSOLA, 1, 7.0f, 6.0f)); // one voxel: no range
    const QByteArray byText = document(nSOLA, s_strSOLA, 3, 2.0f, 10.0f).toXml();
    m_objOpen.addResultFile(s_strSOLA, nSOLA, QStringLiteral("cut short"), byText.left(byText.size() / 2));
    m_objOpen.addResultFile(s_strSOLA, nSOLA, QStringLiteral("no text"), QByteArray());
    m_objOpen.addIndexEntry(s_strSOLA, nSOLA, QStringLiteral("no file"), QStringLiteral("nowhere.xml"));
    m_objOpen.addIndexEntry(s_strSOLA, nSOLA, QStringLiteral("no name"), QString());

    m_objOpen.addSequence(s_strLonger);
    // The key of this one is the key of another sequence's result.
    m_objOpen.addResult(s_strLonger, QStringLiteral("a"), document(nSOLA, s_strLonger, 2, 1e-6f, 20.0f));
    m_objOpen.addResult(s_strSOLA, QStringLiteral("2a"), document(nSOLA, s_strSOLA, 2, 3.0f, 8.0f));
    m_objOpen.addResult(s_strLonger, QStringLiteral("of the other kind"), document(nNOVA, s_strLonger, 2, 1.0f, 8.0f));

    m_objOpen.addSequence(s_strNOVA, SSequenceLook::fluorescent());
    m_objOpen.addResult(s_strNOVA, QStringLiteral("a"), document(nNOVA, s_strNOVA, 3, 0.5f, 12.0f));
    m_objOpen.addResult(s_strNOVA, QStringLiteral("A"), document(nNOVA, s_strNOVA, 4, 100.0f, 9.0f)); // differs by case alone
    m_objOpen.addResult(s_strNOVA, s_strComesAndGoes, document(nNOVA, s_strNOVA, 2, 3.0f, 9.0f));
    m_objOpen.addResultFile(s_strNOVA, nNOVA, QStringLiteral("no document"), QByteArray("what is this?"));

    SSequenceLook objBoth = SSequenceLook::fluorescent();
    objBoth.bLuminescent = true;
    m_objOpen.addSequence(s_strBoth, objBoth);
    m_objOpen.addResult(s_strBoth, QStringLiteral("same name"), document(nSOLA, s_strBoth, 3, 1.0f, 11.0f));
    m_objOpen.addResult(s_strBoth, QStringLiteral("same name"), document(nNOVA, s_strBoth, 3, 2.0f, 11.0f));
    m_objOpen.addResult(s_strBoth, QStringLiteral("only here"), document(nNOVA, s_strBoth, 2, 2.0f, 11.0f));

    m_objOpen.addSequence(s_strNone);

    m_objDisk.addSequence(s_strDisk);
    m_objDisk.addResult(s_strDisk, QStringLiteral("from disk"), document(nSOLA, s_strDisk, 3, 4.0f, 10.0f));
    CStudyWriter::writeFile(m_objDisk.folder() + QStringLiteral("/SequenceOfNothing.txt"), QByteArray("[nothing]\n"));
}

QStringList CMonkeyStudy::sequences() const
{
    return {s_strSOLA, s_strLonger, s_strNOVA, s_strBoth, s_strNone};
}

QSet<QString> CMonkeyStudy::sharedKeys()
{
    return {s_strLonger + QStringLiteral("a")};
}

QStringList CMonkeyStudy::filesToOpen() const
{
    return {m_objDisk.sequenceFolder(s_strDisk) + QStringLiteral("SequenceInfo.txt"),
            m_objOpen.sequenceFolder(s_strBoth) + QStringLiteral("SequenceInfo.txt"),
            m_objDisk.folder() + QStringLiteral("/SequenceOfNothing.txt")};
}

QString CMonkeyStudy::changeIndex(CMonkeyRandom& objRandom)
{
    if (m_bTakenOut)
    {
        m_bTakenOut = false;
        m_objOpen.addResult(s_strNOVA, s_strComesAndGoes, document(1, s_strNOVA, objRandom.between(1, 3), 3.0f, 9.0f));
        return QStringLiteral("a result is saved again");
    }
    m_bTakenOut = true;
    m_objOpen.removeIndexEntry(s_strNOVA, 1, s_strComesAndGoes);
    return QStringLiteral("a result vanishes from its index");
}
