#include "CompareRun.h"

#include "COrmXYPlot.h"
#include "OrmFileWriter.h"
#include "OrmImageFile.h"
#include "ShownState.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QPainter>
#include <QTabWidget>

#include <sys/resource.h>

namespace
{
constexpr int kPlotsTab = 1;

/// Picks an entry as a person would.
void pick(QComboBox* pCombo, int nEntry)
{
    pCombo->setCurrentIndex(nEntry);
    QMetaObject::invokeMethod(pCombo, "activated", Q_ARG(int, nEntry));
}
} // namespace

void CCompareRun::writePictures()
{
    // Which result was clicked last is an accident of loading, and no part of a figure.
    m_pView->getSelectedList().clear();
    m_pView->update();
    paint();
    if (m_options.m_bUsualFiles && m_pView->getAnalysisParams().isEmpty())
    {
        return;
    }
    if (!m_options.m_strViewFile.isEmpty())
    {
        savePicture(m_options.m_strViewFile, m_pView->getPrintImage(), QStringLiteral("view"));
    }
    if (!m_options.m_strWindowFile.isEmpty())
    {
        // The view's own picture is the one on screen; a grab of the window would take the blending's leftovers for transparency.
        QImage window = m_pWindow->grab().toImage();
        QPainter(&window).drawImage(m_pView->mapTo(m_pWindow.get(), QPoint()), m_pView->getPrintImage());
        savePicture(m_options.m_strWindowFile, window, QStringLiteral("window"));
    }
}

void CCompareRun::writePlots()
{
    if (m_options.m_lstPlots.isEmpty())
    {
        return;
    }
    widget<QTabWidget>("m_p3DBrowserTabWidget")->setCurrentIndex(kPlotsTab);
    auto* pPlot = m_pWindow->findChild<COrmXYPlot*>();
    for (const SPlotRequest& request : qAsConst(m_options.m_lstPlots))
    {
        const bool bKinds[] = {m_pView->containsSOLAResults(), m_pView->containsNOVAResults()};
        const int nKind = request.m_nKind >= 0 ? request.m_nKind : (bKinds[0] ? 0 : 1);
        if (!bKinds[nKind])
        {
            if (m_options.m_bUsualFiles)
            {
                continue;
            }
            fail(
                QStringLiteral("%1: there is no %2 to plot.")
                    .arg(request.m_strFile, request.m_nKind >= 0 ? kindName(nKind) + QStringLiteral(" result") : QStringLiteral("result")));
            continue;
        }
        pick(widget<QComboBox>("m_pAnalysisSelectCB"), nKind);
        pick(widget<QComboBox>("m_pPlotSelectCB"), request.m_nMeasure);
        QCoreApplication::processEvents();
        savePicture(request.m_strFile, pPlot->getPrintImage(),
                    QStringLiteral("plot of %1 %2").arg(kindName(nKind), widget<QComboBox>("m_pPlotSelectCB")->currentText()));
    }
}

void CCompareRun::collectFigures()
{
    for (const sAnalysisBase& result : qAsConst(m_pView->getAnalysisParams()))
    {
        m_objReport.m_lstResults.append(figures(result));
    }
    float fSolaMin = -1.0F;
    float fSolaMax = -1.0F;
    float fNovaMin = -1.0F;
    float fNovaMax = -1.0F;
    m_pView->getAggregateMinMax(&fSolaMin, &fSolaMax, &fNovaMin, &fNovaMax);
    m_objReport.m_objRange = {fSolaMin, fSolaMax, fNovaMin, fNovaMax};
    if (m_pView->containsSOLAResults())
    {
        m_objReport.m_objBar.m_fSolaMin = m_pView->getSOLAColorPalette()->imageMin();
        m_objReport.m_objBar.m_fSolaMax = m_pView->getSOLAColorPalette()->imageMax();
    }
    if (m_pView->containsNOVAResults())
    {
        m_objReport.m_objBar.m_fNovaMin = m_pView->getNOVAColorPalette()->imageMin();
        m_objReport.m_objBar.m_fNovaMax = m_pView->getNOVAColorPalette()->imageMax();
    }
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    m_objReport.m_fPeakRssMb = static_cast<double>(usage.ru_maxrss) / 1024.0;
}

void CCompareRun::writeTables()
{
    if (!m_options.m_strReportFile.isEmpty())
    {
        save(m_options.m_strReportFile, CompareReport::json(m_objReport));
    }
    if (!m_options.m_strTableFile.isEmpty())
    {
        save(m_options.m_strTableFile, CompareReport::csv(m_objReport));
    }
}

SLoadedResult CCompareRun::figures(const sAnalysisBase& result) const
{
    // Reading figures needs no write access: copies share everything.
    sAnalysisBase record = result;
    const QPair<double, double> times = m_mapTimes.value(record.strSequenceID + record.strResultName, {0.0, 0.0});
    SLoadedResult figures;
    figures.m_strKind = kindName(record.nAnalysisType);
    figures.m_strSequence = record.strSequenceID;
    figures.m_strName = record.strResultName;
    figures.m_strUnit = ShownState::unitOf(*m_pWindow, record.nAnalysisType);
    figures.m_nVertices = record.objMesh.getNumOfVertices();
    figures.m_nTriangles = record.objMesh.getNumOfTriangles();
    figures.m_nVoxels = record.objVolume.getNoOfVoxels();
    figures.m_fVoxelSize = static_cast<double>(record.objVolume.getVoxelSize());
    figures.m_fMin = static_cast<double>(record.objVolume.getAttribMinValue());
    figures.m_fMax = static_cast<double>(record.objVolume.getAttribMaxValue());
    figures.m_fTotal = static_cast<double>(record.objVolume.getTotalFluxForSelectedVoxels(false));
    figures.m_fSelectedTotal = static_cast<double>(record.objVolume.getTotalFluxForSelectedVoxels(true));
    figures.m_fReducedChi2 = record.dReducedChi2;
    figures.m_fFinalVoxelSize = record.dFinalVoxelSize;
    figures.m_fStartVoxelSize = record.dStartingVoxelSize;
    figures.m_lstWavelengths = record.mapPhotonDensity.keys();
    figures.m_fLoadMs = times.first;
    figures.m_fPressMs = times.second;
    return figures;
}

QString CCompareRun::shownName(const QString& strFile) const
{
    // The usual files of a study get to their folder at the end.
    return m_options.m_bUsualFiles ? QDir(m_options.m_strOutFolder).filePath(QFileInfo(strFile).fileName()) : strFile;
}

void CCompareRun::save(const QString& strFile, const QByteArray& aBytes)
{
    const QString strReason = OrmFileWriter::replace(strFile, aBytes);
    if (!strReason.isEmpty())
    {
        fail(QStringLiteral("%1 cannot be written: %2").arg(shownName(strFile), strReason));
        return;
    }
    say(QStringLiteral("Written: %1").arg(shownName(strFile)));
}
