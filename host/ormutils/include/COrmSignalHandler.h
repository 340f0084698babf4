#ifndef CORMSIGNALHANDLER_H
#define CORMSIGNALHANDLER_H

#include <QObject>
#include <QString>

class COrmDataset;
class COrmSequenceDataset;
class QWidget;

/// The hub through which the host tells everybody what happened. Whoever causes an event emits the signal of the one hub,
/// COrmPreference::getSignalHandler(), on the GUI thread. Objects handed over stay the sender's and live at least for the emission.
class COrmSignalHandler : public QObject
{
    Q_OBJECT

public:
    explicit COrmSignalHandler(QObject* pParent = nullptr);

signals:
    /// The user changed a preference.
    void updatePreferenceSetting();

    void signalDatasetChanged(COrmDataset* pDataset);
    void signalDatasetRemoved(COrmDataset* pDataset);
    void signalSequenceAdded(COrmSequenceDataset* pSequence);
    void signalSequenceChanged(COrmSequenceDataset* pSequence);
    void signalSequenceRemoved(COrmSequenceDataset* pSequence);

    void signalROIModified(QString strName);
    void signalROIDeleted();
    void signalupdateROIList();

    /// Edit > Copy, meant for the widget with this object name.
    void signalCopyToClipboard(QString strObjectName);
    /// Tools > Reset Longitudinal Study.
    void signalToolsMenuLongiStudyUpdate();
    /// A tool hands its window to the host.
    void signalAddWidgetToWorkspace(QWidget* pWidget);
};

#endif
