#include "CStudyWriter.h"

#include "TestWidgets.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace
{

QString nameOfKind(int nKind)
{
    return nKind == 1 ? QStringLiteral("NOVA") : QStringLiteral("SOLA");
}

QByteArray clickInfo(const SSequenceLook& objLook, bool bFluorescent, int nClick)
{
    const QByteArray byView = "Field of View=" + QByteArray::number(objLook.dFieldOfView) + '\n';
    QByteArray by = "[photographic image]\n" + byView;
    if (objLook.bStructuredLight)
    {
        by += "[structure image]\n[reference image]\n";
    }
    by += "[luminescent image]\n" + byView + "Image Subtype=" + (bFluorescent ? "fluorescent" : "luminescent") + '\n';
    by += "Emission Filter=" + QByteArray::number(560 + 20 * nClick) + "\nExposure Time=60\n";
    if (bFluorescent)
    {
        by += "Excitation Filter=500\n";
    }
    if (objLook.bTransIllumination)
    {
        by += "FL x-spot=1.25\nFL y-spot=0.5\n";
    }
    return by;
}

} // namespace

SSequenceLook SSequenceLook::fluorescent()
{
    SSequenceLook objLook;
    objLook.bLuminescent = false;
    objLook.bFluorescent = true;
    objLook.bTransIllumination = true;
    return objLook;
}

CStudyWriter::CStudyWriter()
{
    if (!m_objFolder.isValid())
    {
        TestWidgets::fail(QStringLiteral("No temporary folder: ") + m_objFolder.errorString());
    }
}

QString CStudyWriter::sequenceFolder(const QString& strSequenceID) const
{
    return m_objFolder.filePath(strSequenceID) + QLatin1Char('/');
}

void CStudyWriter::addSequence(const QString& strSequenceID, const SSequenceLook& objLook)
{
    QByteArray by = "[Sequence Information]\nSequence=" + strSequenceID.toUtf8() + "\nSubject=Test\nDate Time=2026-08-01T09:30:00\n";
    if (objLook.bOverview)
    {
        by += "Trans-illumination Overview=1\n";
    }
    by += "[Click Numbers]\nCount=" + QByteArray::number(objLook.nClicks) + '\n';
    for (int i = 1; i <= objLook.nClicks; ++i)
    {
        const QString strClick = strSequenceID + QStringLiteral("_%1").arg(i, 3, 10, QLatin1Char('0'));
        by += QByteArray::number(i) + '=' + strClick.toUtf8() + '\n';
        // A sequence of both sorts has them in turn.
        const bool bFluorescent = objLook.bFluorescent && (!objLook.bLuminescent || i % 2 == 0);
        writeFile(sequenceFolder(strSequenceID) + strClick + QStringLiteral("/ClickInfo.txt"), clickInfo(objLook, bFluorescent, i));
    }
    if (objLook.bCT)
    {
        by += "[CT Acquisition Parameters]\nVoltage=50\n";
    }
    writeFile(sequenceFolder(strSequenceID) + QStringLiteral("SequenceInfo.txt"), by);
}

QString CStudyWriter::addResult(const QString& strSequenceID, const QString& strMenuName, const SResultDocument& objDocument)
{
    return addResultFile(strSequenceID, objDocument.nKind, strMenuName, objDocument.toXml());
}

QString CStudyWriter::addResultFile(const QString& strSequenceID, int nKind, const QString& strMenuName, const QByteArray& byContent)
{
    const QString strFileName = nameOfKind(nKind) + QStringLiteral("_%1.xml").arg(++m_nFiles);
    const QString strPath = sequenceFolder(strSequenceID) + QStringLiteral("XML/") + strFileName;
    writeFile(strPath, byContent);
    addIndexEntry(strSequenceID, nKind, strMenuName, strFileName);
    return strPath;
}

void CStudyWriter::addIndexEntry(const QString& strSequenceID, int nKind, const QString& strMenuName, const QString& strFileName)
{
    entries(strSequenceID, nKind).append({strMenuName, strFileName});
    writeIndex(strSequenceID, nKind);
}

void CStudyWriter::removeIndexEntry(const QString& strSequenceID, int nKind, const QString& strMenuName)
{
    QList<SEntry>& lstEntries = entries(strSequenceID, nKind);
    for (int i = lstEntries.size() - 1; i >= 0; --i)
    {
        if (lstEntries.at(i).strMenuName == strMenuName)
        {
            lstEntries.removeAt(i);
        }
    }
    writeIndex(strSequenceID, nKind);
}

void CStudyWriter::writeIndex(const QString& strSequenceID, int nKind)
{
    QByteArray by;
    int nEntry = 0;
    for (const SEntry& objEntry : entries(strSequenceID, nKind))
    {
        by += '[' + nameOfKind(nKind).toUtf8() + '_' + QByteArray::number(++nEntry) + "]\nMenuName=" + objEntry.strMenuName.toUtf8() +
              "\nFileName=" + objEntry.strFileName.toUtf8() + '\n';
    }
    writeFile(sequenceFolder(strSequenceID) + QStringLiteral("XML/") + nameOfKind(nKind) + QStringLiteral(".txt"), by);
}

void CStudyWriter::writeFile(const QString& strFile, const QByteArray& byContent)
{
    QDir().mkpath(QFileInfo(strFile).path());
    QFile objFile(strFile);
    if (!objFile.open(QIODevice::WriteOnly) || objFile.write(byContent) != byContent.size())
    {
        TestWidgets::fail(QStringLiteral("Can't write %1: %2").arg(strFile, objFile.errorString()));
    }
}
