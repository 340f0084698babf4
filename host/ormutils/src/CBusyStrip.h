#ifndef CBUSYSTRIP_H
#define CBUSYSTRIP_H

#include <QWidget>

/// A thin strip along which a light runs. Where it is depends on the time that it is given, so that it moves evenly however seldom
/// it is painted.
class CBusyStrip : public QWidget
{
    Q_OBJECT

public:
    explicit CBusyStrip(QWidget* pParent = nullptr);

    void setElapsed(qint64 nMilliseconds);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* pEvent) override;

private:
    qint64 m_nElapsed = 0; ///< milliseconds
};

#endif
