#pragma once

#include <QAction>
#include <QIcon>
#include <QObject>
#include <QString>
#include <QtPlugin>

class COrmDataset;
class COrmSequenceDataset;
class QMenu;
class QWidget;

/// What the host asks of a tool. The host loads a tool's library, calls init() once, and places the tool in its Tools menu. The first
/// use of the menu entry calls createObject() and then show(); a later use calls createObject() alone. The host tells a tool of its
/// sequences by those slots of the tool's meta-object that have the names of the onSignal... operations below; a tool declares as slots
/// the ones that it wants to hear. All calls are made on the window's thread. The loader that made the tool destroys it.
class COrmToolPluginBase : public QObject
{
    Q_OBJECT

public:
    COrmToolPluginBase();
    ~COrmToolPluginBase() override;

    /// A sub-menu of the tool's own, which then stands in the menu instead of the action; null: none.
    virtual QMenu* pluginMenu();
    /// The tool's menu action; made at the first call, owned by the tool.
    virtual QAction* pluginAction() = 0;
    /// The icon of the menu entry; empty: none.
    virtual QIcon pluginIcon();
    /// The text of the menu entry, by which the tool is also named on the command line.
    virtual QString PluginMenuItem() = 0;
    /// The text of the menu entry before which the tool wants to stand; null: anywhere.
    virtual QString MenuItemBefore();
    /// Resets the tool; called once after loading.
    virtual void init() = 0;
    /// Shows the tool's window; called after createObject().
    virtual void show() = 0;
    /// Makes the tool's window, or shows the one there is; false when no window came into being.
    virtual bool createObject() = 0;
    virtual bool isVisible();
    /// Registers a window of the tool with the host; addWidgetToWorkspace() does it.
    virtual void signalAddWidgetToWorkspace(QWidget* pWidget);
    /// Has the host look at the tool's menu action again; updateToolPluginValidity() does it.
    virtual void signalUpdateToolPluginValidity(QAction* pAction, bool bEnabled, bool bChecked);
    /// Whether the menu entry is shown from the start.
    virtual bool defaultVisibilityForPluggin();

    virtual void onSignalDatasetChanged(COrmDataset* pDataset);
    virtual void onSignalSequenceChanged(COrmSequenceDataset* pSequence);
    virtual void onSignalDatasetRemoved(COrmDataset* pDataset);
    virtual void onSignalSequenceAdded(COrmSequenceDataset* pSequence);
    virtual void onSignalSequenceRemoved(COrmSequenceDataset* pSequence);
    virtual void onSignalROIModified(QString strName);
    virtual void onSignalROIDeleted();
    virtual void onSignalupdateROIList();
    /// @p strObjectName is the object name of the window that is to copy.
    virtual void onSignalCopyToClipboard(QString strObjectName);

    /// Has the tool take up that sequence as if the user had chosen it there; called while the tool's window is shown. False if the tool
    /// does not offer the sequence.
    virtual bool selectSequence(const COrmSequenceDataset* pSequence);

protected:
    /// Puts a top-level window of the tool into the host's Window menu.
    void addWidgetToWorkspace(QWidget* pWidget);
    /// The host's answer to signalUpdateToolPluginValidity(): the entry stays usable whatever is open, and the log says who asked.
    void updateToolPluginValidity(QAction* pAction, bool bEnabled, bool bChecked);

    bool m_bVisible = false; ///< the answer of isVisible(); set by the tool's init()
    QAction* m_pAction;      ///< the tool's menu action; null until first asked for
};

Q_DECLARE_INTERFACE(COrmToolPluginBase, "com.Brisano.Ormelle.COrmToolPluginBase/1.0")
