#include "COrmLogPanel.h"

#include "COrmPlainText.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QEvent>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextCursor>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

namespace
{
constexpr int s_nMaxLineLength = 2000; ///< characters of a line that are shown

QToolButton* button(QWidget* pParent, const QString& strText, const QString& strHint, const char* pszName)
{
    auto* pButton = new QToolButton(pParent);
    pButton->setObjectName(QLatin1String(pszName));
    pButton->setText(strText);
    pButton->setToolTip(strHint);
    pButton->setAutoRaise(true);
    return pButton;
}
} // namespace

COrmLogPanel::COrmLogPanel(QWidget* pParent) : QDockWidget(tr("Log"), pParent), m_pText(new QPlainTextEdit)
{
    setObjectName(QStringLiteral("logPanel"));
    m_pText->setObjectName(QStringLiteral("logText"));
    m_pText->setAccessibleName(tr("Log"));
    m_pText->setReadOnly(true);
    m_pText->setUndoRedoEnabled(false);
    m_pText->setMaximumBlockCount(s_nMaxLines);
    m_pText->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_pText->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_pText->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_pText, &QWidget::customContextMenuRequested, this,
            [this](const QPoint& pt)
            {
                QMenu* pMenu = m_pText->createStandardContextMenu();
                pMenu->setAttribute(Qt::WA_DeleteOnClose);
                pMenu->addSeparator();
                connect(pMenu->addAction(tr("Clear Log")), &QAction::triggered, this, &COrmLogPanel::clear);
                pMenu->popup(m_pText->viewport()->mapToGlobal(pt));
            });
    auto* pContents = new QWidget(this);
    auto* pLayout = new QVBoxLayout(pContents);
    const int nGap = fontMetrics().height() / 4;
    pLayout->setContentsMargins(nGap, nGap, nGap, nGap);
    pLayout->setSpacing(nGap);
    pLayout->addWidget(makeControls());
    pLayout->addWidget(m_pText);
    setWidget(pContents);
    updateCount();
    m_pText->installEventFilter(this);
    m_nSink = getLogObject()->addSink([this](const SLogEntry& sEntry) { receive(sEntry); });
}

COrmLogPanel::~COrmLogPanel()
{
    getLogObject()->removeSink(m_nSink);
}

QWidget* COrmLogPanel::makeControls()
{
    auto* pControls = new QWidget(this);
    m_pLevel = new QComboBox(pControls);
    m_pLevel->setObjectName(QStringLiteral("logLevel"));
    m_pLevel->setAccessibleName(tr("Entries shown"));
    m_pLevel->setToolTip(tr("Which entries are shown"));
    m_pLevel->addItem(tr("All entries"), 0);
    m_pLevel->addItem(tr("Notes and errors"), 2);
    m_pLevel->addItem(tr("Errors only"), 3);
    m_pFilter = new QLineEdit(pControls);
    m_pFilter->setObjectName(QStringLiteral("logFilter"));
    m_pFilter->setAccessibleName(tr("Filter of the log"));
    m_pFilter->setPlaceholderText(tr("Show only lines that contain..."));
    m_pFilter->setClearButtonEnabled(true);
    m_pCount = new QLabel(pControls);
    m_pCount->setObjectName(QStringLiteral("logCount"));
    m_pCopy = button(pControls, tr("Copy"), tr("Copy the marked text, or all lines that are shown"), "logCopy");
    m_pLast = button(pControls, tr("Latest"), tr("Jump to the latest line"), "logLast");
    QToolButton* pClear = button(pControls, tr("Clear"), tr("Take all lines out of this panel"), "logClear");

    auto* pLayout = new QHBoxLayout(pControls);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->addWidget(m_pLevel);
    pLayout->addWidget(m_pFilter, 1);
    pLayout->addWidget(m_pCount);
    pLayout->addWidget(m_pCopy);
    pLayout->addWidget(m_pLast);
    pLayout->addWidget(pClear);
    connect(m_pLevel, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &COrmLogPanel::showAgain);
    connect(m_pFilter, &QLineEdit::textChanged, this, &COrmLogPanel::showAgain);
    connect(m_pCopy, &QToolButton::clicked, this, &COrmLogPanel::copy);
    connect(m_pLast, &QToolButton::clicked, this, &COrmLogPanel::jumpToLast);
    connect(pClear, &QToolButton::clicked, this, &COrmLogPanel::clear);
    return pControls;
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
    m_lstEntries.insert(m_lstEntries.end(), lstEntries.cbegin(), lstEntries.cend());
    int nDropped = 0;
    for (; m_lstEntries.size() > size_t(s_nMaxLines); m_lstEntries.pop_front())
        nDropped += isWanted(m_lstEntries.front()) ? 1 : 0;
    append(lstEntries);
    m_nShown -= nDropped;
    updateCount();
}

void COrmLogPanel::append(const std::deque<SLogEntry>& lstEntries)
{
    const QScrollBar* pBar = m_pText->verticalScrollBar();
    // The end stays in view; a place that the user went to or marked stays where it is.
    const bool bFollow = pBar->value() >= pBar->maximum() && !m_pText->textCursor().hasSelection();
    QTextCursor objCursor(m_pText->document());
    objCursor.beginEditBlock();
    for (const SLogEntry& sEntry : lstEntries)
    {
        if (!isWanted(sEntry))
            continue;
        QTextCharFormat objFormat;
        objFormat.setForeground(colourFor(sEntry.nLevel));
        objCursor.movePosition(QTextCursor::End);
        if (!m_pText->document()->isEmpty())
            objCursor.insertBlock();
        objCursor.insertText(lineFor(sEntry), objFormat);
        ++m_nShown;
    }
    objCursor.endEditBlock();
    if (bFollow)
        jumpToLast();
}

bool COrmLogPanel::isWanted(const SLogEntry& sEntry) const
{
    return sEntry.nLevel >= m_pLevel->currentData().toInt() &&
           (m_pFilter->text().isEmpty() || lineFor(sEntry).contains(m_pFilter->text(), Qt::CaseInsensitive));
}

void COrmLogPanel::showAgain()
{
    m_pText->clear();
    m_nShown = 0;
    append(m_lstEntries);
    jumpToLast();
    updateCount();
}

void COrmLogPanel::updateCount()
{
    const int nKept = int(m_lstEntries.size());
    const QString strAll = nKept == 1 ? tr("1 line") : tr("%n lines", nullptr, nKept);
    m_pCount->setText(m_nShown == nKept ? strAll : tr("%1 of %2").arg(m_nShown).arg(strAll));
    m_pCopy->setEnabled(m_nShown > 0);
    m_pLast->setEnabled(m_nShown > 0);
}

void COrmLogPanel::copy()
{
    if (m_pText->textCursor().hasSelection())
        m_pText->copy();
    else if (m_nShown > 0)
        QApplication::clipboard()->setText(m_pText->toPlainText() + QLatin1Char('\n'));
}

void COrmLogPanel::clear()
{
    m_lstEntries.clear();
    showAgain();
}

void COrmLogPanel::jumpToLast()
{
    m_pText->moveCursor(QTextCursor::End);
    m_pText->moveCursor(QTextCursor::StartOfLine);
    m_pText->verticalScrollBar()->setValue(m_pText->verticalScrollBar()->maximum());
}

bool COrmLogPanel::eventFilter(QObject* pObject, QEvent* pEvent)
{
    if (pObject == m_pText && pEvent->type() == QEvent::PaletteChange)
        showAgain(); // in colours that can be read on the new ground
    return QDockWidget::eventFilter(pObject, pEvent);
}

QString COrmLogPanel::levelName(long nLevel)
{
    return nLevel >= 3 ? QStringLiteral("error") : nLevel == 2 ? QStringLiteral("note") : QStringLiteral("info");
}

QString COrmLogPanel::lineFor(const SLogEntry& sEntry)
{
    // Weight in words as well: colour alone does not reach everybody.
    const QString strWeight = sEntry.nLevel >= 3 ? tr("Error: ") : sEntry.nLevel == 2 ? tr("Note: ") : QString();
    const QString strWriter = sEntry.strCategory.isEmpty() ? QString() : sEntry.strCategory + QStringLiteral("  ");
    return sEntry.dtWritten.toString(QStringLiteral("HH:mm:ss")) + QStringLiteral("  ") + strWriter + strWeight +
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
