#include "OrmIcons.h"

#include "CInkIconEngine.h"

#include <QFile>
#include <QHash>
#include <algorithm>

// Stands outside every namespace, as the macro demands.
static void initDrawings()
{
    Q_INIT_RESOURCE(icons);
}

namespace
{
bool s_bThemeFirst = true;

/// What icon themes of the desktop call the thing.
QString themeName(const QString& strName)
{
    static const QHash<QString, QString> s_mapNames = {
        {QStringLiteral("open"), QStringLiteral("document-open")},
        {QStringLiteral("copy"), QStringLiteral("edit-copy")},
        {QStringLiteral("refresh"), QStringLiteral("view-refresh")},
        {QStringLiteral("close"), QStringLiteral("window-close")},
        {QStringLiteral("quit"), QStringLiteral("application-exit")},
        {QStringLiteral("preferences"), QStringLiteral("preferences-system")},
        {QStringLiteral("log"), QStringLiteral("text-x-generic")},
        {QStringLiteral("keyboard"), QStringLiteral("input-keyboard")},
        {QStringLiteral("about"), QStringLiteral("help-about")},
        {QStringLiteral("find"), QStringLiteral("edit-find")},
        {QStringLiteral("selectall"), QStringLiteral("edit-select-all")},
    };
    return s_mapNames.value(strName);
}
} // namespace

void OrmIcons::init()
{
    static const bool s_bDone = (initDrawings(), true);
    Q_UNUSED(s_bDone);
}

QIcon OrmIcons::drawing(const QString& strName)
{
    init();
    return QFile::exists(QStringLiteral(":/icons/%1.svg").arg(strName)) ? QIcon(new CInkIconEngine(strName)) : QIcon();
}

QIcon OrmIcons::kindIcon(bool bLuminescent, bool bFluorescent)
{
    return drawing(bLuminescent   ? QStringLiteral("luminescent")
                   : bFluorescent ? QStringLiteral("fluorescent")
                                  : QStringLiteral("photograph"));
}

QList<QIcon> OrmIcons::family(const QStringList& lstNames)
{
    const bool bTheme = s_bThemeFirst && std::all_of(lstNames.cbegin(), lstNames.cend(),
                                                     [](const QString& strName)
                                                     {
                                                         const QString strTheme = themeName(strName);
                                                         return !strTheme.isEmpty() && QIcon::hasThemeIcon(strTheme);
                                                     });
    QList<QIcon> lstIcons;
    for (const QString& strName : lstNames)
        lstIcons.append(bTheme ? QIcon::fromTheme(themeName(strName)) : drawing(strName));
    return lstIcons;
}

void OrmIcons::setThemeFirst(bool bThemeFirst)
{
    s_bThemeFirst = bThemeFirst;
}
