#pragma once

#include <QByteArray>

namespace PhantomPhotograph
{
/// A grey-scale photograph of the phantom seen from above, 136 mm wide and high, as PNG bytes.
QByteArray png();
} // namespace PhantomPhotograph
