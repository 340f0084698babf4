#pragma once

#include <QApplication>
#include <QImage>
#include <QScreen>
#include <QWidget>

/// How the onlooker finds what is in the program's windows.
namespace OnlookerEyes
{
/// The widget of that name in any of the program's windows, a visible one if there is one. "class:" and a class name finds by class.
template <class T>
T* find(const QString& strName)
{
    const QString strClass = strName.startsWith(QLatin1String("class:")) ? strName.mid(6) : QString();
    const QWidgetList lstWidgets = QApplication::allWidgets();
    T* pHidden = nullptr;
    for (QWidget* pWidget : lstWidgets)
    {
        const bool bNamed = strClass.isEmpty() ? pWidget->objectName() == strName : pWidget->inherits(strClass.toLatin1().constData());
        T* pFound = bNamed ? qobject_cast<T*>(pWidget) : nullptr;
        if (pFound != nullptr && pFound->isVisible())
        {
            return pFound;
        }
        pHidden = pFound != nullptr ? pFound : pHidden;
    }
    return pHidden;
}

/// What the display shows of a window; null where the display cannot be asked.
inline QImage screenOf(const QWidget* pWindow)
{
    return pWindow->screen()->grabWindow(pWindow->winId()).toImage().convertToFormat(QImage::Format_RGB32);
}
} // namespace OnlookerEyes
