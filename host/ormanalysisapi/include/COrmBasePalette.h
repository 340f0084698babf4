#pragma once

#include <QDialog>
#include <QPoint>
#include <QString>

class COrmDataset;
class COrmSequenceDataset;
class CPLResultXMLWrapper;
struct SAnalysisBase;

/// Base of the windows of analysis tools: a dialog with a status hint for its user, the barrier against saving while a
/// result is being replaced, and the readers of those sections of a result document that every analysis has in common.
/// GUI thread only, the semaphore excepted.
class COrmBasePalette : public QDialog
{
    Q_OBJECT

public:
    /// @p pszName becomes the object name unless it is null. @p bModal as QDialog::setModal.
    COrmBasePalette(QWidget* pParent, const char* pszName, bool bModal, Qt::WindowFlags eFlags);
    ~COrmBasePalette() override;

    bool event(QEvent* pEvent) override;

    // What a palette hears from the host. The bodies are empty here.
    virtual void onDatasetChanged(COrmDataset* pDataset);
    virtual void onSequenceChanged(COrmSequenceDataset* pSequence);
    virtual void onDatasetRemoved(COrmDataset* pDataset);
    virtual void onSequenceAdded(COrmSequenceDataset* pSequence);
    virtual void onSequenceRemoved(COrmSequenceDataset* pSequence);
    /// Called once by the palette itself when its widgets exist.
    virtual void init();
    virtual void onMouseClicked(const QPoint& ptClicked);

    /// Fills the calibration of the record; a document without the section leaves all its texts null and is no failure.
    virtual bool readWellPlateQuantification(CPLResultXMLWrapper& wrapper, SAnalysisBase* pAnalysis);
    /// Fills the surface of the record. False, with the reason in the log, where it is missing or damaged.
    virtual bool readMesh(CPLResultXMLWrapper& wrapper, SAnalysisBase* pAnalysis);
    /// Fills the source volume of the record; @p strKind is "SOLA" or "NOVA". False, with the reason in the log, as for the mesh.
    virtual bool readVolumeData(CPLResultXMLWrapper& wrapper, SAnalysisBase* pAnalysis, QString& strKind);
    /// Fills the image mask of the record. False, with the mask left empty, where it is missing or damaged.
    virtual bool readMask(CPLResultXMLWrapper& wrapper, SAnalysisBase* pAnalysis);

    /// The version of the software that wrote the document; empty where the document does not say. False in that case.
    bool readVersionInformation(CPLResultXMLWrapper& wrapper, QString& strVersion);
    /// Source meshes are written by no analysis of this host: false, and a line in the log.
    bool readSourceMeshes(CPLResultXMLWrapper& wrapper, SAnalysisBase* pAnalysis);
    /// Registered surfaces are written by no analysis of this host: false, and a line in the log.
    bool ReadRegisteredSurface(CPLResultXMLWrapper& wrapper, SAnalysisBase* pAnalysis);

    /// Shows the user what the palette is doing; the text also goes to the log, as often as it is set.
    void setStatusHint(const QString& strHint);
    /// Takes the hint away.
    void cleanupStatusHint();
    /// The hint shown; empty while there is none.
    QString statusHint() const { return m_strStatusHint; }

    /// Waits for @p nPermits of the process-wide five that stand for "nobody is asking whether to save". Any thread.
    static void lockAskSavingResults(int nPermits);
    /// Gives them back. Any thread.
    static void unlockAskSavingResults(int nPermits);

signals:
    /// The hint to show, an empty text to show none. Emitted each time a hint is set or taken away.
    void statusHintChanged(const QString& strHint);

protected:
    void resizeEvent(QResizeEvent* pEvent) override;
    void closeEvent(QCloseEvent* pEvent) override;

    QString m_strAnalysisName; ///< kind of analysis the palette serves; empty unless the palette names itself

private:
    QString m_strStatusHint;
};
