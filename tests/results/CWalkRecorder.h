#pragma once

#include "AnalysisResultXMLWrapper.h"
#include "ResultDocumentWalk.h"

/// Takes what a walk over a result document says of failures; surface and volume are read as a palette reads them, the other
/// sections of the host aren't. The unit selected is the one of a result without calibration.
class CWalkRecorder : public ResultDocument::CWalkHost
{
public:
    explicit CWalkRecorder(int nKind)
        : m_strUnit(nKind == 1 ? QString::fromLatin1("pmol M-\xC2\xB9 cm-\xC2\xB9") : QStringLiteral("photons/sec"))
    {
    }

    QStringList lstFailures; ///< what was said about failures, channel ahead

    void log(const QString& strMessage, long nLevel) override { keep(QStringLiteral("log %1: ").arg(nLevel) + strMessage); }
    void hint(const QString& strMessage) override { keep("hint: " + strMessage); }
    void progress(const QString&, int) override {}
    QString analysisName() const override { return QString(); }
    QString selectedUnit() const override { return m_strUnit; }
    void namesRead(const QStringList&) override {}
    void readQuantification(AnalysisResultXMLWrapper&, SAnalysisBase&) override {}
    void readSoftwareVersion(AnalysisResultXMLWrapper&, QString&) override {}
    bool readMesh(AnalysisResultXMLWrapper& objXML, SAnalysisBase& objRecord) override { return objRecord.objMesh.loadFromXML(&objXML); }
    bool readVolume(AnalysisResultXMLWrapper& objXML, SAnalysisBase& objRecord, QString& strKind) override
    {
        return objRecord.objVolume.loadFromXML(&objXML, strKind);
    }
    void readMask(AnalysisResultXMLWrapper&, SAnalysisBase&) override {}
    void waitForSavePrompt() override {}

private:
    void keep(const QString& strMessage)
    {
        if (strMessage.contains("Unable") || strMessage.contains("mismatch"))
        {
            lstFailures.append(strMessage);
        }
    }

    QString m_strUnit;
};
