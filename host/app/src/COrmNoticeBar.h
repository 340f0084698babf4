#pragma once

#include <QFrame>

class QLabel;

/// A line across the window that says what is amiss and what to do, until it is closed.
class COrmNoticeBar : public QFrame
{
    Q_OBJECT

public:
    explicit COrmNoticeBar(QWidget* pParent = nullptr);

    /// Plain text; an empty one hides the bar.
    void setText(const QString& strText);

signals:
    void logRequested();

private:
    QLabel* m_pText;
};
