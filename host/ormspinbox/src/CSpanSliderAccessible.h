#ifndef CSPANSLIDERACCESSIBLE_H
#define CSPANSLIDERACCESSIBLE_H

#include <QAccessibleWidget>

class QSpanSlider;

/// What assistive technology sees of a span slider: a slider whose value is that of the handle with the keyboard focus, and whose value
/// text names both ends.
class CSpanSliderAccessible : public QAccessibleWidget, public QAccessibleValueInterface
{
public:
    explicit CSpanSliderAccessible(QSpanSlider* pSlider);

    /// Makes span sliders accessible, once for the process.
    static void install();

    QString text(QAccessible::Text eText) const override;
    void* interface_cast(QAccessible::InterfaceType eType) override;

    QVariant currentValue() const override;
    void setCurrentValue(const QVariant& varValue) override;
    QVariant maximumValue() const override;
    QVariant minimumValue() const override;
    QVariant minimumStepSize() const override;

private:
    QSpanSlider* slider() const;
};

#endif
