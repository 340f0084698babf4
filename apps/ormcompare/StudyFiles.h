#pragma once

#include <QByteArray>
#include <QLockFile>
#include <QString>
#include <QStringList>

#include <mutex>
#include <optional>

/// The usual files of a study.
namespace StudyFiles
{
QString figure();
QString table();
QString growthTable();
QString growthPicture();
/// @param nKind 0 SOLA, 1 NOVA; @param nMeasure entry of the window's list of measures
QString plot(int nKind, int nMeasure);
/// Measures that plot() knows.
constexpr int s_nMeasures = 3;
/// All of them, whether or not a study has them.
QStringList all();

/// What decides on a study's files, as one text: version of the program, look, results, and place, size and time of change of every file
/// below the folders. Equal texts mean equal files. Links to files are followed, links to folders are not, as where sequences are searched.
/// @param lstArguments the arguments that decide what is shown
QString fingerprint(const QStringList& lstFolders, const QStringList& lstArguments);
} // namespace StudyFiles

/// A folder that holds the usual files of a study, with a record of what made them. The files change together: new ones are written
/// beside the old ones and replace them at the end.
class CStudyFolder
{
public:
    explicit CStudyFolder(const QString& strFolder);

    /// Keeps other programs away and makes room for new files. Empty, or one sentence on why that cannot be.
    QString begin();
    /// Where a new file is to be written.
    QString newFile(const QString& strName) const;
    /// Puts the new files in the place of the old ones; those that were not written again go. @param bComplete nothing went wrong
    /// @return empty, or one sentence on why that cannot be
    QString commit(const QString& strFingerprint, bool bComplete);
    /// Gives up: takes the new files away and lets others in. May be called on another thread than the writing one, just before the end.
    void abandon();

    /// Whether the files are those of a fingerprint, without a flaw.
    bool isUpToDate(const QString& strFingerprint) const;
    /// Whether the files are those of a fingerprint, as far as there were any.
    bool isOf(const QString& strFingerprint) const;
    /// Takes all files away after a run that ended early: what lies there is of older inputs. Unless some other run is at work there.
    void forget();

private:
    /// What made the files.
    struct SRecord
    {
        QString m_strFingerprint;
        bool m_bComplete = false;
        bool m_bUnharmed = false; ///< every file is there in its size
    };
    QString path(const QString& strName) const;
    void discard();
    std::optional<SRecord> record() const;

    QString m_strFolder;
    QLockFile m_objLock;
    std::mutex m_objGuard;     ///< a lock that is cut off while it is made would count as somebody's for ever
    bool m_bAbandoned = false; ///< nothing is begun any more
};
