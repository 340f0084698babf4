#include "OrmDiagnosis.h"

#include "COrmHostSettings.h"
#include "COrmPlainText.h"
#include "COrmPluginManager.h"
#include "COrmPreference.h"
#include "COrmTool.h"
#include "CSOLAView.h"
#include "OrmCommandLine.h"

#include <QApplication>
#include <QFileInfo>
#include <QLocale>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QScreen>
#include <QStringList>
#include <QStyle>
#include <QSysInfo>

#include <pugixml.hpp>
#include <qwt_global.h>
#include <tiffio.h>

namespace
{
QString line(const QString& strName, const QString& strValue)
{
    return strName + QStringLiteral(": ") + COrmPlainText::visible(strValue);
}

/// The named settings of the environment that are set, as NAME=value.
QString environment(std::initializer_list<const char*> lstNames)
{
    QStringList lstSet;
    for (const char* pszName : lstNames)
    {
        if (qEnvironmentVariableIsSet(pszName))
            lstSet << QString::fromLatin1(pszName) + QLatin1Char('=') + qEnvironmentVariable(pszName);
    }
    return lstSet.isEmpty() ? QStringLiteral("nothing of note") : lstSet.join(QLatin1Char(' '));
}

QString pugixmlVersion()
{
    // 1013 or, since 1.10, 1130 stand for 1.13.
    const int nVersion = PUGIXML_VERSION;
    return nVersion >= 1000 ? QStringLiteral("%1.%2").arg(nVersion / 1000).arg(nVersion % 1000 / 10)
                            : QStringLiteral("%1.%2").arg(nVersion / 100).arg(nVersion % 100 / 10);
}

QStringList screens()
{
    QStringList lstLines;
    const QList<QScreen*> lstScreens = QGuiApplication::screens();
    for (const QScreen* pScreen : lstScreens)
    {
        const QRect rc = pScreen->geometry();
        lstLines << line(QStringLiteral("Screen"), QStringLiteral("%1, %2 x %3 pixels at %4, %5, %6 bits, %7 dpi, scaling %8")
                                                       .arg(pScreen->name().isEmpty() ? QStringLiteral("without a name") : pScreen->name())
                                                       .arg(rc.width())
                                                       .arg(rc.height())
                                                       .arg(rc.x())
                                                       .arg(rc.y())
                                                       .arg(pScreen->depth())
                                                       .arg(pScreen->logicalDotsPerInch(), 0, 'f', 0)
                                                       .arg(pScreen->devicePixelRatio(), 0, 'g', 3));
    }
    return lstLines;
}

/// What the driver says of itself, or why it says nothing.
QString openGLText()
{
    QOpenGLContext objContext;
    objContext.setFormat(QSurfaceFormat::defaultFormat());
    if (!objContext.create())
        return QStringLiteral("none: no context can be made on this display");
    QOffscreenSurface objSurface;
    objSurface.setFormat(objContext.format());
    objSurface.create();
    if (!objSurface.isValid() || !objContext.makeCurrent(&objSurface))
        return QStringLiteral("none: the context cannot be used on this display");
    QOpenGLFunctions* pFunctions = objContext.functions();
    const auto text = [pFunctions](GLenum eName)
    {
        const GLubyte* pszText = pFunctions->glGetString(eName);
        return pszText != nullptr ? QString::fromLatin1(reinterpret_cast<const char*>(pszText)) : QStringLiteral("unknown");
    };
    const QString strText = QStringLiteral("version %1; renderer %2; vendor %3").arg(text(GL_VERSION), text(GL_RENDERER), text(GL_VENDOR));
    objContext.doneCurrent();
    return strText;
}

QString fileState(const QString& strFile)
{
    if (strFile.isEmpty())
        return QStringLiteral("kept in memory alone");
    const QFileInfo objFile(strFile);
    const QFileInfo objFolder(objFile.absolutePath());
    QString strState = QStringLiteral("not there");
    if (objFile.exists())
        strState = QStringLiteral("%1 bytes, %2")
                       .arg(objFile.size())
                       .arg(objFile.isReadable() ? QStringLiteral("readable") : QStringLiteral("not readable"));
    if (objFolder.exists() && !objFolder.isWritable())
        strState += QStringLiteral(", folder not writable");
    return QStringLiteral("%1 (%2)").arg(strFile, strState);
}
} // namespace

QString OrmDiagnosis::system(const QString& strNoDisplay)
{
    QStringList lstLines;
    lstLines << OrmCommandLine::version() << line(QStringLiteral("Program"), QCoreApplication::applicationFilePath())
             << line(QStringLiteral("System"), QStringLiteral("%1, %2 %3, %4")
                                                   .arg(QSysInfo::prettyProductName(), QSysInfo::kernelType(), QSysInfo::kernelVersion(),
                                                        QSysInfo::currentCpuArchitecture()))
             << line(QStringLiteral("Qt"),
                     QStringLiteral("built with %1, running on %2").arg(QStringLiteral(QT_VERSION_STR), QLatin1String(qVersion())))
             << line(QStringLiteral("libtiff"),
                     QString::fromLatin1(TIFFGetVersion()).section(QLatin1Char('\n'), 0, 0).section(QLatin1Char(' '), -1))
             << line(QStringLiteral("Qwt"), QStringLiteral(QWT_VERSION_STR)) << line(QStringLiteral("pugixml"), pugixmlVersion());
    if (!strNoDisplay.isEmpty())
        lstLines << line(QStringLiteral("No display"), strNoDisplay)
                 << QStringLiteral("What follows about screens and OpenGL is that of a display in memory.");
    lstLines << line(QStringLiteral("Platform"), QGuiApplication::platformName())
             << line(QStringLiteral("Environment"),
                     environment({"DISPLAY", "WAYLAND_DISPLAY", "XDG_SESSION_TYPE", "XDG_CURRENT_DESKTOP", "QT_QPA_PLATFORM",
                                  "QT_QPA_PLATFORMTHEME", "QT_STYLE_OVERRIDE", "QT_SCALE_FACTOR", "QT_SCREEN_SCALE_FACTORS", "QT_FONT_DPI",
                                  "QT_XCB_GL_INTEGRATION", "LIBGL_ALWAYS_SOFTWARE", "LIBGL_DRIVERS_PATH", "MESA_GL_VERSION_OVERRIDE",
                                  "QT_LOGGING_RULES"}))
             << screens() << line(QStringLiteral("Style"), QApplication::style()->objectName())
             << line(QStringLiteral("Font"),
                     QStringLiteral("%1, %2 points").arg(QApplication::font().family()).arg(QApplication::font().pointSizeF()))
             << line(QStringLiteral("OpenGL"), openGLText());
    QString strAmiss;
    lstLines << line(QStringLiteral("3D view"), CSOLAView::openGLAvailable(&strAmiss)
                                                    ? QStringLiteral("works")
                                                    : strAmiss.replace(QLatin1Char('\n'), QLatin1Char(' ')))
             << line(QStringLiteral("Locale"),
                     QStringLiteral("%1; %2").arg(QLocale::system().name(), environment({"LC_ALL", "LC_NUMERIC", "LANG"})))
             << line(QStringLiteral("Preferences"), fileState(COrmPreference::getStore()))
             << line(QStringLiteral("Windows"), fileState(COrmHostSettings::file()));
    return lstLines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

QString OrmDiagnosis::plugins(const COrmPluginManager& objPlugins)
{
    QStringList lstLines{line(QStringLiteral("Plug-ins"), COrmPluginManager::defaultFolder())};
    for (const auto& pTool : objPlugins.tools())
        lstLines << line(QStringLiteral("Accepted"), QStringLiteral("%1, %2, %3").arg(pTool->name(), pTool->identifier(), pTool->file()));
    const QStringList lstRefusals = objPlugins.refusals();
    for (const QString& strRefusal : lstRefusals)
        lstLines << line(QStringLiteral("Refused"), strRefusal);
    if (lstLines.size() == 1)
        lstLines << QStringLiteral("No plug-in is there.");
    return lstLines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}
