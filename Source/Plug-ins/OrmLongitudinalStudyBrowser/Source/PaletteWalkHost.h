#pragma once

#include "COrmBasePalette.h"
#include "ResultDocumentWalk.h"

#include <QMap>

/// Lets the walk over a result document work for a palette: its messages go to log, status hint and progress display, the
/// host's sections are read by the palette.
class CPaletteWalkHost : public ResultDocument::CWalkHost
{
public:
    /// The palette must outlive the object.
    /// @param strAnalysisName the palette's name of its analysis; may be empty
    /// @param strSelectedUnit what the user selected, as the readers compare it
    CPaletteWalkHost(COrmBasePalette& objPalette, const QString& strAnalysisName, const QString& strSelectedUnit);

    /// Writes to the log that memory ran short. Where there is none for that either nothing happens.
    static void logNoMemory();

    /// Where names that were read go, under which key. The map must outlive the object.
    void keepNames(QMap<QString, QStringList>& mapNames, const QString& strKey);

    void log(const QString& strMessage, long nLevel) override;
    void hint(const QString& strMessage) override;
    void progress(const QString& strMessage, int nStep) override;
    QString analysisName() const override { return m_strAnalysisName; }
    QString selectedUnit() const override { return m_strSelectedUnit; }
    void namesRead(const QStringList& lstNames) override;
    void readQuantification(AnalysisResultXMLWrapper& objXML, SAnalysisBase& objRecord) override;
    void readSoftwareVersion(AnalysisResultXMLWrapper& objXML, QString& strVersion) override;
    bool readMesh(AnalysisResultXMLWrapper& objXML, SAnalysisBase& objRecord) override;
    bool readVolume(AnalysisResultXMLWrapper& objXML, SAnalysisBase& objRecord, QString& strKind) override;
    void readMask(AnalysisResultXMLWrapper& objXML, SAnalysisBase& objRecord) override;
    void waitForSavePrompt() override;

private:
    COrmBasePalette& m_objPalette;
    QString m_strAnalysisName;
    QString m_strSelectedUnit;
    QMap<QString, QStringList>* m_pNames = nullptr; ///< not owned; null: names aren't kept
    QString m_strKey;                               ///< under which names are kept
};
