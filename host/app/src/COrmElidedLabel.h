#pragma once

#include <QFrame>
#include <QString>

/// One line of text from elsewhere, as plain text, its middle elided where there is no room; the tool tip tells it in full.
class COrmElidedLabel : public QFrame
{
    Q_OBJECT

public:
    explicit COrmElidedLabel(QWidget* pParent = nullptr);

    void setText(const QString& strText);
    QString text() const { return m_strText; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* pEvent) override;

private:
    QString m_strText;
};
