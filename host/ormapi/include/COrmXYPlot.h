#pragma once

#include <QByteArray>
#include <QColor>
#include <QHash>
#include <QImage>
#include <QString>
#include <QStringList>
#include <QVector>
#include <QWidget>

#include <memory>

/// Look of the points of a data line.
struct POINT_PROPERTIES
{
    int nPointStyle = 0;           ///< 0 circle, 1 square, 2 diamond, 3 triangle, 4 cross; any other a circle
    int nPointSize = 7;            ///< diameter in pixels
    QColor pointColor = Qt::black; ///< colour of the points
    bool bPointVisible = false;    ///< whether points are drawn in the modes that show points
};

/// Look of a data line.
struct DISPLAY_SETTINGS
{
    QColor lineColor = Qt::black;        ///< colour of the line
    int nDisplayMode = 1;                ///< COrmXYPlot::DISPLAY_MODE
    POINT_PROPERTIES objPointProperties; ///< look of the points
};

/// A plot of named data lines over a common x axis, with axis labels and a legend. The point under the pointer tells its numbers. The
/// left button pulls up a part to be shown, the wheel magnifies around the pointer, the middle button (or the left one with Shift) moves
/// what is shown, and a double click shows everything again; what was magnified stays so while the data range over the same. The context
/// menu has the display modes, the logarithmic axis, and the ways to take picture and numbers away.
class COrmXYPlot : public QWidget
{
    Q_OBJECT

public:
    /// What is drawn of a line; any other value means the first. Beside a line, points need bPointVisible as well. Where a value is missing
    /// (not finite) the line is interrupted; a point without neighbours is shown in every mode.
    enum DISPLAY_MODE
    {
        LineMode = 1,
        LineAndPointsMode = 2,
        PointsMode = 3,
        BarsMode = 4
    };

    /// One data line.
    struct DATALINE_INFO
    {
        int nVals = 0;        ///< number of points
        QVector<double> vecX; ///< x values
        QVector<double> vecY; ///< y values
        int nExtraA = 0;      ///< count of the next
        QVector<double> vecExtraA;
        int nExtraB = 0; ///< count of the next
        QVector<double> vecExtraB;
        QStringList lstExtraA;
        QStringList lstExtraB;
        QStringList lstExtraC;
        DISPLAY_SETTINGS objDisplaySettings; ///< look of the line
    };

    /// The name becomes the object name; null leaves it empty.
    explicit COrmXYPlot(QWidget* pParent = nullptr, const char* pName = nullptr);
    ~COrmXYPlot() override;

    void setXAxisLabel(QString strLabel);
    void setYAxisLabel(QString strLabel);
    QString xAxisLabel() const;
    QString yAxisLabel() const;

    /// Copies the look of a line. False, and the settings left alone, if there is no line of that name.
    bool getDisplaySettings(QString strName, DISPLAY_SETTINGS& settings);
    /// Sets the look of a line and with it the plot's current display mode. Without a line of that name nothing happens.
    void setDisplaySettings(QString strName, DISPLAY_SETTINGS settings);
    /// The display mode that was set last, by a line's settings or by the user; 1 at first.
    int getCurrentDisplayMode();
    /// Shows all lines in a mode.
    void setCurrentDisplayMode(int nDisplayMode);

    /// Removes all lines. Axis labels and the x step stay.
    void clear();

    /// Adds a line, or gives the line of that name new values. At least one value and both arrays are required: the program stops
    /// otherwise. False if no point of the plot has two finite numbers: all lines are dropped then.
    template <typename X, typename Y>
    bool addDataLine(QString strName, X* pXVals, Y* pYVals, int nVals);

    /// The ranges of both axes over the finite points of all lines. False if there are none.
    bool determineRanges();
    /// Has the legend measured anew.
    void calculateLegendWidthAndHeight();
    /// Has everything given its place anew, once for all changes before the next paint.
    void calculateLayout();

    /// Step between the ticks of the x axis; 0 or less lets the plot choose. Where the labels would touch, a multiple of it is taken.
    void setXAxisRangeStep(double fStep);
    double xAxisRangeStep() const;

    /// A logarithmic y axis, or a linear one as at first. Values that a logarithmic axis can not show are left out, and a line below the
    /// plot says so.
    void setLogarithmic(bool bLogarithmic);
    bool isLogarithmic() const;

    /// Whether only a part of the data is shown, as the user chose it.
    bool isZoomed() const;

    /// The plot as it would be shown now, in its own size, whether or not it is on screen. What only helps the pointer is not in it.
    QImage getPrintImage();

    /// The numbers of all lines as comma-separated values, see COrmXYPlotTable.
    QByteArray numbers() const;
    /// Writes them to a file, which appears complete or not at all.
    /// @param strReason why not, if the result is false
    bool saveNumbers(const QString& strPath, QString& strReason) const;

    /// The lines by name.
    const QHash<QString, DATALINE_INFO*>& dataLines() const { return m_hashDataLines; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

public slots:
    /// Ends a magnification.
    void showEverything();
    void copyPicture();
    void copyNumbers();
    /// Asks for a file and writes the numbers to it; says so if that fails.
    void askAndSaveNumbers();

protected:
    void resizeEvent(QResizeEvent* pEvent) override;
    void changeEvent(QEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;
    void contextMenuEvent(QContextMenuEvent* pEvent) override;

private:
    struct SPrivate;

    static void require(bool bHolds, const char* pCondition, int nLine);
    DATALINE_INFO* lineForNewValues(const QString& strName, int nVals);
    bool takeNewValues(const QString& strName, DATALINE_INFO* pLine);

    QHash<QString, DATALINE_INFO*> m_hashDataLines; ///< owned
    std::unique_ptr<SPrivate> m_p;                  ///< the drawing side and the pointer
};

template <typename X, typename Y>
bool COrmXYPlot::addDataLine(QString strName, X* pXVals, Y* pYVals, int nVals)
{
    require(nVals >= 1, "nVals >= 1", 189);
    require(pXVals != nullptr, "pXVals != NULL", 190);
    require(pYVals != nullptr, "pYVals != NULL", 191);
    DATALINE_INFO* pLine = lineForNewValues(strName, nVals);
    for (int i = 0; i < nVals; ++i)
    {
        // Neither is null, as is required above.
        pLine->vecX.append(static_cast<double>(pXVals[i])); // NOLINT(clang-analyzer-core.NullDereference)
        pLine->vecY.append(static_cast<double>(pYVals[i])); // NOLINT(clang-analyzer-core.NullDereference)
    }
    return takeNewValues(strName, pLine);
}
