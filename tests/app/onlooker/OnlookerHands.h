#pragma once

#include <QJsonValue>
#include <QStringList>

/// What the onlooker can do and see in the program's windows, as a user would. Widgets are named by their object names, or by "class:" and
/// the name of their class; places within a widget are fractions of its size from the top left.
namespace OnlookerHands
{
/// Does what the words say, the first being one of the names below; undefined if there is no such deed. Most answer whether it was done.
///
///     press WIDGET                      clicks a widget that is visible and enabled
///     later DEED...                     does that after the answer: for what opens a dialog and waits for it
///     pick VIEW TEXT...                 clicks the entry of a list or table that reads so, and with Control those of the further texts
///     rows VIEW                         the texts of its first column
///     choose BOX TEXT                   chooses an entry of a combo box
///     tab TABS N                        turns to a tab
///     type WIDGET TEXT                  replaces what it holds, key by key
///     trigger ACTION                    an action of a menu, by its name
///     context WIDGET                    asks for its context menu
///     entry TEXT                        clicks that entry of the menu that is open
///     drag WIDGET X0 Y0 X1 Y1           with the left button held
///     point WIDGET X Y                  moves the pointer there
///     size WINDOW WIDTH HEIGHT          in pixels
///     save FILE                         answers the file dialog that is open
///     title                             of the active window or dialog
///     property WIDGET NAME              as text; null: there is none
///     visible WIDGET
///     picture FILE [WINDOW]             saves what the screen shows of a window; of the active one without a name
QJsonValue act(const QStringList& lstWords);
} // namespace OnlookerHands
