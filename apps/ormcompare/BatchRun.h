#pragma once

#include "CompareOptions.h"
#include "StudyFiles.h"

#include <QElapsedTimer>
#include <QObject>
#include <QStringList>
#include <QVector>

#include <memory>

class QProcess;

/// Compares each study below a folder in a process of its own, some at a time, so that what ends one study ends no other.
class CBatchRun : public QObject
{
    Q_OBJECT

public:
    explicit CBatchRun(const SCompareOptions& options);
    ~CBatchRun() override;

    /// Does all that was asked for; runs an event loop meanwhile. True if everything succeeded; otherwise reasons() has one line for each
    /// thing that did not.
    bool run();
    const QStringList& reasons() const { return m_lstReasons; }

public slots:
    /// Ends the work soon: what runs is told to end, nothing new begins.
    void stop();

private:
    /// A study on its way.
    struct SStudy
    {
        QString m_strName;   ///< of its folder
        QString m_strFolder; ///< where its sequences are
        QString m_strFingerprint;
    };

    bool begin();
    void findStudies();
    void startSome();
    void start(int nStudy);
    void finish(int nStudy, QProcess& process);
    void tidy(const SStudy& study) const;
    void told(const SStudy& study, const QByteArray& aErrors);
    void sumUp();
    void writeTable(const QString& strName, const QString& strFile);
    CStudyFolder folderOf(const SStudy& study) const;
    void fail(const QString& strReason) { m_lstReasons.append(strReason); }
    void progress(const SStudy& study, const QString& strOutcome);

    SCompareOptions m_options;
    QLockFile m_objLock;
    QVector<SStudy> m_lstStudies; ///< all, by name
    QVector<int> m_lstToMake;     ///< indexes of those that are not up to date
    int m_nNext = 0;              ///< in m_lstToMake
    int m_nRunning = 0;
    int m_nMade = 0;
    int m_nFailed = 0;
    int m_nOther = 0; ///< folders without a sequence
    bool m_bStopped = false;
    QElapsedTimer m_objClock; ///< since the first study began
    QStringList m_lstReasons;
};
