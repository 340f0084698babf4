#pragma once

#include <QRegularExpression>
#include <QString>

/// Patterns that choose saved results by their "KIND SEQUENCE/NAME".
namespace ResultPattern
{
/// *, ? and [...] stand for any characters, '/' included; [!...] for any but those. The whole text must match, case included.
QRegularExpression expression(const QString& strPattern);
} // namespace ResultPattern
