#ifndef QSPANSLIDER_H
#define QSPANSLIDER_H

#include <QSlider>

class QStyleOptionSlider;

/// A slider with two handles on one integer range. It always holds minimum() <= lowerValue() <= upperValue() <= maximum(); the value
/// of the base class stands still. Setting one end beyond the other takes the other along, so that what was set is what is read;
/// with the pointer and the keyboard a handle stops at the other one. The span between the handles can be dragged as a whole.
/// Tab goes from the lower handle to the upper one and on; arrows, Page, Home and End move the handle that has the focus,
/// with Shift the whole span.
/// Every real change emits lowerValueChanged() and upperValueChanged() for the end that moved, then spanChanged() once. With tracking
/// off they are emitted when the pointer lets go.
class QSpanSlider : public QSlider
{
    Q_OBJECT
    Q_PROPERTY(int lowerValue READ lowerValue WRITE setLowerValue NOTIFY lowerValueChanged)
    Q_PROPERTY(int upperValue READ upperValue WRITE setUpperValue NOTIFY upperValueChanged)

public:
    enum EPart
    {
        PartNone,
        PartLower,
        PartUpper,
        PartSpan
    };

    explicit QSpanSlider(QWidget* pParent = nullptr);
    explicit QSpanSlider(Qt::Orientation eOrientation, QWidget* pParent = nullptr);

    int lowerValue() const { return m_nLower; }
    int upperValue() const { return m_nUpper; }
    /// The handle that the keyboard moves.
    EPart activeHandle() const { return m_eActive; }
    void setActiveHandle(EPart eHandle);

    /// Where a handle, or the span between the two, is drawn.
    QRect partRect(EPart ePart) const;

    QSize minimumSizeHint() const override;

public slots:
    void setLowerValue(int nLower);
    void setUpperValue(int nUpper);
    /// Takes the two ends in either order.
    void setSpan(int nLower, int nUpper);

signals:
    void lowerValueChanged(int nLower);
    void upperValueChanged(int nUpper);
    void spanChanged(int nLower, int nUpper);

protected:
    void paintEvent(QPaintEvent* pEvent) override;
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseMoveEvent(QMouseEvent* pEvent) override;
    void mouseReleaseEvent(QMouseEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;
    void wheelEvent(QWheelEvent* pEvent) override;
    void focusInEvent(QFocusEvent* pEvent) override;
    bool focusNextPrevChild(bool bNext) override;
    bool event(QEvent* pEvent) override;
    void sliderChange(SliderChange eChange) override;

private:
    void apply(int nLower, int nUpper);
    void place(qint64 nLower, qint64 nUpper);
    void moveActive(qint64 nDelta, bool bSpan);
    void moveTo(EPart eHandle, qint64 nValue);
    QStyleOptionSlider handleOption(EPart ePart) const;
    int along(const QPoint& ptPosition) const;
    int valueAt(int nHandleStart) const;
    EPart partAt(const QPoint& ptPosition) const;
    EPart nearestHandle(const QPoint& ptPosition) const;
    void setHover(EPart ePart);

    int m_nLower;                ///< lower value
    int m_nUpper;                ///< upper value
    int m_nShownLower;           ///< where the lower handle is drawn; differs from the value during a drag without tracking
    int m_nShownUpper;           ///< the same for the upper handle
    EPart m_eActive = PartLower; ///< handle with the keyboard focus
    EPart m_ePressed = PartNone; ///< part that the pointer holds
    EPart m_eHover = PartNone;   ///< part under the pointer
    bool m_bUndecided = false;   ///< both handles were on one place when pressed: the first move decides which one goes
    int m_nGrab = 0;             ///< pointer minus handle along the groove, in pixels
    int m_nGrabLower = 0;        ///< values when the pointer went down
    int m_nGrabUpper = 0;
    int m_nWheelRest = 0; ///< eighths of a degree that did not make a whole notch yet
};

#endif
