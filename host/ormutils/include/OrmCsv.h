#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// Tables as comma-separated values (RFC 4180): UTF-8, lines end with CR LF, numbers in the C locale whatever the user's.
namespace OrmCsv
{
/// One line of a table, its end included. A field with a comma, a quotation mark or a line break is quoted.
QByteArray line(const QStringList& lstFields);

/// The shortest text that reads back as the same number; empty for a number that is none (NaN or infinite), so that a gap stays a gap.
QString number(double fValue);
} // namespace OrmCsv
