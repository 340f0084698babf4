#pragma once

#include <QCoreApplication>
#include <QIcon>
#include <QPointer>
#include <QString>
#include <memory>

class COrmSequenceDataset;
class COrmToolPluginBase;
class QAction;
class QMenu;
class QPluginLoader;

/// One tool of the host, with the library it came from. Every call into the tool stops here if it throws.
class COrmTool
{
    Q_DECLARE_TR_FUNCTIONS(COrmTool)

public:
    /// @p pLoader has loaded @p pTool and destroys it together with this object; without one the tool stays its maker's.
    COrmTool(COrmToolPluginBase* pTool, QString strFile, QString strIdentifier, std::unique_ptr<QPluginLoader> pLoader);
    ~COrmTool();
    COrmTool(const COrmTool&) = delete;
    COrmTool& operator=(const COrmTool&) = delete;

    /// Calls init() and asks for everything that the menu needs. An empty text, or one sentence that says what failed.
    QString setUp();
    /// What the menu entry does: the first time createObject() and show(), later createObject() alone. False, with a reason in
    /// @p pstrReason, when no window came into being.
    bool use(QString* pstrReason = nullptr);
    /// Has the tool take up that sequence in its window; false if it does not offer it.
    bool select(const COrmSequenceDataset* pSequence);

    COrmToolPluginBase* plugin() const;
    QString name() const { return m_strName; }         ///< text of the menu entry
    QString menuBefore() const { return m_strBefore; } ///< text of the entry before which the tool wants to stand
    QAction* action() const;                           ///< null only if the tool gives a menu instead
    QMenu* menu() const;                               ///< null for most tools
    QString file() const { return m_strFile; }         ///< the library; empty for a tool without one
    QString identifier() const { return m_strIdentifier; }

private:
    QPointer<COrmToolPluginBase> m_pTool;
    QPointer<QAction> m_pAction;
    QPointer<QMenu> m_pMenu;
    std::unique_ptr<QAction> m_pOwnAction; ///< stands in for a tool that has a name but no action
    QString m_strName;
    QString m_strBefore;
    QString m_strFile;
    QString m_strIdentifier;
    std::unique_ptr<QPluginLoader> m_pLoader;
    bool m_bUsed = false; ///< createObject() has succeeded once
};
