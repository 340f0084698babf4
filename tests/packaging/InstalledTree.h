#pragma once

#include <QDir>
#include <QMap>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

/// How a command ended.
struct SRun
{
    int m_nExit = -1; ///< exit code; -1 when it did not start, did not end in time or crashed
    QString m_strOut; ///< standard output and error
};

/// Runs a command of the system or an installed one, five minutes at most, with more entries in its environment if wanted.
inline SRun run(const QString& strProgram, const QStringList& lstArguments, const QMap<QString, QString>& mapEnvironment = {},
                const QString& strFolder = QString())
{
    constexpr int nLimitMs = 300'000;
    QProcess objProcess;
    QProcessEnvironment objEnvironment = QProcessEnvironment::systemEnvironment();
    for (auto it = mapEnvironment.cbegin(); it != mapEnvironment.cend(); ++it)
        objEnvironment.insert(it.key(), it.value());
    objProcess.setProcessEnvironment(objEnvironment);
    objProcess.setProcessChannelMode(QProcess::MergedChannels);
    objProcess.setWorkingDirectory(strFolder);
    objProcess.start(strProgram, lstArguments);
    SRun sRun;
    if (objProcess.waitForFinished(nLimitMs) && objProcess.exitStatus() == QProcess::NormalExit)
        sRun.m_nExit = objProcess.exitCode();
    sRun.m_strOut = QString::fromUtf8(objProcess.readAll());
    return sRun;
}

/// The names of the files in a folder.
inline QStringList filesOf(const QString& strFolder)
{
    return QDir(strFolder).entryList(QDir::Files, QDir::Name);
}
