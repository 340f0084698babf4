#ifndef QTTHUMBWHEEL_H
#define QTTHUMBWHEEL_H

#include <QAbstractSlider>

/// A ridged wheel seen from its rim, turned by dragging, by the mouse wheel and by the keyboard. With wrapping on, a turn past the end
/// of the range goes on at its start and the other way round.
class QtThumbWheel : public QAbstractSlider
{
    Q_OBJECT
    Q_PROPERTY(bool wrapsAround READ wrapsAround WRITE setWrapsAround)

public:
    explicit QtThumbWheel(QWidget* pParent = nullptr);

    bool wrapsAround() const { return m_bWraps; }
    void setWrapsAround(bool bWraps);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* pEvent) override;
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseMoveEvent(QMouseEvent* pEvent) override;
    void mouseReleaseEvent(QMouseEvent* pEvent) override;
    void wheelEvent(QWheelEvent* pEvent) override;
    bool event(QEvent* pEvent) override;
    void changeEvent(QEvent* pEvent) override;

private:
    void onAction(int nAction);
    int stepped(qint64 nTarget) const;
    double degreesPerPixel() const;
    void updateCursor();

    bool m_bWraps = false;   ///< the range is a circle
    bool m_bPressed = false; ///< the pointer holds the wheel
    bool m_bHover = false;   ///< the pointer is over the wheel
    int m_nDragStart = 0;    ///< pointer along the wheel when it went down
    int m_nDragValue = 0;    ///< value then
    int m_nWheelRest = 0;    ///< eighths of a degree that did not make a whole notch yet
};

#endif
