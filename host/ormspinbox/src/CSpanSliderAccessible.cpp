#include "CSpanSliderAccessible.h"

#include "QSpanSlider.h"

namespace
{
QAccessibleInterface* makeInterface(const QString& strClass, QObject* pObject)
{
    auto* pSlider = strClass == QLatin1String("QSpanSlider") ? qobject_cast<QSpanSlider*>(pObject) : nullptr;
    return pSlider ? new CSpanSliderAccessible(pSlider) : nullptr;
}
} // namespace

CSpanSliderAccessible::CSpanSliderAccessible(QSpanSlider* pSlider) : QAccessibleWidget(pSlider, QAccessible::Slider) {}

void CSpanSliderAccessible::install()
{
    static const bool s_bInstalled = []
    {
        QAccessible::installFactory(makeInterface);
        return true;
    }();
    Q_UNUSED(s_bInstalled)
}

QSpanSlider* CSpanSliderAccessible::slider() const
{
    return static_cast<QSpanSlider*>(object());
}

QString CSpanSliderAccessible::text(QAccessible::Text eText) const
{
    if (eText == QAccessible::Value)
        return QSpanSlider::tr("%1 to %2").arg(slider()->lowerValue()).arg(slider()->upperValue());
    return QAccessibleWidget::text(eText);
}

void* CSpanSliderAccessible::interface_cast(QAccessible::InterfaceType eType)
{
    if (eType == QAccessible::ValueInterface)
        return static_cast<QAccessibleValueInterface*>(this);
    return QAccessibleWidget::interface_cast(eType);
}

QVariant CSpanSliderAccessible::currentValue() const
{
    return slider()->activeHandle() == QSpanSlider::PartUpper ? slider()->upperValue() : slider()->lowerValue();
}

void CSpanSliderAccessible::setCurrentValue(const QVariant& varValue)
{
    if (slider()->activeHandle() == QSpanSlider::PartUpper)
        slider()->setUpperValue(varValue.toInt());
    else
        slider()->setLowerValue(varValue.toInt());
}

QVariant CSpanSliderAccessible::maximumValue() const
{
    return slider()->maximum();
}

QVariant CSpanSliderAccessible::minimumValue() const
{
    return slider()->minimum();
}

QVariant CSpanSliderAccessible::minimumStepSize() const
{
    return slider()->singleStep();
}
