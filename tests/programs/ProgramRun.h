#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

/// How a program of the project ended.
struct SProgramRun
{
    int m_nExit = -1; ///< exit code; -1 when it did not end in time or crashed
    QString m_strOut;
    QString m_strError;
};

/// Runs a program of this build with the arguments, two minutes at most.
inline SProgramRun runProgram(const QString& strName, const QStringList& lstArguments)
{
    QProcess process;
    process.start(QStringLiteral(ORM_BINARY_DIR "/bin/") + strName, lstArguments);
    SProgramRun run;
    if (process.waitForFinished(120000) && process.exitStatus() == QProcess::NormalExit)
    {
        run.m_nExit = process.exitCode();
    }
    run.m_strOut = QString::fromUtf8(process.readAllStandardOutput());
    run.m_strError = QString::fromUtf8(process.readAllStandardError());
    return run;
}
