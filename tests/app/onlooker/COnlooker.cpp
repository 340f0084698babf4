#include "COnlooker.h"

#include <QApplication>
#include <QGenericPlugin>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLabel>
#include <QListWidget>
#include <QOpenGLWidget>
#include <QPlainTextEdit>
#include <QScreen>
#include <QSet>
#include <QSocketNotifier>
#include <QTest>

#include <cstdio>

#include <unistd.h>

namespace
{
/// The widget of that name in any of the program's windows.
template <class T>
T* find(const QString& strName)
{
    const QWidgetList lstWidgets = QApplication::allWidgets();
    for (QWidget* pWidget : lstWidgets)
    {
        T* pFound = pWidget->objectName() == strName ? qobject_cast<T*>(pWidget) : nullptr;
        if (pFound)
        {
            return pFound;
        }
    }
    return nullptr;
}

/// How many colours the display shows where the widget is; -1 where the display cannot be asked.
int coloursOnScreen(const QWidget* pWidget)
{
    const QWidget* pWindow = pWidget->window();
    const QImage img = pWindow->screen()->grabWindow(pWindow->winId()).toImage().convertToFormat(QImage::Format_RGB32);
    if (img.isNull())
    {
        return -1;
    }
    const QRect rect = QRect(pWidget->mapTo(pWindow, QPoint()), pWidget->size()) & img.rect();
    QSet<QRgb> setColours;
    for (int nY = rect.top(); nY <= rect.bottom(); ++nY)
    {
        for (int nX = rect.left(); nX <= rect.right(); ++nX)
        {
            setColours.insert(img.pixel(nX, nY));
        }
    }
    return setColours.size();
}

QJsonArray rowsOf(const QListWidget* pList)
{
    QJsonArray arrRows;
    for (int nRow = 0; pList && nRow < pList->count(); ++nRow)
    {
        arrRows.append(pList->item(nRow)->text());
    }
    return arrRows;
}

bool press(QWidget* pWidget)
{
    const bool bReady = pWidget && pWidget->isVisible() && pWidget->isEnabled();
    if (bReady)
    {
        QTest::mouseClick(pWidget, Qt::LeftButton);
    }
    return bReady;
}

bool pick(QListWidget* pList, const QString& strText)
{
    const QList<QListWidgetItem*> lstItems = pList ? pList->findItems(strText, Qt::MatchExactly) : QList<QListWidgetItem*>();
    if (lstItems.isEmpty())
    {
        return false;
    }
    pList->scrollToItem(lstItems.first());
    QTest::mouseClick(pList->viewport(), Qt::LeftButton, Qt::NoModifier, pList->visualItemRect(lstItems.first()).center());
    return true;
}
} // namespace

COnlooker::COnlooker(QObject* pParent) : QObject(pParent)
{
    auto* pNotifier = new QSocketNotifier(STDIN_FILENO, QSocketNotifier::Read, this);
    connect(pNotifier, &QSocketNotifier::activated, this, &COnlooker::listen);
}

void COnlooker::listen()
{
    char acPiece[4096];
    const ssize_t nBytes = read(STDIN_FILENO, acPiece, sizeof acPiece);
    if (nBytes <= 0)
    {
        _exit(3); // the test is gone
    }
    m_byHeard.append(acPiece, static_cast<int>(nBytes));
    while (m_byHeard.contains('\n'))
    {
        const QByteArray byLine = m_byHeard.left(m_byHeard.indexOf('\n'));
        m_byHeard.remove(0, byLine.size() + 1);
        const QJsonObject objReply{{QStringLiteral("answer"), answer(QString::fromUtf8(byLine).split(QLatin1Char('\t')))}};
        std::puts(QJsonDocument(objReply).toJson(QJsonDocument::Compact).constData());
        std::fflush(stdout);
    }
}

QJsonValue COnlooker::answer(const QStringList& lstWords)
{
    const QString& strWhat = lstWords.first();
    const QString strName = lstWords.value(1);
    if (strWhat == QLatin1String("look"))
    {
        return look();
    }
    if (strWhat == QLatin1String("rows"))
    {
        return rowsOf(find<QListWidget>(strName));
    }
    if (strWhat == QLatin1String("pick"))
    {
        return pick(find<QListWidget>(strName), lstWords.value(2));
    }
    if (strWhat == QLatin1String("press"))
    {
        return press(find<QWidget>(strName));
    }
    if (strWhat == QLatin1String("text"))
    {
        const auto* pText = find<QPlainTextEdit>(strName);
        return pText ? pText->toPlainText() : QString();
    }
    if (strWhat == QLatin1String("close"))
    {
        // Behind the answer, which the end of the program would cut off.
        QMetaObject::invokeMethod(qApp, &QApplication::closeAllWindows, Qt::QueuedConnection);
        return true;
    }
    return QJsonValue();
}

QJsonObject COnlooker::look() const
{
    const auto* pFrame = find<QWidget>(QStringLiteral("m_pResultViewFrame"));
    if (!pFrame || !pFrame->isVisible())
    {
        return QJsonObject();
    }
    const auto* pNotice = pFrame->findChild<QLabel*>(QStringLiteral("openGLNotice"));
    const auto* pView = pFrame->findChild<QOpenGLWidget*>();
    const auto* pList = find<QListWidget>(QStringLiteral("m_pSequenceNameLW"));
    return QJsonObject{
        {QStringLiteral("notice"), pNotice && pNotice->isVisible() ? pNotice->text() : QString()},
        {QStringLiteral("noticeFillsPlace"), pNotice && pNotice->geometry() == pFrame->rect()},
        {QStringLiteral("viewShown"), pView && pView->isVisible()},
        {QStringLiteral("coloursOfPlace"), coloursOnScreen(pFrame)},
        {QStringLiteral("coloursOfList"), coloursOnScreen(pList)},
    };
}

/// Qt makes the plug-ins that QT_QPA_GENERIC_PLUGINS names when a program with windows starts.
class COnlookerPlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "onlooker.json")

public:
    QObject* create(const QString& /*strKey*/, const QString& /*strSpecification*/) override { return new COnlooker; }
};
#include "COnlooker.moc"
