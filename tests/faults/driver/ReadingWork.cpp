// "read-sola-1.0" and its like: a saved result read into the record; "-cells" for a calibrated one, "-mismatch" for a calibrated one
// while the other unit is selected. "refine": a source volume made finer within its surface.

#include "CFaultRecorder.h"
#include "CFaultWork.h"
#include "RecordText.h"

#include "AnalysisResultXMLWrapper.h"
#include "COrmBasePalette.h"
#include "CStudyWriter.h"
#include "PaletteWalkHost.h"
#include "ResultDocumentWalk.h"
#include "ResultUnits.h"
#include "SourceVoxels.h"
#include "VolumeSurfaceConversion.h"

#include <QElapsedTimer>

namespace
{
class CReadingWork : public CFaultWork
{
public:
    CReadingWork(int nKind, const QString& strVersion, bool bCalibrated, bool bMismatch)
        : m_nKind(nKind), m_bMismatch(bMismatch), m_objPalette(nullptr, nullptr, false, Qt::WindowFlags())
    {
        SResultDocument objDocument(nKind, strVersion);
        objDocument.setSphere(0);
        objDocument.setCube(2, 1.0);
        if (bCalibrated)
        {
            objDocument.strMeasurementType = QStringLiteral("Cells");
            objDocument.strPerUnitValue = QStringLiteral("25");
        }
        m_strUnit = nKind == 1 ? ResultUnits::comparedPmolPerMolarCm() : QStringLiteral("photons/sec");
        if (bCalibrated && !bMismatch)
            m_strUnit = QStringLiteral("cells");
        m_strFile = m_objStudy.addResult(QStringLiteral("SEQ1"), QStringLiteral("R"), objDocument);
        m_objRecorder.watchHints(m_objPalette);
    }

    QByteArray folder() const override { return m_objStudy.folder().toLocal8Bit(); }
    bool isRefused() const override { return m_bRead == m_bMismatch; }

    void prepare() override
    {
        m_objRecorder.clear();
        m_pSOLA = std::make_unique<SSOLAAnalysis>();
        m_pNOVA = std::make_unique<SNOVAAnalysis>();
        m_bRead = false;
    }

    void run() override
    {
        const ResultDocument::STarget objTarget =
            m_nKind == 1 ? ResultDocument::STarget{*m_pNOVA, m_pNOVA->nImageSourceCount, m_pNOVA->lstImageSources}
                         : ResultDocument::STarget{*m_pSOLA, m_pSOLA->nWavelengthCount, m_pSOLA->lstWavelengths};
        CPaletteWalkHost objHost(m_objPalette, QString(), m_strUnit);
        m_bRead = ResultDocument::read(m_nKind == 1 ? ResultDocument::nova() : ResultDocument::sola(), objHost, m_strFile, objTarget);
    }

    QString wrongOutcome(const OrmFaults::SPlan& sPlan, const OrmFaults::SRun& sRun) override
    {
        if (m_bMismatch)
            return m_bRead ? QStringLiteral("a result in cells was read as one in photons/sec") : QString();
        if (!m_bRead)
        {
            // Where nothing is to be had for ever, not even a text can be made.
            const bool bSaid = !m_objRecorder.reasons().isEmpty() || (sPlan.bForEver && sPlan.eKind == OrmFaults::EKind::Memory);
            return bSaid ? QString() : QStringLiteral("nobody said why it was not read");
        }
        QByteArray baDigest = m_nKind == 1 ? RecordText::digest(*m_pNOVA) : RecordText::digest(*m_pSOLA);
        baDigest += m_pSOLA->lstWavelengths.join(',').toUtf8() + m_pNOVA->lstImageSources.join(',').toUtf8();
        if (sRun.nHit == 0)
            m_baSound = baDigest;
        return baDigest == m_baSound ? QString() : QStringLiteral("it was read, but not whole: ") + m_objRecorder.reasons().join("; ");
    }

private:
    int m_nKind;
    bool m_bMismatch;
    CStudyWriter m_objStudy;
    CFaultRecorder m_objRecorder;
    COrmBasePalette m_objPalette;
    QString m_strUnit;
    QString m_strFile;
    std::unique_ptr<SSOLAAnalysis> m_pSOLA;
    std::unique_ptr<SNOVAAnalysis> m_pNOVA;
    QByteArray m_baSound; ///< of the document without a fault
    bool m_bRead = false;
};

/// What the refinement throws is caught where the load ends; a volume is either refined or as it was.
class CRefiningWork : public CFaultWork
{
public:
    CRefiningWork()
    {
        SResultDocument objDocument;
        objDocument.setSphere(1);
        const QString strFile = m_objStudy.addResult(QStringLiteral("SEQ1"), QStringLiteral("R"), objDocument);
        AnalysisResultXMLWrapper objXML;
        m_bReady =
            objXML.loadXMLFile(strFile) && m_objMesh.loadFromXML(&objXML) && m_objVolume.loadFromXML(&objXML, QStringLiteral("SOLA"));
    }

    bool isRefused() const override { return !m_bRefined; }

    void prepare() override
    {
        m_pVolume = std::make_unique<C3DVolume>(m_objVolume);
        m_bRefined = false;
    }

    void run() override
    {
        try
        {
            IA3D::mesh objMesh;
            IA3D::mesh_utils::viewinfo objView;
            VolumeSurfaceConversion::convert(m_objMesh, objMesh);
            interpolateSourceVoxels(m_pVolume.get(), objMesh, objView, 0.25f);
            m_bRefined = true;
        }
        catch (const std::bad_alloc&)
        {
        }
    }

    QString wrongOutcome(const OrmFaults::SPlan&, const OrmFaults::SRun& sRun) override
    {
        if (!m_bReady)
            return QStringLiteral("the sample cannot be read");
        SSOLAAnalysis objRecord;
        objRecord.objVolume = *m_pVolume;
        const QByteArray baDigest = RecordText::digest(objRecord);
        objRecord.objVolume = m_objVolume;
        if (sRun.nHit == 0 && m_bRefined)
            m_baSound = baDigest;
        if (m_bRefined)
            return baDigest == m_baSound ? QString() : QStringLiteral("it passes for refined and is not");
        return baDigest == RecordText::digest(objRecord) ? QString() : QStringLiteral("it is half refined");
    }

private:
    CStudyWriter m_objStudy;
    C3DMesh m_objMesh{QString()};
    C3DVolume m_objVolume{QString()};
    std::unique_ptr<C3DVolume> m_pVolume;
    QByteArray m_baSound;
    bool m_bReady = false;
    bool m_bRefined = false;
};
} // namespace

std::unique_ptr<CFaultWork> readingWork(const QString& strName)
{
    if (strName == QLatin1String("refine"))
        return std::make_unique<CRefiningWork>();
    const QStringList lstParts = strName.split('-');
    if (lstParts.value(0) != QLatin1String("read"))
        return nullptr;
    const QString strMore = lstParts.value(3);
    return std::make_unique<CReadingWork>(lstParts.value(1) == QLatin1String("nova") ? 1 : 0, lstParts.value(2), !strMore.isEmpty(),
                                          strMore == QLatin1String("mismatch"));
}
