#pragma once

#include "COrmToolPluginBase.h"
#include "LongitudinalStudyBrowserWnd.h"

#include <QList>
#include <QPointer>
#include <QString>

/// The object through which the host reaches the tool. While there is no window it gathers the sequences that the tool can
/// use; from the moment there is one it only forwards. All calls come on the window's thread.
class COrmLongitudinalStudyBrowserPlugin : public COrmToolPluginBase
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "tdl.ormelle.ormlongitudinalstudybrowser")
    Q_INTERFACES(COrmToolPluginBase)

public:
    COrmLongitudinalStudyBrowserPlugin();
    ~COrmLongitudinalStudyBrowserPlugin() override;

    QMenu* pluginMenu() override;
    QAction* pluginAction() override;
    QIcon pluginIcon() override;
    QString PluginMenuItem() override;
    QString MenuItemBefore() override;
    /// Forgets the window without deleting it; the gathered sequences stay.
    void init() override;
    /// Requires a window: createObject() comes first.
    void show() override;
    bool createObject() override;
    bool isVisible() override;
    void signalUpdateToolPluginValidity(QAction* pAction, bool bEnabled, bool bChecked) override;
    bool defaultVisibilityForPluggin() override;
    /// Clicks the sequence's entry in the window's list; of two, that of the kind with saved results, SOLA first.
    bool selectSequence(const COrmSequenceDataset* pSequence) override;

    // The order of the slots is the order of the meta-object.
protected slots:
    void onSignalDatasetChanged(COrmDataset*) override;
    void onSignalSequenceChanged(COrmSequenceDataset*) override;
    void onSignalDatasetRemoved(COrmDataset*) override;
    void onSignalSequenceAdded(COrmSequenceDataset*) override;
    void onSignalSequenceRemoved(COrmSequenceDataset*) override;
    void onSignalROIModified(QString) override;
    void onSignalROIDeleted() override;
    void onSignalupdateROIList() override;
    void signalAddWidgetToWorkspace(QWidget* pWidget) override;
    void onSignalCopyToClipboard(QString strObjectName) override;
    void onSignalToolsMenuLongiStudyUpdate();

private:
    QPointer<CLongitudinalStudyBrowserWnd> m_pWnd; ///< the tool window; null until createObject(); owned
    QList<QString> m_lstSOLASequences;             ///< IDs gathered while there was no window; then marked by "SOLA" at index 0
    QList<QString> m_lstNOVASequences;             ///< IDs gathered while there was no window; then marked by "NOVA" at index 0
};
