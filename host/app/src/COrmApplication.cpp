#include "COrmApplication.h"

#include "COrmUtilityFns.h"
#include "CSOLAView.h"
#include "OrmAccessibleNames.h"
#include "OrmGuard.h"
#include "OrmVersion.h"

#include <QIcon>
#include <QtPlugin>
#include <clocale>

// Makes the pictures of tools' forms crisp and readable in every theme.
Q_IMPORT_PLUGIN(CInkIconPlugin)

void COrmApplication::prepare()
{
    // The 3D views count in device pixels, so Qt must not scale them; widgets grow with the font.
    setAttribute(Qt::AA_DisableHighDpiScaling);
    setAttribute(Qt::AA_UseHighDpiPixmaps); // crisp icons where scaling is forced on from outside
    CSOLAView::setDefaultFormat();
}

COrmApplication::COrmApplication(int& nArguments, char** ppArguments) : QApplication(nArguments, ppArguments)
{
    // Qt takes over the user's locale, in which numbers in files would read with a comma.
    std::setlocale(LC_NUMERIC, "C");
    setApplicationName(COrmUtilityFns::getAppName());
    setWindowIcon(QIcon(QStringLiteral(":/Resource/luminescent_icon.xpm")));
    setApplicationVersion(QLatin1String(OrmVersion::s_pText));
    OrmAccessibleNames::install();
}

bool COrmApplication::notify(QObject* pReceiver, QEvent* pEvent)
{
    bool bHandled = false;
    OrmGuard::run(QStringLiteral("A window"), [&] { bHandled = QApplication::notify(pReceiver, pEvent); });
    return bHandled;
}
