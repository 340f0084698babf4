#pragma once

// What the tests of the plots tab share: a study with numbers that are known, a window on it, and looks at the plot.

#include "WindowTestTools.h"

#include "COrmXYPlot.h"

namespace PlotsTabTest
{
const QString g_strQuantification = QStringLiteral("Quantification Profile");
const QString g_strChi2 = QStringLiteral("Reduced Chi-Squared profile");
const QString g_strFinal = QStringLiteral("Final Voxel Size");
const QString g_strStarting = QStringLiteral("Starting Voxel Size");

/// What is seen of a line's look.
inline QStringList lookOf(COrmXYPlot& objPlot, const QString& strLine)
{
    DISPLAY_SETTINGS sLook;
    if (!objPlot.getDisplaySettings(strLine, sLook))
    {
        return {};
    }
    return {sLook.lineColor.name(),
            QString::number(sLook.nDisplayMode),
            sLook.objPointProperties.pointColor.name(),
            sLook.objPointProperties.bPointVisible ? QStringLiteral("points") : QStringLiteral("no points"),
            QString::number(sLook.objPointProperties.nPointStyle),
            QString::number(sLook.objPointProperties.nPointSize)};
}

/// The look of every first line in a display mode.
inline QStringList firstLook(int nMode = 2)
{
    return {QColor(Qt::blue).name(),  QString::number(nMode), QColor(Qt::red).name(),
            QStringLiteral("points"), QStringLiteral("0"),    QStringLiteral("7")};
}

inline QStringList lines(const COrmXYPlot& objPlot)
{
    QStringList lstNames = objPlot.dataLines().keys();
    lstNames.sort();
    return lstNames;
}

inline QVector<double> yValues(const COrmXYPlot& objPlot, const QString& strLine)
{
    const COrmXYPlot::DATALINE_INFO* pLine = objPlot.dataLines().value(strLine);
    return pLine != nullptr ? pLine->vecY : QVector<double>();
}

inline QVector<double> xValues(const COrmXYPlot& objPlot, const QString& strLine)
{
    const COrmXYPlot::DATALINE_INFO* pLine = objPlot.dataLines().value(strLine);
    return pLine != nullptr ? pLine->vecX : QVector<double>();
}

/// Number of pixels of exactly this colour.
inline int pixelsOf(const QImage& imgSeen, const QColor& clrWanted)
{
    int nPixels = 0;
    for (int y = 0; y < imgSeen.height(); ++y)
    {
        for (int x = 0; x < imgSeen.width(); ++x)
        {
            nPixels += imgSeen.pixel(x, y) == clrWanted.rgb() ? 1 : 0;
        }
    }
    return nPixels;
}

/// A study of six luminescent results in S1 ("r1" ... "r6") and three fluorescent ones in N1 ("n1" ...). Result k of a kind has k times
/// the plain voxel values, a reduced chi-squared of k + 0.25, a final voxel size of k / 8 and a starting one of k.
class CPlotStudy
{
public:
    CPlotStudy()
    {
        m_objWriter.addSequence(QStringLiteral("S1"));
        m_objWriter.addSequence(QStringLiteral("N1"), SSequenceLook::fluorescent());
        for (int k = 1; k <= 6; ++k)
        {
            addResult(SResultDocument::SOLA, k, QString::number(k + 0.25));
        }
        for (int k = 1; k <= 3; ++k)
        {
            addResult(SResultDocument::NOVA, k, QString::number(k + 0.25));
        }
    }

    /// Adds result k of a kind with this text as its reduced chi-squared; null leaves the row out.
    void addResult(int nKind, int k, const QString& strChi2)
    {
        const bool bNOVA = nKind == SResultDocument::NOVA;
        SResultDocument objDocument(nKind);
        objDocument.strSequenceID = bNOVA ? QStringLiteral("N1") : QStringLiteral("S1");
        objDocument.setCube(4, 1.0, static_cast<float>(k));
        objDocument.lstResults = {{QStringLiteral("Final voxel size (mm)"), QString::number(k / 8.0)},
                                  {bNOVA ? QStringLiteral("Starting vsize") : QStringLiteral("Starting vsize (best)"), QString::number(k)}};
        if (!strChi2.isNull())
        {
            objDocument.lstResults.append({QStringLiteral("Reduced Chi2"), strChi2});
        }
        m_objWriter.addResult(objDocument.strSequenceID, (bNOVA ? QStringLiteral("n") : QStringLiteral("r")) + QString::number(k),
                              objDocument);
    }

    QString folder() const { return m_objWriter.folder(); }

private:
    CStudyWriter m_objWriter;
};

/// The window on that study, with its plot at hand.
class CPlotWindow : public CToolWindow
{
public:
    CPlotWindow() { open(m_objStudy.folder()); }
    explicit CPlotWindow(const std::function<void(CPlotStudy&)>& fnChange)
    {
        fnChange(m_objStudy);
        open(m_objStudy.folder());
    }

    /// Loads results one press each, and lets a frame be painted after each.
    void loadEach(const QString& strEntry, const QStringList& lstNames)
    {
        chooseSequence(strEntry);
        for (const QString& strName : lstNames)
        {
            load({strName});
            WindowTest::paint(*this);
        }
        window().updateUIControls();
    }
    void loadSOLA(int nResults)
    {
        QStringList lstNames;
        for (int k = 1; k <= nResults; ++k)
        {
            lstNames.append(QStringLiteral("r%1").arg(k));
        }
        loadEach(QStringLiteral("SOLA S1"), lstNames);
    }
    void loadNOVA(int nResults)
    {
        QStringList lstNames;
        for (int k = 1; k <= nResults; ++k)
        {
            lstNames.append(QStringLiteral("n%1").arg(k));
        }
        loadEach(QStringLiteral("NOVA N1"), lstNames);
    }
    /// Takes a result out of the view as its own menu does, and tells the window.
    void remove(const QString& strSequenceID, const QString& strResult)
    {
        QList<sAnalysisBase>& lstResults = view().getAnalysisParams();
        for (int i = lstResults.size() - 1; i >= 0; --i)
        {
            if (lstResults.at(i).strSequenceID == strSequenceID && lstResults.at(i).strResultName == strResult)
            {
                lstResults.removeAt(i);
            }
        }
        view().getLoadedResult().removeOne(strSequenceID + strResult);
        emit view().upadteAnlysisParameters(strSequenceID, strResult);
        WindowTest::paint(*this);
    }

    COrmXYPlot& plot() { return *window().findChild<COrmXYPlot*>(); }
    QComboBox* measures() { return get<QComboBox>("m_pPlotSelectCB"); }
    QComboBox* kinds() { return get<QComboBox>("m_pAnalysisSelectCB"); }
    QTabWidget* tabs() { return get<QTabWidget>("m_p3DBrowserTabWidget"); }
    void showPlots() { tabs()->setCurrentIndex(1); }

    /// Chooses an entry with the keyboard, as a user does.
    static void choose(QComboBox* pCombo, int nIndex)
    {
        if (!pCombo->isEnabled())
        {
            TestWidgets::fail(QStringLiteral("The combo is off"));
        }
        pCombo->setFocus();
        while (pCombo->currentIndex() != nIndex)
        {
            QTest::keyClick(pCombo, pCombo->currentIndex() < nIndex ? Qt::Key_Down : Qt::Key_Up);
        }
    }

    /// The sum of the voxel values of a tile, added up here.
    double total(int nTile)
    {
        double fSum = 0.0;
        for (const C3DVolume::Voxel& objVoxel : view().getAnalysisParams().at(nTile).objVolume.voxels())
        {
            fSum += static_cast<double>(objVoxel.fValue);
        }
        return fSum;
    }

private:
    CPlotStudy m_objStudy;
};
} // namespace PlotsTabTest
