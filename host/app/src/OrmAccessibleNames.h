#pragma once

#include <QString>

class QWidget;

/// Names for controls that say nothing of themselves, so that people who do not see the screen know what they are on. Tools come with
/// forms of their own; what stands beside a control, or explains it, names it.
namespace OrmAccessibleNames
{
/// From now on every window that assistive technology asks for has its controls named. To be called once, with an application.
void install();

/// What to call a control that has neither a name nor a text of its own: the label before it in its layout, else the heading of its
/// explanation, else its tooltip, else what its kind is. Empty if nothing tells.
QString nameFor(const QWidget* pWidget);
} // namespace OrmAccessibleNames
