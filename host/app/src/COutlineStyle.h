#pragma once

#include <QProxyStyle>

/// The Fusion style with outlines that are seen on light and on dark windows: Fusion draws them a little darker than the window, whatever
/// its colour.
class COutlineStyle : public QProxyStyle
{
    Q_OBJECT

public:
    COutlineStyle();

    void drawPrimitive(PrimitiveElement eElement, const QStyleOption* pOption, QPainter* pPainter, const QWidget* pWidget) const override;
    void drawComplexControl(ComplexControl eControl, const QStyleOptionComplex* pOption, QPainter* pPainter,
                            const QWidget* pWidget) const override;
    int styleHint(StyleHint eHint, const QStyleOption* pOption = nullptr, const QWidget* pWidget = nullptr,
                  QStyleHintReturn* pReturn = nullptr) const override;

private:
    static void drawFrame(PrimitiveElement eElement, const QStyleOption* pOption, QPainter* pPainter);
};
