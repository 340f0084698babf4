#include "OrmSettingsReset.h"

#include "COrmHostSettings.h"
#include "COrmPreference.h"
#include "CSettingsStore.h"

#include <QFile>
#include <QFileInfo>

OrmSettingsReset::SOutcome OrmSettingsReset::run()
{
    SOutcome sOutcome;
    for (const QString& strFile : {COrmPreference::getStore(), COrmHostSettings::file()})
    {
        if (strFile.isEmpty() || !(QFileInfo::exists(strFile) || QFileInfo(strFile).isSymLink()))
            continue;
        const QString strCopy = CSettingsStore::freeName(strFile, QStringLiteral(".before-reset"));
        QFile objFile(strFile);
        if (!strCopy.isEmpty() && objFile.rename(strCopy))
            sOutcome.m_lstRemoved << QStringLiteral("Removed %1; a copy is kept as %2.").arg(strFile, strCopy);
        else
            sOutcome.m_lstFailed << QStringLiteral("%1 could not be removed: %2.").arg(strFile, objFile.errorString());
    }
    return sOutcome;
}
