#include "CompareRun.h"

#include "COrmErrorHandler.h"
#include "COrmLog.h"
#include "COrmMessageBox.h"
#include "COrmPreference.h"
#include "COrmProcess.h"
#include "COrmProcessNotifier.h"
#include "COrmSequenceCollection.h"
#include "LongitudinalStudyBrowserView.h"
#include "LongitudinalStudyBrowserWnd.h"

#include <QApplication>
#include <QBuffer>
#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFileInfo>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QSaveFile>
#include <QSet>

#include <GL/gl.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <sys/resource.h>

namespace
{
const QString kSola = QStringLiteral("SOLA");
const QString kNova = QStringLiteral("NOVA");

/// A frame that takes longer will not come.
constexpr int kFrameLimitMs = 60000;

double milliseconds(const QElapsedTimer& clock)
{
    return static_cast<double>(clock.nsecsElapsed()) / 1.0e6;
}
} // namespace

CCompareRun::CCompareRun(const SCompareOptions& options) : m_options(options)
{
    COrmPreference::setStore(QString());
    COrmMessageBox::setResponder(
        [this](const SMessageRequest& request)
        {
            m_objTrace.m_strBox = request.strText;
            return request.bTextButtons ? request.nDefault : static_cast<int>(QMessageBox::Ok);
        });
    m_nLogSink = getLogObject()->addSink(
        [this](const SLogEntry& entry)
        {
            // The tool's own entries name no file; the host's libraries do.
            if (!entry.strFile.isEmpty())
            {
                return;
            }
            m_objTrace.m_lstTexts.append(entry.strMessage);
            if (entry.nLevel == 2 || entry.nLevel == 3)
            {
                m_objTrace.m_lstRefusals.append(entry.strMessage);
            }
        });
    connect(COrmProcess::notifier(), &COrmProcessNotifier::message, this,
            [this](const QString&, int nStep)
            {
                if (nStep == 1)
                {
                    m_objTrace.m_fReadFrom = milliseconds(m_objClock);
                }
            });
}

CCompareRun::~CCompareRun()
{
    getLogObject()->removeSink(m_nLogSink);
    COrmMessageBox::setResponder({});
}

bool CCompareRun::run()
{
    m_pWindow = std::make_unique<CLongitudinalStudyBrowserWnd>(nullptr);
    m_pView = m_pWindow->findChild<CLongitudinalStudyBrowserView*>();
    connect(m_pWindow.get(), &COrmBasePalette::statusHintChanged, this,
            [this](const QString& strHint)
            {
                m_objTrace.m_lstTexts.append(strHint);
                if (strHint == QLatin1String("Updating surface mesh..."))
                {
                    m_objTrace.m_fReadTo = milliseconds(m_objClock);
                }
            });
    openSequences();
    selectUnit();
    m_pWindow->show();
    const bool bView = resizeView();
    loadResults();
    applyLook();
    if (bView)
    {
        measureFrames();
        writePictures();
    }
    writeReport();
    return m_lstReasons.isEmpty();
}

template <class W>
W* CCompareRun::widget(const char* pszName) const
{
    return m_pWindow->findChild<W*>(QLatin1String(pszName));
}

void CCompareRun::openSequences()
{
    m_pSequences = std::make_unique<COrmSequenceCollection>();
    QStringList lstFolders;
    for (const QString& strFolder : qAsConst(m_options.m_lstFolders))
    {
        if (QFileInfo(strFolder).isDir())
        {
            lstFolders.append(strFolder);
        }
        else
        {
            m_lstReasons.append(QStringLiteral("%1 is no folder.").arg(strFolder));
        }
    }
    const SScanOutcome outcome = m_pSequences->open(lstFolders);
    m_lstReasons.append(outcome.m_lstProblems);
    // The markers tell the window which list is which; the sequences follow as the host would report them.
    for (const QString& strKind : {kSola, kNova})
    {
        QList<QString> lstMarker{strKind};
        m_pWindow->updateSequenceNameList(lstMarker);
    }
    COrmBasePalette& palette = *m_pWindow;
    for (COrmSequenceDataset* pSequence : m_pSequences->sequences())
    {
        palette.onSequenceAdded(pSequence);
    }
    if (m_lstReasons.isEmpty() && widget<QListWidget>("m_pSequenceNameLW")->count() == 0)
    {
        m_lstReasons.append(QStringLiteral("There is no sequence with tomography results under the folders."));
    }
}

void CCompareRun::selectUnit()
{
    for (QRadioButton* pUnit : m_pWindow->findChildren<QRadioButton*>())
    {
        if (!m_options.m_strUnit.isEmpty() && pUnit->text() == m_options.m_strUnit)
        {
            pUnit->setChecked(true);
        }
    }
}

QString CCompareRun::unitOf(int nKind) const
{
    const QWidget* pGroup = widget<QWidget>(nKind == 0 ? "m_pSOLAGB" : "m_pNOVAGB");
    for (const QRadioButton* pUnit : pGroup->findChildren<QRadioButton*>())
    {
        if (pUnit->isChecked())
        {
            return pUnit->text();
        }
    }
    return {};
}

bool CCompareRun::resizeView()
{
    // The window grows with a larger view; a smaller one stands in the middle of its place.
    m_pView->setFixedSize(m_options.m_objSize);
    QCoreApplication::processEvents();
    if (m_pView->size() == m_options.m_objSize)
    {
        return true;
    }
    m_lstReasons.append(QStringLiteral("The view cannot be made %1 x %2 pixels; it is %3 x %4.")
                            .arg(m_options.m_objSize.width())
                            .arg(m_options.m_objSize.height())
                            .arg(m_pView->width())
                            .arg(m_pView->height()));
    return false;
}

void CCompareRun::paint()
{
    QCoreApplication::processEvents();
    m_pView->settle();
}

bool CCompareRun::isLoaded(const QString& strKey) const
{
    return m_pView->getLoadedResult().contains(strKey);
}

void CCompareRun::listSequence(int nRow)
{
    auto* pSequences = widget<QListWidget>("m_pSequenceNameLW");
    pSequences->setCurrentRow(nRow);
    QMetaObject::invokeMethod(pSequences, "itemClicked", Q_ARG(QListWidgetItem*, pSequences->item(nRow)));
}

QVector<CCompareRun::SWantedResult> CCompareRun::wantedResults()
{
    QVector<QPair<QString, QRegularExpression>> lstPatterns;
    for (const QString& strPattern : qAsConst(m_options.m_lstPatterns))
    {
        lstPatterns.append({strPattern, CompareOptions::pattern(strPattern)});
    }
    QSet<QString> lstMatched;
    QVector<SWantedResult> lstWanted;
    const auto* pSequences = widget<QListWidget>("m_pSequenceNameLW");
    const auto* pResults = widget<QListWidget>("m_pResultWidget");
    for (int nSequence = 0; nSequence < pSequences->count(); ++nSequence)
    {
        listSequence(nSequence);
        for (int nResult = 0; nResult < pResults->count(); ++nResult)
        {
            const QString strText = pSequences->item(nSequence)->text() + QLatin1Char('/') + pResults->item(nResult)->text();
            bool bWanted = lstPatterns.isEmpty();
            for (const auto& [strPattern, expression] : qAsConst(lstPatterns))
            {
                if (expression.match(strText).hasMatch())
                {
                    lstMatched.insert(strPattern);
                    bWanted = true;
                }
            }
            if (bWanted)
            {
                lstWanted.append({nSequence, nResult});
            }
        }
    }
    for (const QString& strPattern : qAsConst(m_options.m_lstPatterns))
    {
        if (!lstMatched.contains(strPattern))
        {
            m_lstReasons.append(QStringLiteral("No saved result matches \"%1\".").arg(strPattern));
        }
    }
    return lstWanted;
}

void CCompareRun::loadResults()
{
    // Listing a sequence takes results of its other kind out of the view. So all are listed before the first is loaded, and then only
    // those with something to load.
    const auto* pSequences = widget<QListWidget>("m_pSequenceNameLW");
    const auto* pResults = widget<QListWidget>("m_pResultWidget");
    int nListed = -1;
    for (const SWantedResult& wanted : wantedResults())
    {
        if (wanted.m_nSequence != nListed)
        {
            listSequence(wanted.m_nSequence);
            nListed = wanted.m_nSequence;
        }
        const QString strSequence = pSequences->item(wanted.m_nSequence)->text();
        if (QListWidgetItem* pResult = pResults->item(wanted.m_nResult))
        {
            loadResult(pResult, strSequence.left(kSola.size()), strSequence.mid(kSola.size() + 1));
        }
    }
}

void CCompareRun::loadResult(QListWidgetItem* pResult, const QString& strKind, const QString& strSequence)
{
    const QString strName = pResult->text();
    const QString strKey = strSequence + strName;
    auto* pResults = widget<QListWidget>("m_pResultWidget");
    pResults->setCurrentItem(pResult, QItemSelectionModel::ClearAndSelect);
    QMetaObject::invokeMethod(pResults, "itemClicked", Q_ARG(QListWidgetItem*, pResult));

    const int nBefore = m_pView->getLoadedResult().size();
    m_objTrace = SLoadTrace();
    m_objClock.start();
    widget<QPushButton>("m_pLoadButton")->click();
    const double fPress = milliseconds(m_objClock);
    paint();

    if (m_pView->getLoadedResult().size() > nBefore && isLoaded(strKey))
    {
        m_mapTimes.insert(strKey, {m_objTrace.m_fReadTo - m_objTrace.m_fReadFrom, fPress});
        say(QStringLiteral("%1 %2/%3: loaded in %4 ms").arg(strKind, strSequence, strName).arg(fPress, 0, 'f', 0));
        return;
    }
    const QString strReason = failureReason();
    if (m_options.m_lstPatterns.isEmpty() && strReason.contains(QLatin1String("is not compatible with the Selected Unit")))
    {
        say(QStringLiteral("%1 %2/%3: left out, it has another unit").arg(strKind, strSequence, strName));
        return;
    }
    m_objReport.m_lstFailed.append({strKind, strSequence, strName, strReason});
    m_lstReasons.append(QStringLiteral("%1 %2/%3: %4").arg(strKind, strSequence, strName, strReason));
}

QString CCompareRun::failureReason() const
{
    if (!m_objTrace.m_lstRefusals.isEmpty())
    {
        return m_objTrace.m_lstRefusals.constLast();
    }
    for (int nAt = m_objTrace.m_lstTexts.size() - 1; nAt >= 0; --nAt)
    {
        const QString& strText = m_objTrace.m_lstTexts.at(nAt);
        if (strText.startsWith(QLatin1String("Unable")) || strText.startsWith(QLatin1String("Data mismatch")))
        {
            return strText;
        }
    }
    return m_objTrace.m_strBox;
}

void CCompareRun::applyLook()
{
    if (m_options.m_nRotate)
    {
        widget<QAbstractSlider>("m_pThumWheel")->setValue(*m_options.m_nRotate);
    }
    if (m_options.m_strColors.isEmpty() && !m_options.m_objRange && !m_options.m_bLog)
    {
        return;
    }
    // Each kind that is shown gets the look; the panel shows the kind of the sequence that was clicked last.
    for (const QString& strKind : {kSola, kNova})
    {
        if (!(strKind == kSola ? m_pView->containsSOLAResults() : m_pView->containsNOVAResults()))
        {
            continue;
        }
        const QList<sAnalysisBase>& lstResults = m_pView->getAnalysisParams();
        const int nKind = strKind == kSola ? 0 : 1;
        const auto first = std::find_if(lstResults.cbegin(), lstResults.cend(),
                                        [nKind](const sAnalysisBase& result) { return result.nAnalysisType == nKind; });
        if (first == lstResults.cend())
        {
            continue;
        }
        auto* pSequences = widget<QListWidget>("m_pSequenceNameLW");
        const QList<QListWidgetItem*> lstItems =
            pSequences->findItems(strKind + QLatin1Char(' ') + first->strSequenceID, Qt::MatchFixedString);
        if (lstItems.isEmpty())
        {
            continue;
        }
        listSequence(pSequences->row(lstItems.constFirst()));
        paint();
        if (!m_options.m_strColors.isEmpty())
        {
            auto* pTables = widget<QComboBox>("m_pColorTableCB");
            const int nTable = pTables->findText(m_options.m_strColors);
            if (nTable < 0)
            {
                m_lstReasons.append(QStringLiteral("There is no colour table \"%1\".").arg(m_options.m_strColors));
                m_options.m_strColors.clear();
            }
            else
            {
                pTables->setCurrentIndex(nTable);
            }
        }
        if (m_options.m_objRange)
        {
            applyColorRange();
        }
        auto* pLog = widget<QCheckBox>("m_pLogarithmicScaleCheck");
        if (m_options.m_bLog && !pLog->isChecked())
        {
            pLog->click();
        }
        paint();
    }
}

void CCompareRun::applyColorRange()
{
    auto* pMax = widget<QDoubleSpinBox>("m_pColorBarMaxSpinbox");
    auto* pMin = widget<QDoubleSpinBox>("m_pColorBarMinSpinbox");
    pMax->setValue(m_options.m_objRange->m_fMax);
    pMin->setValue(m_options.m_objRange->m_fMin);
    const auto differs = [](double fShown, double fAsked) { return std::abs(fShown - fAsked) > 1.0e-6 * std::abs(fAsked); };
    if (differs(pMax->value(), m_options.m_objRange->m_fMax) || differs(pMin->value(), m_options.m_objRange->m_fMin))
    {
        m_lstReasons.append(QStringLiteral("The colour range %1 to %2 lies outside what the window takes; it is %3 to %4.")
                                .arg(m_options.m_objRange->m_fMin)
                                .arg(m_options.m_objRange->m_fMax)
                                .arg(pMin->value())
                                .arg(pMax->value()));
    }
}

void CCompareRun::measureFrames()
{
    if (m_options.m_nFrames == 0)
    {
        return;
    }
    auto* pWheel = widget<QAbstractSlider>("m_pThumWheel");
    const int nStart = pWheel->value();
    // A repaint that follows the last one too closely is put off by the toolkit, so a frame is over when it has been shown.
    bool bShown = false;
    connect(m_pView, &QOpenGLWidget::frameSwapped, this, [&bShown] { bShown = true; });
    for (int nFrame = 1; nFrame <= m_options.m_nFrames; ++nFrame)
    {
        QCoreApplication::processEvents();
        bShown = false;
        QElapsedTimer clock;
        clock.start();
        pWheel->setValue((nStart + 360 * nFrame / m_options.m_nFrames) % 360);
        m_pView->update();
        while (!bShown && clock.elapsed() < kFrameLimitMs)
        {
            QCoreApplication::processEvents(QEventLoop::AllEvents, kFrameLimitMs);
        }
        if (!bShown)
        {
            m_lstReasons.append(QStringLiteral("The view was not painted within %1 s.").arg(kFrameLimitMs / 1000));
            break;
        }
        m_pView->makeCurrent();
        glFinish();
        m_objReport.m_lstFrameMs.append(milliseconds(clock));
    }
    disconnect(m_pView, &QOpenGLWidget::frameSwapped, this, nullptr);
    pWheel->setValue(nStart);
    say(QStringLiteral("%1 frames, median %2 ms").arg(m_options.m_nFrames).arg(CompareReport::median(m_objReport.m_lstFrameMs), 0, 'f', 1));
}

void CCompareRun::writePictures()
{
    paint();
    if (!m_options.m_strViewFile.isEmpty())
    {
        savePicture(m_options.m_strViewFile, m_pView->getPrintImage());
    }
    if (!m_options.m_strWindowFile.isEmpty())
    {
        // The view's own picture is the one on screen; a grab of the window would take the blending's leftovers for transparency.
        QImage window = m_pWindow->grab().toImage();
        QPainter(&window).drawImage(m_pView->mapTo(m_pWindow.get(), QPoint()), m_pView->getPrintImage());
        savePicture(m_options.m_strWindowFile, window);
    }
}

SLoadedResult CCompareRun::figures(const sAnalysisBase& result) const
{
    // Reading figures needs no write access: copies share everything.
    sAnalysisBase record = result;
    const QPair<double, double> times = m_mapTimes.value(record.strSequenceID + record.strResultName, {0.0, 0.0});
    SLoadedResult figures;
    figures.m_strKind = record.nAnalysisType == 0 ? kSola : kNova;
    figures.m_strSequence = record.strSequenceID;
    figures.m_strName = record.strResultName;
    figures.m_strUnit = unitOf(record.nAnalysisType);
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

void CCompareRun::writeReport()
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
    if (!m_options.m_strReportFile.isEmpty())
    {
        save(m_options.m_strReportFile, CompareReport::json(m_objReport));
    }
}

void CCompareRun::savePicture(const QString& strFile, const QImage& image)
{
    const QString strSuffix = QFileInfo(strFile).suffix().toLower();
    QByteArray aBytes;
    QBuffer buffer(&aBytes);
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, strSuffix.isEmpty() ? "PNG" : strSuffix.toLatin1().constData()))
    {
        m_lstReasons.append(QStringLiteral("%1: pictures cannot be written as \"%2\".").arg(strFile, strSuffix));
        return;
    }
    save(strFile, aBytes);
}

void CCompareRun::save(const QString& strFile, const QByteArray& aBytes)
{
    QSaveFile file(strFile);
    if (!file.open(QIODevice::WriteOnly) || file.write(aBytes) != aBytes.size() || !file.commit())
    {
        m_lstReasons.append(QStringLiteral("%1 cannot be written: %2").arg(strFile, file.errorString()));
        return;
    }
    say(QStringLiteral("Written: %1").arg(strFile));
}

void CCompareRun::say(const QString& strText) const
{
    if (!m_options.m_bQuiet)
    {
        std::printf("%s\n", qPrintable(strText));
        std::fflush(stdout);
    }
}
