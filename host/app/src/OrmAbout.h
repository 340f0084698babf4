#pragma once

#include <QString>

class COrmPluginManager;

namespace OrmAbout
{
/// What Help > About says: version, libraries, the tools that are loaded and those that were refused. Plain text.
QString text(const COrmPluginManager& objPlugins);
} // namespace OrmAbout
