#include "COutlineStyle.h"

#include <QPainter>
#include <QStyleOption>
#include <algorithm>

COutlineStyle::COutlineStyle() : QProxyStyle(QStringLiteral("fusion")) {}

void COutlineStyle::drawPrimitive(PrimitiveElement eElement, const QStyleOption* pOption, QPainter* pPainter, const QWidget* pWidget) const
{
    QProxyStyle::drawPrimitive(eElement, pOption, pPainter, pWidget);
    drawFrame(eElement, pOption, pPainter);
}

void COutlineStyle::drawFrame(PrimitiveElement eElement, const QStyleOption* pOption, QPainter* pPainter)
{
    const bool bRound = eElement == PE_IndicatorRadioButton;
    const bool bBox = eElement == PE_IndicatorCheckBox || eElement == PE_IndicatorItemViewItemCheck;
    const bool bFrame = eElement == PE_FrameLineEdit || eElement == PE_Frame || eElement == PE_FrameMenu;
    if (!bRound && !bBox && !bFrame)
        return;
    pPainter->save();
    pPainter->setRenderHint(QPainter::Antialiasing);
    pPainter->translate(0.5, 0.5);
    pPainter->setBrush(Qt::NoBrush);
    const bool bEnabled = (pOption->state & State_Enabled) != 0;
    const bool bFocus = (pOption->state & State_HasFocus) != 0 && (eElement == PE_FrameLineEdit || bBox || bRound);
    QColor clrLine =
        pOption->palette.color(bEnabled ? QPalette::Active : QPalette::Disabled, bFocus ? QPalette::Link : QPalette::WindowText);
    // A frame only parts; a box that waits for a mark has to be found.
    clrLine.setAlphaF(bFocus ? 1.0 : bFrame ? 0.25 : 0.6);
    pPainter->setPen(clrLine);
    QRectF rc = pOption->rect.adjusted(0, 0, -1, -1);
    if (bRound)
    {
        const double fEdge = std::min(rc.width(), rc.height());
        rc = QRectF(rc.x() + (rc.width() - fEdge) / 2.0, rc.y() + (rc.height() - fEdge) / 2.0, fEdge, fEdge);
        pPainter->drawEllipse(rc);
    }
    else
        pPainter->drawRoundedRect(rc, bFrame ? 1.5 : 1.0, bFrame ? 1.5 : 1.0);
    pPainter->restore();
}

void COutlineStyle::drawComplexControl(ComplexControl eControl, const QStyleOptionComplex* pOption, QPainter* pPainter,
                                       const QWidget* pWidget) const
{
    QProxyStyle::drawComplexControl(eControl, pOption, pPainter, pWidget);
    const auto* pSpinBox = qstyleoption_cast<const QStyleOptionSpinBox*>(pOption);
    if (eControl != CC_SpinBox || pSpinBox == nullptr || !pSpinBox->frame)
        return;
    QStyleOption objFrame(*pOption);
    drawFrame(PE_FrameLineEdit, &objFrame, pPainter);
}

int COutlineStyle::styleHint(StyleHint eHint, const QStyleOption* pOption, const QWidget* pWidget, QStyleHintReturn* pReturn) const
{
    // Pictures drawn in black on the buttons of dialogs, and a shadow behind what cannot be chosen, are hard to read on dark windows.
    const bool bNot = eHint == SH_DialogButtonBox_ButtonsHaveIcons || eHint == SH_EtchDisabledText;
    return bNot ? 0 : QProxyStyle::styleHint(eHint, pOption, pWidget, pReturn);
}
