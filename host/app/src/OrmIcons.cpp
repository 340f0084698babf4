#include "OrmIcons.h"

#include "CInkIconEngine.h"

#include <QFile>
#include <QHash>

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

QIcon OrmIcons::icon(const QString& strName)
{
    const QString strTheme = s_bThemeFirst ? themeName(strName) : QString();
    if (!strTheme.isEmpty() && QIcon::hasThemeIcon(strTheme))
        return QIcon::fromTheme(strTheme);
    init();
    return QFile::exists(QStringLiteral(":/icons/%1.svg").arg(strName)) ? QIcon(new CInkIconEngine(strName)) : QIcon();
}

void OrmIcons::setThemeFirst(bool bThemeFirst)
{
    s_bThemeFirst = bThemeFirst;
}
