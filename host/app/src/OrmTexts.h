#pragma once

#include <QString>

/// Texts of the main window that are put together.
namespace OrmTexts
{
/// "1 sequence", "5 sequences".
QString counted(qint64 nCount, const QString& strOne, const QString& strMany);
/// A text from elsewhere as the text of a menu entry: short, visible, and without an accelerator.
QString menuText(const QString& strText);
} // namespace OrmTexts
