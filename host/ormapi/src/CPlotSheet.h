#pragma once

#include "COrmXYPlot.h"
#include "COrmXYPlotAxis.h"
#include "CPlotCurve.h"

#include <qwt_plot.h>

#include <QList>
#include <QString>

#include <optional>

class QwtLegend;
class QwtPlotGrid;
class QwtPlotTextLabel;

/// The drawing side of a plot: axes, grid, legend and lines. It lays itself out for its size, whether or not it is on screen; large
/// sheets get larger type and lines. Changes only mark the layout as due: it is made once for all of them, before the next paint.
class CPlotSheet : public QwtPlot
{
    Q_OBJECT

public:
    /// What is shown of the data.
    struct SView
    {
        COrmXYPlotAxis::SRange m_sX;
        COrmXYPlotAxis::SRange m_sY;
    };

    /// How little of the axes can be shown.
    struct SNarrowest
    {
        double m_fX = 0.0;
        double m_fEvenY = 0.0;
    };

    /// A point near the pointer.
    struct SFound
    {
        const CPlotCurve* m_pCurve = nullptr;
        CPlotCurve::SPlace m_sPlace; ///< in pixels of the canvas
    };

    explicit CPlotSheet(QWidget* pParent);

    void setXLabel(const QString& strLabel);
    void setYLabel(const QString& strLabel);
    const QString& xLabel() const { return m_strXLabel; }
    const QString& yLabel() const { return m_strYLabel; }
    /// Wished step of the x axis; 0 or less: none.
    void setXStep(double fStep) { m_fXStep = fStep; }
    double xStep() const { return m_fXStep; }
    void setLogarithmic(bool bLogarithmic);
    bool isLogarithmic() const { return m_bLogarithmic; }

    /// Takes the values of a line, old or new.
    void setLine(const QString& strName, const QVector<double>& vecX, const QVector<double>& vecY, const DISPLAY_SETTINGS& sLook);
    void setLook(const QString& strName, const DISPLAY_SETTINGS& sLook);
    /// Leaves an empty sheet, with its labels.
    void removeLines();
    /// The names of the lines in the order in which they came.
    QStringList lineNames() const;
    /// What the lines range over.
    void setDataRanges(const COrmXYPlotAxis::SDataRanges& sRanges) { m_sRanges = sRanges; }

    /// Shows a part of the data until they change.
    void setView(const SView& sView);
    /// Shows all data.
    void showEverything();
    /// Whether only a part of the data is shown.
    bool isZoomed() const;
    /// What would be shown of all data, and what is shown.
    SView wholeView() const;
    SView view() const;
    /// Of data at whole numbers one step stays in sight, since there is nothing between them.
    SNarrowest narrowest() const;
    /// A range of the y axis in the coordinate in which the axis is drawn evenly, and back.
    COrmXYPlotAxis::SRange evenY(const COrmXYPlotAxis::SRange& sY) const;
    COrmXYPlotAxis::SRange yOfEven(const COrmXYPlotAxis::SRange& sEven) const;

    /// Has the layout made before the next paint.
    void touch();
    /// Makes the layout if it is due: places on the canvas are right only then.
    void settle();
    /// Gives everything its place now and paints anew.
    void layOut();
    /// Measures the legend for the present width.
    void measureLegend();
    /// Magnification of type and lines by the sheet's size.
    double scale() const;
    /// The font of the numbers, magnified.
    QFont typeFont() const;

    /// The points at a place on the canvas: the bar under it, or the nearest point within reach with all that stand on the same spot.
    QList<SFound> pointsAt(const QPointF& ptCanvas) const;
    /// All points of all lines, from left to right.
    QList<SFound> allPoints() const;

signals:
    /// The layout was made: the canvas may have another place.
    void laidOut();

protected:
    bool event(QEvent* pEvent) override;
    void paintEvent(QPaintEvent* pEvent) override;
    void resizeEvent(QResizeEvent* pEvent) override;

private:
    struct SLine
    {
        QString m_strName;
        CPlotCurve* m_pCurve = nullptr; ///< owned by the sheet
        QVector<double> m_vecX;
        QVector<double> m_vecY;
        DISPLAY_SETTINGS m_sLook;
    };

    /// A view, and the data that it was chosen for.
    struct SZoom
    {
        SView m_sView;
        COrmXYPlotAxis::SDataRanges m_sRanges;
    };

    SLine* lineOf(const QString& strName);
    bool showsBars() const;
    bool hasPoints() const;
    void placeBars();
    void applyType();
    void elideLabels();
    void applyAxes();
    void tellWhatIsMissing();
    double widestXNumber() const;
    int mostXTicks() const;
    int mostYTicks() const;

    QwtLegend* m_pLegend = nullptr;         ///< owned by the sheet
    QwtPlotGrid* m_pGrid = nullptr;         ///< owned by the sheet
    QwtPlotTextLabel* m_pMessage = nullptr; ///< owned by the sheet; says why there is nothing to see
    QList<SLine> m_lstLines;
    COrmXYPlotAxis::SDataRanges m_sRanges;
    std::optional<SZoom> m_optZoom;
    QString m_strXLabel;
    QString m_strYLabel;
    double m_fXStep = 0.0;
    bool m_bLogarithmic = false;
    bool m_bStale = false; ///< the layout is due
};
