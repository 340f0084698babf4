#pragma once

#include <QImage>
#include <QSize>
#include <QString>
#include <QWidget>

/// Shows a picture as large as its place allows, undistorted; without one, a text.
class COrmPictureWidget : public QWidget
{
    Q_OBJECT

public:
    explicit COrmPictureWidget(QWidget* pParent = nullptr);

    void setPicture(const QImage& imgPicture);
    /// Plain text that stands in place of a picture.
    void setText(const QString& strText);
    QString text() const { return m_strText; }
    QImage picture() const { return m_imgPicture; }

    /// The size that the widget asks for; at first 480 x 480.
    void setPreferredSize(const QSize& szPreferred);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* pEvent) override;

private:
    QImage m_imgPicture;
    QString m_strText;
    QSize m_szPreferred{480, 480};
};
