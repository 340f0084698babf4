#pragma once

#include <QString>
#include <QStringList>
#include <QtTest>

#include <stdexcept>

class QListWidget;
class QWidget;

/// Finds widgets by object name and acts on them as a user does. What can't be found or done ends the test with a message that says
/// what there is.
namespace TestWidgets
{

/// Ends the test function.
[[noreturn]] void fail(const QString& strReason);

/// The names of all widgets of the class beneath the root.
QStringList names(const QWidget* pRoot, const char* pClassName);

/// The widget of that class and object name beneath the root.
template <class T>
T* get(const QWidget* pRoot, const char* pName)
{
    T* pFound = pRoot->findChild<T*>(QLatin1String(pName));
    if (pFound == nullptr)
    {
        fail(QStringLiteral("No %1 is named \"%2\"; there are: %3")
                 .arg(QLatin1String(T::staticMetaObject.className()), QLatin1String(pName),
                      names(pRoot, T::staticMetaObject.className()).join(QStringLiteral(", "))));
    }
    return pFound;
}

/// Clicks the middle of an enabled widget with the left button.
void click(QWidget* pWidget);

/// Moves the pointer over a widget, without a button. The display's own pointer stays where it is: where windows of other programs lie
/// before this one, it would move over those.
void moveOver(QWidget* pWidget, const QPoint& ptPlace);

/// The texts of a list, from the top.
QStringList texts(const QListWidget* pList);

/// Clicks the entry with that text, with modifiers if wanted; scrolls to it first.
void clickEntry(QListWidget* pList, const QString& strText, Qt::KeyboardModifiers eModifiers = Qt::NoModifier);

/// Makes exactly these entries the selected ones, by clicks.
void selectEntries(QListWidget* pList, const QStringList& lstTexts);

/// Whether a widget that has the keyboard looks other than without it; a text cursor alone does not count.
bool showsFocus(QWidget* pWidget);

} // namespace TestWidgets
