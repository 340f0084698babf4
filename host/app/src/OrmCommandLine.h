#pragma once

#include <QString>
#include <QStringList>

/// What the user asked for on the command line.
struct SCommandLine
{
    QStringList m_lstFolders;      ///< to open, as typed
    QString m_strTool;             ///< name of the tool to open at the start; empty: none
    QString m_strLanguage;         ///< code of the language of the windows; empty: as the settings say
    QString m_strLogFile;          ///< where the log goes besides; empty: nowhere
    bool m_bHelp = false;          ///< only say how the program is used
    bool m_bVersion = false;       ///< only say which version it is
    bool m_bNoSettings = false;    ///< read and write no settings of the user's
    bool m_bResetSettings = false; ///< only put the settings aside
    bool m_bDiagnose = false;      ///< only say what a report of a fault needs
    QString m_strError;            ///< one sentence about wrong usage; empty: all is well
};

namespace OrmCommandLine
{
/// @p lstArguments begins with the program's name. Needs no application object.
SCommandLine parse(const QStringList& lstArguments);
/// How the program is used, as printed by --help.
QString usage();
/// Name and version, as printed by --version.
QString version();
/// True if one of the arguments asks for nothing but a text, so that no display is needed.
bool wantsTextOnly(const QStringList& lstArguments);
/// What is needed before Qt has taken its own options out of the arguments: the log file, and whether only settings are to be put
/// aside or a diagnosis is wanted. Whatever else there is, is passed over.
SCommandLine parseEarly(const QStringList& lstArguments);
} // namespace OrmCommandLine
