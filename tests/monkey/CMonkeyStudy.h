#pragma once

#include "CMonkeyRandom.h"
#include "CStudyWriter.h"

#include <QSet>
#include <QStringList>

/// The study that the monkey works on: small results of both kinds, some of them damaged, in sequences whose IDs hold one another, in one
/// that is of both kinds, in one without results; and one that the host never opens, on disk beside them.
class CMonkeyStudy
{
public:
    CMonkeyStudy();

    /// What the host opens.
    QString folder() const { return m_objOpen.folder(); }
    QStringList sequences() const;
    /// Files that the open dialog is given: sequences, and what is none.
    QStringList filesToOpen() const;
    /// Keys that results of two sequences have in common.
    static QSet<QString> sharedKeys();
    /// A folder to export into.
    QString exportFolder() const { return m_objDisk.folder(); }
    /// Changes an index of saved results behind the tool's back; says how.
    QString changeIndex(CMonkeyRandom& objRandom);

private:
    CStudyWriter m_objOpen;
    CStudyWriter m_objDisk;
    bool m_bTakenOut = false;
};
