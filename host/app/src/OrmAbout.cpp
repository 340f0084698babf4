#include "OrmAbout.h"

#include "COrmPlainText.h"
#include "COrmPluginManager.h"
#include "COrmTool.h"
#include "COrmUtilityFns.h"
#include "OrmVersion.h"

#include <QCoreApplication>
#include <QStringList>

namespace
{
class CText
{
    Q_DECLARE_TR_FUNCTIONS(OrmAbout)
};

constexpr int s_nMaxLines = 12; ///< tools, and refused files, that are named one by one
} // namespace

QString OrmAbout::text(const COrmPluginManager& objPlugins)
{
    QStringList lstLines;
    lstLines << CText::tr("%1 %2, build %3")
                    .arg(COrmUtilityFns::getAppName(), QLatin1String(OrmVersion::s_pText), QLatin1String(OrmVersion::s_pBuild))
             << CText::tr("Preclinical optical imaging: sequences, saved results and tools to compare them.") << QString()
             << QStringLiteral("Qt %1").arg(QLatin1String(qVersion())) << QString();
    if (objPlugins.tools().empty())
        lstLines << CText::tr("No tools are loaded.");
    else
        lstLines << CText::tr("Tools:");
    int nLine = 0;
    for (const auto& pTool : objPlugins.tools())
    {
        if (++nLine <= s_nMaxLines)
            lstLines << (pTool->file().isEmpty() ? COrmPlainText::visible(pTool->name())
                                                 : COrmPlainText::visible(pTool->name() + QStringLiteral(", ") + pTool->file()));
    }
    const QStringList lstRefusals = objPlugins.refusals();
    if (!lstRefusals.isEmpty())
        lstLines << QString() << CText::tr("Not loaded:");
    for (const QString& strRefusal : lstRefusals.mid(0, s_nMaxLines))
        lstLines << COrmPlainText::visible(strRefusal);
    if (lstRefusals.size() > s_nMaxLines)
        lstLines << CText::tr("and %n more, see the log.", nullptr, lstRefusals.size() - s_nMaxLines);
    return lstLines.join(QLatin1Char('\n'));
}
