#pragma once

#include <QByteArray>
#include <QIconEngine>
#include <QPixmap>

/// Paints a drawing of icons.qrc in the colours of the palette in use, at any size. Made for a picture file that has a drawing in its
/// place, it paints that; for any other file it paints the picture, never larger than it is.
class CInkIconEngine : public QIconEngine
{
public:
    explicit CInkIconEngine(const QString& strDrawing = QString());

    void paint(QPainter* pPainter, const QRect& rc, QIcon::Mode eMode, QIcon::State eState) override;
    QPixmap pixmap(const QSize& szPixmap, QIcon::Mode eMode, QIcon::State eState) override;
    QSize actualSize(const QSize& szWanted, QIcon::Mode eMode, QIcon::State eState) override;
    void addFile(const QString& strFile, const QSize& szPicture, QIcon::Mode eMode, QIcon::State eState) override;
    void addPixmap(const QPixmap& objPixmap, QIcon::Mode eMode, QIcon::State eState) override;
    void virtual_hook(int nHook, void* pData) override;
    QString key() const override;
    QIconEngine* clone() const override;

private:
    QByteArray m_baDrawing; ///< SVG; empty: there is none
    QPixmap m_objPicture;   ///< in use where there is no drawing
};
