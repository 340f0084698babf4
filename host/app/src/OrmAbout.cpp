#include "OrmAbout.h"

#include "COrmPlainText.h"
#include "COrmPluginManager.h"
#include "COrmTool.h"
#include "OrmCommandLine.h"

#include <QStringList>

namespace
{
constexpr int s_nMaxLines = 12; ///< tools, and refused files, that are named one by one
}

QString OrmAbout::text(const COrmPluginManager& objPlugins)
{
    QStringList lstLines;
    lstLines << OrmCommandLine::version()
             << QStringLiteral("Preclinical optical imaging: sequences, saved results and tools to compare them.") << QString()
             << QStringLiteral("Qt %1").arg(QLatin1String(qVersion())) << QString();
    if (objPlugins.tools().empty())
        lstLines << QStringLiteral("No tools are loaded.");
    else
        lstLines << QStringLiteral("Tools:");
    int nLine = 0;
    for (const auto& pTool : objPlugins.tools())
    {
        if (++nLine <= s_nMaxLines)
            lstLines << (pTool->file().isEmpty() ? COrmPlainText::visible(pTool->name())
                                                 : COrmPlainText::visible(pTool->name() + QStringLiteral(", ") + pTool->file()));
    }
    const QStringList lstRefusals = objPlugins.refusals();
    if (!lstRefusals.isEmpty())
        lstLines << QString() << QStringLiteral("Not loaded:");
    for (const QString& strRefusal : lstRefusals.mid(0, s_nMaxLines))
        lstLines << COrmPlainText::visible(strRefusal);
    if (lstRefusals.size() > s_nMaxLines)
        lstLines << QStringLiteral("and %1 more, see the log.").arg(lstRefusals.size() - s_nMaxLines);
    return lstLines.join(QLatin1Char('\n'));
}
