#include "OrmGlyphs.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QPixmap>
#include <algorithm>
#include <utility>

namespace
{
constexpr double s_fGrid = 24.0;  ///< the glyphs are drawn on a square of that edge
constexpr double s_fStroke = 1.7; ///< width of their lines

QPainterPath line(std::initializer_list<QPointF> lstPoints)
{
    QPainterPath objPath;
    for (const QPointF& pt : lstPoints)
    {
        if (objPath.elementCount() == 0)
            objPath.moveTo(pt);
        else
            objPath.lineTo(pt);
    }
    return objPath;
}

/// A glyph is an outline and a part of it in the accent colour, drawn as a line or filled.
struct SShape
{
    QPainterPath m_objOutline;
    QPainterPath m_objAccent;
    QPainterPath m_objFilled;
};

SShape study()
{
    SShape s;
    s.m_objOutline = line({{3.0, 18.5}, {3.0, 5.0}, {9.0, 5.0}, {11.0, 7.5}, {19.0, 7.5}, {19.0, 10.5}});
    s.m_objAccent = line({{3.0, 18.8}, {6.3, 10.7}, {22.0, 10.7}, {18.8, 18.8}, {3.0, 18.8}});
    return s;
}

SShape demo()
{
    SShape s;
    s.m_objOutline.moveTo(5.0, 19.0); // the back, the nose, the belly
    s.m_objOutline.cubicTo(2.5, 12.0, 7.0, 6.5, 13.0, 7.5);
    s.m_objOutline.cubicTo(17.5, 8.3, 20.5, 12.5, 22.0, 16.5);
    s.m_objOutline.cubicTo(21.0, 18.4, 19.0, 19.0, 16.5, 19.0);
    s.m_objOutline.closeSubpath();
    s.m_objOutline.moveTo(5.0, 19.0); // the tail
    s.m_objOutline.cubicTo(1.5, 18.0, 0.8, 13.5, 2.6, 10.5);
    s.m_objAccent.addEllipse(QPointF(14.6, 6.8), 2.7, 2.7);  // the ear
    s.m_objFilled.addEllipse(QPointF(18.0, 13.8), 1.0, 1.0); // the eye
    s.m_objFilled.addEllipse(QPointF(9.5, 13.6), 2.2, 2.2);  // what glows in it
    return s;
}

SShape drop()
{
    SShape s;
    s.m_objOutline = line({{3.0, 14.0}, {3.0, 20.0}, {21.0, 20.0}, {21.0, 14.0}});
    s.m_objAccent = line({{12.0, 3.0}, {12.0, 14.5}});
    s.m_objAccent.addPath(line({{7.5, 10.3}, {12.0, 14.8}, {16.5, 10.3}}));
    return s;
}

SShape compare()
{
    SShape s;
    s.m_objOutline.addRoundedRect(QRectF(2.5, 4.0, 19.0, 16.0), 1.5, 1.5);
    s.m_objOutline.addPath(line({{8.8, 4.0}, {8.8, 20.0}}));
    s.m_objOutline.addPath(line({{15.2, 4.0}, {15.2, 20.0}}));
    s.m_objFilled.addEllipse(QPointF(5.7, 12.0), 0.9, 0.9);
    s.m_objFilled.addEllipse(QPointF(12.0, 12.0), 1.5, 1.5);
    s.m_objFilled.addEllipse(QPointF(18.3, 12.0), 2.1, 2.1);
    return s;
}

SShape photograph()
{
    SShape s;
    s.m_objOutline.addRoundedRect(QRectF(2.5, 7.0, 19.0, 12.5), 1.8, 1.8);
    s.m_objOutline.addPath(line({{8.0, 7.0}, {9.5, 4.5}, {14.5, 4.5}, {16.0, 7.0}}));
    s.m_objAccent.addEllipse(QPointF(12.0, 13.2), 3.4, 3.4);
    return s;
}

SShape notice()
{
    SShape s;
    s.m_objOutline = line({{12.0, 3.5}, {21.8, 20.0}, {2.2, 20.0}, {12.0, 3.5}});
    s.m_objAccent = line({{12.0, 9.0}, {12.0, 14.0}});
    s.m_objFilled.addEllipse(QPointF(12.0, 17.0), 1.0, 1.0);
    return s;
}

SShape shape(OrmGlyphs::EGlyph eGlyph)
{
    switch (eGlyph)
    {
    case OrmGlyphs::eStudy:
        return study();
    case OrmGlyphs::eDemo:
        return demo();
    case OrmGlyphs::eDrop:
        return drop();
    case OrmGlyphs::eCompare:
        return compare();
    case OrmGlyphs::ePhotograph:
        return photograph();
    case OrmGlyphs::eNotice:
        return notice();
    }
    return {};
}

/// An accent that is seen on the window's ground, be it light or dark.
QColor accent(const QPalette& objPalette, QPalette::ColorGroup eGroup)
{
    if (eGroup == QPalette::Disabled)
        return objPalette.color(eGroup, QPalette::WindowText);
    const bool bDark = objPalette.color(QPalette::Window).lightness() < 128;
    return bDark ? QColor(0x7C, 0xC4, 0x4A) : QColor(0x3F, 0x7D, 0x14);
}

class CGlyphEngine : public QIconEngine
{
public:
    explicit CGlyphEngine(OrmGlyphs::EGlyph eGlyph) : m_eGlyph(eGlyph) {}

    void paint(QPainter* pPainter, const QRect& rc, QIcon::Mode eMode, QIcon::State /*eState*/) override
    {
        const QPalette objPalette = QApplication::palette();
        const QPalette::ColorGroup eGroup = eMode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const QColor clrLine = objPalette.color(eGroup, eMode == QIcon::Selected ? QPalette::HighlightedText : QPalette::WindowText);
        const QColor clrAccent = eMode == QIcon::Selected ? clrLine : accent(objPalette, eGroup);
        const int nEdge = std::min(rc.width(), rc.height());
        pPainter->save();
        pPainter->setRenderHint(QPainter::Antialiasing);
        pPainter->translate(rc.x() + (rc.width() - nEdge) / 2.0, rc.y() + (rc.height() - nEdge) / 2.0);
        pPainter->scale(nEdge / s_fGrid, nEdge / s_fGrid);
        const SShape sShape = shape(m_eGlyph);
        pPainter->setPen(QPen(clrLine, s_fStroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        pPainter->drawPath(sShape.m_objOutline);
        pPainter->setPen(QPen(clrAccent, s_fStroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        pPainter->drawPath(sShape.m_objAccent);
        pPainter->setPen(Qt::NoPen);
        pPainter->setBrush(clrAccent);
        pPainter->drawPath(sShape.m_objFilled);
        pPainter->restore();
    }

    QPixmap pixmap(const QSize& szPixmap, QIcon::Mode eMode, QIcon::State eState) override
    {
        QPixmap objPixmap(szPixmap);
        objPixmap.fill(Qt::transparent);
        QPainter objPainter(&objPixmap);
        paint(&objPainter, QRect(QPoint(), szPixmap), eMode, eState);
        return objPixmap;
    }

    QIconEngine* clone() const override { return new CGlyphEngine(m_eGlyph); }

private:
    OrmGlyphs::EGlyph m_eGlyph;
};
} // namespace

QIcon OrmGlyphs::icon(EGlyph eGlyph)
{
    return QIcon(new CGlyphEngine(eGlyph));
}

QIcon OrmGlyphs::kindIcon(bool bLuminescent, bool bFluorescent)
{
    if (bLuminescent)
        return QIcon(QStringLiteral(":/Resource/luminescent_icon.xpm"));
    return bFluorescent ? QIcon(QStringLiteral(":/Resource/fluorescent_icon.xpm")) : icon(ePhotograph);
}
