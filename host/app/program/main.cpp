#include "COrmApplication.h"
#include "COrmMainWindow.h"
#include "COrmPluginManager.h"
#include "COrmPreference.h"
#include "OrmCommandLine.h"

#include <cstdio>

namespace
{
void print(FILE* pTo, const QString& strText)
{
    const QByteArray arrText = strText.toLocal8Bit();
    std::fwrite(arrText.constData(), 1, static_cast<size_t>(arrText.size()), pTo);
}

/// The arguments as typed, for what is answered without a display.
QStringList asTyped(int nArguments, char** ppArguments)
{
    QStringList lstArguments;
    for (int nArgument = 0; nArgument < nArguments; ++nArgument)
        lstArguments.append(QString::fromLocal8Bit(ppArguments[nArgument]));
    return lstArguments;
}
} // namespace

int main(int nArguments, char** ppArguments)
{
    const QStringList lstTyped = asTyped(nArguments, ppArguments);
    if (OrmCommandLine::wantsTextOnly(lstTyped))
    {
        const bool bHelp = lstTyped.contains(QStringLiteral("-h")) || lstTyped.contains(QStringLiteral("--help"));
        print(stdout, bHelp ? OrmCommandLine::usage() : OrmCommandLine::version() + QLatin1Char('\n'));
        return 0;
    }

    COrmApplication::prepare();
    COrmApplication objApplication(nArguments, ppArguments); // takes the options of Qt out of the arguments; ends without a display
    const SCommandLine sLine = OrmCommandLine::parse(QCoreApplication::arguments());
    if (!sLine.m_strError.isEmpty())
    {
        print(stderr, sLine.m_strError + QStringLiteral("\n\n") + OrmCommandLine::usage());
        return 2;
    }
    if (sLine.m_bNoSettings)
        COrmPreference::setStore(QString());

    COrmMainWindow objWindow;
    objWindow.loadTools(COrmPluginManager::defaultFolder());
    QObject::connect(&objWindow, &COrmMainWindow::closed, &objApplication, &QCoreApplication::quit, Qt::QueuedConnection);
    objWindow.show();
    objWindow.start(sLine);
    return COrmApplication::exec();
}
