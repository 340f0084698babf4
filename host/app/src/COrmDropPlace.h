#pragma once

#include <QLabel>

/// A dashed frame that says that folders may be dropped. It takes no drops itself: the window does, everywhere.
class COrmDropPlace : public QLabel
{
    Q_OBJECT

public:
    explicit COrmDropPlace(const QString& strText, QWidget* pParent = nullptr);

    /// Shows that what is dragged may be dropped.
    void setWelcome(bool bWelcome);

protected:
    void paintEvent(QPaintEvent* pEvent) override;

private:
    bool m_bWelcome = false;
};
