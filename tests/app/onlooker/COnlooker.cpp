#include "COnlooker.h"

#include "OnlookerEyes.h"
#include "OnlookerHands.h"

#include <QApplication>
#include <QGenericPlugin>
#include <QJsonDocument>
#include <QLabel>
#include <QListWidget>
#include <QOpenGLWidget>
#include <QPlainTextEdit>
#include <QSet>
#include <QSocketNotifier>

#include <cstdio>

#include <unistd.h>

namespace
{
using OnlookerEyes::find;

/// How many colours the display shows where the widget is; -1 where the display cannot be asked.
int coloursOnScreen(const QWidget* pWidget)
{
    const QWidget* pWindow = pWidget->window();
    const QImage img = OnlookerEyes::screenOf(pWindow);
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
    return OnlookerHands::act(lstWords);
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
