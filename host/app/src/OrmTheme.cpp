#include "OrmTheme.h"

#include "COutlineStyle.h"
#include "OrmIcons.h"

#include <QApplication>
#include <QStyle>
#include <QStyleFactory>
#include <QToolTip>
#include <memory>

namespace
{
/// How the desktop, or an option of Qt, wanted the windows before anything was changed.
struct SDesktop
{
    QString m_strStyle = QApplication::style()->objectName();
    QPalette m_objPalette = QApplication::palette();
    QPalette m_objToolTip = QToolTip::palette();
};

OrmTheme::ETheme s_eCurrent = OrmTheme::eSystem;

QPalette darkPalette()
{
    const QColor clrWindow(0x2f, 0x30, 0x34);
    const QColor clrText(0xe8, 0xe8, 0xea);
    const QColor clrButton(0x3b, 0x3c, 0x41);
    const QColor clrDisabled(0x8a, 0x8b, 0x90);
    // Window text, button, light, dark, mid, text, bright text, base, window.
    QPalette objPalette(clrText, clrButton, QColor(0x5a, 0x5b, 0x62), QColor(0x1e, 0x1f, 0x22), QColor(0x2a, 0x2b, 0x2f), clrText,
                        Qt::white, QColor(0x1f, 0x20, 0x23), clrWindow);
    objPalette.setColor(QPalette::Midlight, QColor(0x48, 0x49, 0x4f));
    objPalette.setColor(QPalette::AlternateBase, QColor(0x28, 0x29, 0x2d));
    objPalette.setColor(QPalette::ButtonText, clrText);
    objPalette.setColor(QPalette::Shadow, Qt::black);
    objPalette.setColor(QPalette::Highlight, QColor(0x2f, 0x6f, 0xb7));
    objPalette.setColor(QPalette::HighlightedText, Qt::white);
    objPalette.setColor(QPalette::Link, QColor(0x7a, 0xb8, 0xf5));
    objPalette.setColor(QPalette::LinkVisited, QColor(0xb8, 0x9c, 0xf0));
    objPalette.setColor(QPalette::ToolTipBase, QColor(0x48, 0x49, 0x4f));
    objPalette.setColor(QPalette::ToolTipText, clrText);
    objPalette.setColor(QPalette::PlaceholderText, QColor(0x9a, 0x9b, 0xa1));
    for (const QPalette::ColorRole eRole : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        objPalette.setColor(QPalette::Disabled, eRole, clrDisabled);
    objPalette.setColor(QPalette::Disabled, QPalette::Base, clrWindow);
    objPalette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(0x50, 0x51, 0x57));
    objPalette.setColor(QPalette::Disabled, QPalette::HighlightedText, clrDisabled);
    return objPalette;
}
} // namespace

QPalette OrmTheme::palette(bool bDark)
{
    if (bDark)
        return darkPalette();
    const std::unique_ptr<QStyle> pFusion(QStyleFactory::create(QStringLiteral("Fusion")));
    return pFusion->standardPalette();
}

void OrmTheme::apply(ETheme eTheme)
{
    static const SDesktop s_sDesktop;
    if (eTheme == s_eCurrent)
        return;
    s_eCurrent = eTheme;
    const bool bOwn = eTheme != eSystem;
    OrmIcons::setThemeFirst(!bOwn);
    const QPalette objPalette = bOwn ? palette(eTheme == eDark) : s_sDesktop.m_objPalette;
    QApplication::setStyle(bOwn ? new COutlineStyle : QStyleFactory::create(s_sDesktop.m_strStyle));
    QApplication::setPalette(objPalette);
    QToolTip::setPalette(bOwn ? objPalette : s_sDesktop.m_objToolTip);
}

OrmTheme::ETheme OrmTheme::current()
{
    return s_eCurrent;
}

QString OrmTheme::name(ETheme eTheme)
{
    return eTheme == eLight ? QStringLiteral("light") : eTheme == eDark ? QStringLiteral("dark") : QStringLiteral("system");
}

OrmTheme::ETheme OrmTheme::fromName(const QString& strName)
{
    return strName == name(eLight) ? eLight : strName == name(eDark) ? eDark : eSystem;
}
