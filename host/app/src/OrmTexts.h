#pragma once

#include <QString>

/// Texts of others in the main window.
namespace OrmTexts
{
/// A text from elsewhere as the text of a menu entry: short, visible, and without an accelerator.
QString menuText(const QString& strText);
} // namespace OrmTexts
