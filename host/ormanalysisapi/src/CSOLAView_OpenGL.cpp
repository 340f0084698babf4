// What OpenGL the views need, and whether the display has it.
#include "CSOLAView.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QSurfaceFormat>

#include <array>

#include <GL/gl.h>

namespace
{
class CText
{
    Q_DECLARE_TR_FUNCTIONS(CSOLAView)
};

/// Platforms of Qt that draw windows in memory alone and hand no OpenGL to widgets.
bool platformComposesWidgets()
{
    static const std::array<const char*, 5> s_apszWithout = {"offscreen", "minimal", "linuxfb", "vnc", "directfb"};
    const QString strPlatform = QGuiApplication::platformName();
    for (const char* pszName : s_apszWithout)
    {
        if (strPlatform == QLatin1String(pszName))
        {
            return false;
        }
    }
    return true;
}

/// Empty if a context can be had and serves, otherwise what is amiss.
QString whatIsAmiss()
{
    if (!platformComposesWidgets())
    {
        return CText::tr("the display \"%1\" shows none in windows").arg(QGuiApplication::platformName());
    }
    QOpenGLContext objContext;
    if (!objContext.create())
    {
        return CText::tr("the display gives none");
    }
    if (objContext.isOpenGLES())
    {
        return CText::tr("the display gives OpenGL ES instead");
    }
    QOffscreenSurface objSurface;
    objSurface.setFormat(objContext.format());
    objSurface.create();
    if (!objSurface.isValid() || !objContext.makeCurrent(&objSurface))
    {
        return CText::tr("the display does not let it draw");
    }
    const QSurfaceFormat objFormat = objContext.format();
    const auto* pszVersion = reinterpret_cast<const char*>(glGetString(GL_VERSION));
    objContext.doneCurrent();
    if (!pszVersion || objFormat.version() < qMakePair(2, 1))
    {
        return CText::tr("the display gives only version %1.%2").arg(objFormat.majorVersion()).arg(objFormat.minorVersion());
    }
    if (objFormat.profile() == QSurfaceFormat::CoreProfile)
    {
        return CText::tr("the display gives only a core profile");
    }
    return QString();
}
} // namespace

void CSOLAView::setDefaultFormat()
{
    QSurfaceFormat objFormat;
    objFormat.setRenderableType(QSurfaceFormat::OpenGL);
    objFormat.setProfile(QSurfaceFormat::CompatibilityProfile);
    objFormat.setVersion(2, 1);
    objFormat.setDepthBufferSize(24);
    objFormat.setSamples(0);
    // No size is asked for alpha: blending would make pictures translucent that are saved from it.
    QSurfaceFormat::setDefaultFormat(objFormat);
}

bool CSOLAView::openGLAvailable(QString* pReason)
{
    static const QString s_strAmiss = whatIsAmiss();
    if (pReason)
    {
        *pReason =
            s_strAmiss.isEmpty()
                ? QString()
                : CText::tr("The 3D view needs OpenGL 2.1 with its fixed functions, but %1.\nEverything else works.").arg(s_strAmiss);
    }
    return s_strAmiss.isEmpty();
}
