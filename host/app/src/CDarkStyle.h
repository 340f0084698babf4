#pragma once

#include <QProxyStyle>

/// The Fusion style with outlines that are seen on dark windows: Fusion draws them darker than the window, whatever its colour.
class CDarkStyle : public QProxyStyle
{
    Q_OBJECT

public:
    CDarkStyle();

    void drawPrimitive(PrimitiveElement eElement, const QStyleOption* pOption, QPainter* pPainter, const QWidget* pWidget) const override;
    void drawComplexControl(ComplexControl eControl, const QStyleOptionComplex* pOption, QPainter* pPainter,
                            const QWidget* pWidget) const override;
    int styleHint(StyleHint eHint, const QStyleOption* pOption = nullptr, const QWidget* pWidget = nullptr,
                  QStyleHintReturn* pReturn = nullptr) const override;

private:
    static void drawFrame(PrimitiveElement eElement, const QStyleOption* pOption, QPainter* pPainter);
};
