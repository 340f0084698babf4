#include "COrmLogPanel.h"

#include "COrmPlainText.h"

#include <QContextMenuEvent>
#include <QFontDatabase>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTextCursor>
#include <utility>

namespace
{
constexpr int s_nMaxLineLength = 2000; ///< characters of a line that are shown
}

COrmLogPanel::COrmLogPanel(QWidget* pParent) : QDockWidget(QStringLiteral("Log"), pParent), m_pText(new QPlainTextEdit(this))
{
    setObjectName(QStringLiteral("logPanel"));
    m_pText->setObjectName(QStringLiteral("logText"));
    m_pText->setAccessibleName(QStringLiteral("Log"));
    m_pText->setReadOnly(true);
    m_pText->setUndoRedoEnabled(false);
    m_pText->setMaximumBlockCount(s_nMaxLines);
    m_pText->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_pText->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_pText, &QWidget::customContextMenuRequested, this,
            [this](const QPoint& pt)
            {
                QMenu* pMenu = m_pText->createStandardContextMenu();
                pMenu->setAttribute(Qt::WA_DeleteOnClose);
                pMenu->addSeparator();
                connect(pMenu->addAction(QStringLiteral("Clear Log")), &QAction::triggered, m_pText, &QPlainTextEdit::clear);
                pMenu->popup(m_pText->viewport()->mapToGlobal(pt));
            });
    setWidget(m_pText);
    m_nSink = getLogObject()->addSink([this](const SLogEntry& sEntry) { receive(sEntry); });
}

COrmLogPanel::~COrmLogPanel()
{
    getLogObject()->removeSink(m_nSink);
}

void COrmLogPanel::receive(const SLogEntry& sEntry)
{
    const std::lock_guard<std::mutex> objLock(m_objMutex);
    m_lstWaiting.push_back(sEntry);
    if (m_lstWaiting.size() > size_t(s_nMaxLines))
        m_lstWaiting.pop_front();
    if (!std::exchange(m_bNotified, true))
        QMetaObject::invokeMethod(this, &COrmLogPanel::takeIn, Qt::QueuedConnection);
}

void COrmLogPanel::takeIn()
{
    std::deque<SLogEntry> lstEntries;
    {
        const std::lock_guard<std::mutex> objLock(m_objMutex);
        lstEntries.swap(m_lstWaiting);
        m_bNotified = false;
    }
    QTextCursor objCursor(m_pText->document());
    objCursor.beginEditBlock();
    for (const SLogEntry& sEntry : lstEntries)
    {
        QTextCharFormat objFormat;
        objFormat.setForeground(colourFor(sEntry.nLevel));
        objCursor.movePosition(QTextCursor::End);
        if (!m_pText->document()->isEmpty())
            objCursor.insertBlock();
        objCursor.insertText(lineFor(sEntry), objFormat);
    }
    objCursor.endEditBlock();
    // The end stays in view; a place that the user marked stays marked.
    if (!m_pText->textCursor().hasSelection())
    {
        m_pText->moveCursor(QTextCursor::End);
        m_pText->moveCursor(QTextCursor::StartOfLine);
        m_pText->ensureCursorVisible();
    }
}

QString COrmLogPanel::lineFor(const SLogEntry& sEntry)
{
    // Weight in words as well: colour alone does not reach everybody.
    const QString strWeight = sEntry.nLevel >= 3 ? QStringLiteral("Error: ") : sEntry.nLevel == 2 ? QStringLiteral("Note: ") : QString();
    return sEntry.dtWritten.toString(QStringLiteral("HH:mm:ss")) + QStringLiteral("  ") + strWeight +
           COrmPlainText::visible(COrmPlainText::shortened(sEntry.strMessage, s_nMaxLineLength));
}

QColor COrmLogPanel::colourFor(long nLevel) const
{
    const QPalette& objPalette = m_pText->palette();
    if (nLevel < 2)
        return objPalette.color(QPalette::Text);
    // Readable on a light and on a dark ground.
    const bool bDark = objPalette.color(QPalette::Base).lightness() < 128;
    if (nLevel == 2)
        return bDark ? QColor(255, 190, 90) : QColor(140, 80, 0);
    return bDark ? QColor(255, 130, 120) : QColor(175, 20, 20);
}
