#pragma once

#include <QStringList>

/// Puts the user's settings aside.
namespace OrmSettingsReset
{
struct SOutcome
{
    QStringList m_lstRemoved; ///< one sentence for each file that is out of the way, with the name of its copy
    QStringList m_lstFailed;  ///< one sentence for each that could not be moved
};

/// Renames the files of the preferences and of the windows, so that the next start finds none. They are not opened.
SOutcome run();
} // namespace OrmSettingsReset
