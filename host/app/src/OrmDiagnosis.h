#pragma once

#include <QString>

class COrmPluginManager;

/// What a report of a fault needs, as plain lines of "name: value". Nothing in it names studies or subjects.
namespace OrmDiagnosis
{
/// Versions, display, OpenGL, locale and settings. @p strNoDisplay: why there is no display, if so.
QString system(const QString& strNoDisplay);
/// The tools that were loaded and those that were refused, with the reasons.
QString plugins(const COrmPluginManager& objPlugins);
} // namespace OrmDiagnosis
