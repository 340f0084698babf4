// Draws how the cost of each work grows with its size, from what the measurements wrote with --benchmark_out: size and processor time, both
// as multiples of those of the smallest size, beside the line of a cost that grows as its data do. Needs no display.
//
//     growth PICTURE.png RESULTS.json...

#include <qwt_legend.h>
#include <qwt_plot.h>
#include <qwt_plot_curve.h>
#include <qwt_plot_grid.h>
#include <qwt_scale_draw.h>
#include <qwt_scale_engine.h>
#include <qwt_symbol.h>
#include <qwt_text.h>

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

namespace
{
/// One work, and how its measurements are found.
struct SWork
{
    const char* pTitle;
    const char* pUnit;    ///< what its size counts
    const char* pPattern; ///< matches the name of a measurement and captures its size
    double fPower;        ///< of the captured number, that counts the units
    QColor clr;
    QwtSymbol::Style eSymbol;
    QMap<double, double> mapTimes; ///< milliseconds of processor time by size
};

std::vector<SWork> works()
{
    return {
        {"Document, version 1.0", "vertices", "^document/version:1/vertices:(\\d+)", 1.0, QColor(0xd5, 0x5e, 0x00), QwtSymbol::Ellipse, {}},
        {"Document, version 2.0", "vertices", "^document/version:2/vertices:(\\d+)", 1.0, QColor(0xe6, 0x9f, 0x00), QwtSymbol::Rect, {}},
        {"Refinement", "voxels", "^refinement/(\\d+)", 3.0, QColor(0x00, 0x72, 0xb2), QwtSymbol::Diamond, {}},
        {"Refinement in a surface", "voxels", "^refinementInSurface/(\\d+)", 3.0, QColor(0x56, 0xb4, 0xe9), QwtSymbol::Triangle, {}},
        {"Frame with projection", "tiles", "^frame/tiles:(\\d+)/mip:1", 1.0, QColor(0x00, 0x9e, 0x73), QwtSymbol::DTriangle, {}},
        {"Frame without", "tiles", "^frame/tiles:(\\d+)/mip:0", 1.0, QColor(0x60, 0x60, 0x60), QwtSymbol::Star1, {}},
        {"Selection pass", "voxels", "^pass/voxels:(\\d+)", 1.0, QColor(0xcc, 0x79, 0xa7), QwtSymbol::Hexagon, {}},
        {"Press of Load", "results", "^pressOfLoad/(\\d+)", 1.0, QColor(0x7a, 0x3b, 0x00), QwtSymbol::XCross, {}},
    };
}

/// Takes the measurements of a file; of repeated ones the fastest.
/// @return the reason why not, empty if they were taken
QString read(const QString& strPath, std::vector<SWork>& vecWorks)
{
    QFile objFile(strPath);
    if (!objFile.open(QIODevice::ReadOnly))
    {
        return objFile.errorString();
    }
    QJsonParseError objError;
    const QJsonDocument objDocument = QJsonDocument::fromJson(objFile.readAll(), &objError);
    if (objDocument.isNull())
    {
        return objError.errorString();
    }
    const QMap<QString, double> mapUnits = {{"ns", 1e-6}, {"us", 1e-3}, {"ms", 1.0}, {"s", 1e3}}; // milliseconds
    const QJsonArray arrMeasurements = objDocument.object().value(QLatin1String("benchmarks")).toArray();
    for (const QJsonValue& objValue : arrMeasurements)
    {
        const QJsonObject obj = objValue.toObject();
        const double fTime =
            obj.value(QLatin1String("real_time")).toDouble() * mapUnits.value(obj.value(QLatin1String("time_unit")).toString());
        if (obj.value(QLatin1String("run_type")).toString() != QLatin1String("iteration") || !(fTime > 0.0))
        {
            continue;
        }
        for (SWork& objWork : vecWorks)
        {
            const auto objMatch = QRegularExpression(QLatin1String(objWork.pPattern)).match(obj.value(QLatin1String("name")).toString());
            if (objMatch.hasMatch())
            {
                const double fSize = std::pow(objMatch.captured(1).toDouble(), objWork.fPower);
                objWork.mapTimes[fSize] = std::min(fTime, objWork.mapTimes.value(fSize, fTime));
            }
        }
    }
    return QString();
}

/// "12.3 ms" or "4.5 s".
QString timeText(double fMilliseconds)
{
    return fMilliseconds < 1000.0 ? QStringLiteral("%1 ms").arg(fMilliseconds, 0, 'g', 3)
                                  : QStringLiteral("%1 s").arg(fMilliseconds / 1000.0, 0, 'g', 3);
}

/// "1,760".
QString countText(double fCount)
{
    return QLocale(QLocale::English).toString(static_cast<qlonglong>(std::llround(fCount)));
}

QwtText text(const QString& strText, int nPixels, bool bBold = false)
{
    QwtText objText(strText, QwtText::PlainText);
    QFont objFont(QStringLiteral("sans-serif"));
    objFont.setPixelSize(nPixels);
    objFont.setBold(bBold);
    objText.setFont(objFont);
    objText.setColor(Qt::black);
    return objText;
}

/// Numbers of the axes in full.
class CMultipleScale : public QwtScaleDraw
{
public:
    QwtText label(double fValue) const override { return QString::number(fValue, 'g', 6); }
};

void setAxis(QwtPlot& objPlot, int nAxis, const QString& strTitle, double fMost)
{
    objPlot.setAxisScaleEngine(nAxis, new QwtLogScaleEngine);
    objPlot.setAxisScaleDraw(nAxis, new CMultipleScale);
    objPlot.setAxisScale(nAxis, 0.8, fMost * 1.25);
    objPlot.setAxisTitle(nAxis, text(strTitle, 15, true));
    objPlot.setAxisFont(nAxis, text(QString(), 13).font());
}

void addCurve(QwtPlot& objPlot, const QwtText& objTitle, const QPen& penLine, QwtSymbol* pSymbol, const QVector<QPointF>& vecPoints)
{
    auto* pCurve = new QwtPlotCurve(objTitle);
    pCurve->setPen(penLine);
    pCurve->setSymbol(pSymbol);
    pCurve->setRenderHint(QwtPlotItem::RenderAntialiased);
    pCurve->setLegendAttribute(QwtPlotCurve::LegendShowLine);
    pCurve->setLegendAttribute(QwtPlotCurve::LegendShowSymbol, pSymbol != nullptr);
    pCurve->setLegendIconSize(QSize(34, 14));
    pCurve->setSamples(vecPoints);
    pCurve->attach(&objPlot);
}

QImage draw(const std::vector<SWork>& vecWorks)
{
    QwtPlot objPlot;
    objPlot.setPalette(QPalette(Qt::white));
    objPlot.setAutoFillBackground(true);
    objPlot.setCanvasBackground(Qt::white);
    objPlot.setTitle(text(QStringLiteral("How cost grows"), 18, true));
    auto* pGrid = new QwtPlotGrid;
    pGrid->setMajorPen(QPen(QColor(205, 205, 205)));
    pGrid->setMinorPen(QPen(QColor(238, 238, 238)));
    pGrid->enableXMin(true);
    pGrid->enableYMin(true);
    pGrid->attach(&objPlot);
    objPlot.insertLegend(new QwtLegend, QwtPlot::RightLegend);
    objPlot.setContentsMargins(8, 8, 16, 8);

    double fMost = 1.0;
    for (const SWork& objWork : vecWorks)
    {
        if (objWork.mapTimes.isEmpty())
        {
            continue;
        }
        const double fSize = objWork.mapTimes.firstKey();
        const double fTime = objWork.mapTimes.first();
        QVector<QPointF> vecPoints;
        for (auto it = objWork.mapTimes.constBegin(); it != objWork.mapTimes.constEnd(); ++it)
        {
            vecPoints.append(QPointF(it.key() / fSize, it.value() / fTime));
            fMost = std::max({fMost, vecPoints.last().x(), vecPoints.last().y()});
        }
        QString strUnit = QLatin1String(objWork.pUnit);
        if (fSize == 1.0)
        {
            strUnit.chop(1); // of the plural
        }
        const QString strTitle =
            QStringLiteral("%1\n1 = %2 %3, %4").arg(QLatin1String(objWork.pTitle), countText(fSize), strUnit, timeText(fTime));
        addCurve(objPlot, text(strTitle, 13), QPen(objWork.clr, 2.0),
                 new QwtSymbol(objWork.eSymbol, QBrush(objWork.clr), QPen(objWork.clr, 2.0), QSize(9, 9)), vecPoints);
    }
    addCurve(objPlot, text(QStringLiteral("As the data do (slope 1)"), 13), QPen(Qt::black, 1.0, Qt::DashLine), nullptr,
             {QPointF(1.0, 1.0), QPointF(fMost, fMost)});
    setAxis(objPlot, QwtPlot::xBottom, QStringLiteral("Size, as a multiple of the smallest"), fMost);
    setAxis(objPlot, QwtPlot::yLeft, QStringLiteral("Processor time, as a multiple of that of the smallest"), fMost);
    objPlot.resize(1090, 700);
    objPlot.ensurePolished();
    objPlot.replot();
    return objPlot.grab().toImage().convertToFormat(QImage::Format_RGB888);
}
} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);
    const QStringList lstArguments = QCoreApplication::arguments();
    if (lstArguments.size() < 3)
    {
        std::fprintf(stderr, "growth PICTURE.png RESULTS.json...\n");
        return 2;
    }
    std::vector<SWork> vecWorks = works();
    for (const QString& strPath : lstArguments.mid(2))
    {
        const QString strReason = read(strPath, vecWorks);
        if (!strReason.isEmpty())
        {
            std::fprintf(stderr, "%s: %s\n", qPrintable(strPath), qPrintable(strReason));
            return 1;
        }
    }
    for (const SWork& objWork : vecWorks)
    {
        if (objWork.mapTimes.isEmpty())
        {
            std::fprintf(stderr, "%s: no measurement is in the files\n", objWork.pTitle);
            return 1;
        }
    }
    if (!draw(vecWorks).save(lstArguments.at(1)))
    {
        std::fprintf(stderr, "%s could not be written\n", qPrintable(lstArguments.at(1)));
        return 1;
    }
    return 0;
}
