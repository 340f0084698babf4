#include "COrmDataset.h"
#include "COrmSequenceDataset.h"
#include "COrmToolPluginBase.h"

#include <QPointer>
#include <QStringList>
#include <QVariant>
#include <QWidget>
#include <stdexcept>

/// A tool that keeps what the host asks of it in its property "calls", in the order of the calls. The property "trouble" makes it
/// misbehave: "refuse" has createObject() fail, "throw" has the next call throw.
class CRecordingTool : public COrmToolPluginBase
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "tdl.ormelle.test.recording")
    Q_INTERFACES(COrmToolPluginBase)

public:
    ~CRecordingTool() override { delete m_pWindow; }

    QAction* pluginAction() override
    {
        if (m_pAction == nullptr)
            m_pAction = new QAction(QStringLiteral("Recording &Tool"), this);
        return m_pAction;
    }
    QString PluginMenuItem() override { return QStringLiteral("Recording Tool"); }
    QString MenuItemBefore() override { return QStringLiteral("Image Overlay"); }
    void init() override { note(QStringLiteral("init")); }
    void show() override
    {
        note(QStringLiteral("show"));
        m_pWindow->show();
    }
    bool createObject() override
    {
        note(QStringLiteral("createObject"));
        if (property("trouble") == QStringLiteral("refuse"))
            return false;
        if (!m_pWindow)
        {
            m_pWindow = new QWidget;
            m_pWindow->setObjectName(QStringLiteral("Recording Tool"));
            m_pWindow->setWindowTitle(QStringLiteral("Recording & Tool"));
            signalAddWidgetToWorkspace(m_pWindow);
        }
        return true;
    }

protected slots:
    void onSignalDatasetChanged(COrmDataset* p) override { note(QStringLiteral("dataset changed ") + p->getClickNumber()); }
    void onSignalSequenceChanged(COrmSequenceDataset* p) override { note(QStringLiteral("sequence changed ") + p->getSequenceID()); }
    void onSignalDatasetRemoved(COrmDataset* p) override { note(QStringLiteral("dataset removed ") + p->getClickNumber()); }
    void onSignalSequenceAdded(COrmSequenceDataset* p) override { note(QStringLiteral("sequence added ") + p->getSequenceID()); }
    void onSignalSequenceRemoved(COrmSequenceDataset* p) override { note(QStringLiteral("sequence removed ") + p->getSequenceID()); }
    void onSignalROIModified(QString str) override { note(QStringLiteral("ROI modified ") + str); }
    void onSignalROIDeleted() override { note(QStringLiteral("ROI deleted")); }
    void onSignalupdateROIList() override { note(QStringLiteral("ROI list")); }
    void onSignalCopyToClipboard(QString str) override { note(QStringLiteral("copy ") + str); }
    void onSignalToolsMenuLongiStudyUpdate() { note(QStringLiteral("reset")); }

private:
    void note(const QString& strCall)
    {
        setProperty("calls", property("calls").toStringList() << strCall);
        if (property("trouble") == QStringLiteral("throw"))
        {
            setProperty("trouble", QVariant());
            throw std::runtime_error("out of order");
        }
    }

    QPointer<QWidget> m_pWindow;
};

#include "RecordingTool.moc"
