#pragma once

#include <QString>
#include <string_view>

/// Pieces of files as they appear in messages.
namespace OrmExcerpt
{
/// The beginning of a text, without what a terminal would obey or hide.
QString of(std::string_view strText);
} // namespace OrmExcerpt
