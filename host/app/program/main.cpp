#include "COrmApplication.h"
#include "COrmDisplayCheck.h"
#include "COrmHostSettings.h"
#include "COrmLog.h"
#include "COrmLogFile.h"
#include "COrmMainWindow.h"
#include "COrmPluginManager.h"
#include "COrmPreference.h"
#include "COrmQtMessages.h"
#include "OrmCommandLine.h"
#include "OrmDiagnosis.h"
#include "OrmLanguage.h"
#include "OrmSettingsReset.h"

#include <QLocale>

#include <cstdio>

namespace
{
constexpr int s_nDone = 0;
constexpr int s_nFailed = 1;
constexpr int s_nWrongUsage = 2;

void print(FILE* pTo, const QString& strText)
{
    const QByteArray arrText = strText.toLocal8Bit();
    std::fwrite(arrText.constData(), 1, static_cast<size_t>(arrText.size()), pTo);
    std::fflush(pTo);
}

/// The arguments as typed, for what is answered without a display.
QStringList asTyped(int nArguments, char** ppArguments)
{
    QStringList lstArguments;
    for (int nArgument = 0; nArgument < nArguments; ++nArgument)
        lstArguments.append(QString::fromLocal8Bit(ppArguments[nArgument]));
    return lstArguments;
}

bool refuse(const SCommandLine& sLine)
{
    if (sLine.m_strError.isEmpty())
        return false;
    print(stderr, sLine.m_strError + QStringLiteral("\n\n") + OrmCommandLine::usage());
    return true;
}

int resetSettings(const QStringList& lstTyped)
{
    if (refuse(OrmCommandLine::parse(lstTyped)))
        return s_nWrongUsage;
    const OrmSettingsReset::SOutcome sOutcome = OrmSettingsReset::run();
    for (const QString& strLine : sOutcome.m_lstRemoved)
        print(stdout, strLine + QLatin1Char('\n'));
    for (const QString& strLine : sOutcome.m_lstFailed)
        print(stderr, strLine + QLatin1Char('\n'));
    if (sOutcome.m_lstRemoved.isEmpty() && sOutcome.m_lstFailed.isEmpty())
        print(stdout, QStringLiteral("There are no settings: %1 is not there.\n").arg(COrmPreference::getStore()));
    return sOutcome.m_lstFailed.isEmpty() ? s_nDone : s_nFailed;
}

int diagnose(int nArguments, char** ppArguments)
{
    COrmApplication::prepare();
    const COrmDisplayCheck objDisplay(nArguments, ppArguments);
    const QString strNoDisplay = objDisplay.refusal();
    const QStringList lstTyped = asTyped(nArguments, ppArguments);
    const char* pszPlatform = "QT_QPA_PLATFORM";
    const QByteArray arrPlatform = qgetenv(pszPlatform);
    if (!strNoDisplay.isEmpty())
    {
        qputenv(pszPlatform, "offscreen");
        nArguments = 1; // an option of Qt may ask for the display that is not there
    }
    COrmApplication objApplication(nArguments, ppArguments);
    if (arrPlatform.isEmpty())
        qunsetenv(pszPlatform); // the diagnosis tells what the user set
    else
        qputenv(pszPlatform, arrPlatform);
    const SCommandLine sLine = OrmCommandLine::parse(QCoreApplication::arguments());
    if (refuse(sLine))
        return s_nWrongUsage;
    if (sLine.m_bNoSettings || lstTyped.contains(QStringLiteral("--no-settings")))
        COrmPreference::setStore(QString());
    print(stdout, OrmDiagnosis::system(strNoDisplay));
    // Last, so that a tool that ends the program leaves the rest to be read.
    COrmPluginManager objPlugins;
    objPlugins.loadFolder(COrmPluginManager::defaultFolder());
    print(stdout, OrmDiagnosis::plugins(objPlugins));
    return s_nDone;
}
} // namespace

int main(int nArguments, char** ppArguments)
{
    const QStringList lstTyped = asTyped(nArguments, ppArguments);
    if (OrmCommandLine::wantsTextOnly(lstTyped))
    {
        const bool bHelp = lstTyped.contains(QStringLiteral("-h")) || lstTyped.contains(QStringLiteral("--help"));
        print(stdout, bHelp ? OrmCommandLine::usage() : OrmCommandLine::version() + QLatin1Char('\n'));
        return s_nDone;
    }

    const SCommandLine sEarly = OrmCommandLine::parseEarly(lstTyped);
    COrmLogFile objLogFile;
    if (!sEarly.m_strLogFile.isEmpty())
    {
        const QString strReason = objLogFile.open(sEarly.m_strLogFile);
        if (!strReason.isEmpty())
        {
            print(stderr, strReason + QLatin1Char('\n'));
            return s_nFailed;
        }
    }
    const COrmQtMessages objQtMessages;
    ORM_LOG(1, OrmCommandLine::version() + QStringLiteral(" starts."));
    if (sEarly.m_bResetSettings)
        return resetSettings(lstTyped);
    if (sEarly.m_bDiagnose)
        return diagnose(nArguments, ppArguments);

    COrmApplication::prepare();
    COrmApplication objApplication(nArguments, ppArguments); // takes the options of Qt out of the arguments; ends without a display
    const SCommandLine sLine = OrmCommandLine::parse(QCoreApplication::arguments());
    if (refuse(sLine))
        return s_nWrongUsage;
    if (sLine.m_bNoSettings)
        COrmPreference::setStore(QString());
    const QString strLanguage = sLine.m_strLanguage.isEmpty() ? COrmHostSettings().language() : sLine.m_strLanguage;
    OrmLanguage::use(OrmLanguage::choose(strLanguage, QLocale::system().uiLanguages()));

    COrmMainWindow objWindow;
    objWindow.loadTools(COrmPluginManager::defaultFolder());
    QObject::connect(&objWindow, &COrmMainWindow::closed, &objApplication, &QCoreApplication::quit, Qt::QueuedConnection);
    objWindow.show();
    objWindow.start(sLine);
    return COrmApplication::exec();
}
