#include "COrmXYPlot.h"

#include "COrmErrorHandler.h"
#include "COrmXYPlotTable.h"
#include "COrmXYPlot_p.h"
#include "OrmFileWriter.h"

#include <QActionGroup>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>
#include <QStandardPaths>

void COrmXYPlot::contextMenuEvent(QContextMenuEvent* pEvent)
{
    m_p->m_pPointer->reset();
    auto* pMenu = new QMenu(this);
    pMenu->setAttribute(Qt::WA_DeleteOnClose);
    const auto fnMode = [this, pMenu, pModes = new QActionGroup(pMenu)](const QString& strText, int nMode)
    {
        QAction* pAction = pMenu->addAction(strText, this, [this, nMode] { setCurrentDisplayMode(nMode); });
        pAction->setCheckable(true);
        pAction->setChecked(getCurrentDisplayMode() == nMode);
        pAction->setActionGroup(pModes);
        pAction->setEnabled(!m_hashDataLines.isEmpty()); // a mode belongs to the lines
    };
    fnMode(tr("Line"), LineMode);
    fnMode(tr("Line and Points"), LineAndPointsMode);
    fnMode(tr("Points"), PointsMode);
    fnMode(tr("Bars"), BarsMode);
    pMenu->addSeparator();
    QAction* pLogarithmic = pMenu->addAction(tr("Logarithmic Axis"), this, &COrmXYPlot::setLogarithmic);
    pLogarithmic->setCheckable(true);
    pLogarithmic->setChecked(isLogarithmic());
    pMenu->addAction(tr("Show Everything"), this, &COrmXYPlot::showEverything)->setEnabled(isZoomed());
    pMenu->addSeparator();
    pMenu->addAction(tr("Copy Picture"), this, &COrmXYPlot::copyPicture);
    pMenu->addAction(tr("Copy Numbers"), this, &COrmXYPlot::copyNumbers)->setEnabled(!m_hashDataLines.isEmpty());
    QAction* pSave = pMenu->addAction(tr("Save Numbers..."));
    pSave->setEnabled(!m_hashDataLines.isEmpty());
    // The dialog runs its own event loop: it opens when the menu has gone.
    connect(pSave, &QAction::triggered, this, &COrmXYPlot::askAndSaveNumbers, Qt::QueuedConnection);
    pMenu->popup(pEvent->globalPos());
    pEvent->accept();
}

void COrmXYPlot::copyPicture()
{
    QApplication::clipboard()->setImage(getPrintImage());
}

void COrmXYPlot::copyNumbers()
{
    QApplication::clipboard()->setText(QString::fromUtf8(numbers()));
}

QByteArray COrmXYPlot::numbers() const
{
    QVector<COrmXYPlotTable::SColumn> vecColumns;
    for (const QString& strName : m_p->m_pSheet->lineNames())
    {
        const DATALINE_INFO* pLine = m_hashDataLines.value(strName);
        vecColumns.append({strName, pLine->vecX, pLine->vecY});
    }
    return COrmXYPlotTable::csv(xAxisLabel(), yAxisLabel(), vecColumns);
}

bool COrmXYPlot::saveNumbers(const QString& strPath, QString& strReason) const
{
    strReason = OrmFileWriter::replace(strPath, numbers());
    return strReason.isEmpty();
}

void COrmXYPlot::askAndSaveNumbers()
{
    if (m_p->m_strFolder.isEmpty())
        m_p->m_strFolder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    QFileDialog objDialog(this, tr("Save Numbers"), m_p->m_strFolder, tr("Comma-separated values (*.csv)"));
    objDialog.setAcceptMode(QFileDialog::AcceptSave);
    objDialog.setDefaultSuffix(QStringLiteral("csv"));
    objDialog.selectFile(QStringLiteral("plot.csv"));
    if (objDialog.exec() != QDialog::Accepted || objDialog.selectedFiles().isEmpty())
        return;
    const QString strPath = objDialog.selectedFiles().constFirst();
    m_p->m_strFolder = QFileInfo(strPath).path();
    QString strReason;
    if (!saveNumbers(strPath, strReason))
        COrmErrorHandler::errorMessage(this, eStatusFileNotWritable, QDir::toNativeSeparators(strPath) + QStringLiteral(": ") + strReason);
}
