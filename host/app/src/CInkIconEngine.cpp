// The plug-in below is part of the program.
#define QT_STATICPLUGIN

#include "CInkIconEngine.h"

#include "OrmIcons.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QIconEnginePlugin>
#include <QPainter>
#include <QPalette>
#include <QStyle>
#include <QStyleOption>
#include <QSvgRenderer>
#include <algorithm>

namespace
{
/// A colour of the drawings, and what stands for it on a dark ground.
struct SInk
{
    const char* pszDrawn;
    const char* pszOnDark;
};
const char* const s_pszInk = "#202020"; ///< lines: the palette's text
const SInk s_lstAccents[] = {
    {"#3f7d14", "#7cc44a"}, // what a command does; light that is given off
    {"#b8480c", "#f2935c"}, // light that answers light
};

/// The drawings that stand for pictures which other parts of the house name by file.
struct SPicture
{
    const char* pszFile;
    const char* pszDrawing;
};
const SPicture s_lstPictures[] = {
    {"fileopen_enabled.xpm", "open"},        {"filecopy_enabled.xpm", "copy"},
    {"export_graphics.xpm", "export"},       {"tbRoiDelete.xpm", "clear"},
    {"VoxelMeasurement.xpm", "measure"},     {"undoArrow.xpm", "undo"},
    {"luminescent_icon.xpm", "luminescent"}, {"fluorescent_icon.xpm", "fluorescent"},
};

QByteArray drawing(const QString& strName)
{
    OrmIcons::init();
    QFile objFile(QStringLiteral(":/icons/%1.svg").arg(strName));
    return !strName.isEmpty() && objFile.open(QIODevice::ReadOnly) ? objFile.readAll() : QByteArray();
}

/// The drawing's colours as they are seen on the palette's ground.
QByteArray inked(QByteArray baDrawing, QIcon::Mode eMode)
{
    const QPalette objPalette = QApplication::palette();
    const bool bDark = objPalette.color(QPalette::Window).lightness() < 128;
    const bool bPlain = eMode == QIcon::Disabled || eMode == QIcon::Selected;
    const QColor clrInk = eMode == QIcon::Disabled   ? objPalette.color(QPalette::Disabled, QPalette::WindowText)
                          : eMode == QIcon::Selected ? objPalette.color(QPalette::HighlightedText)
                                                     : objPalette.color(QPalette::WindowText);
    // In two steps, so that an ink that looks like an accent's mark is not taken for it.
    baDrawing.replace(s_pszInk, "@ink");
    for (const SInk& sAccent : s_lstAccents)
        baDrawing.replace(sAccent.pszDrawn, bPlain ? "@ink" : bDark ? sAccent.pszOnDark : sAccent.pszDrawn);
    return baDrawing.replace("@ink", clrInk.name().toLatin1());
}

/// Hands the engine to every icon that is made of an .xpm file: those of the tools' forms.
class CInkIconPlugin : public QIconEnginePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QIconEngineFactoryInterface_iid FILE "inkicons.json")

public:
    QIconEngine* create(const QString& /*strFile*/) override { return new CInkIconEngine; } // addFile() follows
};
} // namespace

CInkIconEngine::CInkIconEngine(const QString& strDrawing) : m_baDrawing(drawing(strDrawing)) {}

void CInkIconEngine::addFile(const QString& strFile, const QSize& /*szPicture*/, QIcon::Mode eMode, QIcon::State /*eState*/)
{
    if (eMode != QIcon::Normal)
        return;
    const QString strName = QFileInfo(strFile).fileName();
    const auto* pEnd = std::end(s_lstPictures);
    const auto* pFound =
        std::find_if(std::begin(s_lstPictures), pEnd, [&](const SPicture& s) { return strName == QLatin1String(s.pszFile); });
    if (strFile.startsWith(QLatin1String(":/")) && pFound != pEnd)
        m_baDrawing = drawing(QLatin1String(pFound->pszDrawing));
    m_objPicture = QPixmap(strFile);
}

void CInkIconEngine::addPixmap(const QPixmap& objPixmap, QIcon::Mode eMode, QIcon::State /*eState*/)
{
    if (eMode == QIcon::Normal)
        m_objPicture = objPixmap;
}

void CInkIconEngine::paint(QPainter* pPainter, const QRect& rc, QIcon::Mode eMode, QIcon::State eState)
{
    if (!m_baDrawing.isEmpty())
    {
        QSvgRenderer objRenderer(inked(m_baDrawing, eMode));
        const int nEdge = std::min(rc.width(), rc.height());
        objRenderer.render(pPainter, QRectF(rc.x() + (rc.width() - nEdge) / 2.0, rc.y() + (rc.height() - nEdge) / 2.0, nEdge, nEdge));
        return;
    }
    const QPixmap objPixmap = pixmap(rc.size(), eMode, eState);
    const QSize szPixmap = objPixmap.size();
    pPainter->drawPixmap(rc.x() + (rc.width() - szPixmap.width()) / 2, rc.y() + (rc.height() - szPixmap.height()) / 2, objPixmap);
}

QPixmap CInkIconEngine::pixmap(const QSize& szPixmap, QIcon::Mode eMode, QIcon::State eState)
{
    if (!m_baDrawing.isEmpty())
    {
        QPixmap objPixmap(szPixmap);
        objPixmap.fill(Qt::transparent);
        QPainter objPainter(&objPixmap);
        paint(&objPainter, QRect(QPoint(), szPixmap), eMode, eState);
        return objPixmap;
    }
    if (m_objPicture.isNull())
        return {};
    const QSize szActual = actualSize(szPixmap, eMode, eState);
    const QPixmap objPixmap =
        szActual == m_objPicture.size() ? m_objPicture : m_objPicture.scaled(szActual, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    if (eMode == QIcon::Normal)
        return objPixmap;
    QStyleOption objOption;
    objOption.palette = QApplication::palette();
    return QApplication::style()->generatedIconPixmap(eMode, objPixmap, &objOption);
}

QSize CInkIconEngine::actualSize(const QSize& szWanted, QIcon::Mode /*eMode*/, QIcon::State /*eState*/)
{
    if (!m_baDrawing.isEmpty())
        return szWanted;
    const QSize szPicture = m_objPicture.size();
    const bool bFits = szPicture.width() <= szWanted.width() && szPicture.height() <= szWanted.height();
    return bFits ? szPicture : szPicture.scaled(szWanted, Qt::KeepAspectRatio);
}

void CInkIconEngine::virtual_hook(int nHook, void* pData)
{
    if (nHook == QIconEngine::IsNullHook)
        *static_cast<bool*>(pData) = m_baDrawing.isEmpty() && m_objPicture.isNull();
    else
        QIconEngine::virtual_hook(nHook, pData);
}

QString CInkIconEngine::key() const
{
    return QStringLiteral("CInkIconEngine");
}

QIconEngine* CInkIconEngine::clone() const
{
    return new CInkIconEngine(*this);
}

#include "CInkIconEngine.moc"
