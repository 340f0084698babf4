#ifndef CORMPREFERENCE_H
#define CORMPREFERENCE_H

#include "COrmSettings.h"
#include "COrmSignalHandler.h"
#include "S3DViewSettings.h"

#include <QString>

/// The colour bar that a new view starts with.
struct SDefaultColorBar
{
    int nColorTable = 9;    ///< value of the colour table
    bool bReversed = false; ///< whether it runs backwards
};

/// The user's preferences, process-wide. They are read from their store when first needed; every change is written back at once and
/// safely (the old or the new file survives, never a half). A store that cannot be read leaves the defaults, one that cannot be written
/// keeps the change for the process; both are logged, none is reported to the caller. GUI thread only.
class COrmPreference
{
public:
    COrmPreference() = delete;

    static COrmSettings* getSettings();
    static COrmSignalHandler* getSignalHandler();

    static SDefaultColorBar getDefaultColorBar();
    /// Emits the hub's updatePreferenceSetting() if this changes anything.
    static void setDefaultColorBar(const SDefaultColorBar& objColorBar);

    static void get3DViewPreferences(S3DViewSettings& objSettings);
    /// An invalid colour or a font size outside 4 to 72 points leaves that preference as it is.
    /// Emits the hub's updatePreferenceSetting() if this changes anything.
    static void set3DViewPreferences(const S3DViewSettings& objSettings);

    /// Moves the entry of the preferred image format to the front of a save filter ("... (*.bmp);;... (*.jpg)"), where a file dialog
    /// preselects it; the others keep their order. Without a preference, or when no entry offers it, the filter stays as it is.
    static void modifySaveFilterByPreference(QString& strFilter);
    /// Remembers the extension that was last used, or a path's tail that ends in it.
    static void setUsersPreferredFormat(QString strFormat);
    /// As it was set; empty if none was.
    static QString getUsersPreferredFormat();

    /// Takes the user's choices back: colour bar, 3D views, image format and browse folder. What only serves the memory of the program
    /// stays. Emits the hub's updatePreferenceSetting() if this changes anything.
    static void restoreDefaults();
    /// Between hold() and release() changes count at once but are not written, for controls that change many times in a second.
    /// Calls may be nested.
    static void hold();
    static void release();

    /// Keeps the preferences in this file from now on: what it holds is read when next needed, nothing is carried over.
    /// An empty name keeps them in memory alone, starting from the defaults.
    static void setStore(const QString& strFile);
    /// The file in use; empty: memory alone. Without a setStore() it is Ormelle/preferences.json in the user's configuration folder.
    static QString getStore();
};

#endif
