#pragma once

#include <QWheelEvent>

/// The turns of a mouse wheel in whole notches. Wheels without notches and touch pads send parts of one, which are put together.
namespace OrmWheelNotches
{
/// Eighths of a degree that an event turns the wheel by; those of the horizontal direction where the vertical one has none.
inline int turnOf(const QWheelEvent& objEvent)
{
    return objEvent.angleDelta().y() != 0 ? objEvent.angleDelta().y() : objEvent.angleDelta().x();
}

/// Adds a turn to the rest of those before; both are eighths of a degree. A change of direction starts afresh.
/// @return the whole notches it makes, positive or negative; the rest keeps what is left over
inline int take(int nTurn, int& nRest)
{
    constexpr int nNotch = 120; // eighths of a degree
    if ((nRest > 0) != (nTurn > 0))
        nRest = 0;
    nRest += nTurn;
    const int nNotches = nRest / nNotch;
    nRest %= nNotch;
    return nNotches;
}
} // namespace OrmWheelNotches
