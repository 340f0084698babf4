#include "COrmXYPlot.h"

#include "COrmXYPlot_p.h"

#include <QEvent>
#include <QKeyEvent>
#include <QResizeEvent>

COrmXYPlot::COrmXYPlot(QWidget* pParent, const char* pName) : QWidget(pParent), m_p(std::make_unique<SPrivate>())
{
    setObjectName(QString::fromUtf8(pName));
    setAccessibleName(tr("Plot"));
    setFocusPolicy(Qt::StrongFocus);
    m_p->m_pSheet = new CPlotSheet(this);
    m_p->m_pPointer = new CPlotPointer(this, m_p->m_pSheet);
    // What is told beside a point is told to those who can not see it, too.
    connect(m_p->m_pPointer, &CPlotPointer::toldChanged, this,
            [this] { setAccessibleDescription(m_p->m_pPointer->told().join(QLatin1Char('\n'))); });
    m_p->m_pSheet->layOut();
}

COrmXYPlot::~COrmXYPlot()
{
    qDeleteAll(m_hashDataLines);
}

void COrmXYPlot::setXAxisLabel(QString strLabel)
{
    m_p->m_pSheet->setXLabel(strLabel);
    m_p->m_pPointer->reset();
}

void COrmXYPlot::setYAxisLabel(QString strLabel)
{
    m_p->m_pSheet->setYLabel(strLabel);
    m_p->m_pPointer->reset();
}

QString COrmXYPlot::xAxisLabel() const
{
    return m_p->m_pSheet->xLabel();
}

QString COrmXYPlot::yAxisLabel() const
{
    return m_p->m_pSheet->yLabel();
}

// ---- Looks --------------------------------------------------------------------------------------------------------------

bool COrmXYPlot::getDisplaySettings(QString strName, DISPLAY_SETTINGS& settings)
{
    const DATALINE_INFO* pLine = m_hashDataLines.value(strName);
    if (pLine == nullptr)
        return false;
    settings = pLine->objDisplaySettings;
    return true;
}

void COrmXYPlot::setDisplaySettings(QString strName, DISPLAY_SETTINGS settings)
{
    DATALINE_INFO* pLine = m_hashDataLines.value(strName);
    if (pLine == nullptr)
        return;
    pLine->objDisplaySettings = settings;
    m_p->m_nDisplayMode = settings.nDisplayMode;
    m_p->m_pSheet->setLook(strName, settings);
    calculateLayout();
}

int COrmXYPlot::getCurrentDisplayMode()
{
    return m_p->m_nDisplayMode;
}

void COrmXYPlot::setCurrentDisplayMode(int nDisplayMode)
{
    m_p->m_nDisplayMode = nDisplayMode;
    for (auto it = m_hashDataLines.constBegin(); it != m_hashDataLines.constEnd(); ++it)
    {
        it.value()->objDisplaySettings.nDisplayMode = nDisplayMode;
        m_p->m_pSheet->setLook(it.key(), it.value()->objDisplaySettings);
    }
    calculateLayout();
}

void COrmXYPlot::setLogarithmic(bool bLogarithmic)
{
    m_p->m_pSheet->setLogarithmic(bLogarithmic);
    m_p->m_pPointer->reset();
}

bool COrmXYPlot::isLogarithmic() const
{
    return m_p->m_pSheet->isLogarithmic();
}

bool COrmXYPlot::isZoomed() const
{
    return m_p->m_pSheet->isZoomed();
}

void COrmXYPlot::showEverything()
{
    m_p->m_pSheet->showEverything();
    m_p->m_pPointer->reset();
}

// ---- Lines --------------------------------------------------------------------------------------------------------------

void COrmXYPlot::clear()
{
    m_p->m_pSheet->removeLines();
    qDeleteAll(m_hashDataLines);
    m_hashDataLines.clear();
    m_p->m_pPointer->reset();
}

bool COrmXYPlot::determineRanges()
{
    COrmXYPlotAxis::SDataRanges sRanges;
    for (const DATALINE_INFO* pLine : qAsConst(m_hashDataLines))
        sRanges.add(pLine->vecX, pLine->vecY);
    m_p->m_pSheet->setDataRanges(sRanges);
    return sRanges.m_nPoints > 0;
}

void COrmXYPlot::calculateLegendWidthAndHeight()
{
    m_p->m_pSheet->measureLegend();
}

void COrmXYPlot::calculateLayout()
{
    m_p->m_pSheet->touch();
    m_p->m_pPointer->reset();
}

void COrmXYPlot::setXAxisRangeStep(double fStep)
{
    m_p->m_pSheet->setXStep(fStep);
    calculateLayout();
}

double COrmXYPlot::xAxisRangeStep() const
{
    return m_p->m_pSheet->xStep();
}

void COrmXYPlot::require(bool bHolds, const char* pCondition, int nLine)
{
    if (!bHolds)
        qt_assert_x("addDataLine", pCondition, "OrmXYPlot", nLine);
}

COrmXYPlot::DATALINE_INFO* COrmXYPlot::lineForNewValues(const QString& strName, int nVals)
{
    DATALINE_INFO* pLine = m_hashDataLines.value(strName);
    if (pLine == nullptr)
        pLine = new DATALINE_INFO;
    pLine->vecX.clear();
    pLine->vecY.clear();
    pLine->vecExtraA.clear();
    pLine->vecExtraB.clear();
    pLine->nVals = nVals;
    pLine->nExtraA = 0;
    pLine->nExtraB = 0;
    pLine->vecX.reserve(nVals);
    pLine->vecY.reserve(nVals);
    return pLine;
}

bool COrmXYPlot::takeNewValues(const QString& strName, DATALINE_INFO* pLine)
{
    if (!m_hashDataLines.contains(strName))
        m_hashDataLines.insert(strName, pLine);
    if (!determineRanges())
    {
        clear();
        return false;
    }
    m_p->m_pSheet->setLine(strName, pLine->vecX, pLine->vecY, pLine->objDisplaySettings);
    calculateLegendWidthAndHeight();
    calculateLayout();
    return true;
}

// ---- The widget ---------------------------------------------------------------------------------------------------------

QImage COrmXYPlot::getPrintImage()
{
    if (size().isEmpty())
        resize(sizeHint());
    ensurePolished();
    m_p->m_pSheet->setGeometry(rect());
    m_p->m_pSheet->ensurePolished();
    m_p->m_pSheet->layOut();
    return m_p->m_pSheet->grab().toImage();
}

QSize COrmXYPlot::sizeHint() const
{
    return {640, 480};
}

QSize COrmXYPlot::minimumSizeHint() const
{
    return {240, 180};
}

void COrmXYPlot::resizeEvent(QResizeEvent* pEvent)
{
    QWidget::resizeEvent(pEvent);
    m_p->m_pSheet->setGeometry(rect());
    m_p->m_pPointer->reset();
}

void COrmXYPlot::changeEvent(QEvent* pEvent)
{
    QWidget::changeEvent(pEvent);
    if (pEvent->type() == QEvent::FontChange || pEvent->type() == QEvent::StyleChange)
        calculateLayout();
}

void COrmXYPlot::keyPressEvent(QKeyEvent* pEvent)
{
    if (!m_p->m_pPointer->takeKey(*pEvent))
        QWidget::keyPressEvent(pEvent);
}
