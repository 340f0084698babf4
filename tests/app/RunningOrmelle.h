#pragma once

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStringList>

constexpr int s_nPatience = 60000; ///< milliseconds; only a program that hangs takes so long

/// An X server of a test's own, with or without GLX.
class CDisplay
{
public:
    explicit CDisplay(const QStringList& lstOptions)
    {
        m_objServer.start(QStringLiteral("Xvfb"), QStringList{QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                                                              QStringLiteral("0"), QStringLiteral("1600x1200x24")} +
                                                      lstOptions);
        while (!m_objServer.canReadLine() && m_objServer.waitForReadyRead(s_nPatience))
        {
        }
        m_strName = QLatin1Char(':') + QString::fromLatin1(m_objServer.readLine()).trimmed();
    }
    ~CDisplay()
    {
        m_objServer.terminate();
        m_objServer.waitForFinished(s_nPatience);
    }
    QString name() const { return m_strName; }

private:
    QProcess m_objServer;
    QString m_strName;
};

/// Ormelle as its user runs it, with somebody who looks on.
class CRunningOrmelle
{
public:
    CRunningOrmelle(const QString& strProgram, const QStringList& lstArguments, const QStringList& lstEnvironment)
    {
        QProcessEnvironment objEnvironment = QProcessEnvironment::systemEnvironment();
        for (const char* pszName : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "QT_XCB_GL_INTEGRATION"})
        {
            objEnvironment.remove(QLatin1String(pszName));
        }
        objEnvironment.insert(QStringLiteral("QT_PLUGIN_PATH"), QStringLiteral(ORM_BINARY_DIR "/tests/onlooker"));
        objEnvironment.insert(QStringLiteral("QT_QPA_GENERIC_PLUGINS"), QStringLiteral("ormonlooker"));
        for (const QString& strSetting : lstEnvironment)
        {
            objEnvironment.insert(strSetting.section(QLatin1Char('='), 0, 0), strSetting.section(QLatin1Char('='), 1));
        }
        m_objProcess.setProcessEnvironment(objEnvironment);
        m_objProcess.start(strProgram, lstArguments);
    }
    ~CRunningOrmelle()
    {
        m_objProcess.kill();
        m_objProcess.waitForFinished(s_nPatience);
    }

    /// What the onlooker answers; nothing if the program is gone or does not answer.
    QJsonValue ask(const QStringList& lstWords)
    {
        m_objProcess.write(lstWords.join(QLatin1Char('\t')).toUtf8() + '\n');
        while (!m_objProcess.canReadLine() && m_objProcess.waitForReadyRead(s_nPatience))
        {
        }
        return QJsonDocument::fromJson(m_objProcess.readLine()).object().value(QStringLiteral("answer"));
    }
    /// A deed of the onlooker's; false if it could not be done.
    bool does(const QStringList& lstWords) { return ask(lstWords).toBool(); }
    QStringList rows(const QString& strList) { return ask({QStringLiteral("rows"), strList}).toVariant().toStringList(); }
    QJsonObject look() { return ask({QStringLiteral("look")}).toObject(); }
    QString log() { return ask({QStringLiteral("text"), QStringLiteral("logText")}).toString(); }
    bool running() const { return m_objProcess.state() == QProcess::Running; }

    /// Closes it as its user does; the exit code, -1 if it crashed or stayed.
    int close()
    {
        ask({QStringLiteral("close")});
        const bool bEnded = m_objProcess.waitForFinished(s_nPatience) && m_objProcess.exitStatus() == QProcess::NormalExit;
        return bEnded ? m_objProcess.exitCode() : -1;
    }
    QString complaints() { return QString::fromLocal8Bit(m_objProcess.readAllStandardError()); }

private:
    QProcess m_objProcess;
};
